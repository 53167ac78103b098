// The records that callers fill for the shader library's entry points: plain values, passed by
// pointer, read once while the program is bound. Kept together because each is a handful of
// fields named after the uniforms it feeds.
#pragma once

class ShaderParams_cls {
public:
    virtual ~ShaderParams_cls() = default;
};

class ExposureParams_cls : public ShaderParams_cls {
public:
    float mLevelMin[3] = {0.f, 0.f, 0.f};
    float mLevelMax[3] = {1.f, 1.f, 1.f};
    float mGamma[3] = {1.f, 1.f, 1.f};
    int mHueOffset = 0;
    int mSaturation = 0;
    float mAlpha = 1.f;
};

class BlurParams_cls : public ShaderParams_cls {
public:
    int mType = 0;
    int mKernel = 0;
    float mWidth = 1.f;
    int mQuality = 1;
    float mGamma = 1.f;
};

class FocalBlurParams_cls : public ShaderParams_cls {
public:
    int mQuality = 1;
    float mGamma = 1.f;
    float mFocalDistance = 1.f;
    float mWidthBase = 1.f;
};

class FocalBlurParamsB_cls : public FocalBlurParams_cls {};

class GlareParams_cls : public ShaderParams_cls {
public:
    int mType = 0;
    float mWidth = 1.f;
    int mQuality = 1;
    int mRayNum = 4;
    float mOffset = 0.f;
    float mCrit = 1.f;
    float mEnhance = 1.f;
    float mFade = 1.f;
};

class RemoveAlphaParam_cls : public ShaderParams_cls {
public:
    int mExtremeAlpha = 0;
    int mConvert = 0;
    int mBackgroundTile = 0;
};

class OverlayParam_cls : public ShaderParams_cls {
public:
    float mTexAlpha = 1.f;
    float mTexXScale = 1.f;
    float mTexYScale = 1.f;
};

class SSAOParam_cls : public ShaderParams_cls {
public:
    int mQuality = 1;
    float mFactor = 1.f;
    float mRadius = 1.f;
    float mBaseColor[3] = {0.f, 0.f, 0.f};
    int mType = 0;
};

class VolumeBasicParams_cls : public ShaderParams_cls {
public:
    float mClipBoxMin[3] = {0.f, 0.f, 0.f};
    float mClipBoxMax[3] = {1.f, 1.f, 1.f};
    int mForceDiscard0 = 0;
    float mTrim = 0.f;
    float mIntervalGlobal = 0.01f;
    int mSubQuality = 1;
};

class VolumePhongParams_cls : public VolumeBasicParams_cls {
public:
    int mLightNumber = 0;
    float mAmbientClr[3] = {0.f, 0.f, 0.f};
    float mDiffuseClr[3] = {1.f, 1.f, 1.f};
    float mSpecularClr[3] = {0.f, 0.f, 0.f};
    int mShininess = 16;
};

class VolumePhongShadowParams_cls : public VolumePhongParams_cls {
public:
    float mShadowAlpha = 1.f;
    int mShadowQuality = 1;
};

class VolumeScatterParams_cls : public VolumePhongParams_cls {
public:
    float mScatterFactor = 1.f;
};

class VolumeScatterShadowParams_cls : public VolumePhongShadowParams_cls {
public:
    float mScatterFactor = 1.f;
};

// The head of every record of an object-drawing program.
class ShaderParamEnsemble_cls : public ShaderParams_cls {
public:
    int mEnsembleStep = 0;
    int mDissolveMode = 0;
    int mLightNumber = 0;
    int mTextureMode = 0;
};

class ObjectGouraudParam_cls : public ShaderParamEnsemble_cls {};

class ObjectPhongParam_cls : public ShaderParamEnsemble_cls {
public:
    int mbFlat = 0;
};

class LineBasicParam_cls : public ShaderParamEnsemble_cls {};

class ObjectToonParam_cls : public ShaderParamEnsemble_cls {
public:
    float mBoldness = 0.f;
    int mShadowVolumeMode = 0;
    float mEdgeThreshold = 0.2f;
    int mbFlat = 0;
};

class ObjectNormalParam_cls : public ShaderParams_cls {
public:
    int mbFlat = 0;
};

class PointBasicParam_cls : public ShaderParamEnsemble_cls {
public:
    float mViewport[4] = {0.f, 0.f, 1.f, 1.f};
    // Above 0 the size falls with the eye distance, nominal at this distance.
    float mBaseDistance = 1.f;
    float mPointSizeFactor = 1.f; // pixels per unit of size
    float mAlphaCrit = 0.f;       // points whose alpha falls below are not drawn
};

class PointBillboardParam_cls : public ShaderParamEnsemble_cls {
public:
    // Column-major 4x4, as GL takes them.
    float mBaseInvModelMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    float mModelInvBaseMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    float mBaseInvMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    float mAngle = 0.f; // degrees, about the axis 0, 0, 1
    int mTwistMode = 0;
    float mViewport[4] = {0.f, 0.f, 1.f, 1.f};
    float mAlphaCrit = 0.f;
};

class SphereGouraudParam_cls : public ShaderParamEnsemble_cls {
public:
    int mUseTexAlpha = 0;
};

class SpherePhongParam_cls : public SphereGouraudParam_cls {
public:
    int mbFlat = 0;
    int mNormalMode = 0; // the "Normal" sphere shader: the normal as the colour
};

class SphereToonParam_cls : public SpherePhongParam_cls {
public:
    float mBoldness = 0.f;
    float mEdgeThreshold = 0.2f;
};

class ShaderSVTriangleMesh_cls : public ShaderParams_cls {
public:
    float mShadowLength = 100.f;
    float mOffsetFactor = 0.f;
    int mCullingSide = 0;
    int mForClosed = 1;
    int mChannel = 0; // height fields only
};

class ShaderHF_cls : public ShaderParamEnsemble_cls {
public:
    int mChannel = 0;
    int mUseTexAlpha = 0;
    int mbFlat = 0;
};

class StreamlineBasicParam_cls : public ShaderParamEnsemble_cls {
public:
    int mUseClip = 0;
    float mClipBoxMin[3] = {0.f, 0.f, 0.f};
    float mClipBoxMax[3] = {1.f, 1.f, 1.f};
    float mMatrix16[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    float mSmoothWidth = 0.f;
    float mThinningFactor = 1.f;
};

class StreamlineTriangleParam_cls : public StreamlineBasicParam_cls {
public:
    float mLineWidth = 2.f;
    float mViewport[4] = {0.f, 0.f, 1.f, 1.f};
    int mMappingType = 0;
};
