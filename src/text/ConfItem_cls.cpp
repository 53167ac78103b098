#include "ConfItem_cls.h"

#include "Parser_cls.h"
#include "TextHost_cls.h"

#include <wx/filename.h>
#include <wx/tokenzr.h>

#include <cstdlib>
#include <cwchar>

namespace {

const wxString STR_SKIP = "!!SKIP!!";
const wxString STR_ARRAY_SEP = "::##::";

wxString EscapeNewlines(wxString str) {
    str.Replace("\n", "\\n");
    return str;
}

std::vector<wxString> SplitOnBlanks(const wxString& str) {
    std::vector<wxString> vStr;
    wxStringTokenizer tok(str, " ", wxTOKEN_STRTOK);
    while (tok.HasMoreTokens())
        vStr.push_back(tok.GetNextToken());
    return vStr;
}

double ParseDouble(const wxString& str) {
    // Like the toolkit's ToDouble: the leading number counts, anything unparsable is 0. Reads the
    // wide buffer in place: worker threads read items of live lists, so no conversion cache may
    // be written.
    return wcstod(str.wc_str(), nullptr);
}

} // namespace

int ConfArray_cls::CountDimension(const wxString& strText) {
    int count = 1;
    for (size_t i = 1; i < strText.length(); ++i)
        if (strText[i] == ' ')
            ++count;
    return count;
}

// ---- reading the body ---------------------------------------------------------------------

bool ConfItemBase_cls::GetBodyBOOL() const {
    return GetBodyINT() != 0;
}

long long ConfItemBase_cls::GetBodyINT() const {
    return wcstoll(mStrBody.wc_str(), nullptr, 10);
}

double ConfItemBase_cls::GetBodyDOUBLE() const {
    return ParseDouble(mStrBody);
}

std::vector<bool> ConfItemBase_cls::GetBodyBOOLARRAY() const {
    std::vector<bool> v;
    for (const wxString& str : SplitOnBlanks(mStrBody)) {
        long value = 0;
        str.ToLong(&value);
        v.push_back(value != 0);
    }
    return v;
}

std::vector<long> ConfItemBase_cls::GetBodyINTARRAY() const {
    std::vector<long> v;
    for (const wxString& str : SplitOnBlanks(mStrBody)) {
        long value = 0;
        str.ToLong(&value);
        v.push_back(value);
    }
    return v;
}

std::vector<double> ConfItemBase_cls::GetBodyFLOATARRAY() const {
    std::vector<double> v;
    for (const wxString& str : SplitOnBlanks(mStrBody))
        v.push_back(ParseDouble(str));
    return v;
}

std::array<unsigned char, 4> ConfItemBase_cls::GetBodyColorRGBA() const {
    std::vector<double> v = GetBodyFLOATARRAY();
    if (v.size() < 3)
        return {0, 0, 0, 255};
    std::array<unsigned char, 4> rgba{0, 0, 0, 255};
    for (int i = 0; i < 3; ++i)
        rgba[i] = static_cast<unsigned char>(static_cast<int>(static_cast<float>(v[i]) * 255.0f));
    return rgba;
}

wxString ConfItemBase_cls::GetBodySTRShortString() const {
    return wxString::Format("%g", GetBodyDOUBLE());
}

// ---- setting the body from data -----------------------------------------------------------

void ConfItemBase_cls::SetBodyFromData(const wxString& str) {
    mStrBody = str;
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromData(long long value) {
    mStrBody = wxString::Format("%lld", value);
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromData(float value) {
    mStrBody = wxString::Format("%f", value);
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromData(double value) {
    mStrBody = wxString::Format("%g", value);
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromData(const std::vector<bool>& values) {
    wxString str;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            str += " ";
        str += wxString::Format("%d", values[i] ? 1 : 0);
    }
    mStrBody = str;
    mNumElements = static_cast<int32_t>(values.size());
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromData(const std::vector<float>& values) {
    wxString str;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            str += " ";
        str += wxString::Format("%f", values[i]);
    }
    mStrBody = str;
    mNumElements = static_cast<int32_t>(values.size());
    ++mProcCounter;
}

void ConfItemBase_cls::SetBodyFromDataBOOL(bool value) {
    mStrBody = wxString::Format("%d", value ? 1 : 0);
    ++mProcCounter;
}

// ---- writing ------------------------------------------------------------------------------

void ConfItemBase_cls::SerializeString(wxString& strOut) {
    if (mStrBody == STR_SKIP)
        return;
    if (!mbRawString) {
        strOut += mStrHead + EscapeNewlines(mStrBody) + "\n";
        return;
    }
    // A path: only "None" in this case of letters is left alone, the default "NONE" is not.
    // Saving converts the body itself, not only the written text.
    if (mStrBody != "None") {
        TextHost_cls* pHost = TextHost_cls::Get();
        int mode = pHost ? pHost->GetRelativePathMode() : 1;
        wxFileName fn(mStrBody);
        if (mode == 0) {
            fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_TILDE | wxPATH_NORM_ABSOLUTE);
        } else {
            fn.MakeRelativeTo(wxFileName::GetCwd());
        }
        mStrBody = fn.GetFullPath();
    }
    strOut += mStrHead + mStrBody + "\n";
}

void ConfItemBase_cls::SerializeStringArray(wxString& strOut) {
    if (!mpAStrLink)
        return;
    strOut += mStrHead;
    for (size_t i = 0; i < mpAStrLink->GetCount(); ++i) {
        if (i > 0)
            strOut += STR_ARRAY_SEP;
        strOut += EscapeNewlines((*mpAStrLink)[i]);
    }
    strOut += "\n";
}

void ConfItemBase_cls::Serialize(wxString& strOut) {
    switch (mKind) {
    case CONF_STR:
        SerializeString(strOut);
        break;
    case CONF_STRINGARRAY:
        SerializeStringArray(strOut);
        break;
    default:
        strOut += mStrHead + mStrBody + "\n";
        break;
    }
}

void ConfItemBase_cls::SerializeSingleItem(wxString& strOut) {
    strOut += "ConfItemList::Begin::";
    if (mpStrParentTag)
        strOut += *mpStrParentTag;
    strOut += "\n";
    Serialize(strOut);
    strOut += "ConfItemList::End";
}

void ConfItemBase_cls::PushCommandPair(const wxString& strNewBody) {
    wxString strUndo, strDo;
    SerializeSingleItem(strUndo);
    mStrBody = strNewBody;
    ++mProcCounter;
    SerializeSingleItem(strDo);
    TextHost_cls::PushAndRedo(strUndo, strDo);
}

// ---- ConfItem_cls -------------------------------------------------------------------------

void ConfItem_cls::SetItem(const wxString& strHead, const wxString& strBody) {
    mStrHead = strHead;
    bool bArray = mKind == CONF_INTARRAY || mKind == CONF_FLOATARRAY || mKind == CONF_BOOLARRAY ||
                  mKind == CONF_STRINGARRAY;
    if (strBody.empty())
        return;
    mStrBody = strBody;
    if (!bArray)
        return;
    mNumElements = ConfArray_cls::CountDimension(strBody);
    if (mKind == CONF_INTARRAY)
        ReadStrLine(mStrHead + strBody);
}

bool ConfItem_cls::ReadStrLine(wxString strLine) {
    strLine.Trim(false);
    if (!strLine.StartsWith(mStrHead))
        return false;
    wxString strRest = strLine.substr(mStrHead.length());
    if (mKind != CONF_STRINGARRAY) {
        if (!(mKind == CONF_STR && mbRawString))
            strRest.Replace("\\n", "\n");
        mStrBody = strRest;
        ++mProcCounter;
        return true;
    }
    // String arrays keep the literal backslash-n: reading does not undo the escaping of writing.
    if (!mpAStrLink)
        return false;
    mpAStrLink->Clear();
    while (strRest.Contains(STR_ARRAY_SEP))
        mpAStrLink->Add(Parser_cls::PopStrItemFromStrLine(strRest, STR_ARRAY_SEP));
    if (!strRest.empty())
        mpAStrLink->Add(strRest);
    return true;
}

void ConfItem_cls::ReplaceSeparator() {
    mStrBody.Replace("\\", "/");
    mStrBody.Replace(" ", "\\ ");
}

ConfItem_cls* ConfItem_cls::CreateByKind(int32_t kind) {
    switch (kind) {
    case CONF_STR:
        return new ConfItemSTR_cls();
    case CONF_INT:
        return new ConfItemINT_cls();
    case CONF_INTARRAY:
        return new ConfItemINTARRAY_cls();
    case CONF_UINT:
        return new ConfItemUINT_cls();
    case CONF_FLOAT:
        return new ConfItemFLOAT_cls();
    case CONF_FLOATARRAY:
        return new ConfItemFLOATARRAY_cls();
    case CONF_BOOL:
        return new ConfItemBOOL_cls();
    case CONF_BOOLARRAY:
        return new ConfItemBOOLARRAY_cls();
    case CONF_STRINGARRAY:
        return new ConfItemSTRINGARRAY_cls();
    default:
        return new ConfItem_cls(CONF_UNKNOWN);
    }
}

// ---- kinds --------------------------------------------------------------------------------

bool ConfItemSTR_cls::DoesFileExist() const {
    wxFileName fn(mStrBody);
    fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_TILDE | wxPATH_NORM_ABSOLUTE);
    return fn.FileExists();
}

bool ConfItemSTR_cls::DoesDirExist() const {
    wxFileName fn = wxFileName::DirName(mStrBody);
    fn.Normalize(wxPATH_NORM_DOTS | wxPATH_NORM_TILDE | wxPATH_NORM_ABSOLUTE);
    return fn.DirExists();
}

ConfItemINT_cls::ConfItemINT_cls(const wxString& strHead, long long value) : ConfItem_cls(CONF_INT) {
    SetItem(strHead, wxString::Format("%lld", value));
}

ConfItemUINT_cls::ConfItemUINT_cls(const wxString& strHead, unsigned int value) : ConfItem_cls(CONF_UINT) {
    SetItem(strHead, wxString::Format("%u", value));
}

ConfItemFLOAT_cls::ConfItemFLOAT_cls(const wxString& strHead, float value) : ConfItem_cls(CONF_FLOAT) {
    SetItem(strHead, wxString::Format("%f", value));
}

ConfItemBOOL_cls::ConfItemBOOL_cls(const wxString& strHead, bool value) : ConfItem_cls(CONF_BOOL) {
    SetItem(strHead, wxString::Format("%d", value ? 1 : 0));
}
