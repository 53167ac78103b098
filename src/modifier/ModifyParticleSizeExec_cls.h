// The executor of "ModifyParticleSize_cls": reads the entry's clone and the chosen colour curve
// of the viewer's clone once, as a table of 1024 floats, then scales sizes with plain values.
// Belongs to the thread that prepares the frame.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ModifyParticleSize_cls.h"

#include <cstdint>
#include <vector>

class AttributeClone_cls;
class ViewerClone_cls;

// What a size lookup may depend on, one entry per particle; not owned. Null arrays give 0.
class ModifySizeSource_cls {
public:
    const int64_t* mpID = nullptr;
    const float* mpValue[ModifyParticleSize_cls::kValueColumns] = {nullptr, nullptr, nullptr};
};

class ModifyParticleSizeExec_cls {
public:
    static constexpr int kTableSize = 1024;

    // pClone is the entry's clone; the curve is looked up in pViewer at normalised time nt.
    ModifyParticleSizeExec_cls(AttributeClone_cls* pClone, ViewerClone_cls* pViewer, double nt);

    // False when switched off or when the curve is missing; Execute then does nothing.
    bool IsReady() const { return mbValid && !mVTable.empty(); }
    // For output element i with particle e = order[i].mIndex, matching TargetType= and with
    // alpha[e] not 0: x = (source(e) - r0) / (r1 - r0) picks an entry of the table (below 0 the
    // first, above 1 the last) and size[e] is multiplied by it.
    void Execute(const float* alpha, float* size, const unsigned char* type, const ArrayAndIndex_cls* order,
                 long long n, const ModifySizeSource_cls& src) const;

    // The table of one channel of a curve group's clone, and the curve's range at nt.
    static std::vector<float> MakeTable(AttributeClone_cls* pCurve, int channel, double nt, double& r0,
                                        double& r1);

    // The value column the lookup reads (0 to 2), or -1 when it reads no value column.
    int GetValueColumn() const;

    int mTargetType = 0;
    int mDependType = ModifyParticleSize_cls::kDependValue0;
    double mRange0 = 0.0;
    double mRange1 = 1.0;
    std::vector<float> mVTable;

private:
    bool mbValid = true;
    double GetSource(long long e, const float* size, const ModifySizeSource_cls& src) const;
};
