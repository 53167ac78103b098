#include "Overlay_cls.h"

#include "ShaderCtrl_cls.h"
#include "TextureProvider_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <set>

Overlay_cls::Overlay_cls(const wxString& strName) : FilterBase_cls("Overlay_cls", strName) {
    Add(&mCPath, "strPath=", "NONE", "PROPERTY_SCENE");
    Add(&mCSequenceOffset, "sequenceOffset=", "0", "PROPERTY_SCENE");
    Add(&mCSequence, "Sequence=", "0", "PROPERTY_SCENE");
    Add(&mCFit, "Fit=", "0", "PROPERTY_SCENE");
    AddParam("Alpha", "Alpha", 1.0);
}

Overlay_cls::~Overlay_cls() {
    ReleaseTexture();
}

wxString Overlay_cls::GetStrCurrentPath() const {
    const wxString strPath = mCPath.GetBodySTR();
    if (strPath.empty() || strPath == "NONE")
        return wxString();
    if (!mCSequence.GetBodyBOOL())
        return strPath;
    const int frame = GpCTimeCtrl ? GpCTimeCtrl->GetFrameCurrent() : 0;
    const long long number = frame + mCSequenceOffset.GetBodyINT();
    // Only one integer conversion ("%d", "%04d") may stand in the pattern: anything else is taken
    // literally, so a user's path never reaches the formatter with other conversions.
    wxString strPlain = strPath;
    strPlain.Replace("%%", "");
    const int at = strPlain.Find('%');
    if (strPlain.Freq('%') != 1)
        return strPath;
    size_t i = static_cast<size_t>(at) + 1;
    while (i < strPlain.length() && wxIsdigit(strPlain[i]))
        ++i;
    if (i >= strPlain.length() || strPlain[i] != 'd')
        return strPath;
    return wxString::Format(strPath, static_cast<int>(number));
}

bool Overlay_cls::CheckFileSequence() {
    const wxString strPath = GetStrCurrentPath();
    if (strPath == mStrLoaded)
        return mTexture != 0;
    ReleaseTexture();
    mStrLoaded = strPath;
    if (strPath.empty() || !GpCTextureProvider)
        return false;
    if (!wxFileName::FileExists(strPath)) {
        // One line per path, however many frames ask for it.
        static std::set<wxString> sReported;
        if (sReported.insert(strPath).second)
            wxLogWarning("Overlay %s: the image \"%s\" cannot be read; the picture passes unchanged",
                         GetStrName(), strPath);
        return false;
    }
    // The texture provider reads the file once for all its users and logs a file it cannot
    // decode; such a file gets its default texture, which is no image to lay over the picture.
    const GLuint texture = GpCTextureProvider->Acquire(strPath);
    mbAcquired = true;
    if (texture == GpCTextureProvider->GetDefaultTexture())
        return false;
    mTexture = texture;
    glBindTexture(GL_TEXTURE_2D, mTexture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &mImageWidth);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &mImageHeight);
    glBindTexture(GL_TEXTURE_2D, 0);
    return mImageWidth > 0 && mImageHeight > 0;
}

void Overlay_cls::ReleaseTexture() {
    if (mbAcquired && GpCTextureProvider)
        GpCTextureProvider->Release(mStrLoaded);
    mbAcquired = false;
    mTexture = 0;
}

void Overlay_cls::GetScale(int fit, double imageAspect, const std::vector<float>& vPasspartout, float& xScale,
                           float& yScale) {
    // The frame within the square: the passepartout's aspect, when there is one.
    double frameW = 1.0, frameH = 1.0;
    const double frameAspect = vPasspartout.size() >= 2 && vPasspartout[0] > 0.f ? vPasspartout[0] : 1.0;
    if (frameAspect >= 1.0)
        frameH = 1.0 / frameAspect;
    else
        frameW = frameAspect;
    double w = frameW, h = frameH;
    const bool bWider = imageAspect >= frameAspect;
    if (fit == 0) {
        if (bWider)
            h = frameW / imageAspect;
        else
            w = frameH * imageAspect;
    } else if (fit == 1) {
        if (bWider)
            w = frameH * imageAspect;
        else
            h = frameW / imageAspect;
    }
    xScale = static_cast<float>(w);
    yScale = static_cast<float>(h);
}

void Overlay_cls::Begin(const std::vector<float>& vPasspartout, double t) {
    if (!CheckFileSequence() || !GpCShaderCtrl)
        return;
    OverlayParam_cls params;
    GetScale(static_cast<int>(mCFit.GetBodyINT()), static_cast<double>(mImageWidth) / mImageHeight,
             vPasspartout, params.mTexXScale, params.mTexYScale);
    params.mTexAlpha = static_cast<float>(GetValue("Alpha", t, 1.0));
    BindUnit1(mTexture);
    mbUnit1Bound = true;
    GpCShaderCtrl->BeginOverlay(&params);
    CheckProgram("Overlay");
}

void Overlay_cls::BeginPass(const FilterPass_cls& pass, int) {
    static const std::vector<float> sNone;
    Begin(pass.mpVPasspartout ? *pass.mpVPasspartout : sNone, pass.mTime);
}
