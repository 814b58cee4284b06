#include "state/state_common.h"

#include <algorithm>
#include <cmath>

#include "qvhost/qvlog.h"
#include "soui/hostwnd.h"

namespace QVStandardCtrls {

void QVFrameTicker::Update(SOUI::SWindow* wnd) {
  if (!wnd || !Wanted(wnd)) {
    Stop();
    return;
  }
  if (mgr_ && mgr_ == wnd->GetContainer()) return;
  Stop();
  wnd_ = wnd;
  mgr_ = wnd->GetContainer();
  mgr_->RegisterTimelineHandler(this);
}

void QVFrameTicker::Stop() {
  if (mgr_) mgr_->UnregisterTimelineHandler(this);
  mgr_ = nullptr;
  wnd_ = nullptr;
}

void QVFrameTicker::OnNextFrame() {
  if (!wnd_ || wnd_->GetContainer() != mgr_ || !Wanted(wnd_)) {
    Stop();
    return;
  }
  wnd_->Invalidate();
}

bool QVFrameTicker::IsShowing(const SOUI::SWindow* wnd) {
  if (!wnd || !wnd->GetContainer() || !wnd->IsVisible(TRUE)) return false;
  const SOUI::SHostWnd* host = SOUI::HostFromHwnd(wnd->GetContainer()->GetHostHwnd());
  return host && host->IsWindowVisible();
}

QVStateGate::QVStateGate(SOUI::SWindow* wnd, int busy, int idle, std::function<void(int)> show)
    : wnd_(wnd), busy_(busy), idle_(idle), show_(std::move(show)), requested_(idle), shown_(idle) {}

void QVStateGate::Request(int state) {
  if (state == requested_) return;
  requested_ = state;
  Apply();
}

void QVStateGate::Force(int state) {
  wnd_->KillTimer(kDelayTimer);
  wnd_->KillTimer(kMinShowTimer);
  min_wait_ = false;
  requested_ = state;
  SetShown(state);
}

void QVStateGate::Apply() {
  if (shown_ == busy_ && requested_ != busy_) {
    const uint32_t shown_for = SOUI::GetTickCount() - busy_since_;
    if (shown_for < static_cast<uint32_t>(min_show)) {
      if (!min_wait_) wnd_->SetTimer(kMinShowTimer, min_show - shown_for);
      min_wait_ = true;
      return;
    }
  }
  if (min_wait_) {
    wnd_->KillTimer(kMinShowTimer);
    min_wait_ = false;
  }
  if (requested_ == busy_) {
    if (shown_ == busy_) return;
    // What showed is stale now; busy waits for its delay.
    SetShown(idle_);
    if (show_delay > 0) wnd_->SetTimer(kDelayTimer, show_delay);
    else SetShown(busy_);
    return;
  }
  wnd_->KillTimer(kDelayTimer);
  SetShown(requested_);
}

bool QVStateGate::OnTimer(int id) {
  if (id == kDelayTimer) {
    wnd_->KillTimer(kDelayTimer);
    if (requested_ == busy_) SetShown(busy_);
    return true;
  }
  if (id == kMinShowTimer) {
    wnd_->KillTimer(kMinShowTimer);
    min_wait_ = false;
    Apply();
    return true;
  }
  return false;
}

void QVStateGate::SetShown(int state) {
  if (state == shown_) return;
  shown_ = state;
  if (state == busy_) busy_since_ = SOUI::GetTickCount();
  if (show_) show_(state);
}

SOUI::CRect QVSweepSegment(const SOUI::CRect& line, uint32_t elapsed, uint32_t period) {
  const int w = line.Width();
  if (w <= 0 || period == 0) return SOUI::CRect();
  const int seg = std::max(1, w * 3 / 10);
  const double t = static_cast<double>(elapsed % period) / period;
  const double eased = 0.5 - 0.5 * std::cos(t * 3.14159265358979);
  const int x = line.left - seg + static_cast<int>((w + seg) * eased);
  return SOUI::CRect(std::max<int>(x, line.left), line.top, std::min<int>(x + seg, line.right), line.bottom);
}

int QVParseBoundedInt(const SOUI::SStringW& value, int def, int lo, int hi) {
  int v = def;
  if (!StrToIntExW(value, STIF_SUPPORT_HEX, &v)) v = def;
  return std::clamp(v, lo, hi);
}

COLORREF QVFadeColor(COLORREF c, int alpha) {
  if (c == CR_INVALID) return c;
  const unsigned a = ((c >> 24) & 0xFF) * static_cast<unsigned>(std::clamp(alpha, 0, 255)) / 255;
  return (c & 0x00FFFFFFu) | (a << 24);
}

void QVLogBadValue(const SOUI::SWindow* wnd, const wchar_t* attr, const SOUI::SStringW& value) {
  QVLOG(QV_LOG_WARN, "COMMON") << (wnd ? wnd->GetObjectClass() : L"?") << L" '" << (wnd ? wnd->GetName() : SOUI::SStringW())
                               << L"': " << attr << L"=\"" << value << L"\" not known; nothing changed";
}

}  // namespace QVStandardCtrls
