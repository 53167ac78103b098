#include "VBOBaseObject_cls.h"

#include "ShadowAdjacency_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <cmath>

VBOBaseObject_cls::VBOBaseObject_cls(const std::vector<float>& vInterleaved)
    : mBuffer(GLBuffer_cls::Make()), mVertexCount(static_cast<int>(vInterleaved.size() / kFloatsPerVertex)) {
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer.Get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vInterleaved.size() * sizeof(float)),
                 vInterleaved.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    const std::vector<uint32_t> vAdjacency =
        ShadowAdjacency_cls::GetVAdjacency(vInterleaved.data(), kFloatsPerVertex, mVertexCount);
    mAdjacencyCount = static_cast<int>(vAdjacency.size());
    if (mAdjacencyCount == 0)
        return;
    mAdjacency = GLBuffer_cls::Make();
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mAdjacency.Get());
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(vAdjacency.size() * sizeof(uint32_t)),
                 vAdjacency.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void VBOBaseObject_cls::DrawAdjacency() const {
    ShadowVolumeCtrl_cls::DrawAdjacency(mBuffer.Get(), kFloatsPerVertex * sizeof(float), mAdjacency.Get(),
                                        mAdjacencyCount);
}

void VBOBaseObject_cls::Draw() const {
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer.Get());
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    const GLsizei stride = kFloatsPerVertex * sizeof(float);
    glVertexPointer(3, GL_FLOAT, stride, nullptr);
    glNormalPointer(GL_FLOAT, stride, reinterpret_cast<const void*>(3 * sizeof(float)));
    glTexCoordPointer(2, GL_FLOAT, stride, reinterpret_cast<const void*>(6 * sizeof(float)));
    glDrawArrays(GL_TRIANGLES, 0, mVertexCount);
    glPopClientAttrib();
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void VBOBaseObject_cls::AddVertex(std::vector<float>& v, const float* p, const float* n, const float* uv) {
    float box[2];
    if (!uv) {
        const float ax = std::fabs(n[0]), ay = std::fabs(n[1]), az = std::fabs(n[2]);
        if (ax >= ay && ax >= az)
            box[0] = p[2] * (n[0] > 0.f ? -1.f : 1.f), box[1] = p[1];
        else if (ay >= az)
            box[0] = p[0], box[1] = -p[2] * (n[1] > 0.f ? 1.f : -1.f);
        else
            box[0] = p[0] * (n[2] > 0.f ? 1.f : -1.f), box[1] = p[1];
        box[0] = (box[0] + 1.f) * 0.5f;
        box[1] = (box[1] + 1.f) * 0.5f;
        uv = box;
    }
    v.insert(v.end(), {p[0], p[1], p[2], n[0], n[1], n[2], uv[0], uv[1]});
}

void VBOBaseObject_cls::AddTriangle(std::vector<float>& v, const float* a, const float* b, const float* c) {
    const float u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const float w[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    float n[3] = {u[1] * w[2] - u[2] * w[1], u[2] * w[0] - u[0] * w[2], u[0] * w[1] - u[1] * w[0]};
    const float len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (float& x : n)
        x = len > 0.f ? x / len : 0.f;
    AddVertex(v, a, n);
    AddVertex(v, b, n);
    AddVertex(v, c, n);
}

std::vector<float> VBOBaseObject_cls::GetVCube() {
    std::vector<float> v;
    // Each face as two counter-clockwise triangles seen from outside: axis, sign.
    for (int axis = 0; axis < 3; ++axis) {
        for (int sign = -1; sign <= 1; sign += 2) {
            const int a1 = (axis + 1) % 3;
            const int a2 = (axis + 2) % 3;
            float q[4][3];
            const float corner[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
            for (int i = 0; i < 4; ++i) {
                q[i][axis] = static_cast<float>(sign);
                q[i][a1] = corner[i][0] * sign;
                q[i][a2] = corner[i][1];
            }
            AddTriangle(v, q[0], q[1], q[2]);
            AddTriangle(v, q[0], q[2], q[3]);
        }
    }
    return v;
}
