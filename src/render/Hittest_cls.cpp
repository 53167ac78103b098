#include "Hittest_cls.h"

#include "FBO_cls.h"
#include "GLPerspective_cls.h"
#include "SceneObj_cls.h"

#include <epoxy/gl.h>

std::vector<wxString> Hittest_cls::msVStrReferTable;

Hittest_cls::Hittest_cls() : mVSelectBuffer(msSelectBufferSize, 0u) {}

Hittest_cls::~Hittest_cls() = default;

void Hittest_cls::ClearReferTable() {
    msVStrReferTable.clear();
}

void Hittest_cls::SetReferTable(const SceneObj_cls* pObj) {
    SetReferName(pObj ? pObj->GetStrName() : wxString());
}

wxString Hittest_cls::GetStrReferName(unsigned int name) {
    const size_t n = msVStrReferTable.size();
    if (name < n)
        return msVStrReferTable[name];
    if (name < 2 * n)
        return msVStrReferTable[name - n];
    return wxString();
}

long long Hittest_cls::GetNearestName(const unsigned int* pBuffer, int hits, int bufferSize) {
    long long nearest = -1;
    unsigned int zNearest = 0;
    int i = 0;
    for (int hit = 0; hit < hits; ++hit) {
        if (i + 3 > bufferSize)
            break;
        const unsigned int count = pBuffer[i];
        const unsigned int zMin = pBuffer[i + 1];
        if (count > 0 && i + 3 + static_cast<int>(count) <= bufferSize) {
            // The innermost name is the instance's own.
            const unsigned int name = pBuffer[i + 2 + count];
            if (nearest < 0 || zMin < zNearest) {
                nearest = name;
                zNearest = zMin;
            }
        }
        i += 3 + static_cast<int>(count);
    }
    return nearest;
}

void Hittest_cls::HitTestBegin(double centreX, double centreY, double size, double angle, double zNear,
                               double zFar, bool bSelect) {
    mbSelect = bSelect;
    mbActive = true;
    // A pick draws into the small buffer too: GL checks the bound framebuffer even in selection
    // mode, and a context with no window has no complete default one.
    if (!mpCFBO) {
        mpCFBO = std::make_unique<FBO_cls>(msBufferSize, msBufferSize, nullptr);
        mpCFBO->SetColorDepth(8);
    }
    mpCFBO->MakeFBO(true, false);
    mpCFBO->Begin(!bSelect, false);
    if (bSelect) {
        glSelectBuffer(static_cast<GLsizei>(mVSelectBuffer.size()), mVSelectBuffer.data());
        glRenderMode(GL_SELECT);
        glInitNames();
    }
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    GLPerspective_cls::SetFrustumPartial(1, 1, angle, zNear, zFar, centreX, centreY, size);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

wxString Hittest_cls::HitTestEnd() {
    if (!mbActive)
        return wxString();
    mbActive = false;
    if (!mbSelect) {
        mpCFBO->End();
        return wxString();
    }
    const GLint hits = glRenderMode(GL_RENDER);
    mpCFBO->End();
    // A negative count means the records overflowed the buffer: the ones that fit still count.
    const int count = hits < 0 ? msSelectBufferSize / 4 : hits;
    const long long name =
        GetNearestName(mVSelectBuffer.data(), count, static_cast<int>(mVSelectBuffer.size()));
    return name < 0 ? wxString() : GetStrReferName(static_cast<unsigned int>(name));
}

void Hittest_cls::Draw(double x, double y, double w, double h) const {
    if (mpCFBO && mpCFBO->GetWidth() > 0)
        mpCFBO->DrawOnScreen2D(x, y, w, h, true);
}
