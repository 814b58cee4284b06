#include "framework/style_tables.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/attr_dispatch.h"
#include "framework/control_classes.h"
#include "soui/sapp.h"
#include "soui/stdctrls.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

SStringW W(const char* s) { return SStringW::FromUtf8(s); }

// ---- button codes: every cell as published ----

struct ButtonRow {
  const char* code;
  const char* skin;
  const char* normal;  // colour names in @color\style_button
  const char* hover;
  const char* pressed;
  const char* disabled;
  const char* font;
  int sizes[4];
};

const ButtonRow kButtonRows[] = {
    {"MB1_B", "skin_com_btn_bg_buy", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:14dp", {28, 76, 16, 16}},
    {"MB1_S", "skin_com_btn_bg_sell", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:14dp", {28, 76, 16, 16}},
    {"MB1_P", "skin_com_btn_bg_primary", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:14dp", {28, 76, 16, 16}},
    {"MB1_D", "skin_com_btn_bg_default", "skin_text_h1", "skin_text_h1", "skin_text_h1", "skin_text_disabled", "size:14dp", {28, 76, 16, 16}},
    {"MB1_W", "skin_com_btn_bg_default", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_text_disabled", "size:14dp", {28, 76, 16, 16}},
    {"TB1_D", "", "skin_text_h1", "skin_text_h1_hover", "skin_text_h1_pressed", "skin_text_h1_disable", "size:14dp", {20, 76, 12, 12}},
    {"TB1_H", "", "skin_text_highlight", "skin_text_highlight_hover", "skin_text_highlight_pressed", "skin_text_highlight_disable", "size:14dp", {20, 76, 12, 12}},
    {"TB1_L", "", "skin_text_link", "skin_text_link_hover", "skin_text_link_pressed", "skin_text_link_disabled", "size:14dp", {20, 76, 12, 12}},
    {"TB1_W", "", "skin_text_warn", "skin_text_warn_hover", "skin_text_warn_pressed", "skin_text_warn_disable", "size:14dp", {20, 76, 12, 12}},
    {"MB2_B", "skin_com_btn_bg_buy", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:13dp", {24, 74, 16, 16}},
    {"MB2_S", "skin_com_btn_bg_sell", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:13dp", {24, 74, 16, 16}},
    {"MB2_P", "skin_com_btn_bg_primary", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:13dp", {24, 74, 16, 16}},
    {"MB2_D", "skin_com_btn_bg_default", "skin_text_h1", "skin_text_h1", "skin_text_h1", "skin_text_disabled", "size:13dp", {24, 74, 16, 16}},
    {"MB2_W", "skin_com_btn_bg_default", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_text_disabled", "size:13dp", {24, 74, 16, 16}},
    {"TB2_D", "", "skin_text_h1", "skin_text_h1_hover", "skin_text_h1_pressed", "skin_text_h1_disable", "size:13dp", {19, 74, 12, 12}},
    {"TB2_H", "", "skin_text_highlight", "skin_text_highlight_hover", "skin_text_highlight_pressed", "skin_text_highlight_disable", "size:13dp", {19, 74, 12, 12}},
    {"TB2_L", "", "skin_text_link", "skin_text_link_hover", "skin_text_link_pressed", "skin_text_link_disabled", "size:13dp", {19, 74, 12, 12}},
    {"TB2_W", "", "skin_text_warn", "skin_text_warn_hover", "skin_text_warn_pressed", "skin_text_warn_disable", "size:13dp", {19, 74, 12, 12}},
    {"MB3_B", "skin_com_btn_bg_buy", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {20, 60, 12, 12}},
    {"MB3_S", "skin_com_btn_bg_sell", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {20, 60, 12, 12}},
    {"MB3_P", "skin_com_btn_bg_primary", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {20, 60, 12, 12}},
    {"MB3_D", "skin_com_btn_bg_default", "skin_text_h1", "skin_text_h1", "skin_text_h1", "skin_text_disabled", "size:10dp", {20, 60, 12, 12}},
    {"MB3_W", "skin_com_btn_bg_default", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_text_disabled", "size:10dp", {20, 60, 12, 12}},
    {"TB3_D", "", "skin_text_h1", "skin_text_h1_hover", "skin_text_h1_pressed", "skin_text_h1_disable", "size:12dp", {18, 60, 12, 12}},
    {"TB3_H", "", "skin_text_highlight", "skin_text_highlight_hover", "skin_text_highlight_pressed", "skin_text_highlight_disable", "size:12dp", {18, 60, 12, 12}},
    {"TB3_L", "", "skin_text_link", "skin_text_link_hover", "skin_text_link_pressed", "skin_text_link_disabled", "size:12dp", {18, 60, 12, 12}},
    {"TB3_W", "", "skin_text_warn", "skin_text_warn_hover", "skin_text_warn_pressed", "skin_text_warn_disable", "size:12dp", {18, 60, 12, 12}},
    {"MB4_B", "skin_com_btn_bg_buy", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {16, 60, 12, 12}},
    {"MB4_S", "skin_com_btn_bg_sell", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {16, 60, 12, 12}},
    {"MB4_P", "skin_com_btn_bg_primary", "skin_text_white", "skin_text_white", "skin_text_white", "skin_btn_text_primary", "size:10dp", {16, 60, 12, 12}},
    {"MB4_D", "skin_com_btn_bg_default", "skin_text_h1", "skin_text_h1", "skin_text_h1", "skin_text_disabled", "size:10dp", {16, 60, 12, 12}},
    {"MB4_W", "skin_com_btn_bg_default", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_bnt_text_warn", "skin_text_disabled", "size:10dp", {16, 60, 12, 12}},
    {"TB4_D", "", "skin_text_h1", "skin_text_h1_hover", "skin_text_h1_pressed", "skin_text_h1_disable", "size:10dp", {16, 60, 12, 12}},
    {"TB4_H", "", "skin_text_highlight", "skin_text_highlight_hover", "skin_text_highlight_pressed", "skin_text_highlight_disable", "size:10dp", {16, 60, 12, 12}},
    {"TB4_L", "", "skin_text_link", "skin_text_link_hover", "skin_text_link_pressed", "skin_text_link_disabled", "size:10dp", {16, 60, 12, 12}},
    {"TB4_W", "", "skin_text_warn", "skin_text_warn_hover", "skin_text_warn_pressed", "skin_text_warn_disable", "size:10dp", {16, 60, 12, 12}},
};

class ButtonStyleTable : public ::testing::TestWithParam<ButtonRow> {};

TEST_P(ButtonStyleTable, RecordHoldsThePublishedCells) {
  const ButtonRow& row = GetParam();
  QVButtonStylePtr rec = FindQVButtonStyle(W(row.code));
  ASSERT_NE(rec, nullptr);
  const SStringW prefix = L"@color\\style_button\\";
  EXPECT_EQ(rec->skin, W(row.skin));
  EXPECT_EQ(rec->color_normal, prefix + W(row.normal));
  EXPECT_EQ(rec->color_hover, prefix + W(row.hover));
  EXPECT_EQ(rec->color_pressed, prefix + W(row.pressed));
  EXPECT_EQ(rec->color_disabled, prefix + W(row.disabled));
  // The painting slots follow the state index: normal, hover, pressed, disabled.
  EXPECT_EQ(rec->colors[kQVColorTextNormal], rec->color_normal);
  EXPECT_EQ(rec->colors[kQVColorTextHover], rec->color_hover);
  EXPECT_EQ(rec->colors[kQVColorTextPressed], rec->color_pressed);
  EXPECT_EQ(rec->colors[kQVColorTextDisabled], rec->color_disabled);
  EXPECT_EQ(rec->font, W(row.font));
  EXPECT_FALSE(rec->keep_colors);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(rec->sizes[i], row.sizes[i]) << "size " << (i + 1);
  // Shared records: a second lookup hands out the same object.
  EXPECT_EQ(FindQVButtonStyle(W(row.code)).get(), rec.get());
}

INSTANTIATE_TEST_SUITE_P(AllCodes, ButtonStyleTable, ::testing::ValuesIn(kButtonRows),
                         [](const ::testing::TestParamInfo<ButtonRow>& info) { return std::string(info.param.code); });

TEST(ButtonStyleTableShape, HoldsExactlyThePublishedCodes) {
  EXPECT_EQ(QVButtonStyles().size(), std::size(kButtonRows));
}

// ---- text codes ----

struct TextRow {
  const char* code;
  const char* font;
  const char* color;  // name in @color\style_skin_qv_text
};

const TextRow kTextRows[] = {
    {"HR1", "size:12dp", "text_h1"},         {"HR2", "size:13dp", "text_h1"},
    {"HR3", "size:14dp", "text_h1"},         {"HR4", "size:16dp", "text_h1"},
    {"HR5", "size:20dp", "text_h1"},         {"HB1", "size:12dp,bold:1", "text_h1"},
    {"HB2", "size:16dp,bold:1", "text_h1"},  {"HB3", "size:22dp,bold:1", "text_h1"},
    {"HB4", "size:24dp,bold:1", "text_h1"},  {"T1", "size:10dp", "text_h2"},
    {"T2", "size:12dp", "text_h2"},          {"T3", "size:13dp", "text_h2"},
    {"T4", "size:14dp", "text_h2"},          {"T5", "size:16dp", "text_h2"},
    {"S1", "size:10dp", "text_h3"},          {"S2", "size:12dp", "text_h3"},
    {"S3", "size:13dp", "text_h3"},          {"S4", "size:14dp", "text_h3"},
    {"D1", "size:10dp", "text_disable"},     {"D2", "size:12dp", "text_disable"},
    {"D3", "size:13dp", "text_disable"},     {"D4", "size:14dp", "text_disable"},
    {"O1", "size:12dp", "text_portfolio"},   {"O2", "size:13dp", "text_portfolio"},
    {"B1", "size:10dp", "text_link_normal"}, {"B2", "size:12dp", "text_link_normal"},
    {"B3", "size:13dp", "text_link_normal"}, {"B4", "size:14dp", "text_link_normal"},
    {"F1", "size:10dp", "text_sell"},        {"F2", "size:12dp", "text_sell"},
    {"F3", "size:13dp", "text_sell"},        {"F4", "size:14dp", "text_sell"},
    {"W1", "size:10dp", "text_white"},       {"W2", "size:12dp", "text_white"},
    {"W3", "size:13dp", "text_white"},       {"W4", "size:14dp", "text_white"},
};

class TextStyleTable : public ::testing::TestWithParam<TextRow> {};

TEST_P(TextStyleTable, RecordHoldsThePublishedFontAndColour) {
  const TextRow& row = GetParam();
  const QVTextStyle* rec = FindQVTextStyle(W(row.code));
  ASSERT_NE(rec, nullptr);
  EXPECT_EQ(rec->font, W(row.font));
  EXPECT_EQ(rec->color, SStringW(L"@color\\style_skin_qv_text\\") + W(row.color));
}

INSTANTIATE_TEST_SUITE_P(AllCodes, TextStyleTable, ::testing::ValuesIn(kTextRows),
                         [](const ::testing::TestParamInfo<TextRow>& info) { return std::string(info.param.code); });

TEST(StyleTableShapes, SizesOfTheOtherTables) {
  EXPECT_EQ(QVTextStyles().size(), std::size(kTextRows));
  EXPECT_EQ(QVLinkStyles().size(), 5u);
  EXPECT_EQ(QVIconButtonStyles().size(), 6u);
  EXPECT_EQ(QVRedGreenFonts().size(), 12u);
  EXPECT_EQ(QVRedGreenFontPairs().size(), 12u);
  EXPECT_EQ(QVEditStyles().size(), 12u);
  EXPECT_EQ(QVEditComStyles().size(), 12u);
  EXPECT_EQ(QVEditMultiStyles().size(), 3u);
  EXPECT_EQ(QVPwdCellStyles().size(), 3u);
}

// ---- lookups are exact ----

struct LookupRow {
  const char* name;
  const wchar_t* code;
  bool text, button, icon;
};

class StyleLookup : public ::testing::TestWithParam<LookupRow> {};

TEST_P(StyleLookup, WholeCodeCaseSensitiveAndPerFamily) {
  const LookupRow& row = GetParam();
  EXPECT_EQ(FindQVTextStyle(row.code) != nullptr, row.text);
  EXPECT_EQ(FindQVButtonStyle(row.code) != nullptr, row.button);
  EXPECT_EQ(FindQVIconButtonStyle(row.code) != nullptr, row.icon);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, StyleLookup,
    ::testing::Values(LookupRow{"text", L"HR1", true, false, false}, LookupRow{"lower", L"hr1", false, false, false},
                      LookupRow{"button", L"MB1_B", false, true, false},
                      LookupRow{"button_lower_kind", L"MB1_b", false, false, false},
                      LookupRow{"prefix", L"MB1", false, false, false},
                      LookupRow{"trailing_blank", L"MB1_B ", false, false, false},
                      LookupRow{"no_TB_buy", L"TB1_B", false, false, false},
                      LookupRow{"no_MB5", L"MB5_B", false, false, false},
                      LookupRow{"icon", L"IB2_C", false, false, true},
                      LookupRow{"icon_wrong_letter", L"IB2_B", false, false, false},
                      LookupRow{"empty", L"", false, false, false}),
    [](const ::testing::TestParamInfo<LookupRow>& info) { return std::string(info.param.name); });

TEST(OtherStyleTables, CellsThatDifferFromTheirNeighbours) {
  // Icon buttons: the number names the place, the letter repeats it.
  EXPECT_EQ(FindQVIconButtonStyle(L"IB1_H")->skin, L"skin_qvstd_icon_bg_header_bar");
  EXPECT_EQ(FindQVIconButtonStyle(L"IB3_B")->skin, L"skin_qvstd_icon_bg_bar");
  EXPECT_EQ(FindQVIconButtonStyle(L"IB4_B")->skin, L"skin_qvstd_icon_bg_btn");
  EXPECT_EQ(FindQVIconButtonStyle(L"IB5_R")->skin, L"skin_qvstd_icon_bg_link_r");
  // Links: the underlined font puts underline first.
  EXPECT_EQ(FindQVLinkStyle(L"B5")->underline_font, L"underline:1,size:16dp");
  EXPECT_EQ(FindQVLinkStyle(L"B1")->font, L"size:10dp");
  // Red-green pairs: only RGR1 has the small second font.
  EXPECT_EQ(QVRedGreenFontPairs().at(L"RGR1"), std::make_pair(SStringW(L"size:10dp"), SStringW(L"size:10dp")));
  EXPECT_EQ(QVRedGreenFontPairs().at(L"RGB5"), std::make_pair(SStringW(L"size:24dp,bold:1"), SStringW(L"size:12dp")));
  EXPECT_EQ(QVRedGreenFonts().at(L"RGR6"), L"size:22dp");
  // Edits: MI1 and NIO1 narrow the padding, UI the underline, composite records carry no font.
  EXPECT_EQ(FindQVEditStyle(L"MI1")->padding, L"6dp,0dp,6dp,0dp");
  EXPECT_EQ(FindQVEditStyle(L"MI2")->padding, L"8dp,0dp,8dp,0dp");
  EXPECT_EQ(FindQVEditStyle(L"UI3")->skin, L"skin_edit_std_input_underline");
  EXPECT_EQ(FindQVEditStyle(L"NIO1")->height, L"18dp");
  EXPECT_EQ(FindQVEditStyle(L"NI1")->font, L"size:11dp");
  EXPECT_TRUE(FindQVEditComStyle(L"NIC2")->font.IsEmpty());
  EXPECT_EQ(FindQVEditComStyle(L"UIC1")->padding, L"0dp,0dp,0dp,0dp");
  EXPECT_EQ(FindQVEditStyle(L"NIC1"), nullptr);
  // Password cells.
  EXPECT_EQ(QVPwdCellStyles().at(L"PI2").cell_size2, L"40dp");
  EXPECT_EQ(QVPwdCellStyles().at(L"PI3").font, L"size:24dp");
}

TEST(ButtonStyleAttributes, TextButtonsCarryNoSkin) {
  // So applying a text style leaves an earlier skin alone.
  const auto tb = FindQVButtonStyle(L"TB4_L")->Attributes();
  ASSERT_EQ(tb.size(), 1u);
  EXPECT_EQ(tb[0].first, L"font");
  const auto mb = FindQVButtonStyle(L"MB3_P")->Attributes();
  ASSERT_EQ(mb.size(), 2u);
  EXPECT_EQ(mb[0], std::make_pair(SStringW(L"skin"), SStringW(L"skin_com_btn_bg_primary")));
  EXPECT_EQ(mb[1], std::make_pair(SStringW(L"font"), SStringW(L"size:10dp")));
}

// ---- text style precedence: a minimal text control that applies at once ----

class TestQVText : public SOUI::SStatic {
  SOUI_CLASS_NAME(TestQVText, SOUI::SStatic, L"test_qv_text")
 public:
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override {
    static const QVAttrEntry<TestQVText> kAttrs[] = {{L"qvstyle", &TestQVText::OnAttrQVStyle}};
    static const QVAdmittedAttrs kAdmitted = {L"font", L"colorText"};
    return QVDispatchAttribute<TestQVText, SOUI::SStatic>(this, kAttrs, &kAdmitted, name, value, loading);
  }
  HRESULT OnAttrQVStyle(const SStringW& value, BOOL loading) {
    return ApplyQVTextStyle(this, value, loading, &applied);
  }
  QVTextStyle applied;
};

class TextStylePrecedence : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    // The style's colour references must resolve to be taken.
    app_->GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    app_->GetFactory().RegisterWindowClass<TestQVText>();
  }
  TestQVText* Text(const wchar_t* name) { return Find<TestQVText>(name); }
};

TEST_F(TextStylePrecedence, DocumentOrderDecides) {
  CreateHostWithChildren(
      L"<test_qv_text name=\"after\" qvstyle=\"HB2\" font=\"size:30dp\" colorText=\"#112233\"/>"
      L"<test_qv_text name=\"before\" font=\"size:30dp\" colorText=\"#112233\" qvstyle=\"HB2\"/>"
      L"<test_qv_text name=\"unknown\" font=\"size:30dp\" qvstyle=\"MB1_B\"/>");
  // An attribute after the code overrides the style...
  EXPECT_EQ(Text(L"after")->GetStyle().font[0].Source(), L"size:30dp");
  EXPECT_EQ(Text(L"after")->GetStyle().colorText[0].Source(), L"#112233");
  // ...one before it is overwritten.
  EXPECT_EQ(Text(L"before")->GetStyle().font[0].Source(), L"size:16dp,bold:1");
  EXPECT_EQ(Text(L"before")->GetStyle().colorText[0].Source(), L"@color\\style_skin_qv_text\\text_h1");
  EXPECT_EQ(Text(L"before")->applied.font, L"size:16dp,bold:1");
  // A button code on a text control changes nothing.
  EXPECT_EQ(Text(L"unknown")->GetStyle().font[0].Source(), L"size:30dp");
  EXPECT_FALSE(Text(L"unknown")->GetStyle().colorText[0].IsSet());
  EXPECT_TRUE(Text(L"unknown")->applied.font.IsEmpty());
}

TEST_F(TextStylePrecedence, LoadingFlagReachesTheSetter) {
  CreateHostWithChildren(L"<test_qv_text name=\"t\" text=\"x\"/>");
  TestQVText* t = Text(L"t");
  Layout();
  host()->Render();
  // Outside loading the style's font is a real change: the text repaints.
  t->SetAttribute(L"qvstyle", L"T5", FALSE);
  EXPECT_FALSE(host()->GetDirtyRect().IsRectEmpty());
  EXPECT_EQ(t->GetStyle().font[0].Source(), L"size:16dp");
}

TEST(StyleColours, ReferencesResolveAgainstTheThemeAndUnknownIsUnset) {
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  COLORREF white = ResolveQVStyleColor(L"@color\\style_button\\skin_text_white");
  EXPECT_EQ(white, ::RGBA(0xFF, 0xFF, 0xFF, 0xFF));
  EXPECT_EQ(ResolveQVStyleColor(L""), ::CR_INVALID);
  EXPECT_EQ(ResolveQVStyleColor(L"@color\\style_button\\no_such_colour"), ::CR_INVALID);
}

// Rich text's qv_text runs reach the text style table through the hook the
// library installs when it registers its controls.
TEST_F(TextStylePrecedence, RegistrationInstallsTheRichTextStyleHook) {
  RegisterQVStandardCtrls(app_->GetFactory());
  const auto& resolve = app_->GetTextStyleResolver();
  ASSERT_TRUE(resolve);
  SOUI::SStringW font, color;
  ASSERT_TRUE(resolve(L"HB2", &font, &color));
  EXPECT_EQ(font, L"size:16dp,bold:1");
  EXPECT_EQ(color, L"@color\\style_skin_qv_text\\text_h1");
  EXPECT_FALSE(resolve(L"NOPE", &font, &color));
  EXPECT_EQ(font, L"size:16dp,bold:1");  // untouched on a miss
}

}  // namespace
}  // namespace QVStandardCtrls
