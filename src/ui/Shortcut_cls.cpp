#include "Shortcut_cls.h"

#include "Main_cls.h"
#include "Parser_cls.h"
#include "RibbonUI_cls.h"
#include "TextEntryCtrl_cls.h"
#include "TextHost_cls.h"
#include "UndoManager_cls.h"
#include "WidgetCommon_cls.h"

#include <wx/accel.h>
#include <wx/event.h>
#include <wx/ribbon/toolbar.h>
#include <wx/window.h>

const wxString Shortcut_cls::msStrHead = "Shortcut";
const wxString Shortcut_cls::msStrTextHead = "TextShortcut";

namespace {
int Mirror(int id) {
    return id + ID_MENU_MIRROR_OFFSET;
}
} // namespace

Shortcut_cls::Shortcut_cls() : Shortcut_cls(msStrHead, GetVDefault()) {}

Shortcut_cls::Shortcut_cls(const wxString& strHead, const std::vector<Entry_cls>& vDefault)
    : mVEntry(vDefault), mStrHead(strHead) {}

const std::vector<Shortcut_cls::Entry_cls>& Shortcut_cls::GetVDefault() {
    // Keys with Ctrl that the frame's accelerators take (open, save, undo, redo) are not here:
    // these are the plain keys of working in the panels.
    static const std::vector<Entry_cls> sVDefault = {
        {"Delete", Mirror(ID_RBN_DELETE), "Delete"},
        {"Duplicate", Mirror(ID_RBN_DUPLICATE), "Shift+D"},
        {"Add Box", Mirror(ID_RBN_BOX), "Shift+B"},
        {"Add Camera", Mirror(ID_RBN_CAMERA), "Shift+C"},
        {"Add Point Light", Mirror(ID_RBN_POINT_LIGHT), "Shift+L"},
        {"Add Particle", Mirror(ID_RBN_PARTICLE), "Shift+P"},
        {"Scene", Mirror(ID_RBN_SCENE), "F5"},
        {"Preference", Mirror(ID_RBN_PREFERENCE), "F8"},
    };
    return sVDefault;
}

const std::vector<Shortcut_cls::Entry_cls>& Shortcut_cls::GetVDefaultText() {
    // Written as NormalizeKey gives them: the table is made on the start-up worker, which keeps
    // away from the toolkit's key names.
    static const std::vector<Entry_cls> sVDefault = {
        {"Apply Expression", ID_TEXT_EDITOR_APPLY, "Ctrl+Enter"},
        {"Revert Expression", ID_TEXT_EDITOR_REVERT, "Ctrl+R"},
        {"Undo Typing", ID_TEXT_EDITOR_UNDO, "Ctrl+Z"},
        {"Redo Typing", ID_TEXT_EDITOR_REDO, "Ctrl+Y"},
        {"Go To Tag", ID_TEXT_EDITOR_TAG, "Ctrl+L"},
    };
    return sVDefault;
}

wxString Shortcut_cls::NormalizeKey(const wxString& strKey) {
    wxAcceleratorEntry entry;
    if (strKey.empty() || !entry.FromString(strKey))
        return wxString();
    return entry.ToRawString();
}

wxString Shortcut_cls::GetStrKey(const wxKeyEvent& event) {
    int flags = wxACCEL_NORMAL;
    if (event.ControlDown())
        flags |= wxACCEL_CTRL;
    if (event.AltDown())
        flags |= wxACCEL_ALT;
    if (event.ShiftDown())
        flags |= wxACCEL_SHIFT;
    int code = event.GetKeyCode();
    if (code >= 'a' && code <= 'z')
        code -= 'a' - 'A';
    return wxAcceleratorEntry(flags, code).ToRawString();
}

bool Shortcut_cls::ProcShortcutKey(const wxKeyEvent& event, wxWindow* pFrame) {
    const wxString strKey = GetStrKey(event);
    for (const Entry_cls& entry : mVEntry)
        if (!entry.mStrKey.empty() && entry.mStrKey == strKey) {
            WidgetCommon_cls::PostMenuEvent(pFrame, entry.mMenuId);
            return true;
        }
    return false;
}

wxString Shortcut_cls::GetMenuString(size_t index) const {
    if (index >= mVEntry.size())
        return wxString();
    const Entry_cls& entry = mVEntry[index];
    return entry.mStrKey.empty() ? entry.mStrName : entry.mStrName + "\t" + entry.mStrKey;
}

int Shortcut_cls::FindEntry(const wxString& strName) const {
    for (size_t i = 0; i < mVEntry.size(); ++i)
        if (mVEntry[i].mStrName == strName)
            return static_cast<int>(i);
    return -1;
}

wxString Shortcut_cls::GetStrRbnHelp(int toolId, const wxString& strLabel) const {
    for (const Entry_cls& entry : mVEntry)
        if (entry.mMenuId == Mirror(toolId) && !entry.mStrKey.empty())
            return strLabel + " (" + entry.mStrKey + ")";
    return strLabel;
}

void Shortcut_cls::SetRbnHelpString(wxRibbonToolBar* pBar, int toolId, const wxString& strLabel,
                                    bool bShow) const {
    if (pBar)
        pBar->SetToolHelpString(toolId, bShow ? GetStrRbnHelp(toolId, strLabel) : wxString());
}

bool Shortcut_cls::SetKeyCommand(const wxString& strName, const wxString& strKey) {
    const int index = FindEntry(strName);
    const wxString strNew = NormalizeKey(strKey);
    if (index < 0 || (strNew.empty() && !strKey.empty()))
        return false;
    const wxString strOld = mVEntry[static_cast<size_t>(index)].mStrKey;
    if (strOld == strNew)
        return true;
    const wxString strHead = mStrHead + "::Key::";
    if (GpCUndo)
        GpCUndo->OpenBlock("SetShortcut");
    // One key runs one command: the one that had it loses it, in the same undo step.
    for (const Entry_cls& other : mVEntry)
        if (!strNew.empty() && other.mStrKey == strNew)
            TextHost_cls::PushAndRedo(strHead + other.mStrName + "::" + strNew,
                                      strHead + other.mStrName + "::");
    TextHost_cls::PushAndRedo(strHead + strName + "::" + strOld, strHead + strName + "::" + strNew);
    if (GpCUndo)
        GpCUndo->CloseBlock("SetShortcut");
    return true;
}

void Shortcut_cls::Serialize(wxString& strOut) const {
    for (const Entry_cls& entry : mVEntry)
        strOut += mStrHead + "::Key::" + entry.mStrName + "::" + entry.mStrKey + "\n";
}

bool Shortcut_cls::ReadStrLine(std::wistream&, const wxString& strHead, const wxString& strRest) {
    if (strHead != mStrHead)
        return false;
    wxString strLine = strRest;
    if (Parser_cls::PopStrItemFromStrLine(strLine, "::") != "Key")
        return false;
    const wxString strName = Parser_cls::PopStrItemFromStrLine(strLine, "::");
    const int index = FindEntry(strName);
    if (index < 0)
        return false; // a command this build does not have
    mVEntry[static_cast<size_t>(index)].mStrKey = NormalizeKey(strLine);
    if (GCClassProvider)
        GCClassProvider->UpdatePanels("PROPERTY");
    return true;
}
