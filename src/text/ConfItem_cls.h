// The typed configuration item: a key with a body that is always text. Behaviour is selected
// by the kind number, not by virtual dispatch; the kind classes only add constructors and data.
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <array>
#include <cstdint>
#include <vector>

enum ConfItemKind_enum : int32_t {
    CONF_UNKNOWN = 0,
    CONF_STR = 1,
    CONF_INT = 2,
    CONF_INTARRAY = 3,
    CONF_UINT = 4,
    CONF_FLOAT = 5,
    CONF_FLOATARRAY = 6,
    CONF_BOOL = 7,
    CONF_BOOLARRAY = 8,
    CONF_STRINGARRAY = 9,
};

class ConfArray_cls {
public:
    // One more than the number of blanks from index 1 on. A leading blank is not counted and a
    // trailing blank counts one element too many; both are kept as they are on purpose.
    static int CountDimension(const wxString& strText);
};

class ConfItemBase_cls {
public:
    virtual ~ConfItemBase_cls() = default;

    wxString GetBodySTR() const { return mStrBody; }
    bool GetBodyBOOL() const;
    long long GetBodyINT() const;
    double GetBodyDOUBLE() const;
    std::vector<bool> GetBodyBOOLARRAY() const;
    std::vector<long> GetBodyINTARRAY() const;
    std::vector<double> GetBodyFLOATARRAY() const;
    // The first three values of a float array times 255, truncated, alpha 255; fewer than three
    // values give opaque black. The GUI layers turn this into a toolkit colour.
    std::array<unsigned char, 4> GetBodyColorRGBA() const;
    // The body read as a number and written back with "%g".
    wxString GetBodySTRShortString() const;

    // Each replaces the body and adds one to the counter.
    void SetBodyFromData(const wxString& str);
    void SetBodyFromData(long long value);
    void SetBodyFromData(float value);
    void SetBodyFromData(double value);
    void SetBodyFromData(const std::vector<bool>& values);
    void SetBodyFromData(const std::vector<float>& values);
    void SetBodyFromDataBOOL(bool value);

    // Appends the item's line(s) as the project file holds them.
    void Serialize(wxString& strOut);
    // Appends a complete one-item block; no newline after the end line.
    void SerializeSingleItem(wxString& strOut);
    // Changes the body through the undo road: pushes the old and new one-item blocks and runs
    // the new one, so the item is read once more and its update tag is honoured.
    void PushCommandPair(const wxString& strNewBody);

    wxString* mpStrParentTag = nullptr; // not owned: the tag of the list the item belongs to
    wxString mStrHead;
    wxString mStrBody = "NONE";
    wxString mStrUpdateTag;
    int32_t mKind = CONF_UNKNOWN;
    int32_t mProcCounter = 0;
    bool mbRawString = false;            // kind 1: the body is a file path
    int32_t mNumElements = 0;            // array kinds: element count
    wxArrayString* mpAStrLink = nullptr; // kind 9: not owned, null until SetLink

protected:
    void SerializeString(wxString& strOut);
    void SerializeStringArray(wxString& strOut);
};

class ConfItem_cls : public ConfItemBase_cls {
public:
    explicit ConfItem_cls(int32_t kind) { mKind = kind; }

    // Stores the head; a non-empty body replaces the body. Array kinds also count elements.
    void SetItem(const wxString& strHead, const wxString& strBody);
    // True when the line was consumed: the head matches at index 0 (a prefix match).
    bool ReadStrLine(wxString strLine);
    // For a path body: backslashes become "/" and a backslash goes before each blank.
    void ReplaceSeparator();
    void SetParentListTag(wxString& strTag) { mpStrParentTag = &strTag; }

    // A new heap item of the given kind; unknown kinds give a plain ConfItem_cls(0).
    static ConfItem_cls* CreateByKind(int32_t kind);
};

class ConfItemSTR_cls : public ConfItem_cls {
public:
    ConfItemSTR_cls() : ConfItem_cls(CONF_STR) {}
    ConfItemSTR_cls(const wxString& strHead, const wxString& strDefault) : ConfItem_cls(CONF_STR) {
        SetItem(strHead, strDefault);
    }
    void SetRawString(bool bRaw) { mbRawString = bRaw; }
    // True when the body is empty or "NONE".
    bool IsEmpty() const { return mStrBody.empty() || mStrBody == "NONE"; }
    // A relative path is first normalised against the working directory.
    bool DoesFileExist() const;
    bool DoesDirExist() const;
};

class ConfItemINT_cls : public ConfItem_cls {
public:
    ConfItemINT_cls() : ConfItem_cls(CONF_INT) {}
    ConfItemINT_cls(const wxString& strHead, const wxString& strDefault) : ConfItem_cls(CONF_INT) {
        SetItem(strHead, strDefault);
    }
    ConfItemINT_cls(const wxString& strHead, long long value);
};

class ConfItemINTARRAY_cls : public ConfItem_cls {
public:
    ConfItemINTARRAY_cls() : ConfItem_cls(CONF_INTARRAY) {}
};

class ConfItemUINT_cls : public ConfItem_cls {
public:
    ConfItemUINT_cls() : ConfItem_cls(CONF_UINT) {}
    ConfItemUINT_cls(const wxString& strHead, const wxString& strDefault) : ConfItem_cls(CONF_UINT) {
        SetItem(strHead, strDefault);
    }
    ConfItemUINT_cls(const wxString& strHead, unsigned int value);
};

class ConfItemFLOAT_cls : public ConfItem_cls {
public:
    ConfItemFLOAT_cls() : ConfItem_cls(CONF_FLOAT) {}
    ConfItemFLOAT_cls(const wxString& strHead, const wxString& strDefault) : ConfItem_cls(CONF_FLOAT) {
        SetItem(strHead, strDefault);
    }
    ConfItemFLOAT_cls(const wxString& strHead, float value);
};

class ConfItemFLOATARRAY_cls : public ConfItem_cls {
public:
    ConfItemFLOATARRAY_cls() : ConfItem_cls(CONF_FLOATARRAY) {}
    ConfItemFLOATARRAY_cls(const wxString& strHead, const wxString& strDefault)
        : ConfItem_cls(CONF_FLOATARRAY) {
        SetItem(strHead, strDefault);
    }
};

class ConfItemBOOL_cls : public ConfItem_cls {
public:
    ConfItemBOOL_cls() : ConfItem_cls(CONF_BOOL) {}
    ConfItemBOOL_cls(const wxString& strHead, const wxString& strDefault) : ConfItem_cls(CONF_BOOL) {
        SetItem(strHead, strDefault);
    }
    ConfItemBOOL_cls(const wxString& strHead, bool value);
    // Without this a literal default text would choose the bool form.
    ConfItemBOOL_cls(const wxString& strHead, const char* strDefault)
        : ConfItemBOOL_cls(strHead, wxString(strDefault)) {}
};

class ConfItemBOOLARRAY_cls : public ConfItem_cls {
public:
    ConfItemBOOLARRAY_cls() : ConfItem_cls(CONF_BOOLARRAY) {}
    ConfItemBOOLARRAY_cls(const wxString& strHead, const wxString& strDefault)
        : ConfItem_cls(CONF_BOOLARRAY) {
        SetItem(strHead, strDefault);
    }
};

class ConfItemSTRINGARRAY_cls : public ConfItem_cls {
public:
    ConfItemSTRINGARRAY_cls() : ConfItem_cls(CONF_STRINGARRAY) {}
    ConfItemSTRINGARRAY_cls(const wxString& strHead, const wxString& strDefault)
        : ConfItem_cls(CONF_STRINGARRAY) {
        SetItem(strHead, strDefault);
    }
    // Not owned: the array lives in the owner of the item.
    void SetLink(wxArrayString* pAStr) { mpAStrLink = pAStr; }
};
