#include "UiStringTable_cls.h"

#include "SceneClassWord_cls.h"

#include <map>

namespace {

std::vector<wxString> FromArray(const wxArrayString& a) {
    return std::vector<wxString>(a.begin(), a.end());
}

} // namespace

const std::vector<wxString>& UiStringTable_cls::GetList(const wxString& strName) {
    // The scene's own lists stay where the scene keeps them; the rest are the panels' words.
    static const std::map<wxString, std::vector<wxString>> sMapLists = {
        {"Composite", {"Data", "Image"}},
        {"DefaultKey", {"Linear", "Hermite", "Hermite Ease", "Step", "Auto"}},
        {"CameraType", FromArray(SceneClassWord_cls::GetAstrCameraType())},
        {"EyeType", FromArray(SceneClassWord_cls::GetAstrEyeType())},
        {"StereoType", FromArray(SceneClassWord_cls::GetAstrStereoType())},
        {"FogType", FromArray(SceneClassWord_cls::GetAstrFogType())},
        {"LightType", FromArray(SceneClassWord_cls::GetAstrLightType())},
        {"PrimitiveType", FromArray(SceneClassWord_cls::GetAstrPrimitiveType())},
        {"BlendType", {"Alpha", "Add", "Multiply", "None"}},
        {"TextureWrap", {"Repeat", "Clamp"}},
        {"TextureInterp", {"Nearest", "Linear"}},
        {"TextureMode", {"Modulate", "Replace"}},
        {"Align", {"Left", "Center", "Right"}},
        {"1stBufSizeIdx", {"256", "512", "1024", "2048", "4096", "8192", "16384"}},
        {"TargetType", {"All", "type 0", "type 1", "type 2", "type 3"}},
        {"DependType", {"Index depend", "ID depend", "Size depend", "Value0", "Value1", "Value2"}},
        {"FilteringType", {"Show following particles", "Hide following particles", "Force showing"}},
        {"IndexType", {"Particle index", "Particle ID"}},
        // "Diffierence" is the panel's own spelling.
        {"BooleanType", {"Intersect", "Diffierence", "Add"}},
        {"BooleanShape", {"Box", "Sphere", "Object"}},
        {"DownsizeType", {"by index", "by ID"}},
        {"BillboardRotOrder", {"YPR", "RPY"}},
        {"Direction", {"+X", "-X", "+Y", "-Y", "+Z", "-Z"}},
        {"Axis", {"X", "Y", "Z"}},
        {"Coord", {"Own axes", "Parent's axes"}},
        {"CoordType", {"Cartesian", "Cylindrical", "Spherical", "Custom"}},
        {"MaskType", {"Sphere", "Cylinder", "Outside sphere", "Outside cylinder"}},
        {"StreamFilteringType", {"Show following lines", "Hide following lines"}},
        {"SetAlphaType", {"Hide below", "Hide above", "Fade in"}},
        {"RotateOrder", {"X first", "Z first"}},
        {"GLDepthIndex", {"GL_DEPTH24_STENCIL8", "GL_DEPTH32F_STENCIL8"}},
        {"PrefGZQuality", {"Small", "Fast"}},
    };
    static const std::vector<wxString> sVEmpty;
    auto it = sMapLists.find(strName);
    return it == sMapLists.end() ? sVEmpty : it->second;
}

int UiStringTable_cls::FindInList(const wxString& strName, const wxString& strText) {
    const std::vector<wxString>& vStr = GetList(strName);
    for (size_t i = 0; i < vStr.size(); ++i)
        if (vStr[i] == strText)
            return static_cast<int>(i);
    return -1;
}
