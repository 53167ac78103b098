#version 130
// Blur of the frame along one axis. type 0: horizontal, 1: vertical; kernel 0: box, 1: gaussian.
// quality taps on each side reach width pixels; the weights are normalised, so a flat field stays
// flat. The samples are raised to gamma (2.2 reads the colour as linear light) and the result is
// left linear: a following exposure pass encodes it again.
uniform sampler2D textureImage;
uniform int type;
uniform int kernel;
uniform float width;
uniform int quality;
uniform vec4 gamma;
void main() {
    vec2 axis = type == 1 ? vec2(0.0, 1.0) : vec2(1.0, 0.0);
    int n = max(quality, 1);
    vec2 stepST = axis * width / vec2(textureSize(textureImage, 0)) / float(n);
    vec4 sum = vec4(0.0);
    float weightSum = 0.0;
    for (int i = -n; i <= n; ++i) {
        float r = float(i) / float(n);
        float w = kernel == 1 ? exp(-2.0 * r * r) : 1.0;
        vec4 c = texture2D(textureImage, gl_TexCoord[0].st + stepST * float(i));
        sum += vec4(pow(max(c.rgb, vec3(0.0)), gamma.rgb), c.a) * w;
        weightSum += w;
    }
    gl_FragColor = sum / weightSum;
}
