#version 150 compatibility
// Shadow volumes of a closed or open triangle mesh: the vertices go to the geometry shader in
// eye space, which extrudes the silhouette away from light 0. Instanced spheres of particles
// give their centre and radius in instancePosSize; a plain draw leaves it at its default
// (0, 0, 0, 1), which changes nothing.
in vec4 instancePosSize;
out vec4 vEye;
void main() {
    vec4 p = vec4(gl_Vertex.xyz * instancePosSize.w + instancePosSize.xyz, 1.0);
    vEye = gl_ModelViewMatrix * p;
    gl_Position = vEye;
}
