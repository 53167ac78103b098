// The log window: the warnings and errors (and messages) the program has logged, newest last,
// in a window that stays open beside the main window. It is fed by the main window's idle pass,
// never by the log target itself. Main thread only.
#pragma once

#include "wxLogGuiEX.h"

#include <wx/dialog.h>

#include <vector>

class wxTextCtrl;

class LogWindow_cls : public wxDialog {
public:
    explicit LogWindow_cls(wxWindow* pParent);

    // Shows these lines after the ones already there.
    void AppendLines(const std::vector<wxLogGuiEX::Line_cls>& vLines);
    // The shown text, for a test.
    wxString GetStrText() const;

    // "Error: ", "Warning: " or nothing, the way a line is shown.
    static wxString GetStrLevel(wxLogLevel level);

private:
    wxTextCtrl* mpCText = nullptr;
};
