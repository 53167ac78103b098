#version 130
// Glare: light above crit spreads along rayNum rays (type 0) or a round halo (type 1).
uniform sampler2D textureImage;
uniform int type;
uniform float width;
uniform int quality;
uniform int rayNum;
uniform float offset;
uniform float crit;
uniform float enhance;
uniform float fade;
vec3 Bright(vec2 st) {
    vec3 c = texture2D(textureImage, st).rgb;
    return max(c - vec3(crit), vec3(0.0)) * enhance;
}
void main() {
    vec2 st = gl_TexCoord[0].st;
    vec4 base = texture2D(textureImage, st);
    vec2 texel = width / vec2(textureSize(textureImage, 0));
    int n = max(quality, 1) * 4;
    vec3 glare = vec3(0.0);
    int rays = type == 0 ? max(rayNum, 1) : 16;
    for (int r = 0; r < rays; ++r) {
        float a = radians(offset) + 6.28318 * float(r) / float(rays);
        vec2 dir = vec2(cos(a), sin(a)) * texel;
        for (int k = 1; k <= n; ++k)
            glare += Bright(st + dir * float(k) / float(n)) * pow(fade, float(k) / float(n)) / float(n);
    }
    glare /= float(rays);
    // Light spread over a transparent background makes it as opaque as it is bright.
    float a = clamp(base.a + max(glare.r, max(glare.g, glare.b)), 0.0, 1.0);
    gl_FragColor = vec4(base.rgb + glare, a);
}
