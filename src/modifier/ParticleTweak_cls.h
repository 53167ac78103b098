// "ParticleTweak_cls": small drawing adjustments of particles; holds the focus of billboards
// ("Billboard Focus (YPR)") and its rotate order ("YPR", "RPY"), read by the particle drawing.
// Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class ParticleTweak_cls : public ModifierBase_cls {
public:
    explicit ParticleTweak_cls(const wxString& strName);

    // The three angles of "BillboardFocus" at the scene's current normalised time (or at nt)
    // and BillboardRotOrder=. The name's spelling is kept as the drawing code calls it.
    void GetBillboartFocus(float& yaw, float& pitch, float& roll, int& order);
    void GetBillboartFocus(double nt, float& yaw, float& pitch, float& roll, int& order);

    ConfItemINT_cls mCBillboardRotOrder; // "BillboardRotOrder=": 0 "YPR", 1 "RPY"
};
