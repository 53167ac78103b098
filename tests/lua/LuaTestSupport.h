// Helpers of the Lua tests: a sink that collects the texts that would go to event 6163, and a
// capture of std::cout, where print and the console error path write.
#pragma once

#include "LuaErrorSink_cls.h"
#include "TestSupport.h"

#include <iostream>
#include <mutex>
#include <sstream>
#include <vector>

class SinkCapture_cls : public LuaErrorSink_cls {
public:
    SinkCapture_cls() { Install(this); }
    ~SinkCapture_cls() override { Install(nullptr); }
    SinkCapture_cls(const SinkCapture_cls&) = delete;
    SinkCapture_cls& operator=(const SinkCapture_cls&) = delete;

    void PostLuaError(const wxString& strText) override {
        std::lock_guard<std::mutex> lock(mMutex);
        mVStrTexts.push_back(strText);
    }
    std::vector<wxString> Texts() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mVStrTexts;
    }
    size_t Count() { return Texts().size(); }
    wxString Last() {
        std::vector<wxString> v = Texts();
        return v.empty() ? wxString() : v.back();
    }

private:
    std::mutex mMutex;
    std::vector<wxString> mVStrTexts;
};

class CoutCapture_cls {
public:
    CoutCapture_cls() { mpOld = std::cout.rdbuf(mStream.rdbuf()); }
    ~CoutCapture_cls() { std::cout.rdbuf(mpOld); }
    CoutCapture_cls(const CoutCapture_cls&) = delete;
    CoutCapture_cls& operator=(const CoutCapture_cls&) = delete;
    std::string Text() const { return mStream.str(); }

private:
    std::ostringstream mStream;
    std::streambuf* mpOld = nullptr;
};
