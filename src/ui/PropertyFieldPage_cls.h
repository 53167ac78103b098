// The page of an object kind whose settings are a table of fields (camera, light, world,
// primitive, mesh, text): the kind's rows, then the stack of modifiers the user added, with the
// selected one's page below it. The kinds' page classes give their tables; the page follows the
// active object and works on it by name only. Main thread only.
#pragma once

#include "PropertyField_cls.h"
#include "PropertyKindPage_cls.h"

#include <vector>

class ModifierStack_cls;
class PropertyFieldPanel_cls;
class SceneObj_cls;

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

    PropertyFieldPanel_cls* mpCFields = nullptr;
    ModifierStack_cls* mpCStack = nullptr;

private:
    wxString mStrLabel;
};
