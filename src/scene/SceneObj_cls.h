// Every thing in the scene tree: camera, light, world, primitive, mesh, text and the data
// viewers. It has a transform of three parameter groups, a list of modifiers and a list of data
// processes (attributes), and a name that is unique in the scene and is its address in
// commands. The class word stands in for virtual dispatch: no operation is virtual but the
// destructor, and behaviour that depends on the kind is found in the kind table by class word.
// Main thread only; workers use clones.
#pragma once

#include "ConfListContainer_cls.h"
#include "ParentObj_cls.h"
#include "TensorMath_cls.h"

#include <wx/arrstr.h>
#include <wx/string.h>

#include <cstdint>
#include <istream>
#include <list>
#include <map>
#include <vector>

class Attribute_cls;
class Material_cls;
class ParamGroup_cls;
class SceneObjInstance_cls;

class SceneObj_cls : public ParentObj_cls, public ConfListContainer_cls, public TensorMath_cls {
public:
    // The object adds its own items and groups in its constructor; the controller then calls
    // Initialize(name).
    SceneObj_cls(ParentObj_cls* pParent, const wxString& strClassWord);
    // Deletes attributes and groups; children are left to the caller.
    ~SceneObj_cls() override;

    // ---- references ----
    void Refer() { ++mReferenceCounter; }
    // The last release of an object that has left the tree deletes it. Returns true when the
    // object was deleted.
    bool ReferRelease();

    // ---- names and tags ----
    // Adds Name=, Visible=, Shy= and sets the tags.
    void Initialize(const wxString& strName);
    wxString GetStrName() const { return mCName.GetBodySTR(); }
    // The name without a ".NNN" suffix.
    wxString GetStrBaseName() const;
    // The parent's name, "ROOT" at the top.
    wxString GetStrParentName() const;
    int GetChildIndex() const;
    // "SceneObjCtrl::Obj::<name>", and with "::<group>" for a group of the object.
    wxString GetStrTag() const;
    wxString GetStrTag(ParamGroup_cls* pGroup);
    // A name for a new attribute that no attribute of this object has.
    wxString GetStrUniqueName(wxString strName);
    // The list tag "SceneObj::<name>", then the class's own tags and those of the attributes.
    void SyncConfListTag();

    // ---- look-up ----
    // strAttr empty: a transform group ("Position", "RotationEuler", "Scale").
    ParamGroup_cls* GetPCParamGroup(const wxString& strAttr, const wxString& strGroup);
    Material_cls* GetPCMaterial();
    // kind 0: any attribute (the class's own, modifiers, data processes); 1: modifiers only;
    // 2: data processes only. Null when absent.
    Attribute_cls* GetPCAttribute(const wxString& strName, int kind);
    // The n-th attribute (0-based) of that class word among all attributes.
    Attribute_cls* GetPCAttributeFromAttribName(const wxString& strClass, int n);
    Attribute_cls* GetPCAttributeFromIndex(int index);
    Attribute_cls* GetPCDataProc(const wxString& strName, int n);
    Attribute_cls* GetPCDataProcFromIndex(int index);
    // The first modifier of that class word whose Validity= is on.
    Attribute_cls* GetPCValidModifier(const wxString& strClass);
    ConfItem_cls* GetPCItemInAttrib(const wxString& strAttr, const wxString& strItem);
    // Names of all attributes: the class's own, then modifiers, then data processes.
    wxArrayString GetAstrAttribList();
    int GetNumAttribute(const wxString& strClass);
    int GetIndexModifier(Attribute_cls* p);
    int GetIndexDProc(Attribute_cls* p);
    // The index of the first modifier that the user added: the class's built-in attributes
    // stand before it.
    int GetIndexModifierInit() const { return mNumBuiltInModifier; }
    bool IsAttributeExist(const wxString& strName);
    bool IsDataProcExist(const wxString& strName);
    bool IsDataProcClsExist(const wxString& strClass);
    bool IsAttributesTimeDepend();
    bool IsParamGroupTimeDepend();
    bool IsSelectedTLKeyExist();
    // The tag of every member of every group of the object.
    void GetVstrParamTag(std::vector<wxString>& vStrTag);
    // The class's validity switch (Valid=); objects without one are always valid.
    ConfItem_cls* GetPCValidItem();
    bool IsValid();

    // ---- transforms ----
    // out = parent * (T * R) * S at t; extra, if given, is a further translation.
    void GetMatrix16(double* out, double t, double* extra = nullptr);
    void ApplyTranslate(double* m, double t);
    // RotationEuler in degrees: RotateX, then RotateY, then RotateZ.
    void ApplyRotate(double* m, double t);
    void GetPositionGlobal(double t, double* out);
    void ClearModifierMatrix() { TensorMath_cls::SetIdentity(mModifierMatrix); }
    // Runs the modifiers that act inside the transform; only "TransformRot" does anything.
    void ProcModifier(const wxString& strStage, void* pIn, void* pOut);

    // ---- drawing support ----
    // One instance for a plain object; more when an active "ArrayCopy_cls" makes copies.
    // The caller owns the instances.
    std::vector<SceneObjInstance_cls*> GetVNewPCInstance();
    // The translation of the instance with copyIndex (1 and up, counted over the object's
    // copying modifiers in order, as GetVNewPCInstance numbers them) at t; false for the
    // object's own instance or a copy that no longer exists.
    bool GetCopyOffset(int copyIndex, double t, double* out);

    // ---- memory of data viewers ----
    double GetUsedMemoryMB();
    void PrefetchData();
    void ReleaseMemoryData();

    // ---- commands ----
    void AddModifierCommand(const wxString& strClass, wxString strName);
    void DeleteModifierCommand(const wxString& strName);
    void MoveModifierCommand(const wxString& strName, int position);
    void SetModifierValidityCommand(const wxString& strName, bool bValid);
    void AddDataProcCommand(const wxString& strClass, wxString strName);
    void DeleteDataProcCommand(const wxString& strName);
    void MoveDataProcCommand(const wxString& strName, int position);
    void SetDataProcValidityCommand(const wxString& strName, bool bValid);
    void AddMaterialCommand();
    void DeleteSelectedTLKeyCommand();
    void SetSelectedTLKeyTypeCommand(int type, double ease);
    void MoveSelectedTLKeyCommand(double dx, double dy);
    void RescaleParameters(double factor);
    // Keys of the three members of a group at the current time, in one block.
    void SetParam3Command(const wxString& strGroup, double* values);
    // The same with values added to the current ones.
    void SetParamD3Command(const wxString& strGroup, double* deltas);
    void DeselectKeyFrame(const wxString& strTag);

    // ---- line execution ----
    // "Modifier::<class>::<name>", "DataProc::<class>::<name>", "ColorCurve::<name>",
    // "Material::<name>".
    bool ProcNew(wxString strRest);
    // "Modifier::<name>", "DataProc::<name>".
    bool ProcDelete(wxString strRest);
    // "Modifier::<name>::<index>", "DataProc::<name>::<index>".
    bool ProcMove(wxString strRest);
    // Renames the object and keeps its addresses right.
    void ProcRename(const wxString& strName);
    bool ProcNewModifier(Attribute_cls* p);
    bool ProcNewDProc(Attribute_cls* p);
    bool ProcNewMaterial(const wxString& strName);
    bool ProcNewColorCurve(const wxString& strName);

    // ---- text ----
    void Serialize(wxString& strOut);
    void SerializePropertiesOnly(wxString& strOut);
    bool ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest);

    // ---- data ----
    ParentObj_cls* mpParent = nullptr; // not owned
    ConfItemSTR_cls mCName;
    ConfItemBOOL_cls mCVisible;
    ConfItemBOOL_cls mCShy;
    std::vector<ParamGroup_cls*> mVPCParamGroup; // Position, RotationEuler, Scale; owned
    // Attributes the class makes for itself and writes in a block of its own (material, fog).
    std::vector<Attribute_cls*> mVPCOwnAttribute;
    // The names of those the constructor made: they are there again when the object is made
    // anew, so only the others are announced with a New line in the project.
    wxArrayString mAstrBuiltInOwnAttribute;
    std::list<Attribute_cls*> mLPCModifier; // owned; built-in entries first
    int32_t mModifierCount = 0;
    std::list<Attribute_cls*> mLPCDataProc; // owned
    int32_t mDataProcCount = 0;
    int32_t mNumBuiltInModifier = 0;
    int32_t mReferenceCounter = 0;
    double mModifierMatrix[16];
    bool mbProcessedMark = false;
    bool mbToBeDrawn = true;
    bool mbDetached = false; // out of the tree, waiting for its last release
    double mModifierTime = 0.0;

protected:
    // For the constructors of the kinds: the attribute counts as built in.
    void AddOwnAttribute(Attribute_cls* p);
    void AddBuiltInModifier(Attribute_cls* p);

private:
    // The whole attribute, for undo: a ReadProperties block that recreates it at its index.
    wxString GetStrAttributeRestoreText(Attribute_cls* p, const wxString& strStack, int index);
    void DeleteAttributeCommand(const wxString& strStack, const wxString& strName);
    void MoveAttributeCommand(const wxString& strStack, const wxString& strName, int position);
    void SetAttributeValidityCommand(const wxString& strStack, const wxString& strName, bool bValid);
    void AddAttributeCommand(const wxString& strStack, const wxString& strClass, wxString strName);
    bool IsColorCurve(Attribute_cls* p) const;
    bool IsBuiltIn(Attribute_cls* p) const;
    // The class's additional blocks (material, fog, format).
    void SerializeClassBlocks(wxString& strOut);
    bool ReadStrLineClassBlocks(std::wistream& stream, const wxString& strHead, const wxString& strRest);
    void SyncConfListTagClass();
    // Every attribute: the class's own, the modifiers, the data processes.
    std::vector<Attribute_cls*> GetVPCAllAttribute();
    ParamGroup_cls* GetPCTransformGroup(const wxString& strName);
    std::vector<double> GetTransformValues(const wxString& strName, double t, double fallback);
};
