// The draw pass over the scene tree: every object's instances sorted by draw order and then far
// to near, each drawn through its kind's entry with its own matrix, then the same list again
// without depth test for the X-ray entries. GL thread only.
#pragma once

#include "PositionAndDirection_cls.h"

#include <vector>

class GLDrawStatus_cls;
class SceneObjCtrl_cls;
class SceneObjInstance_cls;

class SceneObjDraw_cls {
public:
    // The instances of the objects to be drawn, in draw order; the caller deletes them.
    static std::vector<SceneObjInstance_cls*> GetVNewPCSortedInstance(SceneObjCtrl_cls* pCtrl,
                                                                      const Position_cls& camera, double t);
    static void GLDrawObjects(SceneObjCtrl_cls* pCtrl, GLDrawStatus_cls& status,
                              const PositionAndDirection_cls& posDirNow,
                              const PositionAndDirection_cls& posDirNext);
    // Pushes the object's matrix at t and runs its kind's entry (the X-ray entry with bXray).
    static void GLDraw(SceneObjInstance_cls* pInstance, GLDrawStatus_cls& status, bool bXray);
};
