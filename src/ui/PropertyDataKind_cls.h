// The property page of a stream-line, height-field or isosurface object, in tabs: its files (path
// with a picker that turns a picked file into the pattern of its sequence, the sequence switch,
// the offset, the look-up script) with the kind's data keys and, for an isosurface, the iso
// value; the kind's draw keys and its material's colour, shading and texture; the colour curve
// (shown in colour, a preset applied); and the modifier and data-process stacks, whose selected
// entry shows its own page.
//
// Every change goes through the commands of the object, its material, its curve, its parameter
// or its stack entries, so it undoes. The page holds no object pointer between events: it works
// on the active object when it is of the page's kind. Main thread only.
#pragma once

#include "PropertyKindPage_cls.h"

#include <wx/arrstr.h>

#include <functional>
#include <vector>

class Attribute_cls;
class ConfListContainer_cls;
class wxButton;
class wxChoice;
class wxFlexGridSizer;
class wxNotebook;
class wxPanel;
class wxStaticBitmap;
class wxStaticText;
class wxTextCtrl;

class PropertyDataKind_cls : public PropertyKindPage_cls {
public:
    // Whose item a row edits: the object or its material.
    enum Target_enum { TARGET_OBJECT, TARGET_MATERIAL };
    class Row_cls {
    public:
        int mTarget = TARGET_OBJECT;
        wxString mStrKey;
        wxString mStrLabel;
        wxArrayString mAStrChoices; // a choice of these (the body is the index)
        bool mbCheck = false;       // a switch
    };
    // What a kind shows.
    class Kind_cls {
    public:
        wxString mStrClassWord;
        wxString mStrLabel;
        std::vector<Row_cls> mVData;
        std::vector<Row_cls> mVDraw;
        bool mbIsoValue = false;
        bool mbCurve = true;
    };

    PropertyDataKind_cls(wxWindow* pParent, const Kind_cls& kind);
    // Puts the pages of the three kinds into their kind-table entries (those registered).
    static void RegisterPages();
    static Kind_cls GetKind(const wxString& strClassWord);

    void UpdatePage(const wxString& strName) override;
    void RefreshFromObject() override;
    wxString GetStrLabel() const override { return mCKind.mStrLabel; }

    // ---- what the controls do ----
    bool SetPathFromPicked(const wxString& strFile);
    // The iso value at the current time (a key there when the value is animated).
    bool SetIsoValue(const wxString& strValue);
    // Copies the preset's colours into the object's first colour curve.
    bool ApplyCurvePreset(int preset);

    // The active object when it is of the page's kind.
    SceneObj_cls* GetPCObject() const;
    SceneObj_cls* GetPCKindObject() const override { return GetPCObject(); }
    ConfListContainer_cls* GetPCList(int target) const override;

    Kind_cls mCKind;
    wxNotebook* mpCBook = nullptr;
    wxButton* mpCPick = nullptr;
    wxTextCtrl* mpCIso = nullptr;
    wxStaticBitmap* mpCCurveBitmap = nullptr;
    wxChoice* mpCPreset = nullptr;
    class ModifierStack_cls* mpCStack = nullptr;
    int mRefreshCount = 0;

private:
    wxWindow* AddRow(wxWindow* pPage, wxFlexGridSizer* pGrid, const Row_cls& row);
    wxPanel* NewPage(const std::vector<Row_cls>& vRow, const wxString& strLabel, wxFlexGridSizer*& pGrid);
    void BuildStackPage();
    wxString GetStrSignature() const;
    wxString mStrSignature;
};
