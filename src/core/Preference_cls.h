// The user's preferences: configuration items in the list "Preference", saved with projects
// and undoable like every other setting.
#pragma once

#include "ConfListContainer_cls.h"

#include <functional>

class Preference_cls : public ConfListContainer_cls {
public:
    Preference_cls();

    // 0 writes file paths absolute, anything else relative to the project's folder.
    int GetRelativePath() const { return static_cast<int>(mCRelativePath.GetBodyINT()); }
    // Frames read ahead of the current one while idle.
    int GetPrefetchLength() const { return static_cast<int>(mCPrefetchLength.GetBodyINT()); }
    // Thousands of particles read at most from one file.
    long long GetParticleMax() const { return mCParticleMax.GetBodyINT(); }
    // Thousands of particles drawn from one GPU buffer at most; above it particles draw in batches.
    long long GetParticleVBOMax() const { return mCParticleVBOMax.GetBodyINT(); }
    long long GetMemoryLimitMB() const { return mCMemoryLimitMB.GetBodyINT(); }
    long long GetMemoryLimitTexMB() const { return mCMemoryLimitTexMB.GetBodyINT(); }
    // 1 writes gzip files fast ("wb1"), anything else small ("wb9").
    int GetPrefGZQuality() const { return static_cast<int>(mCPrefGZQuality.GetBodyINT()); }
    // Delivers one panel name to the preference dialog, when it is open.
    void UpdatePanels(const wxString& strPanel) {
        if (mFuncUpdatePanels)
            mFuncUpdatePanels(strPanel);
    }

    ConfItemBOOL_cls mCRelativePath;
    ConfItemINT_cls mCPrefetchLength;
    ConfItemINT_cls mCParticleMax;
    ConfItemINT_cls mCParticleVBOMax;
    ConfItemINT_cls mCMemoryLimitMB;
    ConfItemINT_cls mCMemoryLimitTexMB;
    ConfItemINT_cls mCPrefGZQuality;
    ConfItemBOOL_cls mCToolTip;                             // ribbon tool tips shown
    ConfItemINT_cls mCGLDepthIndex;                         // 1: a 32-bit float depth buffer, else 24 bits
    ConfItemFLOAT_cls mCGLDepthMin;                         // near plane of a view that no camera drives
    ConfItemFLOAT_cls mCGLDepthMax;                         // far plane of a view that no camera drives
    std::function<void(const wxString&)> mFuncUpdatePanels; // installed by the dialog
};
