// Sections: metrics and colours · CQVMenuView (rows, paint, mouse) · the
// bubble of a disabled row.
#include "popups/menu_internal.h"

#include <algorithm>

#include "popups/popup_paint_internal.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;
using namespace menu_internal;
using namespace popup_paint;

namespace menu_internal {

// A colour of the menu table, or the light theme's value when the theme
// lacks it.
COLORREF MenuColor(const wchar_t* name, COLORREF fallback) {
  COLORREF c = fallback;
  if (SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr()) {
    app->GetResProvider().ResolveColor(SStringW(L"@color\\style_qv_menu\\") + name, &c);
  }
  return c;
}

CSize MeasureLabel(const SStringW& text, int scale) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SOUI::IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt || text.IsEmpty()) return CSize();
  SOUI::IFontPtr old = rt->SelectFont(app->GetResProvider().GetDefaultFontObject(scale));
  SIZE sz{0, 0};
  rt->MeasureText(text.c_str(), std::min(text.GetLength(), SOUI::kMaxRenderTextLength), &sz);
  rt->SelectFont(old);
  return CSize(sz.cx, sz.cy);
}

}  // namespace menu_internal

namespace {

// A tick filling box.
void DrawTick(SOUI::IRenderTarget* rt, const CRect& box, COLORREF color, int scale) {
  const int w = box.Width(), h = box.Height();
  const POINT pts[] = {{box.left + w * 2 / 10, box.top + h * 5 / 10},
                       {box.left + w * 4 / 10, box.top + h * 7 / 10},
                       {box.left + w * 8 / 10, box.top + h * 3 / 10}};
  Polyline(rt, pts, 3, color, Dp(2, scale));
}

}  // namespace

// ---- CQVMenuView ------------------------------------------------------------------

void CQVMenuView::SetRows(std::vector<QVMenuAttr> rows, std::vector<MenuRole> roles, bool multi, int scale) {
  rows_ = std::move(rows);
  roles_ = std::move(roles);
  roles_.resize(rows_.size(), MenuRole::kCommand);
  multi_ = multi;
  scale_ = scale;
  has_icon_ = false;
  has_arrow_ = false;
  text_w_ = shortcut_w_ = 0;
  ys_.assign(1, 0);
  for (const QVMenuAttr& r : rows_) {
    ys_.push_back(ys_.back() + Dp(r.separator ? kSepH : kRowH, scale));
    if (r.separator) continue;
    has_icon_ = has_icon_ || !r.icon_skin.IsEmpty();
    has_arrow_ = has_arrow_ || (r.submenu && !multi);
    text_w_ = std::max<int>(text_w_, MeasureLabel(r.text, scale).cx);
    shortcut_w_ = std::max<int>(shortcut_w_, MeasureLabel(r.shortcut, scale).cx);
  }
  int w = Dp(kPadX + kHotInset, scale) + Dp(kCheckW + kGap, scale) + (has_icon_ ? Dp(kIconW + kGap, scale) : 0) + text_w_;
  if (shortcut_w_ > 0) w += Dp(kShortcutGap, scale) + shortcut_w_;
  if (has_arrow_) w += Dp(kGap + kArrowW, scale);
  w += Dp(kPadX + kHotInset, scale);
  wanted_ = CSize(std::clamp(w, Dp(kMinW, scale), Dp(kMaxW, scale)), ys_.back() + 2 * Dp(kPadY, scale));
}

int CQVMenuView::MaxTop() const {
  const int avail = Avail();
  for (int t = 0; t < Count(); ++t) {
    if (ys_.back() - ys_[t] <= avail) return t;
  }
  return std::max(0, Count() - 1);
}

void CQVMenuView::ScrollTo(int top) {
  top = std::clamp(top, 0, MaxTop());
  if (top == top_) return;
  top_ = top;
  Invalidate();
}

void CQVMenuView::SetHot(int row, bool ensure_visible) {
  if (row < -1 || row >= Count()) row = -1;
  if (ensure_visible && row >= 0) {
    if (row < top_) {
      ScrollTo(row);
    } else {
      int t = top_;
      while (t < row && ys_[row + 1] - ys_[t] > Avail()) ++t;
      ScrollTo(t);
    }
  }
  if (row == hot_) return;
  hot_ = row;
  Invalidate();
}

CRect CQVMenuView::RowRect(int row) const {
  if (row < top_ || row >= Count()) return CRect();
  const CRect client = GetClientRect();
  const int y0 = client.top + Dp(kPadY, scale_);
  const int top = y0 + ys_[row] - ys_[top_];
  const int bottom = std::min<int>(y0 + ys_[row + 1] - ys_[top_], client.bottom - Dp(kPadY, scale_));
  if (bottom <= top) return CRect();
  return CRect(client.left, top, client.right, bottom);
}

int CQVMenuView::RowAt(CPoint pt) const {
  for (int i = top_; i < Count(); ++i) {
    const CRect rc = RowRect(i);
    if (rc.IsRectEmpty()) break;
    if (rc.PtInRect(pt)) return i;
  }
  return -1;
}

void CQVMenuView::OnPaint(SOUI::IRenderTarget* rt) {
  const CRect client = GetClientRect();
  const COLORREF bg = MenuColor(L"bg", RGBA(0xFF, 0xFF, 0xFF, 0xFF));
  const COLORREF border = MenuColor(L"border", RGBA(0xE5, 0xE6, 0xEB, 0xFF));
  rt->FillSolidRect(&client, border);
  CRect inner = client;
  inner.DeflateRect(1, 1);
  rt->FillSolidRect(&inner, bg);
  SOUI::IFontPtr old_font = rt->SelectFont(SOUI::SApplication::getSingleton().GetResProvider().GetDefaultFontObject(scale_));
  CRect rows = client;
  rows.DeflateRect(1, Dp(kPadY, scale_));
  rt->PushClipRect(&rows);
  for (int i = top_; i < Count(); ++i) {
    const CRect rc = RowRect(i);
    if (rc.IsRectEmpty()) break;
    PaintRow(rt, i, rc);
  }
  rt->PopClip();
  if (MaxTop() > 0) {
    // Where the shown rows are in the whole list.
    const int track = rows.Height(), total = std::max(1, ys_.back());
    const int thumb = std::max(Dp(12, scale_), static_cast<int>(static_cast<long long>(track) * track / total));
    const int y = rows.top + static_cast<int>(static_cast<long long>(track - thumb) * top_ / std::max(1, MaxTop()));
    const CRect bar(rows.right - Dp(4, scale_), y, rows.right - Dp(1, scale_), y + thumb);
    FillRound(rt, bar, Dp(2, scale_), MenuColor(L"separator", RGBA(0xE5, 0xE6, 0xEB, 0xFF)));
  }
  rt->SelectFont(old_font);
}

void CQVMenuView::PaintRow(SOUI::IRenderTarget* rt, int i, const CRect& rc) {
  const QVMenuAttr& r = rows_[i];
  const int s = scale_;
  if (r.separator) {
    const int y = (rc.top + rc.bottom) / 2;
    const CRect line(rc.left + Dp(kPadX, s), y, rc.right - Dp(kPadX, s), y + std::max(1, Dp(1, s)));
    rt->FillSolidRect(&line, MenuColor(L"separator", RGBA(0xE5, 0xE6, 0xEB, 0xFF)));
    return;
  }
  const MenuRole role = roles_[i];
  const COLORREF check = MenuColor(L"check", RGBA(0x2F, 0x6B, 0xFF, 0xFF));
  if (i == hot_ && r.enabled) {
    CRect hot = rc;
    hot.DeflateRect(Dp(kHotInset, s), 0);
    FillRound(rt, hot, Dp(kRadius, s), MenuColor(L"hover", RGBA(0xF2, 0xF3, 0xF5, 0xFF)));
  }
  COLORREF text = MenuColor(L"text", RGBA(0x1F, 0x23, 0x29, 0xFF));
  if (!r.enabled) text = MenuColor(L"text_disabled", RGBA(0xC2, 0xC7, 0xCF, 0xFF));
  else if (r.danger) text = MenuColor(L"text_danger", RGBA(0xF2, 0x3B, 0x3B, 0xFF));
  else if (role == MenuRole::kOk) text = check;
  if (role == MenuRole::kOk) {
    // OK stands alone, centred, as a button would.
    CRect t = rc;
    rt->SetTextColor(text);
    rt->DrawText(r.text.c_str(), r.text.GetLength(), &t,
                 SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_CENTER | SOUI::DT_NOPREFIX);
    return;
  }
  int x = rc.left + Dp(kPadX + kHotInset, s);
  const int cy = (rc.top + rc.bottom) / 2;
  const int box = Dp(14, s);
  const CRect mark(x + (Dp(kCheckW, s) - box) / 2, cy - box / 2, x + (Dp(kCheckW, s) - box) / 2 + box, cy - box / 2 + box);
  if (multi_ && role == MenuRole::kCommand) {
    // A check box: ticked in the accent colour, else an outline.
    if (r.checked) {
      FillRound(rt, mark, Dp(2, s), r.enabled ? check : text);
      CRect tick = mark;
      tick.DeflateRect(Dp(1, s), Dp(1, s));
      DrawTick(rt, tick, MenuColor(L"check_mark", RGBA(0xFF, 0xFF, 0xFF, 0xFF)), s);
    } else {
      FillRound(rt, mark, Dp(2, s), MenuColor(L"border_strong", RGBA(0xC9, 0xCD, 0xD4, 0xFF)));
      CRect hole = mark;
      hole.DeflateRect(std::max(1, Dp(1, s)), std::max(1, Dp(1, s)));
      FillRound(rt, hole, Dp(1, s), MenuColor(L"bg", RGBA(0xFF, 0xFF, 0xFF, 0xFF)));
    }
  } else if (r.checked && r.radio_group != 0) {
    const int d = Dp(6, s);
    const CRect dot(mark.left + (box - d) / 2, cy - d / 2, mark.left + (box - d) / 2 + d, cy - d / 2 + d);
    SOUI::IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(r.enabled ? check : text));
    rt->FillEllipse(&dot);
    rt->SelectBrush(old);
  } else if (r.checked) {
    DrawTick(rt, mark, r.enabled ? check : text, s);
  }
  x += Dp(kCheckW + kGap, s);
  if (has_icon_) {
    if (!r.icon_skin.IsEmpty()) {
      SOUI::ISkinObjPtr skin = SOUI::SApplication::getSingleton().GetResProvider().GetSkin(r.icon_skin, s);
      if (skin) {
        const int iw = Dp(kIconW, s);
        const CRect ic(x, cy - iw / 2, x + iw, cy - iw / 2 + iw);
        skin->DrawByIndex(rt, &ic, 0, r.enabled ? 0xFF : 0x66);
      }
    }
    x += Dp(kIconW + kGap, s);
  }
  int right = rc.right - Dp(kPadX + kHotInset, s);
  if (has_arrow_) {
    // Every row keeps the arrow column, so that shortcuts line up.
    if (r.submenu) {
      const int h = Dp(4, s), ax = right - Dp(kArrowW, s) / 2;
      const POINT pts[] = {{ax - h / 2, cy - h}, {ax + h / 2, cy}, {ax - h / 2, cy + h}};
      Polyline(rt, pts, 3, text, std::max(1, Dp(1, s) * 3 / 2));
    }
    right -= Dp(kArrowW + kGap, s);
  }
  const UINT fmt = SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX | SOUI::DT_END_ELLIPSIS;
  if (!r.shortcut.IsEmpty()) {
    CRect sc(right - shortcut_w_, rc.top, right, rc.bottom);
    rt->SetTextColor(r.enabled ? MenuColor(L"text_shortcut", RGBA(0x86, 0x90, 0x9C, 0xFF)) : text);
    rt->DrawText(r.shortcut.c_str(), r.shortcut.GetLength(), &sc, fmt | SOUI::DT_RIGHT);
    right -= shortcut_w_ + Dp(kShortcutGap, s);
  }
  CRect t(x, rc.top, std::max(x, right), rc.bottom);
  rt->SetTextColor(text);
  rt->DrawText(r.text.c_str(), std::min(r.text.GetLength(), SOUI::kMaxRenderTextLength), &t, fmt);
}

void CQVMenuView::OnMouseMove(UINT flags, CPoint pt) {
  SWindow::OnMouseMove(flags, pt);
  if (listener_) listener_->OnViewMove(level_, RowAt(pt));
}

void CQVMenuView::OnMouseLeave() {
  SWindow::OnMouseLeave();
  if (listener_) listener_->OnViewLeave(level_);
}

void CQVMenuView::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  if (listener_) listener_->OnViewPress(level_, RowAt(pt));
}

void CQVMenuView::OnLButtonUp(UINT flags, CPoint pt) {
  SWindow::OnLButtonUp(flags, pt);
  if (listener_) listener_->OnViewRelease(level_, RowAt(pt));
}

BOOL CQVMenuView::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  (void)flags;
  ScrollTo(top_ - delta / 120 * 3);
  if (listener_) listener_->OnViewMove(level_, RowAt(pt));
  return TRUE;
}

int CQVMenuView::Avail() const { return std::max(0, GetClientRect().Height() - 2 * Dp(kPadY, scale_)); }

// ---- the bubble of a disabled row --------------------------------------------------------

void CQVMenuTipView::OnPaint(SOUI::IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  const int s = GetScale();
  rt->FillSolidRect(&rc, MenuColor(L"tip_bg", RGBA(0x4A, 0x55, 0x68, 0xFF)));
  SOUI::IFontPtr old = rt->SelectFont(SOUI::SApplication::getSingleton().GetResProvider().GetDefaultFontObject(s));
  CRect t = rc;
  t.DeflateRect(Dp(8, s), 0);
  rt->SetTextColor(MenuColor(L"tip_text", RGBA(0xFF, 0xFF, 0xFF, 0xFF)));
  rt->DrawText(text_.c_str(), std::min(text_.GetLength(), SOUI::kMaxRenderTextLength), &t,
               SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX | SOUI::DT_END_ELLIPSIS);
  rt->SelectFont(old);
}

}  // namespace QVStandardCtrls
