// The data side of one idle pass of the main loop: sum the memory of every data viewer in the
// scene, and either evict (over MemoryLimitMB=: one snap per sequence) or, when the clock is not
// playing, start the next read ahead (at most one per sequence). No read is waited for here.
// Main thread only; the window calls ProcIdlePass from its idle handler.
#pragma once
#include <wx/string.h>

class ParentObj_cls;

class DataMemoryCtrl_cls {
public:
    enum Action_enum { ACTION_NONE = 0, ACTION_RELEASE = 1, ACTION_PREFETCH = 2 };
    // pRoot: the scene root (the scene controller); null does nothing. totalMB receives the sum
    // of the data viewers' memory. Returns what the pass did.
    static Action_enum ProcIdlePass(ParentObj_cls* pRoot, bool bPlaying, double& totalMB);
    // Field 5 of the status bar: "<n>MB <n>MB(Tex)".
    static wxString GetStrMemoryStatus(double dataMB, double texMB);
};
