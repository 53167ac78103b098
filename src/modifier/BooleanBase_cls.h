// The shared layer of the two Boolean kinds (particles and volumes): the type, the shape, the
// named object and the box given by three Min/Max groups. Main thread only.
#pragma once

#include "ModifierBase_cls.h"
#include "TensorMath_cls.h"

class SceneObj_cls;

class BooleanBase_cls : public ModifierBase_cls, public TensorMath_cls {
public:
    BooleanBase_cls(const wxString& strClass, const wxString& strName, const wxString& strTag);

    // The object named by BooleanObject= when it is a "MeshObj_cls" or "Primitive_cls"; null
    // for "None" or anything else.
    SceneObj_cls* SelectObject();
    // The inverse of the named object's matrix at t; false (identity) without an object.
    bool GetMatrix16TgtInv(double* out, double t);
    // Part of the stamp of the viewer: the named object's transform changes the result.
    wxString GetStrProcCounterForTgtObj(double t);

    ConfItemINT_cls mCBooleanType; // "BooleanType=": 0 "Intersect", 1 "Diffierence", 2 "Add"
    // The values of "BooleanShape=".
    static constexpr int kShapeBox = 0;
    static constexpr int kShapeSphere = 1;
    static constexpr int kShapeObject = 2;

    ConfItemINT_cls mCBooleanShape;  // "BooleanShape=": kShapeBox, kShapeSphere or kShapeObject
    ConfItemSTR_cls mCBooleanObject; // "BooleanObject="
};

class ParticleBoolean_cls : public BooleanBase_cls {
public:
    explicit ParticleBoolean_cls(const wxString& strName);
};

// "VolumeBoolean_cls": the data process of a volume that clears voxels by the same shapes, in the
// box's own space (-0.5 to 0.5 on each axis).
class VolumeBoolean_cls : public BooleanBase_cls {
public:
    explicit VolumeBoolean_cls(const wxString& strName);
};
