// Sections: QVGuideRun (steps, placement, following, keys, ending) · the
// registry · CQVGuideWnd · IQVGuide. The bubble's view is in guide_view.cpp.
#include "popups/guide.h"

#include <algorithm>
#include <map>

#include "popups/guide_internal.h"
#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;
using namespace guide_internal;

// ---- QVGuideRun -----------------------------------------------------------------------

// One running guide on one owner: its steps, its bubble window and what it
// watches (the owner's keys and moves, its windows leaving, a follow timer).
class QVGuideRun : public SOUI::IHostInputHook,
                   public IQVGuideViewListener,
                   public std::enable_shared_from_this<QVGuideRun> {
 public:
  QVGuideRun(HWND owner, SOUI::SHostWnd* owner_host, std::vector<QVGuideStep> steps)
      : owner_(owner), owner_host_(owner_host), steps_(std::move(steps)) {}
  ~QVGuideRun() override { Teardown(); }

  // Shows the first step with an anchor from first on; false when none.
  bool Begin(int first);
  // Moves by dir (+1 next, -1 previous) to the nearest step with an anchor.
  // Next with none left finishes. False when nothing changed.
  bool Go(int dir);
  // Ends: finished, or skipped for reason; with fire, the event goes out.
  void End(bool finished, EnQVGuideSkip reason, bool fire);
  // The owner's window is gone: ends quietly.
  void Abandon() { End(false, EnQVGuideSkip::Stopped, false); }

  // The bubble's window is being destroyed by someone else: hands are off,
  // and nothing it still hears reaches this run.
  void WndGone() {
    if (wnd_ && wnd_->view_) wnd_->view_->Detach();
    wnd_ = nullptr;
  }
  int Step() const { return index_; }
  bool Ended() const { return ended_; }
  CQVGuideWnd* Wnd() const { return wnd_; }
  HWND WndHandle() const { return wnd_ ? wnd_->m_hWnd : nullptr; }

  // ---- IQVGuideViewListener ----
  void OnGuidePart(EnQVGuidePart part) override;

  // ---- IHostInputHook ----
  bool OnHostPress(SOUI::SHostWnd* host, UINT msg, CPoint pt) override {
    (void)host, (void)msg, (void)pt;
    return false;  // clicks reach the owner as usual
  }
  bool OnHostKey(SOUI::SHostWnd* host, UINT msg, UINT code, UINT flags) override;
  void OnHostChanged(SOUI::SHostWnd* host) override;
  void OnActiveHostChanged(SOUI::SHostWnd* active) override { (void)active; }
  void OnSwndRemoved(SOUI::SHostWnd* host, SOUI::SWindow* wnd) override;

 private:
  // The step's anchor when it exists and shows; null otherwise.
  SOUI::SWindow* Anchor(int index) const;
  // From index in steps of dir, the first step with an anchor; -1 when none.
  int FindShowable(int index, int dir) const;
  void Show(int index);
  // Places the bubble by its anchor; false when the anchor is gone.
  bool Place();
  void Follow();
  void AnchorLost();
  void Teardown();
  void FireStep(int previous);

  HWND owner_;
  SOUI::SHostWnd* owner_host_;
  std::vector<QVGuideStep> steps_;
  int index_ = -1;
  CQVGuideWnd* wnd_ = nullptr;  // adopted by the application
  SOUI::SWindow* anchor_ = nullptr;  // identity only, cleared when it leaves
  CRect last_anchor_, last_owner_;
  SOUI::SClock::TimerId follow_timer_ = 0, lost_timer_ = 0;
  UINT swallow_key_ = 0;  // the key whose press the guide took
  bool hooked_ = false;
  bool ended_ = false;
};

SOUI::SWindow* QVGuideRun::Anchor(int index) const {
  if (index < 0 || index >= static_cast<int>(steps_.size()) || !owner_host_ || !owner_host_->GetRoot()) return nullptr;
  SOUI::SWindow* a = owner_host_->GetRoot()->FindChildByName(steps_[index].anchor);
  return a && a->IsVisible(TRUE) ? a : nullptr;
}

int QVGuideRun::FindShowable(int index, int dir) const {
  for (int i = index; i >= 0 && i < static_cast<int>(steps_.size()); i += dir) {
    if (Anchor(i)) return i;
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide: step " << i << L" anchor \"" << steps_[i].anchor
                                 << L"\" not found or hidden; step passed over";
  }
  return -1;
}

bool QVGuideRun::Begin(int first) {
  owner_host_->UpdateLayout();
  IQVGuide::AddEvents(owner_host_->GetRoot());
  const int index = FindShowable(first, 1);
  if (index < 0) return false;
  SOUI::SApplication& app = SOUI::SApplication::getSingleton();
  auto wnd = std::make_unique<CQVGuideWnd>();
  wnd->InitFromXmlText(L"<SOUI><root/></SOUI>");
  auto* view = new CQVGuideView(this);
  view->SetAttribute(L"width", L"full", TRUE);
  view->SetAttribute(L"height", L"full", TRUE);
  wnd->GetRoot()->InsertChild(view);
  wnd->view_ = view;
  if (!wnd->Create(owner_, 0, 0, 1, 1)) return false;
  wnd_ = wnd.release();
  app.AdoptHost(wnd_);
  app.AddInputHook(this);
  hooked_ = true;
  std::weak_ptr<QVGuideRun> weak = weak_from_this();
  follow_timer_ = app.GetClock().SetTimer(IQVGuide::kFollowMs, [weak] {
    if (auto self = weak.lock()) self->Follow();
  });
  Show(index);
  return true;
}

void QVGuideRun::FireStep(int previous) {
  SOUI::SWindow* root = owner_host_ ? owner_host_->GetRoot() : nullptr;
  if (!root) return;
  EventQVGuideStepChanged evt(root);
  evt.nameFrom = L"qvguide";
  evt.step = index_;
  evt.previous = previous;
  evt.count = static_cast<int>(steps_.size());
  root->FireEvent(evt);
}

void QVGuideRun::Show(int index) {
  const int previous = index_;
  index_ = index;
  wnd_->view_->SetContent(steps_[index], index, static_cast<int>(steps_.size()),
                          SOUI::SApplication::getSingleton().GetZoom());
  last_anchor_ = last_owner_ = CRect();
  if (!Place()) return;
  FireStep(previous);
}

bool QVGuideRun::Place() {
  SOUI::SWindow* anchor = Anchor(index_);
  anchor_ = anchor;
  if (!anchor || !wnd_) return false;
  const int s = SOUI::SApplication::getSingleton().GetZoom();
  if (wnd_->view_->Scale() != s) {
    // The zoom changed: the content is laid out again at the new scale.
    wnd_->view_->SetContent(steps_[index_], index_, static_cast<int>(steps_.size()), s);
    last_anchor_ = CRect();
  }
  const CRect owner = owner_host_->GetWindowRect();
  CRect a = anchor->GetWindowRect();
  a.OffsetRect(owner.TopLeft());
  if (a == last_anchor_ && owner == last_owner_ && wnd_->IsWindowVisible()) return true;
  last_anchor_ = a;
  last_owner_ = owner;
  if (!owner_host_->IsWindowVisible()) {
    wnd_->ShowWindow(SOUI::SW_HIDE);
    return true;
  }
  const CSize size = wnd_->view_->BubbleSize();
  const int w = size.cx, h = size.cy, t = Dp(IQVGuide::kTail, s), g = Dp(IQVGuide::kGap, s);
  CRect area = owner;
  area.DeflateRect(Dp(IQVGuide::kMargin, s), Dp(IQVGuide::kMargin, s));
  // Room on each side, in the order they are tried.
  const EnQVGuideSide order[] = {EnQVGuideSide::Below, EnQVGuideSide::Above, EnQVGuideSide::Right,
                                 EnQVGuideSide::Left};
  const int room[] = {area.bottom - a.bottom - g - t - h, a.top - g - t - h - area.top,
                      area.right - a.right - g - t - w, a.left - g - t - w - area.left};
  int pick = 0;
  for (int i = 0; i < 4; ++i) {
    if (room[i] >= 0) {
      pick = i;
      break;
    }
    if (room[i] > room[pick]) pick = i;
  }
  const EnQVGuideSide side = order[pick];
  const CPoint c = a.CenterPoint();
  CRect b;
  switch (side) {
    case EnQVGuideSide::Below: b = CRect(c.x - w / 2, a.bottom + g + t, 0, 0); break;
    case EnQVGuideSide::Above: b = CRect(c.x - w / 2, a.top - g - t - h, 0, 0); break;
    case EnQVGuideSide::Right: b = CRect(a.right + g + t, c.y - h / 2, 0, 0); break;
    case EnQVGuideSide::Left: b = CRect(a.left - g - t - w, c.y - h / 2, 0, 0); break;
  }
  // Inside the owner; an owner smaller than the bubble keeps its top-left.
  b.left = std::max<int>(area.left, std::min<int>(b.left, area.right - w));
  b.top = std::max<int>(area.top, std::min<int>(b.top, area.bottom - h));
  b.right = b.left + w;
  b.bottom = b.top + h;
  // The tail points at the anchor's middle, clear of the rounded corners.
  const int corner = Dp(kRadius, s) + t;
  CPoint tip;
  switch (side) {
    case EnQVGuideSide::Below:
      tip = CPoint(std::clamp<int>(c.x, b.left + corner, std::max<int>(b.left + corner, b.right - corner)), b.top - t);
      break;
    case EnQVGuideSide::Above:
      tip = CPoint(std::clamp<int>(c.x, b.left + corner, std::max<int>(b.left + corner, b.right - corner)),
                   b.bottom - 1 + t);
      break;
    case EnQVGuideSide::Right:
      tip = CPoint(b.left - t, std::clamp<int>(c.y, b.top + corner, std::max<int>(b.top + corner, b.bottom - corner)));
      break;
    case EnQVGuideSide::Left:
      tip = CPoint(b.right - 1 + t,
                   std::clamp<int>(c.y, b.top + corner, std::max<int>(b.top + corner, b.bottom - corner)));
      break;
  }
  // The window holds the bubble, the tail and the shadow around them.
  CRect win = b;
  win.left = std::min<int>(win.left, tip.x);
  win.top = std::min<int>(win.top, tip.y);
  win.right = std::max<int>(win.right, tip.x + 1);
  win.bottom = std::max<int>(win.bottom, tip.y + 1);
  win.InflateRect(Dp(kShadow, s), Dp(kShadow, s));
  b.OffsetRect(-win.left, -win.top);
  tip.Offset(-win.left, -win.top);
  wnd_->view_->SetPlacement(b, side, tip);
  wnd_->SetWindowPos(nullptr, win.left, win.top, win.Width(), win.Height(),
                     SOUI::SWP_NOACTIVATE | SOUI::SWP_SHOWWINDOW);
  wnd_->UpdateLayout();
  return true;
}

void QVGuideRun::Follow() {
  if (ended_) return;
  auto keep = shared_from_this();
  owner_host_->UpdateLayout();
  if (!Place()) AnchorLost();
}

void QVGuideRun::AnchorLost() {
  if (ended_) return;
  const int next = FindShowable(index_ + 1, 1);
  if (next >= 0) {
    Show(next);
    return;
  }
  QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide: the anchor of step " << index_ << L" went and no later step can show";
  End(false, EnQVGuideSkip::AnchorLost, true);
}

bool QVGuideRun::Go(int dir) {
  if (ended_) return false;
  auto keep = shared_from_this();
  const int to = FindShowable(index_ + dir, dir);
  if (to >= 0) {
    Show(to);
    return true;
  }
  if (dir > 0) {
    End(true, EnQVGuideSkip::User, true);
    return true;
  }
  return false;
}

void QVGuideRun::OnGuidePart(EnQVGuidePart part) {
  switch (part) {
    case EnQVGuidePart::Close: End(false, EnQVGuideSkip::User, true); break;
    case EnQVGuidePart::Previous: Go(-1); break;
    case EnQVGuidePart::Next: Go(1); break;
    case EnQVGuidePart::None: break;
  }
}

bool QVGuideRun::OnHostKey(SOUI::SHostWnd* host, UINT msg, UINT code, UINT flags) {
  (void)flags;
  if (ended_ || !host || (host != owner_host_ && host != wnd_)) return false;
  if (msg == WM_KEYDOWN && (code == VK_ESCAPE || code == VK_RETURN)) {
    auto keep = shared_from_this();
    swallow_key_ = code;
    if (code == VK_ESCAPE) End(false, EnQVGuideSkip::User, true);
    else Go(1);
    return true;
  }
  // The release and the character of a key the guide took stay with it.
  if (swallow_key_ && code == swallow_key_ && (msg == WM_KEYUP || msg == WM_CHAR)) {
    if (msg == WM_KEYUP) swallow_key_ = 0;
    return true;
  }
  return false;
}

void QVGuideRun::OnHostChanged(SOUI::SHostWnd* host) {
  if (ended_ || !host || host != owner_host_) return;
  auto keep = shared_from_this();
  // Moved or resized: at once. Hidden: the bubble hides with it.
  if (!owner_host_->IsWindowVisible()) {
    if (wnd_) wnd_->ShowWindow(SOUI::SW_HIDE);
    last_owner_ = CRect();
    return;
  }
  if (!Place()) AnchorLost();
}

void QVGuideRun::OnSwndRemoved(SOUI::SHostWnd* host, SOUI::SWindow* wnd) {
  if (ended_ || host != owner_host_ || !anchor_ || !wnd) return;
  // The anchor's own removal, or a removed subtree holding it (its parent
  // link is cut at the removed window, so the walk stops there).
  bool hit = false;
  for (SOUI::SWindow* w = anchor_; w && !hit; w = w->GetParent()) hit = w == wnd;
  if (!hit) return;
  anchor_ = nullptr;
  // Moving on waits until the tree is whole again.
  if (lost_timer_) return;
  std::weak_ptr<QVGuideRun> weak = weak_from_this();
  lost_timer_ = SOUI::SApplication::getSingleton().GetClock().SetTimer(0, [weak] {
    if (auto self = weak.lock()) {
      self->lost_timer_ = 0;
      self->Follow();
    }
  }, false);
}

void QVGuideRun::Teardown() {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (app) {
    if (follow_timer_) app->GetClock().KillTimer(follow_timer_);
    if (lost_timer_) app->GetClock().KillTimer(lost_timer_);
    if (hooked_) app->RemoveInputHook(this);
  }
  follow_timer_ = lost_timer_ = 0;
  hooked_ = false;
  anchor_ = nullptr;
  if (wnd_) {
    CQVGuideWnd* wnd = wnd_;
    wnd_ = nullptr;
    if (wnd->view_) wnd->view_->Detach();
    wnd->DestroyWindow();
    if (app) app->DeleteHostLater(wnd);
  }
}

// ---- the registry ------------------------------------------------------------------------

namespace {

std::map<HWND, std::shared_ptr<QVGuideRun>>& Runs() {
  static std::map<HWND, std::shared_ptr<QVGuideRun>> runs;
  return runs;
}

constexpr const char* kRegistryKey = "qvguide.registry";

// Lives as an application service: ends a guide whose owner's window (or
// bubble window) is destroyed, and every guide when the application goes.
class GuideRegistryGuard : public SOUI::IAppService {
 public:
  explicit GuideRegistryGuard(SOUI::SApplication* app) : app_(app) {
    cookie_ = app->AddHwndDestroyedListener([](HWND hwnd) { OnDestroyed(hwnd); });
  }
  ~GuideRegistryGuard() override {
    app_->RemoveHwndDestroyedListener(cookie_);
    auto doomed = std::move(Runs());
    Runs().clear();
    for (auto& r : doomed) r.second->Abandon();
  }

 private:
  static void OnDestroyed(HWND hwnd) {
    std::shared_ptr<QVGuideRun> run;
    for (auto& r : Runs()) {
      if (r.first == hwnd || r.second->WndHandle() == hwnd) run = r.second;
    }
    if (!run) return;
    // The owner going takes its guide quietly; the bubble going alone ends
    // the guide as stopped.
    if (Runs().count(hwnd)) {
      run->Abandon();
    } else {
      run->WndGone();
      run->End(false, EnQVGuideSkip::Stopped, true);
    }
  }

  SOUI::SApplication* app_;
  int cookie_ = 0;
};

std::shared_ptr<QVGuideRun> FindRun(HWND owner) {
  auto it = Runs().find(owner);
  return it == Runs().end() || it->second->Ended() ? nullptr : it->second;
}

}  // namespace

void QVGuideRun::End(bool finished, EnQVGuideSkip reason, bool fire) {
  if (ended_) return;
  ended_ = true;
  auto keep = shared_from_this();
  auto it = Runs().find(owner_);
  if (it != Runs().end() && it->second.get() == this) Runs().erase(it);
  Teardown();
  SOUI::SWindow* root = owner_host_ && SOUI::IsWindow(owner_) ? owner_host_->GetRoot() : nullptr;
  if (!fire || !root) return;
  if (finished) {
    EventQVGuideFinished evt(root);
    evt.nameFrom = L"qvguide";
    evt.step = index_;
    evt.count = static_cast<int>(steps_.size());
    root->FireEvent(evt);
  } else {
    EventQVGuideSkipped evt(root);
    evt.nameFrom = L"qvguide";
    evt.step = index_;
    evt.count = static_cast<int>(steps_.size());
    evt.reason = reason;
    root->FireEvent(evt);
  }
}

// ---- CQVGuideWnd ------------------------------------------------------------------------

CQVGuideWnd::CQVGuideWnd() = default;
CQVGuideWnd::~CQVGuideWnd() = default;

CRect CQVGuideWnd::GetBubbleRect() const {
  if (!view_) return CRect();
  CRect b = view_->Bubble();
  b.OffsetRect(GetWindowRect().TopLeft());
  return b;
}

CPoint CQVGuideWnd::GetTailTip() const {
  if (!view_) return CPoint();
  return view_->Tip() + GetWindowRect().TopLeft();
}

EnQVGuideSide CQVGuideWnd::GetSide() const { return view_ ? view_->Side() : EnQVGuideSide::Below; }

CRect CQVGuideWnd::GetPartRect(EnQVGuidePart part) const { return view_ ? view_->PartRect(part) : CRect(); }

// ---- IQVGuide -----------------------------------------------------------------------------

bool IQVGuide::Start(HWND owner, const std::vector<QVGuideStep>& steps, int first) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SOUI::SHostWnd* host = SOUI::HostFromHwnd(owner);
  if (!app || !host || !SOUI::IsWindow(owner)) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide::Start  hWnd Not Valid" << static_cast<const void*>(owner);
    return false;
  }
  if (steps.empty()) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide::Start  empty step list; nothing shown";
    return false;
  }
  if (first < 0 || first >= static_cast<int>(steps.size())) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide::Start  first step " << first << L" out of range (" << steps.size()
                                 << L" steps); nothing shown";
    return false;
  }
  if (!app->GetService(kRegistryKey)) app->SetService(kRegistryKey, std::make_unique<GuideRegistryGuard>(app));
  if (std::shared_ptr<QVGuideRun> old = FindRun(owner)) old->End(false, EnQVGuideSkip::Replaced, true);
  auto run = std::make_shared<QVGuideRun>(owner, host, steps);
  Runs()[owner] = run;
  if (!run->Begin(first)) {
    Runs().erase(owner);
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide::Start  no step has an anchor that shows; nothing shown";
    return false;
  }
  return true;
}

void IQVGuide::Stop(HWND owner) {
  if (std::shared_ptr<QVGuideRun> run = FindRun(owner)) run->End(false, EnQVGuideSkip::Stopped, true);
}

bool IQVGuide::Next(HWND owner) {
  std::shared_ptr<QVGuideRun> run = FindRun(owner);
  return run && run->Go(1);
}

bool IQVGuide::Previous(HWND owner) {
  std::shared_ptr<QVGuideRun> run = FindRun(owner);
  return run && run->Go(-1);
}

bool IQVGuide::IsRunning(HWND owner) { return FindRun(owner) != nullptr; }

int IQVGuide::GetStep(HWND owner) {
  std::shared_ptr<QVGuideRun> run = FindRun(owner);
  return run ? run->Step() : -1;
}

CQVGuideWnd* IQVGuide::GetGuideWnd(HWND owner) {
  std::shared_ptr<QVGuideRun> run = FindRun(owner);
  return run ? run->Wnd() : nullptr;
}

size_t IQVGuide::RunningCount() { return Runs().size(); }

void IQVGuide::AddEvents(SOUI::SWindow* wnd) {
  if (!wnd) return;
  wnd->GetEventSet()->addEvent(EVT_QVGUIDE_STEP_CHANGED, EventQVGuideStepChanged::EventName());
  wnd->GetEventSet()->addEvent(EVT_QVGUIDE_FINISHED, EventQVGuideFinished::EventName());
  wnd->GetEventSet()->addEvent(EVT_QVGUIDE_SKIPPED, EventQVGuideSkipped::EventName());
}

}  // namespace QVStandardCtrls
