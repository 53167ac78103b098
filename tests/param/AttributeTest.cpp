// Attributes: the block text written, read and written again, tolerant reading of truncated
// and corrupt blocks, clones for workers, the Syncronize family and the class-word dispatch.
#include "ParamFixture.h"

#include <thread>

namespace {

// An attribute as a derived class makes one: its own items in the list and its groups.
class TestAttr_cls : public Attribute_cls {
public:
    TestAttr_cls(const wxString& strName, const wxString& strObj) : Attribute_cls("Material_cls", strName) {
        Add(&mCOpacity, "Opacity=", "0.5", "PROPERTY_MATERIAL");
        Add(&mCTint, "Tint=", "0.1 0.2 0.3");
        SetConfListTagForSceneObjAttribute(strName, strObj);
        InitializeAndPushParam(GetPCNewParamGroup("Color", "R", "G", "B"), 0.25, 0.5, 0.75);
        AddOneDimParam("Size", "s", 2.0);
        AddOneDimParam("Spin", "w", 0.0);
    }
    ConfItemFLOAT_cls mCOpacity;
    ConfItemFLOATARRAY_cls mCTint;
};

// A colour curve is an attribute and its own group at once.
class TestCurve_cls : public Attribute_cls, public ParamGroup_cls {
public:
    explicit TestCurve_cls(const wxString& strName)
        : Attribute_cls("ColorCurve_cls", strName), ParamGroup_cls(strName, Names({"R", "G", "B", "A"})) {
        mpCColorCurveGroup = this;
        mbColorCurve = true;
        AddOneDimParam("Range", "min", 0.0);
    }
};

} // namespace

class AttributeTest : public ParamFixture {
protected:
    void SetUp() override {
        ParamFixture::SetUp();
        SetClock(100, 0, 0);
        Attribute_cls::msFuncSceneObjName = [](SceneObj_cls*) { return wxString("Box"); };
        Attribute_cls::msFuncFilterCtrlSelf = [] { return wxString("FilterCtrl::"); };
    }
    void TearDown() override {
        Attribute_cls::msFuncSceneObjName = nullptr;
        Attribute_cls::msFuncFilterCtrlSelf = nullptr;
        Attribute_cls::ClearClassOps();
        mVPAttributes.clear();
        ParamFixture::TearDown();
    }
    static wxString Text(Attribute_cls& attr) {
        wxString str;
        attr.Serialize(str);
        return str;
    }
    // Animates a pair of attributes the way a user would, through the commands.
    void Animate(TestAttr_cls& a, TestAttr_cls& b) {
        ParamGroup_cls* pColor = a.GetPCParamGroup("Color");
        pColor->InsertKeyCommand(0.0, "Test::Mat", 2, 1.0);
        pColor->SetNewKeyCommand(0.9, 0.5, "Test::Mat", 2, 0.5);
        pColor->mVCParam[1].SetKeyValueCommand(1, -0.125, "Test::Mat::Color");
        RunText("Test::Mat::Color::UseExpr=1\n"
                "Test::Mat::Color::Expression=local k = 2\\nreturn R * k, G, B + nt\n"
                "Test::Mat::Size::s::Extrapolate=1\n");
        ParamGroup_cls* pSize = a.GetPCParamGroup("Size");
        pSize->InsertKeyCommand(0.25, "Test::Mat", 1, 1.0);
        pSize->mVCParam[0].SetKeyValueCommand(1, 7.5, "Test::Mat::Size");
        RunText("Test::Mat::Size::Shy=1\nTest::Mat::Spin::Linked=0\n");
        a.mCOpacity.SetBodyFromData(wxString("0.75"));
        b.GetPCParamGroup("Spin")->InsertKeyCommand(1.0, "Test::Other", 0, 1.0);
    }
};

TEST_F(AttributeTest, WithoutGroupsOnlyHeaderListAndEnd) {
    Attribute_cls attr("Material_cls", "Mat");
    attr.SetConfListTagForSceneObjAttribute("Mat", "Box");
    EXPECT_EQ(Text(attr), "ReadAttribute::Material_cls::Mat::Begin\n"
                          "ConfItemList::Begin::SceneObj::Box::Mat\n"
                          "AttributeName=Material_cls\nName=Mat\nShy=0\n"
                          "ConfItemList::End\n"
                          "ReadAttribute::End\n");
    EXPECT_FALSE(attr.IsParamGroupTimeDepend());
    EXPECT_TRUE(attr.IsAttributeSameAs("Material_cls"));
    EXPECT_EQ(attr.GetPCParamGroup("Color"), nullptr);
}

TEST_F(AttributeTest, ProjectTextWrittenReadAndWrittenAgainIsIdentical) {
    TestAttr_cls a("Mat", "Box");
    TestAttr_cls b("Other", "Box");
    mVPAttributes = {&a, &b};
    Animate(a, b);
    const wxString strText = mpMain->SerializeProject();
    EXPECT_TRUE(strText.Contains("Expression=local k = 2\\nreturn R * k, G, B + nt\n"));
    EXPECT_TRUE(strText.Contains("0.5::0::-0.125::2::0.5\n"));

    TestAttr_cls a2("Mat", "Box");
    TestAttr_cls b2("Other", "Box");
    mVPAttributes = {&a2, &b2};
    RunText(strText);
    EXPECT_EQ(mpMain->SerializeProject(), strText);
    EXPECT_EQ(a2.mCOpacity.GetBodySTR(), "0.75");
    for (double t : {-0.5, 0.0, 0.1, 0.25, 0.3, 0.5, 0.77, 1.0, 2.0}) {
        SCOPED_TRACE(testing::Message() << "t " << t);
        for (const char* pName : {"Color", "Size", "Spin"}) {
            EXPECT_EQ(a2.GetPCParamGroup(pName)->GetVInterpolatedValue(t, true, nullptr, false),
                      a.GetPCParamGroup(pName)->GetVInterpolatedValue(t, true, nullptr, false));
        }
    }
    EXPECT_DOUBLE_EQ(a2.GetPCParamGroup("Size")->GetVInterpolatedValue(0.5, true, nullptr, false)[0],
                     7.5 + 5.5);
}

TEST_F(AttributeTest, TruncatedAndCorruptBlocks) {
    TestAttr_cls ref("Mat", "Box");
    TestAttr_cls refOther("Other", "Box");
    mVPAttributes = {&ref, &refOther};
    Animate(ref, refOther);
    const wxString strGood = mpMain->SerializeProject();
    // Each damage replaces pFrom by pTo (every place or the first); without pFrom the text is cut
    // at pTo plus a few characters.
    struct Case {
        const char* name;
        const wchar_t *pFrom, *pTo;
        bool bAll;           // or the cut's offset
        bool bOtherIntact;   // the second attribute is read as written
        const char* pIntact; // the groups of the first that are read as written
        bool bLogged;        // a log line names the damage
    };
    const Case cases[] = {
        {"group end missing", L"ReadParamGroup::End\nReadParamGroup::Size", L"ReadParamGroup::Size", false,
         true, "Color Size Spin", true},
        {"attribute end missing", L"ReadAttribute::End\nReadAttribute::Material_cls::Other",
         L"ReadAttribute::Material_cls::Other", false, true, "Color Size Spin", true},
        {"group and attribute end missing",
         L"ReadParamGroup::End\nReadAttribute::End\nReadAttribute::Material_cls::Other",
         L"ReadAttribute::Material_cls::Other", false, true, "Color Size Spin", true},
        {"too many keys announced", L"keyNum=2", L"keyNum=9", true, true, "Color Size Spin", true},
        {"huge key count", L"keyNum=2", L"keyNum=999999999999", true, true, "Color Size Spin", true},
        {"negative key count", L"keyNum=2", L"keyNum=-3", false, true, "Size Spin", true},
        {"garbage key", L"0.5::0::-0.125::2::0.5", L"zz::top", true, true, "Size Spin", true},
        {"keyNum missing", L"Extrapolate=0\nkeyNum=", L"Extrapolate=0\nkeyCount=", false, true, "Size Spin",
         true},
        {"unknown member", L"Name=G\n", L"Name=Q\n", true, true, "Size Spin", true},
        {"unknown group", L"ReadParamGroup::Color", L"ReadParamGroup::Colour", true, true, "Size Spin",
         false},
        {"nested nonsense", L"ReadParamGroup::Size\n", L"ReadParamGroup::Size\nReadParamGroup::Size\n", false,
         true, "Color Size Spin", true},
        {"random bytes", L"Name=B\n", L"\x01\x7f::::\xff==::\n::\n=\nName=B\n", false, true,
         "Color Size Spin", false},
        {"cut in the middle", nullptr, L"Name=B\n", true, false, "", true},
        {"cut after the header", nullptr, L"ConfItemList::Begin", false, false, "", false},
        {"empty", nullptr, L"", false, false, "", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogCapture_cls log;
        TestAttr_cls a("Mat", "Box");
        TestAttr_cls b("Other", "Box");
        mVPAttributes = {&a, &b};
        wxString strBroken = strGood;
        if (c.pFrom)
            strBroken.Replace(c.pFrom, c.pTo, c.bAll);
        else
            strBroken = strGood.Left(c.pTo[0] ? strGood.Find(c.pTo) + (c.bAll ? 3 : 0) : 0);
        RunText(strBroken);
        // Whatever was read, the result is a sound attribute that writes and reads back alike.
        const wxString strText = Text(a);
        TestAttr_cls again("Mat", "Box");
        mVPAttributes = {&again};
        RunText(strText);
        EXPECT_EQ(Text(again), strText);
        if (c.bOtherIntact) {
            EXPECT_EQ(Text(b), Text(refOther));
        }
        wxString strIntact = c.pIntact;
        while (!strIntact.empty()) {
            const wxString strGroup = Parser_cls::PopStrItemFromStrLine(strIntact, " ");
            EXPECT_EQ(ParamFixture::Text(*a.GetPCParamGroup(strGroup)),
                      ParamFixture::Text(*ref.GetPCParamGroup(strGroup)))
                << strGroup;
        }
        EXPECT_EQ(!log.mVStrLines.empty(), c.bLogged);
        for (ParamGroup_cls* pGroup : a.mVPCParamGroup)
            pGroup->GetVInterpolatedValue(0.3, true, nullptr, false);
    }
}

TEST_F(AttributeTest, ASiblingsBlockIsNotTaken) {
    TestAttr_cls a("Mat", "Box");
    TestAttr_cls b("Other", "Box");
    wxString strText;
    b.Serialize(strText);
    std::wistringstream stream(strText.ToStdWstring());
    std::wstring line;
    std::getline(stream, line);
    wxString strRest(line);
    wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
    const auto pos = stream.tellg();
    EXPECT_FALSE(a.ReadStrLine(stream, strHead, strRest));
    EXPECT_EQ(stream.tellg(), pos);
    EXPECT_TRUE(b.ReadStrLine(stream, strHead, strRest));
    EXPECT_FALSE(a.ReadStrLine(stream, "Something", "Else"));
}

TEST_F(AttributeTest, CloneIsIndependentOfTheLiveAttribute) {
    TestAttr_cls a("Mat", "Box");
    TestAttr_cls b("Other", "Box");
    mVPAttributes = {&a, &b};
    Animate(a, b);
    AttributeClone_cls clone;
    a.Clone(clone);
    EXPECT_TRUE(clone.IsAttributeSameAs("Material_cls"));
    EXPECT_EQ(clone.GetStrName(), "Mat");
    EXPECT_TRUE(clone.IsParamGroupTimeDepend());
    ASSERT_NE(clone.GetPCItem("Opacity="), nullptr);
    EXPECT_EQ(clone.GetPCItem("Opacity=")->GetBodyDOUBLE(), 0.75);
    ASSERT_NE(clone.GetPCParamGroup("Color"), nullptr);
    EXPECT_EQ(clone.GetPCParamGroup("Nothing"), nullptr);
    const wxString strCounter = clone.GetStrProcCounter();
    const std::vector<double> before =
        clone.GetPCParamGroup("Color")->GetVInterpolatedValue(0.3, true, nullptr, false);
    EXPECT_EQ(before, a.GetPCParamGroup("Color")->GetVInterpolatedValue(0.3, true, nullptr, false));

    a.GetPCParamGroup("Color")->mVCParam[0].SetKeyValueCommand(0, 0.9, "Test::Mat::Color");
    RunText("Test::Mat::Color::Expression=return 0, 0, 0\n");
    a.mCOpacity.PushCommandPair("0.1");
    EXPECT_EQ(clone.GetStrProcCounter(), strCounter);
    EXPECT_EQ(clone.GetPCParamGroup("Color")->GetVInterpolatedValue(0.3, true, nullptr, false), before);
    EXPECT_EQ(clone.GetPCItem("Opacity=")->GetBodyDOUBLE(), 0.75);
    EXPECT_NE(a.GetStrProcCounter() + a.GetPCParamGroup("Color")->GetStrProcCounter(), wxString());

    // A copy of the clone and a clone of a later state.
    AttributeClone_cls copy(clone);
    EXPECT_EQ(copy.GetStrProcCounter(), strCounter);
    a.Clone(clone);
    EXPECT_NE(clone.GetStrProcCounter(), strCounter);
    EXPECT_EQ(clone.GetPCParamGroup("Color")->GetVInterpolatedValue(0.3, true, nullptr, false),
              (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(copy.GetPCParamGroup("Color")->GetVInterpolatedValue(0.3, true, nullptr, false), before);
}

TEST_F(AttributeTest, WorkersEvaluateClonesWhileTheLiveAttributeChanges) {
    TestAttr_cls a("Mat", "Box");
    TestAttr_cls b("Other", "Box");
    mVPAttributes = {&a, &b};
    Animate(a, b);
    std::vector<AttributeClone_cls> clones(2);
    a.Clone(clones[0]);
    a.Clone(clones[1]);
    const std::vector<double> expected =
        a.GetPCParamGroup("Color")->GetVInterpolatedValue(0.4, true, nullptr, false);
    std::vector<std::vector<double>> results(2);
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&clones, &results, i] {
            ParamGroup_cls* pGroup = clones[i].GetPCParamGroup("Color");
            pGroup->PrecalcBegin();
            for (int k = 0; k < 200; ++k)
                results[i] = pGroup->GetVInterpolatedValue(0.4, true, nullptr, false);
            pGroup->PrecalcEnd();
        });
    }
    for (int k = 0; k < 50; ++k)
        a.GetPCParamGroup("Color")->mVCParam[2].SetKeyValueCommand(0, k, "Test::Mat::Color");
    for (std::thread& t : threads)
        t.join();
    EXPECT_EQ(results[0], expected);
    EXPECT_EQ(results[1], expected);
}

TEST_F(AttributeTest, AColourCurveIsItsOwnGroup) {
    TestCurve_cls curve("Heat");
    double table[2][5] = {{0, 1, 0, 0, 0}, {1, 1, 1, 0, 1}};
    curve.SetInitKeyframes(2, table);
    EXPECT_EQ(curve.Attribute_cls::GetPCParamGroup("Heat"), static_cast<ParamGroup_cls*>(&curve));
    EXPECT_NE(curve.Attribute_cls::GetPCParamGroup("Range"), nullptr);
    EXPECT_TRUE(curve.IsParamGroupTimeDepend());
    AttributeClone_cls clone;
    curve.Clone(clone);
    ParamGroup_cls* pCopy = clone.GetPCParamGroup("Heat");
    ASSERT_NE(pCopy, nullptr);
    EXPECT_NE(pCopy, static_cast<ParamGroup_cls*>(&curve));
    EXPECT_EQ(pCopy->GetVInterpolatedValue(0.5, false, nullptr, false),
              (std::vector<double>{1, 0.5, 0, 0.5}));
    EXPECT_TRUE(pCopy->mbColorCurve);
    EXPECT_NE(clone.GetPCParamGroup("Range"), nullptr);
}

TEST_F(AttributeTest, SyncronizeParamForModifierAndFilter) {
    TestAttr_cls a("Mat", "Box");
    mVPAttributes = {&a};
    SetClock(100, 50, 0);
    ParamGroup_cls* pColor = a.GetPCParamGroup("Color");
    const int count = GpCUndo->GetCount();
    a.SyncronizeParamForModifier("Color", {0.25f + 2e-7f, 0.5f, 0.75f}, nullptr);
    EXPECT_EQ(GpCUndo->GetCount(), count); // within 5e-7: nothing
    LogCapture_cls log;
    a.SyncronizeParamForModifier("Color", {1.0f, 2.0f}, nullptr);
    EXPECT_TRUE(log.Contains("dim == pCParamGroup->mVCParam.size()"));
    EXPECT_EQ(GpCUndo->GetCount(), count);

    // Constant channels: the first key of each changed member.
    a.SyncronizeParamForModifier("Color", {0.25f, 0.125f, 0.75f}, nullptr);
    EXPECT_EQ(GpCUndo->GetCount(), count + 1);
    EXPECT_EQ(GpCUndo->mVStrDo.back(), "SceneObjCtrl::Obj::Box::Mat::Color::G::Key::0::SetValue::0.125\n");
    EXPECT_EQ(pColor->mVCParam[1].mVCKey[0].mValue, 0.125);

    // Time dependent: a key at the current time on every member (linked).
    pColor->InsertKeyCommand(0.0, "Test::Mat", 1, 1.0);
    a.SyncronizeParamForFilter("Color", {0.25f, 0.125f, 1.0f});
    EXPECT_TRUE(
        GpCUndo->mVStrDo[GpCUndo->GetCount() - 2].StartsWith("FilterCtrl::Mat::Color::B::InsertKey::1::0.5"));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(pColor->mVCParam[i].IsKeyExist(0.5));
    EXPECT_EQ(pColor->mVCParam[2].GetValue(0.5), 1.0);

    // Without the scene seam nothing is pushed.
    Attribute_cls::msFuncSceneObjName = nullptr;
    const int count2 = GpCUndo->GetCount();
    a.SyncronizeParamForModifier("Color", {9.0f, 9.0f, 9.0f}, nullptr);
    EXPECT_EQ(GpCUndo->GetCount(), count2);
}

TEST_F(AttributeTest, SyncronizeParamAndConfBothWays) {
    TestAttr_cls a("Mat", "Box");
    mVPAttributes = {&a};
    ConfItemFLOAT_cls item("Size=", 2.0f);
    const int count = GpCUndo->GetCount();
    a.SyncronizeParamAndConf("Box", "Size", item);
    EXPECT_EQ(GpCUndo->GetCount(), count); // equal as floats
    item.SetBodyFromData(3.5);
    a.SyncronizeParamAndConf("Box", "Size", item);
    EXPECT_EQ(GpCUndo->mVStrDo.back(), "SceneObjCtrl::Obj::Box::Mat::Size::s::Key::0::SetValue::3.5\n");
    EXPECT_EQ(a.GetPCParamGroup("Size")->mVCParam[0].GetCurrentValue(), 3.5);

    ConfItemFLOAT_cls item2("Spin=", 0.0f);
    item.SetBodyFromData(4.0);
    item2.SetBodyFromData(1.0);
    ParamGroup_cls* pPair = a.GetPCNewParamGroup("Pair", "p", "q");
    a.InitializeAndPushParam(pPair, 0, 0);
    a.SyncronizeParamAndConf2("Box", "Pair", item, item2);
    EXPECT_EQ(pPair->GetVInterpolatedValue(0.0, false, nullptr, false), (std::vector<double>{4, 1}));

    a.SyncronizeParamAndConf3("Box", "Color", a.mCTint);
    EXPECT_EQ(a.GetPCParamGroup("Color")->GetStrValues(0.0, false), "0.1 0.2 0.3");

    ConfItemFLOAT_cls out("Out=", 0.0f);
    a.SyncronizeConfAndParam(0.0, "Size", out);
    EXPECT_EQ(out.GetBodyDOUBLE(), 3.5);
    a.SyncronizeConfAndParam2(0.0, "Pair", out, item2);
    EXPECT_EQ(out.GetBodyDOUBLE(), 4.0);
    EXPECT_EQ(item2.GetBodyDOUBLE(), 1.0);
}

TEST_F(AttributeTest, GroupOperationsAcrossTheAttribute) {
    TestAttr_cls a("Mat", "Box");
    TestAttr_cls b("Other", "Box");
    mVPAttributes = {&a, &b};
    Animate(a, b);
    std::vector<wxString> vTags;
    a.GetVstrParamTag("Test::Mat", vTags);
    EXPECT_EQ(vTags,
              (std::vector<wxString>{"Test::Mat::Color::R", "Test::Mat::Color::G", "Test::Mat::Color::B",
                                     "Test::Mat::Size::s", "Test::Mat::Spin::w"}));
    const wxString strBefore = Text(a);
    const int start = GpCUndo->GetCurrent();
    for (ParamGroup_cls* pGroup : a.mVPCParamGroup)
        pGroup->SelectKey(0.5, true, false, 0.01);
    EXPECT_TRUE(a.IsSelectedTLKeyExist());
    a.MoveSelectedTLKeyCommand("Test::Mat", 0.1, 0.0);
    a.SetSelectedTLKeyTypeCommand("Test::Mat", 0, 1.0);
    a.RescaleParametersCommand("Test::Mat", 0.5);
    a.DeleteSelectedTLKeyCommand("Test::Mat");
    EXPECT_FALSE(a.GetPCParamGroup("Color")->mVCParam[0].IsKeyExist(0.3));
    UndoAll(start);
    a.DeselectKeyFrame("Test::Mat");
    EXPECT_FALSE(a.IsSelectedTLKeyExist());
    // Selection is not undone (it is not an edit); the rest is as before.
    for (ParamGroup_cls* pGroup : a.mVPCParamGroup)
        pGroup->SelectKey(0.5, false, false, 0.01);
    EXPECT_EQ(Text(a), strBefore);
}

TEST_F(AttributeTest, CopyOfAnAttributeOwnsItsItemsAndGroups) {
    auto pSrc = std::make_unique<TestAttr_cls>("Mat", "Box");
    pSrc->mCOpacity.SetBodyFromData(wxString("0.3"));
    Attribute_cls copy(*pSrc);
    const wxString strText = Text(*pSrc);
    EXPECT_EQ(Text(copy), strText);
    pSrc.reset();
    EXPECT_EQ(Text(copy), strText);
    ASSERT_NE(copy.GetPCItem("Opacity="), nullptr);
    EXPECT_EQ(copy.GetPCItem("Opacity=")->mpStrParentTag, &copy.mStrTag);
}

TEST_F(AttributeTest, ClassWordDispatch) {
    int calls[4] = {}; // deleted, buffers deleted, synced to the buffer, synced from it
    Attribute_cls::ClassOps_cls ops;
    ops.mFuncDelete = [&](Attribute_cls* p) {
        ++calls[0];
        delete static_cast<TestAttr_cls*>(p);
    };
    ops.mFuncDeleteBuffer = [&](Attribute_cls* p) {
        ++calls[1];
        delete p;
    };
    ops.mFuncSyncBufferFromSrc = [&](Attribute_cls*) { ++calls[2]; };
    ops.mFuncSyncSrcFromBuffer = [&](Attribute_cls*, SceneObj_cls*) { ++calls[3]; };
    Attribute_cls::SetClassOps("Material_cls", ops);

    TestAttr_cls* p = new TestAttr_cls("Mat", "Box");
    p->SyncBufferFromSrc();
    p->SyncSrcFromBuffer(nullptr);
    Attribute_cls::Delete(p);
    Attribute_cls::DeleteBuffer(new TestAttr_cls("Buf", "Box"));
    // A class nobody registered is deleted through the base.
    Attribute_cls::Delete(new Attribute_cls("Fog_cls", "Fog"));
    Attribute_cls::Delete(nullptr);
    EXPECT_EQ(std::vector<int>(calls, calls + 4), (std::vector<int>{1, 1, 1, 1}));
}
