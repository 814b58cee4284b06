#include "framework/control_classes.h"

#include "display/buttons.h"
#include "tabs/item_base.h"
#include "tabs/tab_page_host.h"
#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {

void RegisterQVStandardCtrls(SOUI::SObjectFactory& factory) {
  // Buttons.
  factory.RegisterWindowClass<CQVButton>();
  factory.RegisterWindowClass<QVIconButton>();
  factory.RegisterWindowClass<QVSwitchButton>();
  // Tabs.
  factory.RegisterWindowClass<CQVItemBase>();
  factory.RegisterWindowClass<CQVTabCtrlBase>();
  factory.RegisterWindowClass<CQVTabCtrl>();
}

}  // namespace QVStandardCtrls
