#include "ConsolePanel_cls.h"

#include "PanelBar_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <algorithm>

ConsolePanel_cls::ConsolePanel_cls(SplittableWindow_cls* pOwner) : wxPanelEX(pOwner, _PANEL_CONSOLE) {
    ConstructPanelBar();
    mpCOutput = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxTE_MULTILINE | wxTE_READONLY | wxTE_WORDWRAP);
    mpCInput =
        new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    wxFont font(wxFontInfo(9).Family(wxFONTFAMILY_TELETYPE));
    mpCOutput->SetFont(font);
    mpCInput->SetFont(font);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    pSizer->Add(mpCOutput, 1, wxEXPAND);
    pSizer->Add(mpCInput, 0, wxEXPAND);
    SetSizer(pSizer);
    mpCInput->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { ProcessLine(mpCInput->GetValue()); });
    mpCInput->Bind(wxEVT_KEY_DOWN, &ConsolePanel_cls::OnInputKeyDown, this);
}

bool ConsolePanel_cls::ProcessLine(const wxString& strLine) {
    if (strLine.Strip(wxString::both).empty())
        return false;
    const size_t before = mCConsole.mStrOutput.length();
    bool bOk = mCConsole.ProcessOneLiner(strLine);
    wxString strShown = "> " + strLine + "\n" + mCConsole.mStrOutput.Mid(before);
    if (!strShown.EndsWith("\n"))
        strShown += "\n";
    mpCOutput->AppendText(strShown);
    mpCInput->ChangeValue(wxString());
    mHistoryIndex = static_cast<int>(mCConsole.mVStrHistory.size());
    return bOk;
}

void ConsolePanel_cls::StepHistory(int direction) {
    const int size = static_cast<int>(mCConsole.mVStrHistory.size());
    mHistoryIndex = std::max(0, std::min(size, mHistoryIndex + direction));
    mpCInput->ChangeValue(mHistoryIndex < size ? mCConsole.mVStrHistory[mHistoryIndex] : wxString());
    mpCInput->SetInsertionPointEnd();
}

void ConsolePanel_cls::OnInputKeyDown(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_UP) {
        StepHistory(-1);
        return;
    }
    if (event.GetKeyCode() == WXK_DOWN) {
        StepHistory(+1);
        return;
    }
    event.Skip();
}
