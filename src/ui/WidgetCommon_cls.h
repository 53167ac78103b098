// Small helpers that every widget of the window layer shares: icons by tag and the posting of
// menu events, which is how a widget asks its frame for work outside the current handler.
// Main thread only.
#pragma once

#include <wx/artprov.h>
#include <wx/bitmap.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

class wxWindow;

class WidgetCommon_cls {
public:
    // The bitmap of an icon tag ("wxART_OPEN_FILE") from the art providers, at the given size.
    static wxBitmap GetBitmapFromTag(const wxString& strTag, const wxSize& size,
                                     const wxString& strClient = wxART_OTHER);
    // Queues a menu event with this id to the window; it runs after the current handler.
    static void PostMenuEvent(wxWindow* pTarget, int id, const wxString& strText = wxString());
    // Sends the same event at once.
    static void SendMenuEvent(wxWindow* pTarget, int id);
};
