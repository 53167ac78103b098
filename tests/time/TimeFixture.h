// A core with the time services made in a temporary application directory, and helpers to
// set the clock directly and to read back what it queued.
#pragma once

#include "EnsembleCtrl_cls.h"
#include "Main_cls.h"
#include "MotionBlurCtrl_cls.h"
#include "Parser_cls.h"
#include "Queue_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include "ServicesFixture.h"

#include <algorithm>
#include <sstream>

class TimeFixture : public ServicesFixture<ServiceLayer_enum::Time> {
protected:
    void SetUp() override {
        TimeCtrl_cls::msbForceAbort = false;
        ServicesFixture::SetUp();
        mpTime = GpCTimeCtrl;
        ASSERT_NE(mpTime, nullptr);
    }
    void TearDown() override {
        ServicesFixture::TearDown();
        TimeCtrl_cls::msbForceAbort = false;
    }

    // Sets an item of a list without the undo road.
    static void Set(ConfItem_cls& item, long long value) { item.SetBodyFromData(value); }
    void SetRange(int frameMax, int subFrameMax, int stepping) {
        Set(mpTime->mCFrameMax, frameMax);
        Set(mpTime->mCSubFrameMax, subFrameMax);
        Set(mpTime->mCSubFrameStepping, stepping);
    }
    void SetPos(int frame, int sub) {
        Set(mpTime->mCFrameCurrent, frame);
        Set(mpTime->mCSubFrameCurrent, sub);
    }
    void SetWA(int waMin, int waSubMin, int waMax, int waSubMax) {
        Set(mpTime->mCWAMin, waMin);
        Set(mpTime->mCWASubMin, waSubMin);
        Set(mpTime->mCWAMax, waMax);
        Set(mpTime->mCWASubMax, waSubMax);
    }
    // Runs one line of the command language as a project load would.
    void Run(const wxString& strLine) {
        std::wistringstream stream;
        wxString strRest = strLine;
        wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
        mpMain->ReadStrCommand(stream, strHead, strRest);
    }
    wxString TimeText() {
        wxString str;
        mpTime->Serialize(str);
        return str;
    }
    bool Queued(const wxString& strPanels) const {
        const auto& v = mpMain->mVStrPanelQueue;
        return std::find(v.begin(), v.end(), strPanels) != v.end();
    }
    std::pair<int, int> Pos() const { return {mpTime->GetFrameCurrent(), mpTime->GetSubFrameCurrent()}; }

    TimeCtrl_cls* mpTime = nullptr;
};
