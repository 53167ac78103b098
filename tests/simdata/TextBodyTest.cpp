// The text body reader: every column read exactly as strtod, strtol and strtoll read it from the
// line with one blank appended (the reference below is that reading, written out), bodies split
// over any number of threads, vertical bodies across the split, a header count beyond the body,
// and a dump written by LAMMPS.
#include "ParticleSequence_cls.h"
#include "ParticleSnap_cls.h"
#include "SimDataTestSupport.h"
#include "TestSupport.h"
#include "ThreadParticleAsciiRead.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The columns of one line as the line reader has always read them: the line with one blank
// appended, strtod (or strtol) at the cursor, then one character past the next blank.
template <typename T, typename Parse>
std::vector<T> ReferenceColumns(const std::string& text, int columns, Parse parse) {
    const std::string line = text + " ";
    const char* p = line.c_str();
    std::vector<T> out;
    for (int k = 0; k < columns; ++k) {
        out.push_back(parse(p));
        const char* q = p;
        while (*q && *q != ' ' && *q != '\n')
            ++q;
        if (*q)
            ++q;
        p = q;
    }
    return out;
}

bool SameDouble(double a, double b) {
    return (std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b)) || a == b;
}

TEST(TextColumnTest, EveryColumnReadsAsStrtodReadsIt) {
    const char* lines[] = {
        "1 2 3",
        "-1.5 .5 5. -.25e3",
        "0x1A 0X10p1 -0x8 0x", // hexadecimal: strtod reads it, the fast parser does not
        "+5 +.5 + -",          // plus signs and lone signs
        "1  2 3",              // two blanks: the columns shift
        "\t7 8",               // a tab: strtod skips it
        "1e400 -1e400 1e-400 4.9e-324",
        "nan -nan inf -infinity NaN(12) infinit",
        "1.5e 2e+ 3e-x 7.0.1",
        "abc 12abc x1",
        "3.14159265358979323846264338327950288 0.1000000000000000055511151231257827",
        "99999999999999999999 -99999999999999999999 2147483648 -2147483649",
        "",
        " ",
        "5",
        "1 2\r", // a line of a file with CR LF ends
        "1\v2 \f3",
    };
    for (const char* text : lines) {
        SCOPED_TRACE(testing::Message() << "line \"" << text << "\"");
        const std::string data = std::string(text) + "\n9 9 9 9 9 9\n"; // a next line that must stay unread
        const char* eol = data.c_str() + strlen(text);
        const auto refFloat =
            ReferenceColumns<double>(text, 7, [](const char* p) { return strtod(p, nullptr); });
        const auto refLong =
            ReferenceColumns<long>(text, 7, [](const char* p) { return strtol(p, nullptr, 10); });
        const char* p = data.c_str();
        const char* q = data.c_str();
        for (int k = 0; k < 7; ++k) {
            SCOPED_TRACE(k);
            const float f = ThreadParticleAsciiRead::ReadColumnFloat(&p, eol);
            EXPECT_TRUE(SameDouble(f, static_cast<float>(refFloat[k]))) << f << " vs " << refFloat[k];
            const int i = ThreadParticleAsciiRead::ReadColumnInt(&q, eol);
            EXPECT_EQ(i, static_cast<int>(refLong[k]));
        }
        const std::string line = std::string(text) + " ";
        EXPECT_EQ(ThreadParticleAsciiRead::ParseLongLong(data.c_str(), eol),
                  strtoll(line.c_str(), nullptr, 10));
        EXPECT_TRUE(SameDouble(ThreadParticleAsciiRead::ParseDouble(data.c_str(), eol),
                               strtod(line.c_str(), nullptr)));
    }
    // A zero byte inside a line ends its text: every later column reads 0.
    const std::string withZero("1 2\0 3 4\n", 9);
    const char* p = withZero.c_str();
    const char* eol = p + 8;
    EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnFloat(&p, eol), 1.0f);
    EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnFloat(&p, eol), 2.0f);
    EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnFloat(&p, eol), 0.0f);
    EXPECT_EQ(ThreadParticleAsciiRead::ReadColumnFloat(&p, eol), 0.0f);
}

class TextBodyTest : public SnapReadFixture_cls {
protected:
    void Read(const wxString& path, const ParticleFormatClone_cls& clone) { ReadOnThread(path, clone); }
};

TEST_F(TextBodyTest, HorizontalBodySplitOverAnyNumberOfThreads) {
    // Lines of uneven length, a CR LF ending, an empty line (a particle of zeros) and no newline
    // at the very end; enough of them that every range holds many lines.
    const int n = 30000;
    std::ostringstream text;
    text << "Header line\n" << n << "\n";
    for (int i = 0; i < n; ++i) {
        if (i == 777) {
            text << "\n";
            continue;
        }
        text << i * 0.5 << " " << -i << " " << (i % 3 == 0 ? "1e3" : "2") << " " << i % 300
             << (i % 5 ? "" : " extra") << (i == 123 ? "\r" : "") << (i + 1 < n ? "\n" : "");
    }
    ASSERT_TRUE(WriteBytes(mDir.Path("h.txt"), text.str()));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, Names({"Dummy", "ParticleNumber"}), Names({"X", "Y", "Size", "Type"}));
    for (int threads : {1, 2, 3, 7}) {
        SCOPED_TRACE(testing::Message() << threads << " threads");
        FixedThreads_cls fixed(threads);
        Read(mDir.Path("h.txt"), clone);
        ASSERT_EQ(mSnap->mNumber.load(), n);
        for (int i = 0; i < n; ++i) {
            if (i == 777) {
                ASSERT_EQ(mSnap->mXYZ[3 * i], 0.0f);
                ASSERT_EQ(mSnap->mSize[i], 0.0f);
                continue;
            }
            // "Y" goes to the first component as well, over what "X" put there.
            ASSERT_EQ(mSnap->mXYZ[3 * i], static_cast<float>(-i)) << i;
            ASSERT_EQ(mSnap->mSize[i], i % 3 == 0 ? 1000.0f : 2.0f) << i;
            ASSERT_EQ(mSnap->mType[i], i % 300 & 0xff) << i;
        }
    }
}

TEST_F(TextBodyTest, VerticalBodyAcrossTheSplit) {
    // Items of 1, 0, 3, 1 and 1 lines per particle; the last runs out half way.
    const int n = 20000;
    std::ostringstream text;
    text << std::setprecision(12) << n << "\n";
    for (int i = 0; i < n; ++i)
        text << i << "\n";
    for (int i = 0; i < n; ++i)
        text << "skip\nskip\n" << -i << "\n";
    for (int i = 0; i < n; ++i)
        text << i + 0.25 << "\n";
    for (int i = 0; i < n / 2; ++i)
        text << i % 7 << "\n";
    ASSERT_TRUE(WriteBytes(mDir.Path("v.txt"), text.str()));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 1, Names({"ParticleNumber"}), Names({"Z", "ID", "Dummyx3", "X", "Type"}));
    for (int threads : {1, 2, 5}) {
        SCOPED_TRACE(testing::Message() << threads << " threads");
        FixedThreads_cls fixed(threads);
        Read(mDir.Path("v.txt"), clone);
        ASSERT_EQ(mSnap->mNumber.load(), n);
        for (int i = 0; i < n; ++i) {
            ASSERT_EQ(mSnap->mXYZ[3 * i + 2], static_cast<float>(i)) << i;
            ASSERT_EQ(mSnap->mXYZ[3 * i], static_cast<float>(i + 0.25)) << i;
            ASSERT_EQ(mSnap->mXYZ[3 * i + 1], 0.0f) << i;
            ASSERT_EQ(mSnap->mID[i], 0) << "the ID item reads nothing";
            ASSERT_EQ(mSnap->mType[i], i < n / 2 ? i % 7 : 0) << i;
        }
    }
}

TEST_F(TextBodyTest, HeaderCountBeyondTheBodyReadsTheLinesThatAreThere) {
    ASSERT_TRUE(WriteBytes(mDir.Path("short.txt"), "100\n1 2 3\n4 5 6"));
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, Names({"ParticleNumber"}), Names({"XYZ"}));
    // Also with more threads than bytes in the body, where most ranges are empty.
    for (int threads : {1, 40}) {
        SCOPED_TRACE(testing::Message() << threads << " threads");
        FixedThreads_cls fixed(threads);
        Read(mDir.Path("short.txt"), clone);
        EXPECT_TRUE(mSnap->mHeaderOK);
        EXPECT_EQ(mSnap->mReadFile, mDir.Path("short.txt")) << "not the substitute data";
        ASSERT_EQ(mSnap->mNumber.load(), 100);
        const float first[6] = {1, 2, 3, 4, 5, 6};
        for (int k = 0; k < 6; ++k)
            EXPECT_EQ(mSnap->mXYZ[k], first[k]);
        for (int k = 6; k < 300; ++k)
            ASSERT_EQ(mSnap->mXYZ[k], 0.0f) << k;
    }
}

TEST_F(TextBodyTest, DumpWrittenByLammps) {
    // tests/data/lammps/dump.small.10 comes from in.small beside it: 32 atoms, "id type x y z".
    const wxString path = wxString(ORV_TEST_DATA_DIR) + "/lammps/dump.small.10";
    ParticleFormatClone_cls clone;
    MakeClone(clone, 0, 0, Names({"Dummyx3", "Dummyx3", "Dummyx3"}), Names({"ID", "Type", "XYZ"}), true);
    Read(path, clone);
    ASSERT_EQ(mSnap->mNumber.load(), 32);
    std::ifstream in(path.ToStdString());
    std::string line;
    for (int i = 0; i < 9; ++i)
        std::getline(in, line);
    for (int i = 0; i < 32; ++i) {
        ASSERT_TRUE(std::getline(in, line));
        int id = 0, type = 0;
        double x = 0, y = 0, z = 0;
        ASSERT_EQ(sscanf(line.c_str(), "%d %d %lf %lf %lf", &id, &type, &x, &y, &z), 5);
        const int j = id - 1; // sorted by ID
        SCOPED_TRACE(id);
        EXPECT_EQ(mSnap->mID[j], id);
        EXPECT_EQ(mSnap->mType[j], type);
        EXPECT_EQ(mSnap->mXYZ[3 * j], static_cast<float>(x));
        EXPECT_EQ(mSnap->mXYZ[3 * j + 1], static_cast<float>(y));
        EXPECT_EQ(mSnap->mXYZ[3 * j + 2], static_cast<float>(z));
    }
}

} // namespace
