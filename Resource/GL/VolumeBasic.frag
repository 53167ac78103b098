#version 120
// Emission and absorption through the 3D texture (texturVolume, unit 0), coloured by the colour
// curve (textureCC, unit 1) of the value. Inside clipBoxMin to clipBoxMax only; values below
// trim count as empty, and with forceDiscard0 a ray that hits nothing leaves no fragment.
uniform sampler3D texturVolume;
uniform sampler1D textureCC;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform int forceDiscard0;
uniform float trim;
uniform float intervalGlobal;
uniform int subQuality;
varying vec3 vEntry;
varying vec3 vEye;
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
        float v = texture3D(texturVolume, p).r;
        if (v < trim)
            continue;
        vec4 c = texture1D(textureCC, v);
        c.a = 1.0 - pow(1.0 - c.a, step / intervalGlobal);
        sum.rgb += (1.0 - sum.a) * c.a * c.rgb;
        sum.a += (1.0 - sum.a) * c.a;
    }
    if (forceDiscard0 != 0 && sum.a <= 0.0)
        discard;
    gl_FragColor = sum;
}
