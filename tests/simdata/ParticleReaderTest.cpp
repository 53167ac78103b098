// The particle readers: headers and counts, text and binary bodies in both layouts decoded value
// by value, gzip files, the sort by ID with duplicate removal, the substitute data and bad input.
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "ReadEventSink_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "TextHost_cls.h"
#include "UseGZ_cls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <random>
#include <sstream>

namespace {

class CountingSink_cls : public ReadEventSink_cls {
public:
    void PostReadFinished() override { mCount.fetch_add(1); }
    std::atomic<int> mCount{0};
};

class ParticleFixture : public ::testing::Test {
protected:
    // Reads path with clone into mSnap (index 3): header, then the body on a thread when async.
    bool Read(const wxString& path, ParticleFormatClone_cls& clone, bool async) {
        mSnap.SetStrFile(path);
        mSnap.ReadHeader(&clone);
        bool b = mSnap.ReadData(&clone, async);
        mSnap.WaitReadingThread(1);
        FlushThreadLogs();
        return b;
    }
    wxString P(const wxString& name) const { return mDir.Path(name); }

    ServicesScope_cls mServices;
    LogCapture_cls mLog;
    TempDir_cls mDir;
    ParticleSequence_cls mSeq;
    ParticleSnap_cls mSnap{&mSeq, 3};
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

const wxArrayString kAllBinaryItems =
    Names({"XYZ(float)", "Type(int)", "Size(float)", "ID(int)", "ID(long long)", "Value0(float)",
           "Value1(float)", "Value2(float)", "Dummy(4byte)", "Dummyx3(12byte)", "Dummyx10(40byte)"});

TEST_P(ParticleReaderTest, BinaryHorizontalIsDecodedValueByValue) {
    ASSERT_TRUE(WriteBytes(P("b.dat"), TwoRecordsWithEveryBinaryItem()));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({"ParticleNumber", "Time"}), kAllBinaryItems);
    ASSERT_TRUE(Read(P("b.dat"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), 2);
    EXPECT_TRUE(mSnap.mHeaderOK);
    EXPECT_DOUBLE_EQ(mSnap.mTime, 2.5);
    const float xyz[6] = {1, 2, 3, -1, -2, -3};
    for (int i = 0; i < 6; ++i)
        EXPECT_FLOAT_EQ(mSnap.mXYZ[i], xyz[i]) << i;
    EXPECT_EQ(mSnap.mType[0], 44); // 300 keeps its low byte
    EXPECT_EQ(mSnap.mType[1], 255);
    EXPECT_FLOAT_EQ(mSnap.mSize[0], 0.5f);
    EXPECT_FLOAT_EQ(mSnap.mSize[1], 1.5f);
    EXPECT_EQ(mSnap.mID[0], 11);
    EXPECT_EQ(mSnap.mID[1], 12);
    EXPECT_EQ(mSnap.mIDLong[0], 1LL << 40);
    EXPECT_EQ(mSnap.mIDLong[1], -5);
    for (int v = 0; v < 3; ++v) {
        EXPECT_FLOAT_EQ(mSnap.mValue[v][0], 7.0f + v);
        EXPECT_FLOAT_EQ(mSnap.mValue[v][1], 17.0f + v);
    }
    EXPECT_FALSE(mSnap.mVelocity);
    EXPECT_TRUE(mLog.Contains("Read Stert :: index = 3"));
    EXPECT_EQ(mLog.Contains("ReadLog :: " + P("b.dat") + "::"), GetParam())
        << "only the thread logs its time";
    // The same file is not read twice.
    EXPECT_FALSE(mSnap.ReadHeader(&clone));
    EXPECT_FALSE(mSnap.ReadData(&clone, GetParam()));
}

TEST_P(ParticleReaderTest, BinaryChunksCoverEveryRecord) {
    // More records than one chunk, so the double-buffered loop hands over at least twice.
    const int n = 2 * 200000 + 17;
    Bytes_cls b;
    b.I(n);
    for (int i = 0; i < n; ++i)
        b.F(static_cast<float>(i)).F(0).F(static_cast<float>(-i)).I(n - i);
    ASSERT_TRUE(WriteBytes(P("big.dat"), b.mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({"ParticleNumber"}), Names({"XYZ(float)", "ID(int)"}));
    ASSERT_TRUE(Read(P("big.dat"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), n);
    for (int i : {0, 199999, 200000, 399999, 400000, n - 1}) {
        SCOPED_TRACE(i);
        EXPECT_FLOAT_EQ(mSnap.mXYZ[3 * i], static_cast<float>(i));
        EXPECT_FLOAT_EQ(mSnap.mXYZ[3 * i + 2], static_cast<float>(-i));
        EXPECT_EQ(mSnap.mID[i], n - i);
    }
}

TEST_P(ParticleReaderTest, BinaryVerticalReadsColumnAfterColumn) {
    // Velocity is counted in the record size but consumes no bytes: the file carries padding
    // so that the size still allows the four particles of the header.
    const int n = 4;
    Bytes_cls b;
    b.I(n);
    for (int i = 0; i < n; ++i)
        b.F(i + 0.25f).F(i + 0.5f).F(i + 0.75f);
    for (int i = 0; i < n; ++i)
        b.I(256 + i);
    for (int i = 0; i < n; ++i)
        b.I(100 + i);
    for (int i = 0; i < n; ++i)
        b.F(10.0f * i);
    for (int i = 0; i < 3 * n; ++i)
        b.F(0);
    ASSERT_TRUE(WriteBytes(P("v.dat"), b.mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 1, Names({"ParticleNumber"}),
              Names({"XYZ(float)", "VXVYVZ(float)", "Type(int)", "ID(int)", "Size(float)"}));
    ASSERT_TRUE(Read(P("v.dat"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), n);
    for (int i = 0; i < n; ++i) {
        SCOPED_TRACE(i);
        EXPECT_FLOAT_EQ(mSnap.mXYZ[3 * i], i + 0.25f);
        EXPECT_FLOAT_EQ(mSnap.mXYZ[3 * i + 1], i + 0.5f);
        EXPECT_FLOAT_EQ(mSnap.mXYZ[3 * i + 2], i + 0.75f);
        EXPECT_EQ(mSnap.mType[i], i);
        EXPECT_EQ(mSnap.mID[i], 100 + i);
        EXPECT_FLOAT_EQ(mSnap.mSize[i], 10.0f * i);
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(mSnap.mVelocity[3 * i + k], 0.0f);
    }
}

TEST_P(ParticleReaderTest, BinaryVelocityItemIsCountedButNotDecoded) {
    // Record: XYZ, VXVYVZ, Size = 28 bytes, but the cursor moves 16 per record, so the bytes of
    // the velocity fall to the items behind it and to the next record.
    Bytes_cls b;
    b.I(2);
    b.F(1).F(2).F(3).F(4).F(5).F(6).F(7);
    b.F(11).F(12).F(13).F(14).F(15).F(16).F(17);
    ASSERT_TRUE(WriteBytes(P("vel.dat"), b.mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({"ParticleNumber"}), Names({"XYZ(float)", "VXVYVZ(float)", "Size(float)"}));
    ASSERT_TRUE(Read(P("vel.dat"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), 2);
    EXPECT_FLOAT_EQ(mSnap.mSize[0], 4.0f);
    EXPECT_FLOAT_EQ(mSnap.mXYZ[3], 5.0f);
    EXPECT_FLOAT_EQ(mSnap.mXYZ[5], 7.0f);
    EXPECT_FLOAT_EQ(mSnap.mSize[1], 11.0f);
    ASSERT_TRUE(mSnap.mVelocity);
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(mSnap.mVelocity[k], 0.0f);
}

TEST_P(ParticleReaderTest, TextHorizontalIsDecodedValueByValue) {
    ASSERT_TRUE(WriteBytes(P("t.txt"), "2\n12.75\n1.5 2.5 3.5 300 0.25 7 9000000000\n"
                                       "-1 -2 -3 4 2 8 -9000000000\n"));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, Names({"ParticleNumber", "Time"}),
              Names({"XYZ", "Type", "Size", "ID", "ID(long long)"}));
    ASSERT_TRUE(Read(P("t.txt"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), 2);
    EXPECT_DOUBLE_EQ(mSnap.mTime, 12.75); // the header's time overrides the step number
    EXPECT_FLOAT_EQ(mSnap.mXYZ[0], 1.5f);
    EXPECT_FLOAT_EQ(mSnap.mXYZ[2], 3.5f);
    EXPECT_FLOAT_EQ(mSnap.mXYZ[4], -2.0f);
    EXPECT_EQ(mSnap.mType[0], 44);
    EXPECT_EQ(mSnap.mType[1], 4);
    EXPECT_FLOAT_EQ(mSnap.mSize[0], 0.25f);
    EXPECT_EQ(mSnap.mID[0], 7);
    EXPECT_EQ(mSnap.mID[1], 8);
    EXPECT_EQ(mSnap.mIDLong[0], 9000000000LL);
    EXPECT_EQ(mSnap.mIDLong[1], -9000000000LL);
}

TEST_P(ParticleReaderTest, TextColumnsAreSeparatedByExactlyOneBlank) {
    struct Case {
        const char* line;
        const char* body;
        float x, y, z, size;
    } cases[] = {
        {"1 2 3 4", "XYZ Size", 1, 2, 3, 4},
        {"1  2 3 4", "XYZ Size", 1, 2, 2, 3},  // two blanks shift the columns
        {"1\t2 3 4", "XYZ Size", 1, 3, 4, 0},  // so does a tab
        {"1 abc 3 4", "XYZ Size", 1, 0, 3, 4}, // a bad number is 0 and the cursor moves on
        {"1 2", "XYZ Size", 1, 2, 0, 0},       // missing columns read 0
        {"1 2 3 4", "X Y Z Size", 3, 0, 0, 4}, // X, Y and Z all go to the first component
        {"5 6 7 8 9", "Dummy XYZ Size", 6, 7, 8, 9},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.line);
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ASSERT_TRUE(WriteBytes(P("c.txt"), std::string("1\n") + c.line + "\n"));
        wxArrayString body = wxSplit(c.body, ' ');
        ParticleFormatClone_cls clone;
        MakeClone(clone, 0, 0, Names({"ParticleNumber"}), body);
        snap.SetStrFile(P("c.txt"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        ASSERT_TRUE(snap.ReadData(&clone, GetParam()));
        snap.WaitReadingThread(1);
        EXPECT_FLOAT_EQ(snap.mXYZ[0], c.x);
        EXPECT_FLOAT_EQ(snap.mXYZ[1], c.y);
        EXPECT_FLOAT_EQ(snap.mXYZ[2], c.z);
        EXPECT_FLOAT_EQ(snap.mSize[0], c.size);
    }
    FlushThreadLogs();
}

TEST_P(ParticleReaderTest, TextVerticalSplitsComponentsAndSkipsUnreadItems) {
    // "ID" and "VXVYVZ" consume no lines in a vertical text body; X, Y, Z go to their own
    // components here.
    ASSERT_TRUE(WriteBytes(P("tv.txt"), "2\n"
                                        "1\n2\n"     // X
                                        "3\n4\n"     // Y
                                        "5\n6\n"     // Z
                                        "300\n7\n"   // Type
                                        "0.5\n1.5\n" // Size
                                        "x\ny\nz\n"  // Dummyx3, first particle
                                        "u\nv\nw\n"  // Dummyx3, second particle
                                        "8\n9\n"));  // Value0
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 1, Names({"ParticleNumber"}),
              Names({"ID", "X", "VXVYVZ", "Y", "Z", "Type", "Size", "Dummyx3", "Value0"}));
    ASSERT_TRUE(Read(P("tv.txt"), clone, GetParam()));
    ASSERT_EQ(mSnap.mNumber.load(), 2);
    const float xyz[6] = {1, 3, 5, 2, 4, 6};
    for (int i = 0; i < 6; ++i)
        EXPECT_FLOAT_EQ(mSnap.mXYZ[i], xyz[i]) << i;
    EXPECT_EQ(mSnap.mType[0], 44);
    EXPECT_EQ(mSnap.mType[1], 7);
    EXPECT_FLOAT_EQ(mSnap.mSize[1], 1.5f);
    EXPECT_FLOAT_EQ(mSnap.mValue[0][0], 8.0f);
    EXPECT_FLOAT_EQ(mSnap.mValue[0][1], 9.0f);
    EXPECT_EQ(mSnap.mID[0], 0);
    EXPECT_EQ(mSnap.mVelocity[0], 0.0f);
}

TEST_P(ParticleReaderTest, GzipFilesReadLikePlainOnes) {
    const std::string bin = TwoRecordsWithEveryBinaryItem();
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(P("g.dat.gz"), bin.data(), static_cast<long long>(bin.size())));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({"ParticleNumber", "Time"}), kAllBinaryItems);
    // The plain name finds its gzip twin.
    ASSERT_TRUE(Read(P("g.dat"), clone, GetParam()));
    EXPECT_EQ(mSnap.mFile, P("g.dat.gz"));
    ASSERT_EQ(mSnap.mNumber.load(), 2);
    EXPECT_DOUBLE_EQ(mSnap.mTime, 2.5);
    EXPECT_FLOAT_EQ(mSnap.mXYZ[3], -1.0f);
    EXPECT_EQ(mSnap.mType[0], 44);
    EXPECT_EQ(mSnap.mIDLong[1], -5);

    const std::string text = "Time 4.5\n1 2 3 5\n4 5 6 6\n7 8 9 7";
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(P("g.txt.gz"), text.data(), static_cast<long long>(text.size())));
    ParticleSequence_cls seq;
    ParticleSnap_cls snap(&seq, 0);
    ParticleFormatClone_cls textClone;
    MakeClone(textClone, 0, 0, Names({"Time"}), Names({"XYZ", "ID"}));
    snap.SetStrFile(P("g.txt.gz"));
    ASSERT_TRUE(snap.ReadHeader(&textClone));
    ASSERT_TRUE(snap.ReadData(&textClone, GetParam()));
    snap.WaitReadingThread(1);
    FlushThreadLogs();
    ASSERT_EQ(snap.mNumber.load(), 3); // no count in the header: every line but the header
    EXPECT_DOUBLE_EQ(snap.mTime, 0.0); // "Time 4.5" is no number
    EXPECT_FLOAT_EQ(snap.mXYZ[8], 9.0f);
    EXPECT_EQ(snap.mID[2], 7);
}

INSTANTIATE_TEST_SUITE_P(SyncAndAsync, ParticleReaderTest, ::testing::Values(false, true),
                         [](const auto& paramInfo) { return paramInfo.param ? "Async" : "Sync"; });

class ParticleHeaderTest : public ParticleFixture {};

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
    ASSERT_TRUE(WriteBytes(P("h.dat"), h.mStr));
    ASSERT_TRUE(WriteBytes(P("v.dat"), v.mStr));
    ParticleFormatClone_cls cloneH, cloneV;
    MakeClone(cloneH, 1, 0, Names({}), Names({"XYZ(float)", "ID(int)", "Size(float)"}));
    MakeClone(cloneV, 1, 1, Names({}), Names({"XYZ(float)", "Type(int)"}));
    // One read alone first: the toolkit sets up its logging from worker threads on first use,
    // which is not what this test is about.
    ASSERT_TRUE(Read(P("v.dat"), cloneV, true));
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        ParticleSequence_cls seqH, seqV;
        ParticleSnap_cls snapH(&seqH, 0), snapV(&seqV, 0);
        snapH.SetStrFile(P("h.dat"));
        snapV.SetStrFile(P("v.dat"));
        ASSERT_TRUE(snapH.ReadHeader(&cloneH));
        ASSERT_TRUE(snapV.ReadHeader(&cloneV));
        ASSERT_TRUE(snapH.ReadData(&cloneH, true));
        ASSERT_TRUE(snapV.ReadData(&cloneV, true));
        snapH.WaitReadingThread(1);
        snapV.WaitReadingThread(1);
        FlushThreadLogs();
        ASSERT_EQ(snapH.mNumber.load(), nH);
        ASSERT_EQ(snapV.mNumber.load(), nV);
        for (int i : {0, 199999, 200000, nH - 1}) {
            EXPECT_FLOAT_EQ(snapH.mXYZ[3 * i], static_cast<float>(i)) << i;
            EXPECT_EQ(snapH.mID[i], i) << i;
            EXPECT_FLOAT_EQ(snapH.mSize[i], 0.5f) << i;
        }
        for (int i : {0, 65535, 65536, 131071, 131072, nV - 1}) {
            EXPECT_FLOAT_EQ(snapV.mXYZ[3 * i], static_cast<float>(-i)) << i;
            EXPECT_EQ(snapV.mType[i], i & 0xff) << i;
        }
    }
}

TEST_F(ParticleHeaderTest, BinaryCountFollowsTheFileSize) {
    struct Case {
        const char* name;
        int headerCount;
        int records;
        int extraBytes;
        int expected;
    } cases[] = {
        {"count larger than the file allows: the size wins", 1000, 5, 0, 5},
        {"count smaller: the count wins", 3, 5, 0, 3},
        {"a short last record is dropped", 1000, 5, 7, 5},
        {"count 0 gives the substitute data", 0, 5, 0, 32768},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Bytes_cls b;
        b.I(c.headerCount);
        for (int i = 0; i < c.records; ++i)
            b.F(1).F(2).F(3).I(i);
        b.mStr.append(static_cast<size_t>(c.extraBytes), '\x7f');
        ASSERT_TRUE(WriteBytes(P("n.dat"), b.mStr));
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, 1, 0, Names({"ParticleNumber"}), Names({"XYZ(float)", "ID(int)"}));
        snap.SetStrFile(P("n.dat"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        EXPECT_EQ(snap.mNumber.load(), c.expected);
    }
}

TEST_F(ParticleHeaderTest, TextCountsLinesWithoutParticleNumber) {
    struct Case {
        const char* text;
        int direction;
        const char* body;
        int expected;
    } cases[] = {
        {"0.5\n1 2 3\n4 5 6\n", 0, "XYZ", 2}, // a trailing newline makes no extra particle
        {"0.5\n1 2 3\n4 5 6", 0, "XYZ", 2},
        {"0.5\n1\n2\n3\n4\n5\n6\n7\n", 1, "X Y Type", 7}, // X and Y count no line: 1 per particle
        {"0.5\n1\n2\n3\n4\n5\n6\n", 1, "XYZ Dummyx3", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_TRUE(WriteBytes(P("l.txt"), c.text));
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 5);
        ParticleFormatClone_cls clone;
        MakeClone(clone, 0, c.direction, Names({"Time"}), wxSplit(c.body, ' '));
        snap.SetStrFile(P("l.txt"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        EXPECT_EQ(snap.mNumber.load(), c.expected);
        EXPECT_DOUBLE_EQ(snap.mTime, 0.5);
    }
}

TEST_F(ParticleHeaderTest, TimeIsTheStepNumberUnlessTheFileGivesIt) {
    ASSERT_TRUE(WriteBytes(P("s.txt"), "2\n1 2 3\n4 5 6\n"));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, Names({"ParticleNumber"}), Names({"XYZ"}));
    mSnap.SetStrFile(P("s.txt"));
    ASSERT_TRUE(mSnap.ReadHeader(&clone));
    EXPECT_DOUBLE_EQ(mSnap.mTime, 3.0);
}

TEST_F(ParticleHeaderTest, ParticleMaxLimitsTheCount) {
    mServices.mPref.mCParticleMax.SetBodyFromData(1LL); // thousands
    Bytes_cls b;
    for (int i = 0; i < 1500 * 4; ++i)
        b.F(static_cast<float>(i));
    ASSERT_TRUE(WriteBytes(P("m.dat"), b.mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 1, Names({}), Names({"Size(float)", "XYZ(float)"}));
    mSnap.SetStrFile(P("m.dat"));
    ASSERT_TRUE(mSnap.ReadHeader(&clone));
    EXPECT_EQ(mSnap.mNumber.load(), 1000); // the file holds 1500
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
        {"sort alone keeps everything", {5, 3, 4, 3}, true, false, {3, 3, 4, 5}},
        {"three of a kind all go", {7, 7, 7, 1}, true, true, {1}},
        {"adjacent duplicates go without sorting", {4, 4, 1}, false, true, {1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        Bytes_cls b;
        for (int id : c.ids)
            b.I(id).F(static_cast<float>(id) * 10.0f);
        ASSERT_TRUE(WriteBytes(P("d.dat"), b.mStr));
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, 1, 0, Names({}), Names({"ID(int)", "Size(float)"}), c.sort, c.remove);
        snap.SetStrFile(P("d.dat"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        ASSERT_TRUE(snap.ReadData(&clone, true));
        snap.WaitReadingThread(1);
        FlushThreadLogs();
        ASSERT_EQ(snap.mNumber.load(), static_cast<int>(c.expected.size()));
        for (size_t i = 0; i < c.expected.size(); ++i) {
            EXPECT_EQ(snap.mID[i], c.expected[i]) << i;
            EXPECT_FLOAT_EQ(snap.mSize[i], c.expected[i] * 10.0f) << "the other arrays follow the IDs";
        }
        const int dropped = static_cast<int>(c.ids.size() - c.expected.size());
        EXPECT_EQ(log.Contains(wxString::Format("Detect duplicated ID: num= %d", dropped)), dropped > 0);
    }
}

TEST_F(ParticleHeaderTest, LongIDsSortWhenThereIsNoShortOne) {
    Bytes_cls b;
    for (long long id : {5LL << 33, 1LL, 3LL << 33})
        b.L(id);
    ASSERT_TRUE(WriteBytes(P("ll.dat"), b.mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({}), Names({"ID(long long)"}), true, false);
    ASSERT_TRUE(Read(P("ll.dat"), clone, false));
    EXPECT_EQ(mSnap.mIDLong[0], 1LL);
    EXPECT_EQ(mSnap.mIDLong[1], 3LL << 33);
    EXPECT_EQ(mSnap.mIDLong[2], 5LL << 33);
}

TEST_F(ParticleHeaderTest, MissingStepGivesTheDefaultDataOnce) {
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({"ParticleNumber"}), Names({"XYZ(float)", "Type(int)", "Size(float)"}));
    mSnap.SetStrFile(P("missing.dat"));
    EXPECT_EQ(mSnap.mFile, P("missing.dat"));
    ASSERT_TRUE(mSnap.ReadHeader(&clone));
    EXPECT_FALSE(mSnap.mHeaderOK);
    ASSERT_EQ(mSnap.mNumber.load(), 32768);
    ASSERT_TRUE(mSnap.ReadData(&clone, true));
    EXPECT_EQ(mSnap.mReadFile, "#DefaultData");
    EXPECT_FALSE(mSnap.IsReading());
    EXPECT_TRUE(mLog.Contains("Read Header Fails!!"));
    bool bInRange = true;
    for (int i = 0; i < 32768; ++i) {
        bInRange = bInRange && mSnap.mXYZ[3 * i] >= -1.0f && mSnap.mXYZ[3 * i] <= 1.0f &&
                   mSnap.mType[i] < 4 && mSnap.mSize[i] >= 1.0f && mSnap.mSize[i] <= 4.0f;
    }
    EXPECT_TRUE(bInRange);
    const float x0 = mSnap.mXYZ[0];
    // Not regenerated while the name stays "#DefaultData".
    EXPECT_FALSE(mSnap.ReadData(&clone, true));
    EXPECT_EQ(mSnap.mXYZ[0], x0);
}

TEST_F(ParticleHeaderTest, BadInputGivesNoDataOrAShortRead) {
    mServices.mPref.mCParticleMax.SetBodyFromData(1LL); // thousands
    std::mt19937 rng(7);
    std::string random(4099, '\0');
    for (char& ch : random)
        ch = static_cast<char>(rng());
    struct Case {
        const char* name;
        std::string bytes;
        int dataType;
        const char* header;
        const char* body;
        const char* logText; // expected in the log, or empty
        int expected;        // particle count after the header
    } cases[] = {
        {"empty binary file", "", 1, "ParticleNumber", "XYZ(float)", "", 32768},
        {"empty text file", "", 0, "ParticleNumber", "XYZ", "", 32768},
        {"empty binary body list", std::string(64, 'a'), 1, "ParticleNumber", "", "record size 0", 32768},
        {"body of unknown names only", std::string(64, 'a'), 1, "ParticleNumber", "Nonsense", "record size 0",
         32768},
        {"absurd text count: as many as ParticleMax= allows", "999999999999\n1 2 3\n", 0, "ParticleNumber",
         "XYZ", "", 1000},
        {"negative binary count", Bytes_cls().I(-5).F(1).F(2).F(3).mStr, 1, "ParticleNumber", "XYZ(float)",
         "Negative particle count", 32768},
        {"vertical text body without lines", "1\n2\n", 0, "Dummy", "X Y Z", "no line per particle", 32768},
        {"random bytes as binary", random, 1, "ParticleNumber Time", "XYZ(float) ID(int)", "", -1},
        {"random bytes as text", random, 0, "ParticleNumber Time", "XYZ ID", "", -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        ASSERT_TRUE(WriteBytes(P("bad.dat"), c.bytes));
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, c.dataType, c.dataType == 0 && c.body == std::string("X Y Z") ? 1 : 0,
                  wxSplit(c.header, ' '), c.body[0] ? wxSplit(c.body, ' ') : wxArrayString());
        snap.SetStrFile(P("bad.dat"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        if (c.expected >= 0) {
            EXPECT_EQ(snap.mNumber.load(), c.expected);
        }
        EXPECT_LE(snap.mNumber.load(), 32768 + 4099);
        if (c.logText[0]) {
            EXPECT_TRUE(log.Contains(c.logText));
        }
        EXPECT_TRUE(snap.ReadData(&clone, true));
        snap.WaitReadingThread(1);
        FlushThreadLogs();
    }
}

TEST_F(ParticleHeaderTest, TruncatedBodyIsAShortRead) {
    // The header was read while the file was whole; the body finds only a part of it.
    Bytes_cls whole;
    whole.I(3);
    for (int i = 0; i < 3; ++i)
        whole.F(1.0f + i).F(2).F(3);
    ASSERT_TRUE(WriteBytes(P("tr.dat"), whole.mStr));
    for (int direction : {0, 1}) {
        SCOPED_TRACE(direction);
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, 1, direction, Names({"ParticleNumber"}), Names({"XYZ(float)"}));
        ASSERT_TRUE(WriteBytes(P("tr.dat"), whole.mStr));
        snap.SetStrFile(P("tr.dat"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        ASSERT_EQ(snap.mNumber.load(), 3);
        ASSERT_TRUE(WriteBytes(P("tr.dat"), whole.mStr.substr(0, 4 + 12 + 6)));
        ASSERT_TRUE(snap.ReadData(&clone, true));
        snap.WaitReadingThread(1);
        EXPECT_FLOAT_EQ(snap.mXYZ[0], 1.0f);
        EXPECT_FLOAT_EQ(snap.mXYZ[3], direction == 1 ? 2.0f : 0.0f); // vertical: the bytes are XYZ of #0
        EXPECT_EQ(snap.mXYZ[6], 0.0f);
    }
    FlushThreadLogs();
}

TEST_F(ParticleHeaderTest, TruncatedTypeColumnKeepsTheRestZero) {
    Bytes_cls whole;
    whole.I(3).F(1).F(1).F(1).F(2).F(2).F(2).F(3).F(3).F(3).I(257).I(258).I(259);
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 1, Names({"ParticleNumber"}), Names({"XYZ(float)", "Type(int)"}));
    ASSERT_TRUE(WriteBytes(P("tt.dat"), whole.mStr));
    mSnap.SetStrFile(P("tt.dat"));
    ASSERT_TRUE(mSnap.ReadHeader(&clone));
    ASSERT_EQ(mSnap.mNumber.load(), 3);
    ASSERT_TRUE(WriteBytes(P("tt.dat"), whole.mStr.substr(0, whole.mStr.size() - 6)));
    ASSERT_TRUE(mSnap.ReadData(&clone, false));
    EXPECT_EQ(mSnap.mType[0], 1);
    EXPECT_EQ(mSnap.mType[1], 0) << "a partly read value is not used";
    EXPECT_EQ(mSnap.mType[2], 0);
}

TEST_F(ParticleHeaderTest, ReaderWakesTheMainLoopOncePerRead) {
    CountingSink_cls sink;
    ReadEventSink_cls::Install(&sink);
    ASSERT_TRUE(WriteBytes(P("w.dat"), Bytes_cls().F(1).F(2).F(3).mStr));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 1, 0, Names({}), Names({"XYZ(float)"}));
    ASSERT_TRUE(Read(P("w.dat"), clone, true));
    EXPECT_EQ(sink.mCount.load(), 1);
    EXPECT_EQ(mSeq.mReadingLock.load(), 0);
    ReadEventSink_cls::Install(nullptr);
}

TEST(ParticleFormatTest, SizesAndLinesOfTheLists) {
    ParticleFormat_cls format;
    EXPECT_EQ(format.GetDataType(), 1);
    EXPECT_EQ(format.GetHeaderByte(), 8);
    EXPECT_EQ(format.GetBodyParticleByte(), 20);
    format.mAStrHeader = Names({"ParticleNumber", "Dummyx3", "Bogus", "Dummyx10", "Time"});
    EXPECT_EQ(format.GetHeaderByte(), 4 + 12 + 40 + 4);
    EXPECT_EQ(format.GetHeaderLine(), 1 + 3 + 10 + 1);
    EXPECT_EQ(format.GetVFormatHeader(), (std::vector<int>{0, 3, 4, 1}));
    format.mAStrBodyBinary = kAllBinaryItems;
    format.mAStrBodyBinary.Add("VXVYVZ(float)");
    EXPECT_EQ(format.GetBodyParticleByte(), 12 + 4 + 4 + 4 + 8 + 12 + 4 + 12 + 40 + 12);
    format.mAStrBodyAscii = Names({"XYZ", "X", "VX", "ID", "Dummyx10", "Dummyx3"});
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

class CaptureHost_cls : public TextHost_cls {
public:
    void UpdatePanels(const wxString&) override {}
    void PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) override {
        mStrUndo = strUndo;
        mStrDo = strDo;
    }
    int GetRelativePathMode() override { return 0; }
    wxString mStrUndo;
    wxString mStrDo;
};

// Runs a one-item block through the format's list reader, as the command reader would.
void RunBlock(ParticleFormat_cls& format, const wxString& strBlock) {
    std::wistringstream stream(strBlock.ToStdWstring());
    std::wstring first;
    std::getline(stream, first);
    wxString strRest = wxString(first).AfterFirst(':').AfterFirst(':');
    ASSERT_TRUE(format.ReadStrLine(stream, "ConfItemList", strRest)) << strBlock;
}

TEST(ParticleFormatTest, BodyAndHeaderEditsGoThroughUndoPairs) {
    CaptureHost_cls host;
    TextHost_cls* pOld = TextHost_cls::Get();
    TextHost_cls::Install(&host);
    ParticleFormat_cls format;
    format.AddBodyCommand(1, "ID(int)");
    EXPECT_EQ(format.mAStrBodyBinary.GetCount(), 3u) << "the list changes only when the do text runs";
    RunBlock(format, host.mStrDo);
    EXPECT_EQ(format.mAStrBodyBinary, Names({"XYZ(float)", "ID(int)", "Type(int)", "Size(float)"}));
    const wxString strUndo = host.mStrUndo;
    RunBlock(format, strUndo);
    EXPECT_EQ(format.mAStrBodyBinary, Names({"XYZ(float)", "Type(int)", "Size(float)"}));

    format.DeleteHeaderCommand(0, "ParticleNumber");
    RunBlock(format, host.mStrDo);
    EXPECT_EQ(format.mAStrHeader, Names({"Time"}));
    host.mStrDo.clear();
    format.DeleteHeaderCommand(0, "ParticleNumber"); // no longer there: nothing is pushed
    EXPECT_TRUE(host.mStrDo.empty());
    format.AddHeaderCommand(0, "NotAnItem");
    EXPECT_TRUE(host.mStrDo.empty());

    format.mCDataType.SetBodyFromData(0LL);
    format.UpdateBodyCommand("X::##::Y::##::Z");
    RunBlock(format, host.mStrDo);
    EXPECT_EQ(format.mAStrBodyAscii, Names({"X", "Y", "Z"}));
    format.UpdateRowsFromStrings();
    ASSERT_EQ(format.mVCBodyAscii.size(), 3u);
    EXPECT_EQ(format.mVCBodyAscii[1].GetBodyINT(), 13);
    format.mVCBodyAscii[1].SetBodyFromData(2LL);
    format.UpdateBody(0);
    EXPECT_EQ(format.mAStrBodyAscii, Names({"X", "Type", "Z"}));
    TextHost_cls::Install(pOld);
}

} // namespace

namespace {

TEST_F(ParticleHeaderTest, GzipFileIsDecompressedOnceForHeaderAndBody) {
    // The body read takes the file that the header read decompressed: with the file gone in
    // between, the body still reads. A plain file is opened again by the body read.
    Bytes_cls b;
    b.I(3).F(1.5f);
    for (int i = 0; i < 3; ++i)
        b.F(1.0f + i).F(2).F(3).I(10 + i);
    for (bool bText : {false, true}) {
        SCOPED_TRACE(bText ? "text" : "binary");
        const std::string bytes = bText ? std::string("3\n1 2 3 10\n2 2 3 11\n3 2 3 12\n") : b.mStr;
        const wxString path = P(bText ? "once.txt.gz" : "once.dat.gz");
        ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(path, bytes.data(), static_cast<long long>(bytes.size())));
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, bText ? 0 : 1, 0,
                  Names(bText ? std::initializer_list<const char*>{"ParticleNumber"}
                              : std::initializer_list<const char*>{"ParticleNumber", "Time"}),
                  Names(bText ? std::initializer_list<const char*>{"XYZ", "ID"}
                              : std::initializer_list<const char*>{"XYZ(float)", "ID(int)"}));
        snap.SetStrFile(path);
        ASSERT_TRUE(snap.ReadHeader(&clone));
        ASSERT_TRUE(wxRemoveFile(path));
        ASSERT_TRUE(snap.ReadData(&clone, true));
        snap.WaitReadingThread(1);
        FlushThreadLogs();
        ASSERT_EQ(snap.mNumber.load(), 3);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(snap.mXYZ[3 * i], 1.0f + i);
            EXPECT_EQ(snap.mID[i], 10 + i);
        }
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
    ASSERT_TRUE(WriteBytes(P("vel.dat"), b.mStr));
    ASSERT_TRUE(
        UseGZ_cls::SaveMemoryToGZ(P("velz.dat.gz"), b.mStr.data(), static_cast<long long>(b.mStr.size())));
    std::vector<float> xyz[2];
    std::vector<int> id[2];
    for (int k = 0; k < 2; ++k) {
        ParticleSequence_cls seq;
        ParticleSnap_cls snap(&seq, 0);
        ParticleFormatClone_cls clone;
        MakeClone(clone, 1, 0, Names({}), Names({"XYZ(float)", "VXVYVZ(float)", "ID(int)"}));
        snap.SetStrFile(P(k == 0 ? "vel.dat" : "velz.dat.gz"));
        ASSERT_TRUE(snap.ReadHeader(&clone));
        ASSERT_TRUE(snap.ReadData(&clone, false));
        ASSERT_EQ(snap.mNumber.load(), n);
        xyz[k].assign(snap.mXYZ.get(), snap.mXYZ.get() + 3 * n);
        id[k].assign(snap.mID.get(), snap.mID.get() + n);
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
