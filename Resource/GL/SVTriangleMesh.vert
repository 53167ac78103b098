#version 150 compatibility
// Shadow volumes of a closed or open triangle mesh: the vertices go to the geometry shader in
// eye space, which extrudes the silhouette away from light 0.
out vec4 vEye;
void main() {
    vEye = gl_ModelViewMatrix * gl_Vertex;
    gl_Position = vEye;
}
