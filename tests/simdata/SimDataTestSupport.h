// Helpers of the data-sequence and reader tests: a scene clock and preferences installed as the
// registry's services for the life of a test, byte builders for binary files, formats, and a text
// host that runs the edits of a format.
#pragma once

#include "ClassProvider_cls.h"
#include "ParallelRun_cls.h"
#include "ParticleFormatClone_cls.h"
#include "ParticleFormat_cls.h"
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "Preference_cls.h"
#include "TestSupport.h"
#include "TextHost_cls.h"
#include "TimeCtrl_cls.h"

#include <gtest/gtest.h>
#include <wx/log.h>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// Installs its own clock and preferences as GpCTimeCtrl and GpCPreference, and puts the old
// ones back at the end.
class ServicesScope_cls {
public:
    ServicesScope_cls() {
        mpOldTime = GpCTimeCtrl;
        mpOldPref = GpCPreference;
        GpCTimeCtrl = &mTime;
        GpCPreference = &mPref;
    }
    ~ServicesScope_cls() {
        GpCTimeCtrl = mpOldTime;
        GpCPreference = mpOldPref;
    }
    ServicesScope_cls(const ServicesScope_cls&) = delete;
    ServicesScope_cls& operator=(const ServicesScope_cls&) = delete;

    void SetFrames(int frameMax, int current) {
        mTime.mCFrameMax.SetBodyFromData(static_cast<long long>(frameMax));
        mTime.mCFrameCurrent.SetBodyFromData(static_cast<long long>(current));
    }
    void SetPrefetch(int length) { mPref.mCPrefetchLength.SetBodyFromData(static_cast<long long>(length)); }

    TimeCtrl_cls mTime;
    Preference_cls mPref;

private:
    TimeCtrl_cls* mpOldTime = nullptr;
    Preference_cls* mpOldPref = nullptr;
};

// Fixes the thread count of the readers' passes for the life of a test, so every split is seen on
// any machine; then back to the machine's count.
class FixedThreads_cls {
public:
    explicit FixedThreads_cls(int count) { ParallelRun_cls::SetFixedThreadCount(count); }
    ~FixedThreads_cls() { ParallelRun_cls::SetFixedThreadCount(0); }
    FixedThreads_cls(const FixedThreads_cls&) = delete;
    FixedThreads_cls& operator=(const FixedThreads_cls&) = delete;
};

// Little byte builder for binary particle files, values as they stand in memory.
class Bytes_cls {
public:
    template <typename T> Bytes_cls& Put(T v) {
        char b[sizeof(T)];
        std::memcpy(b, &v, sizeof(T));
        mStr.append(b, sizeof(T));
        return *this;
    }
    Bytes_cls& I(int v) { return Put<int>(v); }
    Bytes_cls& F(float v) { return Put<float>(v); }
    Bytes_cls& L(long long v) { return Put<long long>(v); }
    std::string mStr;
};

// A format clone of the given data type and lists; header and body replace the defaults.
inline void MakeClone(ParticleFormatClone_cls& clone, int dataType, int direction,
                      const wxArrayString& header, const wxArrayString& body, bool sort = false,
                      bool removeDupli = false) {
    ParticleFormat_cls format;
    format.mCDataType.SetBodyFromData(static_cast<long long>(dataType));
    format.mCArrayDirection.SetBodyFromData(static_cast<long long>(direction));
    format.mCPreSortByID.SetBodyFromDataBOOL(sort);
    format.mCRemoveDupli.SetBodyFromDataBOOL(removeDupli);
    format.mAStrHeader = header;
    if (dataType == 1)
        format.mAStrBodyBinary = body;
    else
        format.mAStrBodyAscii = body;
    clone.CloneFromFormat(format, false);
}

// Messages logged by reader threads are held until the main thread flushes them.
inline void FlushThreadLogs() {
    wxLog::FlushActive();
}

// A data test's surroundings: services, the log, and a temporary folder with short ways to its files.
class DataFileFixture_cls : public ::testing::Test {
protected:
    wxString P(const wxString& name) const { return mDir.Path(name); }
    void Touch(const wxString& name) { ASSERT_TRUE(WriteBytes(P(name), "x")); }

    ServicesScope_cls mServices;
    LogCapture_cls mLog;
    TempDir_cls mDir;
};

// A reader test's surroundings with a sequence and one snap.
class SnapReadFixture_cls : public DataFileFixture_cls {
protected:
    // Reads the file with a copy of the format into a fresh mSnap, on the reader thread, and
    // waits for it.
    void ReadOnThread(const wxString& path, const ParticleFormatClone_cls& clone) {
        mSnap = std::make_unique<ParticleSnap_cls>(&mSeq, 0);
        ParticleFormatClone_cls c;
        c.CloneFromClone(clone);
        mSnap->SetStrFile(path);
        ASSERT_TRUE(mSnap->ReadHeader(&c));
        ASSERT_TRUE(mSnap->ReadData(&c, true));
        mSnap->WaitReadingThread(1);
        FlushThreadLogs();
    }
    ParticleSequence_cls mSeq;
    std::unique_ptr<ParticleSnap_cls> mSnap;
};

// A list of item names from one text, separated by blanks outside parentheses: "ID(long long)" is
// one name.
inline wxArrayString List(const char* pNames) {
    wxArrayString a;
    wxString strName;
    int depth = 0;
    for (const char* p = pNames; *p; ++p) {
        if (*p == ' ' && depth == 0) {
            a.Add(strName);
            strName.clear();
            continue;
        }
        depth += (*p == '(') - (*p == ')');
        strName += *p;
    }
    if (!strName.empty())
        a.Add(strName);
    return a;
}

// The first n values of a snap's array, to compare in one expectation.
template <typename T> std::vector<T> Vec(const std::unique_ptr<T[]>& p, int n) {
    return std::vector<T>(p.get(), p.get() + n);
}

// The text host while it lives: records each pair and runs the do text (unless told not to) through
// the format's list reader, as the command reader would; Undo runs the undo text.
class FormatHost_cls : public TextHost_cls {
public:
    explicit FormatHost_cls(ParticleFormat_cls& format) : mFormat(format) {
        mpOld = TextHost_cls::Get();
        TextHost_cls::Install(this);
    }
    ~FormatHost_cls() override { TextHost_cls::Install(mpOld); }
    void UpdatePanels(const wxString&) override {}
    void PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) override {
        mStrUndo = strUndo;
        mStrDo = strDo;
        if (mbRunDo)
            Run(strDo);
    }
    int GetRelativePathMode() override { return 0; }
    void Undo() { Run(mStrUndo); }
    void Run(const wxString& strText) {
        std::wistringstream stream(strText.ToStdWstring());
        std::wstring first;
        std::getline(stream, first);
        const wxString strRest = wxString(first).AfterFirst(':').AfterFirst(':');
        ASSERT_TRUE(mFormat.ReadStrLine(stream, "ConfItemList", strRest)) << strText;
    }
    ParticleFormat_cls& mFormat;
    TextHost_cls* mpOld = nullptr;
    wxString mStrUndo, mStrDo;
    bool mbRunDo = true;
};
