// A camera pose: where it stands and where it looks. Plain values; any thread.
#pragma once

class Position_cls {
public:
    double mPos[3] = {0.0, 0.0, 0.0};

    double GetDistance(const double* p) const;
    // True when every coordinate differs by less than e.
    static bool IsSimilarPosition(const Position_cls& a, const Position_cls& b, double e);
};

// Three unit vectors: the viewing direction (target), the up vector (top) and the right vector.
class Direction_cls {
public:
    double mTgt[3] = {0.0, 0.0, -1.0};
    double mTop[3] = {0.0, 1.0, 0.0};
    double mRight[3] = {1.0, 0.0, 0.0};

    // Makes target and top unit length and orthogonal, and right their cross product.
    void Normalize();
    // Turns the frame about its own top (yaw), right (pitch) and target (roll) axes, in
    // degrees, in this order.
    void RotateYPR(double yaw, double pitch, double roll);
    // True when the targets of a and b differ by an angle whose cosine is at least cosLimit.
    static bool IsSimilarTgtDirection(const Direction_cls& a, const Direction_cls& b, double cosLimit);
};

class PositionAndDirection_cls : public Position_cls, public Direction_cls {
public:
    // The pose of an object whose matrix is m16 (column major): it stands at the origin of its
    // space and looks along its -z with +y up.
    void SetFromMatrix(const double* m16);
};
