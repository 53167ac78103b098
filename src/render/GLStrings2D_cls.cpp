#include "GLStrings2D_cls.h"

#include "TextDraw_cls.h"

wxString GLStrings2D_cls::GetStrFPS(double fps) {
    return wxString::Format("%.2f", fps) + " fps";
}

wxString GLStrings2D_cls::GetStrDragAngle(double degrees) {
    return wxString::Format("%.1f", degrees) + " deg";
}

void GLStrings2D_cls::Draw(TextDraw_cls& text) const {
    static const float kColour[4] = {0.95f, 0.95f, 0.95f, 1.f};
    double y = mHeight - msMargin - msTextSize;
    for (const wxString& strLine : mVStrLines) {
        text.Draw(strLine, msMargin, y, msTextSize, kColour, 0, 1.0);
        y -= msTextSize * 1.3;
    }
}
