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
    // Delivers one panel name to the preference dialog, when it is open.
    void UpdatePanels(const wxString& strPanel) {
        if (mFuncUpdatePanels)
            mFuncUpdatePanels(strPanel);
    }

    ConfItemBOOL_cls mCRelativePath;
    std::function<void(const wxString&)> mFuncUpdatePanels; // installed by the dialog
};
