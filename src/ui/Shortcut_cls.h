// The key shortcuts of the window: a table of named commands, each a menu id that the frame
// routes like a ribbon click (the tool id plus the mirror offset), and the key that runs it
// ("Delete", "Shift+C", "Ctrl+D"). A key reaches the table only when no text widget has the
// focus (the frame checks the focus name). The keys are the user's: saved in the settings file
// and projects as one line per command, "Shortcut::Key::<command>::<key>", and set through the
// undo road. The text editor has a second table of its own commands ("TextShortcut::Key::..."),
// whose keys act while its text has the focus. Main thread only.
#pragma once

#include <wx/string.h>

#include <istream>
#include <vector>

class wxKeyEvent;
class wxRibbonToolBar;
class wxWindow;

class Shortcut_cls {
public:
    class Entry_cls {
    public:
        wxString mStrName; // the command's name, its address in the lines
        int mMenuId = 0;
        wxString mStrKey; // as wxAcceleratorEntry writes it; empty: no key
    };

    // The table of the frame's commands with their default keys.
    Shortcut_cls();
    // Another table, such as the text editor's: its own head in the lines and its own defaults.
    Shortcut_cls(const wxString& strHead, const std::vector<Entry_cls>& vDefault);

    static const std::vector<Entry_cls>& GetVDefault();
    // The text editor's commands: the menu ids are the editor panel's own, posted to it.
    static const std::vector<Entry_cls>& GetVDefaultText();
    // The key as the table stores it ("Ctrl+D"); empty for text that names no key.
    static wxString NormalizeKey(const wxString& strKey);
    // The key of a key-down event in the same form.
    static wxString GetStrKey(const wxKeyEvent& event);

    // Posts the command of the event's key to the frame; false when no entry has that key.
    bool ProcShortcutKey(const wxKeyEvent& event, wxWindow* pFrame);
    // "<name>\t<key>", as a menu item shows it; the name alone without a key.
    wxString GetMenuString(size_t index) const;
    int FindEntry(const wxString& strName) const;
    // The help string of a ribbon tool: its label, with the key of the tool's command when it has
    // one ("Box (Shift+B)").
    wxString GetStrRbnHelp(int toolId, const wxString& strLabel) const;
    // Sets that help string on the tool (bShow), or clears it.
    void SetRbnHelpString(wxRibbonToolBar* pBar, int toolId, const wxString& strLabel, bool bShow) const;

    // Sets a command's key through the undo road; false for an unknown command or a key text
    // that names no key (an empty text clears the key). A key another command had moves here.
    bool SetKeyCommand(const wxString& strName, const wxString& strKey);

    // The lines of every entry.
    void Serialize(wxString& strOut) const;
    // One line; false when it is not this table's.
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);

    std::vector<Entry_cls> mVEntry;
    // The head of this table's lines.
    wxString mStrHead;
    // The heads of the frame's table and of the text editor's.
    static const wxString msStrHead;
    static const wxString msStrTextHead;
};
