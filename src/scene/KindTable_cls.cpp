#include "KindTable_cls.h"

#include <memory>

namespace {

// In the order of registration; the entries stay where they are, so references to them hold
// while further kinds are added.
std::vector<std::unique_ptr<KindTable_cls::Entry_cls>>& Entries() {
    static std::vector<std::unique_ptr<KindTable_cls::Entry_cls>> sVEntry;
    return sVEntry;
}

} // namespace

KindTable_cls::Entry_cls& KindTable_cls::Register(const wxString& strClassWord, Group_enum group) {
    for (auto& p : Entries())
        if (p->mStrClassWord == strClassWord)
            return *p;
    Entries().push_back(std::make_unique<Entry_cls>());
    Entry_cls& entry = *Entries().back();
    entry.mStrClassWord = strClassWord;
    entry.mGroup = group;
    return entry;
}

const KindTable_cls::Entry_cls* KindTable_cls::Find(const wxString& strClassWord) {
    for (const auto& p : Entries())
        if (p->mStrClassWord == strClassWord)
            return p.get();
    return nullptr;
}

const KindTable_cls::Entry_cls* KindTable_cls::Find(const wxString& strClassWord, Group_enum group) {
    const Entry_cls* p = Find(strClassWord);
    return p && p->mGroup == group ? p : nullptr;
}

std::vector<wxString> KindTable_cls::GetClassWords(Group_enum group) {
    std::vector<wxString> v;
    for (const auto& p : Entries())
        if (p->mGroup == group)
            v.push_back(p->mStrClassWord);
    return v;
}

void KindTable_cls::Clear() {
    Entries().clear();
}
