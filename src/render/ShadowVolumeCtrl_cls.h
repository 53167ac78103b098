// The steps of the shadow-volume passes. A frame with shadows is drawn once per step and the
// steps are added up in a buffer of their own: step 0 holds the lights that cast no shadow, each
// later step one shadow-casting light (a soft light one step per sample of its position, each at
// 1 / samples of its strength). The first step of the frame also carries what no light makes:
// the global and the lights' ambient light, emission, the background, fog colour, guides and the
// objects drawn without light; later steps add light only.
//
// A step other than 0 draws the scene three times: lit (phase 0), then the shadow volumes of the
// step's light counted into the stencil (phase 1, depth-fail, so the camera may stand inside a
// shadow), then where the count is not 0 the receivers again with the step's light alone, taken
// off what phase 0 drew (phase 2): a transparent receiver loses the light its own layer added and
// keeps what shows through it. After PopState the phase is 3. With shadows off there is one step, 0 to 1,
// always in phase 0, and nothing here touches GL: the frame is the plain one.
//
// The keys are the block "ShadowVolumeCtrl" of the project: "UseShadowVolume=", the samples and
// size of soft lights, the length of the volumes. Main thread only; the GL calls on the GL thread.
#pragma once

#include "ConfListContainer_cls.h"

#include <epoxy/gl.h>

#include <functional>
#include <memory>
#include <vector>

class FBO_cls;
class SceneObj_cls;
class SceneObjCtrl_cls;
class ShaderSVTriangleMesh_cls;
class StreamlineTriangleParam_cls;
class VBOBaseObject_cls;

class ShadowVolumeCtrl_cls : public ConfListContainer_cls {
public:
    ShadowVolumeCtrl_cls();
    ~ShadowVolumeCtrl_cls() override;

    // ---- the steps of a frame ----
    // Collects the valid, visible lights of the scene at normalised time t and lays out the
    // steps. Called once per frame before the loops read the range.
    void PrepareSteps(SceneObjCtrl_cls* pScene, double t);
    // Shadows are drawn this frame: the key is on and a light casts.
    bool IsUseShadow() const { return mbActive; }
    // The range of steps of a frame: [first, end). Without shadows 0 to 1; with them the end is
    // the number of shadow samples plus 1, and the first step is 1 when every light casts.
    int GetFirstStep() const { return mbActive ? mFirstStep : 0; }
    int GetEndStep() const { return mbActive ? static_cast<int>(mVStep.size()) + 1 : 1; }
    // After the frame's loops: the plain road until the next PrepareSteps.
    void FinishSteps() {
        mbActive = false;
        mbSumming = true;
        SetShadowVolumeStep(0, 0);
    }
    void SetShadowVolumeStep(int step, int first) {
        mStep = step;
        mFirst = first;
        mPhase = 0;
    }
    int GetStep() const { return mStep; }
    // Guides and the grid are drawn on the first step only.
    bool IsFirstStep() const { return mStep == mFirst; }
    // A later step of a frame with shadows: only light is added, so whatever is drawn without
    // light (lines, text, points, the background) is left out, and ambient light and emission
    // are black.
    bool IsLightOnlyStep() const { return mbActive && mbSumming && mStep != mFirst; }
    // A draw of light alone, without ambient light, emission or fog colour: a later step, or
    // the shadowed area, whose draw is taken off.
    bool IsLightOnlyDraw() const { return IsLightOnlyStep() || (mbActive && mPhase == 2); }
    // Blending of a lit kind's draw (bBlend: with the source and destination factors; else
    // opaque). In the shadowed area the draw is taken off by its source factor instead, and the
    // alpha kept.
    static void SetBlend(bool bBlend, GLenum src, GLenum dst);
    // Whether the steps of this pass are added up (the colour pass); the depth pass keeps the
    // depth of its last step, so each of its steps draws everything.
    void SetSumming(bool bSumming) { mbSumming = bSumming; }
    // 0 outside the stencil phases, 1 volumes, 2 shadowed area, 3 after them.
    int GetPhase() const { return mPhase; }

    // ---- the lights of a step ----
    // The factors of a light's ambient and of its diffuse and specular colours in the current
    // step and phase: 1 and 1 without shadows.
    void GetLightFactor(const SceneObj_cls* pLight, float& ambient, float& direct) const;
    // The light's position in its own frame (homogeneous, w 0 for a parallel light), moved to
    // the sample of this step for a soft light.
    void GetLightPosition(const SceneObj_cls* pLight, int lightType, float* out) const;
    // On a light-only step: the global ambient light black. Call at the start of each object draw.
    void SetLightModelForStep() const;

    // ---- the stencil sequence of a step other than 0 ----
    void PushState();
    // Phase 1: colour and depth writes off, the stencil counts the volumes of the step's light
    // (back faces behind the scene up, front faces behind it down), which goes to GL_LIGHT0 in
    // the current (view) model-view.
    void SetStencilState();
    // Phase 2: colour on, the receivers again where the stencil is not 0, at their own depth,
    // subtracted.
    void SetShadowedArea();
    void PopState();

    // ---- drawing the volumes (phase 1) ----
    // Binds "SVTriangleMesh" with this frame's length; false when the program is missing.
    bool BeginShader();
    bool BeginShaderHF(int channel);
    // The volumes of stream-line ribbons as the ribbon's record draws them.
    bool BeginShaderRibbon(const StreamlineTriangleParam_cls& ribbon);
    void EndShader();
    // Draws the shape's volume with the current model-view (primitives).
    void DrawShapeSV(const VBOBaseObject_cls& shape);
    // GL_TRIANGLES_ADJACENCY of count indices from the element buffer over the positions (three
    // floats at the start of each record of strideBytes) of the array buffer, through the bound
    // program; with texCoordBytes 0 or more, two floats there are texture coordinate 0. Every
    // binding is restored.
    static void DrawAdjacency(GLuint positions, int strideBytes, GLuint adjacency, int count,
                              int texCoordBytes = -1);

    // ---- the sum of the steps ----
    // The buffer takes the size of like; the first step clears it.
    void PrepareBuffer(FBO_cls* pLike);
    // Adds the image of the step just drawn (its alpha only on the first step).
    void DrawOnBuffer(FBO_cls* pImage);
    // Replaces the target by the sum.
    void DrawFromBuffer(FBO_cls* pTarget);
    void ClearFBOBuffer();
    FBO_cls* GetPCFBOBuffer() const { return mpCFBOBuffer.get(); }

    // ---- keys ----
    int GetSoftSampleNum() const;
    double GetSoftSize() const { return mCSoftShadowSize.GetBodyDOUBLE(); }
    float GetShadowLength() const { return static_cast<float>(mCShadowLength.GetBodyDOUBLE()); }

    ConfItemBOOL_cls mCUseShadowVolume;
    ConfItemINT_cls mCSoftShadowSampleNum;
    ConfItemFLOAT_cls mCSoftShadowSize;
    ConfItemFLOAT_cls mCShadowLength;

private:
    // One step after 0: a casting light and one sample of its position.
    struct Step_cls {
        SceneObj_cls* mpCLight = nullptr; // not owned: the scene owns it, alive for the frame
        int mLightType = 1;
        int mSample = 0;
        int mSampleNum = 1;
        double mMatrix[16];
    };
    const Step_cls* GetPCStep() const;
    // The source over the whole target bound now, texels as they are, with the blending set.
    static void DrawWhole(const FBO_cls& source, const FBO_cls& target);
    // Whether the light casts (and so has steps of its own).
    bool IsCasting(const SceneObj_cls* pLight) const;

    bool mbActive = false;
    bool mbSumming = true;
    int mFirstStep = 0;
    int mStep = 0;
    int mFirst = 0;
    int mPhase = 0;
    std::vector<Step_cls> mVStep;
    std::vector<const SceneObj_cls*> mVPCCasting;
    std::unique_ptr<FBO_cls> mpCFBOBuffer;
};
