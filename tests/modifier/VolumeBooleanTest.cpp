// A volume's Boolean data process with another object's box as its shape: the setting the volume
// hands to its preparation carries the object's box in the volume's own space, and follows the
// object when it moves.
#include "ModifierFixture.h"

#include "BooleanBase_cls.h"
#include "ClassProvider_cls.h"
#include "ParamGroup_cls.h"
#include "VolumeBox_cls.h"
#include "VolumeFoRender_cls.h"

#include <algorithm>

namespace {
ParamGroup_cls* Group(SceneObj_cls* pObj, const char* pGroup) {
    return GCClassProvider->GetPCParamGroup(pObj->GetStrTag() + "::" + pGroup);
}
} // namespace

TEST_F(ModifierFixture, VolumeBooleanTakesAnotherObjectsBox) {
    auto* pVolume = dynamic_cast<VolumeBox_cls*>(Obj(Ctrl()->AppendSceneObjCommand("VolumeBox", "V")));
    ASSERT_NE(pVolume, nullptr);
    pVolume->AddDataProcCommand("VolumeBoolean_cls", "B");
    auto* pBool = dynamic_cast<VolumeBoolean_cls*>(pVolume->GetPCAttribute("B", 0));
    ASSERT_NE(pBool, nullptr);
    pBool->mCBooleanShape.SetBodyFromData(static_cast<long long>(BooleanBase_cls::kShapeObject));
    // No object named, or one that is no shape: the process does nothing.
    EXPECT_TRUE(pVolume->GetSetting(0.0).mVBoolean.empty());
    pBool->mCBooleanObject.SetBodyFromData(Ctrl()->AppendSceneObjCommand("TextObj", ""));
    EXPECT_TRUE(pVolume->GetSetting(0.0).mVBoolean.empty());
    // A box a quarter of the volume's size, a quarter along x: of 4 x 4 x 4 voxels it keeps the 8
    // whose centres lie in x 0 .. 0.5 and y, z within +-0.25.
    SceneObj_cls* pBox = Obj(Ctrl()->AppendSceneObjCommand("Primitive", "Box"));
    ASSERT_NE(pBox, nullptr);
    pBool->mCBooleanObject.SetBodyFromData(pBox->GetStrName());
    Group(pBox, "Position")->SetInitValue(0.25, 0.0, 0.0);
    Group(pBox, "Scale")->SetInitValue(0.25, 0.25, 0.25);
    const VolumeSetting_cls setting = pVolume->GetSetting(0.0);
    ASSERT_EQ(setting.mVBoolean.size(), 1u);
    VolumeFoRender_cls v;
    v.mWidth = v.mHeight = v.mDepth = 4;
    v.mData.assign(64, 200);
    v.ApplyBoolean(setting.mVBoolean);
    EXPECT_EQ(std::count(v.mData.begin(), v.mData.end(), 200), 8);
    // Moving the object changes the stamp, so the volume prepares again.
    Group(pBox, "Position")->SetInitValue(0.0, 0.0, 0.0);
    EXPECT_NE(pVolume->GetSetting(0.0).mStrProcCounter, setting.mStrProcCounter);
}
