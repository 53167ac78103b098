#include "MouseNormalized_cls.h"

void MouseNormalized_cls::SetPixel(int px, int py, int width, int height) {
    mX = width > 0 ? (px + 0.5) / width : 0.5;
    mY = height > 0 ? 1.0 - (py + 0.5) / height : 0.5;
}
