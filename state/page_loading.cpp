#include "state/page_loading.h"

#include <algorithm>
#include <cmath>

#include "display/buttons.h"
#include "soui/render.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

namespace {

const wchar_t* const kStateNames[] = {L"none", L"loading", L"empty", L"fail"};

constexpr int kSpinnerDots = 12;
constexpr uint32_t kSpinnerStepMs = 80;
constexpr int kTextGapDp = 12;
constexpr int kButtonGapDp = 16;

int Dp(int v, int scale) { return v * scale / 100; }

}  // namespace

QVPageLoadingCtrl::QVPageLoadingCtrl()
    : gate_(this, QVPageLoading_Loading, QVPageLoading_None, [this](int state) { Show(state); }),
      ticker_([this] { return shown_ == QVPageLoading_Loading; }) {
  GetEventSet()->addEvent(EventQVPageLoadingRefresh::EventID, EventQVPageLoadingRefresh::EventName());
  refresh_ = new CQVButton();
  refresh_->SetAttribute(L"text", L"Refresh", FALSE);
  // Content-sized: the style's minimum width and paddings apply.
  refresh_->SetAttribute(L"width", L"-1", FALSE);
  refresh_->SetVisible(FALSE);
  refresh_->subscribeEvent(SOUI::EVT_CMD, [this](SOUI::EventArgs* cmd) {
    // The refresh event stands for the click; the command goes no further.
    cmd->bubbleUp = false;
    EventQVPageLoadingRefresh evt(this);
    FireEvent(evt);
    return true;
  });
  InsertChild(refresh_);
  ApplyStyle(FindQVPageLoadingCtrlStyle(L"PL1"));
}

QVPageLoadingCtrl::~QVPageLoadingCtrl() { ticker_.Stop(); }

HRESULT QVPageLoadingCtrl::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<QVPageLoadingCtrl> kAttrs[] = {
      {L"state", &QVPageLoadingCtrl::OnAttrState},
      {L"qvstyle", &QVPageLoadingCtrl::OnAttrQVStyle},
      {L"loadingtext", &QVPageLoadingCtrl::OnAttrText<&QVPageLoadingCtrl::loading_text_>},
      {L"emptytext", &QVPageLoadingCtrl::OnAttrText<&QVPageLoadingCtrl::empty_text_>},
      {L"failtext", &QVPageLoadingCtrl::OnAttrText<&QVPageLoadingCtrl::fail_text_>},
      {L"refreshtext", &QVPageLoadingCtrl::OnAttrRefreshText},
      {L"emptyskin", &QVPageLoadingCtrl::OnAttrEmptySkin},
      {L"failskin", &QVPageLoadingCtrl::OnAttrFailSkin},
      {L"showdelay", &QVPageLoadingCtrl::OnAttrShowDelay},
      {L"minshowtime", &QVPageLoadingCtrl::OnAttrMinShowTime},
  };
  static const QVAdmittedAttrs kAdmitted = {L"colorBkgnd", L"padding", L"margin"};
  return QVDispatchAttribute<QVPageLoadingCtrl, SOUI::SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT QVPageLoadingCtrl::OnAttrState(const SStringW& value, BOOL) {
  for (int i = 0; i < 4; ++i) {
    if (value.CompareNoCase(kStateNames[i]) != 0) continue;
    SetPageState(i);
    return S_OK;
  }
  QVLogBadValue(this, L"state", value);
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrQVStyle(const SStringW& value, BOOL) {
  QVPageLoadingCtrlStylePtr rec = FindQVPageLoadingCtrlStyle(value);
  if (!rec) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  ApplyStyle(rec);
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrRefreshText(const SStringW& value, BOOL) {
  refresh_->SetAttribute(L"text", value, FALSE);
  RequestRelayout();
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrEmptySkin(const SStringW& value, BOOL) {
  empty_skin_.Set(value);
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrFailSkin(const SStringW& value, BOOL) {
  fail_skin_.Set(value);
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrShowDelay(const SStringW& value, BOOL) {
  gate_.show_delay = QVParseBoundedInt(value, 200, 0, 60000);
  return S_OK;
}

HRESULT QVPageLoadingCtrl::OnAttrMinShowTime(const SStringW& value, BOOL) {
  gate_.min_show = QVParseBoundedInt(value, 400, 0, 60000);
  return S_OK;
}

void QVPageLoadingCtrl::ApplyStyle(const QVPageLoadingCtrlStylePtr& rec) {
  if (!rec) return;
  style_info_ = rec;
  bkgnd_.Set(rec->bkgnd);
  spinner_.Set(rec->spinner_color);
  picture_line_.Set(rec->picture_color);
  picture_fill_.Set(rec->picture_fill);
  fail_color_.Set(rec->fail_color);
  SWindow::SetAttribute(L"font", rec->font, FALSE);
  SWindow::SetAttribute(L"colorText", rec->text_color, FALSE);
  refresh_->SetAttribute(L"qvstyle", rec->button_style, FALSE);
  RequestRelayout();
  Invalidate();
}

// ---- states ---------------------------------------------------------------------------

void QVPageLoadingCtrl::SetPageState(int state) {
  if (state < QVPageLoading_None || state > QVPageLoading_Fail) {
    QVLogBadValue(this, L"state", SStringW::Format2(L"%d", state));
    return;
  }
  gate_.Request(state);
}

void QVPageLoadingCtrl::Show(int state) {
  shown_ = static_cast<EnQVPageLoadingState>(state);
  refresh_->SetVisible(shown_ == QVPageLoading_Fail ? TRUE : FALSE);
  RequestRelayout();
  Invalidate();
  ticker_.Update(this);
}

void QVPageLoadingCtrl::OnTimer(int id) {
  if (!gate_.OnTimer(id)) SWindow::OnTimer(id);
}

void QVPageLoadingCtrl::OnShowWindow(BOOL show, UINT status) {
  SWindow::OnShowWindow(show, status);
  ticker_.Update(this);
}

int QVPageLoadingCtrl::OnCreate() {
  const int result = SWindow::OnCreate();
  ticker_.Update(this);
  return result;
}

void QVPageLoadingCtrl::OnDestroy() {
  ticker_.Stop();
  SWindow::OnDestroy();
}

int QVPageLoadingCtrl::GetSpinnerStep() const {
  return static_cast<int>((SOUI::GetTickCount() - gate_.BusySince()) / kSpinnerStepMs % kSpinnerDots);
}

// ---- layout and painting ----------------------------------------------------------------

const SStringW& QVPageLoadingCtrl::Text() const {
  return shown_ == QVPageLoading_Fail ? fail_text_ : shown_ == QVPageLoading_Empty ? empty_text_ : loading_text_;
}

QVPageLoadingCtrl::Block QVPageLoadingCtrl::LayoutBlock() const {
  Block b;
  if (shown_ == QVPageLoading_None || !style_info_) return b;
  const int scale = GetScale();
  const CRect rc = GetClientRect();
  const int side = Dp(shown_ == QVPageLoading_Loading ? style_info_->spinner_dp : style_info_->picture_dp, scale);
  const SStringW& text = Text();
  const CSize text_size = text.IsEmpty() ? CSize() : MeasureTextExtent(text, rc.Width(), SOUI::DT_SINGLELINE);
  CSize button;
  if (shown_ == QVPageLoading_Fail) button = refresh_->GetDesiredSize(-1, -1);
  int h = side;
  if (!text.IsEmpty()) h += Dp(kTextGapDp, scale) + text_size.cy;
  if (button.cy > 0) h += Dp(kButtonGapDp, scale) + button.cy;
  // Centred; a panel too low for the block keeps its top in view.
  int y = std::max<int>(rc.top, rc.top + (rc.Height() - h) / 2);
  const int cx = rc.left + rc.Width() / 2;
  b.graphic = CRect(cx - side / 2, y, cx - side / 2 + side, y + side);
  y += side;
  if (!text.IsEmpty()) {
    y += Dp(kTextGapDp, scale);
    const int w = std::min<int>(text_size.cx, rc.Width());
    b.text = CRect(cx - w / 2, y, cx - w / 2 + w, y + text_size.cy);
    y += text_size.cy;
  }
  if (button.cy > 0) {
    y += Dp(kButtonGapDp, scale);
    b.button = CRect(cx - button.cx / 2, y, cx - button.cx / 2 + button.cx, y + button.cy);
  }
  return b;
}

CRect QVPageLoadingCtrl::GetGraphicRect() const { return LayoutBlock().graphic; }
CRect QVPageLoadingCtrl::GetTextRect() const { return LayoutBlock().text; }

void QVPageLoadingCtrl::UpdateChildrenPosition() {
  const Block b = LayoutBlock();
  refresh_->OnRelayout(b.button);
}

void QVPageLoadingCtrl::OnEraseBkgnd(SOUI::IRenderTarget* rt) {
  if (shown_ == QVPageLoading_None) return;
  const CRect rc = GetClientRect();
  const COLORREF own = GetStyle().colorBkgnd.Get();
  const COLORREF bk = own != CR_INVALID ? own : bkgnd_.Get();
  if (bk != CR_INVALID) rt->FillSolidRect(&rc, bk);
}

void QVPageLoadingCtrl::OnPaint(SOUI::IRenderTarget* rt) {
  if (shown_ == QVPageLoading_None) return;
  // Shown again after a hidden stretch: the frames resume here.
  ticker_.Update(this);
  const Block b = LayoutBlock();
  if (shown_ == QVPageLoading_Loading) {
    DrawSpinner(rt, b.graphic);
  } else {
    const SOUI::ThemedSkin& skin = shown_ == QVPageLoading_Fail ? fail_skin_ : empty_skin_;
    if (SOUI::ISkinObj* s = skin.Get(GetScale())) s->DrawByIndex(rt, &b.graphic, 0);
    else DrawPicture(rt, b.graphic, shown_ == QVPageLoading_Fail);
  }
  if (!b.text.IsRectEmpty()) {
    CRect text = b.text;
    DrawText(rt, Text(), Text().GetLength(), &text,
             SOUI::DT_SINGLELINE | SOUI::DT_CENTER | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX | SOUI::DT_END_ELLIPSIS);
  }
}

void QVPageLoadingCtrl::DrawSpinner(SOUI::IRenderTarget* rt, const CRect& rc) const {
  const int side = rc.Width();
  if (side <= 0) return;
  const int dot = std::max(2, side / 6);
  const double r = (side - dot) / 2.0;
  const double cx = rc.left + side / 2.0, cy = rc.top + side / 2.0;
  const int step = GetSpinnerStep();
  const COLORREF c = spinner_.Get();
  for (int i = 0; i < kSpinnerDots; ++i) {
    // The lit dot is full; the ones behind it fade out.
    const int behind = (step - i + kSpinnerDots) % kSpinnerDots;
    const int alpha = std::max(40, 255 - behind * 24);
    const double a = i * 2 * 3.14159265358979 / kSpinnerDots - 3.14159265358979 / 2;
    const int x = static_cast<int>(std::lround(cx + r * std::cos(a) - dot / 2.0));
    const int y = static_cast<int>(std::lround(cy + r * std::sin(a) - dot / 2.0));
    const CRect d(x, y, x + dot, y + dot);
    QVWithBrush(rt, QVFadeColor(c, alpha), [&] { rt->FillEllipse(&d); });
  }
}

void QVPageLoadingCtrl::DrawPicture(SOUI::IRenderTarget* rt, const CRect& rc, bool failed) const {
  const int s = rc.Width();
  if (s <= 0) return;
  auto at = [&](double fx, double fy) { return CPoint(rc.left + static_cast<int>(s * fx), rc.top + static_cast<int>(s * fy)); };
  auto box = [&](double l, double t, double r, double b) {
    const CPoint lt = at(l, t), rb = at(r, b);
    return CRect(lt.x, lt.y, rb.x, rb.y);
  };
  // A list card with three rows and nothing in them.
  const CRect card = box(0.18, 0.1, 0.82, 0.9);
  const SOUI::CPoint radius(std::max(2, s / 14), std::max(2, s / 14));
  QVWithBrush(rt, picture_fill_.Get(), [&] { rt->FillRoundRect(&card, radius); });
  QVWithPen(rt, picture_line_.Get(), s / 48, [&] { rt->DrawRoundRect(&card, radius); });
  const double rows[][2] = {{0.32, 0.70}, {0.48, 0.70}, {0.64, 0.56}};
  QVWithPen(rt, picture_line_.Get(), s / 24, [&] {
    for (const auto& row : rows) {
      const POINT line[2] = {at(0.32, row[0]), at(row[1], row[0])};
      rt->DrawLines(line, 2);
    }
  });
  if (!failed) return;
  // The warning mark on the card's corner, cut out in the panel's colour.
  const CRect mark = box(0.56, 0.58, 0.9, 0.92);
  QVWithBrush(rt, fail_color_.Get(), [&] { rt->FillEllipse(&mark); });
  const COLORREF cut = bkgnd_.Get();
  const int w = std::max(2, s / 24);
  const CPoint c = mark.CenterPoint();
  const CRect bar(c.x - w / 2, mark.top + mark.Height() / 4, c.x - w / 2 + w, c.y + mark.Height() / 10);
  const CRect dot(c.x - w / 2, mark.bottom - mark.Height() / 4 - w, c.x - w / 2 + w, mark.bottom - mark.Height() / 4);
  rt->FillSolidRect(&bar, cut);
  rt->FillSolidRect(&dot, cut);
}

SOUI::SWindow* QVPageLoadingCtrl::SwndFromPoint(CPoint pt, BOOL include_msg_transparent) {
  if (shown_ == QVPageLoading_None) return nullptr;
  return SWindow::SwndFromPoint(pt, include_msg_transparent);
}

}  // namespace QVStandardCtrls
