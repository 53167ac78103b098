#include "TensorMath_cls.h"

#include <cmath>
#include <cstring>
#include <utility>

void TensorMath_cls::SetIdentity(double* m) {
    for (int i = 0; i < 16; ++i)
        m[i] = (i % 5 == 0) ? 1.0 : 0.0;
}

void TensorMath_cls::Copy(double* dst, const double* src) {
    std::memmove(dst, src, sizeof(double) * 16);
}

void TensorMath_cls::Multiply(double* out, const double* a, const double* b) {
    double r[16];
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) {
            double s = 0.0;
            for (int k = 0; k < 4; ++k)
                s += a[k * 4 + row] * b[col * 4 + k];
            r[col * 4 + row] = s;
        }
    Copy(out, r);
}

void TensorMath_cls::Translate(double* m, double x, double y, double z) {
    double t[16];
    SetIdentity(t);
    t[12] = x;
    t[13] = y;
    t[14] = z;
    Multiply(m, m, t);
}

void TensorMath_cls::Scale(double* m, double x, double y, double z) {
    double s[16];
    SetIdentity(s);
    s[0] = x;
    s[5] = y;
    s[10] = z;
    Multiply(m, m, s);
}

namespace {

// Multiplies m by a rotation in the plane of axes i and j (column-major, right-handed).
void RotatePlane(double* m, double rad, int i, int j) {
    double r[16];
    TensorMath_cls::SetIdentity(r);
    const double c = std::cos(rad), s = std::sin(rad);
    r[i * 4 + i] = c;
    r[j * 4 + j] = c;
    r[i * 4 + j] = s;
    r[j * 4 + i] = -s;
    TensorMath_cls::Multiply(m, m, r);
}

} // namespace

void TensorMath_cls::RotateX(double* m, double rad) {
    RotatePlane(m, rad, 1, 2);
}

void TensorMath_cls::RotateY(double* m, double rad) {
    RotatePlane(m, rad, 2, 0);
}

void TensorMath_cls::RotateZ(double* m, double rad) {
    RotatePlane(m, rad, 0, 1);
}

void TensorMath_cls::TransformPoint(const double* m, const double* p, double* out) {
    double r[3];
    for (int row = 0; row < 3; ++row)
        r[row] = m[row] * p[0] + m[4 + row] * p[1] + m[8 + row] * p[2] + m[12 + row];
    out[0] = r[0];
    out[1] = r[1];
    out[2] = r[2];
}

void TensorMath_cls::TransformVector(const double* m, const double* v, double* out) {
    double r[3];
    for (int row = 0; row < 3; ++row)
        r[row] = m[row] * v[0] + m[4 + row] * v[1] + m[8 + row] * v[2];
    out[0] = r[0];
    out[1] = r[1];
    out[2] = r[2];
}

bool TensorMath_cls::Invert(const double* m, double* out) {
    // Gauss-Jordan with partial pivoting on a working copy.
    double a[4][8];
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 4; ++col) {
            a[row][col] = m[col * 4 + row];
            a[row][col + 4] = (row == col) ? 1.0 : 0.0;
        }
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int row = col + 1; row < 4; ++row)
            if (std::fabs(a[row][col]) > std::fabs(a[pivot][col]))
                pivot = row;
        if (std::fabs(a[pivot][col]) < 1e-300)
            return false;
        if (pivot != col)
            for (int k = 0; k < 8; ++k)
                std::swap(a[pivot][k], a[col][k]);
        const double inv = 1.0 / a[col][col];
        for (int k = 0; k < 8; ++k)
            a[col][k] *= inv;
        for (int row = 0; row < 4; ++row) {
            if (row == col)
                continue;
            const double f = a[row][col];
            if (f == 0.0)
                continue;
            for (int k = 0; k < 8; ++k)
                a[row][k] -= f * a[col][k];
        }
    }
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 4; ++col)
            out[col * 4 + row] = a[row][col + 4];
    return true;
}
