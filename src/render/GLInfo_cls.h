// What the GL driver offers, read once after the first context exists, for the information
// dialog and for the choice of geometry shaders. GL thread only for Initialize.
#pragma once

#include <wx/string.h>

class GLInfo_cls {
public:
    void Initialize();
    bool IsGeometryShaderAvailable() const { return mGLSLMajor > 1 || mGLSLMinor > 4; }
    // The limits line by line, labelled as the information dialog shows them.
    void GetAllGLInfo(wxString& strOut) const;

    wxString mStrVersion;
    wxString mStrExtensions;
    wxString mStrGLSLVersion;
    int mMajor = 0;
    int mMinor = 0;
    int mGLSLMajor = 0;
    int mGLSLMinor = 0;
    int mMaxElementsVertices = 0;
    int mMaxElementsIndices = 0;
    int mMaxTextureUnits = 0;
    int mMaxTextureSize = 0;
    int mMaxLights = 0;
    int mStencilBits = 0;
    int mDepthBits = 0;
};
