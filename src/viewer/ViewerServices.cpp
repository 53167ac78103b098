#include "ViewerServices.h"

#include "Particle_cls.h"
#include "VolumeBox_cls.h"

void RegisterViewerServices() {
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
