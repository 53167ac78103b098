#version 130
// Particles as camera-facing squares, turned by rotationMatrix (and per particle by twistID
// when twistMode is on). The base matrices carry the pose of the object the particles belong to.
uniform mat4 baseInvModelMatrix;
uniform mat4 modelInvBaseMatrix;
uniform mat4 baseInvMatrix;
uniform mat4 rotationMatrix;
uniform int twistMode;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
attribute float twistID;
in int paramBit;
varying vec2 vCurve;
varying float vAlpha;
varying vec3 vEyePosition;
flat out int vImage;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    vEyePosition = eye.xyz;
    // The eye's distance in the object's base frame sets the size.
    vec4 baseEye = baseInvMatrix * modelInvBaseMatrix * baseInvModelMatrix * vec4(0.0, 0.0, 0.0, 1.0);
    float twist = twistMode != 0 ? twistID * 0.61803 : 0.0;
    mat2 turn = mat2(cos(twist), sin(twist), -sin(twist), cos(twist));
    vec2 corner = (rotationMatrix * vec4(0.7071, 0.7071, 0.0, 0.0)).xy;
    gl_PointSize = max(pointSize * 1000.0 / max(length(baseEye.xyz - gl_Vertex.xyz), 1e-6) *
                           length(turn * corner), 1.0);
    vCurve = vec2(colorCurveS, colorCurveT);
    vAlpha = filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = gl_ProjectionMatrix * eye;
}
