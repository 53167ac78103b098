// "Tracking_cls": turns its object towards another object. BaseDirection= picks the object's
// axis that points at the target (0 +X, 1 -X, 2 +Y, 3 -Y, 4 +Z, 5 -Z), BaseTopDirection= the
// axis kept as near the parent's same axis as possible (0 X, 1 Y, 2 Z), and "Influence" blends
// from the object's own direction (0) to the target (1). Main thread only.
#pragma once

#include "ModifierBase_cls.h"
#include "TensorMath_cls.h"

class SceneObj_cls;

class Tracking_cls : public ModifierBase_cls, public TensorMath_cls {
public:
    explicit Tracking_cls(const wxString& strName);

    // From SceneObj_cls::ProcModifier at "TransformRot": C is the object's own transform
    // (translation times rotation), P the parent matrix, t the time of the matrix. Changes the
    // rotation part of C; nothing when switched off, when the target is "None", unknown, the
    // object itself, or at the same place.
    void Execute(SceneObj_cls* pObj, double* C, const double* P, double t);

    ConfItemSTR_cls mCTarget;           // "Target="
    ConfItemINT_cls mCBaseDirection;    // "BaseDirection="
    ConfItemINT_cls mCBaseTopDirection; // "BaseTopDirection="

private:
    // Two objects that track each other would ask for each other's matrix without end.
    static inline int msDepth = 0;
};
