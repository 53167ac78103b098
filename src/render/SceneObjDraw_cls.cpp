#include "SceneObjDraw_cls.h"

#include "GLCheckError_cls.h"
#include "GLDrawStatus_cls.h"
#include "GLDrawTable_cls.h"
#include "GetPC_cls.h"
#include "Hittest_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObjInstance_cls.h"
#include "SceneObj_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <epoxy/gl.h>

#include <algorithm>

std::vector<SceneObjInstance_cls*>
SceneObjDraw_cls::GetVNewPCSortedInstance(SceneObjCtrl_cls* pCtrl, const Position_cls& camera, double t) {
    pCtrl->ClearProcessedMarkInInstanceLoop();
    pCtrl->InitializeStatusForDrawing();
    pCtrl->CheckStatusForDrawing();
    std::vector<SceneObj_cls*> vObjects;
    pCtrl->GetVPCList(vObjects);
    std::vector<SceneObjInstance_cls*> vInstances;
    for (SceneObj_cls* p : vObjects) {
        for (SceneObjInstance_cls* pInstance : p->GetVNewPCInstance()) {
            pInstance->SetDistance(camera, t);
            vInstances.push_back(pInstance);
        }
    }
    Hittest_cls::ClearReferTable();
    std::stable_sort(vInstances.begin(), vInstances.end(), &SceneObjInstance_cls::ComparePointer);
    return vInstances;
}

void SceneObjDraw_cls::GLDraw(SceneObjInstance_cls* pInstance, GLDrawStatus_cls& status, bool bXray) {
    SceneObj_cls* p = pInstance->mpCSceneObj;
    if (!p->mbToBeDrawn)
        return;
    const GLDrawTable_cls::Entry_cls* pEntry = GLDrawTable_cls::GetPCEntry(p->mStrClassWord);
    GLDrawTable_cls::DrawFunc func =
        pEntry ? (bXray ? pEntry->mFuncGLDrawXray : pEntry->mFuncGLDraw) : nullptr;
    if (GpCShadowVolumeCtrl && pEntry) {
        // The volume phase draws volumes only; the shadowed area and the later steps draw what
        // light shades.
        const ShadowVolumeCtrl_cls& shadow = *GpCShadowVolumeCtrl;
        if (shadow.GetPhase() == 1)
            func = bXray ? nullptr : pEntry->mFuncGLDrawSV;
        else if ((shadow.GetPhase() == 2 || shadow.IsLightOnlyStep()) && (bXray || !pEntry->mbLit))
            func = nullptr;
    }
    if (!func)
        return;
    // A copy of an array draws at the object's matrix moved by its own offset.
    double offset[3];
    const bool bCopy =
        pInstance->mCopyIndex > 0 && p->GetCopyOffset(pInstance->mCopyIndex, status.mTime, offset);
    if (pInstance->mCopyIndex > 0 && !bCopy)
        return;
    double m[16];
    p->GetMatrix16(m, status.mTime, bCopy ? offset : nullptr);
    glPushMatrix();
    glMultMatrixd(m);
    func(p, status);
    glPopMatrix();
}

void SceneObjDraw_cls::GLDrawObjects(SceneObjCtrl_cls* pCtrl, GLDrawStatus_cls& status,
                                     const PositionAndDirection_cls& posDirNow,
                                     const PositionAndDirection_cls& posDirNext) {
    // Both poses go to the particle objects' own sort.
    status.mPosDirNow = posDirNow;
    status.mPosDirNext = posDirNext;
    std::vector<SceneObjInstance_cls*> vInstances = GetVNewPCSortedInstance(pCtrl, posDirNow, status.mTime);
    if (GpCShadowVolumeCtrl)
        GpCShadowVolumeCtrl->SetLightModelForStep();
    GLCheckError_cls::CheckGLError("SceneObjCtrl::GLDrawBegin");
    const GLuint count = static_cast<GLuint>(vInstances.size());
    for (GLuint i = 0; i < count; ++i) {
        status.mSelectStatus = pCtrl->GetStatus(vInstances[i]->mpCSceneObj);
        glPushName(i);
        GLDraw(vInstances[i], status, false);
        glPopName();
        Hittest_cls::SetReferTable(vInstances[i]->mpCSceneObj);
    }
    GLCheckError_cls::CheckGLError("SceneObjCtrl::GLDrawEnd_XRayBegin");
    glDisable(GL_DEPTH_TEST);
    for (GLuint i = 0; i < count; ++i) {
        status.mSelectStatus = pCtrl->GetStatus(vInstances[i]->mpCSceneObj);
        glPushName(count + i);
        GLDraw(vInstances[i], status, true);
        glPopName();
    }
    glEnable(GL_DEPTH_TEST);
    GLCheckError_cls::CheckGLError("SceneObjCtrl::GLDrawEnd_XRayEnd");
    for (SceneObjInstance_cls* p : vInstances)
        delete p;
}
