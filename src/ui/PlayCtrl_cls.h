// The clock's button strip: to the work-area start, play backward, step back, step forward,
// play, to the work-area end, the "Stepping" and "Interval" spins, the composite choice, the
// key type of new keys, repeat and auto-abort. Every control acts through the clock's
// commands, so each change is one undo step. The strip is a plain panel: any window may host
// it (the timeline panel, or for now the timeline leaf's stand-in). Main thread only.
#pragma once

#include <wx/colour.h>
#include <wx/panel.h>

class DefaultKey_cls;
class wxBitmapButton;
class wxBitmapToggleButton;
class wxComboBox;
class wxSpinCtrl;
class wxSpinEvent;
class wxToggleButton;

enum PlayCtrlId_enum {
    ID_PLAY_COMPOSITE = 5002,
    ID_PLAY_STEPPING = 5143,
    ID_PLAY_INTERVAL = 5144,
    ID_PLAY_TO_START = 5148,
    ID_PLAY_BACKWARD = 5149,
    ID_PLAY_STEP_BACKWARD = 5150,
    ID_PLAY_STEP_FORWARD = 5151,
    ID_PLAY_FORWARD = 5152,
    ID_PLAY_TO_END = 5153,
    ID_PLAY_REPEAT = 5155,
    ID_PLAY_AUTO_ABORT = 5156
};

class PlayCtrl_cls : public wxPanel {
public:
    explicit PlayCtrl_cls(wxWindow* pParent);

    // Shows the clock's current values and marks the running direction and repeat.
    void UpdatePanels();
    void UpdateDisplayedValues();
    void UpdateButtonColor();

    // The colour of a marked button (the play button of the running direction, repeat on).
    // The colour provider is not there yet: the strip keeps its own.
    static wxColour GetMarkColour() { return wxColour(255, 170, 60); }

    // ---- handlers; tests call them as the events would ----
    // The six transport buttons, by id.
    void OnButton(wxCommandEvent& event);
    void OnSpinStepping(wxSpinEvent& event);
    void OnSpinInterval(wxSpinEvent& event);
    void OnComboComposite(wxCommandEvent& event);
    void OnToggleRepeat(wxCommandEvent& event);
    void OnToggleAutoAbort(wxCommandEvent& event);
    void OnKeyDown(wxKeyEvent& event);

    wxBitmapButton* GetPCButton(int id) const;
    wxSpinCtrl* GetPCSpinStepping() const { return mpCSpinStepping; }
    wxSpinCtrl* GetPCSpinInterval() const { return mpCSpinInterval; }
    wxComboBox* GetPCComboComposite() const { return mpCComboComposite; }
    wxBitmapToggleButton* GetPCToggleRepeat() const { return mpCToggleRepeat; }
    wxToggleButton* GetPCToggleAutoAbort() const { return mpCToggleAutoAbort; }
    DefaultKey_cls* GetPCDefaultKey() const { return mpCDefaultKey; }

private:
    // Writes the spin's value into the item through a command pair when it differs.
    void WriteSpinValue(wxSpinCtrl* pSpin, bool bStepping);
    void MarkButton(wxWindow* pButton, bool bMark);

    // Child windows: the toolkit deletes them.
    wxBitmapButton* mpCButtons[6] = {};
    wxSpinCtrl* mpCSpinStepping = nullptr;
    wxSpinCtrl* mpCSpinInterval = nullptr;
    wxComboBox* mpCComboComposite = nullptr;
    DefaultKey_cls* mpCDefaultKey = nullptr;
    wxBitmapToggleButton* mpCToggleRepeat = nullptr;
    wxToggleButton* mpCToggleAutoAbort = nullptr;
};
