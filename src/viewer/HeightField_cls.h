// The scene object that shows a height field: one image or raw grid, or a numbered sequence of
// them. Its keys (with defaults): "Channel=" 0 (0 red or grey, 1 green, 2 blue, 3 alpha),
// "InterpType=" 1 (0 step, 1 linear between steps of equal size), "SizeX=" 1, "SizeY=" 1 (the
// grid's extent in the object's space), "HeightScale=" 0.2 (object units per height unit),
// "ColorType=" 1 (the drawer's colour: 0 the material's, 1 the colour curve over the height).
// The material's texture lies over the whole grid; its "Smooth" picks smooth or flat shading.
// Main thread only.
#pragma once
#include "HeightFieldForRender_cls.h"
#include "HeightFieldSequence_cls.h"
#include "TwoSetViewer_cls.h"

class HeightField_cls : public TwoSetViewer_cls<HeightFieldSequence_cls, HeightFieldSnap_cls,
                                                HeightFieldForRender_cls, HeightFieldSetting_cls> {
public:
    explicit HeightField_cls(ParentObj_cls* pParent);

    int GetChannel() const { return static_cast<int>(mCChannel.GetBodyINT()); }

    ConfItemINT_cls mCChannel;
    ConfItemINT_cls mCInterpType;
    ConfItemFLOAT_cls mCSizeX;
    ConfItemFLOAT_cls mCSizeY;
    ConfItemFLOAT_cls mCHeightScale;
    ConfItemINT_cls mCColorType;

protected:
    bool IsBlending() const override { return mCInterpType.GetBodyINT() == 1; }
    HeightFieldSetting_cls GetSetting(double nt) override;
    HeightFieldSnap_cls* LoadSnapNow(int index) override;
    bool PrefetchSequence() override { return mCSequence.PrefetchData(GetPCSequenceRemap(), GetChannel()); }
};
