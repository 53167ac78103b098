// The stream-line, height-field and isosurface objects: their place in the kind table, their keys
// through a project file, and the frame road from files to prepared sets, with the spare set
// prepared in the background while playing and taken when it fits.
#include "ViewerFixture.h"

#include "HeightField_cls.h"
#include "Isosurface_cls.h"
#include "KeyFrame_cls.h"
#include "KindTable_cls.h"
#include "ParamGroup_cls.h"
#include "Streamline_cls.h"

#include <cmath>
#include <string>

namespace {

const wxString kSelf = "SceneObjCtrl::";

wxString Data(const wxString& strPath) {
    return wxString(ORV_TEST_DATA_DIR) + "/" + strPath;
}

int CountLines(const LogCapture_cls& log, const wxString& str) {
    int n = 0;
    for (const wxString& line : log.mVStrLines)
        n += line.Contains(str) ? 1 : 0;
    return n;
}

} // namespace

class DataKindsViewerTest : public ViewerFixture {
protected:
    void SetUp() override {
        ViewerFixture::SetUp();
        GpCTimeCtrl->mCSubFrameMax.SetBodyFromData(1LL);
        GpCTimeCtrl->mCSubFrameStepping.SetBodyFromData(1LL);
        SetFrames(2, 0);
        SetPrefetch(2);
    }
    void TearDown() override {
        GpCTimeCtrl->mPlayDirection = 0;
        ViewerFixture::TearDown();
    }
    template <class T> T* Make(const char* pKind) {
        return dynamic_cast<T*>(Obj(Ctrl()->AppendSceneObjCommand(pKind, "")));
    }
    void SaveAndReopen() {
        const wxString strProject = mDir.Path("kinds.ovp");
        ASSERT_TRUE(mpMain->SaveProjectMain(strProject, 0));
        Ctrl()->Clear();
        ASSERT_TRUE(mpMain->OpenProjectMain(strProject, true));
    }
    // A df3 cube of n voxels a side holding a ball: 128 + slope (radius - distance from the centre).
    wxString MakeBall(const wxString& strName, int n, double radius) {
        const std::string s = BallDF3(n, radius);
        EXPECT_TRUE(WriteBytes(mDir.Path(strName), s));
        return mDir.Path(strName);
    }
};

TEST_F(DataKindsViewerTest, KindsAreInTheKindTable) {
    struct Case {
        const char* pClass;
        const char* pWord;
        bool bRelease;
    };
    for (const Case& c :
         {Case{"Streamline_cls", "Streamline", false}, Case{"HeightField_cls", "HeightField", true},
          Case{"Isosurface_cls", "Isosurface", true}}) {
        SCOPED_TRACE(c.pClass);
        const KindTable_cls::Entry_cls* p = KindTable_cls::Find(c.pClass, KindTable_cls::GROUP_OBJECT);
        ASSERT_NE(p, nullptr);
        EXPECT_TRUE(p->mFuncMake && p->mFuncPrefetch && p->mFuncUsedMemoryMB);
        // Stream lines are counted by the memory pass but never evicted by it (deliberate).
        EXPECT_EQ(static_cast<bool>(p->mFuncRelease), c.bRelease);
        SceneObj_cls* pObj = Obj(Ctrl()->AppendSceneObjCommand(c.pWord, ""));
        ASSERT_NE(pObj, nullptr);
        EXPECT_EQ(pObj->mStrClassWord, c.pClass);
        EXPECT_TRUE(DataViewerBase_cls::IsDataViewerClass(pObj->mStrClassWord));
    }
}

TEST_F(DataKindsViewerTest, KeysSurviveTheProjectFile) {
    Streamline_cls* pS = Make<Streamline_cls>("Streamline");
    HeightField_cls* pH = Make<HeightField_cls>("HeightField");
    Isosurface_cls* pI = Make<Isosurface_cls>("Isosurface");
    ASSERT_TRUE(pS && pH && pI);

    pS->mCPath.PushCommandPair(Data("streamline/lines_000.txt"));
    pS->mCThin.PushCommandPair("3");
    pS->mCClip.PushCommandPair("1");
    pS->mCClipLow.PushCommandPair("-2 -3 -4");
    pS->mCValueType.PushCommandPair("1");
    pS->mCInterpType.PushCommandPair("0");
    pH->mCChannel.PushCommandPair("2");
    pH->mCSizeX.PushCommandPair("3.5");
    pH->mCHeightScale.PushCommandPair("0.75");
    pI->mCZStack.PushCommandPair("1");
    ParamGroup_cls* pIso = pI->GetPCParamGroup("Isosurface", "IsoValue");
    ASSERT_NE(pIso, nullptr);
    const wxString strTag = kSelf + "Obj::" + pI->GetStrName() + "::Isosurface::IsoValue::Value";
    pIso->mVCParam[0].mCTimeDepend.PushCommandPair("1");
    pIso->mVCParam[0].SetValueAtCommand(40.0, 0.0, strTag, KeyFrame_cls::TYPE_LINEAR, 1.0);
    pIso->mVCParam[0].SetNewKeyCommand(200.0, 1.0, strTag, KeyFrame_cls::TYPE_LINEAR, 1.0, false);
    const double isoMid = pI->GetIsoValue(0.5);
    ASSERT_GT(isoMid, 40.0);
    ASSERT_LT(isoMid, 200.0);

    // The text reads back to the same text, and what was read is the model.
    const wxString strText = SceneText();
    EXPECT_TRUE(strText.Contains("keyNum=2\n0::0::40::1::1\n1::0::200::1::1")) << strText;
    EXPECT_TRUE(strText.Contains("Thin=3\n")) << strText;
    SaveAndReopen();
    EXPECT_EQ(SceneText(), strText);
    pS = dynamic_cast<Streamline_cls*>(Obj("Streamline"));
    pH = dynamic_cast<HeightField_cls*>(Obj("HeightField"));
    pI = dynamic_cast<Isosurface_cls*>(Obj("Isosurface"));
    ASSERT_TRUE(pS && pH && pI);
    EXPECT_EQ(pS->GetStrPath(), Data("streamline/lines_000.txt"));
    EXPECT_EQ(pH->GetChannel(), 2);
    EXPECT_TRUE(pI->IsZStack());
    EXPECT_DOUBLE_EQ(pI->GetIsoValue(0.5), isoMid);
    EXPECT_DOUBLE_EQ(pI->GetIsoValue(1.0), 200.0);
}

TEST_F(DataKindsViewerTest, StreamlinesPlayWithTheSpareSetPreparedAhead) {
    LogCapture_cls log;
    Streamline_cls* pS = Make<Streamline_cls>("Streamline");
    ASSERT_NE(pS, nullptr);
    pS->mCPath.PushCommandPair(Data("streamline/lines_000.txt"));
    ASSERT_EQ(pS->CheckFileSequence(), 2);
    // Not playing: prepared now, nothing ahead.
    ASSERT_TRUE(pS->PrepareDraw());
    EXPECT_EQ(pS->mpCCurrent->GetLineCount(), 3);
    EXPECT_FALSE(pS->WaitPrepareNext());
    // Playing: the next frame is made in the background and taken at the next draw.
    GpCTimeCtrl->mPlayDirection = 1;
    ASSERT_TRUE(pS->PrepareDraw());
    ASSERT_TRUE(pS->WaitPrepareNext());
    EXPECT_EQ(pS->mpCNext->GetLineCount(), 2) << "step 1 has two lines";
    StreamlineForRender_cls* pSpare = pS->mpCNext.get();
    SetFrames(2, 1);
    log.mVStrLines.clear();
    ASSERT_TRUE(pS->PrepareDraw());
    EXPECT_EQ(pS->mpCCurrent.get(), pSpare);
    EXPECT_EQ(CountLines(log, "Swap Render Snap"), 1);
    EXPECT_EQ(CountLines(log, "Not Swap"), 0);
    EXPECT_EQ(pS->mpCCurrent->GetLineCount(), 2);
    EXPECT_EQ(pS->mpCCurrent->GetPointCount(), 9);
    // A changed key makes the spare set unfit: prepared again now.
    pS->WaitPrepareNext();
    pS->mCThin.PushCommandPair("2");
    SetFrames(2, 1);
    log.mVStrLines.clear();
    ASSERT_TRUE(pS->PrepareDraw());
    EXPECT_EQ(CountLines(log, "Not Swap"), 1);
    EXPECT_EQ(pS->mpCCurrent->GetLineCount(), 1);
}

TEST_F(DataKindsViewerTest, HeightFieldFromAPictureSequence) {
    HeightField_cls* pH = Make<HeightField_cls>("HeightField");
    ASSERT_NE(pH, nullptr);
    pH->mCPath.PushCommandPair(Data("heightfield/grey8_000.png"));
    pH->mCHeightScale.PushCommandPair("1");
    struct Case {
        int frame;
        int channel;
        float corner; // height of grid point (0, 0): picture pixel (0, bottom row)
    };
    for (const Case& c :
         {Case{0, 0, (10 + 9) / 255.0f}, Case{1, 0, (10 + 9 + 5) / 255.0f}, Case{1, 3, 1.0f}}) {
        SCOPED_TRACE(c.frame);
        SetFrames(2, c.frame);
        pH->mCChannel.PushCommandPair(wxString::Format("%d", c.channel));
        ASSERT_TRUE(pH->PrepareDraw());
        ASSERT_EQ(pH->mpCCurrent->mWidth, 5);
        EXPECT_NEAR(pH->mpCCurrent->mXYZ[2], c.corner, 1e-6);
        EXPECT_EQ(pH->mpCCurrent->mIndex.size(), 4u * 3 * 6);
    }
    // A picture of the wrong depth: nothing to draw, one line in the log.
    LogCapture_cls log;
    pH->mCPath.PushCommandPair(Data("heightfield/palette.png"));
    EXPECT_FALSE(pH->PrepareDraw());
    EXPECT_EQ(CountLines(log, "heights need 8 or 16 bits"), 1);
}

TEST_F(DataKindsViewerTest, IsosurfaceFollowsTheAnimatedIsoValue) {
    Isosurface_cls* pI = Make<Isosurface_cls>("Isosurface");
    ASSERT_NE(pI, nullptr);
    pI->mCPath.PushCommandPair(MakeBall("ball.df3", 24, 8.0));
    ParamGroup_cls* pIso = pI->GetPCParamGroup("Isosurface", "IsoValue");
    const wxString strTag = kSelf + "Obj::" + pI->GetStrName() + "::Isosurface::IsoValue::Value";
    pIso->mVCParam[0].mCTimeDepend.PushCommandPair("1");
    pIso->mVCParam[0].SetValueAtCommand(128.0, 0.0, strTag, KeyFrame_cls::TYPE_LINEAR, 1.0);
    pIso->mVCParam[0].SetNewKeyCommand(240.0, 1.0, strTag, KeyFrame_cls::TYPE_LINEAR, 1.0, false);
    SetFrames(3, 0);
    ASSERT_TRUE(pI->PrepareDraw());
    const long long triangles = pI->mpCCurrent->GetTriangleCount();
    ASSERT_GT(triangles, 100);
    // The ball of radius 8 in a box whose longest side is 1: every vertex at 8 / 23 from the centre.
    double worst = 0.0;
    const std::vector<float>& xyz = pI->mpCCurrent->mCSurface.mXYZ;
    for (size_t i = 0; i < xyz.size(); i += 3)
        worst = std::max(
            worst, std::abs(std::sqrt(xyz[i] * xyz[i] + xyz[i + 1] * xyz[i + 1] + xyz[i + 2] * xyz[i + 2]) -
                            8.0 / 23.0));
    EXPECT_LT(worst, 0.01);
    // Frame 1 of 3: the value has moved up to 165, a smaller ball.
    SetFrames(3, 1);
    ASSERT_TRUE(pI->PrepareDraw());
    EXPECT_FLOAT_EQ(pI->mpCCurrent->mLastIso, static_cast<float>(pI->GetIsoValue(1.0 / 3.0)));
    EXPECT_GT(pI->mpCCurrent->GetTriangleCount(), 0);
    EXPECT_LT(pI->mpCCurrent->GetTriangleCount(), triangles);
    // Above every voxel: an empty surface and one line in the log.
    LogCapture_cls log;
    SetFrames(3, 2);
    ASSERT_TRUE(pI->PrepareDraw());
    EXPECT_EQ(pI->mpCCurrent->GetTriangleCount(), 0);
    EXPECT_EQ(CountLines(log, "outside the data range"), 1);
}

TEST_F(DataKindsViewerTest, IsosurfaceOfAnImageStack) {
    // The 7 x 5 x 3 grey stack of the volume tests: v = 20 + 28 x + 4 row + z, rows flipped, so
    // the value 100.5 is crossed in every row and slice between x = 2 and x = 3.
    Isosurface_cls* pI = Make<Isosurface_cls>("Isosurface");
    ASSERT_NE(pI, nullptr);
    pI->mCZStack.PushCommandPair("1");
    pI->mCPath.PushCommandPair(Data("png/grey8_000.png"));
    pI->GetPCParamGroup("Isosurface", "IsoValue")
        ->mVCParam[0]
        .SetValueAtCommand(100.5, 0.0, kSelf + "Obj::" + pI->GetStrName() + "::Isosurface::IsoValue::Value",
                           -1, 1.0);
    ASSERT_EQ(pI->CheckFileSequence(), 1);
    ASSERT_TRUE(pI->PrepareDraw());
    const VolumeSnap_cls* pSnap = pI->mCSequence.GetPCSnap(0);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_EQ(pSnap->mSizeX, 7);
    EXPECT_EQ(pSnap->mSizeY, 5);
    EXPECT_EQ(pSnap->mSizeZ, 3);
    // Two triangles per cell of the y-z plane of cells: 4 x 2 cells.
    EXPECT_EQ(pI->mpCCurrent->GetTriangleCount(), 16);
}
