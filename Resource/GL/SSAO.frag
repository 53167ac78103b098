#version 130
// Screen-space ambient occlusion from the depth texture (textureImage1): a pixel is darkened by
// the share of its neighbours within radius that stand in front of it. type 1 shows the
// occlusion alone, over baseColor.
uniform sampler2D textureImage;
uniform sampler2D textureImage1;
uniform int quality;
uniform float projMatrix10;
uniform float projMatrix14;
uniform float factor;
uniform float radius;
uniform vec3 baseColor;
uniform int type;
float Distance(vec2 st) {
    float ndc = texture2D(textureImage1, st).r * 2.0 - 1.0;
    return projMatrix14 / (ndc + projMatrix10);
}
void main() {
    vec2 st = gl_TexCoord[0].st;
    vec4 base = texture2D(textureImage, st);
    float d = Distance(st);
    vec2 texel = 1.0 / vec2(textureSize(textureImage1, 0));
    int n = max(quality, 1) * 8;
    float occluded = 0.0;
    for (int k = 0; k < n; ++k) {
        float a = float(k) * 2.39996;
        float r = radius * sqrt((float(k) + 0.5) / float(n));
        float dk = Distance(st + vec2(cos(a), sin(a)) * r * texel);
        occluded += (d - dk > 0.01 && d - dk < radius) ? 1.0 : 0.0;
    }
    float ao = 1.0 - factor * occluded / float(n);
    gl_FragColor = type == 1 ? vec4(baseColor * ao, 1.0) : vec4(base.rgb * ao, base.a);
}
