#version 130
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureColorCurve;
uniform sampler2D textureImage[3];
uniform int useTexAlpha;
uniform int dissolveMode;
uniform int bFlat;
// The "Normal" sphere shader: the eye-space normal as the colour, unlit.
uniform int normalMode;
varying vec2 vCurve;
varying float vAlpha;
flat in int vImage;
varying vec3 vPosition;
varying vec3 vNormal;
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_NORMAL##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    vec3 v = normalize(-vPosition);
    vec4 c = texture2D(textureColorCurve, vCurve);
    vec3 light = lightNumber > 0 ? vec3(0.0) : vec3(1.0);
    vec3 specular = vec3(0.0);
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vPosition * gl_LightSource[i].position.w);
        float spot = SpotEffect(i, vPosition);
        light += gl_LightSource[i].ambient.rgb + spot * gl_LightSource[i].diffuse.rgb * max(dot(n, l), 0.0);
        specular += spot * gl_LightSource[i].specular.rgb * pow(max(dot(reflect(-l, n), v), 0.0), 32.0);
    }
    // The particle's image (paramBit bits 1 and 2, as for points) masks the alpha.
    if (useTexAlpha != 0 && vImage == 1)
        c.a *= texture2D(textureImage[0], gl_TexCoord[0].st).a;
    else if (useTexAlpha != 0 && vImage == 2)
        c.a *= texture2D(textureImage[1], gl_TexCoord[0].st).a;
    else if (useTexAlpha != 0 && vImage == 3)
        c.a *= texture2D(textureImage[2], gl_TexCoord[0].st).a;
    float alpha = c.a * vAlpha;
    if (normalMode != 0) {
        gl_FragColor = vec4((n * 0.5 + 0.5) * alpha, alpha);
        return;
    }
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * light + specular, alpha), gl_FragCoord.z);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
