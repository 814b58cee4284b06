// Sections: QVMenuTracker (levels, placement, choosing, keyboard, mouse, the
// rest of the application, the loop) · CQVMenuWnd · IQVMenu · IQVMultiSelMenu.
// The rows' view is in menu_view.cpp.
#include "popups/menu.h"

#include <algorithm>

#include "qvhost/qvlog.h"
#include "soui/sapp.h"
#include "popups/menu_internal.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;
using namespace menu_internal;

// ---- QVMenuTracker ----------------------------------------------------------------

// One tracking call: the open levels, the input hook and the nested loop.
class QVMenuTracker : public SOUI::IHostInputHook, public IQVMenuViewListener {
 public:
  QVMenuTracker(HWND owner, bool multi) : owner_(owner), multi_(multi) {}
  ~QVMenuTracker() override { Cleanup(); }

  // Shows the menu and runs until chosen or dismissed; false when refused.
  bool Run(const QVMenuItems& items, const CRect& anchor, bool at_point);
  UINT Result() const { return result_; }
  bool Accepted() const { return accepted_; }
  // Rows of level 0 as they ended (multi-selection: their ticks).
  std::vector<QVMenuAttr> FinalRows() const { return final_rows_; }

  CQVMenuWnd* Level(int level) const;
  const SStringW& ShownTip() const { return tip_text_; }

  // From the views.
  void OnViewMove(int level, int row) override;
  void OnViewLeave(int level) override;
  void OnViewPress(int level, int row) override;
  void OnViewRelease(int level, int row) override;

  // ---- IHostInputHook ----
  bool OnHostPress(SOUI::SHostWnd* host, UINT msg, CPoint pt) override;
  bool OnHostKey(SOUI::SHostWnd* host, UINT msg, UINT code, UINT flags) override;
  void OnHostChanged(SOUI::SHostWnd* host) override;
  void OnActiveHostChanged(SOUI::SHostWnd* active) override;
  void OnSwndRemoved(SOUI::SHostWnd* host, SOUI::SWindow* wnd) override { (void)host, (void)wnd; }

  static QVMenuTracker* ms_active;

 private:
  struct OpenMenu {
    std::unique_ptr<CQVMenuWnd> wnd;
    std::vector<const QVMenuItems*> path;  // the lists open down to this one
  };
  bool OpenLevel(const QVMenuItems& items, std::vector<const QVMenuItems*> path, const CRect& anchor,
                 bool at_point);
  // Closes every level deeper than level.
  void CloseAfter(int level);
  void OpenSubmenu(int level, int row, bool select_first);
  void Activate(int level, int row);
  void Dismiss();
  void Finish(UINT id);
  bool IsOurs(const SOUI::SHostWnd* host) const;
  void MoveHot(int level, int dir, bool from_end);
  void JumpToLetter(int level, wchar_t ch);
  void ScheduleHover(int level, int row);
  void KillTimers();
  void ShowTip(int level, int row);
  void HideTip();
  void Cleanup();
  CQVMenuView* View(int level) const;
  int Innermost() const { return static_cast<int>(levels_.size()) - 1; }

  HWND owner_;
  SOUI::SHostWnd* owner_host_ = nullptr;
  bool multi_;
  std::vector<OpenMenu> levels_;
  std::vector<std::unique_ptr<SOUI::SHostWnd>> closed_;  // deleted after the loop
  std::unique_ptr<SOUI::SHostWnd> tip_;
  SStringW tip_text_;
  std::vector<QVMenuAttr> final_rows_;
  SOUI::SClock::TimerId hover_timer_ = 0, tip_timer_ = 0, activation_check_ = 0;
  int listener_ = -1;
  bool hooked_ = false;
  bool done_ = false;
  bool accepted_ = false;
  bool destroying_ = false;
  UINT result_ = 0;
};

QVMenuTracker* QVMenuTracker::ms_active = nullptr;

// ---- CQVMenuWnd -------------------------------------------------------------------

CQVMenuWnd::CQVMenuWnd() = default;
CQVMenuWnd::~CQVMenuWnd() = default;

int CQVMenuWnd::GetRowCount() const { return view_ ? view_->Count() : 0; }
int CQVMenuWnd::GetHotRow() const { return view_ ? view_->Hot() : -1; }
int CQVMenuWnd::GetTopRow() const { return view_ ? view_->Top() : 0; }
const QVMenuAttr* CQVMenuWnd::GetRow(int row) const { return view_ ? view_->Row(row) : nullptr; }
CRect CQVMenuWnd::GetRowRect(int row) const { return view_ ? view_->RowRect(row) : CRect(); }

int CQVMenuWnd::FindRow(UINT id) const {
  for (int i = 0; i < GetRowCount(); ++i) {
    if (!GetRow(i)->separator && GetRow(i)->id == id) return i;
  }
  return -1;
}

// ---- QVMenuTracker: levels and placement ----------------------------------------------

CQVMenuView* QVMenuTracker::View(int level) const {
  return level >= 0 && level < static_cast<int>(levels_.size()) ? levels_[level].wnd->view_ : nullptr;
}

CQVMenuWnd* QVMenuTracker::Level(int level) const {
  if (level < 0) level = Innermost();
  return level >= 0 && level < static_cast<int>(levels_.size()) ? levels_[level].wnd.get() : nullptr;
}

bool QVMenuTracker::IsOurs(const SOUI::SHostWnd* host) const {
  if (!host) return false;
  if (host == tip_.get()) return true;
  for (const OpenMenu& l : levels_) {
    if (l.wnd.get() == host) return true;
  }
  return false;
}

bool QVMenuTracker::OpenLevel(const QVMenuItems& items, std::vector<const QVMenuItems*> path, const CRect& anchor,
                              bool at_point) {
  SOUI::SApplication& app = SOUI::SApplication::getSingleton();
  const int level = static_cast<int>(levels_.size());
  const int scale = app.GetZoom();
  std::vector<QVMenuAttr> rows;
  std::vector<MenuRole> roles;
  if (multi_) {
    rows.push_back(QVMenuAttr::Item(IQVMultiSelMenu::kSelectAllId, L"Select all"));
    rows.push_back(QVMenuAttr::Item(IQVMultiSelMenu::kClearId, L"Clear"));
    rows.push_back(QVMenuAttr::Separator());
    roles = {MenuRole::kSelectAll, MenuRole::kClear, MenuRole::kCommand};
  }
  for (const QVMenuAttr& item : items) {
    rows.push_back(item);
    roles.push_back(MenuRole::kCommand);
    QVMenuAttr& r = rows.back();
    if (multi_) r.submenu.reset();
    if (!r.submenu) continue;
    if (level + 1 >= IQVMenu::kMaxDepth) {
      QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: submenu of \"" << r.text << L"\" nested deeper than "
                                   << IQVMenu::kMaxDepth << L" levels; shown without it";
      r.submenu.reset();
    } else if (std::find(path.begin(), path.end(), r.submenu.get()) != path.end()) {
      QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: submenu of \"" << r.text
                                   << L"\" contains itself; shown without it";
      r.submenu.reset();
    }
  }
  if (multi_) {
    rows.push_back(QVMenuAttr::Separator());
    rows.push_back(QVMenuAttr::Item(IQVMultiSelMenu::kOkId, app.GetResProvider().ResolveString(L"@string\\102541")));
    if (rows.back().text.IsEmpty()) rows.back().text = L"OK";
    roles.push_back(MenuRole::kCommand);
    roles.push_back(MenuRole::kOk);
  }

  auto wnd = std::make_unique<CQVMenuWnd>();
  wnd->level_ = level;
  wnd->InitFromXmlText(L"<SOUI><root/></SOUI>");
  auto* view = new CQVMenuView(this, level);
  view->SetAttribute(L"width", L"full", TRUE);
  view->SetAttribute(L"height", L"full", TRUE);
  view->SetRows(std::move(rows), std::move(roles), multi_, scale);
  wnd->GetRoot()->InsertChild(view);
  wnd->view_ = view;

  // Placement on the owner's work area.
  const CRect work = app.GetWorkArea(owner_host_);
  const CSize want = view->WantedSize();
  const int w = std::min<int>(want.cx, std::max<int>(work.Width(), 1));
  const int h = std::min<int>(want.cy, std::max<int>(work.Height(), 1));
  int x = anchor.left, y = anchor.bottom;
  if (level > 0) {
    // Beside the row: on the right, or on the left when the right is full.
    x = anchor.right;
    if (x + w > work.right) x = anchor.left - w;
    y = anchor.top - Dp(kPadY, scale);
  } else if (at_point) {
    if (x + w > work.right) x = anchor.left - w;
    if (y + h > work.bottom) y = anchor.top - h;
  } else if (y + h > work.bottom && anchor.top - h >= work.top) {
    y = anchor.top - h;
  }
  x = std::clamp<int>(x, work.left, std::max<int>(work.left, work.right - w));
  y = std::clamp<int>(y, work.top, std::max<int>(work.top, work.bottom - h));
  const HWND parent = level == 0 ? owner_ : levels_[level - 1].wnd->m_hWnd;
  if (!wnd->Create(parent, x, y, w, h)) return false;
  wnd->SetWindowPos(nullptr, x, y, w, h, SOUI::SWP_NOACTIVATE | SOUI::SWP_SHOWWINDOW);
  wnd->UpdateLayout();  // rows have their places before the first input
  levels_.push_back(OpenMenu{std::move(wnd), std::move(path)});
  return true;
}

void QVMenuTracker::CloseAfter(int level) {
  while (Innermost() > level) {
    OpenMenu& l = levels_.back();
    l.wnd->view_->Detach();
    destroying_ = true;
    l.wnd->DestroyWindow();
    destroying_ = false;
    closed_.push_back(std::move(l.wnd));
    levels_.pop_back();
  }
}

void QVMenuTracker::OpenSubmenu(int level, int row, bool select_first) {
  CQVMenuView* view = View(level);
  const QVMenuAttr* r = view ? view->Row(row) : nullptr;
  if (!r || !r->submenu || !r->enabled || multi_) return;
  if (Innermost() > level && View(level + 1) && levels_[level + 1].path.back() == r->submenu.get() &&
      view->Hot() == row) {
    if (select_first) MoveHot(level + 1, 1, true);
    return;  // already open
  }
  CloseAfter(level);
  view->SetHot(row, true);
  if (r->submenu->empty()) return;
  // The row's band across the whole parent window: the submenu goes beside it.
  const CRect parent = levels_[level].wnd->GetWindowRect();
  const CRect row_rc = view->RowRect(row);
  const CRect anchor(parent.left, parent.top + row_rc.top, parent.right, parent.top + row_rc.bottom);
  std::vector<const QVMenuItems*> path = levels_[level].path;
  path.push_back(r->submenu.get());
  // The rows of this level hold the list for as long as it is open.
  if (!OpenLevel(*r->submenu, std::move(path), anchor, false)) return;
  if (select_first) MoveHot(level + 1, 1, true);
}

// ---- QVMenuTracker: choosing ------------------------------------------------------------

void QVMenuTracker::Finish(UINT id) {
  if (done_) return;
  done_ = true;
  result_ = id;
  if (CQVMenuView* top = View(0)) {
    for (int i = 0; i < top->Count(); ++i) final_rows_.push_back(*top->Row(i));
  }
  KillTimers();
  HideTip();
}

void QVMenuTracker::Dismiss() {
  accepted_ = false;
  Finish(0);
}

void QVMenuTracker::Activate(int level, int row) {
  CQVMenuView* view = View(level);
  QVMenuAttr* r = view ? view->MutableRow(row) : nullptr;
  if (!r || !Selectable(*r) || done_) return;
  if (r->submenu) {
    OpenSubmenu(level, row, true);
    return;
  }
  if (!multi_) {
    accepted_ = true;
    Finish(r->id);
    return;
  }
  switch (view->Role(row)) {
    case MenuRole::kOk:
      accepted_ = true;
      Finish(r->id);
      return;
    case MenuRole::kSelectAll:
    case MenuRole::kClear:
      for (int i = 0; i < view->Count(); ++i) {
        QVMenuAttr* o = view->MutableRow(i);
        if (view->Role(i) == MenuRole::kCommand && Selectable(*o)) o->checked = view->Role(row) == MenuRole::kSelectAll;
      }
      break;
    case MenuRole::kCommand:
      r->checked = !r->checked;
      break;
  }
  view->Invalidate();
}

// ---- QVMenuTracker: keyboard ---------------------------------------------------------------

void QVMenuTracker::MoveHot(int level, int dir, bool from_end) {
  CQVMenuView* view = View(level);
  if (!view || view->Count() == 0) return;
  const int n = view->Count();
  int i = from_end ? (dir > 0 ? -1 : n) : view->Hot();
  if (i < 0 && dir < 0 && !from_end) i = n;
  for (int step = 0; step < n; ++step) {
    i = ((i + dir) % n + n) % n;
    if (Selectable(*view->Row(i))) {
      view->SetHot(i, true);
      return;
    }
  }
}

void QVMenuTracker::JumpToLetter(int level, wchar_t ch) {
  CQVMenuView* view = View(level);
  if (!view) return;
  const int n = view->Count();
  const wchar_t want = static_cast<wchar_t>(towlower(ch));
  for (int step = 1; step <= n; ++step) {
    const int i = ((view->Hot() < 0 ? -1 : view->Hot()) + step + n) % n;
    const QVMenuAttr* r = view->Row(i);
    if (Selectable(*r) && !r->text.IsEmpty() && static_cast<wchar_t>(towlower(r->text[0])) == want) {
      view->SetHot(i, true);
      return;
    }
  }
}

bool QVMenuTracker::OnHostKey(SOUI::SHostWnd* host, UINT msg, UINT code, UINT flags) {
  (void)host, (void)flags;
  if (done_) return true;
  const int level = Innermost();
  CQVMenuView* view = View(level);
  if (!view) return true;
  if (msg == WM_CHAR) {
    if (code > L' ' && code != 0x7F) JumpToLetter(level, static_cast<wchar_t>(code));
    return true;
  }
  if (msg != WM_KEYDOWN) return true;
  HideTip();
  switch (code) {
    case VK_DOWN: MoveHot(level, 1, false); break;
    case VK_UP: MoveHot(level, -1, false); break;
    case VK_HOME: MoveHot(level, 1, true); break;
    case VK_END: MoveHot(level, -1, true); break;
    case VK_RIGHT: OpenSubmenu(level, view->Hot(), true); break;
    case VK_LEFT:
      if (level > 0) CloseAfter(level - 1);
      break;
    case VK_ESCAPE:
      if (level > 0) CloseAfter(level - 1);
      else Dismiss();
      break;
    case VK_RETURN:
    case VK_SPACE: Activate(level, view->Hot()); break;
    default: break;
  }
  return true;
}

// ---- QVMenuTracker: mouse ---------------------------------------------------------------------

void QVMenuTracker::KillTimers() {
  if (SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr()) {
    if (hover_timer_) app->GetClock().KillTimer(hover_timer_);
    if (tip_timer_) app->GetClock().KillTimer(tip_timer_);
    if (activation_check_) app->GetClock().KillTimer(activation_check_);
  }
  hover_timer_ = tip_timer_ = activation_check_ = 0;
}

void QVMenuTracker::ScheduleHover(int level, int row) {
  SOUI::SClock& clock = SOUI::SApplication::getSingleton().GetClock();
  if (hover_timer_) clock.KillTimer(hover_timer_);
  hover_timer_ = clock.SetTimer(IQVMenu::kSubmenuDelayMs, [this, level, row] {
    hover_timer_ = 0;
    CQVMenuView* view = View(level);
    if (done_ || !view || view->Hot() != row) return;
    const QVMenuAttr* r = view->Row(row);
    if (r && r->submenu && r->enabled) OpenSubmenu(level, row, false);
    else CloseAfter(level);
  }, false);
}

void QVMenuTracker::OnViewMove(int level, int row) {
  CQVMenuView* view = View(level);
  if (done_ || !view) return;
  const QVMenuAttr* r = view->Row(row);
  const int hot = r && Selectable(*r) ? row : -1;
  if (r && !r->enabled && !r->separator && !r->disabled_tip.IsEmpty()) {
    if (tip_text_ != r->disabled_tip || !tip_) {
      HideTip();
      SOUI::SClock& clock = SOUI::SApplication::getSingleton().GetClock();
      tip_timer_ = clock.SetTimer(IQVMenu::kTipDelayMs, [this, level, row] {
        tip_timer_ = 0;
        ShowTip(level, row);
      }, false);
    }
  } else {
    HideTip();
  }
  // Back over the row whose submenu is open: nothing to change.
  const bool over_open = Innermost() > level && hot >= 0 && hot == view->Hot();
  if (hot < 0 && Innermost() > level) return;  // keep the open submenu's row lit
  if (!over_open && hot != view->Hot()) {
    view->SetHot(hot, false);
    if (Innermost() > level || (r && r->submenu)) ScheduleHover(level, hot);
  }
}

void QVMenuTracker::OnViewLeave(int level) {
  CQVMenuView* view = View(level);
  HideTip();
  if (!view || done_) return;
  if (Innermost() == level) view->SetHot(-1, false);
}

void QVMenuTracker::OnViewPress(int level, int row) {
  CQVMenuView* view = View(level);
  const QVMenuAttr* r = view ? view->Row(row) : nullptr;
  if (r && r->submenu && r->enabled) OpenSubmenu(level, row, false);
}

void QVMenuTracker::OnViewRelease(int level, int row) {
  CQVMenuView* view = View(level);
  const QVMenuAttr* r = view ? view->Row(row) : nullptr;
  if (r && !r->submenu) Activate(level, row);
}

void QVMenuTracker::ShowTip(int level, int row) {
  CQVMenuView* view = View(level);
  const QVMenuAttr* r = view ? view->Row(row) : nullptr;
  if (done_ || !r) return;
  HideTip();
  const int s = view->GetScale();
  const CSize text = MeasureLabel(r->disabled_tip, s);
  CRect row_rc = view->RowRect(row);
  row_rc.OffsetRect(levels_[level].wnd->GetWindowRect().TopLeft());
  const int w = std::min<int>(text.cx + Dp(16, s), Dp(kMaxW, s)), h = Dp(24, s);
  const CRect work = SOUI::SApplication::getSingleton().GetWorkArea(owner_host_);
  int x = levels_[level].wnd->GetWindowRect().right + Dp(4, s);
  if (x + w > work.right) x = levels_[level].wnd->GetWindowRect().left - Dp(4, s) - w;
  const int y = std::clamp<int>(row_rc.top + (row_rc.Height() - h) / 2, work.top, std::max<int>(work.top, work.bottom - h));
  auto tip = std::make_unique<CQVMenuTipWnd>();
  tip->InitFromXmlText(L"<SOUI><root/></SOUI>");
  auto* v = new CQVMenuTipView(r->disabled_tip);
  v->SetAttribute(L"width", L"full", TRUE);
  v->SetAttribute(L"height", L"full", TRUE);
  tip->GetRoot()->InsertChild(v);
  if (!tip->Create(levels_[level].wnd->m_hWnd, x, y, w, h)) return;
  tip->EnableWindow(FALSE);  // never takes input
  tip->SetWindowPos(nullptr, x, y, w, h, SOUI::SWP_NOACTIVATE | SOUI::SWP_SHOWWINDOW);
  tip_ = std::move(tip);
  tip_text_ = r->disabled_tip;
}

void QVMenuTracker::HideTip() {
  if (tip_timer_) SOUI::SApplication::getSingleton().GetClock().KillTimer(tip_timer_);
  tip_timer_ = 0;
  tip_text_.Empty();
  if (!tip_) return;
  destroying_ = true;
  tip_->DestroyWindow();
  destroying_ = false;
  closed_.push_back(std::move(tip_));
}

// ---- QVMenuTracker: the rest of the application -------------------------------------------

bool QVMenuTracker::OnHostPress(SOUI::SHostWnd* host, UINT msg, CPoint pt) {
  (void)msg, (void)pt;
  if (done_ || IsOurs(host)) return false;
  // A press anywhere else only dismisses: it must not click what is below.
  Dismiss();
  return true;
}

void QVMenuTracker::OnHostChanged(SOUI::SHostWnd* host) {
  if (!done_ && host && host == owner_host_) Dismiss();
}

void QVMenuTracker::OnActiveHostChanged(SOUI::SHostWnd* active) {
  if (done_ || IsOurs(active) || (active && active == owner_host_) || activation_check_) return;
  // Checked once input settles: a window system may take the focus from the
  // owner for a moment while it gives it to the menu window being shown.
  activation_check_ = SOUI::SApplication::getSingleton().GetClock().SetTimer(0, [this] {
    activation_check_ = 0;
    SOUI::SHostWnd* now = SOUI::SApplication::getSingleton().GetActiveHost();
    if (!done_ && !IsOurs(now) && !(now && now == owner_host_)) Dismiss();
  }, false);
}

bool QVMenuTracker::Run(const QVMenuItems& items, const CRect& anchor, bool at_point) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  owner_host_ = SOUI::HostFromHwnd(owner_);
  if (!app || !owner_host_ || !SOUI::IsWindow(owner_)) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu::TrackPopupMenu  hWnd Not Valid" << static_cast<const void*>(owner_);
    return false;
  }
  if (ms_active) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu::TrackPopupMenu  a menu is already open; refused";
    return false;
  }
  if (items.empty()) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu::TrackPopupMenu  empty item list; nothing shown";
    return false;
  }
  ms_active = this;
  listener_ = app->AddHwndDestroyedListener([this](HWND hwnd) {
    if (hwnd == owner_) owner_host_ = nullptr;
    if (destroying_ || done_) return;
    bool ours = hwnd == owner_;
    for (const OpenMenu& l : levels_) ours = ours || l.wnd->m_hWnd == hwnd;
    if (ours) Dismiss();
  });
  if (!OpenLevel(items, {&items}, anchor, at_point)) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu::TrackPopupMenu  the menu window could not be created";
    return false;
  }
  app->AddInputHook(this);
  hooked_ = true;
  if (!app->RunModalLoop([this] { return done_; })) {
    QVLOG(QV_LOG_ERROR, "COMMON") << L"IQVMenu::TrackPopupMenu  nothing left that could end the menu";
    Dismiss();
  }
  Cleanup();
  return true;
}

void QVMenuTracker::Cleanup() {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  KillTimers();
  if (app && hooked_) app->RemoveInputHook(this);
  hooked_ = false;
  if (app && listener_ >= 0) app->RemoveHwndDestroyedListener(listener_);
  listener_ = -1;
  HideTip();
  CloseAfter(-1);
  closed_.clear();
  if (ms_active == this) ms_active = nullptr;
}

// ---- IQVMenu -------------------------------------------------------------------------------------

UINT IQVMenu::TrackPopupMenu(HWND owner, const QVMenuItems& items, CPoint pt) {
  QVMenuTracker tracker(owner, false);
  return tracker.Run(items, CRect(pt.x, pt.y, pt.x, pt.y), true) ? tracker.Result() : 0;
}

UINT IQVMenu::TrackPopupMenu(HWND owner, const QVMenuItems& items, const CRect& anchor) {
  QVMenuTracker tracker(owner, false);
  return tracker.Run(items, anchor, false) ? tracker.Result() : 0;
}

CQVMenuWnd* IQVMenu::GetOpenMenu(int level) {
  return QVMenuTracker::ms_active ? QVMenuTracker::ms_active->Level(level) : nullptr;
}

SStringW IQVMenu::GetShownTip() {
  return QVMenuTracker::ms_active ? QVMenuTracker::ms_active->ShownTip() : SStringW();
}

// ---- IQVMultiSelMenu ------------------------------------------------------------------------------

namespace {

std::set<UINT> TrackMulti(HWND owner, const QVMenuItems& items, const std::set<UINT>& chosen, const CRect& anchor,
                          bool at_point, bool* accepted) {
  if (accepted) *accepted = false;
  QVMenuItems rows = items;
  for (QVMenuAttr& r : rows) r.checked = !r.separator && chosen.count(r.id) > 0;
  QVMenuTracker tracker(owner, true);
  if (!tracker.Run(rows, anchor, at_point) || !tracker.Accepted()) return chosen;
  if (accepted) *accepted = true;
  std::set<UINT> result = chosen;
  for (const QVMenuAttr& r : tracker.FinalRows()) {
    if (r.separator || r.id == IQVMultiSelMenu::kSelectAllId || r.id == IQVMultiSelMenu::kClearId ||
        r.id == IQVMultiSelMenu::kOkId) {
      continue;
    }
    if (r.checked) result.insert(r.id);
    else result.erase(r.id);
  }
  return result;
}

}  // namespace

std::set<UINT> IQVMultiSelMenu::TrackPopupMenu(HWND owner, const QVMenuItems& items, const std::set<UINT>& chosen,
                                               const CRect& anchor, bool* accepted) {
  return TrackMulti(owner, items, chosen, anchor, false, accepted);
}

std::set<UINT> IQVMultiSelMenu::TrackPopupMenu(HWND owner, const QVMenuItems& items, const std::set<UINT>& chosen,
                                               CPoint pt, bool* accepted) {
  return TrackMulti(owner, items, chosen, CRect(pt.x, pt.y, pt.x, pt.y), true, accepted);
}

}  // namespace QVStandardCtrls
