// "StreamTransform_cls": moves the points of the stream lines before they are clipped: scaled by
// Scale=, turned by Rotate= (degrees about x, y and z; RotateOrder= 0 turns about x first, 1 about
// z first), then moved by Offset=. No executor: the stream-line object copies the keys into its
// preparation settings. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class StreamTransform_cls : public ModifierBase_cls {
public:
    explicit StreamTransform_cls(const wxString& strName);

    ConfItemFLOATARRAY_cls mCOffset;
    ConfItemFLOATARRAY_cls mCRotate;
    ConfItemINT_cls mCRotateOrder;
    ConfItemFLOATARRAY_cls mCScale;
};
