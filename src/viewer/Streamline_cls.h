// The scene object that shows a sequence of stream-line files. Its keys (with defaults):
// "InterpType=" 1 (0 step, 1 linear between steps), "Thin=" 1 (every n-th line), "Clip=" 0,
// "ClipLow=" "-1 -1 -1", "ClipHigh=" "1 1 1" (the clip box in the object's space), "ValueType=" 0
// (0 the file's value, 1 arc length), "LineWidth=" 1 (pixels). The drawer's keys: "DrawType=" 0
// (0 lines, 1 ribbons facing the camera), "ColorType=" 0 (0 the material's colour, 1 the colour
// curve over the value), "SmoothWidth=" 0 (lines fade over this distance inside the clip box's
// faces), "ThinningFactor=" 1 (the share of lines drawn, 0 .. 1), "MappingType=" 0 (a ribbon's
// texture: 0 once along the line, 1 repeated along its length). Main thread only.
#pragma once
#include "StreamlineForRender_cls.h"
#include "StreamlineSequence_cls.h"
#include "TwoSetViewer_cls.h"

class Streamline_cls : public TwoSetViewer_cls<StreamlineSequence_cls, StreamlineSnap_cls,
                                               StreamlineForRender_cls, StreamlineSetting_cls> {
public:
    explicit Streamline_cls(ParentObj_cls* pParent);

    ConfItemINT_cls mCInterpType;
    ConfItemINT_cls mCThin;
    ConfItemBOOL_cls mCClip;
    ConfItemFLOATARRAY_cls mCClipLow;
    ConfItemFLOATARRAY_cls mCClipHigh;
    ConfItemINT_cls mCValueType;
    ConfItemFLOAT_cls mCLineWidth;
    ConfItemINT_cls mCDrawType;
    ConfItemINT_cls mCColorType;
    ConfItemFLOAT_cls mCSmoothWidth;
    ConfItemFLOAT_cls mCThinningFactor;
    ConfItemINT_cls mCMappingType;

protected:
    bool IsBlending() const override { return mCInterpType.GetBodyINT() == 1; }
    StreamlineSetting_cls GetSetting(double nt) override;
    StreamlineSnap_cls* LoadSnapNow(int index) override;
    bool PrefetchSequence() override { return mCSequence.PrefetchData(GetPCSequenceRemap()); }
};
