// The settings of one 3D view as a model with no window: the keys the frame passes read (buffer
// sizes, line width, what is shown, the camera that may drive the view, the view angle) and the
// view's own pose. The 3D view panel and a renderer with no display read the same object.
// Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "PositionAndDirection_cls.h"

class View3D_cls : public ConfListContainer_cls {
public:
    View3D_cls();

    // 512, 1024, 2048, 4096, 8192, 16384 for the indices 1 to 6; any other index gives 256.
    static int GetBufferSizeFromIndex(long long index);
    // "BufSizeIdx=": the size of every buffer of the frame.
    int GetBufferSize() const { return GetBufferSizeFromIndex(mCBufSizeIdx.GetBodyINT()); }
    // "1stBufSizeIdx=", or cameraIndex when a camera drives the view (-1: none does).
    int GetBufferSize1st(int cameraIndex = -1) const;
    // "Follow=" or "LockToCamer=".
    bool IsUseCamera() const { return mCFollow.GetBodyBOOL() || mCLockToCamera.GetBodyBOOL(); }
    int GetLineWidth() const { return static_cast<int>(mCLineWidth.GetBodyINT()); }
    double GetViewAngleL() const { return mCViewAngleL.GetBodyDOUBLE(); }
    wxString GetStrCameraName() const { return mCCamera.GetBodySTR(); }

    // The view's own pose, "ViewPos=", "DirTgt=", "DirTop=", "DirRgt=".
    PositionAndDirection_cls GetPosDir() const;
    void SetPosDir(const PositionAndDirection_cls& pose);

    ConfItemINT_cls mCBufSizeIdx;
    ConfItemINT_cls mC1stBufSizeIdx;
    ConfItemINT_cls mCWideCameraType;
    ConfItemINT_cls mCLineWidth;
    ConfItemBOOL_cls mCNumPanelShown;
    ConfItemBOOL_cls mCLoupe;
    ConfItemBOOL_cls mCDispGrid;
    ConfItemBOOL_cls mCDispGuideObj;
    ConfItemBOOL_cls mCDispLightCam;
    ConfItemBOOL_cls mCDisplayData;
    ConfItemBOOL_cls mCFollow;
    ConfItemBOOL_cls mCLockToCamera;
    ConfItemSTR_cls mCCamera;
    ConfItemFLOAT_cls mCViewAngleL;
    ConfItemFLOATARRAY_cls mCViewPos;
    ConfItemFLOATARRAY_cls mCDirTgt;
    ConfItemFLOATARRAY_cls mCDirTop;
    ConfItemFLOATARRAY_cls mCDirRgt;
};
