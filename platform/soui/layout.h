// The toolkit's default layout: sizes with units, the pos/offset/size
// attributes of a child, and the resolver that places children.
//
//   pos="x1,y1[,x2,y2]"   each item: [prefix][-]number[unit]
//     none  from the parent's left/top      -   from the right/bottom
//     |     from the centre                 %   percent of the parent
//     [ {   previous sibling's right/bottom, left/top
//     ] }   next sibling's left/top, right/bottom
//     @N    (x2/y2 only) a size; @-1 sizes to content
//   offset="fx,fy"  shifts by fx*width, fy*height once the size is known
//   width/height/size: a size, "matchParent"/"full", "wrapContent", -1, -2
#pragma once

#include "soui/sstring.h"

namespace SOUI {

class SWindow;

enum class LayoutUnit { Px, Dp, Dip, Sp };

// A length with a unit; dp-like units scale with the window's zoom.
class SLayoutSize {
 public:
  static constexpr float kWrapContent = -1.f;
  static constexpr float kMatchParent = -2.f;

  SLayoutSize() = default;
  SLayoutSize(float v, LayoutUnit u) : value_(v), unit_(u) {}

  // "14dp", "3px", "7" (px), "1.5dp". Unparsable text reads as 0 px.
  static SLayoutSize Parse(const SStringW& text);
  // dp: floor(v*scale/100+0.5); px: truncated.
  int toPixelSize(int scale) const;
  bool isWrapContent() const { return value_ == kWrapContent; }
  bool isMatchParent() const { return value_ == kMatchParent; }
  bool isZero() const { return value_ == 0.f; }
  float fSize() const { return value_; }
  LayoutUnit unit() const { return unit_; }
  SStringW toString() const;

 private:
  float value_ = 0.f;
  LayoutUnit unit_ = LayoutUnit::Px;
};

enum class Orientation { Horz, Vert };

// One coordinate of pos.
struct PosItem {
  enum Ref { Normal, Center, Percent, PrevNear, PrevFar, NextNear, NextFar, Size };
  Ref ref = Normal;
  bool minus = false;       // "-N": from the far edge (Normal) or negated offset
  SLayoutSize offset;       // the number
};

// The layout attributes of one child window.
class SouiLayoutParam {
 public:
  // Handles pos, offset, width, height, size. Returns false for other names
  // and for values it rejects (which change nothing).
  bool SetAttribute(const SStringW& name, const SStringW& value);
  // Windows created from XML start as wrap x wrap; created in code, as match_parent.
  void Clear();
  void SetMatchParent(Orientation o);
  void SetWrapContent(Orientation o);
  void SetSpecifiedSize(Orientation o, const SLayoutSize& size);

  bool IsMatchParent(Orientation o) const;
  bool IsWrapContent(Orientation o) const;
  bool IsSpecifiedSize(Orientation o) const;
  SLayoutSize GetSpecifiedSize(Orientation o) const;

  int PosCount() const { return pos_count_; }
  const PosItem& Pos(int i) const { return pos_[i]; }
  float OffsetX() const { return offset_x_; }
  float OffsetY() const { return offset_y_; }

 private:
  bool ParsePos(const SStringW& value);
  bool ParseSize(Orientation o, const SStringW& value);

  PosItem pos_[4];
  int pos_count_ = 0;
  float offset_x_ = 0.f, offset_y_ = 0.f;
  SLayoutSize width_{SLayoutSize::kWrapContent, LayoutUnit::Px};
  SLayoutSize height_{SLayoutSize::kWrapContent, LayoutUnit::Px};
};

// Places and measures the layout children of a window.
class SouiLayout {
 public:
  // Resolves every layout child's rectangle inside parent->GetChildrenLayoutRect()
  // and applies it with child->OnRelayout(rect).
  static void LayoutChildren(SWindow* parent);
  // The extent the layout children need (max right/bottom relative to the
  // layout rect), for content sizing of a wrap parent. A negative width or
  // height means that axis of the parent is itself wrap.
  static CSize MeasureChildren(SWindow* parent, int width, int height);
};

}  // namespace SOUI
