// The rich-text control: paragraphs from XML, wrapping (Latin and CJK) against
// widths measured through the same text API, link clicks, style codes,
// malformed input, and a picture through the cairo target.
#include <gtest/gtest.h>

#include "backends/cairo_render.h"
#include "soui/qvrichtext.h"
#include "soui/render.h"
#include "soui/resources.h"
#include "testing/png_compare.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class QVRichTextTest : public test::UiTestBase {
 protected:
  QVRichText* MakeRich(const wchar_t* attrs = L"") {
    SStringW xml = L"<qvrichtext name='rich' pos='10,10,-10,-10' font='size:14' ";
    xml += attrs;
    xml += L"/>";
    CreateHostWithChildren(xml, 400, 300);
    Layout();
    return Find<QVRichText>(L"rich");
  }
  // Single-line extent of text in font description desc (on top of the
  // theme's default font), measured by the application's measure target.
  CSize Extent(const SStringW& text, const wchar_t* desc = L"size:14") {
    IRenderTarget* rt = app_->GetMeasureTarget();
    FontDesc fd;
    EXPECT_TRUE(ParseFontDesc(desc, 100, app_->GetResProvider().GetDefaultFont(100), &fd));
    IFontPtr old = rt->SelectFont(rt->CreateFont(fd));
    SIZE sz{0, 0};
    rt->MeasureText(text, text.GetLength(), &sz);
    rt->SelectFont(old);
    return CSize(sz);
  }
};

// ---- wrapping -------------------------------------------------------------------

TEST_F(QVRichTextTest, WrapsLatinWordsAtWidthWithLineAndParagraphSpacing) {
  QVRichText* rich = MakeRich(L"lineSpacing='3' paraSpacing='7'");
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><text>alpha beta gamma alpha beta gamma</text></RichEditContent>"));
  const int line_h = Extent(L"A").cy;
  const int fits = Extent(L"alpha beta gamma").cx;

  // Unbounded: one line of the single-line height.
  EXPECT_EQ(rich->GetLineCount(-1), 1);
  EXPECT_EQ(rich->GetContentHeight(-1), line_h);
  // Room for exactly three words: two lines, one line spacing between them.
  EXPECT_EQ(rich->GetLineCount(fits + 1), 2);
  EXPECT_EQ(rich->GetContentHeight(fits + 1), 2 * line_h + 3);
  // One pixel less pushes the first "gamma" down to the next line.
  EXPECT_EQ(rich->GetLineCount(fits - 1), 3);
  EXPECT_EQ(rich->LayoutFragments(fits - 1).front().text, SStringW(L"alpha beta "));
  for (const auto& f : rich->LayoutFragments(fits - 1)) EXPECT_LE(f.rc.right, fits - 1);

  // A second paragraph starts paraSpacing below; its own lineSpacing wins.
  ASSERT_TRUE(rich->AppendContent(
      L"<RichEditContent lineSpacing='0'><text>alpha beta gamma alpha</text></RichEditContent>"));
  EXPECT_EQ(rich->GetLineCount(fits + 1), 4);
  EXPECT_EQ(rich->GetContentHeight(fits + 1), (2 * line_h + 3) + 7 + (2 * line_h + 0));

  // The control's own client width drives GetTotalLines.
  EXPECT_EQ(rich->GetTotalLines(), rich->GetLineCount(rich->GetChildrenLayoutRect().Width()));
  rich->Clear();
  EXPECT_EQ(rich->GetContentHeight(fits + 1), 0);
  EXPECT_EQ(rich->GetTotalLines(), 0);
}

// A message and a link appended as separate paragraphs share a line, and
// wrap as one text.
TEST_F(QVRichTextTest, InlineParagraphsContinueTheLineTheyFollow) {
  QVRichText* rich = MakeRich(L"inlineParagraphs='1' paraSpacing='7'");
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><text>alpha beta</text></RichEditContent>"));
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><text> gamma</text></RichEditContent>"));
  const int line_h = Extent(L"A").cy;
  EXPECT_EQ(rich->GetLineCount(-1), 1);
  EXPECT_EQ(rich->GetContentHeight(-1), line_h);
  const auto& frags = rich->LayoutFragments(-1);
  ASSERT_EQ(frags.size(), 2u);
  EXPECT_EQ(frags[1].rc.left, frags[0].rc.right);
  EXPECT_EQ(rich->GetContentWidth(-1), Extent(L"alpha beta").cx + Extent(L" gamma").cx);
  // Too narrow for all three words: the second paragraph's word wraps, no
  // paragraph spacing between the lines.
  EXPECT_EQ(rich->GetLineCount(Extent(L"alpha beta").cx + 1), 2);
  EXPECT_EQ(rich->GetContentHeight(Extent(L"alpha beta").cx + 1), 2 * line_h);
  // Back to stacked paragraphs.
  rich->SetAttribute(L"inlineParagraphs", L"false", FALSE);
  EXPECT_EQ(rich->GetLineCount(-1), 2);
  rich->Clear();
  rich->SetAttribute(L"inlineParagraphs", L"1", FALSE);
  EXPECT_EQ(rich->GetLineCount(-1), 0);
}

TEST_F(QVRichTextTest, WrapsCjkBetweenCharactersAndBreaksOverlongWords) {
  QVRichText* rich = MakeRich();
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><text>中文字符测试中文字符测试</text></RichEditContent>"));
  const int four = Extent(L"中文字符").cx;
  // Twelve ideographs, four to a line, no spaces anywhere.
  EXPECT_EQ(rich->GetLineCount(four + 1), 3);
  EXPECT_EQ(rich->GetContentHeight(four + 1), 3 * Extent(L"中").cy);
  SStringW joined;
  for (const auto& f : rich->LayoutFragments(four + 1)) {
    EXPECT_LE(f.rc.right, four + 1);
    joined += f.text;
  }
  EXPECT_EQ(joined, SStringW(L"中文字符测试中文字符测试"));

  // A Latin word wider than the line is cut between characters, nothing lost.
  rich->Clear();
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><text>abcdefghijklmnopqrstuvwxyz</text></RichEditContent>"));
  const int narrow = Extent(L"abcdefgh").cx;
  EXPECT_GE(rich->GetLineCount(narrow), 3);
  joined.Empty();
  for (const auto& f : rich->LayoutFragments(narrow)) {
    EXPECT_LE(f.rc.right, narrow);
    joined += f.text;
  }
  EXPECT_EQ(joined, SStringW(L"abcdefghijklmnopqrstuvwxyz"));
}

// ---- links ------------------------------------------------------------------------

TEST_F(QVRichTextTest, ClickOnLinkRunRaisesEventAndCallsBack) {
  QVRichText* rich = MakeRich();
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(
      L"<RichEditContent><text name='lead'>Order filled: </text>"
      L"<text name='code' color='#4F9BFF' cursor='hand' link-data='08182'>08182</text>"
      L"<text name='tail' link-data='other'> details</text></RichEditContent>"));
  std::vector<std::pair<int, SStringW>> calls;
  rich->SetClickCallback([&](int type, const SStringW& link) { calls.emplace_back(type, link); });
  SStringW seen_run;
  rich->subscribeEvent(EventRdtClick::EventID, [&](EventArgs* e) {
    seen_run = static_cast<EventRdtClick*>(e)->runName;
    return false;
  });
  const CRect area = rich->GetChildrenLayoutRect();
  auto centre = [&](int run) {
    for (const auto& f : rich->LayoutFragments(area.Width())) {
      if (f.run == run) return CPoint(area.left + f.rc.CenterPoint().x, area.top + f.rc.CenterPoint().y);
    }
    ADD_FAILURE() << "run " << run << " not laid out";
    return CPoint();
  };

  // Plain text: no event, no callback, arrow cursor.
  gen().MoveMouseTo(centre(0));
  gen().ClickLeftButton();
  EXPECT_EQ(CountEvents(EVT_RDT_CLICK), 0);
  EXPECT_TRUE(rich->GetCursorAt(centre(0)).IsEmpty());

  // The link run: one event with its data and name, one callback.
  EXPECT_EQ(rich->GetCursorAt(centre(1)), SStringW(L"hand"));
  gen().MoveMouseTo(centre(1));
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_RDT_CLICK), 1);
  EXPECT_EQ(events().back().name, SStringW(L"on_rdt_click"));
  EXPECT_EQ(seen_run, SStringW(L"code"));
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].first, QVRichText::kSnippetText);
  EXPECT_EQ(calls[0].second, SStringW(L"08182"));

  // Pressed on one link and released on another: not a click.
  gen().MoveMouseTo(centre(1));
  gen().PressLeftButton();
  gen().MoveMouseTo(centre(2));
  gen().ReleaseLeftButton();
  EXPECT_EQ(calls.size(), 1u);

  // The second link reports its own data.
  gen().ClickLeftButton();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[1].second, SStringW(L"other"));
  EXPECT_EQ(seen_run, SStringW(L"tail"));
}

// ---- style codes and input --------------------------------------------------------

TEST_F(QVRichTextTest, QvTextRunsTakeLookFromInstalledStyleHook) {
  std::vector<SStringW> asked;
  app_->SetTextStyleResolver([&](const SStringW& code, SStringW* font, SStringW* color) {
    asked.push_back(code);
    if (code != L"HB4") return false;
    *font = L"size:30,bold:1";
    *color = L"#00FF00";
    return true;
  });
  QVRichText* rich = MakeRich();
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(
      L"<RichEditContent><text>small </text><qv_text qvstyle='HB4'>BIG</qv_text></RichEditContent>"));
  ASSERT_EQ(asked, std::vector<SStringW>{L"HB4"});
  // The line is as tall as the styled run, whose width is the bold 30 px one.
  EXPECT_EQ(rich->GetContentHeight(-1), Extent(L"BIG", L"size:30,bold:1").cy);
  const auto& frags = rich->LayoutFragments(-1);
  ASSERT_EQ(frags.size(), 2u);
  EXPECT_EQ(frags[1].rc.Width(), Extent(L"BIG", L"size:30,bold:1").cx);

  // An unknown code keeps the control's look and says so once.
  ASSERT_TRUE(rich->AppendContent(L"<RichEditContent><qv_text qvstyle='NOPE'>x</qv_text></RichEditContent>"));
  EXPECT_TRUE(LogContains(L"unknown text style \"NOPE\""));
}

TEST_F(QVRichTextTest, MalformedParagraphsAreLoggedAndSkippedEntitiesAndCdataDecoded) {
  QVRichText* rich = MakeRich();
  ASSERT_NE(rich, nullptr);
  ASSERT_TRUE(rich->AppendContent(
      L"<RichEditContent><text>a&#160;b&amp;</text><text><![CDATA[<x>&]]></text></RichEditContent>"));
  EXPECT_EQ(rich->GetPlainText(), SStringW(L"a\u00A0b&<x>&"));

  // Broken XML and a foreign root leave the content as it was.
  EXPECT_FALSE(rich->AppendContent(L"<RichEditContent><text>oops</RichEditContent>"));
  EXPECT_TRUE(LogContains(L"paragraph skipped"));
  EXPECT_FALSE(rich->AppendContent(L"<Other><text>x</text></Other>"));
  EXPECT_TRUE(LogContains(L"<Other>"));
  EXPECT_FALSE(rich->AppendContent(L""));
  EXPECT_EQ(rich->GetParagraphCount(), 1);
  // An unknown run element is dropped, its neighbours kept.
  EXPECT_TRUE(rich->AppendContent(L"<RichEditContent><img/><text>kept</text></RichEditContent>"));
  EXPECT_TRUE(LogContains(L"unknown run <img>"));
  EXPECT_EQ(rich->GetPlainText(), SStringW(L"a\u00A0b&<x>&\nkept"));
  EXPECT_EQ(rich->GetLineCount(-1), 2);

  // A run longer than any window text is cut, with a log line.
  rich->Clear();
  const std::wstring huge(SWindow::kMaxWindowTextLength + 100, L'x');
  EXPECT_TRUE(rich->AppendContent(SStringW((L"<RichEditContent><text>" + huge + L"</text></RichEditContent>").c_str())));
  EXPECT_TRUE(LogContains(L"characters cut to"));
  EXPECT_EQ(rich->GetPlainText().GetLength(), SWindow::kMaxWindowTextLength);
}

TEST_F(QVRichTextTest, SizesToContentInLayout) {
  CreateHostWithChildren(
      L"<qvrichtext name='rich' pos='0,0,@120,@-1' font='size:14' lineSpacing='2'/>"
      L"<window name='below' pos='0,[0,@10,@10'/>",
      400, 300);
  auto* rich = Find<QVRichText>(L"rich");
  ASSERT_NE(rich, nullptr);
  rich->AppendContent(L"<RichEditContent><text>one two three four five six seven eight nine</text></RichEditContent>");
  Layout();
  EXPECT_EQ(rich->GetWindowRect().Height(), rich->GetContentHeight(120));
  EXPECT_GT(rich->GetTotalLines(), 1);
  EXPECT_EQ(Find(L"below")->GetWindowRect().top, rich->GetWindowRect().bottom);
}

// ---- picture ----------------------------------------------------------------------

TEST_F(QVRichTextTest, PaintsRunsThroughCairo) {
  app_->SetTextStyleResolver([](const SStringW& code, SStringW* font, SStringW* color) {
    if (code != L"HB2") return false;
    *font = L"size:16,bold:1";
    *color = L"#202020";
    return true;
  });
  CreateHost(
      L"<SOUI width='260' height='120'><root colorBkgnd='#FFFFFF'>"
      L"<qvrichtext name='rich' pos='8,8,-8,-8' font='size:13' colorText='#333333' lineSpacing='2' paraSpacing='6'/>"
      L"</root></SOUI>");
  auto* rich = Find<QVRichText>(L"rich");
  ASSERT_NE(rich, nullptr);
  rich->AppendContent(L"<RichEditContent><qv_text qvstyle='HB2'>委托已成交 Filled</qv_text></RichEditContent>");
  rich->AppendContent(
      L"<RichEditContent><text>Order&#160;</text>"
      L"<text color='#4F9BFF' link-data='08182' font='underline:1'>08182</text>"
      L"<text> was filled at 12.34, 中文换行测试中文换行测试中文换行测试</text></RichEditContent>");
  rich->AppendContent(L"<RichEditContent><text color='#E02020' font='size:12,bold:1'><![CDATA[+1.25% <rise>]]></text></RichEditContent>");
  ASSERT_NE(host()->Render(), nullptr);
  auto* frame = dynamic_cast<CairoRenderTarget*>(host()->GetFrame());
  ASSERT_NE(frame, nullptr);
  EXPECT_TRUE(MatchesReferencePng(*frame, QV_SOURCE_DIR "/tests/data/qvrichtext_block.png", 64, 0.03));
}

}  // namespace
}  // namespace SOUI
