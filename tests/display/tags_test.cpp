#include "display/tags.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "framework/control_classes.h"
#include "testing/recording_render.h"
#include "library_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

class TagsTest : public test::LibraryTestBase {
 protected:
  SOUI::SWindow* Tag(const wchar_t* name) { return Find<CQVTag>(name); }
  static SStringW Skin(SOUI::SWindow* w) { return w->GetAttribute(L"skin"); }
  static SStringW TextColor(SOUI::SWindow* w) { return w->GetStyle().colorText[0].Source(); }
  static SStringW Font(SOUI::SWindow* w) { return w->GetStyle().font[0].Source(); }
};

// Every code with its skin and the last word of its text colour, written out
// by hand from the house tag sheet.
struct TagRow {
  const wchar_t* code;
  const wchar_t* skin;
  const wchar_t* color;  // after "@color\style_tag\skin_text_tag_"
};

const TagRow kTagRows[] = {
    {L"TBU1", L"skin_tagbg_buy_border", L"buy"},
    {L"TBU2", L"skin_tagbg_buy_opacity", L"buy"},
    {L"TBU3", L"skin_tagbg_buy_block", L"h1"},
    {L"TSE1", L"skin_tagbg_sell_border", L"sell"},
    {L"TSE2", L"skin_tagbg_sell_opacity", L"sell"},
    {L"TSE3", L"skin_tagbg_sell_block", L"h1"},
    {L"TRI1", L"skin_tagbg_rise_border", L"rise"},
    {L"TRI2", L"skin_tagbg_rise_opacity", L"rise"},
    {L"TRI3", L"skin_tagbg_rise_block", L"h1"},
    {L"TFA1", L"skin_tagbg_fall_border", L"fall"},
    {L"TFA2", L"skin_tagbg_fall_opacity", L"fall"},
    {L"TFA3", L"skin_tagbg_fall_block", L"h1"},
    {L"THL1", L"skin_tagbg_highlight_border", L"highlight"},
    {L"THL2", L"skin_tagbg_highlight_opacity", L"highlight"},
    {L"THL3", L"skin_tagbg_highlight_block", L"h1"},
    {L"TGL1", L"skin_tagbg_graylight_border", L"graylight"},
    {L"TGL2", L"skin_tagbg_graylight_opacity", L"graylight"},
    {L"TGL3", L"skin_tagbg_graylight_block", L"h1"},
    {L"TGA1", L"skin_tagbg_gray_border", L"gray"},
    {L"TGA2", L"skin_tagbg_gray_opacity", L"gray"},
    {L"TGA3", L"skin_tagbg_gray_block", L"h1"},
    {L"TBG1", L"skin_tagbg_bluegray_border", L"bluegray"},
    {L"TBG2", L"skin_tagbg_bluegray_opacity", L"bluegray"},
    {L"TBG3", L"skin_tagbg_bluegray_block", L"h1"},
    {L"TGO1", L"skin_tagbg_gold_border", L"gold"},
    {L"TGO2", L"skin_tagbg_gold_opacity", L"gold"},
    {L"TGO3", L"skin_tagbg_gold_block", L"h1"},
    {L"TYE1", L"skin_tagbg_yellow_border", L"yellow"},
    {L"TYE2", L"skin_tagbg_yellow_opacity", L"yellow"},
    {L"TYE3", L"skin_tagbg_yellow_block", L"h1"},
    {L"TPI1", L"skin_tagbg_pink_border", L"pink"},
    {L"TPI2", L"skin_tagbg_pink_opacity", L"pink"},
    {L"TPI3", L"skin_tagbg_pink_block", L"h1"},
    {L"TBL1", L"skin_tagbg_blue_border", L"blue"},
    {L"TBL2", L"skin_tagbg_blue_opacity", L"blue"},
    {L"TBL3", L"skin_tagbg_blue_block", L"h1"},
    {L"TWH1", L"skin_tagbg_white_border", L"white"},
    {L"TWH2", L"skin_tagbg_white_opacity", L"white"},
    {L"TWH3", L"skin_tagbg_white_block", L"black"},
    {L"THK1", L"skin_tagbg_hk_border", L"hk"},
    {L"THK2", L"skin_tagbg_hk_opacity", L"hk"},
    {L"THK3", L"skin_tagbg_hk_block", L"h1"},
    {L"TUS1", L"skin_tagbg_us_border", L"us"},
    {L"TUS2", L"skin_tagbg_us_opacity", L"us"},
    {L"TUS3", L"skin_tagbg_us_block", L"h1"},
    {L"TSG1", L"skin_tagbg_sg_border", L"sg"},
    {L"TSG2", L"skin_tagbg_sg_opacity", L"sg"},
    {L"TSG3", L"skin_tagbg_sg_block", L"h1"},
    {L"TSH1", L"skin_tagbg_sh_border", L"sh"},
    {L"TSH2", L"skin_tagbg_sh_opacity", L"sh"},
    {L"TSH3", L"skin_tagbg_sh_block", L"h1"},
    {L"TJP1", L"skin_tagbg_jp_border", L"jp"},
    {L"TJP2", L"skin_tagbg_jp_opacity", L"jp"},
    {L"TJP3", L"skin_tagbg_jp_block", L"h1"},};

class TagCodeTest : public TagsTest, public ::testing::WithParamInterface<TagRow> {};

TEST_P(TagCodeTest, TagShowsTheSkinAndColourOfItsCode) {
  const TagRow& r = GetParam();
  CreateHostWithChildren((SStringW(L"<qv_tag name=\"t\" text=\"T\" qvstyle=\"") + r.code + L"\"/>").c_str());
  SOUI::SWindow* t = Tag(L"t");
  ASSERT_NE(t, nullptr);
  EXPECT_EQ(Skin(t), r.skin);
  EXPECT_EQ(TextColor(t), SStringW(L"@color\\style_tag\\skin_text_tag_") + r.color);
  // The theme knows every skin the table names.
  EXPECT_NE(t->GetBkgndSkin(), nullptr) << SStringW(r.skin).ToUtf8();
}

INSTANTIATE_TEST_SUITE_P(AllCodes, TagCodeTest, ::testing::ValuesIn(kTagRows),
                         [](const ::testing::TestParamInfo<TagRow>& i) { return SStringW(i.param.code).ToUtf8(); });

TEST(TagTable, HoldsExactlyTheListedCodes) {
  std::set<SStringW> listed;
  for (const TagRow& r : kTagRows) listed.insert(r.code);
  std::set<SStringW> built;
  for (const auto& kv : GetQVTagTable().codes) built.insert(kv.first);
  EXPECT_EQ(built, listed);
  EXPECT_EQ(built.size(), 54u);
}

TEST_F(TagsTest, TagWithoutAttributesIsMediumBuyBordered) {
  CreateHostWithChildren(L"<qv_tag name=\"t\" pos=\"0,0\" text=\"Buy\"/>");
  SOUI::SWindow* t = Tag(L"t");
  EXPECT_EQ(Skin(t), L"skin_tagbg_buy_border");
  EXPECT_EQ(Font(t), L"size:11dp");
  EXPECT_EQ(t->GetWindowRect().Height(), 14);
}

struct SizeCase {
  const wchar_t* size;
  int zoom;
  int height_px;
  const wchar_t* font;
};

class TagSizeTest : public TagsTest, public ::testing::WithParamInterface<SizeCase> {};

// The height written in "pos" is discarded: the size class decides.
TEST_P(TagSizeTest, PosHeightIsReplacedByTheSizeClass) {
  const SizeCase& c = GetParam();
  app_->SetZoom(c.zoom);
  CreateHostWithChildren(
      (SStringW(L"<qv_tag name=\"t\" text=\"Sell\" size=\"") + c.size + L"\" pos=\"10,5,@40,@40\"/>").c_str());
  SOUI::SWindow* t = Tag(L"t");
  const SOUI::CRect rc = t->GetWindowRect();
  EXPECT_EQ(rc.Height(), c.height_px);
  EXPECT_EQ(rc.Width(), 40);
  EXPECT_EQ(Font(t), c.font);
}

INSTANTIATE_TEST_SUITE_P(Sizes, TagSizeTest,
                         ::testing::Values(SizeCase{L"large", 100, 16, L"size:13dp"},
                                           SizeCase{L"medium", 100, 14, L"size:11dp"},
                                           SizeCase{L"small", 100, 12, L"size:10dp"},
                                           SizeCase{L"small", 150, 18, L"size:10dp"}),
                         [](const ::testing::TestParamInfo<SizeCase>& i) {
                           return SStringW(i.param.size).ToUtf8() + "_" + std::to_string(i.param.zoom);
                         });

TEST_F(TagsTest, UnknownCodeOrSizeLeavesTheLookUnchanged) {
  CreateHostWithChildren(
      L"<qv_tag name=\"code\" qvstyle=\"tbu1\" skin=\"skin_tagbg_gold_block\"/>"
      L"<qv_tag name=\"size\" qvstyle=\"TSE3\" size=\"huge\"/>");
  // "skin" is not a page attribute of tags; nothing was applied.
  EXPECT_EQ(Skin(Tag(L"code")), L"");
  EXPECT_EQ(Skin(Tag(L"size")), L"");
  SOUI::SWindow* t = Tag(L"size");
  t->SetAttribute(L"size", L"small", FALSE);
  EXPECT_EQ(Skin(t), L"skin_tagbg_sell_block");
}

struct MarketCase {
  const wchar_t* market;
  const wchar_t* background;
  const wchar_t* skin;  // empty: nothing applied
};

class MarketTagTest : public TagsTest, public ::testing::WithParamInterface<MarketCase> {};

TEST_P(MarketTagTest, MarketAndBackgroundPickTheCode) {
  const MarketCase& c = GetParam();
  CreateHostWithChildren((SStringW(L"<qv_markettag name=\"m\" text=\"M\" market=\"") + c.market +
                          L"\" background=\"" + c.background + L"\"/>")
                             .c_str());
  EXPECT_EQ(Skin(Find<CQVMarketTag>(L"m")), c.skin);
}

INSTANTIATE_TEST_SUITE_P(
    Markets, MarketTagTest,
    ::testing::Values(MarketCase{L"HK", L"Transparent", L"skin_tagbg_hk_opacity"},
                      MarketCase{L"US", L"Solid", L"skin_tagbg_us_block"},
                      MarketCase{L"SG", L"Bordered", L"skin_tagbg_sg_border"},
                      MarketCase{L"SH", L"Solid", L"skin_tagbg_sh_block"},
                      MarketCase{L"SZ", L"Solid", L"skin_tagbg_sh_block"},  // shares Shanghai's
                      MarketCase{L"JP", L"Bordered", L"skin_tagbg_jp_border"},
                      MarketCase{L"hk", L"Solid", L""},
                      MarketCase{L"US", L"solid", L""},
                      MarketCase{L"CN", L"Solid", L""}),
    [](const ::testing::TestParamInfo<MarketCase>& i) {
      return SStringW(i.param.market).ToUtf8() + "_" + SStringW(i.param.background).ToUtf8();
    });

TEST_F(TagsTest, MarketTagDefaultsAndLaterChanges) {
  CreateHostWithChildren(L"<qv_markettag name=\"m\" text=\"HK\"/>");
  auto* m = Find<CQVMarketTag>(L"m");
  EXPECT_EQ(Skin(m), L"skin_tagbg_hk_opacity");
  EXPECT_EQ(TextColor(m), L"@color\\style_tag\\skin_text_tag_hk");
  m->SetAttribute(L"market", L"US", FALSE);
  EXPECT_EQ(Skin(m), L"skin_tagbg_us_opacity");
  // An unknown market keeps the previous look.
  m->SetAttribute(L"market", L"hk", FALSE);
  EXPECT_EQ(Skin(m), L"skin_tagbg_us_opacity");
  m->SetAttribute(L"market", L"SZ", FALSE);
  m->SetAttribute(L"background", L"Solid", FALSE);
  EXPECT_EQ(Skin(m), L"skin_tagbg_sh_block");
  EXPECT_EQ(TextColor(m), L"@color\\style_tag\\skin_text_tag_h1");
}

TEST_F(TagsTest, TagPaintsItsSkinAndCentredText) {
  CreateHostWithChildren(L"<qv_tag name=\"t\" qvstyle=\"TRI3\" text=\"Rise\" pos=\"0,0,@40,@20\"/>");
  SOUI::RecordingRenderTarget rt;
  SOUI::SWindow* t = Tag(L"t");
  t->RedrawRegion(&rt, t->GetWindowRect());
  // Solid rise block (#F23B3B) under white text.
  EXPECT_TRUE(rt.Contains("#F23B3BFF")) << rt.Dump();
  EXPECT_TRUE(rt.Contains("DrawText \"Rise\" [0,0,40,14]")) << rt.Dump();
  EXPECT_TRUE(rt.Contains("color=#FFFFFFFF")) << rt.Dump();
}

}  // namespace
}  // namespace QVStandardCtrls
