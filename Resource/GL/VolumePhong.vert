#version 120
// The front faces of the unit box of the volume: each fragment marches from its entry point
// away from the eye through the box.
varying vec3 vEntry;
varying vec3 vEye;
void main() {
    vEntry = gl_Vertex.xyz;
    vEye = (gl_ModelViewMatrixInverse * vec4(0.0, 0.0, 0.0, 1.0)).xyz;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
