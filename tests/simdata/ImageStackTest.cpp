// Image stacks in PNG, TIFF, JPEG and BMP as ImageMagick writes them (tests/data/<format>/, made by
// tests/data/make-image-stacks.sh), read through the volume sequence, its snap and the reader
// thread; the type comes from the content, never from the extension; bad slices stop the read
// with a log line. BMP layouts that ImageMagick does not write are built here byte by byte.
#include "SimDataTestSupport.h"
#include "SliceImage_cls.h"
#include "TestSupport.h"
#include "VolumeSequence_cls.h"
#include "VolumeSnap_cls.h"

#include <gtest/gtest.h>
#include <wx/dir.h>

#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

const wxString gStrData = ORV_TEST_DATA_DIR;

// What the stacks under tests/data hold: slice z, pixel (x, y) from the top. Colour slices
// have this as red; 16-bit slices as their high byte.
constexpr int kW = 7;
constexpr int kH = 5;
int StackValue(int x, int y, int z) {
    return 20 + 28 * x + 4 * y + z;
}
int MaskValue(int x, int y, int z) {
    return (x + y + z) % 2 ? 255 : 0;
}

// The log lines about image stacks, one per line, so that a failed expectation shows them.
wxString StackLines(const LogCapture_cls& log) {
    wxString str;
    for (const wxString& line : log.mVStrLines)
        if (line.Lower().Contains("image stack"))
            str += line + "\n";
    return str;
}

// Little-endian byte builder for BMP files.
struct Le {
    std::string mStr;
    Le& U8(int v) {
        mStr.push_back(static_cast<char>(v & 0xff));
        return *this;
    }
    Le& U16(int v) { return U8(v).U8(v >> 8); }
    Le& U32(long long v) {
        return U16(static_cast<int>(v & 0xffff)).U16(static_cast<int>((v >> 16) & 0xffff));
    }
    Le& Raw(const std::string& s) {
        mStr += s;
        return *this;
    }
};

// A BMP with a 40-byte info header; palette entries are B, G, R, 0; rows as given, in file order.
std::string Bmp(int width, int height, int bpp, int compression, const std::vector<int>& paletteRed,
                const std::string& pixels, const std::string& masks = std::string()) {
    const long long offBits = 14 + 40 + masks.size() + 4 * paletteRed.size();
    Le b;
    b.Raw("BM").U32(offBits + pixels.size()).U32(0).U32(offBits);
    b.U32(40).U32(width).U32(height).U16(1).U16(bpp).U32(compression).U32(pixels.size());
    b.U32(2835).U32(2835).U32(paletteRed.size()).U32(0);
    b.Raw(masks);
    for (int red : paletteRed)
        b.U8(7).U8(255 - red).U8(red).U8(0);
    return b.Raw(pixels).mStr;
}

class ImageStackTest : public DataFileFixture_cls {
protected:
    // Reads the stack whose first slice is strFirst the way the volume viewer does: the name rule
    // of the sequence, the header from the first slice on this thread, the voxels on a reader.
    VolumeSnap_cls* ReadStack(VolumeSequence_cls& seq, const wxString& strFirst) {
        seq.SetDual(strFirst, 0, 0, 1, 1);
        seq.CalcMaxOffsetDual();
        VolumeSnap_cls* pSnap = seq.GenerateIfNot(0);
        if (!pSnap)
            return nullptr;
        seq.PrepareSnap(pSnap, 0, true);
        if (pSnap->PrefetchData(true))
            pSnap->WaitReadingThread(1);
        FlushThreadLogs();
        return pSnap;
    }

    // Expects a kW x kH x depth volume whose voxel (x, kH - 1 - y, z) is value(x, y, z) within
    // tolerance: image rows are flipped so that the top row is the largest Y.
    static void ExpectStack(const VolumeSnap_cls* pSnap, int depth,
                            const std::function<int(int, int, int)>& value, int tolerance) {
        ASSERT_NE(pSnap, nullptr);
        ASSERT_EQ(pSnap->mSizeX, kW);
        ASSERT_EQ(pSnap->mSizeY, kH);
        ASSERT_EQ(pSnap->mSizeZ, depth);
        ASSERT_TRUE(pSnap->mData);
        for (int z = 0; z < depth; ++z)
            for (int y = 0; y < kH; ++y)
                for (int x = 0; x < kW; ++x) {
                    const size_t at = (static_cast<size_t>(z) * kH + (kH - 1 - y)) * kW + x;
                    ASSERT_NEAR(pSnap->mData[at], value(x, y, z), tolerance)
                        << "pixel " << x << " " << y << " of slice " << z;
                }
    }
};

TEST_F(ImageStackTest, EveryFormatAsWrittenByImageMagick) {
    struct Case {
        const char* first; // under tests/data
        bool bMask;
        int tolerance; // JPEG is lossy
    } cases[] = {
        {"png/grey8_000.png", false, 0},
        {"png/grey16_000.png", false, 0},
        {"png/rgb8_000.png", false, 0},
        {"png/interlaced_000.png", false, 0}, // Adam7
        {"tiff/grey8_000.tif", false, 0},
        {"tiff/grey16_000.tif", false, 0}, // LZW; 16-bit samples keep their high byte, as in PNG
        {"tiff/rgb8_000.tif", false, 0},   // deflate
        {"tiff/rgb16_000.tif", false, 0},
        {"tiff/palette_000.tif", false, 0},
        {"tiff/tiled16_000.tif", false, 0},
        {"tiff/planar_000.tif", false, 0}, // red, green and blue in planes of their own
        {"tiff/mask_000.tif", true, 0},    // 1 bit, min-is-white, Group 4
        {"jpeg/grey_000.jpg", false, 3},
        {"jpeg/rgb_000.jpg", false, 4},
        {"bmp/grey8_000.bmp", false, 0},    // 8-bit palette, RLE8 as ImageMagick writes it
        {"bmp/grey8raw_000.bmp", false, 0}, // 8-bit palette, uncompressed
        {"bmp/rgb24_000.bmp", false, 0},    // rows of 21 bytes padded to 24
        {"bmp/rgba32_000.bmp", false, 0},   // bit fields
        {"bmp/mask_000.bmp", true, 0},      // 1-bit palette
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.first);
        LogCapture_cls log;
        VolumeSequence_cls seq;
        ExpectStack(ReadStack(seq, gStrData + "/" + c.first), 3, c.bMask ? MaskValue : StackValue,
                    c.tolerance);
        EXPECT_EQ(StackLines(log), "");
    }
}

TEST_F(ImageStackTest, TheContentDecidesNotTheExtension) {
    // PNG content under JPEG names, and a stack whose slices are each of another type.
    const wxString strRoot = gStrData + "/";
    const char* lies[][2] = {
        {"png/grey8_000.png", "lie_000.jpg"},     {"png/grey8_001.png", "lie_001.jpg"},
        {"png/grey8_002.png", "lie_002.jpg"},     {"png/grey8_000.png", "mixed_000.img"},
        {"tiff/grey16_001.tif", "mixed_001.img"}, {"jpeg/grey_002.jpg", "mixed_002.img"},
        {"bmp/rgb24_000.bmp", "none_000"},
    };
    for (const auto& lie : lies)
        ASSERT_TRUE(WriteBytes(P(lie[1]), ReadBytes(strRoot + lie[0])));
    for (const char* first : {"lie_000.jpg", "mixed_000.img", "none_000"}) {
        SCOPED_TRACE(first);
        VolumeSequence_cls seq;
        const int depth = wxString(first) == "none_000" ? 1 : 3;
        ExpectStack(ReadStack(seq, P(first)), depth, StackValue, wxString(first) == "mixed_000.img" ? 3 : 0);
    }
}

TEST_F(ImageStackTest, BmpLayoutsImageMagickDoesNotWrite) {
    // Two 3 x 2 slices per case; the red of pixel (x, y) from the top is 40 + 50 x + 100 y.
    auto red = [](int x, int y, int) { return 40 + 50 * x + 100 * y; };
    auto row24 = [&](int y) {
        Le r;
        for (int x = 0; x < 3; ++x)
            r.U8(9).U8(200).U8(red(x, y, 0)); // B, G, R
        return r.U8(0).U8(0).U8(0).mStr;      // 9 bytes padded to 12
    };
    auto row16 = [&](int y) { // 5-5-5: red in bits 10 to 14
        Le r;
        for (int x = 0; x < 3; ++x)
            r.U16((red(x, y, 0) >> 3) << 10 | 0x3ff);
        return r.U16(0).mStr;
    };
    auto row32 = [&](int y) { // red in the low byte, as the mask behind the header says
        Le r;
        for (int x = 0; x < 3; ++x)
            r.U32(0xabcdef00LL | red(x, y, 0));
        return r.mStr;
    };
    const std::string strMasks = Le().U32(0xff).U32(0xff00).U32(0xff0000).mStr;
    // A colour palette: index i stands for red(i % 3, i / 3) and a green that must not count.
    const std::vector<int> palette = {red(0, 0, 0), red(1, 0, 0), red(2, 0, 0),
                                      red(0, 1, 0), red(1, 1, 0), red(2, 1, 0)};
    struct Case {
        const char* name;
        std::string bytes;
        int tolerance;
    } cases[] = {
        {"top-down 24 bit", Bmp(3, -2, 24, 0, {}, row24(0) + row24(1)), 0},
        {"bottom-up 24 bit", Bmp(3, 2, 24, 0, {}, row24(1) + row24(0)), 0},
        {"colour palette, top-down", Bmp(3, -2, 8, 0, palette, std::string("\0\1\2\0\3\4\5\0", 8)), 0},
        {"4-bit palette", Bmp(3, 2, 4, 0, palette, std::string("\x34\x50\0\0\x01\x20\0\0", 8)), 0},
        {"RLE4 with a run and an absolute run",
         Bmp(3, 2, 4, 2, palette, std::string("\0\3\x34\x50\0\0\x02\x01\x01\x20\0\1", 12)), 0},
        {"16 bit 5-5-5", Bmp(3, 2, 16, 0, {}, row16(1) + row16(0)), 7},
        {"32 bit, bit fields behind the header", Bmp(3, 2, 32, 3, {}, row32(1) + row32(0), strMasks), 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TempDir_cls dir;
        for (int z = 0; z < 2; ++z)
            ASSERT_TRUE(WriteBytes(dir.Path(wxString::Format("b_%03d.bmp", z)), c.bytes));
        VolumeSequence_cls seq;
        VolumeSnap_cls* pSnap = ReadStack(seq, dir.Path("b_000.bmp"));
        ASSERT_NE(pSnap, nullptr);
        ASSERT_EQ(pSnap->mSizeX, 3);
        ASSERT_EQ(pSnap->mSizeY, 2);
        ASSERT_EQ(pSnap->mSizeZ, 2);
        for (int z = 0; z < 2; ++z)
            for (int y = 0; y < 2; ++y)
                for (int x = 0; x < 3; ++x)
                    ASSERT_NEAR(pSnap->mData[(static_cast<size_t>(z) * 2 + 1 - y) * 3 + x], red(x, y, z),
                                c.tolerance)
                        << x << " " << y << " " << z;
    }
}

TEST_F(ImageStackTest, BadSlicesStopTheReadWithALogLine) {
    // Slice 1 of a stack of good slices 0 and 2 is cut short or replaced; the read keeps slice 0,
    // leaves the rest as allocated and says why. Slice 0 bad: nothing is allocated.
    const std::string strRandom = RandomBytes(2026, 300);
    struct Case {
        std::string name;
        std::string bytes;
    };
    std::vector<Case> cases = {{"random bytes", strRandom}, {"empty", std::string()}};
    for (const char* magic : {"\x89PNG\r\n\x1a\n", "II*\0", "MM\0*", "\xff\xd8\xff", "BM"}) {
        const std::string strMagic(magic, magic[0] == 'I' || magic[0] == 'M' ? 4 : std::strlen(magic));
        cases.push_back({"magic " + strMagic.substr(0, 2) + " then random bytes", strMagic + strRandom});
    }
    for (const char* file : {"png/grey8_001.png", "tiff/grey8_001.tif", "tiff/grey16_001.tif",
                             "jpeg/rgb_001.jpg", "bmp/grey8_001.bmp", "bmp/rgb24_001.bmp"}) {
        const std::string strGood = ReadBytes(gStrData + "/" + file);
        ASSERT_GT(strGood.size(), 40u) << file;
        for (size_t keep : {size_t(3), size_t(12), size_t(40), strGood.size() / 2, strGood.size() * 3 / 4})
            cases.push_back({std::string(file) + " cut to " + std::to_string(keep), strGood.substr(0, keep)});
    }
    // All scan lines are there, only the end marker is not: libjpeg would still give a picture.
    const std::string strJpeg = ReadBytes(gStrData + "/jpeg/rgb_001.jpg");
    cases.push_back({"JPEG without its end marker", strJpeg.substr(0, strJpeg.size() - 2)});
    const std::string strSlice0 = ReadBytes(gStrData + "/bmp/rgb24_000.bmp");
    const std::string strSlice2 = ReadBytes(gStrData + "/bmp/rgb24_002.bmp");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        {
            LogCapture_cls log;
            TempDir_cls dir;
            ASSERT_TRUE(WriteBytes(dir.Path("s_000.img"), strSlice0));
            ASSERT_TRUE(WriteBytes(dir.Path("s_001.img"), c.bytes));
            ASSERT_TRUE(WriteBytes(dir.Path("s_002.img"), strSlice2));
            VolumeSequence_cls seq;
            VolumeSnap_cls* pSnap = ReadStack(seq, dir.Path("s_000.img"));
            ASSERT_NE(pSnap, nullptr);
            ASSERT_EQ(pSnap->mSizeZ, 3);
            EXPECT_EQ(pSnap->mData[kW * (kH - 1)], StackValue(0, 0, 0));
            for (size_t at = kW * kH; at < size_t(3 * kW * kH); ++at)
                ASSERT_EQ(pSnap->mData[at], 0) << at;
            EXPECT_TRUE(
                log.Contains("Image stack reading stops at slice 1: " + dir.Path("s_001.img") + " ("));
        }
        {
            LogCapture_cls log;
            TempDir_cls dir;
            ASSERT_TRUE(WriteBytes(dir.Path("f_000.img"), c.bytes));
            VolumeSequence_cls seq;
            VolumeSnap_cls* pSnap = ReadStack(seq, dir.Path("f_000.img"));
            ASSERT_NE(pSnap, nullptr);
            // A slice cut after its header still gives the size: then the read stops at slice 0.
            EXPECT_TRUE(log.Contains("First slice of the image stack cannot be read: " +
                                     dir.Path("f_000.img") + " (") ||
                        log.Contains("Image stack reading stops at slice 0: "));
        }
    }
    LogCapture_cls log;
    ASSERT_TRUE(WriteBytes(P("r_000.png"), strRandom));
    VolumeSequence_cls seq;
    VolumeSnap_cls* pSnap = ReadStack(seq, P("r_000.png"));
    ASSERT_NE(pSnap, nullptr);
    EXPECT_EQ(pSnap->GetUsedMemoryByte(), 0);
    EXPECT_TRUE(log.Contains("(not a PNG, TIFF, JPEG or BMP picture)"));
}

TEST_F(ImageStackTest, ReasonsGivenForWhatIsNotRead) {
    struct Case {
        const char* name;
        std::string bytes;
        const char* why;
    } cases[] = {
        {"BMP compressed as JPEG", Bmp(3, 2, 24, 4, {}, std::string(24, '\0')), "compression 4"},
        {"BMP of 2 bits per pixel", Bmp(3, 2, 2, 0, {0, 1, 2, 3}, std::string(8, '\0')), "2 bits per pixel"},
        {"BMP rows cut short", Bmp(3, 2, 24, 0, {}, std::string(20, '\0')), "ends early"},
        {"BMP of width 0", Bmp(0, 2, 24, 0, {}, std::string()), "size 0 x 2"},
        {"RLE8 without its end", Bmp(3, 2, 8, 1, {9, 8}, std::string("\x03\x01", 2)), "ends early"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        TempDir_cls dir;
        ASSERT_TRUE(WriteBytes(dir.Path("w_000.bmp"), c.bytes));
        ASSERT_TRUE(WriteBytes(dir.Path("w_001.bmp"), c.bytes));
        VolumeSequence_cls seq;
        ReadStack(seq, dir.Path("w_000.bmp"));
        EXPECT_TRUE(StackLines(log).Contains(c.why)) << StackLines(log);
    }
}

TEST_F(ImageStackTest, DamagedSlicesDecodeOrGiveAReason) {
    // Every slice under tests/data with random edits: each load either gives a whole picture or
    // fails with a reason, and never reads or writes outside its buffers (see the sanitizer build).
    std::mt19937 rng(4);
    int loads = 0, failures = 0;
    for (const char* format : {"png", "tiff", "jpeg", "bmp"}) {
        wxArrayString files;
        wxDir::GetAllFiles(gStrData + "/" + format, &files);
        ASSERT_GE(files.size(), 6u) << format;
        for (const wxString& strFile : files) {
            const std::string strGood = ReadBytes(strFile);
            for (int i = 0; i < 12; ++i) {
                SCOPED_TRACE(strFile + wxString::Format(" edit %d", i));
                const wxString strDamaged = P(wxString::Format("damaged%d", loads));
                ASSERT_TRUE(WriteBytes(strDamaged, MutateText(strGood, rng)));
                SlicePixels_cls slice;
                const bool bSize = SliceImage_cls::ReadSize(strDamaged, slice);
                EXPECT_NE(bSize, !slice.mStrWhy.empty());
                const bool bOk = SliceImage_cls::Load(strDamaged, slice);
                ++loads;
                failures += bOk ? 0 : 1;
                if (bOk) {
                    EXPECT_TRUE(slice.mStrWhy.empty());
                    EXPECT_EQ(slice.mRed.size(), static_cast<size_t>(slice.mWidth) * slice.mHeight);
                } else {
                    EXPECT_FALSE(slice.mStrWhy.empty());
                }
            }
        }
    }
    EXPECT_GT(failures, loads / 4) << "the edits must damage many files";
}

} // namespace
