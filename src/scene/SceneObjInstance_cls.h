// One draw of a scene object: the object, its distance from the camera and, for a copy made by
// an "ArrayCopy_cls" entry, the object that copies it. An instance holds a reference on its
// object for as long as it lives. Main thread only.
#pragma once

#include "PositionAndDirection_cls.h"

class SceneObj_cls;

class SceneObjInstance_cls {
public:
    SceneObjInstance_cls(SceneObj_cls* pObj, SceneObj_cls* pCopier, int copyIndex);
    ~SceneObjInstance_cls();
    SceneObjInstance_cls(const SceneObjInstance_cls&) = delete;
    SceneObjInstance_cls& operator=(const SceneObjInstance_cls&) = delete;

    // The distance of the object's global position at t from the camera.
    void SetDistance(const Position_cls& camera, double t);

    // The draw order first, decided at the first of the words "LightSource_cls",
    // "VolumeBox_cls", "Particle_cls", "Streamline_cls", "World_cls", "Text_cls" that exactly
    // one of the two bears; otherwise far before near. No class bears "Text_cls" (the text
    // object is "TextObj_cls"): that entry never fires, and this is deliberate.
    bool operator>(const SceneObjInstance_cls& other) const;
    // The sort key of the draw pass.
    static bool ComparePointer(const SceneObjInstance_cls* a, const SceneObjInstance_cls* b) {
        return *a > *b;
    }

    SceneObj_cls* mpCSceneObj = nullptr; // a reference is held
    double mDistance = 0.0;
    SceneObj_cls* mpCCopier = nullptr; // not owned
    int mCopyIndex = 0;
};
