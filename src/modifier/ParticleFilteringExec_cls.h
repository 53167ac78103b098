// The executor of "ParticleFiltering_cls": built from the entry's clone at the start of a
// frame's preparation; holds plain values only. Belongs to the thread that prepares the frame.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <wx/string.h>

class AttributeClone_cls;
class ArrayAndIndex_cls;

class ParticleFilteringExec_cls {
public:
    explicit ParticleFilteringExec_cls(AttributeClone_cls* pClone);

    // The particle IDs, one per particle, for IndexType= 1; not owned. Without them an ID list
    // matches by index.
    void SetIDs(const int64_t* pID) { mpID = pID; }
    // One flag per particle: true when its index (or ID) lies in a block of the list.
    std::unique_ptr<bool[]> GetNewPbFilterList(long long count) const;
    // alpha[i] is the multiplier of output element i, whose particle is order[i].mIndex; count
    // is the number of particles the flags cover. Does nothing when the entry is switched off.
    void CheckFiltering(float* alpha, ArrayAndIndex_cls* order, long long n, long long count) const;

    // The blocks of a filtering string, each as first and last number (equal for a single
    // number); unreadable blocks are skipped with a log line.
    static std::vector<std::pair<long long, long long>> ParseBlocks(wxString str);

private:
    bool mbValid = true;
    int mFilteringType = 0;
    int mIndexType = 0;
    std::vector<std::pair<long long, long long>> mVBlocks;
    const int64_t* mpID = nullptr;
};
