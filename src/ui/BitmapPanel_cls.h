// A small picture button: a normal and a pressed bitmap, drawn with a border. A click queues a
// wxEVT_BUTTON event with the panel's id, which climbs to the content panel; queueing means
// the handler may destroy this button's panel safely. Main thread only.
#pragma once

#include <wx/bitmap.h>
#include <wx/panel.h>

class BitmapPanel_cls : public wxPanel {
public:
    BitmapPanel_cls(wxWindow* pParent, int id, const wxBitmap& bmpNormal, const wxBitmap& bmpPressed,
                    const wxSize& size, const wxSize& border = wxSize(1, 1));
    void SetBitmaps(const wxBitmap& bmpNormal, const wxBitmap& bmpPressed);
    bool IsPressed() const { return mbPressed; }

private:
    void OnPaint(wxPaintEvent& event);
    void OnMouse(wxMouseEvent& event);

    wxBitmap mBmpNormal;
    wxBitmap mBmpPressed;
    wxSize mBorder;
    bool mbPressed = false;
};
