// The 3D view panel, the leaf of type "VIEW3D": the GL canvas of the view, and beside it the
// numeric panel of the view's pose (position, target, angle). The view's keys and pose are the
// panel's own block in the layout text, so a saved layout reopens the same view. Scene changes
// reach it as the update names "VIEW3D" and "ALL" and redraw the scene; the idle pass ("IDLE")
// runs its inertia. Main thread only.
#pragma once

#include "View3D_cls.h"
#include "wxPanelEX.h"

#include <array>

class GLCanvas_cls;
class wxTextCtrl;

class View3DPanel_cls : public wxPanelEX {
public:
    explicit View3DPanel_cls(SplittableWindow_cls* pOwner);
    ~View3DPanel_cls() override;

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;
    bool IsInnertiaExist() override;
    bool IsActiveView() override { return true; }

    View3D_cls& GetView() { return mCView; }
    GLCanvas_cls* GetPCCanvas() const { return mpCCanvas; }
    // Shows or hides the numeric panel ("NumPanelShown=").
    void ShowNumPanel(bool bShow);
    bool IsNumPanelShown() const;
    // The fields from the view's pose and angle.
    void UpdateNumPanel();
    // The pose and angle from the fields; false when a field holds no number.
    bool ApplyNumPanel();
    // The fields: position x, y, z, target x, y, z, angle.
    std::array<wxTextCtrl*, 7> mApCField{};

    // Written to standard output when the idle pass moved the view; the program's own line.
    static const char* const msStrIdleLine;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void SerializeSelf(wxString& strOut) override { mCView.Serialize(strOut); }

private:
    void OnFieldEnter(wxCommandEvent& event);

    View3D_cls mCView;
    GLCanvas_cls* mpCCanvas = nullptr; // a child window
    wxPanel* mpCNumPanel = nullptr;    // a child window
};
