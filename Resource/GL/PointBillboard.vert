#version 130
// Particles as square billboards: one point sprite per particle covers the square, whose plane
// the fragment shader meets along each view ray. baseInvMatrix holds the square's axes in eye
// space (the focus of the object's billboards), rotationMatrix turns the square in its plane,
// and with twistMode each particle turns further by its twistID. pointSize is half the side in
// the object's units. The square's plane is worked out here once per particle as functions of
// the window position relative to the sprite's centre: its depth is linear in that offset, and
// its square coordinates are a ratio of two linear functions, so a fragment needs a few products
// and one division instead of a ray of its own.
uniform mat4 baseInvModelMatrix;
uniform mat4 modelInvBaseMatrix;
uniform mat4 baseInvMatrix;
uniform mat4 rotationMatrix;
uniform int twistMode;
uniform vec4 viewport;
uniform float alphaCrit;
uniform sampler2D textureColorCurve;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
attribute float twistID;
in int paramBit;
flat out vec4 vColor;
flat out vec3 vCenter;
flat out vec3 vAxisU;
flat out vec3 vAxisV;
flat out float vHalf;
flat out int vImage;
// Offsets from vOrigin (window units): square coordinates (dot(vRowU, d), dot(vRowV, d)) /
// (vRowW.z + dot(vRowW.xy, d)), window depth vDepth.z + dot(vDepth.xy, d).
flat out vec2 vOrigin;
flat out vec2 vRowU;
flat out vec2 vRowV;
flat out vec3 vRowW;
flat out vec3 vDepth;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    float halfSide = pointSize * length(gl_ModelViewMatrix[0].xyz);
    // The golden angle spreads the twists of neighbouring identifiers evenly.
    // (An if, not a choice of values: without twists no particle pays for the cosine and sine.)
    mat3 axes = mat3(baseInvMatrix) * mat3(rotationMatrix);
    vAxisU = axes[0];
    vAxisV = axes[1];
    if (twistMode != 0) {
        float twist = twistID * 2.39996323;
        vAxisU = axes * vec3(cos(twist), sin(twist), 0.0);
        vAxisV = axes * vec3(-sin(twist), cos(twist), 0.0);
    }
    vCenter = eye.xyz;
    vHalf = halfSide;
    vec4 clip = gl_ProjectionMatrix * eye;
    // The square's reach across the screen and in depth. In perspective the sprite takes the
    // farthest of its corners as the eye sees them on the plane of the centre (with a hair of
    // margin), so it spends no fragments beyond the square.
    float reach = halfSide * max(abs(vAxisU.x) + abs(vAxisV.x), abs(vAxisU.y) + abs(vAxisV.y));
    float deep = halfSide * (abs(vAxisU.z) + abs(vAxisV.z));
    bool perspective = gl_ProjectionMatrix[3][3] == 0.0;
    float halfExtent = reach;
    if (perspective && -eye.z > deep) {
        halfExtent = 0.0;
        for (int k = 0; k < 4; ++k) {
            vec2 s = vec2((k & 1) != 0 ? 1.0 : -1.0, (k & 2) != 0 ? 1.0 : -1.0);
            vec3 corner = eye.xyz + halfSide * (s.x * vAxisU + s.y * vAxisV);
            vec2 off = corner.xy * (eye.z / corner.z) - eye.xy;
            halfExtent = max(halfExtent, max(abs(off.x), abs(off.y)));
        }
        halfExtent *= 1.001;
    }
    float pixelsPerUnit = gl_ProjectionMatrix[1][1] * 0.5 * viewport.w / max(abs(clip.w), 1e-6);
    float px = clamp(2.0 * halfExtent * pixelsPerUnit, 1.0, 4096.0);
    gl_PointSize = px;
    vColor = texture2DLod(textureColorCurve, vec2(colorCurveS, colorCurveT), 0.0);
    vColor.a *= filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = clip;
    // The plane through the centre, in the eye space that the inverse projection gives for a
    // point of normalised device coordinates (x, y, z, 1). A step (dx, dy) from the centre's
    // device position meets the plane at the depth step (zx dx + zy dy).
    vec3 normal = cross(vAxisU, vAxisV);
    vec4 plane = vec4(normal, -dot(normal, eye.xyz)) * gl_ProjectionMatrixInverse;
    bool edgeOn = abs(plane.z) <= 1e-7 * length(plane.xyz);
    float zx = -plane.x / plane.z, zy = -plane.y / plane.z;
    vec4 mx = gl_ProjectionMatrixInverse[0] + gl_ProjectionMatrixInverse[2] * zx;
    vec4 my = gl_ProjectionMatrixInverse[1] + gl_ProjectionMatrixInverse[2] * zy;
    // The met point is (centre / clip.w + mx dx + my dy) in homogeneous eye coordinates: its
    // offset from the centre, along each axis, over its w.
    vec2 toDevice = 2.0 / viewport.zw;
    vec3 ex = mx.xyz - eye.xyz * mx.w, ey = my.xyz - eye.xyz * my.w;
    vRowU = vec2(dot(ex, vAxisU), dot(ey, vAxisU)) * toDevice / halfSide;
    vRowV = vec2(dot(ex, vAxisV), dot(ey, vAxisV)) * toDevice / halfSide;
    vRowW = vec3(vec2(mx.w, my.w) * toDevice, 1.0 / clip.w);
    float halfRange = 0.5 * gl_DepthRange.diff;
    vDepth = vec3(vec2(zx, zy) * toDevice * halfRange,
                  halfRange * (clip.z / clip.w) + 0.5 * (gl_DepthRange.near + gl_DepthRange.far));
    vOrigin = viewport.xy + (clip.xy / clip.w + 1.0) * 0.5 * viewport.zw;
    bool inside = perspective && -eye.z <= deep;
    if (!(filterAlpha >= alphaCrit) || halfSide <= 0.0 || inside || edgeOn)
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
