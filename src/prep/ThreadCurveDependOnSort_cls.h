// Worker that fills the colour coordinate S of elements whose material takes its colour from the
// depth ("Sort index"): S is the element's key over the curve's range. Runs over a range of the
// sorted order; each element appears once in it, so ranges write disjoint elements.
#pragma once

#include "ThreadInstance_cls.h"

class ParticleForRender_cls;
class PrepareSetting_cls;

class ThreadCurveDependOnSort_cls : public ThreadInstance_cls {
public:
    // Not owned: both outlive the pass.
    void SetParameters(ParticleForRender_cls* pOut, const PrepareSetting_cls* pSetting);

protected:
    void Work() override;

private:
    ParticleForRender_cls* mpCOut = nullptr;
    const PrepareSetting_cls* mpCSetting = nullptr;
};
