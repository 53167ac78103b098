// The property page of a particle object, in tabs: its files (path with a picker that turns a
// picked file into the pattern of its sequence, sequence switch, offset, look-up script), the
// format editor (header and body rows of choices, the switches, ready presets), interpolation,
// the draw settings, the materials with the colour curve of each (the choice shows the curve's
// colours), the modifier and data-process stacks, and the information about the data read.
//
// Every change goes through the commands of the object, its format, its material or its stacks,
// so it undoes. The page holds no object pointer between events: it works on the active object.
// Text fields keep the window name "text", which keeps the frame's shortcuts out of typing.
// Main thread only.
#pragma once

#include "PropertyKindPage_cls.h"

#include <wx/bitmap.h>

#include <functional>
#include <vector>

class ColorCurve_cls;
class ConfListContainer_cls;
class MaterialParticle_cls;
class Particle_cls;
class ParticleSnap_cls;
class wxBitmapComboBox;
class wxBoxSizer;
class wxButton;
class wxChoice;
class wxNotebook;
class wxPanel;
class wxStaticText;
class wxTextCtrl;

class PropertyParticle_cls : public PropertyKindPage_cls {
public:
    explicit PropertyParticle_cls(wxWindow* pParent);

    // Whose item a row edits.
    enum Target_enum { TARGET_OBJECT, TARGET_FORMAT, TARGET_MATERIAL };

    void UpdatePage(const wxString& strName) override;
    void RefreshFromObject() override;
    wxString GetStrLabel() const override;

    SceneObj_cls* GetPCKindObject() const override;

    // ---- what the controls do ----
    // Path= from a file chosen in the picker: as the pattern of its sequence.
    bool SetPathFromPicked(const wxString& strFile);
    bool ApplyPreset(int preset);
    // Format rows of the list of the data type shown. A row takes an item index of its table.
    bool SetHeaderRow(int row, int item);
    bool AddHeaderRow();
    bool DeleteHeaderRow(int row);
    bool SetBodyRow(int row, int item);
    bool AddBodyRow();
    // The last body row stays: a body without items has no record size.
    bool DeleteBodyRow(int row);
    void SelectMaterial(int index);
    bool AddMaterial();
    // The colour curve (the n-th of the object) of the chosen material.
    bool SetMaterialCurve(int curve);
    // Reads the current step now, so the information page has something to tell.
    bool ReadCurrentStep();

    // The information text: the sequence, the current step, the column of InfoIndex=.
    wxString GetStrInfo();
    // Minimum, maximum and mean of one column of a read snap (0..2 position, 3 type, 4 size,
    // 5 ID, 6..8 values); "no data" when the snap lacks the column.
    static wxString GetStrColumnInfo(ParticleSnap_cls* pSnap, int column);
    // The curve's colours from 0 to 1, left to right, over a checker pattern where it is
    // transparent.
    static wxBitmap GetBitmapOfCurve(ColorCurve_cls* pCurve, const wxSize& size);
    // The labels of InfoIndex=.
    static const wxArrayString& GetAStrInfoColumns();

    // The active object when it is a particle object.
    Particle_cls* GetPCParticle() const;
    MaterialParticle_cls* GetPCMaterial() const;

    ConfListContainer_cls* GetPCList(int target) const override;

    wxNotebook* mpCBook = nullptr;
    wxTextCtrl* mpCPath = nullptr;
    wxButton* mpCPick = nullptr;
    wxStaticText* mpCSteps = nullptr;
    wxChoice* mpCPreset = nullptr;
    wxPanel* mpCFormatPage = nullptr;
    wxBoxSizer* mpCHeaderSizer = nullptr;
    wxBoxSizer* mpCBodySizer = nullptr;
    std::vector<wxChoice*> mVPCHeaderRow;
    std::vector<wxChoice*> mVPCBodyRow;
    wxChoice* mpCMaterial = nullptr;
    wxBitmapComboBox* mpCCurve = nullptr;
    class ModifierStack_cls* mpCStack = nullptr;
    wxTextCtrl* mpCInfo = nullptr;
    int mMaterialIndex = 0;
    int mRefreshCount = 0;

private:
    // Runs the edit on the active particle object with its list tags in step with its name, then
    // shows the result. False without a particle object or when the edit refuses.
    bool EditParticle(const std::function<bool(Particle_cls&)>& edit);
    void BuildFilePage();
    void BuildFormatPage();
    void BuildDrawPage();
    void BuildMaterialPage();
    void BuildStackPage();
    void BuildInfoPage();
    void RebuildFormatRows();
    void RefreshMaterials();
    wxString GetStrSignature() const;
    bool IsTyping() const;
    wxString mStrSignature;
};
