#version 150 compatibility
// Shadow volumes of a height field: the flat grid is lifted by its height texture first. The
// first texture coordinate is the vertex's texel (column, row), read as it stands, so the volume
// starts exactly where the surface is drawn.
uniform sampler2D textureHeight;
uniform int channel;
out vec4 vEye;
void main() {
    vec4 h = texelFetch(textureHeight, ivec2(gl_MultiTexCoord0.st + 0.5), 0);
    float height = channel == 0 ? h.r : (channel == 1 ? h.g : (channel == 2 ? h.b : h.a));
    vEye = gl_ModelViewMatrix * vec4(gl_Vertex.xy, gl_Vertex.z + height, 1.0);
    gl_Position = vEye;
}
