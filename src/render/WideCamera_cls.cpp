#include "WideCamera_cls.h"

#include "ColorProvider_cls.h"
#include "FBO_cls.h"
#include "GetPC_cls.h"
#include "PositionAndDirection_cls.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace {
constexpr double kPiExact = 3.14159265358979323846;
// Five digits, as in the frustum: the texture coordinates of the three-face type must meet the
// image that frustum made.
constexpr double kPiFrustum = 3.14159;
// The elevation of a cube's corner, atan(1 / sqrt(2)), in degrees.
constexpr double kCornerPitch = 35.2643;
constexpr double kFisheye3Degree = 126.8698;
// A quad whose corners land farther apart than this on the target (in -1 to 1 units) stretches
// across a seam of the mapping (the point straight behind a disk, a pole) and is not drawn.
constexpr double kSeamLength = 0.2;

// Yaw, pitch, roll of each face. Pitch in this table is counted downward: with the trimmed
// viewports of the three-face type, its faces then meet exactly around the cube's corner.
struct Turn_cls {
    double yaw, pitch, roll;
};
constexpr Turn_cls kCubeFaces[6] = {{45, 0, 0},   {-45, 0, 0},  {-45, 90, 0},
                                    {45, -90, 0}, {-135, 0, 0}, {135, 0, 0}};
constexpr Turn_cls kERFaces[6] = {{0, 0, 0}, {90, 0, 0}, {180, 0, 0}, {270, 0, 0}, {0, 90, 0}, {0, -90, 0}};

void Turn(PositionAndDirection_cls* pPose, const Turn_cls& t) {
    pPose->RotateYPR(t.yaw, -t.pitch, t.roll);
}

bool IsWide(int type) {
    return type >= 2 && type <= 6;
}

const ColorProvider_cls& GetColors() {
    static ColorProvider_cls sDefault;
    return GpCColorProvider ? *GpCColorProvider : sDefault;
}

// The face grid: tan range of a face in its own frame, and the texture coordinate of a tan value.
struct FaceGrid_cls {
    double a0, a1, b0, b1; // tan ranges along right and top
    // Texture coordinate of the tan values.
    std::function<double(double)> funcU, funcV;
};

FaceGrid_cls GetFaceGrid(int type, int part, int size) {
    if (type == 3) {
        int vp[4] = {0, 0, size, size};
        WideCamera_cls::GetPartViewport(type, part, size, vp);
        const double halfTan = tan(kFisheye3Degree * kPiFrustum / 180.0 * 0.5);
        const double s = size;
        // Buffer pixel p shows NDC 2 (p - origin) / extent - 1 of the larger viewport.
        auto tanAt = [halfTan](double p, double origin, double extent) {
            return (2.0 * (p - origin) / extent - 1.0) * halfTan;
        };
        const double ax = vp[0], ay = vp[1], ext = vp[2];
        return {tanAt(0, ax, ext),
                tanAt(s, ax, ext),
                tanAt(0, ay, ext),
                tanAt(s, ay, ext),
                [=](double a) { return ((a / halfTan + 1.0) * 0.5 * ext + ax) / s; },
                [=](double b) { return ((b / halfTan + 1.0) * 0.5 * ext + ay) / s; }};
    }
    if (type == 6)
        return {
            -1, 1, -1, 1, [](double a) { return (a + 1.0) * 0.5; }, [](double b) { return (b + 1.0) * 0.5; }};
    // Faces of 94 degrees: the mesh covers the 90 degree cube face inside them.
    return {-1,
            1,
            -1,
            1,
            [](double a) { return WideCamera_cls::AdjustUV((a + 1.0) * 0.5); },
            [](double b) { return WideCamera_cls::AdjustUV((b + 1.0) * 0.5); }};
}

// A point of a disk of `angle` degrees around the axis (ax, ay, az) with the right vector rx.
bool MapDisk(const double* d, double sign, double angle, double* pX, double* pY) {
    // sign -1: the disk looks backward, with the right side mirrored.
    const double along = -d[2] * sign;
    const double theta = acos(std::max(-1.0, std::min(1.0, along))) * 180.0 / kPiExact;
    if (theta > 179.0)
        return false;
    const double r = theta / (angle * 0.5);
    const double sx = d[0] * sign, sy = d[1];
    const double len = std::sqrt(sx * sx + sy * sy);
    *pX = len > 0.0 ? r * sx / len : 0.0;
    *pY = len > 0.0 ? r * sy / len : 0.0;
    return true;
}

double Dist(const float* p, const float* q) {
    return std::hypot(static_cast<double>(p[0] - q[0]), static_cast<double>(p[1] - q[1]));
}

bool IsCompact(const std::array<float, 16>& q) {
    // Corners in the order (i, j), (i, j + 1), (i + 1, j + 1), (i + 1, j).
    for (int k = 0; k < 4; ++k)
        if (Dist(&q[k * 4], &q[((k + 1) % 4) * 4]) > kSeamLength ||
            Dist(&q[k * 4], &q[((k + 2) % 4) * 4]) > kSeamLength)
            return false;
    return true;
}
} // namespace

WideCamera_cls::WideCamera_cls() = default;

WideCamera_cls::~WideCamera_cls() {
    DeleteLists(mListFisheye, 6);
    DeleteLists(mListDual[0], 6);
    DeleteLists(mListDual[1], 6);
    DeleteLists(mListSpherical, 6);
    DeleteLists(mListER, 6);
}

int WideCamera_cls::GetFBONum(int type) {
    static const int kFaces[7] = {1, 1, 4, 3, 6, 6, 6};
    return type >= 0 && type <= 6 ? kFaces[type] : 1;
}

double WideCamera_cls::GetDegreeV(int type, double angle) {
    switch (type) {
    case 0:
        return std::min(angle, 120.0);
    case 2:
    case 4:
    case 5:
        return 94.0;
    case 3:
        return kFisheye3Degree;
    case 6:
        return 90.0;
    default:
        return angle;
    }
}

int WideCamera_cls::GetFitIndex(int type, double aspect) {
    const bool bWhole = type == 2 || type == 3 || type == 5;
    const int fit = aspect < 1.0 ? 1 : 0;
    return bWhole ? 1 - fit : fit;
}

void WideCamera_cls::ModifyCamera(PositionAndDirection_cls* pPose, int part, int type, double tilt) {
    if (!pPose)
        return;
    pPose->RotateYPR(0.0, tilt, 0.0);
    if (!IsWide(type) || part < 0 || part >= GetFBONum(type))
        return;
    if (type == 6) {
        if (part > 0)
            Turn(pPose, kERFaces[part]);
        return;
    }
    // The three faces look along a cube's corner, the four along an edge: a fisheye's centre lies
    // where faces meet.
    if (type == 3)
        Turn(pPose, {0.0, -kCornerPitch, 0.0});
    Turn(pPose, kCubeFaces[part]);
}

bool WideCamera_cls::GetPartViewport(int type, int part, int size, int* pViewport) {
    if (type != 3 || part < 0 || part > 2)
        return false;
    const int q = size / 3; // a size not divisible by 3 is cut
    static const int kOrigin[3][2] = {{0, -1}, {-1, -1}, {-1, 0}};
    pViewport[0] = kOrigin[part][0] * q;
    pViewport[1] = kOrigin[part][1] * q;
    pViewport[2] = pViewport[3] = 4 * q;
    return true;
}

bool WideCamera_cls::MapDirection(int type, const double* pDir, double angle, int disk, double* pX,
                                  double* pY) {
    const double len = std::sqrt(pDir[0] * pDir[0] + pDir[1] * pDir[1] + pDir[2] * pDir[2]);
    if (len <= 0.0)
        return false;
    const double d[3] = {pDir[0] / len, pDir[1] / len, pDir[2] / len};
    switch (type) {
    case 2:
    case 3:
        return MapDisk(d, 1.0, angle, pX, pY);
    case 5:
        return MapDisk(d, 1.0, 360.0, pX, pY);
    case 4: {
        // Two half-sized disks of 180 degrees side by side: the front one left, the back one right.
        double x, y;
        if (!MapDisk(d, disk == 0 ? 1.0 : -1.0, 180.0, &x, &y) || std::hypot(x, y) > 1.5)
            return false;
        *pX = x * 0.5 + (disk == 0 ? -0.5 : 0.5);
        *pY = y * 0.5;
        return true;
    }
    case 6: {
        // The width is 360 degrees of longitude, the middle band of half the height 180 degrees of
        // latitude: a 2:1 image of the square buffer (which the output crops to that band) holds
        // the whole sphere.
        const double longitude = atan2(d[0], -d[2]);
        const double latitude = asin(std::max(-1.0, std::min(1.0, d[1])));
        *pX = longitude / kPiExact;
        *pY = latitude / (kPiExact * 0.5) * 0.5;
        return true;
    }
    default:
        return false;
    }
}

bool WideCamera_cls::GetDirectionAt(int type, double x, double y, double angle, double* pDir) {
    // A disk of diskAngle degrees, looking ahead (sign 1) or back with its right side mirrored.
    auto disk = [pDir](double dx, double dy, double sign, double diskAngle) {
        const double r = std::hypot(dx, dy);
        if (r > 1.0)
            return false;
        const double theta = r * diskAngle * 0.5 * kPiExact / 180.0;
        const double s = r > 0.0 ? sin(theta) / r : 0.0;
        pDir[0] = dx * s * sign;
        pDir[1] = dy * s;
        pDir[2] = -cos(theta) * sign;
        return true;
    };
    switch (type) {
    case 2:
    case 3:
        return disk(x, y, 1.0, angle);
    case 5:
        return disk(x, y, 1.0, 360.0);
    case 4:
        return x < 0.0 ? disk((x + 0.5) * 2.0, y * 2.0, 1.0, 180.0)
                       : disk((x - 0.5) * 2.0, y * 2.0, -1.0, 180.0);
    case 6: {
        if (std::fabs(y) > 0.5 || std::fabs(x) > 1.0)
            return false;
        const double longitude = x * kPiExact, latitude = y * kPiExact;
        pDir[0] = cos(latitude) * sin(longitude);
        pDir[1] = sin(latitude);
        pDir[2] = -cos(latitude) * cos(longitude);
        return true;
    }
    default:
        return false;
    }
}

WideCameraMesh_cls WideCamera_cls::MakeMesh(int type, int part, double angle, int size, int disk) {
    WideCameraMesh_cls mesh;
    if (!IsWide(type) || part < 0 || part >= GetFBONum(type))
        return mesh;
    PositionAndDirection_cls face;
    ModifyCamera(&face, part, type, 0.0);
    const FaceGrid_cls grid = GetFaceGrid(type, part, size);
    const int n = msMeshDivision;
    // Every grid point: its place on the target (x, y), its texture coordinate, and whether the
    // type shows it.
    std::vector<std::array<float, 4>> vPoint(static_cast<size_t>((n + 1) * (n + 1)));
    std::vector<char> vValid(vPoint.size(), 0);
    for (int j = 0; j <= n; ++j) {
        const double b = grid.b0 + (grid.b1 - grid.b0) * j / n;
        for (int i = 0; i <= n; ++i) {
            const double a = grid.a0 + (grid.a1 - grid.a0) * i / n;
            double dir[3];
            for (int k = 0; k < 3; ++k)
                dir[k] = a * face.mRight[k] + b * face.mTop[k] + face.mTgt[k];
            double x = 0.0, y = 0.0;
            const size_t idx = static_cast<size_t>(j * (n + 1) + i);
            vValid[idx] = MapDirection(type, dir, angle, disk, &x, &y);
            vPoint[idx] = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(grid.funcU(a)),
                           static_cast<float>(grid.funcV(b))};
        }
    }
    auto at = [&](int i, int j) -> const std::array<float, 4>& {
        return vPoint[static_cast<size_t>(j * (n + 1) + i)];
    };
    auto valid = [&](int i, int j) { return vValid[static_cast<size_t>(j * (n + 1) + i)] != 0; };
    auto quad = [&](int i, int j) {
        std::array<float, 16> q;
        const std::array<float, 4>* c[4] = {&at(i, j), &at(i, j + 1), &at(i + 1, j + 1), &at(i + 1, j)};
        for (int k = 0; k < 4; ++k)
            std::copy(c[k]->begin(), c[k]->end(), q.begin() + k * 4);
        return q;
    };
    for (int j = 0; j < n; ++j) {
        int runStart = -1;
        auto closeRun = [&](int end) {
            if (runStart < 0)
                return;
            mesh.mVFirst.push_back(static_cast<int>(mesh.mVStrip.size() / 4));
            for (int i = runStart; i <= end; ++i)
                for (int row : {j, j + 1})
                    mesh.mVStrip.insert(mesh.mVStrip.end(), at(i, row).begin(), at(i, row).end());
            mesh.mVCount.push_back((end - runStart + 1) * 2);
            runStart = -1;
        };
        for (int i = 0; i < n; ++i) {
            const bool bAll = valid(i, j) && valid(i, j + 1) && valid(i + 1, j + 1) && valid(i + 1, j);
            std::array<float, 16> q = bAll ? quad(i, j) : std::array<float, 16>{};
            if (bAll && IsCompact(q)) {
                if (runStart < 0)
                    runStart = i;
                continue;
            }
            closeRun(i);
            if (!bAll || type != 6)
                continue;
            // A quad across the back seam of the equirectangular image: once on each side.
            for (const float shift : {2.f, -2.f}) {
                std::array<float, 16> s = q;
                for (int k = 0; k < 4; ++k)
                    if ((shift > 0.f) == (s[k * 4] < 0.f))
                        s[k * 4] += shift;
                if (IsCompact(s))
                    mesh.mVQuads.insert(mesh.mVQuads.end(), s.begin(), s.end());
            }
        }
        closeRun(n);
    }
    return mesh;
}

// ---- GL thread ----

void WideCamera_cls::SetRenderPartParam(int size, int colourDepth, int parts, bool /*bEnsemble*/,
                                        FBOHost_cls* pHost) {
    mPartSize = size;
    if (pHost != mpCHost) {
        for (auto& p : mpCFBO)
            p.reset();
        mpCHost = pHost;
    }
    for (int i = 0; i < std::min(parts, 6); ++i) {
        if (!mpCFBO[i])
            mpCFBO[i] = std::make_unique<FBO_cls>(size, size, pHost);
        mpCFBO[i]->SetGeometryFBO(size, size);
        mpCFBO[i]->SetColorDepth(colourDepth);
    }
}

FBO_cls* WideCamera_cls::GetPCFBO(int type, int part, FBO_cls* pTarget, bool) const {
    if (!IsWide(type) || part < 0 || part >= 6 || !mpCFBO[part])
        return pTarget;
    return mpCFBO[part].get();
}

void WideCamera_cls::ModifyViewportIfNeeded(int type, int part) const {
    int vp[4];
    if (GetPartViewport(type, part, mPartSize, vp))
        glViewport(vp[0], vp[1], vp[2], vp[3]);
}

unsigned int WideCamera_cls::CompileList(const WideCameraMesh_cls& mesh) {
    const GLuint list = glGenLists(1);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glNewList(list, GL_COMPILE);
    // The arrays are read while the list is compiled: the list keeps its own copy.
    if (!mesh.mVStrip.empty()) {
        glVertexPointer(2, GL_FLOAT, 4 * sizeof(float), mesh.mVStrip.data());
        glTexCoordPointer(2, GL_FLOAT, 4 * sizeof(float), mesh.mVStrip.data() + 2);
        glMultiDrawArrays(GL_QUAD_STRIP, mesh.mVFirst.data(), mesh.mVCount.data(),
                          static_cast<GLsizei>(mesh.mVFirst.size()));
    }
    if (!mesh.mVQuads.empty()) {
        glVertexPointer(2, GL_FLOAT, 4 * sizeof(float), mesh.mVQuads.data());
        glTexCoordPointer(2, GL_FLOAT, 4 * sizeof(float), mesh.mVQuads.data() + 2);
        glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(mesh.mVQuads.size() / 4));
    }
    glEndList();
    glPopClientAttrib();
    return list;
}

void WideCamera_cls::DeleteLists(unsigned int* pLists, int count) {
    for (int i = 0; i < count; ++i) {
        if (pLists[i])
            glDeleteLists(pLists[i], 1);
        pLists[i] = 0;
    }
}

int WideCamera_cls::GetListCount() const {
    int count = 0;
    for (int i = 0; i < 6; ++i)
        count += (mListFisheye[i] != 0) + (mListDual[0][i] != 0) + (mListDual[1][i] != 0) +
                 (mListSpherical[i] != 0) + (mListER[i] != 0);
    return count;
}

void WideCamera_cls::MakeListFisheye4(double angle) {
    DeleteLists(mListFisheye, 6);
    for (int part = 0; part < 4; ++part)
        mListFisheye[part] = CompileList(MakeMesh(2, part, angle, mPartSize));
    mAngle = static_cast<int>(angle);
    mFisheyeType = 2;
    mListSize = mPartSize;
}

void WideCamera_cls::MakeListFisheye3(double angle) {
    DeleteLists(mListFisheye, 6);
    for (int part = 0; part < 3; ++part)
        mListFisheye[part] = CompileList(MakeMesh(3, part, angle, mPartSize));
    mAngle = static_cast<int>(angle);
    mFisheyeType = 3;
    mListSize = mPartSize;
}

void WideCamera_cls::MakeListsDual() {
    for (int disk = 0; disk < 2; ++disk)
        for (int part = 0; part < 6; ++part) {
            const WideCameraMesh_cls mesh = MakeMesh(4, part, 180.0, mPartSize, disk);
            if (!mesh.IsEmpty())
                mListDual[disk][part] = CompileList(mesh);
        }
}

void WideCamera_cls::MakeListsSpherical() {
    for (int part = 0; part < 6; ++part)
        mListSpherical[part] = CompileList(MakeMesh(5, part, 360.0, mPartSize));
}

void WideCamera_cls::MakeListsER() {
    for (int part = 0; part < 6; ++part)
        mListER[part] = CompileList(MakeMesh(6, part, 360.0, mPartSize));
}

void WideCamera_cls::GatherGLSetting(bool bPush, int width, int height) {
    if (!bPush) {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        return;
    }
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(-1.0, 1.0, -1.0, 1.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
}

void WideCamera_cls::MakeStencilBegin() {
    glClearStencil(0);
    glClear(GL_STENCIL_BUFFER_BIT);
    glEnable(GL_STENCIL_TEST);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDepthMask(GL_FALSE);
    glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
}

void WideCamera_cls::MakeStencilEnd() {
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
}

void WideCamera_cls::MakeCirclePatternOnStencil(int type) {
    MakeStencilBegin();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    const int disks = type == 4 ? 2 : 1;
    const double radius = type == 4 ? 0.5 : 1.0;
    for (int disk = 0; disk < disks; ++disk) {
        const double cx = type == 4 ? (disk == 0 ? -0.5 : 0.5) : 0.0;
        glStencilFunc(GL_ALWAYS, disk + 1, ~0u);
        glBegin(GL_TRIANGLE_FAN);
        glVertex2d(cx, 0.0);
        const int segments = 360;
        for (int k = 0; k <= segments; ++k) {
            const double a = 2.0 * kPiExact * k / segments;
            glVertex2d(cx + radius * cos(a), radius * sin(a));
        }
        glEnd();
    }
    MakeStencilEnd();
}

void WideCamera_cls::DrawFaces(const unsigned int* pLists, int count) {
    for (int part = 0; part < count; ++part) {
        if (!pLists[part] || !mpCFBO[part])
            continue;
        mpCFBO[part]->Bind();
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glCallList(pLists[part]);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
}

void WideCamera_cls::GatherPart(FBO_cls* pTarget, int type, double angle) {
    if (!pTarget || !IsWide(type))
        return;
    pTarget->Begin(true, false);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    if (type == 2 || type == 3) {
        if (static_cast<int>(angle) != mAngle || type != mFisheyeType || mListSize != mPartSize)
            type == 2 ? MakeListFisheye4(angle) : MakeListFisheye3(angle);
    } else if (type == 4 && !mListDual[0][0]) {
        MakeListsDual();
    } else if (type == 5 && !mListSpherical[0]) {
        MakeListsSpherical();
    } else if (type == 6 && !mListER[0]) {
        MakeListsER();
    }
    GatherGLSetting(true, pTarget->GetWidth(), pTarget->GetHeight());
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    const bool bDisk = type != 6;
    if (bDisk) {
        MakeCirclePatternOnStencil(type);
        glStencilFunc(GL_LESS, 0, ~0u); // inside any disk
    }
    // The background of the image inside the disks (everywhere for the equirectangular one).
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    const std::array<float, 4> bg = GetColors().GetColor("GLBG");
    glColor4f(bg[0], bg[1], bg[2], bg[3]);
    glBegin(GL_QUADS);
    glVertex2d(-10.0, -10.0);
    glVertex2d(10.0, -10.0);
    glVertex2d(10.0, 10.0);
    glVertex2d(-10.0, 10.0);
    glEnd();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glColor4f(1.f, 1.f, 1.f, 1.f);
    switch (type) {
    case 2:
    case 3:
        glStencilFunc(GL_EQUAL, 1, ~0u);
        DrawFaces(mListFisheye, GetFBONum(type));
        break;
    case 4:
        for (int disk = 0; disk < 2; ++disk) {
            glStencilFunc(GL_EQUAL, disk + 1, ~0u);
            DrawFaces(mListDual[disk], 6);
        }
        break;
    case 5:
        glStencilFunc(GL_EQUAL, 1, ~0u);
        DrawFaces(mListSpherical, 6);
        break;
    default:
        DrawFaces(mListER, 6);
        break;
    }
    GatherGLSetting(false, 0, 0);
    glPopAttrib();
    pTarget->End();
}
