// What the application core asks of a main window. The window layer implements it; the core
// holds the windows through it so that it never includes GUI headers.
#pragma once

#include <wx/string.h>

#include <istream>
#include <vector>

class FrameHost_cls {
public:
    virtual ~FrameHost_cls() = default;
    // Delivers one panel name ("OUTLINER", "ALL", "IDLE").
    virtual void UpdatePanels(const wxString& strPanel) = 0;
    virtual void ProcAfterMath(const wxString& strWhat, const wxString& strArg) = 0;
    // The window's lines of the project language (its layout blocks).
    virtual bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) = 0;
    virtual void Serialize(wxString& strOut, int index) = 0;
    virtual void UpdateTitle() = 0;
    // Closes a window after the first; the window removes itself from the core's vector.
    virtual void CloseWindow() = 0;
    virtual void SetBusy(bool bBusy) = 0;
    // Asks the user for a file; empty when cancelled.
    virtual wxString AskFilePath(const wxString& strTitle, const wxString& strFilter,
                                 const wxString& strStart, bool bSave) = 0;
    // Asks the user to pick one of the answers; the index of the answer, -1 when the question was
    // dismissed. The first answer is the default one.
    virtual int AskUser(const wxString& strTitle, const wxString& strMessage,
                        const std::vector<wxString>& vStrAnswers) = 0;
};
