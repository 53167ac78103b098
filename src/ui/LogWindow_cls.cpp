#include "LogWindow_cls.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

LogWindow_cls::LogWindow_cls(wxWindow* pParent)
    : wxDialog(pParent, wxID_ANY, "Log", wxDefaultPosition, wxSize(640, 320),
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    // The lines wrap: a long path must be read without scrolling sideways.
    mpCText = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                             wxTE_MULTILINE | wxTE_READONLY | wxTE_WORDWRAP);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCText, 1, wxEXPAND | wxALL, 4);
    auto* pClose = new wxButton(this, wxID_CLOSE, "Close");
    pClose->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Hide(); });
    pSizer->Add(pClose, 0, wxALIGN_RIGHT | wxALL, 4);
    SetSizer(pSizer);
    // Closing only hides it: the main window keeps feeding it.
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Hide(); });
}

wxString LogWindow_cls::GetStrLevel(wxLogLevel level) {
    if (level <= wxLOG_Error)
        return "Error: ";
    if (level == wxLOG_Warning)
        return "Warning: ";
    return wxString();
}

void LogWindow_cls::AppendLines(const std::vector<wxLogGuiEX::Line_cls>& vLines) {
    wxString strText;
    for (const wxLogGuiEX::Line_cls& line : vLines)
        strText += GetStrLevel(line.mLevel) + line.mStrText + "\n";
    if (!strText.empty())
        mpCText->AppendText(strText);
}

wxString LogWindow_cls::GetStrText() const {
    return mpCText->GetValue();
}
