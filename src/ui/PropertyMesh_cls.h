// The page of a mesh: its Wavefront file (typed or picked), the normal flip, its material with the
// texture, and the materials its .mtl file gave, listed by their names in the file: the one
// chosen shows its colours, shininess, opacity and texture for editing. Main thread only.
#pragma once

#include "PropertyFieldPage_cls.h"

class MeshObj_cls;
class wxChoice;

class PropertyMesh_cls : public PropertyFieldPage_cls {
public:
    explicit PropertyMesh_cls(wxWindow* pParent);

    static PropertyField_cls::Table_type GetVField();
    // The rows of the object's material for one .mtl material: what the drawing takes from it.
    static PropertyField_cls::Table_type GetVMtlField(const wxString& strAttr);

    void UpdatePage(const wxString& strName) override;
    void RefreshFromObject() override;

    // Shows the rows of the .mtl material of that index in the file (-1: none); false when the
    // file has no such material.
    bool SelectMtl(int index);

    // The active object when it is a mesh.
    MeshObj_cls* GetPCMesh() const;

    wxChoice* mpCMtl = nullptr;
    PropertyFieldPanel_cls* mpCMtlFields = nullptr; // null while no .mtl material is chosen
    wxString mStrMtl;                               // the name in the file of the one shown

private:
    void RefreshMtlList();
    class wxBoxSizer* mpCMtlSizer = nullptr;
};
