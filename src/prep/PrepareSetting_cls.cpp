#include "PrepareSetting_cls.h"

#include "ViewerClone_cls.h"

#include <algorithm>
#include <cstdlib>

namespace {

long long GetItemINT(AttributeClone_cls* pAttribute, const wxString& strHead, long long def) {
    ConfItem_cls* pItem = pAttribute->GetPCItem(strHead);
    return pItem ? pItem->GetBodyINT() : def;
}

// The first value of a group at time, or def when there is no such group or no value.
double GetGroupValue(AttributeClone_cls* pAttribute, const wxString& strGroup, double time, double def,
                     size_t member = 0) {
    if (!pAttribute)
        return def;
    ParamGroup_cls* pGroup = pAttribute->GetPCParamGroup(strGroup);
    if (!pGroup)
        return def;
    std::vector<double> values = pGroup->GetVInterpolatedValue(time, true, nullptr, false);
    return member < values.size() ? values[member] : def;
}

// Three numbers separated by blanks or commas into out; out stays as it is unless all three read.
void ReadTriple(const wxString& str, double* out) {
    double v[3];
    wxString rest = str;
    rest.Replace(",", " ");
    const wxScopedCharBuffer buf = rest.utf8_str();
    const char* p = buf.data();
    for (double& x : v) {
        char* pEnd = nullptr;
        x = std::strtod(p, &pEnd);
        if (pEnd == p)
            return;
        p = pEnd;
    }
    std::copy(v, v + 3, out);
}

} // namespace

void PrepareSetting_cls::ReadFromClone(ViewerClone_cls* pViewer, ViewerClone_cls* pMaterial, double time) {
    if (pViewer) {
        mInterpolateBy = static_cast<int>(pViewer->GetINT("InterpolateBy=", mInterpolateBy));
        mInterpType = static_cast<int>(pViewer->GetINT("InterpType=", mInterpType));
        mVanishSizeType = static_cast<int>(pViewer->GetINT("VanishSizeType=", mVanishSizeType));
        mExtrapolateType = static_cast<int>(pViewer->GetINT("ExtrapolateType=", mExtrapolateType));
        mSortType = static_cast<int>(pViewer->GetINT("SortType=", mSortType));
        mSortFrequency = pViewer->GetDOUBLE("SortFrequency=", mSortFrequency);
        mClassifyType = static_cast<int>(pViewer->GetINT("ClassifyType=", mClassifyType));
        mStrClassify = pViewer->GetSTR("Classify=", mStrClassify);
        mAlphaCrit = pViewer->GetDOUBLE("AlphaCrit=", mAlphaCrit);
        mPeriodicType = static_cast<int>(pViewer->GetINT("PeriodicBox=", mPeriodicType));
        ReadTriple(pViewer->GetSTR("PeriodicBoxLow=", wxEmptyString), mBoxLo);
        ReadTriple(pViewer->GetSTR("PeriodicBoxHigh=", wxEmptyString), mBoxHi);
        // Downsizing entries multiply; the type of the last active one counts.
        const int nDown = pViewer->GetNumAttribute("ParticleDownsizing_cls");
        for (int i = 0; i < nDown; ++i) {
            AttributeClone_cls* pDown = pViewer->GetPCAttribCloneFromAttribName("ParticleDownsizing_cls", i);
            if (GetItemINT(pDown, "Validity=", 1) == 0)
                continue;
            const long long factor = GetItemINT(pDown, "Downsize=", 1);
            if (factor >= 1)
                mDownsize = static_cast<int>(std::min<long long>(1LL << 30, mDownsize * factor));
            mDownsizeType = static_cast<int>(GetItemINT(pDown, "DownsizeType=", 0));
        }
        const int nCurve = pViewer->GetNumAttribute("ColorCurve_cls");
        if (nCurve > 0)
            mCurveCount = nCurve;
    }
    ViewerClone_cls* pSource = pMaterial ? pMaterial : pViewer;
    if (!pSource)
        return;
    mMaterialCount = std::min(kMaterialMax, pSource->GetNumAttribute("MaterialParticle_cls"));
    for (int m = 0; m < mMaterialCount; ++m) {
        AttributeClone_cls* pMat = pSource->GetPCAttribCloneFromAttribName("MaterialParticle_cls", m);
        mColorCurveIndex[m] = static_cast<int>(GetItemINT(pMat, "ColorCurveIndex=", 0));
        mColorCurveType[m] = static_cast<int>(GetItemINT(pMat, "ColorCurveType=", 0));
        mColorCurveDepend[m] = static_cast<int>(GetItemINT(pMat, "ColorCurveDepend=", 3));
        mBaseType[m] = static_cast<int>(GetItemINT(pMat, "BaseType=", 0));
        mSizeType[m] = static_cast<int>(GetItemINT(pMat, "SizeType=", 0));
        mEmission[m] = GetGroupValue(pMat, "Emission", time, 0.0);
        // AlphaFactor, AlphaModBase, AlphaModMax.
        std::vector<double> alpha;
        if (ParamGroup_cls* pAlpha = pMat->GetPCParamGroup("Alpha Modifier"))
            alpha = pAlpha->GetVInterpolatedValue(time, true, nullptr, false);
        alpha.resize(3, 1.0);
        mAlpha[m] = GetMaterialAlpha(static_cast<int>(GetItemINT(pMat, "AlphaModifier=", 0)), alpha[0],
                                     alpha[1], alpha[2]);
        // Two components: the point size and the sphere size.
        mSizeFactor[m] = GetGroupValue(pMat, "SizeFactor", time, 1.0, mBaseType[m] == 2 ? 1 : 0);
        AttributeClone_cls* pCurve =
            pViewer ? pViewer->GetPCAttribCloneFromAttribName("ColorCurve_cls", mColorCurveIndex[m])
                    : nullptr;
        mRange0[m] = GetGroupValue(pCurve, "Range", time, 0.0, 0);
        mRange1[m] = GetGroupValue(pCurve, "Range", time, 1.0, 1);
    }
}

double PrepareSetting_cls::GetMaterialAlpha(int modifier, double factor, double base, double max) {
    if (modifier != 1)
        return factor;
    if (base <= 0.0)
        return factor * max;
    return factor * std::min(max, 1.0 / (base * base));
}

wxString PrepareSetting_cls::GetStrValues() const {
    wxString str;
    str << mInterpolateBy << "," << mInterpType << "," << mVanishSizeType << "," << mExtrapolateType << ","
        << mClassifyType << "," << mStrClassify << "," << mDownsize << "," << mDownsizeType << ","
        << mMaterialCount << "," << mCurveCount << "," << mPeriodicType
        << wxString::Format(",%.17g,%.17g,%.17g,%.17g,%.17g,%.17g", mBoxLo[0], mBoxLo[1], mBoxLo[2],
                            mBoxHi[0], mBoxHi[1], mBoxHi[2]);
    for (int m = 0; m < kMaterialMax; ++m)
        str << ";" << mSizeType[m] << ","
            << wxString::Format("%.9g,%.9g,%.9g", mSizeFactor[m], mAlpha[m], mEmission[m]) << ","
            << mBaseType[m] << "," << mColorCurveType[m] << "," << mColorCurveIndex[m] << ","
            << mColorCurveDepend[m] << wxString::Format(",%.9g,%.9g", mRange0[m], mRange1[m]);
    return str;
}
