#include "ElementSymbol_cls.h"

namespace {

// Index + 1 is the atomic number.
const char* const kSymbol[ElementSymbol_cls::kCount] = {
    "H",  "He", "Li", "Be", "B",  "C",  "N",  "O",  "F",  "Ne", "Na", "Mg", "Al", "Si", "P",  "S",  "Cl",
    "Ar", "K",  "Ca", "Sc", "Ti", "V",  "Cr", "Mn", "Fe", "Co", "Ni", "Cu", "Zn", "Ga", "Ge", "As", "Se",
    "Br", "Kr", "Rb", "Sr", "Y",  "Zr", "Nb", "Mo", "Tc", "Ru", "Rh", "Pd", "Ag", "Cd", "In", "Sn", "Sb",
    "Te", "I",  "Xe", "Cs", "Ba", "La", "Ce", "Pr", "Nd", "Pm", "Sm", "Eu", "Gd", "Tb", "Dy", "Ho", "Er",
    "Tm", "Yb", "Lu", "Hf", "Ta", "W",  "Re", "Os", "Ir", "Pt", "Au", "Hg", "Tl", "Pb", "Bi", "Po", "At",
    "Rn", "Fr", "Ra", "Ac", "Th", "Pa", "U",  "Np", "Pu", "Am", "Cm", "Bk", "Cf", "Es", "Fm", "Md", "No",
    "Lr", "Rf", "Db", "Sg", "Bh", "Hs", "Mt", "Ds", "Rg", "Cn", "Nh", "Fl", "Mc", "Lv", "Ts", "Og",
};

char Upper(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}
char Lower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

int ElementSymbol_cls::GetAtomicNumber(const char* p, const char* end) {
    // Symbols have one to three letters; anything longer, or with other characters, is no
    // element.
    const long length = static_cast<long>(end - p);
    if (length < 1 || length > 3)
        return 0;
    char word[4] = {Upper(p[0]), 0, 0, 0};
    for (long k = 1; k < length; ++k)
        word[k] = Lower(p[k]);
    for (int i = 0; i < kCount; ++i) {
        const char* s = kSymbol[i];
        if (s[0] == word[0] && s[1] == word[1] && (s[1] == 0 || s[2] == word[2]))
            return i + 1;
    }
    return 0;
}

int ElementSymbol_cls::GetAtomicNumber(const wxString& strSymbol) {
    const wxScopedCharBuffer buf = strSymbol.utf8_str();
    return GetAtomicNumber(buf.data(), buf.data() + buf.length());
}

wxString ElementSymbol_cls::GetStrSymbol(int number) {
    return (number >= 1 && number <= kCount) ? wxString(kSymbol[number - 1]) : wxString();
}
