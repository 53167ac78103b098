#include "SceneObj_cls.h"

#include "Attribute_cls.h"
#include "KindTable_cls.h"
#include "Main_cls.h"
#include "Material_cls.h"
#include "ParamGroup_cls.h"
#include "ParamStream_cls.h"
#include "SceneObjCtrl_cls.h"
#include "SceneObjInstance_cls.h"
#include "TextHost_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/log.h>

#include <cmath>

namespace {

const char* const gTransformNames[3] = {"Position", "RotationEuler", "Scale"};

void AfterMath(const wxString& strWhat, const wxString& strArg) {
    if (GCClassProvider)
        GCClassProvider->ProcAfterMath(strWhat, strArg);
}

const char* const kColorCurveClass = "ColorCurve_cls";

// Bounded: a copy count beyond this is a broken entry, not a scene.
const int kMaxCopyCount = 100000;

// The kind of an attribute whose Validity= is on (or that has none).
const KindTable_cls::Entry_cls* FindActiveKind(Attribute_cls* p) {
    ConfItem_cls* pValid = p->GetPCItem("Validity=");
    if (pValid && !pValid->GetBodyBOOL())
        return nullptr;
    return KindTable_cls::Find(p->GetStrAttributeName());
}

// The colour-curve kind when p is a colour curve and its layer writes it; null otherwise, and
// the attribute is then written and read as any other.
const KindTable_cls::Entry_cls* FindColorCurveKind(Attribute_cls* p) {
    if (!p->IsAttributeSameAs(kColorCurveClass))
        return nullptr;
    const KindTable_cls::Entry_cls* pKind =
        KindTable_cls::Find(kColorCurveClass, KindTable_cls::GROUP_COLOR_CURVE);
    return pKind && pKind->mFuncSerialize ? pKind : nullptr;
}

} // namespace

SceneObj_cls::SceneObj_cls(ParentObj_cls* pParent, const wxString& strClassWord)
    : ParentObj_cls(1, strClassWord), mpParent(pParent) {
    mDrawOrder = 2;
    TensorMath_cls::SetIdentity(mModifierMatrix);
    for (int i = 0; i < 3; ++i) {
        wxArrayString astr;
        astr.Add("x");
        astr.Add("y");
        astr.Add("z");
        ParamGroup_cls* pGroup = new ParamGroup_cls(gTransformNames[i], astr);
        if (i == 2)
            pGroup->SetInitValue(1.0, 1.0, 1.0, 0.0);
        mVPCParamGroup.push_back(pGroup);
    }
}

SceneObj_cls::~SceneObj_cls() {
    for (Attribute_cls* p : mVPCOwnAttribute)
        Attribute_cls::Delete(p);
    for (Attribute_cls* p : mLPCModifier)
        Attribute_cls::Delete(p);
    for (Attribute_cls* p : mLPCDataProc)
        Attribute_cls::Delete(p);
    for (ParamGroup_cls* p : mVPCParamGroup)
        delete p;
}

bool SceneObj_cls::ReferRelease() {
    --mReferenceCounter;
    if (mReferenceCounter <= 0 && mbDetached && !mpParent) {
        delete this;
        return true;
    }
    return false;
}

// ---- names and tags -------------------------------------------------------------------------

void SceneObj_cls::Initialize(const wxString& strName) {
    Add(&mCName, "Name=", strName);
    Add(&mCVisible, "Visible=", "1", "TIMELINE");
    Add(&mCShy, "Shy=", "0");
    SyncConfListTag();
}

wxString SceneObj_cls::GetStrBaseName() const {
    wxString strName = GetStrName();
    const int dot = strName.Find('.', true);
    if (dot == wxNOT_FOUND)
        return strName;
    const wxString strSuffix = strName.Mid(static_cast<size_t>(dot) + 1);
    long n = 0;
    if (strSuffix.length() == 3 && strSuffix.ToLong(&n) &&
        wxString::Format("%03d", static_cast<int>(n)) == strSuffix)
        return strName.Left(static_cast<size_t>(dot));
    return strName;
}

wxString SceneObj_cls::GetStrParentName() const {
    return mpParent ? mpParent->GetStrName() : wxString("ROOT");
}

int SceneObj_cls::GetChildIndex() const {
    return mpParent ? mpParent->GetIndexFromPC(const_cast<SceneObj_cls*>(this)) : -1;
}

wxString SceneObj_cls::GetStrTag() const {
    return SceneObjCtrl_cls::GetStrSelf() + "Obj::" + GetStrName();
}

wxString SceneObj_cls::GetStrTag(ParamGroup_cls* pGroup) {
    return GetStrTag() + "::" + pGroup->GetStrName();
}

wxString SceneObj_cls::GetStrUniqueName(wxString strName) {
    while (IsAttributeExist(strName))
        strName = GetStrNewCandidate(strName);
    return strName;
}

void SceneObj_cls::SyncConfListTag() {
    SetTag("SceneObj::" + GetStrName());
    SyncConfListTagClass();
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
}

void SceneObj_cls::SyncConfListTagClass() {
    // The kinds of this layer keep every address in their attributes, which the caller retags;
    // the kinds of the layers above bring their own update.
    if (const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord))
        if (pKind->mFuncSyncConfListTag)
            pKind->mFuncSyncConfListTag(this);
}

// ---- look-up --------------------------------------------------------------------------------

std::vector<Attribute_cls*> SceneObj_cls::GetVPCAllAttribute() {
    std::vector<Attribute_cls*> v(mVPCOwnAttribute.begin(), mVPCOwnAttribute.end());
    v.insert(v.end(), mLPCModifier.begin(), mLPCModifier.end());
    v.insert(v.end(), mLPCDataProc.begin(), mLPCDataProc.end());
    return v;
}

ParamGroup_cls* SceneObj_cls::GetPCTransformGroup(const wxString& strName) {
    for (ParamGroup_cls* p : mVPCParamGroup)
        if (p->GetStrName() == strName)
            return p;
    return nullptr;
}

ParamGroup_cls* SceneObj_cls::GetPCParamGroup(const wxString& strAttr, const wxString& strGroup) {
    if (strAttr.empty())
        return GetPCTransformGroup(strGroup);
    Attribute_cls* pAttr = GetPCAttribute(strAttr, 0);
    return pAttr ? pAttr->GetPCParamGroup(strGroup) : nullptr;
}

Material_cls* SceneObj_cls::GetPCMaterial() {
    for (Attribute_cls* p : mVPCOwnAttribute)
        if (p->IsAttributeSameAs("Material_cls"))
            return static_cast<Material_cls*>(p);
    return nullptr;
}

Attribute_cls* SceneObj_cls::GetPCAttribute(const wxString& strName, int kind) {
    if (kind == 0)
        for (Attribute_cls* p : mVPCOwnAttribute)
            if (p->GetStrName() == strName)
                return p;
    if (kind == 0 || kind == 1)
        for (Attribute_cls* p : mLPCModifier)
            if (p->GetStrName() == strName)
                return p;
    if (kind == 0 || kind == 2)
        for (Attribute_cls* p : mLPCDataProc)
            if (p->GetStrName() == strName)
                return p;
    return nullptr;
}

Attribute_cls* SceneObj_cls::GetPCAttributeFromAttribName(const wxString& strClass, int n) {
    for (Attribute_cls* p : GetVPCAllAttribute())
        if (p->IsAttributeSameAs(strClass) && n-- == 0)
            return p;
    return nullptr;
}

Attribute_cls* SceneObj_cls::GetPCAttributeFromIndex(int index) {
    if (index < 0 || index >= mModifierCount)
        return nullptr;
    auto it = mLPCModifier.begin();
    std::advance(it, index);
    return *it;
}

Attribute_cls* SceneObj_cls::GetPCDataProc(const wxString& strName, int n) {
    for (Attribute_cls* p : mLPCDataProc)
        if (p->GetStrName() == strName && n-- == 0)
            return p;
    return nullptr;
}

Attribute_cls* SceneObj_cls::GetPCDataProcFromIndex(int index) {
    if (index < 0 || index >= mDataProcCount)
        return nullptr;
    auto it = mLPCDataProc.begin();
    std::advance(it, index);
    return *it;
}

Attribute_cls* SceneObj_cls::GetPCValidModifier(const wxString& strClass) {
    for (Attribute_cls* p : mLPCModifier) {
        if (!p->IsAttributeSameAs(strClass))
            continue;
        ConfItem_cls* pValid = p->GetPCItem("Validity=");
        if (!pValid || pValid->GetBodyBOOL())
            return p;
    }
    return nullptr;
}

ConfItem_cls* SceneObj_cls::GetPCItemInAttrib(const wxString& strAttr, const wxString& strItem) {
    Attribute_cls* p = GetPCAttribute(strAttr, 0);
    return p ? p->GetPCItem(strItem) : nullptr;
}

wxArrayString SceneObj_cls::GetAstrAttribList() {
    wxArrayString astr;
    for (Attribute_cls* p : GetVPCAllAttribute())
        astr.Add(p->GetStrName());
    return astr;
}

int SceneObj_cls::GetNumAttribute(const wxString& strClass) {
    int n = 0;
    for (Attribute_cls* p : GetVPCAllAttribute())
        if (p->IsAttributeSameAs(strClass))
            ++n;
    return n;
}

int SceneObj_cls::GetIndexModifier(Attribute_cls* p) {
    int i = 0;
    for (Attribute_cls* q : mLPCModifier) {
        if (q == p)
            return i;
        ++i;
    }
    return -1;
}

int SceneObj_cls::GetIndexDProc(Attribute_cls* p) {
    int i = 0;
    for (Attribute_cls* q : mLPCDataProc) {
        if (q == p)
            return i;
        ++i;
    }
    return -1;
}

bool SceneObj_cls::IsAttributeExist(const wxString& strName) {
    return GetPCAttribute(strName, 0) != nullptr;
}

bool SceneObj_cls::IsDataProcExist(const wxString& strName) {
    return GetPCAttribute(strName, 2) != nullptr;
}

bool SceneObj_cls::IsDataProcClsExist(const wxString& strClass) {
    for (Attribute_cls* p : mLPCDataProc)
        if (p->IsAttributeSameAs(strClass))
            return true;
    return false;
}

bool SceneObj_cls::IsAttributesTimeDepend() {
    for (Attribute_cls* p : GetVPCAllAttribute())
        if (p->IsParamGroupTimeDepend())
            return true;
    return false;
}

bool SceneObj_cls::IsParamGroupTimeDepend() {
    for (ParamGroup_cls* p : mVPCParamGroup)
        if (p->IsTimeDepend())
            return true;
    return false;
}

bool SceneObj_cls::IsSelectedTLKeyExist() {
    for (ParamGroup_cls* p : mVPCParamGroup)
        if (p->IsSelectedKeyExist())
            return true;
    for (Attribute_cls* p : GetVPCAllAttribute())
        if (p->IsSelectedTLKeyExist())
            return true;
    return false;
}

void SceneObj_cls::GetVstrParamTag(std::vector<wxString>& vStrTag) {
    for (ParamGroup_cls* pGroup : mVPCParamGroup)
        for (const Parameter_cls& param : pGroup->mVCParam)
            vStrTag.push_back(GetStrTag(pGroup) + "::" + param.GetStrName());
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->GetVstrParamTag(GetStrTag() + "::" + p->GetStrName(), vStrTag);
}

ConfItem_cls* SceneObj_cls::GetPCValidItem() {
    return GetPCItem("Valid=");
}

bool SceneObj_cls::IsValid() {
    ConfItem_cls* p = GetPCValidItem();
    return !p || p->GetBodyBOOL();
}

// ---- transforms -----------------------------------------------------------------------------

std::vector<double> SceneObj_cls::GetTransformValues(const wxString& strName, double t, double fallback) {
    std::vector<double> values;
    if (ParamGroup_cls* p = GetPCTransformGroup(strName))
        values = p->GetVInterpolatedValue(t, true, nullptr, false);
    // An expression caught in a reference loop answers nothing: the neutral value stands in.
    while (values.size() < 3)
        values.push_back(fallback);
    return values;
}

void SceneObj_cls::ApplyTranslate(double* m, double t) {
    const std::vector<double> v = GetTransformValues("Position", t, 0.0);
    Translate(m, v[0], v[1], v[2]);
}

void SceneObj_cls::ApplyRotate(double* m, double t) {
    const std::vector<double> v = GetTransformValues("RotationEuler", t, 0.0);
    const double k = M_PI / 180.0;
    RotateX(m, v[0] * k);
    RotateY(m, v[1] * k);
    RotateZ(m, v[2] * k);
}

void SceneObj_cls::GetMatrix16(double* out, double t, double* extra) {
    double P[16];
    SetIdentity(P);
    if (mpParent && mpParent->mNodeKind == 1)
        static_cast<SceneObj_cls*>(mpParent)->GetMatrix16(P, t, nullptr);
    const std::vector<double> s = GetTransformValues("Scale", t, 1.0);
    double S[16];
    SetIdentity(S);
    Scale(S, s[0], s[1], s[2]);
    double R[16];
    SetIdentity(R);
    ApplyRotate(R, t);
    double T[16];
    SetIdentity(T);
    ApplyTranslate(T, t);
    if (extra)
        Translate(T, extra[0], extra[1], extra[2]);
    double C[16];
    Multiply(C, T, R);
    mModifierTime = t;
    ProcModifier("TransformRot", C, P);
    Multiply(out, P, C);
    Multiply(out, out, S);
}

void SceneObj_cls::GetPositionGlobal(double t, double* out) {
    double m[16];
    GetMatrix16(m, t, nullptr);
    out[0] = m[12];
    out[1] = m[13];
    out[2] = m[14];
}

void SceneObj_cls::ProcModifier(const wxString& strStage, void* pIn, void* pOut) {
    if (strStage != "TransformRot")
        return;
    int index = 0;
    for (Attribute_cls* p : mLPCModifier) {
        if (index++ < mNumBuiltInModifier)
            continue;
        const KindTable_cls::Entry_cls* pKind = FindActiveKind(p);
        if (pKind && pKind->mFuncTransform)
            pKind->mFuncTransform(this, p, static_cast<double*>(pIn), static_cast<double*>(pOut),
                                  mModifierTime);
    }
}

// ---- drawing support ------------------------------------------------------------------------

std::vector<SceneObjInstance_cls*> SceneObj_cls::GetVNewPCInstance() {
    std::vector<SceneObjInstance_cls*> v;
    v.push_back(new SceneObjInstance_cls(this, nullptr, 0));
    for (Attribute_cls* p : mLPCModifier) {
        const KindTable_cls::Entry_cls* pKind = FindActiveKind(p);
        if (!pKind || !pKind->mFuncCopyCount)
            continue;
        const int n = std::min(pKind->mFuncCopyCount(this, p), kMaxCopyCount);
        for (int i = 0; i < n; ++i)
            v.push_back(new SceneObjInstance_cls(this, this, i + 1));
    }
    return v;
}

bool SceneObj_cls::GetCopyOffset(int copyIndex, double t, double* out) {
    if (copyIndex < 1)
        return false;
    int first = 1; // the copy index of the entry's first copy
    for (Attribute_cls* p : mLPCModifier) {
        const KindTable_cls::Entry_cls* pKind = FindActiveKind(p);
        if (!pKind || !pKind->mFuncCopyCount)
            continue;
        const int n = std::min(pKind->mFuncCopyCount(this, p), kMaxCopyCount);
        if (copyIndex < first + n)
            return pKind->mFuncCopyOffset && pKind->mFuncCopyOffset(this, p, copyIndex - first + 1, t, out);
        first += n;
    }
    return false;
}

// ---- memory ---------------------------------------------------------------------------------

double SceneObj_cls::GetUsedMemoryMB() {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    return pKind && pKind->mFuncUsedMemoryMB ? pKind->mFuncUsedMemoryMB(this) : 0.0;
}

void SceneObj_cls::PrefetchData() {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    if (pKind && pKind->mFuncPrefetch)
        pKind->mFuncPrefetch(this);
}

void SceneObj_cls::ReleaseMemoryData() {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    if (pKind && pKind->mFuncRelease)
        pKind->mFuncRelease(this);
}

// ---- commands -------------------------------------------------------------------------------

void SceneObj_cls::AddAttributeCommand(const wxString& strStack, const wxString& strClass, wxString strName) {
    if (strName.empty())
        strName = strClass.EndsWith("_cls") ? strClass.Left(strClass.length() - 4) : strClass;
    strName = GetStrUniqueName(strName);
    TextHost_cls::PushAndRedo(GetStrTag() + "::Delete::" + strStack + "::" + strName,
                              GetStrTag() + "::New::" + strStack + "::" + strClass + "::" + strName);
}

void SceneObj_cls::AddModifierCommand(const wxString& strClass, wxString strName) {
    AddAttributeCommand("Modifier", strClass, strName);
}

void SceneObj_cls::AddDataProcCommand(const wxString& strClass, wxString strName) {
    AddAttributeCommand("DataProc", strClass, strName);
}

wxString SceneObj_cls::GetStrAttributeRestoreText(Attribute_cls* p, const wxString& strStack, int index) {
    wxString str = SceneObjCtrl_cls::GetStrSelf() + "ReadProperties::" + GetStrName() + "\n";
    if (const KindTable_cls::Entry_cls* pCurve = FindColorCurveKind(p)) {
        str += "New::ColorCurve::" + p->GetStrName() + "\n";
        pCurve->mFuncSerialize(p, str);
    } else {
        str += "New::" + strStack + "::" + p->GetStrAttributeName() + "::" + p->GetStrName() + "\n";
        p->Serialize(str);
    }
    str += wxString::Format("Move::%s::%s::%d\n", strStack, p->GetStrName(), index);
    str += "ReadProperties::End";
    return str;
}

void SceneObj_cls::DeleteAttributeCommand(const wxString& strStack, const wxString& strName) {
    const int kind = strStack == "Modifier" ? 1 : 2;
    Attribute_cls* p = GetPCAttribute(strName, kind);
    if (!p || IsBuiltIn(p)) {
        wxLogWarning("%s: no %s \"%s\" to delete", GetStrName(), strStack, strName);
        return;
    }
    const int index = kind == 1 ? GetIndexModifier(p) : GetIndexDProc(p);
    if (!GpCUndo)
        return;
    GpCUndo->OpenBlock("Delete" + strStack);
    TextHost_cls::PushAndRedo(GetStrAttributeRestoreText(p, strStack, index),
                              GetStrTag() + "::Delete::" + strStack + "::" + strName);
    GpCUndo->CloseBlock("Delete" + strStack);
}

void SceneObj_cls::DeleteModifierCommand(const wxString& strName) {
    DeleteAttributeCommand("Modifier", strName);
}

void SceneObj_cls::DeleteDataProcCommand(const wxString& strName) {
    DeleteAttributeCommand("DataProc", strName);
}

void SceneObj_cls::MoveAttributeCommand(const wxString& strStack, const wxString& strName, int position) {
    const int kind = strStack == "Modifier" ? 1 : 2;
    Attribute_cls* p = GetPCAttribute(strName, kind);
    if (!p || IsBuiltIn(p))
        return;
    const int count = kind == 1 ? mModifierCount : mDataProcCount;
    const int first = kind == 1 ? mNumBuiltInModifier : 0;
    const int oldIndex = kind == 1 ? GetIndexModifier(p) : GetIndexDProc(p);
    const int newIndex = std::max(first, std::min(position, count - 1));
    if (newIndex == oldIndex)
        return;
    TextHost_cls::PushAndRedo(
        GetStrTag() + wxString::Format("::Move::%s::%s::%d", strStack, strName, oldIndex),
        GetStrTag() + wxString::Format("::Move::%s::%s::%d", strStack, strName, newIndex));
}

void SceneObj_cls::MoveModifierCommand(const wxString& strName, int position) {
    MoveAttributeCommand("Modifier", strName, position);
}

void SceneObj_cls::MoveDataProcCommand(const wxString& strName, int position) {
    MoveAttributeCommand("DataProc", strName, position);
}

void SceneObj_cls::SetAttributeValidityCommand(const wxString& strStack, const wxString& strName,
                                               bool bValid) {
    Attribute_cls* p = GetPCAttribute(strName, strStack == "Modifier" ? 1 : 2);
    ConfItem_cls* pItem = p ? p->GetPCItem("Validity=") : nullptr;
    if (!pItem) {
        wxLogWarning("%s: no %s \"%s\" with a validity switch", GetStrName(), strStack, strName);
        return;
    }
    if (pItem->GetBodyBOOL() == bValid)
        return;
    pItem->PushCommandPair(bValid ? "1" : "0");
}

void SceneObj_cls::SetModifierValidityCommand(const wxString& strName, bool bValid) {
    SetAttributeValidityCommand("Modifier", strName, bValid);
}

void SceneObj_cls::SetDataProcValidityCommand(const wxString& strName, bool bValid) {
    SetAttributeValidityCommand("DataProc", strName, bValid);
}

void SceneObj_cls::AddMaterialCommand() {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    if (!pKind || !pKind->mFuncNewMaterial) {
        wxLogWarning("%s: a %s has one material and takes no other", GetStrName(), mStrClassWord);
        return;
    }
    // A kind may refuse one more (a particle object has at most ten): then no step at all.
    if (pKind->mFuncCanAddMaterial && !pKind->mFuncCanAddMaterial(this))
        return;
    const wxString strName = GetStrUniqueName("Material");
    TextHost_cls::PushAndRedo(GetStrTag() + "::Delete::Material::" + strName,
                              GetStrTag() + "::New::Material::" + strName);
}

void SceneObj_cls::DeleteSelectedTLKeyCommand() {
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->DeleteSelectedTLKeyCommand(GetStrTag(p));
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->DeleteSelectedTLKeyCommand(GetStrTag() + "::" + p->GetStrName());
}

void SceneObj_cls::SetSelectedTLKeyTypeCommand(int type, double ease) {
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->SetSelectedTLKeyTypeCommand(GetStrTag(p), type, ease);
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->SetSelectedTLKeyTypeCommand(GetStrTag() + "::" + p->GetStrName(), type, ease);
}

void SceneObj_cls::MoveSelectedTLKeyCommand(double dx, double dy) {
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->MoveSelectedTLKeyCommand(dx, dy, GetStrTag(p));
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->MoveSelectedTLKeyCommand(GetStrTag() + "::" + p->GetStrName(), dx, dy);
}

void SceneObj_cls::RescaleParameters(double factor) {
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->RescaleParametersCommand(factor, GetStrTag(p));
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->RescaleParametersCommand(GetStrTag() + "::" + p->GetStrName(), factor);
}

void SceneObj_cls::SetParam3Command(const wxString& strGroup, double* values) {
    ParamGroup_cls* pGroup = GetPCTransformGroup(strGroup);
    if (!pGroup || !values)
        return;
    const double t = TimeCtrl_cls::GetClockNT();
    int type = -1;
    double ease = 1.0;
    if (GpCTimeCtrl)
        GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    if (GpCUndo)
        GpCUndo->OpenBlock("SetParam3");
    for (size_t i = 0; i < pGroup->mVCParam.size() && i < 3; ++i) {
        Parameter_cls& param = pGroup->mVCParam[i];
        if (param.GetValue(t) == values[i])
            continue;
        param.SetValueAtCommand(values[i], t, GetStrTag(pGroup) + "::" + param.GetStrName(), type, ease);
    }
    if (GpCUndo)
        GpCUndo->CloseBlock("SetParam3");
}

void SceneObj_cls::SetParamD3Command(const wxString& strGroup, double* deltas) {
    ParamGroup_cls* pGroup = GetPCTransformGroup(strGroup);
    if (!pGroup || !deltas)
        return;
    const double t = TimeCtrl_cls::GetClockNT();
    double values[3] = {0.0, 0.0, 0.0};
    for (size_t i = 0; i < pGroup->mVCParam.size() && i < 3; ++i)
        values[i] = pGroup->mVCParam[i].GetValue(t) + deltas[i];
    SetParam3Command(strGroup, values);
}

void SceneObj_cls::DeselectKeyFrame(const wxString& strTag) {
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->DeselectKey(strTag);
    for (Attribute_cls* p : GetVPCAllAttribute())
        p->DeselectKeyFrame(strTag);
}

// ---- line execution -------------------------------------------------------------------------

bool SceneObj_cls::IsColorCurve(Attribute_cls* p) const {
    return p->IsAttributeSameAs(kColorCurveClass);
}

bool SceneObj_cls::IsBuiltIn(Attribute_cls* p) const {
    int index = 0;
    for (Attribute_cls* q : mLPCModifier) {
        if (index++ >= mNumBuiltInModifier)
            break;
        if (q == p)
            return true;
    }
    for (Attribute_cls* q : mVPCOwnAttribute)
        if (q == p)
            return true;
    return false;
}

bool SceneObj_cls::ProcNewModifier(Attribute_cls* p) {
    if (!p)
        return false;
    p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
    mLPCModifier.push_back(p);
    ++mModifierCount;
    AfterMath("ModifierChange", GetStrTag() + "::" + p->GetStrName());
    return true;
}

bool SceneObj_cls::ProcNewDProc(Attribute_cls* p) {
    if (!p)
        return false;
    p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
    mLPCDataProc.push_back(p);
    ++mDataProcCount;
    AfterMath("DataProcChange", GetStrTag() + "::" + p->GetStrName());
    return true;
}

bool SceneObj_cls::ProcNewMaterial(const wxString& strName) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    if (!pKind || !pKind->mFuncNewMaterial || IsAttributeExist(strName))
        return false;
    Attribute_cls* p = pKind->mFuncNewMaterial(this, strName);
    if (!p)
        return false;
    mVPCOwnAttribute.push_back(p);
    p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
    AfterMath("ModifierChange", GetStrTag() + "::" + strName);
    return true;
}

bool SceneObj_cls::ProcNewColorCurve(const wxString& strName) {
    const KindTable_cls::Entry_cls* pKind =
        KindTable_cls::Find(kColorCurveClass, KindTable_cls::GROUP_COLOR_CURVE);
    if (!pKind || !pKind->mFuncMakeAttribute) {
        wxLogWarning("%s: colour curves are not available", GetStrName());
        return false;
    }
    Attribute_cls* p = pKind->mFuncMakeAttribute(this, strName);
    if (!p)
        return false;
    return ProcNewModifier(p);
}

bool SceneObj_cls::ProcNew(wxString strRest) {
    const wxString strKind = PopStrItemFromStrLine(strRest, "::");
    if (strKind == "ColorCurve") {
        if (strRest.empty() || strRest.Contains("::") || IsAttributeExist(strRest))
            return false;
        return ProcNewColorCurve(strRest);
    }
    if (strKind == "Material") {
        if (strRest.empty() || strRest.Contains("::"))
            return false;
        return ProcNewMaterial(strRest);
    }
    if (strKind != "Modifier" && strKind != "DataProc")
        return false;
    const wxString strClass = PopStrItemFromStrLine(strRest, "::");
    const wxString strName = strRest;
    if (strClass.empty() || strName.empty() || strName.Contains("::"))
        return false;
    if (IsAttributeExist(strName)) {
        wxLogWarning("%s: an attribute \"%s\" exists already", GetStrName(), strName);
        return false;
    }
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(
        strClass, strKind == "Modifier" ? KindTable_cls::GROUP_MODIFIER : KindTable_cls::GROUP_DATA_PROC);
    if (!pKind || !pKind->mFuncMakeAttribute) {
        wxLogWarning("%s: unknown %s class \"%s\"", GetStrName(), strKind, strClass);
        return false;
    }
    Attribute_cls* p = pKind->mFuncMakeAttribute(this, strName);
    if (!p) {
        wxLogWarning("%s: a %s does not take \"%s\"", GetStrName(), mStrClassWord, strClass);
        return false;
    }
    return strKind == "Modifier" ? ProcNewModifier(p) : ProcNewDProc(p);
}

bool SceneObj_cls::ProcDelete(wxString strRest) {
    const wxString strKind = PopStrItemFromStrLine(strRest, "::");
    if (strKind == "Material") {
        for (auto it = mVPCOwnAttribute.begin(); it != mVPCOwnAttribute.end(); ++it) {
            if ((*it)->GetStrName() != strRest || GetNumAttribute((*it)->GetStrAttributeName()) < 2)
                continue;
            Attribute_cls* p = *it;
            mVPCOwnAttribute.erase(it);
            AfterMath("DeleteMaterial", GetStrTag() + "::" + strRest);
            Attribute_cls::Delete(p);
            return true;
        }
        return false;
    }
    std::list<Attribute_cls*>* pList = nullptr;
    int32_t* pCount = nullptr;
    if (strKind == "Modifier") {
        pList = &mLPCModifier;
        pCount = &mModifierCount;
    } else if (strKind == "DataProc") {
        pList = &mLPCDataProc;
        pCount = &mDataProcCount;
    } else {
        return false;
    }
    for (auto it = pList->begin(); it != pList->end(); ++it) {
        Attribute_cls* p = *it;
        if (p->GetStrName() != strRest || IsBuiltIn(p))
            continue;
        pList->erase(it);
        --*pCount;
        const wxString strWhat = IsColorCurve(p) ? "DeleteColorCurve" : "Delete" + strKind;
        AfterMath(strWhat, GetStrTag() + "::" + strRest);
        Attribute_cls::Delete(p);
        return true;
    }
    return false;
}

bool SceneObj_cls::ProcMove(wxString strRest) {
    const wxString strKind = PopStrItemFromStrLine(strRest, "::");
    const wxString strName = PopStrItemFromStrLine(strRest, "::");
    long index = 0;
    if (!strRest.ToLong(&index))
        return false;
    std::list<Attribute_cls*>* pList = nullptr;
    int first = 0;
    if (strKind == "Modifier") {
        pList = &mLPCModifier;
        first = mNumBuiltInModifier;
    } else if (strKind == "DataProc") {
        pList = &mLPCDataProc;
    } else {
        return false;
    }
    auto it = pList->begin();
    for (; it != pList->end(); ++it)
        if ((*it)->GetStrName() == strName)
            break;
    if (it == pList->end() || IsBuiltIn(*it))
        return false;
    Attribute_cls* p = *it;
    pList->erase(it);
    const long last = static_cast<long>(pList->size());
    index = std::max<long>(first, std::min(index, last));
    auto at = pList->begin();
    std::advance(at, index);
    pList->insert(at, p);
    AfterMath(strKind == "Modifier" ? "ModifierChange" : "DataProcChange", GetStrTag() + "::" + strName);
    return true;
}

void SceneObj_cls::ProcRename(const wxString& strName) {
    mCName.SetBodyFromData(strName);
    SyncConfListTag();
}

void SceneObj_cls::AddOwnAttribute(Attribute_cls* p) {
    if (!p)
        return;
    mVPCOwnAttribute.push_back(p);
    mAstrBuiltInOwnAttribute.Add(p->GetStrName());
    p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
}

void SceneObj_cls::AddBuiltInModifier(Attribute_cls* p) {
    if (!p)
        return;
    auto at = mLPCModifier.begin();
    std::advance(at, mNumBuiltInModifier);
    mLPCModifier.insert(at, p);
    ++mModifierCount;
    ++mNumBuiltInModifier;
    p->SetConfListTagForSceneObjAttribute(p->GetStrName(), GetStrName());
}

// ---- text -----------------------------------------------------------------------------------

void SceneObj_cls::Serialize(wxString& strOut) {
    strOut += SceneObjCtrl_cls::GetStrSelf() + "New::" + mStrClassWord + "::ANY::" + GetStrName() + "\n\n";
    SerializePropertiesOnly(strOut);
    for (SceneObj_cls* pChild : mLPCChild) {
        pChild->Serialize(strOut);
        strOut += SceneObjCtrl_cls::GetStrSelf() + "SetToChild::" + pChild->GetStrName() +
                  "::To::" + GetStrName() + "\n";
    }
}

void SceneObj_cls::SerializeClassBlocks(wxString& strOut) {
    // The own attributes: the materials of the kinds that have them, the fog of the world (a
    // camera has none); then what a kind of a layer above writes (the formats of particles).
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord);
    for (Attribute_cls* p : mVPCOwnAttribute) {
        if (pKind && pKind->mFuncSavesOwnAttribute && !pKind->mFuncSavesOwnAttribute(this, p))
            continue;
        // A material the user added comes back through its line; a built-in one is there
        // again when the object is made.
        if (mAstrBuiltInOwnAttribute.Index(p->GetStrName()) == wxNOT_FOUND)
            strOut += "New::Material::" + p->GetStrName() + "\n";
        p->Serialize(strOut);
    }
    // A built-in material the user deleted goes again after the others are back.
    for (const wxString& strName : mAstrBuiltInOwnAttribute) {
        bool bPresent = false;
        for (Attribute_cls* p : mVPCOwnAttribute)
            bPresent = bPresent || p->GetStrName() == strName;
        if (!bPresent)
            strOut += "Delete::Material::" + strName + "\n";
    }
    if (pKind && pKind->mFuncSerializeExtra)
        pKind->mFuncSerializeExtra(this, strOut);
}

bool SceneObj_cls::ReadStrLineClassBlocks(std::wistream& stream, const wxString& strHead,
                                          const wxString& strRest) {
    for (Attribute_cls* p : mVPCOwnAttribute)
        if (p->ReadStrLine(stream, strHead, strRest))
            return true;
    if (const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(mStrClassWord))
        if (pKind->mFuncReadExtra && pKind->mFuncReadExtra(this, stream, strHead, strRest))
            return true;
    return false;
}

void SceneObj_cls::SerializePropertiesOnly(wxString& strOut) {
    strOut += SceneObjCtrl_cls::GetStrSelf() + "ReadProperties::" + GetStrName() + "\n";
    ConfListContainer_cls::Serialize(strOut);
    SerializeClassBlocks(strOut);
    int index = 0;
    for (Attribute_cls* p : mLPCModifier) {
        const bool bBuiltIn = index++ < mNumBuiltInModifier;
        if (const KindTable_cls::Entry_cls* pCurve = FindColorCurveKind(p)) {
            if (!bBuiltIn)
                strOut += "New::ColorCurve::" + p->GetStrName() + "\n";
            pCurve->mFuncSerialize(p, strOut);
            continue;
        }
        // What the class made by itself is there again when the object is made: no line.
        if (!bBuiltIn)
            strOut += "New::Modifier::" + p->GetStrAttributeName() + "::" + p->GetStrName() + "\n";
        p->Serialize(strOut);
    }
    for (Attribute_cls* p : mLPCDataProc) {
        strOut += "New::DataProc::" + p->GetStrAttributeName() + "::" + p->GetStrName() + "\n";
        p->Serialize(strOut);
    }
    for (ParamGroup_cls* p : mVPCParamGroup)
        p->Serialize(strOut);
    strOut += "ReadProperties::End\n";
}

bool SceneObj_cls::ReadStrLine(std::wistream& stream, const wxString& strHead, const wxString& strRest) {
    // 1. the object's list
    if (ConfListContainer_cls::ReadStrLine(stream, strHead, strRest))
        return true;
    // 2. the class's own blocks
    if (ReadStrLineClassBlocks(stream, strHead, strRest))
        return true;
    // 3. and 4. the modifiers, then the data processes
    for (Attribute_cls* p : mLPCModifier) {
        const KindTable_cls::Entry_cls* pCurve = FindColorCurveKind(p);
        if (pCurve && pCurve->mFuncReadStrLine) {
            if (pCurve->mFuncReadStrLine(p, stream, strHead, strRest))
                return true;
        } else if (p->ReadStrLine(stream, strHead, strRest)) {
            return true;
        }
    }
    for (Attribute_cls* p : mLPCDataProc)
        if (p->ReadStrLine(stream, strHead, strRest))
            return true;
    // 5. one line for a group: <attribute>::<group>::... or <group>::...
    {
        wxString strRemainder = strRest;
        const wxString strFirst = PopStrItemFromStrLine(strRemainder, "::");
        if (ParamGroup_cls* pGroup = GetPCParamGroup(strHead, strFirst); pGroup && !strHead.empty()) {
            const wxString strNext = PopStrItemFromStrLine(strRemainder, "::");
            if (pGroup->ReadStrOneLiner(strNext, strRemainder))
                return true;
        } else if (ParamGroup_cls* pOwn = GetPCTransformGroup(strHead)) {
            if (pOwn->ReadStrOneLiner(strFirst, strRemainder))
                return true;
        }
    }
    // 6. the attribute verbs
    if (strHead == "New")
        return ProcNew(strRest);
    if (strHead == "Delete")
        return ProcDelete(strRest);
    if (strHead == "Move")
        return ProcMove(strRest);
    // 7. a transform group's block
    if (strHead == "ReadParamGroup") {
        wxString strLine = strRest;
        const wxString strGroup = PopStrItemFromStrLine(strLine, "::");
        ParamGroup_cls* pGroup = GetPCTransformGroup(strGroup);
        if (!pGroup)
            return false;
        ParamStream_cls reader;
        while (reader.GetLine(stream, strLine)) {
            const wxString strLineHead = ParamStream_cls::PopHead(strLine);
            if (strLineHead == "ReadParamGroup" || strLineHead == "ReadProperties" ||
                strLineHead == "SceneObjCtrl") {
                if (strLineHead == "ReadParamGroup" && strLine == "End")
                    return true;
                wxLogWarning("%s: %s::%s inside the block of %s (strLine.IsSameAs(\"End\"))", GetStrName(),
                             strLineHead, strLine, strGroup);
                reader.PutBack(stream);
                return true;
            }
            pGroup->ReadStrLine(stream, strLineHead, strLine);
        }
        wxLogWarning("%s: the text ends inside the block of %s", GetStrName(), strGroup);
        return true;
    }
    return false;
}
