#include "ParamGroup_cls.h"
#include "Parameter_cls.h"
#include "SceneFixture.h"

using SceneForwardingTest = SceneFixture;

// The core's tag-addressed members reach the scene and build their edits as undo pairs.
TEST_F(SceneForwardingTest, CoreFindsGroupsByTagAndEditsTheirItemsUndoably) {
    const wxString strTag = "SceneObjCtrl::Obj::Box::Position";
    ParamGroup_cls* pGroup = mpMain->GetPCParamGroup(strTag);
    ASSERT_NE(pGroup, nullptr);
    EXPECT_EQ(pGroup, Ctrl()->GetPCParamGroup(strTag));
    EXPECT_EQ(mpMain->GetPCParamGroup("SceneObjCtrl::Obj::NoSuchObject::Position"), nullptr);
    EXPECT_EQ(mpMain->GetStrCommandParamGroup(strTag), strTag);
    EXPECT_TRUE(mpMain->GetStrCommandParamGroup("SceneObjCtrl::Obj::Nothing::X").empty());

    Parameter_cls* pX = mpMain->GetPCParameter(strTag + "::x");
    ASSERT_NE(pX, nullptr);
    bool bOld = pX->IsTimeDepend();
    int steps = GpCUndo->GetCount();
    mpMain->SetParameterConfCommand(strTag + "::x", "TimeDepend=", !bOld, false);
    EXPECT_EQ(pX->IsTimeDepend(), !bOld);
    EXPECT_EQ(GpCUndo->GetCount(), steps + 1);
    // The same value again changes nothing and pushes nothing.
    mpMain->SetParameterConfCommand(strTag + "::x", "TimeDepend=", !bOld, false);
    EXPECT_EQ(GpCUndo->GetCount(), steps + 1);
    GpCUndo->Undo();
    EXPECT_EQ(pX->IsTimeDepend(), bOld);
    GpCUndo->Redo();
    EXPECT_EQ(pX->IsTimeDepend(), !bOld);
}
