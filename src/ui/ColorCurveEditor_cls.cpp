#include "ColorCurveEditor_cls.h"

#include "BitmapPanel_cls.h"
#include "ClassProvider_cls.h"
#include "ColorCurveTemplate_cls.h"
#include "ColorCurve_cls.h"
#include "GraphColorCurve_cls.h"
#include "Main_cls.h"
#include "PanelBar_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "SplittableWindow_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/choice.h>
#include <wx/clipbrd.h>
#include <wx/colordlg.h>
#include <wx/dataobj.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wrapsizer.h>

#include <algorithm>
#include <cmath>

namespace {

const std::array<unsigned char, 3> kChannelColour[4] = {
    {{236, 84, 84}}, {{96, 212, 96}}, {{92, 142, 246}}, {{222, 222, 222}}};

} // namespace

ColorCurveEditor_cls::ColorCurveEditor_cls(SplittableWindow_cls* pOwner)
    : EditorBase_cls(pOwner, _PANEL_COLOR_CURVE, true, "ColorCuerveEditor") {
    mCList.Add(&mCColorCurveMode, "ColorCurveMode=", "0");
    mCList.Add(&mCTemplateAlpha, "TemplateAlpha=", "0");
    AddRangeItems(-0.05, 1.05, 0.0, 1.0);
    mpCGraphCC = new GraphColorCurve_cls(this, mCEdit);
    mpCGraphCC->mFuncGetCurve = [this]() { return GetPCCurve(); };
    ConstructBase(mpCGraphCC);

    // The colour-curve tools after the shared ones.
    mpCTools->AddSpacer(PanelBar_cls::msBarSpacer);
    mpCPreset = new wxChoice(mpCToolPanel, ID_EDITOR_DROP_DOWN, wxDefaultPosition, wxDefaultSize,
                             ColorCurveTemplate_cls::GetAstrPreset());
    mpCPreset->SetToolTip(_("Preset"));
    mpCTools->Add(mpCPreset, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    mpCTemplate = new wxChoice(mpCToolPanel, ID_EDITOR_TEMPLATE_ALPHA, wxDefaultPosition, wxDefaultSize,
                               ColorCurveTemplate_cls::GetAstrAlphaTemplate());
    mpCTemplate->SetToolTip(_("Alpha template"));
    mpCTools->Add(mpCTemplate, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    wxArrayString astrMode;
    astrMode.Add(_("Channels"));
    astrMode.Add(_("Stops"));
    mpCMode = new wxChoice(mpCToolPanel, ID_EDITOR_MODE, wxDefaultPosition, wxDefaultSize, astrMode);
    mpCMode->SetToolTip(_("Keys of each channel apart, or stops across the channels"));
    mpCTools->Add(mpCMode, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    // The two toggles are bar buttons on the panel bar, as the other panels' toggles are.
    mpCPanelBar->AddBarSpacer();
    mpCAlphaButton = mpCPanelBar->AddBarButton(ID_EDITOR_ALPHA, "wxART_ALPHA_ON", "wxART_ALPHA_OFF");
    mpCAlphaButton->SetToolTip(_("Show or hide the A channel"));
    mpCSelectorButton = mpCPanelBar->AddBarButton(ID_EDITOR_SELECTOR, "wxART_SELECTOR_N", "wxART_SELECTOR_P");
    mpCSelectorButton->SetToolTip(_("The channel that takes clicks"));
    for (auto [id, strLabel] : {std::pair<int, const char*>{ID_EDITOR_FLIP_COLOR, "Flip Color"},
                                {ID_EDITOR_SWAP_RGB, "Swap RGB"}}) {
        auto* pButton = new wxButton(mpCToolPanel, id, wxGetTranslation(strLabel), wxDefaultPosition,
                                     wxDefaultSize, wxBU_EXACTFIT);
        mpCTools->Add(pButton, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    }
    mpCColorButton = new wxButton(mpCToolPanel, ID_EDITOR_KEY_COLOR, " ", wxDefaultPosition, wxSize(28, 22));
    mpCColorButton->SetToolTip(_("Colour of the selected key"));
    mpCTools->Add(mpCColorButton, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    auto* pNumToggle =
        new wxButton(mpCToolPanel, ID_EDITOR_NUM_PANEL, "#", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    pNumToggle->SetToolTip(_("Show or hide the numeric panel"));
    auto* pTics = new wxButton(mpCToolPanel, ID_EDITOR_TICS_MODE, _("Tics"), wxDefaultPosition, wxDefaultSize,
                               wxBU_EXACTFIT);
    pTics->SetToolTip(_("The ruler in curve positions or in data values of the range"));
    mpCTools->Add(pTics, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);
    mpCTools->Add(pNumToggle, 0, wxALIGN_CENTER_VERTICAL | wxALL, 1);

    // The numeric panel: the position of the next stop, the key buttons and the values of the
    // selected stop's channels.
    mpCNumPanel = new wxPanel(this, wxID_ANY);
    auto* pNumSizer = new wxWrapSizer(wxHORIZONTAL);
    pNumSizer->Add(new wxStaticText(mpCNumPanel, wxID_ANY, _("Position")), 0, wxALIGN_CENTER_VERTICAL | wxALL,
                   2);
    mpCPos =
        new wxTextCtrl(mpCNumPanel, wxID_ANY, "0.5", wxDefaultPosition, wxSize(70, -1), wxTE_PROCESS_ENTER);
    pNumSizer->Add(mpCPos, 0, wxALIGN_CENTER_VERTICAL | wxALL, 2);
    for (auto [id, strLabel] : {std::pair<int, const char*>{ID_EDITOR_INSERT, "Insert"},
                                {ID_EDITOR_PREV_KEY, "<"},
                                {ID_EDITOR_NEXT_KEY, ">"}}) {
        auto* pButton = new wxButton(mpCNumPanel, id, wxGetTranslation(strLabel), wxDefaultPosition,
                                     wxDefaultSize, wxBU_EXACTFIT);
        pNumSizer->Add(pButton, 0, wxALIGN_CENTER_VERTICAL | wxALL, 2);
    }
    for (int c = 0; c < 4; ++c) {
        static const char* const kNames[4] = {"R", "G", "B", "A"};
        pNumSizer->Add(new wxStaticText(mpCNumPanel, wxID_ANY, kNames[c]), 0,
                       wxALIGN_CENTER_VERTICAL | wxLEFT, 4);
        mApCValue[c] = new wxTextCtrl(mpCNumPanel, wxID_ANY, wxString(), wxDefaultPosition, wxSize(56, -1),
                                      wxTE_PROCESS_ENTER);
        mApCValue[c]->Bind(wxEVT_TEXT_ENTER, [this, c](wxCommandEvent&) { ProcValueField(c); });
        pNumSizer->Add(mApCValue[c], 0, wxALIGN_CENTER_VERTICAL | wxALL, 2);
    }
    mpCNumPanel->SetSizer(pNumSizer);
    GetSizer()->Add(mpCNumPanel, 0, wxEXPAND);

    Bind(wxEVT_BUTTON, &ColorCurveEditor_cls::OnCommand, this);
    Bind(wxEVT_CHOICE, &ColorCurveEditor_cls::OnChoice, this);
    Bind(wxEVT_MENU, &ColorCurveEditor_cls::OnCommand, this, ID_MENU_EDITOR_COPY, ID_MENU_EDITOR_PASTE);
    Bind(wxEVT_MENU, &ColorCurveEditor_cls::OnCommand, this, ID_MENU_EDITOR_COPY_COLOR,
         ID_MENU_EDITOR_PASTE_COLOR);
    mpCPos->Bind(wxEVT_TEXT_ENTER, &ColorCurveEditor_cls::OnPosEnter, this);
    mpCMode->SetSelection(GetMode());
    mpCTemplate->SetSelection(GetTemplateAlpha());
    SetMode(GetMode());
    RebuildChannels();
}

// ---- the curve --------------------------------------------------------------------------------

wxString ColorCurveEditor_cls::GetStrCurveTag() {
    if (!GpCSceneObjCtrl)
        return wxString();
    if (!mStrPinnedCurve.empty()) {
        // "SceneObjCtrl::Obj::<object>::<attribute>", or the curve's list tag
        // "SceneObj::<object>::<attribute>".
        wxString str = mStrPinnedCurve;
        if (str.StartsWith("SceneObjCtrl::Obj::", &str) || str.StartsWith("SceneObj::", &str)) {
            const wxString strObj = str.BeforeFirst(':');
            const wxString strAttr = str.AfterFirst(':').AfterFirst(':').BeforeFirst(':');
            SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName(strObj);
            Attribute_cls* pAttr = pObj ? pObj->GetPCAttribute(strAttr, 0) : nullptr;
            if (pAttr && pAttr->IsAttributeSameAs("ColorCurve_cls"))
                return pObj->GetStrTag() + "::" + strAttr;
        }
        mStrPinnedCurve.clear();
    }
    SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCActiveObject();
    Attribute_cls* pAttr = pObj ? pObj->GetPCAttributeFromAttribName("ColorCurve_cls", 0) : nullptr;
    return pAttr ? pObj->GetStrTag() + "::" + pAttr->GetStrName() : wxString();
}

ColorCurve_cls* ColorCurveEditor_cls::GetPCCurve() {
    const wxString strTag = GetStrCurveTag();
    if (strTag.empty() || !GpCSceneObjCtrl)
        return nullptr;
    wxString str = strTag.Mid(wxString("SceneObjCtrl::Obj::").length());
    SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName(str.BeforeFirst(':'));
    Attribute_cls* pAttr = pObj ? pObj->GetPCAttribute(str.AfterFirst(':').AfterFirst(':'), 0) : nullptr;
    return dynamic_cast<ColorCurve_cls*>(pAttr);
}

void ColorCurveEditor_cls::RebuildChannels() {
    std::vector<GraphChannel_cls> vChannel;
    ColorCurve_cls* pCurve = GetPCCurve();
    if (pCurve) {
        const wxString strGroupTag = GetStrCurveTag() + "::" + pCurve->ParamGroup_cls::GetStrName();
        for (size_t c = 0; c < pCurve->mVCParam.size() && c < 4; ++c) {
            if (c == 3 && !mbShowAlpha)
                continue;
            GraphChannel_cls channel;
            channel.mpCParam = &pCurve->mVCParam[c];
            channel.mStrTag = strGroupTag + "::" + channel.mpCParam->GetStrName();
            channel.mStrLabel = channel.mpCParam->GetStrName();
            channel.mColor = kChannelColour[c];
            vChannel.push_back(channel);
        }
    }
    SetChannelsAndFrame(std::move(vChannel));
}

bool ColorCurveEditor_cls::ReadStrLine(std::wistream& stream, const wxString& strKey,
                                       const wxString& strRest) {
    if (!EditorBase_cls::ReadStrLine(stream, strKey, strRest))
        return false;
    SetMode(GetMode());
    if (mpCTemplate)
        mpCTemplate->SetSelection(GetTemplateAlpha());
    return true;
}

// ---- tools ------------------------------------------------------------------------------------

int ColorCurveEditor_cls::GetMode() const {
    return static_cast<int>(mCColorCurveMode.GetBodyINT());
}

void ColorCurveEditor_cls::SetMode(int mode) {
    mode = mode == MODE_STOPS ? MODE_STOPS : MODE_CHANNELS;
    mCColorCurveMode.SetBodyFromData(static_cast<long long>(mode));
    mCEdit.SetLinkX(mode == MODE_STOPS);
    if (mpCMode && mpCMode->GetSelection() != mode)
        mpCMode->SetSelection(mode);
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

int ColorCurveEditor_cls::GetTemplateAlpha() const {
    return static_cast<int>(mCTemplateAlpha.GetBodyINT());
}

void ColorCurveEditor_cls::ApplyPreset(int preset) {
    if (ColorCurve_cls* pCurve = GetPCCurve())
        ColorCurveTemplate_cls::ApplyPresetCommand(*pCurve, wxString(), preset, GetTemplateAlpha());
}

void ColorCurveEditor_cls::SetTemplateAlpha(int alphaTemplate) {
    if (alphaTemplate < 0 || alphaTemplate >= ColorCurveTemplate_cls::ALPHA_COUNT)
        return;
    mCTemplateAlpha.SetBodyFromData(static_cast<long long>(alphaTemplate));
    if (mpCTemplate && mpCTemplate->GetSelection() != alphaTemplate)
        mpCTemplate->SetSelection(alphaTemplate);
    if (ColorCurve_cls* pCurve = GetPCCurve())
        ColorCurveTemplate_cls::ApplyAlphaTemplateCommand(*pCurve, wxString(), alphaTemplate);
}

void ColorCurveEditor_cls::FlipColor() {
    if (ColorCurve_cls* pCurve = GetPCCurve())
        ColorCurveTemplate_cls::FlipCommand(*pCurve, wxString());
}

void ColorCurveEditor_cls::SwapRGB() {
    if (ColorCurve_cls* pCurve = GetPCCurve())
        ColorCurveTemplate_cls::SwapRGBCommand(*pCurve, wxString());
}

void ColorCurveEditor_cls::ShowAlpha(bool bShow) {
    mbShowAlpha = bShow;
    if (mpCAlphaButton)
        mpCAlphaButton->SetBitmaps(
            GetBitmapFromTag(bShow ? "wxART_ALPHA_ON" : "wxART_ALPHA_OFF", wxSize(18, 18)),
            GetBitmapFromTag(bShow ? "wxART_ALPHA_OFF" : "wxART_ALPHA_ON", wxSize(18, 18)));
    if (!bShow && mCEdit.GetActiveChannel() == 3)
        mCEdit.SetActiveChannel(-1);
    RebuildChannels();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void ColorCurveEditor_cls::StepChannelSelector() {
    const int count = mbShowAlpha ? 4 : 3;
    int next = mCEdit.GetActiveChannel() + 1;
    if (next >= count)
        next = -1;
    mCEdit.SetActiveChannel(next);
    UpdateSelectorIcons();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void ColorCurveEditor_cls::UpdateSelectorIcons() {
    if (!mpCSelectorButton)
        return;
    const bool bAll = mCEdit.GetActiveChannel() < 0;
    mpCSelectorButton->SetBitmaps(
        GetBitmapFromTag(bAll ? "wxART_SELECTOR_N" : "wxART_SELECTOR_P", wxSize(18, 18)),
        GetBitmapFromTag("wxART_SELECTOR_P", wxSize(18, 18)));
    static const char* const kNames[5] = {"All", "R", "G", "B", "A"};
    mpCSelectorButton->SetToolTip(
        wxString::Format(_("The channel that takes clicks: %s"), kNames[mCEdit.GetActiveChannel() + 1]));
}

void ColorCurveEditor_cls::SetKeyColor(double r, double g, double b) {
    ColorCurve_cls* pCurve = GetPCCurve();
    RebuildChannels();
    double x = 0.0;
    if (!pCurve || !mCEdit.GetSelectedX(x))
        return;
    ColorCurveTemplate_cls::SetStopColorCommand(*pCurve, wxString(), x, r, g, b);
}

void ColorCurveEditor_cls::InsertKeys() {
    double x = 0.5;
    if (mpCPos && !mpCPos->GetValue().ToCDouble(&x))
        return;
    x = std::clamp(mCEdit.SnapX(x), 0.0, 1.0);
    RebuildChannels();
    mCEdit.InsertKeysAt(x);
    // The new stop is the selected one, so the colour button and the arrows go on from it.
    mCEdit.SelectAt(x);
    UpdateColorButton();
}

void ColorCurveEditor_cls::SelectAdjacentStop(int direction) {
    RebuildChannels();
    std::vector<double> vX;
    for (size_t c = 0; c < mCEdit.GetChannels().size(); ++c)
        if (mCEdit.IsChannelEditable(static_cast<int>(c)))
            for (const KeyFrame_cls& key : mCEdit.GetChannels()[c].mpCParam->mVCKey)
                vX.push_back(key.mX);
    if (vX.empty())
        return;
    std::sort(vX.begin(), vX.end());
    double x = direction > 0 ? vX.front() : vX.back();
    double now = 0.0;
    if (mCEdit.GetSelectedX(now)) {
        auto it = direction > 0 ? std::upper_bound(vX.begin(), vX.end(), now + 1e-6)
                                : std::lower_bound(vX.begin(), vX.end(), now - 1e-6);
        if (direction > 0)
            x = it != vX.end() ? *it : vX.back();
        else
            x = it != vX.begin() ? *(it - 1) : vX.front();
    }
    mCEdit.SelectAt(x);
    if (mpCPos)
        mpCPos->ChangeValue(wxString::Format("%g", x));
    UpdateNumPanel();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

void ColorCurveEditor_cls::UpdateColorButton() {
    if (!mpCColorButton)
        return;
    ColorCurve_cls* pCurve = GetPCCurve();
    double x = 0.0;
    if (!pCurve || !mCEdit.GetSelectedX(x)) {
        mpCColorButton->SetBackgroundColour(wxNullColour);
        return;
    }
    const std::array<unsigned char, 4> c = pCurve->GetColor(x, nullptr);
    mpCColorButton->SetBackgroundColour(wxColour(c[0], c[1], c[2]));
}

void ColorCurveEditor_cls::UpdateNumPanel() {
    UpdateColorButton();
    ColorCurve_cls* pCurve = GetPCCurve();
    double x = 0.0;
    const bool bStop = pCurve && mCEdit.GetSelectedX(x);
    for (int c = 0; c < 4; ++c) {
        if (!mApCValue[c])
            continue;
        const bool bShown = bStop && c < static_cast<int>(pCurve->mVCParam.size());
        mApCValue[c]->Enable(bShown);
        mApCValue[c]->ChangeValue(bShown ? wxString::Format("%g", pCurve->mVCParam[c].GetValue(x))
                                         : wxString());
    }
}

bool ColorCurveEditor_cls::ProcValueField(int channel) {
    ColorCurve_cls* pCurve = GetPCCurve();
    double x = 0.0, v = 0.0;
    if (!pCurve || channel < 0 || channel >= static_cast<int>(pCurve->mVCParam.size()) ||
        !mCEdit.GetSelectedX(x) || !mApCValue[channel]->GetValue().ToCDouble(&v))
        return false;
    RebuildChannels();
    for (size_t c = 0; c < mCEdit.GetChannels().size(); ++c)
        if (mCEdit.GetChannels()[c].mpCParam == &pCurve->mVCParam[channel]) {
            // A key of that channel at the stop: its value, or a new key with it.
            mCEdit.InsertKey(static_cast<int>(c), x, v);
            mCEdit.SelectAt(x);
            return true;
        }
    return false;
}

void ColorCurveEditor_cls::ShowNumPanel(bool bShow) {
    if (mpCNumPanel) {
        mpCNumPanel->Show(bShow);
        Layout();
    }
}

void ColorCurveEditor_cls::SyncronizeParamToPanelXRange() {
    if (!mpCGraph)
        return;
    mpCGraph->mXLabelScale = 1.0;
    mpCGraph->mXLabelOffset = 0.0;
    ColorCurve_cls* pCurve = GetPCCurve();
    if (mTicsMode != 1 || !pCurve || !pCurve->GetPCRange())
        return;
    const std::vector<double> v = pCurve->GetPCRange()->GetVInterpolatedValue(
        GpCTimeCtrl ? GpCTimeCtrl->GetCurrentNT() : 0.0, true, nullptr, false);
    if (v.size() < 2 || v[1] <= v[0])
        return; // a range of no width (or reversed) keeps the positions
    mpCGraph->mXLabelOffset = v[0];
    mpCGraph->mXLabelScale = v[1] - v[0];
}

void ColorCurveEditor_cls::OnTicsMode() {
    mTicsMode = mTicsMode == 0 ? 1 : 0;
    SyncronizeParamToPanelXRange();
    if (mpCGraph)
        mpCGraph->Refresh(false);
}

bool ColorCurveEditor_cls::CopyColor() {
    ColorCurve_cls* pCurve = GetPCCurve();
    double x = 0.0;
    if (!pCurve || !mCEdit.GetSelectedX(x))
        return false;
    std::vector<double> v = pCurve->GetVInterpolatedValue(x, false, nullptr, false);
    v.resize(3, 0.0);
    ColorCurve_cls::TrimColorVector(v);
    mCopiedColor = {v[0], v[1], v[2]};
    mbColorCopied = true;
    return true;
}

bool ColorCurveEditor_cls::PasteColor() {
    double x = 0.0;
    if (!mbColorCopied || !GetPCCurve() || !mCEdit.GetSelectedX(x))
        return false;
    SetKeyColor(mCopiedColor[0], mCopiedColor[1], mCopiedColor[2]);
    return true;
}

// ---- updates ----------------------------------------------------------------------------------

void ColorCurveEditor_cls::UpdateEditorSelf() {
    UpdateNumPanel();
    SyncronizeParamToPanelXRange();
    // The bar only when the curve moved; the channels below are repainted always.
    mpCGraphCC->CheckRefresh();
}

void ColorCurveEditor_cls::ProcAfterMathSelf(const wxString& strWhat, const wxString& strArg) {
    if (strWhat == "SelectColorCurve")
        mStrPinnedCurve = strArg;
    // "ColorCurveChange", "DeleteObject", "RenameObject": read the curve again.
    RebuildChannels();
    mpCGraphCC->CheckRefresh();
    mpCGraphCC->Refresh(false);
}

void ColorCurveEditor_cls::OnGraphChanged(bool bCommand) {
    UpdateKeyTypeChoice();
    UpdateNumPanel();
    double x = 0.0;
    if (mpCPos && !mCEdit.IsDragging() && mCEdit.GetSelectedX(x))
        mpCPos->ChangeValue(wxString::Format("%g", x));
    // A drag moves keys natively: the bar and the pictures that use the curve follow it live.
    if (!bCommand && mCEdit.GetDragMode() == GraphKeyEdit_cls::DRAG_KEYS && GCClassProvider)
        GCClassProvider->UpdatePanels("VIEW3D");
}

void ColorCurveEditor_cls::AppendPopItems(wxMenu& menu) {
    EditorBase_cls::AppendPopItems(menu);
    menu.AppendSeparator();
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_FLIP, _("Flip Color"));
    menu.Append(ID_MENU_EDITOR_POP_FIRST + POP_SWAP, _("Swap RGB"));
    menu.Append(ID_MENU_EDITOR_COPY, _("Copy Curve"));
    menu.Append(ID_MENU_EDITOR_PASTE, _("Paste Curve"));
    menu.Append(ID_MENU_EDITOR_COPY_COLOR, _("Copy Color"));
    menu.Append(ID_MENU_EDITOR_PASTE_COLOR, _("Paste Color"));
}

void ColorCurveEditor_cls::ProcPopAction(int action) {
    if (action == POP_FLIP)
        FlipColor();
    else if (action == POP_SWAP)
        SwapRGB();
    else
        EditorBase_cls::ProcPopAction(action);
}

// ---- events -----------------------------------------------------------------------------------

void ColorCurveEditor_cls::OnCommand(wxCommandEvent& event) {
    switch (event.GetId()) {
    case ID_EDITOR_FLIP_COLOR:
        FlipColor();
        break;
    case ID_EDITOR_SWAP_RGB:
        SwapRGB();
        break;
    case ID_EDITOR_ALPHA:
        ShowAlpha(!mbShowAlpha);
        break;
    case ID_EDITOR_SELECTOR:
        StepChannelSelector();
        break;
    case ID_EDITOR_PREV_KEY:
        SelectAdjacentStop(-1);
        break;
    case ID_EDITOR_NEXT_KEY:
        SelectAdjacentStop(1);
        break;
    case ID_EDITOR_TICS_MODE:
        OnTicsMode();
        break;
    case ID_MENU_EDITOR_COPY_COLOR:
        CopyColor();
        break;
    case ID_MENU_EDITOR_PASTE_COLOR:
        PasteColor();
        break;
    case ID_EDITOR_NUM_PANEL:
        ShowNumPanel(mpCNumPanel && !mpCNumPanel->IsShown());
        break;
    case ID_EDITOR_KEY_COLOR: {
        ColorCurve_cls* pCurve = GetPCCurve();
        double x = 0.0;
        if (!pCurve || !mCEdit.GetSelectedX(x))
            break;
        const std::array<unsigned char, 4> c = pCurve->GetColor(x, nullptr);
        const wxColour colour = wxGetColourFromUser(this, wxColour(c[0], c[1], c[2]));
        if (colour.IsOk())
            SetKeyColor(colour.Red() / 255.0, colour.Green() / 255.0, colour.Blue() / 255.0);
        break;
    }
    case ID_MENU_EDITOR_COPY:
        if (ColorCurve_cls* pCurve = GetPCCurve()) {
            wxString strText;
            pCurve->Serialize(strText);
            if (wxTheClipboard->Open()) {
                wxTheClipboard->SetData(new wxTextDataObject(strText));
                wxTheClipboard->Close();
            }
        }
        break;
    case ID_MENU_EDITOR_PASTE:
        if (ColorCurve_cls* pCurve = GetPCCurve()) {
            wxTextDataObject data;
            if (wxTheClipboard->Open()) {
                if (wxTheClipboard->GetData(data)) {
                    wxString strText = data.GetText();
                    pCurve->Paste(strText, wxString());
                }
                wxTheClipboard->Close();
            }
        }
        break;
    default:
        event.Skip();
        break;
    }
}

void ColorCurveEditor_cls::OnChoice(wxCommandEvent& event) {
    switch (event.GetId()) {
    case ID_EDITOR_DROP_DOWN:
        ApplyPreset(event.GetSelection());
        break;
    case ID_EDITOR_TEMPLATE_ALPHA:
        SetTemplateAlpha(event.GetSelection());
        break;
    case ID_EDITOR_MODE:
        SetMode(event.GetSelection());
        break;
    default:
        event.Skip();
        break;
    }
}

void ColorCurveEditor_cls::OnPosEnter(wxCommandEvent&) {
    InsertKeys();
}
