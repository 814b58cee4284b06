// The gallery in a real window, through the SDL2 backend.
#include <cstdio>
#include <memory>

#include "backends/sdl_backend.h"
#include "gallery.h"

namespace gallery {
namespace {
std::shared_ptr<SdlBackend> g_backend;
}

bool StartWindowBackend(SOUI::SApplication& app) {
  if (!SdlBackend::Init()) return false;
  g_backend = std::make_shared<SdlBackend>();
  g_backend->Install(app);  // hosts made from now on get real windows
  return true;
}

int RunInWindow(SOUI::SApplication& app, SOUI::SHostWnd& host, const WindowOptions& opt) {
  if (!host.Create()) return 1;
  host.ShowWindow(SOUI::SW_SHOW);
  const uint64_t start = app.GetClock().Now();
  const int rc = g_backend->RunMainLoop(app, [&] {
    return opt.exit_after_ms > 0 && app.GetClock().Now() - start >= static_cast<uint64_t>(opt.exit_after_ms);
  });
  if (!opt.screenshot.empty() && SOUI::IsWindow(host.m_hWnd)) {
    if (!g_backend->CaptureWindow(&host, opt.screenshot)) {
      std::fprintf(stderr, "qvgallery: could not capture the window\n");
      return 1;
    }
    std::printf("qvgallery: window screenshot written to %s\n", opt.screenshot.c_str());
  }
  host.DestroyWindow();
  g_backend.reset();
  SdlBackend::Shutdown();
  return rc;
}

}  // namespace gallery
