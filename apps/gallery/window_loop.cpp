#include <cstdio>

#include "gallery.h"

namespace gallery {

int RunInWindow(SOUI::SApplication& app, SOUI::SHostWnd& host) {
  (void)app;
  (void)host;
  std::fprintf(stderr, "qvgallery: this build has no window backend; use --png FILE\n");
  return 1;
}

}  // namespace gallery
