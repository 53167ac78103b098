#include "WavefrontLoader_cls.h"

#include "UseGZ_cls.h"

#include <wx/filename.h>
#include <wx/log.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

// Reads up to n finite floats from [p, end); returns how many were read.
int ReadFloats(const char* p, const char* end, float* out, int n) {
    int count = 0;
    while (count < n) {
        while (p < end && IsBlank(*p))
            ++p;
        if (p >= end)
            break;
        char buf[64];
        size_t len = 0;
        while (p + len < end && !IsBlank(p[len]) && len < sizeof buf - 1)
            ++len;
        std::memcpy(buf, p, len);
        buf[len] = '\0';
        char* pStop = nullptr;
        const double v = std::strtod(buf, &pStop);
        if (pStop == buf || *pStop != '\0' || !std::isfinite(v) || std::fabs(v) > 3.0e38)
            return count;
        out[count++] = static_cast<float>(v);
        p += len;
        // An overlong token is not a number this reader takes.
        if (p < end && !IsBlank(*p))
            return count;
    }
    return count;
}

// The rest of the line after the keyword, without blanks at either end.
wxString RestOfLine(const char* p, const char* end) {
    while (p < end && IsBlank(*p))
        ++p;
    while (end > p && IsBlank(end[-1]))
        --end;
    return wxString::FromUTF8(p, static_cast<size_t>(end - p));
}

bool Keyword(const char* p, const char* end, const char* word, const char** pAfter) {
    const size_t n = std::strlen(word);
    if (static_cast<size_t>(end - p) < n || std::memcmp(p, word, n) != 0)
        return false;
    if (p + n < end && !IsBlank(p[n]))
        return false;
    *pAfter = p + n;
    return true;
}

// Resolves a 1-based or negative (relative) index against count; -1 when out of range.
long long ResolveIndex(long long index, long long count) {
    if (index > 0 && index <= count)
        return index - 1;
    if (index < 0 && -index <= count)
        return count + index;
    return -1;
}

} // namespace

void WavefrontLoader_cls::Clear() {
    mVPosition.clear();
    mVNormal.clear();
    mVTexCoord.clear();
    mVGroup.clear();
    mVMaterial.clear();
    mVSrcPos.clear();
    mVSrcTex.clear();
    mVSrcNrm.clear();
    for (int i = 0; i < 3; ++i)
        mMin[i] = mMax[i] = 0.0f;
    mNumSkippedLine = 0;
    mNumBadFace = 0;
    mbTruncated = false;
}

int WavefrontLoader_cls::GetMaterialIndex(const wxString& strName) const {
    for (size_t i = 0; i < mVMaterial.size(); ++i)
        if (mVMaterial[i].mStrName == strName)
            return static_cast<int>(i);
    return -1;
}

bool WavefrontLoader_cls::Load(const wxString& strPath) {
    Clear();
    unsigned char* pData = nullptr;
    long long size = 0;
    if (!UseGZ_cls::CopyToMemory(&pData, strPath, size)) {
        wxLogWarning("Mesh: cannot read %s", strPath);
        return false;
    }
    std::unique_ptr<unsigned char[]> data(pData);
    const size_t length = size > 0 ? static_cast<size_t>(size - 1) : 0; // the size counts the zero byte
    const bool bOk =
        LoadFromText(reinterpret_cast<const char*>(data.get()), length, wxFileName(strPath).GetPath());
    // One line per file: a file that gives nothing to draw says so together with what was skipped.
    if (!bOk)
        wxLogWarning("Mesh %s: no triangles to draw (%lld unreadable lines and %lld bad faces skipped)",
                     strPath, mNumSkippedLine, mNumBadFace);
    else if (mNumSkippedLine > 0 || mNumBadFace > 0)
        wxLogWarning("Mesh %s: %lld unreadable lines and %lld bad faces skipped", strPath, mNumSkippedLine,
                     mNumBadFace);
    if (mbTruncated)
        wxLogWarning("Mesh %s: more than %lld triangles; the rest is not loaded", strPath, msMaxTriangles);
    return bOk;
}

bool WavefrontLoader_cls::ParseFaceCorner(const char* p, const char* end, long long& v, long long& vt,
                                          long long& vn) {
    // v, v/vt, v//vn or v/vt/vn; each index 1-based or negative.
    long long fields[3] = {0, 0, 0};
    int field = 0;
    while (p <= end && field < 3) {
        const char* pSlash = p;
        while (pSlash < end && *pSlash != '/')
            ++pSlash;
        if (pSlash > p) {
            char buf[32];
            const size_t len = static_cast<size_t>(pSlash - p);
            if (len >= sizeof buf)
                return false;
            std::memcpy(buf, p, len);
            buf[len] = '\0';
            char* pStop = nullptr;
            const long long value = std::strtoll(buf, &pStop, 10);
            if (pStop == buf || *pStop != '\0' || value == 0)
                return false;
            fields[field] = value;
        } else if (field == 0) {
            return false; // the position index is required
        }
        ++field;
        if (pSlash >= end)
            break;
        p = pSlash + 1;
        if (p >= end && field < 3)
            break;
    }
    v = ResolveIndex(fields[0], static_cast<long long>(mVSrcPos.size() / 3));
    if (v < 0)
        return false;
    vt = -1;
    vn = -1;
    if (fields[1] != 0) {
        vt = ResolveIndex(fields[1], static_cast<long long>(mVSrcTex.size() / 2));
        if (vt < 0)
            return false;
    }
    if (fields[2] != 0) {
        vn = ResolveIndex(fields[2], static_cast<long long>(mVSrcNrm.size() / 3));
        if (vn < 0)
            return false;
    }
    return true;
}

void WavefrontLoader_cls::AddTriangle(const long long* v, const long long* vt, const long long* vn) {
    float pos[9];
    for (int c = 0; c < 3; ++c)
        for (int k = 0; k < 3; ++k)
            pos[c * 3 + k] = mVSrcPos[static_cast<size_t>(v[c]) * 3 + k];
    // A corner without a normal takes the face normal.
    float faceNormal[3];
    {
        const float ax = pos[3] - pos[0], ay = pos[4] - pos[1], az = pos[5] - pos[2];
        const float bx = pos[6] - pos[0], by = pos[7] - pos[1], bz = pos[8] - pos[2];
        float nx = ay * bz - az * by, ny = az * bx - ax * bz, nz = ax * by - ay * bx;
        const float len = std::sqrt(nx * nx + ny * ny + nz * nz);
        if (len > 0.0f && std::isfinite(len)) {
            nx /= len;
            ny /= len;
            nz /= len;
        } else {
            nx = 0.0f;
            ny = 0.0f;
            nz = 1.0f;
        }
        faceNormal[0] = nx;
        faceNormal[1] = ny;
        faceNormal[2] = nz;
    }
    for (int c = 0; c < 3; ++c) {
        for (int k = 0; k < 3; ++k)
            mVPosition.push_back(pos[c * 3 + k]);
        for (int k = 0; k < 3; ++k)
            mVNormal.push_back(vn[c] >= 0 ? mVSrcNrm[static_cast<size_t>(vn[c]) * 3 + k] : faceNormal[k]);
        for (int k = 0; k < 2; ++k)
            mVTexCoord.push_back(vt[c] >= 0 ? mVSrcTex[static_cast<size_t>(vt[c]) * 2 + k] : 0.0f);
    }
    if (!mVGroup.empty())
        ++mVGroup.back().mNumTriangle;
}

bool WavefrontLoader_cls::LoadFromText(const char* pText, size_t size, const wxString& strDir) {
    Clear();
    if (!pText)
        return false;
    mVGroup.push_back(WavefrontGroup_cls());
    const char* p = pText;
    const char* pEndAll = pText + size;
    std::vector<wxString> vStrLibrary;
    while (p < pEndAll && !mbTruncated) {
        const char* pEnd = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(pEndAll - p)));
        if (!pEnd)
            pEnd = pEndAll;
        const char* q = p;
        while (q < pEnd && IsBlank(*q))
            ++q;
        const char* pNext = pEnd < pEndAll ? pEnd + 1 : pEndAll;
        const char* pArgs = nullptr;
        if (q >= pEnd || *q == '#') {
            // blank line or comment
        } else if (Keyword(q, pEnd, "v", &pArgs)) {
            float xyz[3];
            if (ReadFloats(pArgs, pEnd, xyz, 3) == 3)
                mVSrcPos.insert(mVSrcPos.end(), xyz, xyz + 3);
            else
                ++mNumSkippedLine;
        } else if (Keyword(q, pEnd, "vn", &pArgs)) {
            float xyz[3];
            if (ReadFloats(pArgs, pEnd, xyz, 3) == 3)
                mVSrcNrm.insert(mVSrcNrm.end(), xyz, xyz + 3);
            else
                ++mNumSkippedLine;
        } else if (Keyword(q, pEnd, "vt", &pArgs)) {
            float uv[2] = {0.0f, 0.0f};
            if (ReadFloats(pArgs, pEnd, uv, 2) >= 1)
                mVSrcTex.insert(mVSrcTex.end(), uv, uv + 2);
            else
                ++mNumSkippedLine;
        } else if (Keyword(q, pEnd, "f", &pArgs)) {
            // Fan triangulation of a convex polygon; any bad corner drops the face.
            std::vector<long long> vCorner;
            bool bGood = true;
            const char* r = pArgs;
            while (bGood) {
                while (r < pEnd && IsBlank(*r))
                    ++r;
                if (r >= pEnd)
                    break;
                const char* s = r;
                while (s < pEnd && !IsBlank(*s))
                    ++s;
                long long v = -1, vt = -1, vn = -1;
                if (ParseFaceCorner(r, s, v, vt, vn)) {
                    vCorner.push_back(v);
                    vCorner.push_back(vt);
                    vCorner.push_back(vn);
                } else {
                    bGood = false;
                }
                r = s;
            }
            const long long n = static_cast<long long>(vCorner.size() / 3);
            if (!bGood || n < 3) {
                ++mNumBadFace;
            } else {
                for (long long k = 1; k + 1 < n; ++k) {
                    if (GetNumTriangle() >= msMaxTriangles) {
                        mbTruncated = true;
                        break;
                    }
                    const long long v[3] = {vCorner[0], vCorner[k * 3], vCorner[(k + 1) * 3]};
                    const long long vt[3] = {vCorner[1], vCorner[k * 3 + 1], vCorner[(k + 1) * 3 + 1]};
                    const long long vn[3] = {vCorner[2], vCorner[k * 3 + 2], vCorner[(k + 1) * 3 + 2]};
                    AddTriangle(v, vt, vn);
                }
            }
        } else if (Keyword(q, pEnd, "usemtl", &pArgs)) {
            WavefrontGroup_cls group;
            group.mStrMaterial = RestOfLine(pArgs, pEnd);
            group.mFirstTriangle = GetNumTriangle();
            if (mVGroup.back().mNumTriangle == 0)
                mVGroup.back() = group;
            else
                mVGroup.push_back(group);
        } else if (Keyword(q, pEnd, "mtllib", &pArgs)) {
            wxString strLib = RestOfLine(pArgs, pEnd);
            if (!strLib.empty())
                vStrLibrary.push_back(strLib);
        } else if (Keyword(q, pEnd, "o", &pArgs) || Keyword(q, pEnd, "g", &pArgs) ||
                   Keyword(q, pEnd, "s", &pArgs) || Keyword(q, pEnd, "l", &pArgs) ||
                   Keyword(q, pEnd, "p", &pArgs)) {
            // names, smoothing groups, lines and points: not drawn by a mesh
        } else {
            ++mNumSkippedLine;
        }
        p = pNext;
    }
    if (!mVGroup.empty() && mVGroup.back().mNumTriangle == 0)
        mVGroup.pop_back();
    mVSrcPos.clear();
    mVSrcPos.shrink_to_fit();
    mVSrcTex.clear();
    mVSrcTex.shrink_to_fit();
    mVSrcNrm.clear();
    mVSrcNrm.shrink_to_fit();

    if (!strDir.empty()) {
        for (const wxString& strLib : vStrLibrary) {
            wxFileName fn(strLib);
            if (fn.IsRelative())
                fn.MakeAbsolute(strDir);
            std::string text;
            if (!UseGZ_cls::CopyToString(&text, fn.GetFullPath())) {
                wxLogWarning("Mesh: material library %s not found", fn.GetFullPath());
                continue;
            }
            LoadMtlFromText(text.data(), text.size());
        }
    }
    UpdateBounds();
    return GetNumTriangle() > 0;
}

void WavefrontLoader_cls::LoadMtlFromText(const char* pText, size_t size) {
    if (!pText)
        return;
    const char* p = pText;
    const char* pEndAll = pText + size;
    WavefrontMaterial_cls* pCurrent = nullptr;
    while (p < pEndAll) {
        const char* pEnd = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(pEndAll - p)));
        if (!pEnd)
            pEnd = pEndAll;
        const char* q = p;
        while (q < pEnd && IsBlank(*q))
            ++q;
        const char* pArgs = nullptr;
        float values[3];
        if (q >= pEnd || *q == '#') {
        } else if (Keyword(q, pEnd, "newmtl", &pArgs)) {
            WavefrontMaterial_cls material;
            material.mStrName = RestOfLine(pArgs, pEnd);
            const int index = GetMaterialIndex(material.mStrName);
            if (index >= 0) {
                mVMaterial[static_cast<size_t>(index)] = material; // the later definition wins
                pCurrent = &mVMaterial[static_cast<size_t>(index)];
            } else {
                mVMaterial.push_back(material);
                pCurrent = &mVMaterial.back();
            }
        } else if (!pCurrent) {
            ++mNumSkippedLine; // a property before any newmtl
        } else if (Keyword(q, pEnd, "Ka", &pArgs) && ReadFloats(pArgs, pEnd, values, 3) == 3) {
            std::memcpy(pCurrent->mAmbient, values, sizeof values);
        } else if (Keyword(q, pEnd, "Kd", &pArgs) && ReadFloats(pArgs, pEnd, values, 3) == 3) {
            std::memcpy(pCurrent->mDiffuse, values, sizeof values);
        } else if (Keyword(q, pEnd, "Ks", &pArgs) && ReadFloats(pArgs, pEnd, values, 3) == 3) {
            std::memcpy(pCurrent->mSpecular, values, sizeof values);
        } else if (Keyword(q, pEnd, "Ke", &pArgs) && ReadFloats(pArgs, pEnd, values, 3) == 3) {
            std::memcpy(pCurrent->mEmission, values, sizeof values);
        } else if (Keyword(q, pEnd, "Ns", &pArgs) && ReadFloats(pArgs, pEnd, values, 1) == 1) {
            pCurrent->mShininess = values[0];
        } else if (Keyword(q, pEnd, "d", &pArgs) && ReadFloats(pArgs, pEnd, values, 1) == 1) {
            pCurrent->mAlpha = values[0];
        } else if (Keyword(q, pEnd, "Tr", &pArgs) && ReadFloats(pArgs, pEnd, values, 1) == 1) {
            pCurrent->mAlpha = 1.0f - values[0];
        } else if (Keyword(q, pEnd, "map_Kd", &pArgs)) {
            pCurrent->mStrTexture = RestOfLine(pArgs, pEnd);
        } else if (Keyword(q, pEnd, "illum", &pArgs) || Keyword(q, pEnd, "Ni", &pArgs) ||
                   Keyword(q, pEnd, "Tf", &pArgs) || Keyword(q, pEnd, "map_Ka", &pArgs) ||
                   Keyword(q, pEnd, "map_Ks", &pArgs) || Keyword(q, pEnd, "map_d", &pArgs) ||
                   Keyword(q, pEnd, "map_Bump", &pArgs) || Keyword(q, pEnd, "bump", &pArgs)) {
            // read by nobody
        } else {
            ++mNumSkippedLine;
        }
        p = pEnd < pEndAll ? pEnd + 1 : pEndAll;
    }
}

void WavefrontLoader_cls::UpdateBounds() {
    if (mVPosition.empty()) {
        for (int i = 0; i < 3; ++i)
            mMin[i] = mMax[i] = 0.0f;
        return;
    }
    for (int i = 0; i < 3; ++i)
        mMin[i] = mMax[i] = mVPosition[static_cast<size_t>(i)];
    for (size_t k = 0; k < mVPosition.size(); k += 3)
        for (int i = 0; i < 3; ++i) {
            const float v = mVPosition[k + static_cast<size_t>(i)];
            if (v < mMin[i])
                mMin[i] = v;
            if (v > mMax[i])
                mMax[i] = v;
        }
}
