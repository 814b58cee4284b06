#include "state/progress.h"

#include <algorithm>
#include <climits>
#include <map>

#include "soui/render.h"

namespace QVStandardCtrls {

using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

namespace {

struct ProgressStyle {
  int bar_dp;
  const wchar_t* fill;
};

const std::map<SStringW, ProgressStyle>& ProgressStyles() {
  static const std::map<SStringW, ProgressStyle> kTable = {
      {L"PG1", {4, L"@color\\style_qv_state\\accent"}},
      {L"PG2", {8, L"@color\\style_qv_state\\accent"}},
      {L"PG3", {4, L"@color\\style_qv_state\\success"}},
      {L"PG4", {4, L"@color\\style_qv_state\\error"}},
  };
  return kTable;
}

constexpr uint32_t kSweepMs = 1500;
constexpr int kTextGapDp = 8;

int Dp(int v, int scale) { return v * scale / 100; }

}  // namespace

CQVProgress::CQVProgress()
    : ticker_([this] { return indeterminate_; }) {
  msg_transparent_ = true;
  track_.Set(L"@color\\style_qv_state\\track");
  fill_.Set(ProgressStyles().at(style_code_).fill);
  SWindow::SetAttribute(L"colorText", L"@color\\style_skin_qv_text\\text_h2", FALSE);
  SWindow::SetAttribute(L"font", L"size:12dp", FALSE);
}

CQVProgress::~CQVProgress() { ticker_.Stop(); }

HRESULT CQVProgress::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVProgress> kAttrs[] = {
      {L"min", &CQVProgress::OnAttrMin},
      {L"max", &CQVProgress::OnAttrMax},
      {L"value", &CQVProgress::OnAttrValue},
      {L"showtext", &CQVProgress::OnAttrShowText},
      {L"indeterminate", &CQVProgress::OnAttrIndeterminate},
      {L"qvstyle", &CQVProgress::OnAttrQVStyle},
  };
  static const QVAdmittedAttrs kAdmitted = {L"height", L"margin", L"padding", L"padding_left", L"padding_right"};
  return QVDispatchAttribute<CQVProgress, SOUI::SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT CQVProgress::OnAttrMin(const SStringW& value, BOOL) {
  const int min = QVParseBoundedInt(value, 0, INT_MIN, INT_MAX);
  SetRange(min, std::max(min, max_));
  return S_OK;
}

HRESULT CQVProgress::OnAttrMax(const SStringW& value, BOOL) {
  SetRange(min_, QVParseBoundedInt(value, 100, INT_MIN, INT_MAX));
  return S_OK;
}

HRESULT CQVProgress::OnAttrValue(const SStringW& value, BOOL) {
  SetValue(QVParseBoundedInt(value, 0, INT_MIN, INT_MAX));
  return S_OK;
}

HRESULT CQVProgress::OnAttrShowText(const SStringW& value, BOOL) {
  show_text_ = QVParseBool(value);
  Invalidate();
  return S_OK;
}

HRESULT CQVProgress::OnAttrIndeterminate(const SStringW& value, BOOL) {
  SetIndeterminate(QVParseBool(value));
  return S_OK;
}

HRESULT CQVProgress::OnAttrQVStyle(const SStringW& value, BOOL) {
  auto it = ProgressStyles().find(value);
  if (it == ProgressStyles().end()) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  style_code_ = value;
  bar_dp_ = it->second.bar_dp;
  fill_.Set(it->second.fill);
  RequestRelayout();
  Invalidate();
  return S_OK;
}

void CQVProgress::SetRange(int min, int max) {
  max = std::max(min, max);
  if (min == min_ && max == max_) return;
  min_ = min;
  max_ = max;
  value_ = std::clamp(value_, min_, max_);
  Invalidate();
}

void CQVProgress::SetValue(int value) {
  value = std::clamp(value, min_, max_);
  if (value == value_) return;
  value_ = value;
  Invalidate();
}

void CQVProgress::SetIndeterminate(bool on) {
  if (on == indeterminate_) return;
  indeterminate_ = on;
  sweep_start_ = SOUI::GetTickCount();
  Invalidate();
  ticker_.Update(this);
}

int CQVProgress::GetPercent() const {
  if (max_ <= min_) return 0;
  return static_cast<int>(100LL * (static_cast<long long>(value_) - min_) / (static_cast<long long>(max_) - min_));
}

void CQVProgress::OnShowWindow(BOOL show, UINT status) {
  SWindow::OnShowWindow(show, status);
  ticker_.Update(this);
}

int CQVProgress::OnCreate() {
  const int result = SWindow::OnCreate();
  ticker_.Update(this);
  return result;
}

void CQVProgress::OnDestroy() {
  ticker_.Stop();
  SWindow::OnDestroy();
}

int CQVProgress::TextWidth() const {
  // Room for the widest text, so the bar does not jump as digits change.
  return show_text_ && !indeterminate_ ? MeasureTextExtent(L"100%", -1, SOUI::DT_SINGLELINE).cx : 0;
}

CSize CQVProgress::MeasureContent(int width) {
  (void)width;
  const int scale = GetScale();
  const int text_h = show_text_ ? MeasureTextExtent(L"100%", -1, SOUI::DT_SINGLELINE).cy : 0;
  return CSize(Dp(120, scale), std::max(Dp(bar_dp_, scale), text_h));
}

CRect CQVProgress::GetTrackRect() const {
  const CRect rc = GetClientRect();
  const int text_w = TextWidth();
  const int right = text_w > 0 ? rc.right - text_w - Dp(kTextGapDp, GetScale()) : rc.right;
  const int h = std::min<int>(rc.Height(), std::max(1, Dp(bar_dp_, GetScale())));
  const int top = rc.top + (rc.Height() - h) / 2;
  return CRect(rc.left, top, std::max<int>(rc.left, right), top + h);
}

CRect CQVProgress::GetFilledRect() const {
  const CRect track = GetTrackRect();
  if (indeterminate_) return QVSweepSegment(track, SOUI::GetTickCount() - sweep_start_, kSweepMs);
  if (max_ <= min_) return CRect();
  const long long w = static_cast<long long>(track.Width()) * (static_cast<long long>(value_) - min_) /
                      (static_cast<long long>(max_) - min_);
  return CRect(track.left, track.top, track.left + static_cast<int>(w), track.bottom);
}

void CQVProgress::OnPaint(SOUI::IRenderTarget* rt) {
  // Shown again after a hidden stretch: the sweep resumes here.
  ticker_.Update(this);
  const CRect track = GetTrackRect();
  const SOUI::CPoint radius(track.Height() / 2, track.Height() / 2);
  auto fill = [&](const CRect& rc, COLORREF c) {
    if (!rc.IsRectEmpty() && c != CR_INVALID) QVWithBrush(rt, c, [&] { rt->FillRoundRect(&rc, radius); });
  };
  fill(track, track_.Get());
  fill(GetFilledRect(), fill_.Get());
  if (TextWidth() <= 0) return;
  const SStringW text = GetPercentText();
  CRect text_rc = GetClientRect();
  text_rc.left = track.right + Dp(kTextGapDp, GetScale());
  DrawText(rt, text, text.GetLength(), &text_rc,
           SOUI::DT_SINGLELINE | SOUI::DT_RIGHT | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX);
}

}  // namespace QVStandardCtrls
