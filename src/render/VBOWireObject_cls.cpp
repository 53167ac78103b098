#include "VBOWireObject_cls.h"

VBOWireObject_cls::VBOWireObject_cls(const std::vector<float>& vLines)
    : mBuffer(GLBuffer_cls::Make()), mVertexCount(static_cast<int>(vLines.size() / 3)) {
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vLines.size() * sizeof(float)), vLines.data(),
                 GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void VBOWireObject_cls::Draw() const {
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer.Get());
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 3 * sizeof(float), nullptr);
    glDrawArrays(GL_LINES, 0, mVertexCount);
    glPopClientAttrib();
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

std::vector<float> VBOWireObject_cls::GetVEmpty() {
    return {-1, 0, 0, 1, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, -1, 0, 0, 1};
}

std::vector<float> VBOWireObject_cls::GetVCamera() {
    const float w = 0.6f, h = 0.45f, z = -1.f;
    const float c[4][3] = {{-w, -h, z}, {w, -h, z}, {w, h, z}, {-w, h, z}};
    std::vector<float> v;
    for (int i = 0; i < 4; ++i) {
        v.insert(v.end(), {0.f, 0.f, 0.f, c[i][0], c[i][1], c[i][2]});
        const float* n = c[(i + 1) % 4];
        v.insert(v.end(), {c[i][0], c[i][1], c[i][2], n[0], n[1], n[2]});
    }
    const float t = h + 0.3f;
    v.insert(v.end(), {-w * 0.5f, h, z, 0.f, t, z, 0.f, t, z, w * 0.5f, h, z});
    return v;
}
