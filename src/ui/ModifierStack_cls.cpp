#include "ModifierStack_cls.h"

#include "Attribute_cls.h"
#include "PropertyKindPage_cls.h"
#include "PropertyModifier_cls.h"
#include "SceneObj_cls.h"

#include <wx/button.h>
#include <wx/checklst.h>
#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>

ModifierStack_cls::ModifierStack_cls(wxWindow* pParent, std::function<SceneObj_cls*()> funcObject,
                                     bool bDataProc)
    : wxPanel(pParent, wxID_ANY), mNumStack(bDataProc ? 2 : 1), mFuncObject(std::move(funcObject)) {
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    for (int stack = 0; stack < mNumStack; ++stack) {
        auto* pBox = new wxStaticBoxSizer(
            wxVERTICAL, this, stack == STACK_MODIFIER ? _("Property Modifier") : _("Property DataProc"));
        wxWindow* pBoxWindow = pBox->GetStaticBox();
        wxCheckListBox*& pList = mpCList[stack];
        pList = new wxCheckListBox(pBoxWindow, wxID_ANY, wxDefaultPosition, wxSize(-1, 70));
        pList->Bind(wxEVT_CHECKLISTBOX, [this, stack](wxCommandEvent& event) {
            const int row = event.GetInt();
            SetValidity(stack, row, mpCList[stack]->IsChecked(static_cast<unsigned>(row)));
        });
        pList->Bind(wxEVT_LISTBOX,
                    [this, stack](wxCommandEvent& event) { ShowEntry(stack, event.GetSelection()); });
        pBox->Add(pList, 0, wxEXPAND);

        auto* pRow = new wxBoxSizer(wxHORIZONTAL);
        mpCKind[stack] = new wxChoice(pBoxWindow, wxID_ANY);
        pRow->Add(mpCKind[stack], 1, wxEXPAND);
        const auto button = [&](const wxString& strLabel, std::function<void()> func) {
            auto* pButton =
                new wxButton(pBoxWindow, wxID_ANY, strLabel, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
            pButton->Bind(wxEVT_BUTTON, [func](wxCommandEvent&) { func(); });
            pRow->Add(pButton, 0, wxLEFT, 2);
        };
        button(_("Add"), [this, stack] { AddEntry(stack, mpCKind[stack]->GetStringSelection()); });
        button(_("Remove"), [this, stack] { DeleteEntry(stack, mpCList[stack]->GetSelection()); });
        button(_("Up"), [this, stack] { MoveEntry(stack, mpCList[stack]->GetSelection(), -1); });
        button(_("Down"), [this, stack] { MoveEntry(stack, mpCList[stack]->GetSelection(), 1); });
        pBox->Add(pRow, 0, wxEXPAND | wxTOP, 2);
        mpCPageSizer[stack] = new wxBoxSizer(wxVERTICAL);
        pBox->Add(mpCPageSizer[stack], 0, wxEXPAND | wxTOP, 2);
        pSizer->Add(pBox, 0, wxEXPAND | wxALL, 4);
    }
    SetSizer(pSizer);
    RefreshFromObject();
}

std::vector<Attribute_cls*> ModifierStack_cls::GetVPCEntries(int stack) const {
    if (stack < 0 || stack >= mNumStack)
        return {};
    return PropertyKindPage_cls::GetVPCStackEntries(GetPCObject(), stack);
}

wxString ModifierStack_cls::GetStrSignature() const {
    wxString str;
    for (int stack = 0; stack < mNumStack; ++stack)
        for (Attribute_cls* p : GetVPCEntries(stack))
            str += p->GetStrName() + "\n" + p->SerializeAll();
    return str;
}

void ModifierStack_cls::RefreshFromObject() {
    mStrSignature = GetStrSignature();
    SceneObj_cls* p = GetPCObject();
    for (int stack = 0; stack < mNumStack; ++stack) {
        wxCheckListBox* pList = mpCList[stack];
        const int selected = pList->GetSelection();
        const std::vector<Attribute_cls*> v = GetVPCEntries(stack);
        wxArrayString aStr;
        for (Attribute_cls* pAttr : v)
            aStr.Add(pAttr->GetStrName() + "  [" + pAttr->GetStrAttributeName() + "]");
        if (pList->GetStrings() != aStr)
            pList->Set(aStr);
        for (size_t i = 0; i < v.size(); ++i) {
            const ConfItem_cls* pValid = v[i]->GetPCItem("Validity=");
            pList->Check(static_cast<unsigned>(i), !pValid || pValid->GetBodyBOOL());
        }
        // The entry's page stays while the entry does, and its row stays selected.
        int shown = wxNOT_FOUND;
        for (size_t i = 0; mpCPage[stack] && i < v.size(); ++i)
            if (v[i]->GetStrName() == mpCPage[stack]->mStrEntryName)
                shown = static_cast<int>(i);
        if (mpCPage[stack] && shown == wxNOT_FOUND)
            ShowEntry(stack, wxNOT_FOUND);
        else if (mpCPage[stack])
            mpCPage[stack]->RefreshFromObject();
        const int row = shown != wxNOT_FOUND ? shown : selected;
        pList->SetSelection(row != wxNOT_FOUND && row < static_cast<int>(v.size()) ? row : wxNOT_FOUND);

        // The kinds that fit the object: the kind's maker says so. Asked once: the answer
        // depends on the kind of object only, and a widget serves one kind.
        if (p && mpCKind[stack]->IsEmpty()) {
            mpCKind[stack]->Set(PropertyKindPage_cls::GetAStrStackKinds(p, stack));
            mpCKind[stack]->SetSelection(mpCKind[stack]->IsEmpty() ? wxNOT_FOUND : 0);
        }
    }
    Enable(p != nullptr);
}

void ModifierStack_cls::UpdateIdle() {
    if (GetStrSignature() != mStrSignature)
        RefreshFromObject();
    for (PropertyModifier_cls* pPage : mpCPage)
        if (pPage)
            pPage->UpdateIdle();
}

bool ModifierStack_cls::EditRow(int stack, int row,
                                const std::function<void(SceneObj_cls&, const wxString&)>& edit) {
    SceneObj_cls* p = GetPCObject();
    const std::vector<Attribute_cls*> v = GetVPCEntries(stack);
    if (!p || row < 0 || row >= static_cast<int>(v.size()))
        return false;
    // The commands address the lists by the object's name: tags follow a rename first.
    p->SyncConfListTag();
    edit(*p, v[static_cast<size_t>(row)]->GetStrName());
    RefreshFromObject();
    return true;
}

bool ModifierStack_cls::AddEntry(int stack, const wxString& strClass) {
    SceneObj_cls* p = GetPCObject();
    if (!p || strClass.empty() || stack < 0 || stack >= mNumStack)
        return false;
    const size_t before = GetVPCEntries(stack).size();
    p->SyncConfListTag();
    stack == STACK_MODIFIER ? p->AddModifierCommand(strClass, wxString())
                            : p->AddDataProcCommand(strClass, wxString());
    const size_t after = GetVPCEntries(stack).size();
    RefreshFromObject();
    if (after <= before)
        return false;
    mpCList[stack]->SetSelection(static_cast<int>(after) - 1);
    ShowEntry(stack, static_cast<int>(after) - 1);
    return true;
}

bool ModifierStack_cls::DeleteEntry(int stack, int row) {
    return EditRow(stack, row, [stack](SceneObj_cls& o, const wxString& strName) {
        stack == STACK_MODIFIER ? o.DeleteModifierCommand(strName) : o.DeleteDataProcCommand(strName);
    });
}

bool ModifierStack_cls::MoveEntry(int stack, int row, int delta) {
    const std::vector<Attribute_cls*> v = GetVPCEntries(stack);
    const int to = row + delta;
    if (row < 0 || to < 0 || to >= static_cast<int>(v.size()))
        return false;
    // The place of the neighbour in the whole stack: built-in entries and colour curves may stand
    // between the shown rows.
    Attribute_cls* pNeighbour = v[static_cast<size_t>(to)];
    const bool bOK = EditRow(stack, row, [stack, pNeighbour](SceneObj_cls& o, const wxString& strName) {
        stack == STACK_MODIFIER ? o.MoveModifierCommand(strName, o.GetIndexModifier(pNeighbour))
                                : o.MoveDataProcCommand(strName, o.GetIndexDProc(pNeighbour));
    });
    if (bOK)
        mpCList[stack]->SetSelection(to);
    return bOK;
}

bool ModifierStack_cls::SetValidity(int stack, int row, bool bValid) {
    return EditRow(stack, row, [stack, bValid](SceneObj_cls& o, const wxString& strName) {
        stack == STACK_MODIFIER ? o.SetModifierValidityCommand(strName, bValid)
                                : o.SetDataProcValidityCommand(strName, bValid);
    });
}

bool ModifierStack_cls::ShowEntry(int stack, int row) {
    if (stack < 0 || stack >= mNumStack)
        return false;
    const std::vector<Attribute_cls*> v = GetVPCEntries(stack);
    Attribute_cls* pEntry =
        (row >= 0 && row < static_cast<int>(v.size())) ? v[static_cast<size_t>(row)] : nullptr;
    PropertyModifier_cls*& pPage = mpCPage[stack];
    if (pPage && pEntry && pPage->mStrEntryName == pEntry->GetStrName())
        return true;
    if (pPage) {
        mpCPageSizer[stack]->Detach(pPage);
        pPage->Destroy();
        pPage = nullptr;
    }
    if (pEntry) {
        pPage = new PropertyModifier_cls(mpCList[stack]->GetParent(), mFuncObject, pEntry);
        mpCPageSizer[stack]->Add(pPage, 0, wxEXPAND);
        mpCList[stack]->SetSelection(row);
    }
    // The page changes the height of every window up to the scrolled page that holds the widget.
    for (wxWindow* w = this; w && !w->IsTopLevel(); w = w->GetParent()) {
        w->InvalidateBestSize();
        w->Layout();
        if (auto* pScrolled = dynamic_cast<wxScrolledWindow*>(w)) {
            pScrolled->FitInside();
            break;
        }
    }
    return pEntry != nullptr;
}
