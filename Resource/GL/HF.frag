#version 120
// textureMode 0: colour curve of the height (textureCC); 1: the image (textureImage) modulated;
// 2: the image alone. textureHeight holds a texel per grid vertex, in its channel the height as
// a colour-curve coordinate; between vertices it is filtered linearly.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform sampler2D textureHeight;
uniform int channel;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage;
uniform sampler1D textureCC;
uniform int textureMode;
uniform int useTexAlpha;
uniform int dissolveMode;
uniform int bFlat;
varying vec3 vPosition;
varying vec3 vNormal;
varying vec2 vHeightST;
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_NORMAL##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    vec4 h = texture2D(textureHeight, vHeightST);
    float height = channel == 0 ? h.r : (channel == 1 ? h.g : (channel == 2 ? h.b : h.a));
    vec4 c = texture1D(textureCC, height);
    if (textureMode != 0) {
        vec4 t = texture2D(textureImage, gl_TexCoord[0].st);
        c.rgb = textureMode == 2 ? t.rgb : c.rgb * t.rgb;
        if (useTexAlpha != 0)
            c.a *= t.a;
    }
    vec3 light = lightNumber > 0 ? vec3(0.0) : vec3(1.0);
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vPosition * gl_LightSource[i].position.w);
        light += gl_LightSource[i].ambient.rgb +
                 SpotEffect(i, vPosition) * gl_LightSource[i].diffuse.rgb * abs(dot(n, l));
    }
    float alpha = c.a;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    gl_FragColor = FogEffect(vec4(c.rgb * light, alpha), gl_FragCoord.z);
}
