// The layout grammar of particle files: the item names of the header and of the two kinds of
// body, their byte sizes and line counts, shared by the format and its clone. Any thread.
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <vector>

// Header items, by index.
enum ParticleHeaderItem_enum : int {
    PH_PARTICLE_NUMBER = 0,
    PH_TIME = 1,
    PH_DUMMY = 2,
    PH_DUMMYX3 = 3,
    PH_DUMMYX10 = 4,
    // The bounds of a periodic box: three lines "lo hi" (x, y, z) in a text file, as LAMMPS writes
    // under "ITEM: BOX BOUNDS"; six floats xlo xhi ylo yhi zlo zhi in a binary one.
    PH_BOX_BOUNDS = 5,
    PH_COUNT = 6,
};

// Body items of a binary file, by index.
enum ParticleBinaryItem_enum : int {
    PB_XYZ = 0,
    PB_VXVYVZ = 1,
    PB_TYPE = 2,
    PB_SIZE = 3,
    PB_ID = 4,
    PB_ID_LONG = 5,
    PB_VALUE0 = 6,
    PB_VALUE1 = 7,
    PB_VALUE2 = 8,
    PB_DUMMY = 9,
    PB_DUMMYX3 = 10,
    PB_DUMMYX10 = 11,
    PB_COUNT = 12,
};

// Body items of a text file, by index.
enum ParticleAsciiItem_enum : int {
    PA_XYZ = 0,
    PA_VXVYVZ = 1,
    PA_TYPE = 2,
    PA_SIZE = 3,
    PA_ID = 4,
    PA_ID_LONG = 5,
    PA_VALUE0 = 6,
    PA_VALUE1 = 7,
    PA_VALUE2 = 8,
    PA_DUMMY = 9,
    PA_DUMMYX3 = 10,
    PA_DUMMYX10 = 11,
    PA_X = 12,
    PA_Y = 13,
    PA_Z = 14,
    PA_VX = 15,
    PA_VY = 16,
    PA_VZ = 17,
    PA_COUNT = 18,
};

class ParticleFormatTable_cls {
public:
    // type: 1 binary, 0 text (the value of DataType=).
    static int GetBodyItemCount(int type) {
        return type == 1 ? static_cast<int>(PB_COUNT) : static_cast<int>(PA_COUNT);
    }
    static wxString GetStrHeaderFromIndex(int index);
    static wxString GetStrBodyFromIndex(int index, int type);
    // -1 for an unknown name.
    static int GetTypeIndexHeader(const wxString& strName);
    static int GetTypeIndexBody(const wxString& strName, int type);
    // The list as item indices; unknown names are left out.
    static std::vector<int> GetVFormatHeader(const wxArrayString& aStrHeader);
    static std::vector<int> GetVFormatBody(const wxArrayString& aStrBody, int type);

    static int GetHeaderItemByte(int index);
    static int GetHeaderItemLine(int index);
    static int GetBodyItemByteBinary(int index);
    // Columns of a text body item (XYZ 3, Dummyx10 10, ...).
    static int GetBodyItemColumnAscii(int index);
    // Lines one particle takes per item in a vertical text file; X, Y, Z and VX, VY, VZ count
    // none (kept as it is: the vertical reader reads them, the count does not).
    static int GetBodyItemLineAsciiVertical(int index);

    static int GetHeaderByte(const wxArrayString& aStrHeader);
    static int GetHeaderLine(const wxArrayString& aStrHeader);
    static int GetBodyParticleByte(const wxArrayString& aStrBodyBinary);
    static int GetBodyParticleLineAsciiVertical(const wxArrayString& aStrBodyAscii);
};
