#version 120
// A height field: a flat grid lifted by one channel of textureHeight; the normal is taken from
// the neighbouring heights.
//##COMMON_DEFINITIONS_SHADER##
uniform sampler2D textureHeight;
uniform int channel;
varying vec3 vPosition;
varying vec3 vNormal;
float Height(vec2 st) {
    vec4 h = texture2D(textureHeight, st);
    return channel == 0 ? h.r : (channel == 1 ? h.g : (channel == 2 ? h.b : h.a));
}
void main() {
    vec2 st = gl_MultiTexCoord0.st;
    float e = 1.0 / 256.0;
    vec3 n = normalize(vec3(Height(st - vec2(e, 0.0)) - Height(st + vec2(e, 0.0)),
                            Height(st - vec2(0.0, e)) - Height(st + vec2(0.0, e)), 2.0 * e));
    vec4 p = vec4(gl_Vertex.xy, gl_Vertex.z + Height(st), 1.0);
    vPosition = (gl_ModelViewMatrix * p).xyz;
    vNormal = gl_NormalMatrix * n;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * p;
}
