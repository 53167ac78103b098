// The process up to the filter chain in a surfaceless context: a source image drawn by the test
// goes through the chain, and the finished image is read back.
#pragma once

#include "FBO_cls.h"
#include "FilterCtrl_cls.h"
#include "FramePasses_cls.h"
#include "Main_cls.h"
#include "PositionAndDirection_cls.h"
#include "RenderFixture.h"
#include "TestSupport.h"
#include "View3D_cls.h"

#include <functional>
#include <memory>

class FilterFixture : public RenderFixture {
protected:
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // A size by size image drawn by the function in pixel coordinates, cleared to transparent first.
    std::unique_ptr<FBO_cls> MakeSource(int size, const std::function<void()>& funcDraw);
    // Runs the chain over the source and reads its result (with no depth and no passepartout).
    void RunChain(FBO_cls& source, const std::vector<float>& vPasspartout = {-1.f, -1.f, 1.f});
    // Runs a text of the command language.
    void Run(const wxString& strText);
    FilterBase_cls* Filter(const wxString& strName) { return GpCFilterCtrl->GetPCFromName(strName); }
    // Sets member values of a group of a filter at every time (the first key).
    void SetGroup(const wxString& strFilter, const wxString& strGroup, double a, double b = 0.0,
                  double c = 0.0);
    void SetItem(const wxString& strFilter, const wxString& strKey, const wxString& strValue);
    // Renders one frame of the scene into a square target and reads it.
    void Paint(int size = 256);

    TempDir_cls mDir;
    wxString mStrOldResourceDir;
    std::unique_ptr<Main_cls> mpMain;
    std::unique_ptr<View3D_cls> mpView;
    std::unique_ptr<FramePasses_cls> mpPasses;
};

// The number of captured log lines that hold every one of the texts.
int CountLines(const LogCapture_cls& log, std::initializer_list<const char*> texts);

// Exact colour within one step of 8 bits.
constexpr float kOneStep = 1.f / 255.f;
