#include "MyEndian.h"

#include <utility>

void MyEndian::SwapByte(void* data, unsigned int size) {
    unsigned char* p = static_cast<unsigned char*>(data);
    for (unsigned int i = 0, j = size; i + 1 < j; ++i, --j)
        std::swap(p[i], p[j - 1]);
}
