#version 130
// Spheres as ray-cast imposters: each particle is one point sprite that covers the sphere's
// outline; the fragment shader solves the sphere along its view ray. pointSize is the radius in
// the object's units.
uniform vec4 viewport;
uniform float alphaCrit;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
in int paramBit;
varying vec2 vCurve;
varying float vAlpha;
flat out vec3 vCenter;
flat out float vRadius;
flat out int vImage;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    // The object's scale reaches the radius through the model-view's first column.
    float radius = pointSize * length(gl_ModelViewMatrix[0].xyz);
    vCenter = eye.xyz;
    vRadius = radius;
    vec4 clip = gl_ProjectionMatrix * eye;
    float dist = length(eye.xyz);
    // The outline of a sphere seen in perspective is wider than its radius at its centre's depth:
    // the sprite takes the tangent cone's width, plus a pixel for the edge.
    float widen = gl_ProjectionMatrix[3][3] == 0.0 ? inversesqrt(max(1.0 - radius * radius / max(dist * dist, 1e-12), 1e-6)) : 1.0;
    float px = 2.0 * radius * widen * gl_ProjectionMatrix[1][1] * 0.5 * viewport.w / max(abs(clip.w), 1e-6);
    gl_PointSize = clamp(px + 2.0, 1.0, 4096.0);
    vCurve = vec2(colorCurveS, colorCurveT);
    vAlpha = filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = clip;
    // The camera inside the sphere, or an invisible particle: not drawn.
    bool inside = gl_ProjectionMatrix[3][3] == 0.0 && dist <= radius;
    if (!(filterAlpha >= alphaCrit) || radius <= 0.0 || inside)
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
