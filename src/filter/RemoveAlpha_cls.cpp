#include "RemoveAlpha_cls.h"

#include "ShaderCtrl_cls.h"

RemoveAlpha_cls::RemoveAlpha_cls(const wxString& strName) : FilterBase_cls("RemoveAlpha_cls", strName) {
    Add(&mCExtremeAlpha, "ExtremeAlpha=", "0", "PROPERTY_SCENE");
    Add(&mCConvert, "Convert=", "0", "PROPERTY_SCENE");
    Add(&mCBackgroundTile, "BackgroundTile=", "0", "PROPERTY_SCENE");
}

void RemoveAlpha_cls::Begin() {
    RemoveAlphaParam_cls params;
    params.mExtremeAlpha = mCExtremeAlpha.GetBodyBOOL() ? 1 : 0;
    params.mConvert = mCConvert.GetBodyBOOL() ? 1 : 0;
    params.mBackgroundTile = mCBackgroundTile.GetBodyBOOL() ? 1 : 0;
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginRemoveAlpha(&params);
    CheckProgram("RemoveAlpha");
}

void RemoveAlpha_cls::BeginPass(const FilterPass_cls&, int) {
    Begin();
}
