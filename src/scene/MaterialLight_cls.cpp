#include "MaterialLight_cls.h"

#include "Attribute_cls.h"

void MaterialLight_cls::AddMaterialLightGroups(Attribute_cls& attr) {
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("Ambient", "R", "G", "B"), 0.2, 0.2, 0.2);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("Diffuse", "R", "G", "B"), 0.8, 0.8, 0.8);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("Specular", "R", "G", "B"), 0.5, 0.5, 0.5);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("Emission", "R", "G", "B"), 0.0, 0.0, 0.0);
    attr.AddOneDimParam("Shininess", "Value", 32.0);
    attr.AddOneDimParam("Alpha", "Value", 1.0);
}

void MaterialLight_cls::AddLightSourceGroups(Attribute_cls& attr) {
    attr.AddOneDimParam("SpotCutoff", "Angle", 30.0);
    attr.AddOneDimParam("SpotExponent", "Value", 10.0);
    attr.InitializeAndPushParam(attr.GetPCNewParamGroup("Attenuation", "Constant", "Linear", "Quadratic"),
                                1.0, 0.0, 0.0);
}
