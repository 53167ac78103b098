#include "PropertyKindPage_cls.h"

#include "KindTable_cls.h"
#include "PropertyParticle_cls.h"
#include "PropertyVolume_cls.h"

PropertyKindPage_cls::PropertyKindPage_cls(wxWindow* pParent, const wxString& strClassWord)
    : wxScrolledWindow(pParent, wxID_ANY), mStrClassWord(strClassWord) {}

PropertyKindPage_cls* PropertyKindPage_cls::MakePage(const wxString& strClassWord, wxWindow* pParent) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClassWord, KindTable_cls::GROUP_OBJECT);
    const Maker_fn* pMaker = pKind ? pKind->GetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE) : nullptr;
    return (pMaker && *pMaker) ? (*pMaker)(pParent) : nullptr;
}

void PropertyKindPage_cls::RegisterPages() {
    if (KindTable_cls::Find("Particle_cls", KindTable_cls::GROUP_OBJECT))
        KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT)
            .SetSlot<Maker_fn>(
                KindTable_cls::SLOT_PROPERTY_PAGE,
                [](wxWindow* pParent) -> PropertyKindPage_cls* { return new PropertyParticle_cls(pParent); });
    if (KindTable_cls::Find("VolumeBox_cls", KindTable_cls::GROUP_OBJECT))
        KindTable_cls::Register("VolumeBox_cls", KindTable_cls::GROUP_OBJECT)
            .SetSlot<Maker_fn>(
                KindTable_cls::SLOT_PROPERTY_PAGE,
                [](wxWindow* pParent) -> PropertyKindPage_cls* { return new PropertyVolume_cls(pParent); });
}
