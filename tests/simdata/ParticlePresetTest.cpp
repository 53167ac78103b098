// What the particle page builds on without a window: a picked file turned into the pattern of its
// sequence, element symbols in the Type column of a text file (an XYZ file from tests/data), the
// format presets, compared as the project text they leave, and the progress and abort of reads.
#include "ElementSymbol_cls.h"
#include "ParticleFormatPreset_cls.h"
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "SequencePattern_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "ThreadParticleAsciiRead.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(SequencePatternTest, TheLastDigitRunOfTheNameBecomesTheField) {
    const struct {
        const char* path;
        const char* pattern;
    } cases[] = {
        {"dump.melt.0050.txt", "dump.melt.%04d.txt"},
        {"/data/run/dump.melt.0000.txt", "/data/run/dump.melt.%04d.txt"},
        {"p00150.dat", "p%05d.dat"},
        {"a0012.dat.gz", "a%04d.dat.gz"},
        {"dump.melt.500", "dump.melt.%d"},                // no leading zero: no width can be told
        {"frame7.png", "frame%d.png"},                    // one digit
        {"frame0.png", "frame%d.png"},                    // a lone zero is no padding
        {"img00.png", "img%02d.png"},                     // all zeros is padding
        {"run2/out_t3_0050.dat", "run2/out_t3_%04d.dat"}, // several runs: the last one of the name
        {"t12_z034.png", "t12_z%03d.png"},
        {"run0050/data.txt", "run0050/data.txt"}, // digits only in a folder: one file
        {"C:\\sim\\run7\\a.txt", "C:\\sim\\run7\\a.txt"},
        {"C:\\sim\\a007.txt", "C:\\sim\\a%03d.txt"},
        {"molecules.xyz", "molecules.xyz"}, // no digits
        {"", ""},
        {"a%04d.dat", "a%04d.dat"},                   // already a pattern
        {"a0000000000012.dat", "a0000000000012.dat"}, // wider than any field
        {"a000000012.dat", "a%09d.dat"},
        {"12345", "%d"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(SequencePattern_cls::GetStrPattern(c.path), c.pattern);
    }
}

TEST(ElementSymbolTest, SymbolsReadAsAtomicNumbersInAnyCase) {
    const struct {
        const char* word;
        int number;
    } cases[] = {
        {"H", 1},   {"He", 2},  {"Li", 3},  {"C", 6},   {"N", 7},      {"O", 8},  {"Na", 11},  {"Cl", 17},
        {"CL", 17}, {"cl", 17}, {"cL", 17}, {"Fe", 26}, {"Au", 79},    {"U", 92}, {"Og", 118}, {"h", 1},
        {"X", 0},   {"Xx", 0},  {"Hex", 0}, {"", 0},    {"Carbon", 0}, {"J", 0},  {"Q", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.word);
        EXPECT_EQ(ElementSymbol_cls::GetAtomicNumber(wxString(c.word)), c.number);
    }
    SCOPED_TRACE("the table both ways");
    for (int n = 1; n <= ElementSymbol_cls::kCount; ++n)
        ASSERT_EQ(ElementSymbol_cls::GetAtomicNumber(ElementSymbol_cls::GetStrSymbol(n)), n) << n;
    EXPECT_EQ(ElementSymbol_cls::GetStrSymbol(0), "");
    EXPECT_EQ(ElementSymbol_cls::GetStrSymbol(119), "");
}

TEST(ElementSymbolTest, TypeColumnTakesNumbersAsBeforeAndSymbolsAsElements) {
    const struct {
        const char* line;
        int type;
        float x; // the column after the type: the cursor went past the word
    } cases[] = {
        {"7 1.5", 7, 1.5f},   {"-3 2", -3, 2.0f},   {"+5 2", 5, 2.0f},       {"300 1", 300, 1.0f},
        {"C 1.5", 6, 1.5f},   {"Cl -2", 17, -2.0f}, {"Qq 4", 0, 4.0f},       {"1abc 3", 1, 3.0f},
        {"He\t1 9", 2, 9.0f}, {"x 5", 0, 5.0f},     {"Og 0.25", 118, 0.25f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        const std::string line = c.line;
        const char* p = line.c_str();
        const char* eol = p + line.size();
        EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnType(&p, eol), c.type);
        EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnFloat(&p, eol), c.x);
    }
}

class XyzReadTest : public SnapReadFixture_cls {
protected:
    void Read(const wxString& path, const wxArrayString& header, const wxArrayString& body,
              int direction = 0) {
        ParticleFormatClone_cls clone;
        MakeClone(clone, 0, direction, header, body);
        ReadOnThread(path, clone);
    }
};

TEST_F(XyzReadTest, NumbersStayNumbersAndUnknownWordsReadZero) {
    const std::string text = "5\ncomment\n2 1 2 3\nC 4 5 6\nQq 7 8 9\n300 1 1 1\nfe 0 0 0\n";
    ASSERT_TRUE(WriteBytes(mDir.Path("m.xyz"), text));
    for (int direction : {0, 1}) {
        SCOPED_TRACE(direction ? "vertical" : "horizontal");
        if (direction == 0) {
            Read(mDir.Path("m.xyz"), Names({"ParticleNumber", "Dummy"}), Names({"Type", "XYZ"}));
            ASSERT_EQ(mSnap->mNumber.load(), 5);
            EXPECT_EQ(Vec(mSnap->mType, 5), (std::vector<unsigned char>{2, 6, 0, 300 & 0xff, 26}));
            EXPECT_EQ(mSnap->mXYZ[3 * 2], 7.0f);
        } else {
            // One type per line, then one position per line.
            const std::string vertical = "3\nN\n7\nUnknown\n1 2 3\n4 5 6\n7 8 9\n";
            ASSERT_TRUE(WriteBytes(mDir.Path("v.txt"), vertical));
            Read(mDir.Path("v.txt"), Names({"ParticleNumber"}), Names({"Type", "XYZ"}), 1);
            ASSERT_EQ(mSnap->mNumber.load(), 3);
            EXPECT_EQ(Vec(mSnap->mType, 3), (std::vector<unsigned char>{7, 7, 0}));
            EXPECT_EQ(mSnap->mXYZ[3 * 2 + 2], 9.0f);
        }
    }
}

TEST(ParticleFormatPresetTest, PresetsWriteTheExactFormatBlock) {
    const wxString strHead = "ConfItemList::Begin::SceneObj::Melt::ParticleFormat\n";
    const struct {
        int preset;
        const char* block;
    } cases[] = {
        {ParticleFormatPreset_cls::PRESET_LAMMPS_CUSTOM,
         "DataType=0\nArrayDirection=0\nPreSortByID=1\nRemoveDupli=0\n"
         "ParticleFormatHeader=Dummy::##::Time::##::Dummy::##::ParticleNumber::##::Dummy::##::BoxBounds::##::"
         "Dummy\nParticleFormatBodyBinary=XYZ(float)::##::Type(int)::##::Size(float)\n"
         "ParticleFormatBodyAscii=ID::##::Type::##::XYZ\n"},
        {ParticleFormatPreset_cls::PRESET_XYZ,
         "DataType=0\nArrayDirection=0\nPreSortByID=0\nRemoveDupli=0\n"
         "ParticleFormatHeader=ParticleNumber::##::Dummy\n"
         "ParticleFormatBodyBinary=XYZ(float)::##::Type(int)::##::Size(float)\n"
         "ParticleFormatBodyAscii=Type::##::XYZ\n"},
        {ParticleFormatPreset_cls::PRESET_RAW_FLOAT32,
         "DataType=1\nArrayDirection=0\nPreSortByID=0\nRemoveDupli=0\nParticleFormatHeader=\n"
         "ParticleFormatBodyBinary=XYZ(float)\nParticleFormatBodyAscii=XYZ::##::Type::##::Size\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(ParticleFormatPreset_cls::GetStrLabel(c.preset));
        ParticleFormat_cls format;
        format.SetTag("SceneObj::Melt::ParticleFormat");
        // A format that differs from every preset in every switch.
        format.mCArrayDirection.SetBodyFromData(1LL);
        format.mCRemoveDupli.SetBodyFromDataBOOL(true);
        wxString strBefore;
        format.Serialize(strBefore);
        FormatHost_cls host(format);
        ASSERT_TRUE(ParticleFormatPreset_cls::ApplyPresetCommand(format, c.preset));
        wxString strAfter;
        format.Serialize(strAfter);
        EXPECT_EQ(strAfter, strHead + c.block + "ConfItemList::End\n");

        SCOPED_TRACE("the rows and the reader see the preset");
        format.UpdateRowsFromStrings();
        EXPECT_EQ(format.mVCHeader.size(), format.mAStrHeader.GetCount());
        ParticleFormatClone_cls clone;
        clone.CloneFromFormat(format, false);
        EXPECT_EQ(clone.GetDataType(), c.preset == ParticleFormatPreset_cls::PRESET_RAW_FLOAT32 ? 1 : 0);

        SCOPED_TRACE("undo gives the format before");
        host.Undo();
        wxString strUndone;
        format.Serialize(strUndone);
        EXPECT_EQ(strUndone, strBefore);
    }
    EXPECT_FALSE(ParticleFormatPreset_cls::ApplyPresetCommand(*std::make_unique<ParticleFormat_cls>(), 3));
    EXPECT_EQ(ParticleFormatPreset_cls::GetStrItems(-1), "");
}

TEST_F(XyzReadTest, PresetsReadTheirFiles) {
    // Each preset against a file of its kind: the LAMMPS dump and the XYZ file from tests/data,
    // and raw floats written here.
    std::string raw;
    for (float v : {1.0f, 2.0f, 3.0f, -4.0f, -5.0f, -6.0f})
        raw.append(reinterpret_cast<const char*>(&v), sizeof v);
    ASSERT_TRUE(WriteBytes(mDir.Path("raw.bin"), raw));
    const struct {
        int preset;
        wxString path;
        int count;
        float lastZ;
    } cases[] = {
        {ParticleFormatPreset_cls::PRESET_LAMMPS_CUSTOM,
         wxString(ORV_TEST_DATA_DIR) + "/lammps/dump.small.10", 32, -1.0f},
        {ParticleFormatPreset_cls::PRESET_XYZ, wxString(ORV_TEST_DATA_DIR) + "/xyz/molecules.xyz", 13,
         5.2746f},
        {ParticleFormatPreset_cls::PRESET_RAW_FLOAT32, mDir.Path("raw.bin"), 2, -6.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(ParticleFormatPreset_cls::GetStrLabel(c.preset));
        ParticleFormat_cls format;
        FormatHost_cls host(format);
        ASSERT_TRUE(ParticleFormatPreset_cls::ApplyPresetCommand(format, c.preset));
        ParticleFormatClone_cls clone;
        clone.CloneFromFormat(format, false);
        mSnap = std::make_unique<ParticleSnap_cls>(&mSeq, 0);
        mSnap->SetStrFile(c.path);
        ASSERT_TRUE(mSnap->ReadHeader(&clone));
        ASSERT_TRUE(mSnap->ReadData(&clone, false));
        ASSERT_EQ(mSnap->mNumber.load(), c.count);
        if (c.lastZ != -1.0f)
            EXPECT_EQ(mSnap->mXYZ[3 * (c.count - 1) + 2], c.lastZ);
        else
            EXPECT_EQ(mSnap->mID[c.count - 1], c.count) << "sorted by ID";
        // molecules.xyz: water, methane, carbon dioxide and hydrogen chloride, typed by element.
        if (c.preset == ParticleFormatPreset_cls::PRESET_XYZ) {
            EXPECT_EQ(Vec(mSnap->mType, 13),
                      (std::vector<unsigned char>{8, 1, 1, 6, 1, 1, 1, 1, 6, 8, 8, 1, 17}));
            EXPECT_EQ(Vec(mSnap->mXYZ, 6),
                      (std::vector<float>{0.0f, 0.0f, 0.1173f, 0.0f, 0.7572f, -0.4692f}));
        }
    }
}

} // namespace

namespace {

// Reads of large files tell their progress and stop at the abort request: the snap keeps what was
// decoded until then and says that it was aborted; the next read of the step is whole again.
class ReadProgressTest : public XyzReadTest {
protected:
    void TearDown() override { TimeCtrl_cls::msbForceAbort = false; }
    void Start(const wxString& path, int dataType, const char* header, const char* body) {
        ParticleFormatClone_cls clone;
        MakeClone(clone, dataType, 0, List(header), List(body));
        ReadOnThread(path, clone);
    }
};

TEST_F(ReadProgressTest, AbortStopsTextAndBinaryReadsAtTheirNextReport) {
    FixedThreads_cls threads(1);
    const int n = 450000;
    std::string text = std::to_string(n) + "\n", bytes;
    for (int i = 0; i < n; ++i) {
        text += std::to_string(i + 1) + " 2 3\n";
        for (float v : {static_cast<float>(i + 1), 2.0f, 3.0f})
            bytes.append(reinterpret_cast<const char*>(&v), sizeof v);
    }
    ASSERT_TRUE(WriteBytes(mDir.Path("big.txt"), text));
    ASSERT_TRUE(WriteBytes(mDir.Path("big.dat"), bytes));
    const struct {
        const char* what;
        wxString path;
        int dataType;
        const char* header;
        const char* body;
        int decoded; // particles read before the first look at the request
    } cases[] = {
        {"text, one report per 65536 lines", mDir.Path("big.txt"), 0, "ParticleNumber", "XYZ", 65536},
        {"binary, one report per chunk of 200000", mDir.Path("big.dat"), 1, "", "XYZ(float)", 200000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        TimeCtrl_cls::msbForceAbort = true;
        Start(c.path, c.dataType, c.header, c.body);
        ASSERT_EQ(mSnap->mNumber.load(), n);
        EXPECT_TRUE(mSnap->mbReadAborted.load());
        EXPECT_EQ(mSnap->mReadDone.load(), c.decoded);
        EXPECT_EQ(mSnap->GetReadPercent(), c.decoded * 100LL / n);
        EXPECT_EQ(mSnap->mXYZ[3 * (c.decoded - 1)], static_cast<float>(c.decoded));
        EXPECT_EQ(mSnap->mXYZ[3 * c.decoded], 0.0f) << "not decoded";
        EXPECT_TRUE(mSnap->GetStrInfo(0).Contains("Aborted at")) << mSnap->GetStrInfo(0);

        TimeCtrl_cls::msbForceAbort = false;
        Start(c.path, c.dataType, c.header, c.body);
        EXPECT_FALSE(mSnap->mbReadAborted.load());
        EXPECT_EQ(mSnap->GetReadPercent(), 100);
        EXPECT_EQ(mSnap->mXYZ[3 * (n - 1)], static_cast<float>(n));
    }
}

} // namespace
