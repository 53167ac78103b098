// Particle and volume viewers as object kinds of the scene: made by the New command, bound to
// their files, written to and read from the project, and driven by the idle pass of memory
// limit and read ahead.
#include "ViewerFixture.h"

#include "DataMemoryCtrl_cls.h"
#include "Particle_cls.h"
#include "VolumeBox_cls.h"

#include "Attribute_cls.h"
#include "KindTable_cls.h"
#include "SequenceRemapBase_cls.h"

#include <wx/utils.h>

namespace {

// A remap modifier of the tests: every frame shows step mStep.
class TestRemap_cls : public Attribute_cls, public SequenceRemapBase_cls {
public:
    explicit TestRemap_cls(const wxString& strName) : Attribute_cls("SequenceRemap_cls", strName) {
        Add(&mCValidity, "Validity=", "1", "VIEW3D");
    }
    double GetRemapValue(double) override { return mStep; }
    bool GetRemapRepeat() override { return false; }
    int GetRemappedFrame(double, int frame, int) override { return mCValidity.GetBodyBOOL() ? mStep : frame; }
    ConfItemBOOL_cls mCValidity;
    int mStep = 4;
};

int CountStarted(const DataSequence_cls& seq) {
    int n = 0;
    for (int i = 0; i < seq.GetSnapCount(); ++i)
        if (seq.GetPCSnap(i) && seq.GetPCSnap(i)->mReadStarted)
            ++n;
    return n;
}

int CountLoaded(const DataSequence_cls& seq) {
    int n = 0;
    for (int i = 0; i < seq.GetSnapCount(); ++i)
        if (seq.GetPCSnap(i))
            ++n;
    return n;
}

void WaitReads(DataSequence_cls& seq) {
    for (int i = 0; i < seq.GetSnapCount(); ++i)
        if (DataSnap_cls* p = seq.GetPCSnap(i))
            p->WaitReadingThread(1);
    while (seq.mReadingLock.load() > 0)
        wxMilliSleep(1);
}

} // namespace

TEST_F(ViewerFixture, NewParticleFindsItsSequenceAndUndoRemovesIt) {
    const wxString strFirst = MakeParticleFiles("p", 4, 10);
    const int undoBefore = GpCUndo->GetCurrent();
    ASSERT_EQ(Ctrl()->AppendSceneObjCommand("Particle", ""), "Particle");
    Particle_cls* p = dynamic_cast<Particle_cls*>(Obj("Particle"));
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->mStrClassWord, "Particle_cls");
    EXPECT_EQ(p->mDrawOrder, 1);
    EXPECT_EQ(p->CheckFileSequence(), 0) << "no path yet";

    p->mCPath.PushCommandPair(strFirst);
    EXPECT_TRUE(p->IsPathChanged());
    {
        SCOPED_TRACE("a sequence of four");
        EXPECT_EQ(p->CheckFileSequence(), 4);
        EXPECT_TRUE(p->mCSequence.mIsSequence);
        EXPECT_FALSE(p->IsPathChanged());
    }
    {
        SCOPED_TRACE("the sequence switched off reads the one file");
        p->mCUseSequence.PushCommandPair("0");
        EXPECT_TRUE(p->IsPathChanged());
        EXPECT_EQ(p->CheckFileSequence(), 1);
        EXPECT_FALSE(p->mCSequence.mIsSequence);
    }
    {
        SCOPED_TRACE("a file added later is seen at the next check");
        p->mCUseSequence.PushCommandPair("1");
        MakeParticleFiles("p", 5, 10);
        EXPECT_EQ(p->CheckFileSequence(), 5);
    }
    {
        SCOPED_TRACE("a missing path has no steps");
        p->mCPath.PushCommandPair(mDir.Path("none0000.dat"));
        EXPECT_EQ(p->CheckFileSequence(), 0);
        EXPECT_EQ(p->mCSequence.GetPCSnap(0), nullptr);
    }

    // The creation and every edit go back through undo.
    while (GpCUndo->GetCurrent() > undoBefore)
        GpCUndo->Undo();
    EXPECT_EQ(Obj("Particle"), nullptr);
    GpCUndo->Redo();
    Particle_cls* pAgain = dynamic_cast<Particle_cls*>(Obj("Particle"));
    ASSERT_NE(pAgain, nullptr);
    EXPECT_EQ(pAgain->GetStrPath(), "None");
    GpCUndo->Redo();
    EXPECT_EQ(pAgain->GetStrPath(), strFirst);
}

TEST_F(ViewerFixture, IdlePassReadsAheadOneReadPerSequence) {
    SetFrames(6, 0);
    SetPrefetch(2);
    Particle_cls* pA = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "A")));
    Particle_cls* pB = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "B")));
    ASSERT_TRUE(pA && pB);
    pA->mCPath.PushCommandPair(MakeParticleFiles("a", 6, 50));
    pB->mCPath.PushCommandPair(MakeParticleFiles("b", 6, 50));

    LogCapture_cls log;
    double mb = -1.0;
    // Playing: the pass reads nothing ahead (and checks no path).
    EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), true, mb), DataMemoryCtrl_cls::ACTION_NONE);
    EXPECT_EQ(CountStarted(pA->mCSequence), 0);

    // Frames 0 and 1 with the step after each: steps 0, 1, 2; one read per sequence per pass.
    for (int pass = 1; pass <= 4; ++pass) {
        SCOPED_TRACE(pass);
        EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_PREFETCH);
        for (Particle_cls* p : {pA, pB}) {
            EXPECT_LE(p->mCSequence.mReadingLock.load(), 1);
            EXPECT_EQ(CountStarted(p->mCSequence), std::min(pass, 3));
            WaitReads(p->mCSequence);
        }
    }
    EXPECT_EQ(pA->mCSequence.GetPCSnap(3), nullptr) << "beyond the window";
    auto* pSnap = pA->mCSequence.GetPCSnap(2);
    ASSERT_NE(pSnap, nullptr);
    EXPECT_TRUE(pSnap->mReadFinished);

    // While a reader runs on a sequence its pass starts nothing there; the other one goes on.
    SetFrames(6, 3);
    pA->mCSequence.PushLock();
    DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
    EXPECT_EQ(CountStarted(pA->mCSequence), 3);
    EXPECT_EQ(CountStarted(pB->mCSequence), 4);
    pA->mCSequence.PopLock();
    WaitReads(pB->mCSequence);

    EXPECT_FALSE(log.Contains("FileSequence")) << "no look-up script runs unless one is given";

    // PrefetchLength= 0 reads nothing.
    SetPrefetch(0);
    EXPECT_FALSE(pA->PrefetchData());
}

TEST_F(ViewerFixture, OverTheLimitOneSnapPerSequenceGoesPerPass) {
    SetFrames(4, 0);
    SetPrefetch(4);
    Particle_cls* pA = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "A")));
    Particle_cls* pB = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "B")));
    ASSERT_TRUE(pA && pB);
    // 70000 particles: more than one MB per snap.
    pA->mCPath.PushCommandPair(MakeParticleFiles("a", 3, 70000));
    pB->mCPath.PushCommandPair(MakeParticleFiles("b", 3, 70000));
    double mb = 0.0;
    for (int pass = 0; pass < 3; ++pass) {
        DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
        WaitReads(pA->mCSequence);
        WaitReads(pB->mCSequence);
    }
    ASSERT_EQ(CountLoaded(pA->mCSequence), 3);
    ASSERT_EQ(CountLoaded(pB->mCSequence), 3);
    EXPECT_GE(pA->GetTotalUsedMemoryMB(), 3);
    DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), true, mb);
    EXPECT_DOUBLE_EQ(mb, pA->GetTotalUsedMemoryMB() + pB->GetTotalUsedMemoryMB());
    EXPECT_EQ(DataMemoryCtrl_cls::GetStrMemoryStatus(mb, 3.0), wxString::Format("%dMB 3MB(Tex)", (int)mb));

    // Now only frame 0 is in the window: steps 1 and 2 may go, step 0 stays protected.
    SetPrefetch(0);
    SetMemoryLimit(0);
    LogCapture_cls log;
    for (int pass = 1; pass <= 3; ++pass) {
        SCOPED_TRACE(pass);
        EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_RELEASE)
            << "over the limit no read starts";
        const int left = std::max(1, 3 - pass);
        EXPECT_EQ(CountLoaded(pA->mCSequence), left);
        EXPECT_EQ(CountLoaded(pB->mCSequence), left);
    }
    EXPECT_NE(pA->mCSequence.GetPCSnap(0), nullptr);
    EXPECT_TRUE(log.Contains("ReleaseLog :: "));

    // Under the limit again, reading ahead resumes.
    SetMemoryLimit(1024);
    SetPrefetch(4);
    EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_PREFETCH);
    EXPECT_EQ(CountLoaded(pA->mCSequence), 2);
    WaitReads(pA->mCSequence);
    WaitReads(pB->mCSequence);
}

TEST_F(ViewerFixture, ProjectWithParticleViewerSavesAndReopensIdentically) {
    const wxString strFirst = MakeParticleFiles("p", 3, 10);
    ASSERT_EQ(Ctrl()->AppendSceneObjCommand("Particle", "Stars"), "Stars");
    Particle_cls* p = dynamic_cast<Particle_cls*>(Obj("Stars"));
    ASSERT_NE(p, nullptr);
    p->mCPath.PushCommandPair(strFirst);
    p->mCInterpolateBy.PushCommandPair("1");
    p->mCFormat.mCDataType.PushCommandPair("0");
    p->mCFormat.AddBodyCommand(3, "ID");
    ASSERT_EQ(Ctrl()->AppendSceneObjCommand("VolumeBox", ""), "VolumeBox");
    const wxString strText = SceneText();
    EXPECT_TRUE(strText.Contains("SceneObj::Stars::ParticleFormat")) << strText;

    const wxString strProject = mDir.Path("stars.ovp");
    ASSERT_TRUE(mpMain->SaveProjectMain(strProject, 0));
    Ctrl()->Clear();
    EXPECT_EQ(Obj("Stars"), nullptr);
    ASSERT_TRUE(mpMain->OpenProjectMain(strProject, true));
    EXPECT_EQ(SceneText(), strText);
    Particle_cls* pRead = dynamic_cast<Particle_cls*>(Obj("Stars"));
    ASSERT_NE(pRead, nullptr);
    EXPECT_TRUE(pRead->IsInterpolateByID());
    EXPECT_EQ(pRead->mCFormat.mAStrBodyAscii.Index("ID"), 3);
    EXPECT_EQ(pRead->mCFormat.mVCBodyAscii.size(), pRead->mCFormat.mAStrBodyAscii.GetCount());
    EXPECT_EQ(pRead->CheckFileSequence(), 3);
    EXPECT_NE(dynamic_cast<VolumeBox_cls*>(Obj("VolumeBox")), nullptr);

    // A renamed viewer writes its format under the new name, and the text reads back.
    ASSERT_EQ(Ctrl()->RenameCommand("Stars", "Dust"), "Dust");
    const wxString strRenamed = SceneText();
    EXPECT_TRUE(strRenamed.Contains("SceneObj::Dust::ParticleFormat"));
    EXPECT_FALSE(strRenamed.Contains("SceneObj::Stars::ParticleFormat"));
    ASSERT_TRUE(mpMain->SaveProjectMain(strProject, 0));
    Ctrl()->Clear();
    ASSERT_TRUE(mpMain->OpenProjectMain(strProject, true));
    EXPECT_EQ(SceneText(), strRenamed);
    ASSERT_NE(dynamic_cast<Particle_cls*>(Obj("Dust")), nullptr);
}

TEST_F(ViewerFixture, VolumeBoxReadsAheadAndIsEvicted) {
    SetFrames(3, 0);
    SetPrefetch(3);
    VolumeBox_cls* p = dynamic_cast<VolumeBox_cls*>(Obj(Ctrl()->AppendSceneObjCommand("VolumeBox", "")));
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->mDrawOrder, 0);
    p->mCPath.PushCommandPair(MakeVolumeFiles("v", 3, 104)); // a little over one MB per step
    EXPECT_EQ(p->CheckFileSequence(), 3);
    double mb = 0.0;
    for (int pass = 1; pass <= 3; ++pass) {
        SCOPED_TRACE(pass);
        EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_PREFETCH);
        EXPECT_EQ(CountStarted(p->mCSequence), pass);
        WaitReads(p->mCSequence);
    }
    EXPECT_EQ(p->GetTotalUsedMemoryMB(), 3);
    SetPrefetch(0);
    SetMemoryLimit(1);
    EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_RELEASE);
    EXPECT_EQ(CountLoaded(p->mCSequence), 2);
    EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_RELEASE);
    EXPECT_EQ(CountLoaded(p->mCSequence), 1);
    EXPECT_EQ(p->GetTotalUsedMemoryMB(), 1);
    EXPECT_EQ(DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb), DataMemoryCtrl_cls::ACTION_PREFETCH)
        << "back at the limit, not over it";
}

TEST_F(ViewerFixture, ReadAheadFollowsTheRemapModifier) {
    KindTable_cls::Register("SequenceRemap_cls", KindTable_cls::GROUP_MODIFIER).mFuncMakeAttribute =
        [](SceneObj_cls*, const wxString& strName) { return new TestRemap_cls(strName); };
    SetFrames(6, 0);
    SetPrefetch(1);
    Particle_cls* p = dynamic_cast<Particle_cls*>(Obj(Ctrl()->AppendSceneObjCommand("Particle", "")));
    ASSERT_NE(p, nullptr);
    p->mCPath.PushCommandPair(MakeParticleFiles("p", 6, 20));
    p->AddModifierCommand("SequenceRemap_cls", "Remap");
    ASSERT_NE(p->GetPCSequenceRemap(), nullptr);
    double mb = 0.0;
    // Frame 0 shows step 4: that step and the one after it are read, nothing else.
    for (int pass = 0; pass < 3; ++pass) {
        DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
        WaitReads(p->mCSequence);
    }
    EXPECT_EQ(CountStarted(p->mCSequence), 2);
    ASSERT_NE(p->mCSequence.GetPCSnap(4), nullptr);
    EXPECT_TRUE(p->mCSequence.GetPCSnap(4)->mReadStarted);
    EXPECT_TRUE(p->mCSequence.GetPCSnap(5)->mReadStarted);
    // Switched off, frame 0 shows step 0 again.
    p->SetModifierValidityCommand("Remap", false);
    EXPECT_EQ(p->GetPCSequenceRemap(), nullptr);
    DataMemoryCtrl_cls::ProcIdlePass(Ctrl(), false, mb);
    WaitReads(p->mCSequence);
    ASSERT_NE(p->mCSequence.GetPCSnap(0), nullptr);
    EXPECT_TRUE(p->mCSequence.GetPCSnap(0)->mReadStarted);
}
