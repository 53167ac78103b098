// Byte order helpers for file formats whose numbers are not in host order (df3 sizes).
#pragma once

class MyEndian {
public:
    // Reverses size bytes at data in place. Any thread.
    static void SwapByte(void* data, unsigned int size);
};
