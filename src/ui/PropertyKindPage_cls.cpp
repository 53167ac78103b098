#include "PropertyKindPage_cls.h"

#include "KindTable_cls.h"
#include "PropertyCamera_cls.h"
#include "PropertyLight_cls.h"
#include "PropertyMesh_cls.h"
#include "PropertyModifier_cls.h"
#include "PropertyParticle_cls.h"
#include "PropertyPrimitive_cls.h"
#include "PropertyText_cls.h"
#include "PropertyWorld_cls.h"

#include <utility>

PropertyKindPage_cls::PropertyKindPage_cls(wxWindow* pParent, const wxString& strClassWord)
    : wxScrolledWindow(pParent, wxID_ANY), mStrClassWord(strClassWord) {}

PropertyKindPage_cls* PropertyKindPage_cls::MakePage(const wxString& strClassWord, wxWindow* pParent) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClassWord, KindTable_cls::GROUP_OBJECT);
    const Maker_fn* pMaker = pKind ? pKind->GetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE) : nullptr;
    return (pMaker && *pMaker) ? (*pMaker)(pParent) : nullptr;
}

namespace {
template <class Page_T> PropertyKindPage_cls* MakeOf(wxWindow* pParent) {
    return new Page_T(pParent);
}
} // namespace

void PropertyKindPage_cls::RegisterPages() {
    const std::pair<const char*, PropertyKindPage_cls* (*)(wxWindow*)> vPages[] = {
        {"Particle_cls", &MakeOf<PropertyParticle_cls>},   {"Camera_cls", &MakeOf<PropertyCamera_cls>},
        {"LightSource_cls", &MakeOf<PropertyLight_cls>},   {"World_cls", &MakeOf<PropertyWorld_cls>},
        {"Primitive_cls", &MakeOf<PropertyPrimitive_cls>}, {"MeshObj_cls", &MakeOf<PropertyMesh_cls>},
        {"TextObj_cls", &MakeOf<PropertyText_cls>},
    };
    for (const auto& [pClass, funcMake] : vPages)
        if (KindTable_cls::Find(pClass, KindTable_cls::GROUP_OBJECT))
            KindTable_cls::Register(pClass, KindTable_cls::GROUP_OBJECT)
                .SetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE, Maker_fn(funcMake));
    PropertyModifier_cls::RegisterTables();
}
