// The control reference: one page source per registered tag in
// docs/controls/<tag>.xml, read here, checked against the library and
// rendered by it. The generator (main.cpp) and the reference test share it.
//
// A page source:
//
//   <control tag="qv_button" class="CQVButton" base="button" family="Buttons">
//     <summary>One or two sentences.</summary>
//     <attr name="qvstyle" values="a button code" default="none">What it does.</attr>
//     <toolkit names="skin font"/>      toolkit attributes the control keeps
//     <toolkit all="1"/>                or: every toolkit attribute of its base
//     <styles table="button">How codes are applied.</styles>
//     <styles codes="TD TC TW">...</styles>  codes a control keeps itself
//     <event id="10000" name="on_command" args="idFrom, nameFrom">When.</event>
//     <snippet width="240dp" height="64dp"> a layout fragment </snippet>
//   </control>
//
// Structural attributes (name, pos, text, ...) are on the index page only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace qvdocs {

struct AttrDoc {
  std::string name, values, def, text;
};

struct EventDoc {
  int id = 0;
  std::string name, args, text;
};

struct ControlPage {
  std::string file;  // where it was read from
  std::string tag, cls, base, family, summary;
  std::vector<AttrDoc> attrs;
  std::vector<std::string> toolkit;
  bool toolkit_all = false;
  std::string styles, styles_text;  // a table name of StyleCodes, or empty
  std::vector<std::string> codes;   // listed on the page rather than in a table
  std::vector<EventDoc> events;
  std::string snippet;  // the fragment, indented as a page author would write it
  std::string width = "240dp", height = "64dp";
};

// Every page source in dir, sorted by tag. A file that does not parse or
// lacks a tag is reported in errors and left out.
std::vector<ControlPage> LoadPages(const std::string& dir, std::vector<std::string>* errors);

// The tags the library registers with a toolkit factory, sorted.
std::vector<std::string> LibraryTags();

// The codes of a style table ("text", "button", ...); false for no such table.
bool StyleCodes(const std::string& table, std::vector<std::string>* codes);

// The look a picture is taken in.
struct Look {
  int zoom = 100;
  bool dark = false;
};

// An application on the manual clock with the default theme (and its dark
// override), the library registered and the zoom set; null, with a message
// on stderr, when the theme is missing.
std::unique_ptr<SOUI::SApplication> MakeApp(const Look& look);

// A host holding the page's snippet on a card-coloured root, created and
// laid out, animations settled. Null when the layout does not load.
std::unique_ptr<SOUI::SHostWnd> BuildSnippetHost(SOUI::SApplication& app, const ControlPage& page);

// The first window of class tag under root, in tree order.
SOUI::SWindow* FindByClass(SOUI::SWindow* root, const std::string& tag);

// Every code a page names: its table's, then its own list.
std::vector<std::string> PageCodes(const ControlPage& page);

// What the page says against what the control does, as sentences; empty
// when the page is true. Needs the snippet's host (for a live control); it
// tries every style code on that control, so check after taking pictures.
std::vector<std::string> CheckPage(const ControlPage& page, SOUI::SHostWnd* host);

// Lines of warning level or above that app has logged.
std::vector<std::string> Warnings(SOUI::SApplication& app);

}  // namespace qvdocs
