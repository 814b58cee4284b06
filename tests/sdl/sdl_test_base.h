// The fixture of the real-window tests: an application on the real clock
// with the SDL backend installed, and helpers that push SDL events and pump
// until something holds. The environment opens SDL once for the binary.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "backends/sdl_backend.h"
#include "soui/sapp.h"

namespace SOUI {
namespace test {

class SdlEnvironment : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_TRUE(SdlBackend::Init()) << "these tests need a display (xvfb-run)"; }
  void TearDown() override { SdlBackend::Shutdown(); }
};

constexpr uint32_t kBoundMs = 5000;

class SdlTestBase : public ::testing::Test {
 protected:
  static SApplication::Options RealClock() {
    SApplication::Options o;
    o.manual_clock = false;
    return o;
  }
  void SetUp() override { sdl_->Install(app_); }
  // Pumps until pred() holds; false after kBoundMs.
  bool PumpUntil(const std::function<bool()>& pred) {
    const uint64_t end = SDL_GetTicks64() + kBoundMs;
    while (!pred()) {
      if (SDL_GetTicks64() > end) return false;
      sdl_->PumpEvents(10);
      app_.GetClock().RunDue();
    }
    return true;
  }
  uint32_t WindowId(SHostWnd* host) { return SDL_GetWindowID(sdl_->GetSdlWindow(host)); }
  static void Push(SDL_Event e) { ASSERT_EQ(SDL_PushEvent(&e), 1) << SDL_GetError(); }
  static void PushButton(uint32_t wid, Uint8 button, bool down, CPoint pt, Uint8 clicks = 1) {
    SDL_Event e{};
    e.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    e.button.windowID = wid;
    e.button.button = button;
    e.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    e.button.clicks = clicks;
    e.button.x = pt.x;
    e.button.y = pt.y;
    Push(e);
  }
  static void PushClick(uint32_t wid, CPoint pt) {
    SDL_Event m{};
    m.type = SDL_MOUSEMOTION;
    m.motion.windowID = wid;
    m.motion.x = pt.x;
    m.motion.y = pt.y;
    Push(m);
    PushButton(wid, SDL_BUTTON_LEFT, true, pt);
    PushButton(wid, SDL_BUTTON_LEFT, false, pt);
  }
  static void PushWindowEvent(uint32_t wid, Uint8 what, int d1 = 0, int d2 = 0) {
    SDL_Event e{};
    e.type = SDL_WINDOWEVENT;
    e.window.windowID = wid;
    e.window.event = what;
    e.window.data1 = d1;
    e.window.data2 = d2;
    Push(e);
  }
  static CPoint Center(SWindow* w) { return w->GetWindowRect().CenterPoint(); }

  SApplication app_{RealClock()};
  std::shared_ptr<SdlBackend> sdl_ = std::make_shared<SdlBackend>();
};

}  // namespace test
}  // namespace SOUI
