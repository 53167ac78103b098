#include "Legend_cls.h"

#include "ColorCurve_cls.h"
#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "ShaderCtrl_cls.h"
#include "TextDraw_cls.h"

#include <wx/log.h>

#include <algorithm>
#include <wx/tokenzr.h>

namespace {
// Segments of the bar: enough that the steps of a 1025-entry curve do not show at legend size.
constexpr int kSegments = 128;
} // namespace

Legend_cls::Legend_cls(const wxString& strName) : FilterBase_cls("Legend_cls", strName) {
    Add(&mCTarget, "Target=", "None", "PROPERTY_SCENE");
    Add(&mCTextFontDesc, "TextFontDesc=", "Arial 24", "PROPERTY_SCENE");
    Add(&mCUseTime, "UseTime=", "1", "PROPERTY_SCENE");
    Add(&mCFormatTime, "FormatTime=", "Time=%f", "PROPERTY_SCENE");
    Add(&mCTimeOffsetX, "TimeOffsetX=", "0.03", "PROPERTY_SCENE");
    Add(&mCTimeOffsetY, "TimeOffsetY=", "0.03", "PROPERTY_SCENE");
    Add(&mCTimeScale, "TimeScale=", "1", "PROPERTY_SCENE");
    Add(&mCUseClrCurve, "UseClrCurve=", "1", "PROPERTY_SCENE");
    Add(&mCClrCurveOffsetX, "ClrCurveOffsetX=", "0.6", "PROPERTY_SCENE");
    Add(&mCClrCurveOffsetY, "ClrCurveOffsetY=", "0.03", "PROPERTY_SCENE");
    Add(&mCClrCurveScaleX, "ClrCurveScaleX=", "1", "PROPERTY_SCENE");
    Add(&mCClrCurveScaleY, "ClrCurveScaleY=", "1", "PROPERTY_SCENE");
    Add(&mCClrCurveTicFontSize, "ClrCurveTicFontSize=", "2", "PROPERTY_SCENE");
    Add(&mCClrCurveTicScale, "ClrCurveTicScale=", "1", "PROPERTY_SCENE");
}

Legend_cls::~Legend_cls() = default;

ColorCurve_cls* Legend_cls::GetPCTargetCurve() const {
    const wxString strTarget = mCTarget.GetBodySTR();
    if (strTarget.empty() || strTarget == "None" || !GpCSceneObjCtrl)
        return nullptr;
    SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName(strTarget);
    if (!pObj)
        return nullptr;
    Attribute_cls* p = pObj->GetPCAttributeFromAttribName("ColorCurve_cls", 0);
    return p ? static_cast<ColorCurve_cls*>(p) : nullptr;
}

wxString Legend_cls::GetStrTime(double t) const {
    const wxString strFormat = mCFormatTime.GetBodySTR();
    wxString strPlain = strFormat;
    strPlain.Replace("%%", "");
    if (strPlain.Freq('%') != 1)
        return strFormat;
    // Flags, width and precision, then one of the floating conversions.
    size_t i = static_cast<size_t>(strPlain.Find('%')) + 1;
    while (i < strPlain.length() && wxString("-+ #0123456789.").Find(strPlain[i]) != wxNOT_FOUND)
        ++i;
    if (i >= strPlain.length() || wxString("fFeEgG").Find(strPlain[i]) == wxNOT_FOUND)
        return strFormat;
    return wxString::Format(strFormat, t * mCTimeScale.GetBodyDOUBLE());
}

void Legend_cls::DrawColorCurve(ColorCurve_cls* pCurve, double x, double y, double w, double h) {
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glShadeModel(GL_SMOOTH);
    glBegin(GL_QUAD_STRIP);
    for (int i = 0; i <= kSegments; ++i) {
        const double position = static_cast<double>(i) / kSegments;
        const std::array<unsigned char, 4> c = pCurve->GetColor(position, nullptr);
        glColor4ub(c[0], c[1], c[2], 255);
        glVertex2d(x + w * position, y);
        glVertex2d(x + w * position, y + h);
    }
    glEnd();
}

void Legend_cls::DrawTics(ColorCurve_cls* pCurve, double x, double y, double w, double size, double t) {
    std::vector<double> range = {0.0, 1.0};
    if (ParamGroup_cls* pRange = pCurve->GetPCRange()) {
        const std::vector<double> v = pRange->GetVInterpolatedValue(t, true, nullptr, false);
        if (v.size() >= 2)
            range = v;
    }
    const float white[4] = {1.f, 1.f, 1.f, 1.f};
    const double scale = mCClrCurveTicScale.GetBodyDOUBLE();
    for (int i = 0; i <= 2; ++i) {
        const double position = i * 0.5;
        const double value = (range[0] + (range[1] - range[0]) * position) * scale;
        glDisable(GL_TEXTURE_2D);
        glColor4fv(white);
        glBegin(GL_LINES);
        glVertex2d(x + w * position, y);
        glVertex2d(x + w * position, y - size * 0.4);
        glEnd();
        mpCTextDraw->Draw(wxString::Format("%g", value), x + w * position, y - size * 1.4, size, white, 1,
                          1.0);
    }
}

void Legend_cls::MakeLegendLayer(int width, int height, const std::vector<float>&, double t) {
    if (!mpCLayer)
        mpCLayer = std::make_unique<FBO_cls>(width, height, nullptr);
    if (!mpCTextDraw)
        mpCTextDraw = std::make_unique<TextDraw_cls>();
    mpCLayer->SetGeometryFBO(width, height);
    mpCLayer->MakeFBO(true, false);
    mpCLayer->Begin(true, false);
    if (GpCShaderCtrl)
        GpCShaderCtrl->EndShader();
    GLPerspective_cls::Push2DMatrix(width, height);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    if (mCUseClrCurve.GetBodyBOOL()) {
        ColorCurve_cls* pCurve = GetPCTargetCurve();
        const wxString strTarget = mCTarget.GetBodySTR();
        if (pCurve) {
            mStrReportedTarget.clear();
            const double x = mCClrCurveOffsetX.GetBodyDOUBLE() * width;
            const double y = mCClrCurveOffsetY.GetBodyDOUBLE() * height;
            const double w = 0.3 * mCClrCurveScaleX.GetBodyDOUBLE() * width;
            const double h = 0.04 * mCClrCurveScaleY.GetBodyDOUBLE() * height;
            DrawColorCurve(pCurve, x, y, w, h);
            // Numbers smaller than 8 pixels cannot be read: small images keep them at that.
            DrawTics(pCurve, x, y, w, std::max(8.0, mCClrCurveTicFontSize.GetBodyDOUBLE() * 0.01 * height),
                     t);
        } else if (strTarget != "None" && strTarget != mStrReportedTarget) {
            // Once per target name: the frame goes on without the bar.
            mStrReportedTarget = strTarget;
            wxLogWarning("Legend %s: \"%s\" has no colour curve; the legend shows no curve", GetStrName(),
                         strTarget);
        }
    }
    if (mCUseTime.GetBodyBOOL()) {
        // "<font name> <size>": the last word is the size when it is a number.
        wxString strFont = mCTextFontDesc.GetBodySTR().Strip(wxString::both);
        double size = 24.0;
        const wxString strLast = strFont.AfterLast(' ');
        if (strLast.ToDouble(&size) && strFont.Contains(" "))
            strFont = strFont.BeforeLast(' ');
        else
            size = 24.0;
        const float white[4] = {1.f, 1.f, 1.f, 1.f};
        mpCTextDraw->Draw(GetStrTime(t), mCTimeOffsetX.GetBodyDOUBLE() * width,
                          mCTimeOffsetY.GetBodyDOUBLE() * height, size * height / 1024.0, white, 0, 1.0,
                          strFont);
    }
    GLPerspective_cls::Pop2DMatrix();
    mpCLayer->End();
}

void Legend_cls::Begin(const std::vector<float>&) {
    if (!mpCLayer || !GpCShaderCtrl)
        return;
    OverlayParam_cls params;
    BindUnit1(mpCLayer->GetTexture());
    mbUnit1Bound = true;
    GpCShaderCtrl->BeginOverlay(&params);
    CheckProgram("Overlay");
}

void Legend_cls::BeginPass(const FilterPass_cls& pass, int) {
    static const std::vector<float> sNone;
    const std::vector<float>& v = pass.mpVPasspartout ? *pass.mpVPasspartout : sNone;
    MakeLegendLayer(pass.mWidth, pass.mHeight, v, pass.mTime);
    Begin(v);
}
