// Stands in a leaf for a panel kind that this build does not have yet: it shows the panel's
// display name and says so, keeps the bar so the leaf can be split, removed or retyped, and
// keeps the panel's own block from the layout text so that a save writes it back unchanged.
// Main thread only.
#pragma once

#include "wxPanelEX.h"

class wxStaticText;

class PlaceholderPanel_cls : public wxPanelEX {
public:
    PlaceholderPanel_cls(SplittableWindow_cls* pOwner, int type);

    // "The Timeline panel is not available yet."
    static wxString GetStrNotAvailable(int type);

    bool ReadStrLine(std::wistream& stream, const wxString& strKey, const wxString& strRest) override;
    // Reads a panel's own block (a configuration list) as text, up to its end line, so that a
    // panel that does not use it yet writes it back unchanged. False when the key opens none.
    static bool ReadBlock(std::wistream& stream, const wxString& strKey, const wxString& strRest,
                          wxString& strBlock);

    wxString mStrBlock; // the panel's own configuration list, as read
    int mUpdateCount = 0;

protected:
    void UpdatePanelSelf(const wxString& strName, bool bForce) override;
    void SerializeSelf(wxString& strOut) override { strOut += mStrBlock; }
};
