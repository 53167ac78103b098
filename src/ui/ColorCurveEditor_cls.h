// The colour-curve editor, the leaf of type "COLOR_CURVE": the gradient bar and the R, G, B, A
// channels of one colour curve, edited with the key machinery of the timeline. It shows the
// curve chosen by "SelectColorCurve", or else the first curve of the active object. Every edit
// is a command on the curve's owner, so the particles and volumes that use the curve see the
// new keys on their next frame and the 3D view repaints.
// Its list is tagged "ColorCuerveEditor" (the program's own spelling, kept: projects carry it).
// Main thread only.
#pragma once

#include "EditorBase_cls.h"

#include <array>

class BitmapPanel_cls;
class ColorCurve_cls;
class GraphColorCurve_cls;
class wxChoice;
class wxTextCtrl;

class ColorCurveEditor_cls : public EditorBase_cls {
public:
    // "ColorCurveMode=": 0 each channel's keys apart, 1 stops (keys at one position move and
    // insert together on all channels, as stops of a gradient).
    enum Mode_enum { MODE_CHANNELS = 0, MODE_STOPS = 1 };

    explicit ColorCurveEditor_cls(SplittableWindow_cls* pOwner);

    // The curve shown, null when there is none. Not owned.
    ColorCurve_cls* GetPCCurve();
    // "SceneObjCtrl::Obj::<object>::<attribute>" of the curve shown, empty when none.
    wxString GetStrCurveTag();
    void RebuildChannels() override;
    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;

    // ---- the tools ----
    void SetMode(int mode);
    int GetMode() const;
    // The preset of that index with the alpha template in force, as one undoable step.
    void ApplyPreset(int preset);
    // Stores the template and applies it to the curve's alpha (Keep only stores).
    void SetTemplateAlpha(int alphaTemplate);
    int GetTemplateAlpha() const;
    void FlipColor();
    void SwapRGB();
    // Shows or hides the A channel.
    void ShowAlpha(bool bShow);
    bool IsAlphaShown() const { return mbShowAlpha; }
    // The channel that takes clicks: -1 all, then R, G, B, A; the selector steps through them.
    void StepChannelSelector();
    // The colour of the selected stop (the first selected key's position), 0 .. 1.
    void SetKeyColor(double r, double g, double b);
    // A stop at the position of the numeric panel, each channel of its own value.
    void InsertKeys() override;
    // Selects the stop before (-1) or after (1) the selected one.
    void SelectAdjacentStop(int direction);
    void ProcPopAction(int action) override;
    // The ruler's labels and the curve's "Range" group in step: with the tic mode on, the ruler
    // reads data values, min to max of "Range" at the current time, over the curve's 0 .. 1.
    void SyncronizeParamToPanelXRange();
    // Steps the tic mode: positions 0 .. 1, or the data values of "Range".
    void OnTicsMode();
    int GetTicsMode() const { return mTicsMode; }
    // The colour of the selected stop for a later paste; false with no stop selected.
    bool CopyColor();
    // The copied colour onto the selected stop; false with none copied or none selected.
    bool PasteColor();
    // The numeric panel: position and R, G, B, A of the selected stop.
    void UpdateNumPanel();
    // The value typed into the field of a channel (0 R .. 3 A) for the selected stop; false when
    // there is no stop or no number.
    bool ProcValueField(int channel);
    wxTextCtrl* GetPCValueField(int channel) const { return mApCValue[channel]; }
    void ShowNumPanel(bool bShow);

    GraphColorCurve_cls* GetPCGraphColorCurve() const { return mpCGraphCC; }
    wxTextCtrl* GetPCPosField() const { return mpCPos; }

protected:
    // With no curve chosen the editor shows the active object's: it follows the outliner.
    bool IsFollowingOutliner() const override { return mStrPinnedCurve.empty(); }
    void UpdateEditorSelf() override;
    void ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) override;
    void OnGraphChanged(bool bCommand) override;
    void AppendPopItems(wxMenu& menu) override;

private:
    void OnCommand(wxCommandEvent& event);
    void OnChoice(wxCommandEvent& event);
    void OnPosEnter(wxCommandEvent& event);
    // The colour button shows the selected stop's colour.
    void UpdateColorButton();
    void UpdateSelectorIcons();

    ConfItemINT_cls mCColorCurveMode;
    ConfItemINT_cls mCTemplateAlpha;
    wxString mStrPinnedCurve; // the tag chosen by "SelectColorCurve"
    bool mbShowAlpha = true;
    int mTicsMode = 0;
    bool mbColorCopied = false;
    std::array<double, 3> mCopiedColor{0.0, 0.0, 0.0};
    GraphColorCurve_cls* mpCGraphCC = nullptr; // child windows: the toolkit deletes them
    wxChoice* mpCPreset = nullptr;
    wxChoice* mpCTemplate = nullptr;
    wxChoice* mpCMode = nullptr;
    wxButton* mpCColorButton = nullptr;
    BitmapPanel_cls* mpCAlphaButton = nullptr;
    BitmapPanel_cls* mpCSelectorButton = nullptr;
    wxPanel* mpCNumPanel = nullptr;
    wxTextCtrl* mpCPos = nullptr;
    std::array<wxTextCtrl*, 4> mApCValue{};
};
