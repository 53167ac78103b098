#include "ParticleFormat_cls.h"

#include "Parser_cls.h"
#include "TextHost_cls.h"

namespace {

const wxString kUpdateTag = "PROPERTY_FORMAT";
const wxString kArraySep = "::##::";

wxString JoinNames(const wxArrayString& aStr) {
    wxString str;
    for (size_t i = 0; i < aStr.GetCount(); ++i) {
        if (i > 0)
            str += kArraySep;
        str += aStr[i];
    }
    return str;
}

wxArrayString SplitNames(wxString str) {
    wxArrayString aStr;
    while (str.Contains(kArraySep))
        aStr.Add(Parser_cls::PopStrItemFromStrLine(str, kArraySep));
    if (!str.empty())
        aStr.Add(str);
    return aStr;
}

} // namespace

ParticleFormat_cls::ParticleFormat_cls() {
    SetTag("ParticleFormat");
    mAStrHeader.Add("ParticleNumber");
    mAStrHeader.Add("Time");
    mAStrBodyBinary.Add("XYZ(float)");
    mAStrBodyBinary.Add("Type(int)");
    mAStrBodyBinary.Add("Size(float)");
    mAStrBodyAscii.Add("XYZ");
    mAStrBodyAscii.Add("Type");
    mAStrBodyAscii.Add("Size");
    mCParticleFormatHeader.SetLink(&mAStrHeader);
    mCParticleFormatBodyBinary.SetLink(&mAStrBodyBinary);
    mCParticleFormatBodyAscii.SetLink(&mAStrBodyAscii);

    Add(&mCDataType, "DataType=", "1", kUpdateTag);
    Add(&mCArrayDirection, "ArrayDirection=", "0", kUpdateTag);
    Add(&mCPreSortByID, "PreSortByID=", "0", kUpdateTag);
    Add(&mCRemoveDupli, "RemoveDupli=", "0", kUpdateTag);
    Add(&mCParticleFormatHeader, "ParticleFormatHeader=", JoinNames(mAStrHeader), kUpdateTag);
    Add(&mCParticleFormatBodyBinary, "ParticleFormatBodyBinary=", JoinNames(mAStrBodyBinary), kUpdateTag);
    Add(&mCParticleFormatBodyAscii, "ParticleFormatBodyAscii=", JoinNames(mAStrBodyAscii), kUpdateTag);
    UpdateRowsFromStrings();
}

void ParticleFormat_cls::FillRows(std::vector<ConfItemUINT_cls>& rows, const std::vector<int>& indices) {
    rows.clear();
    for (int index : indices)
        rows.emplace_back("Row=", static_cast<unsigned int>(index));
}

void ParticleFormat_cls::UpdateRowsFromStrings() {
    FillRows(mVCHeader, GetVFormatHeader());
    FillRows(mVCBodyBinary, GetVFormatBody(1));
    FillRows(mVCBodyAscii, GetVFormatBody(0));
}

void ParticleFormat_cls::UpdateHeader() {
    mAStrHeader.Clear();
    for (const ConfItemUINT_cls& row : mVCHeader) {
        wxString str = GetStrHeaderFromIndex(static_cast<int>(row.GetBodyINT()));
        if (!str.empty())
            mAStrHeader.Add(str);
    }
    mCParticleFormatHeader.mStrBody = JoinNames(mAStrHeader);
}

void ParticleFormat_cls::UpdateBody(int type) {
    wxArrayString& aStr = type == 1 ? mAStrBodyBinary : mAStrBodyAscii;
    const std::vector<ConfItemUINT_cls>& rows = type == 1 ? mVCBodyBinary : mVCBodyAscii;
    aStr.Clear();
    for (const ConfItemUINT_cls& row : rows) {
        wxString str = GetStrBodyFromIndex(static_cast<int>(row.GetBodyINT()), type);
        if (!str.empty())
            aStr.Add(str);
    }
    (type == 1 ? mCParticleFormatBodyBinary : mCParticleFormatBodyAscii).mStrBody = JoinNames(aStr);
}

void ParticleFormat_cls::PushArrayCommand(ConfItemSTRINGARRAY_cls& item, wxArrayString& aStrLive,
                                          const wxArrayString& aStrNew) {
    wxString strUndo;
    wxString strDo;
    item.SerializeSingleItem(strUndo);
    wxArrayString aStrOld = aStrLive;
    aStrLive = aStrNew;
    item.SerializeSingleItem(strDo);
    // The do text is what changes the list, once it runs through the command reader.
    aStrLive = aStrOld;
    TextHost_cls::PushAndRedo(strUndo, strDo);
}

void ParticleFormat_cls::AddHeaderCommand(int pos, const wxString& strName) {
    if (GetTypeIndexHeader(strName) < 0)
        return;
    wxArrayString aStr = mAStrHeader;
    if (pos < 0 || pos > static_cast<int>(aStr.GetCount()))
        aStr.Add(strName);
    else
        aStr.Insert(strName, static_cast<size_t>(pos));
    PushArrayCommand(mCParticleFormatHeader, mAStrHeader, aStr);
}

void ParticleFormat_cls::DeleteHeaderCommand(int pos, const wxString& strName) {
    if (pos < 0 || pos >= static_cast<int>(mAStrHeader.GetCount()) || mAStrHeader[pos] != strName)
        return;
    wxArrayString aStr = mAStrHeader;
    aStr.RemoveAt(static_cast<size_t>(pos));
    PushArrayCommand(mCParticleFormatHeader, mAStrHeader, aStr);
}

void ParticleFormat_cls::UpdateHeaderCommand(const wxString& strBody) {
    PushArrayCommand(mCParticleFormatHeader, mAStrHeader, SplitNames(strBody));
}

void ParticleFormat_cls::AddBodyCommand(int pos, const wxString& strName) {
    const int type = GetDataType();
    if (GetTypeIndexBody(strName, type) < 0)
        return;
    wxArrayString& aStrLive = type == 1 ? mAStrBodyBinary : mAStrBodyAscii;
    wxArrayString aStr = aStrLive;
    if (pos < 0 || pos > static_cast<int>(aStr.GetCount()))
        aStr.Add(strName);
    else
        aStr.Insert(strName, static_cast<size_t>(pos));
    PushArrayCommand(type == 1 ? mCParticleFormatBodyBinary : mCParticleFormatBodyAscii, aStrLive, aStr);
}

void ParticleFormat_cls::DeleteBodyCommand(int pos, const wxString& strName) {
    const int type = GetDataType();
    wxArrayString& aStrLive = type == 1 ? mAStrBodyBinary : mAStrBodyAscii;
    if (pos < 0 || pos >= static_cast<int>(aStrLive.GetCount()) || aStrLive[pos] != strName)
        return;
    wxArrayString aStr = aStrLive;
    aStr.RemoveAt(static_cast<size_t>(pos));
    PushArrayCommand(type == 1 ? mCParticleFormatBodyBinary : mCParticleFormatBodyAscii, aStrLive, aStr);
}

void ParticleFormat_cls::UpdateBodyCommand(const wxString& strBody) {
    const int type = GetDataType();
    wxArrayString& aStrLive = type == 1 ? mAStrBodyBinary : mAStrBodyAscii;
    PushArrayCommand(type == 1 ? mCParticleFormatBodyBinary : mCParticleFormatBodyAscii, aStrLive,
                     SplitNames(strBody));
}
