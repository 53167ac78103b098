#include "WidgetCommon_cls.h"

#include <wx/event.h>
#include <wx/window.h>

wxBitmap WidgetCommon_cls::GetBitmapFromTag(const wxString& strTag, const wxSize& size,
                                            const wxString& strClient) {
    return wxArtProvider::GetBitmap(strTag, strClient, size);
}

void WidgetCommon_cls::PostMenuEvent(wxWindow* pTarget, int id, const wxString& strText) {
    if (!pTarget)
        return;
    auto* pEvent = new wxCommandEvent(wxEVT_MENU, id);
    pEvent->SetString(strText);
    pEvent->SetEventObject(pTarget);
    pTarget->GetEventHandler()->QueueEvent(pEvent);
}

void WidgetCommon_cls::SendMenuEvent(wxWindow* pTarget, int id) {
    if (!pTarget)
        return;
    wxCommandEvent event(wxEVT_MENU, id);
    event.SetEventObject(pTarget);
    pTarget->GetEventHandler()->ProcessEvent(event);
}
