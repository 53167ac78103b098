// How the layers above join the scene through the kind table: data viewers made by class word,
// colour curves, the copies of an array modifier and the tracking step inside the transform.
#include "SceneFixture.h"

#include "SceneObjInstance_cls.h"

namespace {

const wxString kSelf = "SceneObjCtrl::";

// A colour curve of the tests: an attribute with one group of its own name.
class TestCurve_cls : public Attribute_cls {
public:
    explicit TestCurve_cls(const wxString& strName) : Attribute_cls("ColorCurve_cls", strName) {
        AddOneDimParam("Curve", "Value", 0.5);
        mpCColorCurveGroup = mVPCParamGroup[0];
    }
};

} // namespace

TEST_F(SceneFixture, DataViewersComeFromTheirLayer) {
    int serialized = 0;
    KindTable_cls::Entry_cls& ops = KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT);
    ops.mFuncMake = [](ParentObj_cls* pParent, const wxString&) {
        SceneObj_cls* p = new SceneObj_cls(pParent, "Particle_cls");
        p->mDrawOrder = 1;
        return p;
    };
    ops.mFuncSerializeExtra = [&serialized](SceneObj_cls*, wxString& strOut) {
        ++serialized;
        strOut += "ReadFormat::Test\n";
    };
    wxString strFormatRead;
    ops.mFuncReadExtra = [&strFormatRead](SceneObj_cls* p, std::wistream&, const wxString& strHead,
                                          const wxString& strRest) {
        if (strHead != "ReadFormat")
            return false;
        strFormatRead = p->GetStrName() + ":" + strRest;
        return true;
    };
    ops.mFuncUsedMemoryMB = [](SceneObj_cls*) { return 2.5; };

    EXPECT_EQ(Ctrl()->AppendSceneObjCommand("Particle", ""), "Particle");
    SceneObj_cls* p = Obj("Particle");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->mStrClassWord, "Particle_cls");
    int count = 0;
    EXPECT_DOUBLE_EQ(Ctrl()->GetTotalUsedMemoryMB(count), 2.5);
    EXPECT_EQ(count, 1);
    const wxString strText = SceneText();
    EXPECT_EQ(serialized, 1);
    EXPECT_TRUE(strText.Contains("ReadFormat::Test"));
    Ctrl()->Clear();
    RunText(strText);
    ASSERT_NE(Obj("Particle"), nullptr);
    EXPECT_EQ(strFormatRead, "Particle:Test"); // the extra block reached its reader
    EXPECT_EQ(SceneText(), strText);
}

// Each of the eleven class words of a New line makes an object of that class, appended in the
// order of the lines; the kinds of this layer carry their draw order.
TEST_F(SceneFixture, EveryObjectClassWordMakesItsKind) {
    for (const char* pViewer :
         {"VolumeBox_cls", "Isosurface_cls", "Particle_cls", "Streamline_cls", "HeightField_cls"}) {
        const wxString strClass = pViewer;
        KindTable_cls::Register(strClass, KindTable_cls::GROUP_OBJECT).mFuncMake =
            [strClass](ParentObj_cls* pParent, const wxString&) {
                return new SceneObj_cls(pParent, strClass);
            };
    }
    const struct {
        const char* pClass;
        int drawOrder;
    } cases[] = {{"Primitive_cls", 2},  {"MeshObj_cls", 2},     {"TextObj_cls", 1},    {"LightSource_cls", 4},
                 {"Camera_cls", 2},     {"VolumeBox_cls", 2},   {"Isosurface_cls", 2}, {"Particle_cls", 2},
                 {"Streamline_cls", 2}, {"HeightField_cls", 2}, {"World_cls", 3}};
    Ctrl()->Clear();
    wxString strText;
    for (const auto& c : cases)
        strText += kSelf + "New::" + c.pClass + "::ANY::" + c.pClass + "\n";
    RunText(strText);
    EXPECT_EQ(Tree(), "Primitive_cls,MeshObj_cls,TextObj_cls,LightSource_cls,Camera_cls,VolumeBox_cls,"
                      "Isosurface_cls,Particle_cls,Streamline_cls,HeightField_cls,World_cls");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pClass);
        SceneObj_cls* p = Obj(c.pClass);
        ASSERT_NE(p, nullptr);
        EXPECT_EQ(p->mStrClassWord, c.pClass);
        EXPECT_EQ(p->mDrawOrder, c.drawOrder);
        EXPECT_EQ(p->GetTag(), wxString("SceneObj::") + c.pClass);
    }
    // The last one made is the only selection.
    ASSERT_EQ(Ctrl()->mVPCSelected.size(), 1u);
    EXPECT_EQ(Ctrl()->GetActiveObjectName(), "World_cls");
    // The text reads back to the same scene.
    const wxString strScene = SceneText();
    Ctrl()->Clear();
    RunText(strScene);
    EXPECT_EQ(SceneText(), strScene);
}

TEST_F(SceneFixture, ColorCurvesThroughTheirOps) {
    KindTable_cls::Entry_cls& ops =
        KindTable_cls::Register("ColorCurve_cls", KindTable_cls::GROUP_COLOR_CURVE);
    ops.mFuncMakeAttribute = [](SceneObj_cls*, const wxString& strName) {
        return new TestCurve_cls(strName);
    };
    ops.mFuncSerialize = [](Attribute_cls* p, wxString& strOut) { p->Serialize(strOut); };
    ops.mFuncReadStrLine = [](Attribute_cls* p, std::wistream& stream, const wxString& strHead,
                              const wxString& strRest) { return p->ReadStrLine(stream, strHead, strRest); };
    RunText(kSelf + "Obj::Box::New::ColorCurve::Heat\n" + kSelf +
            "Obj::Box::Heat::Curve::Value::Key::0::SetValue::0.75\n");
    SceneObj_cls* pBox = Obj("Box");
    ASSERT_NE(pBox->GetPCAttribute("Heat", 1), nullptr);
    // A colour curve answers its own name with its group.
    EXPECT_DOUBLE_EQ(pBox->GetPCParamGroup("Heat", "Heat")->mVCParam[0].GetValue(0.0), 0.75);
    const wxString strText = SceneText();
    EXPECT_TRUE(strText.Contains("New::ColorCurve::Heat\nReadAttribute::ColorCurve_cls::Heat::Begin"));
    EXPECT_FALSE(strText.Contains("New::Modifier::ColorCurve_cls"));
    Ctrl()->Clear();
    RunText(strText);
    EXPECT_EQ(SceneText(), strText);
    // Deleted and restored through the modifier verbs.
    Obj("Box")->DeleteModifierCommand("Heat");
    EXPECT_EQ(Obj("Box")->GetPCAttribute("Heat", 1), nullptr);
    GpCUndo->Undo();
    EXPECT_EQ(SceneText(), strText);
}

TEST_F(SceneFixture, ArrayCopiesAndTrackingInsideTheTransform) {
    KindTable_cls::Entry_cls& copier =
        KindTable_cls::Register("ArrayCopy_cls", KindTable_cls::GROUP_MODIFIER);
    copier.mFuncMakeAttribute = [](SceneObj_cls*, const wxString& strName) {
        return new TestModifier_cls(strName, "ArrayCopy_cls");
    };
    copier.mFuncCopyCount = [](SceneObj_cls*, Attribute_cls*) { return 3; };
    KindTable_cls::Entry_cls& tracker =
        KindTable_cls::Register("Tracking_cls", KindTable_cls::GROUP_MODIFIER);
    tracker.mFuncMakeAttribute = [](SceneObj_cls*, const wxString& strName) {
        return new TestModifier_cls(strName, "Tracking_cls");
    };
    int tracked = 0;
    tracker.mFuncTransform = [&tracked](SceneObj_cls*, Attribute_cls*, double* C, double*, double) {
        ++tracked;
        C[12] += 10.0; // a tracking step that moves the object
    };
    SceneObj_cls* pBox = Obj("Box");
    pBox->AddModifierCommand("ArrayCopy_cls", "Copies");
    std::vector<SceneObjInstance_cls*> vInstance = pBox->GetVNewPCInstance();
    ASSERT_EQ(vInstance.size(), 4u);
    EXPECT_EQ(pBox->mReferenceCounter, 4); // one reference per instance
    EXPECT_EQ(vInstance[3]->mCopyIndex, 3);
    EXPECT_EQ(vInstance[3]->mpCCopier, pBox);
    for (SceneObjInstance_cls* p : vInstance)
        delete p;
    // A switched-off copier makes no copies.
    pBox->SetModifierValidityCommand("Copies", false);
    vInstance = pBox->GetVNewPCInstance();
    EXPECT_EQ(vInstance.size(), 1u);
    for (SceneObjInstance_cls* p : vInstance)
        delete p;

    double pos[3];
    pBox->GetPositionGlobal(0.0, pos);
    EXPECT_DOUBLE_EQ(pos[0], 0.0);
    EXPECT_EQ(tracked, 0);
    pBox->AddModifierCommand("Tracking_cls", "Track");
    pBox->GetPositionGlobal(0.0, pos);
    EXPECT_DOUBLE_EQ(pos[0], 10.0);
    EXPECT_EQ(tracked, 1);
    pBox->SetModifierValidityCommand("Track", false);
    pBox->GetPositionGlobal(0.0, pos);
    EXPECT_DOUBLE_EQ(pos[0], 0.0);
}

TEST_F(SceneFixture, QuitClearsTheScene) {
    Sel({"Box"});
    SceneObj_cls* pBox = Obj("Box");
    EXPECT_EQ(pBox->mReferenceCounter, 2);
    mpMain->ProcAfterMath("Quit", "");
    EXPECT_EQ(Tree(), "");
    EXPECT_EQ(Ctrl()->GetPCActiveObject(), nullptr);
    EXPECT_TRUE(Ctrl()->mVPCSelected.empty());
}
