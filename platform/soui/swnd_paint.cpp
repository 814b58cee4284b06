// SWindow: invalidation and painting, back to front.
#include "soui/swnd.h"

#include "soui/sapp.h"

namespace SOUI {

// ---- painting ---------------------------------------------------------------------------

void SWindow::Invalidate() { InvalidateRect(rect_); }

void SWindow::InvalidateRect(const CRect& rc) {
  if (container_ && !rc.IsRectEmpty() && IsVisible(TRUE)) container_->OnInvalidate(rc);
}

IFontPtr SWindow::GetPaintFont(IRenderTarget* rt) const {
  const int scale = GetScale();
  // Only the windows that set a font matter, nearest first.
  for (const SWindow* w = GetInherited().font_source; w;
       w = w->parent_ ? w->parent_->GetInherited().font_source : nullptr) {
    const ThemedFont& f = w->style_->GetFont(w->GetStateIndex());
    if (f.IsSet()) {
      if (IFontPtr font = f.Get(scale)) return font;
    }
  }
  SApplication* app = SApplication::getSingletonPtr();
  if (!app) return rt ? rt->GetCurrentFont() : nullptr;
  return rt ? app->GetResProvider().GetDefaultFontObject(scale) : nullptr;
}

COLORREF SWindow::GetPaintTextColor() const {
  for (const SWindow* w = this; w; w = w->parent_) {
    if (!w->style_->HasTextColor()) continue;
    const COLORREF c = w->style_->GetTextColor(w->GetStateIndex());
    if (c != CR_INVALID) return c;
  }
  return RGBA(0, 0, 0, 255);
}

void SWindow::BeforePaint(IRenderTarget* rt, PaintState& ps) {
  const int state = GetStateIndex();
  const ThemedFont& f = style_->GetFont(state);
  if (f.IsSet()) {
    if (IFontPtr font = f.Get(GetScale())) {
      ps.old_font = rt->SelectFont(font);
      ps.font_set = true;
    }
  }
  const COLORREF c = style_->GetTextColor(state);
  if (c != CR_INVALID) {
    ps.old_color = rt->SetTextColor(c);
    ps.color_set = true;
  }
}

void SWindow::AfterPaint(IRenderTarget* rt, PaintState& ps) {
  if (ps.font_set) rt->SelectFont(ps.old_font);
  if (ps.color_set) rt->SetTextColor(ps.old_color);
}

void SWindow::OnEraseBkgnd(IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  if (ISkinObj* skin = GetBkgndSkin()) {
    int state = GetStateIndex();
    if (state >= skin->GetStates()) state = 0;
    skin->DrawByIndex(rt, &rc, state);
  } else {
    const COLORREF bk = style_->colorBkgnd.Get();
    if (bk != CR_INVALID) rt->FillSolidRect(&rc, bk);
  }
}

void SWindow::OnNcPaint(IRenderTarget* rt) {
  const COLORREF border = style_->colorBorder.Get();
  if (border == CR_INVALID) return;
  const CRect m = style_->GetMargin(GetScale());
  if (m.IsRectNull()) return;
  const CRect& w = rect_;
  const CRect bands[4] = {CRect(w.left, w.top, w.right, w.top + m.top),
                          CRect(w.left, w.bottom - m.bottom, w.right, w.bottom),
                          CRect(w.left, w.top + m.top, w.left + m.left, w.bottom - m.bottom),
                          CRect(w.right - m.right, w.top + m.top, w.right, w.bottom - m.bottom)};
  for (const CRect& b : bands) {
    if (!b.IsRectEmpty()) rt->FillSolidRect(&b, border);
  }
}

void SWindow::OnPaint(IRenderTarget* rt) {
  // The shown text itself, not a copy: a class whose GetWindowText answers
  // something else paints it in its own OnPaint.
  if (text_.IsEmpty()) return;
  CRect rc = GetChildrenLayoutRect();
  DrawText(rt, text_.c_str(), text_.GetLength(), &rc, GetTextAlign());
}

void SWindow::DrawFocus(IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  if (ISkinObj* skin = rare_ ? rare_->focus_skin.Get(GetScale()) : nullptr) {
    skin->DrawByIndex(rt, &rc, 0);
  } else if (draw_focus_rect_) {
    CRect inner = rc;
    inner.DeflateRect(2, 2);
    if (inner.IsRectEmpty()) return;
    IPenPtr old = rt->SelectPen(rt->CreatePen(PS_DOT, GetPaintTextColor(), 1));
    rt->DrawRectangle(&inner);
    rt->SelectPen(old);
  }
}

void SWindow::DrawText(IRenderTarget* rt, const wchar_t* text, int len, LPRECT rc, UINT format) {
  rt->DrawText(text, len, rc, format);
}

void SWindow::PaintChildren(IRenderTarget* rt, const SRegion& dirty) {
  const CRect client = GetClientRect();
  if (clip_client_) {
    if (!dirty.Intersects(client)) return;
    rt->PushClipRect(&client);
  }
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (c->next_sibling_) c->next_sibling_->PrefetchPassData();
    c->RedrawRegion(rt, dirty);
  }
  if (clip_client_) rt->PopClip();
}

void SWindow::RedrawRegion(IRenderTarget* rt, const SRegion& dirty) {
  if (!IsVisible(FALSE) || !rt) return;
  const bool own = dirty.Intersects(rect_);
  if (!own && !first_child_) return;
  const bool layer = style_->alpha < 0xFF;
  if (layer) rt->PushLayer(style_->alpha);
  PaintState ps;
  BeforePaint(rt, ps);
  if (own) {
    const auto paint_self = [&] {
      OnEraseBkgnd(rt);
      OnNcPaint(rt);
      OnPaint(rt);
      if (container_ && container_->GetFocus() == this) DrawFocus(rt);
    };
    // Most windows lie inside one dirty rectangle: the frame's clip is enough.
    bool whole = false;
    dirty.ForEachPart(rect_, [&](const CRect& part) { whole = whole || part == rect_; });
    if (whole) {
      paint_self();
    } else {
      dirty.ForEachPart(rect_, [&](const CRect& part) {
        rt->PushClipRect(&part);
        paint_self();
        rt->PopClip();
      });
    }
  }
  if (first_child_) PaintChildren(rt, dirty);
  AfterPaint(rt, ps);
  if (layer) rt->PopLayer();
}

void SWindow::RedrawRegion(IRenderTarget* rt, const CRect& dirty) {
  SRegion region;
  region.Union(dirty);
  region.Normalize();
  RedrawRegion(rt, region);
}

}  // namespace SOUI
