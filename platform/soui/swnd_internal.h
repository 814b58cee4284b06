// Internal to the SWindow implementation files (swnd*.cpp); not API.
#pragma once

#include <memory>

#include "soui/swnd.h"

namespace SOUI {
namespace internal {

// Bumped by every change that can alter what a window inherits (state,
// fonts, the tree); inherited state worked out in an older epoch is worked
// out again.
extern unsigned g_inherit_epoch;
// Bumped by the rare changes that can alter every window's content size at
// once (a theme change). Everything else invalidates desired sizes locally:
// from the window that changed up through its ancestors
// (SWindow::InvalidateMeasure), and down through its descendants for a font.
extern unsigned g_measure_epoch;

// Visits every descendant of root in document order without recursion.
template <class Fn>
void ForEachDescendant(SWindow* root, Fn fn) {
  SWindow* w = root->GetWindow(GSW_FIRSTCHILD);
  while (w) {
    fn(w);
    if (SWindow* c = w->GetWindow(GSW_FIRSTCHILD)) {
      w = c;
      continue;
    }
    while (w != root && !w->GetWindow(GSW_NEXTSIBLING)) w = w->GetParent();
    w = w == root ? nullptr : w->GetWindow(GSW_NEXTSIBLING);
  }
}

// Style edits made lately: (style, attribute, value) -> the shared result.
// The windows of a layout repeat a few attribute values on a few class
// styles, so all but the first find their style here rather than copying one
// and looking the copy up (SWindow::EditStyle). One per application, as
// references resolve against its resources; emptied when those change, so
// a reference that stops resolving is refused again.
struct StyleEdits {
  struct Entry {
    std::shared_ptr<const SwndStyle> from_owner;  // keeps `from` at its address; null for class styles
    const SwndStyle* from = nullptr;
    StdAttr attr{};
    SStringW value;
    std::shared_ptr<const SwndStyle> to;
  };
  static constexpr size_t kSize = 16;
  Entry entries[kSize];
  size_t next = 0;  // the oldest, replaced next
  unsigned generation = 0;
};

}  // namespace internal
}  // namespace SOUI
