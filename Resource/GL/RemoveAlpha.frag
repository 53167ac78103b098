#version 120
// Makes the frame opaque: over black, over a checker tile, or with alpha pushed to 0 or 1.
uniform sampler2D textureImage;
uniform int extremeAlpha;
uniform int convert;
uniform int backgroundTile;
void main() {
    vec4 c = texture2D(textureImage, gl_TexCoord[0].st);
    float a = c.a;
    if (extremeAlpha != 0)
        a = a > 0.0 ? 1.0 : 0.0;
    vec3 background = vec3(0.0);
    if (backgroundTile != 0) {
        vec2 cell = floor(gl_FragCoord.xy / 8.0);
        background = vec3(mod(cell.x + cell.y, 2.0) * 0.25 + 0.5);
    }
    vec3 rgb = convert != 0 ? c.rgb * a + background * (1.0 - a) : c.rgb;
    gl_FragColor = vec4(rgb, 1.0);
}
