// SdlBackend: one real SDL2 window per host window.
//
// The host stays the owner of everything DirectUI: the backend only mirrors
// its placement, visibility and title onto an SDL window, shows its frames
// (copied into the window's framebuffer, which needs no GPU and works under
// Xvfb; after the first frame only the repainted rectangles are sent)
// and turns SDL events into the host's OnMouseEvent/OnKeyEvent calls, the
// same entry points the tests' event generator uses.
//
// Typical use:
//   if (!SdlBackend::Init()) return 1;
//   SApplication app(SApplication::Options{.manual_clock = false});
//   auto sdl = std::make_shared<SdlBackend>();
//   sdl->Install(app);               // native pump + default host backend
//   ... create and show hosts ...
//   sdl->RunMainLoop(app, [] { return false; });
#pragma once

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "soui/hostwnd.h"

namespace SOUI {
class SApplication;
}

class SdlBackend : public SOUI::IHostBackend, public std::enable_shared_from_this<SdlBackend> {
 public:
  // SDL video subsystem. Init prints why and returns false when there is no
  // display to open.
  static bool Init();
  static void Shutdown();

  SdlBackend() = default;
  ~SdlBackend() override;
  SdlBackend(const SdlBackend&) = delete;
  SdlBackend& operator=(const SdlBackend&) = delete;

  // ---- IHostBackend ----
  void OnCreate(SOUI::SHostWnd* host) override;
  void OnDestroy(SOUI::SHostWnd* host) override;
  void OnShow(SOUI::SHostWnd* host, bool show, bool activate) override;
  void OnMove(SOUI::SHostWnd* host, const SOUI::CRect& rc) override;
  void OnTitle(SOUI::SHostWnd* host, const SOUI::SStringW& title) override;
  void OnFrame(SOUI::SHostWnd* host) override;
  // Shows the system cursor of that name (SDL_CreateSystemCursor); unknown
  // names show the arrow.
  void OnCursor(SOUI::SHostWnd* host, const SOUI::SStringW& name) override;
  // SDL_StartTextInput / SDL_StopTextInput as an edit gains or loses focus.
  void OnTextInput(SOUI::SHostWnd* host, bool active) override;
  // SDL_SetTextInputRect at the caret, so that the candidate window of the
  // input method opens beside it.
  void OnTextInputRect(SOUI::SHostWnd* host, const SOUI::CRect& caret) override;

  // Makes the application's nested loops pump SDL events, makes this the
  // backend of every host created afterwards and the system clipboard the
  // application's. The backend must be owned by a
  // shared_ptr.
  void Install(SOUI::SApplication& app);
  // Renders dirty hosts, waits up to max_wait_ms (kWaitForever: until an
  // event comes) for SDL events, delivers all that are queued, and renders
  // again.
  static constexpr uint32_t kWaitForever = UINT32_MAX;
  void PumpEvents(uint32_t max_wait_ms);
  // Pumps events, runs due clock timers and paints until done() is true or
  // the last visible window has gone (after at least one was shown). It
  // sleeps until input arrives or the next clock timer is due, so an idle
  // host costs nothing; done() is asked after every wake-up, so a loop that
  // should end at some time sets a clock timer for it.
  int RunMainLoop(SOUI::SApplication& app, const std::function<bool()>& done);
  // How many times RunMainLoop has woken from its wait.
  uint64_t GetWakeCount() const { return wake_count_; }
  // Repaints every visible host with a non-empty dirty rect.
  void RenderDirtyHosts();

  // The rectangles the last frame sent to the host's window: after the
  // first frame, only what changed.
  std::vector<SOUI::CRect> GetLastPresented(SOUI::SHostWnd* host);
  // Writes what the host's window shows as PNG. False if it has no window.
  bool CaptureWindow(SOUI::SHostWnd* host, const std::string& png_path);

  SDL_Window* GetSdlWindow(SOUI::SHostWnd* host) const;
  SOUI::SHostWnd* HostFromWindowId(uint32_t window_id) const;
  size_t WindowCount() const { return windows_.size(); }

  // Maps an SDL key to its virtual-key code; 0 for keys we do not map.
  static UINT VirtualKeyFromSdl(SDL_Keycode key);

 private:
  struct Native {
    SDL_Window* window = nullptr;
    bool shown = false;
    std::vector<SOUI::CRect> presented;  // what the last present sent
  };
  Native* Find(SOUI::SHostWnd* host);
  // Copies parts of the host's frame (all of it when null) into the window's
  // framebuffer and sends those rectangles to the screen.
  void Present(SOUI::SHostWnd* host, Native& n, const SOUI::SRegion* parts);
  void Dispatch(const SDL_Event& e);
  void DispatchWindowEvent(SOUI::SHostWnd* host, const SDL_WindowEvent& e);
  static UINT MouseFlags(uint32_t button_state);

  std::map<SOUI::SHostWnd*, Native> windows_;
  uint64_t wake_count_ = 0;
  std::map<int, SDL_Cursor*> cursors_;  // by SDL_SystemCursor, made on first use
  bool composing_ = false;              // an input-method composition is showing
  std::map<uint32_t, SOUI::SHostWnd*> by_id_;
};
