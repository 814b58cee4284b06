// The concrete tab strips and their items. Each strip is a CQVTabCtrlBase
// with its own default item and item class; the items share
// CQVVariantItemBase, which builds the children from a template, routes the
// item attributes to them, recolours the title per state and sizes itself
// from what it shows.
//
//   qv_primarytab / qv_primarytab_item      main tabs, bold when selected
//   qv_secondarytab / qv_secondarytab_item  sub tabs, underline under the selected one
//   qv_thirdtab / qv_thirdtab_item          sub tabs without the underline
//   qv_segmenttab / qv_segmenttab_item      a segmented switch
//   qv_tabview / qv_tabview_item            browser-like tabs with a close button
//   qv_filtertab / qv_filtertab_item        filter chips, single or multi selection
//   qv_commtab_item                         a stand-alone icon+title+tail composite
//
// Besides the template (the first "tab"/"item" child), a strip's XML may
// list initial tabs as "tabitem" elements; their attributes are those of
// InsertTab, plus "selected" "1" to select the tab (quietly, no events).
//
// Item attributes every variant item handles: "title" (text), "img_head"
// (head icon skin, shown; empty hides it), "btn_tail" ("0"/"false" hides the
// tail button, "1"/"true" shows it, anything else is its skin and shows it),
// "iconIndex" (frame of the head icon), "reddot" (shows the red dot) and
// "enable".
#pragma once

#include <vector>

#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {

// Messages an item sends to its strip through OnItemUserMessage.
constexpr UINT kQVItemMsgTailClick = WM_USER + 0x311;  // the tail button was clicked

// What tells one variant's items from another's.
struct QVSTDCTRLS_API QVItemLook {
  const wchar_t* children;   // <children> template
  const wchar_t* colors[4];  // title "colorText" by QVItemState
  const wchar_t* font;       // title font
  const wchar_t* font_selected;  // title font while selected
  const wchar_t* padding;    // item padding ("" keeps the template's)
  // The "[" gaps in front of img_head, title and btn_tail, as the template
  // writes them; UpdateWidth adds them up for the children shown.
  const wchar_t* gaps[3];
  bool underline_marks_selection;  // "img_bottom" shown under the selected item
  bool check_marks_selection;      // the selected item is drawn in the skin's checked frame
};

class QVSTDCTRLS_API CQVVariantItemBase : public CQVItemBase {
  SOUI_CLASS_NAME(CQVVariantItemBase, CQVItemBase, L"qv_variantitem")
 public:
  CQVVariantItemBase(IQVItemContainer* container, const QVItemLook& look);

  BOOL InitFromXml(pugi::xml_node node) override;
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  using SOUI::SWindow::GetDesiredSize;
  // An item without a width of its own is as wide as UpdateWidth found.
  SOUI::CSize GetDesiredSize(int width, int height) override;

  SOUI::SWindow* GetTitleWnd() const { return FindChildByName(L"title"); }
  // The state the title shows (hover on a selected item keeps the selected look).
  QVItemState GetShownState() const { return shown_state_; }
  int GetAutoWidth() const { return auto_width_; }

 protected:
  void OnStateChanged(QVItemState state, int reserved) override;
  // width = paddings + for each of img_head, title, btn_tail shown: its gap
  // and its width (the title measured in the font of the shown state).
  void UpdateWidth(int hint) override;

  HRESULT OnAttrTitle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrImgHead(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrBtnTail(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIconIndex(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrRedDot(const SOUI::SStringW& value, BOOL loading);

  const QVItemLook& look_;
  QVItemState shown_state_ = kQVItemNormal;
  int auto_width_ = 0;
  bool built_ = false;
};

// ---- primary ----
class QVSTDCTRLS_API CQVPrimaryTabItem : public CQVVariantItemBase {
  SOUI_CLASS_NAME(CQVPrimaryTabItem, CQVVariantItemBase, L"qv_primarytab_item")
 public:
  explicit CQVPrimaryTabItem(IQVItemContainer* container = nullptr);
};

class QVSTDCTRLS_API CQVPrimaryTab : public CQVTabCtrlBase {
  SOUI_CLASS_NAME(CQVPrimaryTab, CQVTabCtrlBase, L"qv_primarytab")
 public:
  CQVPrimaryTab();
  BOOL CreateChildren(pugi::xml_node node) override;
  BOOL OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) override;

 protected:
  CQVItemBase* CreateItem() override { return new CQVPrimaryTabItem(this); }
};

// ---- secondary and third ----
class QVSTDCTRLS_API CQVSecondaryTabItem : public CQVVariantItemBase {
  SOUI_CLASS_NAME(CQVSecondaryTabItem, CQVVariantItemBase, L"qv_secondarytab_item")
 public:
  explicit CQVSecondaryTabItem(IQVItemContainer* container = nullptr);

 protected:
  CQVSecondaryTabItem(IQVItemContainer* container, const QVItemLook& look);
};

// A second-level strip is a primary strip in another look (so it also
// answers to "qv_primarytab" and reports tail clicks the same way).
class QVSTDCTRLS_API CQVSecondaryTab : public CQVPrimaryTab {
  SOUI_CLASS_NAME(CQVSecondaryTab, CQVPrimaryTab, L"qv_secondarytab")
 public:
  CQVSecondaryTab();

 protected:
  CQVItemBase* CreateItem() override { return new CQVSecondaryTabItem(this); }
};

class QVSTDCTRLS_API CQVThirdTabItem : public CQVSecondaryTabItem {
  SOUI_CLASS_NAME(CQVThirdTabItem, CQVSecondaryTabItem, L"qv_thirdtab_item")
 public:
  explicit CQVThirdTabItem(IQVItemContainer* container = nullptr);
};

class QVSTDCTRLS_API CQVThirdTab : public CQVSecondaryTab {
  SOUI_CLASS_NAME(CQVThirdTab, CQVSecondaryTab, L"qv_thirdtab")
 public:
  CQVThirdTab();

 protected:
  CQVItemBase* CreateItem() override { return new CQVThirdTabItem(this); }
};

// ---- segment ----
enum QVSegmentPos { kQVSegmentLeft = 0, kQVSegmentCenter = 1, kQVSegmentRight = 2 };

class QVSTDCTRLS_API CQVSegmentTabItem : public CQVVariantItemBase {
  SOUI_CLASS_NAME(CQVSegmentTabItem, CQVVariantItemBase, L"qv_segmenttab_item")
 public:
  explicit CQVSegmentTabItem(IQVItemContainer* container = nullptr);
  // Sets the skin of the place only when the place changes.
  void SetSegmentPos(QVSegmentPos pos);
  int GetSegmentPos() const { return segment_pos_; }

 private:
  int segment_pos_ = -1;
};

class QVSTDCTRLS_API CQVSegmentTab : public CQVTabCtrlBase {
  SOUI_CLASS_NAME(CQVSegmentTab, CQVTabCtrlBase, L"qv_segmenttab")
 public:
  CQVSegmentTab();
  BOOL CreateChildren(pugi::xml_node node) override;
  void RemoveTab(CQVItemBase* item) override;

 protected:
  CQVItemBase* CreateItem() override { return new CQVSegmentTabItem(this); }
  int UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate) override;
  void UpdateSegmentSkins();
};

// ---- tab view ----
class QVSTDCTRLS_API CQVTabViewItem : public CQVVariantItemBase {
  SOUI_CLASS_NAME(CQVTabViewItem, CQVVariantItemBase, L"qv_tabview_item")
 public:
  explicit CQVTabViewItem(IQVItemContainer* container = nullptr);
};

// A tab released more than ZPixel(kQVDragOutPx) above or below the strip is
// dragged out ("on_qvtab_item_drag_out", then it glides home unless the host
// removes it): far enough that a sloppy horizontal drag never tears a tab off.
constexpr int kQVDragOutPx = 40;

// An add button ("+", an end item outside the tab list) follows the last
// tab and raises "on_qvtab_click_add" when clicked; "showAdd" "0" leaves it
// out.
class QVSTDCTRLS_API CQVTabView : public CQVTabCtrlBase {
  SOUI_CLASS_NAME(CQVTabView, CQVTabCtrlBase, L"qv_tabview")
 public:
  CQVTabView();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;
  void OnItemLButtonUp(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  BOOL OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) override;
  CQVItemBase* GetAddButton() const { return add_item_; }

 protected:
  CQVItemBase* CreateItem() override { return new CQVTabViewItem(this); }
  CQVItemBase* CreateEndItem() override;
  int UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate) override;
  HRESULT OnAttrShowAdd(const SOUI::SStringW& value, BOOL loading);

  bool show_add_ = true;
  CQVItemBase* add_item_ = nullptr;
  // Along the strip only, as a browser's tabs: the mouse may leave the
  // strip (to drag a tab out) while the tab stays in it.
  void SetItemDragable(CQVItemBase* item) override;
};

// ---- filter ----
class QVSTDCTRLS_API CQVFilterTabItem : public CQVVariantItemBase {
  SOUI_CLASS_NAME(CQVFilterTabItem, CQVVariantItemBase, L"qv_filtertab_item")
 public:
  explicit CQVFilterTabItem(IQVItemContainer* container = nullptr);
};

// "single" (default true, the plain tab behaviour) picks one item at a time;
// with "single" false a click adds an item to the selected set and a click
// on a selected item takes it out again (a chip toggles), with the
// cancel-selecting veto. "MaxRowCount" wraps the chips into that many rows.
class QVSTDCTRLS_API CQVFilterTab : public CQVTabCtrlBase {
  SOUI_CLASS_NAME(CQVFilterTab, CQVTabCtrlBase, L"qv_filtertab")
 public:
  CQVFilterTab();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;

  bool IsSingle() const { return single_; }
  const std::vector<CQVItemBase*>& GetSelectedItems() const { return selected_set_; }
  // Ids of the selected items in the order they were selected.
  std::vector<int> GetSelectedIds() const;

  void SetCurSel(CQVItemBase* item, bool notify) override;
  void RemoveTab(CQVItemBase* item) override;
  // Unselects item: with notify the veto event first and the done event
  // after (by_mode tells a mode change from a click). True when unselected.
  bool CancelSel(CQVItemBase* item, bool notify, bool by_mode);

  void OnItemLButtonDown(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  BOOL OnItemUserMessage(CQVItemBase* item, UINT msg, WPARAM wp, LPARAM lp) override;

 protected:
  CQVItemBase* CreateItem() override { return new CQVFilterTabItem(this); }
  void OnInsertNewItem(CQVItemBase* item) override;
  HRESULT OnAttrItemSingle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMaxRowCount(const SOUI::SStringW& value, BOOL loading);

  bool single_ = true;
  std::vector<CQVItemBase*> selected_set_;
};

// ---- stand-alone composite ----
class QVSTDCTRLS_API CQVCommTabItem : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVCommTabItem, SOUI::SWindow, L"qv_commtab_item")
 public:
  BOOL InitFromXml(pugi::xml_node node) override;
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

 protected:
  HRESULT OnAttrTitle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIconSkin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrShowTailIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrRedDot(const SOUI::SStringW& value, BOOL loading);
};

}  // namespace QVStandardCtrls
