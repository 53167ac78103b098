#include "FileSequence_cls.h"

#include <wx/dir.h>
#include <wx/filename.h>
#include <wx/log.h>

#include <algorithm>
#include <climits>
#include <vector>

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

void FileSequence_cls::CalcMaxOffset(bool showMessage, const wxString& script) {
    if (mDigits == -1) {
        mMaxOffset = 1;
        if (!ProbeFile(GetModifiedStr(0, 0, wxEmptyString)))
            mValid = false;
        return;
    }
    mMaxOffset = 0;
    const wxString first = GetModifiedStr(0, 0, script);
    if (!ProbeFile(first)) {
        // Step 0 is tried under its plain name only, unlike the later steps.
        if (showMessage)
            ShowOpenFailed(wxString("FileSequence_cls::CalcMaxOffset\n") + first);
        mValid = false;
        return;
    }
    // Simulation codes write every N steps: without a file for the next number the stride on disk is
    // the step, so that no step stands for a number that was never written.
    if (script.empty() && !ExistsPlainOrGZ(GetModifiedStr(1, 0, wxEmptyString))) {
        const int stride = FindStrideOnDisk();
        if (stride > 0 && stride != mStep) {
            wxLogMessage("File sequence %s: the numbers on disk go up by %d, taken as the step", mFormat,
                         stride);
            mStep = stride;
        }
    }
    mMaxOffset += CountByGallop([this, &script](int i) { return GetModifiedStr(i, 0, script); });
    mMaxOffset += 1;
}

int FileSequence_cls::FindStrideOnDisk() const {
    const wxFileName fnFormat(mFormat);
    const wxString strDir = fnFormat.GetPath();
    const wxString strNameFormat = fnFormat.GetFullName();
    const int pos = strNameFormat.Find('%');
    if (strDir.Contains("%") || pos == wxNOT_FOUND || CountString(strNameFormat, "%") != 1)
        return 0;
    const size_t end = strNameFormat.find('d', static_cast<size_t>(pos));
    if (end == wxString::npos)
        return 0;
    const wxString strBefore = strNameFormat.Left(static_cast<size_t>(pos));
    const wxString strAfter = strNameFormat.Mid(end + 1);
    wxDir dir(strDir.empty() ? wxString(".") : strDir);
    if (!dir.IsOpened())
        return 0;
    std::vector<long> numbers;
    wxString strName;
    for (bool bMore = dir.GetFirst(&strName, wxEmptyString, wxDIR_FILES); bMore;
         bMore = dir.GetNext(&strName)) {
        // The gzip twin of a name counts as the name, as it does when the steps are counted.
        const bool bGZ = strName.EndsWith(".gz"), bFormatGZ = strAfter.EndsWith(".gz");
        if (bGZ && !bFormatGZ)
            strName.RemoveLast(3);
        else if (!bGZ && bFormatGZ)
            strName += ".gz";
        if (strName.length() <= strBefore.length() + strAfter.length() || !strName.StartsWith(strBefore) ||
            !strName.EndsWith(strAfter))
            continue;
        const wxString strDigits =
            strName.Mid(strBefore.length(), strName.length() - strBefore.length() - strAfter.length());
        if (strDigits.length() > 9 ||
            static_cast<size_t>(TrailingDigitCount(strDigits)) != strDigits.length())
            continue;
        const long value = std::strtol(strDigits.mb_str(), nullptr, 10);
        // Only names the format itself would print: "0050" fits "%04d", "50" does not, nor "050" "%d".
        if (FormatName(strNameFormat, nullptr, {static_cast<int>(value)}) == strName)
            numbers.push_back(value);
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    const auto first = std::find(numbers.begin(), numbers.end(), static_cast<long>(mOffset));
    if (first == numbers.end() || numbers.end() - first < 2)
        return 0;
    const long stride = *(first + 1) - *first;
    for (auto it = first + 1; it != numbers.end(); ++it)
        if (*it - *(it - 1) != stride)
            return 0;
    return stride > 0 && stride <= INT_MAX ? static_cast<int>(stride) : 0;
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
