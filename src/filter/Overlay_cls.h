// An image over the picture, class word "Overlay_cls": "strPath=" names a file, or with
// "Sequence=" a numbered sequence whose path holds one printf number ("logo.%04d.png"), read at
// the current frame plus "sequenceOffset=". "Fit=" sizes it within the frame (the camera's
// passepartout when it has one, else the whole square), keeping its aspect:
//   0: the whole image inside the frame, 1: the frame covered by the image, other: stretched.
// The image stands centred; "Alpha" scales its alpha. With "NONE" or a file that cannot be read
// (logged once per path) the pass is a plain copy.
#pragma once

#include "FilterBase_cls.h"
#include "GLObject_cls.h"

class Overlay_cls : public FilterBase_cls {
public:
    explicit Overlay_cls(const wxString& strName);
    ~Overlay_cls() override;

    void BeginPass(const FilterPass_cls& pass, int iteration) override;
    void Begin(const std::vector<float>& vPasspartout, double t);
    // The file of the current frame; empty for "NONE".
    wxString GetStrCurrentPath() const;
    // Loads the file of the current frame when it is not the one loaded; false when there is none.
    bool CheckFileSequence();
    // The image's size on the frame as fractions of the square (texXScale, texYScale).
    static void GetScale(int fit, double imageAspect, const std::vector<float>& vPasspartout, float& xScale,
                         float& yScale);

    ConfItemSTR_cls mCPath;
    ConfItemINT_cls mCSequenceOffset;
    ConfItemBOOL_cls mCSequence;
    ConfItemINT_cls mCFit;

private:
    // Gives the texture of the loaded file back to the texture provider.
    void ReleaseTexture();

    GLuint mTexture = 0; // not owned: the texture provider's, held from Acquire to Release
    wxString mStrLoaded;
    bool mbAcquired = false;
    GLint mImageWidth = 0;
    GLint mImageHeight = 0;
};
