// The modifier stack of the active object, and its data-process stack where the kind has one:
// each stack is a list of the entries the user added (name and kind, checked when switched on),
// a choice of the kinds that fit the object, and the buttons to add, remove and move the
// selected entry. The selected entry's own page (PropertyModifier_cls) shows below its list.
//
// Every change goes through the object's stack commands, one undo step each. The widget holds no
// object pointer between events: it asks for the object each time, so a deleted or renamed object
// never dangles. Main thread only.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <vector>

class Attribute_cls;
class PropertyModifier_cls;
class SceneObj_cls;
class wxBoxSizer;
class wxCheckListBox;
class wxChoice;

class ModifierStack_cls : public wxPanel {
public:
    enum Stack_enum { STACK_MODIFIER, STACK_DATA_PROC };

    // funcObject gives the object whose stacks are shown (null: none, the lists are empty).
    // With bDataProc the data-process stack is shown under the modifier stack.
    ModifierStack_cls(wxWindow* pParent, std::function<SceneObj_cls*()> funcObject, bool bDataProc);

    // ---- what the controls do; false when nothing was done ----
    // Appends an entry of that kind and selects it.
    bool AddEntry(int stack, const wxString& strClass);
    bool DeleteEntry(int stack, int row);
    // Moves the row by delta places within the shown rows; the selection follows.
    bool MoveEntry(int stack, int row, int delta);
    bool SetValidity(int stack, int row, bool bValid);
    // Shows the page of the row's entry below the list (-1: none); false when there is none.
    bool ShowEntry(int stack, int row);

    // The entries shown in a stack, in stack order. Not owned.
    std::vector<Attribute_cls*> GetVPCEntries(int stack) const;
    // Fills the lists and the shown pages from the object.
    void RefreshFromObject();
    // The idle road: the lists and the shown entry pages follow edits made elsewhere.
    void UpdateIdle();
    // The stacks as the project would write them; a change means the widget is out of date.
    wxString GetStrSignature() const;

    int mNumStack = 1;
    wxCheckListBox* mpCList[2] = {};
    wxChoice* mpCKind[2] = {};
    PropertyModifier_cls* mpCPage[2] = {}; // the selected entry's page, or null

private:
    SceneObj_cls* GetPCObject() const { return mFuncObject ? mFuncObject() : nullptr; }
    // Runs the stack's command on the row's entry by name, tags in step with the object's name;
    // false for a row that is not there.
    bool EditRow(int stack, int row, const std::function<void(SceneObj_cls&, const wxString&)>& edit);
    std::function<SceneObj_cls*()> mFuncObject;
    wxBoxSizer* mpCPageSizer[2] = {};
    wxString mStrSignature;
};
