// Whole-file gzip reading: the extension alone makes a gzip path, several members follow one
// another, bytes behind the last member are ignored, a ".gz" file that holds no gzip data passes
// through, and a wrong size in the trailer only makes the buffer grow.
#include "AsciiReader_cls.h"
#include "TestSupport.h"
#include "UseGZ_cls.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>

namespace {

// data compressed as one gzip member, through zlib.
std::string Member(const std::string& data, int level = 6) {
    z_stream zs{};
    EXPECT_EQ(deflateInit2(&zs, level, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string out(deflateBound(&zs, data.size()) + 32, '\0');
    zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    zs.avail_in = static_cast<uInt>(data.size());
    zs.next_out = reinterpret_cast<Bytef*>(&out[0]);
    zs.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(deflate(&zs, Z_FINISH), Z_STREAM_END);
    out.resize(zs.total_out);
    deflateEnd(&zs);
    return out;
}

std::string ReadMemory(const wxString& path) {
    unsigned char* p = nullptr;
    long long size = 0;
    if (!UseGZ_cls::CopyToMemory(&p, path, size))
        return "<failed>";
    std::string s(reinterpret_cast<char*>(p), static_cast<size_t>(size - 1));
    EXPECT_EQ(p[size - 1], 0) << "a zero byte behind the data";
    delete[] p;
    return s;
}

TEST(UseGZTest, OnlyTheExtensionGzMakesAGzipPath) {
    const struct {
        const char* path;
        bool bGZ;
    } cases[] = {{"a.gz", true},      {"dir/a.dat.gz", true}, {"archive.tgz", false}, {"notgz", false},
                 {"a.gz.txt", false}, {"dir.gz/a", false},    {"a.GZ", false},        {"a.xgz", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(UseGZ_cls::IsGZPath(c.path), c.bGZ);
    }
    // Compressed bytes under a name that is no gzip path are read as they stand.
    TempDir_cls dir;
    const std::string text = "one\ntwo\nthree\n";
    const std::string gz = Member(text);
    for (const char* name : {"archive.tgz", "notgz"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(WriteBytes(dir.Path(name), gz));
        EXPECT_EQ(ReadMemory(dir.Path(name)), gz);
        std::string s;
        ASSERT_TRUE(UseGZ_cls::CopyToString(&s, dir.Path(name)));
        EXPECT_EQ(s, gz);
    }
    // What SaveMemoryToGZ writes reads back like the plain file, through both ways.
    ASSERT_TRUE(WriteBytes(dir.Path("plain.txt"), text));
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(dir.Path("saved.gz"), text.data(), (long long)text.size()));
    EXPECT_NE(ReadBytes(dir.Path("saved.gz")), text);
    for (const char* name : {"plain.txt", "saved.gz"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ReadMemory(dir.Path(name)), text);
        std::string s;
        ASSERT_TRUE(UseGZ_cls::CopyToString(&s, dir.Path(name)));
        EXPECT_EQ(s, text);
        EXPECT_EQ(UseGZ_cls::GetLineNumber(dir.Path(name)), 3);
    }
    EXPECT_FALSE(UseGZ_cls::SaveMemoryToGZ(dir.Path("no/such/dir.gz"), "x", 1));
    UseGZ_cls::VersionCheck();
    EXPECT_GE(UseGZ_cls::msZlibMajor, 1);
}

// A failed read leaves the outputs as they were; a folder is not a file (on Linux it opens and
// claims a size of 2^63 - 1).
TEST(UseGZTest, MissingFilesAndFoldersFailAndLeaveTheOutputs) {
    TempDir_cls dir;
    ASSERT_TRUE(wxFileName::Mkdir(dir.Path("folder")));
    ASSERT_TRUE(wxFileName::Mkdir(dir.Path("folder.gz")));
    unsigned char sentinel = 0;
    for (wxString strName : {"missing.txt", "missing.gz", "folder", "folder.gz"}) {
        SCOPED_TRACE(strName.ToStdString());
        unsigned char* p = &sentinel;
        long long size = 77;
        EXPECT_FALSE(UseGZ_cls::CopyToMemory(&p, dir.Path(strName), size));
        EXPECT_EQ(p, &sentinel);
        EXPECT_EQ(size, 77);
        std::string str = "kept";
        EXPECT_FALSE(UseGZ_cls::CopyToString(&str, dir.Path(strName)));
        EXPECT_EQ(str, "kept");
        EXPECT_EQ(UseGZ_cls::GetLineNumber(dir.Path(strName)), -1);
    }
    long sizeAscii = 0;
    EXPECT_EQ(AsciiReader_cls::GetPNewBufferFromFile(dir.Path("folder"), sizeAscii), nullptr);
}

TEST(UseGZTest, MembersGarbageAndPlainData) {
    TempDir_cls dir;
    std::string big;
    for (int i = 0; big.size() < (3u << 20); ++i)
        big += std::to_string(i * 7919LL % 100003) + (i % 11 ? " " : "\n");
    const std::string small = "tail member\n";
    const struct {
        const char* name;
        std::string bytes;
        std::string expected;
    } cases[] = {
        // The trailer of the last member gives the size of that member only: the buffer grows.
        {"two members, the large first", Member(big) + Member(small), big + small},
        {"three members", Member(small) + Member(big, 1) + Member(small), small + big + small},
        {"garbage behind the member is ignored", Member(small) + "garbage!", small},
        {"one stray byte behind the member", Member(big) + "\x1f", big},
        {"plain data under a .gz name", "not compressed at all\n", "not compressed at all\n"},
        {"a single byte", "\x1f", "\x1f"},
        {"empty", "", ""},
        {"an empty member", Member(""), ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(WriteBytes(dir.Path("m.gz"), c.bytes));
        EXPECT_EQ(ReadMemory(dir.Path("m.gz")), c.expected);
        std::string s = "old";
        ASSERT_TRUE(UseGZ_cls::CopyToStringGZ(&s, dir.Path("m.gz")));
        EXPECT_EQ(s, c.expected);
    }
    // A trailer whose size is wrong (as beyond 4 GiB, where it wraps) fails libdeflate's check;
    // zlib then reads what the data gives up to the failed check, as it always did.
    std::string wrong = Member(big);
    wrong[wrong.size() - 1] = 0;
    wrong[wrong.size() - 2] = 0;
    ASSERT_TRUE(WriteBytes(dir.Path("w.gz"), wrong));
    const std::string got = ReadMemory(dir.Path("w.gz"));
    EXPECT_LE(got.size(), big.size());
    EXPECT_EQ(got, big.substr(0, got.size()));

    // Damaged compressed data ends the text where the damage is found: what was decoded before
    // it is kept, as at the end of the file; a member cut in half gives what could be decoded.
    // (A longer text of other lines: its damage decodes to more bytes than the trailer announces.)
    std::string longer;
    for (int i = 0; longer.size() < (4u << 20); ++i)
        longer += std::to_string(i * 7919LL % 100003) + (i % 13 ? " " : "\n");
    ASSERT_TRUE(UseGZ_cls::SaveMemoryToGZ(dir.Path("big.gz"), longer.data(), (long long)longer.size()));
    std::string bad = ReadBytes(dir.Path("big.gz"));
    for (size_t i = bad.size() * 3 / 4; i < bad.size() * 3 / 4 + 64; ++i)
        bad[i] = static_cast<char>(~bad[i]);
    ASSERT_TRUE(WriteBytes(dir.Path("bad.gz"), bad));
    std::string str;
    ASSERT_TRUE(UseGZ_cls::CopyToString(&str, dir.Path("bad.gz")));
    EXPECT_LT(str.size(), longer.size());
    EXPECT_GE(str.size(), 1u << 20);
    EXPECT_EQ(str.substr(0, 1u << 19), longer.substr(0, 1u << 19));
    ASSERT_TRUE(WriteBytes(dir.Path("cut.gz"), bad.substr(0, bad.size() / 2)));
    str.clear();
    UseGZ_cls::CopyToString(&str, dir.Path("cut.gz"));
    EXPECT_LE(str.size(), longer.size());
}

} // namespace
