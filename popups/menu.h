// Popup menus: IQVMenu::TrackPopupMenu (pick one command) and
// IQVMultiSelMenu::TrackPopupMenu (tick several, for column choosers and
// filters). Both are static calls that show the menu and run a nested loop
// until the user chooses or dismisses, then return.
//
// Records (QVMenuAttr), one per row:
//   id         what TrackPopupMenu returns; 0 is "nothing" and never chosen
//   text       the label; its first character is the row's jump letter
//   icon_skin  a skin drawn before the text (state 0); empty: none
//   shortcut   shown right-aligned, greyed ("Ctrl+S"); the menu does not
//              bind it, the host does
//   enabled    false: greyed, skipped by the keyboard, never chosen
//   disabled_tip  with enabled false: why, shown in a bubble beside the row
//              after the mouse rests on it
//   checked    a tick before the text (or a dot with radio_group)
//   radio_group non-zero: the row is one of a radio group; checked shows a dot
//   danger     a destructive command: text in the theme's danger colour
//   separator  a rule between groups; every other field is ignored
//   submenu    rows of a submenu (shared, so one list may serve several
//              menus); the row shows an arrow and is never chosen itself
//
// Placement: at a screen point (the menu's top-left; flipped left and up
// when it would leave the owner's work area) or under an anchor rectangle in
// screen coordinates (flipped above it when there is no room below). A menu
// taller than the work area is cut to it and scrolls (wheel, keyboard).
// Submenus open beside their row, on the left when the right has no room.
//
// Input while a menu is open (every key of the application comes here):
//   Up/Down     previous/next enabled row, wrapping, skipping separators
//   Home/End    first/last enabled row
//   Right/Enter on a submenu row: open it, its first row highlighted
//   Left/Esc    close the innermost submenu; Esc on the top level dismisses
//   Enter/Space choose the highlighted row (multi-selection: tick it)
//   a letter    the next enabled row whose text starts with it
//   mouse       hover highlights; a submenu opens after kSubmenuDelayMs of
//               hover (at once on a press); a release on a row chooses it; a
//               press outside every menu dismisses and is swallowed, so what
//               lies below is not clicked
// The menu also ends, returning "dismissed", when its owner is hidden, moved
// or destroyed, or loses activation to a window not of the menu.
//
// Bad input is answered with a clear result and one log line: a null or dead
// owner, an empty list (0 at once), a second menu while one is tracking,
// submenus nested deeper than kMaxDepth or containing themselves (the
// offending row shows without a submenu).
//
// Menus from XML (TrackPopupMenu with a pugi::xml_node, ParseMenuXml,
// LoadMenuLayout): the node's element children are the rows, in order:
//   <item id= text= icon= shortcut= enable= check= radio= danger= tip=/>
//       id a positive number (without one the row is never chosen), icon a
//       skin name, enable "0" greys the row, check "1" ticks it, radio the
//       group number, danger "1", tip the reason shown for a disabled row;
//       <item> children make the row's submenu
//   <sep/> (or <separator/>) a rule
// A document node stands for its root element. An unknown element or
// attribute, an id that does not parse and items nested deeper than
// kMaxDepth are left out with one log line naming the element, the
// attribute and the value. A null node or one without rows gives no rows:
// TrackPopupMenu returns 0 with a log line and shows nothing.
//
// Look: colours from the theme table style_qv_menu (bg, border, text,
// border_strong, text_disabled, text_shortcut, text_danger, hover, separator,
// check, check_mark, tip_bg, tip_text), sizes in dp at the application zoom.
#pragma once

#include <memory>
#include <set>
#include <vector>

#include <pugixml.hpp>

#include "framework/qv_export.h"
#include "soui/hostwnd.h"

namespace QVStandardCtrls {

struct QVMenuAttr;
using QVMenuItems = std::vector<QVMenuAttr>;

struct QVSTDCTRLS_API QVMenuAttr {
  UINT id = 0;
  SOUI::SStringW text;
  SOUI::SStringW icon_skin;
  SOUI::SStringW shortcut;
  bool enabled = true;
  SOUI::SStringW disabled_tip;
  bool checked = false;
  int radio_group = 0;
  bool danger = false;
  bool separator = false;
  std::shared_ptr<QVMenuItems> submenu;

  static QVMenuAttr Item(UINT id, const SOUI::SStringW& text, const SOUI::SStringW& shortcut = SOUI::SStringW()) {
    QVMenuAttr a;
    a.id = id;
    a.text = text;
    a.shortcut = shortcut;
    return a;
  }
  static QVMenuAttr Separator() {
    QVMenuAttr a;
    a.separator = true;
    return a;
  }
};

class CQVMenuView;

// One open menu level: a popup host whose root holds the rows' view. Made
// and destroyed by the tracking call; hosts and tests reach the open ones
// through IQVMenu::GetOpenMenu.
class QVSTDCTRLS_API CQVMenuWnd : public SOUI::SHostWnd {
 public:
  CQVMenuWnd();
  ~CQVMenuWnd() override;
  bool IsPopupWindow() const override { return true; }

  // 0 for the top level, 1 for its submenu, ...
  int GetLevel() const { return level_; }
  int GetRowCount() const;
  // The highlighted row, -1 for none.
  int GetHotRow() const;
  const QVMenuAttr* GetRow(int row) const;
  // The row's rectangle in this window's client coordinates, scrolling
  // included (empty when scrolled out of view or out of range).
  SOUI::CRect GetRowRect(int row) const;
  // The first row with this id, -1 when none.
  int FindRow(UINT id) const;
  // The first row shown (scrolling).
  int GetTopRow() const;

 private:
  friend class QVMenuTracker;
  int level_ = 0;
  CQVMenuView* view_ = nullptr;
};

class QVSTDCTRLS_API IQVMenu {
 public:
  static constexpr int kMaxDepth = 8;
  static constexpr UINT kSubmenuDelayMs = 300;
  static constexpr UINT kTipDelayMs = 500;

  // Shows items at pt (screen) for owner and returns the chosen id, 0 when
  // dismissed or refused.
  static UINT TrackPopupMenu(HWND owner, const QVMenuItems& items, SOUI::CPoint pt);
  // The same under anchor (screen), left-aligned with it.
  static UINT TrackPopupMenu(HWND owner, const QVMenuItems& items, const SOUI::CRect& anchor);
  // The same with the rows read from menu's children (see above); 0 and a
  // log line when there are none.
  static UINT TrackPopupMenu(HWND owner, pugi::xml_node menu, SOUI::CPoint pt);
  static UINT TrackPopupMenu(HWND owner, pugi::xml_node menu, const SOUI::CRect& anchor);

  // Reads rows from menu's children into items (replacing them); false,
  // with a log line, when no row could be had.
  static bool ParseMenuXml(pugi::xml_node menu, QVMenuItems* items);
  // The rows of a layout resource ("LAYOUT:name" or "name") whose root
  // element holds them; false with a log line when it cannot be had.
  static bool LoadMenuLayout(const SOUI::SStringW& res_id, QVMenuItems* items);

  // The open menu of a level (-1: the innermost); null when none is open.
  static CQVMenuWnd* GetOpenMenu(int level = -1);
  // The disabled row's reason being shown, empty when no bubble shows.
  static SOUI::SStringW GetShownTip();
};

// The multi-selection menu: every enabled row is a check item that toggles
// and keeps the menu open. Above the rows stand "Select all" and "Clear",
// below them "OK". OK (or Enter on it) returns the ticked ids; Esc, a press
// outside and everything else that dismisses returns the original set.
// Separators are kept; submenus are not followed (their rows are plain check
// items). Ids not among the rows are kept in the result as they were.
class QVSTDCTRLS_API IQVMultiSelMenu {
 public:
  // Ids of the built-in rows; hosts must not use them for their own rows.
  static constexpr UINT kSelectAllId = 0xFFFF0001u;
  static constexpr UINT kClearId = 0xFFFF0002u;
  static constexpr UINT kOkId = 0xFFFF0003u;

  // accepted (optional) says whether the user pressed OK.
  static std::set<UINT> TrackPopupMenu(HWND owner, const QVMenuItems& items, const std::set<UINT>& chosen,
                                       const SOUI::CRect& anchor, bool* accepted = nullptr);
  static std::set<UINT> TrackPopupMenu(HWND owner, const QVMenuItems& items, const std::set<UINT>& chosen,
                                       SOUI::CPoint pt, bool* accepted = nullptr);
};

}  // namespace QVStandardCtrls
