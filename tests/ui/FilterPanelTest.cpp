// The scene filter page of the property panel over the real filter chain.
#include "ScenePanelsFixture.h"

#include "EnsembleCtrl_cls.h"
#include "FilterBase_cls.h"
#include "FilterCtrl_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "PropertyFilter_cls.h"
#include "ShadowVolumeCtrl_cls.h"

#include <wx/button.h>
#include <wx/listbox.h>

#include <functional>

namespace {

std::vector<wxString> Items(wxListBox* p) {
    std::vector<wxString> v;
    for (unsigned i = 0; i < p->GetCount(); ++i)
        v.push_back(p->GetString(i));
    return v;
}

int Find(wxListBox* p, const wxString& strStart) {
    for (unsigned i = 0; i < p->GetCount(); ++i)
        if (p->GetString(i).StartsWith(strStart))
            return static_cast<int>(i);
    return -1;
}

} // namespace

class FilterPanelTest : public ScenePanelsFixture {
protected:
    // The chain and the data objects whose curves a legend shows.
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Filter>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        ScenePanelsFixture::SetUp();
        if (IsSkipped())
            return;
        mpFilterPage = mpProperty->mpCPageFilter;
        ASSERT_NE(mpFilterPage, nullptr);
        ASSERT_NE(GpCFilterCtrl, nullptr);
    }
    PropertyFilter_cls* mpFilterPage = nullptr;
};

TEST_F(FilterPanelTest, ChainEditsShowInOrderAndUndo) {
    // The Add button adds the chosen class.
    mpFilterPage->mpCClass->SetSelection(1); // Blur
    Send(mpFilterPage->mpCAdd, wxEVT_BUTTON);
    ASSERT_TRUE(mpFilterPage->AddFilter("Exposure_cls"));
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Blur", "Exposure"}));
    EXPECT_EQ(mpFilterPage->mpCChain->GetSelection(), 1);

    ASSERT_TRUE(mpFilterPage->MoveSelected(-1));
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Exposure", "Blur"}));
    EXPECT_FALSE(mpFilterPage->MoveSelected(-1)); // already first
    ASSERT_TRUE(mpFilterPage->SetSelectedValid(false));
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Exposure (off)", "Blur"}));
    EXPECT_FALSE(mpFilterPage->mpCValid->GetValue());

    // Undo walks back through the same commands, and the page follows the chain.
    GpCUndo->Undo();
    Flush();
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Exposure", "Blur"}));
    GpCUndo->Undo();
    Flush();
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Blur", "Exposure"}));
    ASSERT_TRUE(mpFilterPage->SelectFilter("Blur"));
    ASSERT_TRUE(mpFilterPage->RemoveSelected());
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Exposure"}));
    GpCUndo->Undo();
    Flush();
    EXPECT_EQ(Items(mpFilterPage->mpCChain), (std::vector<wxString>{"Blur", "Exposure"}));
}

TEST_F(FilterPanelTest, ItemsAndParametersAreSetByTypingAValue) {
    ASSERT_TRUE(mpFilterPage->AddFilter("Blur_cls"));
    const int type = Find(mpFilterPage->mpCValues, "Type=");
    const int width = Find(mpFilterPage->mpCValues, "Width::Width=");
    ASSERT_GE(type, 0);
    ASSERT_GE(width, 0);
    // The check box and the attribute's own bookkeeping are no entries.
    for (const char* str : {"Validity=", "Name=", "AttributeName=", "Shy="})
        EXPECT_EQ(Find(mpFilterPage->mpCValues, str), -1) << str;
    EXPECT_EQ(Find(mpFilterPage->mpCValues, "Type="), 0);
    ASSERT_TRUE(mpFilterPage->SetEntryFromText(type, " 2 "));
    ASSERT_TRUE(mpFilterPage->SetEntryFromText(width, "2+3"));
    EXPECT_FALSE(mpFilterPage->SetEntryFromText(width, "wide"));
    FilterBase_cls* p = GpCFilterCtrl->GetPCFromName("Blur");
    EXPECT_EQ(p->GetPCItem("Type=")->GetBodyINT(), 2);
    EXPECT_DOUBLE_EQ(p->GetValue("Width", 0.0, 0.0), 5.0);
    EXPECT_EQ(mpFilterPage->mpCValues->GetString(static_cast<unsigned>(width)), "Width::Width=5");
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(p->GetValue("Width", 0.0, 0.0), 2.0);
}

TEST_F(FilterPanelTest, LegendChoosesAmongTheObjectsWithAColourCurve) {
    RunText("SceneObjCtrl::New::Particle_cls::ANY::Stars");
    ASSERT_TRUE(mpFilterPage->AddFilter("Legend_cls"));
    std::vector<wxString> vChoices;
    for (unsigned i = 0; i < mpFilterPage->mpCTarget->GetCount(); ++i)
        vChoices.push_back(mpFilterPage->mpCTarget->GetString(i));
    // The box and the camera have no curve.
    EXPECT_EQ(vChoices, (std::vector<wxString>{"None", "Stars"}));
    ASSERT_TRUE(mpFilterPage->SetLegendTarget("Stars"));
    EXPECT_EQ(GpCFilterCtrl->GetPCFromName("Legend")->GetPCItem("Target=")->GetBodySTR(), "Stars");
    EXPECT_EQ(mpFilterPage->mpCTarget->GetStringSelection(), "Stars");
    // Other filters have no curve to choose.
    ASSERT_TRUE(mpFilterPage->AddFilter("Glare_cls"));
    EXPECT_FALSE(mpFilterPage->mpCTarget->IsEnabled());
    EXPECT_FALSE(mpFilterPage->SetLegendTarget("Stars"));
    ASSERT_TRUE(mpFilterPage->SelectFilter("Legend"));
    EXPECT_TRUE(mpFilterPage->mpCTarget->IsEnabled());
}

TEST_F(FilterPanelTest, SamplingOfTheSceneIsSetOnThePageAndUndoes) {
    ASSERT_NE(GpCEnsembleCtrl, nullptr);
    ASSERT_NE(GpCBlurCtrl, nullptr);
    ASSERT_NE(GpCShadowVolumeCtrl, nullptr);
    struct Step_cls {
        const char* strWhat;
        std::function<void()> funcEdit;
        std::function<bool()> funcDone;
    };
    const Step_cls steps[] = {
        {"ensemble on", [&] { SendCheck(mpFilterPage->mpCUseEnsemble, true); },
         [] { return GpCEnsembleCtrl->IsUseEnsemble(); }},
        {"eight samples", [&] { SendTextEnter(mpFilterPage->mpCEnsembleSampleNum, "8"); },
         [] { return GpCEnsembleCtrl->GetEnsembleSampleNum() == 8; }},
        {"motion blur on", [&] { SendCheck(mpFilterPage->mpCUseMotionBlur, true); },
         [] { return GpCBlurCtrl->IsUseMotionBlur(); }},
        {"blur length", [&] { SendTextEnter(mpFilterPage->mpCBlurLength, "0.25"); },
         [] { return GpCBlurCtrl->GetBlurLength() == 0.25; }},
        {"blur quality", [&] { SendTextEnter(mpFilterPage->mpCBlurQuality, "6"); },
         [] { return GpCBlurCtrl->GetBlurSampleNum() == 6; }},
        {"shadows on", [&] { SendCheck(mpFilterPage->mpCUseShadow, true); },
         [] { return GpCShadowVolumeCtrl->mCUseShadowVolume.GetBodyBOOL(); }},
        {"sixteen soft samples", [&] { SendTextEnter(mpFilterPage->mpCSoftShadowSampleNum, "16"); },
         [] { return GpCShadowVolumeCtrl->GetSoftSampleNum() == 16; }},
    };
    for (const Step_cls& step : steps) {
        SCOPED_TRACE(step.strWhat);
        ASSERT_FALSE(step.funcDone());
        const int before = GpCUndo->GetCount();
        step.funcEdit();
        EXPECT_TRUE(step.funcDone());
        EXPECT_EQ(GpCUndo->GetCount(), before + 1);
    }
    // A quality that is no number changes nothing and shows the value again.
    const int before = GpCUndo->GetCount();
    SendTextEnter(mpFilterPage->mpCBlurQuality, "many");
    EXPECT_EQ(GpCUndo->GetCount(), before);
    EXPECT_EQ(mpFilterPage->mpCBlurQuality->GetValue(), "6");
    // Undo walks back through every step, and the page shows it.
    for (size_t i = 0; i < std::size(steps); ++i)
        GpCUndo->Undo();
    EXPECT_FALSE(GpCShadowVolumeCtrl->mCUseShadowVolume.GetBodyBOOL());
    EXPECT_FALSE(GpCEnsembleCtrl->IsUseEnsemble());
    EXPECT_FALSE(GpCBlurCtrl->IsUseMotionBlur());
    mpFilterPage->RefreshSampling();
    EXPECT_FALSE(mpFilterPage->mpCUseEnsemble->GetValue());
    EXPECT_EQ(mpFilterPage->mpCBlurQuality->GetValue(), GpCBlurCtrl->mCBlurQuality.GetBodySTR());
}
