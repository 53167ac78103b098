// Colour curves: the presets, the colour look-up, the range mapping, the texel bytes with their
// digest, the project form and the copies between curves.
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <string>

namespace {

std::array<unsigned char, 4> Texel(const ColorCurve_cls& curve, int i) {
    const unsigned char* p = &curve.mVTextureBytes[4 * static_cast<size_t>(i)];
    return {p[0], p[1], p[2], p[3]};
}

// Reads text into p the way an owner does: the first line's head, then the block from the stream.
// Returns what is left of the stream.
wxString ReadInto(ColorCurve_cls& curve, const wxString& strText, bool bCheckName, bool* pTaken = nullptr) {
    std::wistringstream stream(strText.ToStdWstring());
    std::wstring line;
    std::getline(stream, line);
    wxString strRest(line);
    const wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
    const bool bTaken = curve.ReadStrLine(stream, strHead, strRest, bCheckName);
    if (pTaken)
        *pTaken = bTaken;
    std::wstring strLeft;
    std::wstring part;
    while (std::getline(stream, part))
        strLeft += part + L"\n";
    return wxString(strLeft);
}

} // namespace

TEST(ColorCurve, PresetsAndColours) {
    ColorCurveProvider_cls provider;
    ASSERT_EQ(provider.GetNumColorCurve(), 12);
    EXPECT_EQ(provider.GetPCColorCurve(-1), nullptr);
    EXPECT_EQ(provider.GetPCColorCurve(12), nullptr);
    for (int i = 0; i < 12; ++i) {
        SCOPED_TRACE(i);
        ColorCurve_cls* p = provider.GetPCColorCurve(i);
        ASSERT_NE(p, nullptr);
        // Alpha rises with the position at both ends.
        double alpha = -1.0;
        p->GetColor(0.0, &alpha);
        EXPECT_NEAR(alpha, 0.0, 1e-9);
        p->GetColor(1.0, &alpha);
        EXPECT_NEAR(alpha, 1.0, 1e-9);
    }
    double alpha = 0.0;
    const auto white = provider.GetPCColorCurve(2)->GetColor(1.0, &alpha);
    EXPECT_EQ(white, (std::array<unsigned char, 4>{255, 255, 255, 255}));
    // Outside the keys and out of range values are clamped.
    EXPECT_EQ(provider.GetPCColorCurve(2)->GetColor(7.0, nullptr)[0], 255);
    EXPECT_EQ(provider.GetPCColorCurve(0)->GetColor(-3.0, nullptr),
              (std::array<unsigned char, 4>{255, 0, 0, 255}));
    const auto mid = ColorCurve_cls::AlphaBlend({0, 0, 0, 0}, {255, 100, 10, 255}, 0.5);
    EXPECT_EQ(mid, (std::array<unsigned char, 4>{127, 50, 5, 127}));
}

TEST(ColorCurve, RangeMapping) {
    ColorCurveProvider_cls provider;
    ColorCurve_cls* p = provider.GetPCColorCurve(2);
    EXPECT_DOUBLE_EQ(p->GetRemapX(0.25, 0.0), 0.25);
    p->GetPCRange()->SetInitValue(2.0, 6.0);
    EXPECT_DOUBLE_EQ(p->GetRemapX(3.0, 0.0), 0.25);
    p->GetPCRange()->SetInitValue(4.0, 4.0);
    EXPECT_DOUBLE_EQ(p->GetRemapX(-100.0, 0.0), 1.0); // degenerate: every value at the end
}

TEST(ColorCurve, TexelsAndDigest) {
    ColorCurveProvider_cls provider;
    ColorCurve_cls* p = provider.GetPCColorCurve(2);
    ASSERT_TRUE(p->PrepareTexture(false, 1.0f, true));
    ASSERT_EQ(p->mVTextureBytes.size(), 4u * 1025u);
    // The last texel is read just below 1.0.
    const auto last = p->GetColor(1024.0 / 1025.0, nullptr);
    EXPECT_EQ(Texel(*p, 1024)[0], last[0]);
    EXPECT_LT(Texel(*p, 1024)[0], 255);
    EXPECT_EQ(Texel(*p, 0), (std::array<unsigned char, 4>{0, 0, 0, 0}));
    {
        SCOPED_TRACE("same arguments: no second fill");
        EXPECT_FALSE(p->PrepareTexture(false, 1.0f, true));
        EXPECT_EQ(p->mUploadCounter, 1);
    }
    {
        SCOPED_TRACE("alpha scale saturates");
        ASSERT_TRUE(p->PrepareTexture(false, 4.0f, true));
        EXPECT_EQ(Texel(*p, 1024)[3], 255);
        EXPECT_EQ(Texel(*p, 128)[3], static_cast<unsigned char>(4.0f * (128 / 1025.0) * 255.0));
    }
    {
        SCOPED_TRACE("wrap: 1.5 reads 0.5");
        p->GetPCRange()->SetInitValue(0.0, 0.5);
        ASSERT_TRUE(p->PrepareTexture(true, 1.0f, true));
        const double x = 768 / 1025.0 / 0.5;
        EXPECT_EQ(Texel(*p, 768)[1], p->GetColor(x - std::floor(x), nullptr)[1]);
        ASSERT_TRUE(p->PrepareTexture(false, 1.0f, true));
        EXPECT_EQ(Texel(*p, 768)[1], 255);
    }
    {
        SCOPED_TRACE("a key changed: fill again");
        const int before = p->mUploadCounter;
        double rows[2][5] = {{0, 1, 0, 0, 0}, {1, 1, 0, 0, 1}};
        p->SetInitKeyframes(2, rows);
        // Initial keys do not count as an edit; an edit arrives as a line read, which counts.
        EXPECT_FALSE(p->PrepareTexture(false, 1.0f, true));
        ++p->mVCParam[1].mProcCounter;
        EXPECT_TRUE(p->PrepareTexture(false, 1.0f, true));
        EXPECT_EQ(p->mUploadCounter, before + 1);
        EXPECT_EQ(Texel(*p, 10)[0], 255);
    }
    p->ClearTexture();
    EXPECT_TRUE(p->mVTextureBytes.empty());
    EXPECT_TRUE(p->PrepareTexture(false, 1.0f, true));
}

TEST(ColorCurve, ProjectFormRoundTrip) {
    ColorCurveProvider_cls provider;
    ColorCurve_cls* pSource = provider.GetPCColorCurve(2);
    pSource->GetPCRange()->SetInitValue(-1.0, 3.0);
    wxString strText;
    pSource->Serialize(strText);
    EXPECT_TRUE(strText.StartsWith("ReadColorCurve::Black White::Begin\n"
                                   "ReadAttribute::ColorCurve_cls::Black White::Begin\n"))
        << strText;
    EXPECT_TRUE(strText.Contains("ReadAttribute::End\nReadParamGroup::Black White\n")) << strText;
    EXPECT_TRUE(strText.EndsWith("ReadParamGroup::End\nReadColorCurve::End\n")) << strText;

    ColorCurve_cls copy("Black White", Names({"R", "G", "B", "A"}));
    bool bTaken = false;
    EXPECT_EQ(ReadInto(copy, strText + "after\n", true, &bTaken), "after\n");
    EXPECT_TRUE(bTaken);
    wxString strCopy;
    copy.Serialize(strCopy);
    EXPECT_EQ(strCopy, strText);
    EXPECT_EQ(copy.GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 255, 255}));
    EXPECT_DOUBLE_EQ(copy.GetRemapX(1.0, 0.0), 0.5);

    // Without the name check a curve of another name takes the block under its own name.
    ColorCurve_cls other("Other", Names({"R", "G", "B", "A"}));
    ReadInto(other, strText, false);
    EXPECT_EQ(other.GetStrName(), "Other");
    EXPECT_EQ(other.GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 255, 255}));
    EXPECT_DOUBLE_EQ(other.GetRemapX(1.0, 0.0), 0.5);
    // Lines that are not a curve block are not the curve's.
    std::wistringstream empty;
    EXPECT_FALSE(other.ReadStrLine(empty, "Visible=1", "", true));
}

TEST(ColorCurve, MalformedBlocksAreLoggedAndStop) {
    ColorCurveProvider_cls provider;
    wxString strText;
    provider.GetPCColorCurve(5)->Serialize(strText);
    ColorCurve_cls curve("Mine", Names({"R", "G", "B", "A"}));
    ColorCurveProvider_cls::SetPresetKeys(0, &curve);
    wxString strMine;
    curve.Serialize(strMine);
    {
        SCOPED_TRACE("another name: skipped to its end, the rest stays");
        LogCapture_cls log;
        bool bTaken = false;
        EXPECT_EQ(ReadInto(curve, strText + "next\n", true, &bTaken), "next\n");
        EXPECT_TRUE(bTaken);
        EXPECT_TRUE(log.Contains("strName.IsSameAs(mCstrName.GetBodySTR())"));
        wxString strNow;
        curve.Serialize(strNow);
        EXPECT_EQ(strNow, strMine);
    }
    {
        SCOPED_TRACE("no end line before the next block");
        wxString strCut = strMine;
        strCut.Replace("ReadColorCurve::End\n", "");
        LogCapture_cls log;
        EXPECT_EQ(ReadInto(curve, strCut + "ReadProperties::End\n", true), "ReadProperties::End\n");
        EXPECT_TRUE(log.Contains("PopStrItemFromStrLine(strLine, wxT(\"::\")).IsSameAs(wxT(\"End\"))"));
    }
    {
        SCOPED_TRACE("the channels end early, then the text ends");
        LogCapture_cls log;
        EXPECT_EQ(
            ReadInto(curve, "ReadColorCurve::Mine::Begin\nReadParamGroup::Mine\nName=R\nkeyNum=2\n", true),
            "");
        EXPECT_TRUE(log.Contains("the text ends inside the block"));
        EXPECT_TRUE(log.Contains("the text ends inside the channels"));
    }
    {
        SCOPED_TRACE("no Begin");
        LogCapture_cls log;
        EXPECT_EQ(ReadInto(curve, "ReadColorCurve::Mine::Start\nnext\n", true), "next\n");
        EXPECT_TRUE(log.Contains("::Begin expected"));
    }
    // Random bytes and huge key counts: no crash, no giant allocation.
    std::string junk;
    for (int i = 0; i < 4000; ++i)
        junk.push_back(static_cast<char>((i * 7919) % 95 + 32));
    LogCapture_cls log;
    ReadInto(curve,
             "ReadColorCurve::Mine::Begin\nReadParamGroup::Mine\nName=G\nkeyNum=2000000000\n" +
                 wxString(junk) + "\n",
             true);
    EXPECT_LE(curve.mVCParam[1].GetKeyNum(), 1);
}

TEST(ColorCurve, CopiesFromTextAndPointer) {
    ColorCurveProvider_cls provider;
    ColorCurve_cls curve("Mine", Names({"R", "G", "B", "A"}));
    ColorCurveProvider_cls::SetPresetKeys(0, &curve);
    curve.GetPCRange()->SetInitValue(2.0, 4.0);
    wxString strSpectrum;
    provider.GetPCColorCurve(5)->Serialize(strSpectrum);
    {
        SCOPED_TRACE("text without alpha");
        const auto alphaKeys = curve.mVCParam[3].mVCKey.size();
        ASSERT_TRUE(curve.CopyColorCurveFromString(strSpectrum, false));
        EXPECT_EQ(curve.mVCParam[0].GetKeyNum(), 7);
        EXPECT_EQ(curve.mVCParam[3].mVCKey.size(), alphaKeys);
        EXPECT_DOUBLE_EQ(curve.GetRemapX(3.0, 0.0), 0.5); // the range is the curve's own
    }
    {
        SCOPED_TRACE("text with alpha");
        ASSERT_TRUE(curve.CopyColorCurveFromString("\n" + strSpectrum, true));
        EXPECT_EQ(curve.mVCParam[3].GetKeyNum(), 7);
    }
    {
        SCOPED_TRACE("not a curve");
        LogCapture_cls log;
        EXPECT_FALSE(curve.CopyColorCurveFromString("ReadAttribute::X::Begin\n", true));
        EXPECT_FALSE(curve.CopyColorCurveFromString("", true));
        EXPECT_TRUE(log.Contains("no colour curve"));
        EXPECT_EQ(curve.mVCParam[0].GetKeyNum(), 7);
    }
    {
        SCOPED_TRACE("pointer: all four channels, a counted edit");
        const wxString strStamp = curve.ParamGroup_cls::GetStrProcCounter();
        curve.CopyColorCurveFromP(provider.GetPCColorCurve(2));
        EXPECT_NE(curve.ParamGroup_cls::GetStrProcCounter(), strStamp);
        EXPECT_EQ(curve.GetColor(1.0, nullptr), (std::array<unsigned char, 4>{255, 255, 255, 255}));
        double alpha = 0.0;
        curve.GetColor(1.0, &alpha);
        EXPECT_DOUBLE_EQ(alpha, 1.0);
    }
    {
        SCOPED_TRACE("without undo the command copies directly");
        curve.CopyColorCurveCommand(provider.GetPCColorCurve(0), "", true);
        EXPECT_EQ(curve.GetColor(0.0, nullptr), (std::array<unsigned char, 4>{255, 0, 0, 255}));
    }
    EXPECT_FALSE(ColorCurveProvider_cls::SetPresetKeys(12, &curve));
}
