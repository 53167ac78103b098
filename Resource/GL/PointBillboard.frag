#version 130
// The billboard's square met along this pixel's view ray: its image (or the plain square) in the
// colour of the colour table, at its true depth; premultiplied alpha.
#define MAX_LIGHT_RECIEVE 7
uniform vec4 viewport;
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureColorCurve;
uniform sampler2D textureImage[3];
uniform int dissolveMode;
varying vec2 vCurve;
varying float vAlpha;
flat in vec3 vCenter;
flat in vec3 vAxisU;
flat in vec3 vAxisV;
flat in float vHalf;
flat in int vImage;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec2 ndc = (gl_FragCoord.xy - viewport.xy) / viewport.zw * 2.0 - 1.0;
    vec4 nearP = gl_ProjectionMatrixInverse * vec4(ndc, -1.0, 1.0);
    vec4 farP = gl_ProjectionMatrixInverse * vec4(ndc, 1.0, 1.0);
    vec3 o = nearP.xyz / nearP.w;
    vec3 d = normalize(farP.xyz / farP.w - o);
    vec3 n = cross(vAxisU, vAxisV);
    float denom = dot(d, n);
    if (abs(denom) < 1e-6)
        discard;
    float t = dot(vCenter - o, n) / denom;
    vec3 p = o + t * d;
    vec2 local = vec2(dot(p - vCenter, vAxisU), dot(p - vCenter, vAxisV)) / vHalf;
    if (abs(local.x) > 1.0 || abs(local.y) > 1.0)
        discard;
    vec4 clip = gl_ProjectionMatrix * vec4(p, 1.0);
    gl_FragDepth = (gl_DepthRange.diff * (clip.z / clip.w) + gl_DepthRange.near + gl_DepthRange.far) * 0.5;
    vec2 tc = local * 0.5 + 0.5;
    vec4 image = vec4(1.0);
    if (vImage == 1)
        image = texture2D(textureImage[0], tc);
    else if (vImage == 2)
        image = texture2D(textureImage[1], tc);
    else if (vImage == 3)
        image = texture2D(textureImage[2], tc);
    vec4 c = texture2D(textureColorCurve, vCurve) * image;
    float light = lightNumber > 0 ? 0.0 : 1.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        light += abs(dot(n, l));
    }
    float alpha = c.a * vAlpha;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * light, alpha), gl_FragDepth);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
