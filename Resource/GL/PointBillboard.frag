#version 130
// The billboard's image (or a square), coloured by the colour curve; premultiplied alpha.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureColorCurve;
uniform sampler2D textureImage[3];
uniform int dissolveMode;
varying vec2 vCurve;
varying float vAlpha;
varying vec3 vEyePosition;
flat in int vImage;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec4 image = vec4(1.0);
    if (vImage == 1)
        image = texture2D(textureImage[0], gl_PointCoord);
    else if (vImage == 2)
        image = texture2D(textureImage[1], gl_PointCoord);
    else if (vImage == 3)
        image = texture2D(textureImage[2], gl_PointCoord);
    vec4 c = texture2D(textureColorCurve, vCurve) * image;
    float light = lightNumber > 0 ? 0.0 : 1.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vEyePosition * gl_LightSource[i].position.w);
        light += max(l.z, 0.0);
    }
    float alpha = c.a * vAlpha;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * light, alpha), gl_FragCoord.z);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
