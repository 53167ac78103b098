// Worker of the key pass: fills the draw order of one range with the element number and the sort
// key of SortType= (view depth, distance or type), the camera in the object's space.
#pragma once

#include "PositionAndDirection_cls.h"
#include "ThreadInstance_cls.h"

class ParticleForRender_cls;

class ThreadSetArrayZ_cls : public ThreadInstance_cls {
public:
    // Not owned: the set outlives the pass.
    void SetParameters(ParticleForRender_cls* pOut, int sortType, const PositionAndDirection_cls& camera);

    // The key of one position, or of a type for SortType= 5.
    static float GetKey(int sortType, const float* p, unsigned char type, const PositionAndDirection_cls& c);

protected:
    void Work() override;

private:
    ParticleForRender_cls* mpCOut = nullptr;
    int mSortType = 0;
    PositionAndDirection_cls mCamera;
};
