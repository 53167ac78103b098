#version 130
uniform sampler2D textureColorCurve;
uniform sampler2D textureImage[3];
uniform int useTexAlpha;
uniform int dissolveMode;
varying vec2 vCurve;
varying float vAlpha;
flat in int vImage;
varying vec3 vLight;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec4 c = texture2D(textureColorCurve, vCurve);
    // The particle's image (paramBit bits 1 and 2, as for points) masks the alpha.
    if (useTexAlpha != 0 && vImage == 1)
        c.a *= texture2D(textureImage[0], gl_TexCoord[0].st).a;
    else if (useTexAlpha != 0 && vImage == 2)
        c.a *= texture2D(textureImage[1], gl_TexCoord[0].st).a;
    else if (useTexAlpha != 0 && vImage == 3)
        c.a *= texture2D(textureImage[2], gl_TexCoord[0].st).a;
    float alpha = c.a * vAlpha;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * vLight, alpha), gl_FragCoord.z);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
