// A primitive shape: box, sphere, plane, cone, cylinder, or the empty (a wire cross that only
// carries a transform), item "PrimitiveType=". Its size is its scale; it has a material.
// Main thread only.
#pragma once

#include "SceneObj_cls.h"

class Primitive_cls : public SceneObj_cls {
public:
    // strVariant is a primitive name ("Box"); anything else ("ANY") keeps a box.
    Primitive_cls(ParentObj_cls* pParent, const wxString& strVariant);

    int GetPrimitiveType() const { return static_cast<int>(mCPrimitiveType.GetBodyINT()); }
    wxString GetStrPrimitiveType() const;

    ConfItemINT_cls mCPrimitiveType;
    ConfItemBOOL_cls mCValid;
    ConfItemINT_cls mCSegments; // around the axis of sphere, cone and cylinder
};
