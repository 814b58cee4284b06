#include "reference.h"

#include <dirent.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>

#include <pugixml.hpp>

#include "framework/attr_dispatch.h"
#include "framework/control_classes.h"
#include "framework/style_tables.h"
#include "framework/theme_location.h"
#include "display/tags.h"
#include "qvhost/qvlog.h"

using namespace SOUI;

namespace qvdocs {
namespace {

// Event ids the library gives its own events; the toolkit's lie below.
constexpr int kFirstLibraryEvent = 29000;
constexpr int kLastLibraryEvent = 29999;

std::string Lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string w; in >> w;) out.push_back(w);
  return out;
}

// The snippet's children as a page author writes them: indented two spaces,
// no declaration.
std::string SnippetText(pugi::xml_node snippet) {
  std::ostringstream out;
  for (pugi::xml_node c = snippet.first_child(); c; c = c.next_sibling()) {
    c.print(out, "  ", pugi::format_indent | pugi::format_no_declaration);
  }
  return out.str();
}

template <class Map>
std::vector<std::string> Keys(const Map& map) {
  std::vector<std::string> out;
  for (const auto& kv : map) out.push_back(kv.first.ToUtf8());
  return out;
}

}  // namespace

std::vector<ControlPage> LoadPages(const std::string& dir, std::vector<std::string>* errors) {
  std::vector<std::string> files;
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d)) {
      const std::string name = e->d_name;
      if (name.size() > 4 && name.compare(name.size() - 4, 4, ".xml") == 0) files.push_back(dir + "/" + name);
    }
    closedir(d);
  } else {
    errors->push_back(dir + ": no such directory");
  }
  std::vector<ControlPage> pages;
  for (const std::string& file : files) {
    pugi::xml_document doc;
    const pugi::xml_parse_result parsed = doc.load_file(file.c_str(), pugi::parse_default | pugi::parse_comments);
    pugi::xml_node c = doc.child("control");
    if (!parsed || !c || !*c.attribute("tag").value()) {
      errors->push_back(file + ": " + (parsed ? "no <control tag=...>" : parsed.description()));
      continue;
    }
    ControlPage p;
    p.file = file;
    p.tag = c.attribute("tag").value();
    p.cls = c.attribute("class").value();
    p.base = c.attribute("base").value();
    p.family = c.attribute("family").value();
    p.summary = c.child("summary").text().get();
    for (pugi::xml_node a : c.children("attr")) {
      p.attrs.push_back({a.attribute("name").value(), a.attribute("values").value(), a.attribute("default").value(),
                         a.text().get()});
    }
    for (pugi::xml_node t : c.children("toolkit")) {
      p.toolkit_all = p.toolkit_all || t.attribute("all").as_bool();
      for (const std::string& w : Words(t.attribute("names").value())) p.toolkit.push_back(w);
    }
    pugi::xml_node styles = c.child("styles");
    p.styles = styles.attribute("table").value();
    p.styles_text = styles.text().get();
    p.codes = Words(styles.attribute("codes").value());
    for (pugi::xml_node e : c.children("event")) {
      p.events.push_back({e.attribute("id").as_int(), e.attribute("name").value(), e.attribute("args").value(),
                          e.text().get()});
    }
    pugi::xml_node snippet = c.child("snippet");
    p.snippet = SnippetText(snippet);
    if (*snippet.attribute("width").value()) p.width = snippet.attribute("width").value();
    if (*snippet.attribute("height").value()) p.height = snippet.attribute("height").value();
    pages.push_back(std::move(p));
  }
  std::sort(pages.begin(), pages.end(), [](const ControlPage& a, const ControlPage& b) { return a.tag < b.tag; });
  return pages;
}

std::vector<std::string> LibraryTags() {
  SObjectFactory factory;
  QVStandardCtrls::RegisterQVStandardCtrls(factory);
  std::vector<std::string> tags;
  for (const SStringW& t : factory.GetClassNames()) tags.push_back(t.ToUtf8());
  return tags;
}

bool StyleCodes(const std::string& table, std::vector<std::string>* codes) {
  using namespace QVStandardCtrls;
  if (table == "text") *codes = Keys(QVTextStyles());
  else if (table == "link") *codes = Keys(QVLinkStyles());
  else if (table == "button") *codes = Keys(QVButtonStyles());
  else if (table == "iconbutton") *codes = Keys(QVIconButtonStyles());
  else if (table == "redgreen") *codes = Keys(QVRedGreenFonts());
  else if (table == "risefall") *codes = Keys(QVRedGreenFontPairs());
  else if (table == "edit") *codes = Keys(QVEditStyles());
  else if (table == "editcom") *codes = Keys(QVEditComStyles());
  else if (table == "editmulti") *codes = Keys(QVEditMultiStyles());
  else if (table == "pwdcell") *codes = Keys(QVPwdCellStyles());
  else if (table == "loadingbar") *codes = Keys(QVLoadingBarStyles());
  else if (table == "pageloading") *codes = Keys(QVPageLoadingCtrlStyles());
  else if (table == "pictureupload") *codes = Keys(QVPictureUploadCtrlStyles());
  else if (table == "tag") *codes = Keys(GetQVTagTable().codes);
  else return false;
  return true;
}

std::unique_ptr<SApplication> MakeApp(const Look& look) {
  SApplication::Options options;
  options.manual_clock = true;
  auto app = std::make_unique<SApplication>(options);
  // The reference shows what a user sees; its own checks read the log.
  QVLogSinkOf(*app).SetEchoLevel(QV_LOG_FATAL + 1);
  SResProvider& res = app->GetResProvider();
  const SStringW light = QVStandardCtrls::GetDefaultThemeFile();
  if (light.IsEmpty() || !res.LoadUiDefFile(light) ||
      (look.dark && !res.LoadUiDefFile(QVStandardCtrls::GetDefaultThemeFile(true)))) {
    std::fprintf(stderr, "qvdocs: cannot load the default theme\n");
    return nullptr;
  }
  QVStandardCtrls::RegisterQVStandardCtrls(app->GetFactory());
  app->SetZoom(look.zoom);
  return app;
}

std::unique_ptr<SHostWnd> BuildSnippetHost(SApplication& app, const ControlPage& page) {
  // A card as in the gallery: the control on the colour it is usually seen on.
  const std::string xml = "<SOUI width='" + page.width + "' height='" + page.height +
                          "'><root colorBkgnd='@color\\style_gallery\\card'>" + page.snippet + "</root></SOUI>";
  auto host = std::make_unique<SHostWnd>();
  if (!host->InitFromXmlText(SStringW::FromUtf8(xml))) return nullptr;
  host->Create();
  app.GetClock().Advance(1000);  // entrance animations finish
  host->UpdateLayout();
  return host;
}

SWindow* FindByClass(SWindow* root, const std::string& tag) {
  if (!root) return nullptr;
  if (SStringW(root->GetObjectClass()).ToUtf8() == tag) return root;
  for (SWindow* c = root->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    if (SWindow* found = FindByClass(c, tag)) return found;
  }
  return nullptr;
}

std::vector<std::string> CheckPage(const ControlPage& page, SHostWnd* host) {
  std::vector<std::string> problems;
  auto say = [&](const std::string& s) { problems.push_back(page.tag + ": " + s); };
  const std::vector<std::string> tags = LibraryTags();
  if (!std::binary_search(tags.begin(), tags.end(), page.tag)) say("not a tag the library registers");
  if (page.cls.empty() || page.base.empty() || page.summary.empty()) say("class, base or summary missing");
  SWindow* w = host ? FindByClass(host->GetRoot(), page.tag) : nullptr;
  if (!w) {
    say("the snippet makes no " + page.tag);
    return problems;
  }
  if (page.base == page.tag || !w->IsClass(SStringW::FromUtf8(page.base))) say("its base is not " + page.base);

  // Attributes: the page names exactly what the dispatch handles.
  const QVStandardCtrls::QVAttrNames names = QVStandardCtrls::QVListAttributes(w);
  std::set<std::string> handled, documented;
  for (const SStringW& n : names.own) handled.insert(Lower(n.ToUtf8()));
  for (const AttrDoc& a : page.attrs) {
    if (!documented.insert(Lower(a.name)).second) say("names attribute " + a.name + " twice");
    if (!handled.count(Lower(a.name))) say("names attribute " + a.name + ", which the control does not handle");
  }
  for (const std::string& n : handled) {
    // A structural name a control also handles is on the index page.
    if (QVStandardCtrls::IsQVStructuralAttr(SStringW::FromUtf8(n))) continue;
    if (!documented.count(n)) say("handles attribute " + n + ", which the page does not name");
  }
  std::set<std::string> admitted, listed(page.toolkit.begin(), page.toolkit.end());
  for (const SStringW& n : names.admitted) admitted.insert(n.ToUtf8());
  if (admitted != listed) say("the toolkit attributes it keeps are not the ones the page lists");
  if (names.all_toolkit != page.toolkit_all) say("<toolkit all> does not say whether it filters toolkit attributes");

  // Events: each named one is registered with that id, and every library id
  // it registers is named.
  std::set<int> documented_ids;
  for (const EventDoc& e : page.events) {
    documented_ids.insert(e.id);
    if (w->GetEventSet()->idOfName(SStringW::FromUtf8(e.name)) != e.id) {
      say("raises no event " + e.name + " with id " + std::to_string(e.id));
    }
  }
  for (int id = kFirstLibraryEvent; id <= kLastLibraryEvent; ++id) {
    if (w->GetEventSet()->isEventPresent(id) && !documented_ids.count(id)) {
      say("raises event id " + std::to_string(id) + ", which the page does not name");
    }
  }

  std::vector<std::string> table;
  if (!page.styles.empty() && !StyleCodes(page.styles, &table)) say("no style table " + page.styles);
  // Each code on the live control: one it does not know logs a warning.
  SApplication* app = SApplication::getSingletonPtr();
  for (const std::string& code : PageCodes(page)) {
    const size_t before = app ? Warnings(*app).size() : 0;
    w->SetAttribute(L"qvstyle", SStringW::FromUtf8(code), FALSE);
    if (app && Warnings(*app).size() != before) say("does not know the style code " + code);
  }
  return problems;
}

std::vector<std::string> PageCodes(const ControlPage& page) {
  std::vector<std::string> codes;
  if (!page.styles.empty()) StyleCodes(page.styles, &codes);
  codes.insert(codes.end(), page.codes.begin(), page.codes.end());
  return codes;
}

std::vector<std::string> Warnings(SApplication& app) {
  std::vector<std::string> out;
  for (const QVLogLine& line : QVLogSinkOf(app).Lines()) {
    if (line.level >= QV_LOG_WARN) out.push_back(line.Format().ToUtf8());
  }
  return out;
}

}  // namespace qvdocs
