// The post-filter chain as the frame passes see it. The filter layer, above this one, installs
// its chain through msFuncGet; with nothing installed the frame shows its image as rendered.
// GL thread only.
#pragma once

#include <functional>
#include <vector>

class Camera_cls;
class FBO_cls;
class PositionAndDirection_cls;

class FrameFilter_ifc {
public:
    virtual ~FrameFilter_ifc() = default;

    // A new buffer with the finished image of pSource; the caller owns it and frees it with
    // ReleaseProcessed. pDepth (may be null) holds the frame's depth texture, which stays untouched.
    virtual FBO_cls* GetNewPCFilterProcessed(FBO_cls* pSource, const std::vector<float>& vPasspartout,
                                             const PositionAndDirection_cls& pose, Camera_cls* pCamera,
                                             FBO_cls* pDepth) = 0;
    // True when a valid filter of the chain reads depth: the frame then runs its depth pass.
    virtual bool DoesUseDepthBuffer() = 0;
    // Frees a buffer that GetNewPCFilterProcessed gave.
    virtual void ReleaseProcessed(FBO_cls* pProcessed) = 0;

    // The installed chain, or null. Installed and cleared by the filter layer's services.
    static FrameFilter_ifc* GetPCInstalled() { return msFuncGet ? msFuncGet() : nullptr; }
    static inline std::function<FrameFilter_ifc*()> msFuncGet;
    // What the chain calls after each change of a filter: the view installs a plain repaint of
    // its window (Refresh, not RefreshEX), so the next frame runs the chain over the buffers of
    // the last one without drawing the scene again. Null while no view listens.
    static inline std::function<void()> msFuncRepaintFiltersOnly;
};
