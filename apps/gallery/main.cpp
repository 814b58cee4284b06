// The control gallery: every control of the library on one page of cards,
// built from the layouts in apps/gallery/pages (one card per file, in file
// name order). Shown in a real window when a display is available, or
// rendered to a PNG.
//
//   qvgallery [--png FILE] [--zoom 100|125|150|200] [--dark] [--green-rise]
//             [--screenshot FILE] [--exit-after MS]   (window mode, for CI)
//             [--idle-check MS]   (window mode: fails if anything wakes the idle loop)
//   --green-rise renders as a user whose rising values are green.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "gallery.h"
#include "qvhost/config.h"
#include "qvhost/qvlog.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

#ifdef QV_HAVE_LIBRARY
#include "framework/control_classes.h"
#endif

using namespace SOUI;

namespace {

struct Options {
  std::string png;
  int zoom = 100;
  bool dark = false;
  bool green_rise = false;
  gallery::WindowOptions window;
};

Options ParseArgs(int argc, char** argv) {
  Options o;
  for (int i = 1; i < argc; ++i) {
    if (!std::strcmp(argv[i], "--png") && i + 1 < argc) o.png = argv[++i];
    else if (!std::strcmp(argv[i], "--zoom") && i + 1 < argc) o.zoom = std::atoi(argv[++i]);
    else if (!std::strcmp(argv[i], "--dark")) o.dark = true;
    else if (!std::strcmp(argv[i], "--green-rise")) o.green_rise = true;
    else if (!std::strcmp(argv[i], "--screenshot") && i + 1 < argc) o.window.screenshot = argv[++i];
    else if (!std::strcmp(argv[i], "--exit-after") && i + 1 < argc) o.window.exit_after_ms = std::atoi(argv[++i]);
    else if (!std::strcmp(argv[i], "--idle-check") && i + 1 < argc) o.window.idle_check_ms = std::atoi(argv[++i]);
    else std::fprintf(stderr, "qvgallery: ignoring unknown argument %s\n", argv[i]);
  }
  if (o.zoom != 100 && o.zoom != 125 && o.zoom != 150 && o.zoom != 200) o.zoom = 100;
  return o;
}

}  // namespace

int main(int argc, char** argv) {
  Options opt = ParseArgs(argc, argv);
  const char* display = std::getenv("DISPLAY");
  bool to_png = !opt.png.empty() || !display || !*display;

  SApplication::Options app_options;
  app_options.manual_clock = to_png;
  SApplication app(app_options);
  if (!to_png && !gallery::StartWindowBackend(app)) to_png = true;  // no usable display
  if (to_png && opt.png.empty()) opt.png = "qvgallery.png";
  if (!gallery::LoadTheme(app, opt.dark)) return 1;
#ifdef QV_HAVE_LIBRARY
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
#endif
  app.SetZoom(opt.zoom);
  // The user's rise/fall convention, as the host would have loaded it.
  if (opt.green_rise) GetUserSettings(app).SetBool(50501, false);

  SHostWnd host;
  if (!host.InitFromXmlText(gallery::BuildLayout(app, to_png))) return 1;
  gallery::InstallPageBehaviour(host);

  if (to_png) {
    host.Create();
    app.GetClock().Advance(1000);  // let entrance animations finish
    if (!host.SaveFramePng(SStringW::FromUtf8(opt.png))) {
      std::fprintf(stderr, "qvgallery: could not write %s\n", opt.png.c_str());
      return 1;
    }
    std::printf("qvgallery: no window shown%s; the gallery was rendered to %s\n",
                display && *display ? "" : " (no display)", opt.png.c_str());
    // A page that logs warnings (unknown tags, missing resources) is broken.
    int warnings = 0;
    for (const QVLogLine& line : QVLogSinkOf(app).Lines()) {
      if (line.level < QV_LOG_WARN) continue;
      std::fprintf(stderr, "qvgallery: %s\n", line.Format().ToUtf8().c_str());
      ++warnings;
    }
    return warnings ? 2 : 0;
  }
  return gallery::RunInWindow(app, host, opt.window);
}
