// The property page of a volume object: it comes with the active volume through the kind table,
// each control edits the object, its material or its colour curve through commands (each edit
// undoes and redoes), and a picked slice of an image stack becomes the two-number pattern.
#include "PropertyPageFixture.h"

#include "ClassProvider_cls.h"
#include "ColorCurveProvider_cls.h"
#include "ColorCurve_cls.h"
#include "Material_cls.h"
#include "PropertyVolume_cls.h"
#include "SceneObjCtrl_cls.h"
#include "UndoManager_cls.h"
#include "VolumeBox_cls.h"

#include <wx/notebook.h>

#include <functional>

namespace {

class VolumePageTest : public PropertyPageFixture {
protected:
    void SetUp() override {
        PropertyPageFixture::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        mStrName = GpCSceneObjCtrl->AppendSceneObjCommand("VolumeBox", wxString());
        ASSERT_FALSE(mStrName.empty());
        Select(mStrName);
        mpPage = dynamic_cast<PropertyVolume_cls*>(mpProperty->mpCPageKind);
        ASSERT_NE(mpPage, nullptr);
        GpCUndo->Clear();
    }
    VolumeBox_cls* Obj() { return dynamic_cast<VolumeBox_cls*>(GpCSceneObjCtrl->GetPCFromName(mStrName)); }
    wxString State() {
        VolumeBox_cls* p = Obj();
        wxString str = p->SerializeAll() + p->GetPCMaterial()->SerializeAll();
        p->GetPCColorCurve()->Serialize(str);
        return str;
    }

    PropertyVolume_cls* mpPage = nullptr;
    wxString mStrName;
};

TEST_F(VolumePageTest, EachEditUndoesAndRedoes) {
    using P = PropertyVolume_cls;
    const int obj = P::TARGET_OBJECT, mat = P::TARGET_MATERIAL;
    ExpectEditsUndoAndRedo(
        {
            {"path", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "Path="), "/data/v%03d.df3"); },
             [&] { return Obj()->GetStrPath() == "/data/v%03d.df3"; }},
            {"picked df3", [&] { mpPage->SetPathFromPicked("/data/run/cloud.0042.df3"); },
             [&] { return Ctrl<wxTextCtrl>(obj, "Path=")->GetValue() == "/data/run/cloud.%04d.df3"; }},
            {"image stack", [&] { SendCheck(Ctrl<wxCheckBox>(obj, "ZStack="), true); },
             [&] { return Obj()->IsZStack(); }},
            {"first slice", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "SeqOffsetZ="), "3"); },
             [&] { return Obj()->mCSeqOffsetZ.GetBodyINT() == 3; }},
            {"quality by arithmetic", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "Quality="), "2*32"); },
             [&] { return Obj()->mCQuality.GetBodyINT() == 64; }},
            {"sub quality", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "SubQuality="), "8"); },
             [&] { return Obj()->mCSubQuality.GetBodyINT() == 8; }},
            {"shader Phong", [&] { SendChoice(Ctrl<wxChoice>(obj, "Shader="), 2); },
             [&] {
                 return Obj()->mCShader.GetBodyINT() == 2 &&
                        Ctrl<wxChoice>(obj, "Shader=")->GetSelection() == 2;
             }},
            {"self shadow", [&] { SendCheck(Ctrl<wxCheckBox>(obj, "SelfShadow="), true); },
             [&] { return Obj()->mCSelfShadow.GetBodyBOOL(); }},
            {"shader quality", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "ShaderQuality="), "24"); },
             [&] { return Obj()->mCShaderQuality.GetBodyINT() == 24; }},
            {"shader factor", [&] { SendTextEnter(Ctrl<wxTextCtrl>(obj, "ShaderFactor="), "0.25"); },
             [&] { return Obj()->mCShaderFactor.GetBodyDOUBLE() == 0.25; }},
            {"skip 0", [&] { SendCheck(Ctrl<wxCheckBox>(obj, "Discard0="), true); },
             [&] { return Obj()->mCDiscard0.GetBodyBOOL(); }},
            {"repeat curve", [&] { SendCheck(Ctrl<wxCheckBox>(obj, "RepeatCC="), true); },
             [&] { return Obj()->mCRepeatCC.GetBodyBOOL(); }},
            {"nearest voxels", [&] { SendChoice(Ctrl<wxChoice>(mat, "TextureInterp="), 0); },
             [&] { return Obj()->GetPCMaterial()->mCTextureInterp.GetBodyINT() == 0; }},
            {"wrap repeat", [&] { SendChoice(Ctrl<wxChoice>(mat, "VolumeWrap="), 1); },
             [&] { return Obj()->GetPCMaterial()->mCVolumeWrap.GetBodyINT() == 1; }},
            {"depth write", [&] { SendCheck(Ctrl<wxCheckBox>(mat, "DepthWrite="), true); },
             [&] { return Obj()->GetPCMaterial()->mCDepthWrite.GetBodyBOOL(); }},
            {"curve preset", [&] { mpPage->ApplyCurvePreset(3); },
             [&] {
                 return Obj()->GetPCColorCurve()->GetColor(0.5, nullptr) !=
                        GpCColorCurveProvider->GetPCColorCurve(0)->GetColor(0.5, nullptr);
             }},
        },
        [&] { return State(); });
    SCOPED_TRACE("a picked slice of a stack: time number, then slice number");
    mpPage->SetPathFromPicked("/data/t0007_z012.png");
    EXPECT_EQ(Obj()->GetStrPath(), "/data/t%04d_z%03d.png");
    const wxString strBefore = State();
    SendTextEnter(Ctrl<wxTextCtrl>(obj, "Quality="), "many");
    EXPECT_EQ(State(), strBefore) << "a number field keeps its value on a text that is no number";
    const int index = mpProperty->mpCBook->FindPage(mpProperty->mpCPageKind);
    ASSERT_GE(index, 0);
    EXPECT_EQ(mpProperty->mpCBook->GetPageText(static_cast<size_t>(index)), "Volume");
}

} // namespace
