#include "BatchRenderer_cls.h"

#include "EnsembleCtrl_cls.h"
#include "FBO_cls.h"
#include "FileSequence_cls.h"
#include "FrameClaim_cls.h"
#include "FramePasses_cls.h"
#include "GetPC_cls.h"
#include "ImageFile_cls.h"
#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "ParticleForRender_cls.h"
#include "Particle_cls.h"
#include "RecordOutput_cls.h"
#include "SceneObjCtrl_cls.h"
#include "TimeCtrl_cls.h"
#include "View3D_cls.h"

#include <wx/filename.h>

#include <chrono>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {
double NowMillis() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

bool FileExists(const std::string& strPath) {
    struct stat st;
    return stat(strPath.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}
} // namespace

BatchRenderer_cls::BatchRenderer_cls(const BatchOptions_cls& options, const std::string& strOutAbsolute)
    : mCOptions(options), mStrOut(strOutAbsolute) {}

BatchRenderer_cls::~BatchRenderer_cls() = default;

void BatchRenderer_cls::ApplyFirstViewBlock(const std::string& strProjectText, View3D_cls& view) {
    std::istringstream in(strProjectText);
    std::string strLine;
    bool bInBlock = false;
    while (std::getline(in, strLine)) {
        if (!strLine.empty() && strLine.back() == '\r')
            strLine.pop_back();
        if (!bInBlock) {
            bInBlock = strLine == "ConfItemList::Begin::View3D";
            continue;
        }
        if (strLine == "ConfItemList::End")
            return;
        const size_t eq = strLine.find('=');
        if (eq == std::string::npos)
            continue;
        if (ConfItem_cls* pItem = view.GetPCItem(wxString::FromUTF8(strLine.substr(0, eq + 1))))
            pItem->SetBodyFromData(wxString::FromUTF8(strLine.substr(eq + 1)));
    }
}

void BatchRenderer_cls::ForgetEarlierFrames() {
    if (GpCEnsembleCtrl)
        GpCEnsembleCtrl->ClearFBOBuffer();
    if (GpCBlurCtrl)
        GpCBlurCtrl->ClearFBOBuffer();
    if (!GpCSceneObjCtrl)
        return;
    // A particle object keeps the last step, stamp, sort type and camera of its sets, and skips
    // a sort when the camera has hardly moved: a frame must not depend on which frame came before.
    std::vector<SceneObj_cls*> vObjects;
    GpCSceneObjCtrl->GetVPCList(vObjects);
    for (SceneObj_cls* p : vObjects) {
        Particle_cls* pParticle = Particle_cls::GetPCParticle(p);
        if (!pParticle)
            continue;
        pParticle->WaitPrepareNext();
        if (pParticle->mpCCurrent)
            pParticle->mpCCurrent->Clear();
        if (pParticle->mpCNext)
            pParticle->mpCNext->Clear();
        pParticle->mCurrentTime = -1.0;
        pParticle->mNextTime = -1.0;
    }
}

void BatchRenderer_cls::Report(Pending_cls& pending, const std::string& strPath, bool bOk) {
    if (!bOk) {
        pending.mbOk = false;
        mVStrFailed.push_back(strPath);
    }
    if (--pending.mRemaining > 0)
        return;
    FrameClaim_cls::Release(pending.mStrClaimTarget);
    ++mDone;
    if (pending.mbOk)
        ++mWritten;
    if (!mCOptions.mbQuiet)
        fprintf(stderr, "orvantis4-batch: [%d/%d] frame %d.%d %s %s (%.0f ms)\n", mDone, mTotal,
                pending.mFrame, pending.mSub, pending.mbOk ? "->" : "FAILED", strPath.c_str(),
                NowMillis() - pending.mStartMillis);
}

void BatchRenderer_cls::Drain(const std::vector<ImageIO_cls::Result_cls>& vResults) {
    for (const ImageIO_cls::Result_cls& result : vResults) {
        if (result.mTag >= 0 && result.mTag < static_cast<int>(mVPending.size()))
            Report(mVPending[result.mTag], result.mStrPath, result.mbOk);
    }
}

int BatchRenderer_cls::Prepare(const std::string& strProjectText) {
    mpCView = std::make_unique<View3D_cls>();
    View3D_cls& view = *mpCView;
    ApplyFirstViewBlock(strProjectText, view);
    ImageOutput_cls& output = *GpCImageOutput;
    if (!mStrOut.empty())
        output.mCFileFormat.SetBodyFromData(wxString::FromUTF8(mStrOut));
    if (mCOptions.mWidth > 0) {
        output.mCWidth.SetBodyFromData(static_cast<long long>(mCOptions.mWidth));
        output.mCHeight.SetBodyFromData(static_cast<long long>(mCOptions.mHeight));
    }
    if (mCOptions.mPNGLevel >= 0)
        output.mCPNGCompression.SetBodyFromData(static_cast<long long>(mCOptions.mPNGLevel));
    // A relative pattern of the project is relative to the project's folder (the working folder now).
    wxFileName fnPattern(output.mCFileFormat.GetBodySTR());
    fnPattern.MakeAbsolute();
    output.mCFileFormat.SetBodyFromData(fnPattern.GetFullPath());
    const std::string strFolder = fnPattern.GetPath().utf8_string();
    if (!wxFileName::DirExists(fnPattern.GetPath())) {
        fprintf(stderr, "orvantis4-batch: the output folder %s does not exist\n", strFolder.c_str());
        return 2;
    }
    if (access(strFolder.c_str(), W_OK | X_OK) != 0) {
        fprintf(stderr, "orvantis4-batch: the output folder %s is not writable\n", strFolder.c_str());
        return 2;
    }
    SampleType_enum type;
    if (!ImageFile_cls::GetSampleTypeForPath(fnPattern.GetFullPath().utf8_string(), output.GetPNGBitDepth(),
                                             type)) {
        fprintf(stderr, "orvantis4-batch: no writer for %s (%s%s)\n",
                fnPattern.GetFullName().utf8_str().data(), ImageFile_cls::GetStrExtensions().c_str(),
                ImageFile_cls::IsOpenEXRBuiltIn() ? "" : "; OpenEXR is not built in");
        return 2;
    }
    // --size wins over the size override of the view's camera.
    const wxString strCamera = mCOptions.mWidth > 0 ? wxString() : view.GetStrCameraName();
    mSize = RecordOutput_cls::GetOutputImageSize(strCamera);
    if (RecordOutput_cls* pRecord = dynamic_cast<RecordOutput_cls*>(GpCFrameOutput))
        pRecord->mStrCameraName = strCamera;
    if (mSize.x < 1 || mSize.y < 1) {
        fprintf(stderr, "orvantis4-batch: the image size %dx%d is empty\n", mSize.x, mSize.y);
        return 2;
    }
    FileSequence_cls sequence;
    sequence.Set(output.mCFileFormat.GetBodySTR(), 0, 1);
    mStrPattern = sequence.mDigits == -1 ? std::string() : sequence.mFormat.utf8_string();

    TimeCtrl_cls& time = *GpCTimeCtrl;
    const int first = mCOptions.mbFrames ? mCOptions.mFrameFirst : time.GetWAMin();
    const int last = mCOptions.mbFrames ? mCOptions.mFrameLast : time.GetWAMax();
    mVPositions = BatchOptions_cls::GetPositions(first, last, mCOptions.mFrameStep, time.GetSubFrameMax(),
                                                 time.GetSubFrameStepping(), mCOptions.mShardIndex,
                                                 mCOptions.mShardCount);
    mFirstNumber = sequence.mOffset + time.GetStep(first, 0) * sequence.mStep;
    mTotal = static_cast<int>(mVPositions.size());
    mVPending.assign(mVPositions.size(), Pending_cls());
    return 0;
}

void BatchRenderer_cls::StartReading() {
    if (mVPositions.empty() || !GpCSceneObjCtrl)
        return;
    TimeCtrl_cls& time = *GpCTimeCtrl;
    time.ProcSetFrameCurrent(mVPositions[0].first);
    time.ProcSetSubFrameCurrent(mVPositions[0].second);
    // What the window's idle loop reads ahead, and every step that a particle object's first
    // frame needs (the read ahead starts one file at a time).
    GpCSceneObjCtrl->Prefetch();
    const double nt = time.GetCurrentNT(false);
    std::vector<SceneObj_cls*> vObjects;
    GpCSceneObjCtrl->GetVPCList(vObjects);
    for (SceneObj_cls* p : vObjects)
        if (Particle_cls* pParticle = Particle_cls::GetPCParticle(p))
            pParticle->StartReadsAt(nt);
}

int BatchRenderer_cls::Run() {
    const std::vector<std::pair<int, int>>& vPositions = mVPositions;
    const wxSize size = mSize;
    TimeCtrl_cls& time = *GpCTimeCtrl;
    ImageOutput_cls& output = *GpCImageOutput;
    // The picture the window would show goes to a small buffer; the file comes from the record.
    FBO_cls target(16, 16, nullptr);
    target.SetGeometryFBO(16, 16);
    target.MakeFBO(true, false);
    // Recording as the window's render button starts it, without playback: the frames are set here.
    time.mbOutputRunning = true;
    ImageIO_cls& io = *GpCImageIO;
    // One set of passes for the run: its buffers are cleared by every frame and its uploads are
    // keyed by the data they hold, so only what a frame changes is made again.
    FramePasses_cls passes(mpCView.get());
    for (size_t i = 0; i < vPositions.size(); ++i) {
        if (TimeCtrl_cls::msbForceAbort.load(std::memory_order_acquire))
            break;
        const int frame = vPositions[i].first, sub = vPositions[i].second;
        time.ProcSetFrameCurrent(frame);
        time.ProcSetSubFrameCurrent(sub);
        Pending_cls& pending = mVPending[i];
        pending.mFrame = frame;
        pending.mSub = sub;
        pending.mStartMillis = NowMillis();
        const std::string strPath = output.GetModifiedStr(time.GetCurrentStep(), 0).utf8_string();
        pending.mStrClaimTarget = strPath;
        if (mCOptions.mbSkipExisting && FileExists(strPath)) {
            FrameClaim_cls::RemoveIfStale(strPath, mCOptions.mClaimTimeout);
            ++mSkipped;
            ++mDone;
            if (!mCOptions.mbQuiet)
                fprintf(stderr, "orvantis4-batch: [%d/%d] frame %d.%d exists, skipped %s\n", mDone, mTotal,
                        frame, sub, strPath.c_str());
            continue;
        }
        std::string strError;
        const FrameClaim_cls::Result_enum claim =
            FrameClaim_cls::Claim(strPath, mCOptions.mClaimTimeout, strError);
        if (claim == FrameClaim_cls::FAILED) {
            fprintf(stderr, "orvantis4-batch: frame %d.%d: %s\n", frame, sub, strError.c_str());
            mVStrFailed.push_back(strPath);
            ++mDone;
            continue;
        }
        if (claim == FrameClaim_cls::HELD_BY_OTHER) {
            ++mSkipped;
            ++mDone;
            if (!mCOptions.mbQuiet)
                fprintf(stderr,
                        "orvantis4-batch: [%d/%d] frame %d.%d claimed by another worker, skipped %s\n", mDone,
                        mTotal, frame, sub, strPath.c_str());
            continue;
        }
        if (claim == FrameClaim_cls::TAKEN_OVER && !mCOptions.mbQuiet)
            fprintf(stderr, "orvantis4-batch: frame %d.%d: took over a stale claim\n", frame, sub);
        // As if first: no buffer, pose, sort or accumulation of an earlier frame.
        ForgetEarlierFrames();
        io.mTag = static_cast<int>(i);
        const long long savesBefore = io.mSaveCount;
        passes.RefreshEX();
        passes.PaintDirectly(size.x, size.y, size.x, size.y, target.GetFramebuffer());
        pending.mRemaining = io.mSaveCount - savesBefore;
        if (pending.mRemaining == 0) {
            pending.mRemaining = 1;
            Report(pending, strPath, false);
        }
        Drain(io.CollectFinished());
    }
    Drain(io.WaitAll());
    time.mbOutputRunning = false;
    for (size_t i = 0; i < mVPending.size(); ++i) {
        // Frames never started (an abort) keep no claim.
        if (mVPending[i].mRemaining > 0)
            FrameClaim_cls::Release(mVPending[i].mStrClaimTarget);
    }
    return mVStrFailed.empty() && mDone == mTotal ? 0 : 1;
}
