#include "popups/tooltip.h"

#include <gtest/gtest.h>

#include <string>

#include "library_test_base.h"
#include "soui/qvrichtext.h"
#include "soui/skin.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;

class ToolTipTest : public LibraryTestBase {
 protected:
  // A bar 300 px wide at (10, 20), its height its own.
  CQVToolTip* MakeBar(const wchar_t* attrs) {
    SStringW xml = L"<qv_tooltip name=\"bar\" pos=\"10,20\" width=\"300\" ";
    xml += attrs;
    xml += L"/>";
    CreateHostWithChildren(xml.c_str(), 400, 200);
    Layout();
    return Find<CQVToolTip>(L"bar");
  }
  SOUI::QVRichText* Text() { return Find<SOUI::QVRichText>(L"text_link"); }
  SOUI::SWindow* Root() { return Find(L"tooltiproot"); }
  static std::string Paint(SOUI::SWindow* w) {
    SOUI::RecordingRenderTarget rt(400, 200);
    w->RedrawRegion(&rt, w->GetWindowRect());
    return rt.Dump();
  }
  // The centre of the first piece of a run, in host coordinates.
  CPoint RunCentre(int run) {
    SOUI::QVRichText* rich = Text();
    const CRect client = rich->GetChildrenLayoutRect();
    for (const auto& f : rich->LayoutFragments(client.Width())) {
      if (f.run == run) {
        return CPoint(client.left + (f.rc.left + f.rc.right) / 2, client.top + (f.rc.top + f.rc.bottom) / 2);
      }
    }
    ADD_FAILURE() << "run " << run << " not laid out";
    return CPoint();
  }
};

TEST_F(ToolTipTest, TextSitsBetweenIconAndCloseButton) {
  CQVToolTip* bar = MakeBar(L"tiptext=\"Market closed\" closebtn=\"1\"");
  ASSERT_NE(bar, nullptr);
  // Close shown, no icon: 12dp from the left, 40dp from the right.
  EXPECT_EQ(Text()->GetWindowRect().left, 10 + 12);
  EXPECT_EQ(Text()->GetWindowRect().right, 310 - 40);
  EXPECT_TRUE(Find(L"close")->IsVisible());
  EXPECT_FALSE(Find(L"icon")->IsVisible());
  // "false" hides the button and the text reaches to -12dp.
  bar->SetAttribute(L"closebtn", L"false", FALSE);
  bar->SetAttribute(L"iconskin", L"skin_toast_icon_tip", FALSE);
  Layout();
  EXPECT_FALSE(Find(L"close")->IsVisible());
  EXPECT_EQ(Text()->GetWindowRect().right, 310 - 12);
  EXPECT_EQ(Text()->GetWindowRect().left, 10 + 30);
  // An empty skin leaves the icon as it was.
  bar->SetAttribute(L"iconskin", L"", FALSE);
  Layout();
  SOUI::SWindow* icon = Find(L"icon");
  EXPECT_TRUE(icon->IsVisible());
  ASSERT_NE(icon->GetBkgndSkin(), nullptr);
  EXPECT_EQ(icon->GetBkgndSkin()->GetSkinName(), SStringW(L"skin_toast_icon_tip"));
  EXPECT_EQ(Text()->GetWindowRect().left, 10 + 30);
}

TEST_F(ToolTipTest, ContentIsThreeParagraphsEvenWithoutLinkText) {
  CQVToolTip* bar = MakeBar(L"tiptext=\"Market closed\"");
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(Text()->GetParagraphCount(), 3);
  EXPECT_EQ(Text()->GetPlainText(), SStringW(L"Market closed\n\u00A0\u00A0\n"));
  // A link follows the message on the same line, after the two blanks.
  bar->SetAttribute(L"linktext", L"Details", FALSE);
  EXPECT_EQ(Text()->GetParagraphCount(), 3);
  EXPECT_EQ(Text()->GetPlainText(), SStringW(L"Market closed\n\u00A0\u00A0\nDetails"));
  EXPECT_EQ(Text()->GetLineCount(-1), 1);
}

TEST_F(ToolTipTest, KindSetsBandAndMessageColoursButNotTheLink) {
  CQVToolTip* bar = MakeBar(L"tiptext=\"Careful\" linktext=\"More\"");
  ASSERT_NE(bar, nullptr);
  const std::string td = Paint(bar);
  // TD: white message on slate; the link in its fixed blue.
  EXPECT_NE(td.find("FillSolidRect [10,20,310,48] #3B4657FF"), std::string::npos) << td;
  EXPECT_NE(td.find("\"Careful\""), std::string::npos);
  EXPECT_NE(td.find("color=#FFFFFFFF"), std::string::npos) << td;
  EXPECT_NE(td.find("\"More\" "), std::string::npos) << td;
  bar->SetAttribute(L"qvstyle", L"TC", FALSE);
  Layout();
  const std::string tc = Paint(bar);
  EXPECT_NE(tc.find("FillSolidRect [10,20,310,48] #5C3A00FF"), std::string::npos) << tc;
  EXPECT_NE(tc.find("color=#FFE7B8FF"), std::string::npos) << tc;
  bar->SetAttribute(L"qvstyle", L"TW", FALSE);
  Layout();
  const std::string tw = Paint(bar);
  EXPECT_NE(tw.find("FillSolidRect [10,20,310,48] #7A1C1CFF"), std::string::npos) << tw;
  EXPECT_EQ(tw.find("color=#FFE7B8FF"), std::string::npos) << tw;
  // The link run keeps #4F9BFF through every kind.
  for (const std::string* dump : {&td, &tc, &tw}) {
    const size_t link = dump->find("\"More\"");
    ASSERT_NE(link, std::string::npos);
    const size_t eol = dump->find('\n', link);
    EXPECT_NE(dump->substr(link, eol - link).find("color=#4F9BFFFF"), std::string::npos) << *dump;
  }
  // An unknown code changes nothing.
  bar->SetAttribute(L"qvstyle", L"TX", FALSE);
  EXPECT_EQ(bar->GetBkgndColor(), SStringW(L"@color\\style_qv_tooltip\\skin_bg_tips_warn"));
}

TEST_F(ToolTipTest, WrappingSwitchesBetweenShortAndTallBarOncePerLineCountChange) {
  CQVToolTip* bar = MakeBar(L"tiptext=\"Short\" linktext=\"Go\" closebtn=\"1\" iconskin=\"skin_toast_icon_warn\"");
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->GetWindowRect().Height(), 28);
  EXPECT_EQ(Root()->GetWindowRect().Height(), 28);
  EXPECT_EQ(bar->GetLineCount(), 1);
  // 40 characters of 6 px do not fit the 300 - 24 - 28 - 20 px left for text.
  bar->SetAttribute(L"tiptext", L"A message long enough to wrap onto two lines of the bar", FALSE);
  Layout();
  EXPECT_EQ(bar->GetLineCount(), 2);
  EXPECT_EQ(bar->GetWindowRect().Height(), 44);
  EXPECT_EQ(Root()->GetWindowRect().Height(), 44);
  // Measured again with the same lines: the root is left alone.
  bar->GetDesiredSize(300, -1);
  EXPECT_FALSE(Root()->IsLayoutDirty());
  // Three lines still take the tall bar.
  bar->SetAttribute(L"tiptext",
                    L"A message so long that it needs three lines of the bar to show every single one of its words",
                    FALSE);
  Layout();
  EXPECT_EQ(bar->GetLineCount(), 3);
  EXPECT_EQ(bar->GetWindowRect().Height(), 44);
  // Back to one line, back to 28.
  bar->SetAttribute(L"tiptext", L"Short", FALSE);
  Layout();
  EXPECT_EQ(bar->GetWindowRect().Height(), 28);
  EXPECT_EQ(Root()->GetWindowRect().Height(), 28);
}

TEST_F(ToolTipTest, ClicksOnLinkAndCloseRaiseTheirEventsOnly) {
  CQVToolTip* bar = MakeBar(L"tiptext=\"Order rejected\" linktext=\"Why?\" closebtn=\"1\"");
  ASSERT_NE(bar, nullptr);
  SStringW link_data;
  bar->subscribeEvent(EVT_QVTOOLTIP_LINK_CLICKED, [&](SOUI::EventArgs* e) {
    link_data = static_cast<EventQVToolTipLinkClicked*>(e)->linkData;
    return false;
  });
  // The message itself is not a link.
  gen().MoveMouseTo(RunCentre(0));
  gen().ClickLeftButton();
  EXPECT_EQ(CountEvents(EVT_QVTOOLTIP_LINK_CLICKED), 0);
  // The link run: one event with the fixed link data.
  gen().MoveMouseTo(RunCentre(2));
  gen().ClickLeftButton();
  EXPECT_EQ(CountEvents(EVT_QVTOOLTIP_LINK_CLICKED), 1);
  EXPECT_EQ(link_data, SStringW(L"08182"));
  EXPECT_EQ(CountEvents(EVT_QVTOOLTIP_CLOSE_CLICKED), 0);
  // The close button.
  gen().MoveMouseToCenterOf(Find(L"close"));
  gen().ClickLeftButton();
  EXPECT_EQ(CountEvents(EVT_QVTOOLTIP_CLOSE_CLICKED), 1);
  EXPECT_EQ(CountEvents(EVT_QVTOOLTIP_LINK_CLICKED), 1);
  // The bar stays: hiding is the host's business.
  EXPECT_TRUE(bar->IsVisible());
}

TEST_F(ToolTipTest, HostileTextsNeverBreakTheBar) {
  // Markup characters in a text lose that paragraph (logged), not the bar.
  CQVToolTip* bar = MakeBar(L"tiptext=\"a &lt; b\" linktext=\"&lt;/text&gt;\"");
  ASSERT_NE(bar, nullptr);
  EXPECT_GE(Text()->GetParagraphCount(), 1);
  bar->SetAttribute(L"tiptext", SStringW(L'x', 5000), FALSE);
  Layout();
  EXPECT_EQ(bar->GetWindowRect().Height(), 44);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
