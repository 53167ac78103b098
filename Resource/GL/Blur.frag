#version 130
// Blur of the frame. type 0: box, 1: gaussian; kernel 0: both axes, 1: horizontal, 2: vertical.
// Colours are blurred in linear light: gamma is undone before and applied after.
uniform sampler2D textureImage;
uniform int type;
uniform int kernel;
uniform float width;
uniform int quality;
uniform vec4 gamma;
void main() {
    vec2 texel = width / vec2(textureSize(textureImage, 0));
    int n = max(quality, 1);
    vec4 sum = vec4(0.0);
    float weightSum = 0.0;
    for (int j = -n; j <= n; ++j) {
        for (int i = -n; i <= n; ++i) {
            if ((kernel == 1 && j != 0) || (kernel == 2 && i != 0))
                continue;
            float r2 = float(i * i + j * j) / float(n * n);
            float w = type == 1 ? exp(-2.0 * r2) : 1.0;
            vec4 c = texture2D(textureImage, gl_TexCoord[0].st + vec2(i, j) * texel / float(n));
            sum += vec4(pow(max(c.rgb, vec3(0.0)), gamma.rgb), c.a) * w;
            weightSum += w;
        }
    }
    sum /= weightSum;
    gl_FragColor = vec4(pow(sum.rgb, vec3(1.0) / gamma.rgb), sum.a);
}
