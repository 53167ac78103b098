#include "Parameter_cls.h"

#include "Misc_cls.h"
#include "ParamGroup_cls.h"
#include "ParamStream_cls.h"
#include "TextHost_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <wx/log.h>

#include <algorithm>

namespace {

constexpr double TOL = Parameter_cls::msKeyTolerance;

} // namespace

// The flags are read on the evaluation path, which must not allocate: this reads the body as
// strtoll would (blanks, a sign, digits) and says whether the number is not zero.
bool Parameter_cls::IsItemTrue(const ConfItemBase_cls& item) {
    const wxString& str = item.mStrBody;
    const size_t n = str.length();
    size_t i = 0;
    while (i < n && (str[i] == ' ' || str[i] == '\t' || str[i] == '\n' || str[i] == '\r'))
        ++i;
    if (i < n && (str[i] == '+' || str[i] == '-'))
        ++i;
    for (; i < n; ++i) {
        wxUniChar c = str[i];
        if (c < '0' || c > '9')
            break;
        if (c != '0')
            return true;
    }
    return false;
}

namespace {

wxString Num(double value) {
    return wxString::Format("%g", value);
}

bool ParseIndex(const wxString& str, long& index) {
    if (!str.ToLong(&index)) {
        wxLogWarning("Parameter: key index \"%s\" is not a number", str);
        return false;
    }
    return true;
}

} // namespace

Parameter_cls::Parameter_cls(ParamGroup_cls* pGroup, const wxString& strName, int index)
    : mCName("Name=", strName), mCTimeDepend("TimeDepend=", false), mCLocked("Locked=", false),
      mCExtrapolate("Extrapolate=", false), mIndex(index), mpCParamGroup(pGroup) {
    mVCKey.push_back(KeyFrame_cls());
}

bool Parameter_cls::IsTimeDepend() const {
    return IsItemTrue(mCTimeDepend);
}

bool Parameter_cls::IsExtrapolate() const {
    return IsItemTrue(mCExtrapolate);
}

bool Parameter_cls::IsLocked() const {
    return IsItemTrue(mCLocked);
}

bool Parameter_cls::IsLinkedGroup() const {
    return mpCParamGroup && mpCParamGroup->IsLinked();
}

// ---- evaluation -----------------------------------------------------------------------------

double Parameter_cls::GetValue(double t) const {
    const int n = static_cast<int>(mVCKey.size());
    if (n == 0)
        return 0.0;
    const KeyFrame_cls& first = mVCKey[0];
    if (!IsTimeDepend())
        return first.mValue;

    bool bExact = false;
    int c = -1;
    if (mbPrecalculated && mbPrecalcSorted) {
        // Keys in order: both scans below reduce to two binary searches with the same tests.
        auto itNear = std::partition_point(mVCKey.begin(), mVCKey.end(),
                                           [t](const KeyFrame_cls& key) { return key.mX < t + TOL; });
        bExact = itNear != mVCKey.begin() && Misc_cls::IsNearlySame((itNear - 1)->mX, t, TOL);
        auto itReached = std::partition_point(mVCKey.begin(), mVCKey.end(),
                                              [t](const KeyFrame_cls& key) { return t >= key.mX - TOL; });
        c = static_cast<int>(itReached - mVCKey.begin()) - 1;
    } else {
        for (const KeyFrame_cls& key : mVCKey) {
            if (Misc_cls::IsNearlySame(key.mX, t, TOL)) {
                bExact = true;
                break;
            }
        }
        if (bExact || !(t < first.mX - TOL))
            c = GetControllingKey(t);
    }
    if (c < 0) {
        // Before the first key.
        if (first.mType == KeyFrame_cls::TYPE_STEP || !IsExtrapolate() || n == 1)
            return first.mValue;
        return GetKeyVelocityAuto(0) * (t - first.mX) + first.mValue;
    }
    // Two keys within the tolerance resolve to the later one: the controlling key scan goes on.
    const KeyFrame_cls& key = mVCKey[c];
    if (bExact)
        return key.mValue;
    if (key.mType == KeyFrame_cls::TYPE_STEP)
        return key.mValue;
    if (c == n - 1) {
        // The last key's type only chooses the extrapolation.
        if (!IsExtrapolate())
            return key.mValue;
        if (n == 1)
            return first.mValue;
        return GetValueExtrapolate1(t);
    }
    if (key.mType == KeyFrame_cls::TYPE_LINEAR)
        return InterpolateLinear(c, t);
    if (key.mType != KeyFrame_cls::TYPE_HERMITE)
        return 0.0; // unknown types have no segment of their own
    return InterpolateHermiteAuto(c, t);
}

double Parameter_cls::GetCurrentValue() const {
    return GetValue(TimeCtrl_cls::GetClockNT());
}

void Parameter_cls::PrecalcBegin() {
    mbPrecalculated = false;
    mbPrecalcSorted = true;
    for (int i = 0; i < static_cast<int>(mVCKey.size()); ++i) {
        mVCKey[i].mVelocity = ComputeKeyVelocity(i);
        if (i > 0 && !(mVCKey[i - 1].mX <= mVCKey[i].mX))
            mbPrecalcSorted = false;
    }
    mbPrecalculated = true;
}

double Parameter_cls::GetKeyVelocityLinear(int i, int j) const {
    // Keys at the same x are kept apart by the move logic; the division is not guarded.
    return (mVCKey[j].mValue - mVCKey[i].mValue) / (mVCKey[j].mX - mVCKey[i].mX);
}

double Parameter_cls::GetKeyVelocityAuto(int i) const {
    if (mbPrecalculated)
        return mVCKey[i].mVelocity;
    return ComputeKeyVelocity(i);
}

double Parameter_cls::ComputeKeyVelocity(int i) const {
    const int n = static_cast<int>(mVCKey.size());
    if (!IsTimeDepend() || n <= 1 || i < 0 || i >= n)
        return 0.0;
    const KeyFrame_cls& key = mVCKey[i];
    const int last = n - 1;
    switch (key.mType) {
    case KeyFrame_cls::TYPE_STEP:
        return 0.0;
    case KeyFrame_cls::TYPE_LINEAR:
    case KeyFrame_cls::TYPE_HERMITE: {
        // One-sided, not central: a Hermite key takes the slope of the segment it starts.
        double v = 0.0;
        if (i != last)
            v = GetKeyVelocityLinear(i, i + 1);
        else if (IsExtrapolate())
            v = GetKeyVelocityLinear(i - 1, i);
        if (key.mType == KeyFrame_cls::TYPE_HERMITE)
            v *= key.mEaseFactor;
        return v;
    }
    default:
        if (i == 0)
            return GetKeyVelocityLinear(0, 1);
        if (i == last)
            return GetKeyVelocityLinear(last - 1, last);
        return GetKeyVelocityLinear(i - 1, i + 1);
    }
}

double Parameter_cls::GetKeyEaseFactor(int i) const {
    switch (mVCKey[i].mType) {
    case KeyFrame_cls::TYPE_STEP:
        return 0.0;
    case KeyFrame_cls::TYPE_LINEAR:
        return 1.0;
    default:
        return mVCKey[i].mEaseFactor;
    }
}

double Parameter_cls::InterpolateLinear(int i, double t) const {
    if (i + 1 >= static_cast<int>(mVCKey.size()))
        return mVCKey[i].mValue;
    const KeyFrame_cls& k0 = mVCKey[i];
    const KeyFrame_cls& k1 = mVCKey[i + 1];
    const double u = (t - k0.mX) / (k1.mX - k0.mX);
    return (1.0 - u) * k0.mValue + u * k1.mValue;
}

double Parameter_cls::InterpolateHermiteAuto(int c, double t) const {
    if (c + 1 >= static_cast<int>(mVCKey.size()))
        return mVCKey[c].mValue;
    const KeyFrame_cls& k0 = mVCKey[c];
    const KeyFrame_cls& k1 = mVCKey[c + 1];
    const double dx = k1.mX - k0.mX;
    const double u = (t - k0.mX) / dx;
    double m0 = 0.0;
    double m1 = 0.0;
    if (IsTimeDepend()) {
        m0 = GetKeyVelocityAuto(c);
        m1 = GetKeyVelocityAuto(c + 1);
    }
    // The ease factor of a Hermite key enters twice, once in its velocity and once here: an
    // ease of 0.5 scales the slope by 0.25. Deliberate; 0 and 1 are not affected.
    m0 *= GetKeyEaseFactor(c);
    m1 *= GetKeyEaseFactor(c + 1);
    const double a = dx * m0;
    const double b = dx * m1;
    const double y0 = k0.mValue;
    const double y1 = k1.mValue;
    return (2.0 * y0 + a - 2.0 * y1 + b) * u * u * u + (-3.0 * y0 - 2.0 * a + 3.0 * y1 - b) * u * u + a * u +
           y0;
}

double Parameter_cls::GetValueExtrapolate0(double t) const {
    if (mVCKey.empty())
        return 0.0;
    const KeyFrame_cls& first = mVCKey.front();
    return (t - first.mX) * GetKeyVelocityAuto(0) + first.mValue;
}

double Parameter_cls::GetValueExtrapolate1(double t) const {
    if (mVCKey.empty())
        return 0.0;
    const int last = static_cast<int>(mVCKey.size()) - 1;
    const KeyFrame_cls& key = mVCKey[last];
    return (t - key.mX) * GetKeyVelocityAuto(last) + key.mValue;
}

// ---- key look-up ----------------------------------------------------------------------------

int Parameter_cls::GetActiveKeyIndex() const {
    for (size_t i = 0; i < mVCKey.size(); ++i)
        if (mVCKey[i].mbActive)
            return static_cast<int>(i);
    return -1;
}

int Parameter_cls::GetCurrentKeyIndex() const {
    return GetKeyIndex(TimeCtrl_cls::GetClockNT());
}

int Parameter_cls::GetKeyIndex(double x) const {
    for (size_t i = 0; i < mVCKey.size(); ++i)
        if (Misc_cls::IsNearlySame(mVCKey[i].mX, x, TOL))
            return static_cast<int>(i);
    return -1;
}

int Parameter_cls::GetControllingKey(double t) const {
    const int n = static_cast<int>(mVCKey.size());
    if (n == 0 || !(t >= mVCKey[0].mX - TOL))
        return -1;
    int c = 0;
    for (int k = 1; k < n; ++k) {
        if (!(t >= mVCKey[k].mX - TOL))
            break;
        c = k;
    }
    return c;
}

int Parameter_cls::GetAdjuscentKeyIndex(int direction, double t) const {
    if (t == -1.0)
        t = TimeCtrl_cls::GetClockNT();
    const int n = static_cast<int>(mVCKey.size());
    const int exact = GetKeyIndex(t);
    const int c = GetControllingKey(t);
    int result;
    if (exact >= 0)
        result = exact + direction;
    else if (c < 0)
        return direction == 1 ? 0 : -1;
    else
        result = direction == 1 ? c + 1 : c;
    if (result > n)
        result = n;
    if (result < 0)
        result = -1;
    return result;
}

double Parameter_cls::GetKeyXNormalizeEX(int i) const {
    if (i < 0)
        return 0.0;
    if (i >= static_cast<int>(mVCKey.size()))
        return 1.0;
    return mVCKey[i].mX;
}

bool Parameter_cls::IsSelectedKeyExist() const {
    for (const KeyFrame_cls& key : mVCKey)
        if (key.mbSelected)
            return true;
    return false;
}

bool Parameter_cls::IsKeyLinkedAll(int i) const {
    if (i < 0 || i >= static_cast<int>(mVCKey.size()))
        return false;
    if (!mpCParamGroup)
        return true;
    return mpCParamGroup->IsKeyExistAll(mVCKey[i].mX);
}

int Parameter_cls::GetSelectedKeyNum() const {
    int count = 0;
    for (const KeyFrame_cls& key : mVCKey)
        if (key.mbSelected)
            ++count;
    return count;
}

// ---- selection ------------------------------------------------------------------------------

void Parameter_cls::DeactivateKeys() {
    for (KeyFrame_cls& key : mVCKey)
        key.mbActive = false;
}

void Parameter_cls::DeselectKey() {
    for (KeyFrame_cls& key : mVCKey)
        key.mbSelected = false;
}

int Parameter_cls::SelectKey(double x, bool bSelect, bool bAdd, double tolerance) {
    if (tolerance == -1.0)
        tolerance = GpCTimeCtrl ? GpCTimeCtrl->GetDefaultResolution() : 0.0025;
    if (!bAdd)
        DeselectKey();
    int hit = -1;
    for (size_t i = 0; i < mVCKey.size(); ++i)
        if (mVCKey[i].Select(x, tolerance, bSelect) && hit < 0)
            hit = static_cast<int>(i);
    if (hit < 0)
        return 0;
    for (size_t i = 0; i < mVCKey.size(); ++i)
        mVCKey[i].mbActive = static_cast<int>(i) == hit;
    return 1;
}

int Parameter_cls::SelectKeyByIndex(int i, bool bSelect, bool bAdd, double tolerance) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size()))
        return 0;
    return SelectKey(mVCKey[i].mX, bSelect, bAdd, tolerance);
}

void Parameter_cls::SelectKeyAll(bool bSelect) {
    for (KeyFrame_cls& key : mVCKey)
        key.mbSelected = bSelect;
}

// ---- commands -------------------------------------------------------------------------------

void Parameter_cls::SetNewKeyCommand(double value, double x, wxString strTag, int type, double ease,
                                     bool bNoGroup) {
    CheckTag(strTag);
    if (!bNoGroup && IsLinkedGroup()) {
        mpCParamGroup->SetNewKeyCommand(value, x, strTag, type, ease);
        return;
    }
    const int c = GetControllingKey(x);
    if (type == -1) {
        // Automatic: the new key copies the type of the key it follows, and a flat Hermite key
        // makes a flat key.
        KeyFrame_cls source;
        if (!mVCKey.empty())
            source = mVCKey[c < 0 ? 0 : c];
        type = static_cast<int>(source.mType);
        if (source.mType == KeyFrame_cls::TYPE_HERMITE && source.mEaseFactor == 0.0)
            ease = 0.0;
    }
    const wxString strIndex = wxString::Format("%d", c + 1);
    TextHost_cls::PushAndRedo(strTag + "::DeleteKey::" + strIndex,
                              strTag + "::InsertKey::" + strIndex + "::" + Num(x) + "::0::" + Num(value) +
                                  wxString::Format("::%d::", type) + Num(ease));
}

void Parameter_cls::InsertKeyCommand(double x, wxString strTag, int type, double ease, bool bNoGroup) {
    CheckTag(strTag);
    if (!bNoGroup && IsLinkedGroup()) {
        mpCParamGroup->InsertKeyCommand(x, strTag, type, ease);
        return;
    }
    // A key already at x is the key there: a second one would make a segment of zero length,
    // whose slope is 0 / 0 and turns the Hermite segment before it into NaN.
    if (IsKeyExist(x))
        return;
    double value = 0.0;
    if (IsTimeDepend())
        value = GetValue(x);
    else if (!mVCKey.empty())
        value = mVCKey[0].mValue;
    SetNewKeyCommand(value, x, strTag, type, ease, false);
}

void Parameter_cls::DeleteKeyCommand(double x, wxString strTag, bool bNoGroup) {
    CheckTag(strTag);
    if (!bNoGroup && IsLinkedGroup()) {
        mpCParamGroup->DeleteKeyCommand(x, strTag);
        return;
    }
    if (mVCKey.size() <= 1)
        return; // the last key stays: a channel always has one
    const int i = GetControllingKey(x);
    if (i < 0)
        return;
    const KeyFrame_cls& key = mVCKey[i];
    // The undo text has no ease field, so an undone deletion does not bring the ease factor
    // back: the key reader leaves the default. Deliberate; keep the form.
    const wxString strIndex = wxString::Format("%d", i);
    TextHost_cls::PushAndRedo(strTag + "::InsertKey::" + strIndex + "::" + Num(key.mX) +
                                  wxString::Format("::%d::", key.mbSelected ? 1 : 0) + Num(key.mValue) +
                                  wxString::Format("::%ld", key.mType),
                              strTag + "::DeleteKey::" + strIndex);
}

void Parameter_cls::DeleteSelectedTLKeyCommand(wxString strTag) {
    CheckTag(strTag);
    for (int i = static_cast<int>(mVCKey.size()) - 1; i >= 0; --i) {
        if (i >= static_cast<int>(mVCKey.size()) || !mVCKey[i].mbSelected)
            continue;
        DeleteKeyCommand(mVCKey[i].mX, strTag, true);
    }
}

void Parameter_cls::SetKeyValueCommand(int i, double value, wxString strTag) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size())) {
        wxLogWarning("Parameter %s: key %d refused (index >= 0)", GetStrName(), i);
        return;
    }
    if (mVCKey[i].mValue == value)
        return;
    CheckTag(strTag);
    const wxString strHead = strTag + wxString::Format("::Key::%d::SetValue::", i);
    TextHost_cls::PushAndRedo(strHead + Num(mVCKey[i].mValue), strHead + Num(value));
}

void Parameter_cls::SetValueCommand(double value, wxString strTag, int type, double ease) {
    SetValueAtCommand(value, TimeCtrl_cls::GetClockNT(), strTag, type, ease);
}

void Parameter_cls::SetValueAtCommand(double value, double x, wxString strTag, int type, double ease) {
    CheckTag(strTag);
    if (!IsTimeDepend()) {
        SetKeyValueCommand(0, value, strTag);
        return;
    }
    const int i = GetKeyIndex(x);
    if (i >= 0) {
        SetKeyValueCommand(i, value, strTag);
        return;
    }
    if (type == -1 && GpCTimeCtrl)
        GpCTimeCtrl->GetDefaultKeyTypeAndEase(&type, &ease);
    SetNewKeyCommand(value, x, strTag, type, ease, false);
}

void Parameter_cls::SetKeyEaseFactorCommand(int i, double ease, wxString strTag) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size())) {
        wxLogWarning("Parameter %s: key %d refused (index >= 0)", GetStrName(), i);
        return;
    }
    if (mVCKey[i].mEaseFactor == ease)
        return;
    CheckTag(strTag);
    const wxString strHead = strTag + wxString::Format("::Key::%d::SetEaseFactor::", i);
    TextHost_cls::PushAndRedo(strHead + Num(mVCKey[i].mEaseFactor), strHead + Num(ease));
}

void Parameter_cls::SetKeyTypeCommand(int i, int type, wxString strTag) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size())) {
        wxLogWarning("Parameter %s: key %d refused (index >= 0)", GetStrName(), i);
        return;
    }
    const int oldType = static_cast<int>(mVCKey[i].mType);
    if (oldType == type)
        return;
    CheckTag(strTag);
    const wxString strHead = strTag + wxString::Format("::Key::%d::SetType::", i);
    TextHost_cls::PushAndRedo(strHead + wxString::Format("%d", oldType),
                              strHead + wxString::Format("%d", type));
}

void Parameter_cls::SetSelectedTLKeyTypeCommand(wxString strTag, int type, double ease) {
    CheckTag(strTag);
    for (size_t i = 0; i < mVCKey.size(); ++i) {
        if (!mVCKey[i].mbSelected)
            continue;
        SetKeyTypeCommand(static_cast<int>(i), type, strTag);
        SetKeyEaseFactorCommand(static_cast<int>(i), ease, strTag);
    }
}

int Parameter_cls::MoveOneKey(int i, double dx, double dy, const wxString& strTag) {
    const KeyFrame_cls key = mVCKey[i];
    const double newValue = key.mValue + dy;
    double newX = key.mX + dx;
    if (mpCParamGroup && mpCParamGroup->mbColorCurve)
        newX = TimeCtrl_cls::GetQuantizedForColor(newX, 0);
    else if (GpCTimeCtrl)
        newX = GpCTimeCtrl->GetQuantized(newX, 0);
    const bool bXChanged = !Misc_cls::IsNearlySame(newX, key.mX, TOL);
    const bool bValueChanged = newValue != key.mValue;
    if (!bXChanged && !bValueChanged)
        return i;
    if (bXChanged) {
        // A key that already stands where this one goes is removed first.
        bool bOther = false;
        for (size_t k = 0; k < mVCKey.size(); ++k)
            if (static_cast<int>(k) != i && Misc_cls::IsNearlySame(mVCKey[k].mX, newX, TOL))
                bOther = true;
        if (bOther) {
            const int removed = GetControllingKey(newX);
            const size_t before = mVCKey.size();
            DeleteKeyCommand(newX, strTag, true);
            if (mVCKey.size() < before && removed < i)
                --i;
        }
        const wxString strHead = strTag + wxString::Format("::Key::%d::SetX::", i);
        TextHost_cls::PushAndRedo(strHead + Num(key.mX), strHead + Num(newX));
    }
    if (bValueChanged) {
        const wxString strHead = strTag + wxString::Format("::Key::%d::SetValue::", i);
        TextHost_cls::PushAndRedo(strHead + Num(key.mValue), strHead + Num(newValue));
    }
    return i;
}

void Parameter_cls::PushSortPair(const wxString& strTag) {
    // The undo of a move is index based. When the sort reorders keys (a key passed another one)
    // the undo text puts the unsorted order back after its SortKey, so that the undo texts of
    // the moves before it find their keys again. Without reordering it is SortKey alone.
    std::vector<KeyFrame_cls> vSorted = mVCKey;
    std::sort(vSorted.begin(), vSorted.end(), LessX);
    wxString strUndo = strTag + "::SortKey";
    for (size_t i = 0; i < mVCKey.size(); ++i) {
        const KeyFrame_cls& a = mVCKey[i];
        const KeyFrame_cls& b = vSorted[i];
        if (a.mX == b.mX && a.mValue == b.mValue && a.mType == b.mType && a.mEaseFactor == b.mEaseFactor &&
            a.mbSelected == b.mbSelected)
            continue;
        wxString strKey;
        a.Serialize(strKey);
        strKey.RemoveLast(); // the newline
        const wxString strIndex = wxString::Format("%d", static_cast<int>(i));
        strUndo += "\n" + strTag + "::DeleteKey::" + strIndex + "\n" + strTag + "::InsertKey::" + strIndex +
                   "::" + strKey;
    }
    TextHost_cls::PushAndRedo(strUndo, strTag + "::SortKey");
}

void Parameter_cls::MoveSelectedTLKeyCommand(double dx, double dy, wxString strTag) {
    if (!IsSelectedKeyExist())
        return;
    CheckTag(strTag);
    if (GpCUndo)
        GpCUndo->OpenBlock("MoveKeyAndSort");
    // Against the direction of motion, so that a moved key does not pass one still to move.
    if (dx > 0) {
        for (int i = static_cast<int>(mVCKey.size()) - 1; i >= 0; --i) {
            if (i < static_cast<int>(mVCKey.size()) && mVCKey[i].mbSelected)
                i = MoveOneKey(i, dx, dy, strTag);
        }
    } else {
        for (int i = 0; i < static_cast<int>(mVCKey.size()); ++i) {
            if (mVCKey[i].mbSelected)
                i = MoveOneKey(i, dx, dy, strTag);
        }
    }
    PushSortPair(strTag);
    if (GpCUndo)
        GpCUndo->CloseBlock("MoveKeyAndSort");
}

void Parameter_cls::MoveTLKeyCommand(int i, double dx, double dy, wxString strTag) {
    CheckTag(strTag);
    MoveTLKeyInternal(i, dx, dy, strTag);
}

int Parameter_cls::MoveTLKeyInternal(int i, double dx, double dy, const wxString& strTag) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size())) {
        wxLogWarning("Parameter %s: key %d refused (index >= 0)", GetStrName(), i);
        return i;
    }
    if (GpCUndo)
        GpCUndo->OpenBlock("MoveKeyAndSort");
    i = MoveOneKey(i, dx, dy, strTag);
    PushSortPair(strTag);
    if (GpCUndo)
        GpCUndo->CloseBlock("MoveKeyAndSort");
    return i;
}

void Parameter_cls::RescaleCommand(double factor, wxString strTag) {
    if (!IsTimeDepend() || factor == 1.0)
        return;
    CheckTag(strTag);
    // Against the motion, so that the keys still to move keep their index; a key that lands
    // on another removes it, and the walk follows the moved key's new index.
    if (factor > 1.0) {
        for (int i = static_cast<int>(mVCKey.size()) - 1; i >= 0; --i) {
            if (i >= static_cast<int>(mVCKey.size()))
                continue;
            i = MoveTLKeyInternal(i, (factor - 1.0) * mVCKey[i].mX, 0.0, strTag);
        }
    } else {
        for (int i = 0; i < static_cast<int>(mVCKey.size()); ++i)
            i = MoveTLKeyInternal(i, (factor - 1.0) * mVCKey[i].mX, 0.0, strTag);
    }
}

bool Parameter_cls::ChangeKeyType(wxString strTag, int i, int type) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size()))
        return false;
    if (static_cast<int>(mVCKey[i].mType) == type)
        return false;
    SetKeyTypeCommand(i, type, strTag);
    return true;
}

bool Parameter_cls::ChangeKeyTypeByModKey(wxString strTag, int i, bool bA, bool bB, bool bC) {
    if (i < 0 || i >= static_cast<int>(mVCKey.size()))
        return false;
    int type;
    if (bB || !bA)
        type = KeyFrame_cls::TYPE_LINEAR;
    else if (bC)
        type = KeyFrame_cls::TYPE_STEP;
    else
        type = mVCKey[i].mType != KeyFrame_cls::TYPE_HERMITE ? KeyFrame_cls::TYPE_HERMITE
                                                             : KeyFrame_cls::TYPE_LINEAR;
    if (type == static_cast<int>(mVCKey[i].mType))
        return false;
    CheckTag(strTag);
    if (IsLinkedGroup())
        return mpCParamGroup->ChangeKeyTypeByModKey(strTag, mVCKey[i].mX, type, -1.0);
    return ChangeKeyType(strTag, i, type);
}

// ---- text -----------------------------------------------------------------------------------

void Parameter_cls::Serialize(wxString& strOut) const {
    strOut += "Name=" + mCName.GetBodySTR() + "\n";
    strOut += "TimeDepend=" + mCTimeDepend.GetBodySTR() + "\n";
    strOut += "Locked=" + mCLocked.GetBodySTR() + "\n";
    strOut += "Extrapolate=" + mCExtrapolate.GetBodySTR() + "\n";
    strOut += wxString::Format("keyNum=%d\n", static_cast<int>(mVCKey.size()));
    for (const KeyFrame_cls& key : mVCKey)
        key.Serialize(strOut);
}

bool Parameter_cls::ReadStrLine(std::wistream& stream, wxString strHead, wxString strRest) {
    ++mProcCounter;
    ParamStream_cls reader;
    wxString strLine = ParamStream_cls::Join(strHead, strRest);
    // Each of the three flags is optional, which keeps older files readable.
    for (ConfItem_cls* pItem :
         {static_cast<ConfItem_cls*>(&mCTimeDepend), static_cast<ConfItem_cls*>(&mCLocked),
          static_cast<ConfItem_cls*>(&mCExtrapolate)}) {
        if (!pItem->ReadStrLine(strLine))
            continue;
        if (!reader.GetLine(stream, strLine)) {
            wxLogWarning("Parameter %s: the text ends before keyNum=", GetStrName());
            return true;
        }
    }
    ConfItemINT_cls keyNum("keyNum=", "0");
    if (!keyNum.ReadStrLine(strLine)) {
        wxLogWarning("Parameter %s: keyNum= expected, \"%s\" found", GetStrName(), strLine);
        reader.PutBack(stream);
        return true;
    }
    long long count = keyNum.GetBodyINT();
    if (count < 0) {
        wxLogWarning("Parameter %s: keyNum=%lld read as 0", GetStrName(), count);
        count = 0;
    }
    mVCKey.clear();
    // Keys are trusted to be in order. The count is not trusted for the size of the vector:
    // a truncated text gives as many keys as it holds.
    for (long long k = 0; k < count; ++k) {
        if (!reader.GetLine(stream, strLine)) {
            wxLogWarning("Parameter %s: %lld of %lld keys read", GetStrName(), k, count);
            break;
        }
        KeyFrame_cls key;
        if (!key.ReadStrLine(strLine)) {
            wxLogWarning("Parameter %s: %lld of %lld keys read", GetStrName(), k, count);
            reader.PutBack(stream);
            break;
        }
        mVCKey.push_back(key);
    }
    return true;
}

bool Parameter_cls::ReadStrOneLiner(wxString strHead, wxString strRest) {
    ++mProcCounter;
    if (mCTimeDepend.ReadStrLine(strHead) || mCLocked.ReadStrLine(strHead) ||
        mCExtrapolate.ReadStrLine(strHead))
        return true;
    long index = 0;
    if (strHead == "Key") {
        if (!ParseIndex(PopStrItemFromStrLine(strRest, "::"), index))
            return false;
        if (index < 0 || index >= static_cast<long>(mVCKey.size())) {
            wxLogWarning("Parameter %s: key %ld refused (index >= 0)", GetStrName(), index);
            return false;
        }
        wxString strVerb = PopStrItemFromStrLine(strRest, "::");
        return mVCKey[index].ReadStrOneLiner(strVerb, strRest);
    }
    if (strHead == "InsertKey") {
        if (!ParseIndex(PopStrItemFromStrLine(strRest, "::"), index))
            return false;
        if (index < 0 || index > static_cast<long>(mVCKey.size())) {
            wxLogWarning("Parameter %s: insertion at %ld refused (index >= 0)", GetStrName(), index);
            return false;
        }
        KeyFrame_cls key;
        if (!key.ReadStrLine(strRest)) {
            wxLogWarning("Parameter %s: unreadable key", GetStrName());
            return false;
        }
        mVCKey.insert(mVCKey.begin() + index, key);
        return true;
    }
    if (strHead == "DeleteKey") {
        if (!ParseIndex(PopStrItemFromStrLine(strRest, "::"), index))
            return false;
        if (index < 0 || index >= static_cast<long>(mVCKey.size())) {
            wxLogWarning("Parameter %s: deletion of key %ld refused (index >= 0)", GetStrName(), index);
            return false;
        }
        mVCKey.erase(mVCKey.begin() + index);
        return true;
    }
    if (strHead == "SortKey") {
        SortKey();
        return true;
    }
    return false;
}

// ---- other ----------------------------------------------------------------------------------

bool Parameter_cls::LessX(const KeyFrame_cls& a, const KeyFrame_cls& b) {
    return a.mX < b.mX;
}

void Parameter_cls::SortKey() {
    // Not stable: keys at equal positions may swap.
    std::sort(mVCKey.begin(), mVCKey.end(), LessX);
}

void Parameter_cls::Flip() {
    std::vector<KeyFrame_cls> vFlipped(mVCKey.rbegin(), mVCKey.rend());
    for (KeyFrame_cls& key : vFlipped)
        key.mX = 1.0 - key.mX;
    mVCKey.swap(vFlipped);
}

ConfItem_cls* Parameter_cls::GetPCItem(wxString strHead) {
    if (!strHead.EndsWith("="))
        strHead += "=";
    if (strHead == "TimeDepend=")
        return &mCTimeDepend;
    if (strHead == "Extrapolate=")
        return &mCExtrapolate;
    if (strHead == "Locked=")
        return &mCLocked;
    return nullptr;
}

void Parameter_cls::CheckTag(wxString& strTag) const {
    if (GetLastItem(strTag, "::") != GetStrName())
        strTag += "::" + GetStrName();
}
