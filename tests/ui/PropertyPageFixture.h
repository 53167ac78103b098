// A window whose one leaf is the property panel, over the headless services and the panel
// makers: what the tests of the kinds' property pages stand on.
#pragma once

#include "UiFixture.h"

#include "ClassProvider_cls.h"
#include "PanelMakers.h"
#include "PropertyKindPage_cls.h"
#include "Property_cls.h"
#include "SceneObjCtrl_cls.h"
#include "UndoManager_cls.h"

#include <functional>
#include <vector>

class PropertyPageFixture : public UiFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Headless>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(Leaf("PROPERTY"));
        mpProperty = FindLeaf<Property_cls>();
        ASSERT_NE(mpProperty, nullptr);
    }
    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    // The object made active as the outliner does it, and the idle passes after.
    void Select(const wxString& strName) {
        GpCSceneObjCtrl->Select(strName, false, true, false);
        GCClassProvider->ProcAfterMath("SelectObject", strName);
        Sync();
    }
    // What the next idle passes do: the queued names, then the kind page's own look at the object.
    void Sync() {
        Flush();
        if (mpProperty->mpCPageKind)
            mpProperty->mpCPageKind->UpdatePage("IDLE");
    }
    // The control of the kind page that edits the item.
    template <class T> T* Ctrl(int target, const wxString& strKey) {
        T* p = dynamic_cast<T*>(mpProperty->mpCPageKind->FindItemCtrl(target, strKey));
        EXPECT_NE(p, nullptr) << strKey;
        return p;
    }
    struct Edit_cls {
        const char* what;
        std::function<void()> edit;
        std::function<bool()> shown; // the model and the page after the edit
    };
    // Each edit changes the state in one undo step and shows; undo gives back the state before and
    // redo the state after, each shown on the page.
    void ExpectEditsUndoAndRedo(const std::vector<Edit_cls>& vEdit,
                                const std::function<wxString()>& funcState) {
        for (const Edit_cls& e : vEdit) {
            SCOPED_TRACE(e.what);
            const wxString strBefore = funcState();
            const int undoIndex = GpCUndo->GetCurrent();
            e.edit();
            Sync();
            const wxString strAfter = funcState();
            ASSERT_NE(strAfter, strBefore);
            EXPECT_TRUE(e.shown());
            EXPECT_EQ(GpCUndo->GetCurrent(), undoIndex + 1) << "one edit, one undo step";
            GpCUndo->Undo();
            Sync();
            EXPECT_EQ(funcState(), strBefore);
            EXPECT_FALSE(e.shown());
            GpCUndo->Redo();
            Sync();
            EXPECT_EQ(funcState(), strAfter);
            EXPECT_TRUE(e.shown());
        }
    }

    Property_cls* mpProperty = nullptr;
};
