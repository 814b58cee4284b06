// SWindow: geometry, content size (measured once per epoch), relayout
// requests and layout passes.
#include "soui/swnd.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <strings.h>
#include <string>
#include <vector>

#include "soui/sapp.h"
#include "soui/slog.h"
#include "soui/swnd_internal.h"

namespace SOUI {

using internal::ForEachDescendant;
using internal::g_measure_epoch;

// ---- layout -----------------------------------------------------------------------

int SWindow::GetScale() const {
  if (container_) return container_->GetScale();
  SApplication* app = SApplication::getSingletonPtr();
  return app ? app->GetZoom() : 100;
}

CRect SWindow::GetClientRect() const {
  CRect rc = rect_;
  rc.DeflateRect(style_->GetMargin(GetScale()));
  return rc;
}

CRect SWindow::GetChildrenLayoutRect() const {
  CRect rc = GetClientRect();
  rc.DeflateRect(style_->GetPadding(GetScale()));
  return rc;
}

void SWindow::Move(LPCRECT rc) {
  if (!rc) {
    float_ = FALSE;
    if (parent_) parent_->RequestRelayout();
    return;
  }
  float_ = TRUE;
  OnRelayout(CRect(*rc));
}

void SWindow::Move(int x, int y, int cx, int cy) {
  if (cx < 0) cx = rect_.Width();
  if (cy < 0) cy = rect_.Height();
  const CRect rc(x, y, x + cx, y + cy);
  Move(&rc);
}

CSize SWindow::GetDesiredSize(LPCRECT rc_container) {
  const CRect rc(rc_container);
  return GetDesiredSize(rc.Width(), rc.Height());
}

namespace {
// Content plus margin and padding, kept well inside int whatever the text measured.
int SaturatedSum(LONG a, int b) {
  const long long v = static_cast<long long>(a) + b;
  return static_cast<int>(std::min<long long>(std::max<long long>(v, 0), INT_MAX / 4));
}
}  // namespace

CSize SWindow::GetDesiredSize(int width, int height) {
  const int scale = GetScale();
  CSize size(-1, -1);
  const Orientation axes[2] = {Orientation::Horz, Orientation::Vert};
  const int avail[2] = {width, height};
  int* out[2] = {&size.cx, &size.cy};
  for (int i = 0; i < 2; ++i) {
    const SLayoutSize given = layout_param_.GetSpecifiedSize(axes[i]);
    if (given.fSize() >= 0) *out[i] = given.toPixelSize(scale);
    else if (given.isMatchParent() && avail[i] >= 0) *out[i] = avail[i];
  }
  if (size.cx >= 0 && size.cy >= 0) return size;

  // Content depends only on the axes fixed above (and the tree, which bumps
  // the epoch when it changes), so nested wrap windows measure once a pass.
  DesiredCache& cache = desired_cache_;
  if (cache.epoch == g_measure_epoch && cache.width == size.cx && cache.height == size.cy &&
      cache.scale == scale) {
    return cache.size;
  }
  const CSize fixed = size;
  const CRect margin = style_->GetMargin(scale);
  const CRect padding = style_->GetPadding(scale);
  const int extra_w = margin.left + margin.right + padding.left + padding.right;
  const int extra_h = margin.top + margin.bottom + padding.top + padding.bottom;
  int text_width = size.cx >= 0 ? size.cx - extra_w : -1;
  if (text_width < 0 && has_max_width_) text_width = rare_->max_width.toPixelSize(scale) - extra_w;
  const CSize text = MeasureContent(text_width);
  const CSize children = SouiLayout::MeasureChildren(
      this, size.cx >= 0 ? size.cx - extra_w : -1, size.cy >= 0 ? size.cy - extra_h : -1);
  if (size.cx < 0) size.cx = SaturatedSum(std::max(text.cx, children.cx), extra_w);
  if (size.cy < 0) size.cy = SaturatedSum(std::max(text.cy, children.cy), extra_h);
  cache.epoch = g_measure_epoch;
  cache.width = fixed.cx;
  cache.height = fixed.cy;
  cache.scale = scale;
  cache.size = size;
  return size;
}

CSize SWindow::MeasureContent(int width) {
  const SStringW text = GetWindowText();
  if (text.IsEmpty()) return CSize();
  UINT fmt = GetTextAlign();
  if (width >= 0 && !(fmt & DT_SINGLELINE)) fmt |= DT_WORDBREAK;
  return MeasureTextExtent(text, width, fmt);
}

CSize SWindow::MeasureTextExtent(const SStringW& text, int max_width, UINT format) const {
  SApplication* app = SApplication::getSingletonPtr();
  IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt) return CSize();
  IFontPtr font = GetPaintFont(rt);
  IFontPtr old = rt->SelectFont(font);
  CRect rc(0, 0, max_width >= 0 ? max_width : 100000, 100000);
  rt->DrawText(text, text.GetLength(), &rc, format | DT_CALCRECT);
  rt->SelectFont(old);
  return CSize(rc.Width(), rc.Height());
}

CRect SWindow::GetChildrenClipRect() const {
  if (clip_client_) return GetClientRect();
  constexpr int kFar = 1 << 29;
  return CRect(-kFar, -kFar, kFar, kFar);
}

CRect SWindow::GetVisibleRect() const {
  CRect rc = rect_;
  for (const SWindow* p = parent_; p && !rc.IsRectEmpty(); p = p->parent_) rc = rc & p->GetChildrenClipRect();
  // The root is the host's client area: nothing shows beyond it.
  const SWindow* root = this;
  while (root->parent_) root = root->parent_;
  return root == this ? rc : rc & root->rect_;
}

void SWindow::InvalidateMeasure() {
  // Up to the root: a window's desired size depends on its descendants'.
  // A window still creating its children is measured only after it
  // requests its own relayout, which climbs from there.
  for (SWindow* w = this; w; w = w->parent_) {
    w->desired_cache_.epoch = 0;
    if (w->building_children_) break;
  }
}

void SWindow::InvalidateAllMeasures() { ++g_measure_epoch; }

void SWindow::MarkLayoutDirtyUpwards() {
  InvalidateMeasure();
  layout_dirty_ = true;
  // A content-sized ancestor changes size with us, so its parent must re-lay
  // too. A window still creating its children marks its ancestors itself
  // when done, so a layout being built climbs each level once.
  SWindow* w = this;
  while (w->parent_ && !w->building_children_) {
    w->parent_->layout_dirty_ = true;
    const SouiLayoutParam* p = w->GetLayoutParam();
    if (w->float_ || !(p->IsWrapContent(Orientation::Horz) || p->IsWrapContent(Orientation::Vert))) break;
    w = w->parent_;
  }
}

void SWindow::RequestRelayout() {
  MarkLayoutDirtyUpwards();
  if (container_) container_->OnRelayoutRequested();
}

void SWindow::UpdateLayout() { UpdateLayoutTree(); }

void SWindow::UpdateLayoutTree() {
  if (layout_dirty_) {
    layout_dirty_ = false;
    placing_children_ = true;
    UpdateChildrenPosition();
    placing_children_ = false;
    rect_invalidated_ = false;
  }
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (c->next_sibling_) c->next_sibling_->PrefetchPassData();
    c->UpdateLayoutTree();
  }
}

void SWindow::UpdateChildrenPosition() { SouiLayout::LayoutChildren(this); }

void SWindow::OnRelayout(const CRect& rc) {
  if (rc == rect_) return;
  const bool resized = rc.Width() != rect_.Width() || rc.Height() != rect_.Height();
  // What a parent placed in this pass made dirty needs nothing more.
  const auto covered = [this](const CRect& r) {
    return parent_ && parent_->rect_invalidated_ && (r & parent_->rect_) == r;
  };
  // A window placed for the first time has nothing on screen to clear.
  if (!rect_.IsRectEmpty() && !covered(rect_)) Invalidate();
  // Children are in host coordinates: a move shifts them along.
  const int dx = rc.left - rect_.left, dy = rc.top - rect_.top;
  if (dx || dy) {
    if (parent_ && parent_->placing_children_) ShiftUnplacedDescendants(dx, dy);
    else ShiftDescendants(dx, dy);
  }
  rect_ = rc;
  layout_dirty_ = true;
  if (resized) {
    OnSize(0, CSize(rc.Width(), rc.Height()));
    EventSwndSize evt(this);
    evt.szWnd = CSize(rc.Width(), rc.Height());
    FireEvent(evt);
  }
  if (!covered(rect_)) Invalidate();
  rect_invalidated_ = container_ != nullptr;
}

void SWindow::ShiftDescendants(int dx, int dy) {
  ForEachDescendant(this, [dx, dy](SWindow* w) { w->rect_.OffsetRect(dx, dy); });
}

// Moved by a layout pass that lays this window out next: layout children
// get their places then, so only the windows layout does not place (floats,
// and the invisible ones that take no room) are carried along now. Shifting
// everything at every level would make a pass quadratic in the depth.
void SWindow::ShiftUnplacedDescendants(int dx, int dy) {
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (!c->float_ && (c->IsVisible(FALSE) || c->display_)) continue;
    c->rect_.OffsetRect(dx, dy);
    c->ShiftDescendants(dx, dy);
  }
}

SWindow* SWindow::GetNextLayoutChild(const SWindow* cur) const {
  SWindow* w = cur ? cur->next_sibling_ : first_child_;
  while (w && (w->float_ || (!w->IsVisible(FALSE) && !w->display_))) w = w->next_sibling_;
  if (w && w->next_sibling_) w->next_sibling_->PrefetchPassData();
  return w;
}

SWindow* SWindow::GetPrevLayoutChild(const SWindow* cur) const {
  SWindow* w = cur ? cur->prev_sibling_ : last_child_;
  while (w && (w->float_ || (!w->IsVisible(FALSE) && !w->display_))) w = w->prev_sibling_;
  return w;
}

SWindow* SWindow::SwndFromPoint(CPoint pt, BOOL include_msg_transparent) {
  if (!rect_.PtInRect(pt) || !IsVisible(FALSE)) return nullptr;
  for (SWindow* c = last_child_; c; c = c->prev_sibling_) {
    if (!c->IsVisible(FALSE)) continue;
    if (c->msg_transparent_ && !include_msg_transparent) continue;
    if (SWindow* hit = c->SwndFromPoint(pt, include_msg_transparent)) return hit;
  }
  return this;
}

void SWindow::OnScaleChanged(int scale) {
  (void)scale;
  layout_dirty_ = true;
  desired_cache_.epoch = 0;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->OnScaleChanged(scale);
}

}  // namespace SOUI
