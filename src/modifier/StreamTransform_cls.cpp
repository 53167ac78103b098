#include "StreamTransform_cls.h"

StreamTransform_cls::StreamTransform_cls(const wxString& strName)
    : ModifierBase_cls("StreamTransform_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCOffset, "Offset=", "0 0 0", mStrTag);
    Add(&mCRotate, "Rotate=", "0 0 0", mStrTag);
    Add(&mCRotateOrder, "RotateOrder=", "0", mStrTag);
    Add(&mCScale, "Scale=", "1 1 1", mStrTag);
}
