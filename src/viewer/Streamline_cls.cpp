#include "Streamline_cls.h"

#include "Attribute_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"

#include <wx/log.h>

namespace {
const wxString kDraw = "VIEW3D";
} // namespace

Streamline_cls::Streamline_cls(ParentObj_cls* pParent) : TwoSetViewer_cls(pParent, "Streamline_cls") {
    Add(&mCInterpType, "InterpType=", "1", kDraw);
    Add(&mCThin, "Thin=", "1", kDraw);
    Add(&mCClip, "Clip=", "0", kDraw);
    Add(&mCClipLow, "ClipLow=", "-1 -1 -1", kDraw);
    Add(&mCClipHigh, "ClipHigh=", "1 1 1", kDraw);
    Add(&mCValueType, "ValueType=", "0", kDraw);
    Add(&mCLineWidth, "LineWidth=", "1", kDraw);
    Add(&mCDrawType, "DrawType=", "0", kDraw);
    Add(&mCColorType, "ColorType=", "0", kDraw);
    Add(&mCMappingType, "MappingType=", "0", kDraw);
    AddOwnAttribute(new Material_cls("Material", "Streamline_cls"));
    AddBuiltInModifier(GetPNewColorCurve(this, "ColorCurve"));
}

StreamlineSetting_cls Streamline_cls::GetSetting(double) {
    StreamlineSetting_cls s;
    s.mInterpType = static_cast<int>(mCInterpType.GetBodyINT());
    s.mThin = static_cast<int>(mCThin.GetBodyINT());
    s.mbClip = mCClip.GetBodyBOOL();
    const std::vector<double> low = mCClipLow.GetBodyFLOATARRAY();
    const std::vector<double> high = mCClipHigh.GetBodyFLOATARRAY();
    for (size_t i = 0; i < 3; ++i) {
        if (i < low.size())
            s.mClipLow[i] = static_cast<float>(low[i]);
        if (i < high.size())
            s.mClipHigh[i] = static_cast<float>(high[i]);
    }
    s.mValueType = static_cast<int>(mCValueType.GetBodyINT());
    // The data processes of the stream-line family, read by their keys in stack order (the kinds
    // live in the modifier layer above).
    for (int i = 0; Attribute_cls* p = GetPCDataProcFromIndex(i); ++i) {
        auto item = [p](const char* pHead) { return p->GetPCItem(pHead); };
        if (ConfItem_cls* pValid = item("Validity="); pValid && !pValid->GetBodyBOOL())
            continue;
        auto vec3 = [&item](const char* pHead, double fallback, double* out) {
            std::vector<double> v = item(pHead) ? item(pHead)->GetBodyFLOATARRAY() : std::vector<double>();
            for (size_t k = 0; k < 3; ++k)
                out[k] = k < v.size() ? v[k] : fallback;
        };
        auto integer = [&item](const char* pHead) {
            return item(pHead) ? static_cast<int>(item(pHead)->GetBodyINT()) : 0;
        };
        if (p->IsAttributeSameAs("StreamFiltering_cls")) {
            std::vector<int> vRange;
            wxString strWhy;
            const wxString strList = item("FilteringString=") ? item("FilteringString=")->GetBodySTR() : "";
            if (!StreamlineProc_cls::ParseIndexList(strList, vRange, strWhy) && strWhy != mStrLastFilterWhy)
                wxLogWarning("%s: %s: %s", GetStrName(), p->GetStrName(), strWhy);
            mStrLastFilterWhy = strWhy;
            s.mVProc.push_back(StreamlineProc_cls::MakeFilter(integer("FilteringType="), vRange));
        } else if (p->IsAttributeSameAs("StreamSetAlpha_cls")) {
            const double crit = item("Crit=") ? item("Crit=")->GetBodyDOUBLE() : 0.0;
            s.mVProc.push_back(
                StreamlineProc_cls::MakeAlpha(integer("SetAlphaType="), static_cast<float>(crit)));
        } else if (p->IsAttributeSameAs("StreamTransform_cls")) {
            double offset[3], rotate[3], scale[3];
            vec3("Offset=", 0.0, offset);
            vec3("Rotate=", 0.0, rotate);
            vec3("Scale=", 1.0, scale);
            s.mVProc.push_back(
                StreamlineProc_cls::MakeTransform(offset, rotate, integer("RotateOrder="), scale));
        }
    }
    return s;
}

StreamlineSnap_cls* Streamline_cls::LoadSnapNow(int index) {
    StreamlineSnap_cls* pSnap = mCSequence.GenerateIfNot(index);
    if (!pSnap)
        return nullptr;
    pSnap->SetStrFile(mCSequence.GetStrFileOfIndex(index));
    pSnap->ReadData();
    pSnap->WaitReadingThread(3);
    return pSnap;
}
