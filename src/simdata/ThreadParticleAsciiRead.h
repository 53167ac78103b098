// Reads the body of a text particle file: one line per particle with columns separated by exactly
// one blank (horizontal), or one line per value, item after item (vertical).
#pragma once

#include "GetPC_cls.h"
#include "ParticleReadBase_cls.h"

#include <istream>
#include <string>

class ThreadParticleAsciiRead : public ParticleReadBase_cls, public GetPC_cls {
public:
    void ReadBodyAscii();
    void ReadBodyStreamHorizontal(std::istream& stream);
    void ReadBodyStreamVertical(std::istream& stream);

protected:
    void ReadBody() override { ReadBodyAscii(); }

private:
    // Reads one column at the cursor (strtod, strtol, strtoll) and steps one character past
    // the next blank or newline.
    static float ReadColumnFloat(const char** p);
    static int ReadColumnInt(const char** p);
    static long long ReadColumnLongLong(const char** p);
    static void StepColumn(const char** p);
    // getline plus the one blank that every line gets appended; false at the end of the stream.
    static bool GetLine(std::istream& stream, std::string& line);
};
