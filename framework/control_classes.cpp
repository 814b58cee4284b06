#include "framework/control_classes.h"

#include "display/buttons.h"

namespace QVStandardCtrls {

void RegisterQVStandardCtrls(SOUI::SObjectFactory& factory) {
  // Buttons.
  factory.RegisterWindowClass<CQVButton>();
  factory.RegisterWindowClass<QVIconButton>();
  factory.RegisterWindowClass<QVSwitchButton>();
}

}  // namespace QVStandardCtrls
