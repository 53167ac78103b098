#version 120
// Toon shading: the light is cut into bands, and where the surface turns away from the eye
// (below edgeThreshold, widened by boldness) it draws the outline in black. In the shadow
// volume's passes (shadowVolumeMode) only the plain bands are drawn.
#define MAX_LIGHT_RECIEVE 7
uniform float boldness;
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage;
uniform int textureMode;
uniform int useTexAlpha;
uniform int dissolveMode;
uniform int shadowVolumeMode;
uniform float edgeThreshold;
uniform int bFlat;
varying vec3 vPosition;
varying vec3 vNormal;
//##FUNC_FOG_EFFECT##
//##FUNC_NORMAL##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    vec3 v = normalize(-vPosition);
    float light = 0.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vPosition * gl_LightSource[i].position.w);
        light += max(dot(n, l), 0.0);
    }
    float band = light > 0.8 ? 1.0 : (light > 0.3 ? 0.6 : 0.3);
    vec4 c = vec4(gl_FrontMaterial.diffuse.rgb * band, gl_FrontMaterial.diffuse.a);
    if (textureMode != 0) {
        vec4 t = texture2D(textureImage, gl_TexCoord[0].st);
        c.rgb = textureMode == 2 ? t.rgb * band : c.rgb * t.rgb;
        if (useTexAlpha != 0)
            c.a *= t.a;
    }
    if (shadowVolumeMode == 0 && abs(dot(n, v)) < edgeThreshold * (1.0 + boldness))
        c.rgb = vec3(0.0);
    float alpha = c.a;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    gl_FragColor = FogEffect(vec4(c.rgb, alpha), gl_FragCoord.z);
}
