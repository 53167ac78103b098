// The named colours of the program, as configuration items of the project ("GLBG=", "Black=",
// "MaskBG=", "GLGrid=", each "r g b a" in 0..1). The frame passes take their clear and grid
// colours from here; the block is read and written with the project like every receiver's.
#pragma once

#include "ConfListContainer_cls.h"

#include <array>

class ColorProvider_cls : public ConfListContainer_cls {
public:
    ColorProvider_cls();

    // The colour of the name (with or without "="); opaque black for a name it does not know.
    std::array<float, 4> GetColor(const wxString& strName) const;
    // GL thread only: the clear colour of the name.
    void SetGLClearColor(const wxString& strName) const;

    ConfItemFLOATARRAY_cls mCGLBG;
    ConfItemFLOATARRAY_cls mCBlack;
    ConfItemFLOATARRAY_cls mCMaskBG;
    ConfItemFLOATARRAY_cls mCGLGrid;
};
