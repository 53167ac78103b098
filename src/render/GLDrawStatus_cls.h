// What the draw entry of every object kind needs from the sub-pass that draws it: what is shown,
// the time, the running light number and the state of the object drawn now. GL thread only.
#pragma once

#include "PositionAndDirection_cls.h"

class GLKindResources_cls;
class MeshDraw_cls;
class ParticleDraw_cls;
class TextDraw_cls;
class VolumeDraw_cls;

class GLDrawStatus_cls {
public:
    bool mbGuide = true;    // "DispGuideObj=" on the first shadow step
    bool mbLightCam = true; // "DispLightCam=" on the first shadow step
    bool mbData = true;     // "DisplayData="
    bool mbHitTest = false; // a hit-test draw: no highlights
    bool mbRecording = false;
    double mTime = 0.0; // normalised time of the draw
    int mEnsembleStep = 0;
    // Which of the composer's two images of the frame is drawn: the data objects show the step
    // before (0) or after (1) the time, each unblended.
    int mCompositeIndex = 0;
    // The next free fixed-pipeline light, counted from GL_LIGHT0; the objects' shaders light
    // with the lights 0 to mLightNumber - 1.
    int mLightNumber = 0;
    int mMaxLights = 8;
    float mLineWidth = 1.f;
    // Of the object drawn now: 2 active, 1 selected, 0 neither.
    int mSelectStatus = 0;
    // The drawers of the passes drawing now (not owned: the passes own them; null draws nothing).
    MeshDraw_cls* mpCMeshDraw = nullptr;
    TextDraw_cls* mpCTextDraw = nullptr;
    ParticleDraw_cls* mpCParticleDraw = nullptr;
    VolumeDraw_cls* mpCVolumeDraw = nullptr;
    // What the kinds hold in this view (stream lines, height fields, isosurfaces).
    GLKindResources_cls* mpCKindResources = nullptr;
    // The camera of this sub-pass and of the next frame, in the scene's space: particle objects
    // sort by them.
    PositionAndDirection_cls mPosDirNow;
    PositionAndDirection_cls mPosDirNext;
};
