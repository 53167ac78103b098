#include "ThreadParticleAsciiRead.h"

#include "ParticleFileStream_cls.h"

#include <wx/log.h>

#include <cstdio>
#include <cstdlib>

void ThreadParticleAsciiRead::ReadBodyAscii() {
    ParticleFileStream_cls file;
    if (!file.Open(mStrFile)) {
        printf("Read Header Fails!!\n");
        wxLogMessage("Read Header Fails!! %s", mStrFile);
        return;
    }
    std::istream& stream = file.GetStream();
    std::string line;
    const int headerLines = mpFormat->GetHeaderLine();
    for (int i = 0; i < headerLines; ++i)
        if (!std::getline(stream, line))
            return;
    if (mpFormat->GetArrayDirection() == 1)
        ReadBodyStreamVertical(stream);
    else
        ReadBodyStreamHorizontal(stream);
}

bool ThreadParticleAsciiRead::GetLine(std::istream& stream, std::string& line) {
    if (!std::getline(stream, line))
        return false;
    line.push_back(' ');
    return true;
}

void ThreadParticleAsciiRead::StepColumn(const char** p) {
    // The search for the blank starts at the column's first character, not behind the number:
    // a column that starts with a blank (two blanks in a row) ends right there, which shifts the
    // columns behind it. Kept as it is: columns are separated by exactly one blank.
    const char* q = *p;
    while (*q && *q != ' ' && *q != '\n')
        ++q;
    if (*q)
        ++q;
    *p = q;
}

float ThreadParticleAsciiRead::ReadColumnFloat(const char** p) {
    float v = static_cast<float>(strtod(*p, nullptr));
    StepColumn(p);
    return v;
}

int ThreadParticleAsciiRead::ReadColumnInt(const char** p) {
    int v = static_cast<int>(strtol(*p, nullptr, 10));
    StepColumn(p);
    return v;
}

long long ThreadParticleAsciiRead::ReadColumnLongLong(const char** p) {
    long long v = strtoll(*p, nullptr, 10);
    StepColumn(p);
    return v;
}

void ThreadParticleAsciiRead::ReadBodyStreamHorizontal(std::istream& stream) {
    const std::vector<int> items = mpFormat->GetVFormatBody(0);
    std::string line;
    for (int n = 0; n < mNumber; ++n) {
        // When the lines run out the rest stays zero.
        if (!GetLine(stream, line))
            return;
        const size_t i = static_cast<size_t>(n);
        const char* p = line.c_str();
        // Columns are separated by exactly one blank: two blanks in a row, or a tab, shift the
        // columns. X, Y and Z all go to the first component, and VX, VY, VZ likewise; only the
        // vertical reader splits them. Both are kept as they are.
        for (int item : items) {
            switch (item) {
            case PA_XYZ:
                for (int k = 0; k < 3; ++k)
                    mXYZ[3 * i + k] = ReadColumnFloat(&p);
                break;
            case PA_VXVYVZ:
                for (int k = 0; k < 3; ++k) {
                    float v = ReadColumnFloat(&p);
                    if (mVelocity)
                        mVelocity[3 * i + k] = v;
                }
                break;
            case PA_TYPE: {
                int v = ReadColumnInt(&p);
                if (mType)
                    mType[i] = static_cast<unsigned char>(v & 0xff);
                break;
            }
            case PA_SIZE: {
                float v = ReadColumnFloat(&p);
                if (mSize)
                    mSize[i] = v;
                break;
            }
            case PA_ID: {
                int v = ReadColumnInt(&p);
                if (mID)
                    mID[i] = v;
                break;
            }
            case PA_ID_LONG: {
                long long v = ReadColumnLongLong(&p);
                if (mIDLong)
                    mIDLong[i] = v;
                break;
            }
            case PA_VALUE0:
            case PA_VALUE1:
            case PA_VALUE2: {
                float v = ReadColumnFloat(&p);
                if (float* pv = mValue[item - PA_VALUE0])
                    pv[i] = v;
                break;
            }
            case PA_DUMMY:
            case PA_DUMMYX3:
            case PA_DUMMYX10: {
                const int columns = ParticleFormatTable_cls::GetBodyItemColumnAscii(item);
                for (int k = 0; k < columns; ++k)
                    ReadColumnFloat(&p);
                break;
            }
            case PA_X:
            case PA_Y:
            case PA_Z:
                mXYZ[3 * i] = ReadColumnFloat(&p);
                break;
            case PA_VX:
            case PA_VY:
            case PA_VZ: {
                float v = ReadColumnFloat(&p);
                if (mVelocity)
                    mVelocity[3 * i] = v;
                break;
            }
            default:
                break;
            }
        }
    }
}

void ThreadParticleAsciiRead::ReadBodyStreamVertical(std::istream& stream) {
    std::string line;
    const size_t n = mNumber > 0 ? static_cast<size_t>(mNumber) : 0;
    for (int item : mpFormat->GetVFormatBody(0)) {
        // "VXVYVZ", "ID", "ID(long long)", "VX", "VY", "VZ" have no step here and consume no
        // lines, though the line count of the header counts the first three. Kept as it is.
        int linesPerParticle = 0;
        switch (item) {
        case PA_XYZ:
        case PA_X:
        case PA_Y:
        case PA_Z:
        case PA_TYPE:
        case PA_SIZE:
        case PA_VALUE0:
        case PA_VALUE1:
        case PA_VALUE2:
        case PA_DUMMY:
            linesPerParticle = 1;
            break;
        case PA_DUMMYX3:
            linesPerParticle = 3;
            break;
        case PA_DUMMYX10:
            linesPerParticle = 10;
            break;
        default:
            break;
        }
        if (linesPerParticle == 0)
            continue;
        for (size_t i = 0; i < n; ++i) {
            for (int l = 0; l < linesPerParticle; ++l)
                if (!GetLine(stream, line))
                    return;
            const char* p = line.c_str();
            switch (item) {
            case PA_XYZ:
                for (int k = 0; k < 3; ++k)
                    mXYZ[3 * i + k] = ReadColumnFloat(&p);
                break;
            case PA_X:
            case PA_Y:
            case PA_Z:
                mXYZ[3 * i + (item - PA_X)] = static_cast<float>(strtod(p, nullptr));
                break;
            case PA_TYPE:
                if (mType)
                    mType[i] = static_cast<unsigned char>(strtol(p, nullptr, 10) & 0xff);
                break;
            case PA_SIZE:
                if (mSize)
                    mSize[i] = static_cast<float>(strtod(p, nullptr));
                break;
            case PA_VALUE0:
            case PA_VALUE1:
            case PA_VALUE2:
                if (float* pv = mValue[item - PA_VALUE0])
                    pv[i] = static_cast<float>(strtod(p, nullptr));
                break;
            default:
                break;
            }
        }
    }
}
