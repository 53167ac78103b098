// What the frame passes ask of the output layer: the record buffers of a recording run, their
// composition over the background, the saving of each recorded step (one file, one per eye, or
// the two eyes merged by scan lines), and the accumulation buffers of ensemble and motion blur.
// Installed as the frame's output by the output layer's registration. GL thread only.
#pragma once

#include "FrameOutput_cls.h"

#include <wx/gdicmn.h>
#include <wx/string.h>

class RecordOutput_cls : public FrameOutput_cls {
public:
    int GetStereoOutput() const override;
    FBO_cls* GetPCNewFBOForRecord(int size, FBOHost_cls* pHost) override;
    void PrepareFBOForRecord(int recordCount, FBO_cls* const* pRecords, FBO_cls* const* pProcessed,
                             int fit) override;
    void ProcSaveImage(int recordCount, FBO_cls** pRecords, int eyeType, int stereoOutput) override;
    void PrepareBuffer(Accumulation_enum kind, FBO_cls* pLike) override;
    void DrawOnBuffer(Accumulation_enum kind, FBO_cls* pImage, int samples) override;
    void DrawFromBuffer(Accumulation_enum kind, FBO_cls* pTarget) override;
    void PrepareViewportInfo() override;

    // The step's file (eyeFile 0, or 1 and 2 for the eyes) at the output size.
    void SaveImageFromFBO(FBO_cls* pFBO, int eyeFile);
    void SaveImageFromFBOScanLine(FBO_cls** pFBOs);
    // The size of the camera named strCamera where its size override is on, otherwise the
    // image output's.
    static wxSize GetOutputImageSize(const wxString& strCamera);

    // The camera of the view being recorded ("Camera=" of the view).
    wxString mStrCameraName = "Camera";
};
