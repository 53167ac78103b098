// Reads Wavefront .obj meshes and their .mtl material libraries into flat triangle arrays that
// the mesh object keeps and the renderer uploads. A file that is truncated or malformed loads
// what it can: unreadable lines and faces with bad indices are skipped and counted, never
// trusted. Any thread; an instance belongs to one thread.
#pragma once

#include <wx/string.h>

#include <cstddef>
#include <vector>

class WavefrontMaterial_cls {
public:
    wxString mStrName;
    float mAmbient[3] = {0.2f, 0.2f, 0.2f};  // Ka
    float mDiffuse[3] = {0.8f, 0.8f, 0.8f};  // Kd
    float mSpecular[3] = {0.0f, 0.0f, 0.0f}; // Ks
    float mEmission[3] = {0.0f, 0.0f, 0.0f}; // Ke
    float mShininess = 0.0f;                 // Ns
    float mAlpha = 1.0f;                     // d, or 1 - Tr
    wxString mStrTexture;                    // map_Kd, as written in the file
};

// A run of triangles drawn with one material (usemtl).
class WavefrontGroup_cls {
public:
    wxString mStrMaterial;
    long long mFirstTriangle = 0;
    long long mNumTriangle = 0;
};

class WavefrontLoader_cls {
public:
    // More triangles than this are not made: a hostile face line of a few bytes per corner
    // must not turn a small file into gigabytes.
    static constexpr long long msMaxTriangles = 20000000;

    // Reads the file (plain or gzip) and the material libraries it names, relative to its
    // folder. False when the file cannot be read or holds no triangle at all.
    bool Load(const wxString& strPath);
    // The same on text in memory; strDir is where material libraries are looked for (empty:
    // libraries are not read).
    bool LoadFromText(const char* pText, size_t size, const wxString& strDir);
    // Adds the materials of one .mtl text.
    void LoadMtlFromText(const char* pText, size_t size);
    void Clear();

    long long GetNumTriangle() const { return static_cast<long long>(mVPosition.size() / 9); }
    // Index of the material of that name, -1 if none.
    int GetMaterialIndex(const wxString& strName) const;

    // Per triangle corner: 3 floats of position and normal, 2 of texture coordinate.
    std::vector<float> mVPosition;
    std::vector<float> mVNormal;
    std::vector<float> mVTexCoord;
    std::vector<WavefrontGroup_cls> mVGroup;
    std::vector<WavefrontMaterial_cls> mVMaterial;
    float mMin[3] = {0.0f, 0.0f, 0.0f}; // bounding box of the triangles
    float mMax[3] = {0.0f, 0.0f, 0.0f};
    long long mNumSkippedLine = 0; // lines that could not be read
    long long mNumBadFace = 0;     // faces dropped for bad or missing indices
    bool mbTruncated = false;      // the triangle bound was reached

private:
    bool ParseFaceCorner(const char* pBegin, const char* pEnd, long long& v, long long& vt, long long& vn);
    void AddTriangle(const long long* v, const long long* vt, const long long* vn);
    void UpdateBounds();

    std::vector<float> mVSrcPos; // v, 3 each
    std::vector<float> mVSrcTex; // vt, 2 each
    std::vector<float> mVSrcNrm; // vn, 3 each
};
