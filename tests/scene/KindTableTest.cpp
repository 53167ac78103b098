// The kind table on its own: one entry per class word that later layers add to, looked up by
// group, with slots of types the table does not know, and empty again after Clear.
#include "KindTable_cls.h"
#include "Main_cls.h"
#include "ServiceRegistry.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <string>

TEST(KindTable, OneEntryPerClassWordThatLaterLayersAddTo) {
    KindTable_cls::Clear();
    KindTable_cls::Entry_cls& first = KindTable_cls::Register("Thing_cls", KindTable_cls::GROUP_OBJECT);
    first.mFuncUsedMemoryMB = [](SceneObj_cls*) { return 1.5; };
    KindTable_cls::Register("Mod_cls", KindTable_cls::GROUP_MODIFIER);
    KindTable_cls::Register("Proc_cls", KindTable_cls::GROUP_DATA_PROC);
    // A layer above gets the same entry, whatever group it names, and keeps what is there.
    KindTable_cls::Entry_cls& again = KindTable_cls::Register("Thing_cls", KindTable_cls::GROUP_MODIFIER);
    EXPECT_EQ(&again, &first);
    EXPECT_EQ(again.mGroup, KindTable_cls::GROUP_OBJECT);
    again.SetSlot(KindTable_cls::SLOT_DRAW, std::string("draw"));
    KindTable_cls::Register("Other_cls", KindTable_cls::GROUP_OBJECT);
    // Entries stay where they are while more are added.
    ASSERT_EQ(KindTable_cls::Find("Thing_cls"), &first);
    EXPECT_DOUBLE_EQ(first.mFuncUsedMemoryMB(nullptr), 1.5);

    const struct {
        const char* pClass;
        KindTable_cls::Group_enum group;
        bool bFound;
    } cases[] = {{"Thing_cls", KindTable_cls::GROUP_OBJECT, true},
                 {"Thing_cls", KindTable_cls::GROUP_MODIFIER, false},
                 {"Mod_cls", KindTable_cls::GROUP_MODIFIER, true},
                 {"Mod_cls", KindTable_cls::GROUP_DATA_PROC, false}, // a modifier is no data process
                 {"Proc_cls", KindTable_cls::GROUP_DATA_PROC, true},
                 {"thing_cls", KindTable_cls::GROUP_OBJECT, false}, // class words are case-sensitive
                 {"", KindTable_cls::GROUP_OBJECT, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pClass);
        EXPECT_EQ(KindTable_cls::Find(c.pClass, c.group) != nullptr, c.bFound);
    }
    EXPECT_EQ(KindTable_cls::GetClassWords(KindTable_cls::GROUP_OBJECT),
              (std::vector<wxString>{"Thing_cls", "Other_cls"}));

    // A slot answers only to the type that was put in it.
    ASSERT_NE(first.GetSlot<std::string>(KindTable_cls::SLOT_DRAW), nullptr);
    EXPECT_EQ(*first.GetSlot<std::string>(KindTable_cls::SLOT_DRAW), "draw");
    EXPECT_EQ(first.GetSlot<int>(KindTable_cls::SLOT_DRAW), nullptr);
    EXPECT_EQ(first.GetSlot<std::string>(KindTable_cls::SLOT_PROPERTY_PAGE), nullptr);

    KindTable_cls::Clear();
    EXPECT_EQ(KindTable_cls::Find("Thing_cls"), nullptr);
    EXPECT_TRUE(KindTable_cls::GetClassWords(KindTable_cls::GROUP_MODIFIER).empty());
    // Made anew after a clear: nothing of the old entry's hooks or slots.
    KindTable_cls::Entry_cls& fresh = KindTable_cls::Register("Thing_cls", KindTable_cls::GROUP_OBJECT);
    EXPECT_FALSE(fresh.mFuncUsedMemoryMB);
    EXPECT_EQ(fresh.GetSlot<std::string>(KindTable_cls::SLOT_DRAW), nullptr);
    KindTable_cls::Clear();
}

// A test that adds a kind of its own leaves nothing for the next: the kinds go with the scene.
TEST(KindTable, TheRegistryEndsWithItsKinds) {
    RegisterServices<ServiceLayer_enum::Scene>();
    TempDir_cls dir;
    {
        Main_cls main(dir.mStrPath);
        main.CreateSingleton();
        EXPECT_NE(KindTable_cls::Find("World_cls", KindTable_cls::GROUP_OBJECT), nullptr);
        KindTable_cls::Register("Extra_cls", KindTable_cls::GROUP_MODIFIER);
    }
    EXPECT_EQ(KindTable_cls::Find("World_cls"), nullptr);
    EXPECT_EQ(KindTable_cls::Find("Extra_cls"), nullptr);
    ClassProvider_cls::ResetRegistrations();
}
