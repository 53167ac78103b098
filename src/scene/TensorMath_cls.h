// 4 x 4 matrices of doubles in the column-major order of OpenGL, as plain arrays of 16. A mixin
// of static operations; holds no data. Any thread.
#pragma once

class TensorMath_cls {
public:
    static void SetIdentity(double* m);
    static void Copy(double* dst, const double* src);
    // out = a * b; out may be a or b.
    static void Multiply(double* out, const double* a, const double* b);
    // Each multiplies m from the right, as the fixed-pipeline calls do: m = m * X.
    static void Translate(double* m, double x, double y, double z);
    static void Scale(double* m, double x, double y, double z);
    // Angles in radians.
    static void RotateX(double* m, double rad);
    static void RotateY(double* m, double rad);
    static void RotateZ(double* m, double rad);
    // out = m * (p, 1); out may be p.
    static void TransformPoint(const double* m, const double* p, double* out);
    // out = the upper 3 x 3 of m times v: a direction, no translation.
    static void TransformVector(const double* m, const double* v, double* out);
    // False for a singular matrix; out is then left alone.
    static bool Invert(const double* m, double* out);
};
