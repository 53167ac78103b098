#include "FilterDepth_cls.h"

#include "ShaderCtrl_cls.h"

FilterDepth_cls::FilterDepth_cls(const wxString& strName) : FilterBase_cls("FilterDepth_cls", strName) {}

void FilterDepth_cls::Begin(FBO_cls*) {
    ShaderParams_cls params;
    if (GpCShaderCtrl)
        GpCShaderCtrl->BeginDepth(&params);
    CheckProgram("Depth");
}

void FilterDepth_cls::BeginPass(const FilterPass_cls& pass, int) {
    Begin(pass.mpCRunning);
}
