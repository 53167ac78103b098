// The single-number file rule: how a path becomes a rule, the names it gives, and the count of files
// on disk by the 100/10/1 gallop.
#include "FileSequence_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <wx/filefn.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

wxString Num(const wxString& pattern, int n) {
    return wxString::Format(pattern, n);
}

// The names of the pattern for the numbers from first to last by stride, after the names in v.
std::vector<wxString> Numbered(const wxString& pattern, int first, int last, std::vector<wxString> v = {},
                               int stride = 1) {
    for (int i = first; i <= last; i += stride)
        v.push_back(Num(pattern, i));
    return v;
}

class FileSequenceTest : public DataFileFixture_cls {
protected:
    // Records every probe of the counting operations.
    void Watch(FSBase_cls& seq) {
        seq.mFuncProbeHook = [this](const wxString& path, bool) { mProbes.push_back(path); };
    }

    std::vector<wxString> mProbes;
};

TEST_F(FileSequenceTest, PathBecomesARule) {
    struct Case {
        const char* name;
        int offset, step;
        int digits, offsetAfter;
        const char *head, *tail, *format; // nullptr: not checked
        int index;
        const char* printed; // the name of step index
    } cases[] = {
        {"a%04d.dat", 7, 2, 4, 7, "a%", ".dat", "a%04d.dat", 3, "a0013.dat"},
        // The narrowest width is searched first; "%d" counts as width 0.
        {"f%d.txt", 3, 1, 0, 3, nullptr, nullptr, "f%d.txt", 2, "f5.txt"},
        {"w%09d.v", 0, 1, 9, 0, nullptr, nullptr, "w%09d.v", 12, "w000000012.v"},
        // A number at the end of the name is step 0; the user's offset does not apply to it.
        {"p00150.dat.gz", 7, 1, 5, 150, "p", ".dat.gz", "p%05d.dat.gz", 2, "p00152.dat.gz"},
        // A number too long for an int is still a field of its width; strtol saturates at LONG_MAX,
        // whose low 32 bits read as -1.
        {"n12345678901234567890.dat", 0, 1, 20, -1, nullptr, nullptr, "n%020d.dat", 0, nullptr},
        // No trailing number: a single file. A number standing as an extension is not recognised.
        {"a.0012", 4, 1, -1, 0, "a", ".0012", "a.0012", 5, "a.0012"},
        {"a123b.dat", 4, 1, -1, 0, "a123b", ".dat", "a123b.dat", 5, "a123b.dat"},
        {"plain", 4, 1, -1, 0, "plain", "", "plain", 5, "plain"},
        // Width 10 is not a field, yet the single name is still handed to printf, which fills it.
        {"a%010d.dat", 4, 1, -1, 0, "a%010d", ".dat", "a%010d.dat", 5, "a0000000005.dat"},
        {"100%/a.dat", 0, 1, -1, 0, nullptr, nullptr, "100%/a.dat", 0, "100%/a.dat"},
        {"50% off.dat", 0, 1, -1, 0, nullptr, nullptr, nullptr, 0, "500ff.dat"}, // "% o" is octal to printf
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FileSequence_cls seq;
        seq.Set(P(c.name), c.offset, c.step);
        EXPECT_EQ(seq.mDigits, c.digits);
        EXPECT_EQ(seq.mOffset, c.offsetAfter);
        EXPECT_EQ(seq.mStep, c.step);
        if (c.head) {
            EXPECT_EQ(seq.mHead, P(c.head));
            EXPECT_EQ(seq.mTail, c.tail);
        }
        if (c.format) {
            EXPECT_EQ(seq.GetFormat(), P(c.format));
        }
        if (c.printed) {
            EXPECT_EQ(seq.GetModifiedStr(c.index, 0, ""), P(c.printed));
        }
    }
}

TEST_F(FileSequenceTest, EmptyPathAndOverlongNameChangeNothing) {
    FileSequence_cls seq;
    seq.Set(P("gone%03d.dat"), 0, 1);
    seq.CalcMaxOffset(false);
    ASSERT_FALSE(seq.mValid);
    seq.Set("", 3, 4);
    EXPECT_EQ(seq.mStep, 4);
    EXPECT_FALSE(seq.mValid); // keeps its previous value
    EXPECT_EQ(seq.GetFormat(), P("gone%03d.dat"));

    seq.Set(P("a0001.dat"), 0, 1);
    const wxString longName = "/" + wxString('x', 1000) + "0001.dat";
    seq.Set(longName, 0, 1);
    EXPECT_EQ(seq.mPath, longName);
    EXPECT_EQ(seq.mHead, P("a"));
    EXPECT_EQ(seq.GetFormat(), P("a%04d.dat"));
    EXPECT_EQ(seq.mTail, ".dat");
}

TEST_F(FileSequenceTest, GallopProbesHundredsThenTensThenOnes) {
    for (int i = 0; i < 100; ++i)
        Touch(Num("a%04d.dat", i));
    Touch("one0005.dat");
    // The first, the hundreds, the tens, the ones; each miss is tried with ".gz" too.
    std::vector<wxString> all = {"a0000.dat", "a0100.dat", "a0100.dat.gz"};
    for (int i : {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 91, 92, 93, 94, 95, 96, 97, 98, 99, 100}) {
        all.push_back(Num("a%04d.dat", i));
        if (i == 100)
            all.push_back("a0100.dat.gz");
    }
    std::vector<wxString> one = {"one0005.dat",    "one0105.dat", "one0105.dat.gz", "one0015.dat",
                                 "one0015.dat.gz", "one0006.dat", "one0006.dat.gz"};
    for (const std::vector<wxString>* pNames : {&all, &one}) {
        SCOPED_TRACE(pNames->front());
        FileSequence_cls seq;
        seq.Set(P(pNames->front()), 0, 1);
        mProbes.clear();
        Watch(seq);
        seq.CalcMaxOffset(pNames == &one);
        EXPECT_EQ(seq.mMaxOffset, pNames == &all ? 100 : 1);
        EXPECT_TRUE(seq.mValid);
        std::vector<wxString> expected;
        for (const wxString& str : *pNames)
            expected.push_back(P(str));
        EXPECT_EQ(mProbes, expected);
    }
}

TEST_F(FileSequenceTest, CountOfTheFilesOnDiskAndTheStrideOfTheirNumbers) {
    struct Case {
        const char* name;
        std::vector<wxString> files;
        wxString path;
        int offset, step;
        bool valid;
        int stepAfter, count;
    } cases[] = {
        {"hole at 50, probed by the tens", Numbered("h%03d", 0, 49, Numbered("h%03d", 60, 99)), "h%03d", 0, 1,
         true, 1, 50},
        {"hole at 150, jumped over by the hundreds", Numbered("h%03d", 0, 149, Numbered("h%03d", 151, 299)),
         "h%03d", 0, 1, true, 1, 300},
        {"steps other than one are counted in steps", Numbered("s%03d.v", 5, 38, {}, 3), "s%03d.v", 5, 3,
         true, 3, 12},
        {"the later steps compressed", Numbered("c%04d.dat.gz", 1, 12, {"c0000.dat"}), "c0000.dat", 0, 1,
         true, 1, 13},
        {"named with .gz, the plain files are found", Numbered("g%04d.dat", 1, 3, {"g0000.dat.gz"}),
         "g0000.dat.gz", 0, 1, true, 1, 4},
        {"step 0 is tried under its plain name only", {"z0000.dat.gz"}, "z0000.dat", 0, 1, false, 1, 0},
        // Without a file for the number after step 0, the stride of the numbers on disk becomes the step.
        {"every 50, padded",
         {"d.0000.txt", "d.0050.txt", "d.0100.txt", "d.0150.txt"},
         "d.%04d.txt",
         0,
         1,
         true,
         50,
         4},
        {"every 50, the name of the first file",
         {"e0000.txt", "e0050.txt", "e0100.txt"},
         "e0000.txt",
         0,
         1,
         true,
         50,
         3},
        {"unpadded, as LAMMPS writes by default",
         {"dump.0", "dump.50", "dump.100", "dump.150", "dump.200"},
         "dump.%d",
         0,
         1,
         true,
         50,
         5},
        {"compressed stride", {"g0000.dat", "g0010.dat.gz", "g0020.dat.gz"}, "g%04d.dat", 0, 1, true, 10, 3},
        {"from a number in the name",
         {"h0100.v", "h0125.v", "h0150.v", "h0000.v"},
         "h0100.v",
         0,
         1,
         true,
         25,
         3},
        // Not a constant stride: the count stays as the probes find it.
        {"uneven numbers", {"u0000.d", "u0030.d", "u0050.d"}, "u%04d.d", 0, 1, true, 1, 1},
        {"a name that does not fit the padding",
         {"w0000.d", "w50.d", "w0100.d"},
         "w%04d.d",
         0,
         1,
         true,
         100,
         2},
        // Every number there: nothing changes.
        {"every number", {"a0000.d", "a0001.d", "a0002.d", "a0050.d"}, "a%04d.d", 0, 1, true, 1, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TempDir_cls dir;
        for (const wxString& f : c.files)
            ASSERT_TRUE(WriteBytes(dir.Path(f), "x"));
        FileSequence_cls seq;
        seq.Set(dir.Path(c.path), c.offset, c.step);
        seq.CalcMaxOffset(false);
        EXPECT_EQ(seq.mValid, c.valid);
        EXPECT_EQ(seq.mStep, c.stepAfter);
        EXPECT_EQ(seq.mMaxOffset, c.count);
        // Each counted step names a file that is there (unless the hundreds jumped a hole).
        for (int i = 0; i < seq.mMaxOffset && c.count <= static_cast<int>(c.files.size()); ++i) {
            const wxString name = seq.GetModifiedStr(i, 0, "");
            wxString stem; // a name with ".gz" finds the plain file too
            EXPECT_TRUE(wxFileExists(name) || wxFileExists(name + ".gz") ||
                        (name.EndsWith(".gz", &stem) && wxFileExists(stem)))
                << name;
        }
    }
}

TEST_F(FileSequenceTest, MissingFirstFileShowsTheMessageOnlyWhenAsked) {
    std::vector<std::pair<wxString, wxString>> shown;
    FSBase_cls::SetMessageFunc([&](const wxString& text, const wxString& caption) {
        shown.push_back({text, caption});
    });

    FileSequence_cls seq;
    seq.Set(P("m%04d.dat"), 2, 1);
    seq.CalcMaxOffset(false);
    EXPECT_FALSE(seq.mValid);
    EXPECT_EQ(seq.mMaxOffset, 0);
    EXPECT_TRUE(shown.empty());

    seq.Set(P("m%04d.dat"), 2, 1);
    EXPECT_TRUE(seq.mValid);
    seq.CalcMaxOffset(true);
    EXPECT_FALSE(seq.mValid);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].first, "FileSequence_cls::CalcMaxOffset\n" + P("m0002.dat"));
    EXPECT_EQ(shown[0].second, "File Open Failed");

    // A single file that is missing: count 1, invalid, no message.
    shown.clear();
    seq.Set(P("single.dat"), 0, 1);
    seq.CalcMaxOffset(true);
    EXPECT_EQ(seq.mMaxOffset, 1);
    EXPECT_FALSE(seq.mValid);
    EXPECT_TRUE(shown.empty());
    FSBase_cls::SetMessageFunc(nullptr);

    // Its validity is only ever cleared by the check, never set again.
    seq.CheckSingleFileValidity();
    EXPECT_FALSE(seq.mValid);
    Touch("single.dat");
    seq.CheckSingleFileValidity();
    EXPECT_FALSE(seq.mValid);
    seq.Set(P("single.dat"), 0, 1);
    seq.CheckSingleFileValidity();
    EXPECT_TRUE(seq.mValid);
    seq.CalcMaxOffset(true);
    EXPECT_EQ(seq.mMaxOffset, 1);
    EXPECT_TRUE(seq.mValid);
    // A "%" that is no field goes to printf as it stands.
    ASSERT_TRUE(wxFileName::Mkdir(P("100%"), wxS_DIR_DEFAULT));
    Touch("100%/a.dat");
    seq.Set(P("100%/a.dat"), 0, 1);
    seq.CalcMaxOffset(true);
    EXPECT_TRUE(seq.mValid);
}

TEST_F(FileSequenceTest, NamesBySideAndIndexScript) {
    struct Case {
        const char* pattern;
        int offset, step, index, side;
        const char* script;
        const char* expected;
    } cases[] = {
        {"img%04d.png", 0, 1, 5, 1, "", "imgL0005.png"},
        {"img%04d.png", 0, 1, 5, 2, "", "imgR0005.png"},
        {"img%04d.png", 0, 1, 5, 3, "", "img0005.png"}, // any other side: empty marker
        {"img.png", 0, 1, 5, 1, "", "imgL.png"},
        {"img.png", 0, 1, 5, 2, "", "imgR.png"},
        // Not exactly one "%": the marker goes ahead of the extension and the format is not printed.
        {"x%03d_y%03d.png", 0, 1, 5, 1, "", "x%03d_y%03dL.png"},
        {"x%03d_y%03d.png", 0, 1, 5, 0, "", "x005_y%03d.png"}, // the second field gets no value
        // The script gets the index, not the number of the plain rule.
        {"a%04d.dat", 10, 5, 3, 0, "return index * 2 + 1", "a0007.dat"},
        {"a%04d.dat", 10, 5, 3, 0, "return index", "a0003.dat"},
        {"a%04d.dat", 10, 5, 3, 0, "local t = {4, 8, 15}\nreturn t[index]", "a0015.dat"},
        {"a%04d.dat", 10, 5, 3, 1, "return 42.9", "aL0042.dat"},
        {"a%04d.dat", 10, 5, 3, 0, "return 'x'", "a0000.dat"}, // not a number: 0
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.pattern << " side " << c.side << " " << c.script);
        FileSequence_cls seq;
        seq.Set(P(c.pattern), c.offset, c.step);
        EXPECT_EQ(seq.GetModifiedStr(c.index, c.side, c.script), P(c.expected));
    }
    // A failing script is logged and the plain rule names the step: 5 * 3 + 10.
    FileSequence_cls seq;
    seq.Set(P("a%04d.dat"), 10, 5);
    const char* failing[][2] = {{"return (", "::FileSequence"},
                                {"error('boom')", "boom::FileSequence"},
                                {"while true do end", "endless loop?)::FileSequence"}};
    for (const auto& f : failing) {
        SCOPED_TRACE(f[0]);
        LogCapture_cls log;
        EXPECT_EQ(seq.GetModifiedStr(3, 0, f[0]), P("a0025.dat"));
        EXPECT_TRUE(log.Contains(f[1]));
    }
    // The default tag goes ahead of the extensions.
    seq.Set(P("out.png"), 0, 3);
    seq.AppendDefaultSequenceTag();
    EXPECT_EQ(seq.mPath, P("out%04d.png"));
    EXPECT_EQ(seq.mStep, 1);
    EXPECT_EQ(seq.mOffset, 0);
    EXPECT_EQ(seq.mDigits, 4);
    EXPECT_EQ(seq.GetModifiedStr(12, 0, ""), P("out0012.png"));
}

TEST_F(FileSequenceTest, IndexClampAndRepeat) {
    for (int i = 0; i < 5; ++i)
        Touch(Num("r%02d.dat", i));
    FileSequence_cls seq;
    seq.Set(P("r00.dat"), 0, 1);
    seq.CalcMaxOffset(false);
    ASSERT_EQ(seq.mMaxOffset, 5);
    EXPECT_EQ(seq.GetIndexClamp(-3), 0);
    EXPECT_EQ(seq.GetIndexClamp(2), 2);
    EXPECT_EQ(seq.GetIndexClamp(9), 4);
    EXPECT_EQ(seq.GetIndexRepeat(7), 2);
    EXPECT_EQ(seq.GetIndexRepeat(-1), 0);
    EXPECT_EQ(seq.GetIndexRepeat(4), 4);
    seq.mMaxOffset = 1;
    EXPECT_EQ(seq.GetIndexRepeat(7), 0);
    seq.mMaxOffset = 0;
    EXPECT_EQ(seq.GetIndexClamp(5), 0);
}

TEST(FSBaseTest, CountStringCountsOverlappingHits) {
    FSBase_cls base;
    EXPECT_EQ(base.CountString("aaa", "aa"), 2);
    EXPECT_EQ(base.CountString("a%04d_%03d", "%"), 2);
    EXPECT_EQ(base.CountString("abc", "x"), 0);
    EXPECT_EQ(base.CountString("", "a"), 0);
    EXPECT_EQ(base.CountString("abc", ""), 0);
}

TEST(FSBaseTest, FormatNameBehavesAsPrintf) {
    // The C library is the reference for every format that it defines for one int.
    const char* formats[] = {"a%04d.dat", "%d", "x%5d|", "%-4d|", "%+03d", "50% off", "100%/a.dat",
                             "%%%03d",    "a%", "a%5",   "%x",    "%.3d",  "%#o",     "p%hd"};
    for (const char* format : formats) {
        for (int value : {0, 7, -12, 123456}) {
            SCOPED_TRACE(std::string(format) + " with " + std::to_string(value));
            char expected[256];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat"
            std::snprintf(expected, sizeof expected, format, value);
#pragma GCC diagnostic pop
            EXPECT_EQ(FSBase_cls::FormatName(format, nullptr, {value}), wxString(expected));
        }
    }
    const wxString marker = "L";
    EXPECT_EQ(FSBase_cls::FormatName("img%s%04d.png", &marker, {5}), "imgL0005.png");
    EXPECT_EQ(FSBase_cls::FormatName("t%03d_z%03d", nullptr, {1, 2}), "t001_z002");
    // Conversions that would read memory that is not there stay as written.
    EXPECT_EQ(FSBase_cls::FormatName("a%s%n%f%03d%03d", nullptr, {4}), "a%s%n%f004%03d");
    EXPECT_EQ(FSBase_cls::FormatName("w%999999999d", nullptr, {4}), "w%999999999d");
    EXPECT_EQ(FSBase_cls::FormatName(wxString::FromUTF8("d\xc3\xa9j\xc3\xa0%02d"), nullptr, {3}),
              wxString::FromUTF8("d\xc3\xa9j\xc3\xa0"
                                 "03"));
}

TEST_F(FileSequenceTest, LookupScriptDecidesTheCount) {
    for (int i = 0; i <= 500; i += 50)
        Touch(Num("s.%04d.txt", i));
    FileSequence_cls seq;
    seq.Set(P("s.%04d.txt"), 0, 1);
    seq.CalcMaxOffset(false, "return index*50");
    EXPECT_EQ(seq.mStep, 1) << "the script names the files; the step stays";
    EXPECT_EQ(seq.mMaxOffset, 11);
    EXPECT_EQ(seq.GetModifiedStr(10, 0, "return index*50"), P("s.0500.txt"));
    // A script whose first name has no file leaves the sequence invalid.
    seq.Set(P("s.%04d.txt"), 0, 1);
    seq.CalcMaxOffset(false, "return index*50+1");
    EXPECT_FALSE(seq.mValid);
}

} // namespace
