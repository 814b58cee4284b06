#include "state/state_common.h"

#include <algorithm>

#include "qvhost/qvlog.h"
#include "soui/hostwnd.h"

namespace QVStandardCtrls {

void QVFrameTicker::Start(SOUI::SWindow* wnd) {
  if (mgr_ || !wnd || !wnd->GetContainer()) return;
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
  if (!wnd_ || wnd_->GetContainer() != mgr_ || !on_frame_ || !on_frame_()) Stop();
}

bool QVFrameTicker::IsShowing(const SOUI::SWindow* wnd) {
  if (!wnd || !wnd->GetContainer() || !wnd->IsVisible(TRUE)) return false;
  const SOUI::SHostWnd* host = SOUI::HostFromHwnd(wnd->GetContainer()->GetHostHwnd());
  return host && host->IsWindowVisible();
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
