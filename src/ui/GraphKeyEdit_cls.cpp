#include "GraphKeyEdit_cls.h"

#include "ClassProvider_cls.h"
#include "KeyFrame_cls.h"
#include "Misc_cls.h"
#include "Parameter_cls.h"
#include "TextHost_cls.h"
#include "TimeCtrl_cls.h"
#include "UndoManager_cls.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Brackets the pairs of one gesture so that one undo takes them all back.
class Block_cls {
public:
    explicit Block_cls(const wxString& strName) : mStrName(strName) {
        if (GpCUndo)
            GpCUndo->OpenBlock(mStrName);
    }
    ~Block_cls() {
        if (GpCUndo)
            GpCUndo->CloseBlock(mStrName);
    }

private:
    wxString mStrName;
};

} // namespace

void GraphKeyEdit_cls::SetChannels(std::vector<GraphChannel_cls> vChannel) {
    bool bSame = vChannel.size() == mVChannel.size();
    for (size_t c = 0; bSame && c < vChannel.size(); ++c)
        bSame = vChannel[c].mpCParam == mVChannel[c].mpCParam && vChannel[c].mStrTag == mVChannel[c].mStrTag;
    // The same channels again (a repaint during a drag) leave the drag running.
    if (IsDragging() && !bSame)
        CancelDrag();
    mVChannel = std::move(vChannel);
    if (mActiveChannel >= static_cast<int>(mVChannel.size()))
        mActiveChannel = -1;
}

bool GraphKeyEdit_cls::IsChannelEditable(int channel) const {
    if (channel < 0 || channel >= static_cast<int>(mVChannel.size()))
        return false;
    return (mActiveChannel < 0 || mActiveChannel == channel) && !mVChannel[channel].mpCParam->IsLocked();
}

// ---- geometry -------------------------------------------------------------------------------

GraphKeyEdit_cls::Hit_cls GraphKeyEdit_cls::HitKey(int px, int py) const {
    Hit_cls best;
    int bestDistance = std::numeric_limits<int>::max();
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (!IsChannelEditable(static_cast<int>(c)))
            continue;
        const std::vector<KeyFrame_cls>& vKey = mVChannel[c].mpCParam->mVCKey;
        for (size_t k = 0; k < vKey.size(); ++k) {
            const int dx = std::abs(mCGeom.GetDevX(vKey[k].mX) - px);
            const int dy = std::abs(mCGeom.GetDevY(vKey[k].mValue) - py);
            if (dx > msHitRadius || dy > msHitRadius)
                continue;
            // Of marks on top of each other the selected one wins, so a second drag moves
            // what the first one moved.
            const int distance = dx + dy - (vKey[k].mbSelected ? 1 : 0);
            if (distance < bestDistance) {
                bestDistance = distance;
                best.mChannel = static_cast<int>(c);
                best.mKey = static_cast<int>(k);
            }
        }
    }
    return best;
}

int GraphKeyEdit_cls::HitCurve(int px, int py) const {
    const double x = mCGeom.GetXFromDev(px);
    int best = -1;
    int bestDistance = msHitRadius + 1;
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (!IsChannelEditable(static_cast<int>(c)))
            continue;
        const int distance = std::abs(mCGeom.GetDevY(mVChannel[c].mpCParam->GetValue(x)) - py);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = static_cast<int>(c);
        }
    }
    return best;
}

double GraphKeyEdit_cls::SnapX(double x) const {
    if (mbColor)
        return TimeCtrl_cls::GetQuantizedForColor(x, 0);
    return GpCTimeCtrl ? GpCTimeCtrl->GetQuantized(x, 0) : x;
}

void GraphKeyEdit_cls::FrameAll() {
    if (mbColor) {
        // The bar shows the whole curve: its keys live on 0 .. 1 whatever the view.
        mCGeom.SetXRange(0.0, 1.0);
        mCGeom.SetYRange(-0.05, 1.05);
        return;
    }
    double x0 = std::numeric_limits<double>::max(), x1 = -x0;
    double y0 = x0, y1 = -x0;
    for (const GraphChannel_cls& channel : mVChannel) {
        for (const KeyFrame_cls& key : channel.mpCParam->mVCKey) {
            x0 = std::min(x0, key.mX);
            x1 = std::max(x1, key.mX);
        }
    }
    if (x0 > x1) {
        x0 = 0.0;
        x1 = 1.0;
    }
    if (x1 - x0 < 1e-9) {
        // One position only: the scene's whole time around it.
        x0 = std::min(x0, 0.0);
        x1 = std::max(x1, 1.0);
    }
    // The curves between the keys, so that an overshoot of a Hermite segment is in view.
    for (const GraphChannel_cls& channel : mVChannel) {
        for (int i = 0; i <= 64; ++i) {
            const double v = channel.mpCParam->GetValue(x0 + (x1 - x0) * i / 64.0);
            y0 = std::min(y0, v);
            y1 = std::max(y1, v);
        }
    }
    if (y0 > y1) {
        y0 = 0.0;
        y1 = 1.0;
    }
    mCGeom.FrameAll(x0, x1, y0, y1);
}

// ---- selection ------------------------------------------------------------------------------

void GraphKeyEdit_cls::DeselectAll() {
    for (GraphChannel_cls& channel : mVChannel)
        for (KeyFrame_cls& key : channel.mpCParam->mVCKey) {
            key.mbSelected = false;
            key.mbActive = false;
        }
}

void GraphKeyEdit_cls::SelectKey(int channel, int key, bool bAdd) {
    if (channel < 0 || channel >= static_cast<int>(mVChannel.size()))
        return;
    std::vector<KeyFrame_cls>& vKey = mVChannel[channel].mpCParam->mVCKey;
    if (key < 0 || key >= static_cast<int>(vKey.size()))
        return;
    if (!bAdd)
        DeselectAll();
    for (GraphChannel_cls& c : mVChannel)
        for (KeyFrame_cls& k : c.mpCParam->mVCKey)
            k.mbActive = false;
    vKey[key].mbSelected = true;
    vKey[key].mbActive = true;
    LinkSelection();
}

void GraphKeyEdit_cls::LinkSelection() {
    if (!mbLinkX)
        return;
    std::vector<double> vX;
    for (const GraphChannel_cls& channel : mVChannel)
        for (const KeyFrame_cls& key : channel.mpCParam->mVCKey)
            if (key.mbSelected)
                vX.push_back(key.mX);
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (!IsChannelEditable(static_cast<int>(c)))
            continue;
        for (KeyFrame_cls& key : mVChannel[c].mpCParam->mVCKey)
            for (double x : vX)
                if (Misc_cls::IsNearlySame(key.mX, x, Parameter_cls::msKeyTolerance))
                    key.mbSelected = true;
    }
}

void GraphKeyEdit_cls::SelectInBox(int x0, int y0, int x1, int y1, bool bAdd) {
    if (!bAdd)
        DeselectAll();
    const int left = std::min(x0, x1), right = std::max(x0, x1);
    const int top = std::min(y0, y1), bottom = std::max(y0, y1);
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (!IsChannelEditable(static_cast<int>(c)))
            continue;
        for (KeyFrame_cls& key : mVChannel[c].mpCParam->mVCKey) {
            const int px = mCGeom.GetDevX(key.mX);
            const int py = mCGeom.GetDevY(key.mValue);
            if (px >= left && px <= right && py >= top && py <= bottom)
                key.mbSelected = true;
        }
    }
    LinkSelection();
}

int GraphKeyEdit_cls::GetSelectedKeyNum() const {
    int n = 0;
    for (const GraphChannel_cls& channel : mVChannel)
        n += channel.mpCParam->GetSelectedKeyNum();
    return n;
}

GraphKeyEdit_cls::Hit_cls GraphKeyEdit_cls::GetFirstSelected() const {
    Hit_cls hit;
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        const std::vector<KeyFrame_cls>& vKey = mVChannel[c].mpCParam->mVCKey;
        for (size_t k = 0; k < vKey.size(); ++k)
            if (vKey[k].mbSelected && (!hit.IsHit() || vKey[k].mbActive)) {
                hit.mChannel = static_cast<int>(c);
                hit.mKey = static_cast<int>(k);
                if (vKey[k].mbActive)
                    return hit;
            }
    }
    return hit;
}

bool GraphKeyEdit_cls::GetSelectedX(double& x) const {
    const Hit_cls hit = GetFirstSelected();
    if (!hit.IsHit())
        return false;
    x = mVChannel[hit.mChannel].mpCParam->mVCKey[hit.mKey].mX;
    return true;
}

void GraphKeyEdit_cls::SelectAt(double x) {
    DeselectAll();
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        const int k = mVChannel[c].mpCParam->GetKeyIndex(x);
        if (k >= 0 && IsChannelEditable(static_cast<int>(c)))
            SelectKey(static_cast<int>(c), k, true);
    }
}

// ---- the mouse ------------------------------------------------------------------------------

void GraphKeyEdit_cls::Press(int px, int py, bool bAdd, bool bInsert, bool bPan) {
    if (IsDragging())
        CancelDrag();
    mPressX = mNowX = px;
    mPressY = mNowY = py;
    mbMoved = false;
    if (bPan) {
        mDragMode = DRAG_PAN;
        return;
    }
    if (bInsert) {
        int channel = HitCurve(px, py);
        if (channel < 0)
            channel = mActiveChannel >= 0 ? mActiveChannel : (mVChannel.size() == 1 ? 0 : -1);
        double x = SnapX(mCGeom.GetXFromDev(px));
        double v = mCGeom.GetYFromDev(py);
        if (mbColor) {
            x = std::clamp(x, 0.0, 1.0);
            v = std::clamp(v, 0.0, 1.0);
        }
        if (channel < 0) {
            // Off every curve: a stop keeps the colour there; without stops there is no key.
            if (!mbLinkX || mVChannel.empty())
                return;
            InsertKeysAt(x);
            channel = 0;
        } else {
            InsertKey(channel, x, v);
        }
        const int key = mVChannel[channel].mpCParam->GetKeyIndex(x);
        if (key >= 0)
            SelectKey(channel, key, false);
        return;
    }
    const Hit_cls hit = HitKey(px, py);
    if (!hit.IsHit()) {
        if (!bAdd)
            DeselectAll();
        mDragMode = DRAG_BOX;
        return;
    }
    KeyFrame_cls& key = mVChannel[hit.mChannel].mpCParam->mVCKey[hit.mKey];
    if (bAdd && key.mbSelected) {
        key.mbSelected = false;
        key.mbActive = false;
        return;
    }
    if (!key.mbSelected || bAdd)
        SelectKey(hit.mChannel, hit.mKey, bAdd);
    mDragMode = DRAG_KEYS;
    SaveKeys();
}

void GraphKeyEdit_cls::GetDragOffset(int px, int py, double& dx, double& dy) const {
    dx = (px - mPressX) * mCGeom.GetXPerPixel();
    dy = -(py - mPressY) * mCGeom.GetYPerPixel();
    // The first selected key as it was at the press lands on the grid; the others keep their
    // distance to it, as the move command snaps each one alike.
    double xRef = 0.0, xMin = 0.0, xMax = 0.0, vMin = 0.0, vMax = 0.0;
    bool bFirst = true;
    for (const std::vector<KeyFrame_cls>& vKey : mVVSavedKeys)
        for (const KeyFrame_cls& key : vKey) {
            if (!key.mbSelected)
                continue;
            if (bFirst) {
                xRef = xMin = xMax = key.mX;
                vMin = vMax = key.mValue;
                bFirst = false;
            }
            xMin = std::min(xMin, key.mX);
            xMax = std::max(xMax, key.mX);
            vMin = std::min(vMin, key.mValue);
            vMax = std::max(vMax, key.mValue);
        }
    if (bFirst) {
        dx = dy = 0.0;
        return;
    }
    if (mbColor) {
        // A colour curve lives on 0 .. 1 both ways: the selection stops at the edges.
        dx = std::clamp(dx, -xMin, 1.0 - xMax);
        if (vMin >= 0.0 && vMax <= 1.0)
            dy = std::clamp(dy, -vMin, 1.0 - vMax);
    }
    dx = SnapX(xRef + dx) - xRef;
    if (mbColor && (xMin + dx < 0.0 || xMax + dx > 1.0))
        dx = SnapX(xRef + dx - (xMin + dx < 0.0 ? -1.0 : 1.0) / 1024.0) - xRef;
    if (std::fabs(dx) < 1e-12)
        dx = 0.0;
}

bool GraphKeyEdit_cls::Drag(int px, int py) {
    if (!IsDragging())
        return false;
    mNowX = px;
    mNowY = py;
    if (std::abs(px - mPressX) > msDragThreshold || std::abs(py - mPressY) > msDragThreshold)
        mbMoved = true;
    if (mDragMode == DRAG_PAN) {
        mCGeom.Pan(px - mPressX, py - mPressY);
        mPressX = px;
        mPressY = py;
        return true;
    }
    if (mDragMode == DRAG_BOX)
        return mbMoved;
    if (!mbMoved)
        return false;
    double dx = 0.0, dy = 0.0;
    GetDragOffset(px, py, dx, dy);
    for (size_t c = 0; c < mVChannel.size() && c < mVVSavedKeys.size(); ++c) {
        Parameter_cls& param = *mVChannel[c].mpCParam;
        const std::vector<KeyFrame_cls>& vSaved = mVVSavedKeys[c];
        if (vSaved.size() != param.mVCKey.size() || !IsChannelEditable(static_cast<int>(c)))
            continue;
        for (size_t k = 0; k < vSaved.size(); ++k) {
            if (!vSaved[k].mbSelected)
                continue;
            param.mVCKey[k].mX = SnapX(vSaved[k].mX + dx);
            param.mVCKey[k].mValue = vSaved[k].mValue + dy;
        }
        ++param.mProcCounter; // the curve's texture and the pictures see the change
    }
    return true;
}

bool GraphKeyEdit_cls::Release(int px, int py) {
    const Drag_enum mode = mDragMode;
    if (mode == DRAG_NONE)
        return false;
    Drag(px, py);
    mDragMode = DRAG_NONE;
    if (mode == DRAG_BOX) {
        if (mbMoved)
            SelectInBox(mPressX, mPressY, px, py, true);
        return false;
    }
    if (mode != DRAG_KEYS)
        return false;
    double dx = 0.0, dy = 0.0;
    GetDragOffset(px, py, dx, dy);
    RestoreKeys();
    if (!mbMoved || (dx == 0.0 && dy == 0.0))
        return false;
    MoveSelected(dx, dy);
    return true;
}

void GraphKeyEdit_cls::CancelDrag() {
    if (mDragMode == DRAG_KEYS)
        RestoreKeys();
    mDragMode = DRAG_NONE;
}

void GraphKeyEdit_cls::GetBox(int& x0, int& y0, int& x1, int& y1) const {
    x0 = mPressX;
    y0 = mPressY;
    x1 = mNowX;
    y1 = mNowY;
}

void GraphKeyEdit_cls::SaveKeys() {
    mVVSavedKeys.clear();
    for (const GraphChannel_cls& channel : mVChannel)
        mVVSavedKeys.push_back(channel.mpCParam->mVCKey);
}

void GraphKeyEdit_cls::RestoreKeys() {
    for (size_t c = 0; c < mVChannel.size() && c < mVVSavedKeys.size(); ++c) {
        Parameter_cls& param = *mVChannel[c].mpCParam;
        if (param.mVCKey.size() != mVVSavedKeys[c].size())
            continue;
        param.mVCKey = mVVSavedKeys[c];
        ++param.mProcCounter;
    }
    mVVSavedKeys.clear();
}

// ---- commands -------------------------------------------------------------------------------

void GraphKeyEdit_cls::MoveSelected(double dx, double dy) {
    Block_cls block("MoveKeyAndSort");
    for (size_t c = 0; c < mVChannel.size(); ++c)
        if (IsChannelEditable(static_cast<int>(c)))
            mVChannel[c].mpCParam->MoveSelectedTLKeyCommand(dx, dy, mVChannel[c].mStrTag);
}

void GraphKeyEdit_cls::InsertKey(int channel, double x, double v) {
    if (channel < 0 || channel >= static_cast<int>(mVChannel.size()) ||
        mVChannel[channel].mpCParam->IsLocked())
        return;
    Block_cls block("InsertKeyAsGroup");
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (static_cast<int>(c) != channel && (!mbLinkX || !IsChannelEditable(static_cast<int>(c))))
            continue;
        GraphChannel_cls& target = mVChannel[c];
        Parameter_cls& param = *target.mpCParam;
        if (param.IsKeyExist(x)) {
            if (static_cast<int>(c) == channel)
                param.SetKeyValueCommand(param.GetKeyIndex(x), v, target.mStrTag);
            continue;
        }
        // The other channels of a stop keep their shape: they get a key of their own value.
        const double value = static_cast<int>(c) == channel ? v : param.GetValue(x);
        if (!param.IsTimeDepend())
            TextHost_cls::PushAndRedo(target.mStrTag + "::TimeDepend=0", target.mStrTag + "::TimeDepend=1");
        param.SetNewKeyCommand(value, x, target.mStrTag, -1, 1.0, true);
    }
}

void GraphKeyEdit_cls::InsertKeysAt(double x) {
    Block_cls block("InsertKeyAsGroup");
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        GraphChannel_cls& target = mVChannel[c];
        Parameter_cls& param = *target.mpCParam;
        if (!IsChannelEditable(static_cast<int>(c)) || param.IsKeyExist(x))
            continue;
        const double value = param.GetValue(x);
        if (!param.IsTimeDepend())
            TextHost_cls::PushAndRedo(target.mStrTag + "::TimeDepend=0", target.mStrTag + "::TimeDepend=1");
        param.SetNewKeyCommand(value, x, target.mStrTag, -1, 1.0, true);
    }
}

void GraphKeyEdit_cls::DeleteSelected() {
    Block_cls block("DeleteKeyAsGroup");
    for (size_t c = 0; c < mVChannel.size(); ++c)
        if (IsChannelEditable(static_cast<int>(c)))
            mVChannel[c].mpCParam->DeleteSelectedTLKeyCommand(mVChannel[c].mStrTag);
}

void GraphKeyEdit_cls::SetSelectedEase(double ease) {
    Block_cls block("SetEaseGroup");
    for (size_t c = 0; c < mVChannel.size(); ++c) {
        if (!IsChannelEditable(static_cast<int>(c)))
            continue;
        Parameter_cls* p = mVChannel[c].mpCParam;
        for (int k = 0; k < p->GetKeyNum(); ++k)
            if (p->mVCKey[k].mbSelected)
                p->SetKeyEaseFactorCommand(k, ease, mVChannel[c].mStrTag);
    }
}

void GraphKeyEdit_cls::SetSelectedType(int type, double ease) {
    Block_cls block("ChangeKeyTypeGroup");
    for (size_t c = 0; c < mVChannel.size(); ++c)
        if (IsChannelEditable(static_cast<int>(c)))
            mVChannel[c].mpCParam->SetSelectedTLKeyTypeCommand(mVChannel[c].mStrTag, type, ease);
}
