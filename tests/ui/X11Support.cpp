#include "X11Support.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

// Windows with the name prefix, searched over the whole tree below the root.
void FindWindows(Display* pX, Window win, const std::string& strPrefix, std::vector<Window>& vFound) {
    char* pName = nullptr;
    if (XFetchName(pX, win, &pName) && pName) {
        if (strncmp(pName, strPrefix.c_str(), strPrefix.size()) == 0)
            vFound.push_back(win);
        XFree(pName);
    }
    Window root, parent;
    Window* pChildren = nullptr;
    unsigned int count = 0;
    if (!XQueryTree(pX, win, &root, &parent, &pChildren, &count))
        return;
    for (unsigned int i = 0; i < count; ++i)
        FindWindows(pX, pChildren[i], strPrefix, vFound);
    if (pChildren)
        XFree(pChildren);
}

} // namespace

namespace X11Support {

bool IsDisplayReachable() {
    const char* pDisplay = getenv("DISPLAY");
    if (!pDisplay || !*pDisplay)
        return false;
    Display* pX = XOpenDisplay(nullptr);
    if (!pX)
        return false;
    XCloseDisplay(pX);
    return true;
}

int CountWindows(const std::string& strNamePrefix) {
    Display* pX = XOpenDisplay(nullptr);
    if (!pX)
        return 0;
    std::vector<Window> vFound;
    FindWindows(pX, DefaultRootWindow(pX), strNamePrefix, vFound);
    int mapped = 0;
    for (Window win : vFound) {
        XWindowAttributes attr;
        if (XGetWindowAttributes(pX, win, &attr) && attr.map_state == IsViewable)
            ++mapped;
    }
    XCloseDisplay(pX);
    return mapped;
}

int AskWindowsToClose(const std::string& strNamePrefix) {
    Display* pX = XOpenDisplay(nullptr);
    if (!pX)
        return 0;
    std::vector<Window> vFound;
    FindWindows(pX, DefaultRootWindow(pX), strNamePrefix, vFound);
    Atom atomProtocols = XInternAtom(pX, "WM_PROTOCOLS", False);
    Atom atomDelete = XInternAtom(pX, "WM_DELETE_WINDOW", False);
    for (Window win : vFound) {
        XEvent event;
        memset(&event, 0, sizeof event);
        event.xclient.type = ClientMessage;
        event.xclient.window = win;
        event.xclient.message_type = atomProtocols;
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(atomDelete);
        event.xclient.data.l[1] = CurrentTime;
        XSendEvent(pX, win, False, NoEventMask, &event);
    }
    XFlush(pX);
    XCloseDisplay(pX);
    return static_cast<int>(vFound.size());
}

} // namespace X11Support
