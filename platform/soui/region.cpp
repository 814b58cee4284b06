#include "soui/region.h"

#include <algorithm>

namespace SOUI {

namespace {

bool Contains(const CRect& outer, const CRect& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

bool Overlap(const CRect& a, const CRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Two rectangles whose union is exactly their two areas: side by side with
// the same rows, or stacked with the same columns.
bool JoinExactly(const CRect& a, const CRect& b) {
  if (a.top == b.top && a.bottom == b.bottom) return a.right == b.left || b.right == a.left;
  if (a.left == b.left && a.right == b.right) return a.bottom == b.top || b.bottom == a.top;
  return false;
}

bool ByTopThenLeft(const CRect& a, const CRect& b) { return a.top != b.top ? a.top < b.top : a.left < b.left; }

}  // namespace

void SRegion::Union(const CRect& rc) {
  if (rc.IsRectEmpty()) return;
  box_ = box_.IsRectEmpty() ? rc : box_ | rc;
  // A window is often invalidated twice in a row (text, then colour).
  if (!rects_.empty()) {
    CRect& last = rects_.back();
    if (Contains(last, rc)) return;
    if (Contains(rc, last)) {
      last = rc;
      normalized_ = false;
      return;
    }
  }
  rects_.push_back(rc);
  normalized_ = false;
  if (rects_.size() > kMaxRects) {
    rects_.assign(1, box_);
    max_height_ = box_.Height();
    normalized_ = true;
  }
}

void SRegion::Clear() {
  rects_.clear();
  box_ = CRect();
  max_height_ = 0;
  normalized_ = true;
}

void SRegion::Normalize() {
  if (normalized_) return;
  normalized_ = true;
  std::vector<bool> gone;
  for (bool joined = true; joined;) {
    joined = false;
    std::sort(rects_.begin(), rects_.end(), ByTopThenLeft);
    gone.assign(rects_.size(), false);
    for (size_t i = 0; i < rects_.size(); ++i) {
      if (gone[i]) continue;
      // Only rectangles starting above this one's bottom (or on it, for a
      // stacked join) can meet it; growing it may reach more, so rescan.
      for (size_t j = i + 1; j < rects_.size() && rects_[j].top <= rects_[i].bottom; ++j) {
        if (gone[j] || !(Overlap(rects_[i], rects_[j]) || JoinExactly(rects_[i], rects_[j]))) continue;
        rects_[i] = rects_[i] | rects_[j];
        gone[j] = true;
        joined = true;
        j = i;
      }
    }
    if (!joined) break;
    // Drop the joined ones and go round again: a grown rectangle may now
    // meet one that starts above it, which this pass had already left.
    size_t kept = 0;
    for (size_t i = 0; i < rects_.size(); ++i) {
      if (!gone[i]) rects_[kept++] = rects_[i];
    }
    rects_.resize(kept);
  }
  max_height_ = 0;
  for (const CRect& r : rects_) max_height_ = std::max(max_height_, static_cast<int>(r.Height()));
}

size_t SRegion::FirstCandidate(const CRect& rc) const {
  // A rectangle meets rc only if its bottom is below rc.top, so its top is
  // below rc.top - max_height_.
  const long lowest_top = rc.top - max_height_ + 1;
  auto it = std::lower_bound(rects_.begin(), rects_.end(), lowest_top,
                             [](const CRect& r, long top) { return r.top < top; });
  return static_cast<size_t>(it - rects_.begin());
}

bool SRegion::Intersects(const CRect& rc) const {
  if (rc.IsRectEmpty() || !Overlap(box_, rc)) return false;
  for (size_t i = FirstCandidate(rc); i < rects_.size() && rects_[i].top < rc.bottom; ++i) {
    if (Overlap(rects_[i], rc)) return true;
  }
  return false;
}

}  // namespace SOUI
