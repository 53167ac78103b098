// The lighting part of a material: the colours of the fixed-pipeline light model and the
// shininess, each an animated group. For a light source the same groups are the light's own
// colours, and the spot and attenuation groups are added.
#pragma once

class Attribute_cls;

class MaterialLight_cls {
public:
    // Adds "Ambient", "Diffuse", "Specular", "Emission" (R, G, B), "Shininess" and "Alpha".
    static void AddMaterialLightGroups(Attribute_cls& attr);
    // Adds "SpotCutoff" (Angle, degrees), "SpotExponent" (Value) and "Attenuation"
    // (Constant, Linear, Quadratic) for a light.
    static void AddLightSourceGroups(Attribute_cls& attr);
};
