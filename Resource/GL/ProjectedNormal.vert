#version 120
// The eye-space normal as colour, for the passes that need normals (0.5 + 0.5 n).
varying vec3 vPosition;
varying vec3 vNormal;
void main() {
    vPosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vNormal = gl_NormalMatrix * gl_Normal;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
