#include "qvhost/zoom.h"

#include "soui/sapp.h"

namespace {

int AppZoomPercent() {
  const SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  return app ? app->GetZoom() : 100;
}

}  // namespace

int ZPixel(int px) {
  // floor((px * zoom + 50) / 100) in integers; the division floors for
  // negative values too, so -2 at 125 % gives -2 (half up, not away from 0).
  const int64_t scaled = static_cast<int64_t>(px) * AppZoomPercent() + 50;
  int64_t q = scaled / 100;
  if (scaled % 100 != 0 && scaled < 0) --q;
  return static_cast<int>(q);
}

SOUI::CSize ZSize(const SOUI::CSize& size) { return SOUI::CSize(ZPixel(size.cx), ZPixel(size.cy)); }

double GetAppZoomX() { return AppZoomPercent() / 100.0; }
