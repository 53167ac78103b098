#include "FilterBase_cls.h"

#include "ShaderCtrl_cls.h"

#include <epoxy/gl.h>
#include <wx/log.h>

FilterBase_cls::FilterBase_cls(const wxString& strAttributeName, const wxString& strName)
    : Attribute_cls(strAttributeName, strName) {
    Add(&mCValidity, "Validity=", "1", "PROPERTY_SCENE");
}

double FilterBase_cls::GetValue(const wxString& strGroup, double t, double fallback, size_t index) {
    ParamGroup_cls* pGroup = GetPCParamGroup(strGroup);
    if (!pGroup)
        return fallback;
    const std::vector<double> v = pGroup->GetVInterpolatedValue(t, true, nullptr, false);
    return index < v.size() ? v[index] : fallback;
}

void FilterBase_cls::BindUnit1(unsigned int texture) {
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, texture);
    glActiveTexture(GL_TEXTURE0);
}

void FilterBase_cls::End() {
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    if (mbUnit1Bound) {
        BindUnit1(0);
        mbUnit1Bound = false;
    }
}

bool FilterBase_cls::CheckProgram(const wxString& strProgram) {
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    if (program != 0)
        return true;
    if (msSetReported.insert(strProgram).second)
        wxLogWarning("Filter %s: program \"%s\" cannot be used; the filter passes its image through",
                     GetStrName(), strProgram);
    return false;
}
