#include "GLDrawTable_cls.h"

void GLDrawTable_cls::Register(const wxString& strClass, const Entry_cls& entry) {
    Table()[strClass] = entry;
}

const GLDrawTable_cls::Entry_cls* GLDrawTable_cls::GetPCEntry(const wxString& strClass) {
    const auto it = Table().find(strClass);
    return it == Table().end() ? nullptr : &it->second;
}

std::map<wxString, GLDrawTable_cls::Entry_cls>& GLDrawTable_cls::Table() {
    static std::map<wxString, Entry_cls> table;
    return table;
}
