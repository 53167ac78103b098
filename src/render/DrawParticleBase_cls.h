// The GL side of one particle object's frame: the buffers of its arrays (position, colour
// coordinates S and T, filter alpha, size, param bits, twist identifiers and the two element
// lists of two-pass drawing), the stamps of the data that stand in them, and the point and
// billboard draws over them. Normal drawing (DrawParticle_cls) and batched drawing
// (DrawParticleLargeVBO_cls) fill the buffers differently and draw them the same way.
// GL thread only; must be deleted while its context is current.
#pragma once

#include "GLObject_cls.h"

#include <wx/string.h>

#include <cstddef>
#include <limits>
#include <vector>

class ParticleForRender_cls;

// What the drawing reads of an object's material slots, once per draw on the main thread.
class ParticleDrawSetting_cls {
public:
    static constexpr int kMaterialMax = 10;
    // The program a material's particles are drawn with; PROG_NONE leaves them out.
    enum Program_enum {
        PROG_NONE = 0,
        PROG_POINT,         // "Point" and "Circle" with an image
        PROG_POINT_SQUARE,  // "Point" without an image
        PROG_POINT_CIRCLE,  // "Circle" without an image
        PROG_PSEUDO_SPHERE, // ray-cast spheres, of points and of billboards
        PROG_BILLBOARD,
        PROG_SPHERE_GOURAUD,
        PROG_SPHERE_PHONG,
        PROG_SPHERE_TOON,
        PROG_SPHERE_NORMAL,
    };
    // Bits of paramBit: which list of two-pass drawing, the image, square points.
    enum { BIT_SECOND_PASS = 1, SHIFT_IMAGE = 1, BIT_SQUARE = 8 };

    // The material slot a particle type draws with: a type without its own material takes the first.
    int GetMaterial(int type) const { return type >= 0 && type < mMaterialCount ? type : 0; }
    // Whether the material's particles are drawn at all.
    bool IsDrawn(int m) const { return mProgram[m] != PROG_NONE; }
    // Every value above in one text: a change makes the draw rebuild its element lists and bits.
    wxString GetStrStamp() const;

    int mMaterialCount = 1;
    bool mbTwoPass = false;
    bool mbTwist = false;
    int mProgram[kMaterialMax] = {PROG_POINT, PROG_POINT, PROG_POINT, PROG_POINT, PROG_POINT,
                                  PROG_POINT, PROG_POINT, PROG_POINT, PROG_POINT, PROG_POINT};
    int mBlend[kMaterialMax] = {};    // 0 "Alpha Blend", 1 "Additive", 2 "Mix"
    int mBits[kMaterialMax] = {};     // the paramBit of the material's particles
    bool mbOpaque[kMaterialMax] = {}; // spheres of an opaque material cull their back faces
    int mFlat[kMaterialMax] = {};     // "ShaderFlat="
    float mToonThreshold[kMaterialMax] = {};
    float mToonBoldness[kMaterialMax] = {};
};

// A run of consecutive entries of an element list that draw with one program and blending.
class ParticleRun_cls {
public:
    int mFirst = 0;
    int mCount = 0;
    int mMaterial = 0; // the material of the run's first entry
};

// The element lists of a range of particles in draw order, and their runs.
class ParticleElementList_cls {
public:
    std::vector<unsigned int> mVElement[2];
    std::vector<ParticleRun_cls> mVRun[2];

    void Clear();
    // Appends entry index of a particle of that type and filter alpha to its list, when it is
    // drawn at all: alpha 0 and materials with "No Rendering" are left out (NaN is drawn).
    // Points and billboards run on while program and blending stay; spheres while the material
    // stays, and with bConsecutive only while the entries follow each other (a run of instances
    // drawn straight from the arrays).
    void Add(const ParticleDrawSetting_cls& setting, unsigned int index, int type, float alpha,
             bool bConsecutive = false);
    // Appends entry index (of material m) to its list; a run goes on while the key stays.
    void Push(int list, unsigned int index, int m, int key, bool bConsecutive = false);

private:
    int mLastKey[2] = {-1, -1};
};

class DrawParticleBase_cls {
public:
    enum Buffer_enum { BUF_POS, BUF_S, BUF_T, BUF_ALPHA, BUF_SIZE, BUF_BITS, BUF_TWIST, BUF_COUNT };
    // Everything a point or billboard draw needs besides the buffers. Values of the object at
    // the draw's time, set by the caller.
    class DrawInput_cls {
    public:
        GLuint mColorTable = 0; // the 2D colour table (rows of the materials)
        GLuint mImage[3] = {0, 0, 0};
        bool mbImage = false; // a material draws with an image
        // Every texel of the colour table has alpha 1: with opaque materials and particles whose
        // own alpha is 1 too, blending gives what replacing gives.
        bool mbTableOpaque = false;
        int mEnsembleStep = 0;
        int mDissolveMode = 0;
        int mLightNumber = 0;
        float mPointSizeFactor = 10.f;
        float mBaseDistance = 0.f; // above 0: the size depends on the distance
        float mAlphaCrit = 0.f;
        float mAngle = 0.f;                                                  // billboard roll, degrees
        float mFocus[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; // billboard axes in eye space
    };

    DrawParticleBase_cls() = default;
    virtual ~DrawParticleBase_cls() = default;
    DrawParticleBase_cls(const DrawParticleBase_cls&) = delete;
    DrawParticleBase_cls& operator=(const DrawParticleBase_cls&) = delete;

    // Draws the element lists as points (or billboards) with the runs' programs. The second
    // list draws after the first with depth writes off; they stay off until the caller's
    // glPopAttrib. Nothing is drawn for empty lists, but the programs are still bound and ended.
    void DrawPoints(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input);
    void DrawBillboards(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input);
    // Spheres of division depth "SphereDepth=" (0 to 5): each run is one instanced draw of the
    // shared sphere mesh, its per-instance attributes where GetSphereSource says they stand.
    void DrawSphere(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input, int depth);
    // The triangles (position, normal) of a unit icosphere divided depth times (0 to 5).
    static std::vector<float> GetVSphereMesh(int depth);
    int GetSphereVertexCount() const { return mSphereVertexCount; }
    // Draw calls of the last DrawSphere.
    int mSphereDrawCalls = 0;

    // Binds the colour table on unit 0 and the three images on units 1 to 3.
    static void BindParticleTexture(const DrawInput_cls& input);
    // Deletes the buffers and forgets the stamps.
    void ClearVBOBase();

    // Premultiplied blending of a material's blend type.
    static void SetBlend(int blendType);
    // Whether a run of material m writes colours of alpha exactly 1 in every
    // fragment, so blending can be left off: an opaque material, a table and particles of alpha
    // 1, no lights, fog or dissolve (which change alpha), and points no smaller than a pixel.
    bool IsOpaqueRun(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input, int m) const;
    // Whether every point is a whole number of pixels (one size, no distance): squares on the
    // pixel grid then cover what sprites cover, and the rasteriser draws them faster.
    bool IsGridSize(const DrawInput_cls& input) const;

    // Element counts of the two lists.
    int mNumElement[2] = {0, 0};
    // Of the particles in the buffers: every filter alpha is exactly 1 (NaN is not), and the
    // smallest and largest size (NaN when a size is NaN). Unknown (false, NaN) for batched drawing.
    bool mbAlphaOne = false;
    float mMinSize = std::numeric_limits<float>::quiet_NaN();
    float mMaxSize = std::numeric_limits<float>::quiet_NaN();
    // Bytes given to GL buffers since construction (a frame whose data did not change adds none).
    size_t mUploadedBytes = 0;

protected:
    // Where one per-instance attribute of the sphere programs stands.
    struct SphereAttribute_cls {
        GLuint mBuffer = 0;
        GLsizei mStride = 0;
        size_t mOffset = 0;
    };
    enum { SPHERE_POS_SIZE, SPHERE_ST, SPHERE_ALPHA, SPHERE_BITS, SPHERE_ATTRIBUTE_COUNT };
    // The buffers of instancePosSize (vec4), colorCurveST (vec2), filterAlpha and paramBit (int),
    // and the instance of each list's first entry (a run's first instance is that plus its mFirst).
    virtual void GetSphereSource(SphereAttribute_cls* pAttribute, int* pListBase) const = 0;

    // Replaces the data of a buffer (a fresh name when the size grows).
    void Upload(GLBuffer_cls& buffer, size_t& capacity, GLenum target, const void* pData, size_t bytes);
    void DrawLists(const ParticleDrawSetting_cls& setting, const DrawInput_cls& input, bool bBillboard);
    // Takes the counts and runs of the lists and uploads them, when bUpload; a list of
    // consecutive entries is drawn without its element buffer.
    void SetElementLists(const ParticleElementList_cls& list, bool bUpload);
    // The first list as entries 0 to count - 1 in one run of material m, drawn as arrays; the
    // second list empty.
    void SetSequentialList(int count, int m);

    GLBuffer_cls mBuffer[BUF_COUNT];
    size_t mCapacity[BUF_COUNT] = {};
    GLBuffer_cls mElement[2];
    size_t mElementCapacity[2] = {};
    std::vector<ParticleRun_cls> mVRun[2];
    // The list holds the consecutive entries from mSequentialFirst on: drawn as arrays.
    bool mbSequential[2] = {false, false};
    unsigned int mSequentialFirst[2] = {0, 0};
    bool mbTwist = false; // the twist buffer holds data
    // Every particle has the same paramBit: it goes to the programs as one value, not a buffer.
    bool mbConstantBits = false;
    int mConstantBits = 0;
    // Builds the sphere mesh of the division depth (0 to 5) and its adjacency, unless built.
    void SetSphereMesh(int depth);
    GLBuffer_cls mSphereMesh;
    GLBuffer_cls mSphereAdjacency;
    int mSphereAdjacencyCount = 0;
    int mSphereDepth = -1;
    int mSphereVertexCount = 0;
};
