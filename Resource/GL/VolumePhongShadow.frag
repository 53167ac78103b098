#version 120
#define SHADOW
// Lit volume whose own density shadows the light.
// Each fragment of a slice stands for the slab from its slice to the next nearer one
// (intervalGlobal long in box units): it takes subQuality samples through the slab, looks each
// value up in the colour curve (textureCC, unit 1) and composites them front to back; the slices
// blend back to front. The curve's alpha is the opacity of a layer as thick as the box, so
// "Quality=" and "SubQuality=" change the detail, not the opacity.
uniform sampler3D texturVolume;
uniform sampler1D textureCC;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform int forceDiscard0;
uniform float trim;
uniform float intervalGlobal;
uniform int subQuality;
varying vec3 vTex;
varying vec3 vDir;
uniform int lightNumber;
uniform vec3 ambientClr;
uniform vec3 diffuseClr;
uniform vec3 specularClr;
uniform int shininess;
#ifdef SCATTER
uniform float scatterFactor;
#endif
#ifdef SHADOW
uniform float shadowAlpha;
uniform int shadowQuality;
#endif

//##FUNC_VOLUME_COORD_BEGIN##
vec3 VolumeCoord(vec3 p) { return p; }
//##FUNC_VOLUME_COORD_END##
//##FUNC_VOLUME_MASK_BEGIN##
bool VolumeMask(vec3 p) { return true; }
//##FUNC_VOLUME_MASK_END##
float Value(vec3 p) { return texture3D(texturVolume, VolumeCoord(p)).r; }
bool Inside(vec3 p) {
    return all(greaterThanEqual(p, clipBoxMin)) && all(lessThanEqual(p, clipBoxMax)) && VolumeMask(p);
}
// The gradient of the values: the surface normal of a lit volume, pointing out of the dense part.
vec3 Normal(vec3 p) {
    vec3 e = vec3(1.0 / 128.0, 0.0, 0.0);
    vec3 g = vec3(Value(p + e.xyy) - Value(p - e.xyy), Value(p + e.yxy) - Value(p - e.yxy),
                  Value(p + e.yyx) - Value(p - e.yyx));
    return dot(g, g) > 0.0 ? -normalize(g) : -vDir;
}
// The direction to light i in box space.
vec3 LightDir(int i, vec3 p) {
    vec4 l = gl_ModelViewMatrixInverse * gl_LightSource[i].position;
    return normalize(l.w == 0.0 ? l.xyz : l.xyz / l.w - (p - vec3(0.5)));
}
// What reaches p from the light along l: the volume's own absorption towards it, shadowQuality
// steps through the box, scaled by shadowAlpha.
float Lit(vec3 p, vec3 l) {
#ifdef SHADOW
    int m = max(shadowQuality, 1);
    float t = 1.0;
    for (int k = 1; k <= m; ++k) {
        vec3 q = p + l * (0.87 * float(k) / float(m));
        if (any(lessThan(q, vec3(0.0))) || any(greaterThan(q, vec3(1.0))))
            break;
        if (!Inside(q))
            continue;
        float a = texture1D(textureCC, Value(q)).a;
        t *= pow(1.0 - clamp(a * abs(shadowAlpha), 0.0, 0.999999), 0.87 / float(m));
    }
    return t;
#else
    return 1.0;
#endif
}
vec3 Shade(vec3 p, vec3 albedo) {
    vec3 nrm = Normal(p);
    vec3 c = ambientClr * albedo;
    for (int i = 0; i < 8; ++i) {
        if (i >= lightNumber)
            break;
        vec3 l = LightDir(i, p);
        float lit = Lit(p, l);
        float d = max(dot(nrm, l), 0.0);
        float s = pow(max(dot(reflect(-l, nrm), -vDir), 0.0), float(max(shininess, 1)));
        c += (diffuseClr * albedo * d + specularClr * s) * lit;
#ifdef SCATTER
        // Light scattered forward towards the eye, whatever the normal.
        c += albedo * diffuseClr * lit * max(scatterFactor, 0.0) * pow(max(dot(l, vDir), 0.0), 4.0);
#endif
    }
    return c;
}
void main() {
    int n = max(subQuality, 1);
    float step = intervalGlobal / float(n);
    vec4 sum = vec4(0.0);
    // From the slice towards the eye: the nearest sample of the slab is the last.
    for (int i = n - 1; i >= 0; --i) {
        vec3 p = vTex - vDir * step * float(i);
        if (!Inside(p))
            continue;
        float v = Value(p);
        if (v < trim || (forceDiscard0 != 0 && v <= 0.0))
            continue;
        vec4 c = texture1D(textureCC, v);
        float a = 1.0 - pow(1.0 - clamp(c.a, 0.0, 0.999999), step);
        sum.rgb = sum.rgb * (1.0 - a) + Shade(p, c.rgb) * a;
        sum.a = sum.a * (1.0 - a) + a;
    }
    if (sum.a <= 0.0)
        discard;
    float alpha = sum.a;
    gl_FragColor = vec4(sum.rgb / alpha, alpha);
}
