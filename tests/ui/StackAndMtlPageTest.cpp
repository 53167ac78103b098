// The volume page's modifier stack (each edit one undo step, undone and redone exactly; every
// volume and stream-line kind has its page) and a mesh's .mtl materials edited and saved. The
// look of the page was checked by eye from a screenshot while it was built.
#include "PropertyPageFixture.h"

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

#include <wx/checklst.h>
#include <wx/choice.h>

#include <functional>
#include <memory>

namespace {

class StackAndMtlPageTest : public PropertyPageFixture {
protected:
    SceneObj_cls* Make(const char* pKind) {
        const wxString strName = GpCSceneObjCtrl->AppendSceneObjCommand(pKind, wxString());
        GpCSceneObjCtrl->Select(strName, false, true, false);
        GCClassProvider->ProcAfterMath("SelectObject", strName);
        Sync();
        GpCUndo->Clear();
        return GpCSceneObjCtrl->GetPCFromName(strName);
    }
    void Sync() {
        Flush();
        mpProperty->mpCPageKind->UpdatePage("IDLE");
    }
};

wxString Text(SceneObj_cls* p) {
    wxString str;
    p->Serialize(str);
    return str;
}

// A group's member at time 0 on the named attribute of the object.
double Value(SceneObj_cls* p, const char* pAttr, const char* pGroup, size_t member) {
    return p->GetPCAttribute(pAttr, 0)
        ->GetPCParamGroup(pGroup)
        ->GetVInterpolatedValue(0.0, true, nullptr, false)
        .at(member);
}

} // namespace

TEST_F(StackAndMtlPageTest, VolumeStackEditsAreOneUndoStepEachAndEveryFamilyKindHasAPage) {
    SceneObj_cls* pObj = Make("VolumeBox");
    auto* pPage = dynamic_cast<PropertyVolume_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    ModifierStack_cls& stack = *pPage->mpCStack;
    const int M = ModifierStack_cls::STACK_MODIFIER, D = ModifierStack_cls::STACK_DATA_PROC;
    for (const auto& [s, pKind, bOffered] :
         {std::make_tuple(M, "VolumeCoord_cls", true), std::make_tuple(M, "VolumeMask_cls", true),
          std::make_tuple(D, "VolumeBoolean_cls", true), std::make_tuple(D, "VolumeDownsize_cls", true),
          std::make_tuple(M, "ParticleFiltering_cls", false),
          std::make_tuple(D, "StreamTransform_cls", false)})
        EXPECT_EQ(stack.mpCKind[s]->FindString(pKind) != wxNOT_FOUND, bOffered) << pKind;

    // The stack as the model has it, or as the list shows it: names, "(off)" when switched off.
    auto stackText = [&](int s, bool bShown) {
        wxString str;
        const std::vector<Attribute_cls*> v = stack.GetVPCEntries(s);
        for (unsigned i = 0; i < (bShown ? stack.mpCList[s]->GetCount() : v.size()); ++i)
            str += bShown
                       ? stack.mpCList[s]->GetString(i).BeforeFirst(' ') +
                             (stack.mpCList[s]->IsChecked(i) ? " " : "(off) ")
                       : v[i]->GetStrName() + (v[i]->GetPCItem("Validity=")->GetBodyBOOL() ? " " : "(off) ");
        return str;
    };
    const struct {
        int s;
        std::function<bool()> edit;
        const char* after;
    } steps[] = {
        {M, [&] { return stack.AddEntry(M, "VolumeCoord_cls"); }, "VolumeCoord "},
        {M, [&] { return stack.AddEntry(M, "VolumeMask_cls"); }, "VolumeCoord VolumeMask "},
        {M, [&] { return stack.MoveEntry(M, 1, -1); }, "VolumeMask VolumeCoord "},
        {M, [&] { return stack.SetValidity(M, 1, false); }, "VolumeMask VolumeCoord(off) "},
        {D, [&] { return stack.AddEntry(D, "VolumeDownsize_cls"); }, "VolumeDownsize "},
        {M, [&] { return stack.DeleteEntry(M, 0); }, "VolumeCoord(off) "},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.after);
        const wxString strBefore = Text(pObj), strShownBefore = stackText(step.s, true);
        const int undoIndex = GpCUndo->GetCurrent();
        ASSERT_TRUE(step.edit());
        Sync();
        EXPECT_EQ(stackText(step.s, false), step.after);
        EXPECT_EQ(stackText(step.s, true), step.after);
        const wxString strAfter = Text(pObj);
        GpCUndo->Undo();
        Sync();
        EXPECT_EQ(GpCUndo->GetCurrent(), undoIndex) << "one undo takes the whole edit back";
        EXPECT_EQ(Text(pObj), strBefore);
        EXPECT_EQ(stackText(step.s, true), strShownBefore);
        GpCUndo->Redo();
        Sync();
        EXPECT_EQ(Text(pObj), strAfter);
    }
    EXPECT_FALSE(stack.MoveEntry(M, 0, 1)) << "past the end";

    // The entry's own page opens from the stack and edits through a command.
    ASSERT_TRUE(stack.ShowEntry(M, 0));
    PropertyModifier_cls* pEntryPage = stack.mpCPage[M];
    ASSERT_TRUE(pEntryPage->SetItemFromText(pEntryPage->FindField("VolumeCoord", "CoordType="), "2"));
    EXPECT_EQ(pObj->GetPCAttribute("VolumeCoord", 1)->GetPCItem("CoordType=")->GetBodyINT(), 2);
    GpCUndo->Undo();
    EXPECT_EQ(pObj->GetPCAttribute("VolumeCoord", 1)->GetPCItem("CoordType=")->GetBodyINT(), 0);

    // Each kind of the two families has its page, whose rows name settings the kind has.
    SceneObj_cls* pLines = Make("Streamline");
    for (const char* pClass : {"VolumeCoord_cls", "VolumeMask_cls", "VolumeBoolean_cls", "VolumeDownsize_cls",
                               "StreamFiltering_cls", "StreamSetAlpha_cls", "StreamTransform_cls"}) {
        const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(pClass, KindTable_cls::GROUP_MODIFIER);
        pKind = pKind ? pKind : KindTable_cls::Find(pClass, KindTable_cls::GROUP_DATA_PROC);
        std::unique_ptr<Attribute_cls> pEntry(
            pKind->mFuncMakeAttribute(wxString(pClass).StartsWith("Stream") ? pLines : pObj, "P"));
        ASSERT_NE(pKind->GetSlot<PropertyField_cls::Table_type>(KindTable_cls::SLOT_PROPERTY_PAGE), nullptr);
        for (const PropertyField_cls& f : PropertyModifier_cls::GetVField(pEntry.get()))
            EXPECT_TRUE(f.mWidget == PropertyField_cls::WIDGET_GROUP
                            ? pEntry->GetPCParamGroup(f.mStrKey) != nullptr
                            : pEntry->GetPCItem(f.mStrKey) != nullptr)
                << pClass << " " << f.mStrKey;
    }
}

TEST_F(StackAndMtlPageTest, MeshMtlMaterialsAreListedEditedUndoneAndSaved) {
    SceneObj_cls* pObj = Make("MeshObj");
    const wxString strName = pObj->GetStrName();
    auto* pPage = dynamic_cast<PropertyMesh_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    PropertyFieldPanel_cls& fields = *pPage->mpCFields;
    ASSERT_TRUE(fields.SetItemFromText(fields.FindField("", "FileName="),
                                       wxString(ORV_TEST_DATA_DIR) + "/obj/cube.obj"));
    Sync();
    ASSERT_EQ(pPage->mpCMtl->GetCount(), 2u);
    EXPECT_EQ(pPage->mpCMtl->GetString(0) + " " + pPage->mpCMtl->GetString(1), "Red Blue");
    // The file's values: Kd, Tr, map_Kd.
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Blue", "Diffuse", 2), 0.9);
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Blue", "Alpha", 0), 0.75);
    EXPECT_TRUE(
        static_cast<MeshObj_cls*>(pObj)->GetPCMtlMaterial("Blue")->mCTextureFile.GetBodySTR().EndsWith(
            "obj/textures/blue.png"));

    ASSERT_TRUE(pPage->SelectMtl(0));
    GpCUndo->Clear();
    PropertyFieldPanel_cls& mtl = *pPage->mpCMtlFields;
    ASSERT_TRUE(mtl.SetMemberFromText(mtl.FindField("Mtl_Red", "Diffuse"), 0, "0.25"));
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Red", "Diffuse", 0), 0.25);
    EXPECT_TRUE(mpMain->SerializeProject().Contains("New::Material::Mtl_Red\n"));
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Red", "Diffuse", 0), 0.8);
    GpCUndo->Redo();

    // The saved project reads back the edited colour and the file's own.
    TempDir_cls dir;
    ASSERT_TRUE(mpMain->SaveProjectMain(dir.Path("mesh.ovp"), 0));
    ASSERT_TRUE(mpMain->OpenProjectMain(dir.Path("mesh.ovp"), true));
    pObj = GpCSceneObjCtrl->GetPCFromName(strName);
    ASSERT_NE(pObj, nullptr);
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Red", "Diffuse", 0), 0.25);
    EXPECT_DOUBLE_EQ(Value(pObj, "Mtl_Blue", "Diffuse", 2), 0.9);
}
