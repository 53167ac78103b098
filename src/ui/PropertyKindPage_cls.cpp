#include "PropertyKindPage_cls.h"

#include "Attribute_cls.h"
#include "ConfItem_cls.h"
#include "ConfListContainer_cls.h"
#include "KindTable_cls.h"
#include "PropertyCamera_cls.h"
#include "PropertyDataKind_cls.h"
#include "PropertyLight_cls.h"
#include "PropertyMesh_cls.h"
#include "PropertyModifier_cls.h"
#include "PropertyObject_cls.h"
#include "PropertyParticle_cls.h"
#include "PropertyPrimitive_cls.h"
#include "PropertyText_cls.h"
#include "PropertyVolume_cls.h"
#include "PropertyWorld_cls.h"
#include "SceneObj_cls.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/log.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <memory>
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
        {"TextObj_cls", &MakeOf<PropertyText_cls>},        {"VolumeBox_cls", &MakeOf<PropertyVolume_cls>},
    };
    for (const auto& [pClass, funcMake] : vPages)
        if (KindTable_cls::Find(pClass, KindTable_cls::GROUP_OBJECT))
            KindTable_cls::Register(pClass, KindTable_cls::GROUP_OBJECT)
                .SetSlot<Maker_fn>(KindTable_cls::SLOT_PROPERTY_PAGE, Maker_fn(funcMake));
    PropertyModifier_cls::RegisterTables();
    PropertyDataKind_cls::RegisterPages();
}

wxWindow* PropertyKindPage_cls::FindItemCtrl(int target, const wxString& strKey) const {
    for (const ItemCtrl_cls& item : mVCItem)
        if (item.mTarget == target && item.mStrKey == strKey)
            return item.mpCtrl;
    return nullptr;
}

wxWindow* PropertyKindPage_cls::AddItemRow(wxWindow* pPage, wxFlexGridSizer* pGrid, int target,
                                           const wxString& strKey, const wxString& strLabel,
                                           const wxArrayString& aStrChoices, bool bCheck) {
    ItemCtrl_cls item;
    item.mTarget = target;
    item.mStrKey = strKey;
    if (bCheck) {
        auto* pCheck = new wxCheckBox(pPage, wxID_ANY, strLabel);
        pCheck->Bind(wxEVT_CHECKBOX, [this, target, strKey](wxCommandEvent& event) {
            SetItem(target, strKey, event.IsChecked() ? "1" : "0");
        });
        pGrid->AddSpacer(0);
        item.mpCtrl = pCheck;
    } else {
        pGrid->Add(new wxStaticText(pPage, wxID_ANY, strLabel), 0, wxALIGN_CENTER_VERTICAL);
        if (!aStrChoices.empty()) {
            auto* pChoice = new wxChoice(pPage, wxID_ANY, wxDefaultPosition, wxDefaultSize, aStrChoices);
            pChoice->Bind(wxEVT_CHOICE, [this, target, strKey](wxCommandEvent& event) {
                SetItem(target, strKey, wxString::Format("%d", event.GetSelection()));
            });
            item.mpCtrl = pChoice;
        } else {
            // The default window name "text" stays: it keeps the frame's shortcuts out of typing.
            auto* pText = new wxTextCtrl(pPage, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                         wxTE_PROCESS_ENTER);
            pText->Bind(wxEVT_TEXT_ENTER, [this, target, strKey, pText](wxCommandEvent&) {
                SetItem(target, strKey, pText->GetValue());
            });
            item.mpCtrl = pText;
        }
    }
    pGrid->Add(item.mpCtrl, bCheck ? 0 : 1, bCheck ? 0 : wxEXPAND);
    mVCItem.push_back(item);
    return item.mpCtrl;
}

void PropertyKindPage_cls::RefreshItems() {
    for (const ItemCtrl_cls& item : mVCItem) {
        ConfListContainer_cls* pList = GetPCList(item.mTarget);
        ShowItem(pList ? pList->GetPCItem(item.mStrKey) : nullptr, item.mpCtrl);
    }
}

bool PropertyKindPage_cls::SetItem(int target, const wxString& strKey, const wxString& strBody) {
    ConfListContainer_cls* pList = GetPCList(target);
    const bool bOK = PushItemBody(GetPCKindObject(), pList ? pList->GetPCItem(strKey) : nullptr, strBody);
    RefreshFromObject();
    return bOK;
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
