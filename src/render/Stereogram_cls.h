// Merges the images of two eyes into one stereo picture: the anaglyphs ("RED-CYAN",
// "YELLOW-BLUE"), "SIDE BY SIDE", and "LINE BY LINE" on the window through a stencil of
// stripes (files interleave the rows in the image writer). Eye types of the "EyeType" list:
// 0 "No Parallax", 1 "LEFT", 2 "RIGHT", 3 "LINE BY LINE", 4 "RED-CYAN", 5 "YELLOW-BLUE",
// 6 "SIDE BY SIDE", 7 "QUAD BUFFERING". GL thread only.
#pragma once

class FBO_cls;

class Stereogram_cls {
public:
    // Fills `out` from the two eye images for the eye types 4, 5 and 6; the others (the
    // scan-line type draws on the window, quad buffering has no merge) leave it cleared.
    void MergeStereogram(FBO_cls** pEyes, FBO_cls* pOut, int eyeType);
    // Eye 0 over the whole current buffer of width by height, then eye 1 on every second row
    // (the odd rows counted from the top), both placed by `fit` like the mono picture.
    void DrawScanLineOnScreen(FBO_cls** pEyes, int width, int height, int fit, int yOffset);

    // The channels an eye writes in an anaglyph: red, or green and blue ("RED-CYAN"); red and
    // green, or blue ("YELLOW-BLUE"). Alpha is written by both.
    static void GetColorMask(int eyeType, int eye, bool* pMask);

private:
    // Into the current buffer of the size of `out`.
    void DrawAnaglyph(FBO_cls** pEyes, int eyeType, int width, int height);
    void DrawSideBySide(FBO_cls** pEyes, int width, int height);
    void ColorMaskBegin(int eyeType, int eye);
    void ColorMaskEnd();
    // Stencil 1 on the stripes, 0 elsewhere; colour and depth are not touched.
    void MakeStripePatternOnStencil(int width, int height, bool bOddFromTop);
    void StencilMaskBegin(int ref);
    void StencilMaskEnd();
};
