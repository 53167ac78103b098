// The camera's page drives the 3D view: with the view locked to the camera, a narrower view
// angle typed on the page enlarges the objects on screen (screenshots kept beside the others).
// And the preference window: its fields and shortcut keys go through the undo road and the
// settings file, and come back when the file is read.
#include "ScenePanelsFixture.h"

#include "MousePreference_cls.h"
#include "PreferenceDialog_cls.h"
#include "Preference_cls.h"
#include "PropertyFieldPage_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "Shortcut_cls.h"
#include "TimeCtrl_cls.h"
#include "View3DPanel_cls.h"
#include "ViewWindowFixture.h"

#include <wx/menu.h>

#include <array>
#include <cstdlib>

namespace {

class CameraPageViewTest : public ViewWindowFixture<ServiceLayer_enum::Filter> {};

// The number of canvas pixels whose colour differs by more than a small tolerance.
int CountDiffering(const wxImage& a, const wxImage& b, const wxRect& rect) {
    int count = 0;
    for (int y = rect.y; y < rect.GetBottom(); ++y)
        for (int x = rect.x; x < rect.GetRight(); ++x)
            if (std::abs(a.GetRed(x, y) - b.GetRed(x, y)) + std::abs(a.GetGreen(x, y) - b.GetGreen(x, y)) +
                    std::abs(a.GetBlue(x, y) - b.GetBlue(x, y)) >
                24)
                ++count;
    return count;
}

} // namespace

TEST_F(CameraPageViewTest, ViewAngleOnThePageChangesTheView) {
    SKIP_WITHOUT_SCREENSHOTS();
    ASSERT_TRUE(mpMain->OpenProjectMain(wxString(ORV_SOURCE_DIR) + "/examples/demo.ovp", true));
    ReadFrameLayout(Split('V', 600, Leaf("VIEW3D"), Leaf("PROPERTY")));
    View3DPanel_cls* pView = FindLeaf<View3DPanel_cls>();
    Property_cls* pProperty = FindLeaf<Property_cls>();
    ASSERT_TRUE(pView && pProperty);
    GLCanvas_cls* pCanvas = pView->GetPCCanvas();
    SceneObj_cls* pCamera = GpCSceneObjCtrl->GetPCFromName("Camera");
    ASSERT_NE(pCamera, nullptr);
    pCamera->GetPCParamGroup(wxString(), "Position")->SetInitValue(0.0, 0.3, 12.0);
    pView->GetView().mCLockToCamera.SetBodyFromDataBOOL(true);
    GpCSceneObjCtrl->Select("Camera", false, true, false);
    mpMain->ProcAfterMath("SelectObject", "Camera");
    mpMain->UpdatePanels("VIEW3D");
    ASSERT_TRUE(SettleCanvas(*pCanvas));

    auto shoot = [&](const wxString& strName, wxImage& image) {
        mpMain->UpdatePanels("VIEW3D");
        Flush();
        pCanvas->Refresh();
        RunLoop(400);
        ASSERT_TRUE(TakeScreenshot(strName, image));
    };
    auto* pPage = dynamic_cast<PropertyFieldPage_cls*>(pProperty->mpCPageKind);
    ASSERT_NE(pPage, nullptr);
    PropertyFieldPanel_cls& panel = *pPage->mpCFields;
    auto row = [&](const char* pKey) -> PropertyFieldPanel_cls::Row_cls& {
        return panel.mVRow.at(static_cast<size_t>(panel.FindField("CameraProp", pKey)));
    };
    const wxRect rect(pCanvas->GetScreenPosition(), pCanvas->GetClientSize());
    // A plain camera's view angle draws while recording (the view keeps its own angle while the
    // user works).
    GpCTimeCtrl->mbOutputRunning = true;
    wxImage before, after, back;
    shoot("camera-page-angle-before.png", before);
    GpCUndo->Clear();
    SendTextEnter(row("ViewAngle").mVPCMember[0], "20");
    Flush();
    shoot("camera-page-angle-after.png", after);
    // The planet fills much more of the picture at the narrower angle.
    EXPECT_GT(CountDiffering(before, after, rect), rect.width * rect.height / 20);
    // Undo brings the first picture back.
    GpCUndo->Undo();
    Flush();
    shoot("camera-page-angle-undone.png", back);
    EXPECT_LT(CountDiffering(before, back, rect), rect.width * rect.height / 200);
    GpCTimeCtrl->mbOutputRunning = false;
}

namespace {

class PreferenceWindowTest : public UiFixture {
protected:
    void RegisterLayers() override { RegisterServices<ServiceLayer_enum::All>(); }
};

} // namespace

TEST_F(PreferenceWindowTest, PreferencesAndShortcutsRoundTripThroughTheSettingsFile) {
    SKIP_WITHOUT_DISPLAY();
    ASSERT_TRUE(GpCPreference && GpCMousePreference && GpCShortcut);
    PreferenceDialog_cls* pDialog = PreferenceDialog_cls::GetInstance(mpFrame);
    PropertyFieldPanel_cls& panel = *pDialog->mpCFields;
    struct Case_cls {
        const char* pAttr;
        const char* pKey;
        const char* pInput;
        const char* pExpected;
    };
    const Case_cls vCase[] = {
        {"Preference", "MemoryLimitMB=", "2*1024", "2048"},
        {"Preference", "MemoryLimitTexMB=", "8", "16"}, // held to the range
        {"Preference", "GLDepthIndex=", "1", "1"},
        {"Preference", "GLDepthMax=", "500*2+1", "1001"},
        {"Preference", "RelativePath=", "0", "0"},
        {"Preference", "PrefetchLength=", "25", "25"},
        {"MousePreference", "InvertZoom=", "1", "1"},
        {"MousePreference", "InvertGyrationY=", "1", "1"},
    };
    GpCUndo->Clear();
    std::vector<wxString> vStrOld;
    for (const Case_cls& c : vCase) {
        SCOPED_TRACE(c.pKey);
        const int field = panel.FindField(c.pAttr, c.pKey);
        ASSERT_GE(field, 0);
        const wxString strOld = panel.GetPCItem(field)->GetBodySTR();
        vStrOld.push_back(strOld);
        wxWindow* pCtrl = panel.mVRow[static_cast<size_t>(field)].mpCtrl;
        if (auto* pChoice = dynamic_cast<wxChoice*>(pCtrl))
            SendChoice(pChoice, wxAtoi(c.pInput));
        else if (auto* pCheck = dynamic_cast<wxCheckBox*>(pCtrl))
            SendCheck(pCheck, wxString(c.pInput) == "1");
        else
            SendTextEnter(dynamic_cast<wxTextCtrl*>(pCtrl), c.pInput);
        EXPECT_EQ(panel.GetPCItem(field)->GetBodySTR(), c.pExpected);
        GpCUndo->Undo();
        EXPECT_EQ(panel.GetPCItem(field)->GetBodySTR(), strOld);
        GpCUndo->Redo();
        EXPECT_EQ(panel.GetPCItem(field)->GetBodySTR(), c.pExpected);
    }
    // A key moves from the command that had it; a text that is no key is refused.
    const int dup = GpCShortcut->FindEntry("Duplicate");
    const int del = GpCShortcut->FindEntry("Delete");
    ASSERT_GE(dup, 0);
    ASSERT_GE(del, 0);
    SendTextEnter(pDialog->mVPCShortcut[static_cast<size_t>(dup)], "ctrl+shift+k");
    EXPECT_EQ(GpCShortcut->mVEntry[static_cast<size_t>(dup)].mStrKey, "Ctrl+Shift+K");
    EXPECT_FALSE(pDialog->SetShortcutFromText(del, "Ctrl+Nothing"));
    EXPECT_TRUE(pDialog->SetShortcutFromText(del, "Ctrl+Shift+K"));
    EXPECT_EQ(GpCShortcut->mVEntry[static_cast<size_t>(dup)].mStrKey, "");
    GpCUndo->Undo();
    EXPECT_EQ(GpCShortcut->mVEntry[static_cast<size_t>(dup)].mStrKey, "Ctrl+Shift+K");
    EXPECT_EQ(GpCShortcut->mVEntry[static_cast<size_t>(del)].mStrKey, "Delete");

    // A panel's context menu offers the commands with their keys.
    ReadFrameLayout(Leaf("DUMMY"));
    std::unique_ptr<wxMenu> pMenu(Leaves().at(0)->CreateContextMenu());
    const wxMenuItem* pItem = pMenu->FindItem(GpCShortcut->mVEntry[static_cast<size_t>(dup)].mMenuId);
    ASSERT_NE(pItem, nullptr);
    EXPECT_EQ(pItem->GetItemLabel(), "Duplicate\tCtrl+Shift+K");
    // The key runs its command: the menu id reaches the window it is posted to.
    int menuId = 0;
    auto* pSink = new wxPanel(mpFrame);
    pSink->Bind(wxEVT_MENU, [&menuId](wxCommandEvent& event) { menuId = event.GetId(); });
    wxKeyEvent key(wxEVT_KEY_DOWN);
    key.m_keyCode = 'k';
    key.SetControlDown(true);
    key.SetShiftDown(true);
    EXPECT_TRUE(GpCShortcut->ProcShortcutKey(key, pSink));
    RunPendingEvents();
    EXPECT_EQ(menuId, GpCShortcut->mVEntry[static_cast<size_t>(dup)].mMenuId);

    // Preferences and shortcuts travel in the project file: save, back to the defaults, open.
    TempDir_cls dir;
    const wxString strOldDir = wxGetCwd();
    const wxString strPath = dir.Path("preferences.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strPath, 0));
    for (size_t i = 0; i < std::size(vCase); ++i)
        panel.GetPCItem(panel.FindField(vCase[i].pAttr, vCase[i].pKey))->SetBodyFromData(vStrOld[i]);
    GpCShortcut->mVEntry = Shortcut_cls::GetVDefault();
    ASSERT_TRUE(mpMain->OpenProjectMain(strPath, false));
    for (const Case_cls& c : vCase)
        EXPECT_EQ(panel.GetPCItem(panel.FindField(c.pAttr, c.pKey))->GetBodySTR(), c.pExpected) << c.pKey;
    EXPECT_EQ(GpCShortcut->mVEntry[static_cast<size_t>(dup)].mStrKey, "Ctrl+Shift+K");
    // The window shows what was read.
    const int field = panel.FindField("Preference", "MemoryLimitMB=");
    EXPECT_EQ(dynamic_cast<wxTextCtrl*>(panel.mVRow[static_cast<size_t>(field)].mpCtrl)->GetValue(), "2048");
    EXPECT_EQ(pDialog->mVPCShortcut[static_cast<size_t>(dup)]->GetValue(), "Ctrl+Shift+K");
    pDialog->Destroy();
    wxSetWorkingDirectory(strOldDir);
}
