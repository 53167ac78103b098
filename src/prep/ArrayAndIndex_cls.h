// A particle number with its sort key; arrays of these are sorted by key to give a draw order.
#pragma once

class ArrayAndIndex_cls {
public:
    int mIndex;   // particle number
    float mValue; // sort key

    bool operator<(const ArrayAndIndex_cls& other) const { return mValue < other.mValue; }
};
