#include "Preference_cls.h"

Preference_cls::Preference_cls() {
    SetTag("Preference");
    // Relative by default: a project folder moved together with its data still opens.
    Add(&mCRelativePath, "RelativePath=", "1");
    Add(&mCPrefetchLength, "PrefetchLength=", "10");
    Add(&mCParticleMax, "ParticleMax=", "20000");
    Add(&mCParticleVBOMax, "ParticleVBOMax=", "2000");
    Add(&mCMemoryLimitMB, "MemoryLimitMB=", "1024");
    Add(&mCMemoryLimitTexMB, "MemoryLimitTexMB=", "1024");
    Add(&mCPrefGZQuality, "PrefGZQuality=", "0");
    Add(&mCToolTip, "ToolTip=", "1");
    // Read by the frame's buffers and passes, which rebuild when they change.
    Add(&mCGLDepthIndex, "GLDepthIndex=", "0", "VIEW3D");
    Add(&mCGLDepthMin, "GLDepthMin=", "0.01", "VIEW3D");
    Add(&mCGLDepthMax, "GLDepthMax=", "1000", "VIEW3D");
}
