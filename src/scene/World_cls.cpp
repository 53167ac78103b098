#include "World_cls.h"

#include "FogProp_cls.h"

World_cls::World_cls(ParentObj_cls* pParent) : SceneObj_cls(pParent, "World_cls") {
    mDrawOrder = 3;
    Add(&mCValid, "Valid=", "1", "VIEW3D::OUTLINER");
    mpCFogProp = new FogProp_cls();
    AddOwnAttribute(mpCFogProp);
}

int World_cls::GetFogType() const {
    return mpCFogProp->GetFogType();
}

bool World_cls::IsFogOverwrite() const {
    return mpCFogProp->IsFogOverwrite();
}

std::vector<double> World_cls::GetFogColor(double t) {
    return mpCFogProp->GetFogColor(t);
}
