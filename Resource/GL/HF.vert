#version 120
// A height field: the grid comes lifted by its heights with its normals; the first texture
// coordinate is the place on the grid (0 .. 1, for the image), the second the centre of the
// vertex's texel in textureHeight.
//##COMMON_DEFINITIONS_SHADER##
varying vec3 vPosition;
varying vec3 vNormal;
varying vec2 vHeightST;
void main() {
    vPosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vNormal = gl_NormalMatrix * gl_Normal;
    vHeightST = gl_MultiTexCoord1.st;
    // The image is on unit 1: its scale and offset are that unit's matrix.
    gl_TexCoord[0] = gl_TextureMatrix[1] * gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
