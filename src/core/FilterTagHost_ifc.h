// The filter chain as the tag-addressed members of the core see it: keys and groups of the scene
// filters are reached by tags that start with "Scene Filter::" (the timeline's label) or with the
// chain's own head "FilterCtrl::Filter::". The filter layer, above this one, installs its chain
// through msFuncGet; with nothing installed such tags address nothing. Main thread only.
#pragma once

#include <wx/string.h>

#include <functional>
#include <vector>

class ParamGroup_cls;
class Parameter_cls;

class FilterTagHost_ifc {
public:
    virtual ~FilterTagHost_ifc() = default;

    // The head the timeline shows above the filter rows; as the first item of a tag it stands
    // for the chain's own head.
    static wxString GetStrLabel() { return "Scene Filter"; }

    // True when the tag starts with the label or the chain's own head.
    virtual bool IsFilterTag(const wxString& strTag) const = 0;
    // By tag: <head>::<filter>::<group>[::<member>].
    virtual ParamGroup_cls* GetPCParamGroup(wxString strTag) const = 0;
    virtual Parameter_cls* GetPCParameter(wxString strTag) const = 0;
    // "FilterCtrl::Filter::<filter>::<group>" for any tag of the group; empty when not found.
    virtual wxString GetStrCommandParamGroup(const wxString& strTag) const = 0;
    virtual bool SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd,
                                double tolerance) = 0;
    virtual void DeselectKeyFrame() = 0;
    virtual bool ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC) = 0;
    // The selected keys of every filter, each as commands.
    virtual void MoveSelectedTLKeyCommand(double dx, double dy) = 0;
    virtual void SetSelectedTLKeyTypeCommand(int type, double ease) = 0;
    virtual void DeleteSelectedTLKeyCommand() = 0;
    // The tags of every channel of every filter, in the chain's own head.
    virtual void GetVstrParamTag(std::vector<wxString>& vStrTag) = 0;

    // The installed chain, or null.
    static FilterTagHost_ifc* GetPCInstalled() { return msFuncGet ? msFuncGet() : nullptr; }
    static inline std::function<FilterTagHost_ifc*()> msFuncGet;
};
