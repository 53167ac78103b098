#include "FileSequenceDual_cls.h"

#include <wx/filename.h>

#include <cstdlib>

FileSequenceDual_cls::FileSequenceDual_cls(wxString path) {
    SetDual(path, 0, 0, 1, 1);
}

void FileSequenceDual_cls::SetDual(wxString path, int offsetT, int offsetZ, int stepT, int stepZ) {
    mStep1 = stepT;
    mStep2 = stepZ;
    mPath = path;
    if (mPath.empty())
        return;
    mValid = true;
    int d1 = -1, d2 = -1, o1 = -1, o2 = -1;
    const int pos1 = SequenceFormatPos(mPath, d1, o1);
    if (pos1 == -1) {
        InitFormat(offsetT, offsetZ, -1, -1, -1);
        return;
    }
    // The search goes by width, so a second field is found only when it is not narrower than the first.
    const int posRest = SequenceFormatPos(mPath.Mid(pos1 + 4), d2, o2);
    if (posRest == -1) {
        InitFormat(offsetT, offsetZ, pos1, d1, o1);
        return;
    }
    SplitFormat(pos1, pos1 + 4 + posRest);
    mDigits1 = d1;
    mDigits2 = d2;
    mOffset1 = o1;
    mOffset2 = o2;
}

int FileSequenceDual_cls::SequenceFormatPos(wxString text, int& digits, int& offset) {
    int width = 0;
    const int pos = FindWidthField(text, width);
    if (pos != -1) {
        digits = width;
        offset = 0;
    }
    return pos;
}

void FileSequenceDual_cls::SplitFormat(int pos1, int /*pos2*/) {
    const wxFileName fn(mPath);
    const wxString full = fn.GetFullPath();
    mHead = full.Left(pos1 + 1);
    mFormat = full;
    mTail = fn.HasExt() ? "." + fn.GetExt() : wxString();
}

void FileSequenceDual_cls::InitFormat(int, int, int pos, int digits, int offset) {
    const wxString original = mPath;
    // Hide the explicit field for the length of the call, so that its width digit is not taken for
    // the end of a number.
    if (pos >= 0)
        mPath.replace(pos, 4, "####");
    wxString base, tail;
    if (!SplitBaseAndTail(mPath, base, tail)) {
        mPath = original;
        return;
    }
    const int run = TrailingDigitCount(base);
    if (run == 0) {
        // A single field, or none, is the slice number, and there is one time step.
        mOffset1 = 0;
        mDigits1 = -1;
        mDigits2 = digits;
        mOffset2 = offset;
        mHead = base;
        mTail = tail;
        mFormat = original;
        mPath = original;
        return;
    }
    // The trailing run is the slice number; the explicit field, if any, is the time number.
    const wxString number = base.Right(run);
    mDigits2 = run;
    mOffset2 = static_cast<int>(std::strtol(number.mb_str(), nullptr, 10));
    mDigits1 = digits;
    mOffset1 = offset;
    const wxString field = wxString::Format("%s0%dd", "%", run);
    // The run ends where the name ends, just ahead of the tail.
    const size_t runEnd = mPath.length() >= tail.length() ? mPath.length() - tail.length() : 0;
    const bool bRunInPath = runEnd >= static_cast<size_t>(run) && mPath.Mid(runEnd - run, run) == number;
    size_t runPos;
    if (bRunInPath) {
        runPos = runEnd - run;
        mFormat = original.Left(runPos) + field + original.Mid(runEnd);
    } else {
        // The directory was written in a form that the path class normalises: build from its parts.
        runPos = base.length() - run;
        mFormat = base.Left(runPos) + field + tail;
        if (pos >= 0)
            mFormat.Replace("####", original.Mid(pos, 4), false);
    }
    const size_t first = (pos >= 0 && static_cast<size_t>(pos) < runPos) ? static_cast<size_t>(pos) : runPos;
    mHead = original.Left(first);
    mTail = tail;
    mPath = original;
}

wxString FileSequenceDual_cls::GetModifiedStrDual(int indexT, int indexZ, int side, wxString script) const {
    int valueT = static_cast<int>(static_cast<long long>(mStep1) * indexT + mOffset1);
    const int valueZ = static_cast<int>(static_cast<long long>(mStep2) * indexZ + mOffset2);
    if (!script.empty())
        CallIndexScript(script, indexT, valueT);
    const int fields = CountString(mFormat, "%");
    if (side == 0) {
        if (fields == 1)
            return FormatName(mFormat, nullptr, {valueZ});
        if (fields == 2)
            return FormatName(mFormat, nullptr, {valueT, valueZ});
        return mFormat;
    }
    const wxString marker = GetSideMarker(side);
    if (fields == 1) {
        wxString format = mFormat;
        format.Replace("%", "%s%");
        return FormatName(format, &marker, {valueZ});
    }
    return GetMarkedFileName(mFormat, marker);
}

int FileSequenceDual_cls::CountSteps(const std::function<wxString(int)>& nameOf, bool single,
                                     bool showMessage, const wxString& context) {
    const wxString first = nameOf(0);
    if (single) {
        if (!ProbeFile(first))
            mValid = false;
        return 1;
    }
    if (!ProbeFile(first)) {
        if (showMessage)
            ShowOpenFailed(context + "\n" + first);
        mValid = false;
        return 0;
    }
    return CountByGallop(nameOf) + 1;
}

void FileSequenceDual_cls::CalcMaxOffsetDual(bool showMessage) {
    mMaxOffset = CountSteps([this](int i) { return GetModifiedStrDual(i, 0, 0, wxEmptyString); },
                            mDigits1 == -1, showMessage, "FileSequenceDual_cls::CalcMaxOffsetDual");
}

void FileSequenceDual_cls::CalcMaxOffsetZ(int indexT, bool showMessage) {
    mMaxOffsetZ =
        CountSteps([this, indexT](int i) { return GetModifiedStrDual(indexT, i, 0, wxEmptyString); },
                   mDigits2 == -1, showMessage, "FileSequenceDual_cls::CalcMaxOffsetZ");
}
