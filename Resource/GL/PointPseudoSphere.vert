#version 130
// Spheres as ray-cast imposters: each particle is one point sprite that covers the sphere's
// outline; the fragment shader solves the sphere along its view ray. pointSize is the radius in
// the object's units. Everything of the ray-sphere solve that is the same for the whole sprite is
// done here, once per particle: across the sprite the solve is a quadratic in the sprite
// coordinate, so a fragment only evaluates it and takes one root.
uniform vec4 viewport;
uniform float alphaCrit;
uniform sampler2D textureColorCurve;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
in int paramBit;
// Without PLAIN the colour and alpha as read; with it premultiplied, as the fragment writes it.
flat out vec4 vColor;
// The solve across the sprite: with c the sprite coordinate in [-1, 1]^2 and
// m = vSphere.x + dot(c, vSphere.yz), the ray meets the sphere where
// disc = m * m + vSphere.w - dot(c, c) >= 0, and the hit's window depth is
// vDepth.x + vDepth.y * (m + sqrt(disc)).
flat out vec4 vSphere;
flat out vec2 vDepth;
#ifndef PLAIN
// For the light: the centre and radius in eye units, the sprite's half side on the plane of the
// centre, and how the hit moves off that plane (vRay.x with perspective, vRay.y without).
flat out vec3 vCenter;
flat out float vRadius;
flat out float vHalfExtent;
flat out vec2 vRay;
flat out int vImage;
#endif
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    // The object's scale reaches the radius through the model-view's first column.
    float radius = pointSize * length(gl_ModelViewMatrix[0].xyz);
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
    float h = 0.5 * px / pixelsPerUnit;

    // A point of the sprite is q = C + h * (c, 0). With perspective the ray is s * q, and the
    // nearer root of |s q - C|^2 = r^2 is 1 / s = 1 + g * (m + sqrt(disc)), g = h / sqrt(|C|^2 - r^2);
    // taken this way the solve keeps its digits for small far spheres. Without perspective the ray
    // runs along z and the hit lies h * sqrt(disc) in front of the plane of the centre.
    vec3 c = eye.xyz;
    float r2 = radius * radius;
    float zScale = 0.5 * gl_DepthRange.diff;
    float zMid = 0.5 * (gl_DepthRange.near + gl_DepthRange.far);
    mat4 P = gl_ProjectionMatrix;
    if (perspective) {
        float rootK = sqrt(max(dot(c, c) - r2, 1e-12));
        float g = h / rootK;
        vSphere = vec4(r2 / (h * rootK), c.xy / rootK, r2 / (h * h));
        // Window depth of eye z = c.z / s: zMid + zScale * (P22 + P32 / z) / P23.
        float b = zScale * P[3][2] / (P[2][3] * c.z);
        vDepth = vec2(zMid + zScale * P[2][2] / P[2][3] + b, b * g);
#ifndef PLAIN
        vRay = vec2(g, 0.0);
#endif
    } else {
        vSphere = vec4(0.0, 0.0, 0.0, r2 / (h * h));
        vDepth = vec2(zMid + zScale * (P[2][2] * c.z + P[3][2]) / P[3][3], zScale * P[2][2] * h / P[3][3]);
#ifndef PLAIN
        vRay = vec2(0.0, h);
#endif
    }

    vColor = texture2DLod(textureColorCurve, vec2(colorCurveS, colorCurveT), 0.0);
    vColor.a *= filterAlpha;
#ifdef PLAIN
    vColor.rgb *= vColor.a;
#else
    vCenter = c;
    vRadius = radius;
    vHalfExtent = h;
    vImage = (paramBit >> 1) & 3;
#endif
    gl_Position = clip;
    // The camera inside the sphere, or an invisible particle: not drawn.
    if (!(filterAlpha >= alphaCrit) || radius <= 0.0 || (perspective && -eye.z <= radius))
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
