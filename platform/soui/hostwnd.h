// SHostWnd: a native window holding a DirectUI tree.
//
// It builds the tree from a "SOUI" root element, lays it out, routes mouse
// and keyboard input to the window under the mouse (with capture during a
// press and hover/leave tracking), runs window timers and the frame
// timeline, collects dirty regions and paints. Input arrives through
// OnMouseEvent/OnKeyEvent, which is the path both a real backend and the
// tests' event generator use.
//
// Routing rules (what a window under the mouse sees):
//   move                 hover changes: old gets MOUSELEAVE, new MOUSEHOVER;
//                        the target gets MOUSEMOVE (the capture if any)
//   left/right press     the target takes capture and focus (if focusable)
//   left/right release   to the capture, then capture is released and hover
//                        re-evaluated at the point
//   wheel                to the hovered window, then its ancestors until one
//                        handles it; hover is re-evaluated after (content
//                        may have scrolled under the mouse)
//   key, char            to the focused window; Tab and Shift+Tab move the
//                        focus through the focusable windows in tree order
//                        (wrapping) unless the focused one wants Tab, and
//                        scroll the new focus into view; a navigation key
//                        the focus leaves alone goes to its ancestors'
//                        OnNavigationKey (see SWindow::OnKeyDown), and
//                        without a focus to those of the hovered window
//   input-method text    to the focused window (WM_IME_COMPOSITION)
// After every mouse event the host asks the window under the mouse (or the
// capture) for its cursor and tells the backend when it changes.
// Disabled windows (or windows under a disabled ancestor) receive no input;
// a disabled host receives none at all.
//
// Host windows among themselves (the application keeps the lists):
//   active host   showing with activation (SW_SHOW, SW_SHOWNORMAL) makes a
//                 host active; SW_SHOWNA / SW_SHOWNOACTIVATE and moves never
//                 change it. Hiding or destroying the active host hands
//                 activation to its owner when visible, else to nobody.
//   Z order      a host shown or placed without SWP_NOZORDER goes on top;
//                 SWP_NOACTIVATE|SWP_NOZORDER moves leave both alone.
//   input hooks  open popups watch every host's presses and keys (see
//                 IHostInputHook): a press reaches the hooks before the host
//                 routes it, even on a disabled host.
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "soui/swnd.h"

namespace SOUI {

class SHostWnd;

// What a backend does with a host: native window life, placement and frames.
// The offscreen backend (the default) keeps everything in memory.
class IHostBackend {
 public:
  virtual ~IHostBackend() = default;
  virtual void OnCreate(SHostWnd* host) = 0;
  virtual void OnDestroy(SHostWnd* host) = 0;
  virtual void OnShow(SHostWnd* host, bool show, bool activate) = 0;
  virtual void OnMove(SHostWnd* host, const CRect& rc) = 0;
  virtual void OnTitle(SHostWnd* host, const SStringW& title) = 0;
  // Called after a repaint; the frame is the host's render target.
  virtual void OnFrame(SHostWnd* host) = 0;
  // The cursor over the host changed ("arrow", "ibeam", "hand", ...).
  virtual void OnCursor(SHostWnd* host, const SStringW& name) { (void)host; (void)name; }
  // The focused window does (or no longer does) take typed text, so that a
  // real backend can turn its input method on or off.
  virtual void OnTextInput(SHostWnd* host, bool active) { (void)host; (void)active; }
  // Where the focused window's text caret is (client coordinates), for the
  // input method's candidate window.
  virtual void OnTextInputRect(SHostWnd* host, const CRect& caret) { (void)host; (void)caret; }
};

// What an open popup (drop-down, menu) sees of the other hosts, so that it
// can close on a press elsewhere and take the keyboard while open. Hooks are
// asked newest first; each ignores its own host and hosts it owns.
class IHostInputHook {
 public:
  virtual ~IHostInputHook() = default;
  // A button press reaching host (client coordinates). True swallows it,
  // with the release that follows.
  virtual bool OnHostPress(SHostWnd* host, UINT msg, CPoint pt) = 0;
  // A key or character message reaching host; true when the hook took it.
  virtual bool OnHostKey(SHostWnd* host, UINT msg, UINT code, UINT flags) = 0;
  // host was hidden, moved or is being destroyed.
  virtual void OnHostChanged(SHostWnd* host) = 0;
  // Activation moved to active (null: to another application's window).
  virtual void OnActiveHostChanged(SHostWnd* active) = 0;
  // wnd is leaving host's tree (removed or destroyed).
  virtual void OnSwndRemoved(SHostWnd* host, SWindow* wnd) = 0;
};

// SetWindowPos flags.
constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;
// ShowWindow commands.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNA = 8;

// Attributes of the "SOUI" root element.
struct SHostWndAttr {
  SStringW title;
  SLayoutSize width, height;  // zero: wrap to the root's content
  bool wrap_width = true, wrap_height = true;
  SLayoutSize minsize[2];
  SLayoutSize margin[4];      // resize border
  bool resizable = false;
  bool translucent = false;
  bool app_wnd = false;
  bool tool_window = false;
  bool send_wheel_to_hover = false;
  BYTE alpha = 0xFF;
  SStringW wnd_type;          // "undefine", "appMain", "normal"
  SStringW big_icon, small_icon;

  // Reads the root's attributes; unknown names are ignored.
  void Init(pugi::xml_node soui_root);
};

class SHostWnd : public ISwndContainer {
 public:
  // res_id: "LAYOUT:name" (or just "name") of the layout resource to build
  // from; may be null to build later with InitFromXml.
  explicit SHostWnd(const wchar_t* res_id = nullptr);
  ~SHostWnd() override;
  SHostWnd(const SHostWnd&) = delete;
  SHostWnd& operator=(const SHostWnd&) = delete;

  // Creates the native window and builds the tree from the resource.
  // cx/cy of 0 take the layout's size. Returns null on failure.
  HWND Create(HWND owner = nullptr, int x = 0, int y = 0, int cx = 0, int cy = 0);
  // Builds the tree from a "SOUI" element (or its document). Safe to call
  // before or after Create.
  BOOL InitFromXml(pugi::xml_node soui_root);
  BOOL InitFromXmlText(const wchar_t* xml);
  BOOL DestroyWindow();
  // The user asked the native window to close (title bar, window manager).
  virtual void OnClose() { DestroyWindow(); }

  HWND m_hWnd = nullptr;
  HWND GetHostHwnd() const override { return m_hWnd; }
  SWindow* GetRoot() { return root_.get(); }
  const SHostWndAttr& GetHostAttr() const { return attr_; }
  template <class T>
  T* FindChildByName2(const SStringW& name) { return root_->FindChildByName2<T>(name); }
  SWindow* FindChildByName(const SStringW& name) { return root_->FindChildByName(name); }
  SWindow* FindChildByID(int id) { return root_->FindChildByID(id); }

  // ---- native window ----
  HWND GetOwner() const { return owner_; }
  void SetOwner(HWND owner) { owner_ = owner; }
  CRect GetWindowRect() const { return rect_; }
  CRect GetClientRect() const { return CRect(0, 0, rect_.Width(), rect_.Height()); }
  BOOL SetWindowPos(HWND after, int x, int y, int cx, int cy, UINT flags);
  void MoveWindow(int x, int y, int cx, int cy) { SetWindowPos(nullptr, x, y, cx, cy, SWP_NOZORDER); }
  BOOL ShowWindow(int cmd);
  BOOL IsWindowVisible() const { return visible_; }
  BOOL EnableWindow(BOOL enable);
  BOOL IsWindowEnabled() const { return enabled_; }
  void SetWindowText(const SStringW& title);
  SStringW GetWindowText() const { return attr_.title; }
  // A popup (drop-down, menu): a borderless, always-on-top window without a
  // taskbar entry that never takes the keyboard focus.
  virtual bool IsPopupWindow() const { return false; }
  // Whether owner is this host's owner, its owner's owner, and so on.
  bool IsOwnedBy(const SHostWnd* owner) const;
  // The backend reports the native window gaining or losing the keyboard
  // focus (another application's window took it).
  void OnNativeActivate(bool active);
  // This host became the active one, or stopped being it.
  virtual void OnActivate(bool active) { (void)active; }
  void SetBackend(std::shared_ptr<IHostBackend> backend) { backend_ = std::move(backend); }
  IHostBackend* GetBackend() const { return backend_.get(); }

  // ---- input (the path every real or injected event takes) ----
  void OnMouseEvent(UINT msg, UINT flags, CPoint pt, short wheel_delta = 0);
  virtual void OnKeyEvent(UINT msg, UINT code, UINT flags = 0);
  // Input-method text for the focused window: the text being composed
  // (shown at the caret, not yet part of the text; empty ends the
  // composition) and text the input method committed.
  void OnImeComposition(const SStringW& text, int cursor);
  void OnImeCommit(const SStringW& text);
  // Where the mouse is believed to be (last move).
  CPoint GetCursorPos() const { return cursor_; }
  // The cursor shape currently shown ("arrow" until a window asks otherwise).
  const SStringW& GetCursorName() const { return cursor_name_; }
  // Moves the focus to the next (or previous) focus target in tree order,
  // wrapping; returns the new focus (null when there is none).
  SWindow* FocusNext(bool backwards);

  // ---- layout and painting ----
  int GetScale() const override { return scale_; }
  void SetScale(int scale);
  void OnThemeChanged();
  // Runs pending layout now.
  void UpdateLayout();
  // The largest frame a host paints: a side up to kMaxFrameSide pixels and
  // at most kMaxFrameArea pixels in all (256 MB of ARGB), room for an 8K
  // screen. A larger host keeps its size, layout and input but is not
  // painted (one log line per size) until it is resized to fit.
  static constexpr int kMaxFrameSide = 16384;
  static constexpr long long kMaxFrameArea = 64LL * 1024 * 1024;

  // Lays out, repaints the dirty region (everything the first time) into the
  // host's frame and returns it. Null without a render factory, for an empty
  // host, or when no frame of the host's size can be had (see kMaxFrameSide).
  IRenderTarget* Render();
  IRenderTarget* GetFrame() const { return frame_.get(); }
  // Renders and writes the frame as PNG.
  bool SaveFramePng(const SStringW& path);
  // The bounding box of what is waiting to be repainted.
  CRect GetDirtyRect() const { return dirty_.GetBox(); }
  const SRegion& GetDirtyRegion() const { return dirty_; }
  // What the last Render repainted: disjoint rectangles, which a backend
  // presents and tests inspect.
  const SRegion& GetPaintedRegion() const { return painted_; }
  int GetPaintCount() const { return paint_count_; }

  // ---- host timers (not tied to a DirectUI window) ----
  BOOL SetTimer(int id, UINT ms);
  BOOL KillTimer(int id);
  virtual void OnTimer(int id) { (void)id; }

  // ---- events reaching the host ----
  // The host's event map: override, or set an observer (tests).
  virtual BOOL _HandleEvent(EventArgs* evt);
  void SetEventObserver(std::function<void(EventArgs*)> fn) { observer_ = std::move(fn); }

  // ---- ISwndContainer ----
  BOOL OnFireEvent(EventArgs& evt) override;
  SWindow* GetCapture() const override { return capture_; }
  void SetCapture(SWindow* wnd) override;
  void ReleaseCapture(SWindow* wnd) override;
  SWindow* GetHover() const override { return hover_; }
  SWindow* GetFocus() const override { return focus_; }
  void SetFocus(SWindow* wnd) override;
  void OnInvalidate(const CRect& rc) override;
  void OnRelayoutRequested() override { layout_pending_ = true; }
  void SetSwndTimer(SWindow* wnd, int id, UINT ms) override;
  void KillSwndTimer(SWindow* wnd, int id) override;
  void OnSwndDestroyed(SWindow* wnd) override;
  // Passed to the backend when wnd has the focus.
  void OnCaretRect(SWindow* wnd, const CRect& rc) override;
  BOOL RegisterTimelineHandler(ITimelineHandler* handler) override;
  BOOL UnregisterTimelineHandler(ITimelineHandler* handler) override;
  STimelineManager& GetTimeline() { return *timeline_; }

  // Called by the application when it goes first (nothing may reach it after).
  void DetachFromApp();

 protected:
  virtual void OnInitDialog() {}
  virtual void OnHostCreated() {}
  virtual void OnHostDestroy() {}
  // Sizes the native window from the attributes (wrap axes from the root).
  void ApplyInitialSize(int cx, int cy);
  void UpdateHover(CPoint pt);
  void UpdateCursor(CPoint pt);
  void UpdateTextInput();
  // Leaving the screen while active: the owner (when visible) takes over.
  void HandOffActivation();

  SHostWndAttr attr_;
  std::unique_ptr<SWindow> root_;

 private:
  SStringW res_id_;
  HWND owner_ = nullptr;
  CRect rect_;
  bool visible_ = false;
  bool enabled_ = true;
  bool created_ = false;
  int scale_ = 100;
  SWindow* capture_ = nullptr;
  SWindow* hover_ = nullptr;
  SWindow* focus_ = nullptr;
  CPoint cursor_{-1, -1};
  SStringW cursor_name_ = L"arrow";
  bool text_input_ = false;
  bool layout_pending_ = true;
  SRegion dirty_;
  SRegion painted_;
  int paint_count_ = 0;
  CSize unpaintable_size_;  // the size last reported as too large to paint
  std::unique_ptr<IRenderTarget> frame_;
  std::unique_ptr<STimelineManager> timeline_;
  std::map<std::pair<SWindow*, int>, SClock::TimerId> swnd_timers_;
  std::map<int, SClock::TimerId> host_timers_;
  std::shared_ptr<IHostBackend> backend_;
  std::function<void(EventArgs*)> observer_;
  bool app_alive_ = true;
  UINT swallow_up_ = 0;  // the release whose press a popup swallowed
};

// Native-window operations on handles (Win32 names). All are safe on null or
// stale handles: they fail without effect.
BOOL IsWindow(HWND hwnd);
SHostWnd* HostFromHwnd(HWND hwnd);
BOOL GetWindowRect(HWND hwnd, LPRECT rc);
BOOL SetWindowPos(HWND hwnd, HWND after, int x, int y, int cx, int cy, UINT flags);
BOOL ShowWindow(HWND hwnd, int cmd);
BOOL EnableWindow(HWND hwnd, BOOL enable);
BOOL IsWindowEnabled(HWND hwnd);
BOOL IsWindowVisible(HWND hwnd);
HWND GetActiveWindow();
// Activates a visible, enabled host; returns the previously active one.
HWND SetActiveWindow(HWND hwnd);

}  // namespace SOUI
