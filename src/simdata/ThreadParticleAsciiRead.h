// Reads the body of a text particle file: one line per particle with columns separated by exactly
// one blank (horizontal), or one line per value, item after item (vertical). The whole file is in
// memory; the body is cut into byte ranges over a few threads, and each range starts at the first
// line that begins inside it.
#pragma once

#include "GetPC_cls.h"
#include "ParticleReadBase_cls.h"

#include <vector>

class ThreadParticleAsciiRead : public ParticleReadBase_cls, public GetPC_cls {
public:
    void ReadBodyAscii();
    // Reads the body lines in [p, end); the byte at end is a zero byte.
    void ReadBodyMemory(const char* p, const char* end);

    // One column at the cursor p of a line that ends at eol (its newline or the end of the data),
    // as strtod, strtol and strtoll read it from the line with one blank appended: bad numbers
    // give 0. The cursor then steps one character past the next blank; at the end of the line
    // it stays there and every further column reads 0.
    static float ReadColumnFloat(const char** p, const char* eol);
    static int ReadColumnInt(const char** p, const char* eol);
    static long long ReadColumnLongLong(const char** p, const char* eol);
    // The Type column: a number as ReadColumnInt reads it, or a word that is an element symbol
    // ("C", "He") as its atomic number, so that an XYZ file colours by element; any other word
    // reads 0, as a bad number does.
    static int ReadColumnType(const char** p, const char* eol);
    static int ParseType(const char* p, const char* eol);
    // The number at p alone, the cursor left where it is.
    static double ParseDouble(const char* p, const char* eol);
    static long ParseLong(const char* p, const char* eol);
    static long long ParseLongLong(const char* p, const char* eol);

protected:
    void ReadBody() override { ReadBodyAscii(); }

private:
    // What one body line holds in the vertical layout: an item and the lines of a particle.
    struct Segment_cls {
        long long mFirstLine; // body line where the item begins
        int mItem;
        int mLinesPerParticle;
    };
    static void StepColumn(const char** p, const char* eol);
    // Decodes one body line [p, eol): horizontal into particle i, vertical as its segment says.
    void DecodeLineHorizontal(size_t i, const char* p, const char* eol, const std::vector<int>& items);
    void DecodeLineVertical(const Segment_cls& segment, long long line, const char* p, const char* eol);
};
