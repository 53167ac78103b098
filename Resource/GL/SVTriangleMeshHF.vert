#version 150 compatibility
// Shadow volumes of a height field: the grid is lifted by the height texture's channel first.
uniform sampler2D textureHeight;
uniform int channel;
out vec4 vEye;
void main() {
    vec4 h = texture(textureHeight, gl_MultiTexCoord0.st);
    float height = channel == 0 ? h.r : (channel == 1 ? h.g : (channel == 2 ? h.b : h.a));
    vEye = gl_ModelViewMatrix * vec4(gl_Vertex.xy, gl_Vertex.z + height, 1.0);
    gl_Position = vEye;
}
