#version 120
// A quad over texture coordinates 0 to 1, drawn with the fixed matrices.
void main() {
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
