#include "DataViewerBase_cls.h"

#include "AttributeClone_cls.h"
#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "DataSequence_cls.h"
#include "KindTable_cls.h"
#include "SequenceRemapBase_cls.h"
#include "ViewerClone_cls.h"

DataViewerBase_cls::DataViewerBase_cls(ParentObj_cls* pParent, const wxString& strClassWord)
    : SceneObj_cls(pParent, strClassWord) {
    Add(&mCPath, "Path=", "None", "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE");
    Add(&mCUseSequence, "UseSequence=", "1", "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE");
    Add(&mCScript, "Script=", "None", "VIEW3D::PROPERTY_OBJECT");
    Add(&mCSeqOffset, "SeqOffset=", "0", "VIEW3D::PROPERTY_OBJECT::TIMELINE");
}

wxString DataViewerBase_cls::GetStrCheckKey() const {
    return mCPath.GetBodySTR() + "\n" + (mCUseSequence.GetBodyBOOL() ? "1" : "0") + "\n" +
           mCScript.GetBodySTR();
}

bool DataViewerBase_cls::IsPathChanged() const {
    return GetStrCheckKey() != mStrCheckedKey;
}

int DataViewerBase_cls::CheckFileSequence(DataSequence_cls& seq) {
    mStrCheckedKey = GetStrCheckKey();
    const wxString strPath = mCPath.GetBodySTR();
    seq.mStrScript = GetStrScript();
    if (strPath.empty() || strPath == "None") {
        seq.ClearSequence();
        seq.mIsSequence = false;
        return 0;
    }
    const bool useSequence = mCUseSequence.GetBodyBOOL();
    seq.FileSequence_cls::Set(strPath, 0, 1);
    seq.CalcMaxOffset(useSequence);
    const int count = seq.GetSnapCount();
    seq.mIsSequence = useSequence && count != 1;
    return count;
}

int DataViewerBase_cls::CheckFileSequenceStack(DataSequence_cls& seq, int offsetZ) {
    CheckFileSequence(seq);
    const wxString strPath = GetStrPath();
    if (strPath.empty() || strPath == "None")
        return 0;
    seq.SetDual(strPath, 0, offsetZ, 1, 1);
    seq.CalcMaxOffsetDual();
    const int count = seq.GetSnapCount();
    seq.mIsSequence = count != 1;
    return count;
}

SequenceRemapBase_cls* DataViewerBase_cls::GetPCSequenceRemap() {
    return dynamic_cast<SequenceRemapBase_cls*>(GetPCValidModifier("SequenceRemap_cls"));
}

void DataViewerBase_cls::ModFrame(int& frame, int count, bool repeat) {
    DataSequence_cls::ModFrame(frame, count, repeat);
}

wxString DataViewerBase_cls::GetStrScript() const {
    const wxString str = mCScript.GetBodySTR();
    wxString strTrim = str;
    strTrim.Trim().Trim(false);
    return (strTrim.empty() || strTrim.IsSameAs("None", false)) ? wxString() : str;
}

void DataViewerBase_cls::Clone(ViewerClone_cls& clone, double time) {
    clone.mCConfList.CloneConfListFrom(*this);
    clone.mStrClassWord = mStrClassWord;
    GetMatrix16(clone.mMatrix, time);
    for (Attribute_cls* p : mVPCOwnAttribute) {
        auto* pClone = new AttributeClone_cls;
        p->Clone(*pClone);
        clone.AddAttribute(pClone);
    }
    for (const std::list<Attribute_cls*>* pList : {&mLPCModifier, &mLPCDataProc})
        for (Attribute_cls* p : *pList) {
            auto* pClone = new AttributeClone_cls;
            p->Clone(*pClone);
            clone.AddAttribute(pClone);
        }
}

ColorCurve_cls* DataViewerBase_cls::GetPNewColorCurve(SceneObj_cls* pOwner, const wxString& strName) {
    wxArrayString astrMembers;
    for (const char* str : {"R", "G", "B", "A"})
        astrMembers.Add(str);
    auto* pCurve = new ColorCurve_cls(strName, astrMembers);
    pCurve->mpCOwner = pOwner;
    // A new curve draws at once: it starts as a copy of the first preset.
    if (GpCColorCurveProvider && GpCColorCurveProvider->GetPCColorCurve(0))
        pCurve->CopyColorCurveFromP(GpCColorCurveProvider->GetPCColorCurve(0));
    else
        ColorCurveProvider_cls::SetPresetKeys(0, pCurve);
    return pCurve;
}

bool DataViewerBase_cls::IsDataViewerClass(const wxString& strClass) {
    for (const char* str :
         {"Particle_cls", "VolumeBox_cls", "Streamline_cls", "HeightField_cls", "Isosurface_cls"})
        if (strClass == str)
            return true;
    return false;
}

bool DataViewerBase_cls::PrepareDrawByKind(SceneObj_cls* pObj, int composite) {
    const KindTable_cls::Entry_cls* pKind = pObj ? KindTable_cls::Find(pObj->mStrClassWord) : nullptr;
    const PrepareDraw_fn* pFunc =
        pKind ? pKind->GetSlot<PrepareDraw_fn>(KindTable_cls::SLOT_PREPARE) : nullptr;
    return pFunc && (*pFunc)(pObj, composite);
}
