#include "ConfListContainer_cls.h"
#include "TextHost_cls.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// Records what the items ask of the core.
class RecordingHost_cls : public TextHost_cls {
public:
    RecordingHost_cls() { TextHost_cls::Install(this); }
    ~RecordingHost_cls() override { TextHost_cls::Install(nullptr); }
    void UpdatePanels(const wxString& str) override { mVStrPanels.push_back(str); }
    void PushCommandPairAndRedo(const wxString& strUndo, const wxString& strDo) override {
        mVPairs.emplace_back(strUndo, strDo);
    }
    int GetRelativePathMode() override { return mRelative; }

    std::vector<wxString> mVStrPanels;
    std::vector<std::pair<wxString, wxString>> mVPairs;
    int mRelative = 1;
};

template <class Item> wxString TextOf(Item& item) {
    wxString str;
    item.Serialize(str);
    return str;
}

std::wistringstream StreamOf(const wxString& str) {
    return std::wistringstream(str.ToStdWstring());
}

// A list of one item of each kind, as an owner would set it up.
struct SampleList_cls : public ConfListContainer_cls {
    SampleList_cls() {
        SetTag("Sample");
        Add(&mCName, "Name=", "box");
        Add(&mCCount, "Count=", "3", "OUTLINER");
        Add(&mCSize, "Size=", "1.500000", "VIEW3D");
        Add(&mCOn, "On=", "1");
        Add(&mCColor, "Color=", "0.500000 0.250000 1.000000");
        mCStrings.SetLink(&mAStr);
        Add(&mCStrings, "Strings=", wxString());
    }
    ConfItemSTR_cls mCName;
    ConfItemINT_cls mCCount;
    ConfItemFLOAT_cls mCSize;
    ConfItemBOOL_cls mCOn;
    ConfItemFLOATARRAY_cls mCColor;
    ConfItemSTRINGARRAY_cls mCStrings;
    wxArrayString mAStr;
};

} // namespace

TEST(ConfItem, BodiesReadAsNumbers) {
    ConfItemINT_cls cInt("N=", "42abc");
    EXPECT_EQ(cInt.GetBodyINT(), 42);
    cInt.SetItem("N=", "x");
    EXPECT_EQ(cInt.GetBodyINT(), 0);
    cInt.SetItem("N=", " -12");
    EXPECT_EQ(cInt.GetBodyINT(), -12);
    ConfItemFLOAT_cls cFloat("F=", 0.25f);
    EXPECT_EQ(cFloat.GetBodySTR(), "0.250000");
    EXPECT_DOUBLE_EQ(cFloat.GetBodyDOUBLE(), 0.25);
    EXPECT_EQ(cFloat.GetBodySTRShortString(), "0.25");
    ConfItemBOOL_cls cFalse("B=", "0"); // a literal default is text, not a bool
    EXPECT_FALSE(cFalse.GetBodyBOOL());
    EXPECT_EQ(cFalse.GetBodySTR(), "0");
    ConfItemBOOL_cls cBool("B=", true);
    EXPECT_EQ(cBool.GetBodySTR(), "1");
    cBool.SetItem("B=", "7");
    EXPECT_TRUE(cBool.GetBodyBOOL());

    ConfItemFLOATARRAY_cls cArr("A=", "1 2.5 -3");
    EXPECT_EQ(cArr.mNumElements, 3);
    EXPECT_EQ(cArr.GetBodyFLOATARRAY(), (std::vector<double>{1.0, 2.5, -3.0}));
    EXPECT_EQ(ConfArray_cls::CountDimension(" 1 2"), 2); // a leading blank is not counted
    EXPECT_EQ(ConfArray_cls::CountDimension("1 2 "), 3); // a trailing blank counts one too many

    ConfItemFLOATARRAY_cls cColor("C=", "0.5 0.25 1");
    auto rgba = cColor.GetBodyColorRGBA();
    EXPECT_EQ(rgba[0], 127);
    EXPECT_EQ(rgba[1], 63);
    EXPECT_EQ(rgba[2], 255);
    EXPECT_EQ(rgba[3], 255);
    ConfItemFLOATARRAY_cls cShort("C=", "0.5 0.25");
    EXPECT_EQ(cShort.GetBodyColorRGBA(), (std::array<unsigned char, 4>{0, 0, 0, 255}));

    ConfItemBOOLARRAY_cls cBools;
    cBools.SetBodyFromData(std::vector<bool>{true, false, true});
    EXPECT_EQ(cBools.GetBodySTR(), "1 0 1");
    EXPECT_EQ(cBools.mProcCounter, 1);
    cBools.SetBodyFromData(2.5);
    EXPECT_EQ(cBools.GetBodySTR(), "2.5");
    EXPECT_EQ(cBools.mProcCounter, 2);
}

TEST(ConfItem, IntArraySetItemReadsItsLineOnceMore) {
    ConfItemINTARRAY_cls cInts;
    cInts.SetItem("I=", "1 2 3");
    EXPECT_EQ(cInts.mNumElements, 3);
    EXPECT_EQ(cInts.mProcCounter, 1);
    EXPECT_EQ(cInts.GetBodyINTARRAY(), (std::vector<long>{1, 2, 3}));
}

TEST(ConfItem, HeadsMatchByPrefix) {
    ConfItemSTR_cls cPos("Pos=", "a");
    EXPECT_FALSE(cPos.ReadStrLine("XPos=1"));
    EXPECT_TRUE(cPos.ReadStrLine("   Pos=1"));
    EXPECT_EQ(cPos.GetBodySTR(), "1");
    ConfItemSTR_cls cName("Name", "a");
    EXPECT_TRUE(cName.ReadStrLine("NameX=b"));
    EXPECT_EQ(cName.GetBodySTR(), "X=b");
}

TEST(ConfItem, MultiLineBodiesAndRawPaths) {
    RecordingHost_cls host;
    ConfItemSTR_cls cText("Expression=", "NONE");
    cText.SetBodyFromData(wxString("a = 1\nreturn a"));
    EXPECT_EQ(TextOf(cText), "Expression=a = 1\\nreturn a\n");
    ConfItemSTR_cls cBack("Expression=", "NONE");
    EXPECT_TRUE(cBack.ReadStrLine(TextOf(cText).BeforeLast('\n')));
    EXPECT_EQ(cBack.GetBodySTR(), "a = 1\nreturn a");

    // A raw path is neither escaped on writing nor unescaped on reading.
    ConfItemSTR_cls cPath("File=", "NONE");
    cPath.SetRawString(true);
    EXPECT_TRUE(cPath.ReadStrLine("File=data\\nfile.dat"));
    EXPECT_EQ(cPath.GetBodySTR(), "data\\nfile.dat");

    TempDir_cls dir;
    const wxString strOldCwd = wxGetCwd();
    wxSetWorkingDirectory(dir.mStrPath);
    const wxString strCwd = wxGetCwd();
    cPath.SetBodyFromData(strCwd + "/sub/a.dat");
    EXPECT_EQ(TextOf(cPath), "File=sub/a.dat\n");
    EXPECT_EQ(cPath.GetBodySTR(), "sub/a.dat"); // saving changes the body itself
    host.mRelative = 0;
    EXPECT_EQ(TextOf(cPath), "File=" + strCwd + "/sub/a.dat\n");
    // "None" in this case of letters stays; the default "NONE" is treated as a path.
    cPath.SetBodyFromData(wxString("None"));
    EXPECT_EQ(TextOf(cPath), "File=None\n");
    cPath.SetBodyFromData(wxString("NONE"));
    EXPECT_EQ(TextOf(cPath), "File=" + strCwd + "/NONE\n");
    wxSetWorkingDirectory(strOldCwd);

    ConfItemSTR_cls cSep("P=", "C:\\my data\\x");
    cSep.ReplaceSeparator();
    EXPECT_EQ(cSep.GetBodySTR(), "C:/my\\ data/x");
}

TEST(ConfItem, SkipBodyIsLeftOutAndDefaultStays) {
    SampleList_cls list;
    list.mCName.SetBodyFromData(wxString("!!SKIP!!"));
    wxString strOut;
    list.Serialize(strOut);
    EXPECT_FALSE(strOut.Contains("Name="));
    SampleList_cls fresh;
    auto stream = StreamOf(strOut);
    wxString strHead = "ConfItemList";
    std::wstring first;
    std::getline(stream, first);
    EXPECT_TRUE(fresh.ReadStrLine(stream, strHead, wxString(first).AfterFirst(':').AfterFirst(':')));
    EXPECT_EQ(fresh.mCName.GetBodySTR(), "box");
}

TEST(ConfItem, StringArraysAndTheirAsymmetry) {
    wxArrayString aStr;
    ConfItemSTRINGARRAY_cls cArr("Head=", wxString());
    EXPECT_TRUE(TextOf(cArr).empty()); // no link, nothing written
    EXPECT_FALSE(cArr.ReadStrLine("Head=a"));

    cArr.SetLink(&aStr);
    EXPECT_EQ(TextOf(cArr), "Head=\n");
    aStr.Add("a");
    aStr.Add("b");
    aStr.Add("c");
    EXPECT_EQ(TextOf(cArr), "Head=a::##::b::##::c\n");
    const int counter = cArr.mProcCounter;
    const struct {
        const char* pLine;
        const char* pJoined;
    } cases[] = {{"Head=x::##::y::##::z", "x,y,z"},
                 {"Head=x::##::y::##::z::##::", "x,y,z"},
                 {"Head=x::##::::##::z", "x,,z"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pLine);
        EXPECT_TRUE(cArr.ReadStrLine(c.pLine));
        EXPECT_EQ(wxJoin(aStr, ','), c.pJoined);
    }
    EXPECT_EQ(cArr.mProcCounter, counter); // arrays of strings do not count reads

    // Newlines are escaped on writing but not restored on reading.
    aStr.Clear();
    aStr.Add("one\ntwo");
    EXPECT_EQ(TextOf(cArr), "Head=one\\ntwo\n");
    cArr.ReadStrLine(TextOf(cArr).BeforeLast('\n'));
    EXPECT_EQ(aStr[0], "one\\ntwo");
}

TEST(ConfItemList, BlocksRoundTripAndSendUpdates) {
    RecordingHost_cls host;
    SampleList_cls list;
    list.mAStr.Add("p");
    list.mAStr.Add("q");
    wxString strOut;
    list.Serialize(strOut);
    EXPECT_EQ(strOut, "ConfItemList::Begin::Sample\n"
                      "Name=box\n"
                      "Count=3\n"
                      "Size=1.500000\n"
                      "On=1\n"
                      "Color=0.500000 0.250000 1.000000\n"
                      "Strings=p::##::q\n"
                      "ConfItemList::End\n");

    SampleList_cls other;
    wxString strText = "Begin::Sample\nCount=9\nSize=2\nUnknown=5\n-- Count=1\nConfItemList::End\nCount=7\n";
    auto stream = StreamOf(strText);
    EXPECT_FALSE(other.ReadStrLine(stream, "ConfItemList", "Begin::Other"));
    EXPECT_FALSE(other.ReadStrLine(stream, "SceneObjCtrl", "Begin::Sample"));
    std::wstring first;
    std::getline(stream, first);
    EXPECT_TRUE(other.ReadStrLine(stream, "ConfItemList", wxString(first)));
    EXPECT_EQ(other.mCCount.GetBodyINT(), 9);
    EXPECT_EQ(other.mCSize.GetBodySTR(), "2");
    std::wstring after;
    std::getline(stream, after);
    EXPECT_EQ(wxString(after), "Count=7"); // the block ends at its end line
    // Each line sends its own tags; the cache is emptied each time.
    ASSERT_EQ(host.mVStrPanels.size(), 2u);
    EXPECT_EQ(host.mVStrPanels[0], "OUTLINER");
    EXPECT_EQ(host.mVStrPanels[1], "VIEW3D");
    EXPECT_TRUE(other.mVStrUpdateCache.empty());

    // A block cut short by the end of the stream keeps what it read.
    SampleList_cls cut;
    auto streamCut = StreamOf("Count=4\nSize=8");
    EXPECT_TRUE(cut.ReadStrLine(streamCut, "ConfItemList", "Begin::Sample"));
    EXPECT_EQ(cut.mCCount.GetBodyINT(), 4);
    EXPECT_EQ(cut.mCSize.GetBodySTR(), "8");
}

TEST(ConfItemList, LookupTwinsAndCounters) {
    SampleList_cls list;
    EXPECT_EQ(list.GetPCItem("Count"), &list.mCCount);
    EXPECT_EQ(list.GetPCItem("Count="), &list.mCCount);
    EXPECT_EQ(list.GetPCItem("Missing"), nullptr);

    ConfItemINT_cls cTwin;
    list.Add(&cTwin, "Count=", "0");
    EXPECT_TRUE(list.ReadStrLineAll("Count=5"));
    EXPECT_EQ(list.mCCount.GetBodyINT(), 5);
    EXPECT_EQ(cTwin.GetBodyINT(), 5);
    EXPECT_FALSE(list.ReadStrLineAll("--Count=6"));

    wxString strBefore = list.GetStrProcCounter();
    list.ReadStrLineAll("Size=3");
    EXPECT_NE(list.GetStrProcCounter(), strBefore);

    ConfItemINT_cls cCopied;
    ConfItemList_cls target;
    target.SetTag("T");
    target.Add(&cCopied, list, "Count");
    EXPECT_EQ(cCopied.mStrHead, "Count=");
    EXPECT_EQ(cCopied.GetBodyINT(), 5);
    EXPECT_EQ(cCopied.mStrUpdateTag, "OUTLINER");
    ConfItemINT_cls cMissing;
    target.Add(&cMissing, list, "Nothing");
    EXPECT_EQ(cMissing.mStrHead, "None");
}

TEST(ConfItemList, SyncAndCloneAndCommands) {
    RecordingHost_cls host;
    SampleList_cls a, b;
    b.mCCount.SetBodyFromData(11LL);
    b.mCName.SetBodyFromData(wxString("sphere"));
    a.SyncFrom(b);
    EXPECT_EQ(a.mCCount.GetBodyINT(), 11);
    EXPECT_EQ(a.mCCount.mProcCounter, b.mCCount.mProcCounter);

    SampleList_cls c;
    c.SyncFromCommand(b); // two bodies differ: two pairs
    ASSERT_EQ(host.mVPairs.size(), 2u);
    EXPECT_EQ(host.mVPairs[0].first, "ConfItemList::Begin::Sample\nName=box\nConfItemList::End");
    EXPECT_EQ(host.mVPairs[0].second, "ConfItemList::Begin::Sample\nName=sphere\nConfItemList::End");

    host.mVPairs.clear();
    c.mCSize.PushCommandPair("4.000000");
    ASSERT_EQ(host.mVPairs.size(), 1u);
    EXPECT_EQ(host.mVPairs[0].first, "ConfItemList::Begin::Sample\nSize=1.500000\nConfItemList::End");
    EXPECT_EQ(host.mVPairs[0].second, "ConfItemList::Begin::Sample\nSize=4.000000\nConfItemList::End");

    ConfListContainer_cls clone;
    clone.mbOwnItems = true;
    clone.SetTag("Clone");
    clone.CloneConfListFrom(b);
    ASSERT_EQ(clone.mVPItems.size(), b.mVPItems.size());
    EXPECT_EQ(clone.GetTag(), "Clone");
    for (size_t i = 0; i < b.mVPItems.size(); ++i) {
        SCOPED_TRACE(b.mVPItems[i]->mStrHead);
        EXPECT_EQ(clone.mVPItems[i]->mKind, b.mVPItems[i]->mKind);
        EXPECT_EQ(clone.mVPItems[i]->mStrBody, b.mVPItems[i]->mStrBody);
        EXPECT_EQ(clone.mVPItems[i]->mProcCounter, b.mVPItems[i]->mProcCounter);
    }
    EXPECT_EQ(clone.GetAstrItemList()[1], "Count=");
}
