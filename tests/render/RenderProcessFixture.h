// A render test over the whole process up to the renderer: the shader sources of the source
// tree, the services, and a core in a fresh folder. A test's own GL objects go in its TearDown
// before this one's; ORV_SAVE_FRAMES keeps each test's last frame to look at.
#pragma once

#include "RenderFixture.h"

#include "Main_cls.h"
#include "ServiceRegistry.h"
#include "TestSupport.h"

#include <cstdlib>
#include <memory>
#include <string>

class RenderProcessFixture : public RenderFixture {
protected:
    void SetUp() override {
        RenderFixture::SetUp();
        if (IsSkipped())
            return;
        mpResourceDir = std::make_unique<ResourceDir_cls>(wxString(ORV_SOURCE_DIR) + "/Resource");
        RegisterServices<ServiceLayer_enum::Render>();
        mpMain = std::make_unique<Main_cls>(mDir.mStrPath);
        mpMain->CreateSingleton();
    }
    void TearDown() override {
        if (getenv("ORV_SAVE_FRAMES") && !mVFrame.empty())
            SaveFrame(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png");
        mpMain.reset();
        mpResourceDir.reset();
        RenderFixture::TearDown();
    }

    TempDir_cls mDir;
    std::unique_ptr<ResourceDir_cls> mpResourceDir;
    std::unique_ptr<Main_cls> mpMain;
};
