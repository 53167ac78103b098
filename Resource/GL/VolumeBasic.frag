#version 120
// Unlit volume.
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
        sum.rgb = sum.rgb * (1.0 - a) + c.rgb * a;
        sum.a = sum.a * (1.0 - a) + a;
    }
    if (sum.a <= 0.0)
        discard;
    float alpha = sum.a;
    gl_FragColor = vec4(sum.rgb / alpha, alpha);
}
