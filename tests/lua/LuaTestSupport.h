// Helpers of the Lua tests: a sink that collects the texts that would go to event 6163, and a
// capture of std::cout, where print and the console error path write.
#pragma once

#include "SinkCapture.h"
#include "TestSupport.h"

#include <iostream>
#include <sstream>

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
