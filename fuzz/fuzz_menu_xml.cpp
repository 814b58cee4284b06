// Menu records from XML: any bytes parsed as a menu element give rows whose
// submenus never nest deeper than the menus go, and a menu of them opens
// and closes again.
#include <pugixml.hpp>

#include <algorithm>

#include "fuzz/fuzz_support.h"
#include "popups/menu.h"

namespace {

int Depth(const QVStandardCtrls::QVMenuItems& rows) {
  int deepest = 0;
  for (const QVStandardCtrls::QVMenuAttr& r : rows) {
    if (r.submenu) deepest = std::max(deepest, Depth(*r.submenu));
  }
  return deepest + 1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::FuzzApp fa;
  pugi::xml_document doc;
  doc.load_buffer(data, size);
  QVStandardCtrls::QVMenuItems rows;
  if (!QVStandardCtrls::IQVMenu::ParseMenuXml(doc, &rows)) {
    QV_FUZZ_CHECK(rows.empty(), "rows left after a failed read");
    return 0;
  }
  QV_FUZZ_CHECK(Depth(rows) <= QVStandardCtrls::IQVMenu::kMaxDepth, "menu %d levels deep", Depth(rows));
  // Open, walk into the first submenus, and Esc out of every level.
  SOUI::SHostWnd host;
  host.InitFromXmlText(L"<SOUI><root/></SOUI>");
  host.Create(nullptr, 0, 0, 300, 200);
  host.ShowWindow(SOUI::SW_SHOW);
  fa.app().GetClock().SetTimer(1, [&host] {
    for (UINT vk : {VK_DOWN, VK_RIGHT, VK_RIGHT, VK_END}) host.OnKeyEvent(WM_KEYDOWN, vk);
    for (int i = 0; i <= QVStandardCtrls::IQVMenu::kMaxDepth; ++i) host.OnKeyEvent(WM_KEYDOWN, VK_ESCAPE);
  }, false);
  const UINT id = QVStandardCtrls::IQVMenu::TrackPopupMenu(host.m_hWnd, doc, SOUI::CPoint(10, 10));
  QV_FUZZ_CHECK(id == 0, "Esc chose %u", id);
  QV_FUZZ_CHECK(QVStandardCtrls::IQVMenu::GetOpenMenu() == nullptr, "a menu stayed open");
  return 0;
}
