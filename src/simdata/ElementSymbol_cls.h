// The chemical elements by symbol, so that a text file may name a particle's type by its element
// ("C", "He") and still colour by atomic number. Any thread: the table is constant.
#pragma once

#include <wx/string.h>

class ElementSymbol_cls {
public:
    // Number of elements in the table (hydrogen to oganesson).
    static constexpr int kCount = 118;

    // The atomic number of the symbol in [p, end): 1 for "H", 6 for "C", 118 for "Og"; 0 for a
    // word that names no element. The case of the letters does not matter ("CL", "cl", "Cl"),
    // since programs write symbols in all three forms.
    static int GetAtomicNumber(const char* p, const char* end);
    static int GetAtomicNumber(const wxString& strSymbol);
    // The symbol of an atomic number in its usual case; empty outside 1 .. kCount.
    static wxString GetStrSymbol(int number);
};
