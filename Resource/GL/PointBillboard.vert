#version 130
// Particles as square billboards: one point sprite per particle covers the square, whose plane
// the fragment shader meets along each view ray. baseInvMatrix holds the square's axes in eye
// space (the focus of the object's billboards), rotationMatrix turns the square in its plane,
// and with twistMode each particle turns further by its twistID. pointSize is half the side in
// the object's units.
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
flat out float vHalfExtent;
flat out vec3 vCenter;
flat out vec3 vAxisU;
flat out vec3 vAxisV;
flat out float vHalf;
flat out int vImage;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    float halfSide = pointSize * length(gl_ModelViewMatrix[0].xyz);
    // The golden angle spreads the twists of neighbouring identifiers evenly.
    float twist = twistMode != 0 ? twistID * 2.39996323 : 0.0;
    mat3 axes = mat3(baseInvMatrix) * mat3(rotationMatrix);
    vAxisU = axes * vec3(cos(twist), sin(twist), 0.0);
    vAxisV = axes * vec3(-sin(twist), cos(twist), 0.0);
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
    // The sprite's square on the plane of the centre, in eye units: a fragment's ray goes through it.
    vHalfExtent = 0.5 * px / pixelsPerUnit;
    vColor = texture2DLod(textureColorCurve, vec2(colorCurveS, colorCurveT), 0.0);
    vColor.a *= filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = clip;
    bool inside = perspective && -eye.z <= deep;
    if (!(filterAlpha >= alphaCrit) || halfSide <= 0.0 || inside)
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
