#include "Isosurface_cls.h"

#include "Attribute_cls.h"
#include "Material_cls.h"

namespace {
const wxString kSeq = "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE";
} // namespace

Isosurface_cls::Isosurface_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "Isosurface_cls") {
    Add(&mCZStack, "ZStack=", "0", kSeq);
    Add(&mCSeqOffsetZ, "SeqOffsetZ=", "0", kSeq);
    auto* pProp = new Attribute_cls("IsosurfaceProp_cls", "Isosurface");
    pProp->AddOneDimParam("IsoValue", "Value", 128.0);
    AddOwnAttribute(pProp);
    AddOwnAttribute(new Material_cls("Material", "Isosurface_cls"));
}

int Isosurface_cls::CheckFileSequence() {
    if (!IsZStack())
        return DataViewerBase_cls::CheckFileSequence(mCSequence);
    return CheckFileSequenceStack(mCSequence, static_cast<int>(mCSeqOffsetZ.GetBodyINT()));
}

double Isosurface_cls::GetIsoValue(double nt) {
    ParamGroup_cls* pGroup = GetPCParamGroup("Isosurface", "IsoValue");
    if (!pGroup)
        return 128.0;
    const std::vector<double> v = pGroup->GetVInterpolatedValue(nt, true, nullptr, false);
    return v.empty() ? 128.0 : v[0];
}

IsosurfaceSetting_cls Isosurface_cls::GetSetting(double nt) {
    IsosurfaceSetting_cls s;
    s.mIso = static_cast<float>(GetIsoValue(nt));
    return s;
}

VolumeSnap_cls* Isosurface_cls::LoadSnapNow(int index) {
    VolumeSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    mCSequence.PrepareSnap(pSnap, index, IsZStack());
    pSnap->ReadHeader(IsZStack());
    pSnap->ReadData();
    pSnap->WaitReadingThread(3);
    return pSnap;
}
