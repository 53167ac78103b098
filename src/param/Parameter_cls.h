// One animated scalar channel: a sorted list of key frames over normalised time (NT) and the
// rules that turn them into a value at any time. A channel that is not time dependent is a
// constant, the value of its first key. Main thread only, except GetValue (see there).
#pragma once

#include "ConfItem_cls.h"
#include "GetPC_cls.h"
#include "KeyFrame_cls.h"
#include "Parser_cls.h"

#include <wx/string.h>

#include <array>
#include <cstdint>
#include <istream>
#include <vector>

class ParamGroup_cls;

class Parameter_cls : public Parser_cls, public GetPC_cls {
public:
    // Makes the channel with one default key (x 0, value 0, ease 1, linear). pGroup is the
    // owning group, not owned; it may be null for a channel that stands alone.
    Parameter_cls(ParamGroup_cls* pGroup, const wxString& strName, int index);

    // The tolerance of every comparison of key positions.
    static constexpr double msKeyTolerance = 1e-6;

    // ---- evaluation ----
    // The value at t. Does not allocate. Safe from a worker thread on a channel nobody changes
    // (a clone): between PrecalcBegin and PrecalcEnd it reads the cached slopes only.
    double GetValue(double t) const;
    // GetValue at the current time of the clock.
    double GetCurrentValue() const;
    // Caches each key's slope; until PrecalcEnd, key edits are not seen by the slopes.
    void PrecalcBegin();
    void PrecalcEnd() { mbPrecalculated = false; }
    bool IsPrecalculated() const { return mbPrecalculated; }
    double GetKeyVelocityLinear(int i, int j) const;
    double GetKeyVelocityAuto(int i) const;
    double GetKeyEaseFactor(int i) const;
    double InterpolateLinear(int i, double t) const;
    double InterpolateHermiteAuto(int i, double t) const;
    // Before the first key and after the last, along the slope of the end key.
    double GetValueExtrapolate0(double t) const;
    double GetValueExtrapolate1(double t) const;

    // ---- key look-up ----
    int GetActiveKeyIndex() const;
    int GetCurrentKeyIndex() const;
    // The first key within the tolerance of x, -1 if none.
    int GetKeyIndex(double x) const;
    // The last key of the run from 0 whose positions are all reached by t; -1 before the first.
    int GetControllingKey(double t) const;
    // The next (direction 1) or previous (-1) key from t; t -1.0 means the current time.
    int GetAdjuscentKeyIndex(int direction, double t) const;
    // 0.0 for a negative index, 1.0 at or past the end, else the key's x.
    double GetKeyXNormalizeEX(int i) const;
    bool IsSelectedKeyExist() const;
    bool IsKeyExist(double x) const { return GetKeyIndex(x) >= 0; }
    // True when every member of the group has a key at the x of key i.
    bool IsKeyLinkedAll(int i) const;
    int GetSelectedKeyNum() const;
    int GetKeyNum() const { return static_cast<int>(mVCKey.size()); }

    // ---- selection (direct, not undoable) ----
    void DeactivateKeys();
    void DeselectKey();
    // tolerance -1.0 means the clock's default resolution. Returns 1 when a key was hit.
    int SelectKey(double x, bool bSelect, bool bAdd, double tolerance);
    int SelectKeyByIndex(int i, bool bSelect, bool bAdd, double tolerance);
    void SelectKeyAll(bool bSelect);

    // ---- commands: each pushes an undo pair and runs it ----
    // tag addresses the channel; it may end at the owner, the group or the channel.
    void SetNewKeyCommand(double value, double x, wxString strTag, int type, double ease, bool bNoGroup);
    void InsertKeyCommand(double x, wxString strTag, int type, double ease, bool bNoGroup);
    void DeleteKeyCommand(double x, wxString strTag, bool bNoGroup);
    void DeleteSelectedTLKeyCommand(wxString strTag);
    void SetKeyValueCommand(int i, double value, wxString strTag);
    void SetValueCommand(double value, wxString strTag, int type, double ease);
    void SetValueAtCommand(double value, double x, wxString strTag, int type, double ease);
    void SetKeyEaseFactorCommand(int i, double ease, wxString strTag);
    void SetKeyTypeCommand(int i, int type, wxString strTag);
    void SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease);
    void MoveSelectedTLKeyCommand(double dx, double dy, wxString strTag);
    void MoveTLKeyCommand(int i, double dx, double dy, wxString strTag);
    void RescaleCommand(double factor, wxString strTag);
    bool ChangeKeyType(wxString strTag, int i, int type);
    // The three flags are the modifier keys of the timeline click.
    bool ChangeKeyTypeByModKey(wxString strTag, int i, bool bA, bool bB, bool bC);

    // ---- text ----
    // Name=, TimeDepend=, Locked=, Extrapolate=, keyNum= and one line per key.
    void Serialize(wxString& strOut) const;
    // Entered with the line after Name= popped into strHead and strRest.
    bool ReadStrLine(std::wistream& stream, wxString strHead, wxString strRest);
    // strHead is the next item of the tag path after the channel's name.
    bool ReadStrOneLiner(wxString strHead, wxString strRest);

    // ---- other ----
    void SortKey();
    // Mirrors the keys on the unit interval: x becomes 1 - x, the order is reversed.
    void Flip();
    ConfItem_cls* GetPCItem(wxString strHead);
    // Appends "::" and the channel's name unless the tag already ends with it.
    void CheckTag(wxString& strTag) const;
    wxString GetStrName() const { return mCName.GetBodySTR(); }
    bool IsTimeDepend() const;
    bool IsExtrapolate() const;
    bool IsLocked() const;
    int32_t GetProcCounter() const { return mProcCounter; }
    // A bool item's body read as strtoll would, without allocating: for the evaluation path.
    static bool IsItemTrue(const ConfItemBase_cls& item);

    // Timeline row colours, RGBA: the toolkit colour is made in the panel layer.
    std::array<unsigned char, 4> mColorRow{204, 196, 196, 255};
    std::array<unsigned char, 4> mColorRowSelected{248, 240, 240, 255};
    ConfItemSTR_cls mCName;
    ConfItemBOOL_cls mCTimeDepend;
    ConfItemBOOL_cls mCLocked;
    ConfItemBOOL_cls mCExtrapolate;
    int32_t mIndex = 0;
    int32_t mProcCounter = 0; // one more for each line read
    bool mbPrecalculated = false;
    // Set by PrecalcBegin when the keys were in order: evaluation may then search instead of
    // scanning. Like the slopes, it does not see key edits before PrecalcEnd.
    bool mbPrecalcSorted = false;
    ParamGroup_cls* mpCParamGroup = nullptr; // not owned: the group owns its channels
    std::vector<KeyFrame_cls> mVCKey;        // sorted by x; files never leave it empty

private:
    bool IsLinkedGroup() const;
    // The rules of GetKeyVelocityAuto without the cache.
    double ComputeKeyVelocity(int i) const;
    // Shared body of MoveSelectedTLKeyCommand and MoveTLKeyCommand for key i; returns the
    // index of the key after any deletion in front of it.
    int MoveOneKey(int i, double dx, double dy, const wxString& strTag);
    // MoveTLKeyCommand on a checked tag; returns the key's index after any deletion.
    int MoveTLKeyInternal(int i, double dx, double dy, const wxString& strTag);
    // The closing SortKey pair of a move.
    void PushSortPair(const wxString& strTag);
    static bool LessX(const KeyFrame_cls& a, const KeyFrame_cls& b);
};
