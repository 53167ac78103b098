#include "View3D_cls.h"

#include <vector>

View3D_cls::View3D_cls() {
    SetTag("View3D");
    const wxString strTag = "VIEW3D";
    Add(&mCBufSizeIdx, "BufSizeIdx=", "2", strTag);
    Add(&mC1stBufSizeIdx, "1stBufSizeIdx=", "1", strTag);
    Add(&mCWideCameraType, "WideCameraType=", "0", strTag);
    Add(&mCLineWidth, "LineWidth=", "2", strTag);
    Add(&mCNumPanelShown, "NumPanelShown=", "1", strTag);
    Add(&mCLoupe, "Loupe=", "0", strTag);
    Add(&mCDispGrid, "DispGrid=", "1", strTag);
    Add(&mCDispGuideObj, "DispGuideObj=", "1", strTag);
    Add(&mCDispLightCam, "DispLightCam=", "1", strTag);
    Add(&mCDisplayData, "DisplayData=", "1", strTag);
    Add(&mCFollow, "Follow=", "0", strTag);
    // The key's spelling is the project file's, kept on purpose.
    Add(&mCLockToCamera, "LockToCamer=", "0", strTag);
    Add(&mCCamera, "Camera=", "Camera", strTag);
    Add(&mCViewAngleL, "ViewAngleL=", "45", strTag);
    Add(&mCViewPos, "ViewPos=", "0 0 10", strTag);
    Add(&mCDirTgt, "DirTgt=", "0 0 -1", strTag);
    Add(&mCDirTop, "DirTop=", "0 1 0", strTag);
    Add(&mCDirRgt, "DirRgt=", "1 0 0", strTag);
}

int View3D_cls::GetBufferSizeFromIndex(long long index) {
    if (index < 1 || index > 6)
        return 256;
    return 256 << index;
}

int View3D_cls::GetBufferSize1st(int cameraIndex) const {
    return GetBufferSizeFromIndex(cameraIndex >= 0 ? cameraIndex : mC1stBufSizeIdx.GetBodyINT());
}

namespace {
void CopyThree(const ConfItem_cls& item, double* out) {
    const std::vector<double> v = item.GetBodyFLOATARRAY();
    for (size_t i = 0; i < 3 && i < v.size(); ++i)
        out[i] = v[i];
}
void SetThree(ConfItem_cls& item, const double* in) {
    item.SetBodyFromData(
        std::vector<float>{static_cast<float>(in[0]), static_cast<float>(in[1]), static_cast<float>(in[2])});
}
} // namespace

PositionAndDirection_cls View3D_cls::GetPosDir() const {
    PositionAndDirection_cls pose;
    CopyThree(mCViewPos, pose.mPos);
    CopyThree(mCDirTgt, pose.mTgt);
    CopyThree(mCDirTop, pose.mTop);
    CopyThree(mCDirRgt, pose.mRight);
    return pose;
}

void View3D_cls::SetPosDir(const PositionAndDirection_cls& pose) {
    SetThree(mCViewPos, pose.mPos);
    SetThree(mCDirTgt, pose.mTgt);
    SetThree(mCDirTop, pose.mTop);
    SetThree(mCDirRgt, pose.mRight);
}
