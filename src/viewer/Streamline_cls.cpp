#include "Streamline_cls.h"

#include "ColorCurve_cls.h"
#include "Material_cls.h"

namespace {
const wxString kDraw = "VIEW3D";
} // namespace

Streamline_cls::Streamline_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "Streamline_cls") {
    Add(&mCInterpType, "InterpType=", "1", kDraw);
    Add(&mCThin, "Thin=", "1", kDraw);
    Add(&mCClip, "Clip=", "0", kDraw);
    Add(&mCClipLow, "ClipLow=", "-1 -1 -1", kDraw);
    Add(&mCClipHigh, "ClipHigh=", "1 1 1", kDraw);
    Add(&mCValueType, "ValueType=", "0", kDraw);
    Add(&mCLineWidth, "LineWidth=", "1", kDraw);
    Add(&mCDrawType, "DrawType=", "0", kDraw);
    Add(&mCColorType, "ColorType=", "0", kDraw);
    Add(&mCSmoothWidth, "SmoothWidth=", "0", kDraw);
    Add(&mCThinningFactor, "ThinningFactor=", "1", kDraw);
    Add(&mCMappingType, "MappingType=", "0", kDraw);
    AddOwnAttribute(new Material_cls("Material", "Streamline_cls"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

StreamlineSetting_cls Streamline_cls::GetSetting(double) {
    StreamlineSetting_cls s;
    s.mInterpType = static_cast<int>(mCInterpType.GetBodyINT());
    s.mThin = static_cast<int>(mCThin.GetBodyINT());
    s.mbClip = mCClip.GetBodyBOOL();
    const std::vector<double> low = mCClipLow.GetBodyFLOATARRAY();
    const std::vector<double> high = mCClipHigh.GetBodyFLOATARRAY();
    for (size_t i = 0; i < 3; ++i) {
        if (i < low.size())
            s.mClipLow[i] = static_cast<float>(low[i]);
        if (i < high.size())
            s.mClipHigh[i] = static_cast<float>(high[i]);
    }
    s.mValueType = static_cast<int>(mCValueType.GetBodyINT());
    return s;
}

StreamlineSnap_cls* Streamline_cls::LoadSnapNow(int index) {
    StreamlineSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    pSnap->SetStrFile(mCSequence.GetStrFileOfIndex(index));
    pSnap->ReadData();
    pSnap->WaitReadingThread(3);
    return pSnap;
}
