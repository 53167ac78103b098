// The message lines drawn over a view (frames per second, the angle of a drag), from its top
// left corner downwards, with FreeType glyphs. GL thread only for Draw.
#pragma once

#include <wx/string.h>

#include <vector>

class TextDraw_cls;

class GLStrings2D_cls {
public:
    static constexpr double msTextSize = 13.0;
    static constexpr double msMargin = 6.0;
    // The size of the view the lines are laid out in.
    void SetGeometry(int width, int height) {
        mWidth = width;
        mHeight = height;
    }
    void Clear() { mVStrLines.clear(); }
    void AddLine(const wxString& strLine) { mVStrLines.push_back(strLine); }
    const std::vector<wxString>& GetVStrLines() const { return mVStrLines; }
    // Draws the lines in the current 2D matrices; pText (not owned) draws the glyphs.
    void Draw(TextDraw_cls& text) const;

    // "12.34 fps"
    static wxString GetStrFPS(double fps);
    // "30.0 deg"
    static wxString GetStrDragAngle(double degrees);

private:
    std::vector<wxString> mVStrLines;
    int mWidth = 0;
    int mHeight = 0;
};
