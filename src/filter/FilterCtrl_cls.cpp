#include "FilterCtrl_cls.h"

#include "Blur_cls.h"
#include "Exposure_cls.h"
#include "FBO_cls.h"
#include "FilterDepth_cls.h"
#include "FocalBlur_cls.h"
#include "Glare_cls.h"
#include "Legend_cls.h"
#include "Main_cls.h"
#include "Overlay_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "RemoveAlpha_cls.h"
#include "SSAO_cls.h"
#include "ShaderCtrl_cls.h"
#include "TextureBase_cls.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>
#include <wx/log.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <sstream>

namespace {

wxString Pop(wxString& str) {
    return Parser_cls::PopStrItemFromStrLine(str, "::");
}

// A copy of the frame's depth texture, so that filters read depth while the frame's own depth
// buffer stays untouched.
class DepthCopy_cls : public TextureBase_cls {
public:
    DepthCopy_cls(const TextureBase_cls& source) {
        mWidth = source.GetWidth();
        mHeight = source.GetHeight();
        mTexture = GLTexture_cls::Make();
        glBindTexture(GL_TEXTURE_2D, mTexture.Get());
        // Both sides of the copy must be complete and of the same sized format.
        glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, mWidth, mHeight, 0, GL_DEPTH_COMPONENT, GL_FLOAT,
                     nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glBindTexture(GL_TEXTURE_2D, 0);
        glCopyImageSubData(source.GetTexture(), GL_TEXTURE_2D, 0, 0, 0, 0, mTexture.Get(), GL_TEXTURE_2D, 0,
                           0, 0, 0, mWidth, mHeight, 1);
    }
};

void ClampColor(GLboolean mode) {
    glClampColor(GL_CLAMP_READ_COLOR, mode);
    glClampColor(GL_CLAMP_VERTEX_COLOR, mode);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, mode);
}

// A new buffer of the source's size on the source's canvas: alpha, no depth texture, 16 bits.
FBO_cls* NewPassFBO(FBO_cls* pSource) {
    auto* p = new FBO_cls(pSource->GetWidth(), pSource->GetHeight(), pSource->GetPCHost());
    p->MakeFBO(true, false);
    return p;
}

using Maker_fn = std::function<FilterBase_cls*(const wxString&)>;

template <class Filter_cls> std::pair<const wxString, Maker_fn> MakerOf(const char* strClass) {
    return {strClass, [](const wxString& strName) { return new Filter_cls(strName); }};
}

const std::map<wxString, Maker_fn>& Makers() {
    static const std::map<wxString, Maker_fn> sMakers = {MakerOf<Exposure_cls>("Exposure_cls"),
                                                         MakerOf<Blur_cls>("Blur_cls"),
                                                         MakerOf<Glare_cls>("Glare_cls"),
                                                         MakerOf<RemoveAlpha_cls>("RemoveAlpha_cls"),
                                                         MakerOf<Overlay_cls>("Overlay_cls"),
                                                         MakerOf<Legend_cls>("Legend_cls"),
                                                         MakerOf<FocalBlur_cls>("FocalBlur_cls"),
                                                         MakerOf<SSAO_cls>("SSAO_cls"),
                                                         MakerOf<FilterDepth_cls>("FilterDepth_cls")};
    return sMakers;
}

} // namespace

FilterCtrl_cls::FilterCtrl_cls() {
    SetTag("FilterCtrl");
}

FilterCtrl_cls::~FilterCtrl_cls() {
    Clear();
}

const std::vector<wxString>& FilterCtrl_cls::GetVStrFilterClass() {
    static const std::vector<wxString> sClasses = {"Exposure_cls",    "Blur_cls",    "Glare_cls",
                                                   "RemoveAlpha_cls", "Overlay_cls", "Legend_cls",
                                                   "FocalBlur_cls",   "SSAO_cls",    "FilterDepth_cls"};
    return sClasses;
}

FilterBase_cls* FilterCtrl_cls::GetPNewFilter(const wxString& strClass, const wxString& strName) {
    const auto it = Makers().find(strClass);
    if (it == Makers().end())
        return nullptr;
    FilterBase_cls* p = it->second(strName);
    p->SetTag(GetStrSelf() + strName);
    return p;
}

// ---- the frame ----------------------------------------------------------------------------

bool FilterCtrl_cls::DoesUseDepthBuffer() {
    for (FilterBase_cls* p : mLPCFilter)
        if (p->IsValid() && p->GetDepthUse() != FilterBase_cls::DEPTH_NONE)
            return true;
    return false;
}

void FilterCtrl_cls::ReleaseProcessed(FBO_cls* pProcessed) {
    delete pProcessed;
}

FBO_cls* FilterCtrl_cls::GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>& vPasspartout,
                                                 const PositionAndDirection_cls& pose, Camera_cls* pCamera,
                                                 FBO_cls* pDepth) {
    mPassCount = 0;
    std::vector<FilterBase_cls*> vValid;
    for (FilterBase_cls* p : mLPCFilter)
        if (p->IsValid())
            vValid.push_back(p);
    const int width = pSource->GetWidth();
    const int height = pSource->GetHeight();
    std::unique_ptr<DepthCopy_cls> pDepthCopy;
    if (pDepth && pDepth->GetPCDepthTexture() && DoesUseDepthBuffer())
        pDepthCopy = std::make_unique<DepthCopy_cls>(*pDepth->GetPCDepthTexture());

    FilterPass_cls pass;
    pass.mpVPasspartout = &vPasspartout;
    pass.mpPose = &pose;
    pass.mpCCamera = pCamera;
    pass.mWidth = width;
    pass.mHeight = height;
    pass.mTime = TimeCtrl_cls::GetClockNT();
    FBO_cls* pRunning = pSource;
    for (FilterBase_cls* pFilter : vValid) {
        const FilterBase_cls::DepthUse_enum depthUse = pFilter->GetDepthUse();
        // A filter that reads depth with none to read passes its image through.
        const bool bProgram = depthUse == FilterBase_cls::DEPTH_NONE || pDepthCopy;
        const int iterations = pFilter->GetIterNum();
        for (int iteration = 0; iteration < iterations; ++iteration) {
            FBO_cls* pNew = NewPassFBO(pSource);
            pass.mpCRunning = pRunning;
            // A program left bound by an earlier draw must not stand in for one that failed.
            if (GpCShaderCtrl)
                GpCShaderCtrl->EndShader();
            if (bProgram)
                pFilter->BeginPass(pass, iteration);
            pNew->Begin(true, false);
            ClampColor(GL_FALSE);
            const TextureBase_cls* pDrawn = pRunning;
            if (pDepthCopy && depthUse == FilterBase_cls::DEPTH_READ)
                FilterBase_cls::BindUnit1(pDepthCopy->GetTexture());
            else if (pDepthCopy && depthUse == FilterBase_cls::DEPTH_DRAW)
                pDrawn = pDepthCopy.get();
            // Opaque: a pass copies colour and alpha through its program as they are.
            pDrawn->DrawOnScreen2DFit(width, height, 0, true, 0);
            pFilter->End();
            if (depthUse == FilterBase_cls::DEPTH_READ)
                FilterBase_cls::BindUnit1(0);
            pNew->End();
            if (pRunning != pSource)
                delete pRunning;
            pRunning = pNew;
            ++mPassCount;
        }
    }
    pDepthCopy.reset();
    if (mPassCount > 0)
        return pRunning;
    // No pass ran: the caller still gets a buffer of its own, the source with alpha clamped.
    FBO_cls* pNew = NewPassFBO(pSource);
    pNew->Begin(true, false);
    ClampColor(GL_FALSE);
    ShaderParams_cls params;
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginClampAlpha(&params);
    pSource->DrawOnScreen2DFit(width, height, 0, false, 0);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    pNew->End();
    return pNew;
}

// ---- queries ------------------------------------------------------------------------------

bool FilterCtrl_cls::IsVaildFilterExist(const wxString& strAttributeName) const {
    for (FilterBase_cls* p : mLPCFilter)
        if (p->IsAttributeSameAs(strAttributeName) && p->IsValid())
            return true;
    return false;
}

bool FilterCtrl_cls::IsFilterExist(const wxString& strAttributeName) const {
    for (FilterBase_cls* p : mLPCFilter)
        if (p->IsAttributeSameAs(strAttributeName))
            return true;
    return false;
}

FilterBase_cls* FilterCtrl_cls::GetPCFromName(const wxString& strName) const {
    for (FilterBase_cls* p : mLPCFilter)
        if (p->GetStrName() == strName)
            return p;
    return nullptr;
}

FilterBase_cls* FilterCtrl_cls::GetPCFromIndex(int index) const {
    if (index < 0 || index >= GetCount())
        return nullptr;
    return *std::next(mLPCFilter.begin(), index);
}

int FilterCtrl_cls::GetIndexFromPC(const Attribute_cls* p) const {
    int index = 0;
    for (FilterBase_cls* pFilter : mLPCFilter) {
        if (pFilter == p)
            return index;
        ++index;
    }
    return -1;
}

std::list<FilterBase_cls*>::iterator FilterCtrl_cls::GetIterFromIndex(int index) {
    if (index < 0 || index >= GetCount())
        return mLPCFilter.end();
    return std::next(mLPCFilter.begin(), index);
}

std::list<FilterBase_cls*>::iterator FilterCtrl_cls::GetIterFromPC(const Attribute_cls* p) {
    return std::find(mLPCFilter.begin(), mLPCFilter.end(), p);
}

FilterBase_cls* FilterCtrl_cls::GetPCFromAddress(wxString strAddress) const {
    strAddress.StartsWith(GetStrSelf(), &strAddress);
    return GetPCFromName(Pop(strAddress));
}

namespace {

// The tag without the chain's head, whichever of the two it has.
wxString StripFilterHead(wxString strTag) {
    if (!strTag.StartsWith(FilterCtrl_cls::GetStrSelf(), &strTag))
        strTag.StartsWith(FilterTagHost_ifc::GetStrLabel() + "::", &strTag);
    return strTag;
}

} // namespace

bool FilterCtrl_cls::IsFilterTag(const wxString& strTag) const {
    return strTag.StartsWith(GetStrSelf()) || strTag.StartsWith(GetStrLabel() + "::");
}

wxString FilterCtrl_cls::GetStrCommandParamGroup(const wxString& strTag) const {
    wxString strRest = StripFilterHead(strTag);
    FilterBase_cls* p = GetPCFromName(Pop(strRest));
    const wxString strGroup = Pop(strRest);
    if (!p || !p->GetPCParamGroup(strGroup))
        return wxString();
    return GetStrSelf() + p->GetStrName() + "::" + strGroup;
}

ParamGroup_cls* FilterCtrl_cls::GetPCParamGroup(wxString strTag) const {
    strTag = StripFilterHead(strTag);
    FilterBase_cls* p = GetPCFromName(Pop(strTag));
    return p ? p->GetPCParamGroup(Pop(strTag)) : nullptr;
}

Parameter_cls* FilterCtrl_cls::GetPCParameter(wxString strTag) const {
    strTag = StripFilterHead(strTag);
    FilterBase_cls* p = GetPCFromName(Pop(strTag));
    ParamGroup_cls* pGroup = p ? p->GetPCParamGroup(Pop(strTag)) : nullptr;
    return pGroup ? pGroup->GetPCParameter(Pop(strTag)) : nullptr;
}

void FilterCtrl_cls::GetVstrParamTag(std::vector<wxString>& vStrTag) {
    for (FilterBase_cls* p : mLPCFilter)
        p->GetVstrParamTag(GetStrSelf() + p->GetStrName(), vStrTag);
}

// ---- commands -----------------------------------------------------------------------------

void FilterCtrl_cls::PushAndRun(const wxString& strUndo, const wxString& strDo) {
    if (GCClassProvider && GpCUndo) {
        GCClassProvider->PushCommandPairAndRedo(strUndo, strDo);
        return;
    }
    // No undo history (a bare chain): the do text runs alone.
    std::wistringstream stream(strDo.ToStdWstring());
    std::wstring line;
    while (std::getline(stream, line)) {
        wxString strRest(line);
        const wxString strHead = Pop(strRest);
        ReadStrLine(stream, strHead, strRest);
    }
}

wxString FilterCtrl_cls::AddFilterCommand(const wxString& strClassName, const wxString& strName) {
    if (Makers().find(strClassName) == Makers().end()) {
        wxLogWarning("FilterCtrl: no filter of the class \"%s\"", strClassName);
        return wxString();
    }
    const wxString strUnique = GetStrUniqueName(strName.empty() ? GetStrNewCandidate(strClassName) : strName);
    PushAndRun("FilterCtrl::Delete::" + strUnique, "FilterCtrl::New::" + strClassName + "::" + strUnique);
    return GetPCFromName(strUnique) ? strUnique : wxString();
}

bool FilterCtrl_cls::DeleteFilterCommand(const wxString& strName) {
    FilterBase_cls* p = GetPCFromName(strName);
    if (!p)
        return false;
    PushAndRun(GetStrFilterText(p), "FilterCtrl::Delete::" + strName);
    return true;
}

bool FilterCtrl_cls::MoveFilterCommand(const wxString& strName, int index) {
    FilterBase_cls* p = GetPCFromName(strName);
    if (!p)
        return false;
    index = std::clamp(index, 0, GetCount() - 1);
    const int old = GetIndexFromPC(p);
    if (index == old)
        return false;
    PushAndRun(wxString::Format("FilterCtrl::Move::%s::%d", strName, old),
               wxString::Format("FilterCtrl::Move::%s::%d", strName, index));
    return true;
}

bool FilterCtrl_cls::SetFilterValidityCommand(const wxString& strName, bool bValid) {
    return SetFilterItemCommand(strName, "Validity=", bValid ? "1" : "0");
}

bool FilterCtrl_cls::SetFilterItemCommand(const wxString& strName, const wxString& strKey,
                                          const wxString& strValue) {
    FilterBase_cls* p = GetPCFromName(strName);
    ConfItem_cls* pItem = p ? p->GetPCItem(strKey) : nullptr;
    if (!pItem)
        return false;
    const wxString strOld = pItem->GetBodySTR();
    if (strOld == strValue)
        return false;
    const wxString strHead = "ConfItemList::Begin::" + p->GetTag() + "\n" + pItem->mStrHead;
    const wxString strEnd = "\nConfItemList::End";
    PushAndRun(strHead + strOld + strEnd, strHead + strValue + strEnd);
    return true;
}

bool FilterCtrl_cls::SetFilterParamCommand(const wxString& strName, const wxString& strGroup, int member,
                                           double value) {
    FilterBase_cls* p = GetPCFromName(strName);
    ParamGroup_cls* pGroup = p ? p->GetPCParamGroup(strGroup) : nullptr;
    if (!pGroup || member < 0 || member >= static_cast<int>(pGroup->mVCParam.size()))
        return false;
    Parameter_cls& param = pGroup->mVCParam[member];
    param.SetValueAtCommand(value, TimeCtrl_cls::GetClockNT(),
                            GetStrSelf() + strName + "::" + strGroup + "::" + param.GetStrName(), -1, 1.0);
    return true;
}

void FilterCtrl_cls::MoveSelectedTLKeyCommand(double dx, double dy) {
    for (FilterBase_cls* p : mLPCFilter)
        p->MoveSelectedTLKeyCommand(GetStrSelf() + p->GetStrName(), dx, dy);
}

void FilterCtrl_cls::SetSelectedTLKeyTypeCommand(int type, double ease) {
    for (FilterBase_cls* p : mLPCFilter)
        p->SetSelectedTLKeyTypeCommand(GetStrSelf() + p->GetStrName(), type, ease);
}

void FilterCtrl_cls::DeleteSelectedTLKeyCommand() {
    for (FilterBase_cls* p : mLPCFilter)
        p->DeleteSelectedTLKeyCommand(GetStrSelf() + p->GetStrName());
}

// ---- reading and writing ------------------------------------------------------------------

bool FilterCtrl_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    if (strHead == "ConfItemList") {
        for (FilterBase_cls* p : mLPCFilter)
            if (p->ConfListContainer_cls::ReadStrLine(stream, strHead, strRest)) {
                NotifyChange("FilterChange", p->GetStrName());
                return true;
            }
        return false;
    }
    if (strHead != "FilterCtrl")
        return false;
    wxString strLine = strRest;
    const wxString strVerb = Pop(strLine);
    if (strVerb == "New")
        return ProcNew(strLine);
    if (strVerb == "Delete")
        return ProcDelete(strLine);
    if (strVerb == "Move")
        return ProcMove(strLine);
    if (strVerb == "ReadAttribute")
        return ProcReadAttribute(stream, strLine);
    if (strVerb == "Filter") {
        FilterBase_cls* p = GetPCFromName(Pop(strLine));
        ParamGroup_cls* pGroup = p ? p->GetPCParamGroup(Pop(strLine)) : nullptr;
        if (!pGroup)
            return false;
        const wxString strMember = Pop(strLine);
        if (!pGroup->ReadStrOneLiner(strMember, strLine))
            return false;
        NotifyChange("FilterChange", p->GetStrName());
        return true;
    }
    return false;
}

bool FilterCtrl_cls::ProcNew(const wxString& strRest) {
    wxString strLine = strRest;
    const wxString strClass = Pop(strLine);
    const wxString strName = Pop(strLine);
    long index = -1;
    if (!strLine.empty() && !strLine.ToLong(&index))
        index = -1;
    if (strName.empty() || GetPCFromName(strName))
        return false;
    FilterBase_cls* p = GetPNewFilter(strClass, strName);
    if (!p)
        return false;
    mLPCFilter.insert(index >= 0 ? GetIterFromIndex(static_cast<int>(index)) : mLPCFilter.end(), p);
    NotifyChange("FilterChange", strName);
    return true;
}

bool FilterCtrl_cls::ProcDelete(const wxString& strRest) {
    wxString strLine = strRest;
    const auto it = GetIterFromPC(GetPCFromName(Pop(strLine)));
    if (it == mLPCFilter.end())
        return false;
    FilterBase_cls* p = *it;
    const wxString strName = p->GetStrName();
    if (mpCSelected == p)
        mpCSelected = nullptr;
    mLPCFilter.erase(it);
    delete p;
    NotifyChange("DeleteFilter", strName);
    return true;
}

bool FilterCtrl_cls::ProcMove(const wxString& strRest) {
    wxString strLine = strRest;
    FilterBase_cls* p = GetPCFromName(Pop(strLine));
    long index = 0;
    if (!p || !strLine.ToLong(&index))
        return false;
    MoveFilterNative(p, static_cast<int>(index));
    NotifyChange("FilterChange", p->GetStrName());
    return true;
}

bool FilterCtrl_cls::ProcReadAttribute(std::wistream& stream, const wxString& strRest) {
    wxString strLine = strRest;
    Pop(strLine); // the class word: the name is unique in the chain
    FilterBase_cls* p = GetPCFromName(Pop(strLine));
    if (p && p->ReadStrLine(stream, "ReadAttribute", strRest)) {
        NotifyChange("FilterChange", p->GetStrName());
        return true;
    }
    // The block of a filter that is not in the chain is skipped to its end.
    std::wstring line;
    while (std::getline(stream, line))
        if (wxString(line).StartsWith("ReadAttribute::End"))
            break;
    return false;
}

wxString FilterCtrl_cls::GetStrFilterText(FilterBase_cls* p) {
    wxString strBlock;
    p->Serialize(strBlock);
    if (strBlock.EndsWith("\n"))
        strBlock.RemoveLast();
    return wxString::Format("FilterCtrl::New::%s::%s::%d\nFilterCtrl::", p->GetStrAttributeName(),
                            p->GetStrName(), GetIndexFromPC(p)) +
           strBlock;
}

void FilterCtrl_cls::Serialize(wxString& strOut) {
    for (FilterBase_cls* p : mLPCFilter) {
        strOut += "FilterCtrl::New::" + p->GetStrAttributeName() + "::" + p->GetStrName() + "\n";
        strOut += "FilterCtrl::";
        p->Serialize(strOut);
    }
}

void FilterCtrl_cls::SerializePropertiesOnly(wxString& strOut) {
    for (FilterBase_cls* p : mLPCFilter) {
        strOut += "FilterCtrl::";
        p->Serialize(strOut);
    }
}

wxString FilterCtrl_cls::GetStrNewCandidate(const wxString& strClass) const {
    wxString strName = strClass;
    strName.EndsWith("_cls", &strName);
    return GetStrUniqueName(strName);
}

wxString FilterCtrl_cls::GetStrUniqueName(const wxString& strName) const {
    if (!GetPCFromName(strName))
        return strName;
    for (int n = 1;; ++n) {
        const wxString strCandidate = wxString::Format("%s%d", strName, n);
        if (!GetPCFromName(strCandidate))
            return strCandidate;
    }
}

void FilterCtrl_cls::MoveFilterNative(Attribute_cls* p, int index) {
    const auto it = GetIterFromPC(p);
    if (it == mLPCFilter.end())
        return;
    FilterBase_cls* pFilter = *it;
    mLPCFilter.erase(it);
    index = std::clamp(index, 0, GetCount());
    mLPCFilter.insert(std::next(mLPCFilter.begin(), index), pFilter);
}

void FilterCtrl_cls::Select(const wxString& strName, bool, bool bToggle) {
    FilterBase_cls* p = GetPCFromName(strName);
    mpCSelected = bToggle && p == mpCSelected ? nullptr : p;
}

bool FilterCtrl_cls::SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd,
                                    double tolerance) {
    Parameter_cls* p = GetPCParameter(strTag);
    return p && p->SelectKeyByIndex(index, bSelect, bAdd, tolerance) != 0;
}

void FilterCtrl_cls::DeselectKeyFrame() {
    for (FilterBase_cls* p : mLPCFilter)
        p->DeselectKeyFrame(GetStrSelf() + p->GetStrName());
}

bool FilterCtrl_cls::ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) {
    Parameter_cls* p = GetPCParameter(strTag);
    const wxString strFull = GetStrSelf() + StripFilterHead(strTag);
    return p && p->ChangeKeyTypeByModKey(strFull, index, bA, bB, bC);
}

bool FilterCtrl_cls::IsSelected(const Attribute_cls* p) const {
    return p && p == mpCSelected;
}

void FilterCtrl_cls::Clear() {
    mpCSelected = nullptr;
    for (FilterBase_cls* p : mLPCFilter)
        delete p;
    mLPCFilter.clear();
}

void FilterCtrl_cls::NotifyChange(const wxString& strWhat, const wxString& strName) {
    if (GCClassProvider) {
        GCClassProvider->UpdatePanels("TIMELINE::PROPERTY_SCENE");
        GCClassProvider->ProcAfterMath(strWhat, strName);
    }
    if (FrameFilter_ifc::msFuncRepaintFiltersOnly)
        FrameFilter_ifc::msFuncRepaintFiltersOnly();
}
