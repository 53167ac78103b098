// The panels on the scene: the outliner, the ribbon's Add tools, the object page of the property
// panel, the console and the text editor, in one window with the scene services, each edit
// checked as do and undo through the controller's commands.
#include "ScenePanelsFixture.h"

#include "ClassProvider_cls.h"

#include <wx/statusbr.h>

#include <iterator>

using ScenePanelsTest = ScenePanelsFixture;

TEST_F(ScenePanelsTest, OutlinerShowsTheDefaultSceneInTreeOrder) {
    EXPECT_EQ(mpOutliner->GetVStrShownNames(), gDefaultScene);
    EXPECT_EQ(mpOutliner->GetName(), "OUTLINER");

    SCOPED_TRACE("a rebuild follows only its own name and ALL");
    int count = mpOutliner->mRebuildCount;
    mpOutliner->UpdatePanels("TIMELINE", false);
    EXPECT_EQ(mpOutliner->mRebuildCount, count);
    mpOutliner->UpdatePanels("ALL", false);
    EXPECT_EQ(mpOutliner->mRebuildCount, count + 1);

    SCOPED_TRACE("choosing an item in the tree makes that object the active one");
    mpOutliner->mpCTree->SelectItem(mpOutliner->FindItem("Camera"));
    EXPECT_EQ(GpCSceneObjCtrl->GetActiveObjectName(), "Camera");
    Flush();
    EXPECT_EQ(mpPage->mpCName->GetValue(), "Camera");
}

TEST_F(ScenePanelsTest, RibbonAddToolsAppendObjectsAndOneUndoTakesEachBack) {
    SendRibbonClick(mpFrame, ID_RBN_BOX);
    std::vector<wxString> vAfter = Shown();
    ASSERT_EQ(vAfter.size(), 5u);
    EXPECT_NE(std::find(vAfter.begin(), vAfter.end(), "Box.001"), vAfter.end());
    SendRibbonClick(mpFrame, ID_RBN_UNDO);
    EXPECT_EQ(Shown(), gDefaultScene);
    SendRibbonClick(mpFrame, ID_RBN_REDO);
    EXPECT_EQ(Shown().size(), 5u);
    SendRibbonClick(mpFrame, ID_RBN_UNDO);

    SCOPED_TRACE("the Add menu's items come back as the tools' clicks");
    const int vIds[] = {ID_RBN_SPHERE,         ID_RBN_PLANE,       ID_RBN_CONE,       ID_RBN_CYLINDER,
                        ID_RBN_PARALLEL_LIGHT, ID_RBN_POINT_LIGHT, ID_RBN_SPOT_LIGHT, ID_RBN_CAMERA,
                        ID_RBN_EMPTY,          ID_RBN_WORLD};
    size_t expected = gDefaultScene.size();
    for (int id : vIds) {
        SCOPED_TRACE(RibbonUI_cls::GetStrToolLabel(id));
        SendMenu(mpFrame, id + ID_MENU_MIRROR_OFFSET);
        RunPendingEvents();
        EXPECT_EQ(Shown().size(), ++expected);
    }
    EXPECT_EQ(Obj("Sphere")->mStrClassWord, "Primitive_cls");
    EXPECT_EQ(Obj("Camera.001")->mStrClassWord, "Camera_cls");
    for (size_t i = 0; i < std::size(vIds); ++i)
        SendRibbonClick(mpFrame, ID_RBN_UNDO);
    EXPECT_EQ(Shown(), gDefaultScene);

    SCOPED_TRACE("a data kind this build does not have is reported, and adds nothing");
    {
        LogCapture_cls log;
        SendRibbonClick(mpFrame, ID_RBN_PARTICLE);
        EXPECT_TRUE(log.Contains("not available yet"));
    }
    EXPECT_EQ(Shown(), gDefaultScene);

    SCOPED_TRACE("Delete removes the selection; undo gives it back in its place");
    GpCSceneObjCtrl->Select("Box", false, true, false);
    SendRibbonClick(mpFrame, ID_RBN_DELETE);
    EXPECT_EQ(Shown(), std::vector<wxString>({"World", "Initial Light", "Camera"}));
    SendRibbonClick(mpFrame, ID_RBN_UNDO);
    EXPECT_EQ(Shown(), gDefaultScene);
}

TEST_F(ScenePanelsTest, OutlinerRenamesThroughTheControllerWithASuffixOnAClash) {
    EXPECT_EQ(mpOutliner->RenameObject("Box", "Camera"), "Camera.001");
    EXPECT_EQ(Shown(), std::vector<wxString>({"World", "Initial Light", "Camera.001", "Camera"}));
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
    EXPECT_EQ(mpOutliner->RenameObject("Box", "   "), wxString());
    EXPECT_EQ(mpOutliner->RenameObject("NoSuchObject", "X"), wxString());

    SCOPED_TRACE("the tree's label edit takes the same road and shows the controller's name");
    wxTreeItemId item = mpOutliner->FindItem("Initial Light");
    ASSERT_TRUE(item.IsOk());
    wxTreeEvent event(wxEVT_TREE_END_LABEL_EDIT, mpOutliner->mpCTree, item);
    event.SetLabel("World");
    mpOutliner->mpCTree->GetEventHandler()->ProcessEvent(event);
    RunPendingEvents();
    EXPECT_EQ(Shown(), std::vector<wxString>({"World", "World.001", "Box", "Camera"}));
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
}

TEST_F(ScenePanelsTest, OutlinerVisibilityAndDropUnderAParentAreUndoable) {
    mpOutliner->ToggleVisibility("Box");
    EXPECT_FALSE(Obj("Box")->mCVisible.GetBodyBOOL());
    GpCUndo->Undo();
    EXPECT_TRUE(Obj("Box")->mCVisible.GetBodyBOOL());

    EXPECT_TRUE(mpOutliner->DropObjectOn("Box", "World"));
    EXPECT_EQ(Shown(), std::vector<wxString>({"World", " Box", "Initial Light", "Camera"}));
    EXPECT_EQ(Obj("Box")->GetStrParentName(), "World");
    SCOPED_TRACE("an object cannot go below its own child");
    EXPECT_FALSE(mpOutliner->DropObjectOn("World", "Box"));
    EXPECT_EQ(Shown(), std::vector<wxString>({"World", " Box", "Initial Light", "Camera"}));
    SCOPED_TRACE("the tree's drag and drop takes the same road");
    EXPECT_TRUE(mpOutliner->DropObjectOn("Box", ""));
    wxTreeEvent begin(wxEVT_TREE_BEGIN_DRAG, mpOutliner->mpCTree, mpOutliner->FindItem("Camera"));
    mpOutliner->mpCTree->GetEventHandler()->ProcessEvent(begin);
    EXPECT_TRUE(begin.IsAllowed());
    wxTreeEvent drop(wxEVT_TREE_END_DRAG, mpOutliner->mpCTree, mpOutliner->FindItem("Initial Light"));
    mpOutliner->mpCTree->GetEventHandler()->ProcessEvent(drop);
    RunPendingEvents();
    EXPECT_EQ(Obj("Camera")->GetStrParentName(), "Initial Light");
    EXPECT_EQ(mpOutliner->GetVStrShownNames(),
              std::vector<wxString>({"World", "Initial Light", " Camera", "Box"}));
    GpCUndo->Undo();
    GpCUndo->Undo();
    EXPECT_EQ(Obj("Box")->GetStrParentName(), "World");
    SCOPED_TRACE("the item menu and the tree's keys");
    EXPECT_TRUE(mpOutliner->ProcItemCommand(Outliner_cls::ID_MENU_TOGGLE_VISIBLE, "Camera"));
    EXPECT_FALSE(Obj("Camera")->mCVisible.GetBodyBOOL());
    GpCUndo->Undo();
    EXPECT_FALSE(mpOutliner->ProcItemCommand(Outliner_cls::ID_MENU_DELETE, "NoSuchObject"));
    mpOutliner->mpCTree->SetFocusedItem(mpOutliner->FindItem("Camera"));
    wxKeyEvent keyDelete(wxEVT_KEY_DOWN);
    keyDelete.m_keyCode = WXK_DELETE;
    wxTreeEvent treeKey(wxEVT_TREE_KEY_DOWN, mpOutliner->mpCTree);
    treeKey.SetKeyEvent(keyDelete);
    mpOutliner->mpCTree->GetEventHandler()->ProcessEvent(treeKey);
    EXPECT_EQ(Obj("Camera"), nullptr);
    GpCUndo->Undo();
    EXPECT_NE(Obj("Camera"), nullptr);
    EXPECT_EQ(Obj("Box")->GetStrParentName(), "World");

    SCOPED_TRACE("dropped on nothing: back to the top");
    EXPECT_TRUE(mpOutliner->DropObjectOn("Box", ""));
    EXPECT_EQ(Obj("Box")->GetStrParentName(), "ROOT");
    GpCUndo->Undo();
    EXPECT_EQ(Obj("Box")->GetStrParentName(), "World");
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
}

TEST_F(ScenePanelsTest, NumberFieldsTakeArithmeticAndUndoRestores) {
    GpCSceneObjCtrl->Select("Box", false, true, false);
    Flush();
    ASSERT_EQ(mpPage->mpCName->GetValue(), "Box");
    const double x0 = Value("Box", "Position", 0);
    const double y0 = Value("Box", "Position", 1);

    EXPECT_TRUE(mpPage->SetMemberFromText(0, 0, "2*3"));
    EXPECT_DOUBLE_EQ(Value("Box", "Position", 0), 6.0);
    EXPECT_EQ(mpPage->mpCField[0][0]->GetValue(), "6");
    SCOPED_TRACE("Enter in a field does the same");
    SendTextEnter(mpPage->mpCField[1][2], "90/2");
    EXPECT_DOUBLE_EQ(Value("Box", "RotationEuler", 2), 45.0);
    SendTextEnter(mpPage->mpCField[0][1], "-1.5");
    EXPECT_DOUBLE_EQ(Value("Box", "Position", 1), -1.5);

    SCOPED_TRACE("an unreadable text changes nothing and pushes nothing");
    const int count = GpCUndo->GetCount();
    EXPECT_FALSE(mpPage->SetMemberFromText(0, 2, "abc"));
    EXPECT_EQ(GpCUndo->GetCount(), count);

    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(Value("Box", "Position", 1), y0);
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(Value("Box", "RotationEuler", 2), 0.0);
    GpCUndo->Undo();
    EXPECT_DOUBLE_EQ(Value("Box", "Position", 0), x0);
    SCOPED_TRACE("the idle pass brings the page up to date after an undo");
    mpPage->UpdatePage("IDLE");
    EXPECT_EQ(mpPage->mpCField[0][0]->GetValue(), wxString::Format("%g", x0));

    SCOPED_TRACE("name and visibility fields");
    SendTextEnter(mpPage->mpCName, "Camera");
    EXPECT_NE(Obj("Camera.001"), nullptr);
    EXPECT_EQ(mpPage->mpCName->GetValue(), "Camera.001");
    mpPage->SetVisible(false);
    EXPECT_FALSE(Obj("Camera.001")->mCVisible.GetBodyBOOL());
    GpCUndo->Undo();
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
    EXPECT_TRUE(Obj("Box")->mCVisible.GetBodyBOOL());

    SCOPED_TRACE("with no active object (it was deleted) the page is empty and refuses");
    GpCSceneObjCtrl->Select("Box", false, true, false);
    GpCSceneObjCtrl->DeleteItemsCommand();
    ASSERT_EQ(GpCSceneObjCtrl->GetPCActiveObject(), nullptr);
    Flush();
    EXPECT_FALSE(mpPage->mpCField[0][0]->IsEnabled());
    EXPECT_TRUE(mpPage->mpCName->GetValue().empty());
    EXPECT_FALSE(mpPage->SetMemberFromText(0, 0, "1"));
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
}

TEST_F(ScenePanelsTest, ConsoleRunsLinesShowsOutputAndWalksItsHistory) {
    // print ends each value with a blank.
    EXPECT_TRUE(mpConsole->ProcessLine("print(1+2)"));
    EXPECT_TRUE(mpConsole->mpCOutput->GetValue().Contains("> print(1+2)\n3 \n"));
    SCOPED_TRACE("globals live from one line to the next");
    SendTextEnter(mpConsole->mpCInput, "x = 20");
    EXPECT_TRUE(mpConsole->mpCInput->GetValue().empty());
    EXPECT_TRUE(mpConsole->ProcessLine("print(x*2)"));
    EXPECT_TRUE(mpConsole->mpCOutput->GetValue().Contains("40 \n"));
    EXPECT_FALSE(mpConsole->ProcessLine("error('boom')"));
    EXPECT_TRUE(mpConsole->mpCOutput->GetValue().Contains("boom"));

    SCOPED_TRACE("Up and Down walk the history; past the newest the input is empty");
    auto press = [&](int keyCode, int times) {
        wxKeyEvent key(wxEVT_KEY_DOWN);
        key.m_keyCode = keyCode;
        for (int i = 0; i < times; ++i)
            mpConsole->mpCInput->GetEventHandler()->ProcessEvent(key);
        return mpConsole->mpCInput->GetValue();
    };
    EXPECT_EQ(press(WXK_UP, 1), "error('boom')");
    EXPECT_EQ(press(WXK_UP, 4), "print(1+2)") << "it stops at the oldest";
    EXPECT_EQ(press(WXK_DOWN, 1), "x = 20");
    EXPECT_TRUE(press(WXK_DOWN, 4).empty());

    SCOPED_TRACE("a script's edits reach the outliner and undo");
    EXPECT_TRUE(mpConsole->ProcessLine("print(Ops.AddPrimitive('Box', 'Crate'))"));
    EXPECT_TRUE(mpConsole->mpCOutput->GetValue().Contains("Crate \n"));
    std::vector<wxString> vShown = Shown();
    EXPECT_NE(std::find(vShown.begin(), vShown.end(), "Crate"), vShown.end());
    GpCUndo->Undo();
    EXPECT_EQ(Shown(), gDefaultScene);
}

TEST_F(ScenePanelsTest, TextEditorSetsAGroupsExpressionThroughUndo) {
    GpCSceneObjCtrl->Select("Box", false, true, false);
    Flush();
    mpPage->EditExpression(0);
    EXPECT_EQ(mpEditor->mStrTag, "SceneObjCtrl::Obj::Box::Position");
    ParamGroup_cls* pGroup = GpCSceneObjCtrl->GetPCParamGroup(mpEditor->mStrTag);
    ASSERT_NE(pGroup, nullptr);
    const wxString strBefore = pGroup->mCExpression.GetBodySTR();
    EXPECT_EQ(mpEditor->mpCText->GetValue(), strBefore);

    const wxString strExpr = "local a = 1\nreturn Value[1] + a, Value[2], Value[3]";
    mpEditor->mpCText->ChangeValue(strExpr);
    ASSERT_FALSE(pGroup->mCUseExpr.GetBodyBOOL());
    EXPECT_EQ(mpEditor->mpCState->GetLabel(), "The expression is off: Apply turns it on.");
    EXPECT_TRUE(mpEditor->ApplyExpression());
    EXPECT_EQ(pGroup->mCExpression.GetBodySTR(), strExpr);
    // Applying turns the expression on, and the page marks the fields it drives.
    EXPECT_TRUE(pGroup->mCUseExpr.GetBodyBOOL());
    EXPECT_EQ(mpEditor->mpCState->GetLabel(), "The expression is on.");
    Flush();
    mpPage->UpdatePanels("PROPERTY_OBJECT", false);
    EXPECT_EQ(mpPage->mStrDriver[0][0], "Expression");
    EXPECT_EQ(mpPage->mpCField[0][0]->GetToolTipText(), "Driven by the group's expression");
    EXPECT_EQ(mpPage->mStrDriver[2][0], ""); // the scale is not driven
    // One undo takes back the text and the switch.
    GpCUndo->Undo();
    EXPECT_EQ(pGroup->mCExpression.GetBodySTR(), strBefore);
    EXPECT_FALSE(pGroup->mCUseExpr.GetBodyBOOL());
    Flush();
    mpPage->UpdatePanels("PROPERTY_OBJECT", false);
    EXPECT_EQ(mpPage->mStrDriver[0][0], "");
    EXPECT_FALSE(mpPage->mpCField[0][0]->GetToolTip());

    SCOPED_TRACE("a field animated by keys is marked as such");
    pGroup->SetNewKeyCommand(3.0, 0.5, "SceneObjCtrl::Obj::Box::Position::x", 2, 0.5);
    Flush();
    mpPage->UpdatePanels("PROPERTY_OBJECT", false);
    // A key of the group is a key on each of its members; the other groups stay unmarked.
    EXPECT_EQ(mpPage->mStrDriver[0][0], "Keys");
    EXPECT_EQ(mpPage->mStrDriver[0][2], "Keys");
    EXPECT_EQ(mpPage->mStrDriver[1][0], "");
    EXPECT_EQ(mpPage->mpCField[0][1]->GetToolTipText(), "Animated by keys");
    GpCUndo->Clear();
    Flush();
    mpEditor->UpdatePanels("ALL", false);
    EXPECT_EQ(mpEditor->mpCText->GetValue(), strBefore);

    SCOPED_TRACE("a tag that names no group loads nothing and applies nothing");
    EXPECT_FALSE(mpEditor->LoadExpression("SceneObjCtrl::Obj::Nothing::Position"));
    EXPECT_FALSE(mpEditor->ApplyExpression());
}

TEST_F(ScenePanelsTest, TextFieldsKeepTheNameThatKeepsEscapeInside) {
    const std::vector<wxTextCtrl*> vFields = {
        mpPage->mpCName,      mpPage->mpCField[0][0], mpPage->mpCField[2][2], mpConsole->mpCInput,
        mpConsole->mpCOutput, mpEditor->mpCText,      mpEditor->mpCTag};
    for (wxTextCtrl* p : vFields)
        EXPECT_EQ(p->GetName(), "text");

    SCOPED_TRACE("the outliner's label editor is a text widget too");
    wxTreeItemId item = mpOutliner->FindItem("Box");
    ASSERT_TRUE(item.IsOk());
    if (wxTextCtrl* pEdit = mpOutliner->mpCTree->EditLabel(item)) {
        EXPECT_EQ(pEdit->GetName(), "text");
        mpOutliner->mpCTree->EndEditLabel(item, true);
    } else {
        ADD_FAILURE() << "the tree gave no label editor";
    }
    RunPendingEvents();
    EXPECT_EQ(Shown(), gDefaultScene);

    SCOPED_TRACE("with a field focused, the idle pass names it and Escape keeps full screen");
    wxWindow* pRibbon = mpFrame->GetPCRibbon()->GetBar();
    pRibbon->Hide();
    mpConsole->mpCInput->SetFocus();
    for (int i = 0; i < 20 && wxWindow::FindFocus() != mpConsole->mpCInput; ++i) {
        wxTheApp->Yield(true);
        wxMilliSleep(10);
    }
    if (wxWindow::FindFocus() != mpConsole->mpCInput)
        GTEST_SKIP() << "the display gives no keyboard focus to the test window";
    mpFrame->ProcIdle();
    EXPECT_EQ(mpFrame->mStrFocusName, "text");
    EXPECT_NE(mpFrame->GetStatusBar()->GetStatusText(0), "text"); // window names are not shown
    mpFrame->ShowFullScreen(true, wxFULLSCREEN_ALL);
    wxKeyEvent key(wxEVT_KEY_DOWN);
    key.m_keyCode = WXK_ESCAPE;
    mpFrame->OnKeyDown(key);
    EXPECT_TRUE(mpFrame->IsFullScreen());
    EXPECT_FALSE(pRibbon->IsShown());
    mpFrame->ShowFullScreen(false, wxFULLSCREEN_ALL);
}

TEST_F(ScenePanelsTest, PropertyAndEditorBlocksRoundTripThroughTheLayout) {
    const wxString strBlock = "ConfItemList::Begin::PanelProperty\nTab=1\nConfItemList::End\n";
    const wxString strTree = Split('H', 200, Leaf("PROPERTY", strBlock), Leaf("TEXT_EDITOR", strBlock));
    ReadFrameLayout(strTree);
    std::vector<wxPanelEX*> vLeaves = Leaves();
    ASSERT_EQ(vLeaves.size(), 2u);
    EXPECT_NE(dynamic_cast<Property_cls*>(vLeaves[0]), nullptr);
    EXPECT_NE(dynamic_cast<TextEntryCtrl_cls*>(vLeaves[1]), nullptr);
    wxString strOut;
    mpFrame->Serialize(strOut, 0);
    EXPECT_TRUE(strOut.EndsWith(strTree + "FrameMain::Close\n")) << strOut;
}
