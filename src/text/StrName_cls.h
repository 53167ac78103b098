// Holds the name of a thing as a configuration item, so the name is also the Name= key of
// the owner's list.
#pragma once

#include "ConfItem_cls.h"

class StrName_cls {
public:
    virtual ~StrName_cls() = default;
    wxString GetStrName() const { return mCStrName.GetBodySTR(); }

    ConfItemSTR_cls mCStrName;
};
