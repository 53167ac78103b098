#include "ViewerServices.h"

#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "HeightField_cls.h"
#include "Isosurface_cls.h"
#include "KindTable_cls.h"
#include "OwnedService_cls.h"
#include "Particle_cls.h"
#include "Streamline_cls.h"
#include "VolumeBox_cls.h"

#include <wx/log.h>

namespace {

// A data viewer: made on its parent, and its data's memory measured, read ahead and released.
template <class Kind_T> KindTable_cls::Entry_cls& RegisterViewer(const char* pClassWord) {
    KindTable_cls::Entry_cls& entry = KindTable_cls::Register(pClassWord, KindTable_cls::GROUP_OBJECT);
    entry.mFuncMake = [](ParentObj_cls* pParent, const wxString&) -> SceneObj_cls* {
        return new Kind_T(pParent);
    };
    entry.mFuncUsedMemoryMB = [](SceneObj_cls* p) {
        return static_cast<double>(static_cast<Kind_T*>(p)->GetTotalUsedMemoryMB());
    };
    entry.mFuncPrefetch = [](SceneObj_cls* p) { static_cast<Kind_T*>(p)->PrefetchData(); };
    entry.mFuncRelease = [](SceneObj_cls* p) { static_cast<Kind_T*>(p)->ReleaseMemoryData(); };
    entry.mFuncDataSequence = [](SceneObj_cls* p) -> DataSequence_cls* {
        return &static_cast<Kind_T*>(p)->mCSequence;
    };
    return entry;
}

// A viewer with two prepared sets: its frame preparation goes through the kind table too.
template <class Kind_T> KindTable_cls::Entry_cls& RegisterTwoSetViewer(const char* pClassWord) {
    KindTable_cls::Entry_cls& entry = RegisterViewer<Kind_T>(pClassWord);
    entry.SetSlot(KindTable_cls::SLOT_PREPARE, DataViewerBase_cls::PrepareDraw_fn([](SceneObj_cls* p, int c) {
                      return static_cast<Kind_T*>(p)->PrepareDraw(c);
                  }));
    return entry;
}

} // namespace

void RegisterViewerServices() {
    // The presets live as long as the program: every new colour curve starts from one.
    OwnedService_cls::Register(SVC_ColorCurveProvider, GpCColorCurveProvider);

    // The scene makes, writes and reads colour curves through these; it knows them only as
    // attributes of the class word "ColorCurve_cls".
    KindTable_cls::Entry_cls& curve =
        KindTable_cls::Register("ColorCurve_cls", KindTable_cls::GROUP_COLOR_CURVE);
    curve.mFuncMakeAttribute = [](SceneObj_cls* pObj, const wxString& strName) -> Attribute_cls* {
        if (!DataViewerBase_cls::IsDataViewerClass(pObj->mStrClassWord)) {
            wxLogWarning("%s: a %s shows no data and takes no colour curve", pObj->GetStrName(),
                         pObj->mStrClassWord);
            return nullptr;
        }
        return DataViewerBase_cls::GetPNewColorCurve(pObj, strName);
    };
    curve.mFuncSerialize = [](Attribute_cls* p, wxString& strOut) {
        static_cast<ColorCurve_cls*>(p)->Serialize(strOut);
    };
    curve.mFuncReadStrLine = [](Attribute_cls* p, std::wistream& stream, const wxString& strHead,
                                const wxString& strRest) {
        return static_cast<ColorCurve_cls*>(p)->ReadStrLine(stream, strHead, strRest, true);
    };

    KindTable_cls::Entry_cls& particle = RegisterViewer<Particle_cls>("Particle_cls");
    particle.mFuncSerializeExtra = [](SceneObj_cls* p, wxString& strOut) {
        static_cast<Particle_cls*>(p)->SerializeFormat(strOut);
    };
    particle.mFuncReadExtra = [](SceneObj_cls* p, std::wistream& stream, const wxString& strHead,
                                 const wxString& strRest) {
        return static_cast<Particle_cls*>(p)->ReadStrLineFormat(stream, strHead, strRest);
    };
    particle.mFuncSyncConfListTag = [](SceneObj_cls* p) { static_cast<Particle_cls*>(p)->SyncFormatTag(); };
    particle.mFuncNewMaterial = [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
        return static_cast<Particle_cls*>(p)->GetPNewMaterial(strName);
    };
    particle.mFuncCanAddMaterial = [](SceneObj_cls* p) {
        return static_cast<Particle_cls*>(p)->CanAddMaterial("Material");
    };
    RegisterTwoSetViewer<VolumeBox_cls>("VolumeBox_cls");
    RegisterTwoSetViewer<Isosurface_cls>("Isosurface_cls");
    RegisterTwoSetViewer<HeightField_cls>("HeightField_cls");
    // The memory pass counts stream lines but never evicts them: the release road of the scene
    // reaches only particles and volumes (and the isosurface and height field here). Deliberate.
    RegisterTwoSetViewer<Streamline_cls>("Streamline_cls").mFuncRelease = nullptr;
}
