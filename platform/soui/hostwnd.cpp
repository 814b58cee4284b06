// SHostWnd. Sections: helpers and root attributes · life, placement,
// visibility and activation · input · layout and painting · timers ·
// events, capture, focus · handle operations.
#include "soui/hostwnd.h"

#include <algorithm>

#include "soui/slog.h"
#include "soui/sapp.h"

namespace SOUI {
namespace {

bool IsDescendantOrSelf(const SWindow* wnd, const SWindow* ancestor) {
  for (const SWindow* w = wnd; w; w = w->GetParent()) {
    if (w == ancestor) return true;
  }
  return false;
}

// Counts input dispatch for the application, so that hosts closed by their
// own input (a drop-down picking an item) are deleted only after it returns.
class DispatchScope {
 public:
  DispatchScope() : app_(SApplication::getSingletonPtr()) {
    if (app_) app_->EnterDispatch();
  }
  ~DispatchScope() {
    if (app_) app_->LeaveDispatch();
  }
  DispatchScope(const DispatchScope&) = delete;
  DispatchScope& operator=(const DispatchScope&) = delete;

 private:
  SApplication* app_;
};

// Tells the open popups that a host was hidden, moved or is going.
void NotifyHostChanged(SHostWnd* host) {
  if (SApplication* app = SApplication::getSingletonPtr()) {
    app->ForEachInputHook([host](IHostInputHook* h) {
      h->OnHostChanged(host);
      return false;
    });
  }
}

bool IsPress(UINT msg) {
  return msg == WM_LBUTTONDOWN || msg == WM_RBUTTONDOWN || msg == WM_MBUTTONDOWN || msg == WM_LBUTTONDBLCLK;
}

UINT ReleaseOf(UINT press) {
  switch (press) {
    case WM_RBUTTONDOWN: return WM_RBUTTONUP;
    case WM_MBUTTONDOWN: return WM_MBUTTONUP;
    default: return WM_LBUTTONUP;
  }
}

bool ParseIntAttr(const SStringW& v) {
  int n = 0;
  StrToIntExW(v, STIF_SUPPORT_HEX, &n);
  return n != 0;
}

}  // namespace

void SHostWndAttr::Init(pugi::xml_node root) {
  for (pugi::xml_attribute a = root.first_attribute(); a; a = a.next_attribute()) {
    const SStringW name = XmlName(a), value = XmlValue(a);
    auto is = [&](const wchar_t* n) { return name.CompareNoCase(n) == 0; };
    if (is(L"title")) {
      title = value;
    } else if (is(L"width") || is(L"height")) {
      const SLayoutSize sz = SLayoutSize::Parse(value);
      const bool wrap = sz.fSize() <= 0;  // 0, absent or -1: size from content
      if (is(L"width")) { width = sz; wrap_width = wrap; }
      else { height = sz; wrap_height = wrap; }
    } else if (is(L"minsize")) {
      const std::vector<SStringW> p = SplitString(value, L',');
      if (p.size() == 2) { minsize[0] = SLayoutSize::Parse(p[0]); minsize[1] = SLayoutSize::Parse(p[1]); }
    } else if (is(L"margin")) {
      const std::vector<SStringW> p = SplitString(value, L',');
      if (p.size() == 4) for (int i = 0; i < 4; ++i) margin[i] = SLayoutSize::Parse(p[i]);
    } else if (is(L"resizable")) {
      resizable = ParseIntAttr(value);
    } else if (is(L"translucent")) {
      translucent = ParseIntAttr(value);
    } else if (is(L"appWnd")) {
      app_wnd = ParseIntAttr(value);
    } else if (is(L"toolWindow")) {
      tool_window = ParseIntAttr(value);
    } else if (is(L"sendWheel2Hover")) {
      send_wheel_to_hover = ParseIntAttr(value);
    } else if (is(L"alpha")) {
      int v = 255;
      StrToIntExW(value, STIF_SUPPORT_HEX, &v);
      alpha = static_cast<BYTE>(std::max(0, std::min(v, 255)));
    } else if (is(L"wndType")) {
      wnd_type = value;
    } else if (is(L"bigIcon")) {
      big_icon = value;
    } else if (is(L"smallIcon")) {
      small_icon = value;
    }
    // name, appMainWnd, maxInset, icon...: accepted, no effect here.
  }
}

// ---- life, placement, visibility, activation -------------------------------------

SHostWnd::SHostWnd(const wchar_t* res_id) : root_(new SWindow()), res_id_(res_id ? res_id : L"") {
  // A host needs the application (clock, resources); without one it stays inert.
  SApplication* app = SApplication::getSingletonPtr();
  app_alive_ = app != nullptr;
  scale_ = app ? app->GetZoom() : 100;
  if (app) timeline_ = std::make_unique<STimelineManager>(&app->GetClock(), app->GetFrameInterval());
  root_->SetContainer(this);
  if (app) app->AddHost(this);
  if (app) backend_ = app->GetDefaultHostBackend();
}

SHostWnd::~SHostWnd() {
  DestroyWindow();
  if (root_) {
    root_->DispatchDestroy();
    root_.reset();
  }
  timeline_.reset();
  if (app_alive_) {
    if (SApplication* app = SApplication::getSingletonPtr()) app->RemoveHost(this);
  }
}

void SHostWnd::DetachFromApp() {
  // The application is going: drop every clock-bound resource now.
  for (auto& t : swnd_timers_) SApplication::getSingleton().GetClock().KillTimer(t.second);
  for (auto& t : host_timers_) SApplication::getSingleton().GetClock().KillTimer(t.second);
  swnd_timers_.clear();
  host_timers_.clear();
  timeline_.reset();
  app_alive_ = false;
}

HWND SHostWnd::Create(HWND owner, int x, int y, int cx, int cy) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || m_hWnd) return m_hWnd;
  owner_ = owner;
  if (!res_id_.IsEmpty()) {
    pugi::xml_document doc;
    if (!app->LoadXmlDocment(doc, res_id_)) {
      SLOG(kLogError, "SOUI") << L"SHostWnd: no layout resource " << res_id_;
      return nullptr;
    }
    if (!InitFromXml(doc)) return nullptr;
  }
  m_hWnd = app->RegisterHwnd(this);
  rect_ = CRect(x, y, x, y);
  created_ = true;
  if (backend_) backend_->OnCreate(this);
  ApplyInitialSize(cx, cy);
  OnHostCreated();
  OnInitDialog();
  return m_hWnd;
}

BOOL SHostWnd::InitFromXml(pugi::xml_node node) {
  if (node.type() == pugi::node_document) {
    pugi::xml_node el = node.first_child();
    while (el && el.type() != pugi::node_element) el = el.next_sibling();
    node = el;
  }
  pugi::xml_node soui = XmlName(node).CompareNoCase(L"SOUI") == 0 ? node : XmlChildNoCase(node, L"SOUI");
  if (!soui) {
    SLOG(kLogError, "SOUI") << L"SHostWnd: layout has no SOUI element";
    return FALSE;
  }
  attr_.Init(soui);
  pugi::xml_node root = XmlChildNoCase(soui, L"root");
  if (root) {
    root_->InitFromXml(root);
  } else {
    SLOG(kLogWarn, "SOUI") << L"SHostWnd: SOUI element has no root";
    root_->InitFromXml(pugi::xml_node());
  }
  root_->GetLayoutParam()->SetMatchParent(Orientation::Horz);
  root_->GetLayoutParam()->SetMatchParent(Orientation::Vert);
  if (created_) ApplyInitialSize(0, 0);
  return TRUE;
}

BOOL SHostWnd::InitFromXmlText(const wchar_t* xml) {
  std::string utf8;
  pugi::xml_document doc;
  if (const pugi::xml_parse_result parsed = LoadWideXml(xml, &utf8, &doc); !parsed) {
    SLOG(kLogError, "SOUI") << L"SHostWnd: malformed layout XML: " << DescribeXmlError(parsed);
    return FALSE;
  }
  return InitFromXml(doc);
}

void SHostWnd::ApplyInitialSize(int cx, int cy) {
  const int scale = scale_;
  if (cx <= 0) cx = attr_.wrap_width ? -1 : attr_.width.toPixelSize(scale);
  if (cy <= 0) cy = attr_.wrap_height ? -1 : attr_.height.toPixelSize(scale);
  if (cx < 0 || cy < 0) {
    // Content-sized axes ask the root with the other axis fixed (or open).
    SouiLayoutParam* p = root_->GetLayoutParam();
    if (cx < 0) p->SetWrapContent(Orientation::Horz);
    if (cy < 0) p->SetWrapContent(Orientation::Vert);
    const CSize want = root_->GetDesiredSize(cx, cy);
    p->SetMatchParent(Orientation::Horz);
    p->SetMatchParent(Orientation::Vert);
    if (cx < 0) cx = want.cx;
    if (cy < 0) cy = want.cy;
  }
  const int minw = attr_.minsize[0].toPixelSize(scale), minh = attr_.minsize[1].toPixelSize(scale);
  cx = std::max(cx, minw);
  cy = std::max(cy, minh);
  SetWindowPos(nullptr, rect_.left, rect_.top, cx, cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL SHostWnd::DestroyWindow() {
  if (!m_hWnd) return FALSE;
  if (app_alive_) NotifyHostChanged(this);
  OnHostDestroy();
  if (backend_) backend_->OnDestroy(this);
  if (app_alive_) {
    if (SApplication* app = SApplication::getSingletonPtr()) {
      HandOffActivation();
      app->DropFromZOrder(this);
      for (auto& t : swnd_timers_) app->GetClock().KillTimer(t.second);
      for (auto& t : host_timers_) app->GetClock().KillTimer(t.second);
      app->UnregisterHwnd(m_hWnd);
    }
  }
  swnd_timers_.clear();
  host_timers_.clear();
  m_hWnd = nullptr;
  visible_ = false;
  created_ = false;
  return TRUE;
}

BOOL SHostWnd::SetWindowPos(HWND after, int x, int y, int cx, int cy, UINT flags) {
  (void)after;  // only "to the top" is modelled
  CRect rc = rect_;
  if (!(flags & SWP_NOMOVE)) rc.MoveToXY(x, y);
  if (!(flags & SWP_NOSIZE)) {
    rc.right = rc.left + std::max(cx, 0);
    rc.bottom = rc.top + std::max(cy, 0);
  }
  const bool resized = rc.Width() != rect_.Width() || rc.Height() != rect_.Height();
  const bool moved = rc.TopLeft() != rect_.TopLeft();
  rect_ = rc;
  if (resized) {
    root_->OnRelayout(GetClientRect());
    layout_pending_ = true;
    frame_.reset();
    dirty_.Clear();
    dirty_.Union(GetClientRect());
  }
  if (backend_) backend_->OnMove(this, rect_);
  SApplication* app = SApplication::getSingletonPtr();
  if (app && app_alive_ && m_hWnd) {
    if (!(flags & SWP_NOZORDER) && visible_) app->BringHostToTop(this);
    if (moved || resized) NotifyHostChanged(this);
  }
  if (flags & SWP_SHOWWINDOW) ShowWindow((flags & SWP_NOACTIVATE) ? SW_SHOWNA : SW_SHOW);
  if (flags & SWP_HIDEWINDOW) ShowWindow(SW_HIDE);
  return TRUE;
}

BOOL SHostWnd::ShowWindow(int cmd) {
  const bool was = visible_;
  visible_ = cmd != SW_HIDE;
  const bool activate = visible_ && cmd != SW_SHOWNA && cmd != SW_SHOWNOACTIVATE;
  if (backend_ && was != visible_) backend_->OnShow(this, visible_, activate);
  if (visible_) OnInvalidate(GetClientRect());
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !app_alive_ || !m_hWnd) return was ? TRUE : FALSE;
  if (visible_) {
    // A newly shown window comes up on top, activated or not.
    if (!was || activate) app->BringHostToTop(this);
    if (activate && enabled_) app->SetActiveHost(this);
  } else if (was) {
    HandOffActivation();
    NotifyHostChanged(this);
  }
  return was ? TRUE : FALSE;
}

void SHostWnd::HandOffActivation() {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || app->GetActiveHost() != this) return;
  SHostWnd* owner = app->HostFromHwnd(owner_);
  app->SetActiveHost(owner && owner->IsWindowVisible() ? owner : nullptr);
}

bool SHostWnd::IsOwnedBy(const SHostWnd* owner) const {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !owner) return false;
  // Bounded: an ownership cycle set by hand must not hang.
  const SHostWnd* h = app->HostFromHwnd(owner_);
  for (int i = 0; h && i < 64; ++i, h = app->HostFromHwnd(h->owner_)) {
    if (h == owner) return true;
  }
  return false;
}

void SHostWnd::OnNativeActivate(bool active) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !app_alive_ || !m_hWnd) return;
  if (active) {
    app->SetActiveHost(this);
    return;
  }
  // Activation that already moved to another of our windows (a popup the
  // window system focused anyway) stays there; otherwise another
  // application has it, even when we had not seen this host activated.
  SHostWnd* current = app->GetActiveHost();
  if (!current || current == this) app->SetActiveHost(nullptr);
}

BOOL SHostWnd::EnableWindow(BOOL enable) {
  const bool was_disabled = !enabled_;
  enabled_ = enable != FALSE;
  if (!enabled_ && capture_) ReleaseCapture(capture_);
  return was_disabled ? TRUE : FALSE;
}

void SHostWnd::SetWindowText(const SStringW& title) {
  attr_.title = title;
  if (backend_) backend_->OnTitle(this, title);
}

// ---- input -------------------------------------------------------------------

void SHostWnd::UpdateHover(CPoint pt) {
  SWindow* hit = root_->SwndFromPoint(pt);
  if (hit && hit->IsDisabled(TRUE)) hit = nullptr;
  // While captured, only the capture window can be hovered.
  if (capture_ && hit != capture_) hit = capture_->GetWindowRect().PtInRect(pt) ? capture_ : nullptr;
  if (hit == hover_) return;
  SWindow* old = hover_;
  hover_ = hit;
  const LPARAM lp = MAKELPARAM(pt.x, pt.y);
  if (old) old->SwndProc(WM_MOUSELEAVE, 0, 0);
  if (hover_ == hit && hit) hit->SwndProc(WM_MOUSEHOVER, 0, lp);
}

void SHostWnd::OnMouseEvent(UINT msg, UINT flags, CPoint pt, short wheel_delta) {
  DispatchScope scope;
  // Open popups see every press first, on any host, even a disabled one.
  if (IsPress(msg) && app_alive_ && m_hWnd) {
    SApplication* app = SApplication::getSingletonPtr();
    if (app && app->HasInputHooks() &&
        app->ForEachInputHook([&](IHostInputHook* h) { return h->OnHostPress(this, msg, pt); })) {
      swallow_up_ = ReleaseOf(msg);
      return;
    }
    swallow_up_ = 0;  // that release went elsewhere
  }
  if (msg == swallow_up_) {
    swallow_up_ = 0;
    return;
  }
  if (!root_ || !enabled_) return;
  // Modifier keys held on the keyboard show in the mouse flags, as in Win32.
  if (GetKeyState(VK_SHIFT) < 0) flags |= MK_SHIFT;
  if (GetKeyState(VK_CONTROL) < 0) flags |= MK_CONTROL;
  UpdateLayout();
  cursor_ = pt;
  const LPARAM lp = MAKELPARAM(pt.x, pt.y);
  switch (msg) {
    case WM_MOUSEMOVE: {
      UpdateHover(pt);
      SWindow* target = capture_ ? capture_ : hover_;
      if (target) target->SwndProc(WM_MOUSEMOVE, flags, lp);
      break;
    }
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      UpdateHover(pt);
      SWindow* target = capture_ ? capture_ : hover_;
      if (!target) {
        SetFocus(nullptr);
        break;
      }
      SetCapture(target);
      if (target->IsFocusable()) SetFocus(target);
      target->SwndProc(msg, flags, lp);
      break;
    }
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: {
      SWindow* target = capture_ ? capture_ : hover_;
      if (target) target->SwndProc(msg, flags, lp);
      // The handler may have destroyed the target; capture is cleared then.
      if (capture_) ReleaseCapture(capture_);
      UpdateHover(pt);
      break;
    }
    case WM_MOUSEWHEEL: {
      UpdateHover(pt);
      SWindow* target = (attr_.send_wheel_to_hover || !focus_) ? hover_ : focus_;
      const WPARAM wp = (static_cast<WPARAM>(static_cast<uint16_t>(wheel_delta)) << 16) | (flags & 0xFFFF);
      for (SWindow* w = target; w; w = w->GetParent()) {
        if (w->SwndProc(WM_MOUSEWHEEL, wp, lp)) break;
      }
      UpdateHover(pt);  // scrolled content moved under a still mouse
      break;
    }
    case WM_MOUSELEAVE: {
      cursor_ = CPoint(-1, -1);
      if (!capture_ && hover_) {
        SWindow* old = hover_;
        hover_ = nullptr;
        old->SwndProc(WM_MOUSELEAVE, 0, 0);
      }
      break;
    }
    default:
      break;
  }
  UpdateCursor(pt);
}

void SHostWnd::UpdateCursor(CPoint pt) {
  SWindow* target = capture_ ? capture_ : hover_;
  SStringW name = target ? target->GetCursorName(pt) : SStringW(L"arrow");
  if (name.IsEmpty()) name = L"arrow";
  if (name == cursor_name_) return;
  cursor_name_ = name;
  if (backend_) backend_->OnCursor(this, cursor_name_);
}

void SHostWnd::OnKeyEvent(UINT msg, UINT code, UINT flags) {
  DispatchScope scope;
  SApplication* app = SApplication::getSingletonPtr();
  if (app && (msg == WM_KEYDOWN || msg == WM_KEYUP)) app->SetKeyDown(code, msg == WM_KEYDOWN);
  // An open popup takes the keyboard; this host keeps its focus state.
  if (app && app_alive_ && app->HasInputHooks() &&
      app->ForEachInputHook([&](IHostInputHook* h) { return h->OnHostKey(this, msg, code, flags); })) {
    return;
  }
  if (!root_ || !enabled_) return;
  SWindow* target = focus_;
  if (target && target->IsDisabled(TRUE)) return;
  // Tab navigates unless the focused window takes it (or Ctrl/Alt is held);
  // its translated character is swallowed likewise.
  const bool wants_tab = target && (target->OnGetDlgCode() & SC_WANTTAB);
  if (code == VK_TAB && !wants_tab && (msg == WM_KEYDOWN || msg == WM_CHAR || msg == WM_KEYUP)) {
    if (msg == WM_KEYDOWN && GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_MENU) >= 0) {
      FocusNext(GetKeyState(VK_SHIFT) < 0);
    }
    return;
  }
  if (!target) {
    // Without a focus, navigation keys scroll whatever view is under the mouse.
    if (msg == WM_KEYDOWN && hover_ && IsNavigationKey(code)) {
      for (SWindow* w = hover_; w; w = w->GetParent()) {
        if (w->OnNavigationKey(code)) break;
      }
    }
    return;
  }
  target->SwndProc(msg, code, MAKELPARAM(1, flags));
}

void SHostWnd::OnImeComposition(const SStringW& text, int cursor) {
  if (!root_ || !enabled_ || !focus_ || focus_->IsDisabled(TRUE)) return;
  ImeText ime{text, std::max(0, std::min(cursor, text.GetLength()))};
  focus_->SwndProc(WM_IME_COMPOSITION, GCS_COMPSTR, reinterpret_cast<LPARAM>(&ime));
}

void SHostWnd::OnImeCommit(const SStringW& text) {
  if (!root_ || !enabled_ || !focus_ || focus_->IsDisabled(TRUE)) return;
  ImeText ime{text, text.GetLength()};
  focus_->SwndProc(WM_IME_COMPOSITION, GCS_RESULTSTR, reinterpret_cast<LPARAM>(&ime));
}

SWindow* SHostWnd::FocusNext(bool backwards) {
  // Focus targets in tree order (pre-order), then step from the current one.
  std::vector<SWindow*> order;
  std::vector<SWindow*> stack{root_.get()};
  while (!stack.empty()) {
    SWindow* w = stack.back();
    stack.pop_back();
    if (!w->IsVisible(FALSE) || w->IsDisabled(FALSE)) continue;  // nothing inside can take focus
    if (w->IsFocusTarget()) order.push_back(w);
    for (SWindow* c = w->GetWindow(GSW_LASTCHILD); c; c = c->GetWindow(GSW_PREVSIBLING)) stack.push_back(c);
  }
  if (order.empty()) return focus_;
  const auto it = std::find(order.begin(), order.end(), focus_);
  size_t next = 0;
  if (it == order.end()) {
    next = backwards ? order.size() - 1 : 0;
  } else {
    const size_t cur = static_cast<size_t>(it - order.begin());
    next = backwards ? (cur + order.size() - 1) % order.size() : (cur + 1) % order.size();
  }
  SetFocus(order[next]);
  // A target scrolled out of sight is brought into view, inner views first.
  if (SWindow* f = focus_) {
    UpdateLayout();
    for (SWindow* w = f->GetParent(); w && focus_ == f; w = w->GetParent()) w->EnsureVisible(f);
  }
  return focus_;
}

void SHostWnd::UpdateTextInput() {
  const bool want = focus_ && (focus_->OnGetDlgCode() & SC_WANTCHARS);
  if (want == text_input_) return;
  text_input_ = want;
  if (backend_) backend_->OnTextInput(this, want);
}

// ---- layout and painting ------------------------------------------------------

void SHostWnd::SetScale(int scale) {
  if (scale <= 0 || scale == scale_) return;
  scale_ = scale;
  root_->OnScaleChanged(scale);
  root_->RequestRelayout();
  frame_.reset();
  // Sizes given in dp follow the zoom; content-sized hosts re-measure.
  if (created_) ApplyInitialSize(0, 0);
  OnInvalidate(GetClientRect());
}

void SHostWnd::OnThemeChanged() {
  std::function<void(SWindow*)> notify = [&](SWindow* w) {
    w->OnSetLanguage();
    for (SWindow* c = w->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) notify(c);
  };
  notify(root_.get());
  SWindow::InvalidateAllMeasures();  // fonts may have changed size
  root_->RequestRelayout();
  OnInvalidate(GetClientRect());
}

void SHostWnd::UpdateLayout() {
  if (!layout_pending_ && !root_->IsLayoutDirty()) return;
  layout_pending_ = false;
  if (root_->GetWindowRect() != GetClientRect()) root_->OnRelayout(GetClientRect());
  root_->UpdateLayout();
}

void SHostWnd::OnInvalidate(const CRect& rc) {
  dirty_.Union(rc & GetClientRect());
}

IRenderTarget* SHostWnd::Render() {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app) return nullptr;
  // Layout runs before painting, whether or not anything can be painted.
  UpdateLayout();
  if (!app->GetRenderFactory()) return nullptr;
  const CRect client = GetClientRect();
  if (client.IsRectEmpty()) return nullptr;
  if (!frame_ || frame_->GetSize() != client.Size()) {
    frame_.reset();
    const long long area = static_cast<long long>(client.Width()) * client.Height();
    if (client.Width() <= kMaxFrameSide && client.Height() <= kMaxFrameSide && area <= kMaxFrameArea) {
      frame_ = app->GetRenderFactory()->CreateRenderTarget(client.Width(), client.Height());
    }
    // The backend may fail too (out of memory): its target then has another size.
    if (frame_ && frame_->GetSize() != client.Size()) frame_.reset();
    if (!frame_) {
      if (unpaintable_size_ != client.Size()) {
        unpaintable_size_ = client.Size();
        SLOG(kLogError, "SOUI") << L"SHostWnd '" << attr_.title << L"': no frame of " << client.Width()
                                << L"x" << client.Height() << L" pixels (at most " << kMaxFrameSide
                                << L" a side, " << kMaxFrameArea << L" in all); not painted";
      }
      return nullptr;
    }
    unpaintable_size_ = CSize();
    dirty_.Clear();
    dirty_.Union(client);
  }
  if (dirty_.IsEmpty()) return frame_.get();
  // Painting may invalidate again (a window changing its look while it
  // paints): that lands in the next frame, not in the region being painted.
  std::swap(painted_, dirty_);
  dirty_.Clear();
  painted_.Normalize();
  const CRect box = painted_.GetBox();
  frame_->PushClipRect(&box);
  // Start from transparent unless the root covers everything opaquely anyway.
  const bool opaque_root = !root_->GetBkgndSkin() && GetAValue(root_->GetStyle().colorBkgnd.Get()) == 0xFF &&
                           root_->GetStyle().GetMargin(scale_).IsRectNull() && root_->GetAlpha() == 0xFF;
  if (!opaque_root) {
    for (const CRect& part : painted_.GetRects()) frame_->ClearRect(&part, RGBA(0, 0, 0, 0));
  }
  root_->RedrawRegion(frame_.get(), painted_);
  frame_->PopClip();
  ++paint_count_;
  if (backend_) backend_->OnFrame(this);
  return frame_.get();
}

bool SHostWnd::SaveFramePng(const SStringW& path) {
  Render();
  return frame_ && frame_->SavePng(path.ToUtf8());
}

// ---- timers -------------------------------------------------------------------

BOOL SHostWnd::SetTimer(int id, UINT ms) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !app_alive_) return FALSE;
  KillTimer(id);
  host_timers_[id] = app->GetClock().SetTimer(ms, [this, id] { OnTimer(id); });
  return TRUE;
}

BOOL SHostWnd::KillTimer(int id) {
  auto it = host_timers_.find(id);
  if (it == host_timers_.end()) return FALSE;
  if (app_alive_) SApplication::getSingleton().GetClock().KillTimer(it->second);
  host_timers_.erase(it);
  return TRUE;
}

void SHostWnd::SetSwndTimer(SWindow* wnd, int id, UINT ms) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !app_alive_ || !wnd) return;
  KillSwndTimer(wnd, id);
  swnd_timers_[{wnd, id}] = app->GetClock().SetTimer(ms, [wnd, id] { wnd->SwndProc(WM_TIMER, static_cast<WPARAM>(id), 0); });
}

void SHostWnd::KillSwndTimer(SWindow* wnd, int id) {
  auto it = swnd_timers_.find({wnd, id});
  if (it == swnd_timers_.end()) return;
  if (app_alive_) SApplication::getSingleton().GetClock().KillTimer(it->second);
  swnd_timers_.erase(it);
}

BOOL SHostWnd::RegisterTimelineHandler(ITimelineHandler* handler) {
  return timeline_ ? timeline_->RegisterTimelineHandler(handler) : FALSE;
}

BOOL SHostWnd::UnregisterTimelineHandler(ITimelineHandler* handler) {
  return timeline_ ? timeline_->UnregisterTimelineHandler(handler) : FALSE;
}

// ---- events, capture, focus ---------------------------------------------------

BOOL SHostWnd::OnFireEvent(EventArgs& evt) {
  if (observer_) observer_(&evt);
  return _HandleEvent(&evt);
}

BOOL SHostWnd::_HandleEvent(EventArgs* evt) { return evt->handled > 0; }

void SHostWnd::SetCapture(SWindow* wnd) { capture_ = wnd; }

void SHostWnd::ReleaseCapture(SWindow* wnd) {
  if (capture_ == wnd) capture_ = nullptr;
}

void SHostWnd::SetFocus(SWindow* wnd) {
  if (wnd == focus_) return;
  SWindow* old = focus_;
  focus_ = wnd;
  if (old) old->SwndProc(WM_KILLFOCUS, 0, 0);
  if (focus_ == wnd && wnd) wnd->SwndProc(WM_SETFOCUS, 0, 0);
  UpdateTextInput();
}

void SHostWnd::OnCaretRect(SWindow* wnd, const CRect& rc) {
  if (wnd && wnd == focus_ && backend_) backend_->OnTextInputRect(this, rc);
}

void SHostWnd::OnSwndDestroyed(SWindow* wnd) {
  if (app_alive_) {
    if (SApplication* app = SApplication::getSingletonPtr(); app && app->HasInputHooks()) {
      app->ForEachInputHook([&](IHostInputHook* h) {
        h->OnSwndRemoved(this, wnd);
        return false;
      });
    }
  }
  if (capture_ && IsDescendantOrSelf(capture_, wnd)) capture_ = nullptr;
  if (hover_ && IsDescendantOrSelf(hover_, wnd)) hover_ = nullptr;
  if (focus_ && IsDescendantOrSelf(focus_, wnd)) {
    // A window leaving the tree alive hears that it lost the focus; one
    // being destroyed is let go quietly.
    SWindow* old = focus_;
    focus_ = nullptr;
    if (!old->destroying_) old->SwndProc(WM_KILLFOCUS, 0, 0);
    UpdateTextInput();
  }
  if (!app_alive_) return;
  SApplication* app = SApplication::getSingletonPtr();
  for (auto it = swnd_timers_.begin(); it != swnd_timers_.end();) {
    if (it->first.first == wnd) {
      if (app) app->GetClock().KillTimer(it->second);
      it = swnd_timers_.erase(it);
    } else {
      ++it;
    }
  }
}

// ---- handle operations ----------------------------------------------------------

SHostWnd* HostFromHwnd(HWND hwnd) {
  SApplication* app = SApplication::getSingletonPtr();
  return (app && hwnd) ? app->HostFromHwnd(hwnd) : nullptr;
}

BOOL IsWindow(HWND hwnd) { return HostFromHwnd(hwnd) ? TRUE : FALSE; }

BOOL GetWindowRect(HWND hwnd, LPRECT rc) {
  SHostWnd* host = HostFromHwnd(hwnd);
  if (!host || !rc) return FALSE;
  *rc = host->GetWindowRect();
  return TRUE;
}

BOOL SetWindowPos(HWND hwnd, HWND after, int x, int y, int cx, int cy, UINT flags) {
  SHostWnd* host = HostFromHwnd(hwnd);
  return host ? host->SetWindowPos(after, x, y, cx, cy, flags) : FALSE;
}

BOOL ShowWindow(HWND hwnd, int cmd) {
  SHostWnd* host = HostFromHwnd(hwnd);
  return host ? host->ShowWindow(cmd) : FALSE;
}

BOOL EnableWindow(HWND hwnd, BOOL enable) {
  SHostWnd* host = HostFromHwnd(hwnd);
  return host ? host->EnableWindow(enable) : FALSE;
}

BOOL IsWindowEnabled(HWND hwnd) {
  SHostWnd* host = HostFromHwnd(hwnd);
  return host && host->IsWindowEnabled() ? TRUE : FALSE;
}

BOOL IsWindowVisible(HWND hwnd) {
  SHostWnd* host = HostFromHwnd(hwnd);
  return host && host->IsWindowVisible() ? TRUE : FALSE;
}

HWND GetActiveWindow() {
  SApplication* app = SApplication::getSingletonPtr();
  SHostWnd* host = app ? app->GetActiveHost() : nullptr;
  return host ? host->m_hWnd : nullptr;
}

HWND SetActiveWindow(HWND hwnd) {
  SApplication* app = SApplication::getSingletonPtr();
  SHostWnd* host = HostFromHwnd(hwnd);
  const HWND old = GetActiveWindow();
  if (!app || !host || !host->IsWindowVisible() || !host->IsWindowEnabled()) return nullptr;
  app->BringHostToTop(host);
  app->SetActiveHost(host);
  return old;
}

}  // namespace SOUI
