// The inputs of one particle preparation, read once from the viewer's clones at the frame's time:
// the object's keys and, per material slot, the values the workers need. Workers read only this.
#pragma once

#include <wx/string.h>

class ViewerClone_cls;

class PrepareSetting_cls {
public:
    static constexpr int kMaterialMax = 10;

    // Reads the keys of pViewer and the materials ("MaterialParticle_cls" attributes) of pMaterial,
    // evaluating their groups at time. Either may be null: the defaults stay.
    void ReadFromClone(ViewerClone_cls* pViewer, ViewerClone_cls* pMaterial, double time);
    // Every value above as one text, for the change stamp.
    wxString GetStrValues() const;
    // A material's alpha from its "Alpha Modifier" values: factor alone with modifier 0 ("No
    // Modify"); with 1 ("Square Inverse") factor * min(max, 1 / base^2), and factor * max when
    // base is 0 or less. The one rule for the material and its clone.
    static double GetMaterialAlpha(int modifier, double factor, double base, double max);

    int mInterpolateBy = 0;   // 0 by index, 1 by ID
    int mInterpType = 1;      // 0 step, 1 linear, 2 Hermite, 3 Bezier, 4 smooth Bezier
    int mVanishSizeType = 2;  // 0 constant size, 1 decrease size, 2 set to 0
    int mExtrapolateType = 0; // 0 constant location, 1 extrapolate location
    int mSortType = 0;
    double mSortFrequency = 0.999;
    int mClassifyType = 0;
    wxString mStrClassify = "return 0";
    double mAlphaCrit = 0.01;
    // A periodic box (0 none, 1 the bounds of snap A's header, 2 the typed bounds): particles move by
    // the shortest way across its faces and are drawn wrapped into it.
    int mPeriodicType = 0;
    double mBoxLo[3] = {0.0, 0.0, 0.0};
    double mBoxHi[3] = {1.0, 1.0, 1.0};
    // Product of the active downsizing entries, and the type of the last one.
    int mDownsize = 1;
    int mDownsizeType = 0;

    int mMaterialCount = 0;
    // Number of colour curves; the T coordinate addresses three rows per curve.
    int mCurveCount = 1;
    int mSizeType[kMaterialMax] = {};
    double mSizeFactor[kMaterialMax] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    double mAlpha[kMaterialMax] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    double mEmission[kMaterialMax] = {};
    int mBaseType[kMaterialMax] = {};
    int mColorCurveType[kMaterialMax] = {};
    int mColorCurveIndex[kMaterialMax] = {};
    int mColorCurveDepend[kMaterialMax] = {3, 3, 3, 3, 3, 3, 3, 3, 3, 3};
    double mRange0[kMaterialMax] = {};
    double mRange1[kMaterialMax] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
};
