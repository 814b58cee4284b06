// SRegion: the part of a host that needs repainting, kept as a list of
// rectangles rather than one bounding box, so that two changed labels in
// opposite corners repaint two labels and not the window between them.
//
// Rectangles are collected as they arrive (Union is cheap and does not
// allocate once the list has grown); Normalize, run once before painting,
// makes them disjoint, joins neighbours whose union is exact (cells of one
// row, a strip split in two), and sorts them by top so that a window can ask
// "which parts of me are dirty" in logarithmic time. Overlapping rectangles
// are joined into their bounding box: that may repaint a little more than
// asked, but never paints a pixel twice in one frame (text drawn twice over
// itself would darken its anti-aliased edges).
#pragma once

#include <vector>

#include "soui/wtypes.h"

namespace SOUI {

class SRegion {
 public:
  // Past this many rectangles the region becomes its bounding box: the frame
  // then costs one full repaint of that box, which is what so many scattered
  // changes cost anyway.
  static constexpr size_t kMaxRects = 8192;

  bool IsEmpty() const { return rects_.empty(); }
  size_t GetCount() const { return rects_.size(); }
  const std::vector<CRect>& GetRects() const { return rects_; }
  // The bounding box of everything in the region (empty when it is).
  CRect GetBox() const { return box_; }

  void Union(const CRect& rc);
  void Clear();
  // Disjoint, sorted by top; needed before Intersects and ForEachPart.
  void Normalize();

  // Whether any dirty rectangle meets rc (Normalize first).
  bool Intersects(const CRect& rc) const;
  // Calls f(part) for every non-empty intersection of rc with the region, in
  // order of the rectangles (Normalize first).
  template <class F>
  void ForEachPart(const CRect& rc, F&& f) const {
    for (size_t i = FirstCandidate(rc); i < rects_.size() && rects_[i].top < rc.bottom; ++i) {
      const CRect part = rects_[i] & rc;
      if (!part.IsRectEmpty()) f(part);
    }
  }

 private:
  // Index of the first rectangle that could meet rc: the rectangles are
  // sorted by top and none is taller than max_height_.
  size_t FirstCandidate(const CRect& rc) const;

  std::vector<CRect> rects_;
  CRect box_;
  int max_height_ = 0;
  bool normalized_ = true;
};

}  // namespace SOUI
