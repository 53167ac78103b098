#include "GLKindResources_cls.h"

#include "KindTable_cls.h"

void GLKindResource_cls::Register(const wxString& strClassWord, Maker_fn maker) {
    KindTable_cls::Register(strClassWord, KindTable_cls::GROUP_OBJECT)
        .SetSlot(KindTable_cls::SLOT_GL_RESOURCES, std::move(maker));
}

GLKindResource_cls* GLKindResources_cls::GetPC(const wxString& strClassWord) {
    auto it = mMapResource.find(strClassWord);
    if (it != mMapResource.end())
        return it->second.get();
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClassWord, KindTable_cls::GROUP_OBJECT);
    const GLKindResource_cls::Maker_fn* pMaker =
        pKind ? pKind->GetSlot<GLKindResource_cls::Maker_fn>(KindTable_cls::SLOT_GL_RESOURCES) : nullptr;
    if (!pMaker || !*pMaker)
        return nullptr;
    std::unique_ptr<GLKindResource_cls>& slot = mMapResource[strClassWord];
    slot = (*pMaker)();
    return slot.get();
}
