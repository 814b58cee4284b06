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

namespace {

// Runs the loop until ms of the application clock have passed.
void RunFor(SOUI::SApplication& app, int ms) {
  bool up = false;
  const SOUI::SClock::TimerId t = app.GetClock().SetTimer(static_cast<uint32_t>(ms), [&up] { up = true; }, false);
  g_backend->RunMainLoop(app, [&up] { return up; });
  app.GetClock().KillTimer(t);
}

}  // namespace

int RunInWindow(SOUI::SApplication& app, SOUI::SHostWnd& host, const WindowOptions& opt) {
  if (!host.Create()) return 1;
  host.ShowWindow(SOUI::SW_SHOW);
  if (opt.idle_check_ms > 0) {
    RunFor(app, 1000);  // first frames, fades and glides
    const uint64_t before = g_backend->GetWakeCount();
    RunFor(app, opt.idle_check_ms);
    const uint64_t woke = g_backend->GetWakeCount() - before;
    std::printf("qvgallery: %llu wake-up(s) in %d ms while idle (the end of the count is one)\n",
                static_cast<unsigned long long>(woke), opt.idle_check_ms);
    host.DestroyWindow();
    g_backend.reset();
    SdlBackend::Shutdown();
    return woke <= 1 ? 0 : 1;
  }
  // The loop sleeps while nothing happens: the end is a timer of its own.
  bool time_up = false;
  SOUI::SClock::TimerId end_timer = 0;
  if (opt.exit_after_ms > 0) {
    end_timer = app.GetClock().SetTimer(static_cast<uint32_t>(opt.exit_after_ms), [&time_up] { time_up = true; }, false);
  }
  const int rc = g_backend->RunMainLoop(app, [&] { return time_up; });
  if (end_timer) app.GetClock().KillTimer(end_timer);
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
