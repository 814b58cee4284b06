// CQVTabCtrlBase ("qv_tabctrlbase"): the strip behind every tab control of
// the library. It owns the item list, keeps the selection (with a veto),
// lays items out in rows, reorders them by dragging, inserts and removes
// them with animation, and turns item reports into tab events.
//
// The item template is the first child element of the control's XML whose
// tag is "item" or "tab" (case-insensitive); without one a plain
// "<tab height=\"32dp\"/>" is used. The other children are not created as
// windows: a strip shows its items only.
//
// Attributes: dragable (tabs reorder by dragging), animation (glides and
// fades; default on), moreButton (default off; see below).
//
// The "more" button (moreButton="1"): when the tabs of the last row do not
// fit, that row keeps kMoreButtonW dp at its right end for a button with a
// chevron, shows the whole tabs that fit from its first shown tab on, and
// moves the others out of the strip. A click on the button opens an IQVMenu
// under it listing the hidden tabs (the selected one ticked, disabled ones
// greyed); choosing one selects it (with the usual veto) and scrolls the
// row so that it shows. Any selection of a hidden tab scrolls it into view.
// A tab view's add button follows the last tab, so it is out while that tab
// is.
#pragma once

#include <pugixml.hpp>

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"
#include "tabs/item_base.h"

namespace QVStandardCtrls {

enum : int {
  EVT_QVTAB_SEL_CHANGING = 29000,
  EVT_QVTAB_SEL_CHANGED = 29001,
  EVT_QVTAB_ITEM_HOVER = 29002,
  EVT_QVTAB_ITEM_LEAVE = 29003,
  EVT_QVTAB_ITEM_INSERT = 29004,
  EVT_QVTAB_ITEM_REMOVED = 29005,
  EVT_QVTAB_ITEM_CLICK_RBUTTON = 29006,
  EVT_QVTAB_ITEM_CLICK_TAILICON = 29007,
  EVT_QVTAB_CLICK_ADD = 29008,
  EVT_QVTAB_ITEM_DRAG_OUT = 29009,
  EVT_QVTAB_ITEM_CANCLE_SELING = 29010,
  EVT_QVTAB_ITEM_CANCLE_SEL = 29011,
};

class QVSTDCTRLS_API EventQVTabSelChanging : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_SEL_CHANGING, L"on_qvtab_sel_changing")
 public:
  using EventArgs::EventArgs;
  int nOldId = -1;
  int nNewId = -1;
  bool bCancel = false;
};

class QVSTDCTRLS_API EventQVTabSelChanged : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_SEL_CHANGED, L"on_qvtab_sel_changed")
 public:
  using EventArgs::EventArgs;
  int nOldId = -1;
  int nNewId = -1;
};

class QVSTDCTRLS_API EventQVTabItemHover : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_HOVER, L"on_qvtab_item_hover")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
};

class QVSTDCTRLS_API EventQVTabItemLeave : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_LEAVE, L"on_qvtab_item_leave")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
};

class QVSTDCTRLS_API EventQVTabItemInsert : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_INSERT, L"on_qvtab_item_insert")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
};

class QVSTDCTRLS_API EventQVTabItemRemoved : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_REMOVED, L"on_qvtab_item_removed")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
};

class QVSTDCTRLS_API EventQVTabItemClickRButton : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_CLICK_RBUTTON, L"on_qvtab_item_click_rbutton")
 public:
  using EventArgs::EventArgs;
  int x = 0;  // the release point, host client coordinates
  int y = 0;
  int nId = -1;
};

// The tail icon (close or expand button) of an item was clicked.
class QVSTDCTRLS_API EventQVTabItemClickTailicon : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_CLICK_TAILICON, L"on_qvtab_item_click_tailicon")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
};

// The add button at the end of a strip was clicked.
class QVSTDCTRLS_API EventQVTabClickAdd : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_CLICK_ADD, L"on_qvtab_click_add")
 public:
  using EventArgs::EventArgs;
};

// A tab was dragged out of the strip and released there: the host may tear
// it off into a window of its own at pt.
class QVSTDCTRLS_API EventQVTabItemDragOut : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_DRAG_OUT, L"on_qvtab_item_drag_out")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
  POINT pt{0, 0};  // the release point, host client coordinates
};

// Before a selected item of a multi-selection strip is unselected; cancel
// keeps it selected.
class QVSTDCTRLS_API EventQVTabItemCanclSeling : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_CANCLE_SELING, L"on_qvtab_item_cancle_seling")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
  bool bCancel = false;
};

// After an item was unselected; bByMode when a change of the selection mode
// did it rather than the user.
class QVSTDCTRLS_API EventQVTabItemCancleSel : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTAB_ITEM_CANCLE_SEL, L"on_qvtab_item_cancle_sel")
 public:
  using EventArgs::EventArgs;
  int nId = -1;
  bool bByMode = false;
};

// The kind of item the container gives tab behaviour; other kinds (an end
// "add" button) get none.
constexpr int kQVTabItemType = 1;
constexpr int kQVEndItemType = 2;

class QVSTDCTRLS_API CQVTabCtrlBase : public SOUI::SWindow, public IQVItemContainer, public virtual IQVCtrlAttrBase {
  SOUI_CLASS_NAME(CQVTabCtrlBase, SOUI::SWindow, L"qv_tabctrlbase")
 public:
  CQVTabCtrlBase();
  ~CQVTabCtrlBase() override;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;
  int OnCreate() override;
  void OnSize(UINT type, SOUI::CSize size) override;
  void OnRelayout(const SOUI::CRect& rc) override;
  using SOUI::SWindow::GetDesiredSize;
  SOUI::CSize GetDesiredSize(int width, int height) override;

  int InsertTab(const std::vector<std::pair<SOUI::SStringW, SOUI::SStringW>>& attrs, int index);
  bool RemoveTabById(int id);
  bool RemoveTabByOrder(int order);
  bool SetCurSelById(int id, bool notify);
  bool SetCurSelByOrder(int order, bool notify);
  int GetCurSelId() const;
  int GetCurSelOrder() const;
  int GetTabId(int order) const;
  int GetTabOrder(int id) const;
  int GetTabCount() const;
  void SetItemAttrById(const SOUI::SStringW& name, const SOUI::SStringW& value, int id);
  void SetItemAttrByOrder(const SOUI::SStringW& name, const SOUI::SStringW& value, int order);
  void SetCurItemAttr(const SOUI::SStringW& name, const SOUI::SStringW& value);
  SOUI::SStringW GetItemAttrById(const SOUI::SStringW& name, int id);
  SOUI::SStringW GetItemAttrByOrder(const SOUI::SStringW& name, int order);
  SOUI::SStringW GetCurItemAttr(const SOUI::SStringW& name);
  int GetRowCount() const { return row_count_; }

  // The "more" button's width in dp.
  static constexpr int kMoreButtonW = 28;
  // Whether the "more" button shows, and where (window coordinates; empty
  // when it does not show).
  bool IsMoreButtonShown() const { return more_shown_; }
  SOUI::CRect GetMoreButtonRect() const { return more_shown_ ? more_rect_ : SOUI::CRect(); }
  // Ids of the tabs moved out of the strip, in order.
  std::vector<int> GetHiddenTabIds() const;
  // Scrolls the last row so that the tab shows; false when it is not a tab
  // of this strip.
  bool EnsureTabVisible(int id);
  // Opens the "more" menu as a click on the button does; the chosen tab's
  // id, -1 when dismissed or when nothing is hidden.
  int TrackMoreMenu();
  CQVItemBase* GetHead() const { return head_; }
  CQVItemBase* GetCurSel() const { return cur_sel_; }
  CQVItemBase* GetTabObjById(int id) const;
  CQVItemBase* GetTabObjByOrder(int order) const;
  void GetAllItemWidthAndCount(int& width, int& count) const;
  int GetNewTabId();

  // ---- IQVItemContainer ----
  void OnItemWidthChanged(CQVItemBase* item) override;
  void OnItemLButtonUp(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  void OnItemLButtonDown(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  void OnItemRButtonDown(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  void OnItemRButtonUp(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  void OnItemMouseHover(CQVItemBase* item, UINT flags, SOUI::CPoint pt) override;
  void OnItemMouseLeave(CQVItemBase* item) override;
  void OnItemDragMove(CQVItemBase* item, SOUI::CPoint pt) override;
  void OnItemMoveToComplete(CQVItemBase* item) override;
  void OnItemShowComplete(CQVItemBase* item) override;
  void OnItemHideComplete(CQVItemBase* item) override;
  void OnItemEnableChanged(CQVItemBase* item, bool enabled) override;
  SOUI::CRect OnItemGetContainerRect() override;

 protected:
  // ---- the variants' extension points ----
  virtual CQVItemBase* CreateItem();
  virtual CQVItemBase* CreateEndItem();
  virtual void SelectedEventCB(CQVItemBase* item, bool selected);
 public:
  virtual void SetCurSel(CQVItemBase* item, bool notify);
  virtual void RemoveTab(CQVItemBase* item);
 protected:
  // Places the tabs from `from` on; skip is placed at once without gliding.
  // The tabs before `from` are taken to be in their places and placing
  // carries on after them. Past `to` (when given) placing ends at the first
  // tab found in its slot. Returns the rows used.
  virtual int UpdateTabRect(CQVItemBase* from, CQVItemBase* to, CQVItemBase* skip, bool animate);
  virtual void UpdateAllTabRect();
  void UpdateChildrenPosition() override;
  virtual void OnInsertNewItem(CQVItemBase* item);
  virtual bool ItemAttrFilter(const SOUI::SStringW& name);
  virtual SOUI::SStringW GetItemAttr(CQVItemBase* item, const SOUI::SStringW& name);
  virtual void SetItemDragable(CQVItemBase* item);
  virtual HRESULT OnAttrPos(const SOUI::SStringW& value, BOOL loading);
  virtual HRESULT OnAttrDragable(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrAnimation(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMoreButton(const SOUI::SStringW& value, BOOL loading);

  // The "more" button: painted by the strip, clicked through it.
  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;
  // Places a tab at slot: at once, or gliding when animate.
  void PlaceItem(CQVItemBase* item, const SOUI::CRect& slot, CQVItemBase* skip, bool animate);
  // UpdateTabRect with the "more" button: every tab, from the head.
  int UpdateTabRectWithMore(CQVItemBase* skip, bool animate);

  bool AllowSwitch(CQVItemBase* dragged, CQVItemBase* other, SOUI::CPoint centre);
  bool NeedSwitch(SOUI::CPoint centre, CQVItemBase* dragged, CQVItemBase* other) const;
  // The last tab in the list (null when there is none).
  CQVItemBase* LastTab();
  // The tab a dragged tab with this centre changes places with, if any;
  // in_front tells whether it stands before the dragged one.
  CQVItemBase* FindSwitchTarget(CQVItemBase* dragged, SOUI::CPoint centre, bool* in_front) const;
  // True when an item moving from -> to stays in its row.
  bool IsDirectMove(const SOUI::CRect& from, const SOUI::CRect& to) const;
  // The top of row `row` (1-based) for items of the given height.
  int GetRowPosY(int row, int height) const;
  std::vector<MoveNode> GetMoveNode(SOUI::CRect from, SOUI::CRect to, SOUI::CRect container) const;
  void ResetSwitchState();
  int ItemHeightPx() const;
  static bool IsTab(const CQVItemBase* item) { return item && item->GetItemType() == kQVTabItemType; }
  static int ItemWidthPx(CQVItemBase* item) { return std::max(0, item->GetDesiredSize(-1, -1).cx); }

  CQVItemBase* head_ = nullptr;
  CQVItemBase* last_tab_hint_ = nullptr;  // see LastTab()
  CQVItemBase* pressed_ = nullptr;
  CQVItemBase* cur_sel_ = nullptr;
  // What InsertTab builds an item from; shared by the strip's items (and by
  // every strip of a class until one reads its own from XML).
  using ItemTemplate = std::shared_ptr<const pugi::xml_document>;
  static ItemTemplate ParseItemTemplate(const wchar_t* xml);
  ItemTemplate item_template_;
  int item_gap_ = 0;
  int next_tab_id_ = 0;
  bool dragable_ = false;
  bool animation_ = true;
  int item_height_ = 0;  // 0: from the template's own height
  int row_spacing_ = 0;
  int max_rows_ = 1;
  int row_count_ = 1;
  CQVItemBase* last_switch_dragged_ = nullptr;
  CQVItemBase* last_switch_other_ = nullptr;
  SOUI::CRect last_switch_rect_;
  int last_switch_point_ = 0;
  int switch_attempts_ = 0;
  // The "more" button and the last row's scrolling.
  bool more_button_ = false;
  bool more_shown_ = false;
  bool more_pressed_ = false;
  SOUI::CRect more_rect_;
  int first_shown_ = 0;  // the last row's first shown tab, counted in that row
};

}  // namespace QVStandardCtrls
