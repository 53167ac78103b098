// The tree-node part of every scene object and of the root (the scene object controller): an
// ordered list of children, the draw order and the class word. Main thread only.
#pragma once

#include "GetPC_cls.h"
#include "Parser_cls.h"

#include <wx/arrstr.h>
#include <wx/string.h>

#include <cstdint>
#include <list>
#include <vector>

class Attribute_cls;
class SceneObj_cls;
class World_cls;

class ParentObj_cls : public GetPC_cls, public Parser_cls {
public:
    // nodeKind 0 is the root, 1 a scene object.
    ParentObj_cls(int nodeKind, const wxString& strClassWord);
    virtual ~ParentObj_cls();
    ParentObj_cls(const ParentObj_cls&) = delete;
    ParentObj_cls& operator=(const ParentObj_cls&) = delete;

    bool IsRoot() const { return mNodeKind == 0; }
    bool IsClassSameAs(const wxString& str) const { return mStrClassWord == str; }

    // Removes the whole subtree. An object that still holds references (selection, draw
    // instances) leaves the tree and is deleted by its last ReferRelease.
    void Clear();

    std::list<SceneObj_cls*>::iterator GetIterFromP(SceneObj_cls* p);
    std::list<SceneObj_cls*>::iterator GetIterFromIndex(int index);
    // Null when out of range.
    SceneObj_cls* GetPCFromIndex(int index);
    // -1 when p is not a direct child.
    int GetIndexFromPC(SceneObj_cls* p);
    // Depth first, each parent before its children.
    void GetAllObjectsName(wxArrayString& astr);
    void GetDirectChildrensName(wxArrayString& astr);
    bool IsSameAs(const wxString& strName) const { return GetStrName() == strName; }
    // Whether an object of that name is in this subtree, pExcept not counted.
    bool IsObjExist(const wxString& strName, SceneObj_cls* pExcept);
    // True when the named object is this node or lies below it: such an object cannot become
    // this node's parent.
    bool IsAncestor(const wxString& strName);
    // Depth first; null when absent.
    SceneObj_cls* GetPCFromName(const wxString& strName);
    // The object's name; "ROOT" for the controller.
    wxString GetStrName() const;
    // Index -1, or any index past the end, appends. The object must be out of any tree.
    void InsertSceneObjNative(SceneObj_cls* p, int index);
    // Unlinks a direct child without deleting it; false when it is not one.
    bool RemoveChildNative(SceneObj_cls* p);
    // Moves every child of pFrom into this node at index (-1: the end), keeping their order.
    void InheritChilds(SceneObj_cls* pFrom, int index = -1);
    // Every object of the subtree, depth first.
    void GetVPCList(std::vector<SceneObj_cls*>& vList);
    // The first world of the subtree, depth first; null if none.
    World_cls* GetPCWorld();
    // "<object>::<attribute>": the attribute, null if either is absent.
    Attribute_cls* GetPCAttributeFromAddress(wxString strAddress);

    // Drawing status of the subtree: each object is to be drawn when it is visible and valid,
    // and a hidden object hides nothing below it.
    void InitializeStatusForDrawing();
    void CheckStatusForDrawing();
    void ClearProcessedMarkInInstanceLoop();
    int GetActiveLightNumRoot(bool bVisibleOnly);
    int GetActiveLightNum(bool bVisibleOnly);
    double GetTotalUsedMemoryMB(int& count);
    void Prefetch();
    void ReleaseMemory();
    void RescaleParametersRoot(double factor);

    // "Box" gives "Box.001", "Box.001" gives "Box.002", "x.12" gives "x.12.001".
    static wxString GetStrNewCandidate(wxString strName);

    int32_t mDrawOrder = 2;
    int32_t mNodeKind = 0;
    wxString mStrClassWord;
    std::list<SceneObj_cls*> mLPCChild; // owned through the tree, see Clear
    int32_t mChildCount = 0;
};
