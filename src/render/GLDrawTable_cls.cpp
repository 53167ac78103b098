#include "GLDrawTable_cls.h"

#include "KindTable_cls.h"

void GLDrawTable_cls::Register(const wxString& strClass, const Entry_cls& entry) {
    KindTable_cls::Register(strClass, KindTable_cls::GROUP_OBJECT).SetSlot(KindTable_cls::SLOT_DRAW, entry);
}

const GLDrawTable_cls::Entry_cls* GLDrawTable_cls::GetPCEntry(const wxString& strClass) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClass, KindTable_cls::GROUP_OBJECT);
    return pKind ? pKind->GetSlot<Entry_cls>(KindTable_cls::SLOT_DRAW) : nullptr;
}
