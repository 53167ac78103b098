// Edits of the chain through the command road: do, undo, redo, and the project text.
#include "FilterBase_cls.h"
#include "FilterBuffer_cls.h"
#include "FilterFixture.h"
#include "ParamGroup_cls.h"
#include "Parameter_cls.h"
#include "UndoManager_cls.h"

namespace {

// The chain as text: each filter with its items and keys.
wxString ChainText() {
    wxString str;
    GpCFilterCtrl->Serialize(str);
    return str;
}

wxString Order() {
    wxString str;
    for (FilterBase_cls* p : GpCFilterCtrl->GetListFilter())
        str += p->GetStrName() + ",";
    return str;
}

} // namespace

class FilterCommandTest : public FilterFixture {};

TEST_F(FilterCommandTest, EveryChainEditUndoesAndRedoes) {
    struct Case_cls {
        const char* strName;
        std::function<void()> funcEdit;
        std::function<bool()> funcDone;
    };
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", ""), "Exposure");
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Blur_cls", ""), "Blur");
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Blur_cls", ""), "Blur1");
    const std::vector<Case_cls> cases = {
        {"add", [] { GpCFilterCtrl->AddFilterCommand("SSAO_cls", "Occlusion"); },
         [] {
             return GpCFilterCtrl->IsFilterExist("SSAO_cls") && Order() == "Exposure,Blur,Blur1,Occlusion,";
         }},
        {"move", [] { GpCFilterCtrl->MoveFilterCommand("Blur1", 0); },
         [] { return Order() == "Blur1,Exposure,Blur,"; }},
        {"off", [] { GpCFilterCtrl->SetFilterValidityCommand("Blur", false); },
         [] { return !GpCFilterCtrl->GetPCFromName("Blur")->IsValid(); }},
        {"item", [] { GpCFilterCtrl->SetFilterItemCommand("Blur", "Type=", "2"); },
         [] { return GpCFilterCtrl->GetPCFromName("Blur")->GetPCItem("Type=")->GetBodyINT() == 2; }},
        {"parameter", [] { GpCFilterCtrl->SetFilterParamCommand("Exposure", "Gamma", 0, 0.5); },
         [] { return GpCFilterCtrl->GetPCFromName("Exposure")->GetValue("Gamma", 0.0, -1.0) == 0.5; }},
        {"delete", [] { GpCFilterCtrl->DeleteFilterCommand("Exposure"); },
         [] { return Order() == "Blur,Blur1,"; }},
    };
    // Something to lose in the delete: an item and a key of the filter.
    GpCFilterCtrl->SetFilterItemCommand("Exposure", "Validity=", "0");
    GpCFilterCtrl->SetFilterParamCommand("Exposure", "Level", 1, 0.8);
    for (const Case_cls& c : cases) {
        SCOPED_TRACE(c.strName);
        const wxString strBefore = ChainText();
        const int index = GpCUndo->GetCurrent();
        c.funcEdit();
        EXPECT_EQ(GpCUndo->GetCurrent(), index + 1);
        EXPECT_TRUE(c.funcDone());
        const wxString strAfter = ChainText();
        GpCUndo->Undo();
        EXPECT_EQ(ChainText(), strBefore);
        GpCUndo->Redo();
        EXPECT_EQ(ChainText(), strAfter);
        EXPECT_TRUE(c.funcDone());
        GpCUndo->Undo();
    }
    // Refused edits push nothing.
    const int index = GpCUndo->GetCurrent();
    EXPECT_EQ(GpCFilterCtrl->AddFilterCommand("Nothing_cls", ""), "");
    EXPECT_FALSE(GpCFilterCtrl->DeleteFilterCommand("Nothing"));
    EXPECT_FALSE(GpCFilterCtrl->MoveFilterCommand("Blur", 1)); // already there
    EXPECT_FALSE(GpCFilterCtrl->SetFilterItemCommand("Blur", "Nothing=", "1"));
    EXPECT_EQ(GpCUndo->GetCurrent(), index);
}

TEST_F(FilterCommandTest, ProjectTextGivesTheSameChainAsTheLiveEdits) {
    for (const wxString& strClass : FilterCtrl_cls::GetVStrFilterClass())
        ASSERT_FALSE(GpCFilterCtrl->AddFilterCommand(strClass, "").empty()) << strClass;
    GpCFilterCtrl->MoveFilterCommand("FilterDepth", 1);
    GpCFilterCtrl->SetFilterValidityCommand("Glare", false);
    GpCFilterCtrl->SetFilterItemCommand("Overlay", "strPath=", "logo.%04d.png");
    GpCFilterCtrl->SetFilterItemCommand("Legend", "FormatTime=", "t=%.2f");
    GpCFilterCtrl->SetFilterParamCommand("Exposure", "Hue/Saturation", 1, 25);
    GpCFilterCtrl->SetFilterParamCommand("SSAO", "BaseColor", 2, 0.25);
    const wxString strLive = ChainText();
    EXPECT_TRUE(strLive.Contains("FilterCtrl::New::FilterDepth_cls::FilterDepth\n"));
    EXPECT_TRUE(strLive.Contains("ConfItemList::Begin::FilterCtrl::Filter::Glare\n"));

    // The whole project, written and read into a fresh process state.
    const wxString strProject = mpMain->SerializeProject();
    GpCFilterCtrl->Clear();
    EXPECT_EQ(GpCFilterCtrl->GetCount(), 0);
    Run(strProject);
    EXPECT_EQ(ChainText(), strLive);
    EXPECT_EQ(Order(), "Exposure,FilterDepth,Blur,Glare,RemoveAlpha,Overlay,Legend,FocalBlur,SSAO,");
    EXPECT_FALSE(GpCFilterCtrl->GetPCFromName("Glare")->IsValid());
    EXPECT_TRUE(GpCFilterCtrl->IsFilterExist("Glare_cls"));
    EXPECT_FALSE(GpCFilterCtrl->IsVaildFilterExist("Glare_cls"));
    EXPECT_DOUBLE_EQ(GpCFilterCtrl->GetPCFromName("Exposure")->GetValue("Hue/Saturation", 0.0, 0.0, 1), 25.0);
    // A chain that reads depth asks the frame for its depth pass; switched off, it does not.
    EXPECT_TRUE(GpCFilterCtrl->DoesUseDepthBuffer());
    for (const char* str : {"FilterDepth", "FocalBlur", "SSAO"})
        GpCFilterCtrl->SetFilterValidityCommand(str, false);
    EXPECT_FALSE(GpCFilterCtrl->DoesUseDepthBuffer());
}

TEST_F(FilterCommandTest, LinesForFiltersThatAreNotThereAreDroppedQuietly) {
    Run("FilterCtrl::New::Blur_cls::B");
    const wxString strBefore = ChainText();
    Run("FilterCtrl::New::Blur_cls::B\n"    // the name is taken
        "FilterCtrl::New::Unknown_cls::U\n" // no such class
        "FilterCtrl::Delete::Nothing\n"
        "FilterCtrl::Move::Nothing::0\n"
        "FilterCtrl::Filter::Nothing::Width::Width::Key::0::SetValue::3\n"
        "FilterCtrl::ReadAttribute::Glare_cls::Nothing::Begin\n"
        "ConfItemList::Begin::FilterCtrl::Filter::Nothing\nType=1\nConfItemList::End\n"
        "ReadAttribute::End\n");
    EXPECT_EQ(ChainText(), strBefore);
    EXPECT_EQ(GpCFilterCtrl->GetCount(), 1);
    // Tags reach the groups and members of the chain.
    EXPECT_NE(GpCFilterCtrl->GetPCParamGroup("FilterCtrl::Filter::B::Width"), nullptr);
    EXPECT_NE(GpCFilterCtrl->GetPCParameter("B::Width::Width"), nullptr);
    EXPECT_EQ(GpCFilterCtrl->GetPCParameter("B::Width::Nothing"), nullptr);
    std::vector<wxString> vStrTag;
    GpCFilterCtrl->GetVstrParamTag(vStrTag);
    ASSERT_EQ(vStrTag.size(), 1u);
    EXPECT_EQ(vStrTag[0], "FilterCtrl::Filter::B::Width::Width");
}

TEST_F(FilterCommandTest, PanelCopyWritesItsValuesToTheFilterAsOneUndoableStep) {
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Glare_cls", "G"), "G");
    auto* pGlare = static_cast<Glare_cls*>(Filter("G"));
    GlareBuffer_cls buffer(pGlare);
    const wxString strBefore = ChainText();
    // Edits of the copy leave the filter alone.
    buffer.mCNumber.SetBodyFromData(wxString("6"));
    buffer.GetPCParamGroup("Width")->SetInitValue(24.0);
    buffer.GetPCParamGroup("Enh./Fade")->SetInitValue(3.0, 0.25);
    EXPECT_EQ(ChainText(), strBefore);
    const int index = GpCUndo->GetCurrent();
    ASSERT_TRUE(buffer.ForceSrcToSyncBuffer());
    EXPECT_EQ(GpCUndo->GetCurrent(), index + 1);
    EXPECT_EQ(pGlare->mCNumber.GetBodyINT(), 6);
    EXPECT_DOUBLE_EQ(pGlare->GetValue("Enh./Fade", 0.0, 0.0, 0), 3.0);
    const wxString strAfter = ChainText();
    EXPECT_NE(strAfter, strBefore);
    GpCUndo->Undo();
    EXPECT_EQ(ChainText(), strBefore);
    // A fresh copy reads the filter as it now is; with nothing changed nothing is pushed.
    GpCUndo->Redo();
    GlareBuffer_cls again(pGlare);
    EXPECT_EQ(again.mCNumber.GetBodyINT(), 6);
    EXPECT_FALSE(again.ForceSrcToSyncBuffer());
    EXPECT_EQ(ChainText(), strAfter);
}

TEST_F(FilterCommandTest, SelectedKeysMoveAndUndoAsOneStep) {
    ASSERT_EQ(GpCFilterCtrl->AddFilterCommand("Exposure_cls", "E"), "E");
    const wxString strTag = "FilterCtrl::Filter::E::Gamma::Gamma";
    Parameter_cls* pParam = GpCFilterCtrl->GetPCParameter(strTag);
    ASSERT_NE(pParam, nullptr);
    ASSERT_TRUE(GpCFilterCtrl->SetFilterParamCommand("E", "Gamma", 0, 1.0)); // the key at 0
    pParam->InsertKeyCommand(0.5, strTag, 0, 1.0, true);
    ASSERT_EQ(pParam->GetKeyNum(), 2);
    const wxString strBefore = ChainText();
    ASSERT_TRUE(GpCFilterCtrl->SelectKeyFrame(strTag, 1, true, false, -1.0));
    GpCFilterCtrl->MoveSelectedTLKeyCommand(0.25, 0.0);
    EXPECT_NEAR(pParam->mVCKey[1].mX, 0.75, 1e-9);
    GpCUndo->Undo();
    EXPECT_NEAR(pParam->mVCKey[1].mX, 0.5, 1e-9);
    GpCFilterCtrl->DeselectKeyFrame();
    EXPECT_EQ(pParam->GetSelectedKeyNum(), 0);
    EXPECT_FALSE(
        GpCFilterCtrl->SelectKeyFrame("FilterCtrl::Filter::E::Gamma::Nothing", 0, true, false, -1.0));
}
