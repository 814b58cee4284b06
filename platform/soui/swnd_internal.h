// Internal to the SWindow implementation files (swnd*.cpp); not API.
#pragma once

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

}  // namespace internal
}  // namespace SOUI
