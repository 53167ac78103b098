#version 130
// Depth of field sampled on a disc (golden-angle spiral) instead of a square: rounder highlights.
uniform sampler2D textureImage;
uniform sampler2D textureImage1;
uniform int quality;
uniform vec4 gamma;
uniform float projMatrix10;
uniform float projMatrix14;
uniform float focalDistance;
uniform float widthBase;
float Distance(vec2 st) {
    float ndc = texture2D(textureImage1, st).r * 2.0 - 1.0;
    return projMatrix14 / (ndc + projMatrix10);
}
void main() {
    vec2 st = gl_TexCoord[0].st;
    float radius = widthBase * abs(Distance(st) - focalDistance) / max(focalDistance, 1e-6);
    vec2 texel = radius / vec2(textureSize(textureImage, 0));
    int n = max(quality, 1) * 8;
    vec4 sum = vec4(0.0);
    for (int k = 0; k < n; ++k) {
        float r = sqrt((float(k) + 0.5) / float(n));
        float a = float(k) * 2.39996;
        vec4 c = texture2D(textureImage, st + vec2(cos(a), sin(a)) * r * texel);
        sum += vec4(pow(max(c.rgb, vec3(0.0)), gamma.rgb), c.a);
    }
    sum /= float(n);
    gl_FragColor = vec4(pow(sum.rgb, vec3(1.0) / gamma.rgb), sum.a);
}
