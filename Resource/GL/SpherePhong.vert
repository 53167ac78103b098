#version 130
// Spheres lit per fragment; see SphereGouraud for the per-particle attributes.
// One instance per particle: centre and radius, set per instance.
attribute vec4 instancePosSize;
attribute vec2 colorCurveST;
attribute float filterAlpha;
in int paramBit;
varying vec2 vCurve;
varying float vAlpha;
flat out int vImage;
varying vec3 vPosition;
varying vec3 vNormal;
void main() {
    vec4 vertex = vec4(gl_Vertex.xyz * instancePosSize.w + instancePosSize.xyz, 1.0);
    vPosition = (gl_ModelViewMatrix * vertex).xyz;
    vNormal = gl_NormalMatrix * gl_Normal;
    vCurve = colorCurveST;
    vAlpha = filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * vertex;
}
