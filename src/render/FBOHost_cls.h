// The owner of a chain of nested frame buffers (the GL canvas): the head of the chain is the
// buffer drawn into now. FBO_cls::Begin links the previous head as its outer buffer, End restores it.
#pragma once

class FBO_cls;

class FBOHost_cls {
public:
    virtual ~FBOHost_cls() = default;
    // Not owned: the buffers belong to whoever made them.
    FBO_cls* mpCFBOCurrent = nullptr;
};
