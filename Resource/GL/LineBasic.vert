#version 120
// Lines and wires in their vertex colour.
void main() {
    gl_FrontColor = gl_Color;
    gl_Position = ftransform();
}
