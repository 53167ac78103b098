// Plain X11 calls for the window tests, kept apart so that Xlib's macros meet no toolkit header.
#pragma once

#include <string>

namespace X11Support {

// A display is named and can be opened.
bool IsDisplayReachable();
// Asks every top-level window whose name starts with the prefix to close, as a window manager
// does (WM_DELETE_WINDOW). Returns how many windows were asked.
int AskWindowsToClose(const std::string& strNamePrefix);
// How many top-level windows with that name prefix are mapped.
int CountWindows(const std::string& strNamePrefix);

} // namespace X11Support
