#include "display/legend.h"

#include <algorithm>

#include "framework/style_tables.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

constexpr int kSquareDp = 8;
constexpr int kLineWidthDp = 12;
constexpr int kLineHeightDp = 2;
constexpr int kGapDp = 6;
const wchar_t kDefaultMark[] = L"@color\\style_skin_qv_text\\text_link_normal";
const wchar_t kMuted[] = L"@color\\style_skin_qv_text\\text_disable";

int Dp(int dp, int scale) { return SLayoutSize(static_cast<float>(dp), LayoutUnit::Dp).toPixelSize(scale); }

}  // namespace

CQVLegend::CQVLegend() {
  // A legend entry is a caption, not a push button: no frame.
  skin_.Clear();
  static const SwndStyle& style = SwndStyle::LeftAligned(L"hand");
  UseClassStyle(style);
  SetCheck(TRUE);
  GetEventSet()->addEvent(EventQVLegendChanged::EventID, EventQVLegendChanged::EventName());
}

HRESULT CQVLegend::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVLegend> kAttrs[] = {
      {L"color", &CQVLegend::OnAttrColor},
      {L"mark", &CQVLegend::OnAttrMark},
      {L"checked", &CQVLegend::OnAttrChecked},
      {L"qvstyle", &CQVLegend::OnAttrQVStyle},
  };
  static const QVAdmittedAttrs kAdmitted = {L"font", L"colorText", L"padding", L"padding_left", L"padding_right",
                                            L"padding_top", L"padding_bottom", L"height", L"cursor"};
  return QVDispatchAttribute<CQVLegend, SButton>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT CQVLegend::OnAttrColor(const SStringW& value, BOOL loading) {
  (void)loading;
  return mark_color_.Set(value) ? S_OK : E_FAIL;
}

HRESULT CQVLegend::OnAttrMark(const SStringW& value, BOOL loading) {
  if (value.CompareNoCase(L"line") == 0) shape_ = kMarkLine;
  else if (value.CompareNoCase(L"dot") == 0) shape_ = kMarkDot;
  else shape_ = kMarkSquare;
  if (!loading) RequestRelayout();
  return S_OK;
}

HRESULT CQVLegend::OnAttrChecked(const SStringW& value, BOOL loading) {
  // Loading states the starting point; no one listens yet.
  if (loading) SetCheck(QVParseBool(value) ? TRUE : FALSE);
  else SetLegendChecked(QVParseBool(value));
  return S_OK;
}

HRESULT CQVLegend::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  return ApplyQVTextStyle(this, value, loading);
}

void CQVLegend::SetLegendChecked(bool checked) {
  if (IsLegendChecked() == checked) return;
  SetCheck(checked ? TRUE : FALSE);
  Invalidate();
  EventQVLegendChanged evt(this);
  evt.checked = checked;
  FireEvent(evt);
}

BOOL CQVLegend::FireEvent(EventArgs& evt) {
  const bool own_click = evt.GetID() == EVT_CMD && evt.sender == this;
  const BOOL handled = SButton::FireEvent(evt);
  if (own_click) SetLegendChecked(!IsLegendChecked());
  return handled;
}

CSize CQVLegend::MarkSize() const {
  const int scale = GetScale();
  switch (shape_) {
    case kMarkLine: return CSize(Dp(kLineWidthDp, scale), Dp(kLineHeightDp, scale));
    default: return CSize(Dp(kSquareDp, scale), Dp(kSquareDp, scale));
  }
}

COLORREF CQVLegend::GetMarkPaintColor() const {
  if (!IsLegendChecked()) {
    if (!muted_color_.IsSet()) const_cast<ThemedColor&>(muted_color_).Set(kMuted);
    return muted_color_.Get();
  }
  if (!mark_color_.IsSet()) const_cast<ThemedColor&>(mark_color_).Set(kDefaultMark);
  return mark_color_.Get();
}

COLORREF CQVLegend::CaptionColor() const {
  if (IsLegendChecked()) return GetPaintTextColor();
  return GetMarkPaintColor();
}

CSize CQVLegend::GetDesiredSize(int width, int height) {
  CSize size = SButton::GetDesiredSize(width, height);
  const int scale = GetScale();
  const CSize mark = MarkSize();
  if (layout_param_.IsWrapContent(Orientation::Horz)) {
    const CRect pad = style_->GetPadding(scale);
    const int text = MeasureContent(-1).cx;
    size.cx = pad.left + mark.cx + (text > 0 ? Dp(kGapDp, scale) + text : 0) + pad.right;
  }
  if (layout_param_.IsWrapContent(Orientation::Vert)) size.cy = std::max<int>(size.cy, mark.cy);
  return size;
}

void CQVLegend::OnPaint(IRenderTarget* rt) {
  CRect rc = GetClientRect();
  const CRect pad = style_->GetPadding(GetScale());
  rc.DeflateRect(pad);
  const CSize mark = MarkSize();
  const CRect mrc(rc.left, rc.top + (rc.Height() - mark.cy) / 2, rc.left + mark.cx,
                  rc.top + (rc.Height() - mark.cy) / 2 + mark.cy);
  const COLORREF color = GetMarkPaintColor();
  if (shape_ == kMarkDot) {
    IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(color));
    rt->FillEllipse(&mrc);
    rt->SelectBrush(old);
  } else if (shape_ == kMarkSquare) {
    IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(color));
    const int r = Dp(2, GetScale());
    rt->FillRoundRect(&mrc, POINT{r, r});
    rt->SelectBrush(old);
  } else {
    rt->FillSolidRect(&mrc, color);
  }
  const SStringW text = GetWindowText();
  if (text.IsEmpty()) return;
  CRect trc = rc;
  trc.left = std::min<int>(mrc.right + Dp(kGapDp, GetScale()), rc.right);
  const COLORREF old = rt->SetTextColor(CaptionColor());
  DrawText(rt, text, text.GetLength(), &trc, DT_LEFT | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
  rt->SetTextColor(old);
}

}  // namespace QVStandardCtrls
