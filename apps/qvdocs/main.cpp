// Writes the control reference: an HTML page per registered tag and an index,
// from the page sources in docs/controls, with pictures the library renders
// from each page's own snippet.
//
//   qvdocs [--out DIR] [--source DIR]   (default build/docs, docs/controls)
//   qvdocs --names                      what each control's dispatch answers
//                                       to, for writing a new page
//
// Choices:
// - HTML, one file per control, no scripts and one small inline style sheet:
//   it opens from the disk in any browser and reads as plain text too.
// - Pictures at 100 % and 150 %, light and dark, from the offscreen backend
//   with the real text metrics, on the gallery's card colour.
// - The page sources are checked as the reference test checks them; the
//   generator still writes every page, then says what is wrong and fails, so
//   that a broken reference is never published quietly.
// - Style codes come from the library's tables, not from the page, when the
//   page names a table: they cannot go stale. Every code shown, listed or
//   not, is tried on the control, which must not log it as unknown.
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "framework/attr_dispatch.h"
#include "reference.h"

using namespace SOUI;

namespace qvdocs {
namespace {

const Look kLooks[] = {{100, false}, {100, true}, {150, false}, {150, true}};

std::string Esc(const std::string& s) {
  std::string out;
  for (char c : s) {
    if (c == '&') out += "&amp;";
    else if (c == '<') out += "&lt;";
    else if (c == '>') out += "&gt;";
    else if (c == '"') out += "&quot;";
    else out += c;
  }
  return out;
}

std::string ImageName(const std::string& tag, const Look& look) {
  return tag + "_" + std::to_string(look.zoom) + (look.dark ? "_dark" : "") + ".png";
}

const char kStyle[] =
    "<style>body{font-family:sans-serif;max-width:60em;margin:2em auto;padding:0 1em;color:#222}"
    "table{border-collapse:collapse;margin:.5em 0}td,th{border:1px solid #ccc;padding:.25em .5em;"
    "text-align:left;vertical-align:top}code,pre{background:#f4f4f4}pre{padding:.5em;overflow:auto}"
    ".shots img{margin:0 1em 1em 0;border:1px solid #ccc;vertical-align:top}.codes code{margin-right:.4em}"
    "</style>";

std::string Head(const std::string& title) {
  return "<!DOCTYPE html><html><head><meta charset='utf-8'><title>" + Esc(title) + "</title>" + kStyle +
         "</head><body>";
}

std::string ControlHtml(const ControlPage& p) {
  std::string h = Head(p.tag + " - QVStandardCtrls");
  h += "<p><a href='index.html'>All controls</a></p><h1><code>" + Esc(p.tag) + "</code></h1>";
  h += "<p>Class <code>" + Esc(p.cls) + "</code>, based on <code>" + Esc(p.base) + "</code>. " + Esc(p.summary) +
       "</p>";
  h += "<h2>Example</h2><pre>" + Esc(p.snippet) + "</pre><div class='shots'>";
  for (const Look& look : kLooks) {
    const std::string img = "img/" + ImageName(p.tag, look);
    h += "<img src='" + img + "' alt='" + std::to_string(look.zoom) + " % " + (look.dark ? "dark" : "light") +
         "' title='" + std::to_string(look.zoom) + " % " + (look.dark ? "dark" : "light") + "'>";
  }
  h += "</div><h2>Attributes</h2>";
  if (p.attrs.empty()) {
    h += "<p>None of its own.</p>";
  } else {
    h += "<table><tr><th>Name</th><th>Values</th><th>Default</th><th></th></tr>";
    for (const AttrDoc& a : p.attrs) {
      h += "<tr><td><code>" + Esc(a.name) + "</code></td><td>" + Esc(a.values) + "</td><td>" + Esc(a.def) +
           "</td><td>" + Esc(a.text) + "</td></tr>";
    }
    h += "</table>";
  }
  h += "<p>Toolkit attributes: ";
  if (p.toolkit_all) {
    h += "every attribute of <code>" + Esc(p.base) + "</code>.";
  } else if (p.toolkit.empty()) {
    h += "none beyond the <a href='index.html#structural'>structural ones</a>.";
  } else {
    for (const std::string& t : p.toolkit) h += "<code>" + Esc(t) + "</code> ";
    h += "and the <a href='index.html#structural'>structural ones</a>; any other name is logged and ignored.";
  }
  h += "</p>";
  if (!p.styles.empty() || !p.styles_text.empty()) {
    h += "<h2>Style codes (<code>qvstyle</code>)</h2><p>" + Esc(p.styles_text) + "</p>";
    const std::vector<std::string> codes = PageCodes(p);
    if (!codes.empty()) {
      h += "<p class='codes'>";
      for (const std::string& c : codes) h += "<code>" + Esc(c) + "</code> ";
      h += "</p>";
    }
  }
  h += "<h2>Events</h2>";
  if (p.events.empty()) {
    h += "<p>None of its own.</p>";
  } else {
    h += "<table><tr><th>Id</th><th>Name</th><th>Arguments</th><th></th></tr>";
    for (const EventDoc& e : p.events) {
      h += "<tr><td>" + std::to_string(e.id) + "</td><td><code>" + Esc(e.name) + "</code></td><td>" + Esc(e.args) +
           "</td><td>" + Esc(e.text) + "</td></tr>";
    }
    h += "</table>";
  }
  return h + "</body></html>\n";
}

std::string IndexHtml(const std::vector<ControlPage>& pages) {
  std::string h = Head("QVStandardCtrls controls");
  h += "<h1>QVStandardCtrls controls</h1><p>Every XML tag the library registers. A host registers them with "
       "<code>RegisterQVStandardCtrls(app.GetFactory())</code> and loads the default theme from "
       "<code>GetDefaultThemeFile()</code>. Pictures are rendered by the library from each page's example. "
       "The API of the public headers is in <a href='api/html/index.html'>api/html</a> when "
       "<code>./dev docs</code> could run Doxygen.</p>";
  std::map<std::string, std::vector<const ControlPage*>> families;
  for (const ControlPage& p : pages) families[p.family].push_back(&p);
  for (const auto& f : families) {
    h += "<h2>" + Esc(f.first) + "</h2><table>";
    for (const ControlPage* p : f.second) {
      h += "<tr><td><a href='" + Esc(p->tag) + ".html'><code>" + Esc(p->tag) + "</code></a></td><td><code>" +
           Esc(p->cls) + "</code></td><td>" + Esc(p->summary) + "</td></tr>";
    }
    h += "</table>";
  }
  h += "<h2 id='structural'>Attributes every control takes</h2><p>Identity, text, placement and state always "
       "reach the toolkit: <code>name id text tip pos offset size width visible show display enable float "
       "msgTransparent focusable class data trctx</code>, in any case. Beyond those and its own attributes a "
       "control takes only the toolkit attributes its page lists; any other name is logged once per place "
       "(tag, name, attribute) and ignored, and <code>SetAttribute</code> returns <code>E_NOTIMPL</code>.</p>";
  return h + "</body></html>\n";
}

bool WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  return static_cast<bool>(out);
}

void PrintNames() {
  auto app = MakeApp(Look{});
  if (!app) return;
  for (const std::string& tag : LibraryTags()) {
    ControlPage probe;
    probe.tag = tag;
    probe.snippet = "<" + tag + "/>";
    auto host = BuildSnippetHost(*app, probe);
    SWindow* w = host ? FindByClass(host->GetRoot(), tag) : nullptr;
    if (!w) {
      std::printf("%s: cannot be made alone\n", tag.c_str());
      continue;
    }
    const QVStandardCtrls::QVAttrNames names = QVStandardCtrls::QVListAttributes(w);
    std::printf("%s:", tag.c_str());
    for (const SStringW& n : names.own) std::printf(" %s", n.ToUtf8().c_str());
    std::printf(" | toolkit%s:", names.all_toolkit ? " (all)" : "");
    for (const SStringW& n : names.admitted) std::printf(" %s", n.ToUtf8().c_str());
    std::printf("\n");
  }
}

int Run(const std::string& source, const std::string& out) {
  std::vector<std::string> problems;
  const std::vector<ControlPage> pages = LoadPages(source, &problems);
  std::set<std::string> documented;
  for (const ControlPage& p : pages) documented.insert(p.tag);
  for (const std::string& tag : LibraryTags()) {
    if (!documented.count(tag)) problems.push_back(tag + ": registered but has no page in " + source);
  }
  mkdir(out.c_str(), 0755);
  mkdir((out + "/img").c_str(), 0755);
  for (const ControlPage& p : pages) {
    for (const Look& look : kLooks) {
      auto app = MakeApp(look);
      if (!app) return 1;
      auto host = BuildSnippetHost(*app, p);
      if (!host) {
        problems.push_back(p.tag + ": the snippet does not load");
        break;
      }
      if (!host->SaveFramePng(SStringW::FromUtf8(out + "/img/" + ImageName(p.tag, look)))) {
        problems.push_back(p.tag + ": cannot write its picture");
      }
      if (look.zoom == 100 && !look.dark) {
        for (const std::string& s : CheckPage(p, host.get())) problems.push_back(s);
      }
      for (const std::string& w : Warnings(*app)) problems.push_back(p.tag + ": " + w);
    }
    if (!WriteFile(out + "/" + p.tag + ".html", ControlHtml(p))) problems.push_back(p.tag + ": cannot write");
  }
  if (!WriteFile(out + "/index.html", IndexHtml(pages))) problems.push_back("cannot write the index");
  for (const std::string& s : problems) std::fprintf(stderr, "qvdocs: %s\n", s.c_str());
  std::printf("qvdocs: %zu control pages in %s/index.html%s\n", pages.size(), out.c_str(),
              problems.empty() ? "" : " (with problems, above)");
  return problems.empty() ? 0 : 2;
}

}  // namespace
}  // namespace qvdocs

int main(int argc, char** argv) {
  std::string out = "build/docs";
  std::string source = QV_SOURCE_DIR "/docs/controls";
  for (int i = 1; i < argc; ++i) {
    if (!std::strcmp(argv[i], "--out") && i + 1 < argc) out = argv[++i];
    else if (!std::strcmp(argv[i], "--source") && i + 1 < argc) source = argv[++i];
    else if (!std::strcmp(argv[i], "--names")) {
      qvdocs::PrintNames();
      return 0;
    } else {
      std::fprintf(stderr, "qvdocs: unknown argument %s\n", argv[i]);
      return 1;
    }
  }
  return qvdocs::Run(source, out);
}
