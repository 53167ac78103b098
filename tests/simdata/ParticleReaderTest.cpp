// The particle readers: headers and counts, text and binary bodies in both layouts decoded value
// by value, gzip files, the sort by ID with duplicate removal, the substitute data and bad input.
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "ReadEventSink_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "UseGZ_cls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <random>
#include <sstream>

namespace {

using F = std::vector<float>;
using I = std::vector<int>;
using UC = std::vector<unsigned char>;
using LL = std::vector<long long>;

class CountingSink_cls : public ReadEventSink_cls {
public:
    void PostReadFinished() override { mCount.fetch_add(1); }
    std::atomic<int> mCount{0};
};

// A snap of a sequence of its own and the clone of the lists it is read through.
struct OwnSnap_cls {
    OwnSnap_cls(int dataType, int direction, const char* pHeader, const char* pBody, bool sort = false,
                bool remove = false, int index = 0)
        : mSnap(&mSeq, index) {
        MakeClone(mClone, dataType, direction, List(pHeader), List(pBody), sort, remove);
    }
    bool Header(const wxString& path) {
        mSnap.SetStrFile(path);
        return mSnap.ReadHeader(&mClone);
    }
    // The body, on a thread when async; waits for it and passes on what the thread logged.
    bool Data(bool async) {
        const bool b = mSnap.ReadData(&mClone, async);
        mSnap.WaitReadingThread(1);
        FlushThreadLogs();
        return b;
    }
    bool Read(const wxString& path, bool async) { return Header(path) && Data(async); }
    ParticleSequence_cls mSeq;
    ParticleSnap_cls mSnap;
    ParticleFormatClone_cls mClone;
};

class ParticleFixture : public DataFileFixture_cls {
protected:
    bool Write(const wxString& name, const std::string& bytes) { return WriteBytes(P(name), bytes); }
    bool WriteGz(const wxString& name, const std::string& bytes) {
        return UseGZ_cls::SaveMemoryToGZ(P(name), bytes.data(), static_cast<long long>(bytes.size()));
    }
};

class ParticleReaderTest : public ParticleFixture, public ::testing::WithParamInterface<bool> {};

std::string TwoRecordsWithEveryBinaryItem() {
    Bytes_cls b;
    b.I(2).F(2.5f); // ParticleNumber, Time
    // XYZ, Type, Size, ID, ID(long long), Value0..2, Dummy, Dummyx3, Dummyx10
    b.F(1).F(2).F(3).I(300).F(0.5f).I(11).L(1LL << 40).F(7).F(8).F(9).I(-1);
    for (int k = 0; k < 3 + 10; ++k)
        b.F(99);
    b.F(-1).F(-2).F(-3).I(-1).F(1.5f).I(12).L(-5).F(17).F(18).F(19).I(-1);
    for (int k = 0; k < 3 + 10; ++k)
        b.F(99);
    return b.mStr;
}

const char* const kAllBinaryItems =
    "XYZ(float) Type(int) Size(float) ID(int) ID(long long) Value0(float) "
    "Value1(float) Value2(float) Dummy(4byte) Dummyx3(12byte) Dummyx10(40byte)";

// The two records above as read, from the plain file or its gzip twin.
void ExpectTwoRecords(const ParticleSnap_cls& snap) {
    ASSERT_EQ(snap.mNumber.load(), 2);
    EXPECT_TRUE(snap.mHeaderOK);
    EXPECT_DOUBLE_EQ(snap.mTime, 2.5);
    EXPECT_EQ(Vec(snap.mXYZ, 6), (F{1, 2, 3, -1, -2, -3}));
    EXPECT_EQ(Vec(snap.mType, 2), (UC{44, 255})); // 300 keeps its low byte
    EXPECT_EQ(Vec(snap.mSize, 2), (F{0.5f, 1.5f}));
    EXPECT_EQ(Vec(snap.mID, 2), (I{11, 12}));
    EXPECT_EQ(Vec(snap.mIDLong, 2), (LL{1LL << 40, -5}));
    for (int v = 0; v < 3; ++v)
        EXPECT_EQ(Vec(snap.mValue[v], 2), (F{7.0f + v, 17.0f + v}));
    EXPECT_FALSE(snap.mVelocity);
}

TEST_P(ParticleReaderTest, BinaryHorizontalIsDecodedValueByValue) {
    ASSERT_TRUE(Write("b.dat", TwoRecordsWithEveryBinaryItem()));
    OwnSnap_cls r(1, 0, "ParticleNumber Time", kAllBinaryItems, false, false, 3);
    ASSERT_TRUE(r.Read(P("b.dat"), GetParam()));
    ExpectTwoRecords(r.mSnap);
    EXPECT_TRUE(mLog.Contains("Read Stert :: index = 3"));
    EXPECT_EQ(mLog.Contains("ReadLog :: " + P("b.dat") + "::"), GetParam())
        << "only the thread logs its time";
    // The same file is not read twice.
    EXPECT_FALSE(r.mSnap.ReadHeader(&r.mClone));
    EXPECT_FALSE(r.mSnap.ReadData(&r.mClone, GetParam()));
}

TEST_P(ParticleReaderTest, BinaryVerticalReadsColumnAfterColumn) {
    // Velocity is counted in the record size but consumes no bytes: the file carries padding
    // so that the size still allows the four particles of the header.
    Bytes_cls b;
    b.I(4);
    for (int i = 0; i < 4; ++i)
        b.F(i + 0.25f).F(i + 0.5f).F(i + 0.75f);
    for (int i = 0; i < 4; ++i)
        b.I(256 + i);
    for (int i = 0; i < 4; ++i)
        b.I(100 + i);
    for (int i = 0; i < 4; ++i)
        b.F(10.0f * i);
    for (int i = 0; i < 3 * 4; ++i)
        b.F(0);
    ASSERT_TRUE(Write("v.dat", b.mStr));
    OwnSnap_cls r(1, 1, "ParticleNumber", "XYZ(float) VXVYVZ(float) Type(int) ID(int) Size(float)");
    ASSERT_TRUE(r.Read(P("v.dat"), GetParam()));
    ASSERT_EQ(r.mSnap.mNumber.load(), 4);
    EXPECT_EQ(Vec(r.mSnap.mXYZ, 12),
              (F{0.25f, 0.5f, 0.75f, 1.25f, 1.5f, 1.75f, 2.25f, 2.5f, 2.75f, 3.25f, 3.5f, 3.75f}));
    EXPECT_EQ(Vec(r.mSnap.mType, 4), (UC{0, 1, 2, 3}));
    EXPECT_EQ(Vec(r.mSnap.mID, 4), (I{100, 101, 102, 103}));
    EXPECT_EQ(Vec(r.mSnap.mSize, 4), (F{0, 10, 20, 30}));
    EXPECT_EQ(Vec(r.mSnap.mVelocity, 12), F(12, 0.0f));
}

TEST_P(ParticleReaderTest, TextHorizontalIsDecodedValueByValue) {
    ASSERT_TRUE(Write("t.txt", "2\n12.75\n1.5 2.5 3.5 300 0.25 7 9000000000\n-1 -2 -3 4 2 8 -9000000000\n"));
    OwnSnap_cls r(0, 0, "ParticleNumber Time", "XYZ Type Size ID ID(long long)");
    ASSERT_TRUE(r.Read(P("t.txt"), GetParam()));
    ASSERT_EQ(r.mSnap.mNumber.load(), 2);
    EXPECT_DOUBLE_EQ(r.mSnap.mTime, 12.75); // the header's time overrides the step number
    EXPECT_EQ(Vec(r.mSnap.mXYZ, 6), (F{1.5f, 2.5f, 3.5f, -1, -2, -3}));
    EXPECT_EQ(Vec(r.mSnap.mType, 2), (UC{44, 4}));
    EXPECT_EQ(Vec(r.mSnap.mSize, 2), (F{0.25f, 2}));
    EXPECT_EQ(Vec(r.mSnap.mID, 2), (I{7, 8}));
    EXPECT_EQ(Vec(r.mSnap.mIDLong, 2), (LL{9000000000LL, -9000000000LL}));
}

TEST_P(ParticleReaderTest, TextColumnsAreSeparatedByExactlyOneBlank) {
    struct Case {
        const char* line;
        const char* body;
        F xyzSize;
    } cases[] = {
        {"1  2 3 4", "XYZ Size", {1, 2, 2, 3}},  // two blanks shift the columns
        {"1 2", "XYZ Size", {1, 2, 0, 0}},       // missing columns read 0
        {"1 2 3 4", "X Y Z Size", {3, 0, 0, 4}}, // X, Y and Z all go to the first component
        {"5 6 7 8 9", "Dummy XYZ Size", {6, 7, 8, 9}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        ASSERT_TRUE(Write("c.txt", std::string("1\n") + c.line + "\n"));
        OwnSnap_cls r(0, 0, "ParticleNumber", c.body);
        ASSERT_TRUE(r.Read(P("c.txt"), GetParam()));
        EXPECT_EQ((F{r.mSnap.mXYZ[0], r.mSnap.mXYZ[1], r.mSnap.mXYZ[2], r.mSnap.mSize[0]}), c.xyzSize);
    }
}

TEST_P(ParticleReaderTest, TextVerticalSplitsComponentsAndSkipsUnreadItems) {
    // "ID" and "VXVYVZ" consume no lines in a vertical text body; X, Y, Z go to their own
    // components here.
    ASSERT_TRUE(Write("tv.txt", "2\n"
                                "1\n2\n"     // X
                                "3\n4\n"     // Y
                                "5\n6\n"     // Z
                                "300\n7\n"   // Type
                                "0.5\n1.5\n" // Size
                                "x\ny\nz\n"  // Dummyx3, first particle
                                "u\nv\nw\n"  // Dummyx3, second particle
                                "8\n9\n"));  // Value0
    OwnSnap_cls r(0, 1, "ParticleNumber", "ID X VXVYVZ Y Z Type Size Dummyx3 Value0");
    ASSERT_TRUE(r.Read(P("tv.txt"), GetParam()));
    ASSERT_EQ(r.mSnap.mNumber.load(), 2);
    EXPECT_EQ(Vec(r.mSnap.mXYZ, 6), (F{1, 3, 5, 2, 4, 6}));
    EXPECT_EQ(Vec(r.mSnap.mType, 2), (UC{44, 7}));
    EXPECT_EQ(Vec(r.mSnap.mSize, 2), (F{0.5f, 1.5f}));
    EXPECT_EQ(Vec(r.mSnap.mValue[0], 2), (F{8, 9}));
    EXPECT_EQ(r.mSnap.mID[0], 0);
    EXPECT_EQ(r.mSnap.mVelocity[0], 0.0f);
}

TEST_P(ParticleReaderTest, GzipFilesReadLikePlainOnes) {
    ASSERT_TRUE(WriteGz("g.dat.gz", TwoRecordsWithEveryBinaryItem()));
    OwnSnap_cls r(1, 0, "ParticleNumber Time", kAllBinaryItems);
    // The plain name finds its gzip twin.
    ASSERT_TRUE(r.Read(P("g.dat"), GetParam()));
    EXPECT_EQ(r.mSnap.mFile, P("g.dat.gz"));
    ExpectTwoRecords(r.mSnap);

    ASSERT_TRUE(WriteGz("g.txt.gz", "Time 4.5\n1 2 3 5\n4 5 6 6\n7 8 9 7"));
    OwnSnap_cls t(0, 0, "Time", "XYZ ID");
    ASSERT_TRUE(t.Read(P("g.txt.gz"), GetParam()));
    ASSERT_EQ(t.mSnap.mNumber.load(), 3); // no count in the header: every line but the header
    EXPECT_DOUBLE_EQ(t.mSnap.mTime, 0.0); // "Time 4.5" is no number
    EXPECT_EQ(t.mSnap.mXYZ[8], 9.0f);
    EXPECT_EQ(Vec(t.mSnap.mID, 3), (I{5, 6, 7}));
}

INSTANTIATE_TEST_SUITE_P(SyncAndAsync, ParticleReaderTest, ::testing::Values(false, true),
                         [](const auto& paramInfo) { return paramInfo.param ? "Async" : "Sync"; });

using ParticleHeaderTest = ParticleFixture;

TEST_F(ParticleHeaderTest, ReadersOfTwoSequencesRunAtOnce) {
    // Two reads at once, each over more than one chunk and of another record size: each keeps its
    // own chunk buffers. The vertical one has more types than one pass of its type buffer.
    const int nH = 200000 + 33;
    Bytes_cls h;
    for (int i = 0; i < nH; ++i)
        h.F(static_cast<float>(i)).F(1).F(2).I(i).F(0.5f);
    const int nV = 2 * 65536 + 9;
    Bytes_cls v;
    for (int i = 0; i < nV; ++i)
        v.F(static_cast<float>(-i)).F(0).F(0);
    for (int i = 0; i < nV; ++i)
        v.I(i);
    ASSERT_TRUE(Write("h.dat", h.mStr));
    ASSERT_TRUE(Write("v.dat", v.mStr));
    // One read alone first: the toolkit sets up its logging from worker threads on first use,
    // which is not what this test is about.
    ASSERT_TRUE(OwnSnap_cls(1, 1, "", "XYZ(float) Type(int)").Read(P("v.dat"), true));
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        OwnSnap_cls rH(1, 0, "", "XYZ(float) ID(int) Size(float)"), rV(1, 1, "", "XYZ(float) Type(int)");
        ASSERT_TRUE(rH.Header(P("h.dat")));
        ASSERT_TRUE(rV.Header(P("v.dat")));
        ASSERT_TRUE(rH.mSnap.ReadData(&rH.mClone, true));
        ASSERT_TRUE(rV.mSnap.ReadData(&rV.mClone, true));
        rH.mSnap.WaitReadingThread(1);
        rV.mSnap.WaitReadingThread(1);
        FlushThreadLogs();
        ASSERT_EQ(rH.mSnap.mNumber.load(), nH);
        ASSERT_EQ(rV.mSnap.mNumber.load(), nV);
        for (int i : {0, 199999, 200000, nH - 1}) {
            EXPECT_EQ(rH.mSnap.mXYZ[3 * i], static_cast<float>(i)) << i;
            EXPECT_EQ(rH.mSnap.mID[i], i) << i;
            EXPECT_EQ(rH.mSnap.mSize[i], 0.5f) << i;
        }
        for (int i : {0, 65535, 65536, 131071, 131072, nV - 1}) {
            EXPECT_EQ(rV.mSnap.mXYZ[3 * i], static_cast<float>(-i)) << i;
            EXPECT_EQ(rV.mSnap.mType[i], i & 0xff) << i;
        }
    }
}

TEST_F(ParticleHeaderTest, CountsOfBinaryAndTextHeaders) {
    struct Case {
        const char* name;
        std::string bytes;
        int dataType, direction;
        const char* header;
        const char* body;
        int expected;
        double time; // the header's time, or the step number 3 of the snap
    };
    Bytes_cls large;
    for (int i = 0; i < 1500 * 4; ++i)
        large.F(static_cast<float>(i));
    auto records = [](int count, int n, int extraBytes) {
        Bytes_cls b;
        b.I(count);
        for (int i = 0; i < n; ++i)
            b.F(1).F(2).F(3).I(i);
        return b.mStr + std::string(static_cast<size_t>(extraBytes), '\x7f');
    };
    const Case cases[] = {
        {"count larger than the file allows: the size wins", records(1000, 5, 0), 1, 0, "ParticleNumber",
         "XYZ(float) ID(int)", 5, 3.0},
        {"count smaller: the count wins", records(3, 5, 0), 1, 0, "ParticleNumber", "XYZ(float) ID(int)", 3,
         3.0},
        {"a short last record is dropped", records(1000, 5, 7), 1, 0, "ParticleNumber", "XYZ(float) ID(int)",
         5, 3.0},
        {"count 0 gives the substitute data", records(0, 5, 0), 1, 0, "ParticleNumber", "XYZ(float) ID(int)",
         32768, 3.0},
        {"ParticleMax= limits the count", large.mStr, 1, 1, "", "Size(float) XYZ(float)", 1000, 3.0},
        {"time is the step number unless the file gives it", "2\n1 2 3\n4 5 6\n", 0, 0, "ParticleNumber",
         "XYZ", 2, 3.0},
        // Without a count, the lines are counted.
        {"a trailing newline makes no extra particle", "0.5\n1 2 3\n4 5 6\n", 0, 0, "Time", "XYZ", 2, 0.5},
        {"no newline at the end", "0.5\n1 2 3\n4 5 6", 0, 0, "Time", "XYZ", 2, 0.5},
        {"X and Y count no line: one per particle", "0.5\n1\n2\n3\n4\n5\n6\n7\n", 0, 1, "Time", "X Y Type", 7,
         0.5},
        {"vertical lines per particle", "0.5\n1\n2\n3\n4\n5\n6\n", 0, 1, "Time", "XYZ Dummyx3", 1, 0.5},
    };
    mServices.mPref.mCParticleMax.SetBodyFromData(1LL); // thousands
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(Write("n.dat", c.bytes));
        OwnSnap_cls r(c.dataType, c.direction, c.header, c.body, false, false, 3);
        ASSERT_TRUE(r.Header(P("n.dat")));
        EXPECT_EQ(r.mSnap.mNumber.load(), c.expected);
        if (c.expected != 32768) {
            EXPECT_DOUBLE_EQ(r.mSnap.mTime, c.time);
        }
    }
}

TEST_F(ParticleHeaderTest, SortAndDuplicateRemoval) {
    struct Case {
        const char* name;
        std::vector<int> ids;
        bool sort;
        bool remove;
        std::vector<int> expected;
    } cases[] = {
        {"sorted, duplicates dropped on both sides", {1, 2, 2, 3}, true, true, {1, 3}},
        {"unsorted duplicates that do not stand together stay", {2, 1, 2}, false, true, {2, 1, 2}},
        {"adjacent duplicates go without sorting", {4, 4, 1}, false, true, {1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        Bytes_cls b;
        for (int id : c.ids)
            b.I(id).F(static_cast<float>(id) * 10.0f);
        ASSERT_TRUE(Write("d.dat", b.mStr));
        OwnSnap_cls r(1, 0, "", "ID(int) Size(float)", c.sort, c.remove);
        ASSERT_TRUE(r.Read(P("d.dat"), true));
        const int n = static_cast<int>(c.expected.size());
        ASSERT_EQ(r.mSnap.mNumber.load(), n);
        EXPECT_EQ(Vec(r.mSnap.mID, n), c.expected);
        F sizes; // the other arrays follow the IDs
        for (int id : c.expected)
            sizes.push_back(id * 10.0f);
        EXPECT_EQ(Vec(r.mSnap.mSize, n), sizes);
        const int dropped = static_cast<int>(c.ids.size()) - n;
        EXPECT_EQ(log.Contains(wxString::Format("Detect duplicated ID: num= %d", dropped)), dropped > 0);
    }
}

TEST_F(ParticleHeaderTest, MissingStepGivesTheDefaultDataOnce) {
    OwnSnap_cls r(1, 0, "ParticleNumber", "XYZ(float) Type(int) Size(float)");
    ParticleSnap_cls& snap = r.mSnap;
    ASSERT_TRUE(r.Header(P("missing.dat")));
    EXPECT_EQ(snap.mFile, P("missing.dat"));
    EXPECT_FALSE(snap.mHeaderOK);
    ASSERT_EQ(snap.mNumber.load(), 32768);
    ASSERT_TRUE(snap.ReadData(&r.mClone, true));
    EXPECT_EQ(snap.mReadFile, "#DefaultData");
    EXPECT_FALSE(snap.IsReading());
    EXPECT_TRUE(mLog.Contains("Read Header Fails!!"));
    bool bInRange = true;
    for (int i = 0; i < 32768; ++i) {
        bInRange = bInRange && snap.mXYZ[3 * i] >= -1.0f && snap.mXYZ[3 * i] <= 1.0f && snap.mType[i] < 4 &&
                   snap.mSize[i] >= 1.0f && snap.mSize[i] <= 4.0f;
    }
    EXPECT_TRUE(bInRange);
    const float x0 = snap.mXYZ[0];
    // Not regenerated while the name stays "#DefaultData".
    EXPECT_FALSE(snap.ReadData(&r.mClone, true));
    EXPECT_EQ(snap.mXYZ[0], x0);
}

TEST_F(ParticleHeaderTest, BadInputGivesNoDataOrAShortRead) {
    mServices.mPref.mCParticleMax.SetBodyFromData(1LL); // thousands
    const std::string random = RandomBytes(7, 4099);
    struct Case {
        const char* name;
        std::string bytes;
        int dataType, direction;
        const char* header;
        const char* body;
        const char* logText; // expected in the log, or empty
        int expected;        // particle count after the header
    } cases[] = {
        {"empty binary file", "", 1, 0, "ParticleNumber", "XYZ(float)", "", 32768},
        {"empty text file", "", 0, 0, "ParticleNumber", "XYZ", "", 32768},
        {"empty binary body list", std::string(64, 'a'), 1, 0, "ParticleNumber", "", "record size 0", 32768},
        {"body of unknown names only", std::string(64, 'a'), 1, 0, "ParticleNumber", "Nonsense",
         "record size 0", 32768},
        {"absurd text count: as many as ParticleMax= allows", "999999999999\n1 2 3\n", 0, 0, "ParticleNumber",
         "XYZ", "", 1000},
        {"negative binary count", Bytes_cls().I(-5).F(1).F(2).F(3).mStr, 1, 0, "ParticleNumber", "XYZ(float)",
         "Negative particle count", 32768},
        {"vertical text body without lines", "1\n2\n", 0, 1, "Dummy", "X Y Z", "no line per particle", 32768},
        {"random bytes as binary", random, 1, 0, "ParticleNumber Time", "XYZ(float) ID(int)", "", -1},
        {"random bytes as text", random, 0, 0, "ParticleNumber Time", "XYZ ID", "", -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        ASSERT_TRUE(Write("bad.dat", c.bytes));
        OwnSnap_cls r(c.dataType, c.direction, c.header, c.body);
        ASSERT_TRUE(r.Header(P("bad.dat")));
        if (c.expected >= 0) {
            EXPECT_EQ(r.mSnap.mNumber.load(), c.expected);
        }
        EXPECT_LE(r.mSnap.mNumber.load(), 32768 + 4099);
        if (c.logText[0]) {
            EXPECT_TRUE(log.Contains(c.logText));
        }
        EXPECT_TRUE(r.Data(true));
    }
}

TEST_F(ParticleHeaderTest, TruncatedBodyIsAShortRead) {
    // The header was read while the file was whole; the body finds only a part of it.
    Bytes_cls whole;
    whole.I(3);
    for (int i = 0; i < 3; ++i)
        whole.F(1.0f + i).F(2).F(3);
    for (int direction : {0, 1}) {
        SCOPED_TRACE(direction);
        OwnSnap_cls r(1, direction, "ParticleNumber", "XYZ(float)");
        ASSERT_TRUE(Write("tr.dat", whole.mStr));
        ASSERT_TRUE(r.Header(P("tr.dat")));
        ASSERT_EQ(r.mSnap.mNumber.load(), 3);
        ASSERT_TRUE(Write("tr.dat", whole.mStr.substr(0, 4 + 12 + 6)));
        ASSERT_TRUE(r.Data(true));
        EXPECT_EQ(r.mSnap.mXYZ[0], 1.0f);
        EXPECT_EQ(r.mSnap.mXYZ[3], direction == 1 ? 2.0f : 0.0f); // vertical: the bytes are XYZ of #0
        EXPECT_EQ(r.mSnap.mXYZ[6], 0.0f);
    }
    SCOPED_TRACE("a truncated type column keeps the rest zero");
    whole.I(257).I(258).I(259);
    OwnSnap_cls r(1, 1, "ParticleNumber", "XYZ(float) Type(int)");
    ASSERT_TRUE(Write("tt.dat", whole.mStr));
    ASSERT_TRUE(r.Header(P("tt.dat")));
    ASSERT_EQ(r.mSnap.mNumber.load(), 3);
    ASSERT_TRUE(Write("tt.dat", whole.mStr.substr(0, whole.mStr.size() - 6)));
    ASSERT_TRUE(r.Data(false));
    EXPECT_EQ(Vec(r.mSnap.mType, 3), (UC{1, 0, 0})) << "a partly read value is not used";
}

TEST_F(ParticleHeaderTest, ReaderWakesTheMainLoopOncePerRead) {
    CountingSink_cls sink;
    ReadEventSink_cls::Install(&sink);
    ASSERT_TRUE(Write("w.dat", Bytes_cls().F(1).F(2).F(3).mStr));
    OwnSnap_cls r(1, 0, "", "XYZ(float)");
    ASSERT_TRUE(r.Read(P("w.dat"), true));
    EXPECT_EQ(sink.mCount.load(), 1);
    EXPECT_EQ(r.mSeq.mReadingLock.load(), 0);
    ReadEventSink_cls::Install(nullptr);
}

TEST(ParticleFormatTest, SizesAndLinesOfTheLists) {
    ParticleFormat_cls format;
    EXPECT_EQ(format.GetDataType(), 1);
    EXPECT_EQ(format.GetHeaderByte(), 8);
    EXPECT_EQ(format.GetBodyParticleByte(), 20);
    format.mAStrHeader = List("ParticleNumber Dummyx3 Bogus Dummyx10 Time");
    EXPECT_EQ(format.GetHeaderByte(), 4 + 12 + 40 + 4);
    EXPECT_EQ(format.GetHeaderLine(), 1 + 3 + 10 + 1);
    EXPECT_EQ(format.GetVFormatHeader(), (std::vector<int>{0, 3, 4, 1}));
    format.mAStrBodyBinary = List(kAllBinaryItems);
    format.mAStrBodyBinary.Add("VXVYVZ(float)");
    EXPECT_EQ(format.GetBodyParticleByte(), 12 + 4 + 4 + 4 + 8 + 12 + 4 + 12 + 40 + 12);
    format.mAStrBodyAscii = List("XYZ X VX ID Dummyx10 Dummyx3");
    EXPECT_EQ(format.GetBodyParticleLineAsciiVertical(), 1 + 0 + 0 + 1 + 10 + 3);
    EXPECT_TRUE(format.DoesExistInBody("VX", 0));
    EXPECT_FALSE(format.DoesExistInBody("VX", 1));

    ParticleFormatClone_cls clone;
    clone.CloneFromFormat(format, true);
    bool v, t, s, id, idl, v0, v1, v2, byID;
    clone.GetInfoAscii(v, t, s, id, idl, v0, v1, v2, byID);
    EXPECT_TRUE(v && id && byID);
    EXPECT_FALSE(t || s || idl || v0 || v1 || v2);
    clone.GetInfoBinary(v, t, s, id, idl, v0, v1, v2, byID);
    EXPECT_TRUE(v && t && s && id && idl && v0 && v1 && v2);
    // The clone is a copy: later edits of the format do not reach it.
    format.mCDataType.SetBodyFromData(0LL);
    format.mAStrBodyAscii.Clear();
    EXPECT_EQ(clone.GetDataType(), 1);
    EXPECT_EQ(clone.GetBodyParticleLineAsciiVertical(), 15);
}

TEST(ParticleFormatTest, BodyAndHeaderEditsGoThroughUndoPairs) {
    ParticleFormat_cls format;
    FormatHost_cls host(format);
    host.mbRunDo = false;
    format.AddBodyCommand(1, "ID(int)");
    EXPECT_EQ(format.mAStrBodyBinary.GetCount(), 3u) << "the list changes only when the do text runs";
    host.mbRunDo = true;
    host.Run(host.mStrDo);
    EXPECT_EQ(format.mAStrBodyBinary, List("XYZ(float) ID(int) Type(int) Size(float)"));
    host.Undo();
    EXPECT_EQ(format.mAStrBodyBinary, List("XYZ(float) Type(int) Size(float)"));

    format.DeleteHeaderCommand(0, "ParticleNumber");
    EXPECT_EQ(format.mAStrHeader, List("Time"));
    host.mStrDo.clear();
    format.DeleteHeaderCommand(0, "ParticleNumber"); // no longer there: nothing is pushed
    EXPECT_TRUE(host.mStrDo.empty());
    format.AddHeaderCommand(0, "NotAnItem");
    EXPECT_TRUE(host.mStrDo.empty());

    format.mCDataType.SetBodyFromData(0LL);
    format.UpdateBodyCommand("X::##::Y::##::Z");
    EXPECT_EQ(format.mAStrBodyAscii, List("X Y Z"));
    format.UpdateRowsFromStrings();
    ASSERT_EQ(format.mVCBodyAscii.size(), 3u);
    EXPECT_EQ(format.mVCBodyAscii[1].GetBodyINT(), 13);
    format.mVCBodyAscii[1].SetBodyFromData(2LL);
    format.UpdateBody(0);
    EXPECT_EQ(format.mAStrBodyAscii, List("X Type Z"));
}

TEST_F(ParticleHeaderTest, GzipFileIsDecompressedOnceForHeaderAndBody) {
    // The body read takes the file that the header read decompressed: with the file gone in
    // between, the body still reads. A plain file is opened again by the body read.
    Bytes_cls b;
    b.I(3).F(1.5f);
    for (int i = 0; i < 3; ++i)
        b.F(1.0f + i).F(2).F(3).I(10 + i);
    for (bool bText : {false, true}) {
        SCOPED_TRACE(bText ? "text" : "binary");
        const wxString name = bText ? "once.txt.gz" : "once.dat.gz";
        ASSERT_TRUE(WriteGz(name, bText ? std::string("3\n1 2 3 10\n2 2 3 11\n3 2 3 12\n") : b.mStr));
        OwnSnap_cls r(bText ? 0 : 1, 0, bText ? "ParticleNumber" : "ParticleNumber Time",
                      bText ? "XYZ ID" : "XYZ(float) ID(int)");
        ASSERT_TRUE(r.Header(P(name)));
        ASSERT_TRUE(wxRemoveFile(P(name)));
        ASSERT_TRUE(r.Data(true));
        ASSERT_EQ(r.mSnap.mNumber.load(), 3);
        EXPECT_EQ(Vec(r.mSnap.mXYZ, 9), (F{1, 2, 3, 2, 2, 3, 3, 2, 3}));
        EXPECT_EQ(Vec(r.mSnap.mID, 3), (I{10, 11, 12}));
        EXPECT_FALSE(mLog.Contains("Read Header Fails!!"));
    }
}

TEST_F(ParticleHeaderTest, GzipBinaryWithVelocityReadsAsThePlainFile) {
    // The velocity item shifts the records inside each chunk of 200000 (its bytes are counted but
    // not passed): the file in memory must be cut into the same chunks as the stream.
    const int n = 200000 + 5;
    Bytes_cls b;
    for (int i = 0; i < n; ++i)
        b.F(static_cast<float>(i)).F(1).F(2).F(-1).F(-2).F(-3).I(i);
    ASSERT_TRUE(Write("vel.dat", b.mStr));
    ASSERT_TRUE(WriteGz("velz.dat.gz", b.mStr));
    F xyz[2];
    I id[2];
    for (int k = 0; k < 2; ++k) {
        OwnSnap_cls r(1, 0, "", "XYZ(float) VXVYVZ(float) ID(int)");
        ASSERT_TRUE(r.Read(P(k == 0 ? "vel.dat" : "velz.dat.gz"), false));
        ASSERT_EQ(r.mSnap.mNumber.load(), n);
        ASSERT_TRUE(r.mSnap.mVelocity);
        EXPECT_EQ(Vec(r.mSnap.mVelocity, 6), F(6, 0.0f)) << "counted, not decoded";
        xyz[k] = Vec(r.mSnap.mXYZ, 3 * n);
        id[k] = Vec(r.mSnap.mID, n);
    }
    EXPECT_EQ(xyz[0], xyz[1]);
    EXPECT_EQ(id[0], id[1]);
    // The second chunk starts at its own record, whose first velocity value the ID item takes.
    float firstOfChunk = 0.0f;
    std::memcpy(&firstOfChunk, &id[0][200000], 4);
    EXPECT_EQ(firstOfChunk, -1.0f);
    EXPECT_EQ(xyz[0][3 * 200000], 200000.0f);
}

} // namespace
