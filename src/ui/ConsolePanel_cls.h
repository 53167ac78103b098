// The console panel: a line of Lua typed into the input runs through the console model
// (ConsoleCtrl_cls::ProcessOneLiner) with the host tables, and what it prints shows in the
// output above. Up and Down walk the history of lines. Both text controls keep the window
// name "text". Main thread only.
#pragma once

#include "ConsoleCtrl_cls.h"
#include "wxPanelEX.h"

class wxTextCtrl;

class ConsolePanel_cls : public wxPanelEX {
public:
    explicit ConsolePanel_cls(SplittableWindow_cls* pOwner);

    // Runs the line, echoes it after "> " and shows its output; the input is emptied.
    bool ProcessLine(const wxString& strLine);
    // -1 one line back in the history, +1 one line forward; past the newest line the input is
    // empty again.
    void StepHistory(int direction);

    ConsoleCtrl_cls mCConsole;
    wxTextCtrl* mpCOutput = nullptr;
    wxTextCtrl* mpCInput = nullptr;
    int mHistoryIndex = 0; // == history size: the new line being typed

private:
    void OnInputKeyDown(wxKeyEvent& event);
};
