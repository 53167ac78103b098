// The scene object that shows a volume sequence inside a box. It owns the sequence of volume
// snaps; with ZStack= each step is a stack of images, one per Z slice, named by the dual rule.
// Main thread only.
#pragma once
#include "DataViewerBase_cls.h"
#include "VolumeSequence_cls.h"

class VolumeBox_cls : public DataViewerBase_cls {
public:
    explicit VolumeBox_cls(ParentObj_cls* pParent);

    // Counts the steps of Path= (time steps of the stacks with ZStack=); returns the count.
    int CheckFileSequence();
    // Starts at most one read ahead of the current frame. True when a read started.
    bool PrefetchData();
    // Evicts at most one snap of the sequence. True when one went.
    bool ReleaseMemoryData();
    int GetTotalUsedMemoryMB() { return mCSequence.GetTotalUsedMemoryMB(); }
    bool IsZStack() const { return mCZStack.GetBodyBOOL(); }

    VolumeSequence_cls mCSequence;

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
};
