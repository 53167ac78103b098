#version 130
// Toon spheres: banded light and a black rim below edgeThreshold, widened by boldness.
#define MAX_LIGHT_RECIEVE 7
uniform float boldness;
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureColorCurve;
uniform sampler2D textureImage[3];
uniform int useTexAlpha;
uniform int dissolveMode;
uniform float edgeThreshold;
uniform int bFlat;
varying vec2 vCurve;
varying float vAlpha;
flat in int vImage;
varying vec3 vPosition;
varying vec3 vNormal;
//##FUNC_FOG_EFFECT##
//##FUNC_NORMAL##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    vec3 v = normalize(-vPosition);
    vec4 c = texture2D(textureColorCurve, vCurve);
    float light = lightNumber > 0 ? 0.0 : 1.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vPosition * gl_LightSource[i].position.w);
        light += max(dot(n, l), 0.0);
    }
    float band = light > 0.8 ? 1.0 : (light > 0.3 ? 0.6 : 0.3);
    vec3 rgb = abs(dot(n, v)) < edgeThreshold * (1.0 + boldness) ? vec3(0.0) : c.rgb * band;
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
    vec4 outColor = FogEffect(vec4(rgb, alpha), gl_FragCoord.z);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
