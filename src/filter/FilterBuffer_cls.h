// The copy of a filter that its property panel edits while the filter is being set up: the same
// items and groups as the source, never saved. SyncFromSrc reads the source's values into the
// copy; ForceSrcToSyncBuffer writes the copy's values to the source as one undoable command (the
// source's text before and the copy's after), so the panel's edits take the command road.
// The pair of each filter is FilterBuffer_cls<its class>: BlurBuffer_cls for Blur_cls, and so on.
// Main thread only.
#pragma once

#include "Blur_cls.h"
#include "Exposure_cls.h"
#include "FilterDepth_cls.h"
#include "FocalBlur_cls.h"
#include "Glare_cls.h"
#include "Legend_cls.h"
#include "Overlay_cls.h"
#include "RemoveAlpha_cls.h"
#include "SSAO_cls.h"

// The shared part: the text copy in both directions.
class FilterBufferBase_cls {
public:
    // Reads the text of pSrc into pCopy, which must be of the same class and name.
    static void CopyText(FilterBase_cls* pSrc, FilterBase_cls* pCopy);
    // One undo pair from pSrc's text to pCopy's; false when they do not differ.
    static bool PushText(FilterBase_cls* pSrc, FilterBase_cls* pCopy);
};

template <class Filter_cls> class FilterBuffer_cls : public Filter_cls {
public:
    // pSrc (not owned) is the filter in the chain.
    explicit FilterBuffer_cls(Filter_cls* pSrc) : Filter_cls(pSrc->GetStrName()), mpCSrc(pSrc) {
        this->SetTag(pSrc->GetTag());
        SyncFromSrc();
    }
    void SyncFromSrc() { FilterBufferBase_cls::CopyText(mpCSrc, this); }
    bool ForceSrcToSyncBuffer() { return FilterBufferBase_cls::PushText(mpCSrc, this); }
    Filter_cls* GetPCSrc() const { return mpCSrc; }

private:
    Filter_cls* mpCSrc;
};

using ExposureBuffer_cls = FilterBuffer_cls<Exposure_cls>;
using BlurBuffer_cls = FilterBuffer_cls<Blur_cls>;
using GlareBuffer_cls = FilterBuffer_cls<Glare_cls>;
using RemoveAlphaBuffer_cls = FilterBuffer_cls<RemoveAlpha_cls>;
using OverlayBuffer_cls = FilterBuffer_cls<Overlay_cls>;
using LegendBuffer_cls = FilterBuffer_cls<Legend_cls>;
using FocalBlurBuffer_cls = FilterBuffer_cls<FocalBlur_cls>;
using SSAOBuffer_cls = FilterBuffer_cls<SSAO_cls>;
using FilterDepthBuffer_cls = FilterBuffer_cls<FilterDepth_cls>;
