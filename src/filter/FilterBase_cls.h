// One filter of the post-filter chain: an attribute whose item "Validity=" switches it on and
// off and whose groups are read at the current time in each pass. A concrete filter starts its
// program in BeginPass, between the making of the pass's buffer and the draw of the image into
// it, and stops it in End. GL thread only for the passes; the items and groups are the model's.
#pragma once

#include "Attribute_cls.h"

#include <set>
#include <vector>

class Camera_cls;
class FBO_cls;
class PositionAndDirection_cls;

// What one pass of the chain knows about the frame. Pointers are not owned.
class FilterPass_cls {
public:
    FBO_cls* mpCRunning = nullptr; // the image the pass reads
    const std::vector<float>* mpVPasspartout = nullptr;
    const PositionAndDirection_cls* mpPose = nullptr;
    Camera_cls* mpCCamera = nullptr;
    int mWidth = 0;
    int mHeight = 0;
    double mTime = 0.0;
};

class FilterBase_cls : public Attribute_cls {
public:
    // What a filter does with the frame's depth.
    enum DepthUse_enum { DEPTH_NONE = 0, DEPTH_READ = 1, DEPTH_DRAW = 2 };

    FilterBase_cls(const wxString& strAttributeName, const wxString& strName);
    ~FilterBase_cls() override = default;

    bool IsValid() const { return mCValidity.GetBodyBOOL(); }
    // The passes this filter makes in one frame; 0 skips it.
    virtual int GetIterNum() { return 1; }
    virtual DepthUse_enum GetDepthUse() const { return DEPTH_NONE; }
    // Starts the program of the given pass (nothing bound: the pass copies the image).
    virtual void BeginPass(const FilterPass_cls& pass, int iteration) = 0;
    // Stops the program and unbinds what BeginPass bound beside the image.
    virtual void End();

    // The value of member index of the group at t; fallback when the group is missing or empty.
    double GetValue(const wxString& strGroup, double t, double fallback, size_t index = 0);
    // Adds a group of one member with its first key.
    void AddParam(const wxString& strGroup, const wxString& strMember, double value) {
        AddOneDimParam(strGroup, strMember, value);
    }

    // Binds a texture on unit 1 for the program, unit 0 stays active.
    static void BindUnit1(unsigned int texture);
    // True when a program is bound; otherwise logs once per program name that the filter's pass
    // becomes a plain copy.
    bool CheckProgram(const wxString& strProgram);
    // Forgets which programs were reported (a new chain, a test).
    static void ClearReported() { msSetReported.clear(); }

    ConfItemBOOL_cls mCValidity;

protected:
    bool mbUnit1Bound = false;

private:
    static inline std::set<wxString> msSetReported;
};
