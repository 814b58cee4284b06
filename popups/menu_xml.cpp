// Menus from XML: rows read from <item>/<sep> elements, for IQVMenu.
#include <cwchar>

#include "framework/attr_dispatch.h"
#include "popups/menu.h"
#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using SOUI::SStringW;

namespace {

SStringW Wide(const char* utf8) { return SStringW::FromUtf8(utf8); }

// A positive id, or 0 (with a log line) for one that does not parse.
UINT ParseId(pugi::xml_attribute a) {
  const SStringW v = Wide(a.value());
  wchar_t* end = nullptr;
  const unsigned long long id = std::wcstoull(v.c_str(), &end, 10);
  if (v.IsEmpty() || !end || *end != L'\0' || id == 0 || id > 0xFFFFFFFFull || v[0] == L'-') {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: <item> id=\"" << v << L"\" is not a positive number; the row is "
                                 << L"never chosen";
    return 0;
  }
  return static_cast<UINT>(id);
}

QVMenuAttr ParseItem(pugi::xml_node node, int depth);

// The rows of node's element children at depth (0: the menu itself).
QVMenuItems ParseRows(pugi::xml_node node, int depth) {
  QVMenuItems rows;
  for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
    if (child.type() != pugi::node_element) continue;
    const SStringW tag = Wide(child.name());
    if (tag == L"sep" || tag == L"separator") {
      rows.push_back(QVMenuAttr::Separator());
    } else if (tag == L"item") {
      rows.push_back(ParseItem(child, depth));
    } else {
      QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: unknown element <" << tag << L"> in a menu; left out";
    }
  }
  return rows;
}

QVMenuAttr ParseItem(pugi::xml_node node, int depth) {
  QVMenuAttr a;
  for (pugi::xml_attribute attr = node.first_attribute(); attr; attr = attr.next_attribute()) {
    const SStringW name = Wide(attr.name());
    const SStringW value = Wide(attr.value());
    if (name == L"id") a.id = ParseId(attr);
    else if (name == L"text") a.text = value;
    else if (name == L"icon") a.icon_skin = value;
    else if (name == L"shortcut") a.shortcut = value;
    else if (name == L"enable") a.enabled = QVParseBool(value);
    else if (name == L"check") a.checked = QVParseBool(value);
    else if (name == L"radio") a.radio_group = attr.as_int(0);
    else if (name == L"danger") a.danger = QVParseBool(value);
    else if (name == L"tip") a.disabled_tip = value;
    else
      QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: <item text=\"" << a.text << L"\"> unknown attribute " << name
                                   << L"=\"" << value << L"\"; ignored";
  }
  if (!node.child("item") && !node.child("sep") && !node.child("separator")) return a;
  if (depth + 1 >= IQVMenu::kMaxDepth) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: the submenu of <item text=\"" << a.text << L"\"> is nested deeper "
                                 << L"than " << IQVMenu::kMaxDepth << L" levels; left out";
    return a;
  }
  QVMenuItems sub = ParseRows(node, depth + 1);
  if (!sub.empty()) a.submenu = std::make_shared<QVMenuItems>(std::move(sub));
  return a;
}

}  // namespace

bool IQVMenu::ParseMenuXml(pugi::xml_node menu, QVMenuItems* items) {
  if (!items) return false;
  items->clear();
  if (menu.type() == pugi::node_document) menu = menu.find_child([](pugi::xml_node n) {
    return n.type() == pugi::node_element;
  });
  if (!menu) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: no menu element";
    return false;
  }
  *items = ParseRows(menu, 0);
  if (items->empty()) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: <" << Wide(menu.name()) << L"> holds no <item> or <sep> rows";
    return false;
  }
  return true;
}

bool IQVMenu::LoadMenuLayout(const SStringW& res_id, QVMenuItems* items) {
  if (items) items->clear();
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  pugi::xml_document doc;
  const SStringW id = res_id.Find(L':') >= 0 ? res_id : SStringW(L"LAYOUT:") + res_id;
  if (!app || !app->LoadXmlDocment(doc, id)) {
    QVLOG(QV_LOG_WARN, "COMMON") << L"IQVMenu: menu layout \"" << res_id << L"\" not found";
    return false;
  }
  return ParseMenuXml(doc, items);
}

UINT IQVMenu::TrackPopupMenu(HWND owner, pugi::xml_node menu, SOUI::CPoint pt) {
  QVMenuItems items;
  return ParseMenuXml(menu, &items) ? TrackPopupMenu(owner, items, pt) : 0;
}

UINT IQVMenu::TrackPopupMenu(HWND owner, pugi::xml_node menu, const SOUI::CRect& anchor) {
  QVMenuItems items;
  return ParseMenuXml(menu, &items) ? TrackPopupMenu(owner, items, anchor) : 0;
}

}  // namespace QVStandardCtrls
