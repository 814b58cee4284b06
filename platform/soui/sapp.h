// SApplication: the one application object. It owns the class factory, the
// resources, the clock and the zoom, and holds what the layers around the
// toolkit plug in: the render factory, the log sink and the host's services
// (message dispatch, user settings), seen here only through interfaces.
// Tests create and destroy it freely; nothing global survives it.
//
// A new application runs the default setup hook, which the platform library
// registers as it loads (setup/default_platform.h: cairo rendering and the
// host's log), so constructing one is all tests and the demo need.
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "soui/render.h"
#include "soui/resources.h"
#include "soui/slog.h"
#include "soui/sobject.h"
#include "soui/timeline.h"

namespace SOUI {

class SHostWnd;
class IHostBackend;
class IHostInputHook;

// A service the application keeps for a layer above the toolkit (the host's
// message dispatch, its user settings). The toolkit never looks inside.
class IAppService {
 public:
  virtual ~IAppService() = default;
};

// Plain-text clipboard. The application starts with an in-process one
// (tests, headless hosts); a window backend plugs in the system's.
class IClipboard {
 public:
  virtual ~IClipboard() = default;
  virtual SStringW GetText() = 0;
  virtual void SetText(const SStringW& text) = 0;
};

namespace internal {
struct StyleEdits;
}

class SApplication {
 public:
  struct Options {
    bool manual_clock = true;  // tests: time moves only when advanced
    uint32_t frame_ms = 16;    // timeline frame interval
  };
  SApplication();
  explicit SApplication(const Options& options);
  ~SApplication();
  SApplication(const SApplication&) = delete;
  SApplication& operator=(const SApplication&) = delete;

  static SApplication* getSingletonPtr();
  static SApplication& getSingleton();

  SObjectFactory& GetFactory() { return factory_; }
  SWindow* CreateWindowByName(const wchar_t* tag) const;
  SResProvider& GetResProvider() { return res_; }
  SClock& GetClock() { return clock_; }
  uint32_t GetFrameInterval() const { return options_.frame_ms; }

  // ---- what plugs in ----
  // Creates render targets and decodes images; null: nothing is painted.
  IRenderFactory* GetRenderFactory() const { return render_factory_.get(); }
  // Replaces the factory (and drops the measuring target made by the old one).
  void SetRenderFactory(std::unique_ptr<IRenderFactory> factory);
  // Where log lines go (soui/slog.h); null: stderr.
  ILogSink* GetLogSink() const { return log_.get(); }
  void SetLogSink(std::unique_ptr<ILogSink> sink) { log_ = std::move(sink); }
  // Services by key; null when absent. Setting a key again replaces the
  // service. Services go first when the application does, newest first.
  IAppService* GetService(const char* key) const;
  void SetService(const char* key, std::unique_ptr<IAppService> service);
  // Runs for every application constructed from now on, at the end of its
  // constructor; null for none.
  using SetupHook = void (*)(SApplication& app);
  static void SetDefaultSetup(SetupHook hook);
  static SetupHook GetDefaultSetup();

  // Loads a layout/XML resource ("LAYOUT", "name") into doc.
  BOOL LoadXmlDocment(pugi::xml_document& doc, const SStringW& name, const SStringW& type);
  BOOL LoadXmlDocment(pugi::xml_document& doc, const SStringW& res_id);  // "TYPE:name"
  // Translates text for a context; the identity unless a translation exists.
  SStringW tr(const SStringW& text, const SStringW& ctx) const;
  // The translation of text into *out, or false (and *out untouched) when
  // there is none: a caller keeping the text itself then copies nothing.
  bool Translate(const SStringW& text, const SStringW& ctx, SStringW* out) const;

  // Application zoom, in percent (100, 125, 150, 200). Changing it rescales
  // every host window and re-lays it out.
  int GetZoom() const { return zoom_; }
  void SetZoom(int percent);

  // Host windows register themselves so that zoom and theme changes reach them.
  void AddHost(SHostWnd* host);
  void RemoveHost(SHostWnd* host);
  const std::vector<SHostWnd*>& GetHosts() const { return hosts_; }
  // Tells every host that resources changed (theme switch): repaint all.
  void NotifyThemeChanged();

  // ---- hosts among themselves ----
  // The active host (null: none of ours). Open popups hear every change,
  // and every report that nobody of ours is active.
  SHostWnd* GetActiveHost() const { return active_; }
  void SetActiveHost(SHostWnd* host);
  // Z order, bottom to top, of the hosts that have been shown; owned hosts
  // stay above their owner.
  void BringHostToTop(SHostWnd* host);
  const std::vector<SHostWnd*>& GetZOrder() const { return z_order_; }
  void DropFromZOrder(SHostWnd* host);
  // The topmost visible host whose window holds pt (screen); null if none.
  SHostWnd* HostFromScreenPoint(CPoint pt) const;
  // The usable screen area near a host (taskbars excluded). Offscreen it is
  // the virtual screen, 0,0,1920,1080 unless set; a window backend installs
  // a provider that asks the display the host is on.
  CRect GetWorkArea(SHostWnd* near) const;
  void SetScreenRect(const CRect& rc) { screen_ = rc; }
  void SetWorkAreaProvider(std::function<CRect(SHostWnd*)> fn) { work_area_ = std::move(fn); }

  // Open popups watching input (newest last); see IHostInputHook.
  void AddInputHook(IHostInputHook* hook);
  void RemoveInputHook(IHostInputHook* hook);
  // Calls fn for each hook, newest first, until it returns true; hooks
  // removed meanwhile are skipped.
  bool ForEachInputHook(const std::function<bool(IHostInputHook*)>& fn);
  bool HasInputHooks() const { return !hooks_.empty(); }

  // Hosts that own themselves (drop-downs): the application deletes them
  // when they are done, never in the middle of their own input handling,
  // and with itself.
  void AdoptHost(SHostWnd* host);
  // Deletes an adopted host later: when input dispatch returns to the top,
  // on the next pass of a native or modal loop, or with the application.
  void DeleteHostLater(SHostWnd* host);
  // Input dispatch nesting (hosts count themselves in and out); deferred
  // deletions happen when it returns to zero.
  void EnterDispatch() { ++dispatch_depth_; }
  void LeaveDispatch();
  // Deletes what DeleteHostLater collected, unless input is being dispatched.
  void DeletePendingHosts();

  // Native handles: unique for the life of the application, never reused.
  HWND RegisterHwnd(SHostWnd* host);
  // Also tells the handle listeners that the window is gone.
  void UnregisterHwnd(HWND hwnd);
  SHostWnd* HostFromHwnd(HWND hwnd) const;
  // Registries keyed by handle (the toasts of an owner) hear when a window
  // is destroyed, so that no entry outlives its window. A listener may
  // destroy other hosts or remove listeners while it runs. Returns a cookie.
  int AddHwndDestroyedListener(std::function<void(HWND)> fn);
  void RemoveHwndDestroyedListener(int cookie);

  // Runs a nested message loop until done() is true. A real backend's pump
  // delivers native input meanwhile; on a manual clock time jumps to the next
  // due timer. Returns false when nothing could ever make done() true.
  bool RunModalLoop(const std::function<bool()>& done);
  // Installed by a window backend: waits up to max_wait_ms for native events
  // and delivers them.
  void SetNativePump(std::function<void(uint32_t max_wait_ms)> pump) { native_pump_ = std::move(pump); }
  // The backend every host created from now on starts with (null: offscreen),
  // so that hosts the library creates itself (dialogs, toasts) get real windows.
  void SetDefaultHostBackend(std::shared_ptr<IHostBackend> backend) { default_backend_ = std::move(backend); }
  const std::shared_ptr<IHostBackend>& GetDefaultHostBackend() const { return default_backend_; }

  // The clipboard (never null); SetClipboard(nullptr) restores the in-process one.
  IClipboard& GetClipboard() { return *clipboard_; }
  void SetClipboard(std::unique_ptr<IClipboard> clipboard);

  // Keyboard state as the hosts have seen it (key down/up through
  // SHostWnd::OnKeyEvent); read with the Win32 GetKeyState.
  bool IsKeyDown(UINT vk) const { return vk < 256 && key_down_[vk]; }
  void SetKeyDown(UINT vk, bool down);

  // Turns a text style code (the "qvstyle" of a rich-text qv_text run) into a
  // font description and a colour value or reference. The controls library
  // installs it, since the style tables are its own; false: unknown code.
  using TextStyleResolver =
      std::function<bool(const SStringW& code, SStringW* font, SStringW* color)>;
  void SetTextStyleResolver(TextStyleResolver r) { text_style_resolver_ = std::move(r); }
  const TextStyleResolver& GetTextStyleResolver() const { return text_style_resolver_; }

  // The target used to measure text for layout (created on first use). Tests
  // may install a deterministic one.
  IRenderTarget* GetMeasureTarget();
  void SetMeasureTarget(std::unique_ptr<IRenderTarget> rt) { measure_target_ = std::move(rt); }

  // True the first time a key is seen: diagnostics about one place in a
  // layout (a tag, a name, an attribute) are logged once however often the
  // layout is loaded. Bounded: past kMaxLoggedPlaces everything is new again.
  static constexpr size_t kMaxLoggedPlaces = 4096;
  bool FirstTimeAt(const std::wstring& place);

 private:
  friend class SWindow;
  TextStyleResolver text_style_resolver_;
  std::set<std::wstring> logged_places_;
  Options options_;
  SObjectFactory factory_;
  SResProvider res_;
  std::unique_ptr<IRenderFactory> render_factory_;
  SClock clock_;
  std::vector<std::pair<std::string, std::unique_ptr<IAppService>>> services_;
  std::unique_ptr<ILogSink> log_;
  int zoom_ = 100;
  std::vector<SHostWnd*> hosts_;
  std::map<HWND, SHostWnd*> hwnds_;
  std::map<int, std::function<void(HWND)>> hwnd_listeners_;
  int next_hwnd_listener_ = 0;
  uintptr_t next_hwnd_ = 0x10000;
  std::unique_ptr<IRenderTarget> measure_target_;
  std::function<void(uint32_t)> native_pump_;
  std::shared_ptr<IHostBackend> default_backend_;
  std::unique_ptr<IClipboard> clipboard_;
  bool key_down_[256] = {};
  SHostWnd* active_ = nullptr;
  std::vector<SHostWnd*> z_order_;
  CRect screen_{0, 0, 1920, 1080};
  std::function<CRect(SHostWnd*)> work_area_;
  std::vector<IHostInputHook*> hooks_;
  std::vector<std::unique_ptr<SHostWnd>> adopted_;
  std::vector<std::unique_ptr<SHostWnd>> doomed_;
  int dispatch_depth_ = 0;
  bool deleting_ = false;
  // Made by the first style edit (SWindow::EditStyle).
  std::unique_ptr<internal::StyleEdits> style_edits_;
};

// Win32 GetKeyState: the high bit (negative result) while vk is down, from
// the application's keyboard state; 0 without an application.
short GetKeyState(int vk);

}  // namespace SOUI
