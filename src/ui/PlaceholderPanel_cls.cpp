#include "PlaceholderPanel_cls.h"

#include "PanelBar_cls.h"
#include "SplittableWindow_cls.h"

#include <wx/intl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

PlaceholderPanel_cls::PlaceholderPanel_cls(SplittableWindow_cls* pOwner, int type) : wxPanelEX(pOwner, type) {
    ConstructPanelBar();
    auto* pSizer = new wxBoxSizer(wxVERTICAL);
    pSizer->Add(mpCPanelBar, 0, wxEXPAND);
    wxString strDisplay = (type >= 0 && type < _PANEL_TYPE_COUNT) ? msVstrPanelNameLocale[type] : wxString();
    auto* pTitle = new wxStaticText(this, wxID_ANY, strDisplay);
    wxFont font = pTitle->GetFont();
    font.SetPointSize(font.GetPointSize() + 4);
    font.MakeBold();
    pTitle->SetFont(font);
    auto* pText = new wxStaticText(this, wxID_ANY, GetStrNotAvailable(type));
    pSizer->AddStretchSpacer(1);
    pSizer->Add(pTitle, 0, wxALIGN_CENTER_HORIZONTAL | wxALL, 4);
    pSizer->Add(pText, 0, wxALIGN_CENTER_HORIZONTAL | wxALL, 4);
    pSizer->AddStretchSpacer(1);
    SetSizer(pSizer);
}

wxString PlaceholderPanel_cls::GetStrNotAvailable(int type) {
    wxString strDisplay = (type >= 0 && type < _PANEL_TYPE_COUNT) ? msVstrPanelNameLocale[type] : wxString();
    return wxString::Format(_("The %s panel is not available yet."), strDisplay);
}

bool PlaceholderPanel_cls::ReadStrLine(std::wistream& stream, const wxString& strKey,
                                       const wxString& strRest) {
    return ReadBlock(stream, strKey, strRest, mStrBlock);
}

bool PlaceholderPanel_cls::ReadBlock(std::wistream& stream, const wxString& strKey, const wxString& strRest,
                                     wxString& strBlock) {
    if (strKey != "ConfItemList" || !strRest.StartsWith("Begin::"))
        return false;
    strBlock = strKey + "::" + strRest + "\n";
    std::wstring line;
    while (std::getline(stream, line)) {
        strBlock += wxString(line) + "\n";
        if (wxString(line) == "ConfItemList::End")
            break;
    }
    return true;
}

void PlaceholderPanel_cls::UpdatePanelSelf(const wxString& strName, bool) {
    if (!IsUpdateTarget(strName))
        return;
    ++mUpdateCount;
    Refresh();
}
