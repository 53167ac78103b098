#include "Preference_cls.h"

Preference_cls::Preference_cls() {
    SetTag("Preference");
    // Relative by default: a project folder moved together with its data still opens.
    Add(&mCRelativePath, "RelativePath=", "1");
}
