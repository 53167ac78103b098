#include "SceneObjInstance_cls.h"

#include "SceneObj_cls.h"

SceneObjInstance_cls::SceneObjInstance_cls(SceneObj_cls* pObj, SceneObj_cls* pCopier, int copyIndex)
    : mpCSceneObj(pObj), mpCCopier(pCopier), mCopyIndex(copyIndex) {
    if (mpCSceneObj)
        mpCSceneObj->Refer();
}

SceneObjInstance_cls::~SceneObjInstance_cls() {
    if (mpCSceneObj)
        mpCSceneObj->ReferRelease();
}

void SceneObjInstance_cls::SetDistance(const Position_cls& camera, double t) {
    double pos[3];
    mpCSceneObj->GetPositionGlobal(t, pos);
    mDistance = camera.GetDistance(pos);
}

bool SceneObjInstance_cls::operator>(const SceneObjInstance_cls& other) const {
    static const char* const words[] = {"LightSource_cls", "VolumeBox_cls", "Particle_cls",
                                        "Streamline_cls",  "World_cls",     "Text_cls"};
    for (const char* p : words) {
        const bool a = mpCSceneObj->IsClassSameAs(p);
        const bool b = other.mpCSceneObj->IsClassSameAs(p);
        if (a != b)
            return mpCSceneObj->mDrawOrder > other.mpCSceneObj->mDrawOrder;
    }
    return mDistance > other.mDistance;
}
