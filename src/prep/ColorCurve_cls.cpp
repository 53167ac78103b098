#include "ColorCurve_cls.h"

#include "ClassProvider_cls.h"
#include "ParamStream_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

// Lines that open or close something outside a curve's block: a block that never ended stops
// at them and leaves them to the loop outside.
bool IsOuterLine(const wxString& strHead) {
    return strHead == "ReadColorCurve" || strHead == "ReadProperties" || strHead == "SceneObjCtrl";
}

} // namespace

ColorCurve_cls::ColorCurve_cls(const wxString& strName, const wxArrayString& astrMemberNames)
    : Attribute_cls("ColorCurve_cls", strName), ParamGroup_cls(strName, astrMemberNames) {
    mpCRange = GetPCNewParamGroup("Range", "min", "max");
    InitializeAndPushParam(mpCRange, 0.0, 1.0);
    // The attribute finds and clones its own group part as a further group.
    mpCColorCurveGroup = static_cast<ParamGroup_cls*>(this);
    mbColorCurve = true;
    // The channels are keyed along the curve's position: a new key is a new key, not a new
    // value of the one constant.
    for (Parameter_cls& param : mVCParam)
        param.mCTimeDepend.SetBodyFromData(wxString("1"));
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

// ---- project form ---------------------------------------------------------------------------

void ColorCurve_cls::SerializeWithKeys(wxString& strOut, ColorCurve_cls* pKeys, bool bWithAlpha) {
    strOut += "ReadColorCurve::" + GetStrName() + "::Begin\n";
    Attribute_cls::Serialize(strOut);
    // The group part is written with the keys of pKeys standing in for a moment: the text of a
    // copy is this curve's text with other keys.
    std::vector<std::vector<KeyFrame_cls>> vSaved;
    if (pKeys && pKeys != this) {
        for (size_t i = 0; i < mVCParam.size(); ++i) {
            vSaved.push_back(mVCParam[i].mVCKey);
            if (i < pKeys->mVCParam.size() && (i < 3 || bWithAlpha))
                mVCParam[i].mVCKey = pKeys->mVCParam[i].mVCKey;
        }
    }
    ParamGroup_cls::Serialize(strOut);
    for (size_t i = 0; i < vSaved.size(); ++i)
        mVCParam[i].mVCKey = std::move(vSaved[i]);
    strOut += "ReadColorCurve::End\n";
}

void ColorCurve_cls::Serialize(wxString& strOut) {
    SerializeWithKeys(strOut, nullptr, true);
}

void ColorCurve_cls::SkipBlock(std::wistream& stream, const wxString& strEndHead) {
    ParamStream_cls reader;
    wxString strLine;
    while (reader.GetLine(stream, strLine)) {
        const wxString strHead = ParamStream_cls::PopHead(strLine);
        if (strHead == strEndHead && strLine == "End")
            return;
        if (IsOuterLine(strHead) && strHead != strEndHead) {
            reader.PutBack(stream);
            return;
        }
        if (strHead == "ReadColorCurve") {
            reader.PutBack(stream);
            return;
        }
    }
}

void ColorCurve_cls::ReadGroupBlock(std::wistream& stream) {
    ParamStream_cls reader;
    wxString strLine;
    while (reader.GetLine(stream, strLine)) {
        const wxString strHead = ParamStream_cls::PopHead(strLine);
        if (strHead == "ReadParamGroup" || strHead == "ReadAttribute" || IsOuterLine(strHead)) {
            if (strHead == "ReadParamGroup" && strLine == "End")
                return;
            wxLogWarning("ColorCurve %s: %s::%s inside the channels (strLine.IsSameAs(\"End\"))",
                         GetStrName(), strHead, strLine);
            reader.PutBack(stream);
            return;
        }
        if (strHead == "ConfItemList") {
            // The settings of another curve's channels (a clipboard text) are not taken: only
            // their keys are.
            ConfListContainer_cls& groupList = static_cast<ParamGroup_cls&>(*this);
            if (!groupList.ReadStrLine(stream, strHead, strLine))
                SkipBlock(stream, "ConfItemList");
            continue;
        }
        ParamGroup_cls::ReadStrLine(stream, strHead, strLine);
    }
    wxLogWarning("ColorCurve %s: the text ends inside the channels (strLine.IsSameAs(\"End\"))",
                 GetStrName());
}

bool ColorCurve_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest,
                                 bool bCheckName) {
    if (strHead != "ReadColorCurve")
        return Attribute_cls::ReadStrLine(stream, strHead, strRest);
    wxString strLine = strRest;
    const wxString strName = PopStrItemFromStrLine(strLine, "::");
    if (strName == "End")
        return false; // a stray end line is nobody's
    if (bCheckName && strName != GetStrName()) {
        if (mpCOwner) {
            // The owner offers the line to each of its curves in turn: the block of a sibling is
            // not an error, and only the first curve speaks for a name that no curve has.
            Attribute_cls* pNamed = mpCOwner->GetPCAttribute(strName, 1);
            if (pNamed && pNamed->IsAttributeSameAs("ColorCurve_cls"))
                return false;
            if (mpCOwner->GetPCAttributeFromAttribName("ColorCurve_cls", 0) != this)
                return false;
        }
        wxLogWarning(
            "ColorCurve %s: the block of \"%s\" is skipped (strName.IsSameAs(mCstrName.GetBodySTR()))",
            GetStrName(), strName);
        SkipBlock(stream, "ReadColorCurve");
        return true;
    }
    if (strLine != "Begin") {
        wxLogWarning("ColorCurve %s: ReadColorCurve::%s read, ::Begin expected", GetStrName(), strRest);
        return true;
    }
    ParamStream_cls reader;
    while (reader.GetLine(stream, strLine)) {
        const wxString strLineHead = ParamStream_cls::PopHead(strLine);
        if (strLineHead == "ReadAttribute") {
            wxString strAttr = strLine;
            const wxString strClass = PopStrItemFromStrLine(strAttr, "::");
            PopStrItemFromStrLine(strAttr, "::");
            // The attribute part: read as this curve's whatever name the text gives it.
            if (strClass == GetStrAttributeName() && strAttr == "Begin")
                Attribute_cls::ReadStrLine(stream, strLineHead,
                                           GetStrAttributeName() + "::" + GetStrName() + "::Begin");
            continue;
        }
        if (strLineHead == "ReadParamGroup") {
            if (strLine != "End")
                ReadGroupBlock(stream);
            continue;
        }
        if (strLineHead == "ReadColorCurve") {
            wxString strEnd = strLine;
            if (PopStrItemFromStrLine(strEnd, "::") == "End")
                return true;
            wxLogWarning("ColorCurve %s: ReadColorCurve::%s inside the block "
                         "(PopStrItemFromStrLine(strLine, wxT(\"::\")).IsSameAs(wxT(\"End\")))",
                         GetStrName(), strLine);
            reader.PutBack(stream);
            return true;
        }
        if (IsOuterLine(strLineHead)) {
            wxLogWarning("ColorCurve %s: %s::%s before the end of the block "
                         "(PopStrItemFromStrLine(strLine, wxT(\"::\")).IsSameAs(wxT(\"End\")))",
                         GetStrName(), strLineHead, strLine);
            reader.PutBack(stream);
            return true;
        }
        // Anything else is not part of a curve and is dropped.
    }
    wxLogWarning("ColorCurve %s: the text ends inside the block "
                 "(PopStrItemFromStrLine(strLine, wxT(\"::\")).IsSameAs(wxT(\"End\")))",
                 GetStrName());
    return true;
}

// ---- copies ---------------------------------------------------------------------------------

void ColorCurve_cls::CopyKeys(ColorCurve_cls* pSource, bool bWithAlpha) {
    if (!pSource || pSource == this)
        return;
    for (size_t i = 0; i < mVCParam.size() && i < pSource->mVCParam.size(); ++i) {
        if (i >= 3 && !bWithAlpha)
            continue;
        mVCParam[i].mVCKey = pSource->mVCParam[i].mVCKey;
        ++mVCParam[i].mProcCounter;
    }
}

void ColorCurve_cls::CopyColorCurveFromP(ColorCurve_cls* pSource) {
    CopyKeys(pSource, true);
}

void ColorCurve_cls::CopyColorCurveCommand(ColorCurve_cls* pSource, wxString strTag, bool bWithAlpha) {
    if (!pSource || pSource == this)
        return;
    if (strTag.empty() && mpCOwner)
        strTag = mpCOwner->GetStrTag();
    if (strTag.empty() || !GpCUndo) {
        CopyKeys(pSource, bWithAlpha);
        return;
    }
    // Both texts are whole blocks of this curve, sent to the owner: the undo text is the curve
    // as it stands, the do text the same with the source's keys.
    wxString strUndo;
    wxString strDo;
    Serialize(strUndo);
    SerializeWithKeys(strDo, pSource, bWithAlpha);
    strUndo.RemoveLast(); // the pair adds its own newline
    strDo.RemoveLast();
    GpCUndo->PushCommandPairAndDo(strTag + "::" + strUndo, strTag + "::" + strDo);
}

std::unique_ptr<ColorCurve_cls> ColorCurve_cls::GetPNewCurveFromString(const wxString& strText) {
    std::wistringstream stream(strText.ToStdWstring());
    ParamStream_cls reader;
    wxString strLine;
    // The first line that says anything must open a curve.
    while (reader.GetLine(stream, strLine) && strLine.Trim().Trim(false).empty()) {
    }
    const wxString strHead = ParamStream_cls::PopHead(strLine);
    if (strHead != "ReadColorCurve" || !strLine.EndsWith("::Begin")) {
        wxLogWarning("ColorCurve %s: the text holds no colour curve", GetStrName());
        return nullptr;
    }
    wxArrayString astrMembers;
    for (const Parameter_cls& param : mVCParam)
        astrMembers.Add(param.GetStrName());
    auto pCurve = std::make_unique<ColorCurve_cls>("Clipboard", astrMembers);
    pCurve->ReadStrLine(stream, strHead, strLine, false);
    return pCurve;
}

bool ColorCurve_cls::CopyColorCurveFromString(const wxString& strText, bool bWithAlpha) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCurveFromString(strText);
    if (!pCurve)
        return false;
    CopyKeys(pCurve.get(), bWithAlpha);
    return true;
}

bool ColorCurve_cls::Paste(wxString& strText, wxString strTag) {
    std::unique_ptr<ColorCurve_cls> pCurve = GetPNewCurveFromString(strText);
    if (!pCurve)
        return false;
    CopyColorCurveCommand(pCurve.get(), strTag, true);
    return true;
}
