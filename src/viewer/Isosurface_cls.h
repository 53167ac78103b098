// The scene object that shows the surface where a volume sequence (df3 files or image stacks,
// read as for VolumeBox_cls) crosses an iso value. Keys (with defaults): "ZStack=" 0,
// "SeqOffsetZ=" 0 as for volumes; the own attribute "Isosurface" holds the animated group
// "IsoValue" (member "Value", default 128, in voxel units 0 .. 255). The surface is made on the
// step at or before the time; steps do not blend. Main thread only.
#pragma once
#include "IsosurfaceForRender_cls.h"
#include "TwoSetViewer_cls.h"
#include "VolumeSequence_cls.h"

class Isosurface_cls : public TwoSetViewer_cls<VolumeSequence_cls, VolumeSnap_cls, IsosurfaceForRender_cls,
                                               IsosurfaceSetting_cls> {
public:
    explicit Isosurface_cls(ParentObj_cls* pParent);

    int CheckFileSequence() override;
    bool IsZStack() const { return mCZStack.GetBodyBOOL(); }
    // The iso value at normalised time nt.
    double GetIsoValue(double nt);

    ConfItemBOOL_cls mCZStack;
    ConfItemINT_cls mCSeqOffsetZ;

protected:
    bool IsBlending() const override { return false; }
    IsosurfaceSetting_cls GetSetting(double nt) override;
    VolumeSnap_cls* LoadSnapNow(int index) override;
    bool PrefetchSequence() override { return mCSequence.PrefetchData(GetPCSequenceRemap(), IsZStack()); }
};
