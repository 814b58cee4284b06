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

#include <cstdint>

#include "soui/sstring.h"

namespace SOUI {

class SWindow;

enum class LayoutUnit : uint8_t { Px, Dp, Dip, Sp };

// A length with a unit; dp-like units scale with the window's zoom.
class SLayoutSize {
 public:
  static constexpr float kWrapContent = -1.f;
  static constexpr float kMatchParent = -2.f;
  // Neither a size nor a keyword: the far pos item gives the edge.
  static constexpr float kUndefined = -3.f;
  // Magnitudes beyond this are rejected by the parsers.
  static constexpr float kMaxValue = 1e6f;

  SLayoutSize() = default;
  SLayoutSize(float v, LayoutUnit u) : value_(v), unit_(u) {}

  // "14dp", "3px", "7" (px), "1.5dp", "10dip", "12sp"; blanks around are
  // ignored and units are case-insensitive. Unparsable text reads as 0 px.
  static SLayoutSize Parse(const SStringW& text);
  // The strict form: false (and *out untouched) for anything but
  // [-]digits[.digits][unit] with a magnitude up to kMaxValue.
  static bool TryParse(const SStringW& text, SLayoutSize* out);
  // dp/dip/sp: floor(v*scale/100+0.5); px: truncated. The wrap and
  // match_parent markers come back unscaled (-1, -2).
  int toPixelSize(int scale) const;
  bool isWrapContent() const { return value_ == kWrapContent; }
  bool isMatchParent() const { return value_ == kMatchParent; }
  bool isZero() const { return value_ == 0.f; }
  float fSize() const { return value_; }
  LayoutUnit unit() const { return unit_; }
  // "14dp", "1.5px": the value (shortest form) and its unit.
  SStringW toString() const;

 private:
  float value_ = 0.f;
  LayoutUnit unit_ = LayoutUnit::Px;
};

enum class Orientation { Horz, Vert };

// One coordinate of pos.
// The number is kept as its parts so that an item takes 8 bytes: every
// window carries four of them.
struct PosItem {
  enum Ref : uint8_t { Normal, Center, Percent, PrevNear, PrevFar, NextNear, NextFar, Size };
  float value = 0.f;
  LayoutUnit unit = LayoutUnit::Px;
  Ref ref = Normal;
  bool minus = false;  // "-N": from the far edge (Normal) or negated offset

  SLayoutSize offset() const { return SLayoutSize(value, unit); }
  void set_offset(const SLayoutSize& size) {
    value = size.fSize();
    unit = size.unit();
  }
};

// The attributes a layout param takes.
enum class LayoutAttr { Pos, Offset, Size, Width, Height };

// The layout attributes of one child window.
class SouiLayoutParam {
 public:
  // Handles pos, offset, width, height, size (names in any case). Returns
  // false for other names and for values it rejects, which change nothing.
  // Order matters: a 4-item pos rewrites width/height from x2/y2 ("0".."-0"
  // is match_parent, "@N" a size, "@-1" wrap, anything else leaves the size
  // undefined so x2/y2 is an edge); a later width/height/size beats x2/y2.
  // Text the toolkit would quietly read as 0 ("match_parent", "12pt") is
  // rejected here.
  bool SetAttribute(const SStringW& name, const SStringW& value);
  // The same for a caller that has already told the names apart.
  bool SetAttribute(LayoutAttr attr, const SStringW& value);
  // Windows created from XML start as wrap x wrap; created in code, as match_parent.
  void Clear();
  void SetMatchParent(Orientation o);
  void SetWrapContent(Orientation o);
  void SetSpecifiedSize(Orientation o, const SLayoutSize& size);

  bool IsMatchParent(Orientation o) const;
  bool IsWrapContent(Orientation o) const;
  bool IsSpecifiedSize(Orientation o) const;
  // The stored size, or one of the kWrapContent/kMatchParent/kUndefined markers.
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
  // and applies it with child->OnRelayout(rect). Children caught in a
  // reference cycle are pinned at 0 (near edge) or given no size (far edge),
  // first in document order, until the rest resolves; far edges before
  // their near edge are clamped to an empty rectangle.
  static void LayoutChildren(SWindow* parent);
  // The extent the layout children need (max right/bottom relative to the
  // layout rect, plus N for each far edge written "-N"), for content sizing
  // of a wrap parent. A negative width or height means that axis of the
  // parent is itself wrap: match_parent children and far edges tied to the
  // parent then size to content, and near edges tied to it start at 0
  // without their offset (keeping N room for "-N").
  static CSize MeasureChildren(SWindow* parent, int width, int height);
};

}  // namespace SOUI
