// Sorts one section mIni .. mFin of the array with std::sort.
#pragma once

#include "ArrayAndIndex_cls.h"
#include "ThreadInstance_cls.h"

class ThreadSortParallel_cls : public ThreadInstance_cls {
public:
    void SetParameters(ArrayAndIndex_cls* data) { mpData = data; }

protected:
    void Work() override;

private:
    ArrayAndIndex_cls* mpData = nullptr; // not owned
};
