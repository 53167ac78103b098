// "StreamFiltering_cls": keeps or drops stream lines by their index in the file. FilteringType=
// 0 keeps only the listed lines, 1 drops them; FilteringString= lists indices and ranges split by
// blanks or commas ("0 3 10-20"); an empty list changes nothing. No executor: the stream-line
// object copies the keys into its preparation settings. Main thread only.
#pragma once

#include "ModifierBase_cls.h"

class StreamFiltering_cls : public ModifierBase_cls {
public:
    explicit StreamFiltering_cls(const wxString& strName);

    ConfItemINT_cls mCFilteringType;
    ConfItemSTR_cls mCFilteringString;
};
