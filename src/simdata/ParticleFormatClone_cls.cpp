#include "ParticleFormatClone_cls.h"

#include "ParticleFormat_cls.h"

namespace {

// Deep copies: wxString buffers must not be shared with the main thread.
void DeepCopy(wxArrayString& aStrDst, const wxArrayString& aStrSrc) {
    aStrDst.Clear();
    for (const wxString& s : aStrSrc)
        aStrDst.Add(wxString(s.wc_str()));
}

} // namespace

ParticleFormatClone_cls::ParticleFormatClone_cls() {
    mbOwnItems = true;
}

ParticleFormatClone_cls::~ParticleFormatClone_cls() {
    DeleteAllItems();
}

void ParticleFormatClone_cls::CloneFromFormat(const ParticleFormat_cls& format, bool byID) {
    SetTag(format.GetTag());
    CloneConfListFrom(format);
    DeepCopy(mAStrHeader, format.mAStrHeader);
    DeepCopy(mAStrBodyBinary, format.mAStrBodyBinary);
    DeepCopy(mAStrBodyAscii, format.mAStrBodyAscii);
    mbByID = byID;
}

void ParticleFormatClone_cls::CloneFromClone(const ParticleFormatClone_cls& src) {
    SetTag(src.GetTag());
    CloneConfListFrom(src);
    DeepCopy(mAStrHeader, src.mAStrHeader);
    DeepCopy(mAStrBodyBinary, src.mAStrBodyBinary);
    DeepCopy(mAStrBodyAscii, src.mAStrBodyAscii);
    mbByID = src.mbByID;
}

int ParticleFormatClone_cls::GetItemInt(const wxString& strHead) const {
    const ConfItem_cls* pItem = GetPCItem(strHead);
    return pItem ? static_cast<int>(pItem->GetBodyINT()) : 0;
}

void ParticleFormatClone_cls::GetInfoBinary(bool& velocity, bool& type, bool& size, bool& id, bool& idLong,
                                            bool& value0, bool& value1, bool& value2, bool& byID) const {
    velocity = type = size = id = idLong = value0 = value1 = value2 = false;
    for (int index : GetVFormatBody(1)) {
        switch (index) {
        case PB_VXVYVZ:
            velocity = true;
            break;
        case PB_TYPE:
            type = true;
            break;
        case PB_SIZE:
            size = true;
            break;
        case PB_ID:
            id = true;
            break;
        case PB_ID_LONG:
            idLong = true;
            break;
        case PB_VALUE0:
            value0 = true;
            break;
        case PB_VALUE1:
            value1 = true;
            break;
        case PB_VALUE2:
            value2 = true;
            break;
        default:
            break;
        }
    }
    byID = mbByID;
}

void ParticleFormatClone_cls::GetInfoAscii(bool& velocity, bool& type, bool& size, bool& id, bool& idLong,
                                           bool& value0, bool& value1, bool& value2, bool& byID) const {
    velocity = type = size = id = idLong = value0 = value1 = value2 = false;
    for (int index : GetVFormatBody(0)) {
        switch (index) {
        case PA_VXVYVZ:
        case PA_VX:
        case PA_VY:
        case PA_VZ:
            velocity = true;
            break;
        case PA_TYPE:
            type = true;
            break;
        case PA_SIZE:
            size = true;
            break;
        case PA_ID:
            id = true;
            break;
        case PA_ID_LONG:
            idLong = true;
            break;
        case PA_VALUE0:
            value0 = true;
            break;
        case PA_VALUE1:
            value1 = true;
            break;
        case PA_VALUE2:
            value2 = true;
            break;
        default:
            break;
        }
    }
    byID = mbByID;
}
