#include "FSBase_cls.h"

#include "LuaBase_cls.h"

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/log.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <string>

namespace {

FSBase_cls::MessageFunc& GetMessageFunc() {
    static FSBase_cls::MessageFunc func;
    return func;
}

// A counting sequence that never fails (a step of 0 names one file forever) must still end.
constexpr int kMaxCountedSteps = 10000000;

// A field width above this would only serve to allocate memory.
constexpr long kMaxFieldWidth = 4096;

bool IsFlagChar(wxUniChar c) {
    return c == '-' || c == '+' || c == ' ' || c == '#' || c == '0';
}
bool IsLengthChar(wxUniChar c) {
    return c == 'h' || c == 'l' || c == 'L' || c == 'q' || c == 'j' || c == 'z' || c == 'Z' || c == 't';
}
bool IsDigitChar(wxUniChar c) {
    return c >= '0' && c <= '9';
}

} // namespace

int FSBase_cls::CountString(wxString text, wxString pattern) const {
    if (pattern.empty())
        return 0;
    int count = 0;
    size_t pos = text.find(pattern);
    while (pos != wxString::npos) {
        ++count;
        pos = text.find(pattern, pos + 1);
    }
    return count;
}

void FSBase_cls::SetMessageFunc(MessageFunc func) {
    GetMessageFunc() = std::move(func);
}

wxString FSBase_cls::FormatName(const wxString& format, const wxString* pMarker,
                                const std::vector<int>& values) {
    wxString out;
    size_t nextValue = 0;
    bool bMarkerUsed = false;
    const size_t len = format.length();
    size_t i = 0;
    while (i < len) {
        wxUniChar c = format[i];
        if (c != '%') {
            out += c;
            ++i;
            continue;
        }
        // Parse one conversion: flags, width, precision, length, conversion character.
        size_t j = i + 1;
        std::string flags;
        while (j < len && IsFlagChar(format[j]))
            flags += static_cast<char>(format[j++].GetValue());
        std::string width;
        while (j < len && IsDigitChar(format[j]))
            width += static_cast<char>(format[j++].GetValue());
        std::string precision;
        bool bPrecision = false;
        if (j < len && format[j] == '.') {
            bPrecision = true;
            ++j;
            while (j < len && IsDigitChar(format[j]))
                precision += static_cast<char>(format[j++].GetValue());
        }
        // "h" and "hh" narrow the int as printf does; the longer lengths would read past an int and are
        // taken as int.
        std::string length;
        while (j < len && IsLengthChar(format[j])) {
            if (format[j] == 'h' && length.size() < 2)
                length += 'h';
            ++j;
        }
        if (j >= len)
            break; // printf drops an unfinished conversion at the end
        const wxUniChar conv = format[j];
        const wxString strConv = format.Mid(i, j + 1 - i);
        i = j + 1;
        if (conv == '%' && strConv.length() == 2) {
            out += '%';
            continue;
        }
        const bool bIntConv = conv == 'd' || conv == 'i' || conv == 'u' || conv == 'o' || conv == 'x' ||
                              conv == 'X' || conv == 'c';
        const bool bTooWide =
            (!width.empty() && std::strtol(width.c_str(), nullptr, 10) > kMaxFieldWidth) ||
            (!precision.empty() && std::strtol(precision.c_str(), nullptr, 10) > kMaxFieldWidth);
        std::string cspec = "%" + flags + width + (bPrecision ? "." + precision : std::string());
        if (bIntConv && !bTooWide && nextValue < values.size()) {
            cspec += length + static_cast<char>(conv.GetValue());
            char buf[kMaxFieldWidth + 64];
            std::snprintf(buf, sizeof buf, cspec.c_str(), values[nextValue++]);
            out += wxString::FromUTF8(buf);
        } else if (conv == 's' && !bTooWide && pMarker && !bMarkerUsed) {
            bMarkerUsed = true;
            cspec += 's';
            const wxScopedCharBuffer utf8 = pMarker->utf8_str();
            char buf[kMaxFieldWidth + 64];
            std::snprintf(buf, sizeof buf, cspec.c_str(), utf8.data());
            out += wxString::FromUTF8(buf);
        } else {
            out += strConv;
        }
    }
    return out;
}

wxString FSBase_cls::GetSideMarker(int side) {
    if (side == 1)
        return "L";
    if (side == 2)
        return "R";
    return wxEmptyString;
}

wxString FSBase_cls::GetMarkedFileName(const wxString& format, const wxString& marker) {
    wxFileName fn(format);
    wxString str = fn.GetPath() + "/" + fn.GetName() + marker;
    if (fn.HasExt())
        str += "." + fn.GetExt();
    return str;
}

bool FSBase_cls::CallIndexScript(const wxString& script, int index, int& value) {
    // A fresh state per call: the rule may be used from a reader thread on its own copy.
    LuaBase_cls lua;
    if (!lua.OpenLuaBase("function script(index)\n" + script + "\nend\n", 0, wxArrayString(), nullptr,
                         "FileSequence"))
        return false;
    const double arg = index;
    double result = 0.0;
    if (!lua.CallScript(&arg, 1, &result, 1, "FileSequence"))
        return false;
    if (std::isnan(result))
        value = 0;
    else if (result >= static_cast<double>(INT_MAX))
        value = INT_MAX;
    else if (result <= static_cast<double>(INT_MIN))
        value = INT_MIN;
    else
        value = static_cast<int>(result);
    return true;
}

int FSBase_cls::FindWidthField(const wxString& text, int& digits) {
    for (int d = 1; d <= 9; ++d) {
        const wxString field = wxString::Format("%s0%dd", "%", d);
        const size_t pos = text.find(field);
        if (pos != wxString::npos) {
            digits = d;
            return static_cast<int>(pos);
        }
    }
    return -1;
}

bool FSBase_cls::SplitBaseAndTail(const wxString& path, wxString& base, wxString& tail) {
    wxFileName fn(path);
    wxString strTail;
    while (fn.HasExt()) {
        strTail = "." + fn.GetExt() + strTail;
        fn.SetFullName(fn.GetName());
    }
    // directory + "/" + name, also for a bare name: "p0001.dat" becomes "/p0001". Kept deliberately,
    // since names from the file dialog always carry their directory.
    const wxString strBase = fn.GetPath() + "/" + fn.GetName();
    if (strBase.length() >= 1001)
        return false;
    base = strBase;
    tail = strTail;
    return true;
}

int FSBase_cls::TrailingDigitCount(const wxString& text) {
    int n = 0;
    for (size_t i = text.length(); i > 0 && IsDigitChar(text[i - 1]); --i)
        ++n;
    return n;
}

wxString FSBase_cls::GetGZTwin(const wxString& path) {
    return wxFileName(path).GetExt() == "gz" ? path.Left(path.length() - 3) : path + ".gz";
}

bool FSBase_cls::ExistsPlainOrGZ(const wxString& path) {
    return wxFileName::FileExists(path) || wxFileName::FileExists(GetGZTwin(path));
}

bool FSBase_cls::ProbeFile(const wxString& path) const {
    FILE* fp = std::fopen(path.fn_str(), "rb");
    const bool opened = fp != nullptr;
    if (fp)
        std::fclose(fp);
    if (mFuncProbeHook)
        mFuncProbeHook(path, opened);
    return opened;
}

int FSBase_cls::CountByGallop(const std::function<wxString(int)>& nameOf) const {
    int found = 0;
    int base = 0;
    int span = 1000;
    for (;;) {
        const int step = span / 10;
        const int trial = base + step;
        const wxString name = nameOf(trial);
        bool ok = ProbeFile(name);
        if (!ok) {
            ok = ProbeFile(GetGZTwin(name));
        }
        if (ok) {
            found += step;
            base = trial;
            span = step * 10; // the same step again
            if (found >= kMaxCountedSteps) {
                wxLogMessage("File sequence counting stopped at %d steps: %s", found, name);
                break;
            }
        } else {
            if (step == 1)
                break;
            span = step; // the next step is ten times smaller
        }
    }
    return found;
}

void FSBase_cls::ShowOpenFailed(const wxString& text) {
    const wxString caption = wxGetTranslation("File Open Failed");
    if (GetMessageFunc())
        GetMessageFunc()(text, caption);
    else
        wxLogMessage("%s: %s", caption, text);
}
