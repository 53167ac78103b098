#include "FrameOutput_cls.h"

FrameOutput_cls* GpCFrameOutput = nullptr;
