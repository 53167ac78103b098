#include "DataMemoryCtrl_cls.h"

#include "ClassProvider_cls.h"
#include "ParentObj_cls.h"
#include "Preference_cls.h"

DataMemoryCtrl_cls::Action_enum DataMemoryCtrl_cls::ProcIdlePass(ParentObj_cls* pRoot, bool bPlaying,
                                                                 double& totalMB) {
    totalMB = 0.0;
    if (!pRoot)
        return ACTION_NONE;
    int count = 0;
    totalMB = pRoot->GetTotalUsedMemoryMB(count);
    const double limitMB = GpCPreference ? static_cast<double>(GpCPreference->GetMemoryLimitMB()) : 1024.0;
    if (totalMB > limitMB) {
        // One snap per sequence per pass, and no read ahead until the sum is back under the limit.
        pRoot->ReleaseMemory();
        return ACTION_RELEASE;
    }
    if (bPlaying)
        return ACTION_NONE;
    pRoot->Prefetch();
    return ACTION_PREFETCH;
}

wxString DataMemoryCtrl_cls::GetStrMemoryStatus(double dataMB, double texMB) {
    return wxString::Format("%dMB %dMB(Tex)", static_cast<int>(dataMB), static_cast<int>(texMB));
}
