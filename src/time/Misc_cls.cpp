#include "Misc_cls.h"

#include <cmath>

double Misc_cls::Round(double v, int mode) {
    switch (mode) {
    case 0:
        return std::floor(v + 0.5);
    case 1:
        return std::floor(v);
    case 2:
        return std::ceil(v);
    default:
        return 0.0;
    }
}
