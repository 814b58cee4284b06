// The guide's bubble: content, paint and mouse of one step.
#include <algorithm>

#include "popups/guide_internal.h"
#include "popups/popup_paint_internal.h"
#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;
using namespace guide_internal;
using namespace popup_paint;

namespace {

// Sizes in dp besides the published ones.
constexpr int kPad = 16;
constexpr int kClose = 16;
constexpr int kButtonH = 28;
constexpr int kButtonPadX = 14;
constexpr int kButtonMinW = 64;
constexpr int kButtonGap = 8;
constexpr int kTitleGap = 6;    // title to text
constexpr int kFooterGap = 16;  // text to buttons
constexpr int kImageGap = 12;   // image to title

COLORREF GuideColor(const wchar_t* name, COLORREF fallback) {
  COLORREF c = fallback;
  if (SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr()) {
    app->GetResProvider().ResolveColor(SStringW(L"@color\\style_qv_guide\\") + name, &c);
  }
  return c;
}

SStringW GuideString(const wchar_t* id, const wchar_t* fallback) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SStringW s = app ? app->GetResProvider().ResolveString(SStringW(L"@string\\") + id) : SStringW();
  return s.IsEmpty() ? SStringW(fallback) : s;
}

SOUI::IFontPtr TitleFont(int scale) {
  return SOUI::SApplication::getSingleton().GetResProvider().GetFont(L"size:14dp,bold:1", scale);
}

SOUI::IFontPtr BodyFont(int scale) {
  return SOUI::SApplication::getSingleton().GetResProvider().GetDefaultFontObject(scale);
}

// The height text takes wrapped at width in font (0 for no text).
int WrappedHeight(const SStringW& text, SOUI::IFontPtr font, int width) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SOUI::IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt || text.IsEmpty() || width <= 0) return 0;
  SOUI::IFontPtr old = rt->SelectFont(font);
  CRect rc(0, 0, width, 0);
  rt->DrawText(text.c_str(), std::min(text.GetLength(), SOUI::kMaxRenderTextLength), &rc,
               SOUI::DT_CALCRECT | SOUI::DT_WORDBREAK | SOUI::DT_NOPREFIX);
  rt->SelectFont(old);
  return rc.Height();
}

int LineWidth(const SStringW& text, SOUI::IFontPtr font) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  SOUI::IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt || text.IsEmpty()) return 0;
  SOUI::IFontPtr old = rt->SelectFont(font);
  SIZE sz{0, 0};
  rt->MeasureText(text.c_str(), std::min(text.GetLength(), SOUI::kMaxRenderTextLength), &sz);
  rt->SelectFont(old);
  return sz.cx;
}

}  // namespace

// ---- CQVGuideView -------------------------------------------------------------------

void CQVGuideView::SetContent(const QVGuideStep& step, int index, int count, int scale) {
  step_ = step;
  index_ = index;
  count_ = count;
  scale_ = scale;
  hot_ = pressed_ = EnQVGuidePart::None;
  const int s = scale;
  const int content_w = Dp(IQVGuide::kBubbleW - 2 * kPad, s);
  // The picture fits the content's width, no taller than kImageMaxH.
  has_image_ = false;
  image_size_ = CSize();
  if (!step.image_skin.IsEmpty()) {
    SOUI::ISkinObjPtr skin = SOUI::SApplication::getSingleton().GetResProvider().GetSkin(step.image_skin, s);
    if (skin) {
      const SIZE sz = skin->GetSkinSize();
      if (sz.cx > 0 && sz.cy > 0) {
        const int max_h = Dp(IQVGuide::kImageMaxH, s);
        int w = std::min<int>(sz.cx, content_w), h = static_cast<int>(static_cast<long long>(sz.cy) * w / sz.cx);
        if (h > max_h) {
          w = static_cast<int>(static_cast<long long>(w) * max_h / h);
          h = max_h;
        }
        image_size_ = CSize(std::max(w, 1), std::max(h, 1));
        has_image_ = true;
      }
    } else {
      QVLOG(QV_LOG_WARN, "COMMON") << L"IQVGuide: step " << index << L" image skin \"" << step.image_skin
                                   << L"\" not found; shown without it";
    }
  }
  // The title leaves room for the close button on its right.
  title_h_ = WrappedHeight(step.title, TitleFont(s), content_w - Dp(kClose + kButtonGap, s));
  text_h_ = WrappedHeight(step.text, BodyFont(s), content_w);
  prev_text_ = GuideString(L"qvguide_prev", L"Previous");
  next_text_ = index + 1 >= count ? GuideString(L"qvguide_done", L"Done") : GuideString(L"qvguide_next", L"Next");
  prev_w_ = std::max(Dp(kButtonMinW, s), LineWidth(prev_text_, BodyFont(s)) + 2 * Dp(kButtonPadX, s));
  next_w_ = std::max(Dp(kButtonMinW, s), LineWidth(next_text_, BodyFont(s)) + 2 * Dp(kButtonPadX, s));
  int h = Dp(kPad, s);
  if (has_image_) h += image_size_.cy + Dp(kImageGap, s);
  h += std::max(title_h_, Dp(kClose, s));
  if (text_h_ > 0) h += Dp(kTitleGap, s) + text_h_;
  h += Dp(kFooterGap, s) + Dp(kButtonH, s) + Dp(kPad, s);
  size_ = CSize(Dp(IQVGuide::kBubbleW, s), h);
  Invalidate();
}

void CQVGuideView::SetPlacement(const CRect& bubble, EnQVGuideSide side, CPoint tip) {
  bubble_ = bubble;
  side_ = side;
  tip_ = tip;
  Invalidate();
}

CRect CQVGuideView::PartRect(EnQVGuidePart part) const {
  const int s = scale_;
  const int pad = Dp(kPad, s);
  switch (part) {
    case EnQVGuidePart::Close: {
      // Level with the title's first line.
      const int top = bubble_.top + pad + (has_image_ ? image_size_.cy + Dp(kImageGap, s) : 0);
      return CRect(bubble_.right - pad - Dp(kClose, s), top, bubble_.right - pad, top + Dp(kClose, s));
    }
    case EnQVGuidePart::Next: {
      const int bottom = bubble_.bottom - pad;
      return CRect(bubble_.right - pad - next_w_, bottom - Dp(kButtonH, s), bubble_.right - pad, bottom);
    }
    case EnQVGuidePart::Previous: {
      if (index_ == 0) return CRect();
      const CRect next = PartRect(EnQVGuidePart::Next);
      return CRect(next.left - Dp(kButtonGap, s) - prev_w_, next.top, next.left - Dp(kButtonGap, s), next.bottom);
    }
    case EnQVGuidePart::None: break;
  }
  return CRect();
}

EnQVGuidePart CQVGuideView::PartAt(CPoint pt) const {
  for (EnQVGuidePart p : {EnQVGuidePart::Close, EnQVGuidePart::Previous, EnQVGuidePart::Next}) {
    CRect rc = PartRect(p);
    // The close glyph is small: its target is a little larger.
    if (p == EnQVGuidePart::Close) rc.InflateRect(Dp(4, scale_), Dp(4, scale_));
    if (!rc.IsRectEmpty() && rc.PtInRect(pt)) return p;
  }
  return EnQVGuidePart::None;
}

void CQVGuideView::SetHot(EnQVGuidePart part) {
  if (part == hot_) return;
  hot_ = part;
  Invalidate();
}

void CQVGuideView::PaintTail(SOUI::IRenderTarget* rt, COLORREF bg, COLORREF border) {
  // A triangle filled row by row from the point to the bubble's edge (one
  // row into the bubble, over its border), its slanted sides stroked.
  const int t = Dp(IQVGuide::kTail, scale_);
  const bool vertical = side_ == EnQVGuideSide::Below || side_ == EnQVGuideSide::Above;
  const int dir = side_ == EnQVGuideSide::Below || side_ == EnQVGuideSide::Right ? 1 : -1;
  for (int k = 0; k <= t + 1; ++k) {
    const int half = std::min(k, t);
    const CRect row = vertical ? CRect(tip_.x - half, tip_.y + dir * k, tip_.x + half + 1, tip_.y + dir * k + 1)
                               : CRect(tip_.x + dir * k, tip_.y - half, tip_.x + dir * k + 1, tip_.y + half + 1);
    rt->FillSolidRect(&row, bg);
  }
  const int w = std::max(1, Dp(1, scale_));
  const POINT tip{tip_.x, tip_.y};
  if (vertical) {
    const POINT sides[] = {{tip_.x - t, tip_.y + dir * t}, tip, {tip_.x + t, tip_.y + dir * t}};
    Polyline(rt, sides, 3, border, w);
  } else {
    const POINT sides[] = {{tip_.x + dir * t, tip_.y - t}, tip, {tip_.x + dir * t, tip_.y + t}};
    Polyline(rt, sides, 3, border, w);
  }
}

void CQVGuideView::PaintButton(SOUI::IRenderTarget* rt, EnQVGuidePart part, const SStringW& text) {
  const CRect rc = PartRect(part);
  if (rc.IsRectEmpty()) return;
  const int s = scale_, r = Dp(4, s);
  const bool hot = hot_ == part;
  COLORREF fg;
  if (part == EnQVGuidePart::Next) {
    FillRound(rt, rc, r, hot ? GuideColor(L"button_hover", RGBA(0x4D, 0x82, 0xFF, 0xFF))
                             : GuideColor(L"button_bg", RGBA(0x2F, 0x6B, 0xFF, 0xFF)));
    fg = GuideColor(L"button_text", RGBA(0xFF, 0xFF, 0xFF, 0xFF));
  } else {
    FillRound(rt, rc, r, GuideColor(L"secondary_border", RGBA(0xC9, 0xCD, 0xD4, 0xFF)));
    CRect inner = rc;
    inner.DeflateRect(std::max(1, Dp(1, s)), std::max(1, Dp(1, s)));
    FillRound(rt, inner, std::max(0, r - 1), hot ? GuideColor(L"secondary_hover", RGBA(0xF2, 0xF3, 0xF5, 0xFF))
                                                 : GuideColor(L"bg", RGBA(0xFF, 0xFF, 0xFF, 0xFF)));
    fg = GuideColor(L"secondary_text", RGBA(0x1F, 0x23, 0x29, 0xFF));
  }
  CRect t = rc;
  rt->SetTextColor(fg);
  rt->DrawText(text.c_str(), text.GetLength(), &t,
               SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_CENTER | SOUI::DT_NOPREFIX);
}

void CQVGuideView::OnPaint(SOUI::IRenderTarget* rt) {
  if (bubble_.IsRectEmpty()) return;
  const int s = scale_;
  const int radius = Dp(kRadius, s);
  const COLORREF bg = GuideColor(L"bg", RGBA(0xFF, 0xFF, 0xFF, 0xFF));
  const COLORREF border = GuideColor(L"border", RGBA(0xE5, 0xE6, 0xEB, 0xFF));
  // A soft shadow: faint rings stacked, so it darkens towards the bubble,
  // a little lower than it. The theme's colour carries each ring's alpha.
  const COLORREF shadow = GuideColor(L"shadow", RGBA(0x1F, 0x23, 0x29, 0x08));
  const int rings = Dp(kShadow, s);
  for (int i = rings; i >= 1; --i) {
    CRect ring = bubble_;
    ring.InflateRect(i, i);
    ring.OffsetRect(0, Dp(2, s) * i / std::max(rings, 1));
    FillRound(rt, ring, radius + i, shadow);
  }
  FillRound(rt, bubble_, radius, border);
  CRect inner = bubble_;
  inner.DeflateRect(std::max(1, Dp(1, s)), std::max(1, Dp(1, s)));
  FillRound(rt, inner, std::max(0, radius - 1), bg);
  PaintTail(rt, bg, border);

  const int pad = Dp(kPad, s);
  const int left = bubble_.left + pad, right = bubble_.right - pad;
  int y = bubble_.top + pad;
  if (has_image_) {
    SOUI::ISkinObjPtr skin = SOUI::SApplication::getSingleton().GetResProvider().GetSkin(step_.image_skin, s);
    const int x = left + (right - left - image_size_.cx) / 2;
    const CRect img(x, y, x + image_size_.cx, y + image_size_.cy);
    if (skin) skin->DrawByIndex(rt, &img, 0);
    y += image_size_.cy + Dp(kImageGap, s);
  }
  const UINT wrap = SOUI::DT_WORDBREAK | SOUI::DT_NOPREFIX;
  SOUI::IFontPtr old = rt->SelectFont(TitleFont(s));
  CRect title(left, y, right - Dp(kClose + kButtonGap, s), y + title_h_);
  rt->SetTextColor(GuideColor(L"title", RGBA(0x1F, 0x23, 0x29, 0xFF)));
  rt->DrawText(step_.title.c_str(), std::min(step_.title.GetLength(), SOUI::kMaxRenderTextLength), &title, wrap);
  y += std::max(title_h_, Dp(kClose, s));

  // The close cross, with a light disc under it while hovered.
  const CRect close = PartRect(EnQVGuidePart::Close);
  if (hot_ == EnQVGuidePart::Close) {
    CRect disc = close;
    disc.InflateRect(Dp(3, s), Dp(3, s));
    FillRound(rt, disc, disc.Width() / 2, GuideColor(L"secondary_hover", RGBA(0xF2, 0xF3, 0xF5, 0xFF)));
  }
  const COLORREF cross =
      hot_ == EnQVGuidePart::Close ? GuideColor(L"close_hover", RGBA(0x1F, 0x23, 0x29, 0xFF))
                                   : GuideColor(L"close", RGBA(0x86, 0x90, 0x9C, 0xFF));
  const int ci = Dp(4, s), cw = std::max(1, Dp(3, s) / 2);
  const POINT down[] = {{close.left + ci, close.top + ci}, {close.right - ci - 1, close.bottom - ci - 1}};
  const POINT up[] = {{close.right - ci - 1, close.top + ci}, {close.left + ci, close.bottom - ci - 1}};
  Polyline(rt, down, 2, cross, cw);
  Polyline(rt, up, 2, cross, cw);

  rt->SelectFont(BodyFont(s));
  if (text_h_ > 0) {
    y += Dp(kTitleGap, s);
    CRect text(left, y, right, y + text_h_);
    rt->SetTextColor(GuideColor(L"text", RGBA(0x4E, 0x59, 0x69, 0xFF)));
    rt->DrawText(step_.text.c_str(), std::min(step_.text.GetLength(), SOUI::kMaxRenderTextLength), &text, wrap);
  }
  // The step counter on the left of the buttons' row.
  const CRect next = PartRect(EnQVGuidePart::Next);
  const SStringW counter = SStringW::Format2(L"%d / %d", index_ + 1, count_);
  CRect c(left, next.top, next.left, next.bottom);
  rt->SetTextColor(GuideColor(L"counter", RGBA(0x86, 0x90, 0x9C, 0xFF)));
  rt->DrawText(counter.c_str(), counter.GetLength(), &c, SOUI::DT_SINGLELINE | SOUI::DT_VCENTER | SOUI::DT_NOPREFIX);
  PaintButton(rt, EnQVGuidePart::Previous, prev_text_);
  PaintButton(rt, EnQVGuidePart::Next, next_text_);
  rt->SelectFont(old);
}

void CQVGuideView::OnMouseMove(UINT flags, CPoint pt) {
  SWindow::OnMouseMove(flags, pt);
  SetHot(PartAt(pt));
}

void CQVGuideView::OnMouseLeave() {
  SWindow::OnMouseLeave();
  SetHot(EnQVGuidePart::None);
}

void CQVGuideView::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  pressed_ = PartAt(pt);
}

void CQVGuideView::OnLButtonUp(UINT flags, CPoint pt) {
  SWindow::OnLButtonUp(flags, pt);
  const EnQVGuidePart part = PartAt(pt);
  const bool click = part != EnQVGuidePart::None && part == pressed_;
  pressed_ = EnQVGuidePart::None;
  // Last: the listener may end the guide and take this window down.
  if (click && listener_) listener_->OnGuidePart(part);
}

}  // namespace QVStandardCtrls
