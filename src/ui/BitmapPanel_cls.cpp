#include "BitmapPanel_cls.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

BitmapPanel_cls::BitmapPanel_cls(wxWindow* pParent, int id, const wxBitmap& bmpNormal,
                                 const wxBitmap& bmpPressed, const wxSize& size, const wxSize& border)
    : wxPanel(pParent, id, wxDefaultPosition, size, wxBORDER_NONE, "BitmapPanel"), mBmpNormal(bmpNormal),
      mBmpPressed(bmpPressed), mBorder(border) {
    SetMinSize(size);
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &BitmapPanel_cls::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, &BitmapPanel_cls::OnMouse, this);
    Bind(wxEVT_LEFT_UP, &BitmapPanel_cls::OnMouse, this);
    Bind(wxEVT_LEAVE_WINDOW, &BitmapPanel_cls::OnMouse, this);
}

void BitmapPanel_cls::SetBitmaps(const wxBitmap& bmpNormal, const wxBitmap& bmpPressed) {
    mBmpNormal = bmpNormal;
    mBmpPressed = bmpPressed;
    Refresh();
}

void BitmapPanel_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    const wxBitmap& bmp = (mbPressed && mBmpPressed.IsOk()) ? mBmpPressed : mBmpNormal;
    if (!bmp.IsOk())
        return;
    wxSize size = GetClientSize();
    int x = mBorder.x + (size.x - 2 * mBorder.x - bmp.GetWidth()) / 2;
    int y = mBorder.y + (size.y - 2 * mBorder.y - bmp.GetHeight()) / 2;
    dc.DrawBitmap(bmp, x, y, true);
}

void BitmapPanel_cls::OnMouse(wxMouseEvent& event) {
    if (event.LeftDown()) {
        mbPressed = true;
        Refresh();
    } else if (event.LeftUp()) {
        bool bClick = mbPressed && GetClientRect().Contains(event.GetPosition());
        mbPressed = false;
        Refresh();
        if (bClick) {
            auto* pEvent = new wxCommandEvent(wxEVT_BUTTON, GetId());
            pEvent->SetEventObject(this);
            GetEventHandler()->QueueEvent(pEvent);
        }
    } else if (event.Leaving() && mbPressed) {
        mbPressed = false;
        Refresh();
    }
    event.Skip();
}
