// What the console does with a line of Lua, without its panel: runs it in a state that lives as
// long as the console, so globals survive from one line to the next, and collects what print
// and the error messages write. Main thread only.
#pragma once

#include "LuaBase_cls.h"

#include <wx/string.h>

#include <vector>

class ConsoleCtrl_cls : public virtual LuaBase_cls {
public:
    ConsoleCtrl_cls() = default;
    ~ConsoleCtrl_cls() override;

    // The two constructors the console puts in "Data" in front of every line.
    static wxString GetStrLuaConstructors();
    // Runs the command as the body of a function "script". Its output and any error message
    // are appended to the console output, and the command to the history. False on an error;
    // whatever the script did before the error stays done (and undoable).
    bool ProcessOneLiner(const wxString& strCommand);

    wxString mStrOutput;
    std::vector<wxString> mVStrHistory;
};
