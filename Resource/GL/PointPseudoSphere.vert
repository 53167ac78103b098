#version 130
// Spheres as ray-cast imposters: each particle is one point sprite that covers the sphere's
// outline; the fragment shader solves the sphere along its view ray. pointSize is the radius in
// the object's units. The sprite's square, taken on the plane through the centre parallel to the
// screen, is handed over in eye units, so a fragment finds its ray without the inverse projection.
uniform vec4 viewport;
uniform float alphaCrit;
uniform sampler2D textureColorCurve;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
in int paramBit;
flat out vec4 vColor;
flat out vec3 vCenter;
flat out float vRadius;
flat out float vHalfExtent;
flat out int vImage;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    // The object's scale reaches the radius through the model-view's first column.
    float radius = pointSize * length(gl_ModelViewMatrix[0].xyz);
    vCenter = eye.xyz;
    vRadius = radius;
    vec4 clip = gl_ProjectionMatrix * eye;
    bool perspective = gl_ProjectionMatrix[3][3] == 0.0;
    // In perspective the outline is wider than the radius at the centre's depth and lies off the
    // centre, the more so off the axis. Its reach on the plane of the centre, along x and along y,
    // comes from the two planes through the eye that touch the sphere: the sprite takes the larger,
    // with a hair of margin, so it spends no fragments beyond the outline. A pixel is drawn when its
    // centre lies in the sprite.
    float depth = max(-eye.z, 1e-6);
    float halfExtent = radius;
    if (perspective) {
        float d2 = max(depth * depth - radius * radius, 1e-12);
        vec2 off = abs(eye.xy);
        vec2 reach = radius * (off * radius + depth * sqrt(off * off + d2)) / d2;
        halfExtent = max(reach.x, reach.y) * 1.001;
    }
    float pixelsPerUnit = gl_ProjectionMatrix[1][1] * 0.5 * viewport.w / max(abs(clip.w), 1e-6);
    float px = clamp(2.0 * halfExtent * pixelsPerUnit, 1.0, 4096.0);
    gl_PointSize = px;
    vHalfExtent = 0.5 * px / pixelsPerUnit;
    vColor = texture2DLod(textureColorCurve, vec2(colorCurveS, colorCurveT), 0.0);
    vColor.a *= filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = clip;
    // The camera inside the sphere, or an invisible particle: not drawn.
    if (!(filterAlpha >= alphaCrit) || radius <= 0.0 || (perspective && -eye.z <= radius))
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
