#include "testing/event_generator.h"

namespace SOUI {
namespace test {

void EventGenerator::MoveMouseTo(CPoint pt) {
  pos_ = pt;
  host_->OnMouseEvent(WM_MOUSEMOVE, flags_, pt);
}

void EventGenerator::MoveMouseToCenterOf(const SWindow* wnd) {
  host_->UpdateLayout();
  MoveMouseTo(wnd->GetWindowRect().CenterPoint());
}

void EventGenerator::PressLeftButton() {
  flags_ |= MK_LBUTTON;
  host_->OnMouseEvent(WM_LBUTTONDOWN, flags_, pos_);
}

void EventGenerator::ReleaseLeftButton() {
  flags_ &= ~MK_LBUTTON;
  host_->OnMouseEvent(WM_LBUTTONUP, flags_, pos_);
}

void EventGenerator::DoubleClickLeftButton() {
  ClickLeftButton();
  flags_ |= MK_LBUTTON;
  host_->OnMouseEvent(WM_LBUTTONDBLCLK, flags_, pos_);
  ReleaseLeftButton();
}

void EventGenerator::PressRightButton() {
  flags_ |= MK_RBUTTON;
  host_->OnMouseEvent(WM_RBUTTONDOWN, flags_, pos_);
}

void EventGenerator::ReleaseRightButton() {
  flags_ &= ~MK_RBUTTON;
  host_->OnMouseEvent(WM_RBUTTONUP, flags_, pos_);
}

void EventGenerator::DragTo(CPoint to, int steps) {
  const CPoint from = pos_;
  PressLeftButton();
  steps = std::max(steps, 1);
  for (int i = 1; i <= steps; ++i) {
    MoveMouseTo(CPoint(from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps));
  }
  ReleaseLeftButton();
}

void EventGenerator::MouseWheel(short delta) { host_->OnMouseEvent(WM_MOUSEWHEEL, flags_, pos_, delta); }

void EventGenerator::MouseLeaveHost() { host_->OnMouseEvent(WM_MOUSELEAVE, flags_, pos_); }

void EventGenerator::PressKey(UINT vk) { host_->OnKeyEvent(WM_KEYDOWN, vk); }
void EventGenerator::ReleaseKey(UINT vk) { host_->OnKeyEvent(WM_KEYUP, vk); }
void EventGenerator::Char(wchar_t ch) { host_->OnKeyEvent(WM_CHAR, static_cast<UINT>(ch)); }

void EventGenerator::Type(const SStringW& text) {
  for (int i = 0; i < text.GetLength(); ++i) Char(text[i]);
}

}  // namespace test
}  // namespace SOUI
