#version 120
// A second image over the frame, scaled about the centre and mixed by its alpha.
uniform sampler2D textureImage;
uniform sampler2D textureImage1;
uniform float texAlpha;
uniform float texXScale;
uniform float texYScale;
void main() {
    vec2 st = gl_TexCoord[0].st;
    vec4 base = texture2D(textureImage, st);
    vec2 st1 = (st - 0.5) / vec2(texXScale, texYScale) + 0.5;
    vec4 over = texture2D(textureImage1, st1);
    if (any(lessThan(st1, vec2(0.0))) || any(greaterThan(st1, vec2(1.0))))
        over = vec4(0.0);
    float a = over.a * texAlpha;
    gl_FragColor = vec4(mix(base.rgb, over.rgb, a), max(base.a, a));
}
