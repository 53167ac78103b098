// The scene object that shows a sequence of stream-line files. Its keys (with defaults):
// "InterpType=" 1 (0 step, 1 linear between steps), "Thin=" 1 (every n-th line), "Clip=" 0,
// "ClipLow=" "-1 -1 -1", "ClipHigh=" "1 1 1" (the clip box in the object's space), "ValueType=" 0
// (0 the file's value, 1 arc length), "LineWidth=" 1 (pixels). The drawer's keys: "DrawType=" 0
// (0 lines, 1 ribbons facing the camera), "ColorType=" 0 (0 the material's colour, 1 the colour
// curve over the value), "MappingType=" 0 (a ribbon's texture: 0 once along the line, 1 repeated
// along its length). The data processes "StreamFiltering_cls", "StreamSetAlpha_cls" and
// "StreamTransform_cls" go into the preparation settings in stack order; a "Trimming_cls"
// modifier clips, fades and thins the lines where they are drawn. Main thread only.
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
    ConfItemINT_cls mCMappingType;

private:
    wxString mStrLastFilterWhy; // a bad filter list is logged once, not every frame

protected:
    bool IsBlending() const override { return mCInterpType.GetBodyINT() == 1; }
    StreamlineSetting_cls GetSetting(double nt) override;
    StreamlineSnap_cls* LoadSnapNow(int index) override;
    bool PrefetchSequence() override { return mCSequence.PrefetchData(GetPCSequenceRemap()); }
};
