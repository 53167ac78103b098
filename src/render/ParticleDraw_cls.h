// The drawing of particle objects, one per view: for each object the GL side of its frames
// (DrawParticle_cls for frames up to one batch, DrawParticleLargeVBO_cls above), its colour
// table and its point images. A draw asks the object for the frame at the draw's time (which
// swaps in the frame prepared in the background, or prepares it now, and starts the next one
// while playing), checks the materials against the data, uploads what changed and draws the
// particles as points, billboards or spheres; then it waits for the background preparation, so
// that the next draw finds the spare set finished.
// GL thread only; the context must be current when it is deleted.
#pragma once

#include "DrawParticleLargeVBO_cls.h"
#include "DrawParticle_cls.h"

#include <map>
#include <memory>

class GLDrawStatus_cls;
class Particle_cls;
class TextureProvider_cls;

class ParticleDraw_cls {
public:
    // pTextures (not owned, may be null) gives the point images.
    explicit ParticleDraw_cls(TextureProvider_cls* pTextures);
    ~ParticleDraw_cls();
    ParticleDraw_cls(const ParticleDraw_cls&) = delete;
    ParticleDraw_cls& operator=(const ParticleDraw_cls&) = delete;

    // Prepares and draws one object with its matrix on the model-view.
    void GLDraw(Particle_cls& obj, GLDrawStatus_cls& status);

    // Whether every material has that base type (no materials count as points).
    static bool IsPointAll(Particle_cls& obj);
    static bool IsBillboardAll(Particle_cls& obj);
    static bool IsSphereAll(Particle_cls& obj);
    // What the draw reads of the object's materials at nt.
    static ParticleDrawSetting_cls GetSetting(Particle_cls& obj, double nt);
    // Why the object's frame cannot be drawn (a material that names a missing colour curve or
    // image, a colour input the data lack, no particles); empty when it can.
    static wxString GetStrProblem(Particle_cls& obj);
    // The billboards' axes in eye space: the focus of the object's "ParticleTweak_cls" at nt
    // (yaw 0, pitch -60, roll 0, order 0 without one), column-major.
    static void GetBillboardFocus(Particle_cls& obj, double nt, float* matrix16);

    // Particles per batch; 0 takes "ParticleVBOMax=" thousand from the preferences.
    int mBatchOverride = 0;
    int GetBatchSize() const;

    // ---- what the last draws did, for the tests and benchmarks ----
    // Bytes given to GL buffers for the object since its first draw.
    size_t GetUploadedBytes(const Particle_cls* p) const;
    // Whether the object's last draw went in batches, and how many.
    bool WasLarge(const Particle_cls* p) const;
    int GetNumBatches(const Particle_cls* p) const;
    int GetSphereDrawCalls(const Particle_cls* p) const;
    GLuint GetColorTable(const Particle_cls* p) const;

private:
    class Object_cls {
    public:
        DrawParticle_cls mCNormal;
        DrawParticleLargeVBO_cls mCLarge;
        GLTexture_cls mColorTable;
        wxString mStrTableStamp;
        bool mbTableOpaque = false; // every texel of the table has alpha 1
        wxString mStrImagePath[3];
        GLuint mImage[3] = {0, 0, 0};
        wxString mStrLastProblem;
        bool mbLastLarge = false;
    };
    Object_cls& GetObject(const Particle_cls* p) { return mMapObject[p]; }
    const Object_cls* FindObject(const Particle_cls* p) const;
    // Rebuilds the colour table when a curve, a material or the time changed it.
    void UpdateColorTable(Particle_cls& obj, Object_cls& o, const ParticleDrawSetting_cls& setting,
                          double nt);
    void UpdateImages(Particle_cls& obj, Object_cls& o);
    enum DrawType_enum { DRAW_POINT, DRAW_BILLBOARD, DRAW_SPHERE };
    // The frame in one buffer, or in batches when it has more particles than one batch.
    void DrawAll(Particle_cls& obj, Object_cls& o, const ParticleDrawSetting_cls& setting,
                 const DrawParticleBase_cls::DrawInput_cls& input, DrawType_enum type);

    TextureProvider_cls* mpCTextures;
    std::map<const Particle_cls*, Object_cls> mMapObject;
};
