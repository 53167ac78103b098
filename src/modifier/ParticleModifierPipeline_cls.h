// The particle modifiers of a viewer's stack at their fixed places in a frame's preparation:
// the merges right after the interpolation, the filters and shapes before the sort (they lower
// the filter alpha), the size modifiers after the keys. The modifier layer installs Run as the
// preparation's modifier seam.
#pragma once

class ParticleModifierCall_cls;

class ParticleModifierPipeline_cls {
public:
    // Runs the entries of one stage (ParticleModifierCall_cls::kStage...) in stack order on the
    // call's set. Whatever reads the scene (the merge targets, an object-shaped boolean) does so
    // only when the call is not a background one, so the main thread only; the rest runs on the
    // thread that prepares the frame.
    static void Run(int stage, ParticleModifierCall_cls& call);
};
