// Small numeric helpers shared by the clock and the key-frame code. Any thread.
#pragma once

class Misc_cls {
public:
    // Mode 0 rounds half up (floor(v + 0.5)), 1 is floor, 2 is ceil; any other mode gives 0.
    static double Round(double v, int mode);
    // True when b - e < a < b + e, both strict.
    static bool IsNearlySame(double a, double b, double e) { return b - e < a && a < b + e; }
};
