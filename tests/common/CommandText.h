// Runs texts of the command language in tests, line by line, as a project load or the undo
// manager hands them to the dispatcher (block lines read on from the same stream).
#pragma once

#include "Main_cls.h"
#include "Parser_cls.h"

#include <sstream>
#include <string>

inline void RunCommandText(Main_cls& main, const wxString& strText) {
    std::wistringstream stream(strText.ToStdWstring());
    std::wstring line;
    while (std::getline(stream, line)) {
        wxString strRest(line);
        const wxString strHead = Parser_cls::PopStrItemFromStrLine(strRest, "::");
        main.ReadStrCommand(stream, strHead, strRest);
    }
}
