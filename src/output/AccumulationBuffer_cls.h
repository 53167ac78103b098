// The GL side of ensemble and motion blur: the float buffer each controller keeps, the adding
// of one step's image at weight 1 / samples, and the drawing of the average back over the target.
// With the gamma item on the steps are added after an "Exposure" with gamma 2.2 (c^2.2) and the
// sum goes back through gamma 0.4545, so the average is taken in linear light. GL thread only.
#pragma once

class FBO_cls;

class AccumulationBuffer_cls {
public:
    // rpBuffer is the controller's buffer pointer (owned by the controller, freed by the deleter
    // that InstallDeleter gives it). Creates it like pLike: same size and colour depth, alpha,
    // no depth texture and no host.
    static void PrepareBuffer(FBO_cls*& rpBuffer, FBO_cls* pLike);
    // Adds pImage / samples to the buffer; step 0 clears it first.
    static void DrawOnBuffer(FBO_cls* pBuffer, FBO_cls* pImage, int samples, int step, bool bGamma);
    // Replaces the target with the buffer. Skipped while the abort flag stands, so an aborted
    // frame keeps its last partial image.
    static void DrawFromBuffer(FBO_cls* pBuffer, FBO_cls* pTarget, bool bGamma);
    // Frees a controller's buffer: needs the GL context that made it.
    static void DeleteBuffer(FBO_cls* pBuffer);
};
