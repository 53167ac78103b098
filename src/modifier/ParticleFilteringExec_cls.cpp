#include "ParticleFilteringExec_cls.h"

#include "ArrayAndIndex_cls.h"
#include "AttributeClone_cls.h"
#include "ModifierBase_cls.h"
#include "ParserNumeric_cls.h"
#include "ParticleFiltering_cls.h"

#include <wx/log.h>

ParticleFilteringExec_cls::ParticleFilteringExec_cls(AttributeClone_cls* pClone) {
    if (!pClone)
        return;
    mbValid = ModifierBase_cls::IsCloneValid(*pClone);
    if (ConfItem_cls* p = pClone->GetPCItem("FilteringType="))
        mFilteringType = static_cast<int>(p->GetBodyINT());
    if (ConfItem_cls* p = pClone->GetPCItem("IndexType="))
        mIndexType = static_cast<int>(p->GetBodyINT());
    if (ConfItem_cls* p = pClone->GetPCItem("FilteringString="))
        mVBlocks = ParseBlocks(p->GetBodySTR());
}

std::vector<std::pair<long long, long long>> ParticleFilteringExec_cls::ParseBlocks(wxString str) {
    std::vector<std::pair<long long, long long>> v;
    while (!str.empty()) {
        wxString strBlock = ParserNumeric_cls::GetStringBlock(&str);
        strBlock.Trim().Trim(false);
        if (strBlock.empty())
            continue;
        wxString strIni = ParserNumeric_cls::GetStrIni(strBlock);
        wxString strFin = ParserNumeric_cls::GetStrFin(strBlock);
        strIni.Trim().Trim(false);
        strFin.Trim().Trim(false);
        long long a = 0, b = 0;
        if (!strIni.ToLongLong(&a)) {
            wxLogMessage("ParticleFiltering: block \"%s\" is not a number and is skipped", strBlock);
            continue;
        }
        if (strFin == "-" || strFin.empty())
            b = a;
        else if (!strFin.ToLongLong(&b)) {
            wxLogMessage("ParticleFiltering: block \"%s\" is not a range and is skipped", strBlock);
            continue;
        }
        if (b < a)
            std::swap(a, b);
        v.emplace_back(a, b);
    }
    return v;
}

std::unique_ptr<bool[]> ParticleFilteringExec_cls::GetNewPbFilterList(long long count) const {
    if (count <= 0)
        return nullptr;
    std::unique_ptr<bool[]> pb(new bool[count]());
    const bool byID = mIndexType == ParticleFiltering_cls::kIndexTypeID && mpID;
    if (byID) {
        for (long long e = 0; e < count; ++e)
            for (const auto& r : mVBlocks)
                if (mpID[e] >= r.first && mpID[e] <= r.second) {
                    pb[e] = true;
                    break;
                }
    } else {
        for (const auto& r : mVBlocks)
            for (long long e = std::max(0LL, r.first); e <= r.second && e < count; ++e)
                pb[e] = true;
    }
    return pb;
}

void ParticleFilteringExec_cls::CheckFiltering(float* alpha, ArrayAndIndex_cls* order, long long n,
                                               long long count) const {
    if (!mbValid || !alpha || !order)
        return;
    std::unique_ptr<bool[]> pb = GetNewPbFilterList(count);
    for (long long i = 0; i < n; ++i) {
        const long long e = order[i].mIndex;
        const bool within = e >= 0 && e < count;
        const bool flag = within && pb[e];
        switch (mFilteringType) {
        case 0:
            alpha[i] *= flag ? 1.0f : 0.0f; // beyond the list: hidden
            break;
        case 1:
            if (within)
                alpha[i] *= flag ? 0.0f : 1.0f;
            break;
        case 2:
            if (flag)
                alpha[i] = 1.0f;
            break;
        default:
            break;
        }
    }
}
