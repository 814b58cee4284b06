// SWindow: the message entry, default input handlers, events, timers, capture.
#include "soui/swnd.h"

#include "soui/sapp.h"

namespace SOUI {

// ---- input -----------------------------------------------------------------------------

LRESULT SWindow::SwndProc(UINT msg, WPARAM wp, LPARAM lp) {
  LRESULT result = 0;
  ProcessSwndMessage(msg, wp, lp, result);
  return result;
}

BOOL SWindow::ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  const CPoint pt(GET_X_LPARAM(lp), GET_Y_LPARAM(lp));
  const UINT flags = static_cast<UINT>(wp);
  result = 0;
  switch (msg) {
    case WM_LBUTTONDOWN: OnLButtonDown(flags, pt); return TRUE;
    case WM_LBUTTONUP: OnLButtonUp(flags, pt); return TRUE;
    case WM_LBUTTONDBLCLK: OnLButtonDblClk(flags, pt); return TRUE;
    case WM_RBUTTONDOWN: OnRButtonDown(flags, pt); return TRUE;
    case WM_RBUTTONUP: OnRButtonUp(flags, pt); return TRUE;
    case WM_MOUSEMOVE: OnMouseMove(flags, pt); return TRUE;
    case WM_MOUSEHOVER: OnMouseHover(flags, pt); return TRUE;
    case WM_MOUSELEAVE: OnMouseLeave(); return TRUE;
    case WM_MOUSEWHEEL:
      result = OnMouseWheel(LOWORD(wp), static_cast<short>(HIWORD(wp)), pt);
      return result != 0;
    case WM_KEYDOWN: OnKeyDown(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return TRUE;
    case WM_KEYUP: OnKeyUp(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return TRUE;
    case WM_CHAR: OnChar(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return TRUE;
    case WM_SETFOCUS: OnSetFocus(); return TRUE;
    case WM_KILLFOCUS: OnKillFocus(); return TRUE;
    case WM_TIMER: OnTimer(static_cast<int>(wp)); return TRUE;
    default: return FALSE;
  }
}

void SWindow::OnLButtonDown(UINT flags, CPoint pt) {
  (void)flags;
  if (focusable_) SetFocus();
  ModifyState(WndState_PushDown, 0, TRUE);
  EventLButtonDown evt(this);
  evt.pt = pt;
  FireEvent(evt);
}

void SWindow::OnLButtonUp(UINT flags, CPoint pt) {
  (void)flags;
  const bool was_pushed = (state_ & WndState_PushDown) != 0;
  ModifyState(0, WndState_PushDown, TRUE);
  EventLButtonUp evt(this);
  evt.pt = pt;
  FireEvent(evt);
  // A click is a press and a release inside the window.
  if (was_pushed && rect_.PtInRect(pt) && !IsDisabled(TRUE)) FireCommand();
}

void SWindow::OnLButtonDblClk(UINT flags, CPoint pt) { OnLButtonDown(flags, pt); }
void SWindow::OnRButtonDown(UINT flags, CPoint pt) { (void)flags; (void)pt; }

void SWindow::OnRButtonUp(UINT flags, CPoint pt) {
  (void)flags;
  EventCtxMenu evt(this);
  evt.pt = pt;
  FireEvent(evt);
}

void SWindow::OnMouseMove(UINT flags, CPoint pt) { (void)flags; (void)pt; }

void SWindow::OnMouseHover(UINT flags, CPoint pt) {
  (void)flags;
  (void)pt;
  ModifyState(WndState_Hover, 0, TRUE);
  EventSwndMouseHover evt(this);
  FireEvent(evt);
}

void SWindow::OnMouseLeave() {
  ModifyState(0, WndState_Hover, TRUE);
  EventSwndMouseLeave evt(this);
  FireEvent(evt);
}

BOOL SWindow::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  (void)flags;
  (void)delta;
  (void)pt;
  return FALSE;
}

void SWindow::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  (void)repeat;
  SWindow* parent = parent_;
  EventKeyDown evt(this);
  evt.nChar = vk;
  evt.nFlags = flags;
  if (FireEvent(evt) || !IsNavigationKey(vk)) return;
  for (SWindow* w = parent; w; w = w->parent_) {
    if (w->OnNavigationKey(vk)) break;
  }
}

void SWindow::OnKeyUp(UINT vk, UINT repeat, UINT flags) { (void)vk; (void)repeat; (void)flags; }
void SWindow::OnChar(UINT ch, UINT repeat, UINT flags) { (void)ch; (void)repeat; (void)flags; }

void SWindow::OnSetFocus() {
  EventSetFocus evt(this);
  FireEvent(evt);
  Invalidate();
}

void SWindow::OnKillFocus() {
  EventKillFocus evt(this);
  FireEvent(evt);
  Invalidate();
}

void SWindow::OnTimer(int id) { (void)id; }
int SWindow::OnCreate() { return 0; }
void SWindow::OnDestroy() {}
void SWindow::OnSize(UINT type, CSize size) { (void)type; (void)size; }
void SWindow::OnShowWindow(BOOL show, UINT status) { (void)show; (void)status; }
void SWindow::OnEnable(BOOL enable) { (void)enable; }

// ---- events, timers, capture ------------------------------------------------------------

BOOL SWindow::FireEvent(EventArgs& evt) {
  if (events_.isMuted()) return FALSE;
  events_.FireEvent(evt);
  if (!evt.bubbleUp) return evt.handled > 0;
  if (owner_) return owner_->FireEvent(evt);
  if (container_) return container_->OnFireEvent(evt);
  return evt.handled > 0;
}

BOOL SWindow::FireCommand() {
  EventCmd evt(this);
  return FireEvent(evt);
}

BOOL SWindow::SetTimer(int id, UINT ms) {
  if (!container_) return FALSE;
  container_->SetSwndTimer(this, id, ms);
  return TRUE;
}

void SWindow::KillTimer(int id) {
  if (container_) container_->KillSwndTimer(this, id);
}

void SWindow::SetCapture() {
  if (container_) container_->SetCapture(this);
}

void SWindow::ReleaseCapture() {
  if (container_) container_->ReleaseCapture(this);
}

BOOL SWindow::IsCaptured() const { return container_ && container_->GetCapture() == this; }

}  // namespace SOUI
