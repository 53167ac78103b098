#include "VolumeBox_cls.h"

#include "ColorCurve_cls.h"
#include "Material_cls.h"

#include <wx/log.h>

namespace {
const wxString kDraw = "VIEW3D";
const wxString kSeq = "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE";
} // namespace

VolumeBox_cls::VolumeBox_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "VolumeBox_cls") {
    mDrawOrder = 0;
    Add(&mCSeqOffsetZ, "SeqOffsetZ=", "0", kSeq);
    Add(&mCQuality, "Quality=", "128", kDraw);
    Add(&mCSubQuality, "SubQuality=", "4", kDraw);
    Add(&mCTest, "Test=", "1", kDraw);
    Add(&mCZStack, "ZStack=", "0", kSeq);
    Add(&mCShader, "Shader=", "1", kDraw);
    Add(&mCDiscard0, "Discard0=", "0", kDraw);
    Add(&mCSelfShadow, "SelfShadow=", "0", kDraw);
    Add(&mCShaderQuality, "ShaderQuality=", "16", kDraw);
    Add(&mCShaderFactor, "ShaderFactor=", "-1", kDraw);
    Add(&mCRepeatCC, "RepeatCC=", "0", kDraw);
    AddOwnAttribute(new Material_cls("Material", "VolumeBox_cls"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

int VolumeBox_cls::CheckFileSequence() {
    if (!IsZStack())
        return DataViewerBase_cls::CheckFileSequence(mCSequence);
    return CheckFileSequenceStack(mCSequence, static_cast<int>(mCSeqOffsetZ.GetBodyINT()));
}

wxString VolumeBox_cls::GetStrProcCounterForProcess() const {
    return mCPath.GetBodySTR() + "|" + mCZStack.GetBodySTR() + "|" + mCSeqOffsetZ.GetBodySTR() + "|" +
           mCSeqOffset.GetBodySTR();
}

VolumeSetting_cls VolumeBox_cls::GetSetting(double) {
    VolumeSetting_cls s;
    s.mStrProcCounter = GetStrProcCounterForProcess();
    return s;
}

ColorCurve_cls* VolumeBox_cls::GetPCColorCurve() {
    return static_cast<ColorCurve_cls*>(GetPCAttributeFromAttribName("ColorCurve_cls", 0));
}

void VolumeBox_cls::LogSteps(double nt, int a, int b, double t, int composite, bool bAdjusted) {
    // The frame road's trace: the texts are the program's own, the missing space before
    // "interp=" of the second line included.
    if (!bAdjusted)
        wxLogDebug("VolumeTime NT=%f frame1=%d interp=%f", nt, a, t);
    else
        wxLogDebug("Adjusted frame1=%d frame2=%dinterp=%f composit=%d", a, b, t, composite);
}

VolumeSnap_cls* VolumeBox_cls::LoadSnapNow(int index) {
    VolumeSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    pSnap->WaitReadingThread(3);
    mCSequence.PrepareSnap(pSnap, index, IsZStack());
    pSnap->ReadHeader(IsZStack());
    pSnap->ReadData();
    pSnap->WaitReadingThread(3);
    pSnap->MarkDraw();
    return pSnap;
}
