#version 120
// textureMode 0: the vertex colour; otherwise the colour curve. thinningFactor keeps that share
// of the lines (by id); smoothWidth fades the line near the clip box's faces.
uniform int lightNumber;
uniform int textureMode;
uniform sampler1D textureColorCurve;
uniform int dissolveMode;
uniform int useClip;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform float smoothWidth;
uniform float thinningFactor;
varying vec3 vClip;
varying vec3 vEyePosition;
varying float vCurve;
varying float vLineID;
varying float vAlpha;
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
    vec4 c = textureMode == 0 ? gl_Color : texture1D(textureColorCurve, vCurve);
    // Lines have no normal: a light only dims them by the distance to it.
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
