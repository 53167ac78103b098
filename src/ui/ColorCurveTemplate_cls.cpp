#include "ColorCurveTemplate_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "KeyFrame_cls.h"

#include <wx/intl.h>

wxArrayString ColorCurveTemplate_cls::GetAstrAlphaTemplate() {
    wxArrayString astr;
    for (const char* str : {"Keep", "Linear", "Opaque", "Fade Out"})
        astr.Add(wxGetTranslation(str));
    return astr;
}

wxArrayString ColorCurveTemplate_cls::GetAstrPreset() {
    wxArrayString astr;
    if (GpCColorCurveProvider)
        for (int i = 0; i < GpCColorCurveProvider->GetNumColorCurve(); ++i)
            astr.Add(GpCColorCurveProvider->GetPCColorCurve(i)->GetStrName());
    return astr;
}

void ColorCurveTemplate_cls::SetAlphaKeys(int alphaTemplate, ColorCurve_cls* p) {
    if (!p || p->mVCParam.size() < 4 || alphaTemplate <= ALPHA_KEEP || alphaTemplate >= ALPHA_COUNT)
        return;
    const double rows[ALPHA_COUNT][2] = {{0.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}, {1.0, 0.0}};
    Parameter_cls& alpha = p->mVCParam[3];
    alpha.mVCKey.assign(2, KeyFrame_cls());
    for (int k = 0; k < 2; ++k) {
        alpha.mVCKey[k].mX = k;
        alpha.mVCKey[k].mValue = rows[alphaTemplate][k];
    }
    ++alpha.mProcCounter;
}

std::unique_ptr<ColorCurve_cls> ColorCurveTemplate_cls::GetPNewCopy(ColorCurve_cls& rCurrent) {
    wxArrayString astrMembers;
    for (const Parameter_cls& param : rCurrent.mVCParam)
        astrMembers.Add(param.GetStrName());
    auto pCopy = std::make_unique<ColorCurve_cls>(rCurrent.GetStrName(), astrMembers);
    pCopy->CopyColorCurveFromP(&rCurrent);
    return pCopy;
}

std::unique_ptr<ColorCurve_cls> ColorCurveTemplate_cls::GetPNewCurve(ColorCurve_cls& rCurrent, int preset,
                                                                     int alphaTemplate) {
    if (rCurrent.mVCParam.size() != 4)
        return nullptr;
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCopy(rCurrent);
    if (preset >= 0) {
        auto pPreset = GetPNewCopy(rCurrent);
        if (!ColorCurveProvider_cls::SetPresetKeys(preset, pPreset.get()))
            return nullptr;
        // The colour of the preset; the copy's alpha is the user's until a template replaces it.
        for (int c = 0; c < 3; ++c)
            pCurve->mVCParam[c].mVCKey = pPreset->mVCParam[c].mVCKey;
    }
    SetAlphaKeys(alphaTemplate, pCurve.get());
    return pCurve;
}

bool ColorCurveTemplate_cls::ApplyPresetCommand(ColorCurve_cls& rCurve, const wxString& strTag, int preset,
                                                int alphaTemplate) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCurve(rCurve, preset, alphaTemplate);
    if (!pCurve)
        return false;
    rCurve.CopyColorCurveCommand(pCurve.get(), strTag, true);
    return true;
}

bool ColorCurveTemplate_cls::ApplyAlphaTemplateCommand(ColorCurve_cls& rCurve, const wxString& strTag,
                                                       int alphaTemplate) {
    if (alphaTemplate <= ALPHA_KEEP || alphaTemplate >= ALPHA_COUNT)
        return false;
    return ApplyPresetCommand(rCurve, strTag, -1, alphaTemplate);
}

void ColorCurveTemplate_cls::FlipCommand(ColorCurve_cls& rCurve, const wxString& strTag) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCopy(rCurve);
    pCurve->Flip();
    rCurve.CopyColorCurveCommand(pCurve.get(), strTag, true);
}

void ColorCurveTemplate_cls::SwapRGBCommand(ColorCurve_cls& rCurve, const wxString& strTag) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCopy(rCurve);
    pCurve->SwapRGB();
    rCurve.CopyColorCurveCommand(pCurve.get(), strTag, true);
}

void ColorCurveTemplate_cls::SetStopColorCommand(ColorCurve_cls& rCurve, const wxString& strTag, double x,
                                                 double r, double g, double b) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCopy(rCurve);
    const double values[3] = {r, g, b};
    for (int c = 0; c < 3 && c < static_cast<int>(pCurve->mVCParam.size()); ++c) {
        Parameter_cls& param = pCurve->mVCParam[c];
        const int k = param.GetKeyIndex(x);
        if (k >= 0) {
            param.mVCKey[k].mValue = values[c];
            continue;
        }
        // A new key takes the type of the key it follows, as a key made in the editor would.
        KeyFrame_cls key;
        const int before = param.GetControllingKey(x);
        if (before >= 0)
            key = param.mVCKey[before];
        key.mX = x;
        key.mValue = values[c];
        key.mbSelected = false;
        key.mbActive = false;
        param.mVCKey.insert(param.mVCKey.begin() + (before + 1), key);
    }
    rCurve.CopyColorCurveCommand(pCurve.get(), strTag, true);
}
