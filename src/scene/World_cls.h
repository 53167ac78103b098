// The world: the scene-wide fog (FogProp_cls "Fog", written in its own block) and a switch.
// Draw order 3. Main thread only.
#pragma once

#include "SceneObj_cls.h"

#include <vector>

class FogProp_cls;

class World_cls : public SceneObj_cls {
public:
    explicit World_cls(ParentObj_cls* pParent);

    FogProp_cls* GetPCFogProp() { return mpCFogProp; }
    int GetFogType() const;
    bool IsFogOverwrite() const;
    std::vector<double> GetFogColor(double t);

    ConfItemBOOL_cls mCValid;

private:
    FogProp_cls* mpCFogProp = nullptr; // owned by the object's own attributes
};
