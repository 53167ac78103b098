#include "FileSequence_cls.h"

#include <wx/filename.h>

#include <cstdlib>

FileSequence_cls::FileSequence_cls(wxString path) {
    Set(path, 0, 1);
}

void FileSequence_cls::Set(wxString path, int offset, int step) {
    mStep = step;
    mPath = path;
    if (mPath.empty())
        return;
    mValid = true;
    const int pos = SequenceFormatPos();
    if (pos == -1) {
        InitFormat(offset);
    } else {
        SplitFormat(pos);
        mOffset = offset;
    }
}

int FileSequence_cls::SequenceFormatPos() {
    int digits = 0;
    const int pos = FindWidthField(mPath, digits);
    if (pos != -1) {
        mDigits = digits;
        mOffset = 0;
    }
    return pos;
}

void FileSequence_cls::SplitFormat(int pos) {
    const wxFileName fn(mPath);
    const wxString full = fn.GetFullPath();
    mHead = full.Left(pos + 1); // up to and with the "%"
    mFormat = full;
    mTail = fn.HasExt() ? "." + fn.GetExt() : wxString();
}

void FileSequence_cls::InitFormat(int offset) {
    int digits = 0;
    if (FindWidthField(mPath, digits) != -1) {
        mDigits = digits;
        mFormat = mPath;
        mOffset = offset;
        return;
    }
    if (mPath.find("%d") != wxString::npos) {
        mDigits = 0;
        mFormat = mPath;
        mOffset = offset;
        return;
    }
    wxString base, tail;
    if (!SplitBaseAndTail(mPath, base, tail))
        return;
    const int run = TrailingDigitCount(base);
    if (run == 0) {
        mOffset = 0;
        mDigits = -1;
        mHead = base;
        mFormat = mPath;
        mTail = tail;
        return;
    }
    // The number in the name is step 0; the offset argument does not apply here.
    const wxString number = base.Right(run);
    mOffset = static_cast<int>(std::strtol(number.mb_str(), nullptr, 10));
    mDigits = run;
    mHead = base.Left(base.length() - run);
    mFormat = mHead + wxString::Format("%s0%dd", "%", run) + tail;
    mTail = tail;
}

wxString FileSequence_cls::GetModifiedStr(int index, int side, wxString script) const {
    int value = static_cast<int>(static_cast<long long>(mStep) * index + mOffset);
    if (!script.empty())
        CallIndexScript(script, index, value);
    if (side == 0)
        return FormatName(mFormat, nullptr, {value});
    const wxString marker = GetSideMarker(side);
    if (CountString(mFormat, "%") == 1) {
        wxString format = mFormat;
        format.Replace("%", "%s%");
        return FormatName(format, &marker, {value});
    }
    return GetMarkedFileName(mFormat, marker);
}

void FileSequence_cls::CalcMaxOffset(bool showMessage) {
    if (mDigits == -1) {
        mMaxOffset = 1;
        if (!ProbeFile(GetModifiedStr(0, 0, wxEmptyString)))
            mValid = false;
        return;
    }
    mMaxOffset = 0;
    const wxString first = GetModifiedStr(0, 0, wxEmptyString);
    if (!ProbeFile(first)) {
        // Step 0 is tried under its plain name only, unlike the later steps.
        if (showMessage)
            ShowOpenFailed(wxString("FileSequence_cls::CalcMaxOffset\n") + first);
        mValid = false;
        return;
    }
    mMaxOffset += CountByGallop([this](int i) { return GetModifiedStr(i, 0, wxEmptyString); });
    mMaxOffset += 1;
}

void FileSequence_cls::CheckSingleFileValidity() {
    if (!ProbeFile(GetModifiedStr(0, 0, wxEmptyString)))
        mValid = false;
}

int FileSequence_cls::GetIndexClamp(int index) const {
    if (index > mMaxOffset - 1)
        index = mMaxOffset - 1;
    if (index < 0)
        index = 0;
    return index;
}

int FileSequence_cls::GetIndexRepeat(int index) const {
    if (mMaxOffset <= 1)
        return 0;
    if (index < 0)
        index = 0;
    return index % mMaxOffset;
}

void FileSequence_cls::AppendDefaultSequenceTag() {
    Set(mHead + "%04d" + mTail, 0, 1);
}
