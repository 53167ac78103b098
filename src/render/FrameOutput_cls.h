// What a frame asks of the image output and of the accumulation buffers of ensemble and motion
// blur. The output layer, which sits above the renderer, installs its implementation in
// GpCFrameOutput; with none installed no frame is recorded and the sampling steps do not
// accumulate (each step simply draws over the last). GL thread only.
#pragma once

class FBO_cls;
class FBOHost_cls;

enum class Accumulation_enum { Ensemble, MotionBlur };

class FrameOutput_cls {
public:
    virtual ~FrameOutput_cls() = default;

    // "StereoOutput=" of the image output: 1 writes one file per eye.
    virtual int GetStereoOutput() const = 0;
    // Null unless a recording run is on and the image output exists; otherwise a new square
    // buffer of the given side, built with alpha and without depth texture, and the time
    // control's flag of a recorded frame is set. Owned by the frame until ProcSaveImage.
    virtual FBO_cls* GetPCNewFBOForRecord(int size, FBOHost_cls* pHost) = 0;
    // Composes the filtered image of each record buffer over the background, alpha clamped:
    // pProcessed[i] for record i (one per eye when there are two records).
    virtual void PrepareFBOForRecord(int recordCount, FBO_cls* const* pRecords, FBO_cls* const* pProcessed,
                                     int fit) = 0;
    // Hands the record buffers to the writers and deletes them.
    virtual void ProcSaveImage(int recordCount, FBO_cls** pRecords, int eyeType, int stereoOutput) = 0;

    // The accumulation of one sampling feature: a float buffer like `like`, each step adding
    // image / samples, and the average drawn back over the target.
    virtual void PrepareBuffer(Accumulation_enum kind, FBO_cls* pLike) = 0;
    virtual void DrawOnBuffer(Accumulation_enum kind, FBO_cls* pImage, int samples) = 0;
    virtual void DrawFromBuffer(Accumulation_enum kind, FBO_cls* pTarget) = 0;

    // The projection of the sub-pass now being drawn, kept for scripts that convert coordinates.
    virtual void PrepareViewportInfo() = 0;
};

// Not owned here: the output layer's registration sets and clears it.
extern FrameOutput_cls* GpCFrameOutput;
