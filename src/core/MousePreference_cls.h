// The user's mouse preferences: which axes each navigation of a 3D view reads backwards.
// Configuration items in the list "MousePreference", saved with the settings and projects and
// undoable like every other setting. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"

class MousePreference_cls : public ConfListContainer_cls {
public:
    MousePreference_cls();

    ConfItemBOOL_cls mCInvertGyrationX; // orbit: left and right
    ConfItemBOOL_cls mCInvertGyrationY; // orbit: up and down
    ConfItemBOOL_cls mCInvertZoom;      // zoom by drag
    ConfItemBOOL_cls mCInvertPan;       // pan, both axes
};
