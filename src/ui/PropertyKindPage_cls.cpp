#include "PropertyKindPage_cls.h"

#include "Attribute_cls.h"
#include "KindTable_cls.h"
#include "PropertyDataKind_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyParticle_cls.h"
#include "SceneObj_cls.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/log.h>
#include <wx/textctrl.h>

#include <memory>

PropertyKindPage_cls::PropertyKindPage_cls(wxWindow* pParent, const wxString& strClassWord)
    : wxScrolledWindow(pParent, wxID_ANY), mStrClassWord(strClassWord) {}

PropertyKindPage_cls* PropertyKindPage_cls::MakePage(const wxString& strClassWord, wxWindow* pParent) {
    const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClassWord, KindTable_cls::GROUP_OBJECT);
    const Maker_fn* pMaker = pKind ? pKind->GetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE) : nullptr;
    return (pMaker && *pMaker) ? (*pMaker)(pParent) : nullptr;
}

void PropertyKindPage_cls::RegisterPages() {
    PropertyDataKind_cls::RegisterPages();
    if (!KindTable_cls::Find("Particle_cls", KindTable_cls::GROUP_OBJECT))
        return;
    KindTable_cls::Register("Particle_cls", KindTable_cls::GROUP_OBJECT)
        .SetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE, [](wxWindow* pParent) -> PropertyKindPage_cls* {
            return new PropertyParticle_cls(pParent);
        });
}

bool PropertyKindPage_cls::PushItemBody(SceneObj_cls* pObj, ConfItem_cls* pItem, const wxString& strBody) {
    if (!pObj || !pItem)
        return false;
    wxString strNew = strBody;
    if (pItem->mKind == CONF_INT || pItem->mKind == CONF_UINT || pItem->mKind == CONF_FLOAT) {
        double value = 0.0;
        if (!PropertyObject_cls::ParseNumber(strBody, value))
            return false;
        strNew = pItem->mKind == CONF_FLOAT ? wxString::FromCDouble(value)
                                            : wxString::Format("%lld", static_cast<long long>(value));
    } else if (pItem->mKind == CONF_BOOL) {
        strNew = (strBody == "1" || strBody.IsSameAs("true", false)) ? "1" : "0";
    }
    if (strNew != pItem->GetBodySTR()) {
        // The commands address the lists by the object's name: tags follow a rename first.
        pObj->SyncConfListTag();
        pItem->PushCommandPair(strNew);
    }
    return true;
}

void PropertyKindPage_cls::ShowItem(const ConfItem_cls* pItem, wxWindow* pCtrl) {
    pCtrl->Enable(pItem != nullptr);
    if (!pItem)
        return;
    if (auto* pChoice = dynamic_cast<wxChoice*>(pCtrl)) {
        const long long v = pItem->GetBodyINT();
        pChoice->SetSelection(v >= 0 && v < static_cast<long long>(pChoice->GetCount()) ? static_cast<int>(v)
                                                                                        : wxNOT_FOUND);
    } else if (auto* pCheck = dynamic_cast<wxCheckBox*>(pCtrl)) {
        pCheck->SetValue(pItem->GetBodyBOOL());
    } else if (auto* pText = dynamic_cast<wxTextCtrl*>(pCtrl)) {
        if (pText->GetValue() != pItem->GetBodySTR())
            pText->ChangeValue(pItem->GetBodySTR());
    }
}

std::vector<Attribute_cls*> PropertyKindPage_cls::GetVPCStackEntries(SceneObj_cls* pObj, int stack) {
    std::vector<Attribute_cls*> v;
    if (!pObj)
        return v;
    if (stack == 0) {
        int index = 0;
        for (Attribute_cls* pAttr : pObj->mLPCModifier)
            if (index++ >= pObj->GetIndexModifierInit() && !pAttr->IsAttributeSameAs("ColorCurve_cls"))
                v.push_back(pAttr);
    } else {
        v.assign(pObj->mLPCDataProc.begin(), pObj->mLPCDataProc.end());
    }
    return v;
}

wxArrayString PropertyKindPage_cls::GetAStrStackKinds(SceneObj_cls* pObj, int stack) {
    wxArrayString aStrKind;
    if (!pObj)
        return aStrKind;
    wxLogNull noLog;
    const auto group = stack == 0 ? KindTable_cls::GROUP_MODIFIER : KindTable_cls::GROUP_DATA_PROC;
    for (const wxString& strClass : KindTable_cls::GetClassWords(group)) {
        const KindTable_cls::Entry_cls* pKind = KindTable_cls::Find(strClass, group);
        if (!pKind || !pKind->mFuncMakeAttribute)
            continue;
        std::unique_ptr<Attribute_cls> pProbe(pKind->mFuncMakeAttribute(pObj, "Probe"));
        if (pProbe)
            aStrKind.Add(strClass);
    }
    return aStrKind;
}
