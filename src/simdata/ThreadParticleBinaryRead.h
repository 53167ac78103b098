// Reads the body of a binary particle file: values as they stand in memory (little-endian on the
// target), either record after record (horizontal), decoded in chunks of 200000 records while the
// next chunk is read, or column after column straight into the arrays (vertical).
#pragma once

#include "GetPC_cls.h"
#include "ParticleReadBase_cls.h"

#include <istream>
#include <vector>

class ThreadParticleBinaryRead : public ParticleReadBase_cls, public GetPC_cls {
public:
    static constexpr int msChunkRecords = 200000;

    void ReadBodyBinary();
    void ReadBodyStream(std::istream& stream);
    void ReadBodyStreamVertical(std::istream& stream);

protected:
    void ReadBody() override { ReadBodyBinary(); }

private:
    // Decodes up to count records of buf (of which bytes are valid) into particles first,
    // first + 1, ...; records that the valid bytes do not cover stay as they are.
    void DecodeRecords(const char* buf, long long bytes, int first, int count, const std::vector<int>& items);
};
