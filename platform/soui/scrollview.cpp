// SScrollView implementation.
//
// Sections: attributes · content and origin · painting · input.
#include "soui/scrollview.h"

#include <algorithm>

#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {
namespace {

constexpr int kWheelDelta = 120;

// "a,b" split at the first comma; false without one.
bool SplitPair(const SStringW& value, SStringW* a, SStringW* b) {
  const int comma = value.Find(L',');
  if (comma < 0) return false;
  *a = value.Left(comma);
  *b = value.Mid(comma + 1);
  a->Trim();
  b->Trim();
  return true;
}

int ClampInt(long long v, int lo, int hi) {
  return static_cast<int>(std::max<long long>(lo, std::min<long long>(v, hi)));
}

// Luminance of a colour, 0..255.
int Luma(COLORREF c) { return (GetRValue(c) * 299 + GetGValue(c) * 587 + GetBValue(c) * 114) / 1000; }

}  // namespace

void RegisterScrollViewControls(SObjectFactory& factory) { factory.RegisterWindowClass<SScrollView>(); }

SScrollView::SScrollView() {
  clip_client_ = TRUE;
  GetEventSet()->addEvent(EVT_SCROLLVIEW_ORIGINCHANGED, EventScrollViewOriginChanged::EventName());
  GetEventSet()->addEvent(EVT_SCROLLVIEW_SIZECHANGED, EventScrollViewSizeChanged::EventName());
}

// ---- attributes ---------------------------------------------------------------------

HRESULT SScrollView::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  auto is = [&](const wchar_t* n) { return name.CompareNoCase(n) == 0; };
  auto refuse = [&]() {
    SLOG(kLogWarn, "SOUI") << L"scrollview name='" << name_ << L"': bad " << name << L"='" << value
                           << L"'; ignored";
    return E_FAIL;
  };
  if (is(L"viewSize")) {
    SStringW parts[2];
    if (!SplitPair(value, &parts[0], &parts[1])) return refuse();
    Axis axis[2];
    SLayoutSize fixed[2];
    for (int i = 0; i < 2; ++i) {
      if (parts[i].CompareNoCase(L"wrap") == 0 || parts[i].CompareNoCase(L"wrap_content") == 0) {
        axis[i] = Axis::kWrap;
      } else if (!SLayoutSize::TryParse(parts[i], &fixed[i]) || (fixed[i].fSize() < 0 && fixed[i].fSize() != -1.f)) {
        return refuse();
      } else {
        axis[i] = fixed[i].fSize() == -1.f ? Axis::kFollow : Axis::kFixed;
      }
    }
    for (int i = 0; i < 2; ++i) axis_[i] = axis[i], fixed_[i] = fixed[i];
    RequestRelayout();
  } else if (is(L"viewPos")) {
    SStringW x, y;
    if (!SplitPair(value, &x, &y)) return refuse();
    int px = 0, py = 0;
    if (!StrToIntExW(x, STIF_DEFAULT, &px) || !StrToIntExW(y, STIF_DEFAULT, &py)) return refuse();
    SetViewOrigin(CPoint(px, py));
  } else if (is(L"sbWid")) {
    SLayoutSize w;
    if (!SLayoutSize::TryParse(value, &w) || w.fSize() < 0 || w.fSize() > 200) return refuse();
    sb_wid_ = w;
    RequestRelayout();
  } else if (is(L"sbEnable")) {
    int n = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &n);
    sb_enable_ = n != 0;
    RequestRelayout();
  } else if (is(L"sbSkin")) {
    sb_skin_.Set(value);
  } else if (is(L"colorSbThumb")) {
    if (!sb_thumb_color_.Set(value)) return refuse();
  } else if (is(L"colorSbTrack")) {
    if (!sb_track_color_.Set(value)) return refuse();
  } else {
    return SWindow::SetAttribute(name, value, loading);
  }
  return AfterAttribute(name, value, loading, S_OK);
}

void SScrollView::SetViewSize(CSize size) {
  const LONG v[2] = {size.cx, size.cy};
  for (int i = 0; i < 2; ++i) {
    axis_[i] = v[i] < 0 ? Axis::kFollow : Axis::kFixed;
    fixed_[i] = SLayoutSize(static_cast<float>(std::min<LONG>(std::max<LONG>(v[i], 0), kMaxContentSide)), LayoutUnit::Px);
  }
  RequestRelayout();
}

int SScrollView::SbWidth() const { return sb_enable_ ? std::max(0, sb_wid_.toPixelSize(GetScale())) : 0; }

int SScrollView::GetLineStep() const { return std::max(1, SLayoutSize(16.f, LayoutUnit::Dp).toPixelSize(GetScale())); }

// ---- content and origin --------------------------------------------------------------

CRect SScrollView::GetViewRect() const {
  CRect rc = GetClientRect();
  const int sb = SbWidth();
  if (vbar_) rc.right = std::max(rc.left, rc.right - sb);
  if (hbar_) rc.bottom = std::max(rc.top, rc.bottom - sb);
  return rc;
}

CRect SScrollView::GetChildrenLayoutRect() const {
  const CRect view = GetViewRect();
  CRect rc(view.left - origin_.x, view.top - origin_.y, 0, 0);
  rc.right = rc.left + content_.cx;
  rc.bottom = rc.top + content_.cy;
  rc.DeflateRect(style_->GetPadding(GetScale()));
  if (rc.right < rc.left) rc.right = rc.left;
  if (rc.bottom < rc.top) rc.bottom = rc.top;
  return rc;
}

CSize SScrollView::GetDesiredSize(int width, int height) {
  CSize size = SWindow::GetDesiredSize(width, height);
  // On a wrap axis a fixed content size stands in for the children.
  const int scale = GetScale();
  const CRect m = style_->GetMargin(scale);
  const Orientation o[2] = {Orientation::Horz, Orientation::Vert};
  LONG* out[2] = {&size.cx, &size.cy};
  for (int i = 0; i < 2; ++i) {
    if (!layout_param_.IsWrapContent(o[i]) || axis_[i] != Axis::kFixed) continue;
    const int extra = i == 0 ? m.left + m.right : m.top + m.bottom;
    *out[i] = ClampInt(static_cast<long long>(fixed_[i].toPixelSize(scale)) + extra, 0, kMaxContentSide);
  }
  return size;
}

void SScrollView::ResolveContent() {
  const CRect client = GetClientRect();
  const CRect pad = style_->GetPadding(GetScale());
  const int sb = sb_enable_ ? SbWidth() : 0;
  const int scale = GetScale();
  // Which bars show depends on the view, which the bars shrink: settle it in
  // a few rounds (a bar only ever appears, so two rounds are enough).
  bool vbar = false, hbar = false;
  CSize content;
  for (int round = 0; round < 3; ++round) {
    const int view_w = std::max(0, client.Width() - (vbar ? sb : 0));
    const int view_h = std::max(0, client.Height() - (hbar ? sb : 0));
    const int view[2] = {view_w, view_h};
    int size[2] = {0, 0};
    for (int i = 0; i < 2; ++i) {
      if (axis_[i] == Axis::kFixed) size[i] = ClampInt(fixed_[i].toPixelSize(scale), 0, kMaxContentSide);
      else if (axis_[i] == Axis::kFollow) size[i] = view[i];
    }
    // "wrap" measures the children within the other axis' content size.
    for (int i = 0; i < 2; ++i) {
      if (axis_[i] != Axis::kWrap) continue;
      const int other = 1 - i;
      const int avail = axis_[other] == Axis::kWrap ? -1 : size[other] - (other == 0 ? pad.left + pad.right : pad.top + pad.bottom);
      const CSize need = i == 0 ? SouiLayout::MeasureChildren(this, -1, std::max(avail, 0))
                                : SouiLayout::MeasureChildren(this, std::max(avail, 0), -1);
      const long long extent = (i == 0 ? need.cx + pad.left + pad.right : need.cy + pad.top + pad.bottom);
      size[i] = ClampInt(std::max<long long>(extent, view[i]), 0, kMaxContentSide);
    }
    content = CSize(size[0], size[1]);
    const bool need_v = sb > 0 && !layout_param_.IsWrapContent(Orientation::Vert) && content.cy > view_h;
    const bool need_h = sb > 0 && !layout_param_.IsWrapContent(Orientation::Horz) && content.cx > view_w;
    if (need_v == vbar && need_h == hbar) break;
    vbar = vbar || need_v;
    hbar = hbar || need_h;
  }
  vbar_ = vbar;
  hbar_ = hbar;
  if (content != content_) {
    EventScrollViewSizeChanged evt(this);
    evt.szOldViewSize = content_;
    evt.szNewViewSize = content;
    content_ = content;
    FireEvent(evt);
  }
}

CPoint SScrollView::Clamp(CPoint pt) const {
  const CRect view = GetViewRect();
  const int max_x = std::max<int>(0, content_.cx - view.Width());
  const int max_y = std::max<int>(0, content_.cy - view.Height());
  return CPoint(ClampInt(pt.x, 0, max_x), ClampInt(pt.y, 0, max_y));
}

void SScrollView::UpdateChildrenPosition() {
  const CPoint old = origin_;
  ResolveContent();
  origin_ = Clamp(origin_);
  SWindow::UpdateChildrenPosition();
  if (origin_ != old) {
    EventScrollViewOriginChanged evt(this);
    evt.ptOldOrigin = old;
    evt.ptNewOrigin = origin_;
    FireEvent(evt);
  }
}

void SScrollView::SetViewOrigin(CPoint pt) {
  // Before the first layout the request waits for the content size.
  if (IsLayoutDirty()) {
    origin_ = CPoint(ClampInt(pt.x, 0, kMaxContentSide), ClampInt(pt.y, 0, kMaxContentSide));
    RequestRelayout();
    return;
  }
  ApplyOrigin(Clamp(pt));
}

void SScrollView::ApplyOrigin(CPoint pt) {
  if (pt == origin_) return;
  const CPoint old = origin_;
  origin_ = pt;
  ShiftDescendants(old.x - pt.x, old.y - pt.y);
  Invalidate();
  EventScrollViewOriginChanged evt(this);
  evt.ptOldOrigin = old;
  evt.ptNewOrigin = pt;
  FireEvent(evt);
}

void SScrollView::ScrollToRect(const CRect& rc) {
  const CRect view = GetViewRect();
  long long x = origin_.x, y = origin_.y;
  // The far edge first, so that the near edge wins for a rect larger than the view.
  if (rc.right > view.right) x += static_cast<long long>(rc.right) - view.right;
  if (rc.bottom > view.bottom) y += static_cast<long long>(rc.bottom) - view.bottom;
  const long long left = rc.left - (x - origin_.x), top = rc.top - (y - origin_.y);
  if (left < view.left) x -= view.left - left;
  if (top < view.top) y -= view.top - top;
  SetViewOrigin(CPoint(ClampInt(x, 0, kMaxContentSide), ClampInt(y, 0, kMaxContentSide)));
}

void SScrollView::EnsureVisible(SWindow* descendant) {
  if (!descendant || descendant == this) return;
  for (SWindow* w = descendant->GetParent(); w != this; w = w->GetParent()) {
    if (!w) return;  // not ours
  }
  UpdateLayout();
  ScrollToRect(descendant->GetWindowRect());
}

// ---- painting ---------------------------------------------------------------------------

SScrollView::Bar SScrollView::GetBar(bool vertical) const {
  Bar bar;
  const CRect client = GetClientRect();
  const CRect view = GetViewRect();
  if (vertical ? !vbar_ : !hbar_) return bar;
  bar.track = vertical ? CRect(view.right, client.top, client.right, view.bottom)
                       : CRect(client.left, view.bottom, view.right, client.bottom);
  const int track = vertical ? bar.track.Height() : bar.track.Width();
  const long long page = vertical ? view.Height() : view.Width();
  const long long total = std::max<long long>(1, vertical ? content_.cy : content_.cx);
  const int min_thumb = std::min(track, std::max(SbWidth() * 2, 8));
  const int len = ClampInt(track * page / total, min_thumb, track);
  const long long range = total - page;
  const long long at = vertical ? origin_.y : origin_.x;
  const int offset = range > 0 ? static_cast<int>((track - len) * at / range) : 0;
  bar.thumb = bar.track;
  if (vertical) bar.thumb.top += offset, bar.thumb.bottom = bar.thumb.top + len;
  else bar.thumb.left += offset, bar.thumb.right = bar.thumb.left + len;
  return bar;
}

void SScrollView::PaintChildren(IRenderTarget* rt, const SRegion& dirty) {
  const CRect view = GetViewRect();
  if (dirty.Intersects(view)) {
    rt->PushClipRect(&view);
    for (SWindow* c = GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
      if (!dirty.Intersects(c->GetWindowRect() & view)) continue;  // out of view: not painted at all
      c->RedrawRegion(rt, dirty);
    }
    rt->PopClip();
  }
  for (bool vertical : {true, false}) {
    const Bar bar = GetBar(vertical);
    if (bar.track.IsRectEmpty() || !dirty.Intersects(bar.track)) continue;
    const Part thumb = vertical ? Part::kVThumb : Part::kHThumb;
    PaintBar(rt, bar, vertical, drag_ == thumb || (drag_ != thumb && hot_ == thumb));
  }
}

void SScrollView::PaintBar(IRenderTarget* rt, const Bar& bar, bool vertical, bool hot) {
  // Flat colours follow what is behind the view: a dark thumb on a light
  // background and a light one on a dark background.
  COLORREF bk = CR_INVALID;
  for (const SWindow* w = this; w && bk == CR_INVALID; w = w->GetParent()) bk = w->GetStyle().colorBkgnd.Get();
  const bool dark = bk != CR_INVALID && GetAValue(bk) > 0x80 && Luma(bk) < 128;
  const COLORREF ink = dark ? RGBA(0xFF, 0xFF, 0xFF, 0) : RGBA(0, 0, 0, 0);
  const COLORREF track = sb_track_color_.IsSet() ? sb_track_color_.Get() : (ink | (0x10u << 24));
  rt->FillSolidRect(&bar.track, track);
  CRect thumb = bar.thumb;
  if (ISkinObj* skin = sb_skin_.Get(GetScale())) {
    const int state = (drag_ == Part::kVThumb || drag_ == Part::kHThumb) && hot ? 2 : hot ? 1 : 0;
    skin->DrawByIndex(rt, &thumb, state < skin->GetStates() ? state : 0);
    return;
  }
  const COLORREF color = sb_thumb_color_.IsSet() ? sb_thumb_color_.Get() : (ink | ((hot ? 0x90u : 0x58u) << 24));
  // A slim thumb inside the track, fully rounded.
  const int inset = std::max(1, (vertical ? thumb.Width() : thumb.Height()) / 5);
  if (vertical) thumb.DeflateRect(inset, 1);
  else thumb.DeflateRect(1, inset);
  if (thumb.IsRectEmpty()) return;
  const int r = std::min(thumb.Width(), thumb.Height()) / 2;
  IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(color));
  rt->FillRoundRect(&thumb, CPoint(r, r));
  rt->SelectBrush(old);
}

// ---- input ----------------------------------------------------------------------------------

SWindow* SScrollView::SwndFromPoint(CPoint pt, BOOL include_msg_transparent) {
  if (!GetWindowRect().PtInRect(pt) || !IsVisible(FALSE)) return nullptr;
  if (!GetViewRect().PtInRect(pt)) return this;  // the bars, the corner, the margin
  return SWindow::SwndFromPoint(pt, include_msg_transparent);
}

SScrollView::Part SScrollView::PartFromPoint(CPoint pt) const {
  const Bar v = GetBar(true), h = GetBar(false);
  if (v.thumb.PtInRect(pt)) return Part::kVThumb;
  if (v.track.PtInRect(pt)) return Part::kVTrack;
  if (h.thumb.PtInRect(pt)) return Part::kHThumb;
  if (h.track.PtInRect(pt)) return Part::kHTrack;
  return Part::kNone;
}

BOOL SScrollView::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  (void)pt;
  const long long step = -static_cast<long long>(delta) * kWheelLines * GetLineStep() / kWheelDelta;
  const bool sideways = (flags & MK_SHIFT) != 0 || content_.cy <= GetViewRect().Height();
  const CPoint old = origin_;
  if (sideways) SetViewOrigin(CPoint(ClampInt(origin_.x + step, -kMaxContentSide, kMaxContentSide), origin_.y));
  else SetViewOrigin(CPoint(origin_.x, ClampInt(origin_.y + step, -kMaxContentSide, kMaxContentSide)));
  // At an end the wheel goes on to an outer view.
  return origin_ != old ? TRUE : FALSE;
}

void SScrollView::OnLButtonDown(UINT flags, CPoint pt) {
  const Part part = PartFromPoint(pt);
  if (part == Part::kNone) return SWindow::OnLButtonDown(flags, pt);
  if (part == Part::kVThumb || part == Part::kHThumb) {
    drag_ = part;
    drag_start_ = pt;
    drag_origin_ = origin_;
    Invalidate();
    return;
  }
  // A press on the track pages toward it, and again while held.
  drag_ = part;
  drag_start_ = pt;
  PageToward(pt);
  SetTimer(kRepeatTimerId, kRepeatDelayMs);
}

void SScrollView::PageToward(CPoint pt) {
  const bool vertical = drag_ == Part::kVTrack;
  const CRect view = GetViewRect();
  const CRect thumb = GetBar(vertical).thumb;
  const int page = std::max(1, (vertical ? view.Height() : view.Width()) - GetLineStep());
  // Until the thumb reaches the point.
  const int dir = vertical ? (pt.y < thumb.top ? -1 : pt.y >= thumb.bottom ? 1 : 0)
                           : (pt.x < thumb.left ? -1 : pt.x >= thumb.right ? 1 : 0);
  if (dir == 0) return;
  SetViewOrigin(vertical ? CPoint(origin_.x, origin_.y + dir * page) : CPoint(origin_.x + dir * page, origin_.y));
}

void SScrollView::OnTimer(int id) {
  if (id != kRepeatTimerId) return SWindow::OnTimer(id);
  if (drag_ != Part::kVTrack && drag_ != Part::kHTrack) return KillTimer(id);
  PageToward(drag_start_);
  SetTimer(kRepeatTimerId, kRepeatMs);
}

void SScrollView::OnMouseMove(UINT flags, CPoint pt) {
  if (drag_ == Part::kVTrack || drag_ == Part::kHTrack) {
    drag_start_ = pt;  // the held press follows the mouse along the track
    return;
  }
  if (drag_ == Part::kNone) {
    const Part part = PartFromPoint(pt);
    if (part != hot_) {
      hot_ = part;
      Invalidate();
    }
    return SWindow::OnMouseMove(flags, pt);
  }
  // The thumb follows the mouse: track pixels map onto content pixels.
  const bool vertical = drag_ == Part::kVThumb;
  const Bar bar = GetBar(vertical);
  const CRect view = GetViewRect();
  const long long free_px = vertical ? bar.track.Height() - bar.thumb.Height() : bar.track.Width() - bar.thumb.Width();
  const long long range = vertical ? content_.cy - view.Height() : content_.cx - view.Width();
  if (free_px <= 0 || range <= 0) return;
  const long long moved = vertical ? pt.y - drag_start_.y : pt.x - drag_start_.x;
  const int delta = ClampInt(moved * range / free_px, -kMaxContentSide, kMaxContentSide);
  SetViewOrigin(vertical ? CPoint(origin_.x, drag_origin_.y + delta) : CPoint(drag_origin_.x + delta, origin_.y));
}

void SScrollView::OnLButtonUp(UINT flags, CPoint pt) {
  KillTimer(kRepeatTimerId);
  if (drag_ != Part::kNone) {
    drag_ = Part::kNone;
    hot_ = PartFromPoint(pt);
    Invalidate();
    return;
  }
  SWindow::OnLButtonUp(flags, pt);
}

void SScrollView::OnMouseLeave() {
  if (hot_ != Part::kNone) {
    hot_ = Part::kNone;
    Invalidate();
  }
  SWindow::OnMouseLeave();
}

void SScrollView::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (OnNavigationKey(vk)) return;
  SWindow::OnKeyDown(vk, repeat, flags);
}

BOOL SScrollView::OnNavigationKey(UINT vk) {
  const CRect view = GetViewRect();
  const int line = GetLineStep();
  const int page = std::max(line, view.Height() - line);
  CPoint o = origin_;
  switch (vk) {
    case VK_UP: o.y -= line; break;
    case VK_DOWN: o.y += line; break;
    case VK_LEFT: o.x -= line; break;
    case VK_RIGHT: o.x += line; break;
    case VK_PRIOR: o.y -= page; break;
    case VK_NEXT: o.y += page; break;
    case VK_HOME: o.y = 0; break;
    case VK_END: o.y = content_.cy; break;
    default: return FALSE;
  }
  const CPoint old = origin_;
  SetViewOrigin(o);
  return origin_ != old ? TRUE : FALSE;
}

}  // namespace SOUI
