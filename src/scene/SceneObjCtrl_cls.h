// The root of the scene tree and its only door: it creates, names, selects, moves and deletes
// scene objects, turns tag paths into pointers, and is the receiver of every line with the head
// "SceneObjCtrl". Tag paths have the form SceneObjCtrl::Obj::<object>::<attribute>::<group>::
// <member>; the attribute is left out for the transform groups of the object itself, and
// "SceneObj" stands in its place for the object's own list. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "ParentObj_cls.h"

#include <wx/string.h>

#include <istream>
#include <vector>

class ParamGroup_cls;
class Parameter_cls;
class SceneObj_cls;

class SceneObjCtrl_cls : public ParentObj_cls, public ConfListContainer_cls {
public:
    SceneObjCtrl_cls();
    ~SceneObjCtrl_cls() override;

    static wxString GetStrSelf() { return "SceneObjCtrl::"; }

    // ---- selection (direct, not undoable) ----
    void Select(const wxString& strName, bool bAdd, bool bUpdate, bool bToggle);
    void Deselect(const wxString& strName, bool bUpdate);
    void ClearSelection();
    void SelectActitiveObjectOnly();
    bool IsSelected(SceneObj_cls* p) const;
    // 2 for the active object, 1 for another selected one, 0 otherwise.
    int GetStatus(SceneObj_cls* p) const;
    void RemoveSelectedObject(int index);
    // Puts the selection in tree order, depth first.
    void SortSelectionList();
    wxString GetActiveObjectName() const;
    SceneObj_cls* GetPCActiveObject() const { return mpCActive; }

    // ---- structure commands: each pushes undo pairs and runs them ----
    void AppendCommandBase(const wxString& strClass, const wxString& strName, const wxString& strArg);
    // strClass "Camera" or "Camera_cls"; an empty name is made from the class word. Returns the
    // name of the object, empty when the class is unknown.
    wxString AppendSceneObjCommand(const wxString& strClass, wxString strName);
    // kind: an index of SceneClassWord_cls's primitive and light lists.
    wxString AppendPrimitiveCommand(int kind, wxString strName);
    wxString AppendLightCommand(int kind, wxString strName);
    // A name that exists already is made unique first. Returns the name given.
    wxString RenameCommand(const wxString& strFrom, wxString strTo);
    // Deletes the selection in one block "DeleteItems"; the children of a deleted object go
    // to its parent, and undo gives everything back.
    void DeleteItemsCommand();
    // The same for the named objects.
    void DeleteItemsCommand(std::vector<SceneObj_cls*> vObjects);
    // Makes the active object a child of strParent ("ROOT": the top). Refused, with no pair,
    // for the object itself or one of its descendants.
    bool SetToChildCommand(const wxString& strParent);
    void SetMultipleToChildCommand(const wxString& strParent);
    // Puts the active object before (bAfter false) or after the target, among its siblings.
    bool MoveItemToCommand(const wxString& strTarget, bool bAfter);
    void MoveItemMultipleToCommand(const wxString& strTarget, bool bAfter);
    void SetVisibleMultipleCommand(bool bVisible);
    void ToggleVisibleCommand(const wxString& strName);
    void SetValidMultipleCommand(bool bValid);
    void ToggleValidCommand(const wxString& strName);
    void MoveModifierCommand(const wxString& strName, int position);

    // ---- key commands over the selection ----
    void DeleteSelectedTLKeyCommand();
    void SetSelectedTLKeyTypeCommand(int type, double ease);
    void MoveSelectedTLKeyCommand(double dx, double dy);
    bool IsSelectedTLKeyExist();
    void DeselectKeyFrame(const wxString& strTag);
    void SelectKeyFrame(const wxString& strTag, int index, bool bSelect, bool bAdd, double tolerance);
    bool ChangeKeyTypeByModKey(const wxString& strTag, int index, bool bA, bool bB, bool bC);

    // ---- addressing ----
    ParamGroup_cls* GetPCParamGroup(wxString strTag);
    // The tag ends at the member.
    Parameter_cls* GetPCParameter(wxString strTag);
    ConfItem_cls* GetPCConfItem(wxString strTag);
    // Pops "SceneObjCtrl" and "Obj": the tag then begins with the object's name. False when the
    // tag has another head.
    static bool RemoveTagHeader(wxString& strTag);
    // SceneObjCtrl::Obj::<object>[::<attribute>]::<group>; empty when the group is not in the
    // object the tag names.
    wxString GetStrCommandParamGroup(wxString strTag, ParamGroup_cls* pGroup);
    wxString GetStrUniqueName(wxString strName);
    // An item of a group through the undo road: the pair <group tag>::<key><old> and
    // <group tag>::<key><new>; a text body's newlines travel as backslash-n. False when the
    // group or the item is not there.
    bool SetParamGroupConfCommand(const wxString& strTag, const wxString& strKey, const wxString& strValue);
    // TimeDepend=, Locked= or Extrapolate= of a member (the tag ends at it), or of every member
    // with bAll, in one block.
    bool SetParameterConfCommand(const wxString& strTag, const wxString& strKey, bool bValue, bool bAll);
    // The same on a group already found, whose commands go to strCanonical (a scene object's or a
    // filter's group): the member strMember, or every member with bAll.
    static bool PushParameterConf(ParamGroup_cls* pGroup, const wxString& strCanonical,
                                  const wxString& strMember, const wxString& strKey, bool bValue, bool bAll);

    // ---- native operations ----
    // Takes the object out of the tree; its children take its place in its parent.
    void Detatch(SceneObj_cls* p);
    void DeleteSceneObj(SceneObj_cls* p);
    // Index -1: the end of the parent's children. Refused for a parent that is the object or
    // lies below it, and for an unknown parent.
    bool MoveItemNative(SceneObj_cls* p, const wxString& strParent, int index);
    // A new object of the class, not yet in the tree and not initialised; null for an unknown
    // class word or a kind whose layer is not there.
    SceneObj_cls* GetPCNewObject(const wxString& strClass, const wxString& strVariant);

    // ---- lines ----
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    bool ProcNew(std::wistream& stream, wxString strRest);
    bool ProcDelete(wxString strRest);
    bool ProcRename(wxString strRest);
    bool ProcMove(wxString strRest);
    bool ProcSetToChild(wxString strRest);
    bool ProcReadObj(std::wistream& stream, wxString strRest);
    bool ProcReadProperties(std::wistream& stream, wxString strRest);

    // ---- persistence ----
    void Serialize(wxString& strOut);
    void Clear();
    void SetToDefault();
    // World, "Initial Light", Box, Camera, each inserted at index 0 (so the tree reads World,
    // Initial Light, Box, Camera).
    void MakeDefaultScene();

    ConfItemSTR_cls mCDummy;
    SceneObj_cls* mpCActive = nullptr;       // a reference is held
    std::vector<SceneObj_cls*> mVPCSelected; // each entry holds a reference

private:
    // An object of a kind with variants (primitives, lights): kind indexes astrVariant.
    wxString AppendVariantCommand(const wxString& strClass, const wxArrayString& astrVariant, int kind,
                                  wxString strName);
    // Deletes one object with the undo pairs of DeleteItemsCommand.
    void DeleteOneItemCommand(SceneObj_cls* p);
    ParentObj_cls* GetPCParentFromName(const wxString& strName);
    // func on each selected object, in one undo block.
    template <class Func_T> void ForEachSelectedInBlock(const wxString& strBlock, Func_T func);
};
