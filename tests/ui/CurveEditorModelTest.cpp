// The curve editors without a window: the plot's mapping between values and pixels, the
// snapping of positions (frames, or the 1/1024 grid of colour curves), the hit regions of keys
// and curves, what a press, drag and release make of the keys (the command texts, undo and
// redo), and the whole-curve tools of the colour-curve editor (presets, alpha templates, flip,
// swap, the colour of a stop) read back as the curve's 1025 texels.
#include "ColorCurveTemplate_cls.h"
#include "ColorCurve_cls.h"
#include "GraphColorCurve_cls.h"
#include "GraphKeyEdit_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObj_cls.h"
#include "ServicesFixture.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

namespace {

// A plot of 200 by 100 pixels inside margins: x 0 .. 1 over 200 pixels, y 0 .. 5 over 100.
GraphGeom_cls MakeGeom(double x0, double x1, double y0, double y1) {
    GraphGeom_cls geom;
    geom.mLeft = 40;
    geom.mRight = 10;
    geom.mTop = 5;
    geom.mBottom = 15;
    geom.SetSize(250, 120);
    geom.SetXRange(x0, x1);
    geom.SetYRange(y0, y1);
    return geom;
}

// The last text pushed on the undo list: the do text of the last step.
wxString LastDoText() {
    wxString str;
    const int from = GpCUndo->GetCurrent() - 1;
    // A block is several pairs: from its opening line to the end.
    int first = from;
    int depth = 0;
    for (int i = from; i >= 0; --i) {
        const wxString& strDo = GpCUndo->mVStrDo[i];
        if (strDo.StartsWith("CloseBlock"))
            ++depth;
        if (strDo.StartsWith("OpenBlock"))
            --depth;
        first = i;
        if (depth <= 0)
            break;
    }
    for (int i = first; i <= from; ++i)
        str += GpCUndo->mVStrDo[i];
    return str;
}

} // namespace

TEST(GraphGeomTest, MapsBothWaysZoomsAndPicksTics) {
    const GraphGeom_cls geom = MakeGeom(0.0, 1.0, 0.0, 5.0);
    struct Case {
        double x, v;
        int px, py;
    };
    for (const Case& c : {Case{0.0, 0.0, 40, 105}, Case{1.0, 5.0, 240, 5}, Case{0.5, 2.5, 140, 55},
                          Case{0.25, 1.0, 90, 85}, Case{-0.1, 6.0, 20, -15}}) {
        SCOPED_TRACE(wxString::Format("x %g, v %g", c.x, c.v).ToStdString());
        EXPECT_EQ(geom.GetDevX(c.x), c.px);
        EXPECT_EQ(geom.GetDevY(c.v), c.py);
        EXPECT_NEAR(geom.GetXFromDev(c.px), c.x, 1e-12);
        EXPECT_NEAR(geom.GetYFromDev(c.py), c.v, 1e-12);
    }
    EXPECT_TRUE(geom.IsInPlot(40, 5));
    EXPECT_FALSE(geom.IsInPlot(39, 50));
    EXPECT_FALSE(geom.IsInPlot(100, 106));

    GraphGeom_cls zoomed = geom;
    zoomed.Zoom(2.0, 90, 85, true, false); // the point under the mouse stays, half the range shows
    EXPECT_NEAR(zoomed.GetXFromDev(90), 0.25, 1e-12);
    EXPECT_NEAR(zoomed.mX1 - zoomed.mX0, 0.5, 1e-12);
    EXPECT_DOUBLE_EQ(zoomed.mY1, 5.0);
    zoomed.Pan(20, -10); // the content follows the mouse: 20 px right, 10 px up
    EXPECT_NEAR(zoomed.GetXFromDev(110), 0.25, 1e-12);
    EXPECT_NEAR(zoomed.GetYFromDev(75), 1.0, 1e-12);

    GraphGeom_cls framed = geom;
    framed.FrameAll(0.2, 0.6, 3.0, 3.0); // a flat set gets half a unit, else a tenth each side
    EXPECT_NEAR(framed.mX0, 0.16, 1e-12);
    EXPECT_NEAR(framed.mX1, 0.64, 1e-12);
    EXPECT_NEAR(framed.mY0, 2.5, 1e-12);
    EXPECT_NEAR(framed.mY1, 3.5, 1e-12);

    for (auto [range, pixels, step] : {std::tuple{1.0, 200, 0.5}, std::tuple{100.0, 400, 20.0},
                                       std::tuple{0.03, 300, 0.005}, std::tuple{7.0, 100, 5.0}})
        EXPECT_NEAR(GraphGeom_cls::GetTicStep(range, pixels, 50), step, step * 1e-9)
            << range << " " << pixels;
}

class CurveEditorModelTest : public ServicesFixture<ServiceLayer_enum::Viewer> {
protected:
    void SetUp() override {
        ServicesFixture::SetUp();
        GpCTimeCtrl->mCFrameMax.SetBodyFromData(100LL);
        // Box: Position x keyed (0, 0) and (0.5, 2), both linear.
        RunText("SceneObjCtrl::Obj::Box::Position::x::TimeDepend=1\n"
                "SceneObjCtrl::Obj::Box::Position::x::InsertKey::1::0.5::0::2::1::1\n");
        mpX = &Group("Box", "Position")->mVCParam[0];
        ASSERT_EQ(mpX->GetKeyNum(), 2);
        mStrParticle = GpCSceneObjCtrl->AppendSceneObjCommand("Particle", wxString());
        ASSERT_FALSE(mStrParticle.empty());
        mpCurve = dynamic_cast<ColorCurve_cls*>(
            GpCSceneObjCtrl->GetPCFromName(mStrParticle)->GetPCAttributeFromAttribName("ColorCurve_cls", 0));
        ASSERT_NE(mpCurve, nullptr);
        GpCUndo->Clear();
    }
    ParamGroup_cls* Group(const wxString& strObj, const wxString& strGroup) {
        return GpCSceneObjCtrl->GetPCFromName(strObj)->GetPCParamGroup(wxString(), strGroup);
    }
    // The time editor on Box's x: NT 0 .. 1 over 200 px, values 0 .. 5 over 100 px.
    void TimeEdit(GraphKeyEdit_cls& edit) {
        edit.SetChannels({GraphChannel_cls{"SceneObjCtrl::Obj::Box::Position::x", mpX, "x"}});
        edit.GetGeom() = MakeGeom(0.0, 1.0, 0.0, 5.0);
    }
    // The colour editor on the particle's curve: 0 .. 1 both ways.
    void ColorEdit(GraphKeyEdit_cls& edit) {
        const wxString strTag = "SceneObjCtrl::Obj::" + mStrParticle + "::ColorCurve::ColorCurve::";
        std::vector<GraphChannel_cls> v;
        for (int c = 0; c < 4; ++c)
            v.push_back(GraphChannel_cls{strTag + mpCurve->mVCParam[c].GetStrName(), &mpCurve->mVCParam[c],
                                         mpCurve->mVCParam[c].GetStrName()});
        edit.SetChannels(v);
        edit.GetGeom() = MakeGeom(0.0, 1.0, 0.0, 1.0);
    }
    // The curve's texel i as RGBA bytes.
    std::array<int, 4> Texel(int i) {
        mpCurve->PrepareTexture(false, 1.0f, true);
        const unsigned char* p = &mpCurve->mVTextureBytes[4 * static_cast<size_t>(i)];
        return {p[0], p[1], p[2], p[3]};
    }

    Parameter_cls* mpX = nullptr;
    wxString mStrParticle;
    ColorCurve_cls* mpCurve = nullptr;
};

TEST_F(CurveEditorModelTest, SnapsToFramesOrToTheColourGrid) {
    GraphKeyEdit_cls time(false), colour(true);
    struct Case {
        double x, time, colour;
    };
    for (const Case& c :
         {Case{0.123, 0.12, 126.0 / 1024}, Case{0.1251, 0.13, 128.0 / 1024}, Case{0.0004, 0.0, 0.0},
          Case{0.00049, 0.0, 1.0 / 1024}, Case{0.9996, 1.0, 1.0}, Case{0.5, 0.5, 0.5}}) {
        SCOPED_TRACE(wxString::Format("x %g", c.x).ToStdString());
        EXPECT_NEAR(time.SnapX(c.x), c.time, 1e-7);
        EXPECT_DOUBLE_EQ(colour.SnapX(c.x), c.colour);
        // Snapped positions are whole steps of the grid.
        EXPECT_DOUBLE_EQ(std::fmod(colour.SnapX(c.x) * 1024.0, 1.0), 0.0);
    }
}

TEST_F(CurveEditorModelTest, HitRegionsOfKeysAndCurves) {
    GraphKeyEdit_cls edit(false);
    TimeEdit(edit);
    // The key (0.5, 2) is at pixel (140, 65); the key (0, 0) at (40, 105).
    struct Case {
        int px, py, channel, key;
    };
    for (const Case& c :
         {Case{140, 65, 0, 1}, Case{146, 59, 0, 1}, Case{134, 71, 0, 1}, Case{147, 65, -1, -1},
          Case{140, 72, -1, -1}, Case{40, 105, 0, 0}, Case{90, 85, -1, -1}}) {
        SCOPED_TRACE(wxString::Format("pixel %d %d", c.px, c.py).ToStdString());
        const GraphKeyEdit_cls::Hit_cls hit = edit.HitKey(c.px, c.py);
        EXPECT_EQ(hit.mChannel, c.channel);
        EXPECT_EQ(hit.mKey, c.key);
    }
    // The curve: at x 0.25 the value is 1 (pixel 85); six pixels off still hit, seven do not.
    EXPECT_EQ(edit.HitCurve(90, 85), 0);
    EXPECT_EQ(edit.HitCurve(90, 91), 0);
    EXPECT_EQ(edit.HitCurve(90, 92), -1);
    // A locked channel takes no clicks, no moves and no new keys.
    RunText("SceneObjCtrl::Obj::Box::Position::x::Locked=1\n");
    EXPECT_FALSE(edit.HitKey(140, 65).IsHit());
    EXPECT_EQ(edit.HitCurve(90, 85), -1);
    mpX->mVCKey[1].mbSelected = true;
    edit.MoveSelected(0.1, 0.0);
    edit.InsertKey(0, 0.25, 3.0);
    EXPECT_DOUBLE_EQ(mpX->mVCKey[1].mX, 0.5);
    EXPECT_EQ(mpX->GetKeyNum(), 2);
    RunText("SceneObjCtrl::Obj::Box::Position::x::Locked=0\n");
    // A channel that is not the active one takes no clicks.
    edit.SetActiveChannel(1);
    EXPECT_FALSE(edit.HitKey(140, 65).IsHit());
}

TEST_F(CurveEditorModelTest, DragMakesOneMoveCommandThatUndoes) {
    struct Case {
        const char* what;
        int dx, dy; // pixels of the drag
        bool bCommand;
        double x, v; // key 1 after the release
        const char* strDo;
    };
    const Case cases[] = {
        {"right 20 px and up 10 px: a tenth later, half a unit higher", 20, -10, true, 0.6, 2.5,
         "OpenBlock::MoveKeyAndSort\nOpenBlock::MoveKeyAndSort\n"
         "SceneObjCtrl::Obj::Box::Position::x::Key::1::SetX::0.6\n"
         "SceneObjCtrl::Obj::Box::Position::x::Key::1::SetValue::2.5\n"
         "SceneObjCtrl::Obj::Box::Position::x::SortKey\n"
         "CloseBlock::MoveKeyAndSort\nCloseBlock::MoveKeyAndSort\n"},
        {"left 3 px: under the drag threshold, nothing", -3, 0, false, 0.5, 2.0, ""},
        {"left 7 px: 0.465 rounds to frame 47", -7, 0, true, 0.47, 2.0,
         "OpenBlock::MoveKeyAndSort\nOpenBlock::MoveKeyAndSort\n"
         "SceneObjCtrl::Obj::Box::Position::x::Key::1::SetX::0.47\n"
         "SceneObjCtrl::Obj::Box::Position::x::SortKey\n"
         "CloseBlock::MoveKeyAndSort\nCloseBlock::MoveKeyAndSort\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        GraphKeyEdit_cls edit(false);
        TimeEdit(edit);
        const int steps = GpCUndo->GetCurrent();
        edit.Press(140, 65, false, false, false);
        ASSERT_EQ(edit.GetDragMode(), GraphKeyEdit_cls::DRAG_KEYS);
        // While the drag runs the key moves live, for the pictures; the release makes the command.
        edit.Drag(140 + c.dx, 65 + c.dy);
        EXPECT_NEAR(mpX->mVCKey[1].mX, c.x, 1e-6) << "live";
        edit.Drag(140 + c.dx / 2, 65 + c.dy / 2);
        edit.Drag(140 + c.dx, 65 + c.dy);
        EXPECT_EQ(edit.Release(140 + c.dx, 65 + c.dy), c.bCommand);
        EXPECT_NEAR(mpX->mVCKey[1].mX, c.x, 1e-6);
        EXPECT_NEAR(mpX->mVCKey[1].mValue, c.v, 1e-12);
        if (!c.bCommand) {
            EXPECT_EQ(GpCUndo->GetCurrent(), steps);
            continue;
        }
        EXPECT_EQ(LastDoText(), c.strDo);
        GpCUndo->Undo();
        EXPECT_NEAR(mpX->mVCKey[1].mX, 0.5, 1e-12);
        EXPECT_NEAR(mpX->mVCKey[1].mValue, 2.0, 1e-12);
        EXPECT_EQ(GpCUndo->GetCurrent(), steps);
        GpCUndo->Redo();
        EXPECT_NEAR(mpX->mVCKey[1].mX, c.x, 1e-6);
        // The project text written after the edit reads back to the same keys.
        const wxString strPath = mDir.Path("moved.ovp");
        ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
        GpCUndo->Undo();
        ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
        mpX = &Group("Box", "Position")->mVCParam[0];
        EXPECT_NEAR(mpX->mVCKey[1].mX, c.x, 1e-6);
        EXPECT_NEAR(mpX->mVCKey[1].mValue, c.v, 1e-12);
        RunText("SceneObjCtrl::Obj::Box::Position::x::Key::1::SetX::0.5\n"
                "SceneObjCtrl::Obj::Box::Position::x::Key::1::SetValue::2\n");
    }
}

TEST_F(CurveEditorModelTest, InsertDeleteAndKeyTypeAreCommands) {
    GraphKeyEdit_cls edit(false);
    TimeEdit(edit);
    // Ctrl+click on the curve at x 0.25 and value 3: a key there, selected.
    edit.Press(90, 45, false, true, false);
    ASSERT_EQ(mpX->GetKeyNum(), 3);
    EXPECT_NEAR(mpX->mVCKey[1].mX, 0.25, 1e-7);
    EXPECT_NEAR(mpX->mVCKey[1].mValue, 3.0, 1e-12);
    EXPECT_TRUE(mpX->mVCKey[1].mbSelected);
    edit.SetSelectedType(2, 0.5);
    EXPECT_EQ(mpX->mVCKey[1].mType, 2);
    EXPECT_DOUBLE_EQ(mpX->mVCKey[1].mEaseFactor, 0.5);
    GpCUndo->Undo();
    EXPECT_EQ(mpX->mVCKey[1].mType, 1);
    edit.DeleteSelected();
    EXPECT_EQ(mpX->GetKeyNum(), 2);
    GpCUndo->Undo();
    EXPECT_EQ(mpX->GetKeyNum(), 3);
    GpCUndo->Undo();
    GpCUndo->Undo();
    EXPECT_EQ(mpX->GetKeyNum(), 2);
    // A box from (30, 110) to (150, 60) takes both keys; a shift click on one drops it.
    edit.Press(30, 110, false, false, false);
    edit.Drag(150, 60);
    edit.Release(150, 60);
    EXPECT_EQ(edit.GetSelectedKeyNum(), 2);
    edit.Press(40, 105, true, false, false);
    EXPECT_EQ(edit.GetSelectedKeyNum(), 1);
}

TEST_F(CurveEditorModelTest, ColourDragStopsAtTheEdgeOnTheGridAndMovesTheStop) {
    GraphKeyEdit_cls edit(true);
    ColorEdit(edit);
    edit.SetLinkX(true);
    // "Red Yellow": stops at 0 and 1. A ctrl click 5 px under the G curve at 1/2 (0.5) puts a
    // stop there with G at the mouse's 0.45 and the other channels as they were.
    const int px = edit.GetGeom().GetDevX(0.5), py = edit.GetGeom().GetDevY(0.45);
    edit.Press(px, py, false, true, false);
    for (int c = 0; c < 4; ++c)
        ASSERT_EQ(mpCurve->mVCParam[c].GetKeyNum(), 3) << c;
    EXPECT_EQ(Texel(512), (std::array<int, 4>{255, 114, 0, 127})); // 512/1025 stands just before 1/2
    // A stop selected through its R key (at the top) is all four keys; dragged 37 px right it
    // lands on the grid, the four keys together.
    edit.Press(px, edit.GetGeom().GetDevY(mpCurve->mVCParam[0].mVCKey[1].mValue), false, false, false);
    EXPECT_EQ(edit.GetSelectedKeyNum(), 4); // the stop: one key on each channel
    edit.Drag(px + 37, py);
    edit.Release(px + 37, py);
    const double x = mpCurve->mVCParam[1].mVCKey[1].mX;
    // On the grid, to the six digits of the command text ("%g").
    EXPECT_NEAR(x * 1024.0, std::round(x * 1024.0), 1e-3) << x;
    EXPECT_NEAR(x, 0.5 + 37 * 0.005, 0.001);
    for (int c = 0; c < 4; ++c)
        EXPECT_DOUBLE_EQ(mpCurve->mVCParam[c].mVCKey[1].mX, x) << c;
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(mpCurve->mVCParam[1].mVCKey[1].mX, 0.5);
    // Past the right edge the whole selection stops at 1.
    edit.Press(px, py, false, false, false);
    edit.Drag(px + 300, py);
    edit.Release(px + 300, py);
    EXPECT_DOUBLE_EQ(mpCurve->mVCParam[1].mVCKey.back().mX, 1.0);
    EXPECT_EQ(mpCurve->mVCParam[1].GetKeyNum(), 2); // it took the place of the stop at 1
}

// Presets of two and of seven stops, under each alpha template, and what the editor makes of them.
TEST_F(CurveEditorModelTest, PresetTemplatesGiveTheExactEntries) {
    struct Row {
        double x, r, g, b;
    };
    struct Preset {
        int index;
        std::vector<Row> rows;
    };
    const Preset presets[] = {
        {0, {{0, 1, 0, 0}, {1, 1, 1, 0}}},
        {5,
         {{0, 0.03, 0, 0.07},
          {0.167, 0.32, 0, 0.77},
          {0.333, 0, 0.31, 0.59},
          {0.5, 0, 0.78, 0},
          {0.666, 0.82, 0.56, 0},
          {0.833, 0.84, 0, 0},
          {1, 0.26, 0, 0}}},
        {11,
         {{0, 0, 0, 0},
          {0.365, 0.11, 0.06, 0.56},
          {0.75, 0.92, 0.04, 0.04},
          {0.864, 1, 0.53, 0},
          {0.896, 0.94, 0.93, 0.22},
          {0.934, 0.53, 0.39, 0.03},
          {1, 0, 0, 0}}},
    };
    auto expected = [](const Preset& p, double x, int c) {
        for (size_t k = 0; k + 1 < p.rows.size(); ++k) {
            const Row& a = p.rows[k];
            const Row& b = p.rows[k + 1];
            if (x >= a.x && x <= b.x) {
                const double u = (x - a.x) / (b.x - a.x);
                const double va = c == 0 ? a.r : c == 1 ? a.g : a.b, vb = c == 0 ? b.r : c == 1 ? b.g : b.b;
                return (1 - u) * va + u * vb;
            }
        }
        return 0.0;
    };
    // Keep the user's alpha: make it a step to 0.5 first.
    ColorCurveTemplate_cls::SetAlphaKeys(ColorCurveTemplate_cls::ALPHA_OPAQUE, mpCurve);
    mpCurve->mVCParam[3].mVCKey[1].mValue = 0.5;
    for (const Preset& preset : presets) {
        for (int alphaTemplate = 0; alphaTemplate < ColorCurveTemplate_cls::ALPHA_COUNT; ++alphaTemplate) {
            SCOPED_TRACE(
                wxString::Format("preset %d, alpha template %d", preset.index, alphaTemplate).ToStdString());
            const std::vector<Row>& rows = preset.rows;
            ASSERT_TRUE(ColorCurveTemplate_cls::ApplyPresetCommand(*mpCurve, wxString(), preset.index,
                                                                   alphaTemplate));
            for (int i : {0, 1, 171, 340, 512, 700, 830, 900, 1000, 1024}) {
                const double x = i / 1025.0;
                const std::array<int, 4> t = Texel(i);
                for (int c = 0; c < 3; ++c)
                    EXPECT_NEAR(t[c], static_cast<int>(expected(preset, x, c) * 255.0), 1)
                        << "entry " << i << " channel " << c;
                const double alpha[4] = {1.0 - x * 0.5, x, 1.0, 1.0 - x};
                EXPECT_NEAR(t[3], static_cast<int>(alpha[alphaTemplate] * 255.0), 1) << "entry " << i;
            }
            EXPECT_EQ(mpCurve->mVCParam[0].GetKeyNum(), static_cast<int>(rows.size()));
            // One step: undo gives back the curve before.
            GpCUndo->Undo();
            EXPECT_NEAR(Texel(1024)[3], 127, 1);
        }
    }
}

TEST_F(CurveEditorModelTest, FlipSwapAndStopColourAreUndoable) {
    ASSERT_TRUE(ColorCurveTemplate_cls::ApplyPresetCommand(*mpCurve, wxString(), 0, 1)); // red to yellow
    struct Case {
        const char* what;
        std::function<void()> funcDo;
        std::array<int, 4> first, last; // texels 0 and 1024 after
    };
    const Case cases[] = {
        {"Flip Color: yellow to red, alpha falling",
         [&] { ColorCurveTemplate_cls::FlipCommand(*mpCurve, wxString()); },
         {255, 255, 0, 255},
         {255, 0, 0, 0}},
        {"Swap RGB: blue to magenta",
         [&] { ColorCurveTemplate_cls::SwapRGBCommand(*mpCurve, wxString()); },
         {0, 0, 255, 0},
         {0, 254, 255, 254}},
        {"the stop at 0 becomes white",
         [&] { ColorCurveTemplate_cls::SetStopColorCommand(*mpCurve, wxString(), 0.0, 1.0, 1.0, 1.0); },
         {255, 255, 255, 0},
         {255, 255, 0, 254}},
        {"a new stop at 1/2 becomes black",
         [&] { ColorCurveTemplate_cls::SetStopColorCommand(*mpCurve, wxString(), 0.5, 0.0, 0.0, 0.0); },
         {255, 0, 0, 0},
         {254, 254, 0, 254}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const std::array<int, 4> before0 = Texel(0), before1 = Texel(1024);
        c.funcDo();
        EXPECT_EQ(Texel(0), c.first);
        EXPECT_EQ(Texel(1024), c.last);
        GpCUndo->Undo();
        EXPECT_EQ(Texel(0), before0);
        EXPECT_EQ(Texel(1024), before1);
    }
    // The black stop in the middle: texel 512 stands just before 1/2.
    ColorCurveTemplate_cls::SetStopColorCommand(*mpCurve, wxString(), 0.5, 0.0, 0.0, 0.0);
    EXPECT_EQ(Texel(512)[0], 0);
    EXPECT_EQ(Texel(513)[0], 0);
}

TEST_F(CurveEditorModelTest, BarShowsTheCurveOverTheChecker) {
    ColorCurveTemplate_cls::ApplyPresetCommand(*mpCurve, wxString(), 2, 1); // black to white, alpha rising
    const GraphGeom_cls geom = MakeGeom(0.0, 1.0, 0.0, 1.0);
    std::vector<unsigned char> vRGB;
    GraphColorCurve_cls::GetBarPixels(*mpCurve, geom, geom.GetPlotLeft(), 201, 10, vRGB);
    auto pixel = [&](int x, int y) {
        const unsigned char* p = &vRGB[(static_cast<size_t>(y) * 201 + x) * 3];
        return std::array<int, 3>{p[0], p[1], p[2]};
    };
    // At 0 the curve is transparent: the checker (light, then dark after 5 pixels).
    EXPECT_EQ(pixel(0, 0), (std::array<int, 3>{204, 204, 204}));
    EXPECT_EQ(pixel(0, 5), (std::array<int, 3>{128, 128, 128}));
    // At 1 it is opaque white; at 1/2 half grey over the checker.
    EXPECT_EQ(pixel(200, 0), (std::array<int, 3>{255, 255, 255}));
    EXPECT_EQ(pixel(100, 0)[0], static_cast<int>(0.5 * 127 + 0.5 * 204));
}
