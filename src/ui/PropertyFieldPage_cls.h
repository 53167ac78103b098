// The page of an object kind whose settings are a table of fields (camera, light, world,
// primitive, mesh, text): the kind's rows, then the stack of modifiers the user added, with the
// selected one's page below it. The kinds' page classes give their tables; the page follows the
// active object and works on it by name only. Main thread only.
#pragma once

#include "PropertyField_cls.h"
#include "PropertyKindPage_cls.h"

#include <vector>

class Attribute_cls;
class PropertyFieldPanel_cls;
class PropertyModifier_cls;
class SceneObj_cls;
class wxBoxSizer;
class wxChoice;
class wxListBox;

class PropertyFieldPage_cls : public PropertyKindPage_cls {
public:
    PropertyFieldPage_cls(wxWindow* pParent, const wxString& strClassWord, const wxString& strLabel,
                          PropertyField_cls::Table_type vField);

    void UpdatePage(const wxString& strName) override;
    void RefreshFromObject() override;
    wxString GetStrLabel() const override { return mStrLabel; }

    // The rows of a material: the light model colours, the drawing options and, unless the
    // material is a light's, the texture; a light's adds its spot and attenuation.
    static PropertyField_cls::Table_type GetVMaterialFields(bool bLight);
    // The kind's own rows followed by its material's.
    static PropertyField_cls::Table_type WithMaterial(PropertyField_cls::Table_type vField, bool bLight);

    // The active object when it is of the page's kind.
    SceneObj_cls* GetPCObject() const;

    // ---- the modifier stack; false when nothing was done ----
    // The entries the user added, in stack order. Not owned.
    std::vector<Attribute_cls*> GetVPCModifiers() const;
    bool AddModifier(const wxString& strClass);
    bool DeleteModifier(int row);
    // Shows the row's page below the list (-1: none).
    bool SelectModifier(int row);

    PropertyFieldPanel_cls* mpCFields = nullptr;
    wxListBox* mpCModList = nullptr;
    wxChoice* mpCModKind = nullptr;
    PropertyModifier_cls* mpCModifier = nullptr; // null when no row is selected

private:
    void RefreshModifiers();
    wxString mStrLabel;
    wxBoxSizer* mpCModSizer = nullptr;
};
