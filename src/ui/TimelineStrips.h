// The look shared by the three bars above the rows: their margins, colours and the range bar
// with its two handles. Main thread only.
#pragma once

#include <wx/colour.h>

class TLDragLogic_cls;
class wxDC;

namespace TimelineStrips {

constexpr int kMargin = 8;
constexpr int kMarginRight = 10;
inline const wxColour kBack(236, 236, 236);
inline const wxColour kBar(150, 170, 200);
inline const wxColour kHandle(70, 90, 130);

// A range bar with its two handles at the logic's handle rectangles.
void DrawRangeBar(wxDC& dc, const TLDragLogic_cls& logic, const wxColour& bar, int height);

} // namespace TimelineStrips
