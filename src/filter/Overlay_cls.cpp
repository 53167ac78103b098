#include "Overlay_cls.h"

#include "ShaderCtrl_cls.h"
#include "SliceImage_cls.h"
#include "SlicePixels_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <set>

Overlay_cls::Overlay_cls(const wxString& strName) : FilterBase_cls("Overlay_cls", strName) {
    Add(&mCPath, "strPath=", "NONE", "VIEW3D::FILTER");
    Add(&mCSequenceOffset, "sequenceOffset=", "0", "VIEW3D::FILTER");
    Add(&mCSequence, "Sequence=", "0", "VIEW3D::FILTER");
    Add(&mCFit, "Fit=", "0", "VIEW3D::FILTER");
    AddParam("Alpha", "Alpha", 1.0);
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
    if (strPath.empty())
        return false;
    if (strPath == mStrLoaded)
        return !mbLoadFailed;
    mStrLoaded = strPath;
    mTexture.Reset();
    SlicePixels_cls pixels;
    pixels.mbColour = true;
    mbLoadFailed = !wxFileName::FileExists(strPath) || !SliceImage_cls::Load(strPath, pixels);
    if (mbLoadFailed) {
        // One line per path, however many frames ask for it.
        static std::set<wxString> sReported;
        if (sReported.insert(strPath).second)
            wxLogWarning("Overlay %s: the image \"%s\" cannot be read; the picture passes unchanged",
                         GetStrName(), strPath);
        return false;
    }
    // Decoded rows run from the top; GL's first row is the bottom one.
    const size_t stride = static_cast<size_t>(pixels.mWidth) * 4;
    std::vector<unsigned char> vFlipped(pixels.mRGBA.size());
    for (int y = 0; y < pixels.mHeight; ++y)
        std::copy_n(pixels.RowRGBA(pixels.mHeight - 1 - y), stride, vFlipped.data() + y * stride);
    mTexture = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, mTexture.Get());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, pixels.mWidth, pixels.mHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 vFlipped.data());
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
    mImageWidth = pixels.mWidth;
    mImageHeight = pixels.mHeight;
    return true;
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
    BindUnit1(mTexture.Get());
    mbUnit1Bound = true;
    GpCShaderCtrl->BeginOverlay(&params);
    CheckProgram("Overlay");
}

void Overlay_cls::BeginPass(const FilterPass_cls& pass, int) {
    static const std::vector<float> sNone;
    Begin(pass.mpVPasspartout ? *pass.mpVPasspartout : sNone, pass.mTime);
}
