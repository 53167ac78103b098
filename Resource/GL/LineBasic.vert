#version 120
// Lines and wires in their vertex colour.
void main() {
    gl_FrontColor = gl_Color;
    // The eye distance the fragment's linear fog reads.
    gl_FogFragCoord = -(gl_ModelViewMatrix * gl_Vertex).z;
    gl_Position = ftransform();
}
