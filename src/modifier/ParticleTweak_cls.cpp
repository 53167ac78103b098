#include "ParticleTweak_cls.h"

#include "ClassProvider_cls.h"
#include "TimeCtrl_cls.h"

ParticleTweak_cls::ParticleTweak_cls(const wxString& strName)
    : ModifierBase_cls("ParticleTweak_cls", strName, "VIEW3D::PROPERTY_DATAPROC") {
    Add(&mCBillboardRotOrder, "BillboardRotOrder=", "0", mStrTag);
    InitializeAndPushParam(GetPCNewParamGroup("BillboardFocus", "Yaw", "Pitch", "Roll"), 0.0, 0.0, 0.0);
}

void ParticleTweak_cls::GetBillboartFocus(float& yaw, float& pitch, float& roll, int& order) {
    GetBillboartFocus(TimeCtrl_cls::GetClockNT(), yaw, pitch, roll, order);
}

void ParticleTweak_cls::GetBillboartFocus(double nt, float& yaw, float& pitch, float& roll, int& order) {
    yaw = pitch = roll = 0.0f;
    order = static_cast<int>(mCBillboardRotOrder.GetBodyINT());
    ParamGroup_cls* p = GetPCParamGroup("BillboardFocus");
    if (!p)
        return;
    std::vector<double> v = p->GetVInterpolatedValue(nt, true, nullptr, false);
    v.resize(3, 0.0);
    yaw = static_cast<float>(v[0]);
    pitch = static_cast<float>(v[1]);
    roll = static_cast<float>(v[2]);
}
