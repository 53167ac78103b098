// The wide-angle camera: images wider than one frustum can hold. The scene is rendered into up to
// six square faces, each a turn of the camera, and the faces are gathered onto the target buffer
// through a fixed mesh of texture coordinates per face, kept in display lists. Types of the
// "CameraType" list: 0 "Perspective", 1 "Orthographic", 2 "Fisheye4", 3 "Fisheye3",
// 4 "Dual Fisheye", 5 "Spherical Fisheye", 6 "Equirecutangular". The numbers and the mapping
// are plain functions, so they are checked without GL; the faces and lists need the GL thread.
#pragma once

#include <memory>
#include <vector>

class FBO_cls;
class FBOHost_cls;
class PositionAndDirection_cls;

// The mesh of one face on the target: strips and single quads of (x, y, u, v), x and y in -1 to 1
// over the target, u and v over the face's texture.
class WideCameraMesh_cls {
public:
    std::vector<float> mVStrip;
    // First vertex and count of each GL_QUAD_STRIP in mVStrip (a strip breaks where a quad would
    // stretch across a seam of the mapping).
    std::vector<int> mVFirst;
    std::vector<int> mVCount;
    // Quads that cross the seam at the back of the equirectangular image, drawn once on each side.
    std::vector<float> mVQuads;
    bool IsEmpty() const { return mVStrip.empty() && mVQuads.empty(); }
};

class WideCamera_cls {
public:
    WideCamera_cls();
    ~WideCamera_cls();
    WideCamera_cls(const WideCamera_cls&) = delete;
    WideCamera_cls& operator=(const WideCamera_cls&) = delete;

    // Rows (and columns) of quads of each face's mesh.
    static constexpr int msMeshDivision = 320;
    // tan(45) / tan(47): a coordinate of the 90 degree face on the 94 degree image.
    static constexpr double msOverscan = 0.9325151443481445;

    // ---- numbers of the types (any thread) ----
    // 1, 1, 4, 3, 6, 6, 6; a type outside 0 to 6 is one face.
    static int GetFBONum(int type);
    // The vertical degree of one face: the view angle (at most 120) for the plain types.
    static double GetDegreeV(int type, double angle);
    // 0: the square buffer is as wide as the window, 1: as high. The types 2, 3 and 5 (one disk)
    // are shown whole, the others fill the window.
    static int GetFitIndex(int type, double aspect);
    // Turns a pose to the face `part` of the type, after tilting it by `tilt` degrees about its
    // right axis (the dome tilt). Types 0 and 1 are only tilted.
    static void ModifyCamera(PositionAndDirection_cls* pPose, int part, int type, double tilt);
    // The viewport of a face of the three-face type, which is drawn larger than its buffer:
    // x, y, width, height for the buffer side `size`. False for the other types.
    static bool GetPartViewport(int type, int part, int size, int* pViewport);
    // A face coordinate (0 to 1) of the 90 degree face on the 94 degree image.
    static double AdjustUV(double t) { return (2.0 * t - 1.0) * msOverscan * 0.5 + 0.5; }
    // The mesh of one face of the type: for the fisheye types with the fisheye's angle in degrees
    // (the full angle of the disk); `size` is the face buffer's side (it matters for type 3 only).
    // Dual fisheye has a mesh per disk: `disk` 0 is the front one on the left, 1 the back one.
    static WideCameraMesh_cls MakeMesh(int type, int part, double angle, int size, int disk = 0);
    // Where a direction of the camera's own frame (x right, y up, -z ahead) lands on the target
    // of the type, in -1 to 1; false where the type shows no such direction. For the dual
    // fisheye, `disk` chooses the half.
    static bool MapDirection(int type, const double* pDir, double angle, int disk, double* pX, double* pY);
    // The other way: the direction (unit, in the camera's own frame) that the point (x, y) of
    // the target shows; false where the type shows nothing (outside the disks or the band).
    static bool GetDirectionAt(int type, double x, double y, double angle, double* pDir);

    // ---- GL thread ----
    // Stores the face size and makes the missing faces (colour depth 8 or 16). The faces join
    // the nesting chain of pHost (not owned: the frame passes that draw them); another host makes
    // them anew.
    void SetRenderPartParam(int size, int colourDepth, int parts, bool bEnsemble,
                            FBOHost_cls* pHost = nullptr);
    // The face of the part for the wide types (above 1), otherwise the target.
    FBO_cls* GetPCFBO(int type, int part, FBO_cls* pTarget, bool bDepth = false) const;
    // The three-face type draws its face into a viewport larger than the buffer.
    void ModifyViewportIfNeeded(int type, int part) const;
    // Draws the faces over the target through their meshes; for the fisheye types `angle` is
    // the fisheye's full angle, and the lists are made anew when its integer part changes.
    void GatherPart(FBO_cls* pTarget, int type, double angle);
    int GetPartSize() const { return mPartSize; }
    // The number of display lists that exist (rebuilt lists replace the old ones).
    int GetListCount() const;

private:
    // Orthographic view over the target, -1 to 1 in both directions.
    void GatherGLSetting(bool bPush, int width, int height);
    void MakeListFisheye4(double angle);
    void MakeListFisheye3(double angle);
    void MakeListsDual();
    void MakeListsSpherical();
    void MakeListsER();
    // Marks the disk of the image (or the two disks of the dual type) on the stencil: 1 inside
    // the (first) disk, 2 inside the second.
    void MakeCirclePatternOnStencil(int type);
    void MakeStencilBegin();
    void MakeStencilEnd();
    void DrawFaces(const unsigned int* pLists, int count);
    static unsigned int CompileList(const WideCameraMesh_cls& mesh);
    static void DeleteLists(unsigned int* pLists, int count);

    int mAngle = -1;      // integer angle of the fisheye lists, -1: none
    int mFisheyeType = 0; // the type (2 or 3) they were made for
    int mListSize = 0;    // and the face size (the three-face mesh depends on it)
    int mPartSize = 0;
    FBOHost_cls* mpCHost = nullptr; // not owned
    std::unique_ptr<FBO_cls> mpCFBO[6];
    unsigned int mListFisheye[6] = {0, 0, 0, 0, 0, 0};
    unsigned int mListDual[2][6] = {{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}};
    unsigned int mListSpherical[6] = {0, 0, 0, 0, 0, 0};
    unsigned int mListER[6] = {0, 0, 0, 0, 0, 0};
};
