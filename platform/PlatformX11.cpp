// SPDX-License-Identifier: Zlib
#include "platform/Platform.h"

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

#include <memory>

using OpenDisplay = std::unique_ptr<Display, int (*)(Display*)>;

static OpenDisplay openDisplay() {
    return {XOpenDisplay(nullptr), XCloseDisplay};
}

bool Platform::hasDisplay() {
    return openDisplay() != nullptr;
}

Platform::ScreenSize Platform::primaryScreenSize() {
    ScreenSize size;
    const OpenDisplay display = openDisplay();
    if (!display) return size;
    const int screen = DefaultScreen(display.get());
    size = {DisplayWidth(display.get(), screen), DisplayHeight(display.get(), screen)};
    const Window root = RootWindow(display.get(), screen);
    int eventBase = 0;
    int errorBase = 0;
    int major = 0;
    int minor = 0;
    const bool knowsOutputs = XRRQueryExtension(display.get(), &eventBase, &errorBase) &&
                              XRRQueryVersion(display.get(), &major, &minor) &&
                              (major > 1 || (major == 1 && minor >= 3));
    if (!knowsOutputs) return size;
    const std::unique_ptr<XRRScreenResources, void (*)(XRRScreenResources*)> resources(
        XRRGetScreenResourcesCurrent(display.get(), root), XRRFreeScreenResources);
    if (!resources) return size;
    const RROutput primary = XRRGetOutputPrimary(display.get(), root);
    if (primary == None) return size;
    const std::unique_ptr<XRROutputInfo, void (*)(XRROutputInfo*)> output(
        XRRGetOutputInfo(display.get(), resources.get(), primary), XRRFreeOutputInfo);
    if (!output || output->crtc == None) return size;
    const std::unique_ptr<XRRCrtcInfo, void (*)(XRRCrtcInfo*)> area(
        XRRGetCrtcInfo(display.get(), resources.get(), output->crtc), XRRFreeCrtcInfo);
    if (area) size = {static_cast<int>(area->width), static_cast<int>(area->height)};
    return size;
}
