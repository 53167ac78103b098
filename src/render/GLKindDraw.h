// How a kind whose drawing keeps GL resources per view enters the kind table: its draw entry
// (SLOT_DRAW) finds the view's holder of the kind (SLOT_GL_RESOURCES, made on first use) through
// the draw status and lets it draw the object. Draw_T has GLDraw(Obj_T&, GLDrawStatus_cls&).
// Main thread, while registering.
#pragma once

#include "GLDrawStatus_cls.h"
#include "GLDrawTable_cls.h"
#include "GLKindResources_cls.h"
#include "SceneObj_cls.h"

#include <memory>

// A kind that is lit and casts shadows (bCasts) also has GLDrawSV(Obj_T&, GLDrawStatus_cls&),
// the volume phase of a shadow step.
template <class Draw_T, class Obj_T, bool bCasts = false>
void RegisterGLKindDraw(const wxString& strClassWord) {
    const GLDrawTable_cls::DrawFunc draw = [](SceneObj_cls* pObj, GLDrawStatus_cls& status) {
        if (!status.mpCKindResources)
            return;
        if (auto* p = status.mpCKindResources->GetPC<Draw_T>(pObj->mStrClassWord))
            p->GLDraw(*static_cast<Obj_T*>(pObj), status);
    };
    GLDrawTable_cls::Entry_cls entry{draw, nullptr};
    if constexpr (bCasts) {
        entry.mFuncGLDrawSV = [](SceneObj_cls* pObj, GLDrawStatus_cls& status) {
            if (!status.mpCKindResources)
                return;
            if (auto* p = status.mpCKindResources->GetPC<Draw_T>(pObj->mStrClassWord))
                p->GLDrawSV(*static_cast<Obj_T*>(pObj), status);
        };
        entry.mbLit = true;
    }
    GLDrawTable_cls::Register(strClassWord, entry);
    GLKindResource_cls::Register(strClassWord, [] { return std::make_unique<Draw_T>(); });
}
