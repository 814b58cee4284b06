// SComboBox ("combobox"): a selection box with a drop list, list-only or
// editable, and SComboListBox, the list it opens in an SDropDownWnd.
//
// Attributes:
//   dropDown     1 (default): list only, the box shows the selected item;
//                0: editable, an inner "edit" shows and edits the text
//   dropHeight   the list's largest height, default 200dp; taller lists scroll
//   curSel       the selection, default -1 (none); out of range means none
//   btnSkin      the arrow button (states: normal, hover, pushed/open,
//                disabled); without one a chevron is drawn in the text colour
//   animateTime  accepted and ignored: the list opens at once
// Children:
//   <items><item text="" icon="" data=""/>...</items>   the items
//   <editStyle .../>      attributes for the inner edit
//   <listStyle .../>      attributes for the list: any window attribute plus
//                         itemHeight, colorSelBkgnd, colorHoverBkgnd and
//                         iconSkin (an item's icon is a frame of it)
//   <dropdownStyle .../>  attributes for the drop-down's root window
// Item icons show in the list when it has an iconSkin; the box shows text only.
//
// Events (to the combo's subscribers, then the host):
//   EVT_CB_SELCHANGE "on_cb_sel_change"   the user picked another item (list
//                                        click, Enter, Up/Down or a letter on
//                                        the closed box); never for SetCurSel
//   EVT_CB_DROPDOWN  "on_cb_dropdown"     the list opened
//   EVT_CB_CLOSEUP   "on_cb_closeup"      the list closed
//
// Input:
//   closed  click on the box (list-only) or the button: open
//           Up/Down: previous/next item (event); F4, Alt+Down, Alt+Up: open;
//           a letter (list-only) selects the next item starting with it
//   open    keys go to the list: Up/Down/PageUp/PageDown/Home/End move the
//           highlight, Enter picks it, Esc and F4 close without change;
//           other keys: list-only, a letter moves the highlight to the next
//           item starting with it; editable, they go on to the edit;
//           hover highlights, a click on an item picks it, the wheel scrolls;
//           a press anywhere else closes (see SDropDownWnd for its fate)
//
// Colours follow the page: the text colour is inherited as for any window,
// the background is the nearest colorBkgnd up the tree (white when none),
// and borders, hover and selection are mixed from those two, so a dark page
// gets a dark box and list without theme entries of its own.
#pragma once

#include <utility>
#include <vector>

#include "soui/dropdown.h"
#include "soui/swnd.h"

namespace SOUI {

class SEdit;
class SComboBox;

constexpr int EVT_CB_SELCHANGE = 19000;
// Not in the toolkit's published list: this platform's own, in its range.
constexpr int EVT_CB_DROPDOWN = 19001;
constexpr int EVT_CB_CLOSEUP = 19002;

class EventCBSelChange : public EventArgs {
  SOUI_EVENT_ID(EVT_CB_SELCHANGE, L"on_cb_sel_change")
 public:
  using EventArgs::EventArgs;
  int nCurSel = -1;
};

class EventCBDropdown : public EventArgs {
  SOUI_EVENT_ID(EVT_CB_DROPDOWN, L"on_cb_dropdown")
 public:
  using EventArgs::EventArgs;
};

class EventCBCloseUp : public EventArgs {
  SOUI_EVENT_ID(EVT_CB_CLOSEUP, L"on_cb_closeup")
 public:
  using EventArgs::EventArgs;
  bool bPicked = false;  // closed by picking an item
};

// The drop list: rows of the combo's items, hover highlight, the selected
// row's look, a thin scroll indicator when the items exceed its height.
class SComboListBox : public SWindow {
  SOUI_CLASS_NAME(SComboListBox, SWindow, L"combolist")
 public:
  SComboListBox();
  // The combo it shows; null once the drop-down closed (then it is inert).
  void SetCombo(SComboBox* combo) { combo_ = combo; }
  int GetHotItem() const { return hot_; }
  int GetTopIndex() const { return top_; }
  int GetItemHeight() const;
  // The row of an item in window coordinates (empty when scrolled away).
  CRect GetItemRect(int index) const;
  // Rows that fit.
  int VisibleRows() const;
  void SetHotItem(int index, bool ensure_visible);

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnPaint(IRenderTarget* rt) override;
  void OnEraseBkgnd(IRenderTarget* rt) override;
  void OnMouseMove(UINT flags, CPoint pt) override;
  void OnLButtonUp(UINT flags, CPoint pt) override;
  BOOL OnMouseWheel(UINT flags, short delta, CPoint pt) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;

 private:
  int Count() const;
  int ItemAt(CPoint pt) const;
  void ScrollTo(int top);

  SComboBox* combo_ = nullptr;
  int hot_ = -1;
  int top_ = 0;
  ThemedSkin icon_skin_;
  ThemedColor color_sel_;
  ThemedColor color_hover_;
};

class SComboBox : public SWindow, public ISDropDownOwner {
  SOUI_CLASS_NAME(SComboBox, SWindow, L"combobox")
 public:
  struct Item {
    SStringW text;
    int icon = -1;
    LPARAM data = 0;
  };
  // Items beyond this are refused (one log line): a list is for picking.
  static constexpr int kMaxItems = 100000;

  SComboBox();
  ~SComboBox() override;

  // ---- items (toolkit names) ----
  int GetCount() const { return static_cast<int>(items_.size()); }
  int GetCurSel() const { return cur_sel_; }
  // No event: only the user's picks raise one. Out of range: no selection.
  BOOL SetCurSel(int index);
  SStringW GetLBText(int index) const;
  LPARAM GetItemData(int index) const;
  int GetItemIcon(int index) const;
  // Inserts at index (-1 or past the end: appends); returns the index or -1.
  int InsertItem(int index, const SStringW& text, int icon = -1, LPARAM data = 0);
  int AddString(const SStringW& text, int icon = -1, LPARAM data = 0) { return InsertItem(-1, text, icon, data); }
  BOOL DeleteString(int index);
  void ResetContent();
  const Item* GetItem(int index) const;

  // ---- drop list ----
  void DropDown();
  void CloseUp();
  BOOL IsDropdown() const { return dropdown_ != nullptr; }
  BOOL IsListOnly() const { return drop_down_; }
  SDropDownWnd* GetDropDownWnd() const { return dropdown_; }
  SComboListBox* GetListBox() const { return list_; }
  SEdit* GetEdit() const { return edit_; }
  // Where the list goes for the current placement (screen coordinates):
  // below the box, above it when it does not fit below, shifted to stay
  // inside the work area.
  CRect CalcDropDownRect() const;
  // The list picked index (or the user stepped to it): select and notify.
  void OnUserPick(int index, bool close);

  // The shown text: the edit's (editable) or the selected item's.
  SStringW GetWindowText(BOOL raw = FALSE) const override;
  void SetWindowText(const SStringW& text) override;

  // ---- colours, shared with the list ----
  COLORREF GetBkgndColor() const;
  COLORREF GetBorderColor() const;
  COLORREF GetHoverColor() const;
  COLORREF GetSelColor() const;
  // A row of the list in pixels: listStyle's itemHeight, else from the font.
  int GetItemHeightPx() const;

  // ---- ISDropDownOwner ----
  SWindow* GetDropDownOwner() override { return this; }
  void OnCreateDropDown(SDropDownWnd* dropdown) override;
  void OnDestroyDropDown(SDropDownWnd* dropdown) override;

  // ---- SWindow ----
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;
  int OnCreate() override;
  void OnDestroy() override;
  void UpdateChildrenPosition() override;
  void OnEraseBkgnd(IRenderTarget* rt) override;
  void OnPaint(IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, CPoint pt) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  // Keys the closed box acts on; true when handled (the edit forwards here).
  bool HandleKey(UINT vk);
  // The next item after `after` (wrapping) whose text starts with ch, case
  // aside; -1 when none.
  int FindByInitial(wchar_t ch, int after) const;

 protected:
  CSize MeasureContent(int width) override;

 private:
  CRect ButtonRect() const;
  // One line of the font with some air, at least 24dp.
  int TextRowHeight() const;
  void EnsureEdit();
  void SyncEditText();
  void ApplyStyle(SWindow* target, const std::vector<std::pair<SStringW, SStringW>>& attrs);

  std::vector<Item> items_;
  int cur_sel_ = -1;
  BOOL drop_down_ = TRUE;
  SLayoutSize drop_height_;
  ThemedSkin btn_skin_;
  SEdit* edit_ = nullptr;
  SDropDownWnd* dropdown_ = nullptr;
  SComboListBox* list_ = nullptr;
  bool picked_ = false;
  bool quiet_ = false;      // closing because the combo goes: no events
  int pending_sel_ = -2;    // curSel read before the items
  SLayoutSize item_height_;
  bool has_item_height_ = false;
  std::vector<std::pair<SStringW, SStringW>> edit_style_, list_style_, dropdown_style_;
};

class SObjectFactory;
// Registers "combobox".
void RegisterComboBox(SObjectFactory& factory);

}  // namespace SOUI
