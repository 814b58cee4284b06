// The default layout. Sections: number and size parsing · SLayoutSize ·
// SouiLayoutParam (pos/offset/size attributes) · the resolver · SouiLayout.
#include "soui/layout.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cwchar>
#include <string>
#include <vector>

#include "soui/swnd.h"

namespace SOUI {

namespace {

// Coordinates are kept well inside int so that sums of a few never overflow,
// whatever the attribute text said.
constexpr int kMaxCoord = 1 << 26;

int ClampCoord(double v) {
  if (!(v == v)) return 0;  // NaN
  if (v > kMaxCoord) return kMaxCoord;
  if (v < -kMaxCoord) return -kMaxCoord;
  return static_cast<int>(v);
}

// a + b in the same bounds; ints need no trip through double.
int ClampSum(int a, int b) {
  const long long v = static_cast<long long>(a) + b;
  return static_cast<int>(std::min<long long>(std::max<long long>(v, -kMaxCoord), kMaxCoord));
}

wchar_t LowerAscii(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c; }

// Strict decimal: [-]digits[.digits] filling all of [b, e), at least one
// digit, magnitude up to kMaxValue. No exponents, no "nan"/"inf", and no
// locale: the decimal point is always '.'.
bool ParseDecimal(const wchar_t* b, const wchar_t* e, double* out) {
  TrimBlanks(b, e);
  bool negative = false;
  if (b < e && *b == L'-') {
    negative = true;
    ++b;
  }
  double v = 0;
  int digits = 0;
  for (; b < e && *b >= L'0' && *b <= L'9'; ++b, ++digits) {
    if (v <= SLayoutSize::kMaxValue) v = v * 10 + (*b - L'0');
  }
  if (b < e && *b == L'.') {
    ++b;
    double unit = 0.1;
    for (; b < e && *b >= L'0' && *b <= L'9'; ++b, ++digits) {
      v += (*b - L'0') * unit;
      unit *= 0.1;
    }
  }
  if (b != e || digits == 0 || v > SLayoutSize::kMaxValue) return false;
  *out = negative ? -v : v;
  return true;
}

// suffix: lowercase ASCII.
template <size_t N>
bool EndsWithNoCase(const wchar_t* b, const wchar_t* e, const wchar_t (&suffix)[N]) {
  constexpr size_t n = N - 1;
  if (static_cast<size_t>(e - b) < n) return false;
  for (size_t i = 0; i < n; ++i) {
    if (LowerAscii(e[static_cast<ptrdiff_t>(i) - static_cast<ptrdiff_t>(n)]) != suffix[i]) return false;
  }
  return true;
}

// The unit a size ends with, and its length in characters.
size_t UnitSuffix(const wchar_t* b, const wchar_t* e, LayoutUnit* unit) {
  *unit = LayoutUnit::Px;
  if (b == e || (e[-1] >= L'0' && e[-1] <= L'9')) return 0;  // most sizes are bare numbers
  // "dip" first: the older toolkit looked at two characters only and read
  // "10dip" as a bare number; the newer one (and we) take the whole unit.
  if (EndsWithNoCase(b, e, L"dip")) {
    *unit = LayoutUnit::Dip;
    return 3;
  }
  if (EndsWithNoCase(b, e, L"dp")) {
    *unit = LayoutUnit::Dp;
    return 2;
  }
  if (EndsWithNoCase(b, e, L"sp")) {
    *unit = LayoutUnit::Sp;
    return 2;
  }
  return EndsWithNoCase(b, e, L"px") ? 2 : 0;
}

// Parses [b, e) as a size; works on the text in place (layouts parse many).
bool ParseSizeRange(const wchar_t* b, const wchar_t* e, SLayoutSize* out) {
  TrimBlanks(b, e);
  LayoutUnit unit;
  const size_t unit_len = UnitSuffix(b, e, &unit);
  double v = 0;
  if (!ParseDecimal(b, e - unit_len, &v)) return false;
  *out = SLayoutSize(static_cast<float>(v), unit);
  return true;
}

// A size in pixels at a zoom of scale percent: dp-like units round half up,
// px truncates. Layout converts a few numbers per child, most of them whole.
int PixelsOf(float value, LayoutUnit unit, int scale) {
  if (value >= 0.f && value <= SLayoutSize::kMaxValue) {
    const int whole = static_cast<int>(value);
    if (static_cast<float>(whole) == value) {
      if (unit == LayoutUnit::Px || scale == 100) return whole;
      // In integers: v*scale is exact, and so is n.5 in binary, so this is
      // the floor(v*scale/100+0.5) below.
      if (scale >= 0) {
        const long long k = static_cast<long long>(whole) * scale;
        return static_cast<int>(std::min<long long>((k + 50) / 100, kMaxCoord));
      }
    }
  }
  if (unit == LayoutUnit::Px) return ClampCoord(value);
  return ClampCoord(std::floor(static_cast<double>(value) * scale / 100.0 + 0.5));
}

const wchar_t* UnitName(LayoutUnit u) {
  switch (u) {
    case LayoutUnit::Dp: return L"dp";
    case LayoutUnit::Dip: return L"dip";
    case LayoutUnit::Sp: return L"sp";
    case LayoutUnit::Px: break;
  }
  return L"px";
}

}  // namespace

// ---- SLayoutSize ---------------------------------------------------------------

bool SLayoutSize::TryParse(const SStringW& text, SLayoutSize* out) {
  return ParseSizeRange(text.c_str(), text.c_str() + text.GetLength(), out);
}

SLayoutSize SLayoutSize::Parse(const SStringW& text) {
  SLayoutSize size;
  TryParse(text, &size);
  return size;
}

int SLayoutSize::toPixelSize(int scale) const {
  if (isWrapContent() || isMatchParent()) return static_cast<int>(value_);
  return PixelsOf(value_, unit_, scale);
}

SStringW SLayoutSize::toString() const {
  wchar_t buf[64];
  if (value_ == std::floor(value_) && std::fabs(value_) <= kMaxValue) {
    std::swprintf(buf, 64, L"%d%ls", static_cast<int>(value_), UnitName(unit_));
  } else {
    // Shortest of up to six decimals: 1.5 rather than 1.500000.
    std::swprintf(buf, 64, L"%.6f", static_cast<double>(value_));
    std::wstring num(buf);
    while (!num.empty() && num.back() == L'0') num.pop_back();
    if (!num.empty() && num.back() == L'.') num.pop_back();
    std::swprintf(buf, 64, L"%ls%ls", num.c_str(), UnitName(unit_));
  }
  return SStringW(buf);
}

// ---- SouiLayoutParam -------------------------------------------------------------

namespace {

// width/height: a keyword, -1 (wrap), -2 (match_parent) or a size >= 0.
// The toolkit reads any other text as 0; we reject it so that a typo such as
// "match_parent" leaves the window as it was instead of collapsing it.
bool ParseSizeValue(const SStringW& text, SLayoutSize* out) {
  SStringW s(text);
  s.Trim();
  if (s.CompareNoCase(L"matchParent") == 0 || s.CompareNoCase(L"full") == 0) {
    *out = SLayoutSize(SLayoutSize::kMatchParent, LayoutUnit::Px);
    return true;
  }
  if (s.CompareNoCase(L"wrapContent") == 0) {
    *out = SLayoutSize(SLayoutSize::kWrapContent, LayoutUnit::Px);
    return true;
  }
  SLayoutSize size;
  if (!SLayoutSize::TryParse(s, &size)) return false;
  if (size.fSize() == SLayoutSize::kWrapContent || size.fSize() == SLayoutSize::kMatchParent) {
    *out = SLayoutSize(size.fSize(), LayoutUnit::Px);
    return true;
  }
  if (size.fSize() < 0) return false;
  *out = size;
  return true;
}

// [prefix][-]number[unit]; "@" is only allowed where a size may stand.
bool ParsePosItem(const wchar_t* b, const wchar_t* e, bool allow_size, PosItem* out) {
  TrimBlanks(b, e);
  if (b == e) return false;
  PosItem item;
  switch (*b) {
    case L'|': item.ref = PosItem::Center; break;
    case L'%': item.ref = PosItem::Percent; break;
    case L'[': item.ref = PosItem::PrevNear; break;
    case L'{': item.ref = PosItem::PrevFar; break;
    case L']': item.ref = PosItem::NextNear; break;
    case L'}': item.ref = PosItem::NextFar; break;
    case L'@': item.ref = PosItem::Size; break;
    default: break;
  }
  if (item.ref != PosItem::Normal) ++b;
  if (item.ref == PosItem::Size && !allow_size) return false;
  if (b < e && *b == L'-') {
    item.minus = true;
    ++b;
  }
  SLayoutSize size;
  if (!ParseSizeRange(b, e, &size) || std::signbit(size.fSize())) {
    return false;  // "--5", "[-" and friends
  }
  item.set_offset(size);
  *out = item;
  return true;
}

// The size a 4-item pos implies for one axis, from its near and far items.
SLayoutSize SizeFromPos(const PosItem& near_item, const PosItem& far_item) {
  if (far_item.ref == PosItem::Size) {
    // "@-N" of any N is wrap, as in the toolkit.
    return far_item.minus ? SLayoutSize(SLayoutSize::kWrapContent, LayoutUnit::Px)
                          : far_item.offset();
  }
  if (near_item.ref == PosItem::Normal && !near_item.minus && near_item.offset().isZero() &&
      far_item.ref == PosItem::Normal && far_item.minus && far_item.offset().isZero()) {
    return SLayoutSize(SLayoutSize::kMatchParent, LayoutUnit::Px);
  }
  return SLayoutSize(SLayoutSize::kUndefined, LayoutUnit::Px);
}

int CountOf(const SStringW& s, wchar_t c) {
  int n = 0;
  for (int i = 0; i < s.GetLength(); ++i) n += s[i] == c;
  return n;
}

}  // namespace

bool SouiLayoutParam::SetAttribute(const SStringW& name, const SStringW& value) {
  if (name.CompareNoCase(L"pos") == 0) return SetAttribute(LayoutAttr::Pos, value);
  if (name.CompareNoCase(L"width") == 0) return SetAttribute(LayoutAttr::Width, value);
  if (name.CompareNoCase(L"height") == 0) return SetAttribute(LayoutAttr::Height, value);
  if (name.CompareNoCase(L"size") == 0) return SetAttribute(LayoutAttr::Size, value);
  if (name.CompareNoCase(L"offset") == 0) return SetAttribute(LayoutAttr::Offset, value);
  return false;
}

bool SouiLayoutParam::SetAttribute(LayoutAttr attr, const SStringW& value) {
  switch (attr) {
    case LayoutAttr::Pos: return ParsePos(value);
    case LayoutAttr::Width: return ParseSize(Orientation::Horz, value);
    case LayoutAttr::Height: return ParseSize(Orientation::Vert, value);
    case LayoutAttr::Size: {
      if (CountOf(value, L',') != 1) return false;
      const std::vector<SStringW> parts = SplitString(value, L',');
      SLayoutSize w, h;
      if (!ParseSizeValue(parts[0], &w) || !ParseSizeValue(parts[1], &h)) return false;
      width_ = w;
      height_ = h;
      return true;
    }
    case LayoutAttr::Offset: {
      if (CountOf(value, L',') != 1) return false;
      const std::vector<SStringW> parts = SplitString(value, L',');
      double fx = 0, fy = 0;
      const std::wstring& x = parts[0].str();
      const std::wstring& y = parts[1].str();
      if (!ParseDecimal(x.data(), x.data() + x.size(), &fx) ||
          !ParseDecimal(y.data(), y.data() + y.size(), &fy)) {
        return false;
      }
      offset_x_ = static_cast<float>(fx);
      offset_y_ = static_cast<float>(fy);
      return true;
    }
  }
  return false;
}

bool SouiLayoutParam::ParsePos(const SStringW& value) {
  // A list gives every row the same pos: the last one read is kept, parsed.
  struct Last {
    std::wstring text;
    PosItem items[4];
    int count = 0;
  };
  static Last last;
  PosItem items[4];
  int count = 0;
  if (!last.text.empty() && last.text == value.str()) {
    count = last.count;
    std::copy(last.items, last.items + 4, items);
  } else {
    const int commas = CountOf(value, L',');
    if (commas != 1 && commas != 3) return false;  // before splitting: text may be huge
    const wchar_t* b = value.c_str();
    const wchar_t* const end = b + value.GetLength();
    for (; count <= commas; ++count) {
      const wchar_t* e = std::find(b, end, L',');
      if (!ParsePosItem(b, e, count >= 2, &items[count])) return false;
      b = e + (e < end ? 1 : 0);
    }
    if (value.GetLength() <= 64) {
      last.text = value.str();
      last.count = count;
      std::copy(items, items + 4, last.items);
    }
  }
  pos_count_ = count;
  for (int i = 0; i < 4; ++i) pos_[i] = i < pos_count_ ? items[i] : PosItem();
  if (pos_count_ == 4) {
    width_ = SizeFromPos(pos_[0], pos_[2]);
    height_ = SizeFromPos(pos_[1], pos_[3]);
  } else {
    // Without x2/y2 an undefined size (left by an earlier 4-item pos) has
    // nothing to come from: size to content.
    if (width_.fSize() == SLayoutSize::kUndefined) SetWrapContent(Orientation::Horz);
    if (height_.fSize() == SLayoutSize::kUndefined) SetWrapContent(Orientation::Vert);
  }
  return true;
}

bool SouiLayoutParam::ParseSize(Orientation o, const SStringW& value) {
  SLayoutSize size;
  if (!ParseSizeValue(value, &size)) return false;
  SetSpecifiedSize(o, size);
  return true;
}

void SouiLayoutParam::Clear() {
  for (PosItem& item : pos_) item = PosItem();
  pos_count_ = 0;
  offset_x_ = offset_y_ = 0.f;
  SetWrapContent(Orientation::Horz);
  SetWrapContent(Orientation::Vert);
}

void SouiLayoutParam::SetMatchParent(Orientation o) {
  SetSpecifiedSize(o, SLayoutSize(SLayoutSize::kMatchParent, LayoutUnit::Px));
}

void SouiLayoutParam::SetWrapContent(Orientation o) {
  SetSpecifiedSize(o, SLayoutSize(SLayoutSize::kWrapContent, LayoutUnit::Px));
}

void SouiLayoutParam::SetSpecifiedSize(Orientation o, const SLayoutSize& size) {
  (o == Orientation::Horz ? width_ : height_) = size;
}

bool SouiLayoutParam::IsMatchParent(Orientation o) const {
  return GetSpecifiedSize(o).isMatchParent();
}

bool SouiLayoutParam::IsWrapContent(Orientation o) const {
  return GetSpecifiedSize(o).isWrapContent();
}

bool SouiLayoutParam::IsSpecifiedSize(Orientation o) const {
  return GetSpecifiedSize(o).fSize() >= 0;
}

SLayoutSize SouiLayoutParam::GetSpecifiedSize(Orientation o) const {
  return o == Orientation::Horz ? width_ : height_;
}

// ---- the resolver ------------------------------------------------------------------
//
// Every layout child gets four edges, unknown at first. Sweeps over the
// children in document order fill in whatever can be computed from what is
// already known, until a sweep changes nothing:
//
//   near edge (left/top)   from pos x1/y1, or "[0"/"{0" without pos
//   far edge (right/bottom) match_parent -> the parent's far edge
//                           a size       -> near + size
//                           wrap         -> near + GetDesiredSize()
//                           undefined    -> pos x2/y2 as an edge
//   offset                 once both edges of an axis are known
//
// A sibling's edges on an axis are visible to others only once its offset
// on that axis has been applied. The toolkit measures content in a step of
// its own after the other edges settle; measuring depends only on the
// parent's size, so doing it as soon as the near edge is known gives the
// same rectangles.

namespace {

constexpr int kUnknown = INT_MIN;    // edge not resolved yet
constexpr int kWait = INT_MIN + 1;   // a reference is not resolved yet
constexpr int kParent = INT_MIN + 2; // needs the size of a wrap parent

enum Axis { kX = 0, kY = 1 };
enum Side { kNear = 0, kFar = 1 };

Orientation OrientationOf(int axis) { return axis == kX ? Orientation::Horz : Orientation::Vert; }

enum class SizeMode { Match, Fixed, Content, Edge };

// How a child's size on one axis is found; known: the parent's size on
// that axis is known.
SizeMode SizeModeOf(const SouiLayoutParam& lp, int axis, bool known) {
  const Orientation o = OrientationOf(axis);
  if (lp.IsMatchParent(o)) return known ? SizeMode::Match : SizeMode::Content;
  if (lp.IsSpecifiedSize(o)) return SizeMode::Fixed;
  if (lp.IsWrapContent(o)) return SizeMode::Content;
  if (lp.PosCount() == 4) {
    const PosItem& far_item = lp.Pos(2 + axis);
    if (far_item.ref != PosItem::Size) return SizeMode::Edge;
    return far_item.minus ? SizeMode::Content : SizeMode::Fixed;
  }
  return SizeMode::Content;
}

class Resolver {
 public:
  struct Slot {
    SWindow* wnd = nullptr;
    const SouiLayoutParam* lp = nullptr;
    int scale = 100;
    int edge[2][2] = {{kUnknown, kUnknown}, {kUnknown, kUnknown}};  // [axis][side]
    bool offset_pending[2] = {false, false};
    // Measuring in a wrap parent: the near edge was tied to the parent's
    // unknown size, so it sits at 0 and its offset is not applied.
    bool parent_anchored[2] = {false, false};
    int extra[2] = {0, 0};  // room asked beyond the far edge ("-N")
    bool measured = false;
    CSize desired;
  };

  // width/height: the parent's layout size; negative for a wrap axis.
  Resolver(SWindow* parent, int width, int height) : avail_{width, height} {
    slots_.reserve(parent->GetChildrenCount());
    // Children in the parent's container share its zoom: one read rather
    // than a call through the container per child.
    const ISwndContainer* container = parent->GetContainer();
    const int parent_scale = parent->GetScale();
    for (SWindow* c = parent->GetNextLayoutChild(nullptr); c; c = parent->GetNextLayoutChild(c)) {
      slots_.emplace_back();
      Slot& s = slots_.back();
      s.wnd = c;
      s.lp = c->GetLayoutParam();
      s.scale = c->GetContainer() == container ? parent_scale : c->GetScale();
      s.offset_pending[kX] = s.lp->OffsetX() != 0.f;
      s.offset_pending[kY] = s.lp->OffsetY() != 0.f;
      pending_ += 4 + s.offset_pending[kX] + s.offset_pending[kY];
    }
  }

  void Run() {
    // Each round either resolves an edge or applies an offset (a sweep with
    // progress), or pins one edge (Unstick), so it ends within 6 rounds per
    // child. Children that depend only on the parent and earlier siblings,
    // the usual page, settle in the first sweep.
    while (pending_ > 0) {
      bool progress = false;
      for (size_t i = 0; i < slots_.size(); ++i) {
        progress |= Step(i, kX);
        progress |= Step(i, kY);
      }
      // Nothing left to pin means every edge is known after all.
      if (!progress && pending_ > 0 && !Unstick()) return;
    }
  }

  const std::vector<Slot>& slots() const { return slots_; }

 private:
  bool Known(int axis) const { return avail_[axis] >= 0; }

  // An edge of a sibling as others may see it.
  int Published(size_t j, int axis, int side) const {
    const Slot& s = slots_[j];
    if (s.offset_pending[axis] || s.edge[axis][side] == kUnknown) return kWait;
    return s.edge[axis][side];
  }

  // The value of one pos item for child i, or kWait / kParent.
  int ItemValue(size_t i, int axis, const PosItem& item) const {
    const int n = PixelsOf(item.value, item.unit, slots_[i].scale);
    const int signed_n = item.minus ? -n : n;
    int base = 0;
    switch (item.ref) {
      case PosItem::Normal:
        if (!item.minus) return n;
        if (!Known(axis)) return kParent;
        return ClampSum(avail_[axis], -n);
      case PosItem::Center:
        if (!Known(axis)) return kParent;
        return ClampSum(avail_[axis] / 2, signed_n);
      case PosItem::Percent: {
        if (!Known(axis)) return kParent;
        double pct = std::min(std::max(static_cast<double>(item.offset().fSize()), 0.0), 100.0);
        if (item.minus) pct = 100.0 - pct;
        return ClampCoord(avail_[axis] * pct / 100.0);
      }
      case PosItem::PrevNear:
      case PosItem::PrevFar:
        // No previous sibling: measured from 0.
        if (i > 0) {
          base = Published(i - 1, axis, item.ref == PosItem::PrevNear ? kFar : kNear);
          if (base == kWait) return kWait;
        }
        return ClampSum(base, signed_n);
      case PosItem::NextNear:
      case PosItem::NextFar:
        // No next sibling: measured from the parent's far edge.
        if (i + 1 < slots_.size()) {
          base = Published(i + 1, axis, item.ref == PosItem::NextNear ? kNear : kFar);
          if (base == kWait) return kWait;
        } else {
          if (!Known(axis)) return kParent;
          base = avail_[axis];
        }
        return ClampSum(base, signed_n);
      case PosItem::Size:
        break;  // never an edge; SizeModeOf handles it
    }
    return n;
  }

  SizeMode ModeOf(const Slot& s, int axis) const { return SizeModeOf(*s.lp, axis, Known(axis)); }

  int FixedSize(const Slot& s, int axis) const {
    const Orientation o = OrientationOf(axis);
    const SLayoutSize size =
        s.lp->IsSpecifiedSize(o) ? s.lp->GetSpecifiedSize(o) : s.lp->Pos(2 + axis).offset();
    return PixelsOf(size.fSize(), size.unit(), s.scale);
  }

  int DesiredSize(size_t i, int axis) {
    Slot& s = slots_[i];
    if (!s.measured) {
      s.desired = s.wnd->GetDesiredSize(avail_[kX], avail_[kY]);
      s.measured = true;
    }
    const int v = axis == kX ? s.desired.cx : s.desired.cy;
    return std::min(std::max(v, 0), kMaxCoord);
  }

  // Resolves what it can of child i on one axis; true when anything changed.
  bool Step(size_t i, int axis) {
    Slot& s = slots_[i];
    int* edge = s.edge[axis];
    bool changed = false;

    if (edge[kNear] == kUnknown) {
      // Without pos a child flows right of its previous sibling, top-aligned.
      PosItem flow;
      flow.ref = axis == kX ? PosItem::PrevNear : PosItem::PrevFar;
      const PosItem& item = s.lp->PosCount() >= 2 ? s.lp->Pos(axis) : flow;
      const int v = ItemValue(i, axis, item);
      if (v == kParent) {
        edge[kNear] = 0;
        s.parent_anchored[axis] = true;
        if (item.ref == PosItem::Normal) s.extra[axis] += PixelsOf(item.value, item.unit, s.scale);
      } else if (v != kWait) {
        edge[kNear] = v;
      }
      if (edge[kNear] != kUnknown) {
        --pending_;
        changed = true;
      }
    }

    if (edge[kFar] == kUnknown) {
      const SizeMode mode = ModeOf(s, axis);
      const bool have_near = edge[kNear] != kUnknown;
      int v = kWait;
      if (mode == SizeMode::Match) {
        v = avail_[axis];
      } else if (mode == SizeMode::Fixed && have_near) {
        v = ClampSum(edge[kNear], FixedSize(s, axis));
      } else if (mode == SizeMode::Content && have_near) {
        v = ClampSum(edge[kNear], DesiredSize(i, axis));
      } else if (mode == SizeMode::Edge) {
        const PosItem& item = s.lp->Pos(2 + axis);
        v = ItemValue(i, axis, item);
        if (v == kParent) {
          // Tied to the far side of a wrap parent: size to content and keep
          // the gap as room the parent must leave.
          v = have_near ? ClampSum(edge[kNear], DesiredSize(i, axis)) : kWait;
        }
        if (v != kWait && item.ref == PosItem::Normal && item.minus) {
          s.extra[axis] += PixelsOf(item.value, item.unit, s.scale);
        }
      }
      if (v != kWait) {
        edge[kFar] = v;
        --pending_;
        changed = true;
      }
    }

    if (s.offset_pending[axis] && edge[kNear] != kUnknown && edge[kFar] != kUnknown) {
      if (!s.parent_anchored[axis]) {
        const float f = axis == kX ? s.lp->OffsetX() : s.lp->OffsetY();
        // Truncated, as the toolkit's int cast does: -0.5 of 41 is -20.
        const int shift =
            ClampCoord(static_cast<double>(f) * (static_cast<double>(edge[kFar]) - edge[kNear]));
        edge[kNear] = ClampSum(edge[kNear], shift);
        edge[kFar] = ClampSum(edge[kFar], shift);
      }
      s.offset_pending[axis] = false;
      --pending_;
      changed = true;
    }
    return changed;
  }

  // Nothing moved but edges are missing: the children wait on each other.
  // Pin the first such child, in document order, so the rest can go on:
  // unknown near edges go to 0; failing that, unknown far edges collapse
  // onto the near edge. False when no edge is missing.
  bool Unstick() {
    for (Slot& s : slots_) {
      bool pinned = false;
      for (int a = 0; a < 2; ++a) {
        if (s.edge[a][kNear] == kUnknown) {
          s.edge[a][kNear] = 0;
          --pending_;
          pinned = true;
        }
      }
      if (pinned) return true;
      for (int a = 0; a < 2; ++a) {
        if (s.edge[a][kFar] == kUnknown) {
          s.edge[a][kFar] = s.edge[a][kNear];
          --pending_;
          pinned = true;
        }
      }
      if (pinned) return true;
    }
    return false;
  }

  int avail_[2];
  // Edges still unknown plus offsets not yet applied, over all children.
  int pending_ = 0;
  std::vector<Slot> slots_;
};

}  // namespace

// ---- SouiLayout ----------------------------------------------------------------------

void SouiLayout::LayoutChildren(SWindow* parent) {
  // Most windows of a large view are leaves: nothing to place.
  if (!parent || parent->GetChildrenCount() == 0) return;
  const CRect area = parent->GetChildrenLayoutRect();
  Resolver resolver(parent, std::max(0, area.Width()), std::max(0, area.Height()));
  resolver.Run();
  for (const Resolver::Slot& s : resolver.slots()) {
    CRect rc(s.edge[kX][kNear], s.edge[kY][kNear], s.edge[kX][kFar], s.edge[kY][kFar]);
    // A far edge before the near one ("100,0,50,10") gives an empty window
    // at the near edge rather than a negative size.
    rc.right = std::max(rc.right, rc.left);
    rc.bottom = std::max(rc.bottom, rc.top);
    rc.OffsetRect(area.left, area.top);
    s.wnd->OnRelayout(rc);
  }
}

CSize SouiLayout::MeasureChildren(SWindow* parent, int width, int height) {
  CSize extent;
  if (!parent || parent->GetChildrenCount() == 0) return extent;
  Resolver resolver(parent, width < 0 ? -1 : width, height < 0 ? -1 : height);
  resolver.Run();
  for (const Resolver::Slot& s : resolver.slots()) {
    const int right = std::max(s.edge[kX][kNear], s.edge[kX][kFar]) + s.extra[kX];
    const int bottom = std::max(s.edge[kY][kNear], s.edge[kY][kFar]) + s.extra[kY];
    extent.cx = std::max<LONG>(extent.cx, std::min(right, kMaxCoord));
    extent.cy = std::max<LONG>(extent.cy, std::min(bottom, kMaxCoord));
  }
  return extent;
}

}  // namespace SOUI
