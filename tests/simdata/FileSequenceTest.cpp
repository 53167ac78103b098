// The single-number file rule: how a path becomes a rule, the names it gives, and the count of files
// on disk by the 100/10/1 gallop.
#include "FileSequence_cls.h"
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

class FileSequenceTest : public ::testing::Test {
protected:
    void Touch(const wxString& name) { ASSERT_TRUE(WriteBytes(mDir.Path(name), "x")); }
    wxString P(const wxString& name) const { return mDir.Path(name); }

    // Records every probe of the counting operations.
    void Watch(FSBase_cls& seq) {
        seq.mFuncProbeHook = [this](const wxString& path, bool) { mProbes.push_back(path); };
    }

    TempDir_cls mDir;
    std::vector<wxString> mProbes;
};

TEST_F(FileSequenceTest, ExplicitFieldStartsAtTheGivenOffset) {
    FileSequence_cls seq;
    seq.Set(P("a%04d.dat"), 7, 2);
    EXPECT_EQ(seq.mDigits, 4);
    EXPECT_EQ(seq.mOffset, 7);
    EXPECT_EQ(seq.mStep, 2);
    EXPECT_EQ(seq.mHead, P("a%"));
    EXPECT_EQ(seq.mTail, ".dat");
    EXPECT_EQ(seq.GetFormat(), P("a%04d.dat"));
    EXPECT_EQ(seq.GetModifiedStr(3, 0, ""), P("a0013.dat"));
    EXPECT_EQ(seq.GetModifiedStr(0, 0, ""), P("a0007.dat"));

    // The narrowest width is searched first; "%d" counts as width 0.
    seq.Set(P("f%d.txt"), 3, 1);
    EXPECT_EQ(seq.mDigits, 0);
    EXPECT_EQ(seq.GetModifiedStr(2, 0, ""), P("f5.txt"));
    seq.Set(P("w%09d.v"), 0, 1);
    EXPECT_EQ(seq.mDigits, 9);
    EXPECT_EQ(seq.GetModifiedStr(12, 0, ""), P("w000000012.v"));
}

TEST_F(FileSequenceTest, NumberAtTheEndOfTheNameIsStepZero) {
    FileSequence_cls seq;
    seq.Set(P("p00150.dat.gz"), 7, 1); // the user's offset does not apply to a number in the name
    EXPECT_EQ(seq.mOffset, 150);
    EXPECT_EQ(seq.mDigits, 5);
    EXPECT_EQ(seq.mHead, P("p"));
    EXPECT_EQ(seq.mTail, ".dat.gz");
    EXPECT_EQ(seq.GetFormat(), P("p%05d.dat.gz"));
    EXPECT_EQ(seq.GetModifiedStr(0, 0, ""), P("p00150.dat.gz"));
    EXPECT_EQ(seq.GetModifiedStr(2, 0, ""), P("p00152.dat.gz"));

    // A number too long for an int is still a field of its width.
    seq.Set(P("n12345678901234567890.dat"), 0, 1);
    EXPECT_EQ(seq.mDigits, 20);
    EXPECT_EQ(seq.mOffset, -1); // strtol saturates at LONG_MAX, whose low 32 bits read as -1
    EXPECT_EQ(seq.GetFormat(), P("n%020d.dat"));
}

TEST_F(FileSequenceTest, NamesWithoutATrailingNumberAreSingleFiles) {
    struct Case {
        const char* name;
        const char* head;
        const char* tail;
        const char* printed; // the name of step 5
    };
    const Case cases[] = {
        {"a.0012", "a", ".0012", "a.0012"},          // a number standing as an extension is not recognised
        {"a123b.dat", "a123b", ".dat", "a123b.dat"}, // digits must stand at the very end of the name
        {"plain", "plain", "", "plain"},
        // Width 10 is not a field, yet the single name is still handed to printf, which fills it.
        {"a%010d.dat", "a%010d", ".dat", "a0000000005.dat"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FileSequence_cls seq;
        seq.Set(P(c.name), 4, 1);
        EXPECT_EQ(seq.mDigits, -1);
        EXPECT_EQ(seq.mOffset, 0);
        EXPECT_EQ(seq.mHead, P(c.head));
        EXPECT_EQ(seq.mTail, c.tail);
        EXPECT_EQ(seq.GetFormat(), P(c.name));
        EXPECT_EQ(seq.GetModifiedStr(5, 0, ""), P(c.printed));
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
    FileSequence_cls seq;
    seq.Set(P("a0000.dat"), 0, 1);
    Watch(seq);
    seq.CalcMaxOffset(false);
    EXPECT_EQ(seq.mMaxOffset, 100);
    EXPECT_TRUE(seq.mValid);

    std::vector<wxString> expected = {P("a0000.dat"), P("a0100.dat"), P("a0100.dat.gz")};
    for (int i = 10; i <= 90; i += 10)
        expected.push_back(P(Num("a%04d.dat", i)));
    expected.push_back(P("a0100.dat"));
    expected.push_back(P("a0100.dat.gz"));
    for (int i = 91; i <= 99; ++i)
        expected.push_back(P(Num("a%04d.dat", i)));
    expected.push_back(P("a0100.dat"));
    expected.push_back(P("a0100.dat.gz"));
    EXPECT_EQ(mProbes, expected);
}

TEST_F(FileSequenceTest, HolesAreSeenOnlyWhereAProbeFalls) {
    {
        SCOPED_TRACE("hole at 50, probed by the tens");
        TempDir_cls dir;
        for (int i = 0; i < 100; ++i)
            if (i < 50 || i >= 60)
                WriteBytes(dir.Path(Num("h%03d", i)), "x");
        FileSequence_cls seq;
        seq.Set(dir.Path("h%03d"), 0, 1);
        seq.CalcMaxOffset(false);
        EXPECT_EQ(seq.mMaxOffset, 50);
    }
    {
        SCOPED_TRACE("hole at 150, jumped over by the hundreds");
        TempDir_cls dir;
        for (int i = 0; i < 300; ++i)
            if (i != 150)
                WriteBytes(dir.Path(Num("h%03d", i)), "x");
        FileSequence_cls seq;
        seq.Set(dir.Path("h%03d"), 0, 1);
        seq.CalcMaxOffset(false);
        EXPECT_EQ(seq.mMaxOffset, 300);
    }
}

TEST_F(FileSequenceTest, CompressedFilesCountExceptForStepZero) {
    Touch("c0000.dat");
    for (int i = 1; i < 13; ++i)
        Touch(Num("c%04d.dat.gz", i)); // the later steps only compressed
    FileSequence_cls seq;
    seq.Set(P("c0000.dat"), 0, 1);
    seq.CalcMaxOffset(false);
    EXPECT_EQ(seq.mMaxOffset, 13);

    // Named with ".gz", the plain files are found by removing it.
    TempDir_cls dir;
    WriteBytes(dir.Path("g0000.dat.gz"), "x");
    for (int i = 1; i < 4; ++i)
        WriteBytes(dir.Path(Num("g%04d.dat", i)), "x");
    seq.Set(dir.Path("g0000.dat.gz"), 0, 1);
    seq.CalcMaxOffset(false);
    EXPECT_EQ(seq.mMaxOffset, 4);

    // Step 0 is tried under its plain name only.
    TempDir_cls dir2;
    WriteBytes(dir2.Path("z0000.dat.gz"), "x");
    seq.Set(dir2.Path("z0000.dat"), 0, 1);
    seq.CalcMaxOffset(false);
    EXPECT_FALSE(seq.mValid);
    EXPECT_EQ(seq.mMaxOffset, 0);
}

TEST_F(FileSequenceTest, ExactlyOneNumberedFileCountsOne) {
    Touch("one0005.dat");
    FileSequence_cls seq;
    seq.Set(P("one0005.dat"), 0, 1);
    Watch(seq);
    seq.CalcMaxOffset(true);
    EXPECT_EQ(seq.mMaxOffset, 1);
    EXPECT_EQ(seq.mDigits, 4);
    EXPECT_TRUE(seq.mValid);
    const std::vector<wxString> expected = {P("one0005.dat"),   P("one0105.dat"),    P("one0105.dat.gz"),
                                            P("one0015.dat"),   P("one0015.dat.gz"), P("one0006.dat"),
                                            P("one0006.dat.gz")};
    EXPECT_EQ(mProbes, expected);
}

TEST_F(FileSequenceTest, StepsOtherThanOneAreCountedInSteps) {
    for (int i = 0; i < 12; ++i)
        Touch(Num("s%03d.v", 5 + 3 * i));
    FileSequence_cls seq;
    seq.Set(P("s%03d.v"), 5, 3);
    seq.CalcMaxOffset(false);
    EXPECT_EQ(seq.mMaxOffset, 12);
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

    Touch("single.dat");
    seq.Set(P("single.dat"), 0, 1);
    seq.CalcMaxOffset(true);
    EXPECT_EQ(seq.mMaxOffset, 1);
    EXPECT_TRUE(seq.mValid);
}

TEST_F(FileSequenceTest, SingleFileValidityOnlyClears) {
    FileSequence_cls seq;
    seq.Set(P("v0003.dat"), 0, 1);
    seq.CheckSingleFileValidity();
    EXPECT_FALSE(seq.mValid);
    Touch("v0003.dat");
    seq.CheckSingleFileValidity();
    EXPECT_FALSE(seq.mValid); // it never sets the flag again
    seq.Set(P("v0003.dat"), 0, 1);
    seq.CheckSingleFileValidity();
    EXPECT_TRUE(seq.mValid);
}

TEST_F(FileSequenceTest, StereoSideMarkers) {
    FileSequence_cls seq;
    seq.Set(P("img%04d.png"), 0, 1);
    EXPECT_EQ(seq.GetModifiedStr(5, 1, ""), P("imgL0005.png"));
    EXPECT_EQ(seq.GetModifiedStr(5, 2, ""), P("imgR0005.png"));
    EXPECT_EQ(seq.GetModifiedStr(5, 3, ""), P("img0005.png")); // any other side: empty marker

    seq.Set(P("img.png"), 0, 1);
    EXPECT_EQ(seq.GetModifiedStr(5, 1, ""), P("imgL.png"));
    EXPECT_EQ(seq.GetModifiedStr(5, 2, ""), P("imgR.png"));

    // Not exactly one "%": the marker goes ahead of the extension and the format is not printed.
    seq.Set(P("x%03d_y%03d.png"), 0, 1);
    EXPECT_EQ(seq.GetModifiedStr(5, 1, ""), P("x%03d_y%03dL.png"));
    EXPECT_EQ(seq.GetModifiedStr(5, 0, ""), P("x005_y%03d.png")); // the second field gets no value
}

TEST_F(FileSequenceTest, PercentThatIsNotAFieldGoesToPrintf) {
    ASSERT_TRUE(wxFileName::Mkdir(P("100%"), wxS_DIR_DEFAULT));
    Touch("100%/a.dat");
    FileSequence_cls seq;
    seq.Set(P("100%/a.dat"), 0, 1);
    EXPECT_EQ(seq.mDigits, -1);
    EXPECT_EQ(seq.GetModifiedStr(0, 0, ""), P("100%/a.dat"));
    seq.CalcMaxOffset(true);
    EXPECT_TRUE(seq.mValid);

    // printf reads "% o" as an octal conversion of the step number.
    seq.Set(P("50% off.dat"), 0, 1);
    EXPECT_EQ(seq.GetModifiedStr(0, 0, ""), P("500ff.dat"));
}

TEST_F(FileSequenceTest, LuaIndexScriptMapsTheIndex) {
    FileSequence_cls seq;
    seq.Set(P("a%04d.dat"), 10, 5);
    EXPECT_EQ(seq.GetModifiedStr(3, 0, "return index * 2 + 1"), P("a0007.dat"));
    // The script gets the index, not the number of the plain rule.
    EXPECT_EQ(seq.GetModifiedStr(3, 0, "return index"), P("a0003.dat"));
    EXPECT_EQ(seq.GetModifiedStr(3, 0, "local t = {4, 8, 15}\nreturn t[index]"), P("a0015.dat"));
    EXPECT_EQ(seq.GetModifiedStr(3, 1, "return 42.9"), P("aL0042.dat"));
    EXPECT_EQ(seq.GetModifiedStr(3, 0, "return 'x'"), P("a0000.dat")); // not a number: 0

    struct Case {
        const char* script;
        const char* logged;
    };
    const Case failing[] = {
        {"return (", "::FileSequence"},
        {"error('boom')", "boom::FileSequence"},
        {"while true do end", "endless loop?)::FileSequence"},
    };
    for (const Case& c : failing) {
        SCOPED_TRACE(c.script);
        LogCapture_cls log;
        EXPECT_EQ(seq.GetModifiedStr(3, 0, c.script), P("a0025.dat")); // 5 * 3 + 10
        EXPECT_TRUE(log.Contains(c.logged));
    }
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

TEST_F(FileSequenceTest, DefaultSequenceTagGoesAheadOfTheExtensions) {
    FileSequence_cls seq;
    seq.Set(P("out.png"), 0, 3);
    seq.AppendDefaultSequenceTag();
    EXPECT_EQ(seq.mPath, P("out%04d.png"));
    EXPECT_EQ(seq.mStep, 1);
    EXPECT_EQ(seq.mOffset, 0);
    EXPECT_EQ(seq.mDigits, 4);
    EXPECT_EQ(seq.GetModifiedStr(12, 0, ""), P("out0012.png"));
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

} // namespace

TEST_F(FileSequenceTest, StrideOnDiskBecomesTheStepWhenTheNextNumberIsMissing) {
    struct Case {
        const char* name;
        std::vector<wxString> files;
        wxString path;
        int step, count;
    } cases[] = {
        {"every 50, padded", {"d.0000.txt", "d.0050.txt", "d.0100.txt", "d.0150.txt"}, "d.%04d.txt", 50, 4},
        {"every 50, the name of the first file", {"e0000.txt", "e0050.txt", "e0100.txt"}, "e0000.txt", 50, 3},
        {"unpadded, as LAMMPS writes by default",
         {"dump.0", "dump.50", "dump.100", "dump.150", "dump.200"},
         "dump.%d",
         50,
         5},
        {"the later steps compressed", {"g0000.dat", "g0010.dat.gz", "g0020.dat.gz"}, "g%04d.dat", 10, 3},
        {"from a number in the name", {"h0100.v", "h0125.v", "h0150.v", "h0000.v"}, "h0100.v", 25, 3},
        // Not a constant stride: the count stays as the probes find it.
        {"uneven numbers", {"u0000.d", "u0030.d", "u0050.d"}, "u%04d.d", 1, 1},
        {"a name that does not fit the padding", {"w0000.d", "w50.d", "w0100.d"}, "w%04d.d", 100, 2},
        // Every number there: nothing changes.
        {"every number", {"a0000.d", "a0001.d", "a0002.d", "a0050.d"}, "a%04d.d", 1, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TempDir_cls dir;
        for (const wxString& f : c.files)
            ASSERT_TRUE(WriteBytes(dir.Path(f), "x"));
        FileSequence_cls seq;
        seq.Set(dir.Path(c.path), 0, 1);
        seq.CalcMaxOffset(false);
        EXPECT_TRUE(seq.mValid);
        EXPECT_EQ(seq.mStep, c.step);
        EXPECT_EQ(seq.mMaxOffset, c.count);
        // Each counted step names a file that is there.
        for (int i = 0; i < seq.mMaxOffset; ++i) {
            const wxString name = seq.GetModifiedStr(i, 0, "");
            EXPECT_TRUE(wxFileExists(name) || wxFileExists(name + ".gz")) << name;
        }
    }
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
