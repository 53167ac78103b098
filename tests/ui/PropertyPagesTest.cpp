// The property pages of the object kinds and their modifiers in a window: each control edits
// its object through commands (undo restores the object's text, redo sets the value again),
// number fields take arithmetic and Lua, values are held to the field's range, the key button
// sets a key at the current time, and the preferences and shortcuts go through the settings
// file and come back.
#include "PropertyPageFixture.h"

#include "ClassProvider_cls.h"
#include "KindTable_cls.h"
#include "ModifierStack_cls.h"
#include "MousePreference_cls.h"
#include "ParamGroup_cls.h"
#include "Particle_cls.h"
#include "PreferenceDialog_cls.h"
#include "Preference_cls.h"
#include "PropertyFieldPage_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "PropertyModifier_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyParticle_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "Shortcut_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/button.h>
#include <wx/checklst.h>
#include <wx/listbox.h>

namespace {

// How the test makes an object of a kind through the controller's commands.
wxString AppendObject(const wxString& strKind) {
    if (strKind == "Box")
        return GpCSceneObjCtrl->AppendPrimitiveCommand(0, wxString());
    if (strKind == "SpotLight")
        return GpCSceneObjCtrl->AppendLightCommand(2, wxString());
    return GpCSceneObjCtrl->AppendSceneObjCommand(strKind, wxString());
}

// Drives the row's control as a user does: types and presses Enter, picks an entry, ticks.
void DriveRow(PropertyFieldPanel_cls& panel, int field, int member, const wxString& strInput) {
    const PropertyFieldPanel_cls::Row_cls& row = panel.mVRow.at(static_cast<size_t>(field));
    if (member >= 0)
        SendTextEnter(row.mVPCMember.at(static_cast<size_t>(member)), strInput);
    else if (auto* pChoice = dynamic_cast<wxChoice*>(row.mpCtrl))
        SendChoice(pChoice, wxAtoi(strInput));
    else if (auto* pCheck = dynamic_cast<wxCheckBox*>(row.mpCtrl))
        SendCheck(pCheck, strInput == "1");
    else
        SendTextEnter(dynamic_cast<wxTextCtrl*>(row.mpCtrl), strInput);
}

// What the row's setting holds now: the item's body, or the member's value at the current time.
wxString RowValue(PropertyFieldPanel_cls& panel, int field, int member) {
    if (member < 0) {
        ConfItem_cls* pItem = panel.GetPCItem(field);
        return pItem ? pItem->GetBodySTR() : wxString("(no item)");
    }
    ParamGroup_cls* pGroup = panel.GetPCGroup(field);
    if (!pGroup || member >= static_cast<int>(pGroup->mVCParam.size()))
        return "(no member)";
    return wxString::Format(
        "%g", pGroup->mVCParam[static_cast<size_t>(member)].GetValue(TimeCtrl_cls::GetClockNT()));
}

class PropertyPagesTest : public PropertyPageFixture {
protected:
    wxString ObjectText(const wxString& strName) {
        wxString str;
        GpCSceneObjCtrl->GetPCFromName(strName)->Serialize(str);
        return str;
    }
};

} // namespace

TEST_F(PropertyPagesTest, EveryPageEditsItsObjectAndUndoRedoTakeItBackAndForth) {
    SKIP_WITHOUT_DISPLAY();
    struct Case_cls {
        const char* pKind;     // the object to make
        const char* pModifier; // a modifier added through the page first, whose page is driven
        const char* pAttr;
        const char* pKey;
        int member; // -1: an item
        const char* pInput;
        const char* pExpected;
    };
    const Case_cls vCase[] = {
        {"Camera", "", "CameraProp", "ViewAngle", 0, "2*15", "30"},
        {"Camera", "", "CameraProp", "ViewAngle", 0, "500", "179"}, // held to the range
        {"Camera", "", "CameraProp", "CameraType=", -1, "6", "6"},
        {"Camera", "", "CameraProp", "WideAngle", 0, "270", "270"},
        {"Camera", "", "CameraProp", "ClipRange", 1, "math.sqrt(16)*100", "400"}, // Lua
        {"Camera", "", "CameraProp", "Passepartout=", -1, "1", "1"},
        {"Camera", "", "CameraProp", "OverrideWidth=", -1, "99999", "65536"},
        {"Camera", "", "FocalBlur", "UseFocalBlur=", -1, "1", "1"},
        {"Camera", "", "FocalBlur", "FocalDistance", 0, "=7.5", "7.5"},
        {"Camera", "", "Stereo", "EyeType=", -1, "4", "4"},
        {"Camera", "", "Stereo", "EyeSeparation", 0, "0.1", "0.1"},
        {"SpotLight", "", "", "LightType=", -1, "0", "0"},
        {"SpotLight", "", "Material", "Diffuse", 1, "0.25", "0.25"},
        {"SpotLight", "", "Material", "SpotCutoff", 0, "45", "45"},
        {"World", "", "Fog", "FogType=", -1, "3", "3"},
        {"World", "", "Fog", "FogColor", 2, "1.5", "1"},
        {"Box", "", "", "Segments=", -1, "12", "12"},
        {"Box", "", "Material", "UseTexture=", -1, "1", "1"},
        {"Box", "", "Material", "TextureFile=", -1, "wood.png", "wood.png"},
        {"Box", "", "Material", "TexScale", 0, "4/2", "2"},
        {"Box", "", "Material", "BlendType=", -1, "2", "2"},
        {"MeshObj", "", "", "FlipNormal=", -1, "1", "1"},
        {"MeshObj", "", "Material", "Shininess", 0, "64", "64"},
        {"TextObj", "", "TextProp", "Text=", -1, "Hello", "Hello"},
        {"TextObj", "", "TextProp", "FontSize", 0, "3", "3"},
        {"TextObj", "", "TextProp", "Align=", -1, "2", "2"},
        {"Box", "ArrayCopy_cls", "", "X Min/Max", 1, "3", "3"},
        {"Box", "Tracking_cls", "", "BaseDirection=", -1, "1", "1"},
        {"Camera", "Tracking_cls", "", "Target=", -1, "World", "World"},
    };
    for (const Case_cls& c : vCase) {
        SCOPED_TRACE(wxString::Format("%s %s %s %s[%d] <- %s", c.pKind, c.pModifier, c.pAttr, c.pKey,
                                      c.member, c.pInput));
        const wxString strName = AppendObject(c.pKind);
        ASSERT_FALSE(strName.empty());
        Select(strName);
        auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(mpProperty->mpCPageKind);
        ASSERT_NE(pPage, nullptr);
        PropertyFieldPanel_cls* pPanel = pPage->mpCFields;
        wxString strAttr = c.pAttr;
        if (*c.pModifier) {
            ASSERT_TRUE(pPage->mpCStack->AddEntry(0, c.pModifier));
            ASSERT_NE(pPage->mpCStack->mpCPage[0], nullptr);
            pPanel = pPage->mpCStack->mpCPage[0];
            strAttr = pPage->mpCStack->mpCPage[0]->mStrEntryName;
        }
        const int field = pPanel->FindField(strAttr, c.pKey);
        ASSERT_GE(field, 0);
        GpCUndo->Clear();
        const wxString strBefore = ObjectText(strName);
        const wxString strOld = RowValue(*pPanel, field, c.member);

        DriveRow(*pPanel, field, c.member, c.pInput);
        EXPECT_EQ(RowValue(*pPanel, field, c.member), wxString(c.pExpected));
        EXPECT_NE(ObjectText(strName), strBefore);
        GpCUndo->Undo();
        Flush();
        EXPECT_EQ(ObjectText(strName), strBefore);
        EXPECT_EQ(RowValue(*pPanel, field, c.member), strOld);
        GpCUndo->Redo();
        Flush();
        EXPECT_EQ(RowValue(*pPanel, field, c.member), wxString(c.pExpected));
        // The page shows the model on the idle road.
        pPage->UpdatePage("IDLE");
        const PropertyFieldPanel_cls::Row_cls& row = pPanel->mVRow[static_cast<size_t>(field)];
        if (c.member >= 0) {
            EXPECT_EQ(row.mVPCMember[static_cast<size_t>(c.member)]->GetValue(), wxString(c.pExpected));
        }
    }
}

TEST_F(PropertyPagesTest, TextThatIsNoNumberChangesNothing) {
    SKIP_WITHOUT_DISPLAY();
    const wxString strName = AppendObject("Camera");
    Select(strName);
    auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    const int field = pPage->mpCFields->FindField("CameraProp", "ViewAngle");
    GpCUndo->Clear();
    const wxString strBefore = ObjectText(strName);
    for (const char* pText : {"", "abc", "1+", "{}", "1/0"}) {
        SCOPED_TRACE(pText);
        EXPECT_FALSE(pPage->mpCFields->SetMemberFromText(field, 0, pText));
        EXPECT_EQ(ObjectText(strName), strBefore);
        EXPECT_EQ(pPage->mpCFields->mVRow[static_cast<size_t>(field)].mVPCMember[0]->GetValue(), "45");
    }
}

TEST_F(PropertyPagesTest, KeyButtonSetsAKeyAtTheCurrentTimeThroughUndo) {
    SKIP_WITHOUT_DISPLAY();
    const wxString strName = AppendObject("Camera");
    Select(strName);
    auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    PropertyFieldPanel_cls& panel = *pPage->mpCFields;
    const int field = panel.FindField("CameraProp", "ClipRange");
    ParamGroup_cls* pGroup = panel.GetPCGroup(field);
    ASSERT_NE(pGroup, nullptr);
    GpCTimeCtrl->ProcSetFrameCurrent(40);
    const double t = TimeCtrl_cls::GetClockNT();
    ASSERT_GT(t, 0.0);
    GpCUndo->Clear();
    Send(panel.mVRow[static_cast<size_t>(field)].mpCKey, wxEVT_BUTTON);
    for (const Parameter_cls& param : pGroup->mVCParam) {
        SCOPED_TRACE(param.GetStrName());
        EXPECT_EQ(param.GetKeyNum(), 2);
        EXPECT_TRUE(param.IsKeyExist(t));
    }
    // With a key there, a typed value changes that key only: frame 0 keeps its value.
    SendTextEnter(panel.mVRow[static_cast<size_t>(field)].mVPCMember[0], "0.5");
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[0].GetValue(t), 0.5);
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[0].GetValue(0.0), 0.01);
    EXPECT_EQ(pGroup->mVCParam[0].GetKeyNum(), 2);
    GpCUndo->Undo();
    GpCUndo->Undo();
    for (const Parameter_cls& param : pGroup->mVCParam)
        EXPECT_EQ(param.GetKeyNum(), 1) << param.GetStrName();
    GpCUndo->Redo();
    EXPECT_TRUE(pGroup->mVCParam[1].IsKeyExist(t));
    EXPECT_DOUBLE_EQ(pGroup->mVCParam[1].GetValue(t), 1000.0);

    // The object page's transform groups have the same button.
    ParamGroup_cls* pPosition =
        GpCSceneObjCtrl->GetPCFromName(strName)->GetPCParamGroup(wxString(), "Position");
    Send(mpProperty->mpCPageObject->mpCKey[0], wxEVT_BUTTON);
    for (const Parameter_cls& param : pPosition->mVCParam)
        EXPECT_TRUE(param.IsKeyExist(t)) << param.GetStrName();
    GpCUndo->Undo();
    for (const Parameter_cls& param : pPosition->mVCParam)
        EXPECT_EQ(param.GetKeyNum(), 1) << param.GetStrName();
}

TEST_F(PropertyPagesTest, ParticleStackRowShowsTheEntrysPage) {
    SKIP_WITHOUT_DISPLAY();
    const wxString strName = AppendObject("Particle");
    Select(strName);
    auto* pPage = dynamic_cast<PropertyParticle_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    ASSERT_TRUE(pPage->mpCStack->AddEntry(ModifierStack_cls::STACK_MODIFIER, "ModifyApparentSize_cls"));
    ASSERT_TRUE(pPage->mpCStack->ShowEntry(ModifierStack_cls::STACK_MODIFIER, 0));
    PropertyModifier_cls* pEntryPage = pPage->mpCStack->mpCPage[ModifierStack_cls::STACK_MODIFIER];
    ASSERT_NE(pEntryPage, nullptr);
    const int field = pEntryPage->FindField(pEntryPage->mStrEntryName, "Parameters");
    ASSERT_GE(field, 0);
    SendTextEnter(pEntryPage->mVRow[static_cast<size_t>(field)].mVPCMember[1], "0.3");
    Attribute_cls* pEntry =
        GpCSceneObjCtrl->GetPCFromName(strName)->GetPCAttribute(pEntryPage->mStrEntryName, 1);
    ASSERT_NE(pEntry, nullptr);
    EXPECT_DOUBLE_EQ(pEntry->GetPCParamGroup("Parameters")->mVCParam[1].GetValue(0.0), 0.3);
    const int target = pEntryPage->FindField(pEntryPage->mStrEntryName, "TargetType=");
    SendChoice(dynamic_cast<wxChoice*>(pEntryPage->mVRow[static_cast<size_t>(target)].mpCtrl), 2);
    EXPECT_EQ(pEntry->GetPCItem("TargetType=")->GetBodySTR(), "2");
    GpCUndo->Undo();
    EXPECT_EQ(pEntry->GetPCItem("TargetType=")->GetBodySTR(), "0");
    // Removing the entry drops its page.
    ASSERT_TRUE(pPage->mpCStack->DeleteEntry(ModifierStack_cls::STACK_MODIFIER, 0));
    EXPECT_EQ(pPage->mpCStack->mpCPage[ModifierStack_cls::STACK_MODIFIER], nullptr);
}

// A kind the tables do not know gets a row for each of its items and groups.
TEST_F(PropertyPagesTest, EveryModifierKindHasAPage) {
    SKIP_WITHOUT_DISPLAY();
    const wxString strName = AppendObject("Particle");
    SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(strName);
    for (auto group : {KindTable_cls::GROUP_MODIFIER, KindTable_cls::GROUP_DATA_PROC})
        for (const wxString& strClass : KindTable_cls::GetClassWords(group)) {
            SCOPED_TRACE(strClass);
            const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClass, group);
            std::unique_ptr<Attribute_cls> pEntry(pKind->mFuncMakeAttribute(p, "Probe"));
            if (!pEntry) // a kind for other objects
                continue;
            EXPECT_NE(pKind->GetSlot<PropertyField_cls::Table_type>(KindTable_cls::SLOT_PROPERTY_PAGE),
                      nullptr);
            const PropertyField_cls::Table_type vField = PropertyModifier_cls::GetVField(pEntry.get());
            ASSERT_FALSE(vField.empty());
            EXPECT_EQ(vField[0].mStrKey, "Validity=");
            // Every row names a setting the entry has.
            for (const PropertyField_cls& f : vField) {
                EXPECT_EQ(f.mStrAttr, "Probe");
                const bool bHas = f.mWidget == PropertyField_cls::WIDGET_GROUP
                                      ? pEntry->GetPCParamGroup(f.mStrKey) != nullptr
                                      : pEntry->GetPCItem(f.mStrKey) != nullptr;
                EXPECT_TRUE(bHas) << f.mStrKey;
            }
            const PropertyField_cls::Table_type vGeneric =
                PropertyModifier_cls::GetVFieldGeneric(pEntry.get());
            EXPECT_EQ(vGeneric.size(), pEntry->GetAstrItemList().GetCount() + pEntry->mVPCParamGroup.size());
        }
}
