// A particle's position in its snap and its ID, both 64 bits, ordered by ID: the sort key of
// SortDataByID.
#pragma once

class LongLongArrayAndIndex_cls {
public:
    long long mIndex;
    long long mID;

    bool operator<(const LongLongArrayAndIndex_cls& other) const { return mID < other.mID; }
};
