// The camera's own settings, class word "CameraProp_cls", attribute name "CameraProp": the
// camera type and first-pass buffer index the frame reads, the view angle, the wide angle of the
// wide types, the clip range, the dome tilt, the passepartout and the image size that replaces
// the output size when its switch is on. Built in to every camera.
#pragma once

#include "Attribute_cls.h"

#include <vector>

class CameraProp_cls : public Attribute_cls {
public:
    CameraProp_cls();

    // An index of the "CameraType" list (0 "Perspective" ... 6 "Equirecutangular").
    int GetCameraType() const { return static_cast<int>(mCCameraType.GetBodyINT()); }
    int Get1stBufSizeIdx() const { return static_cast<int>(mC1stBufSizeIdx.GetBodyINT()); }
    // The view angle of a plain camera in degrees, at most 120 for the perspective type.
    double GetAngleL(double t);
    double GetWideAngle(double t);
    // Near and far.
    std::vector<double> GetVMinMax(double t);
    double GetDomeTilt(double t);
    // -1, -1 without a passepartout; else its aspect (width over height) and its alpha.
    std::vector<float> GetVPasspartoutInfo() const;
    // Whether the camera's own image size replaces the size of the image output.
    bool IsSizeOverride() const { return mCSizeOverride.GetBodyBOOL(); }
    // The camera's image size, each side at least 1 pixel.
    void GetOverrideSize(int& width, int& height) const;

    ConfItemINT_cls mCCameraType;
    ConfItemINT_cls mC1stBufSizeIdx;
    ConfItemBOOL_cls mCPassepartout;
    ConfItemFLOAT_cls mCPassepartoutAspect;
    ConfItemFLOAT_cls mCPassepartoutAlpha;
    ConfItemBOOL_cls mCSizeOverride;
    ConfItemINT_cls mCOverrideWidth;
    ConfItemINT_cls mCOverrideHeight;

private:
    double GetOne(const wxString& strGroup, double t, double fallback, size_t index = 0);
};
