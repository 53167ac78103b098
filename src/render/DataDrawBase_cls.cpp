#include "DataDrawBase_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"
#include "SceneObj_cls.h"
#include "TextureProvider1D_cls.h"

#include <algorithm>
#include <vector>

DataDrawBase_cls::~DataDrawBase_cls() {
    if (GpCTextureProvider1D)
        for (const void* p : mSetOwner)
            GpCTextureProvider1D->Release(p);
}

ColorCurve_cls* DataDrawBase_cls::GetPCCurve(SceneObj_cls& obj) {
    return static_cast<ColorCurve_cls*>(obj.GetPCAttributeFromAttribName("ColorCurve_cls", 0));
}

void DataDrawBase_cls::GetMaterialColor(SceneObj_cls& obj, double nt, float* pRGBA) {
    std::fill(pRGBA, pRGBA + 4, 1.f);
    Material_cls* pMaterial = obj.GetPCMaterial();
    if (!pMaterial)
        return;
    const std::vector<double> c = pMaterial->GetColor("Diffuse", nt);
    for (size_t i = 0; i < 4 && i < c.size(); ++i)
        pRGBA[i] = static_cast<float>(c[i]);
}

ColorCurve_cls* DataDrawBase_cls::GetCurveMap(SceneObj_cls& obj, bool bCurve, double nt, double& a,
                                              double& b) {
    ColorCurve_cls* pCurve = bCurve ? GetPCCurve(obj) : nullptr;
    a = pCurve ? pCurve->GetRemapX(0.0, nt) : 0.0;
    b = pCurve ? pCurve->GetRemapX(1.0, nt) : 0.0;
    return pCurve;
}

GLuint DataDrawBase_cls::UpdateColorTable(const void* pOwner, SceneObj_cls& obj, bool bCurve, double nt,
                                          wxString& strStamp) {
    if (!GpCTextureProvider1D)
        return 0;
    ColorCurve_cls* pCurve = bCurve ? GetPCCurve(obj) : nullptr;
    float color[4];
    GetMaterialColor(obj, nt, color);
    wxString strNow;
    if (pCurve) {
        // The edit counter, and a few samples: a new curve may take an old one's place and count.
        strNow.Printf("curve %p:%s", static_cast<const void*>(pCurve),
                      pCurve->ParamGroup_cls::GetStrProcCounter());
        for (double x : {0.0, 0.25, 0.5, 0.75, 1.0})
            for (double v : pCurve->GetVInterpolatedValue(x, true, nullptr, false))
                strNow << wxString::Format(" %.6g", v);
    } else
        strNow.Printf("colour %.9g %.9g %.9g %.9g", color[0], color[1], color[2], color[3]);
    const GLuint found = GpCTextureProvider1D->Find(pOwner);
    if (found != 0 && strNow == strStamp)
        return found;
    strStamp = strNow;
    std::vector<float> vTable(static_cast<size_t>(kTableWidth) * 4);
    for (int i = 0; i < kTableWidth; ++i) {
        float* px = vTable.data() + 4 * static_cast<size_t>(i);
        if (!pCurve) {
            std::copy(color, color + 4, px);
            continue;
        }
        // The curve at the texel's own position of its domain 0 .. 1.
        std::vector<double> v = pCurve->GetVInterpolatedValue(i / (kTableWidth - 1.0), true, nullptr, false);
        v.resize(4, 1.0);
        ColorCurve_cls::TrimColorVector(v);
        for (int c = 0; c < 4; ++c)
            px[c] = static_cast<float>(v[static_cast<size_t>(c)]);
    }
    mSetOwner.insert(pOwner);
    return GpCTextureProvider1D->Upload(pOwner, vTable.data(), kTableWidth);
}

void DataDrawBase_cls::ReleaseColorTable(const void* pOwner) {
    if (GpCTextureProvider1D && mSetOwner.erase(pOwner))
        GpCTextureProvider1D->Release(pOwner);
}
