// CQVTabCtrl ("qv_tabctrl"): a row of title tabs above the toolkit's page
// control. Each <page> child (attributes "title" and "id", content as
// children, an <include src="..."/> child loaded as a layout) becomes a
// title in the row and a page below it; selecting a title shows its page.
#pragma once

#include <utility>
#include <vector>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/layout.h"
#include "soui/swnd.h"
#include "soui/tabctrl.h"
#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVTabCtrl : public SOUI::SWindow, public virtual IQVCtrlAttrBase {
  SOUI_CLASS_NAME(CQVTabCtrl, SOUI::SWindow, L"qv_tabctrl")
 public:
  CQVTabCtrl();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;

  // attrs are the page's: "title", "id" and any attribute of a page.
  // Returns the index of the new page, -1 on failure.
  int InsertItem(const std::vector<std::pair<SOUI::SStringW, SOUI::SStringW>>& attrs, int index);
  bool DeleteItem(int index);
  bool SetCurSel(int index);
  int GetCurSel() const;
  int GetItemCount() const;

  CQVTabCtrlBase* GetTitleStrip() const { return titles_; }
  SOUI::STabCtrl* GetPageCtrl() const { return pages_; }

 protected:
  int InsertPage(pugi::xml_node page, int index);
  bool OnTabSelChangedEvent(SOUI::EventArgs* evt);
  // Left at "TabMarginX", or centred with "tabMediate".
  void UpdateTabPos();
  HRESULT OnAttrTabMarginX(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrTabMediate(const SOUI::SStringW& value, BOOL loading);

  CQVTabCtrlBase* titles_ = nullptr;
  SOUI::STabCtrl* pages_ = nullptr;
  SOUI::SStringW margin_x_ = L"0dp";
  bool mediate_ = false;
};

}  // namespace QVStandardCtrls
