#include "ModifyParticleSizeExec_cls.h"

#include "AttributeClone_cls.h"
#include "ModifierBase_cls.h"
#include "ViewerClone_cls.h"

#include <algorithm>
#include <cmath>

ModifyParticleSizeExec_cls::ModifyParticleSizeExec_cls(AttributeClone_cls* pClone, ViewerClone_cls* pViewer,
                                                       double nt) {
    if (!pClone) {
        mbValid = false;
        return;
    }
    mbValid = ModifierBase_cls::IsCloneValid(*pClone);
    auto getInt = [pClone](const char* key, int def) {
        ConfItem_cls* p = pClone->GetPCItem(key);
        return p ? static_cast<int>(p->GetBodyINT()) : def;
    };
    mTargetType = getInt("TargetType=", 0);
    mDependType = getInt("DependType=", ModifyParticleSize_cls::kDependValue0);
    if (!mbValid || !pViewer)
        return;
    const int index = getInt("ColorCurveIndex=", 0);
    if (index < 0 || index >= pViewer->GetNumAttribute("ColorCurve_cls"))
        return;
    mVTable = MakeTable(pViewer->GetPCAttribCloneFromAttribName("ColorCurve_cls", index),
                        getInt("ChannelType=", 3), nt, mRange0, mRange1);
}

std::vector<float> ModifyParticleSizeExec_cls::MakeTable(AttributeClone_cls* pCurve, int channel, double nt,
                                                         double& r0, double& r1) {
    r0 = 0.0;
    r1 = 1.0;
    if (!pCurve)
        return {};
    if (ParamGroup_cls* pRange = pCurve->GetPCParamGroup("Range")) {
        std::vector<double> v = pRange->GetVInterpolatedValue(nt, true, nullptr, false);
        if (v.size() >= 2) {
            r0 = v[0];
            r1 = v[1];
        }
    }
    ParamGroup_cls* pGroup = pCurve->GetPCParamGroup(pCurve->GetStrName());
    if (!pGroup)
        return {};
    std::vector<float> table(kTableSize);
    for (int j = 0; j < kTableSize; ++j) {
        std::vector<double> c =
            pGroup->GetVInterpolatedValue(j / double(kTableSize - 1), false, nullptr, false);
        c.resize(4, 0.0);
        double value = 0.0;
        switch (channel) {
        case 0:
        case 1:
        case 2:
            value = c[channel];
            break;
        case 3: // "Luminance"
            value = 0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2];
            break;
        case 4: // "Brightness"
            value = std::max({c[0], c[1], c[2]});
            break;
        default:
            value = c[3];
            break;
        }
        table[j] = static_cast<float>(value);
    }
    return table;
}

int ModifyParticleSizeExec_cls::GetValueColumn() const {
    const int column = mDependType - ModifyParticleSize_cls::kDependValue0;
    return column >= 0 && column < ModifyParticleSize_cls::kValueColumns ? column : -1;
}

double ModifyParticleSizeExec_cls::GetSource(long long e, const float* size,
                                             const ModifySizeSource_cls& src) const {
    switch (mDependType) {
    case ModifyParticleSize_cls::kDependIndex:
        return static_cast<double>(e);
    case ModifyParticleSize_cls::kDependID:
        return src.mpID ? static_cast<double>(src.mpID[e]) : 0.0;
    case ModifyParticleSize_cls::kDependSize:
        return size[e];
    default: {
        const int column = GetValueColumn();
        return column >= 0 && src.mpValue[column] ? src.mpValue[column][e] : 0.0;
    }
    }
}

void ModifyParticleSizeExec_cls::Execute(const float* alpha, float* size, const unsigned char* type,
                                         const ArrayAndIndex_cls* order, long long n,
                                         const ModifySizeSource_cls& src) const {
    if (!IsReady() || !alpha || !size || !order)
        return;
    double width = mRange1 - mRange0;
    if (width == 0.0)
        width = 1.0;
    for (long long i = 0; i < n; ++i) {
        const long long e = order[i].mIndex;
        if (alpha[e] == 0.0f)
            continue;
        if (mTargetType > 0 && (!type || type[e] != mTargetType - 1))
            continue;
        const double x = (GetSource(e, size, src) - mRange0) / width;
        int k = 0;
        if (x > 1.0)
            k = kTableSize - 1;
        else if (x >= 0.0)
            k = static_cast<int>(x * (kTableSize - 1));
        size[e] *= mVTable[k];
    }
}
