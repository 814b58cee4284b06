// Zoom scaling of the host application. Pixel constants in control code are
// written at 100 % and pass through ZPixel/ZSize before use. The zoom lives
// in SApplication (GetZoom/SetZoom, in percent); without an application the
// zoom is 100 %.
#pragma once

#include "soui/wtypes.h"

// px scaled by the application zoom, rounded half up (125 %: 2 -> 3, 3 -> 4).
int ZPixel(int px);
// Both extents through ZPixel.
SOUI::CSize ZSize(const SOUI::CSize& size);
// The zoom as a factor: 1.25 at 125 %.
double GetAppZoomX();
