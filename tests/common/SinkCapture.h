// Collects what Lua and the expressions report instead of sending it on; workers may report, so
// the list is guarded.
#pragma once

#include "LuaErrorSink_cls.h"

#include <mutex>
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
    // How many reports contain str.
    int Count(const wxString& str) {
        int n = 0;
        for (const wxString& s : Texts())
            n += s.Contains(str) ? 1 : 0;
        return n;
    }
    wxString Last() {
        std::vector<wxString> v = Texts();
        return v.empty() ? wxString() : v.back();
    }
    void Clear() {
        std::lock_guard<std::mutex> lock(mMutex);
        mVStrTexts.clear();
    }

private:
    std::mutex mMutex;
    std::vector<wxString> mVStrTexts;
};
