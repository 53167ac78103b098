#include "MousePreference_cls.h"

MousePreference_cls::MousePreference_cls() {
    SetTag("MousePreference");
    Add(&mCInvertGyrationX, "InvertGyrationX=", "0");
    Add(&mCInvertGyrationY, "InvertGyrationY=", "0");
    Add(&mCInvertZoom, "InvertZoom=", "0");
    Add(&mCInvertPan, "InvertPan=", "0");
}
