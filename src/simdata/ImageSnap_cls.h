// A step of an image sequence (height fields, overlays): only its place in the cache; the
// image itself lives in the texture stock.
#pragma once

#include "DataSnap_cls.h"

#include <wx/string.h>

class ImageSequence_cls;

class ImageSnap_cls : public DataSnap_cls {
public:
    ImageSnap_cls(DataSequence_cls* pSequence, int index) : DataSnap_cls(pSequence, 2, index) {}
    // Nothing to free: the snap holds no arrays.
    void Clear() {}
    wxString GetStrInfo() const { return wxString::Format("Image %d: %s", mIndex, mFile); }
    long long GetUsedMemoryByte() const override { return 0; }
    wxString GetStrFile() const override { return mFile; }

    wxString mFile;
};
