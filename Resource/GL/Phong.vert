#version 120
// Per-fragment lighting: the position and normal go to the fragment shader in eye space.
//##COMMON_DEFINITIONS_SHADER##
varying vec3 vPosition;
varying vec3 vNormal;
void main() {
    vPosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vNormal = gl_NormalMatrix * gl_Normal;
    gl_TexCoord[0] = gl_TextureMatrix[0] * gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
