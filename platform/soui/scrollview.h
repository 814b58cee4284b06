// SScrollView ("scrollview"): a view onto content larger than itself.
//
//   +-- client rect ----------------+---+
//   | view: the part shown           | v |   content rect = view shifted by
//   |   +-- content ------------...  | b |   -origin, viewSize big; children
//   |   | children, laid out here    | a |   are laid out in it (less the
//   |   |                            | r |   padding), in host coordinates
//   +--------------------------------+---+   like every window, so a child's
//   | horizontal bar                 |   |   GetWindowRect is where it shows
//   +--------------------------------+---+
//
// Only children that meet the view are painted (clipped to it); children
// wholly outside are skipped with their subtrees (so a descendant that
// overflows its out-of-view parent is not drawn either). Hit testing finds
// no child outside the view: the bars and the corner belong to the view.
//
// Attributes:
//   viewSize  "w,h": the content size, each a size ("800", "600dp"), or -1
//             to follow the view on that axis, or "wrap" to take the
//             children's measured extent (never less than the view). A
//             negative size other than -1 or text that does not parse is
//             refused (logged, no change). Default "-1,-1".
//   viewPos   "x,y": the initial scroll origin in pixels (clamped at layout).
//   sbWid     bar thickness (a size, default 10dp).
//   sbEnable  0 hides the bars (wheel and keys still scroll). Default 1.
//   sbSkin    a skin for the thumb (states 0 normal, 1 hover, 2 pushed);
//             without it the bar is flat: a faint track and a rounded thumb
//             in the foreground colour of the background under the view
//             (dark on light, light on dark), or colorSbThumb/colorSbTrack.
// Sized to content (wrap on an axis), the view takes the content's extent on
// that axis: a fixed viewSize, or the children's measure for -1 and "wrap".
// Nothing scrolls on such an axis.
//
// Input: the wheel (3 line steps of 16dp a notch; Shift, or content no
// taller than the view, scrolls sideways) on the view or on any child that
// does not use it, going on to an outer view at an end; dragging a thumb;
// pressing a track (a page toward the press, repeating while held until
// the thumb reaches the mouse); keys when the view or a descendant has the
// focus and leaves the key alone, or nothing has the focus and the mouse is
// over the view: Up/Down/Left/Right a line, Page Up/Down a view less a
// line, Home/End the top/bottom. Tab into a child out of view scrolls it
// into view. Children are always clipped to the view.
//
// Events: EventScrollViewOriginChanged whenever the origin changes (by input,
// API or a relayout that clamps it), EventScrollViewSizeChanged when the
// content size changes.
#pragma once

#include "soui/swnd.h"

namespace SOUI {

enum : int {
  EVT_SCROLLVIEW_ORIGINCHANGED = 15000,
  EVT_SCROLLVIEW_SIZECHANGED = 15001,
};

class EventScrollViewOriginChanged : public EventArgs {
  SOUI_EVENT_ID(EVT_SCROLLVIEW_ORIGINCHANGED, L"on_scrollview_origin_changed")
 public:
  using EventArgs::EventArgs;
  CPoint ptOldOrigin;
  CPoint ptNewOrigin;
};

class EventScrollViewSizeChanged : public EventArgs {
  SOUI_EVENT_ID(EVT_SCROLLVIEW_SIZECHANGED, L"on_scrollview_size_changed")
 public:
  using EventArgs::EventArgs;
  CSize szOldViewSize;
  CSize szNewViewSize;
};

class SScrollView : public SWindow {
  SOUI_CLASS_NAME(SScrollView, SWindow, L"scrollview")
 public:
  // Content sides are kept below this (pixels), whatever viewSize says.
  static constexpr int kMaxContentSide = 1 << 24;
  static constexpr int kWheelLines = 3;
  // A track held down pages again after the delay, then at the interval.
  static constexpr int kRepeatTimerId = 0x5C01;
  static constexpr UINT kRepeatDelayMs = 400;
  static constexpr UINT kRepeatMs = 60;

  SScrollView();

  // The content size in pixels as last laid out.
  CSize GetViewSize() const { return content_; }
  // Pixels; -1 on an axis follows the view. Relays out.
  void SetViewSize(CSize size);
  CPoint GetViewOrigin() const { return origin_; }
  // Scrolls to pt, clamped to [0, content - view] on each axis.
  void SetViewOrigin(CPoint pt);
  void ScrollTo(CPoint pt) { SetViewOrigin(pt); }
  // Scrolls the least that shows rc (host coordinates; its top-left wins
  // when it is larger than the view).
  void ScrollToRect(const CRect& rc);
  // The visible part of the content: the client rect less the bars.
  CRect GetViewRect() const;
  // One line step in pixels (16dp).
  int GetLineStep() const;

  // ---- SWindow ----
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  CRect GetChildrenLayoutRect() const override;
  CSize GetDesiredSize(int width, int height) override;
  void UpdateChildrenPosition() override;
  SWindow* SwndFromPoint(CPoint pt, BOOL include_msg_transparent = FALSE) override;
  void EnsureVisible(SWindow* descendant) override;
  void PaintChildren(IRenderTarget* rt, const SRegion& dirty) override;
  BOOL OnMouseWheel(UINT flags, short delta, CPoint pt) override;
  void OnLButtonDown(UINT flags, CPoint pt) override;
  void OnLButtonUp(UINT flags, CPoint pt) override;
  void OnMouseMove(UINT flags, CPoint pt) override;
  void OnMouseLeave() override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  BOOL OnNavigationKey(UINT vk) override;
  void OnTimer(int id) override;

 private:
  enum class Axis { kFixed, kFollow, kWrap };
  enum class Part { kNone, kVThumb, kVTrack, kHThumb, kHTrack };
  struct Bar {
    CRect track, thumb;
  };
  // Works out content_ and which bars show, for the current client size.
  void ResolveContent();
  CPoint Clamp(CPoint pt) const;
  // Moves the children to the new origin and tells subscribers.
  void ApplyOrigin(CPoint pt);
  Bar GetBar(bool vertical) const;
  Part PartFromPoint(CPoint pt) const;
  // One page toward pt along the held track, unless the thumb is there.
  void PageToward(CPoint pt);
  int SbWidth() const;
  void PaintBar(IRenderTarget* rt, const Bar& bar, bool vertical, bool hot);

  Axis axis_[2] = {Axis::kFollow, Axis::kFollow};
  SLayoutSize fixed_[2];
  CSize content_;
  CPoint origin_;
  bool vbar_ = false, hbar_ = false;
  BOOL sb_enable_ = TRUE;
  SLayoutSize sb_wid_{10.f, LayoutUnit::Dp};
  ThemedSkin sb_skin_;
  ThemedColor sb_thumb_color_, sb_track_color_;
  Part drag_ = Part::kNone;
  Part hot_ = Part::kNone;
  CPoint drag_start_;  // where a thumb drag started, or where the track is held
  CPoint drag_origin_;
};

class SObjectFactory;
// Registers "scrollview".
void RegisterScrollViewControls(SObjectFactory& factory);

}  // namespace SOUI
