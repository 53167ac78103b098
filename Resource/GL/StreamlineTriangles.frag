#version 150 compatibility
// As StreamlineBasic; textureMode bit 0 takes the colour curve, bit 1 multiplies the ribbon's
// image textureSample: mappingType 0 stretches it once along the line, 1 repeats it every
// lineWidth units of length.
uniform int lightNumber;
uniform int textureMode;
uniform sampler1D textureColorCurve;
uniform sampler2D textureSample;
uniform int dissolveMode;
uniform float lineWidth;
uniform int mappingType;
uniform int useClip;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform float smoothWidth;
uniform float thinningFactor;
in vec3 vClip;
in vec3 vEyePosition;
in float vCurve;
in float vLineID;
in vec2 vRibbon;
in float vAlpha;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    if (fract(vLineID * 0.61803) >= thinningFactor)
        discard;
    float edge = 1.0;
    if (useClip != 0) {
        if (any(lessThan(vClip, clipBoxMin)) || any(greaterThan(vClip, clipBoxMax)))
            discard;
        vec3 inside = min(vClip - clipBoxMin, clipBoxMax - vClip);
        edge = smoothWidth > 0.0 ? clamp(min(inside.x, min(inside.y, inside.z)) / smoothWidth, 0.0, 1.0) : 1.0;
    }
    vec2 st = mappingType == 0 ? vRibbon : vec2(vRibbon.x / max(lineWidth, 1e-6), vRibbon.y);
    vec4 c = (textureMode & 1) == 0 ? gl_Color : texture(textureColorCurve, vCurve);
    if ((textureMode & 2) != 0)
        c *= texture(textureSample, st);
    if (lightNumber > 0) {
        float d = length(gl_LightSource[0].position.xyz - vEyePosition * gl_LightSource[0].position.w);
        c.rgb *= 1.0 / (1.0 + gl_LightSource[0].linearAttenuation * d);
    }
    float alpha = c.a * edge * vAlpha;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    gl_FragColor = FogEffect(vec4(c.rgb, alpha), gl_FragCoord.z);
}
