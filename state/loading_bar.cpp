#include "state/loading_bar.h"

#include <algorithm>

#include "soui/render.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

namespace {

const wchar_t* const kStateNames[] = {L"empty", L"remind", L"loading", L"complete", L"fail"};

constexpr int kBandHeightDp = 28;
constexpr int kLinkGapDp = 8;
constexpr uint32_t kSweepMs = 1200;  // one pass of the segment
constexpr UINT kTextFormat = SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_LEFT | SOUI::DT_NOPREFIX;

int Dp(int v, int scale) { return v * scale / 100; }

}  // namespace

bool ParseQVLoadingBarState(const SStringW& word, EnQVLoadingBarState* out) {
  for (int i = 0; i < 5; ++i) {
    if (word.CompareNoCase(kStateNames[i]) != 0) continue;
    if (out) *out = static_cast<EnQVLoadingBarState>(i);
    return true;
  }
  return false;
}

const wchar_t* QVLoadingBarStateName(EnQVLoadingBarState state) {
  const int i = static_cast<int>(state);
  return i >= 0 && i < 5 ? kStateNames[i] : L"";
}

// ---- attributes and states ----------------------------------------------------------

QVLoadingBarBase::QVLoadingBarBase()
    : gate_(this, QVLoadingBar_Loading, QVLoadingBar_Empty, [this](int state) { Show(state); }),
      ticker_([this] { return shown_ == QVLoadingBar_Loading || shown_ == QVLoadingBar_Complete; }) {
  GetEventSet()->addEvent(EventQVLoadingBarClick::EventID, EventQVLoadingBarClick::EventName());
  ApplyStyle(FindQVLoadingBarStyle(L"LB1"));
}

QVLoadingBarBase::~QVLoadingBarBase() { ticker_.Stop(); }

HRESULT QVLoadingBarBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<QVLoadingBarBase> kAttrs[] = {
      {L"state", &QVLoadingBarBase::OnAttrState},
      {L"qvstyle", &QVLoadingBarBase::OnAttrQVStyle},
      {L"remindtext", &QVLoadingBarBase::OnAttrText<&QVLoadingBarBase::remind_text_>},
      {L"remindlink", &QVLoadingBarBase::OnAttrText<&QVLoadingBarBase::remind_link_>},
      {L"failtext", &QVLoadingBarBase::OnAttrText<&QVLoadingBarBase::fail_text_>},
      {L"faillink", &QVLoadingBarBase::OnAttrText<&QVLoadingBarBase::fail_link_>},
      {L"showdelay", &QVLoadingBarBase::OnAttrShowDelay},
      {L"minshowtime", &QVLoadingBarBase::OnAttrMinShowTime},
      {L"fadetime", &QVLoadingBarBase::OnAttrFadeTime},
  };
  static const QVAdmittedAttrs kAdmitted = {L"height", L"margin", L"padding", L"padding_left", L"padding_right"};
  return QVDispatchAttribute<QVLoadingBarBase, SOUI::SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT QVLoadingBarBase::OnAttrState(const SStringW& value, BOOL loading) {
  (void)loading;
  EnQVLoadingBarState state;
  if (!ParseQVLoadingBarState(value, &state)) {
    QVLogBadValue(this, L"state", value);
    return S_OK;
  }
  SetLoadingState(state);
  return S_OK;
}

HRESULT QVLoadingBarBase::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  (void)loading;
  QVLoadingBarStylePtr rec = FindQVLoadingBarStyle(value);
  if (!rec) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  ApplyStyle(rec);
  return S_OK;
}

HRESULT QVLoadingBarBase::OnAttrShowDelay(const SStringW& value, BOOL) {
  gate_.show_delay = QVParseBoundedInt(value, 200, 0, 60000);
  return S_OK;
}

HRESULT QVLoadingBarBase::OnAttrMinShowTime(const SStringW& value, BOOL) {
  gate_.min_show = QVParseBoundedInt(value, 400, 0, 60000);
  return S_OK;
}

HRESULT QVLoadingBarBase::OnAttrFadeTime(const SStringW& value, BOOL) {
  fade_time_ = QVParseBoundedInt(value, 400, 0, 60000);
  return S_OK;
}

void QVLoadingBarBase::ApplyStyle(const QVLoadingBarStylePtr& rec) {
  if (!rec) return;
  style_info_ = rec;
  line_color_.Set(rec->line_color);
  track_color_.Set(rec->track_color);
  remind_bkgnd_.Set(rec->remind_bkgnd);
  fail_bkgnd_.Set(rec->fail_bkgnd);
  link_color_.Set(rec->link_color);
  SWindow::SetAttribute(L"font", rec->font, FALSE);
  SWindow::SetAttribute(L"colorText", rec->text_color, FALSE);
  Invalidate();
}

void QVLoadingBarBase::SetLoadingState(int state) {
  if (state < QVLoadingBar_Empty || state > QVLoadingBar_Fail) {
    QVLogBadValue(this, L"state", SStringW::Format2(L"%d", state));
    return;
  }
  // Nothing was shown, so nothing completes: a quick load stays invisible.
  if (state == QVLoadingBar_Complete && shown_ != QVLoadingBar_Loading) state = QVLoadingBar_Empty;
  gate_.Request(state);
}

void QVLoadingBarBase::Show(int state) {
  KillTimer(kFadeTimer);
  shown_ = static_cast<EnQVLoadingBarState>(state);
  if (shown_ == QVLoadingBar_Complete) {
    fade_start_ = SOUI::GetTickCount();
    SetTimer(kFadeTimer, std::max(1, fade_time_));
  }
  press_on_link_ = false;
  Invalidate();
  ticker_.Update(this);
}

void QVLoadingBarBase::OnTimer(int id) {
  if (gate_.OnTimer(id)) return;
  if (id == kFadeTimer) {
    KillTimer(kFadeTimer);
    gate_.Force(QVLoadingBar_Empty);
  } else {
    SWindow::OnTimer(id);
  }
}

void QVLoadingBarBase::OnShowWindow(BOOL show, UINT status) {
  SWindow::OnShowWindow(show, status);
  ticker_.Update(this);
}

int QVLoadingBarBase::OnCreate() {
  const int result = SWindow::OnCreate();
  ticker_.Update(this);
  return result;
}

void QVLoadingBarBase::OnDestroy() {
  ticker_.Stop();
  SWindow::OnDestroy();
}

// ---- geometry and painting ------------------------------------------------------------

CSize QVLoadingBarBase::MeasureContent(int width) {
  (void)width;
  return CSize(0, Dp(kBandHeightDp, GetScale()));
}

CSize QVLoadingBarBase::TextExtent(const SStringW& text) const {
  return text.IsEmpty() ? CSize() : MeasureTextExtent(text, -1, SOUI::DT_SINGLELINE | SOUI::DT_NOPREFIX);
}

CRect QVLoadingBarBase::GetLinkRect() const {
  if (!IsBand() || Link().IsEmpty()) return CRect();
  const CRect rc = GetClientRect();
  const int gap = Dp(kLinkGapDp, GetScale());
  const int msg_w = Message().IsEmpty() ? 0 : TextExtent(Message()).cx + gap;
  const int link_w = TextExtent(Link()).cx;
  // Message and link centred together; the link wins when space runs out.
  const int left = std::max<int>(rc.left, rc.left + (rc.Width() - msg_w - link_w) / 2);
  const int link_left = std::min<int>(left + msg_w, rc.right - link_w);
  return CRect(std::max<int>(rc.left, link_left), rc.top, std::min<int>(rc.right, link_left + link_w), rc.bottom);
}

CRect QVLoadingBarBase::GetLineRect() const {
  const CRect rc = GetClientRect();
  const int h = std::min<int>(rc.Height(), Dp(style_info_ ? style_info_->line_dp : 2, GetScale()));
  return AtBottom() ? CRect(rc.left, rc.bottom - h, rc.right, rc.bottom) : CRect(rc.left, rc.top, rc.right, rc.top + h);
}

CRect QVLoadingBarBase::GetSegmentRect() const {
  if (shown_ != QVLoadingBar_Loading) return CRect();
  return QVSweepSegment(GetLineRect(), SOUI::GetTickCount() - gate_.BusySince(), kSweepMs);
}

void QVLoadingBarBase::OnEraseBkgnd(SOUI::IRenderTarget* rt) {
  if (!IsBand()) return;
  const CRect rc = GetClientRect();
  const COLORREF bk = (shown_ == QVLoadingBar_Fail ? fail_bkgnd_ : remind_bkgnd_).Get();
  if (bk != CR_INVALID) rt->FillSolidRect(&rc, bk);
}

void QVLoadingBarBase::OnPaint(SOUI::IRenderTarget* rt) {
  // A bar shown again after a hidden stretch picks its frames up here.
  ticker_.Update(this);
  if (shown_ == QVLoadingBar_Loading) {
    const CRect line = GetLineRect();
    if (track_color_.Get() != CR_INVALID) rt->FillSolidRect(&line, track_color_.Get());
    const CRect seg = GetSegmentRect();
    if (!seg.IsRectEmpty()) rt->FillSolidRect(&seg, line_color_.Get());
    return;
  }
  if (shown_ == QVLoadingBar_Complete) {
    const uint32_t elapsed = SOUI::GetTickCount() - fade_start_;
    const int alpha = fade_time_ <= 0 ? 0 : 255 - static_cast<int>(std::min<uint32_t>(elapsed, fade_time_) * 255 / fade_time_);
    const CRect line = GetLineRect();
    if (alpha > 0) rt->FillSolidRect(&line, QVFadeColor(line_color_.Get(), alpha));
    return;
  }
  if (!IsBand()) return;
  const CRect link = GetLinkRect();
  const CRect rc = GetClientRect();
  if (!Message().IsEmpty()) {
    CRect msg = rc;
    if (!link.IsRectEmpty()) {
      msg.right = link.left - Dp(kLinkGapDp, GetScale());
      msg.left = std::max<int>(rc.left, msg.right - TextExtent(Message()).cx);
    } else {
      msg.left = std::max<int>(rc.left, rc.left + (rc.Width() - TextExtent(Message()).cx) / 2);
    }
    if (msg.right > msg.left) DrawText(rt, Message(), Message().GetLength(), &msg, kTextFormat | SOUI::DT_END_ELLIPSIS);
  }
  if (!link.IsRectEmpty()) {
    CRect lrc = link;
    const COLORREF old = rt->SetTextColor(link_color_.Get());
    rt->DrawText(Link(), Link().GetLength(), &lrc, kTextFormat);
    rt->SetTextColor(old);
  }
}

// ---- input ------------------------------------------------------------------------------

SOUI::SWindow* QVLoadingBarBase::SwndFromPoint(CPoint pt, BOOL include_msg_transparent) {
  // Only the band is there to touch; the line lets the page be clicked.
  if (!IsBand()) return nullptr;
  return SWindow::SwndFromPoint(pt, include_msg_transparent);
}

SStringW QVLoadingBarBase::GetCursorName(CPoint pt) const {
  return GetLinkRect().PtInRect(pt) ? SStringW(L"hand") : SWindow::GetCursorName(pt);
}

void QVLoadingBarBase::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  press_on_link_ = GetLinkRect().PtInRect(pt);
}

void QVLoadingBarBase::OnLButtonUp(UINT flags, CPoint pt) {
  const bool click = press_on_link_ && GetLinkRect().PtInRect(pt);
  press_on_link_ = false;
  SWindow::OnLButtonUp(flags, pt);
  if (!click) return;
  EventQVLoadingBarClick evt(this);
  evt.state = shown_;
  FireEvent(evt);
}

}  // namespace QVStandardCtrls
