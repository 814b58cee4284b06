#include "framework/control_classes.h"

#include "display/buttons.h"
#include "display/market_values.h"
#include "display/reddots.h"
#include "display/tags.h"
#include "display/legend.h"
#include "display/text_ctrls.h"
#include "edits/qv_edit.h"
#include "edits/qv_editcom.h"
#include "edits/qv_editpwd.h"
#include "framework/style_tables.h"
#include "popups/custom_dialog.h"
#include "popups/tooltip.h"
#include "soui/sapp.h"
#include "state/combobox.h"
#include "state/loading_bar.h"
#include "state/page_loading.h"
#include "state/picture_upload.h"
#include "state/progress.h"
#include "tabs/item_base.h"
#include "tabs/tab_page_host.h"
#include "tabs/tab_variants.h"
#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {

void RegisterQVStandardCtrls(SOUI::SObjectFactory& factory) {
  // Buttons.
  factory.RegisterWindowClass<CQVButton>();
  factory.RegisterWindowClass<QVIconButton>();
  factory.RegisterWindowClass<QVSwitchButton>();
  // Text, links, checks and legends.
  factory.RegisterWindowClass<CQVStatic>();
  factory.RegisterWindowClass<CQVLink>();
  factory.RegisterWindowClass<CQVMultiLink>();
  factory.RegisterWindowClass<CQVCheck>();
  factory.RegisterWindowClass<CQVRadio>();
  factory.RegisterWindowClass<CQVLegend>();
  // Market values.
  factory.RegisterWindowClass<CQVRedGreenStatic>();
  factory.RegisterWindowClass<CQVRiseFallPrice>();
  factory.RegisterWindowClass<CQVTag>();
  factory.RegisterWindowClass<CQVMarketTag>();
  // Red dots.
  factory.RegisterWindowClass<CQVRedDot>();
  factory.RegisterWindowClass<CQVNUmberRedDot>();
  factory.RegisterWindowClass<CQVLableRedDot>();
  // Edits.
  factory.RegisterWindowClass<CQVEdit>();
  factory.RegisterWindowClass<CQVEditCom>();
  factory.RegisterWindowClass<CQVEditMultiCom>();
  factory.RegisterWindowClass<CQVEditMulti>();
  factory.RegisterWindowClass<CQVEditPwd>();
  // Tabs.
  factory.RegisterWindowClass<CQVItemBase>();
  factory.RegisterWindowClass<CQVTabCtrlBase>();
  factory.RegisterWindowClass<CQVTabCtrl>();
  factory.RegisterWindowClass<CQVPrimaryTab>();
  factory.RegisterWindowClass<CQVPrimaryTabItem>();
  factory.RegisterWindowClass<CQVSecondaryTab>();
  factory.RegisterWindowClass<CQVSecondaryTabItem>();
  factory.RegisterWindowClass<CQVThirdTab>();
  factory.RegisterWindowClass<CQVThirdTabItem>();
  factory.RegisterWindowClass<CQVSegmentTab>();
  factory.RegisterWindowClass<CQVSegmentTabItem>();
  factory.RegisterWindowClass<CQVTabView>();
  factory.RegisterWindowClass<CQVTabViewItem>();
  factory.RegisterWindowClass<CQVFilterTab>();
  factory.RegisterWindowClass<CQVFilterTabItem>();
  factory.RegisterWindowClass<CQVCommTabItem>();
  // Popups.
  factory.RegisterWindowClass<CQVToolTip>();
  QVDialogClasses::Register(CQVCustomDialog::GetClassName(), [](const wchar_t* layout) {
    return std::unique_ptr<SOUI::SHostDialog>(new CQVCustomDialog(layout));
  });
  // State controls.
  factory.RegisterWindowClass<QVTopLoadingBar>();
  factory.RegisterWindowClass<QVBottomLoadingBar>();
  factory.RegisterWindowClass<QVPageLoadingCtrl>();
  factory.RegisterWindowClass<CQVProgress>();
  factory.RegisterWindowClass<CQVComboBox>();
  factory.RegisterWindowClass<QVPictureUploadCtrl>();
  // Rich text's qv_text runs name their look by a text style code.
  if (SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr()) {
    app->SetTextStyleResolver([](const SOUI::SStringW& code, SOUI::SStringW* font, SOUI::SStringW* color) {
      const QVTextStyle* style = FindQVTextStyle(code);
      if (!style) return false;
      *font = style->font;
      *color = style->color;
      return true;
    });
  }
}

}  // namespace QVStandardCtrls
