#version 120
// Lit volume with a share of light scattered inside it (scatterFactor).
uniform sampler3D texturVolume;
uniform sampler1D textureCC;
uniform int lightNumber;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform vec3 ambientClr;
uniform vec3 diffuseClr;
uniform vec3 specularClr;
uniform int shininess;
uniform int forceDiscard0;
uniform float trim;
uniform float intervalGlobal;
uniform int subQuality;
varying vec3 vEntry;
varying vec3 vEye;
uniform float scatterFactor;
float Value(vec3 p);
float Lit(vec3 p, vec3 l) { return 1.0; }
float Value(vec3 p) { return texture3D(texturVolume, p).r; }
vec3 Gradient(vec3 p) {
    float e = 1.0 / 128.0;
    return vec3(Value(p + vec3(e, 0, 0)) - Value(p - vec3(e, 0, 0)), Value(p + vec3(0, e, 0)) - Value(p - vec3(0, e, 0)),
                Value(p + vec3(0, 0, e)) - Value(p - vec3(0, 0, e)));
}
vec3 LightDir(vec3 p) {
    vec4 l = gl_ModelViewMatrixInverse * gl_LightSource[lightNumber].position;
    return normalize(l.xyz - p * l.w);
}
vec3 Shade(vec3 p, vec3 dir, vec3 albedo) {
    vec3 n = Gradient(p);
    if (dot(n, n) > 0.0)
        n = -normalize(n);
    vec3 l = LightDir(p);
    float d = max(dot(n, l), 0.0);
    float s = pow(max(dot(reflect(-l, n), -dir), 0.0), float(shininess));
    return ambientClr * albedo + diffuseClr * albedo * d * Lit(p, l) + specularClr * s * Lit(p, l);
}
void main() {
    vec3 dir = normalize(vEntry - vEye);
    float step = intervalGlobal / float(max(subQuality, 1));
    vec4 sum = vec4(0.0);
    for (int i = 0; i < 4096; ++i) {
        vec3 p = vEntry + dir * (float(i) + 0.5) * step;
        if (any(lessThan(p, vec3(0.0))) || any(greaterThan(p, vec3(1.0))) || sum.a > 0.99)
            break;
        if (any(lessThan(p, clipBoxMin)) || any(greaterThan(p, clipBoxMax)))
            continue;
        float v = Value(p);
        if (v < trim)
            continue;
        vec4 c = texture1D(textureCC, v);
        c.a = 1.0 - pow(1.0 - c.a, step / intervalGlobal);
        sum.rgb += (1.0 - sum.a) * c.a * Shade(p, dir, c.rgb) + (1.0 - sum.a) * c.a * scatterFactor * c.rgb * diffuseClr * 0.25;
        sum.a += (1.0 - sum.a) * c.a;
    }
    if (forceDiscard0 != 0 && sum.a <= 0.0)
        discard;
    gl_FragColor = sum;
}
