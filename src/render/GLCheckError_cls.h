// The error checkpoints of the frame: a GL error is logged with the checkpoint's label and
// rendering goes on.
#pragma once

class GLCheckError_cls {
public:
    // GL thread only. Logs "error = ", the error's name and the label when GL has an error pending.
    static void CheckGLError(const char* strWhere);
    // The name of a glGetError code as logged: "INVALID_ENUM", ..., or "Unknown".
    static const char* GetErrorName(unsigned int code);
};
