// The scene object that shows a volume sequence inside a box (the object's unit box, -0.5 to
// 0.5 on each axis). It owns the sequence of volume snaps; with ZStack= each step is a stack of
// images, one per Z slice, named by the dual rule. Two prepared sets: the shown one and the spare
// one that a worker mixes for the next frame while playing (the hand-over of TwoSetViewer_cls).
// The object carries one colour curve, through which the drawing colours the voxel values.
// Main thread only.
#pragma once
#include "TwoSetViewer_cls.h"
#include "VolumeFoRender_cls.h"
#include "VolumeSequence_cls.h"

class ColorCurve_cls;

class VolumeBox_cls
    : public TwoSetViewer_cls<VolumeSequence_cls, VolumeSnap_cls, VolumeFoRender_cls, VolumeSetting_cls> {
public:
    explicit VolumeBox_cls(ParentObj_cls* pParent);

    // Counts the steps of Path= (time steps of the stacks with ZStack=); returns the count.
    int CheckFileSequence() override;
    bool IsZStack() const { return mCZStack.GetBodyBOOL(); }
    // The text of everything that changes the prepared bytes besides the steps and the factor;
    // a set made with the same text and step is reused, so a camera move uploads nothing.
    wxString GetStrProcCounterForProcess() const;
    // The object's first colour curve; null when it has none. Not owned.
    ColorCurve_cls* GetPCColorCurve();
    // Both drop the prepared sets, so the next draw mixes its frame again.
    void Reload() { DropPrepared(); }
    void Rescale() { DropPrepared(); }

    ConfItemINT_cls mCSeqOffsetZ;
    ConfItemINT_cls mCQuality;
    ConfItemINT_cls mCSubQuality;
    ConfItemINT_cls mCTest;
    ConfItemBOOL_cls mCZStack;
    ConfItemINT_cls mCShader;
    ConfItemBOOL_cls mCDiscard0;
    ConfItemBOOL_cls mCSelfShadow;
    ConfItemINT_cls mCShaderQuality;
    ConfItemFLOAT_cls mCShaderFactor;
    ConfItemBOOL_cls mCRepeatCC;

    // What the preparation needs besides the steps: the data processes at that time, and their stamp.
    VolumeSetting_cls GetSetting(double) override;

protected:
    bool IsBlending() const override { return true; }
    VolumeSnap_cls* LoadSnapNow(int index) override;
    bool PrefetchSequence() override { return mCSequence.PrefetchData(GetPCSequenceRemap(), IsZStack()); }
    // "VolumeTime NT=" before and "Adjusted frame1=" after the composer's correction.
    void LogSteps(double nt, int a, int b, double t, int composite, bool bAdjusted) override;
};
