// Colour curves: the presets, the colour look-up, the range mapping and the texel bytes with their
// digest.
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

std::array<unsigned char, 4> Texel(const ColorCurve_cls& curve, int i) {
    const unsigned char* p = &curve.mVTextureBytes[4 * static_cast<size_t>(i)];
    return {p[0], p[1], p[2], p[3]};
}

} // namespace

TEST(ColorCurve, PresetsAndColours) {
    ColorCurveProvider_cls provider;
    ASSERT_EQ(provider.GetNumColorCurve(), 12);
    EXPECT_EQ(provider.GetPCColorCurve(-1), nullptr);
    EXPECT_EQ(provider.GetPCColorCurve(12), nullptr);
    const char* names[12] = {"Red Yellow",         "Green Red",     "Black White", "Cold Color",
                             "ModerateGray Color", "Spectrum",      "SpectrumRGB", "Incandescent",
                             "ColdSteel",          "Coldest Color", "Height Map",  "Skyline"};
    for (int i = 0; i < 12; ++i) {
        SCOPED_TRACE(names[i]);
        ColorCurve_cls* p = provider.GetPCColorCurve(i);
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(p->GetStrName(), names[i]);
        EXPECT_EQ(p->GetStrAttributeName(), "ColorCurve_cls");
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
    EXPECT_EQ(p->GetPCParamGroup("Range"), p->GetPCRange());
    EXPECT_EQ(p->GetPCParamGroup("Black White"), static_cast<ParamGroup_cls*>(p));
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
