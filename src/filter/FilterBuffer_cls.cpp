#include "FilterBuffer_cls.h"

#include "FilterCtrl_cls.h"
#include "Main_cls.h"
#include "Parser_cls.h"

#include <sstream>

namespace {

wxString GetStrText(FilterBase_cls* p) {
    wxString str;
    p->Serialize(str);
    return str;
}

} // namespace

void FilterBufferBase_cls::CopyText(FilterBase_cls* pSrc, FilterBase_cls* pCopy) {
    std::wistringstream stream(GetStrText(pSrc).ToStdWstring());
    std::wstring line;
    if (!std::getline(stream, line))
        return;
    wxString strRest(line);
    const wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
    pCopy->ReadStrLine(stream, strHead, strRest);
}

bool FilterBufferBase_cls::PushText(FilterBase_cls* pSrc, FilterBase_cls* pCopy) {
    const wxString strBefore = GetStrText(pSrc);
    const wxString strAfter = GetStrText(pCopy);
    if (strBefore == strAfter || !GCClassProvider)
        return false;
    // Both texts end in a newline, which the undo manager adds again.
    GCClassProvider->PushCommandPairAndRedo("FilterCtrl::" + strBefore.BeforeLast('\n'),
                                            "FilterCtrl::" + strAfter.BeforeLast('\n'));
    return true;
}
