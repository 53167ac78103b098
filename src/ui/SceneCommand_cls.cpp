#include "SceneCommand_cls.h"

#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
#include "RibbonUI_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"

namespace {

// A data viewer whose layer is not in this build is reported by the frame, not warned about.
bool AppendViewer(SceneObjCtrl_cls* pCtrl, const wxString& strKind) {
    const KindTable_cls::Entry_cls* pKind =
        KindTable_cls::Find(strKind + "_cls", KindTable_cls::GROUP_OBJECT);
    if (!pKind || !pKind->mFuncMake)
        return false;
    return !pCtrl->AppendSceneObjCommand(strKind, wxString()).empty();
}

} // namespace

bool SceneCommand_cls::ProcRibbonCommand(int id) {
    SceneObjCtrl_cls* pCtrl = GpCSceneObjCtrl;
    if (!pCtrl)
        return false;
    // The primitive kinds follow the tool ids: box, sphere, plane, cone, cylinder.
    if (id >= ID_RBN_BOX && id <= ID_RBN_CYLINDER)
        return !pCtrl->AppendPrimitiveCommand(id - ID_RBN_BOX, wxString()).empty();
    // The light kinds follow the tool ids: parallel, point, spot.
    if (id >= ID_RBN_PARALLEL_LIGHT && id <= ID_RBN_SPOT_LIGHT)
        return !pCtrl->AppendLightCommand(id - ID_RBN_PARALLEL_LIGHT, wxString()).empty();
    switch (id) {
    case ID_RBN_EMPTY:
        return !pCtrl->AppendPrimitiveCommand(5, wxString()).empty();
    case ID_RBN_CAMERA:
        return !pCtrl->AppendSceneObjCommand("Camera", wxString()).empty();
    case ID_RBN_WORLD:
        return !pCtrl->AppendSceneObjCommand("World", wxString()).empty();
    case ID_RBN_MESH_OBJ:
        return !pCtrl->AppendSceneObjCommand("MeshObj", wxString()).empty();
    case ID_RBN_TEXT_OBJ:
        return !pCtrl->AppendSceneObjCommand("TextObj", wxString()).empty();
    // The data viewers exist only when their layer has registered the kind.
    case ID_RBN_VOLUMEBOX:
        return AppendViewer(pCtrl, "VolumeBox");
    case ID_RBN_ISOSURFACE:
        return AppendViewer(pCtrl, "Isosurface");
    case ID_RBN_PARTICLE:
        return AppendViewer(pCtrl, "Particle");
    case ID_RBN_STREAMLINE:
        return AppendViewer(pCtrl, "Streamline");
    case ID_RBN_HEIGHTFIELD:
        return AppendViewer(pCtrl, "HeightField");
    case ID_RBN_DELETE:
        if (pCtrl->mVPCSelected.empty())
            return true; // nothing selected: nothing to do, and nothing missing
        pCtrl->DeleteItemsCommand();
        return true;
    default:
        return false;
    }
}
