#include "TLPanelGeom_cls.h"

int TLPanelGeom_cls::GetDevCoordFromN(double n, int offset) const {
    if (mT1 == mT0)
        return offset + mLeftMargin;
    return static_cast<int>((n - mT0) / (mT1 - mT0) * GetSpan(offset) + offset + mLeftMargin);
}

double TLPanelGeom_cls::GetNFromDevCoord(int x, int offset) const {
    const int span = GetSpan(offset);
    if (span <= 0)
        return mT0;
    return static_cast<double>(x - offset - mLeftMargin) / span * (mT1 - mT0) + mT0;
}
