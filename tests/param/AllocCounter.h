// Counts the calls of the global operator new of the test executable, so a test can say that a
// stretch of code allocates nothing.
#pragma once

class AllocCounter {
public:
    static long Count();
};
