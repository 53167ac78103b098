#version 130
// Depth of field: the blur radius grows with the distance from the focal plane. textureImage1
// is the depth texture of the frame; projMatrix10 and projMatrix14 turn it into eye distance.
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
    int n = max(quality, 1);
    vec4 sum = vec4(0.0);
    float count = 0.0;
    for (int j = -n; j <= n; ++j)
        for (int i = -n; i <= n; ++i) {
            vec4 c = texture2D(textureImage, st + vec2(i, j) * texel / float(n));
            sum += vec4(pow(max(c.rgb, vec3(0.0)), gamma.rgb), c.a);
            count += 1.0;
        }
    sum /= count;
    gl_FragColor = vec4(pow(sum.rgb, vec3(1.0) / gamma.rgb), sum.a);
}
