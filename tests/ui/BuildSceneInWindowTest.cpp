// A scene built in the window alone, from an empty project: a camera, a light and a textured box
// added from the ribbon and set on their pages, a LAMMPS melt through the particle page's
// preset, the camera keyed over 100 frames with the key button, a filter from the filter page,
// three frames rendered from the render page; the saved project reopens and saves the same text.
#include "ScenePanelsFixture.h"

#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "ParticleFormatPreset_cls.h"
#include "Particle_cls.h"
#include "PropertyFieldPage_cls.h"
#include "PropertyFieldPanel_cls.h"
#include "PropertyFilter_cls.h"
#include "PropertyParticle_cls.h"
#include "PropertyRender_cls.h"
#include "TimeCtrl_cls.h"
#include "View3DPanel_cls.h"
#include "ViewWindowFixture.h"

#include <wx/dir.h>
#include <wx/ffile.h>

namespace {

class BuildSceneInWindowTest : public ViewWindowFixture<ServiceLayer_enum::Output> {
protected:
    void TearDown() override {
        ViewWindowFixture::TearDown();
        if (!mStrOldDir.empty())
            wxSetWorkingDirectory(mStrOldDir);
    }
    // Selects the object as a click in the outliner does and gives its page.
    PropertyKindPage_cls* SelectPage(const wxString& strName) {
        GpCSceneObjCtrl->Select(strName, false, true, false);
        mpMain->ProcAfterMath("SelectObject", strName);
        Flush();
        return mpProperty->mpCPageKind;
    }
    // The newest object of the class, as the ribbon just added it.
    wxString Newest(const wxString& strClass) {
        wxString strName;
        std::vector<SceneObj_cls*> vAll;
        GpCSceneObjCtrl->GetVPCList(vAll);
        for (SceneObj_cls* p : vAll)
            if (p->mStrClassWord == strClass)
                strName = p->GetStrName();
        return strName;
    }
    static void Type(PropertyFieldPanel_cls& panel, const wxString& strAttr, const wxString& strKey,
                     int member, const wxString& strText) {
        const int field = panel.FindField(strAttr, strKey);
        ASSERT_GE(field, 0) << strKey;
        const PropertyFieldPanel_cls::Row_cls& row = panel.mVRow[static_cast<size_t>(field)];
        if (member >= 0)
            SendTextEnter(row.mVPCMember.at(static_cast<size_t>(member)), strText);
        else if (auto* pCheck = dynamic_cast<wxCheckBox*>(row.mpCtrl))
            SendCheck(pCheck, strText == "1");
        else
            SendTextEnter(dynamic_cast<wxTextCtrl*>(row.mpCtrl), strText);
    }
    // The project's text without the line of the last opened project, which opening sets.
    wxString SavedText(const wxString& strPath) {
        EXPECT_TRUE(mpMain->SaveProjectMain(strPath, 1));
        wxFFile file(strPath, "rb");
        wxString str, strOut;
        file.ReadAll(&str);
        for (const wxString& strLine : wxSplit(str, '\n', '\0'))
            if (!strLine.StartsWith("LastFileOVP="))
                strOut += strLine + "\n";
        return strOut;
    }

    Property_cls* mpProperty = nullptr;
    wxString mStrOldDir;
};

} // namespace

TEST_F(BuildSceneInWindowTest, SceneFromTheWindowAloneRendersAndReopensIdentical) {
    SKIP_WITHOUT_DISPLAY();
    mStrOldDir = wxGetCwd();
    GpCSceneObjCtrl->Clear();
    ReadFrameLayout(Split('V', 700, Leaf("VIEW3D"), Leaf("PROPERTY")));
    mpProperty = FindLeaf<Property_cls>();
    ASSERT_TRUE(FindLeaf<View3DPanel_cls>() && mpProperty);
    GLCanvas_cls* pCanvas = FindLeaf<View3DPanel_cls>()->GetPCCanvas();
    ASSERT_TRUE(SettleCanvas(*pCanvas));
    wxArrayString astrNames;
    GpCSceneObjCtrl->GetAllObjectsName(astrNames);
    ASSERT_TRUE(astrNames.empty());

    // The objects, each from its ribbon tool.
    for (int id : {ID_RBN_WORLD, ID_RBN_CAMERA, ID_RBN_POINT_LIGHT, ID_RBN_BOX, ID_RBN_PARTICLE})
        SendRibbonClick(mpFrame, id);
    Flush();
    const wxString strCamera = Newest("Camera_cls"), strLight = Newest("LightSource_cls"),
                   strBox = Newest("Primitive_cls"), strParticle = Newest("Particle_cls");
    ASSERT_FALSE(strCamera.empty() || strLight.empty() || strBox.empty() || strParticle.empty());

    // The box's material with a texture.
    auto* pBoxPage = dynamic_cast<PropertyFieldPage_cls*>(SelectPage(strBox));
    ASSERT_NE(pBoxPage, nullptr);
    Type(*pBoxPage->mpCFields, "Material", "Diffuse", 0, "0.9");
    Type(*pBoxPage->mpCFields, "Material", "UseTexture=", -1, "1");
    Type(*pBoxPage->mpCFields, "Material", "TextureFile=", -1,
         wxString(ORV_SOURCE_DIR) + "/tests/data/png/grey8_002.png");
    // The light, a little warmer.
    auto* pLightPage = dynamic_cast<PropertyFieldPage_cls*>(SelectPage(strLight));
    ASSERT_NE(pLightPage, nullptr);
    Type(*pLightPage->mpCFields, "Material", "Diffuse", 2, "0.7");
    for (int m = 0; m < 3; ++m)
        SendTextEnter(mpProperty->mpCPageObject->mpCField[0][m], "8");

    // The melt through the preset and a picked dump.
    auto* pParticlePage = dynamic_cast<PropertyParticle_cls*>(SelectPage(strParticle));
    ASSERT_NE(pParticlePage, nullptr);
    ASSERT_TRUE(pParticlePage->ApplyPreset(ParticleFormatPreset_cls::PRESET_LAMMPS_CUSTOM));
    ASSERT_TRUE(
        pParticlePage->SetPathFromPicked(wxString(ORV_SOURCE_DIR) + "/examples/lammps/dump.melt.0050.txt"));
    ASSERT_TRUE(pParticlePage->ReadCurrentStep());

    // The camera keyed at frames 0 and 100: it moves back and widens.
    auto* pCameraPage = dynamic_cast<PropertyFieldPage_cls*>(SelectPage(strCamera));
    ASSERT_NE(pCameraPage, nullptr);
    Send(mpProperty->mpCPageObject->mpCKey[0], wxEVT_BUTTON);
    SendTextEnter(mpProperty->mpCPageObject->mpCField[0][2], "30");
    PropertyFieldPanel_cls& camera = *pCameraPage->mpCFields;
    Send(camera.mVRow[static_cast<size_t>(camera.FindField("CameraProp", "ViewAngle"))].mpCKey, wxEVT_BUTTON);
    GpCTimeCtrl->ProcSetFrameCurrent(100);
    SendTextEnter(mpProperty->mpCPageObject->mpCField[0][2], "45");
    Type(camera, "CameraProp", "ViewAngle", 0, "60");
    SceneObj_cls* pCamera = GpCSceneObjCtrl->GetPCFromName(strCamera);
    ParamGroup_cls* pAngle = pCamera->GetPCParamGroup("CameraProp", "ViewAngle");
    ASSERT_NE(pAngle, nullptr);
    EXPECT_EQ(pAngle->mVCParam[0].GetKeyNum(), 2);
    EXPECT_DOUBLE_EQ(pAngle->mVCParam[0].GetValue(0.0), 45.0);
    EXPECT_DOUBLE_EQ(pAngle->mVCParam[0].GetValue(TimeCtrl_cls::GetClockNT()), 60.0);
    EXPECT_EQ(pCamera->GetPCParamGroup(wxString(), "Position")->mVCParam[2].GetKeyNum(), 2);
    GpCTimeCtrl->ProcSetFrameCurrent(0);

    // A filter on the picture.
    ASSERT_TRUE(mpProperty->mpCPageFilter->AddFilter("Exposure_cls"));

    // The steps of the three frames are read first: a recording that meets a step still being
    // read goes on without it.
    for (int frame : {0, 40, 80}) {
        GpCTimeCtrl->ProcSetFrameCurrent(frame);
        mpMain->UpdatePanels("VIEW3D");
        RunLoop(400);
    }

    // Three frames through the render page: frames 0, 40 and 80 of two subframes each.
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    PropertyRender_cls* pRender = mpProperty->mpCPageRender;
    ScriptedDialog_cls dialog;
    pRender->mpCDialog = &dialog;
    const wxString strFolder = mDir.Path("frames");
    ASSERT_TRUE(wxFileName::Mkdir(strFolder, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL));
    SendTextEnter(pRender->mpCOutput, strFolder + "/f%04d.png");
    ASSERT_TRUE(pRender->SetSizeFromText("160", "120"));
    RunText("ConfItemList::Begin::TimeCtrl\nSubFrameStepping=80\nConfItemList::End\n");
    GpCTimeCtrl->SetWAMinCommand(0);
    GpCTimeCtrl->SetWAMaxCommand(100);
    GpCTimeCtrl->SetCurrentFrameCommand(0);
    RunLoop(300);
    wxCommandEvent press(wxEVT_BUTTON, pRender->mpCRenderAnim->GetId());
    pRender->OnRenderAnim(press);
    ASSERT_TRUE(GpCTimeCtrl->IsOutputRunning())
        << (dialog.mVStrTexts.empty() ? "" : dialog.mVStrTexts.front());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (GpCTimeCtrl->IsOutputRunning() && std::chrono::steady_clock::now() < end)
        RunLoop(20);
    ASSERT_FALSE(GpCTimeCtrl->IsOutputRunning()) << "the run did not stop within 30 seconds";
    for (const ImageIO_cls::Result_cls& r : GpCImageIO->WaitAll())
        EXPECT_TRUE(r.mbOk) << r.mStrPath;
    wxArrayString files;
    wxDir::GetAllFiles(strFolder, &files, wxEmptyString, wxDIR_FILES);
    // Every frame of the work area is written, and nothing else.
    EXPECT_EQ(files.GetCount(), 3u) << wxJoin(files, ' ');
    for (const wxString& strFile : files) {
        const wxString strName = wxFileName(strFile).GetFullName();
        EXPECT_TRUE(strName == "f0000.png" || strName == "f0080.png" || strName == "f0160.png") << strName;
        wxImage image;
        ASSERT_TRUE(image.LoadFile(strFile, wxBITMAP_TYPE_PNG)) << strFile;
        EXPECT_EQ(image.GetSize(), wxSize(160, 120));
        image.SaveFile(ScreenshotDir() + "/built-" + wxFileName(strFile).GetFullName(), wxBITMAP_TYPE_PNG);
    }

    // Saved, reopened, saved again: the same text.
    const wxString strFirst = SavedText(mDir.Path("built.ovp"));
    EXPECT_TRUE(strFirst.Contains("Exposure_cls"));
    EXPECT_TRUE(strFirst.Contains("dump.melt.%04d.txt"));
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("built.ovp"), true));
    Flush();
    const wxString strAgain = SavedText(mDir.Path("again.ovp"));
    EXPECT_TRUE(strAgain == strFirst) << "both kept in " << ScreenshotDir();
    if (strAgain != strFirst) {
        wxCopyFile(mDir.Path("built.ovp"), ScreenshotDir() + "/built.ovp");
        wxCopyFile(mDir.Path("again.ovp"), ScreenshotDir() + "/again.ovp");
    }
    // The reopened scene is the one built: the camera's keys came back.
    ParamGroup_cls* pAngleAgain =
        GpCSceneObjCtrl->GetPCFromName(strCamera)->GetPCParamGroup("CameraProp", "ViewAngle");
    ASSERT_NE(pAngleAgain, nullptr);
    EXPECT_EQ(pAngleAgain->mVCParam[0].GetKeyNum(), 2);
}
