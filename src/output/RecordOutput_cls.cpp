#include "RecordOutput_cls.h"

#include "AccumulationBuffer_cls.h"
#include "CameraProp_cls.h"
#include "Camera_cls.h"
#include "ColorProvider_cls.h"
#include "EnsembleCtrl_cls.h"
#include "FBO_cls.h"
#include "GetPC_cls.h"
#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ShaderCtrl_cls.h"
#include "TimeCtrl_cls.h"

#include <epoxy/gl.h>

int RecordOutput_cls::GetStereoOutput() const {
    return GpCImageOutput ? GpCImageOutput->GetStereoOutput() : 0;
}

FBO_cls* RecordOutput_cls::GetPCNewFBOForRecord(int size, FBOHost_cls* pHost) {
    if (!GpCTimeCtrl || !GpCTimeCtrl->IsOutputRunning() || !GpCImageOutput || !GpCImageIO)
        return nullptr;
    FBO_cls* pFBO = new FBO_cls(size, size, pHost);
    pFBO->SetGeometryFBO(size, size);
    pFBO->MakeFBO(true, false);
    GpCTimeCtrl->SetFrameWritten(true);
    return pFBO;
}

void RecordOutput_cls::PrepareFBOForRecord(int recordCount, FBO_cls* const* pRecords,
                                           FBO_cls* const* pProcessed, int fit) {
    const int side = pRecords[0]->GetWidth();
    for (int i = 0; i < recordCount; ++i) {
        pRecords[i]->Begin(true, false);
        if (GpCColorProvider)
            GpCColorProvider->SetGLClearColor("GLBG");
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_BLEND);
        if (GpCShaderCtrl)
            GpCShaderCtrl->BeginClampAlpha(nullptr);
        pProcessed[i]->DrawOnScreen2DFit(side, side, fit, false, 0);
        if (GpCShaderCtrl)
            GpCShaderCtrl->EndShader();
        glDisable(GL_BLEND);
        pRecords[i]->End();
    }
}

wxSize RecordOutput_cls::GetOutputImageSize(const wxString& strCamera) {
    if (GpCSceneObjCtrl) {
        SceneObj_cls* p = GpCSceneObjCtrl->GetPCFromName(strCamera);
        if (p && p->IsClassSameAs("Camera_cls")) {
            CameraProp_cls* pProp = static_cast<Camera_cls*>(p)->GetPCCameraProp();
            if (pProp && pProp->IsSizeOverride()) {
                int width = 0, height = 0;
                pProp->GetOverrideSize(width, height);
                return wxSize(width, height);
            }
        }
    }
    return GpCImageOutput->GetSize();
}

void RecordOutput_cls::SaveImageFromFBO(FBO_cls* pFBO, int eyeFile) {
    const wxString strPath = GpCImageOutput->GetModifiedStr(GpCTimeCtrl->GetCurrentStep(), eyeFile);
    GpCImageIO->mPNGCompression = GpCImageOutput->GetPNGCompression();
    GpCImageIO->mPNGBitDepth = GpCImageOutput->GetPNGBitDepth();
    GpCImageIO->SaveImageFromFBO(pFBO, GetOutputImageSize(mStrCameraName), strPath,
                                 GpCImageOutput->IsAlpha());
}

void RecordOutput_cls::SaveImageFromFBOScanLine(FBO_cls** pFBOs) {
    const wxString strPath = GpCImageOutput->GetModifiedStr(GpCTimeCtrl->GetCurrentStep(), 0);
    GpCImageIO->mPNGCompression = GpCImageOutput->GetPNGCompression();
    GpCImageIO->mPNGBitDepth = GpCImageOutput->GetPNGBitDepth();
    GpCImageIO->SaveImageFromFBOScanLine(pFBOs, GetOutputImageSize(mStrCameraName), strPath);
}

void RecordOutput_cls::ProcSaveImage(int recordCount, FBO_cls** pRecords, int eyeType, int stereoOutput) {
    if (!pRecords[0])
        return;
    if (recordCount == 1) {
        SaveImageFromFBO(pRecords[0], 0);
    } else if (eyeType == 3 && stereoOutput == 0) {
        SaveImageFromFBOScanLine(pRecords);
    } else {
        SaveImageFromFBO(pRecords[0], 1);
        SaveImageFromFBO(pRecords[1], 2);
    }
    for (int i = 0; i < recordCount; ++i) {
        delete pRecords[i];
        pRecords[i] = nullptr;
    }
    if (GpCTimeCtrl->mbOneShot) {
        GpCTimeCtrl->mbOneShot = false;
        GpCTimeCtrl->StopPlayCommand();
    }
}

void RecordOutput_cls::PrepareBuffer(Accumulation_enum kind, FBO_cls* pLike) {
    if (kind == Accumulation_enum::Ensemble && GpCEnsembleCtrl)
        AccumulationBuffer_cls::PrepareBuffer(GpCEnsembleCtrl->mpCFBOBuffer, pLike);
    else if (kind == Accumulation_enum::MotionBlur && GpCBlurCtrl)
        AccumulationBuffer_cls::PrepareBuffer(GpCBlurCtrl->mpCFBOBuffer, pLike);
}

void RecordOutput_cls::DrawOnBuffer(Accumulation_enum kind, FBO_cls* pImage, int samples) {
    if (kind == Accumulation_enum::Ensemble && GpCEnsembleCtrl)
        AccumulationBuffer_cls::DrawOnBuffer(GpCEnsembleCtrl->mpCFBOBuffer, pImage, samples,
                                             GpCEnsembleCtrl->GetEnsembleStep(),
                                             GpCEnsembleCtrl->IsUseGamma());
    else if (kind == Accumulation_enum::MotionBlur && GpCBlurCtrl)
        AccumulationBuffer_cls::DrawOnBuffer(GpCBlurCtrl->mpCFBOBuffer, pImage, samples,
                                             GpCBlurCtrl->GetBlurStep(), GpCBlurCtrl->IsUseGamma());
}

void RecordOutput_cls::DrawFromBuffer(Accumulation_enum kind, FBO_cls* pTarget) {
    if (kind == Accumulation_enum::Ensemble && GpCEnsembleCtrl)
        AccumulationBuffer_cls::DrawFromBuffer(GpCEnsembleCtrl->mpCFBOBuffer, pTarget,
                                               GpCEnsembleCtrl->IsUseGamma());
    else if (kind == Accumulation_enum::MotionBlur && GpCBlurCtrl)
        AccumulationBuffer_cls::DrawFromBuffer(GpCBlurCtrl->mpCFBOBuffer, pTarget, GpCBlurCtrl->IsUseGamma());
}

void RecordOutput_cls::PrepareViewportInfo() {
    if (GpCImageIO)
        GpCImageIO->PrepareViewportInfo();
}
