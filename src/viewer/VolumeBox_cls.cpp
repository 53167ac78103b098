#include "VolumeBox_cls.h"

#include "ClassProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TensorMath_cls.h"

#include <algorithm>

#include <wx/log.h>

namespace {
const wxString kDraw = "VIEW3D";
const wxString kSeq = "VIEW3D::PROPERTY_OBJECT::PROPERTY_INFO::TIMELINE";
} // namespace

VolumeBox_cls::VolumeBox_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "VolumeBox_cls") {
    mDrawOrder = 0;
    Add(&mCSeqOffsetZ, "SeqOffsetZ=", "0", kSeq);
    Add(&mCQuality, "Quality=", "128", kDraw);
    Add(&mCSubQuality, "SubQuality=", "4", kDraw);
    Add(&mCTest, "Test=", "1", kDraw);
    Add(&mCZStack, "ZStack=", "0", kSeq);
    Add(&mCShader, "Shader=", "1", kDraw);
    Add(&mCDiscard0, "Discard0=", "0", kDraw);
    Add(&mCSelfShadow, "SelfShadow=", "0", kDraw);
    Add(&mCShaderQuality, "ShaderQuality=", "16", kDraw);
    Add(&mCShaderFactor, "ShaderFactor=", "-1", kDraw);
    Add(&mCRepeatCC, "RepeatCC=", "0", kDraw);
    AddOwnAttribute(new Material_cls("Material", "VolumeBox_cls"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

int VolumeBox_cls::CheckFileSequence() {
    if (!IsZStack())
        return DataViewerBase_cls::CheckFileSequence(mCSequence);
    return CheckFileSequenceStack(mCSequence, static_cast<int>(mCSeqOffsetZ.GetBodyINT()));
}

wxString VolumeBox_cls::GetStrProcCounterForProcess() const {
    return mCPath.GetBodySTR() + "|" + mCZStack.GetBodySTR() + "|" + mCSeqOffsetZ.GetBodySTR() + "|" +
           mCSeqOffset.GetBodySTR();
}

VolumeSetting_cls VolumeBox_cls::GetSetting(double nt) {
    VolumeSetting_cls s;
    wxString strProcs;
    // The data processes of the volume family, read by their keys in stack order (the kinds live
    // in the modifier layer above). Their values at this time enter the stamp, so an animated
    // shape prepares again.
    for (int i = 0; Attribute_cls* p = GetPCDataProcFromIndex(i); ++i) {
        auto integer = [p](const char* pHead) {
            const ConfItem_cls* pItem = p->GetPCItem(pHead);
            return pItem ? static_cast<int>(pItem->GetBodyINT()) : 0;
        };
        if (const ConfItem_cls* pValid = p->GetPCItem("Validity="); pValid && !pValid->GetBodyBOOL())
            continue;
        if (p->IsAttributeSameAs("VolumeDownsize_cls")) {
            const int factor[3] = {integer("DownsizeX="), integer("DownsizeY="), integer("DownsizeZ=")};
            for (int k = 0; k < 3; ++k)
                s.mDownsize[k] *= std::max(factor[k], 1);
        } else if (p->IsAttributeSameAs("VolumeBoolean_cls")) {
            VolumeSetting_cls::Boolean_cls b;
            b.mType = integer("BooleanType=");
            b.mShape = integer("BooleanShape=");
            if (b.mShape == VolumeSetting_cls::Boolean_cls::SHAPE_OBJECT) {
                // The own box of a mesh or primitive named by BooleanObject=, as the particles take
                // it; without such an object the data process does nothing.
                const ConfItem_cls* pItem = p->GetPCItem("BooleanObject=");
                SceneObj_cls* pObj =
                    pItem && GpCSceneObjCtrl ? GpCSceneObjCtrl->GetPCFromName(pItem->GetBodySTR()) : nullptr;
                double object[16], inverse[16], own[16];
                if (!pObj || !(pObj->IsClassSameAs("MeshObj_cls") || pObj->IsClassSameAs("Primitive_cls")))
                    continue;
                pObj->GetMatrix16(object, nt, nullptr);
                if (!TensorMath_cls::Invert(object, inverse))
                    continue;
                GetMatrix16(own, nt, nullptr);
                TensorMath_cls::Multiply(b.mObject, inverse, own);
                s.mVBoolean.push_back(b);
                strProcs += wxString::Format("|B%d %d", b.mType, b.mShape);
                for (double v : b.mObject)
                    strProcs += wxString::Format(" %.9g", v);
                continue;
            }
            if (b.mShape != VolumeSetting_cls::Boolean_cls::SHAPE_BOX &&
                b.mShape != VolumeSetting_cls::Boolean_cls::SHAPE_SPHERE)
                continue;
            const char* vAxis[3] = {"X Min/Max", "Y Min/Max", "Z Min/Max"};
            for (int k = 0; k < 3; ++k)
                if (ParamGroup_cls* pGroup = p->GetPCParamGroup(vAxis[k])) {
                    const std::vector<double> v = pGroup->GetVInterpolatedValue(nt, true, nullptr, false);
                    if (v.size() >= 2) {
                        b.mMin[k] = v[0];
                        b.mMax[k] = v[1];
                    }
                }
            s.mVBoolean.push_back(b);
            strProcs += wxString::Format("|B%d %d %g %g %g %g %g %g", b.mType, b.mShape, b.mMin[0], b.mMax[0],
                                         b.mMin[1], b.mMax[1], b.mMin[2], b.mMax[2]);
        }
    }
    s.mStrProcCounter = GetStrProcCounterForProcess() + strProcs +
                        wxString::Format("|D%d %d %d", s.mDownsize[0], s.mDownsize[1], s.mDownsize[2]);
    return s;
}

ColorCurve_cls* VolumeBox_cls::GetPCColorCurve() {
    return static_cast<ColorCurve_cls*>(GetPCAttributeFromAttribName("ColorCurve_cls", 0));
}

void VolumeBox_cls::LogSteps(double nt, int a, int b, double t, int composite, bool bAdjusted) {
    // The frame road's trace: the texts are the program's own, the missing space before
    // "interp=" of the second line included.
    if (!bAdjusted)
        wxLogDebug("VolumeTime NT=%f frame1=%d interp=%f", nt, a, t);
    else
        wxLogDebug("Adjusted frame1=%d frame2=%dinterp=%f composit=%d", a, b, t, composite);
}

VolumeSnap_cls* VolumeBox_cls::LoadSnapNow(int index) {
    VolumeSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    pSnap->WaitReadingThread(3);
    mCSequence.PrepareSnap(pSnap, index, IsZStack());
    pSnap->ReadHeader(IsZStack());
    pSnap->ReadData();
    pSnap->WaitReadingThread(3);
    pSnap->MarkDraw();
    return pSnap;
}
