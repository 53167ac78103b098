#include "StreamFiltering_cls.h"

StreamFiltering_cls::StreamFiltering_cls(const wxString& strName)
    : ModifierBase_cls("StreamFiltering_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCFilteringType, "FilteringType=", "0", mStrTag);
    Add(&mCFilteringString, "FilteringString=", "", mStrTag);
}
