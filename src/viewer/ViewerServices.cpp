#include "ViewerServices.h"

#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Particle_cls.h"
#include "VolumeBox_cls.h"

#include <wx/log.h>

void RegisterViewerServices() {
    // The presets live as long as the program: every new colour curve starts from one.
    ClassProvider_cls::SetServiceMaker(
        SVC_ColorCurveProvider, [] { GpCColorCurveProvider = new ColorCurveProvider_cls(); },
        [] {
            delete GpCColorCurveProvider;
            GpCColorCurveProvider = nullptr;
        });

    // The scene makes, writes and reads colour curves through these; it knows them only as
    // attributes of the class word "ColorCurve_cls".
    SceneObj_cls::ColorCurveOps_cls curves;
    curves.mFuncMake = [](SceneObj_cls* pObj, const wxString& strName) -> Attribute_cls* {
        if (!DataViewerBase_cls::IsDataViewerClass(pObj->mStrClassWord)) {
            wxLogWarning("%s: a %s shows no data and takes no colour curve", pObj->GetStrName(),
                         pObj->mStrClassWord);
            return nullptr;
        }
        return DataViewerBase_cls::GetPNewColorCurve(pObj, strName);
    };
    curves.mFuncSerialize = [](Attribute_cls* p, wxString& strOut) {
        static_cast<ColorCurve_cls*>(p)->Serialize(strOut);
    };
    curves.mFuncReadStrLine = [](Attribute_cls* p, std::wistream& stream, const wxString& strHead,
                                 const wxString& strRest) {
        return static_cast<ColorCurve_cls*>(p)->ReadStrLine(stream, strHead, strRest, true);
    };
    SceneObj_cls::SetColorCurveOps(curves);

    SceneObj_cls::ClassOps_cls particle;
    particle.mFuncMake = [](ParentObj_cls* pParent, const wxString&) -> SceneObj_cls* {
        return new Particle_cls(pParent);
    };
    particle.mFuncSerializeExtra = [](SceneObj_cls* p, wxString& strOut) {
        static_cast<Particle_cls*>(p)->SerializeFormat(strOut);
    };
    particle.mFuncReadExtra = [](SceneObj_cls* p, std::wistream& stream, const wxString& strHead,
                                 const wxString& strRest) {
        return static_cast<Particle_cls*>(p)->ReadStrLineFormat(stream, strHead, strRest);
    };
    particle.mFuncSyncConfListTag = [](SceneObj_cls* p) { static_cast<Particle_cls*>(p)->SyncFormatTag(); };
    particle.mFuncUsedMemoryMB = [](SceneObj_cls* p) {
        return static_cast<double>(static_cast<Particle_cls*>(p)->GetTotalUsedMemoryMB());
    };
    particle.mFuncPrefetch = [](SceneObj_cls* p) { static_cast<Particle_cls*>(p)->PrefetchData(); };
    particle.mFuncRelease = [](SceneObj_cls* p) { static_cast<Particle_cls*>(p)->ReleaseMemoryData(); };
    particle.mFuncNewMaterial = [](SceneObj_cls* p, const wxString& strName) -> Attribute_cls* {
        return static_cast<Particle_cls*>(p)->GetPNewMaterial(strName);
    };
    particle.mFuncCanAddMaterial = [](SceneObj_cls* p) {
        return static_cast<Particle_cls*>(p)->CanAddMaterial("Material");
    };
    SceneObj_cls::SetClassOps("Particle_cls", particle);

    SceneObj_cls::ClassOps_cls volume;
    volume.mFuncMake = [](ParentObj_cls* pParent, const wxString&) -> SceneObj_cls* {
        return new VolumeBox_cls(pParent);
    };
    volume.mFuncUsedMemoryMB = [](SceneObj_cls* p) {
        return static_cast<double>(static_cast<VolumeBox_cls*>(p)->GetTotalUsedMemoryMB());
    };
    volume.mFuncPrefetch = [](SceneObj_cls* p) { static_cast<VolumeBox_cls*>(p)->PrefetchData(); };
    volume.mFuncRelease = [](SceneObj_cls* p) { static_cast<VolumeBox_cls*>(p)->ReleaseMemoryData(); };
    SceneObj_cls::SetClassOps("VolumeBox_cls", volume);
}
