// Serves the program's icon tags ("wxART_OPEN_FILE", "wxART_SPLITTER_H_P", ...) from the PNG
// files of Resource/Icon, one file per tag named after it. Pushed onto the toolkit's stack of
// art providers at start-up, so any widget asks wxArtProvider for a tag. Main thread only.
#pragma once

#include <wx/artprov.h>
#include <wx/string.h>

#include <vector>

class MyArtProvider : public wxArtProvider {
public:
    // The icon folder is looked for under the working directory, then beside the executable
    // and up to two folders above it (a build tree inside the source tree).
    explicit MyArtProvider(const wxString& strAppDir);

    // Every tag the program names; each has a file in the icon folder.
    static const std::vector<wxString>& GetTags();
    static bool IsOwnTag(const wxString& strTag);
    // The folder found, empty when none was.
    wxString GetStrIconDir() const { return mStrIconDir; }
    static wxString FindIconDir(const wxString& strAppDir);

protected:
    wxBitmap CreateBitmap(const wxArtID& id, const wxArtClient& client, const wxSize& size) override;

private:
    wxString mStrIconDir;
};
