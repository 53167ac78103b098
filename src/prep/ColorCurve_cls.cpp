#include "ColorCurve_cls.h"

#include "TimeCtrl_cls.h"

#include <algorithm>
#include <cmath>

ColorCurve_cls::ColorCurve_cls(const wxString& strName, const wxArrayString& astrMemberNames)
    : Attribute_cls("ColorCurve_cls", strName), ParamGroup_cls(strName, astrMemberNames) {
    mpCRange = GetPCNewParamGroup("Range", "min", "max");
    InitializeAndPushParam(mpCRange, 0.0, 1.0);
    // The attribute finds and clones its own group part as a further group.
    mpCColorCurveGroup = static_cast<ParamGroup_cls*>(this);
}

ColorCurve_cls::~ColorCurve_cls() {
    mpCColorCurveGroup = nullptr;
}

void ColorCurve_cls::TrimColorVector(std::vector<double>& v) {
    for (double& x : v)
        x = std::clamp(x, 0.0, 1.0);
}

std::array<unsigned char, 4> ColorCurve_cls::GetColor(double position, double* alpha) {
    std::vector<double> v = GetVInterpolatedValue(position, false, nullptr, false);
    v.resize(4, 0.0);
    TrimColorVector(v);
    if (alpha)
        *alpha = v[3];
    return {static_cast<unsigned char>(v[0] * 255.0), static_cast<unsigned char>(v[1] * 255.0),
            static_cast<unsigned char>(v[2] * 255.0), 255};
}

std::array<unsigned char, 4> ColorCurve_cls::AlphaBlend(const std::array<unsigned char, 4>& a,
                                                        const std::array<unsigned char, 4>& b, double t) {
    std::array<unsigned char, 4> out{};
    for (int k = 0; k < 4; ++k)
        out[k] = static_cast<unsigned char>(t * b[k] + (1.0 - t) * a[k]);
    return out;
}

void ColorCurve_cls::GetRange(double nt, double& r0, double& r1) {
    std::vector<double> v = mpCRange->GetVInterpolatedValue(nt, true, nullptr, false);
    r0 = v.size() > 0 ? v[0] : 0.0;
    r1 = v.size() > 1 ? v[1] : 1.0;
}

double ColorCurve_cls::GetRemapX(double value) {
    TimeCtrl_cls* pTime = GetPCTimeCtrl();
    return GetRemapX(value, pTime ? pTime->GetCurrentNT() : 0.0);
}

double ColorCurve_cls::GetRemapX(double value, double nt) {
    double r0 = 0.0, r1 = 1.0;
    GetRange(nt, r0, r1);
    return r1 == r0 ? 1.0 : (value - r0) / (r1 - r0);
}

void ColorCurve_cls::ClearTexture() {
    mVTextureBytes.clear();
    mStrTextureDigest.clear();
}

bool ColorCurve_cls::PrepareTexture(bool wrap, float alphaScale, bool fixedTime) {
    TimeCtrl_cls* pTime = GetPCTimeCtrl();
    const double t = fixedTime || !pTime ? 0.0 : pTime->GetCurrentNT();
    double r0 = 0.0, r1 = 1.0;
    GetRange(t, r0, r1);
    wxString strDigest = ParamGroup_cls::GetStrProcCounter() + "/" + mpCRange->GetStrProcCounter();
    strDigest << wxString::Format("/%d/%g/%d/%f/%f", wrap ? 1 : 0, alphaScale, fixedTime ? 1 : 0, r0, r1);
    if (!mVTextureBytes.empty() && strDigest == mStrTextureDigest)
        return false;
    mStrTextureDigest = strDigest;
    mVTextureBytes.assign(4 * kTexelCount, 0);
    for (int i = 0; i < kTexelCount; ++i) {
        // The divisor is 1025 on purpose: the last texel stands just below 1.0.
        double x = i / 1025.0;
        x = r1 == r0 ? 1.0 : (x - r0) / (r1 - r0);
        if (wrap)
            x = x - std::floor(x);
        std::vector<double> v = GetVInterpolatedValue(x, false, nullptr, false);
        v.resize(4, 0.0);
        TrimColorVector(v);
        unsigned char* p = &mVTextureBytes[4 * static_cast<size_t>(i)];
        p[0] = static_cast<unsigned char>(v[0] * 255.0);
        p[1] = static_cast<unsigned char>(v[1] * 255.0);
        p[2] = static_cast<unsigned char>(v[2] * 255.0);
        const double a = alphaScale * v[3];
        p[3] = a > 1.0 ? 255 : static_cast<unsigned char>(a * 255.0);
    }
    ++mUploadCounter;
    return true;
}
