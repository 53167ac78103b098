// Small helpers shared by the test executables.
#pragma once

#include <gtest/gtest.h>
#include <wx/arrstr.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/string.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <ostream>
#include <random>
#include <string>
#include <vector>

// Lets failed expectations show the text instead of its code points.
inline void PrintTo(const wxString& str, std::ostream* pOs) {
    *pOs << "\"" << str.utf8_str().data() << "\"";
}

// The member names of a parameter group.
inline wxArrayString Names(std::initializer_list<const char*> names) {
    wxArrayString astr;
    for (const char* p : names)
        astr.Add(p);
    return astr;
}

// Compares three components with a tolerance, or as doubles (a few units in the last place) when
// the tolerance is 0.
inline void ExpectNear3(const double* v, double x, double y, double z, double tolerance) {
    const double expected[3] = {x, y, z};
    for (int k = 0; k < 3; ++k) {
        if (tolerance == 0.0)
            EXPECT_DOUBLE_EQ(v[k], expected[k]) << "component " << k;
        else
            EXPECT_NEAR(v[k], expected[k], tolerance) << "component " << k;
    }
}

// Collects every log line while it lives, so a test can assert on the texts the system logs.
class LogCapture_cls : public wxLog {
public:
    LogCapture_cls() { mpOld = wxLog::SetActiveTarget(this); }
    ~LogCapture_cls() override { wxLog::SetActiveTarget(mpOld); }
    LogCapture_cls(const LogCapture_cls&) = delete;
    LogCapture_cls& operator=(const LogCapture_cls&) = delete;

    bool Contains(const wxString& str) const {
        for (const wxString& line : mVStrLines)
            if (line.Contains(str))
                return true;
        return false;
    }
    std::vector<wxString> mVStrLines;

protected:
    void DoLogTextAtLevel(wxLogLevel, const wxString& msg) override { mVStrLines.push_back(msg); }

private:
    wxLog* mpOld = nullptr;
};

// A fresh empty directory under the system temp folder, removed with its contents at the end.
class TempDir_cls {
public:
    TempDir_cls() {
        wxString strBase = wxFileName::CreateTempFileName("orvtest");
        wxRemoveFile(strBase);
        wxFileName::Mkdir(strBase, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
        mStrPath = strBase;
    }
    ~TempDir_cls() { wxFileName::Rmdir(mStrPath, wxPATH_RMDIR_RECURSIVE); }
    TempDir_cls(const TempDir_cls&) = delete;
    TempDir_cls& operator=(const TempDir_cls&) = delete;

    wxString Path(const wxString& strName) const { return mStrPath + "/" + strName; }
    wxString mStrPath;
};

// Writes bytes to a file as they are.
inline bool WriteBytes(const wxString& strPath, const std::string& bytes) {
    FILE* fp = fopen(strPath.fn_str(), "wb");
    if (!fp)
        return false;
    size_t n = fwrite(bytes.data(), 1, bytes.size(), fp);
    fclose(fp);
    return n == bytes.size();
}

inline std::string ReadBytes(const wxString& strPath) {
    std::string out;
    FILE* fp = fopen(strPath.fn_str(), "rb");
    if (!fp)
        return out;
    char buf[65536];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, fp)) > 0)
        out.append(buf, n);
    fclose(fp);
    return out;
}

// A df3 volume of n voxels a side (three big-endian 16-bit sizes, then the bytes) holding a ball:
// 128 + 8 (radius - distance from the centre), rounded and clamped to 0 .. 255.
inline std::string BallDF3(int n, double radius) {
    std::string s;
    for (int k = 0; k < 3; ++k) {
        s.push_back(static_cast<char>((n >> 8) & 0xff));
        s.push_back(static_cast<char>(n & 0xff));
    }
    const double c = 0.5 * (n - 1);
    for (int z = 0; z < n; ++z)
        for (int y = 0; y < n; ++y)
            for (int x = 0; x < n; ++x) {
                const double r = std::sqrt((x - c) * (x - c) + (y - c) * (y - c) + (z - c) * (z - c));
                s.push_back(
                    static_cast<char>(std::lround(std::clamp(128.0 + 8.0 * (radius - r), 0.0, 255.0))));
            }
    return s;
}

// size random bytes from the seed; without zero bytes when a text is wanted that is read whole.
inline std::string RandomBytes(unsigned seed, size_t size, bool bNoZero = false) {
    std::mt19937 rng(seed);
    std::string bytes(size, '\0');
    for (char& c : bytes)
        c = static_cast<char>(bNoZero ? 1 + rng() % 255 : rng() % 256);
    return bytes;
}

// A copy of text with one to eight random edits: a byte changed, up to 16 bytes removed, or up
// to 24 bytes of the text inserted elsewhere (so that heads and separators move about).
inline std::string MutateText(const std::string& text, std::mt19937& rng) {
    std::string mutated = text.empty() ? std::string("x") : text;
    const int changes = 1 + static_cast<int>(rng() % 8);
    for (int i = 0; i < changes; ++i) {
        const size_t at = rng() % mutated.size();
        switch (rng() % 3) {
        case 0:
            mutated[at] = static_cast<char>(rng() % 256);
            break;
        case 1:
            mutated.erase(at, 1 + rng() % 16);
            break;
        default:
            mutated.insert(at, text.substr(rng() % text.size(), 1 + rng() % 24));
            break;
        }
        if (mutated.empty())
            mutated = "x";
    }
    return mutated;
}
