#include "setup/default_platform.h"

#include <memory>

#include "backends/cairo_render.h"
#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace SOUI {

void InstallDefaultPlatform(SApplication& app) {
  app.SetRenderFactory(std::make_unique<CairoRenderFactory>());
  app.SetLogSink(std::make_unique<QVLogSink>());
}

namespace {
// Registered while the (shared) platform library loads, before any
// application can be constructed.
[[maybe_unused]] const bool kRegistered = (SApplication::SetDefaultSetup(&InstallDefaultPlatform), true);
}  // namespace

}  // namespace SOUI
