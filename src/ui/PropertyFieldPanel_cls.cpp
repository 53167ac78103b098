#include "PropertyFieldPanel_cls.h"

#include "Attribute_cls.h"
#include "ClassProvider_cls.h"
#include "FontProvider_cls.h"
#include "Main_cls.h"
#include "MultiInput_cls.h"
#include "ParamGroup_cls.h"
#include "SceneObj_cls.h"
#include "StringProvider_cls.h"
#include "TimeCtrl_cls.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

namespace {

wxTextCtrl* NewText(wxWindow* pParent, int width = -1) {
    // The default window name "text" stays: it keeps the shortcuts out of typing.
    return new wxTextCtrl(pParent, wxID_ANY, wxString(), wxDefaultPosition,
                          wxSize(width, FontProvider_cls::GetRowHeight()), wxTE_PROCESS_ENTER);
}

wxButton* NewButton(wxWindow* pParent, const wxString& strLabel) {
    return new wxButton(pParent, wxID_ANY, strLabel, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
}

bool IsNumberKind(int kind) {
    return kind == CONF_INT || kind == CONF_UINT || kind == CONF_FLOAT;
}

} // namespace

PropertyFieldPanel_cls::PropertyFieldPanel_cls(wxWindow* pParent, PropertyField_cls::Table_type vField,
                                               std::function<SceneObj_cls*()> funcObject)
    : wxPanel(pParent, wxID_ANY), mVField(std::move(vField)), mFuncObject(std::move(funcObject)) {
    Build();
}

PropertyFieldPanel_cls::PropertyFieldPanel_cls(wxWindow* pParent, PropertyField_cls::Table_type vField,
                                               ListFunc_type funcList)
    : wxPanel(pParent, wxID_ANY), mVField(std::move(vField)), mFuncList(std::move(funcList)) {
    Build();
}

void PropertyFieldPanel_cls::Build() {
    auto* pGrid = new wxFlexGridSizer(2, wxSize(6, 3));
    pGrid->AddGrowableCol(1);
    mVRow.resize(mVField.size());
    for (int i = 0; i < static_cast<int>(mVField.size()); ++i)
        BuildRow(pGrid, i);
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(pGrid, 0, wxEXPAND | wxALL, 4);
    SetSizer(pSizer);
    RefreshFromObject();
}

void PropertyFieldPanel_cls::BuildRow(wxFlexGridSizer* pGrid, int field) {
    const PropertyField_cls& f = mVField[static_cast<size_t>(field)];
    Row_cls& row = mVRow[static_cast<size_t>(field)];
    const wxString strLabel = StringProvider_cls::GetStrOf(f.mStrLabel);
    if (f.mWidget == PropertyField_cls::WIDGET_SECTION) {
        auto* pHead = new wxStaticText(this, wxID_ANY, strLabel);
        pHead->SetFont(pHead->GetFont().Bold());
        pGrid->Add(pHead, 0, wxTOP, 6);
        pGrid->AddSpacer(0);
        return;
    }
    if (f.mWidget == PropertyField_cls::WIDGET_CHECK) {
        auto* pCheck = new wxCheckBox(this, wxID_ANY, strLabel);
        pCheck->Bind(wxEVT_CHECKBOX, [this, field](wxCommandEvent& event) {
            SetItemFromText(field, event.IsChecked() ? "1" : "0");
        });
        pGrid->AddSpacer(0);
        pGrid->Add(pCheck, 0);
        row.mpCtrl = pCheck;
        return;
    }
    pGrid->Add(new wxStaticText(this, wxID_ANY, strLabel), 0, wxALIGN_CENTER_VERTICAL);
    switch (f.mWidget) {
    case PropertyField_cls::WIDGET_CHOICE: {
        auto* pChoice = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                     StringProvider_cls::GetAstrListOf(f.mStrList));
        pChoice->Bind(wxEVT_CHOICE, [this, field](wxCommandEvent& event) {
            SetItemFromText(field, wxString::Format("%d", event.GetSelection()));
        });
        pGrid->Add(pChoice, 1, wxEXPAND);
        row.mpCtrl = pChoice;
        return;
    }
    case PropertyField_cls::WIDGET_GROUP: {
        auto* pRowSizer = new wxBoxSizer(wxHORIZONTAL);
        ParamGroup_cls* pGroup = GetPCGroup(field);
        const size_t members = pGroup ? pGroup->mVCParam.size() : 0;
        for (size_t m = 0; m < members; ++m) {
            wxTextCtrl* pText = NewText(this, 52);
            pText->SetToolTip(pGroup->mVCParam[m].GetStrName());
            const int member = static_cast<int>(m);
            pText->Bind(wxEVT_TEXT_ENTER, [this, field, member, pText](wxCommandEvent&) {
                SetMemberFromText(field, member, pText->GetValue());
            });
            pRowSizer->Add(pText, 1, wxEXPAND | wxRIGHT, 2);
            row.mVPCMember.push_back(pText);
        }
        // The key button: a diamond, as keys are drawn on the timeline.
        row.mpCKey = NewButton(this, wxString::FromUTF8("\xE2\x97\x86"));
        row.mpCKey->SetToolTip(_("Set a key at the current time"));
        row.mpCKey->Bind(wxEVT_BUTTON, [this, field](wxCommandEvent&) { SetKeyAtCurrentTime(field); });
        row.mpCExpr = NewButton(this, _("Expr"));
        row.mpCExpr->Bind(wxEVT_BUTTON, [this, field](wxCommandEvent&) { EditExpression(field); });
        pRowSizer->Add(row.mpCKey, 0, wxLEFT, 2);
        pRowSizer->Add(row.mpCExpr, 0, wxLEFT, 2);
        pGrid->Add(pRowSizer, 1, wxEXPAND);
        return;
    }
    case PropertyField_cls::WIDGET_FILE: {
        auto* pRowSizer = new wxBoxSizer(wxHORIZONTAL);
        wxTextCtrl* pText = NewText(this);
        pText->Bind(wxEVT_TEXT_ENTER,
                    [this, field, pText](wxCommandEvent&) { SetItemFromText(field, pText->GetValue()); });
        wxButton* pPick = NewButton(this, "...");
        pPick->Bind(wxEVT_BUTTON, [this, field](wxCommandEvent&) {
            wxFileDialog dialog(this, _("Choose a file"), wxString(), wxString(), "*",
                                wxFD_OPEN | wxFD_FILE_MUST_EXIST);
            if (dialog.ShowModal() == wxID_OK)
                SetItemFromText(field, dialog.GetPath());
        });
        pRowSizer->Add(pText, 1, wxEXPAND);
        pRowSizer->Add(pPick, 0, wxLEFT, 2);
        pGrid->Add(pRowSizer, 1, wxEXPAND);
        row.mpCtrl = pText;
        return;
    }
    default: {
        wxTextCtrl* pText = NewText(this);
        pText->Bind(wxEVT_TEXT_ENTER,
                    [this, field, pText](wxCommandEvent&) { SetItemFromText(field, pText->GetValue()); });
        pGrid->Add(pText, 1, wxEXPAND);
        row.mpCtrl = pText;
        return;
    }
    }
}

// ---- look-up -----------------------------------------------------------------------------------

int PropertyFieldPanel_cls::FindField(const wxString& strAttr, const wxString& strKey) const {
    for (size_t i = 0; i < mVField.size(); ++i)
        if (mVField[i].mStrAttr == strAttr && mVField[i].mStrKey == strKey)
            return static_cast<int>(i);
    return -1;
}

ConfListContainer_cls* PropertyFieldPanel_cls::GetPCList(int field) const {
    if (field < 0 || field >= static_cast<int>(mVField.size()))
        return nullptr;
    const wxString& strAttr = mVField[static_cast<size_t>(field)].mStrAttr;
    if (mFuncList)
        return mFuncList(strAttr);
    SceneObj_cls* p = GetPCObject();
    if (!p)
        return nullptr;
    if (strAttr.empty())
        return p;
    if (ConfListContainer_cls* pBlock = mFuncBlock ? mFuncBlock(strAttr) : nullptr)
        return pBlock;
    return p->GetPCAttribute(strAttr, 0);
}

ConfItem_cls* PropertyFieldPanel_cls::GetPCItem(int field) const {
    ConfListContainer_cls* pList = GetPCList(field);
    return pList ? pList->GetPCItem(mVField[static_cast<size_t>(field)].mStrKey) : nullptr;
}

ParamGroup_cls* PropertyFieldPanel_cls::GetPCGroup(int field) const {
    SceneObj_cls* p = GetPCObject();
    if (!p || field < 0 || field >= static_cast<int>(mVField.size()))
        return nullptr;
    const PropertyField_cls& f = mVField[static_cast<size_t>(field)];
    if (f.mWidget != PropertyField_cls::WIDGET_GROUP)
        return nullptr;
    if (f.mStrAttr.empty())
        return p->GetPCParamGroup(wxString(), f.mStrKey);
    Attribute_cls* pAttr = p->GetPCAttribute(f.mStrAttr, 0);
    return pAttr ? pAttr->GetPCParamGroup(f.mStrKey) : nullptr;
}

wxString PropertyFieldPanel_cls::GetStrGroupTag(int field) const {
    SceneObj_cls* p = GetPCObject();
    if (!p || !GetPCGroup(field))
        return wxString();
    const PropertyField_cls& f = mVField[static_cast<size_t>(field)];
    return p->GetStrTag() + (f.mStrAttr.empty() ? wxString() : "::" + f.mStrAttr) + "::" + f.mStrKey;
}

double PropertyFieldPanel_cls::Clamp(int field, double value) const {
    const PropertyField_cls& f = mVField[static_cast<size_t>(field)];
    return std::min(std::max(value, f.mMin), f.mMax);
}

// ---- edits -------------------------------------------------------------------------------------

bool PropertyFieldPanel_cls::SetItemFromText(int field, const wxString& strText) {
    ConfItem_cls* pItem = GetPCItem(field);
    SceneObj_cls* p = GetPCObject();
    if (!pItem) {
        RefreshFromObject();
        return false;
    }
    const PropertyField_cls& f = mVField[static_cast<size_t>(field)];
    wxString strNew = strText;
    if (pItem->mKind == CONF_BOOL) {
        strNew = (strText == "1" || strText.IsSameAs("true", false)) ? "1" : "0";
    } else if (IsNumberKind(pItem->mKind)) {
        double value = 0.0;
        if (!MultiInput_cls::ParseNumber(strText, value)) {
            RefreshFromObject();
            return false;
        }
        if (f.mWidget == PropertyField_cls::WIDGET_CHOICE) {
            const double last =
                static_cast<double>(StringProvider_cls::GetAstrListOf(f.mStrList).GetCount()) - 1;
            if (value < 0 || value > last) {
                RefreshFromObject();
                return false;
            }
        }
        value = Clamp(field, value);
        strNew = pItem->mKind == CONF_FLOAT ? wxString::FromCDouble(value)
                                            : wxString::Format("%lld", static_cast<long long>(value));
    }
    if (strNew != pItem->GetBodySTR()) {
        // The commands address the lists by the object's name: tags follow a rename first.
        if (p)
            p->SyncConfListTag();
        pItem->PushCommandPair(strNew);
    }
    RefreshFromObject();
    return true;
}

bool PropertyFieldPanel_cls::SetMemberFromText(int field, int member, const wxString& strText) {
    ParamGroup_cls* pGroup = GetPCGroup(field);
    double value = 0.0;
    if (!pGroup || member < 0 || member >= static_cast<int>(pGroup->mVCParam.size()) ||
        !MultiInput_cls::ParseNumber(strText, value)) {
        RefreshFromObject();
        return false;
    }
    value = Clamp(field, value);
    const double t = TimeCtrl_cls::GetClockNT();
    Parameter_cls& param = pGroup->mVCParam[static_cast<size_t>(member)];
    if (param.GetValue(t) != value)
        param.SetValueAtCommand(value, t, GetStrGroupTag(field) + "::" + param.GetStrName(), -1, 1.0);
    RefreshFromObject();
    return true;
}

bool PropertyFieldPanel_cls::InsertKeyNow(ParamGroup_cls* pGroup, const wxString& strTag) {
    if (!pGroup)
        return false;
    int type = -1;
    double ease = 1.0;
    if (GpCTimeCtrl)
        GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    pGroup->InsertKeyCommand(TimeCtrl_cls::GetClockNT(), strTag, type, ease);
    return true;
}

bool PropertyFieldPanel_cls::SetKeyAtCurrentTime(int field) {
    const bool bDone = InsertKeyNow(GetPCGroup(field), GetStrGroupTag(field));
    RefreshFromObject();
    return bDone;
}

bool PropertyFieldPanel_cls::EditExpression(int field) {
    const wxString strTag = GetStrGroupTag(field);
    if (strTag.empty() || !GCClassProvider)
        return false;
    GCClassProvider->ProcAfterMath("SelectExpression", strTag);
    return true;
}

// ---- showing -----------------------------------------------------------------------------------

wxString PropertyFieldPanel_cls::GetStrSignature() const {
    SceneObj_cls* p = GetPCObject();
    if (!p && !mFuncList)
        return wxString();
    wxString str = p ? p->GetStrName() : wxString();
    const double t = TimeCtrl_cls::GetClockNT();
    for (int i = 0; i < static_cast<int>(mVField.size()); ++i) {
        if (ConfItem_cls* pItem = GetPCItem(i))
            str += "::" + pItem->GetBodySTR();
        if (ParamGroup_cls* pGroup = GetPCGroup(i)) {
            str += pGroup->mCUseExpr.GetBodyBOOL() ? "::E" : "::-";
            for (const Parameter_cls& param : pGroup->mVCParam)
                str += wxString::Format("::%g/%d", param.GetValue(t), param.GetKeyNum());
        }
    }
    return str;
}

bool PropertyFieldPanel_cls::IsTyping() const {
    const wxWindow* pFocus = wxWindow::FindFocus();
    return pFocus && pFocus->GetParent() == this && dynamic_cast<const wxTextCtrl*>(pFocus);
}

void PropertyFieldPanel_cls::UpdateIdle() {
    if (!IsTyping() && GetStrSignature() != mStrSignature)
        RefreshFromObject();
}

void PropertyFieldPanel_cls::RefreshFromObject() {
    ++mRefreshCount;
    mStrSignature = GetStrSignature();
    const double t = TimeCtrl_cls::GetClockNT();
    for (int i = 0; i < static_cast<int>(mVField.size()); ++i) {
        const PropertyField_cls& f = mVField[static_cast<size_t>(i)];
        Row_cls& row = mVRow[static_cast<size_t>(i)];
        if (f.mWidget == PropertyField_cls::WIDGET_GROUP) {
            ParamGroup_cls* pGroup = GetPCGroup(i);
            for (size_t m = 0; m < row.mVPCMember.size(); ++m) {
                const bool bHas = pGroup && m < pGroup->mVCParam.size();
                wxTextCtrl* pText = row.mVPCMember[m];
                pText->ChangeValue(bHas ? wxString::Format("%g", pGroup->mVCParam[m].GetValue(t))
                                        : wxString());
                pText->Enable(bHas);
                // A field whose value comes from keys or the expression is tinted, so an edit
                // that seems not to hold is explained.
                wxColour colour = wxNullColour;
                if (bHas && pGroup->mCUseExpr.GetBodyBOOL())
                    colour = wxColour(0xDD, 0xCC, 0xF4);
                else if (bHas && pGroup->mVCParam[m].IsKeyExist(t) && pGroup->mVCParam[m].GetKeyNum() > 1)
                    colour = wxColour(0xF4, 0xD0, 0x90);
                else if (bHas && pGroup->mVCParam[m].GetKeyNum() > 1)
                    colour = wxColour(0xF4, 0xE8, 0xB0);
                if (pText->GetBackgroundColour() != colour) {
                    pText->SetBackgroundColour(colour);
                    pText->Refresh();
                }
            }
            if (row.mpCKey) {
                row.mpCKey->Enable(pGroup != nullptr);
                row.mpCExpr->Enable(pGroup != nullptr);
                row.mpCExpr->SetLabel(pGroup && pGroup->mCUseExpr.GetBodyBOOL() ? _("Expr on") : _("Expr"));
            }
            continue;
        }
        if (!row.mpCtrl)
            continue;
        ConfItem_cls* pItem = GetPCItem(i);
        row.mpCtrl->Enable(pItem != nullptr);
        if (auto* pCheck = dynamic_cast<wxCheckBox*>(row.mpCtrl)) {
            pCheck->SetValue(pItem && pItem->GetBodyBOOL());
        } else if (auto* pChoice = dynamic_cast<wxChoice*>(row.mpCtrl)) {
            const long long index = pItem ? pItem->GetBodyINT() : -1;
            pChoice->SetSelection(index >= 0 && index < static_cast<long long>(pChoice->GetCount())
                                      ? static_cast<int>(index)
                                      : wxNOT_FOUND);
        } else if (auto* pText = dynamic_cast<wxTextCtrl*>(row.mpCtrl)) {
            pText->ChangeValue(pItem ? pItem->GetBodySTR() : wxString());
        }
    }
}
