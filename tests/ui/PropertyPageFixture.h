// A window whose one leaf is the property panel, over the headless services and the panel
// makers: what the tests of the kinds' property pages stand on.
#pragma once

#include "UiFixture.h"

#include "PanelMakers.h"
#include "Property_cls.h"

class PropertyPageFixture : public UiFixture {
protected:
    void RegisterLayers() override {
        RegisterServices<ServiceLayer_enum::Headless>();
        RegisterPanelMakers();
    }
    void SetUp() override {
        UiFixture::SetUp();
        if (IsSkipped())
            return;
        ReadFrameLayout(Leaf("PROPERTY"));
        for (wxPanelEX* p : Leaves())
            if (auto* pProperty = dynamic_cast<Property_cls*>(p))
                mpProperty = pProperty;
        ASSERT_NE(mpProperty, nullptr);
    }
    void TearDown() override {
        UiFixture::TearDown();
        UnregisterPanelMakers();
    }

    Property_cls* mpProperty = nullptr;
};
