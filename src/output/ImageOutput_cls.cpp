#include "ImageOutput_cls.h"

#include "FileSequence_cls.h"

#include <wx/filename.h>

ImageOutput_cls::ImageOutput_cls() {
    SetTag("ImageOutput");
    Add(&mCImageType, "ImageType=", "0");
    Add(&mCImageAlpha, "ImageAlpha=", "0");
    Add(&mCStereoOutput, "StereoOutput=", "0");
    Add(&mCFileFormat, "FileFormat=", "preview.png");
    Add(&mCWidth, "Width=", "640");
    Add(&mCHeight, "Height=", "360");
    Add(&mCSizeType, "SizeType=", "1");
    Add(&mCSizeIndex, "SizeIndex=", "6");
    Add(&mCRenderFromIn, "RenderFromIn=", "1");
    Add(&mCPNGCompression, "PNGCompression=", "6");
    Add(&mCPNGBitDepth, "PNGBitDepth=", "8");
}

wxString ImageOutput_cls::GetModifiedStr(int step, int eyeFile) const {
    FileSequence_cls sequence;
    sequence.Set(mCFileFormat.GetBodySTR(), 0, 1);
    return sequence.GetModifiedStr(step, eyeFile, wxEmptyString);
}

wxSize ImageOutput_cls::GetSize() const {
    return wxSize(static_cast<int>(mCWidth.GetBodyINT()), static_cast<int>(mCHeight.GetBodyINT()));
}

double ImageOutput_cls::GetAspectRatioWonH() const {
    const wxSize size = GetSize();
    return size.y != 0 ? static_cast<double>(size.x) / size.y : 1.0;
}

bool ImageOutput_cls::CheckFileSequence() const {
    const wxString strPath = mCFileFormat.GetBodySTR();
    if (strPath.empty())
        return false;
    const wxFileName fn(strPath);
    if (fn.GetFullName().empty() || wxFileName::DirExists(strPath))
        return false;
    return fn.GetPath().empty() || wxFileName::DirExists(fn.GetPath());
}

bool ImageOutput_cls::IsSequence() const {
    FileSequence_cls sequence;
    sequence.Set(mCFileFormat.GetBodySTR(), 0, 1);
    return sequence.mDigits != -1;
}

void ImageOutput_cls::AppendDefaultSequenceTag() {
    FileSequence_cls sequence;
    sequence.Set(mCFileFormat.GetBodySTR(), 0, 1);
    if (sequence.mDigits != -1)
        return;
    sequence.AppendDefaultSequenceTag();
    mCFileFormat.SetBodyFromData(sequence.mPath);
}
