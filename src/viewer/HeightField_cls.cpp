#include "HeightField_cls.h"

#include "ColorCurve_cls.h"
#include "Material_cls.h"

namespace {
const wxString kDraw = "VIEW3D";
const wxString kSeq = "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO";
} // namespace

HeightField_cls::HeightField_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "HeightField_cls") {
    Add(&mCChannel, "Channel=", "0", kSeq);
    Add(&mCInterpType, "InterpType=", "1", kDraw);
    Add(&mCSizeX, "SizeX=", "1", kDraw);
    Add(&mCSizeY, "SizeY=", "1", kDraw);
    Add(&mCHeightScale, "HeightScale=", "0.2", kDraw);
    Add(&mCColorType, "ColorType=", "1", kDraw);
    AddOwnAttribute(new Material_cls("Material", "HeightField_cls"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

HeightFieldSetting_cls HeightField_cls::GetSetting(double) {
    HeightFieldSetting_cls s;
    s.mInterpType = static_cast<int>(mCInterpType.GetBodyINT());
    s.mSizeX = static_cast<float>(mCSizeX.GetBodyDOUBLE());
    s.mSizeY = static_cast<float>(mCSizeY.GetBodyDOUBLE());
    s.mHeightScale = static_cast<float>(mCHeightScale.GetBodyDOUBLE());
    return s;
}

HeightFieldSnap_cls* HeightField_cls::LoadSnapNow(int index) {
    HeightFieldSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    pSnap->WaitReadingThread(3);
    mCSequence.PrepareSnap(pSnap, index, GetChannel());
    pSnap->ReadData();
    return pSnap;
}
