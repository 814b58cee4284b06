// UI-automation mixin of the host's test tooling. Controls inherit it next to
// their toolkit base and may override what they can describe; nothing in the
// controls' behaviour depends on it. Defaults describe nothing.
#pragma once

#include "soui/sstring.h"
#include "soui/wtypes.h"

class IUIATestCtrlBase {
 public:
  virtual ~IUIATestCtrlBase() = default;

  // Class name as automation reports it (e.g. the control's tag); "" by default.
  virtual SOUI::SStringW UIA_GetClass() { return SOUI::SStringW(); }
  // Visible text; "" by default.
  virtual SOUI::SStringW UIA_GetText() { return SOUI::SStringW(); }
  // State bits (the toolkit's WndState_* values); 0 by default.
  virtual DWORD UIA_GetState() { return 0; }
  // Rectangle in host-window coordinates; empty by default.
  virtual SOUI::CRect UIA_GetRect() { return SOUI::CRect(); }
};
