// The scene object that shows a particle data sequence. It owns the description of its files
// (ParticleFormat_cls, written as a block of its own in the project) and the sequence of snaps.
// Main thread only; readers get a clone of the format.
#pragma once
#include "DataViewerBase_cls.h"
#include "ParticleFormat_cls.h"
#include "ParticleSequence_cls.h"

class Particle_cls : public DataViewerBase_cls {
public:
    explicit Particle_cls(ParentObj_cls* pParent);

    // Counts the files of Path= into the sequence; returns the number of steps.
    int CheckFileSequence();
    // Starts at most one read ahead of the current frame, with a fresh clone of the format; the
    // clone is deleted here (the reader works on a copy of its own). True when a read started.
    bool PrefetchData();
    // Evicts at most one snap of the sequence. True when one went.
    bool ReleaseMemoryData();
    // The memory of the loaded snaps, in whole MB.
    int GetTotalUsedMemoryMB() { return mCSequence.GetTotalUsedMemoryMB(); }
    int GetInterpType() const { return static_cast<int>(mCInterpType.GetBodyINT()); }
    bool IsInterpolateByID() const { return mCInterpolateBy.GetBodyINT() == 1; }

    // The format block in the project: its list tag follows the object's name.
    void SerializeFormat(wxString& strOut);
    bool ReadStrLineFormat(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    void SyncFormatTag();

    ParticleFormat_cls mCFormat;
    ParticleSequence_cls mCSequence;

    ConfItemSTR_cls mCLink;
    ConfItemINT_cls mCDissolve;
    ConfItemINT_cls mCTwoPass;
    ConfItemINT_cls mCSortType;
    ConfItemFLOAT_cls mCSortFrequency;
    ConfItemSTR_cls mCSortObject;
    ConfItemINT_cls mCClassifyType;
    ConfItemSTR_cls mCClassify;
    ConfItemBOOL_cls mCDepthMask;
    ConfItemINT_cls mCInterpType;
    ConfItemINT_cls mCInterpolateBy;
    ConfItemINT_cls mCVanishSizeType;
    ConfItemINT_cls mCExtrapolateType;
    ConfItemSTR_cls mCTexturePath0;
    ConfItemSTR_cls mCTexturePath1;
    ConfItemSTR_cls mCTexturePath2;
    ConfItemINT_cls mCDependDistance;
    ConfItemFLOAT_cls mCPointSizeFactor;
    ConfItemFLOAT_cls mCDistanceBase;
    ConfItemINT_cls mCSphereDepth;
    ConfItemFLOAT_cls mCAlphaCrit;
    ConfItemINT_cls mCTextureNum;
    ConfItemINT_cls mCInfoIndex;
    ConfItemBOOL_cls mCCastShadow;
    ConfItemBOOL_cls mCTwistRandom;
};
