#version 130
// The sphere of the sprite along this pixel's view ray: the nearer hit gives the colour's light
// (its true normal) and the true depth, so imposters cut each other and meshes exactly.
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
flat in float vRadius;
flat in int vImage;
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec2 ndc = (gl_FragCoord.xy - viewport.xy) / viewport.zw * 2.0 - 1.0;
    vec4 nearP = gl_ProjectionMatrixInverse * vec4(ndc, -1.0, 1.0);
    vec4 farP = gl_ProjectionMatrixInverse * vec4(ndc, 1.0, 1.0);
    vec3 o = nearP.xyz / nearP.w;
    vec3 d = normalize(farP.xyz / farP.w - o);
    vec3 oc = o - vCenter;
    float b = dot(oc, d);
    float c = dot(oc, oc) - vRadius * vRadius;
    float disc = b * b - c;
    if (disc < 0.0)
        discard;
    float t = -b - sqrt(disc);
    vec3 p = o + t * d;
    vec3 n = (p - vCenter) / vRadius;
    vec4 clip = gl_ProjectionMatrix * vec4(p, 1.0);
    float depth = clip.z / clip.w;
    gl_FragDepth = (gl_DepthRange.diff * depth + gl_DepthRange.near + gl_DepthRange.far) * 0.5;
    float shape = 1.0;
    vec2 tc = n.xy * 0.5 + 0.5;
    if (vImage == 1)
        shape = texture2D(textureImage[0], tc).a;
    else if (vImage == 2)
        shape = texture2D(textureImage[1], tc).a;
    else if (vImage == 3)
        shape = texture2D(textureImage[2], tc).a;
    vec4 col = texture2D(textureColorCurve, vCurve);
    // Lit as the sphere meshes are: ambient, diffuse and a highlight of each light.
    vec3 light = lightNumber > 0 ? vec3(0.0) : vec3(1.0);
    vec3 specular = vec3(0.0);
    vec3 v = normalize(-p);
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        float spot = SpotEffect(i, p);
        light += gl_LightSource[i].ambient.rgb + spot * gl_LightSource[i].diffuse.rgb * max(dot(n, l), 0.0);
        specular += spot * gl_LightSource[i].specular.rgb * pow(max(dot(reflect(-l, n), v), 0.0), 32.0);
    }
    float alpha = col.a * vAlpha * shape;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(col.rgb * light + specular, alpha), gl_FragDepth);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
}
