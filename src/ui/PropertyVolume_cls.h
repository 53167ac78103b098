// The property page of a volume object: its files (path with a picker that turns a picked file
// into the pattern of its sequence, df3 or an image stack along Z with its slice offset), the
// drawing (quality, samples between slices, the shader and its parameters), the material's
// volume items (filter, wrap, depth write, blending) and the colour curve, shown in its colours,
// with the presets to start it from; then the volume's modifier and data-process stacks, whose
// selected entry shows its own page.
//
// Every change goes through the commands of the object, its material, its curve or its stacks, so it
// undoes. The page holds no object pointer between events: it works on the active object.
// Main thread only.
#pragma once

#include "PropertyKindPage_cls.h"

#include <vector>

class ConfListContainer_cls;
class VolumeBox_cls;
class wxButton;
class wxChoice;
class wxFlexGridSizer;
class wxStaticBitmap;
class wxStaticText;
class wxTextCtrl;

class PropertyVolume_cls : public PropertyKindPage_cls {
public:
    explicit PropertyVolume_cls(wxWindow* pParent);

    // Whose item a row edits.
    enum Target_enum { TARGET_OBJECT, TARGET_MATERIAL };

    void UpdatePage(const wxString& strName) override;
    void RefreshFromObject() override;
    wxString GetStrLabel() const override;

    SceneObj_cls* GetPCKindObject() const override;

    // ---- what the controls do ----
    // Path= from a file chosen in the picker: as the pattern of its sequence (for a stack, the
    // time number first, the slice number second).
    bool SetPathFromPicked(const wxString& strFile);
    // The object's colour curve from the preset of that index, in one undoable step.
    bool ApplyCurvePreset(int preset);

    // The active object when it is a volume object.
    VolumeBox_cls* GetPCVolume() const;
    ConfListContainer_cls* GetPCList(int target) const override;

    wxButton* mpCPick = nullptr;
    wxStaticText* mpCSteps = nullptr;
    wxStaticBitmap* mpCCurve = nullptr;
    wxChoice* mpCPreset = nullptr;
    class ModifierStack_cls* mpCStack = nullptr;
    int mRefreshCount = 0;

private:
    wxString GetStrSignature() const;
    wxString mStrSignature;
};
