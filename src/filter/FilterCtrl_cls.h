// The scene's one ordered chain of post filters. Each frame the frame passes hand it the colour
// and depth buffers and get a new buffer with the finished image back. Every edit of the chain
// goes through the command language, so it is undone, saved and loaded like any other:
//   FilterCtrl::New::<class>::<name>[::<index>]   FilterCtrl::Delete::<name>
//   FilterCtrl::Move::<name>::<index>              FilterCtrl::ReadAttribute::<class>::<name>::Begin ...
//   ConfItemList blocks tagged FilterCtrl::Filter::<name> (items, "Validity=" among them)
//   FilterCtrl::Filter::<name>::<group>::<member>::... (key frames of the groups)
// GUI thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "FilterTagHost_ifc.h"
#include "FrameFilter_ifc.h"
#include "GetPC_cls.h"

#include <wx/string.h>

#include <istream>
#include <list>
#include <vector>

class Attribute_cls;
class FilterBase_cls;
class ParamGroup_cls;
class Parameter_cls;

class FilterCtrl_cls : public ConfListContainer_cls,
                       public GetPC_cls,
                       public FrameFilter_ifc,
                       public FilterTagHost_ifc {
public:
    FilterCtrl_cls();
    ~FilterCtrl_cls() override;
    FilterCtrl_cls(const FilterCtrl_cls&) = delete;
    FilterCtrl_cls& operator=(const FilterCtrl_cls&) = delete;

    // The head of every tag inside the chain.
    static wxString GetStrSelf() { return "FilterCtrl::Filter::"; }
    // The class words of the nine filters, in the order the panel offers them.
    static const std::vector<wxString>& GetVStrFilterClass();
    // A new filter of the class, not yet in a chain; null for an unknown class.
    static FilterBase_cls* GetPNewFilter(const wxString& strClass, const wxString& strName);

    // ---- the frame ----
    FBO_cls* GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>& vPasspartout,
                                     const PositionAndDirection_cls& pose, Camera_cls* pCamera,
                                     FBO_cls* pDepth) override;
    bool DoesUseDepthBuffer() override;
    void ReleaseProcessed(FBO_cls* pProcessed) override;
    // The number of passes of the last GetNewPCFilterProcessed.
    int GetPassCount() const { return mPassCount; }

    // ---- queries ----
    // A filter of that class is in the chain with "Validity=" on. (The spelling is the system's.)
    bool IsVaildFilterExist(const wxString& strAttributeName) const;
    bool IsVaildFilter(const wxString& strAttributeName) const {
        return IsVaildFilterExist(strAttributeName);
    }
    // Whether valid or not.
    bool IsFilterExist(const wxString& strAttributeName) const;
    FilterBase_cls* GetPCFromName(const wxString& strName) const;
    FilterBase_cls* GetPCFromIndex(int index) const;
    int GetIndexFromPC(const Attribute_cls* p) const;
    std::list<FilterBase_cls*>::iterator GetIterFromIndex(int index);
    std::list<FilterBase_cls*>::iterator GetIterFromPC(const Attribute_cls* p);
    // A filter by "<name>" or by a tag that starts with GetStrSelf() + "<name>".
    FilterBase_cls* GetPCFromAddress(wxString strAddress) const;
    // By tag: [FilterCtrl::Filter:: or Scene Filter::]<filter>::<group>[::<member>].
    ParamGroup_cls* GetPCParamGroup(wxString strTag) const override;
    Parameter_cls* GetPCParameter(wxString strTag) const override;
    bool IsFilterTag(const wxString& strTag) const override;
    wxString GetStrCommandParamGroup(const wxString& strTag) const override;
    void GetVstrParamTag(std::vector<wxString>& vStrTag) override;
    int GetCount() const { return static_cast<int>(mLPCFilter.size()); }
    const std::list<FilterBase_cls*>& GetListFilter() const { return mLPCFilter; }

    // ---- commands: each pushes an undo pair and runs it ----
    // The name given, made unique, or a candidate for the class when empty; empty on failure.
    wxString AddFilterCommand(const wxString& strClassName, const wxString& strName);
    bool DeleteFilterCommand(const wxString& strName);
    // To the position index (0 first; clamped to the chain).
    bool MoveFilterCommand(const wxString& strName, int index);
    bool SetFilterValidityCommand(const wxString& strName, bool bValid);
    // Any item of the filter ("Type=", "strPath=", ...).
    bool SetFilterItemCommand(const wxString& strName, const wxString& strKey, const wxString& strValue);
    // A value of a group member at the current time, as a key there.
    bool SetFilterParamCommand(const wxString& strName, const wxString& strGroup, int member, double value);
    void MoveSelectedTLKeyCommand(double dx, double dy) override;
    void SetSelectedTLKeyTypeCommand(int type, double ease) override;
    void DeleteSelectedTLKeyCommand() override;

    // ---- reading and writing ----
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    bool ProcNew(const wxString& strRest);
    bool ProcDelete(const wxString& strRest);
    bool ProcMove(const wxString& strRest);
    bool ProcReadAttribute(std::wistream& stream, const wxString& strRest);
    // Each filter: its New line and its attribute block, in chain order.
    void Serialize(wxString& strOut);
    // The attribute blocks alone.
    void SerializePropertiesOnly(wxString& strOut);
    // The text that makes the filter again at its place.
    wxString GetStrFilterText(FilterBase_cls* p);
    wxString GetStrNewCandidate(const wxString& strClass) const;
    wxString GetStrUniqueName(const wxString& strName) const;
    void MoveFilterNative(Attribute_cls* p, int index);

    // ---- selection (direct, not undoable) ----
    void Select(const wxString& strName, bool bAdd, bool bToggle);
    void ClearSelection() { mpCSelected = nullptr; }
    bool IsSelected(const Attribute_cls* p) const;
    FilterBase_cls* GetPCSelected() const { return mpCSelected; }
    // Key selection of the groups, by the tag of a member (timeline and graph).
    bool SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd,
                        double tolerance) override;
    void DeselectKeyFrame() override;
    bool ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) override;

    // Empties the chain.
    void Clear();
    void SetToDefault() { Clear(); }

private:
    // After each change: the panels hear of it and the view repaints with the filters only.
    void NotifyChange(const wxString& strWhat, const wxString& strName);
    void PushAndRun(const wxString& strUndo, const wxString& strDo);

    std::list<FilterBase_cls*> mLPCFilter; // owned
    FilterBase_cls* mpCSelected = nullptr; // not owned: one of the chain
    int mPassCount = 0;
};
