#include "MyArtProvider.h"

#include "Main_cls.h"

#include <wx/dcmemory.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/image.h>
#include <wx/log.h>

#include <algorithm>

MyArtProvider::MyArtProvider(const wxString& strAppDir) : mStrIconDir(FindIconDir(strAppDir)) {}

wxString MyArtProvider::FindIconDir(const wxString& strAppDir) {
    for (const wxString& strRoot : Main_cls::GetVStrResourceRoots(strAppDir))
        if (const wxString strDir = strRoot + "/Resource/Icon"; wxDirExists(strDir)) {
            wxFileName fn(strDir, "");
            fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_ABSOLUTE);
            return fn.GetPath();
        }
    return wxString();
}

const std::vector<wxString>& MyArtProvider::GetTags() {
    static const std::vector<wxString> sVStrTags = {
        // status bar
        "wxART_ABORT",
        // ribbon
        "wxART_OPEN_FILE", "wxART_OPEN_HISTORY", "wxART_SAVE_FILE", "wxART_SAVE_FILE_AS", "wxART_SCENE",
        "wxART_UNDO", "wxART_REDO", "wxART_PREFERENCE", "wxART_MEMORY", "wxART_NEW_OBJ", "wxART_DUPLICATE",
        "wxART_CLEAR", "wxART_VOLUMEBOX", "wxART_ISOSURFACE", "wxART_PARTICLE", "wxART_STREAMLINE",
        "wxART_HEIGHTFIELD", "wxART_INFO", "wxART_HELP", "wxART_TIPS",
        // panel types
        "wxART_TIMELINE", "wxART_OUTLINER", "wxART_PROPERTY", "wxART_VIEW3D", "wxART_GRAPH",
        "wxART_COLOR_CURVE", "wxART_TEXT", "wxART_CONSOLE",
        // panel bar, normal and pressed
        "wxART_SPLITTER_H", "wxART_SPLITTER_H_P", "wxART_SPLITTER_V", "wxART_SPLITTER_V_P",
        "wxART_SPLITTER_D", "wxART_SPLITTER_D_P", "wxART_HIDE", "wxART_HIDE_P", "wxART_SHOW", "wxART_SHOW_P",
        "wxART_ZOOM_P", "wxART_ZOOM_P_P", "wxART_ZOOM_M", "wxART_ZOOM_M_P",
        // play strip
        "wxART_STARTPOINT", "wxART_PLAY_BACK", "wxART_STEP_BACKWARD", "wxART_STEP_FORWARD", "wxART_PLAY",
        "wxART_ENDPOINT", "wxART_REPEAT",
        // key types of new keys, normal and pressed
        "wxART_TLICON_LINEAR_N", "wxART_TLICON_LINEAR_P", "wxART_TLICON_HERMITE_AUTO_N",
        "wxART_TLICON_HERMITE_AUTO_P", "wxART_TLICON_HERMITE_EASE_N", "wxART_TLICON_HERMITE_EASE_P",
        "wxART_TLICON_STEP_N", "wxART_TLICON_STEP_P", "wxART_TLICON_AUTO", "wxART_TLICON_AUTO_P",
        // the button of the 3D view that opens its numeric panel
        "wxART_SHOW_GL",
        // colour-curve editor: the A channel shown or hidden, the channel selector
        "wxART_ALPHA_ON", "wxART_ALPHA_OFF", "wxART_SELECTOR_N", "wxART_SELECTOR_P"};
    return sVStrTags;
}

bool MyArtProvider::IsOwnTag(const wxString& strTag) {
    const auto& vStrTags = GetTags();
    return std::find(vStrTags.begin(), vStrTags.end(), strTag) != vStrTags.end();
}

wxBitmap MyArtProvider::CreateBitmap(const wxArtID& id, const wxArtClient&, const wxSize& size) {
    if (!IsOwnTag(id))
        return wxNullBitmap;
    wxImage image;
    wxString strPath = mStrIconDir + "/" + id + ".png";
    if (!mStrIconDir.empty() && wxFileExists(strPath)) {
        wxLogNull noLog; // a broken file falls through to the plain square below
        image.LoadFile(strPath, wxBITMAP_TYPE_PNG);
    }
    if (!image.IsOk()) {
        // A missing icon file still gives a visible, valid bitmap: a grey square.
        image.Create(32, 32);
        image.SetRGB(wxRect(0, 0, 32, 32), 150, 150, 150);
    }
    if (size.IsFullySpecified() && (image.GetWidth() != size.x || image.GetHeight() != size.y))
        image.Rescale(size.x, size.y, wxIMAGE_QUALITY_HIGH);
    return wxBitmap(image);
}
