// Menus read from XML: the records each element gives, tracking one with
// the keyboard, and what bad XML gives.
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include <string>

#include "library_test_base.h"
#include "popups/menu.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

// One line per row, submenus indented: "id text [icon] [shortcut] flags".
std::string Dump(const QVMenuItems& rows, int indent = 0) {
  std::string out;
  for (const QVMenuAttr& r : rows) {
    out += std::string(indent * 2, ' ');
    if (r.separator) {
      out += "---\n";
      continue;
    }
    out += std::to_string(r.id) + " " + r.text.ToUtf8();
    if (!r.icon_skin.IsEmpty()) out += " icon=" + r.icon_skin.ToUtf8();
    if (!r.shortcut.IsEmpty()) out += " key=" + r.shortcut.ToUtf8();
    if (!r.enabled) out += " off";
    if (!r.disabled_tip.IsEmpty()) out += " tip=" + r.disabled_tip.ToUtf8();
    if (r.checked) out += " checked";
    if (r.radio_group) out += " radio=" + std::to_string(r.radio_group);
    if (r.danger) out += " danger";
    out += "\n";
    if (r.submenu) out += Dump(*r.submenu, indent + 1);
  }
  return out;
}

class MenuXmlTest : public LibraryTestBase {
 protected:
  pugi::xml_node Load(const char* xml) {
    EXPECT_TRUE(doc_.load_string(xml));
    return doc_.first_child();
  }
  pugi::xml_document doc_;
};

TEST_F(MenuXmlTest, EveryRecordAndNestedSubmenusAreRead) {
  QVMenuItems rows;
  ASSERT_TRUE(IQVMenu::ParseMenuXml(
      Load("<menu>"
           "<item id='1' text='New order' icon='skin_toast_icon_tip' shortcut='Ctrl+N'/>"
           "<item id='2' text='Sell' enable='0' tip='Market closed'/>"
           "<sep/>"
           "<item id='3' text='Price view' radio='1' check='1'/><item id='4' text='Chart view' radio='1'/>"
           "<separator/>"
           "<item id='5' text='Export'><item id='51' text='CSV'/><item id='52' text='More'>"
           "<item id='521' text='XML'/></item></item>"
           "<item id='6' text='Cancel all' danger='1'/>"
           "</menu>"),
      &rows));
  EXPECT_EQ(Dump(rows),
            "1 New order icon=skin_toast_icon_tip key=Ctrl+N\n"
            "2 Sell off tip=Market closed\n"
            "---\n"
            "3 Price view checked radio=1\n"
            "4 Chart view radio=1\n"
            "---\n"
            "5 Export\n"
            "  51 CSV\n"
            "  52 More\n"
            "    521 XML\n"
            "6 Cancel all danger\n");
  // A document stands for its root element.
  QVMenuItems again;
  ASSERT_TRUE(IQVMenu::ParseMenuXml(doc_, &again));
  EXPECT_EQ(Dump(again), Dump(rows));
}

TEST_F(MenuXmlTest, AMenuFromXmlIsChosenFromWithTheKeyboard) {
  CreateHost(L"<SOUI><root/></SOUI>", 400, 300);
  const pugi::xml_node menu =
      Load("<menu><item id='1' text='Buy'/><item id='2' text='Sell' enable='0'/>"
           "<item id='3' text='More'><item id='31' text='Alpha'/><item id='32' text='Beta'/></item></menu>");
  // Down twice skips the disabled row; Right opens the submenu.
  app_->GetClock().SetTimer(10, [this] {
    for (UINT vk : {VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN}) gen().PressAndReleaseKey(vk);
  }, false);
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, menu, SOUI::CPoint(50, 50)), 32u);
}

TEST_F(MenuXmlTest, BadXmlGivesNothingAndSaysWhy) {
  CreateHost(L"<SOUI><root/></SOUI>", 400, 300);
  QVMenuItems rows;
  // No node, or no rows: nothing is shown and 0 comes back.
  EXPECT_FALSE(IQVMenu::ParseMenuXml(pugi::xml_node(), &rows));
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, pugi::xml_node(), SOUI::CPoint(5, 5)), 0u);
  EXPECT_TRUE(LogContains(L"no menu element"));
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, Load("<menu><button/></menu>"), SOUI::CRect(5, 5, 50, 20)), 0u);
  EXPECT_TRUE(LogContains(L"unknown element <button>"));
  EXPECT_TRUE(LogContains(L"holds no <item> or <sep> rows"));
  EXPECT_EQ(IQVMenu::GetOpenMenu(), nullptr);
  // Unknown attributes and ids that do not parse are named and left out.
  ASSERT_TRUE(IQVMenu::ParseMenuXml(Load("<menu><item id='-3' text='A' colour='red'/><item id='x'/></menu>"), &rows));
  EXPECT_EQ(Dump(rows), "0 A\n0 \n");
  EXPECT_TRUE(LogContains(L"unknown attribute colour=\"red\""));
  EXPECT_TRUE(LogContains(L"id=\"-3\" is not a positive number"));
  // Nesting deeper than the menus go is cut at kMaxDepth levels.
  std::string deep = "<menu>";
  for (int i = 0; i < 40; ++i) deep += "<item id='" + std::to_string(i + 1) + "' text='L'>";
  for (int i = 0; i < 40; ++i) deep += "</item>";
  deep += "</menu>";
  ASSERT_TRUE(IQVMenu::ParseMenuXml(Load(deep.c_str()), &rows));
  int depth = 0;
  for (const QVMenuItems* level = &rows; !level->empty(); ++depth) {
    if (!level->front().submenu) {
      ++depth;
      break;
    }
    level = level->front().submenu.get();
  }
  EXPECT_EQ(depth, IQVMenu::kMaxDepth);
  EXPECT_TRUE(LogContains(L"nested deeper than"));
  // A layout that does not exist.
  EXPECT_FALSE(IQVMenu::LoadMenuLayout(L"no_such_menu", &rows));
  EXPECT_TRUE(rows.empty());
  EXPECT_TRUE(LogContains(L"menu layout \"no_such_menu\" not found"));
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
