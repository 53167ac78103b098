// Three tables of 256 points inside the unit ball: the radical inverses of 1, 2, 3, ... in the
// bases 7, 3 and 5, mapped to -1..1, keeping a point only when x² + y² + z² <= 1 (the next
// point takes the place of a rejected one). Ensemble steps read the lens offset of focal blur
// from them, the light code its soft shadow samples. Built once; any thread may read.
#pragma once

class Halton_cls {
public:
    static constexpr int msTableSize = 256;

    Halton_cls();

    // Entry i modulo 256; a negative i counts from the end.
    float GetX(int i) const { return mX[Wrap(i)]; }
    float GetY(int i) const { return mY[Wrap(i)]; }
    float GetZ(int i) const { return mZ[Wrap(i)]; }

    // The radical inverse of i in the base: the digits of i mirrored behind the point.
    static double RadicalInverse(int i, int base);

private:
    static int Wrap(int i) { return ((i % msTableSize) + msTableSize) % msTableSize; }

    float mX[msTableSize];
    float mY[msTableSize];
    float mZ[msTableSize];
};
