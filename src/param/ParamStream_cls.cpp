#include "ParamStream_cls.h"

#include "Parser_cls.h"

#include <string>

bool ParamStream_cls::GetLine(std::wistream& stream, wxString& strLine) {
    mPos = stream.tellg();
    std::wstring line;
    if (!std::getline(stream, line)) {
        mPos = -1;
        return false;
    }
    strLine = wxString(line);
    return true;
}

bool ParamStream_cls::PutBack(std::wistream& stream) {
    if (mPos == std::wistream::pos_type(-1))
        return false;
    stream.clear();
    stream.seekg(mPos);
    mPos = -1;
    return !stream.fail();
}

wxString ParamStream_cls::PopHead(wxString& strLine) {
    return Parser_cls::PopStrItemFromStrLine(strLine, "::");
}

wxString ParamStream_cls::Join(const wxString& strHead, const wxString& strRest) {
    return strRest.empty() ? strHead : strHead + "::" + strRest;
}
