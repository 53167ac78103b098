#version 120
// Lights 0 to lightNumber - 1 per fragment; bFlat takes the face normal.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage;
uniform int textureMode;
uniform int useTexAlpha;
uniform int dissolveMode;
uniform int bFlat;
varying vec3 vPosition;
varying vec3 vNormal;
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_NORMAL##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    if (!gl_FrontFacing)
        n = -n;
    vec3 v = normalize(-vPosition);
    vec4 c = gl_FrontLightModelProduct.sceneColor;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vPosition * gl_LightSource[i].position.w);
        float d = max(dot(n, l), 0.0);
        float s = d > 0.0 ? pow(max(dot(reflect(-l, n), v), 0.0), gl_FrontMaterial.shininess) : 0.0;
        c += gl_FrontLightProduct[i].ambient +
             SpotEffect(i, vPosition) * (gl_FrontLightProduct[i].diffuse * d + gl_FrontLightProduct[i].specular * s);
    }
    c.a = gl_FrontMaterial.diffuse.a;
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
