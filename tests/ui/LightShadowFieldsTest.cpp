// The light's page shows the soft lights' samples and size, kept in the shadow controller's block:
// typed values are held to the field's range and go through commands that undo and redo.
#include "PropertyPageFixture.h"

#include "ClassProvider_cls.h"
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
    const wxString strName = GpCSceneObjCtrl->AppendLightCommand(1, wxString());
    GpCSceneObjCtrl->Select(strName, false, true, false);
    GCClassProvider->ProcAfterMath("SelectObject", strName);
    Flush();
    auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(mpProperty->mpCPageKind);
    ASSERT_TRUE(pPage && GpCShadowVolumeCtrl);
    for (const auto& c : {std::array<const char*, 3>{"SoftShadowSampleNum=", "4*4", "16"},
                          {"SoftShadowSampleNum=", "1000", "256"},
                          {"SoftShadowSize=", "-2", "0"},
                          {"SoftShadowSize=", "0.05", "0.05"}}) {
        SCOPED_TRACE(wxString(c[0]) + c[1]);
        const int field = pPage->mpCFields->FindField("ShadowVolumeCtrl", c[0]);
        ConfItem_cls* pItem = GpCShadowVolumeCtrl->GetPCItem(c[0]);
        ASSERT_TRUE(field >= 0 && pPage->mpCFields->GetPCItem(field) == pItem);
        auto* pText =
            dynamic_cast<wxTextCtrl*>(pPage->mpCFields->mVRow.at(static_cast<size_t>(field)).mpCtrl);
        GpCUndo->Clear();
        const wxString strBefore = pItem->GetBodySTR();
        SendTextEnter(pText, c[1]);
        EXPECT_EQ(pItem->GetBodySTR(), c[2]);
        GpCUndo->Undo();
        EXPECT_EQ(pItem->GetBodySTR(), strBefore);
        GpCUndo->Redo();
        pPage->UpdatePage("IDLE");
        EXPECT_EQ(pText->GetValue(), c[2]) << "the field shows the model after redo";
    }
}
