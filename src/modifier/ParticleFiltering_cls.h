// "ParticleFiltering_cls": hides particles given by a list of indices or IDs. A hidden particle
// keeps its place; only its alpha multiplier becomes 0. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class ParticleFiltering_cls : public ModifierBase_cls {
public:
    explicit ParticleFiltering_cls(const wxString& strName);

    ConfItemINT_cls mCFilteringType; // "FilteringType=": 0 show, 1 hide, 2 force showing
    // The values of "IndexType=": the list names particles by index or by ID.
    static constexpr int kIndexTypeIndex = 0;
    static constexpr int kIndexTypeID = 1;

    ConfItemINT_cls mCIndexType;       // "IndexType=": kIndexTypeIndex or kIndexTypeID
    ConfItemSTR_cls mCFilteringString; // "FilteringString=": blocks "a" or "a-b", "," between
};
