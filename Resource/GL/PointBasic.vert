#version 130
// Particles as round points. pointSize is the size in scene units; baseDistance and the
// viewport turn it into pixels at the particle's eye distance. paramBit bits 1 and 2 pick the
// point's image (0: none, 1 to 3: textureImage[0 to 2]).
uniform vec4 viewport;
uniform float baseDistance;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
in int paramBit;
varying vec2 vCurve;
varying float vAlpha;
varying vec3 vEyePosition;
flat out int vImage;
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    vEyePosition = eye.xyz;
    gl_PointSize = max(pointSize * baseDistance * viewport.w / max(-eye.z, 1e-6), 1.0);
    vCurve = vec2(colorCurveS, colorCurveT);
    vAlpha = filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_Position = gl_ProjectionMatrix * eye;
}
