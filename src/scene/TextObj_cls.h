// A text in the scene: the text and its font in the built-in TextProp_cls ("TextProp"), the
// colour in its material. Draw order 1. Main thread only.
#pragma once

#include "SceneObj_cls.h"

class TextProp_cls;

class TextObj_cls : public SceneObj_cls {
public:
    explicit TextObj_cls(ParentObj_cls* pParent);

    TextProp_cls* GetPCTextProp() { return mpCTextProp; }

    ConfItemBOOL_cls mCValid;

private:
    TextProp_cls* mpCTextProp = nullptr; // owned by the modifier list
};
