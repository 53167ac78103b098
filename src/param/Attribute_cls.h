// A named set of settings and animated properties on a scene object or in the filter chain: a
// material, a modifier, a data process, a scene filter. It owns one configuration list and a
// vector of parameter groups. Main thread only; workers read an AttributeClone_cls.
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"
#include "ParamGroup_cls.h"
#include "Parser_cls.h"
#include "StrName_cls.h"

#include <wx/string.h>

#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <vector>

class AttributeClone_cls;
class SceneObj_cls;

class Attribute_cls : public ConfListContainer_cls,
                      public Parser_cls,
                      public GetPC_cls,
                      public virtual StrName_cls {
public:
    // strAttributeName is the class word ("Material_cls"), strName the instance's name. The
    // list tag starts as the name; owners set the real address.
    Attribute_cls(const wxString& strAttributeName, const wxString& strName);
    // Copies the items (as items of the copy's own) and the groups.
    Attribute_cls(Attribute_cls& src);
    Attribute_cls& operator=(const Attribute_cls&) = delete;
    ~Attribute_cls() override;

    // The head of every tag inside a scene object: SceneObjCtrl_cls::GetStrSelf().
    static const wxString msStrSceneObjCtrlSelf;

    wxString GetStrAttributeName() const { return mCAttributeName.GetBodySTR(); }
    bool IsAttributeSameAs(const wxString& str) const { return GetStrAttributeName() == str; }

    // A new group on the heap, not yet owned by anybody; the members are the names that are
    // not empty.
    ParamGroup_cls* GetPCNewParamGroup(const wxString& strName, const wxString& strMember1,
                                       const wxString& strMember2 = wxString(),
                                       const wxString& strMember3 = wxString());
    // Sets the first key values and takes ownership of p.
    void InitializeAndPushParam(ParamGroup_cls* p, double a, double b = 0.0, double c = 0.0);
    ParamGroup_cls* AddOneDimParam(const wxString& strName, const wxString& strMemberName, double value);
    // By group name; a colour curve answers its own name with itself. Null if absent.
    ParamGroup_cls* GetPCParamGroup(const wxString& strName);
    bool IsParamGroupTimeDepend() const;

    // Each runs the group operation for every group, the tag extended by the group's name.
    bool IsSelectedTLKeyExist() const;
    void DeselectKeyFrame(wxString strTag);
    void DeleteSelectedTLKeyCommand(wxString strTag);
    void SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease);
    void MoveSelectedTLKeyCommand(wxString strTag, double dx, double dy);
    void RescaleParametersCommand(wxString strTag, double factor);
    // Appends <tag>::<group>::<member> for each member of each group.
    void GetVstrParamTag(wxString strTag, std::vector<wxString>& vStrTag);
    // The list tag becomes "SceneObj::<object>::<attribute>".
    void SetConfListTagForSceneObjAttribute(const wxString& strAttrName, const wxString& strObjName);

    // ReadAttribute::<class>::<name>::Begin, the list, the groups, ReadAttribute::End.
    void Serialize(wxString& strOut);
    // False when the line is not this attribute's (a sibling's block); the stream is then left
    // alone.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);

    // A deep copy for the render side and the workers; the copies compile their own Lua.
    void Clone(AttributeClone_cls& clone);

    // ---- the user's entries against the animated values ----
    // One float item against member 0 of the group, at the current time.
    void SyncronizeParamAndConf(const wxString& strObjName, const wxString& strGroup,
                                ConfItemFLOAT_cls& item);
    void SyncronizeParamAndConf2(const wxString& strObjName, const wxString& strGroup,
                                 ConfItemFLOAT_cls& item0, ConfItemFLOAT_cls& item1);
    // A float array against all members.
    void SyncronizeParamAndConf3(const wxString& strObjName, const wxString& strGroup,
                                 ConfItemFLOATARRAY_cls& item);
    // The item's body from the group's values at t.
    void SyncronizeConfAndParam(double t, const wxString& strGroup, ConfItemFLOAT_cls& item);
    void SyncronizeConfAndParam2(double t, const wxString& strGroup, ConfItemFLOAT_cls& item0,
                                 ConfItemFLOAT_cls& item1);
    // Values changed outside the parameter (a drag in the 3D view) become keys at the current
    // time; one entry per member.
    void SyncronizeParamForModifier(const wxString& strGroup, std::vector<float> values, SceneObj_cls* pObj);
    void SyncronizeParamForFilter(const wxString& strGroup, std::vector<float> values);

    // ---- dispatch over the class word ----
    // What a concrete attribute class does for the four dispatchers. The layer that defines the
    // class registers it; an unregistered class is deleted through the base and does nothing
    // else.
    class ClassOps_cls {
    public:
        std::function<void(Attribute_cls*)> mFuncDelete;
        std::function<void(Attribute_cls*)> mFuncDeleteBuffer;
        std::function<void(Attribute_cls*)> mFuncSyncBufferFromSrc;
        std::function<void(Attribute_cls*, SceneObj_cls*)> mFuncSyncSrcFromBuffer;
    };
    // Main thread, at start.
    static void SetClassOps(const wxString& strClassWord, const ClassOps_cls& ops);
    static void ClearClassOps();
    static void Delete(Attribute_cls* p);
    static void DeleteBuffer(Attribute_cls* p);
    void SyncSrcFromBuffer(SceneObj_cls* pObj);
    void SyncBufferFromSrc();

    // ---- seams to the scene and filter layers, installed by them ----
    // The name of a scene object (SceneObj_cls::GetStrName).
    static inline std::function<wxString(SceneObj_cls*)> msFuncSceneObjName;
    // The head of tags in the filter chain (FilterCtrl_cls::GetStrSelf).
    static inline std::function<wxString()> msFuncFilterCtrlSelf;

    ConfItemSTR_cls mCAttributeName;
    ConfItemBOOL_cls mCShy;
    std::vector<ParamGroup_cls*> mVPCParamGroup; // owned
    // Not owned: a colour curve is an attribute and its own group at once and points here at
    // its group part, which is then found and cloned like a further group.
    ParamGroup_cls* mpCColorCurveGroup = nullptr;
    // Bookkeeping that each derived class gives its use; Clone copies them.
    bool mbAttrFlag = false;
    int32_t mAttrValue0 = 0;
    int32_t mAttrValue1 = 0;

private:
    void RegisterItems();
    // The tag of a member for the commands of the Syncronize family.
    wxString GetStrMemberTag(const wxString& strHead, const wxString& strGroup,
                             const Parameter_cls& param) const;
    // Sets each member of strGroup that differs from values at the current time, as commands
    // addressed below strHead.
    void SetGroupValuesCommand(const wxString& strGroup, const std::vector<float>& values,
                               const wxString& strHead);
    // Reads the lines of one ReadParamGroup block into pGroup, up to its end line.
    void ReadParamGroupBlock(std::wistream& stream, ParamGroup_cls* pGroup);

    // Items of a copy that have no member to live in.
    std::vector<std::unique_ptr<ConfItem_cls>> mVPCOwnedItems;
};
