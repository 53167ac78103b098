// Ready formats for files that users meet most: a LAMMPS "dump custom ... id type x y z" text
// dump, an XYZ file, and raw binary float32 x y z. A preset sets every item of the format in one
// undoable edit. Main thread for the command; the texts from any thread.
#pragma once

#include <wx/string.h>

class ParticleFormat_cls;

class ParticleFormatPreset_cls {
public:
    enum Preset_enum {
        // Nine header lines (ITEM: TIMESTEP, the step, ITEM: NUMBER OF ATOMS, the count, ITEM: BOX
        // BOUNDS, three bounds lines, ITEM: ATOMS), then "id type x y z"; sorted by ID on reading,
        // since LAMMPS writes the atoms in changing order.
        PRESET_LAMMPS_CUSTOM = 0,
        // The count line, the comment line, then "type x y z"; the type may be an element symbol.
        PRESET_XYZ = 1,
        // No header; x y z as 32-bit floats, one particle after another, the count from the size.
        PRESET_RAW_FLOAT32 = 2,
        PRESET_COUNT = 3,
    };

    // The label of the preset in the panel; empty for an unknown index.
    static wxString GetStrLabel(int preset);
    // The item lines the preset sets, in the format block's language, one per line; empty for an
    // unknown index.
    static wxString GetStrItems(int preset);
    // Sets the format's items to the preset's through one command pair (the old block is the
    // undo text). False for an unknown index.
    static bool ApplyPresetCommand(ParticleFormat_cls& format, int preset);
};
