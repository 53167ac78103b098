// The property pages of stream-line, height-field and isosurface objects: each kind's page comes
// from its kind-table slot, its controls edit the object, its material, its iso value, its colour
// curve and its stacks (the entry chosen shows its own keys) through commands that undo and redo.
#include "PropertyPageFixture.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"
#include "ModifierStack_cls.h"
#include "ParamGroup_cls.h"
#include "PropertyDataKind_cls.h"
#include "PropertyModifier_cls.h"
#include "Property_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "UndoManager_cls.h"

#include <wx/notebook.h>

#include <functional>

namespace {

class DataKindPageTest : public PropertyPageFixture {
protected:
    // Adds an object of the kind, makes it active and returns its page.
    PropertyDataKind_cls* Add(const char* pKind) {
        mStrName = GpCSceneObjCtrl->AppendSceneObjCommand(pKind, wxString());
        Select(mStrName);
        GpCUndo->Clear();
        return dynamic_cast<PropertyDataKind_cls*>(mpProperty->mpCPageKind);
    }
    SceneObj_cls* Obj() { return GpCSceneObjCtrl->GetPCFromName(mStrName); }
    // Everything the page edits, as the project would write it.
    wxString State() {
        SceneObj_cls* p = Obj();
        wxString str = p->SerializeAll() + p->GetPCMaterial()->SerializeAll();
        for (int stack = 0; stack < 2; ++stack)
            for (Attribute_cls* pAttr : PropertyKindPage_cls::GetVPCStackEntries(p, stack))
                str += pAttr->GetStrName() + pAttr->SerializeAll();
        if (ParamGroup_cls* pIso = p->GetPCParamGroup("Isosurface", "IsoValue"))
            str += wxString::Format("%g", pIso->GetVInterpolatedValue(0.0, true, nullptr, false)[0]);
        if (auto* pCurve = static_cast<ColorCurve_cls*>(p->GetPCAttributeFromAttribName("ColorCurve_cls", 0)))
            pCurve->Serialize(str);
        return str;
    }
    wxString Body(const char* pKey) { return Obj()->GetPCItem(pKey)->GetBodySTR(); }

    wxString mStrName;
};

} // namespace

TEST_F(DataKindPageTest, EachKindsEditsUndoAndRedo) {
    using P = PropertyDataKind_cls;
    struct Edit {
        const char* what;
        std::function<void(P*)> edit;
        std::function<bool()> done;
    };
    struct Case {
        const char* kind;
        const char* label;
        std::vector<Edit> edits;
    };
    const wxString strLines = wxString(ORV_TEST_DATA_DIR) + "/streamline/lines_001.txt";
    const Case cases[] = {
        {"Streamline",
         "Streamline",
         {{"ribbons",
           [](P* p) {
               SendChoice(dynamic_cast<wxChoice*>(p->FindItemCtrl(P::TARGET_OBJECT, "DrawType=")), 1);
           },
           [&] { return Body("DrawType=") == "1"; }},
          {"width by arithmetic",
           [](P* p) {
               SendTextEnter(dynamic_cast<wxTextCtrl*>(p->FindItemCtrl(P::TARGET_OBJECT, "LineWidth=")),
                             "2*3");
           },
           [&] { return Obj()->GetPCItem("LineWidth=")->GetBodyDOUBLE() == 6.0; }},
          {"picked file", [&](P* p) { p->SetPathFromPicked(strLines); },
           [&] { return Body("Path=").EndsWith("lines_%03d.txt"); }},
          {"clip box on",
           [](P* p) {
               SendCheck(dynamic_cast<wxCheckBox*>(p->FindItemCtrl(P::TARGET_OBJECT, "Clip=")), true);
           },
           [&] { return Body("Clip=") == "1"; }},
          {"a transform added", [](P* p) { p->mpCStack->AddEntry(1, "StreamTransform_cls"); },
           [&] { return Obj()->IsDataProcClsExist("StreamTransform_cls"); }},
          {"its offset through its own row",
           [](P* p) {
               p->mpCStack->ShowEntry(1, 0);
               PropertyModifier_cls* pEntry = p->mpCStack->mpCPage[1];
               pEntry->SetItemFromText(pEntry->FindField(pEntry->mStrEntryName, "Offset="), "1 2 3");
           },
           [&] { return Obj()->GetPCDataProcFromIndex(0)->GetPCItem("Offset=")->GetBodySTR() == "1 2 3"; }},
          {"a trimming switched off",
           [](P* p) {
               p->mpCStack->AddEntry(0, "Trimming_cls");
               p->mpCStack->SetValidity(0, 0, false);
           },
           [&] { return !Obj()->GetPCValidModifier("Trimming_cls"); }},
          {"curve preset", [](P* p) { p->ApplyCurvePreset(3); }, [] { return true; }}}},
        {"HeightField",
         "Height Field",
         {{"channel green",
           [](P* p) {
               SendChoice(dynamic_cast<wxChoice*>(p->FindItemCtrl(P::TARGET_OBJECT, "Channel=")), 1);
           },
           [&] { return Body("Channel=") == "1"; }},
          {"flat shading",
           [](P* p) {
               SendCheck(dynamic_cast<wxCheckBox*>(p->FindItemCtrl(P::TARGET_MATERIAL, "Smooth=")), false);
           },
           [&] { return !Obj()->GetPCMaterial()->mCSmooth.GetBodyBOOL(); }},
          {"material colour",
           [](P* p) {
               SendChoice(dynamic_cast<wxChoice*>(p->FindItemCtrl(P::TARGET_OBJECT, "ColorType=")), 0);
           },
           [&] { return Body("ColorType=") == "0"; }}}},
        {"Isosurface",
         "Isosurface",
         {{"iso value", [](P* p) { SendTextEnter(p->mpCIso, "2*80"); },
           [&] {
               return Obj()
                          ->GetPCParamGroup("Isosurface", "IsoValue")
                          ->GetVInterpolatedValue(0.0, true, nullptr, false)[0] == 160.0;
           }},
          {"image stack",
           [](P* p) {
               SendCheck(dynamic_cast<wxCheckBox*>(p->FindItemCtrl(P::TARGET_OBJECT, "ZStack=")), true);
           },
           [&] { return Body("ZStack=") == "1"; }}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        P* pPage = Add(c.kind);
        ASSERT_NE(pPage, nullptr);
        EXPECT_EQ(pPage->GetStrLabel(), c.label);
        for (const Edit& e : c.edits) {
            SCOPED_TRACE(e.what);
            const wxString strBefore = State();
            e.edit(pPage);
            Sync();
            EXPECT_TRUE(e.done());
            const wxString strAfter = State();
            EXPECT_NE(strAfter, strBefore);
            while (GpCUndo->GetCurrent() > 0)
                GpCUndo->Undo();
            Sync();
            EXPECT_EQ(State(), strBefore);
            while (GpCUndo->GetCurrent() < GpCUndo->GetCount())
                GpCUndo->Redo();
            Sync();
            EXPECT_EQ(State(), strAfter);
            EXPECT_TRUE(e.done());
            GpCUndo->Clear();
        }
    }
    // A bad number changes nothing.
    P* pPage = Add("Streamline");
    const wxString strBefore = State();
    EXPECT_FALSE(pPage->SetItem(P::TARGET_OBJECT, "LineWidth=", "wide"));
    EXPECT_EQ(State(), strBefore);
}
