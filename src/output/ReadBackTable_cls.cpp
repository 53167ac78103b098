#include "ReadBackTable_cls.h"

#include <epoxy/gl.h>

namespace {
constexpr int kSide = 256; // 256 x 256 texels: every half value once

// Each texel holds its own index in all four channels; every channel must convert alike.
template <class T> bool ReadChannels(GLuint texture, GLenum type, std::vector<T>& vOut) {
    std::vector<T> v(static_cast<size_t>(kSide) * kSide * 4);
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, type, v.data());
    vOut.resize(static_cast<size_t>(kSide) * kSide);
    for (size_t i = 0; i < vOut.size(); ++i) {
        vOut[i] = v[4 * i];
        if (v[4 * i + 1] != vOut[i] || v[4 * i + 2] != vOut[i] || v[4 * i + 3] != vOut[i])
            return false;
    }
    return true;
}

template <class T>
void ConvertInto(const std::vector<T>& vTable, const uint16_t* pRGBA, size_t pixels, int channels,
                 std::vector<T>& vOut) {
    vOut.resize(pixels * channels);
    T* pOut = vOut.data();
    if (channels == 4) {
        for (size_t i = 0; i < pixels * 4; ++i)
            pOut[i] = vTable[pRGBA[i]];
        return;
    }
    for (size_t i = 0; i < pixels; ++i, pRGBA += 4, pOut += 3) {
        pOut[0] = vTable[pRGBA[0]];
        pOut[1] = vTable[pRGBA[1]];
        pOut[2] = vTable[pRGBA[2]];
    }
}
} // namespace

std::shared_ptr<const ReadBackTable_cls> ReadBackTable_cls::MakeFromDriver() {
    std::vector<uint16_t> vHalf(static_cast<size_t>(kSide) * kSide * 4);
    for (size_t i = 0; i < vHalf.size(); ++i)
        vHalf[i] = static_cast<uint16_t>(i / 4);
    GLint previous = 0, unpack = 4;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &previous);
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &unpack);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA16F, kSide, kSide, 0, GL_RGBA, GL_HALF_FLOAT, vHalf.data());
    auto pTable = std::make_shared<ReadBackTable_cls>();
    const bool bOk = ReadChannels(texture, GL_UNSIGNED_BYTE, pTable->mV8) &&
                     ReadChannels(texture, GL_UNSIGNED_SHORT, pTable->mV16);
    glDeleteTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(previous));
    glPixelStorei(GL_UNPACK_ALIGNMENT, unpack);
    return bOk ? pTable : nullptr;
}

void ReadBackTable_cls::Convert(const uint16_t* pRGBA, size_t pixels, ImageFile_cls& out) const {
    if (out.mType == SampleType_enum::UInt16)
        ConvertInto(mV16, pRGBA, pixels, out.mChannels, out.mV16);
    else
        ConvertInto(mV8, pRGBA, pixels, out.mChannels, out.mV8);
}
