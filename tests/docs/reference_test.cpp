// The control reference cannot rot: every registered tag has a page, every
// page's snippet renders without a warning, and what a page says about
// attributes, toolkit attributes, base and events is what the control does.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "reference.h"

namespace qvdocs {
namespace {

const char kPages[] = QV_SOURCE_DIR "/docs/controls";

std::vector<ControlPage> Pages() {
  std::vector<std::string> errors;
  return LoadPages(kPages, &errors);
}

TEST(Reference, EveryRegisteredTagHasOnePageAndEveryPageSourceReads) {
  std::vector<std::string> errors;
  const std::vector<ControlPage> pages = LoadPages(kPages, &errors);
  EXPECT_TRUE(errors.empty()) << errors.front();
  std::vector<std::string> documented;
  for (const ControlPage& p : pages) documented.push_back(p.tag);
  EXPECT_EQ(documented, LibraryTags());
}

class ReferencePage : public ::testing::TestWithParam<ControlPage> {};

TEST_P(ReferencePage, SnippetRendersQuietlyAndThePageIsTrue) {
  const ControlPage& page = GetParam();
  // The lightest and the heaviest look the generator renders.
  for (const Look look : {Look{100, false}, Look{150, true}}) {
    auto app = MakeApp(look);
    ASSERT_NE(app, nullptr);
    auto host = BuildSnippetHost(*app, page);
    ASSERT_NE(host, nullptr) << page.snippet;
    ASSERT_NE(host->Render(), nullptr);
    for (const std::string& w : Warnings(*app)) ADD_FAILURE() << look.zoom << (look.dark ? " dark: " : ": ") << w;
    for (const std::string& p : CheckPage(page, host.get())) ADD_FAILURE() << p;
  }
}

INSTANTIATE_TEST_SUITE_P(Controls, ReferencePage, ::testing::ValuesIn(Pages()),
                         [](const ::testing::TestParamInfo<ControlPage>& info) { return info.param.tag; });

// The checks themselves: a page gone stale in each way is caught.
TEST(ReferenceCheck, CatchesEachWayAPageGoesStale) {
  auto app = MakeApp(Look{});
  ASSERT_NE(app, nullptr);
  ControlPage page;
  page.tag = "qv_legend";
  page.cls = "CQVLegend";
  page.base = "check";  // wrong: it is a button
  page.summary = "A legend entry.";
  page.snippet = "<qv_legend pos='0,0' text='Volume'/>";
  page.attrs = {{"color", "", "", ""}, {"colour", "", "", ""}, {"mark", "", "", ""}, {"checked", "", "", ""}};
  page.toolkit = {"font"};
  page.events = {{29202, "on_qvlegend_changed", "", ""}};
  auto host = BuildSnippetHost(*app, page);
  ASSERT_NE(host, nullptr);
  const std::vector<std::string> problems = CheckPage(page, host.get());
  auto has = [&](const std::string& text) {
    return std::any_of(problems.begin(), problems.end(),
                       [&](const std::string& p) { return p.find(text) != std::string::npos; });
  };
  EXPECT_TRUE(has("its base is not check"));
  EXPECT_TRUE(has("names attribute colour, which the control does not handle"));
  EXPECT_TRUE(has("handles attribute qvstyle, which the page does not name"));
  EXPECT_TRUE(has("the toolkit attributes it keeps"));
  EXPECT_TRUE(has("raises no event on_qvlegend_changed with id 29202"));
  EXPECT_TRUE(has("raises event id 29201, which the page does not name"));
  EXPECT_EQ(problems.size(), 6u);

  // A style code the control does not know.
  ControlPage bar;
  bar.tag = "qv_progress";
  bar.cls = "CQVProgress";
  bar.base = "window";
  bar.summary = "A bar.";
  bar.snippet = "<qv_progress pos='0,0,@100,@10'/>";
  bar.attrs = {{"min", "", "", ""}, {"max", "", "", ""}, {"value", "", "", ""},
               {"showtext", "", "", ""}, {"indeterminate", "", "", ""}, {"qvstyle", "", "", ""}};
  bar.toolkit = {"height", "margin", "padding", "padding_left", "padding_right"};
  bar.codes = {"PG1", "PG9"};
  auto bar_host = BuildSnippetHost(*app, bar);
  EXPECT_EQ(CheckPage(bar, bar_host.get()), std::vector<std::string>{"qv_progress: does not know the style code PG9"});

  page.snippet = "<qv_text pos='0,0' text='no legend here'/>";
  host = BuildSnippetHost(*app, page);
  EXPECT_EQ(CheckPage(page, host.get()), std::vector<std::string>{"qv_legend: the snippet makes no qv_legend"});
}

}  // namespace
}  // namespace qvdocs
