#include "ParentObj_cls.h"

#include "SceneObj_cls.h"
#include "World_cls.h"

#include <wx/log.h>

ParentObj_cls::ParentObj_cls(int nodeKind, const wxString& strClassWord)
    : mNodeKind(nodeKind), mStrClassWord(strClassWord) {}

ParentObj_cls::~ParentObj_cls() {
    // The destructor of an object leaves its children to the caller; only the root clears.
}

void ParentObj_cls::Clear() {
    while (!mLPCChild.empty()) {
        SceneObj_cls* p = mLPCChild.front();
        p->ParentObj_cls::Clear();
        mLPCChild.pop_front();
        --mChildCount;
        p->mpParent = nullptr;
        p->mbDetached = true;
        if (p->mReferenceCounter <= 0)
            delete p;
    }
    mChildCount = 0;
}

std::list<SceneObj_cls*>::iterator ParentObj_cls::GetIterFromP(SceneObj_cls* p) {
    for (auto it = mLPCChild.begin(); it != mLPCChild.end(); ++it)
        if (*it == p)
            return it;
    return mLPCChild.end();
}

std::list<SceneObj_cls*>::iterator ParentObj_cls::GetIterFromIndex(int index) {
    if (index < 0 || index >= mChildCount)
        return mLPCChild.end();
    auto it = mLPCChild.begin();
    std::advance(it, index);
    return it;
}

SceneObj_cls* ParentObj_cls::GetPCFromIndex(int index) {
    auto it = GetIterFromIndex(index);
    return it == mLPCChild.end() ? nullptr : *it;
}

int ParentObj_cls::GetIndexFromPC(SceneObj_cls* p) {
    int i = 0;
    for (SceneObj_cls* pChild : mLPCChild) {
        if (pChild == p)
            return i;
        ++i;
    }
    return -1;
}

void ParentObj_cls::GetAllObjectsName(wxArrayString& astr) {
    for (SceneObj_cls* p : mLPCChild) {
        astr.Add(p->GetStrName());
        p->GetAllObjectsName(astr);
    }
}

void ParentObj_cls::GetDirectChildrensName(wxArrayString& astr) {
    for (SceneObj_cls* p : mLPCChild)
        astr.Add(p->GetStrName());
}

bool ParentObj_cls::IsObjExist(const wxString& strName, SceneObj_cls* pExcept) {
    for (SceneObj_cls* p : mLPCChild) {
        if (p != pExcept && p->GetStrName() == strName)
            return true;
        if (p->IsObjExist(strName, pExcept))
            return true;
    }
    return false;
}

bool ParentObj_cls::IsAncestor(const wxString& strName) {
    if (!IsRoot() && GetStrName() == strName)
        return true;
    return GetPCFromName(strName) != nullptr;
}

SceneObj_cls* ParentObj_cls::GetPCFromName(const wxString& strName) {
    for (SceneObj_cls* p : mLPCChild) {
        if (p->GetStrName() == strName)
            return p;
        if (SceneObj_cls* pFound = p->GetPCFromName(strName))
            return pFound;
    }
    return nullptr;
}

wxString ParentObj_cls::GetStrName() const {
    if (IsRoot())
        return "ROOT";
    return static_cast<const SceneObj_cls*>(this)->mCName.GetBodySTR();
}

void ParentObj_cls::InsertSceneObjNative(SceneObj_cls* p, int index) {
    if (!p)
        return;
    if (index < 0 || index >= mChildCount)
        mLPCChild.push_back(p);
    else
        mLPCChild.insert(GetIterFromIndex(index), p);
    ++mChildCount;
    p->mpParent = this;
    p->mbDetached = false;
}

bool ParentObj_cls::RemoveChildNative(SceneObj_cls* p) {
    auto it = GetIterFromP(p);
    if (it == mLPCChild.end())
        return false;
    mLPCChild.erase(it);
    --mChildCount;
    p->mpParent = nullptr;
    return true;
}

void ParentObj_cls::InheritChilds(SceneObj_cls* pFrom, int index) {
    if (!pFrom || pFrom == this)
        return;
    std::list<SceneObj_cls*> lMoved;
    lMoved.swap(pFrom->mLPCChild);
    pFrom->mChildCount = 0;
    int at = index;
    for (SceneObj_cls* p : lMoved) {
        p->mpParent = nullptr;
        InsertSceneObjNative(p, at);
        if (at >= 0)
            ++at;
    }
}

void ParentObj_cls::GetVPCList(std::vector<SceneObj_cls*>& vList) {
    for (SceneObj_cls* p : mLPCChild) {
        vList.push_back(p);
        p->GetVPCList(vList);
    }
}

World_cls* ParentObj_cls::GetPCWorld() {
    std::vector<SceneObj_cls*> vList;
    GetVPCList(vList);
    for (SceneObj_cls* p : vList)
        if (p->IsClassSameAs("World_cls"))
            return static_cast<World_cls*>(p);
    return nullptr;
}

Attribute_cls* ParentObj_cls::GetPCAttributeFromAddress(wxString strAddress) {
    const wxString strObj = PopStrItemFromStrLine(strAddress, "::");
    SceneObj_cls* pObj = GetPCFromName(strObj);
    if (!pObj)
        return nullptr;
    return pObj->GetPCAttribute(strAddress, 0);
}

void ParentObj_cls::InitializeStatusForDrawing() {
    for (SceneObj_cls* p : mLPCChild) {
        p->mbToBeDrawn = p->mCVisible.GetBodyBOOL();
        p->InitializeStatusForDrawing();
    }
}

void ParentObj_cls::CheckStatusForDrawing() {
    for (SceneObj_cls* p : mLPCChild) {
        if (p->mbToBeDrawn && !p->IsValid())
            p->mbToBeDrawn = false;
        p->CheckStatusForDrawing();
    }
}

void ParentObj_cls::ClearProcessedMarkInInstanceLoop() {
    for (SceneObj_cls* p : mLPCChild) {
        p->mbProcessedMark = false;
        p->ClearProcessedMarkInInstanceLoop();
    }
}

int ParentObj_cls::GetActiveLightNumRoot(bool bVisibleOnly) {
    return GetActiveLightNum(bVisibleOnly);
}

int ParentObj_cls::GetActiveLightNum(bool bVisibleOnly) {
    int n = 0;
    for (SceneObj_cls* p : mLPCChild) {
        if (p->IsClassSameAs("LightSource_cls") && p->IsValid() &&
            (!bVisibleOnly || p->mCVisible.GetBodyBOOL()))
            ++n;
        n += p->GetActiveLightNum(bVisibleOnly);
    }
    return n;
}

double ParentObj_cls::GetTotalUsedMemoryMB(int& count) {
    double total = 0.0;
    for (SceneObj_cls* p : mLPCChild) {
        const double mb = p->GetUsedMemoryMB();
        if (mb > 0.0)
            ++count;
        total += mb + p->GetTotalUsedMemoryMB(count);
    }
    return total;
}

void ParentObj_cls::Prefetch() {
    for (SceneObj_cls* p : mLPCChild) {
        p->PrefetchData();
        p->Prefetch();
    }
}

void ParentObj_cls::ReleaseMemory() {
    for (SceneObj_cls* p : mLPCChild) {
        p->ReleaseMemoryData();
        p->ReleaseMemory();
    }
}

void ParentObj_cls::RescaleParametersRoot(double factor) {
    for (SceneObj_cls* p : mLPCChild) {
        p->RescaleParameters(factor);
        p->RescaleParametersRoot(factor);
    }
}

wxString ParentObj_cls::GetStrNewCandidate(wxString strName) {
    const int dot = strName.Find('.', true);
    if (dot == wxNOT_FOUND)
        return strName + ".001";
    const wxString strSuffix = strName.Mid(static_cast<size_t>(dot) + 1);
    if (strSuffix.length() != 3)
        return strName + ".001";
    long number = 0;
    if (!strSuffix.ToLong(&number) || wxString::Format("%03d", static_cast<int>(number)) != strSuffix)
        return strName + ".001";
    return strName.Left(static_cast<size_t>(dot) + 1) +
           wxString::Format("%03d", static_cast<int>(number) + 1);
}
