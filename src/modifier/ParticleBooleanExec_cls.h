// The executor of "ParticleBoolean_cls": the shape as one matrix into a unit space, built from
// the entry's clone at the frame's time. Belongs to the thread that prepares the frame.
#pragma once

#include "TensorMath_cls.h"

class AttributeClone_cls;

class ParticleBooleanExec_cls : public TensorMath_cls {
public:
    // nt is the normalised time at which the Min/Max groups are read. For the object shape the
    // caller passes the matrix from the viewer's space into the object's (null: no effect).
    ParticleBooleanExec_cls(AttributeClone_cls* pClone, double nt, const double* pObjectMatrix = nullptr);

    // Whether a point of the viewer's space lies in the shape: the box is taken to [-1, 1] on
    // each axis, the sphere (the ellipsoid inside the box) to the unit sphere, an object to the
    // cube [-1, 1] of its own space.
    bool IsInside(const float* xyz) const;
    // alpha and xyz are per element (3 floats each). "Intersect": alpha 0 outside;
    // "Diffierence": alpha 0 inside; "Add": alpha 1 inside. Returns at once when switched off or
    // when the shape is missing. background is accepted for the thread scheme; the pass runs on
    // the calling thread.
    void CheckBoolean(float* alpha, float (*xyz)[3], long long n, bool background) const;

    bool mbValid = true;
    int mType = 0;
    int mShape = 0;
    double mMatrix[16]; // viewer space to unit shape space

private:
    bool mbHasShape = true;
};
