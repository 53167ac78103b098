#include "ColorProvider_cls.h"

#include <epoxy/gl.h>

#include <vector>

ColorProvider_cls::ColorProvider_cls() {
    SetTag("ColorProvider");
    const wxString strTag = "VIEW3D";
    Add(&mCGLBG, "GLBG=", "0.22 0.22 0.24 1", strTag);
    // The later shadow steps add onto black: it stays black.
    Add(&mCBlack, "Black=", "0 0 0 0", strTag);
    Add(&mCMaskBG, "MaskBG=", "0.1 0.1 0.1 1", strTag);
    Add(&mCGLGrid, "GLGrid=", "0.45 0.45 0.45 1", strTag);
}

std::array<float, 4> ColorProvider_cls::GetColor(const wxString& strName) const {
    std::array<float, 4> rgba = {0.f, 0.f, 0.f, 1.f};
    const ConfItem_cls* pItem = GetPCItem(strName);
    if (!pItem)
        return rgba;
    const std::vector<double> v = pItem->GetBodyFLOATARRAY();
    for (size_t i = 0; i < 4 && i < v.size(); ++i)
        rgba[i] = static_cast<float>(v[i]);
    return rgba;
}

void ColorProvider_cls::SetGLClearColor(const wxString& strName) const {
    const std::array<float, 4> c = GetColor(strName);
    glClearColor(c[0], c[1], c[2], c[3]);
}
