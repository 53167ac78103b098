// The text forms of keys and channels: "%g" with six significant digits, missing fields, older
// files without the optional flags.
#include "ParamFixture.h"

#include <tuple>

TEST(KeyFrameText, WrittenWithSixSignificantDigitsAndReadBack) {
    KeyFrame_cls key;
    key.mX = 0.123456789;
    key.mValue = -12345.678;
    key.mType = 2;
    key.mEaseFactor = 0.5;
    key.mbSelected = true;
    wxString str;
    key.Serialize(str);
    EXPECT_EQ(str, "0.123457::1::-12345.7::2::0.5\n");
    str.RemoveLast();
    KeyFrame_cls back(str);
    EXPECT_TRUE(str.empty()); // the line is consumed
    EXPECT_EQ(back.mX, 0.123457);
    EXPECT_EQ(back.mValue, -12345.7);
    EXPECT_EQ(back.mType, 2);
    EXPECT_EQ(back.mEaseFactor, 0.5);
    EXPECT_TRUE(back.mbSelected);
    EXPECT_FALSE(back.mbActive);
    wxString strAgain;
    back.Serialize(strAgain);
    EXPECT_EQ(strAgain, "0.123457::1::-12345.7::2::0.5\n");
}

TEST(KeyFrameText, MissingAndBadFields) {
    wxString str = "0.25::0::3::2"; // the undo text of a deletion: no ease
    KeyFrame_cls key(str);
    EXPECT_EQ(key.mX, 0.25);
    EXPECT_EQ(key.mType, 2);
    EXPECT_EQ(key.mEaseFactor, 1.0);
    str = "1e-3::1::4.5e2::7::0.25";
    KeyFrame_cls other(str);
    EXPECT_EQ(other.mX, 0.001);
    EXPECT_EQ(other.mValue, 450.0);
    EXPECT_EQ(other.mType, 7); // kept as read
    KeyFrame_cls bad;
    str = "abc::1::2::0::0";
    EXPECT_FALSE(bad.ReadStrLine(str));
    EXPECT_EQ(bad.mX, 0.0);
    EXPECT_EQ(bad.mType, 1);
    str = "";
    EXPECT_FALSE(bad.ReadStrLine(str));
}

TEST(KeyFrameText, IconsAndSelection) {
    EXPECT_EQ(KeyFrame_cls().GetStrIconName(), "TL_LINEAR");
    const std::tuple<long, double, const char*> icons[] = {
        {0, 1.0, "TL_STEP"}, {2, 1.0, "TL_HEMITE_AUTO"}, {2, 0.0, "TL_HEMITE_EASE"}, {9, 0.0, "TL_LINEAR"}};
    for (const auto& [type, ease, pIcon] : icons)
        EXPECT_EQ(Key(0, 0, type, ease).GetStrIconName(), pIcon) << type << " " << ease;

    KeyFrame_cls key = Key(0.5, 0);
    EXPECT_EQ(key.Select(0.45, 0.05, true), 0); // strict bounds
    EXPECT_FALSE(key.mbSelected);
    EXPECT_EQ(key.Select(0.46, 0.05, true), 1);
    EXPECT_TRUE(key.mbSelected);
    EXPECT_EQ(key.Select(0.54, 0.05, false), 1);
    EXPECT_FALSE(key.mbSelected);
}

TEST(KeyFrameText, ChannelTextRoundTripAndOlderFiles) {
    Parameter_cls param(nullptr, "x", 0);
    param.mCTimeDepend.SetBodyFromData(wxString("1"));
    param.mCExtrapolate.SetBodyFromData(wxString("1"));
    wxString strKey = "0.333333333::0::2.718281828::2::0.3";
    param.mVCKey.push_back(KeyFrame_cls(strKey));
    wxString strText;
    param.Serialize(strText);
    EXPECT_EQ(strText, "Name=x\nTimeDepend=1\nLocked=0\nExtrapolate=1\nkeyNum=2\n0::0::0::1::1\n"
                       "0.333333::0::2.71828::2::0.3\n");

    // The reader is entered with the line after Name= popped.
    Parameter_cls back(nullptr, "x", 0);
    std::wistringstream stream(strText.AfterFirst('\n').AfterFirst('\n').ToStdWstring());
    EXPECT_TRUE(back.ReadStrLine(stream, "TimeDepend=1", ""));
    wxString strBack;
    back.Serialize(strBack);
    EXPECT_EQ(strBack, strText);
    EXPECT_EQ(back.GetProcCounter(), 1);

    // Each flag is optional.
    Parameter_cls old(nullptr, "x", 0);
    std::wistringstream oldStream(L"0.5::0::3::0::1\nName=y\n");
    EXPECT_TRUE(old.ReadStrLine(oldStream, "keyNum=1", ""));
    EXPECT_FALSE(old.IsTimeDepend());
    ASSERT_EQ(old.GetKeyNum(), 1);
    EXPECT_EQ(old.mVCKey[0].mValue, 3.0);
    std::wstring next;
    std::getline(oldStream, next);
    EXPECT_EQ(next, L"Name=y");

    // keyNum=0 is the one way to an empty vector.
    Parameter_cls empty(nullptr, "x", 0);
    std::wistringstream emptyStream(L"Name=y\n");
    EXPECT_TRUE(empty.ReadStrLine(emptyStream, "Locked=1", ""));
    EXPECT_EQ(empty.GetKeyNum(), 1); // no keyNum= line: the keys stay
    std::wistringstream zeroStream(L"keyNum=0\n");
    EXPECT_TRUE(empty.ReadStrLine(zeroStream, "Extrapolate=1", ""));
    EXPECT_EQ(empty.GetKeyNum(), 0);
    EXPECT_TRUE(empty.IsLocked());
    EXPECT_TRUE(empty.IsExtrapolate());
}
