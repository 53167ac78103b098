// The modifier stack on the volume page: the volume family is offered and each kind of the volume
// and stream-line families has its page; adding, moving, switching and removing an entry is one
// undo step each that undo and redo take back and forth exactly. And a mesh's .mtl materials,
// listed by their names in the file, are edited through commands that the project keeps.
#include "PropertyPageFixture.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
#include "Main_cls.h"
#include "Material_cls.h"
#include "MeshObj_cls.h"
#include "ModifierStack_cls.h"
#include "ParamGroup_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "PropertyMesh_cls.h"
#include "PropertyModifier_cls.h"
#include "PropertyVolume_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TestSupport.h"
#include "UndoManager_cls.h"
#include "ViewWindowFixture.h"

#include <wx/checklst.h>
#include <wx/choice.h>
#include <wx/notebook.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>

namespace {

class StackAndMtlPageTest : public PropertyPageFixture {
protected:
    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        // The process's first idle reads the start layout; it runs before the test's own layout,
        // so the event loop of the screenshot leaves the property panel in place.
        RunLoop(50);
        ReadFrameLayout(Leaf("PROPERTY"));
        for (wxPanelEX* p : Leaves())
            if (auto* pProperty = dynamic_cast<Property_cls*>(p))
                mpProperty = pProperty;
        ASSERT_NE(mpProperty, nullptr);
    }
    wxString Make(const char* pKind) {
        const wxString strName = GpCSceneObjCtrl->AppendSceneObjCommand(pKind, wxString());
        GpCSceneObjCtrl->Select(strName, false, true, false);
        GCClassProvider->ProcAfterMath("SelectObject", strName);
        Sync();
        GpCUndo->Clear();
        return strName;
    }
    void Sync() {
        Flush();
        if (mpProperty->mpCPageKind)
            mpProperty->mpCPageKind->UpdatePage("IDLE");
    }
    static wxString Text(SceneObj_cls* p) {
        wxString str;
        p->Serialize(str);
        return str;
    }
};

// The first value of a group of an attribute of the object, at time 0.
double GroupValue(SceneObj_cls* p, const wxString& strAttr, const wxString& strGroup, size_t member) {
    Attribute_cls* pAttr = p ? p->GetPCAttribute(strAttr, 0) : nullptr;
    ParamGroup_cls* pGroup = pAttr ? pAttr->GetPCParamGroup(strGroup) : nullptr;
    return pGroup ? pGroup->GetVInterpolatedValue(0.0, true, nullptr, false).at(member) : -1.0;
}

} // namespace

TEST_F(StackAndMtlPageTest, VolumeStackEditsAreOneUndoStepEachAndEveryFamilyKindHasAPage) {
    const wxString strName = Make("VolumeBox");
    SceneObj_cls* pObj = GpCSceneObjCtrl->GetPCFromName(strName);
    auto* pPage = dynamic_cast<PropertyVolume_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    ModifierStack_cls& stack = *pPage->mpCStack;
    const int M = ModifierStack_cls::STACK_MODIFIER, D = ModifierStack_cls::STACK_DATA_PROC;
    for (const auto& [stackIndex, pKind, bOffered] :
         {std::make_tuple(M, "VolumeCoord_cls", true), std::make_tuple(M, "VolumeMask_cls", true),
          std::make_tuple(D, "VolumeBoolean_cls", true), std::make_tuple(D, "VolumeDownsize_cls", true),
          std::make_tuple(M, "ParticleFiltering_cls", false),
          std::make_tuple(D, "StreamTransform_cls", false)})
        EXPECT_EQ(stack.mpCKind[stackIndex]->FindString(pKind) != wxNOT_FOUND, bOffered) << pKind;

    // The stack as the model has it and as the list shows it: names, "(off)" when switched off.
    auto model = [&](int s) {
        wxString str;
        for (Attribute_cls* p : stack.GetVPCEntries(s))
            str += p->GetStrName() + (p->GetPCItem("Validity=")->GetBodyBOOL() ? " " : "(off) ");
        return str;
    };
    auto shown = [&](int s) {
        wxString str;
        for (unsigned i = 0; i < stack.mpCList[s]->GetCount(); ++i)
            str += stack.mpCList[s]->GetString(i).BeforeFirst(' ') +
                   (stack.mpCList[s]->IsChecked(i) ? " " : "(off) ");
        return str;
    };
    const struct {
        const char* what;
        int stack;
        std::function<bool()> edit;
        const char* after;
    } steps[] = {
        {"add coord", M, [&] { return stack.AddEntry(M, "VolumeCoord_cls"); }, "VolumeCoord "},
        {"add mask", M, [&] { return stack.AddEntry(M, "VolumeMask_cls"); }, "VolumeCoord VolumeMask "},
        {"mask up", M, [&] { return stack.MoveEntry(M, 1, -1); }, "VolumeMask VolumeCoord "},
        {"coord off", M, [&] { return stack.SetValidity(M, 1, false); }, "VolumeMask VolumeCoord(off) "},
        {"add downsize", D, [&] { return stack.AddEntry(D, "VolumeDownsize_cls"); }, "VolumeDownsize "},
        {"remove mask", M, [&] { return stack.DeleteEntry(M, 0); }, "VolumeCoord(off) "},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        const wxString strBefore = Text(pObj), strShownBefore = shown(s.stack);
        const int undoIndex = GpCUndo->GetCurrent();
        ASSERT_TRUE(s.edit());
        Sync();
        EXPECT_EQ(model(s.stack), s.after);
        EXPECT_EQ(shown(s.stack), s.after);
        const wxString strAfter = Text(pObj);
        GpCUndo->Undo();
        Sync();
        EXPECT_EQ(GpCUndo->GetCurrent(), undoIndex) << "one undo takes the whole edit back";
        EXPECT_EQ(Text(pObj), strBefore);
        EXPECT_EQ(shown(s.stack), strShownBefore);
        GpCUndo->Redo();
        Sync();
        EXPECT_EQ(Text(pObj), strAfter);
    }
    EXPECT_FALSE(stack.MoveEntry(M, 0, 1)) << "past the end";

    // The entry's own page opens from the stack and edits through a command.
    ASSERT_TRUE(stack.ShowEntry(M, 0));
    PropertyModifier_cls* pEntryPage = stack.mpCPage[M];
    ASSERT_NE(pEntryPage, nullptr);
    const int field = pEntryPage->FindField(pEntryPage->mStrEntryName, "CoordType=");
    ASSERT_GE(field, 0);
    ASSERT_TRUE(pEntryPage->SetItemFromText(field, "2"));
    EXPECT_EQ(pObj->GetPCAttribute("VolumeCoord", 1)->GetPCItem("CoordType=")->GetBodyINT(), 2);
    GpCUndo->Undo();
    EXPECT_EQ(pObj->GetPCAttribute("VolumeCoord", 1)->GetPCItem("CoordType=")->GetBodyINT(), 0);

    // A look at the page with its stack and the entry's page (kept beside the other screenshots).
    wxImage shot;
    const wxString strShot = ScreenshotDir() + "/volume-page-stack.png";
    mpProperty->mpCBook->SetSelection(static_cast<size_t>(mpProperty->mpCBook->FindPage(pPage)));
    pPage->Scroll(0, pPage->GetVirtualSize().y);
    RunLoop(300);
    ASSERT_EQ(system(("import -window root '" + std::string(strShot.utf8_str()) + "'").c_str()), 0);
    EXPECT_TRUE(shot.LoadFile(strShot, wxBITMAP_TYPE_PNG));

    // Every kind of the two families has its page, whose rows name settings the kind has.
    const wxString strLines = Make("Streamline");
    for (const auto& [pClass, pOwner] :
         {std::make_pair("VolumeCoord_cls", &strName), std::make_pair("VolumeMask_cls", &strName),
          std::make_pair("VolumeBoolean_cls", &strName), std::make_pair("VolumeDownsize_cls", &strName),
          std::make_pair("StreamFiltering_cls", &strLines), std::make_pair("StreamSetAlpha_cls", &strLines),
          std::make_pair("StreamTransform_cls", &strLines)}) {
        SCOPED_TRACE(pClass);
        const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(pClass, KindTable_cls::GROUP_MODIFIER);
        pKind = pKind ? pKind : KindTable_cls::Find(pClass, KindTable_cls::GROUP_DATA_PROC);
        ASSERT_NE(pKind, nullptr);
        ASSERT_NE(pKind->GetSlot<PropertyField_cls::Table_type>(KindTable_cls::SLOT_PROPERTY_PAGE), nullptr);
        std::unique_ptr<Attribute_cls> pEntry(
            pKind->mFuncMakeAttribute(GpCSceneObjCtrl->GetPCFromName(*pOwner), "P"));
        ASSERT_NE(pEntry, nullptr);
        const PropertyField_cls::Table_type vField = PropertyModifier_cls::GetVField(pEntry.get());
        // A row for each of the kind's settings; the names every attribute has are not shown.
        size_t settings = pEntry->mVPCParamGroup.size();
        for (const wxString& strKey : pEntry->GetAstrItemList())
            settings += strKey != "AttributeName=" && strKey != "Name=" && strKey != "Shy=";
        EXPECT_EQ(vField.size(), settings);
        for (const PropertyField_cls& f : vField)
            EXPECT_TRUE(f.mWidget == PropertyField_cls::WIDGET_GROUP
                            ? pEntry->GetPCParamGroup(f.mStrKey) != nullptr
                            : pEntry->GetPCItem(f.mStrKey) != nullptr)
                << f.mStrKey;
    }
}

TEST_F(StackAndMtlPageTest, MeshMtlMaterialsAreListedEditedUndoneAndSaved) {
    const wxString strName = Make("MeshObj");
    auto* pPage = dynamic_cast<PropertyMesh_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    PropertyFieldPanel_cls& fields = *pPage->mpCFields;
    ASSERT_TRUE(fields.SetItemFromText(fields.FindField("", "FileName="),
                                       wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj"));
    Sync();
    ASSERT_EQ(pPage->mpCMtl->GetStrings(), wxArrayString(2, std::array<wxString, 2>{"Red", "Blue"}.data()));
    auto* pMesh = dynamic_cast<MeshObj_cls*>(GpCSceneObjCtrl->GetPCFromName(strName));

    SCOPED_TRACE("the file's values come in: Kd, Tr, map_Kd");
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Blue", "Diffuse", 2), 0.9);
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Blue", "Alpha", 0), 0.75);
    EXPECT_TRUE(pMesh->GetPCMtlMaterial("Blue")->IsTextureUsed());
    EXPECT_TRUE(
        pMesh->GetPCMtlMaterial("Blue")->mCTextureFile.GetBodySTR().EndsWith("obj/textures/blue.png"));

    SCOPED_TRACE("one colour edited through its row, undone and redone");
    ASSERT_TRUE(pPage->SelectMtl(0));
    ASSERT_NE(pPage->mpCMtlFields, nullptr);
    GpCUndo->Clear();
    const int field = pPage->mpCMtlFields->FindField("Mtl_Red", "Diffuse");
    ASSERT_GE(field, 0);
    ASSERT_TRUE(pPage->mpCMtlFields->SetMemberFromText(field, 0, "0.25"));
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Red", "Diffuse", 0), 0.25);
    const wxString strProject = mpMain->SerializeProject();
    EXPECT_TRUE(strProject.Contains("New::Material::Mtl_Red\n")) << strProject;
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Red", "Diffuse", 0), 0.8);
    GpCUndo->Redo();

    SCOPED_TRACE("the saved project reads back the edited colour");
    TempDir_cls dir;
    ASSERT_TRUE(mpMain->SaveProjectMain(dir.Path("mesh.ovp"), 0));
    ASSERT_TRUE(mpMain->OpenProjectMain(dir.Path("mesh.ovp"), true));
    pMesh = dynamic_cast<MeshObj_cls*>(GpCSceneObjCtrl->GetPCFromName(strName));
    ASSERT_NE(pMesh, nullptr);
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Red", "Diffuse", 0), 0.25);
    EXPECT_DOUBLE_EQ(GroupValue(pMesh, "Mtl_Blue", "Diffuse", 2), 0.9);
}
