#version 120
// textureMode 0: no texture; 1: modulate; 2: replace. useTexAlpha takes the texture's alpha.
uniform sampler2D textureImage;
uniform int textureMode;
uniform int useTexAlpha;
uniform int dissolveMode;
varying vec4 vColor;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec4 c = vColor;
    if (textureMode != 0) {
        vec4 t = texture2D(textureImage, gl_TexCoord[0].st);
        c.rgb = textureMode == 2 ? t.rgb : c.rgb * t.rgb;
        if (useTexAlpha != 0)
            c.a *= t.a;
    }
    float alpha = c.a;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    gl_FragColor = FogEffect(vec4(c.rgb, alpha), gl_FragCoord.z);
}
