#include "FilterFixture.h"

#include "CommandText.h"
#include "FilterBase_cls.h"
#include "GLPerspective_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObjCtrl_cls.h"
#include "ServiceRegistry.h"
#include "ShaderItem_cls.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace {
const wxString kResourceDir = wxString(ORV_SOURCE_DIR) + "/Resource";
} // namespace

void FilterFixture::TearDownTestSuite() {
    if (mspCContext && mspCContext->IsValid()) {
        mspCContext->MakeCurrent();
        FramePasses_cls::DeleteGLCommon();
    }
    RenderFixture::TearDownTestSuite();
}

void FilterFixture::SetUp() {
    RenderFixture::SetUp();
    if (IsSkipped())
        return;
    mStrOldResourceDir = ShaderItem_cls::msStrResourceDir;
    ShaderItem_cls::msStrResourceDir = kResourceDir;
    FilterBase_cls::ClearReported();
    RegisterServices<ServiceLayer_enum::Filter>();
    mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
    mpMain->CreateSingleton();
    mpView = std::make_unique<View3D_cls>();
    mpPasses = std::make_unique<FramePasses_cls>(mpView.get());
    mpView->mCBufSizeIdx.SetBodyFromData("0"); // 256
    mpView->mCDispLightCam.SetBodyFromData("0");
    mpView->mCDispGrid.SetBodyFromData("0");
    GpCSceneObjCtrl->Select("", false, false, false);
}

void FilterFixture::TearDown() {
    if (!mpMain) {
        RenderFixture::TearDown();
        return;
    }
    // Buffers and programs go while the context is current.
    mpPasses.reset();
    mpMain.reset();
    ShaderItem_cls::msStrResourceDir = mStrOldResourceDir;
    if (getenv("ORV_SAVE_FRAMES") && !mVFrame.empty())
        SaveFrame(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png");
    RenderFixture::TearDown();
}

std::unique_ptr<FBO_cls> FilterFixture::MakeSource(int size, const std::function<void()>& funcDraw) {
    auto p = std::make_unique<FBO_cls>(size, size, nullptr);
    p->MakeFBO(true, false);
    p->Begin(true, false);
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    GLPerspective_cls::Push2DMatrix(size, size);
    funcDraw();
    GLPerspective_cls::Pop2DMatrix();
    p->End();
    return p;
}

void FilterFixture::RunChain(FBO_cls& source, const std::vector<float>& vPasspartout) {
    PositionAndDirection_cls pose;
    FBO_cls* pResult = GpCFilterCtrl->GetNewPCFilterProcessed(&source, vPasspartout, pose, nullptr, nullptr);
    ASSERT_NE(pResult, nullptr);
    ASSERT_NE(pResult, &source);
    ReadTexture(pResult->GetTexture(), pResult->GetWidth(), pResult->GetHeight());
    GpCFilterCtrl->ReleaseProcessed(pResult);
}

void FilterFixture::Run(const wxString& strText) {
    RunCommandText(*mpMain, strText);
}

void FilterFixture::SetGroup(const wxString& strFilter, const wxString& strGroup, double a, double b,
                             double c) {
    FilterBase_cls* p = Filter(strFilter);
    ASSERT_NE(p, nullptr) << strFilter;
    ParamGroup_cls* pGroup = p->GetPCParamGroup(strGroup);
    ASSERT_NE(pGroup, nullptr) << strGroup;
    pGroup->SetInitValue(a, b, c);
}

void FilterFixture::SetItem(const wxString& strFilter, const wxString& strKey, const wxString& strValue) {
    FilterBase_cls* p = Filter(strFilter);
    ASSERT_NE(p, nullptr) << strFilter;
    ConfItem_cls* pItem = p->GetPCItem(strKey);
    ASSERT_NE(pItem, nullptr) << strKey;
    pItem->SetBodyFromData(strValue);
}

void FilterFixture::Paint(int size) {
    FBO_cls target(size, size, nullptr);
    target.MakeFBO(true, false);
    mpPasses->PaintDirectly(size, size, size, size, target.GetFramebuffer());
    ReadTexture(target.GetTexture(), size, size);
}

int CountLines(const LogCapture_cls& log, std::initializer_list<const char*> texts) {
    int lines = 0;
    for (const wxString& str : log.mVStrLines)
        lines +=
            std::all_of(texts.begin(), texts.end(), [&](const char* p) { return str.Contains(p); }) ? 1 : 0;
    return lines;
}
