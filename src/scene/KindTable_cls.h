// The kinds of the scene, one entry per class word: scene objects (this layer's and the data
// viewers of the layers above), and the attribute kinds an object takes (modifiers, data
// processes, the colour curve). An entry holds how the kind is made and what it adds to the
// common operations of objects and attributes; a kind without a hook does nothing there.
//
// Each layer adds its kinds from its Register...Services function; the scene layer clears the
// table first, so a registry never sees the kinds of the one before it. The layers above the
// scene keep their own per-kind data (the preparation's modifier step, the draw entry, the GL
// resources, the property page) in the entry's slots, whose types this layer does not know.
//
// Main thread while registering; afterwards the table only changes with the next registry, so
// the workers may read it.
#pragma once

#include <wx/string.h>

#include <any>
#include <array>
#include <functional>
#include <istream>
#include <vector>

class Attribute_cls;
class DataSequence_cls;
class ParentObj_cls;
class SceneObj_cls;

class KindTable_cls {
public:
    // What a class word names: an object of the tree, or an attribute on one of its stacks.
    enum Group_enum { GROUP_OBJECT, GROUP_MODIFIER, GROUP_DATA_PROC, GROUP_COLOR_CURVE };
    // The per-kind data of the layers above, each in its own slot.
    enum Slot_enum {
        SLOT_PREPARE,       // the preparation's modifier step (particle kinds)
        SLOT_DRAW,          // how the renderer draws the kind
        SLOT_GL_RESOURCES,  // what the kind holds on the GL thread
        SLOT_PROPERTY_PAGE, // the window's page for the kind
        SLOT_COUNT
    };

    class Entry_cls {
    public:
        wxString mStrClassWord;
        Group_enum mGroup = GROUP_OBJECT;

        // ---- objects ----
        std::function<SceneObj_cls*(ParentObj_cls* pParent, const wxString& strVariant)> mFuncMake;
        // The kind's blocks after the material blocks ("ReadFormat"), and their reader.
        std::function<void(SceneObj_cls*, wxString& strOut)> mFuncSerializeExtra;
        std::function<bool(SceneObj_cls*, std::wistream&, const wxString&, const wxString&)> mFuncReadExtra;
        std::function<void(SceneObj_cls*)> mFuncSyncConfListTag;
        // Unset: the kind has one material and takes no other.
        std::function<Attribute_cls*(SceneObj_cls*, const wxString& strName)> mFuncNewMaterial;
        // Whether the object takes one more material; logs why not. Unset: always.
        std::function<bool(SceneObj_cls*)> mFuncCanAddMaterial;
        // Whether saving writes this own attribute; unset: every one.
        std::function<bool(SceneObj_cls*, Attribute_cls*)> mFuncSavesOwnAttribute;
        std::function<double(SceneObj_cls*)> mFuncUsedMemoryMB;
        std::function<void(SceneObj_cls*)> mFuncPrefetch;
        std::function<void(SceneObj_cls*)> mFuncRelease;
        // The data sequence a data viewer shows (the timeline draws its steps); unset: none.
        std::function<DataSequence_cls*(SceneObj_cls*)> mFuncDataSequence;

        // ---- attributes ----
        // Null when the kind does not fit the object.
        std::function<Attribute_cls*(SceneObj_cls*, const wxString& strName)> mFuncMakeAttribute;
        // Unset: the attribute writes and reads itself as any attribute does.
        std::function<void(Attribute_cls*, wxString& strOut)> mFuncSerialize;
        std::function<bool(Attribute_cls*, std::wistream&, const wxString&, const wxString&)>
            mFuncReadStrLine;
        // The instances an active entry adds beyond the object's own (array copies).
        std::function<int(SceneObj_cls*, Attribute_cls*)> mFuncCopyCount;
        // The translation of copy copyIndex (1 to the copy count) of an active entry at time t;
        // false when there is no such copy.
        std::function<bool(SceneObj_cls*, Attribute_cls*, int copyIndex, double t, double* out)>
            mFuncCopyOffset;
        // Run inside the object's transform: changes C, the object's own matrix, given the
        // parent matrix P at time t (tracking).
        std::function<void(SceneObj_cls*, Attribute_cls*, double* C, double* P, double t)> mFuncTransform;

        // ---- the layers above ----
        template <class T> void SetSlot(Slot_enum slot, T value) { mAnySlot[slot] = std::move(value); }
        // Null when the slot is empty or holds another type.
        template <class T> const T* GetSlot(Slot_enum slot) const {
            return std::any_cast<T>(&mAnySlot[slot]);
        }

    private:
        std::array<std::any, SLOT_COUNT> mAnySlot;
    };

    // The entry of the class word, made in the group when it is not there yet; a later layer
    // gets the same entry to add its hooks. Main thread, while registering.
    static Entry_cls& Register(const wxString& strClassWord, Group_enum group);
    // Null when the class word is not registered (in that group).
    static const Entry_cls* Find(const wxString& strClassWord);
    static const Entry_cls* Find(const wxString& strClassWord, Group_enum group);
    // The class words of a group in the order they were registered.
    static std::vector<wxString> GetClassWords(Group_enum group);
    // Forgets every kind: the start of a registry, and the end of a test's.
    static void Clear();
};
