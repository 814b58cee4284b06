// The "Menus" page's host side: the order menu and the column chooser open
// under their buttons, the guide walks through the page's controls, and the
// status line says what was chosen and how the guide ended.
#include <set>
#include <vector>

#include "gallery.h"
#include "popups/guide.h"
#include "popups/menu.h"
#include "soui/swnd.h"

using namespace SOUI;
using QVStandardCtrls::IQVGuide;
using QVStandardCtrls::IQVMenu;
using QVStandardCtrls::IQVMultiSelMenu;
using QVStandardCtrls::QVMenuAttr;
using QVStandardCtrls::QVGuideStep;
using QVStandardCtrls::QVMenuItems;

namespace gallery {
namespace {

QVMenuAttr Row(UINT id, const wchar_t* text, const wchar_t* icon = L"", const wchar_t* shortcut = L"") {
  QVMenuAttr a = QVMenuAttr::Item(id, text, shortcut);
  a.icon_skin = icon;
  return a;
}

QVMenuItems OrderMenu() {
  QVMenuItems m = {Row(1, L"New order", L"skin_toast_icon_tip", L"Ctrl+N"),
                   Row(2, L"Quick trade", L"skin_toast_icon_succeed", L"F2"), QVMenuAttr::Separator(),
                   Row(3, L"Show depth"), Row(4, L"Price view"), Row(5, L"Chart view"), QVMenuAttr::Separator(),
                   Row(6, L"Export"), Row(7, L"Transfer"), QVMenuAttr::Separator(),
                   Row(8, L"Cancel all orders", L"skin_toast_icon_error", L"Del")};
  m[3].checked = true;
  m[4].radio_group = m[5].radio_group = 1;
  m[4].checked = true;
  m[7].submenu = std::make_shared<QVMenuItems>(QVMenuItems{Row(61, L"CSV file"), Row(62, L"Excel workbook")});
  m[8].enabled = false;
  m[8].disabled_tip = L"Not during the opening auction";
  m[10].danger = true;
  return m;
}

std::vector<QVGuideStep> PageGuide() {
  return {{L"demo_menu_open", L"Commands for an order",
           L"Opens a menu with shortcuts, checks, a submenu and a row that says why it is disabled.", L""},
          {L"demo_menu_columns", L"Choose the columns",
           L"Tick several columns at once; OK keeps them, Esc leaves them as they were.", L""},
          {L"demo_menu_status", L"What happened",
           L"The row chosen, or how this guide ended, shows here.", L"skin_qvstd_dialog_icon_tips"}};
}

const wchar_t* const kColumns[] = {L"Price", L"Change %", L"Code", L"Volume", L"Turnover", L"High", L"Low"};

// The button's rectangle on the screen: menus open under it.
CRect ScreenRect(SHostWnd& host, SWindow* w) {
  CRect rc = w->GetWindowRect();
  rc.OffsetRect(host.GetWindowRect().TopLeft());
  return rc;
}

}  // namespace

void InstallMenuPage(SHostWnd& host) {
  SWindow* root = host.GetRoot();
  SWindow* status = root->FindChildByName(L"demo_menu_status");
  SWindow* open = root->FindChildByName(L"demo_menu_open");
  SWindow* columns = root->FindChildByName(L"demo_menu_columns");
  SWindow* guide = root->FindChildByName(L"demo_guide_start");
  if (!status || !open || !columns || !guide) return;
  SHostWnd* h = &host;
  open->subscribeEvent(EVT_CMD, [h, open, status](EventArgs*) {
    const UINT id = IQVMenu::TrackPopupMenu(h->m_hWnd, OrderMenu(), ScreenRect(*h, open));
    status->SetWindowText(id ? SStringW::Format2(L"Chose row %u", id) : SStringW(L"Menu dismissed"));
    return true;
  });
  // The chosen columns live as long as the page's button.
  auto shown = std::make_shared<std::set<UINT>>(std::set<UINT>{1, 2, 3});
  columns->subscribeEvent(EVT_CMD, [h, columns, status, shown](EventArgs*) {
    QVMenuItems rows;
    for (UINT i = 0; i < sizeof(kColumns) / sizeof(kColumns[0]); ++i) rows.push_back(Row(i + 1, kColumns[i]));
    rows[2].enabled = false;  // the code column always shows
    bool accepted = false;
    *shown = IQVMultiSelMenu::TrackPopupMenu(h->m_hWnd, rows, *shown, ScreenRect(*h, columns), &accepted);
    SStringW text = accepted ? L"Columns:" : L"Columns kept:";
    for (UINT id : *shown) text += SStringW(L" ") + kColumns[id - 1];
    status->SetWindowText(text);
    return true;
  });
  guide->subscribeEvent(EVT_CMD, [h](EventArgs*) { return IQVGuide::Start(h->m_hWnd, PageGuide()); });
  // The guide reports on the host's root; a real host would remember here
  // that the guide was seen.
  IQVGuide::AddEvents(root);
  root->subscribeEvent(QVStandardCtrls::EVT_QVGUIDE_FINISHED, [status](EventArgs*) {
    status->SetWindowText(L"Guide finished");
    return false;
  });
  root->subscribeEvent(QVStandardCtrls::EVT_QVGUIDE_SKIPPED, [status](EventArgs* e) {
    const int step = static_cast<QVStandardCtrls::EventQVGuideSkipped*>(e)->step;
    status->SetWindowText(SStringW::Format2(L"Guide skipped at step %d", step + 1));
    return false;
  });
}

}  // namespace gallery
