#include "SceneClassWord_cls.h"

namespace {

wxArrayString MakeArray(std::initializer_list<const char*> words) {
    wxArrayString astr;
    for (const char* p : words)
        astr.Add(p);
    return astr;
}

int IndexOf(const wxArrayString& astr, const wxString& str) {
    for (size_t i = 0; i < astr.GetCount(); ++i)
        if (astr[i] == str)
            return static_cast<int>(i);
    return -1;
}

} // namespace

const wxArrayString& SceneClassWord_cls::GetAstrObjectClass() {
    static const wxArrayString astr = MakeArray(
        {"Primitive_cls", "MeshObj_cls", "TextObj_cls", "LightSource_cls", "Camera_cls", "VolumeBox_cls",
         "Isosurface_cls", "Particle_cls", "Streamline_cls", "HeightField_cls", "World_cls"});
    return astr;
}

bool SceneClassWord_cls::IsObjectClass(const wxString& strClass) {
    return IndexOf(GetAstrObjectClass(), strClass) >= 0;
}

wxString SceneClassWord_cls::GetStrClassFromKind(const wxString& strKind) {
    wxString strClass = strKind.EndsWith("_cls") ? strKind : strKind + "_cls";
    return IsObjectClass(strClass) ? strClass : wxString();
}

wxString SceneClassWord_cls::GetStrBaseName(const wxString& strClass) {
    wxString str = strClass;
    str.Replace("_cls", "", false);
    return str;
}

const wxArrayString& SceneClassWord_cls::GetAstrPrimitiveType() {
    static const wxArrayString astr = MakeArray({"Box", "Sphere", "Plane", "Cone", "Cylinder", "Empty"});
    return astr;
}

int SceneClassWord_cls::GetPrimitiveTypeFromStr(const wxString& strType) {
    return IndexOf(GetAstrPrimitiveType(), strType);
}

const wxArrayString& SceneClassWord_cls::GetAstrLightType() {
    static const wxArrayString astr = MakeArray({"ParallelLight", "PointLight", "SpotLight"});
    return astr;
}

int SceneClassWord_cls::GetLightTypeFromStr(const wxString& strType) {
    return IndexOf(GetAstrLightType(), strType);
}

const wxArrayString& SceneClassWord_cls::GetAstrCameraType() {
    static const wxArrayString astr = MakeArray({"Perspective", "Orthographic", "Fisheye4", "Fisheye3",
                                                 "Dual Fisheye", "Spherical Fisheye", "Equirecutangular"});
    return astr;
}

const wxArrayString& SceneClassWord_cls::GetAstrEyeType() {
    static const wxArrayString astr = MakeArray({"No Parallax", "LEFT", "RIGHT", "LINE BY LINE", "RED-CYAN",
                                                 "YELLOW-BLUE", "SIDE BY SIDE", "QUAD BUFFERING"});
    return astr;
}

const wxArrayString& SceneClassWord_cls::GetAstrStereoType() {
    static const wxArrayString astr = MakeArray({"No Stereo", "Off Axis", "Toe-in"});
    return astr;
}

const wxArrayString& SceneClassWord_cls::GetAstrFogType() {
    static const wxArrayString astr = MakeArray({"No Fog", "Linear", "Exp", "Exp2"});
    return astr;
}
