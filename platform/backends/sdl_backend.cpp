#include "backends/sdl_backend.h"

#include <cairo.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "backends/cairo_render.h"
#include "soui/sapp.h"

using namespace SOUI;

namespace {

// Decodes one UTF-8 sequence at s[i], advancing i; malformed bytes come out
// as U+FFFD so a bad IME string cannot stall the loop.
uint32_t NextCodePoint(const char* s, size_t len, size_t& i) {
  const unsigned char c = static_cast<unsigned char>(s[i++]);
  int extra = 0;
  uint32_t cp = 0;
  if (c < 0x80) return c;
  if ((c & 0xE0) == 0xC0) {
    extra = 1;
    cp = c & 0x1F;
  } else if ((c & 0xF0) == 0xE0) {
    extra = 2;
    cp = c & 0x0F;
  } else if ((c & 0xF8) == 0xF0) {
    extra = 3;
    cp = c & 0x07;
  } else {
    return 0xFFFD;
  }
  for (int k = 0; k < extra; ++k) {
    if (i >= len || (static_cast<unsigned char>(s[i]) & 0xC0) != 0x80) return 0xFFFD;
    cp = (cp << 6) | (static_cast<unsigned char>(s[i++]) & 0x3F);
  }
  return cp;
}

// The system clipboard through SDL (UTF-8 both ways).
class SdlClipboard : public IClipboard {
 public:
  SStringW GetText() override {
    char* text = SDL_GetClipboardText();
    SStringW out = text ? SStringW::FromUtf8(text) : SStringW();
    SDL_free(text);
    return out;
  }
  void SetText(const SStringW& text) override { SDL_SetClipboardText(text.ToUtf8().c_str()); }
};

int SystemCursorFromName(const SStringW& name) {
  static const struct {
    const wchar_t* name;
    SDL_SystemCursor id;
  } kCursors[] = {
      {L"arrow", SDL_SYSTEM_CURSOR_ARROW},     {L"ibeam", SDL_SYSTEM_CURSOR_IBEAM},
      {L"wait", SDL_SYSTEM_CURSOR_WAIT},       {L"cross", SDL_SYSTEM_CURSOR_CROSSHAIR},
      {L"uparrow", SDL_SYSTEM_CURSOR_ARROW},   {L"size", SDL_SYSTEM_CURSOR_SIZEALL},
      {L"sizeall", SDL_SYSTEM_CURSOR_SIZEALL}, {L"sizenwse", SDL_SYSTEM_CURSOR_SIZENWSE},
      {L"sizenesw", SDL_SYSTEM_CURSOR_SIZENESW}, {L"sizewe", SDL_SYSTEM_CURSOR_SIZEWE},
      {L"sizens", SDL_SYSTEM_CURSOR_SIZENS},   {L"no", SDL_SYSTEM_CURSOR_NO},
      {L"hand", SDL_SYSTEM_CURSOR_HAND},       {L"help", SDL_SYSTEM_CURSOR_ARROW},
  };
  for (const auto& c : kCursors) {
    if (name.CompareNoCase(c.name) == 0) return c.id;
  }
  return SDL_SYSTEM_CURSOR_ARROW;
}

}  // namespace

bool SdlBackend::Init() {
  // Frames go straight into the window's X11 framebuffer (no renderer, no
  // GPU): identical pixels under Xvfb and on a desktop, and only the changed
  // rectangles are sent to the server.
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  // A click on an inactive window is a click, as on Windows.
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  if (SDL_Init(SDL_INIT_VIDEO) != 0) {
    std::fprintf(stderr,
                 "SdlBackend: cannot open a display (%s). Set DISPLAY or run under xvfb-run.\n",
                 SDL_GetError());
    return false;
  }
  return true;
}

void SdlBackend::Shutdown() { SDL_Quit(); }

SdlBackend::~SdlBackend() {
  // After SDL_Quit the windows are already gone.
  const bool sdl_up = SDL_WasInit(SDL_INIT_VIDEO) != 0;
  for (auto& c : cursors_) {
    if (sdl_up) SDL_FreeCursor(c.second);
  }
  for (auto& w : windows_) {
    if (!sdl_up) continue;
    if (w.second.window) SDL_DestroyWindow(w.second.window);
  }
}

SdlBackend::Native* SdlBackend::Find(SHostWnd* host) {
  auto it = windows_.find(host);
  return it == windows_.end() ? nullptr : &it->second;
}

SDL_Window* SdlBackend::GetSdlWindow(SHostWnd* host) const {
  auto it = windows_.find(host);
  return it == windows_.end() ? nullptr : it->second.window;
}

SHostWnd* SdlBackend::HostFromWindowId(uint32_t window_id) const {
  auto it = by_id_.find(window_id);
  return it == by_id_.end() ? nullptr : it->second;
}

// ---- IHostBackend -----------------------------------------------------------

void SdlBackend::OnCreate(SHostWnd* host) {
  if (Find(host)) return;
  Uint32 flags = SDL_WINDOW_HIDDEN;
  if (host->IsPopupWindow()) {
    // A drop-down or menu: no frame, no taskbar entry, above its owner, and
    // (X11) a popup-menu window the window manager neither decorates nor
    // focuses.
    flags |= SDL_WINDOW_POPUP_MENU | SDL_WINDOW_BORDERLESS | SDL_WINDOW_SKIP_TASKBAR | SDL_WINDOW_ALWAYS_ON_TOP;
  } else {
    if (host->GetHostAttr().resizable) flags |= SDL_WINDOW_RESIZABLE;
    if (host->GetHostAttr().tool_window) flags |= SDL_WINDOW_SKIP_TASKBAR;
  }
  const CRect rc = host->GetWindowRect();
  // The host sizes itself right after creation; SDL needs a non-empty window now.
  SDL_Window* win = SDL_CreateWindow(host->GetWindowText().ToUtf8().c_str(), rc.left, rc.top,
                                     std::max<int>(rc.Width(), 1), std::max<int>(rc.Height(), 1), flags);
  if (!win) {
    std::fprintf(stderr, "SdlBackend: SDL_CreateWindow failed: %s\n", SDL_GetError());
    return;
  }
  Native n;
  n.window = win;
  windows_[host] = n;
  by_id_[SDL_GetWindowID(win)] = host;
}

void SdlBackend::OnDestroy(SHostWnd* host) {
  Native* n = Find(host);
  if (!n) return;
  by_id_.erase(SDL_GetWindowID(n->window));
  SDL_DestroyWindow(n->window);
  windows_.erase(host);
}

void SdlBackend::OnShow(SHostWnd* host, bool show, bool activate) {
  Native* n = Find(host);
  if (!n) return;
  n->shown = show;
  if (!show) {
    SDL_HideWindow(n->window);
    return;
  }
  // Keep owned windows (dialogs) above their owner, as Win32 does; popups
  // are always on top already.
  SHostWnd* owner = host->IsPopupWindow() ? nullptr : HostFromHwnd(host->GetOwner());
  if (owner) {
    if (Native* o = Find(owner)) SDL_SetWindowModalFor(n->window, o->window);
  }
  // Popups and tooltips must not take focus from the window they belong to.
  if (!activate) SDL_SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "1");
  SDL_ShowWindow(n->window);
  if (!activate) SDL_SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "0");
  else SDL_RaiseWindow(n->window);
  Present(host, *n, nullptr);
}

void SdlBackend::OnMove(SHostWnd* host, const CRect& rc) {
  Native* n = Find(host);
  if (!n) return;
  int x = 0, y = 0, w = 0, h = 0;
  SDL_GetWindowPosition(n->window, &x, &y);
  SDL_GetWindowSize(n->window, &w, &h);
  // Compare first: a resize reported by SDL comes back here through the host.
  if (x != rc.left || y != rc.top) SDL_SetWindowPosition(n->window, rc.left, rc.top);
  const int cw = std::max<int>(rc.Width(), 1), ch = std::max<int>(rc.Height(), 1);
  if (w != cw || h != ch) SDL_SetWindowSize(n->window, cw, ch);
}

void SdlBackend::OnTitle(SHostWnd* host, const SStringW& title) {
  if (Native* n = Find(host)) SDL_SetWindowTitle(n->window, title.ToUtf8().c_str());
}

void SdlBackend::OnFrame(SHostWnd* host) {
  Native* n = Find(host);
  // A hidden window is presented whole when it is shown.
  if (n && n->shown) Present(host, *n, &host->GetPaintedRegion());
}

void SdlBackend::OnCursor(SHostWnd* host, const SStringW& name) {
  if (!Find(host)) return;
  const int id = SystemCursorFromName(name);
  SDL_Cursor*& cursor = cursors_[id];
  if (!cursor) cursor = SDL_CreateSystemCursor(static_cast<SDL_SystemCursor>(id));
  if (cursor) SDL_SetCursor(cursor);
}

void SdlBackend::OnTextInput(SHostWnd* host, bool active) {
  if (!Find(host)) return;
  if (active) {
    SDL_StartTextInput();
  } else {
    SDL_StopTextInput();
    composing_ = false;
  }
}

void SdlBackend::OnTextInputRect(SHostWnd* host, const CRect& caret) {
  Native* n = Find(host);
  if (!n || !n->window) return;
  // SDL wants the rectangle relative to its focused window: its input-method
  // bridges (IBus, Fcitx, XIM) add the window's screen position themselves.
  SDL_Rect rc{caret.left, caret.top, std::max<int>(1, caret.Width()), std::max<int>(1, caret.Height())};
  SDL_SetTextInputRect(&rc);
}

void SdlBackend::Present(SHostWnd* host, Native& n, const SRegion* parts) {
  auto* frame = dynamic_cast<CairoRenderTarget*>(host->GetFrame());
  if (!frame || !frame->Surface() || !n.window) return;
  cairo_surface_t* surface = frame->Surface();
  cairo_surface_flush(surface);
  const int w = cairo_image_surface_get_width(surface), h = cairo_image_surface_get_height(surface);
  SDL_Surface* target = SDL_GetWindowSurface(n.window);
  if (w <= 0 || h <= 0 || !target) return;
  // Cairo's ARGB32 is ARGB8888 in native order; copied as is, premultiplied
  // colour over black is what an opaque window shows.
  SDL_Surface* source = SDL_CreateRGBSurfaceWithFormatFrom(cairo_image_surface_get_data(surface), w, h, 32,
                                                           cairo_image_surface_get_stride(surface),
                                                           SDL_PIXELFORMAT_ARGB8888);
  if (!source) {
    std::fprintf(stderr, "SdlBackend: wrapping the frame failed: %s\n", SDL_GetError());
    return;
  }
  SDL_SetSurfaceBlendMode(source, SDL_BLENDMODE_NONE);
  // While a resize is on its way the window and the frame may differ in size.
  const CRect bounds(0, 0, std::min(w, target->w), std::min(h, target->h));
  std::vector<SDL_Rect> rects;
  const auto add = [&](const CRect& rc) {
    const CRect part = rc & bounds;
    if (!part.IsRectEmpty()) rects.push_back(SDL_Rect{part.left, part.top, part.Width(), part.Height()});
  };
  if (parts) {
    for (const CRect& rc : parts->GetRects()) add(rc);
  } else {
    add(bounds);
  }
  n.presented.clear();
  for (const SDL_Rect& r : rects) {
    SDL_Rect dst = r;  // SDL_BlitSurface writes the clipped rectangle back
    SDL_Rect src = r;
    SDL_BlitSurface(source, &src, target, &dst);
    n.presented.emplace_back(r.x, r.y, r.x + r.w, r.y + r.h);
  }
  SDL_FreeSurface(source);
  if (!rects.empty()) SDL_UpdateWindowSurfaceRects(n.window, rects.data(), static_cast<int>(rects.size()));
}

std::vector<CRect> SdlBackend::GetLastPresented(SHostWnd* host) {
  Native* n = Find(host);
  return n ? n->presented : std::vector<CRect>();
}

// ---- loop ---------------------------------------------------------------------

void SdlBackend::Install(SApplication& app) {
  std::weak_ptr<SdlBackend> weak = weak_from_this();
  app.SetNativePump([weak](uint32_t max_wait_ms) {
    if (auto self = weak.lock()) self->PumpEvents(max_wait_ms);
  });
  if (auto self = weak.lock()) app.SetDefaultHostBackend(self);
  app.SetClipboard(std::make_unique<SdlClipboard>());
  // Drop-downs stay on the display of the window they belong to.
  app.SetWorkAreaProvider([weak](SHostWnd* near) {
    auto self = weak.lock();
    SDL_Window* win = self && near ? self->GetSdlWindow(near) : nullptr;
    const int display = win ? SDL_GetWindowDisplayIndex(win) : 0;
    SDL_Rect r{};
    if (SDL_GetDisplayUsableBounds(display < 0 ? 0 : display, &r) != 0) return CRect();
    return CRect(r.x, r.y, r.x + r.w, r.y + r.h);
  });
}

void SdlBackend::RenderDirtyHosts() {
  std::vector<SHostWnd*> hosts;
  for (auto& w : windows_) hosts.push_back(w.first);
  for (SHostWnd* host : hosts) {
    // Painting one host may destroy another (a handler closing a popup).
    if (!Find(host) || !host->IsWindowVisible() || host->GetDirtyRegion().IsEmpty()) continue;
    host->Render();
  }
}

void SdlBackend::PumpEvents(uint32_t max_wait_ms) {
  RenderDirtyHosts();
  SDL_Event e;
  const int got = max_wait_ms == 0             ? SDL_PollEvent(&e)
                  : max_wait_ms == kWaitForever ? SDL_WaitEvent(&e)
                                                : SDL_WaitEventTimeout(&e, static_cast<int>(std::min<uint32_t>(
                                                                               max_wait_ms, INT32_MAX)));
  if (got) {
    Dispatch(e);
    while (SDL_PollEvent(&e)) Dispatch(e);
  }
  // Popups closed by that input go now that it has been handled.
  if (SApplication* app = SApplication::getSingletonPtr()) app->DeletePendingHosts();
  RenderDirtyHosts();
}

int SdlBackend::RunMainLoop(SApplication& app, const std::function<bool()>& done) {
  bool had_visible = false;
  while (!done()) {
    bool any_visible = false;
    for (auto& w : windows_) any_visible = any_visible || w.first->IsWindowVisible();
    if (any_visible) had_visible = true;
    else if (had_visible) break;
    SClock& clock = app.GetClock();
    const uint64_t now = clock.Now(), next = clock.NextDue();
    const uint64_t wait = next == UINT64_MAX ? kWaitForever : (next > now ? next - now : 0);
    PumpEvents(static_cast<uint32_t>(std::min<uint64_t>(wait, kWaitForever)));
    ++wake_count_;
    clock.RunDue();
  }
  RenderDirtyHosts();
  return 0;
}

// ---- event translation -----------------------------------------------------------

namespace {
void SyncModifierKeys(uint16_t mod) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app) return;
  app->SetKeyDown(VK_SHIFT, (mod & KMOD_SHIFT) != 0);
  app->SetKeyDown(VK_CONTROL, (mod & KMOD_CTRL) != 0);
  app->SetKeyDown(VK_MENU, (mod & KMOD_ALT) != 0);
}
}  // namespace

UINT SdlBackend::MouseFlags(uint32_t button_state) {
  UINT flags = 0;
  if (button_state & SDL_BUTTON_LMASK) flags |= MK_LBUTTON;
  if (button_state & SDL_BUTTON_RMASK) flags |= MK_RBUTTON;
  if (button_state & SDL_BUTTON_MMASK) flags |= MK_MBUTTON;
  const SDL_Keymod mod = SDL_GetModState();
  if (mod & KMOD_SHIFT) flags |= MK_SHIFT;
  if (mod & KMOD_CTRL) flags |= MK_CONTROL;
  return flags;
}

UINT SdlBackend::VirtualKeyFromSdl(SDL_Keycode key) {
  // Letters map to their upper case, digits to themselves, as virtual keys do.
  if (key >= SDLK_a && key <= SDLK_z) return static_cast<UINT>('A' + (key - SDLK_a));
  if (key >= SDLK_0 && key <= SDLK_9) return static_cast<UINT>('0' + (key - SDLK_0));
  switch (key) {
    case SDLK_RETURN:
    case SDLK_KP_ENTER: return VK_RETURN;
    case SDLK_ESCAPE: return VK_ESCAPE;
    case SDLK_SPACE: return VK_SPACE;
    case SDLK_TAB: return VK_TAB;
    case SDLK_BACKSPACE: return VK_BACK;
    case SDLK_LEFT: return VK_LEFT;
    case SDLK_RIGHT: return VK_RIGHT;
    case SDLK_UP: return VK_UP;
    case SDLK_DOWN: return VK_DOWN;
    case SDLK_HOME: return VK_HOME;
    case SDLK_END: return VK_END;
    case SDLK_DELETE: return VK_DELETE;
    case SDLK_INSERT: return VK_INSERT;
    case SDLK_PAGEUP: return VK_PRIOR;
    case SDLK_PAGEDOWN: return VK_NEXT;
    case SDLK_F4: return VK_F4;
    case SDLK_LALT:
    case SDLK_RALT: return VK_MENU;
    case SDLK_LSHIFT:
    case SDLK_RSHIFT: return VK_SHIFT;
    case SDLK_LCTRL:
    case SDLK_RCTRL: return VK_CONTROL;
    default: return 0;
  }
}

void SdlBackend::Dispatch(const SDL_Event& e) {
  switch (e.type) {
    case SDL_MOUSEMOTION: {
      if (SHostWnd* host = HostFromWindowId(e.motion.windowID)) {
        host->OnMouseEvent(WM_MOUSEMOVE, MouseFlags(e.motion.state), CPoint(e.motion.x, e.motion.y));
      }
      break;
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
      SHostWnd* host = HostFromWindowId(e.button.windowID);
      if (!host) break;
      const bool down = e.type == SDL_MOUSEBUTTONDOWN;
      UINT msg = 0, mk = 0;
      switch (e.button.button) {
        case SDL_BUTTON_LEFT:
          // Windows reports the second press of a double click as DBLCLK.
          msg = down ? (e.button.clicks == 2 ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN) : WM_LBUTTONUP;
          mk = MK_LBUTTON;
          break;
        case SDL_BUTTON_RIGHT:
          msg = down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
          mk = MK_RBUTTON;
          break;
        case SDL_BUTTON_MIDDLE:
          msg = down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
          mk = MK_MBUTTON;
          break;
        default:
          return;
      }
      // Injected events leave SDL's own button state alone: add/remove ours.
      UINT flags = MouseFlags(SDL_GetMouseState(nullptr, nullptr));
      flags = down ? (flags | mk) : (flags & ~mk);
      host->OnMouseEvent(msg, flags, CPoint(e.button.x, e.button.y));
      break;
    }
    case SDL_MOUSEWHEEL: {
      SHostWnd* host = HostFromWindowId(e.wheel.windowID);
      if (!host || e.wheel.y == 0) break;
      int notches = e.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -e.wheel.y : e.wheel.y;
      notches = std::clamp(notches, -273, 273);  // keeps delta within a short
      host->OnMouseEvent(WM_MOUSEWHEEL, MouseFlags(SDL_GetMouseState(nullptr, nullptr)),
                         CPoint(e.wheel.mouseX, e.wheel.mouseY), static_cast<short>(notches * 120));
      break;
    }
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
      SHostWnd* host = HostFromWindowId(e.key.windowID);
      const UINT vk = VirtualKeyFromSdl(e.key.keysym.sym);
      if (!host || !vk) break;
      const bool down = e.type == SDL_KEYDOWN;
      // Modifiers as SDL saw them (also for injected events, whose modifier
      // keys may never have been pressed).
      if (vk != VK_SHIFT && vk != VK_CONTROL && vk != VK_MENU) {
        SyncModifierKeys(e.key.keysym.mod);
      }
      // High word of a key message's lParam: previous state, transition, Alt.
      UINT flags = down ? (e.key.repeat ? 0x4000u : 0u) : 0xC000u;
      if (e.key.keysym.mod & KMOD_ALT) flags |= 0x2000;
      host->OnKeyEvent(down ? WM_KEYDOWN : WM_KEYUP, vk, flags);
      // SDL sends no text for these keys; Windows' TranslateMessage sends
      // their control characters, which edits rely on.
      if (down && !(e.key.keysym.mod & (KMOD_CTRL | KMOD_ALT))) {
        UINT ch = 0;
        if (vk == VK_RETURN) ch = '\r';
        else if (vk == VK_BACK) ch = 0x08;
        else if (vk == VK_TAB) ch = '\t';
        else if (vk == VK_ESCAPE) ch = 0x1B;
        // The key handler may have closed the window.
        if (ch && (host = HostFromWindowId(e.key.windowID))) host->OnKeyEvent(WM_CHAR, ch, flags);
      }
      break;
    }
    case SDL_TEXTEDITING: {
      SHostWnd* host = HostFromWindowId(e.edit.windowID);
      if (!host) break;
      const SStringW text = SStringW::FromUtf8(e.edit.text);
      composing_ = !text.IsEmpty();
      host->OnImeComposition(text, e.edit.start);
      break;
    }
    case SDL_TEXTINPUT: {
      const char* text = e.text.text;
      const size_t len = SDL_strlen(text);
      // What an input method commits after a composition is one insertion;
      // other text (typed keys) comes as character messages, which edits
      // and their filters handle one by one.
      if (composing_) {
        composing_ = false;
        if (SHostWnd* host = HostFromWindowId(e.text.windowID)) host->OnImeCommit(SStringW::FromUtf8(text));
        break;
      }
      for (size_t i = 0; i < len;) {
        const uint32_t cp = NextCodePoint(text, len, i);
        SHostWnd* host = HostFromWindowId(e.text.windowID);
        if (!host) break;
        host->OnKeyEvent(WM_CHAR, cp, 0);
      }
      break;
    }
    case SDL_WINDOWEVENT: {
      if (SHostWnd* host = HostFromWindowId(e.window.windowID)) DispatchWindowEvent(host, e.window);
      break;
    }
    default:
      break;
  }
}

void SdlBackend::DispatchWindowEvent(SHostWnd* host, const SDL_WindowEvent& e) {
  switch (e.event) {
    case SDL_WINDOWEVENT_CLOSE:
      host->OnClose();
      break;
    case SDL_WINDOWEVENT_RESIZED: {
      // Only changes made outside our calls (user, window manager) arrive here.
      const CRect rc = host->GetWindowRect();
      if (e.data1 != rc.Width() || e.data2 != rc.Height()) {
        host->SetWindowPos(nullptr, 0, 0, e.data1, e.data2, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
      }
      break;
    }
    case SDL_WINDOWEVENT_MOVED: {
      const CRect rc = host->GetWindowRect();
      if (e.data1 != rc.left || e.data2 != rc.top) {
        host->SetWindowPos(nullptr, e.data1, e.data2, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
      }
      break;
    }
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      if (Native* n = Find(host)) {
        if (n->shown) Present(host, *n, nullptr);
      }
      break;
    case SDL_WINDOWEVENT_LEAVE:
      host->OnMouseEvent(WM_MOUSELEAVE, 0, CPoint(-1, -1));
      break;
    // Activation as the window system sees it: losing it to another
    // application's window closes this application's drop-downs.
    case SDL_WINDOWEVENT_FOCUS_GAINED:
      host->OnNativeActivate(true);
      break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
      host->OnNativeActivate(false);
      break;
    default:
      break;
  }
}

// ---- capture --------------------------------------------------------------------

bool SdlBackend::CaptureWindow(SHostWnd* host, const std::string& png_path) {
  Native* n = Find(host);
  if (!n) return false;
  SDL_Surface* shown = SDL_GetWindowSurface(n->window);
  if (!shown || shown->w <= 0 || shown->h <= 0) return false;
  const int w = shown->w, h = shown->h;
  cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_RGB24, w, h);
  if (cairo_surface_status(out) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(out);
    return false;
  }
  cairo_surface_flush(out);
  // RGB24 is ARGB8888 with the alpha byte ignored.
  if (SDL_MUSTLOCK(shown)) SDL_LockSurface(shown);
  const bool read = SDL_ConvertPixels(w, h, shown->format->format, shown->pixels, shown->pitch,
                                      SDL_PIXELFORMAT_ARGB8888, cairo_image_surface_get_data(out),
                                      cairo_image_surface_get_stride(out)) == 0;
  if (SDL_MUSTLOCK(shown)) SDL_UnlockSurface(shown);
  cairo_surface_mark_dirty(out);
  const bool ok = read && cairo_surface_write_to_png(out, png_path.c_str()) == CAIRO_STATUS_SUCCESS;
  if (!read) std::fprintf(stderr, "SdlBackend: reading the window failed: %s\n", SDL_GetError());
  cairo_surface_destroy(out);
  return ok;
}
