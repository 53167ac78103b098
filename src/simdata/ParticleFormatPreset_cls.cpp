#include "ParticleFormatPreset_cls.h"

#include "ParticleFormat_cls.h"
#include "TextHost_cls.h"

namespace {

class Preset_cls {
public:
    const char* mpLabel;
    const char* mpItems;
};

// Every switch of the format is named, so that a preset leaves nothing of the format before it.
const Preset_cls kPreset[ParticleFormatPreset_cls::PRESET_COUNT] = {
    {"LAMMPS dump custom (id type x y z)",
     "DataType=0\nArrayDirection=0\nPreSortByID=1\nRemoveDupli=0\n"
     "ParticleFormatHeader=Dummy::##::Time::##::Dummy::##::ParticleNumber::##::Dummy::##::BoxBounds::##::"
     "Dummy\n"
     "ParticleFormatBodyAscii=ID::##::Type::##::XYZ\n"},
    {"XYZ (count, comment, type x y z)", "DataType=0\nArrayDirection=0\nPreSortByID=0\nRemoveDupli=0\n"
                                         "ParticleFormatHeader=ParticleNumber::##::Dummy\n"
                                         "ParticleFormatBodyAscii=Type::##::XYZ\n"},
    {"Raw binary float32 x y z", "DataType=1\nArrayDirection=0\nPreSortByID=0\nRemoveDupli=0\n"
                                 "ParticleFormatHeader=\n"
                                 "ParticleFormatBodyBinary=XYZ(float)\n"},
};

bool IsPreset(int preset) {
    return preset >= 0 && preset < ParticleFormatPreset_cls::PRESET_COUNT;
}

} // namespace

wxString ParticleFormatPreset_cls::GetStrLabel(int preset) {
    return IsPreset(preset) ? wxString(kPreset[preset].mpLabel) : wxString();
}

wxString ParticleFormatPreset_cls::GetStrItems(int preset) {
    return IsPreset(preset) ? wxString(kPreset[preset].mpItems) : wxString();
}

bool ParticleFormatPreset_cls::ApplyPresetCommand(ParticleFormat_cls& format, int preset) {
    if (!IsPreset(preset))
        return false;
    wxString strUndo;
    format.Serialize(strUndo);
    const wxString strDo =
        "ConfItemList::Begin::" + format.GetTag() + "\n" + GetStrItems(preset) + "ConfItemList::End\n";
    TextHost_cls::PushAndRedo(strUndo, strDo);
    return true;
}
