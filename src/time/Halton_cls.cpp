#include "Halton_cls.h"

double Halton_cls::RadicalInverse(int i, int base) {
    double result = 0.0;
    double digitWeight = 1.0 / base;
    while (i > 0) {
        result += (i % base) * digitWeight;
        i /= base;
        digitWeight /= base;
    }
    return result;
}

Halton_cls::Halton_cls() {
    int kept = 0;
    for (int i = 1; kept < msTableSize; ++i) {
        const double x = RadicalInverse(i, 7) * 2.0 - 1.0;
        const double y = RadicalInverse(i, 3) * 2.0 - 1.0;
        const double z = RadicalInverse(i, 5) * 2.0 - 1.0;
        mX[kept] = static_cast<float>(x);
        mY[kept] = static_cast<float>(y);
        mZ[kept] = static_cast<float>(z);
        // A point outside the ball stays in the slot until the next one overwrites it.
        if (x * x + y * y + z * z <= 1.0)
            ++kept;
    }
}
