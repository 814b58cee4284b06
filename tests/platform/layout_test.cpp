// Default layout: unit parsing, the pos/offset/size attributes, and the
// rectangles children land at (golden dumps of names and rectangles).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>

#include "soui/layout.h"
#include "soui/sapp.h"
#include "soui/swnd.h"

namespace SOUI {
namespace {

// ---- SLayoutSize ------------------------------------------------------------------

struct SizeRow {
  const char* label;
  const wchar_t* text;
  const wchar_t* canonical;  // toString() of the parsed size
  int px100;                 // toPixelSize(100)
  int px150;                 // toPixelSize(150)
};

void PrintTo(const SizeRow& row, std::ostream* os) { *os << row.label; }

class LayoutSizeParse : public ::testing::TestWithParam<SizeRow> {};

TEST_P(LayoutSizeParse, ParsesPrintsAndScales) {
  const SizeRow& row = GetParam();
  SLayoutSize size;
  ASSERT_TRUE(SLayoutSize::TryParse(row.text, &size));
  EXPECT_EQ(SStringW(row.canonical), size.toString());
  EXPECT_EQ(row.px100, size.toPixelSize(100));
  EXPECT_EQ(row.px150, size.toPixelSize(150));
}

INSTANTIATE_TEST_SUITE_P(
    Units, LayoutSizeParse,
    ::testing::Values(SizeRow{"dp", L"14dp", L"14dp", 14, 21},
                      SizeRow{"px", L"3px", L"3px", 3, 3},
                      SizeRow{"bare_number_is_px", L"7", L"7px", 7, 7},
                      SizeRow{"fraction_dp_rounds_half_up", L"1.5dp", L"1.5dp", 2, 2},
                      SizeRow{"dip_is_a_whole_unit", L"10dip", L"10dip", 10, 15},
                      SizeRow{"sp", L"12sp", L"12sp", 12, 18},
                      SizeRow{"fraction_px_truncates", L"2.9px", L"2.9px", 2, 2},
                      SizeRow{"blanks_and_upper_case", L"  8DP ", L"8dp", 8, 12},
                      SizeRow{"small_dp_rounds_to_zero", L"0.3dp", L"0.3dp", 0, 0},
                      SizeRow{"odd_dp_rounds_up_at_150", L"3dp", L"3dp", 3, 5},
                      SizeRow{"negative", L"-4dp", L"-4dp", -4, -6}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(LayoutSize, RoundsDpAtEveryZoom) {
  // floor(v*scale/100 + 0.5) at the zooms the host offers.
  const SLayoutSize three = SLayoutSize::Parse(L"3dp");
  EXPECT_EQ(4, three.toPixelSize(125));  // 3.75
  EXPECT_EQ(6, three.toPixelSize(200));
  EXPECT_EQ(8, three.toPixelSize(250));  // 7.5
  const SLayoutSize px = SLayoutSize::Parse(L"3px");
  EXPECT_EQ(3, px.toPixelSize(250));
}

TEST(LayoutSize, WholeDpMatchesTheRoundedProductAtAnyZoom) {
  // Whole numbers are scaled in integers; halves and odd zooms must round
  // as floor(v*scale/100 + 0.5) does.
  for (int scale : {0, 1, 33, 50, 75, 100, 125, 150, 175, 200, 250, 300, 999, 10000}) {
    for (int v : {0, 1, 2, 3, 5, 7, 11, 99, 101, 333, 1001, 4097, 1000000}) {
      const double want = std::floor(static_cast<double>(v) * scale / 100.0 + 0.5);
      if (want > (1 << 26)) continue;  // clamped; HugeValuesScaleWithoutOverflow
      EXPECT_EQ(static_cast<int>(want), SLayoutSize(static_cast<float>(v), LayoutUnit::Dp).toPixelSize(scale))
          << v << "dp at " << scale;
    }
  }
}

TEST(LayoutSize, RejectsWhatIsNotANumberWithAUnit) {
  for (const wchar_t* bad : {L"", L"   ", L"dp", L"px", L"abc", L"1e3", L"nan", L"inf", L"1.2.3",
                             L"--1", L"0x10", L"1,5", L"5pt", L"10ip", L"@dim/gap",
                             L"99999999999999999999999", L"1.5.dp"}) {
    SLayoutSize size(42.f, LayoutUnit::Sp);
    EXPECT_FALSE(SLayoutSize::TryParse(bad, &size)) << SStringW(bad).ToUtf8();
    EXPECT_EQ(SStringW(L"42sp"), size.toString()) << "left untouched";
    // The lenient form reads them as nothing at all.
    EXPECT_EQ(0, SLayoutSize::Parse(bad).toPixelSize(200)) << SStringW(bad).ToUtf8();
  }
}

TEST(LayoutSize, HugeValuesScaleWithoutOverflow) {
  const SLayoutSize big(1e6f, LayoutUnit::Dp);
  const int px = big.toPixelSize(300);
  EXPECT_GT(px, 1000000);
  EXPECT_LT(px, INT32_MAX / 4);
  EXPECT_EQ(0, SLayoutSize(std::nanf(""), LayoutUnit::Dp).toPixelSize(150));
}

// ---- SouiLayoutParam: rejected values change nothing -------------------------------

// Everything the attributes can change, as text.
std::string Describe(const SouiLayoutParam& lp) {
  std::string out = "pos" + std::to_string(lp.PosCount()) + ":";
  for (int i = 0; i < lp.PosCount(); ++i) {
    const PosItem& p = lp.Pos(i);
    out += std::to_string(static_cast<int>(p.ref)) + (p.minus ? "-" : "+") +
           p.offset().toString().ToUtf8() + " ";
  }
  out += "off:" + std::to_string(lp.OffsetX()) + "," + std::to_string(lp.OffsetY());
  out += " w:" + lp.GetSpecifiedSize(Orientation::Horz).toString().ToUtf8();
  out += " h:" + lp.GetSpecifiedSize(Orientation::Vert).toString().ToUtf8();
  return out;
}

struct BadRow {
  const char* label;
  const wchar_t* name;
  std::wstring value;
};

void PrintTo(const BadRow& row, std::ostream* os) { *os << row.label; }

class LayoutParamRejects : public ::testing::TestWithParam<BadRow> {};

TEST_P(LayoutParamRejects, ReturnsFalseAndKeepsEverything) {
  SouiLayoutParam lp;
  ASSERT_TRUE(lp.SetAttribute(L"pos", L"[5,{6,@70,-8"));
  ASSERT_TRUE(lp.SetAttribute(L"offset", L"-0.5,0.25"));
  const std::string before = Describe(lp);

  EXPECT_FALSE(lp.SetAttribute(GetParam().name, GetParam().value.c_str()));
  EXPECT_EQ(before, Describe(lp));
}

INSTANTIATE_TEST_SUITE_P(
    BadValues, LayoutParamRejects,
    ::testing::Values(
        BadRow{"pos_empty", L"pos", L""}, BadRow{"pos_one_item", L"pos", L"10"},
        BadRow{"pos_three_items", L"pos", L"1,2,3"}, BadRow{"pos_five_items", L"pos", L"1,2,3,4,5"},
        BadRow{"pos_size_in_x1", L"pos", L"@10,0"}, BadRow{"pos_size_in_y1", L"pos", L"0,@10,5,5"},
        BadRow{"pos_letters", L"pos", L"a,b"}, BadRow{"pos_empty_items", L"pos", L"1,,2,3"},
        BadRow{"pos_double_minus", L"pos", L"--1,0"}, BadRow{"pos_prefix_alone", L"pos", L"[,0"},
        BadRow{"pos_minus_alone", L"pos", L"-,0"}, BadRow{"pos_two_prefixes", L"pos", L"[|4,0"},
        BadRow{"pos_nan", L"pos", L"0,0,nan,5"}, BadRow{"pos_exponent", L"pos", L"1e5,0"},
        BadRow{"pos_huge", L"pos", L"99999999999,0"}, BadRow{"pos_hex", L"pos", L"0x10,0"},
        BadRow{"pos_thousands_of_commas", L"pos", std::wstring(5000, L',')},
        BadRow{"pos_thousands_of_items", L"pos", [] {
                 std::wstring s = L"1";
                 for (int i = 0; i < 3000; ++i) s += L",1";
                 return s;
               }()},
        BadRow{"offset_one", L"offset", L"0.5"}, BadRow{"offset_three", L"offset", L"1,2,3"},
        BadRow{"offset_nan", L"offset", L"nan,0"}, BadRow{"offset_inf", L"offset", L"0,inf"},
        BadRow{"offset_unit", L"offset", L"1dp,0"}, BadRow{"offset_empty", L"offset", L","},
        BadRow{"size_one", L"size", L"10"}, BadRow{"size_three", L"size", L"1,2,3"},
        BadRow{"size_half_bad", L"size", L"10,abc"},
        BadRow{"size_underscored_keyword", L"size", L"match_parent,10"},
        BadRow{"width_underscored_keyword", L"width", L"match_parent"},
        BadRow{"height_underscored_keyword", L"height", L"wrap_content"},
        BadRow{"width_negative", L"width", L"-3"}, BadRow{"width_negative_fraction", L"width", L"-1.5"},
        BadRow{"width_garbage", L"width", L"wide"}, BadRow{"height_empty", L"height", L""},
        BadRow{"height_huge", L"height", L"1234567890123"},
        BadRow{"unknown_name", L"posx", L"0,0"}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(LayoutParam, SurvivesRandomText) {
  // Deterministic noise over the characters the syntax uses: every call
  // either succeeds or leaves the parameter as it was.
  const wchar_t alphabet[] = L"0123456789-.,|%[]{}@dpxsi ";
  const wchar_t* names[] = {L"pos", L"offset", L"size", L"width", L"height"};
  uint32_t seed = 12345;
  auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 8; };
  SouiLayoutParam lp;
  for (int round = 0; round < 20000; ++round) {
    std::wstring value;
    const int len = static_cast<int>(next() % 24);
    for (int i = 0; i < len; ++i) value += alphabet[next() % (sizeof(alphabet) / sizeof(wchar_t) - 1)];
    const std::string before = Describe(lp);
    if (!lp.SetAttribute(names[next() % 5], value.c_str())) {
      ASSERT_EQ(before, Describe(lp)) << SStringW(value).ToUtf8();
    }
  }
}

// ---- window trees: golden dumps ------------------------------------------------------

const CRect kRoot(0, 0, 400, 300);

// "name l,t,r,b" per window, depth first, one a line.
void DumpChildren(const SWindow* parent, std::string* out) {
  for (SWindow* c = parent->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    const CRect& rc = c->GetWindowRect();
    *out += c->GetName().ToUtf8() + " " + std::to_string(rc.left) + "," + std::to_string(rc.top) +
            "," + std::to_string(rc.right) + "," + std::to_string(rc.bottom) + "\n";
    DumpChildren(c, out);
  }
}

// Builds the children of a 400x300 root at the given zoom, lays them out and
// dumps them.
std::string LayOut(const wchar_t* xml, int zoom = 100) {
  SApplication app;
  app.SetZoom(zoom);
  SWindow root;
  EXPECT_TRUE(root.CreateChildren(xml));
  root.Move(&kRoot);
  root.UpdateLayout();
  std::string out;
  DumpChildren(&root, &out);
  return out;
}

struct TreeRow {
  const char* label;
  int zoom;
  const wchar_t* xml;
  const char* expected;
};

void PrintTo(const TreeRow& row, std::ostream* os) { *os << row.label; }

class LayoutTree : public ::testing::TestWithParam<TreeRow> {};

TEST_P(LayoutTree, ChildrenLandWhereTheUserExpects) {
  EXPECT_EQ(GetParam().expected, LayOut(GetParam().xml, GetParam().zoom));
}

INSTANTIATE_TEST_SUITE_P(
    Golden, LayoutTree,
    ::testing::Values(
        TreeRow{"every_prefix", 100,
                L"<window name='a' pos='10,10,@100,@50'/>"
                L"<window name='b' pos='[5,{0,@50,@50'/>"     // right of a, a's top
                L"<window name='c' pos='{0,[5,@30,@30'/>"     // b's left, under b
                L"<window name='d' pos='-110,-60,-10,-10'/>"  // from the far edges
                L"<window name='e' pos='|-20,|-10,|20,|10'/>" // around the centre
                L"<window name='f' pos='%25,%10,%-25,%-10'/>"
                L"<window name='g' pos='0,0,-0,-0'/>",
                "a 10,10,110,60\n"
                "b 115,10,165,60\n"
                "c 115,65,145,95\n"
                "d 290,240,390,290\n"
                "e 180,140,220,160\n"
                "f 100,30,300,270\n"
                "g 0,0,400,300\n"},
        TreeRow{"next_sibling_references", 100,
                L"<window name='a' pos=']-60,}-20,@50,@20'/>"  // before b, bottom-aligned
                L"<window name='b' pos='200,100,@40,@30'/>"
                L"<window name='c' pos=']-30,}-30' size='20,20'/>",  // no next: parent's far edge
                "a 140,110,190,130\n"
                "b 200,100,240,130\n"
                "c 370,270,390,290\n"},
        TreeRow{"far_edge_from_next_sibling", 100,
                L"<window name='l' pos='10,200,]-10,@20'/>"
                L"<window name='r' pos='300,200,-10,@20'/>",
                "l 10,200,290,220\n"
                "r 300,200,390,220\n"},
        TreeRow{"dp_at_100", 100,
                L"<window name='a' pos='10dp,10dp,@100dp,@20dp'/>"
                L"<window name='b' pos='[5dp,{0,@10dp,@10dp'/>"
                L"<window name='c' pos='-10,0,@10,@10'/>"
                L"<window name='d' pos='-10dp,-10dp,-0,-0'/>",
                "a 10,10,110,30\n"
                "b 115,10,125,20\n"
                "c 390,0,400,10\n"
                "d 390,290,400,300\n"},
        TreeRow{"dp_at_150", 150,  // same tree: dp scales, px does not
                L"<window name='a' pos='10dp,10dp,@100dp,@20dp'/>"
                L"<window name='b' pos='[5dp,{0,@10dp,@10dp'/>"
                L"<window name='c' pos='-10,0,@10,@10'/>"
                L"<window name='d' pos='-10dp,-10dp,-0,-0'/>",
                "a 15,15,165,45\n"
                "b 173,15,188,30\n"
                "c 390,0,400,10\n"
                "d 385,285,400,300\n"},
        TreeRow{"offsets", 100,
                L"<window name='a' pos='|0,|0,@100,@40' offset='-0.5,-0.5'/>"  // centred
                L"<window name='b' pos='[0,{0,@10,@10'/>"       // sees a after its offset
                L"<window name='c' pos='-10,0,@60,@20' offset='-1,0'/>"  // right-aligned
                L"<window name='d' pos='200,250,@41,@41' offset='-0.5,-0.5'/>"  // -20.5 truncates
                L"<window name='e' pos=']0,280,@10,@10'/>"  // waits for f's offset
                L"<window name='f' pos='100,280,]0,@10' offset='-0.5,0'/>"  // which waits for g
                L"<window name='g' pos='140,280,@10,@10'/>",
                "a 150,130,250,170\n"
                "b 250,130,260,140\n"
                "c 330,0,390,20\n"
                "d 180,230,221,271\n"
                "e 80,280,90,290\n"
                "f 80,280,120,290\n"
                "g 140,280,150,290\n"},
        TreeRow{"percent", 100,
                L"<window name='a' pos='%50,%50' size='10,10'/>"
                L"<window name='b' pos='%0,%0,%150,%33.3'/>",  // clamped to 100; truncated
                "a 200,150,210,160\n"
                "b 0,0,400,99\n"},
        TreeRow{"content_sizes", 100,
                L"<window name='box' pos='10,10,@-1,@-1'>"
                L"  <window name='in' pos='5,5,@30,@20'/>"
                L"  <window name='gap' pos='[0,0,-15,@10'/>"  // asks 15 beyond its edge
                L"</window>"
                L"<window name='box2' pos='10,100,@-1,@-1'>"
                L"  <window name='btn' pos='-10,0,@20,@20' offset='-1,0'/>"
                L"</window>"
                L"<window name='box3' pos='100,100,@-1,@-1'>"
                L"  <window name='bar' pos='0,0,-0,@4'/>"  // match_parent in a wrap parent
                L"  <window name='body' pos='0,[0,@40,@10'/>"
                L"</window>",
                "box 10,10,60,35\n"
                "in 15,15,45,35\n"
                "gap 45,10,45,20\n"
                "box2 10,100,40,120\n"
                "btn 10,100,30,120\n"
                "box3 100,100,140,114\n"
                "bar 100,100,140,104\n"
                "body 100,104,140,114\n"},
        TreeRow{"attribute_order", 100,
                L"<window name='a' width='50' pos='0,0,100,100'/>"  // pos rewrites width
                L"<window name='b' pos='0,0,100,100' width='50'/>"  // width beats x2
                L"<window name='c' size='30,40' pos='0,0,@10,@10'/>"
                L"<window name='d' pos='0,0,@10,@10' size='30,40'/>"
                L"<window name='e' pos='0,0,-0,-0' height='20'/>"
                L"<window name='f' height='20' pos='0,0,-0,-0'/>",
                "a 0,0,100,100\n"
                "b 0,0,50,100\n"
                "c 0,0,10,10\n"
                "d 0,0,30,40\n"
                "e 0,0,400,20\n"
                "f 0,0,400,300\n"},
        TreeRow{"flow_without_pos", 100,
                L"<window name='a' size='50,20'/>"
                L"<window name='b' size='30,10'/>"  // right of a, top-aligned
                L"<window name='c' pos='10,100' size='20,20'/>"
                L"<window name='d' width='full' height='10'/>",
                "a 0,0,50,20\n"
                "b 50,0,80,10\n"
                "c 10,100,30,120\n"
                "d 30,100,400,110\n"},
        TreeRow{"invisible_keeps_its_space", 100,
                L"<window name='a' pos='0,0,@50,@10'/>"
                L"<window name='b' visible='0' pos='[0,0,@50,@10'/>"
                L"<window name='c' pos='[0,0,@50,@10'/>",
                "a 0,0,50,10\n"
                "b 50,0,100,10\n"
                "c 100,0,150,10\n"},
        TreeRow{"undisplayed_gives_it_up", 100,
                L"<window name='a' pos='0,0,@50,@10'/>"
                L"<window name='b' visible='0' display='0' pos='[0,0,@50,@10'/>"
                L"<window name='c' pos='[0,0,@50,@10'/>",
                "a 0,0,50,10\n"
                "b 0,0,0,0\n"
                "c 50,0,100,10\n"},
        TreeRow{"parent_margin_and_padding", 100,
                L"<window name='p' pos='0,0,-0,-0' margin='2' padding='3,4'>"
                L"  <window name='fill' pos='0,0,-0,-0'/>"
                L"  <window name='corner' pos='-10,-10,@10,@10'/>"
                L"</window>",
                "p 0,0,400,300\n"
                "fill 5,6,395,294\n"
                "corner 385,284,395,294\n"},
        TreeRow{"cycles_are_pinned_in_document_order", 100,
                L"<window name='a' pos=']0,0,@10,@10'/>"   // a.left = b.left
                L"<window name='b' pos='{0,20,@10,@10'/>"  // b.left = a.left
                L"<window name='c' pos='0,40,]0,@10'/>"    // c.right = d.left
                L"<window name='d' pos='[0,40,@10,@10'/>"  // d.left = c.right
                L"<window name='e' pos='[5,{0' size='5,5'/>",
                "a 0,0,10,10\n"
                "b 0,20,10,30\n"
                "c 0,40,0,50\n"
                "d 0,40,10,50\n"
                "e 15,40,20,45\n"}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(LayoutTree, LongChainOfForwardReferencesResolves) {
  // Each child sits left of the next; only the last is anchored, so one
  // sweep resolves one child.
  std::wstring xml;
  const int n = 300;
  for (int i = 0; i < n - 1; ++i) xml += L"<window pos=']-10,0,@10,@10'/>";
  xml += L"<window name='last' pos='-10,0,@10,@10'/>";
  SApplication app;
  SWindow root;
  ASSERT_TRUE(root.CreateChildren(xml.c_str()));
  root.Move(&kRoot);
  root.UpdateLayout();
  EXPECT_EQ(CRect(400 - 10 * n, 0, 410 - 10 * n, 10), root.GetWindow(GSW_FIRSTCHILD)->GetWindowRect());
  EXPECT_EQ(CRect(390, 0, 400, 10), root.GetWindow(GSW_LASTCHILD)->GetWindowRect());
}

// Six sibling windows with random pos text drawn from *seed: two near items,
// then two far items unless the next draw divides by four_unless, and an
// offset when the next draw divides by offset_when.
template <size_t N, size_t F>
std::wstring RandomSiblings(const wchar_t* const (&nears)[N], const wchar_t* const (&fars)[F], unsigned four_unless,
                            unsigned offset_when, uint32_t* seed) {
  auto next = [seed] { return (*seed = *seed * 1103515245u + 12345u) >> 8; };
  std::wstring xml;
  for (int i = 0; i < 6; ++i) {
    xml += L"<window pos='";
    xml += nears[next() % N];
    xml += L",";
    xml += nears[next() % N];
    if (next() % four_unless) xml += SStringW(L",").str() + fars[next() % F] + L"," + fars[next() % F];
    xml += next() % offset_when == 0 ? L"' offset='-0.5,-1'/>" : L"'/>";
  }
  return xml;
}

TEST(LayoutTree, RandomPositionsAlwaysTerminate) {
  // Noise over the pos syntax for a handful of siblings: layout ends and
  // no rectangle is inside out.
  const wchar_t* items[] = {L"0", L"-0", L"10", L"-5", L"|3", L"%50", L"[0", L"{2", L"]1", L"}-4"};
  const wchar_t* fars[] = {L"@10", L"@-1", L"-0", L"]0", L"}0", L"[3", L"{0", L"|0", L"%-10"};
  uint32_t seed = 99;
  SApplication app;
  for (int round = 0; round < 200; ++round) {
    const std::wstring xml = RandomSiblings(items, fars, 2, 3, &seed);
    SWindow root;
    ASSERT_TRUE(root.CreateChildren(xml.c_str()));
    root.Move(&kRoot);
    root.UpdateLayout();
    for (SWindow* c = root.GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
      const CRect& rc = c->GetWindowRect();
      EXPECT_GE(rc.Width(), 0) << SStringW(xml).ToUtf8();
      EXPECT_GE(rc.Height(), 0) << SStringW(xml).ToUtf8();
    }
  }
}

TEST(LayoutTree, MixedPositionsKeepTheirRecordedRects) {
  // Children that settle in the first sweep mixed with forward references,
  // cycles, offsets, percent and centre, in a fixed and a content-sized
  // parent at two zooms. The checksum was recorded from the solver that
  // sweeps until nothing changes; shortcuts must land every child on the
  // same pixels.
  const wchar_t* nears[] = {L"10dp", L"-5", L"|3dp", L"%50", L"[4dp", L"{2", L"]1", L"}-4dp", L"[1.5dp", L"0"};
  const wchar_t* fars[] = {L"@120dp", L"@-1", L"-0", L"]0", L"}0", L"[3", L"{0", L"|0", L"%-10", L"@2.5dp", L"-7dp"};
  uint32_t seed = 7;
  auto children = [&] { return RandomSiblings(nears, fars, 4, 4, &seed); };
  uint64_t sum = 14695981039346656037u;  // FNV-1a over every dump
  for (int zoom : {100, 150}) {
    SApplication app;
    app.SetZoom(zoom);
    for (int round = 0; round < 150; ++round) {
      const std::wstring xml = L"<window name='wrap' pos='5,5'>" + children() + L"</window>" + children();
      SWindow root;
      ASSERT_TRUE(root.CreateChildren(xml.c_str()));
      root.Move(&kRoot);
      root.UpdateLayout();
      std::string dump;
      DumpChildren(&root, &dump);
      for (unsigned char c : dump) sum = (sum ^ c) * 1099511628211u;
    }
  }
  EXPECT_EQ(14909220184417913658u, sum);
}

}  // namespace
}  // namespace SOUI
