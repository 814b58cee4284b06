// Drives a host window with synthetic input through the same routing path
// a real backend uses (SHostWnd::OnMouseEvent / OnKeyEvent).
#pragma once

#include "soui/hostwnd.h"

namespace SOUI {
namespace test {

class EventGenerator {
 public:
  explicit EventGenerator(SHostWnd* host) : host_(host) {}

  CPoint current() const { return pos_; }
  UINT flags() const { return flags_; }

  void MoveMouseTo(CPoint pt);
  void MoveMouseTo(int x, int y) { MoveMouseTo(CPoint(x, y)); }
  // Moves to the centre of a window first.
  void MoveMouseToCenterOf(const SWindow* wnd);
  void PressLeftButton();
  void ReleaseLeftButton();
  void ClickLeftButton() { PressLeftButton(); ReleaseLeftButton(); }
  void DoubleClickLeftButton();
  void PressRightButton();
  void ReleaseRightButton();
  void ClickRightButton() { PressRightButton(); ReleaseRightButton(); }
  // Press at the current point, move in `steps` equal steps to `to`, release.
  void DragTo(CPoint to, int steps = 4);
  void MouseWheel(short delta);
  void MouseLeaveHost();

  void PressKey(UINT vk);
  void ReleaseKey(UINT vk);
  void PressAndReleaseKey(UINT vk) { PressKey(vk); ReleaseKey(vk); }
  void Char(wchar_t ch);
  void Type(const SStringW& text);

 private:
  SHostWnd* host_;
  CPoint pos_{0, 0};
  UINT flags_ = 0;
};

}  // namespace test
}  // namespace SOUI
