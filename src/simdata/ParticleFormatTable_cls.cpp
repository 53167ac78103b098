#include "ParticleFormatTable_cls.h"

namespace {

const char* const kHeaderNames[PH_COUNT] = {"ParticleNumber", "Time",     "Dummy",
                                            "Dummyx3",        "Dummyx10", "BoxBounds"};
const int kHeaderBytes[PH_COUNT] = {4, 4, 4, 12, 40, 24};
const int kHeaderLines[PH_COUNT] = {1, 1, 1, 3, 10, 3};

const char* const kBinaryNames[PB_COUNT] = {
    "XYZ(float)",    "VXVYVZ(float)", "Type(int)",     "Size(float)",  "ID(int)",         "ID(long long)",
    "Value0(float)", "Value1(float)", "Value2(float)", "Dummy(4byte)", "Dummyx3(12byte)", "Dummyx10(40byte)"};
const int kBinaryBytes[PB_COUNT] = {12, 12, 4, 4, 4, 8, 4, 4, 4, 4, 12, 40};

const char* const kAsciiNames[PA_COUNT] = {"XYZ",    "VXVYVZ", "Type",   "Size",  "ID",      "ID(long long)",
                                           "Value0", "Value1", "Value2", "Dummy", "Dummyx3", "Dummyx10",
                                           "X",      "Y",      "Z",      "VX",    "VY",      "VZ"};
const int kAsciiColumns[PA_COUNT] = {3, 3, 1, 1, 1, 1, 1, 1, 1, 1, 3, 10, 1, 1, 1, 1, 1, 1};
const int kAsciiVerticalLines[PA_COUNT] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 10, 0, 0, 0, 0, 0, 0};

} // namespace

wxString ParticleFormatTable_cls::GetStrHeaderFromIndex(int index) {
    if (index < 0 || index >= PH_COUNT)
        return wxString();
    return kHeaderNames[index];
}

wxString ParticleFormatTable_cls::GetStrBodyFromIndex(int index, int type) {
    if (index < 0 || index >= GetBodyItemCount(type))
        return wxString();
    return type == 1 ? kBinaryNames[index] : kAsciiNames[index];
}

int ParticleFormatTable_cls::GetTypeIndexHeader(const wxString& strName) {
    for (int i = 0; i < PH_COUNT; ++i)
        if (strName == kHeaderNames[i])
            return i;
    return -1;
}

int ParticleFormatTable_cls::GetTypeIndexBody(const wxString& strName, int type) {
    const int count = GetBodyItemCount(type);
    for (int i = 0; i < count; ++i)
        if (strName == (type == 1 ? kBinaryNames[i] : kAsciiNames[i]))
            return i;
    return -1;
}

std::vector<int> ParticleFormatTable_cls::GetVFormatHeader(const wxArrayString& aStrHeader) {
    std::vector<int> v;
    for (const wxString& str : aStrHeader) {
        int index = GetTypeIndexHeader(str);
        if (index >= 0)
            v.push_back(index);
    }
    return v;
}

std::vector<int> ParticleFormatTable_cls::GetVFormatBody(const wxArrayString& aStrBody, int type) {
    std::vector<int> v;
    for (const wxString& str : aStrBody) {
        int index = GetTypeIndexBody(str, type);
        if (index >= 0)
            v.push_back(index);
    }
    return v;
}

int ParticleFormatTable_cls::GetHeaderItemByte(int index) {
    return index >= 0 && index < PH_COUNT ? kHeaderBytes[index] : 0;
}

int ParticleFormatTable_cls::GetHeaderItemLine(int index) {
    return index >= 0 && index < PH_COUNT ? kHeaderLines[index] : 0;
}

int ParticleFormatTable_cls::GetBodyItemByteBinary(int index) {
    return index >= 0 && index < PB_COUNT ? kBinaryBytes[index] : 0;
}

int ParticleFormatTable_cls::GetBodyItemColumnAscii(int index) {
    return index >= 0 && index < PA_COUNT ? kAsciiColumns[index] : 0;
}

int ParticleFormatTable_cls::GetBodyItemLineAsciiVertical(int index) {
    return index >= 0 && index < PA_COUNT ? kAsciiVerticalLines[index] : 0;
}

int ParticleFormatTable_cls::GetHeaderByte(const wxArrayString& aStrHeader) {
    int sum = 0;
    for (int index : GetVFormatHeader(aStrHeader))
        sum += GetHeaderItemByte(index);
    return sum;
}

int ParticleFormatTable_cls::GetHeaderLine(const wxArrayString& aStrHeader) {
    int sum = 0;
    for (int index : GetVFormatHeader(aStrHeader))
        sum += GetHeaderItemLine(index);
    return sum;
}

int ParticleFormatTable_cls::GetBodyParticleByte(const wxArrayString& aStrBodyBinary) {
    int sum = 0;
    for (int index : GetVFormatBody(aStrBodyBinary, 1))
        sum += GetBodyItemByteBinary(index);
    return sum;
}

int ParticleFormatTable_cls::GetBodyParticleLineAsciiVertical(const wxArrayString& aStrBodyAscii) {
    int sum = 0;
    for (int index : GetVFormatBody(aStrBodyAscii, 0))
        sum += GetBodyItemLineAsciiVertical(index);
    return sum;
}
