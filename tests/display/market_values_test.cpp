#include "display/market_values.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "framework/control_classes.h"
#include "qvhost/config.h"
#include "testing/recording_render.h"
#include "library_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

const char kRise[] = "@color\\style_skin_qv_text\\text_rise";
const char kFall[] = "@color\\style_skin_qv_text\\text_fall";
const char kStable[] = "@color\\style_skin_qv_text\\text_stable";
// The default theme's values of the three references.
const char kRed[] = "#F23B3BFF";
const char kGreen[] = "#19A15FFF";
const char kGrey[] = "#6F7A86FF";

class MarketValuesTest : public test::LibraryTestBase {
 protected:
  static std::string ColorRef(SOUI::SWindow* w) { return w->GetStyle().colorText[0].Source().ToUtf8(); }
  // The drawing calls of one window on a recording target.
  static std::vector<std::string> Paint(SOUI::SWindow* w) {
    SOUI::RecordingRenderTarget rt(400, 300);
    w->RedrawRegion(&rt, w->GetWindowRect());
    return rt.Calls();
  }
};

// ---- red-green label: comparison ---------------------------------------------------

struct CompareCase {
  const char* name;
  const wchar_t* attrs;  // compare/current as the page writes them
  int red_rise;          // -1: setting absent
  const char* expected;
};

class RedGreenCompareTest : public MarketValuesTest, public ::testing::WithParamInterface<CompareCase> {};

TEST_P(RedGreenCompareTest, ColourReferenceFollowsTheComparison) {
  const CompareCase& c = GetParam();
  if (c.red_rise >= 0) GetUserSettings(*app_).SetBool(kQVCfgRedRise, c.red_rise != 0);
  CreateHostWithChildren((SStringW(L"<qv_redgreen name=\"v\" text=\"1\" ") + c.attrs + L"/>").c_str());
  auto* v = Find<CQVRedGreenStatic>(L"v");
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(ColorRef(v), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RedGreenCompareTest,
    ::testing::Values(
        CompareCase{"unset", L"", -1, kStable},
        CompareCase{"hex_current_above", L"compare=\"15\" current=\"0x10\"", -1, kRise},
        CompareCase{"hex_compare_above", L"compare=\"0x10\" current=\"15\"", -1, kFall},
        CompareCase{"beyond_32_bits_rise", L"compare=\"4294967295\" current=\"4294967296\"", -1, kRise},
        CompareCase{"beyond_32_bits_fall", L"compare=\"4294967296\" current=\"4294967295\"", -1, kFall},
        // Equal low words: only a full 64-bit compare sees the difference.
        CompareCase{"same_low_word", L"compare=\"4294967295\" current=\"-1\"", -1, kFall},
        CompareCase{"high_word_only", L"compare=\"0x100000000\" current=\"0x200000000\"", -1, kRise},
        CompareCase{"negative_vs_positive", L"compare=\"1\" current=\"-5\"", -1, kFall},
        CompareCase{"equal", L"compare=\"1234567890123\" current=\"1234567890123\"", -1, kStable},
        CompareCase{"unparsable_is_zero", L"compare=\"0\" current=\"abc\"", -1, kStable},
        CompareCase{"green_rises", L"compare=\"1\" current=\"2\"", 0, kFall},
        CompareCase{"green_rises_fall", L"compare=\"2\" current=\"1\"", 0, kRise},
        CompareCase{"green_rises_stable", L"compare=\"2\" current=\"2\"", 0, kStable},
        CompareCase{"red_rises_explicit", L"compare=\"1\" current=\"2\"", 1, kRise},
        // Read on construction too, so a label given only "current" follows it.
        CompareCase{"green_rises_current_only", L"current=\"7\"", 0, kFall}),
    [](const ::testing::TestParamInfo<CompareCase>& i) { return std::string(i.param.name); });

TEST_F(MarketValuesTest, RedGreenStyleSetsTheFontAndAnUnknownCodeKeepsIt) {
  CreateHostWithChildren(
      L"<qv_redgreen name=\"a\" qvstyle=\"RGB2\"/>"
      L"<qv_redgreen name=\"b\" font=\"size:9dp\" qvstyle=\"rgb2\"/>");
  EXPECT_EQ(Find(L"a")->GetStyle().font[0].Source(), L"size:14dp,bold:1");
  EXPECT_EQ(Find(L"b")->GetStyle().font[0].Source(), L"size:9dp");
}

// ---- red-green label: the convention broadcast ---------------------------------------

TEST_F(MarketValuesTest, Message1063RecoloursEveryLiveLabelAndPaintsTheNewColour) {
  CreateHostWithChildren(
      L"<qv_redgreen name=\"up\" pos=\"0,0,@100,@20\" text=\"+1.2%\" compare=\"100\" current=\"101\"/>"
      L"<qv_redgreen name=\"down\" pos=\"0,20,@100,@20\" text=\"-0.4%\" compare=\"100\" current=\"99\"/>"
      L"<qv_redgreen name=\"flat\" pos=\"0,40,@100,@20\" text=\"0.0%\" compare=\"100\" current=\"100\"/>");
  SOUI::SWindow* up = Find(L"up");
  SOUI::SWindow* down = Find(L"down");
  SOUI::SWindow* flat = Find(L"flat");
  EXPECT_NE(Paint(up).at(0).find(kRed), std::string::npos);

  GetUserSettings(*app_).SetBool(kQVCfgRedRise, false);
  // Nothing changes until the host says so.
  EXPECT_EQ(ColorRef(up), kRise);
  GetMsgDispatch()->Send(kQVMsgRiseFallColorChanged);
  EXPECT_EQ(ColorRef(up), kFall);
  EXPECT_EQ(ColorRef(down), kRise);
  EXPECT_EQ(ColorRef(flat), kStable);
  EXPECT_NE(Paint(up).at(0).find(kGreen), std::string::npos) << Paint(up).at(0);
  EXPECT_NE(Paint(down).at(0).find(kRed), std::string::npos);
  EXPECT_NE(Paint(flat).at(0).find(kGrey), std::string::npos);

  GetUserSettings(*app_).Remove(kQVCfgRedRise);  // absent means red rises
  GetMsgDispatch()->Send(kQVMsgRiseFallColorChanged);
  EXPECT_EQ(ColorRef(up), kRise);
  EXPECT_EQ(ColorRef(down), kFall);
}

TEST_F(MarketValuesTest, DestroyedLabelReceivesNothing) {
  CreateHostWithChildren(
      L"<qv_redgreen name=\"gone\" compare=\"1\" current=\"2\"/>"
      L"<qv_redgreen name=\"kept\" compare=\"1\" current=\"2\"/>");
  auto& dispatch = GetMessageDispatch(*app_);
  const size_t before = dispatch.BindingCount();
  ASSERT_TRUE(Find(L"gone")->DestroyWindow());
  EXPECT_EQ(dispatch.BindingCount(), before - 1);
  GetUserSettings(*app_).SetBool(kQVCfgRedRise, false);
  // A stale binding would call into freed memory here (ASan reports it).
  dispatch.Send(kQVMsgRiseFallColorChanged);
  EXPECT_EQ(ColorRef(Find(L"kept")), kFall);
}

TEST_F(MarketValuesTest, AttributeCurrentDoesNotRereadTheConventionButCompareDoes) {
  CreateHostWithChildren(L"<qv_redgreen name=\"v\" compare=\"1\" current=\"2\"/>");
  SOUI::SWindow* v = Find(L"v");
  GetUserSettings(*app_).SetBool(kQVCfgRedRise, false);
  v->SetAttribute(L"current", L"3", FALSE);
  EXPECT_EQ(ColorRef(v), kRise);
  v->SetAttribute(L"compare", L"1", FALSE);
  EXPECT_EQ(ColorRef(v), kFall);
}

// ---- rise/fall price: painting --------------------------------------------------------

// Only the drawing lines, in order.
std::vector<std::string> Drawing(const std::vector<std::string>& calls) {
  std::vector<std::string> out;
  for (const std::string& c : calls) {
    if (c.rfind("DrawText", 0) == 0 || c.rfind("DrawLines", 0) == 0 || c.rfind("FillSolidRect", 0) == 0) {
      // The installed default face is not what these tests are about.
      const size_t font = c.find(" font=");
      const size_t face = font == std::string::npos ? font : c.find('@', font);
      out.push_back(face == std::string::npos ? c : c.substr(0, face));
    }
  }
  return out;
}

struct PriceCase {
  const char* name;
  int direction;
  const char* color;
  // Rows of the head in drawing order (apex first) as "x1-x2@y", then the
  // body rectangle.
  std::vector<std::string> rows;
  const char* body;
};

class PricePaintTest : public MarketValuesTest, public ::testing::WithParamInterface<PriceCase> {};

// RGR1 in a 200x20 window: price font 10 px tall, so "12.34" is 25 px wide
// on the recording metric. Arrow 6x4 (drawn 7 wide about one column), body
// 3x3; together 7 px tall, so they start (20 - 7) / 2 = 6 px down. The arrow
// block starts 5 px after the price (x 30), its centre column is x 33, and
// the change text starts 5 px after the 7 px block (x 42).
TEST_P(PricePaintTest, DrawsPriceArrowAndChangeInOrder) {
  const PriceCase& c = GetParam();
  CreateHostWithChildren((SStringW(L"<qv_risefallprice name=\"p\" pos=\"0,0,@200,@20\" qvstyle=\"RGR1\" "
                                   L"pricetext=\"12.34\" risefalltext=\"+0.56\" direction=\"") +
                          SStringW::Format2(L"%d", c.direction) + L"\"/>")
                             .c_str());
  std::vector<std::string> expected;
  expected.push_back(std::string("DrawText \"12.34\" [0,0,200,20] fmt=0x8024 color=") + c.color + " font=10/400");
  for (const std::string& r : c.rows) {
    const int x1 = std::stoi(r.substr(0, r.find('-')));
    const int x2 = std::stoi(r.substr(r.find('-') + 1));
    const int y = std::stoi(r.substr(r.find('@') + 1));
    expected.push_back("DrawLines (" + std::to_string(x1) + "," + std::to_string(y) + ")-(" + std::to_string(x2) +
                       "," + std::to_string(y) + ") pen=" + c.color + "/1/solid");
  }
  expected.push_back(std::string("FillSolidRect ") + c.body + " " + c.color);
  expected.push_back(std::string("DrawText \"+0.56\" [42,0,200,20] fmt=0x8024 color=") + c.color + " font=10/400");
  EXPECT_EQ(Drawing(Paint(Find(L"p"))), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Directions, PricePaintTest,
    ::testing::Values(
        // Head on top pointing up: apex at y 6, body below it.
        PriceCase{"rise", 1, kRed, {"33-33@6", "32-34@7", "31-35@8", "30-36@9"}, "[32,10,35,13]"},
        // Body on top, head below pointing down: apex at the bottom row.
        PriceCase{"fall", -1, kGreen, {"33-33@12", "32-34@11", "31-35@10", "30-36@9"}, "[32,6,35,9]"},
        // A flat price shows the downward shape in the stable colour.
        PriceCase{"stable", 0, kGrey, {"33-33@12", "32-34@11", "31-35@10", "30-36@9"}, "[32,6,35,9]"}),
    [](const ::testing::TestParamInfo<PriceCase>& i) { return std::string(i.param.name); });

TEST_F(MarketValuesTest, PriceWithAnEmptyTextPaintsNothing) {
  CreateHostWithChildren(
      L"<qv_risefallprice name=\"no_change\" pos=\"0,0,@200,@20\" qvstyle=\"RGR1\" pricetext=\"1.00\" direction=\"1\"/>"
      L"<qv_risefallprice name=\"no_price\" pos=\"0,20,@200,@20\" qvstyle=\"RGR1\" risefalltext=\"+1\" direction=\"1\"/>");
  EXPECT_TRUE(Drawing(Paint(Find(L"no_change"))).empty());
  EXPECT_TRUE(Drawing(Paint(Find(L"no_price"))).empty());
}

TEST_F(MarketValuesTest, PriceWithoutAColourPaintsInTheWindowTextColour) {
  // "#ffffff00" is the toolkit's "no colour".
  CreateHostWithChildren(
      L"<qv_risefallprice name=\"p\" pos=\"0,0,@200,@20\" qvstyle=\"RGR1\" colorText=\"#112233\""
      L" pricetext=\"1\" risefalltext=\"0\" direction=\"0\"/>");
  auto* p = Find<CQVRiseFallPrice>(L"p");
  ASSERT_EQ(p->SetAttribute(L"colorstable", L"#ffffff00", FALSE), S_OK);
  ASSERT_EQ(p->GetStableColor(), CR_INVALID);
  for (const std::string& line : Drawing(Paint(p))) EXPECT_NE(line.find("#112233FF"), std::string::npos) << line;
}

TEST_F(MarketValuesTest, RedRiseFlipsTheColoursAtTheNextPaintOverridingExplicitOnes) {
  CreateHostWithChildren(
      L"<qv_risefallprice name=\"p\" pos=\"0,0,@200,@20\" qvstyle=\"RGR3\" pricetext=\"9.99\" risefalltext=\"+1\""
      L" direction=\"1\"/>");
  auto* p = Find<CQVRiseFallPrice>(L"p");
  p->SetAttribute(L"colorrise", L"#0000FF", FALSE);
  EXPECT_NE(Paint(p).at(0).find("#0000FFFF"), std::string::npos);

  p->SetAttribute(L"redrise", L"false", FALSE);
  EXPECT_NE(Paint(p).at(0).find(kGreen), std::string::npos) << Paint(p).at(0);
  // A fall is red now.
  p->SetAttribute(L"direction", L"-1", FALSE);
  EXPECT_NE(Paint(p).at(0).find(kRed), std::string::npos);

  p->SetAttribute(L"redrise", L"1", FALSE);
  p->SetAttribute(L"direction", L"1", FALSE);
  EXPECT_NE(Paint(p).at(0).find(kRed), std::string::npos);
}

TEST_F(MarketValuesTest, PriceColoursRejectEmptyAndUnknownValuesKeepingTheOldOne) {
  CreateHostWithChildren(L"<qv_risefallprice name=\"p\"/>");
  auto* p = Find<CQVRiseFallPrice>(L"p");
  const COLORREF before = p->GetRiseColor();
  EXPECT_EQ(p->SetAttribute(L"colorrise", L"", FALSE), E_FAIL);
  EXPECT_EQ(p->SetAttribute(L"COLORRISE", L"@color\\no_such\\colour", FALSE), E_FAIL);
  EXPECT_EQ(p->GetRiseColor(), before);
}

TEST_F(MarketValuesTest, PriceArrowScalesWithTheZoom) {
  app_->SetZoom(200);
  CreateHostWithChildren(
      L"<qv_risefallprice name=\"p\" pos=\"0,0,@200,@20\" bodyx=\"0x3\" bodyy=\"3\" arrowx=\"6\" arrowy=\"4\""
      L" pricetext=\"1\" risefalltext=\"2\" direction=\"1\"/>");
  int rows = 0;
  std::string body;
  for (const std::string& line : Drawing(Paint(Find(L"p")))) {
    if (line.rfind("DrawLines", 0) == 0) {
      ++rows;
      EXPECT_NE(line.find("/2/solid"), std::string::npos) << line;  // ZPixel(1) at 200 %
    }
    if (line.rfind("FillSolidRect", 0) == 0) body = line;
  }
  EXPECT_EQ(rows, 8);
  // A 6 px body at 200 % is drawn 7 wide to centre under the apex.
  int l = 0, t = 0, r = 0, b = 0;
  ASSERT_EQ(std::sscanf(body.c_str(), "FillSolidRect [%d,%d,%d,%d]", &l, &t, &r, &b), 4) << body;
  EXPECT_EQ(r - l, 7);
  EXPECT_EQ(b - t, 6);
}

}  // namespace
}  // namespace QVStandardCtrls
