#include "ParticleDraw_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "GLCheckError_cls.h"
#include "GLDrawStatus_cls.h"
#include "MaterialParticle_cls.h"
#include "ParticleForRender_cls.h"
#include "ParticleSnap_cls.h"
#include "ParticleTweak_cls.h"
#include "Particle_cls.h"
#include "Preference_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "TextureProvider_cls.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>
#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace {

constexpr int kTableWidth = ColorCurve_cls::kTexelCount;
const char* const kDependName[3] = {"Value0", "Value1", "Value2"};

bool IsNone(const wxString& str) {
    return str.empty() || str == "None";
}

// 3x3 rotations, column-major, angles in degrees.
void Multiply3(const double* a, const double* b, double* out) {
    double r[9];
    for (int c = 0; c < 3; ++c)
        for (int row = 0; row < 3; ++row)
            r[c * 3 + row] = a[row] * b[c * 3] + a[3 + row] * b[c * 3 + 1] + a[6 + row] * b[c * 3 + 2];
    std::copy(r, r + 9, out);
}

void Rotation3(int axis, double degrees, double* m) {
    const double rad = degrees * M_PI / 180.0, c = std::cos(rad), s = std::sin(rad);
    const int a1 = (axis + 1) % 3, a2 = (axis + 2) % 3;
    std::fill(m, m + 9, 0.0);
    m[axis * 3 + axis] = 1.0;
    m[a1 * 3 + a1] = c;
    m[a2 * 3 + a2] = c;
    m[a1 * 3 + a2] = s;
    m[a2 * 3 + a1] = -s;
}

} // namespace

ParticleDraw_cls::ParticleDraw_cls(TextureProvider_cls* pTextures) : mpCTextures(pTextures) {}

ParticleDraw_cls::~ParticleDraw_cls() {
    if (!mpCTextures)
        return;
    for (auto& entry : mMapObject)
        for (const wxString& strPath : entry.second.mStrImagePath)
            if (!strPath.empty())
                mpCTextures->Release(strPath);
}

int ParticleDraw_cls::GetBatchSize() const {
    if (mBatchOverride > 0)
        return mBatchOverride;
    const long long thousands = GpCPreference ? GpCPreference->GetParticleVBOMax() : 2000;
    return static_cast<int>(std::max<long long>(1, std::min<long long>(thousands, 2000000)) * 1000);
}

const ParticleDraw_cls::Object_cls* ParticleDraw_cls::FindObject(const Particle_cls* p) const {
    auto it = mMapObject.find(p);
    return it == mMapObject.end() ? nullptr : &it->second;
}

size_t ParticleDraw_cls::GetUploadedBytes(const Particle_cls* p) const {
    const Object_cls* o = FindObject(p);
    return o ? o->mCNormal.mUploadedBytes + o->mCLarge.mUploadedBytes : 0;
}
bool ParticleDraw_cls::WasLarge(const Particle_cls* p) const {
    const Object_cls* o = FindObject(p);
    return o && o->mbLastLarge;
}
int ParticleDraw_cls::GetNumBatches(const Particle_cls* p) const {
    const Object_cls* o = FindObject(p);
    return o ? o->mCLarge.mNumBatches : 0;
}
int ParticleDraw_cls::GetSphereDrawCalls(const Particle_cls* p) const {
    const Object_cls* o = FindObject(p);
    return !o ? 0 : o->mbLastLarge ? o->mCLarge.mSphereDrawCalls : o->mCNormal.mSphereDrawCalls;
}
GLuint ParticleDraw_cls::GetColorTable(const Particle_cls* p) const {
    const Object_cls* o = FindObject(p);
    return o ? o->mColorTable.Get() : 0;
}

// ---- materials ---------------------------------------------------------------------------------

namespace {
bool IsAllBase(Particle_cls& obj, int base) {
    const int n = obj.GetNumMaterial();
    if (n == 0)
        return base == 0;
    for (int m = 0; m < n; ++m)
        if (obj.GetPCMaterialParticle(m)->mCBaseType.GetBodyINT() != base)
            return false;
    return true;
}
} // namespace

bool ParticleDraw_cls::IsPointAll(Particle_cls& obj) {
    return IsAllBase(obj, 0);
}
bool ParticleDraw_cls::IsBillboardAll(Particle_cls& obj) {
    return IsAllBase(obj, 1);
}
bool ParticleDraw_cls::IsSphereAll(Particle_cls& obj) {
    return IsAllBase(obj, 2);
}

ParticleDrawSetting_cls ParticleDraw_cls::GetSetting(Particle_cls& obj, double nt) {
    using S = ParticleDrawSetting_cls;
    S setting;
    setting.mMaterialCount = std::max(1, std::min(S::kMaterialMax, obj.GetNumMaterial()));
    setting.mbTwoPass = obj.mCTwoPass.GetBodyINT() != 0;
    setting.mbTwist = obj.mCTwistRandom.GetBodyBOOL();
    const int textureNum = static_cast<int>(obj.mCTextureNum.GetBodyINT());
    for (int m = 0; m < S::kMaterialMax; ++m) {
        MaterialParticle_cls* p = obj.GetPCMaterialParticle(m < setting.mMaterialCount ? m : 0);
        if (!p)
            continue;
        const int base = static_cast<int>(p->mCBaseType.GetBodyINT());
        int prog = S::PROG_NONE;
        if (base == 0) {
            static const int kPoint[3] = {S::PROG_POINT, S::PROG_POINT, S::PROG_PSEUDO_SPHERE};
            const long long type = p->mCShaderTypePoint.GetBodyINT();
            prog = type >= 0 && type < 3 ? kPoint[type] : S::PROG_NONE;
        } else if (base == 1) {
            // "PseudoObject" draws as a plain billboard.
            static const int kBillboard[3] = {S::PROG_BILLBOARD, S::PROG_PSEUDO_SPHERE, S::PROG_BILLBOARD};
            const long long type = p->mCShaderTypeBillboard.GetBodyINT();
            prog = type >= 0 && type < 3 ? kBillboard[type] : S::PROG_NONE;
        } else if (base == 2) {
            static const int kSphere[4] = {S::PROG_SPHERE_GOURAUD, S::PROG_SPHERE_PHONG, S::PROG_SPHERE_TOON,
                                           S::PROG_SPHERE_NORMAL};
            const long long type = p->mCShaderTypeSphere.GetBodyINT();
            prog = type >= 0 && type < 4 ? kSphere[type] : S::PROG_NONE;
        }
        setting.mBlend[m] =
            static_cast<int>(std::max<long long>(0, std::min<long long>(2, p->mCBlendType.GetBodyINT())));
        const double alpha = p->GetAlpha(nt);
        const int image = static_cast<int>(p->mCTextureIndex.GetBodyINT());
        const bool bImage =
            p->mCTextureType.GetBodyINT() == 1 && image >= 0 && image < std::min(3, textureNum);
        int bits = 0;
        // Blended materials and translucent ones go behind, without writing depth.
        if (setting.mBlend[m] != 0 || alpha < 1.0)
            bits |= S::BIT_SECOND_PASS;
        if (bImage)
            bits |= (image + 1) << S::SHIFT_IMAGE;
        if (base == 0 && p->mCShaderTypePoint.GetBodyINT() == 0)
            bits |= S::BIT_SQUARE;
        // Points of one shape without an image take the program of that shape alone.
        if (prog == S::PROG_POINT && !bImage)
            prog = (bits & S::BIT_SQUARE) ? S::PROG_POINT_SQUARE : S::PROG_POINT_CIRCLE;
        setting.mProgram[m] = prog;
        setting.mBits[m] = bits;
        setting.mbOpaque[m] = setting.mBlend[m] == 0 && alpha >= 1.0 && !bImage;
        setting.mFlat[m] = p->mCShaderFlat.GetBodyBOOL() ? 1 : 0;
        setting.mToonThreshold[m] = static_cast<float>(p->mCToonThreshold.GetBodyDOUBLE());
        setting.mToonBoldness[m] = static_cast<float>(p->mCToonBoldness.GetBodyDOUBLE());
    }
    return setting;
}

wxString ParticleDraw_cls::GetStrProblem(Particle_cls& obj) {
    const wxString strObj = "Particle object \"" + obj.GetStrName() + "\": ";
    const ParticleForRender_cls* pSet = obj.mpCCurrent.get();
    const ParticleSnap_cls* pSnap = pSet ? obj.mCSequence.GetPCSnap(pSet->mLastStep) : nullptr;
    // An empty step stands in the cache as random substitute data; the drawing shows none of it.
    if (!pSet || pSet->mNumber <= 0 || (pSnap && pSnap->mReadFile == "#DefaultData"))
        return strObj + "the frame has no particles; nothing is drawn.";
    const int nCurve = obj.GetNumAttribute("ColorCurve_cls");
    const int textureNum = static_cast<int>(obj.mCTextureNum.GetBodyINT());
    for (int m = 0; m < std::min(ParticleDrawSetting_cls::kMaterialMax, obj.GetNumMaterial()); ++m) {
        MaterialParticle_cls* p = obj.GetPCMaterialParticle(m);
        const wxString strMat = wxString::Format("material %d (\"%s\") ", m, p->GetStrName());
        if (p->mCColorCurveType.GetBodyINT() == 1) {
            const long long curve = p->mCColorCurveIndex.GetBodyINT();
            if (curve < 0 || curve >= nCurve)
                return strObj + strMat +
                       wxString::Format("uses colour curve %lld, but the object has %d; nothing is drawn.",
                                        curve, nCurve);
            const long long depend = p->mCColorCurveDepend.GetBodyINT();
            if (depend >= 3 && depend <= 5 && pSnap && !pSnap->mValue[depend - 3])
                return strObj + strMat +
                       wxString::Format("colours by %s, which the data of %s do not have; nothing is drawn.",
                                        kDependName[depend - 3], pSnap->mReadFile);
        }
        if (p->mCTextureType.GetBodyINT() == 1) {
            const long long image = p->mCTextureIndex.GetBodyINT();
            const ConfItemSTR_cls* paths[3] = {&obj.mCTexturePath0, &obj.mCTexturePath1, &obj.mCTexturePath2};
            if (image < 0 || image > 2 || image >= textureNum || IsNone(paths[image]->GetBodySTR()))
                return strObj + strMat +
                       wxString::Format("uses image %lld, which the object does not name; nothing is drawn.",
                                        image);
            const wxString strPath = paths[image]->GetBodySTR();
            if (!wxFileName::FileExists(strPath))
                return strObj + strMat + "uses the image \"" + strPath +
                       "\", which does not exist; nothing is drawn.";
        }
    }
    return wxEmptyString;
}

void ParticleDraw_cls::GetBillboardFocus(Particle_cls& obj, double nt, float* matrix16) {
    float yaw = 0.f, pitch = -60.f, roll = 0.f;
    int order = 0;
    for (int i = 0, n = obj.GetNumAttribute("ParticleTweak_cls"); i < n; ++i) {
        auto* p = static_cast<ParticleTweak_cls*>(obj.GetPCAttributeFromAttribName("ParticleTweak_cls", i));
        if (p) {
            p->GetBillboartFocus(nt, yaw, pitch, roll, order);
            break;
        }
    }
    double y[9], p[9], r[9], m[9];
    Rotation3(1, yaw, y);
    Rotation3(0, pitch, p);
    Rotation3(2, roll, r);
    // Order 0 turns by yaw, then pitch, then roll; order 1 the other way round.
    if (order == 1) {
        Multiply3(r, p, m);
        Multiply3(m, y, m);
    } else {
        Multiply3(y, p, m);
        Multiply3(m, r, m);
    }
    std::fill(matrix16, matrix16 + 16, 0.f);
    for (int c = 0; c < 3; ++c)
        for (int row = 0; row < 3; ++row)
            matrix16[c * 4 + row] = static_cast<float>(m[c * 3 + row]);
    matrix16[15] = 1.f;
}

// ---- textures ----------------------------------------------------------------------------------

void ParticleDraw_cls::UpdateColorTable(Particle_cls& obj, Object_cls& o,
                                        const ParticleDrawSetting_cls& setting, double nt) {
    // One row per particle type, three rows per curve: the T coordinate of the preparation
    // addresses row "type" of a table of that height.
    const int nCurve = std::max(1, obj.GetNumAttribute("ColorCurve_cls"));
    const int rows = 3 * nCurve;
    wxString strStamp = wxString::Format("%d", rows);
    std::vector<ColorCurve_cls*> vCurve(static_cast<size_t>(rows), nullptr);
    std::vector<float> vAlpha(static_cast<size_t>(rows), 1.f);
    for (int r = 0; r < rows; ++r) {
        const int m = setting.GetMaterial(r);
        MaterialParticle_cls* p = obj.GetPCMaterialParticle(m);
        if (!p)
            continue;
        vAlpha[r] = static_cast<float>(p->GetAlpha(nt));
        if (p->mCColorCurveType.GetBodyINT() == 1) {
            auto* pCurve = static_cast<ColorCurve_cls*>(obj.GetPCAttributeFromAttribName(
                "ColorCurve_cls", static_cast<int>(p->mCColorCurveIndex.GetBodyINT())));
            if (pCurve) {
                // The preparation maps the data value over the curve's range already: the rows hold
                // the curve over its own domain.
                vCurve[r] = pCurve;
                strStamp << wxString::Format(";%p:", static_cast<const void*>(pCurve))
                         << pCurve->ParamGroup_cls::GetStrProcCounter();
            }
        }
        strStamp << wxString::Format(";%.9g", vAlpha[r]);
    }
    if (o.mColorTable && strStamp == o.mStrTableStamp)
        return;
    o.mStrTableStamp = strStamp;
    std::vector<float> vTable(static_cast<size_t>(rows) * kTableWidth * 4, 1.f);
    std::map<ColorCurve_cls*, std::vector<float>> mapTexel;
    for (int r = 0; r < rows; ++r) {
        float* pRow = vTable.data() + static_cast<size_t>(r) * kTableWidth * 4;
        ColorCurve_cls* pCurve = vCurve[r];
        std::vector<float>* pTexel = nullptr;
        if (pCurve) {
            // The curve at i / 1025, as its own texels stand (the last just below 1); once per curve.
            pTexel = &mapTexel[pCurve];
            if (pTexel->empty()) {
                pTexel->resize(static_cast<size_t>(kTableWidth) * 4);
                for (int i = 0; i < kTableWidth; ++i) {
                    std::vector<double> v = pCurve->GetVInterpolatedValue(i / 1025.0, true, nullptr, false);
                    v.resize(4, 1.0);
                    ColorCurve_cls::TrimColorVector(v);
                    for (int c = 0; c < 4; ++c)
                        (*pTexel)[4 * static_cast<size_t>(i) + c] = static_cast<float>(v[c]);
                }
            }
        }
        // "Constant Color": white; the material's alpha on both.
        for (int i = 0; i < kTableWidth; ++i) {
            float* px = pRow + 4 * i;
            if (pTexel)
                std::copy(pTexel->data() + 4 * i, pTexel->data() + 4 * i + 4, px);
            px[3] *= vAlpha[r];
        }
    }
    o.mbTableOpaque = true;
    for (size_t i = 3; i < vTable.size(); i += 4)
        o.mbTableOpaque = o.mbTableOpaque && vTable[i] == 1.f;
    if (!o.mColorTable)
        o.mColorTable = GLTexture_cls::Make();
    glBindTexture(GL_TEXTURE_2D, o.mColorTable.Get());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, kTableWidth, rows, 0, GL_RGBA, GL_FLOAT, vTable.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void ParticleDraw_cls::UpdateImages(Particle_cls& obj, Object_cls& o) {
    const ConfItemSTR_cls* paths[3] = {&obj.mCTexturePath0, &obj.mCTexturePath1, &obj.mCTexturePath2};
    const int textureNum = static_cast<int>(obj.mCTextureNum.GetBodyINT());
    for (int i = 0; i < 3; ++i) {
        const wxString strPath =
            i < textureNum && !IsNone(paths[i]->GetBodySTR()) ? paths[i]->GetBodySTR() : "";
        if (strPath == o.mStrImagePath[i])
            continue;
        if (mpCTextures && !o.mStrImagePath[i].empty())
            mpCTextures->Release(o.mStrImagePath[i]);
        o.mStrImagePath[i] = strPath;
        o.mImage[i] = mpCTextures && !strPath.empty() ? mpCTextures->Acquire(strPath) : 0;
    }
}

// ---- drawing -----------------------------------------------------------------------------------

void ParticleDraw_cls::GLDraw(Particle_cls& obj, GLDrawStatus_cls& status) {
    if (!status.mbData)
        return;
    Object_cls& o = GetObject(&obj);
    obj.SetCameraPoses(status.mPosDirNow, status.mPosDirNext);
    // The later draws of a frame with shadows (other steps, the stencil phases) use the set that
    // the first one prepared, as later ensemble steps do.
    const ShadowVolumeCtrl_cls* pShadow = GpCShadowVolumeCtrl;
    const bool bShadowRepeat = pShadow && (pShadow->GetPhase() != 0 || !pShadow->IsFirstStep());
    if (!obj.PrepareDraw(bShadowRepeat ? std::max(1, status.mEnsembleStep) : status.mEnsembleStep,
                         status.mCompositeIndex)) {
        // A missing snap: not drawn in this frame, and nothing is said.
        obj.WaitPrepareNext();
        return;
    }
    const double nt = status.mTime;
    const wxString strProblem = GetStrProblem(obj);
    if (strProblem != o.mStrLastProblem && !strProblem.empty())
        wxLogWarning("%s", strProblem);
    o.mStrLastProblem = strProblem;
    const bool bPoint = IsPointAll(obj), bBillboard = IsBillboardAll(obj), bSphere = IsSphereAll(obj);
    if (!strProblem.empty() || (!bPoint && !bBillboard && !bSphere)) {
        // Nothing of an earlier frame may be drawn from the buffers later.
        o.mCNormal.ClearVBO();
        obj.WaitPrepareNext();
        return;
    }
    // Points and billboards are drawn without light: once, in the lit phase of the first step.
    const bool bVolumePhase = pShadow && pShadow->GetPhase() == 1;
    const bool bStencilPhase = pShadow && (pShadow->GetPhase() == 1 || pShadow->GetPhase() == 2);
    if (!bSphere && (bStencilPhase || (pShadow && pShadow->IsLightOnlyStep()))) {
        obj.WaitPrepareNext();
        return;
    }
    const ParticleDrawSetting_cls setting = GetSetting(obj, nt);
    UpdateColorTable(obj, o, setting, nt);
    UpdateImages(obj, o);

    DrawParticleBase_cls::DrawInput_cls input;
    input.mColorTable = o.mColorTable.Get();
    input.mbTableOpaque = o.mbTableOpaque;
    std::copy(o.mImage, o.mImage + 3, input.mImage);
    for (int m = 0; m < ParticleDrawSetting_cls::kMaterialMax; ++m)
        input.mbImage = input.mbImage || (setting.mBits[m] >> ParticleDrawSetting_cls::SHIFT_IMAGE) & 3;
    input.mEnsembleStep = status.mEnsembleStep;
    input.mDissolveMode = static_cast<int>(obj.mCDissolve.GetBodyINT());
    input.mLightNumber = status.mLightNumber;
    input.mPointSizeFactor = static_cast<float>(obj.mCPointSizeFactor.GetBodyDOUBLE());
    input.mBaseDistance =
        obj.mCDependDistance.GetBodyINT() == 1 ? static_cast<float>(obj.mCDistanceBase.GetBodyDOUBLE()) : 0.f;
    input.mAlphaCrit = static_cast<float>(obj.mCAlphaCrit.GetBodyDOUBLE());
    if (bBillboard)
        GetBillboardFocus(obj, nt, input.mFocus);

    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glEnable(GL_DEPTH_TEST);
    if (!obj.mCDepthMask.GetBodyBOOL())
        glDepthMask(GL_FALSE);
    if (bSphere && bVolumePhase) {
        if (obj.mCCastShadow.GetBodyBOOL()) {
            o.mCNormal.SetVBOBuffer(obj.mpCCurrent.get(), setting, true);
            o.mCNormal.DrawSphereSV(static_cast<int>(obj.mCSphereDepth.GetBodyINT()));
        }
    } else {
        const DrawType_enum type = bSphere ? DRAW_SPHERE : bBillboard ? DRAW_BILLBOARD : DRAW_POINT;
        DrawAll(obj, o, setting, input, type);
    }
    glPopAttrib();
    // The spare set must be finished before the next draw looks at it.
    obj.WaitPrepareNext();
}

void ParticleDraw_cls::DrawAll(Particle_cls& obj, Object_cls& o, const ParticleDrawSetting_cls& setting,
                               const DrawParticleBase_cls::DrawInput_cls& input, DrawType_enum type) {
    const ParticleForRender_cls* pSet = obj.mpCCurrent.get();
    GLint mode = GL_RENDER;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    const int batch = GetBatchSize();
    o.mbLastLarge = mode == GL_RENDER && batch < pSet->mNumber;
    const int depth = static_cast<int>(obj.mCSphereDepth.GetBodyINT());
    auto draw = [&](DrawParticleBase_cls& d) {
        if (type == DRAW_SPHERE)
            d.DrawSphere(setting, input, depth);
        else if (type == DRAW_BILLBOARD)
            d.DrawBillboards(setting, input);
        else
            d.DrawPoints(setting, input);
    };
    if (!o.mbLastLarge) {
        o.mCNormal.SetVBOBuffer(pSet, setting, type == DRAW_SPHERE);
        draw(o.mCNormal);
        return;
    }
    // The batch before is drawn while the workers compact the next, and each stage is uploaded
    // while the workers compute the one after it.
    DrawParticleLargeVBO_cls& large = o.mCLarge;
    large.Allocate(batch, setting, type == DRAW_SPHERE);
    bool bDrawn = false;
    for (long long first = 0; first < pSet->mNumber; first += batch) {
        if (TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
            continue;
        large.PrepareNextDataPos(pSet, first);
        if (bDrawn)
            draw(large);
        large.FinishPrepareNextPos();
        if (large.mNumInBatch > 0) {
            large.PrepareNextDataAlpha(pSet, first);
            large.SetNextVBOPos();
            large.FinishPrepareNextAlpha();
            large.PrepareNextDataST(pSet, first);
            large.PrepareNextDataElement(pSet, first);
            large.SetNextVBOAlpha();
            large.FinishPrepareNextST();
            large.PrepareNextDataOther(pSet, first);
            large.SetNextVBOST();
            large.FinishPrepareNextOther();
            large.SetNextVBOOther();
            large.FinishPrepareNextElement();
        }
        large.SetNextVBOElement();
        bDrawn = true;
    }
    if (bDrawn)
        draw(large);
    large.ReleaseMemoryData();
    large.ClearVBO();
}
