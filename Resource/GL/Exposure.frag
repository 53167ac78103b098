#version 120
// Levels, gamma, hue and saturation of the frame; blendMode 1 mixes the result by alpha.
// out = max((in - levelMin) / (levelMax - levelMin), 0) ^ gamma: gamma 0.4545 encodes linear light.
uniform sampler2D textureImage;
uniform vec4 levelMin;
uniform vec4 levelMax;
uniform vec4 gamma;
uniform int hueOffset;
uniform int saturation;
uniform int blendMode;
uniform float alpha;
vec3 HueRotate(vec3 c, float degrees) {
    float a = radians(degrees);
    vec3 k = vec3(0.57735);
    return c * cos(a) + cross(k, c) * sin(a) + k * dot(k, c) * (1.0 - cos(a));
}
void main() {
    vec4 src = texture2D(textureImage, gl_TexCoord[0].st);
    vec3 c = (src.rgb - levelMin.rgb) / max(levelMax.rgb - levelMin.rgb, vec3(1e-6));
    c = pow(max(c, vec3(0.0)), max(gamma.rgb, vec3(1e-6)));
    c = HueRotate(c, float(hueOffset));
    float grey = dot(c, vec3(0.299, 0.587, 0.114));
    c = mix(vec3(grey), c, 1.0 + float(saturation) / 100.0);
    if (blendMode == 1)
        c = mix(src.rgb, c, alpha);
    // The vertex colour's alpha weighs the output: the accumulation adds each step at 1 / samples.
    gl_FragColor = vec4(c, src.a) * gl_Color.a;
}
