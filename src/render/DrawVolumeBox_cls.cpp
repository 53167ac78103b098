#include "DrawVolumeBox_cls.h"

#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace {

double Dot(const double* a, const double* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

} // namespace

double DrawVolumeBox_cls::CalcAllSlices(const Direction_cls& direction, int n, const double* min,
                                        const double* max) {
    mVSlice.clear();
    n = std::max(n, 1);
    Direction_cls d = direction;
    // The view direction as a unit vector in box space: the spacing is then in box units and
    // the number of slices does not follow the box's scale.
    const double length = std::sqrt(Dot(d.mTgt, d.mTgt));
    if (length <= 0.0)
        return 0.0;
    for (double& v : d.mTgt)
        v /= length;
    const double s = 2.0 / n;
    // 0.87 covers the half diagonal of the unit cube, just above its exact value.
    const int kMax = static_cast<int>(n * 0.87);
    for (int k = -kMax; k <= kMax; ++k) {
        // From far (k = kMax, along the view) to near.
        const double along = s * (kMax - (k + kMax));
        const double point[3] = {d.mTgt[0] * along, d.mTgt[1] * along, d.mTgt[2] * along};
        Slice_cls slice = CalcSingleSlice(d, point, min, max);
        if (!slice.empty())
            mVSlice.push_back(std::move(slice));
    }
    return s;
}

DrawVolumeBox_cls::Slice_cls DrawVolumeBox_cls::CalcSingleSlice(const Direction_cls& direction,
                                                                const double* point, const double* min,
                                                                const double* max) {
    const double* nrm = direction.mTgt;
    const double offset = Dot(nrm, point);
    Slice_cls vPoint;
    // The twelve edges of the box: along each axis, from each of the four corners of the other two.
    for (int axis = 0; axis < 3; ++axis) {
        const int a1 = (axis + 1) % 3, a2 = (axis + 2) % 3;
        for (int corner = 0; corner < 4; ++corner) {
            Point_cls p0{}, p1{};
            p0[a1] = p1[a1] = (corner & 1) ? max[a1] : min[a1];
            p0[a2] = p1[a2] = (corner & 2) ? max[a2] : min[a2];
            p0[axis] = min[axis];
            p1[axis] = max[axis];
            const double f0 = Dot(nrm, p0.data()) - offset, f1 = Dot(nrm, p1.data()) - offset;
            if ((f0 > 0.0 && f1 > 0.0) || (f0 < 0.0 && f1 < 0.0) || f0 == f1)
                continue;
            const double t = f0 / (f0 - f1);
            Point_cls q;
            for (int i = 0; i < 3; ++i)
                q[i] = p0[i] + (p1[i] - p0[i]) * t;
            // A plane through a corner meets three edges there: one point is enough.
            const bool bKnown = std::any_of(vPoint.begin(), vPoint.end(), [&q](const Point_cls& o) {
                return std::fabs(o[0] - q[0]) + std::fabs(o[1] - q[1]) + std::fabs(o[2] - q[2]) < 1e-12;
            });
            if (!bKnown)
                vPoint.push_back(q);
        }
    }
    if (vPoint.size() < 3)
        return {};
    Point_cls centre{0.0, 0.0, 0.0};
    for (const Point_cls& p : vPoint)
        for (int i = 0; i < 3; ++i)
            centre[i] += p[i] / static_cast<double>(vPoint.size());
    // Two axes in the plane, and the points sorted by their angle about the centre; the order
    // turns counter-clockwise as seen from the eye (against the view direction).
    const double* u = direction.mRight;
    double uu[3], vv[3];
    const double du = Dot(u, nrm);
    for (int i = 0; i < 3; ++i)
        uu[i] = u[i] - nrm[i] * du;
    if (Dot(uu, uu) < 1e-12) {
        const double alt[3] = {std::fabs(nrm[0]) < 0.9 ? 1.0 : 0.0, std::fabs(nrm[0]) < 0.9 ? 0.0 : 1.0, 0.0};
        const double da = Dot(alt, nrm);
        for (int i = 0; i < 3; ++i)
            uu[i] = alt[i] - nrm[i] * da;
    }
    // v = u x n, so that (u, v) turns counter-clockwise seen from against n.
    vv[0] = uu[1] * nrm[2] - uu[2] * nrm[1];
    vv[1] = uu[2] * nrm[0] - uu[0] * nrm[2];
    vv[2] = uu[0] * nrm[1] - uu[1] * nrm[0];
    std::vector<std::pair<double, Point_cls>> vSorted;
    for (const Point_cls& p : vPoint) {
        const double r[3] = {p[0] - centre[0], p[1] - centre[1], p[2] - centre[2]};
        vSorted.emplace_back(std::atan2(Dot(r, vv), Dot(r, uu)), p);
    }
    std::sort(vSorted.begin(), vSorted.end(),
              [](const std::pair<double, Point_cls>& a, const std::pair<double, Point_cls>& b) {
                  return a.first < b.first;
              });
    Slice_cls slice;
    for (const auto& e : vSorted)
        slice.push_back(e.second);
    return slice;
}

void DrawVolumeBox_cls::DrawSingleSlice(int index) {
    const Slice_cls& slice = mVSlice[static_cast<size_t>(index)];
    glBegin(GL_TRIANGLE_FAN);
    for (const Point_cls& p : slice) {
        glTexCoord3d(p[0] + 0.5, p[1] + 0.5, p[2] + 0.5);
        glVertex3dv(p.data());
    }
    glEnd();
}

void DrawVolumeBox_cls::DrawAllSlice(int, float alpha) {
    glColor4f(1.f, 1.f, 1.f, alpha);
    for (size_t i = 0; i < mVSlice.size(); ++i) {
        if (TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
            break;
        DrawSingleSlice(static_cast<int>(i));
    }
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
}

void DrawVolumeBox_cls::DrawAllSliceLineForDebug(int step) {
    step = std::max(step, 1);
    for (size_t i = 0; i < mVSlice.size(); i += static_cast<size_t>(step)) {
        glBegin(GL_LINE_LOOP);
        for (const Point_cls& p : mVSlice[i])
            glVertex3dv(p.data());
        glEnd();
    }
}
