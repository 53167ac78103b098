// The graph editor and the colour-curve editor in a real window on the test display, driven by
// the pointer of the display (wxUIActionSimulator): a key dragged in the graph editor and taken
// back by undo; a key added to a colour curve changes the curve's colour at that entry, in the
// bar on screen and in the texels, and the 3D view paints again. The editors follow the
// outliner's selection, repaint only for their own update names, and keep their view in the
// layout. Screenshots go beside the other window tests'.
#include "ColorCurveEditor_cls.h"
#include "ColorCurve_cls.h"
#include "GraphColorCurve_cls.h"
#include "GraphCurve_cls.h"
#include "GraphEditor_cls.h"
#include "Outliner_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"
#include "View3DPanel_cls.h"
#include "ViewWindowFixture.h"

#include <wx/uiaction.h>

#include <cstdlib>

namespace {

const wxString kEditorsLayout = Split('V', 560, Split('H', 330, Leaf("GRAPH"), Leaf("COLOR_CURVE")),
                                      Split('H', 420, Leaf("VIEW3D"), Leaf("OUTLINER")));

} // namespace

class CurveEditorsWindowTest : public ViewWindowFixture<ServiceLayer_enum::Filter> {
protected:
    void SetUp() override {
        ViewWindowFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(kEditorsLayout);
        mpGraph = FindLeaf<GraphEditor_cls>();
        mpColor = FindLeaf<ColorCurveEditor_cls>();
        mpView = FindLeaf<View3DPanel_cls>();
        mpOutliner = FindLeaf<Outliner_cls>();
        ASSERT_TRUE(mpGraph && mpColor && mpView && mpOutliner);
        ASSERT_TRUE(SettleCanvas(*mpView->GetPCCanvas())) << "the view never painted";
    }
    // The screen point of a client point of a window.
    static wxPoint Screen(wxWindow* pWindow, wxPoint p) { return pWindow->ClientToScreen(p); }
    // A press, a walk in steps and a release of the left button, as the user's hand does it.
    void DragOnScreen(wxPoint from, wxPoint to, int steps) {
        wxUIActionSimulator sim;
        sim.MouseMove(from);
        RunLoop(100);
        sim.MouseDown();
        RunLoop(100);
        for (int i = 1; i <= steps; ++i) {
            sim.MouseMove(from + wxPoint((to.x - from.x) * i / steps, (to.y - from.y) * i / steps));
            RunLoop(40);
        }
        sim.MouseUp();
        RunLoop(200);
    }

    GraphEditor_cls* mpGraph = nullptr;
    ColorCurveEditor_cls* mpColor = nullptr;
    View3DPanel_cls* mpView = nullptr;
    Outliner_cls* mpOutliner = nullptr;
};

TEST_F(CurveEditorsWindowTest, DragAKeyInTheGraphEditorAndUndoIt) {
    SKIP_WITHOUT_SCREENSHOTS();
    RunText("SceneObjCtrl::Obj::Box::Position::x::TimeDepend=1\n"
            "SceneObjCtrl::Obj::Box::Position::x::InsertKey::1::0.5::0::2::1::1\n");
    Parameter_cls& x =
        GpCSceneObjCtrl->GetPCFromName("Box")->GetPCParamGroup(wxString(), "Position")->mVCParam[0];
    // The graph follows the outliner: Box's one animated channel shows, framed.
    mpOutliner->SelectObject("Box");
    Flush();
    RunLoop(300);
    GraphKeyEdit_cls& edit = mpGraph->GetEdit();
    ASSERT_EQ(edit.GetChannels().size(), 1u);
    EXPECT_EQ(edit.GetChannels()[0].mStrTag, "SceneObjCtrl::Obj::Box::Position::x");
    GraphCurve_cls* pPlot = mpGraph->GetPCGraph();
    const wxPoint key(edit.GetGeom().GetDevX(0.5), edit.GetGeom().GetDevY(2.0));
    ASSERT_TRUE(edit.GetGeom().IsInPlot(key.x, key.y));
    const double expectedX = edit.SnapX(0.5 - 60 * edit.GetGeom().GetXPerPixel());
    const int steps = GpCUndo->GetCurrent();

    DragOnScreen(Screen(pPlot, key), Screen(pPlot, key - wxPoint(60, 0)), 6);
    EXPECT_GT(GpCUndo->GetCurrent(), steps);
    EXPECT_NEAR(x.mVCKey[1].mX, expectedX, 1e-5);
    EXPECT_LT(x.mVCKey[1].mX, 0.5);
    EXPECT_DOUBLE_EQ(x.mVCKey[1].mValue, 2.0);
    Flush();
    RunLoop(200);
    wxImage image;
    ASSERT_TRUE(TakeScreenshot("graph-editor-drag.png", image));
    // The selected key's mark (yellow) stands where the key went, not where it was.
    auto isMark = [&](wxPoint client) {
        const wxPoint s = Screen(pPlot, client);
        return image.GetRed(s.x, s.y) > 200 && image.GetGreen(s.x, s.y) > 180 &&
               image.GetBlue(s.x, s.y) < 120;
    };
    const wxPoint moved(edit.GetGeom().GetDevX(x.mVCKey[1].mX), edit.GetGeom().GetDevY(2.0));
    EXPECT_TRUE(isMark(moved));
    EXPECT_FALSE(isMark(key));

    // Undo from the ribbon, one step: the key is back, and the graph shows it there.
    SendRibbonClick(mpFrame, 5010);
    RunPendingEvents();
    Flush();
    RunLoop(200);
    EXPECT_DOUBLE_EQ(x.mVCKey[1].mX, 0.5);
    EXPECT_EQ(GpCUndo->GetCurrent(), steps);
}

TEST_F(CurveEditorsWindowTest, AColourKeyChangesTheColourAtItsEntry) {
    SKIP_WITHOUT_SCREENSHOTS();
    const wxString strName = GpCSceneObjCtrl->AppendSceneObjCommand("Particle", wxString());
    ASSERT_FALSE(strName.empty());
    Flush();
    RunLoop(300);
    ColorCurve_cls* pCurve = mpColor->GetPCCurve();
    ASSERT_NE(pCurve, nullptr) << "the editor shows the active object's curve";
    EXPECT_EQ(mpColor->GetStrCurveTag(), "SceneObjCtrl::Obj::" + strName + "::ColorCurve");
    GraphColorCurve_cls* pBar = mpColor->GetPCGraphColorCurve();
    GraphKeyEdit_cls& edit = mpColor->GetEdit();
    auto texel = [&](int i) {
        pCurve->PrepareTexture(false, 1.0f, true);
        return static_cast<int>(pCurve->mVTextureBytes[4 * static_cast<size_t>(i) + 1]);
    };
    // "Red Yellow": green rises with the position; entry 768 stands at 0.749.
    EXPECT_EQ(texel(768), 191);
    wxImage before, after;
    ASSERT_TRUE(TakeScreenshot("colour-curve-before.png", before));

    // The selector on G (all, R, G), then a ctrl click at position 3/4, value 0.2: a G key.
    mpColor->StepChannelSelector();
    mpColor->StepChannelSelector();
    ASSERT_EQ(edit.GetActiveChannel(), 1);
    const long long paintsBefore = mpView->GetPCCanvas()->GetScenePaintCount();
    const wxPoint click(edit.GetGeom().GetDevX(0.75), edit.GetGeom().GetDevY(0.2));
    wxUIActionSimulator sim;
    sim.MouseMove(Screen(pBar, click));
    RunLoop(100);
    sim.KeyDown(WXK_CONTROL);
    sim.MouseClick();
    sim.KeyUp(WXK_CONTROL);
    RunLoop(200);
    Flush();
    RunLoop(400);
    const Parameter_cls& g = pCurve->mVCParam[1];
    ASSERT_EQ(g.GetKeyNum(), 3);
    EXPECT_NEAR(g.mVCKey[1].mX, 0.75, 1e-6);
    EXPECT_NEAR(g.mVCKey[1].mValue, 0.2, 0.011); // one pixel of the plot
    EXPECT_NEAR(texel(768), static_cast<int>(g.GetValue(768 / 1025.0) * 255.0), 0);
    EXPECT_LT(texel(768), 60);
    EXPECT_GT(mpView->GetPCCanvas()->GetScenePaintCount(), paintsBefore)
        << "the 3D view paints the new curve";

    ASSERT_TRUE(TakeScreenshot("colour-curve-key.png", after));
    // The bar at 3/4: green fell from about 191 (blended at alpha 0.75) to about 50.
    const wxPoint barPoint =
        Screen(pBar, wxPoint(edit.GetGeom().GetDevX(0.75), GraphColorCurve_cls::msBarHeight / 2));
    EXPECT_GT(before.GetGreen(barPoint.x, barPoint.y) - after.GetGreen(barPoint.x, barPoint.y), 80)
        << int(before.GetGreen(barPoint.x, barPoint.y)) << " " << int(after.GetGreen(barPoint.x, barPoint.y));
    EXPECT_GT(after.GetRed(barPoint.x, barPoint.y), 150);

    // One undo takes the key away again.
    GpCUndo->Undo();
    Flush();
    EXPECT_EQ(g.GetKeyNum(), 2);
    EXPECT_EQ(texel(768), 191);

    // The numeric panel: "Insert" at the typed position puts a stop on every channel, ">" and
    // "<" walk the stops, and the colour of the selected stop is set in one step.
    mpColor->StepChannelSelector(); // B
    mpColor->StepChannelSelector(); // A
    mpColor->StepChannelSelector(); // all
    ASSERT_EQ(edit.GetActiveChannel(), -1);
    mpColor->GetPCPosField()->ChangeValue("0.25");
    mpColor->InsertKeys();
    for (int c = 0; c < 4; ++c)
        EXPECT_EQ(pCurve->mVCParam[c].GetKeyNum(), 3) << c;
    double x = -1.0;
    ASSERT_TRUE(edit.GetSelectedX(x));
    EXPECT_DOUBLE_EQ(x, 0.25);
    mpColor->SelectAdjacentStop(1);
    ASSERT_TRUE(edit.GetSelectedX(x));
    EXPECT_DOUBLE_EQ(x, 1.0);
    mpColor->SelectAdjacentStop(-1);
    mpColor->SelectAdjacentStop(-1);
    ASSERT_TRUE(edit.GetSelectedX(x));
    EXPECT_DOUBLE_EQ(x, 0.0);
    mpColor->SelectAdjacentStop(1);
    // The numeric panel shows the stop at 1/4 of "Red Yellow": R 1, G 0.25.
    EXPECT_EQ(mpColor->GetPCValueField(0)->GetValue(), "1");
    EXPECT_EQ(mpColor->GetPCValueField(1)->GetValue(), "0.25");
    SendTextEnter(mpColor->GetPCValueField(1), "0.75");
    EXPECT_DOUBLE_EQ(pCurve->mVCParam[1].GetValue(0.25), 0.75);
    EXPECT_EQ(texel(256), 191); // 256/1025 stands just before the stop: 0.7495 nearly
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(pCurve->mVCParam[1].GetValue(0.25), 0.25);
    mpColor->SetKeyColor(0.0, 0.0, 1.0);
    pCurve->PrepareTexture(false, 1.0f, true);
    const unsigned char* pTexel = &pCurve->mVTextureBytes[4 * 256];
    EXPECT_EQ(pTexel[0], 0);
    EXPECT_EQ(pTexel[2], 254); // 256/1025 stands just before the blue stop at 1/4
    // Copy the blue stop's colour, paste it on the stop at 0.
    ASSERT_TRUE(mpColor->CopyColor());
    mpColor->SelectAdjacentStop(-1);
    ASSERT_TRUE(mpColor->PasteColor());
    pCurve->PrepareTexture(false, 1.0f, true);
    EXPECT_EQ(pCurve->mVTextureBytes[0], 0);
    EXPECT_EQ(pCurve->mVTextureBytes[2], 255);
    GpCUndo->Undo();
    GpCUndo->Undo();
    EXPECT_EQ(texel(256), 63); // "Red Yellow" again: green 0.2498

    // The whole curve through the clipboard: copied, replaced by "Black White", pasted back.
    SendMenu(mpColor, ID_MENU_EDITOR_COPY);
    mpColor->ApplyPreset(2);
    EXPECT_EQ(texel(256), 63); // Black White's green at 0.2498 is the same 63
    pCurve->PrepareTexture(false, 1.0f, true);
    EXPECT_EQ(pCurve->mVTextureBytes[4 * 1024], 254); // but its red at the end is white's
    SendMenu(mpColor, ID_MENU_EDITOR_PASTE);
    pCurve->PrepareTexture(false, 1.0f, true);
    EXPECT_EQ(pCurve->mVTextureBytes[4 * 1024], 255); // Red Yellow's red again
    GpCUndo->Undo();                                  // the paste
    GpCUndo->Undo();                                  // the preset

    // The ruler in data values: "Range" 2 to 10 labels the positions 0 .. 1.
    RunText("SceneObjCtrl::Obj::" + strName + "::ColorCurve::Range::min::Key::0::SetValue::2\n" +
            "SceneObjCtrl::Obj::" + strName + "::ColorCurve::Range::max::Key::0::SetValue::10\n");
    mpColor->OnTicsMode();
    EXPECT_DOUBLE_EQ(pBar->mXLabelOffset, 2.0);
    EXPECT_DOUBLE_EQ(pBar->mXLabelScale, 8.0);
    mpColor->OnTicsMode();
    EXPECT_DOUBLE_EQ(pBar->mXLabelScale, 1.0);
}

TEST_F(CurveEditorsWindowTest, RepaintOnlyForTheirOwnNamesAndKeepTheViewInTheLayout) {
    SKIP_WITHOUT_DISPLAY();
    RunLoop(300);
    GraphCurve_cls* pPlot = mpGraph->GetPCGraph();
    const int paints = pPlot->mPaintCount, bars = mpColor->GetPCGraphColorCurve()->mPaintCount;
    for (int i = 0; i < 20; ++i) {
        mpMain->UpdatePanels("IDLE");
        mpMain->UpdatePanels("CONSOLE");
        Flush();
        RunLoop(20);
    }
    EXPECT_EQ(pPlot->mPaintCount, paints) << "nothing changed, nothing painted";
    EXPECT_EQ(mpColor->GetPCGraphColorCurve()->mPaintCount, bars);
    mpMain->UpdatePanels("GRAPH");
    Flush();
    RunLoop(200);
    EXPECT_GT(pPlot->mPaintCount, paints);

    // While the clock plays, updates closer than the editors' pace are dropped.
    GpCTimeCtrl->StartPlayCommand(1);
    ASSERT_TRUE(GpCTimeCtrl->IsPlaying());
    const long pace = EditorBase_cls::msUpdateMillis;
    EditorBase_cls::msUpdateMillis = 60000;
    const int updates = mpGraph->mUpdateCount;
    for (int i = 0; i < 3; ++i) {
        mpMain->UpdatePanels("GRAPH");
        Flush();
    }
    EXPECT_EQ(mpGraph->mUpdateCount, updates + 1);
    EditorBase_cls::msUpdateMillis = 0;
    mpMain->UpdatePanels("GRAPH");
    Flush();
    EXPECT_EQ(mpGraph->mUpdateCount, updates + 2);
    EditorBase_cls::msUpdateMillis = pace;
    GpCTimeCtrl->StopPlayCommand();

    // The view and the modes are the panels' own blocks of the layout.
    mpGraph->GetEdit().GetGeom().SetXRange(0.25, 0.75);
    mpColor->SetMode(ColorCurveEditor_cls::MODE_STOPS);
    wxString strLayout;
    mpFrame->Serialize(strLayout, 0);
    EXPECT_NE(strLayout.Find("ConfItemList::Begin::ColorCuerveEditor\nColorCurveMode=1\nTemplateAlpha=0\n"),
              wxNOT_FOUND)
        << strLayout;
    EXPECT_NE(strLayout.Find("XRangeMin=0.25\nXRangeMax=0.75\n"), wxNOT_FOUND) << strLayout;
    ReadFrameLayout(strLayout.AfterFirst('\n').BeforeLast('F'));
    GraphEditor_cls* pGraph = FindLeaf<GraphEditor_cls>();
    ColorCurveEditor_cls* pColor = FindLeaf<ColorCurveEditor_cls>();
    ASSERT_TRUE(pGraph && pColor);
    EXPECT_DOUBLE_EQ(pGraph->GetEdit().GetGeom().mX0, 0.25);
    EXPECT_EQ(pColor->GetMode(), ColorCurveEditor_cls::MODE_STOPS);
}

TEST_F(CurveEditorsWindowTest, GraphFollowsTheOutlinerAndAChosenGroup) {
    SKIP_WITHOUT_DISPLAY();
    RunText("SceneObjCtrl::Obj::Box::Position::y::TimeDepend=1\n"
            "SceneObjCtrl::Obj::Camera::RotationEuler::x::TimeDepend=1\n");
    auto shown = [&] {
        std::vector<wxString> v;
        for (const GraphChannel_cls& channel : mpGraph->GetEdit().GetChannels())
            v.push_back(channel.mStrLabel);
        return v;
    };
    struct Case {
        const char* what;
        std::function<void()> funcDo;
        std::vector<wxString> channels;
    };
    const Case cases[] = {
        {"the outliner selects Box: its animated channel",
         [&] { mpOutliner->SelectObject("Box"); },
         {"Box Position y"}},
        {"a group chosen elsewhere shows alone, every member",
         [&] { mpMain->ProcAfterMath("SelectParamGroup", "SceneObjCtrl::Obj::Box::Scale"); },
         {"Scale x", "Scale y", "Scale z"}},
        {"a new selection in the outliner ends the choice",
         [&] { mpOutliner->SelectObject("Camera"); },
         {"Camera RotationEuler x"}},
        {"shift adds Box",
         [&] { GpCSceneObjCtrl->Select("Box", true, true, false); },
         {"Camera RotationEuler x", "Box Position y"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        c.funcDo();
        Flush();
        RunLoop(50);
        EXPECT_EQ(shown(), c.channels);
    }
}
