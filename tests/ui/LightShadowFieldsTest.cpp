// The light's page shows the soft lights' samples and size beside the light's own shadow
// switches: typed values reach the shadow controller's block through a command, held to the
// field's range, and undo and redo take them back and forth.
#include "PropertyPageFixture.h"

#include "ClassProvider_cls.h"
#include "Main_cls.h"
#include "PropertyFieldPage_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShadowVolumeCtrl_cls.h"
#include "UndoManager_cls.h"

namespace {

class LightShadowFieldsTest : public PropertyPageFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Render>();
        RegisterPanelMakers();
    }
};

} // namespace

TEST_F(LightShadowFieldsTest, SoftShadowSamplesAndSizeAreTypedOnTheLightsPage) {
    SKIP_WITHOUT_DISPLAY();
    ASSERT_NE(GpCShadowVolumeCtrl, nullptr);
    const wxString strName = GpCSceneObjCtrl->AppendLightCommand(1, wxString());
    GpCSceneObjCtrl->Select(strName, false, true, false);
    GCClassProvider->ProcAfterMath("SelectObject", strName);
    Flush();
    auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(mpProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    PropertyFieldPanel_cls* pPanel = pPage->mpCFields;
    const struct {
        const char* pKey;
        const char* pInput;
        const char* pExpected;
    } cases[] = {{"SoftShadowSampleNum=", "4*4", "16"},
                 {"SoftShadowSampleNum=", "1000", "256"},
                 {"SoftShadowSize=", "0.05", "0.05"},
                 {"SoftShadowSize=", "-2", "0"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(wxString(c.pKey) + " <- " + c.pInput);
        const int field = pPanel->FindField("ShadowVolumeCtrl", c.pKey);
        ASSERT_GE(field, 0);
        ConfItem_cls* pItem = GpCShadowVolumeCtrl->GetPCItem(c.pKey);
        ASSERT_EQ(pPanel->GetPCItem(field), pItem) << "the controller's own item";
        auto* pText = dynamic_cast<wxTextCtrl*>(pPanel->mVRow.at(static_cast<size_t>(field)).mpCtrl);
        ASSERT_NE(pText, nullptr);
        EXPECT_TRUE(pText->IsEnabled());
        GpCUndo->Clear();
        const wxString strBefore = pItem->GetBodySTR();
        SendTextEnter(pText, c.pInput);
        EXPECT_EQ(pItem->GetBodySTR(), wxString(c.pExpected));
        EXPECT_TRUE(GCClassProvider->SerializeProject().Contains(wxString(c.pKey) + c.pExpected));
        GpCUndo->Undo();
        Flush();
        EXPECT_EQ(pItem->GetBodySTR(), strBefore);
        GpCUndo->Redo();
        Flush();
        EXPECT_EQ(pItem->GetBodySTR(), wxString(c.pExpected));
        pPage->UpdatePage("IDLE");
        EXPECT_EQ(pText->GetValue(), wxString(c.pExpected)) << "the field shows the model";
    }
}
