#include "TimeFixture.h"

#include <wx/utils.h>

using TimeServicesTest = TimeFixture;

TEST_F(TimeServicesTest, ServicesGoWithTheCore) {
    ASSERT_NE(GpCBlurCtrl, nullptr);
    ASSERT_NE(GpCEnsembleCtrl, nullptr);
    ASSERT_NE(GpCQueue, nullptr);
    EXPECT_EQ(mpMain->GetPCTimeCtrl(), mpTime);
    mpMain.reset(); // the services go with the core
    EXPECT_EQ(GpCTimeCtrl, nullptr);
    EXPECT_EQ(GpCBlurCtrl, nullptr);
    EXPECT_EQ(GpCEnsembleCtrl, nullptr);
    EXPECT_EQ(GpCQueue, nullptr);
}

TEST_F(TimeServicesTest, ProjectTextWithTheTimeListRoundTrips) {
    const std::string text = "ConfItemList::Begin::TimeCtrl\n"
                             "FrameMax=240\n"
                             "FrameCurrent=17\n"
                             "WAMin=12\n"
                             "WAMax=200\n"
                             "WASubMin=1\n"
                             "WASubMax=2\n"
                             "SubFrameMax=4\n"
                             "SubFrameStepping=3\n"
                             "SubFrameCurrent=2\n"
                             "InterpolateComposite=1\n"
                             "DefaultKey=2\n"
                             "Repeat=1\n"
                             "ConfItemList::End\n"
                             "TimeCtrl::SetFrameCurrent::18\n"
                             "ConfItemList::Begin::MotionBlurCtrl\n"
                             "UseMotionBlur=1\n"
                             "BlurLength=0.75\n"
                             "BlurQuality=6\n"
                             "ConfItemList::End\n"
                             "ConfItemList::Begin::EnsembleCtrl\n"
                             "UseEnsemble=1\n"
                             "EnsembleSampleNum=8\n"
                             "ConfItemList::End\n";
    WriteBytes(mDir.Path("a.ovp"), text);
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("a.ovp"), true));
    EXPECT_EQ(mpTime->GetFrameCurrent(), 18); // the verb line after the block
    EXPECT_EQ(mpTime->GetSubFrameStepping(), 3);
    EXPECT_DOUBLE_EQ(GpCBlurCtrl->GetBlurLength(), 0.75);

    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.Path("b.ovp"), 0));
    const std::string saved = ReadBytes(mDir.Path("b.ovp"));
    EXPECT_NE(saved.find("ConfItemList::Begin::TimeCtrl\nFrameMax=240\nFrameCurrent=18\nWAMin=12\nWAMax=200\n"
                         "WASubMin=1\nWASubMax=2\nSubFrameMax=4\nSubFrameStepping=3\nSubFrameCurrent=2\n"
                         "InterpolateComposite=1\nDefaultKey=2\nRepeat=1\nConfItemList::End\n"
                         "ConfItemList::Begin::MotionBlurCtrl\nUseMotionBlur=1\nUseGammaForBlur=1\n"
                         "BlurLength=0.75\nBlurQuality=6\nConfItemList::End\n"
                         "ConfItemList::Begin::EnsembleCtrl\nUseEnsemble=1\nEnsembleSampleNum=8\n"
                         "UseGammaForEnsemble=1\nConfItemList::End\n"),
              std::string::npos);

    // Read the saved text into a fresh core and write it again: the same time lists. (The
    // main list before them names the last project, which differs by design.)
    mpMain.reset();
    RegisterServices<ServiceLayer_enum::Time>();
    mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
    mpMain->CreateSingleton();
    ASSERT_TRUE(mpMain->OpenProjectMain(mDir.Path("b.ovp"), true));
    ASSERT_TRUE(mpMain->SaveProjectMain(mDir.Path("c.ovp"), 0));
    const std::string again = ReadBytes(mDir.Path("c.ovp"));
    const size_t from = saved.find("ConfItemList::Begin::TimeCtrl");
    ASSERT_NE(from, std::string::npos);
    ASSERT_NE(again.find("ConfItemList::Begin::TimeCtrl"), std::string::npos);
    EXPECT_EQ(again.substr(again.find("ConfItemList::Begin::TimeCtrl")), saved.substr(from));
    mpTime = GpCTimeCtrl;
    EXPECT_EQ(mpTime->GetFrameCurrent(), 18);
}

TEST_F(TimeServicesTest, SampleCountsAndStepsOfBlurAndEnsemble) {
    EXPECT_EQ(GpCBlurCtrl->GetBlurSampleNum(), 1);
    EXPECT_EQ(GpCEnsembleCtrl->GetEnsembleSampleNum(), 1);
    RunText("ConfItemList::Begin::MotionBlurCtrl\nUseMotionBlur=1\nBlurQuality=3\nConfItemList::End\n"
            "ConfItemList::Begin::EnsembleCtrl\nUseEnsemble=1\nEnsembleSampleNum=5\nConfItemList::End\n");
    EXPECT_EQ(GpCBlurCtrl->GetBlurSampleNum(), 3);
    EXPECT_EQ(GpCEnsembleCtrl->GetEnsembleSampleNum(), 5);
    EXPECT_TRUE(GpCBlurCtrl->IsUseGamma());
    EXPECT_TRUE(GpCEnsembleCtrl->IsUseGamma());

    GpCEnsembleCtrl->SetEnsembleStep(3);
    EXPECT_EQ(GpCEnsembleCtrl->GetEnsembleStep(), 3);

    // The renderer's buffer is freed once, through its deleter.
    int deleted = 0;
    GpCBlurCtrl->mFuncDeleteFBO = [&](FBO_cls*) { ++deleted; };
    static char fakeBuffer;
    GpCBlurCtrl->mpCFBOBuffer = reinterpret_cast<FBO_cls*>(&fakeBuffer);
    GpCBlurCtrl->ClearFBOBuffer();
    GpCBlurCtrl->ClearFBOBuffer();
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(GpCBlurCtrl->mpCFBOBuffer, nullptr);
}

TEST(ExpectTimeTest, DurationWords) {
    struct Case {
        long long millis;
        const char* text;
    };
    const Case cases[] = {
        {0, "0 hour 0 min 0 sec"},
        {999, "0 hour 0 min 0 sec"},
        {61000, "0 hour 1 min 1 sec"},
        {86399999, "23 hour 59 min 59 sec"},
        {86400000, "1 day 0 hour 0 min 0 sec"},
        {2 * 86400000LL + 3 * 3600000LL + 4 * 60000LL + 5000, "2 day 3 hour 4 min 5 sec"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.millis);
        EXPECT_EQ(ExpectTime_cls::GetStrDuration(c.millis), c.text);
    }
}

TEST(ExpectTimeTest, EstimateIsTheWholeRunFromThePartDone) {
    ExpectTime_cls watch;
    EXPECT_FALSE(watch.IsRunning());
    watch.StartSWIfNotYet();
    EXPECT_TRUE(watch.IsRunning());
    watch.Start(10000);      // as if ten seconds had passed
    watch.StartSWIfNotYet(); // running: not restarted
    EXPECT_GE(watch.Time(), 10000);

    EXPECT_EQ(watch.GetStrExpectedFinishTime(0.1), "estimating...");
    EXPECT_EQ(watch.GetStrExpectedFinishTime(0.19), "estimating...");
    EXPECT_EQ(watch.GetStrExpectedFinishTime(-5.0), "estimating...");
    EXPECT_EQ(watch.GetStrExpectedFinishTime(50.0), "0 hour 0 min 20 sec");
    EXPECT_EQ(watch.GetStrExpectedFinishTime(0.2), "1 hour 23 min 20 sec"); // 10 s / 0.2 %
    EXPECT_EQ(watch.GetStrCurrentLapseTime(), "0 hour 0 min 10 sec");

    watch.StopSW(); // the flag only: the watch goes on
    EXPECT_FALSE(watch.IsRunning());
    EXPECT_GE(watch.Time(), 10000);
    watch.StartSWIfNotYet();
    EXPECT_LT(watch.Time(), 10000);
}

TEST_F(TimeServicesTest, RecordInfoText) {
    SetRange(100, 2, 1);
    mpTime->GetExpectTime().Start(30000);
    wxString str = mpTime->GetStrRecordInfo(25.0);
    EXPECT_EQ(str, "0 hour 0 min 30 sec passed 25.0% Expected Time 0 hour 2 min 0 sec");
}
