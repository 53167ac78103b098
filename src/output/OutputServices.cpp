#include "OutputServices.h"

#include "AccumulationBuffer_cls.h"
#include "EnsembleCtrl_cls.h"
#include "ImageFile_cls.h"
#include "ImageIO_cls.h"
#include "ImageOutput_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "OwnedService_cls.h"
#include "ReadPNG_cls.h"
#include "RecordOutput_cls.h"

namespace {
RecordOutput_cls& GetRecordOutput() {
    static RecordOutput_cls sOutput;
    return sOutput;
}
} // namespace

void RegisterOutputServices() {
    // Here, on the main thread before any writer exists: the writers only look the list up.
    ImageFile_cls::RegisterImageHandlers();
    ClassProvider_cls::SetServiceMaker(
        SVC_ImageOutput,
        [] {
            GpCImageOutput = new ImageOutput_cls();
            GCClassProvider->SetReceiverList(RECV_IMAGE_OUTPUT, GpCImageOutput);
            // The sampling controllers come earlier in the table; their buffers are this layer's.
            if (GpCEnsembleCtrl)
                GpCEnsembleCtrl->mFuncDeleteFBO = AccumulationBuffer_cls::DeleteBuffer;
            if (GpCBlurCtrl)
                GpCBlurCtrl->mFuncDeleteFBO = AccumulationBuffer_cls::DeleteBuffer;
            GpCFrameOutput = &GetRecordOutput();
        },
        [] {
            GpCFrameOutput = nullptr;
            if (GCClassProvider)
                GCClassProvider->ClearReceiver(RECV_IMAGE_OUTPUT);
            delete GpCImageOutput;
            GpCImageOutput = nullptr;
        });
    OwnedService_cls::Register(SVC_ImageIO, GpCImageIO);
    OwnedService_cls::Register(SVC_ReadPNG, GpCReadPNG);
}
