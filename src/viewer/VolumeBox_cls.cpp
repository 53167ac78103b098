#include "VolumeBox_cls.h"

#include "Material_cls.h"

namespace {
const wxString kDraw = "VIEW3D";
const wxString kSeq = "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE";
} // namespace

VolumeBox_cls::VolumeBox_cls(ParentObj_cls* pParent) : DataViewerBase_cls(pParent, "VolumeBox_cls") {
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
}

int VolumeBox_cls::CheckFileSequence() {
    if (!IsZStack())
        return DataViewerBase_cls::CheckFileSequence(mCSequence);
    return CheckFileSequenceStack(mCSequence, static_cast<int>(mCSeqOffsetZ.GetBodyINT()));
}

bool VolumeBox_cls::PrefetchData() {
    if (IsPathChanged())
        CheckFileSequence();
    return mCSequence.PrefetchData(GetPCSequenceRemap(), IsZStack());
}

bool VolumeBox_cls::ReleaseMemoryData() {
    return mCSequence.ReleaseMemoryData(GetPCSequenceRemap());
}
