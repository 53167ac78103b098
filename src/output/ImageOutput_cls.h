// The settings of image output (list "ImageOutput"): the file pattern, the size, alpha and the
// stereo save mode, with the naming of each step's file. A service and a receiver of project
// lines. Main thread only.
#pragma once

#include "ConfListContainer_cls.h"
#include "GetPC_cls.h"

#include <wx/gdicmn.h>
#include <wx/string.h>

class ImageOutput_cls : public ConfListContainer_cls, public GetPC_cls {
public:
    ImageOutput_cls();

    // The file of a step of the sequence "FileFormat=": eyeFile 0 for one file, 1 and 2 for the
    // eyes. A pattern without a number field names the same file at every step.
    wxString GetModifiedStr(int step, int eyeFile) const;
    wxSize GetSize() const;
    // Width over height.
    double GetAspectRatioWonH() const;
    // The pattern names a file (not empty, not a folder) in a folder that exists.
    bool CheckFileSequence() const;
    // The pattern has a number field.
    bool IsSequence() const;
    // Gives a pattern without a number field the default four-digit field before its extension.
    void AppendDefaultSequenceTag();
    bool IsAlpha() const { return mCImageAlpha.GetBodyBOOL(); }
    int GetStereoOutput() const { return static_cast<int>(mCStereoOutput.GetBodyINT()); }
    bool IsRenderFromIn() const { return mCRenderFromIn.GetBodyBOOL(); }
    // zlib level 0 to 9 of PNG files; anything else gives the library's default.
    int GetPNGCompression() const { return static_cast<int>(mCPNGCompression.GetBodyINT()); }
    // 16 writes PNG files with 16 bits per channel, anything else 8.
    int GetPNGBitDepth() const { return mCPNGBitDepth.GetBodyINT() == 16 ? 16 : 8; }

    ConfItemINT_cls mCImageType;
    ConfItemBOOL_cls mCImageAlpha;
    ConfItemINT_cls mCStereoOutput;
    ConfItemSTR_cls mCFileFormat;
    ConfItemINT_cls mCWidth;
    ConfItemINT_cls mCHeight;
    ConfItemINT_cls mCSizeType;
    ConfItemINT_cls mCSizeIndex;
    ConfItemBOOL_cls mCRenderFromIn;
    ConfItemINT_cls mCPNGCompression;
    ConfItemINT_cls mCPNGBitDepth;
};
