#include "display/buttons.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "framework/control_classes.h"
#include "backends/cairo_render.h"
#include "testing/png_compare.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CRect;
using SOUI::CSize;
using SOUI::SStringW;

// A solid icon of a fixed size that counts how often it is drawn.
class CountingSkin : public SOUI::ISkinObj {
 public:
  CountingSkin(int cx, int cy, COLORREF color, std::shared_ptr<int> draws)
      : cx_(cx), cy_(cy), color_(color), draws_(std::move(draws)) {}
  void DrawByIndex(SOUI::IRenderTarget* rt, LPCRECT rc, int, BYTE) const override {
    ++*draws_;
    rt->FillSolidRect(rc, color_);
  }
  SIZE GetSkinSize() const override { return SIZE{cx_ * scale_ / 100, cy_ * scale_ / 100}; }
  int GetStates() const override { return 1; }
  SOUI::ISkinObjPtr Scale(int scale) const override {
    auto s = std::make_shared<CountingSkin>(cx_, cy_, color_, draws_);
    s->scale_ = scale;
    return s;
  }

 private:
  int cx_, cy_;
  COLORREF color_;
  std::shared_ptr<int> draws_;
};

class ButtonsTest : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    auto& res = app_->GetResProvider();
    res.LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    res.AddSkin(L"test_open", std::make_shared<CountingSkin>(20, 10, RGBA(0x2F, 0x6B, 0xFF, 0xFF), open_draws_));
    res.AddSkin(L"test_close", std::make_shared<CountingSkin>(12, 8, RGBA(0x86, 0x90, 0x9C, 0xFF), close_draws_));
    RegisterQVStandardCtrls(app_->GetFactory());
  }
  CQVButton* Button(const wchar_t* name) { return Find<CQVButton>(name); }
  // What the window would draw, on a recording target.
  std::string Paint(SOUI::SWindow* w) {
    SOUI::RecordingRenderTarget rt(400, 300);
    w->RedrawRegion(&rt, w->GetWindowRect());
    return rt.Dump();
  }
  static SStringW Font(SOUI::SWindow* w) { return w->GetStyle().font[0].Source(); }

  std::shared_ptr<int> open_draws_ = std::make_shared<int>(0);
  std::shared_ptr<int> close_draws_ = std::make_shared<int>(0);
};

// ---- style precedence --------------------------------------------------------------

TEST_F(ButtonsTest, StyleWinsOverTheElementsOwnAttributesWhileLoading) {
  CreateHostWithChildren(
      L"<qv_button name=\"b\" text=\"Buy\" skin=\"skin_com_btn_bg_sell\" qvstyle=\"MB1_B\" font=\"size:30dp\""
      L" height=\"50dp\" padding_left=\"10dp\" padding_right=\"10dp\" padding_top=\"2dp\"/>");
  CQVButton* b = Button(L"b");
  ASSERT_NE(b, nullptr);
  // The style's skin, font and height replace what the element said, though
  // they stand on both sides of qvstyle.
  EXPECT_EQ(b->GetAttribute(L"skin"), L"skin_com_btn_bg_buy");
  EXPECT_EQ(Font(b), L"size:14dp");
  EXPECT_EQ(b->GetWindowRect().Height(), 28);
  // Side paddings are always 4dp after loading; the others are the element's.
  const CRect pad = b->GetStyle().GetPadding(100);
  EXPECT_EQ(pad, CRect(4, 2, 4, 0));
  EXPECT_EQ(b->GetStyleColor(kQVColorTextNormal), RGBA(0xFF, 0xFF, 0xFF, 0xFF));
}

TEST_F(ButtonsTest, RuntimeAttributesAfterTheStyleWinAndALaterStyleWinsAgain) {
  CreateHostWithChildren(L"<qv_button name=\"b\" text=\"Buy\" qvstyle=\"MB1_B\"/>");
  CQVButton* b = Button(L"b");
  b->SetAttribute(L"font", L"size:30dp", FALSE);
  EXPECT_EQ(Font(b), L"size:30dp");
  Layout();
  // A code set outside loading applies at once and asks for a layout.
  b->SetAttribute(L"qvstyle", L"MB2_S", FALSE);
  EXPECT_TRUE(b->IsLayoutDirty());
  EXPECT_EQ(Font(b), L"size:13dp");
  EXPECT_EQ(b->GetAttribute(L"skin"), L"skin_com_btn_bg_sell");
  Layout();
  EXPECT_EQ(b->GetWindowRect().Height(), 24);
}

TEST_F(ButtonsTest, AStyleReplacesOnlyWhatItCarries) {
  CreateHostWithChildren(L"<qv_button name=\"b\" text=\"Go\" qvstyle=\"MB1_B\"/>");
  CQVButton* b = Button(L"b");
  b->SetAttribute(L"qvstyle", L"MB1_W", FALSE);
  EXPECT_EQ(b->GetAttribute(L"skin"), L"skin_com_btn_bg_default");
  EXPECT_EQ(b->GetStyleColor(kQVColorTextNormal), RGBA(0xF2, 0x3B, 0x3B, 0xFF));  // skin_bnt_text_warn
  // A text style has no skin: the default-button frame stays.
  b->SetAttribute(L"qvstyle", L"TB4_L", FALSE);
  EXPECT_EQ(b->GetAttribute(L"skin"), L"skin_com_btn_bg_default");
  EXPECT_EQ(Font(b), L"size:10dp");
  EXPECT_EQ(b->GetStyleColor(kQVColorTextHover), RGBA(0x5B, 0x8C, 0xFF, 0xFF));
  Layout();
  EXPECT_EQ(b->GetWindowRect().Height(), 16);
}

TEST_F(ButtonsTest, SameFontDifferentHeight) {
  CreateHostWithChildren(L"<qv_button name=\"b3\" qvstyle=\"MB3_B\" text=\"a\"/>"
                         L"<qv_button name=\"b4\" qvstyle=\"MB4_B\" text=\"a\" pos=\"0,40\"/>");
  EXPECT_EQ(Font(Button(L"b3")), Font(Button(L"b4")));
  EXPECT_EQ(Button(L"b3")->GetWindowRect().Height(), 20);
  EXPECT_EQ(Button(L"b4")->GetWindowRect().Height(), 16);
}

struct ForeignCodeRow {
  const char* name;
  const wchar_t* tag;
  const wchar_t* code;
};

class ForeignCodes : public ButtonsTest, public ::testing::WithParamInterface<ForeignCodeRow> {};

TEST_P(ForeignCodes, ChangeNothingButAreStored) {
  const ForeignCodeRow& row = GetParam();
  const SStringW xml = SStringW(L"<") + row.tag +
                       L" name=\"w\" skin=\"skin_com_btn_bg_sell\" font=\"size:30dp\" height=\"40dp\" qvstyle=\"" +
                       row.code + L"\"/>";
  CreateHostWithChildren(xml);
  auto* w = Find<CQVButtonBase>(L"w");
  ASSERT_NE(w, nullptr);
  // At load...
  EXPECT_EQ(w->GetAttribute(L"skin"), L"skin_com_btn_bg_sell");
  EXPECT_EQ(Font(w), L"size:30dp");
  EXPECT_EQ(w->GetWindowRect().Height(), 40);
  // ...and at run time.
  w->SetAttribute(L"qvstyle", row.code, FALSE);
  EXPECT_EQ(w->GetAttribute(L"skin"), L"skin_com_btn_bg_sell");
  EXPECT_EQ(Font(w), L"size:30dp");
  EXPECT_EQ(w->GetQVStyle(), row.code);
  EXPECT_EQ(w->GetAppliedStyle(), nullptr);
  EXPECT_EQ(w->GetStyleColor(kQVColorTextNormal), CR_INVALID);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, ForeignCodes,
    ::testing::Values(ForeignCodeRow{"text_code_on_button", L"qv_button", L"HR1"},
                      ForeignCodeRow{"lower_case", L"qv_button", L"mb1_b"},
                      ForeignCodeRow{"icon_code_on_button", L"qv_button", L"IB2_C"},
                      ForeignCodeRow{"button_code_on_icon", L"qv_icon_button", L"MB1_B"},
                      ForeignCodeRow{"unknown", L"qv_switch_button", L"ZZ9"}),
    [](const ::testing::TestParamInfo<ForeignCodeRow>& info) { return std::string(info.param.name); });

TEST_F(ButtonsTest, IconButtonTakesIconCodes) {
  CreateHostWithChildren(L"<qv_icon_button name=\"i\" qvstyle=\"IB2_C\" skin=\"skin_qvstd_icon_bg_btn\"/>");
  EXPECT_EQ(Find<QVIconButton>(L"i")->GetAttribute(L"skin"), L"skin_qvstd_icon_bg_close");
}

TEST_F(ButtonsTest, EmptyCodeOutsideLoadingNeitherAppliesNorRelays) {
  CreateHostWithChildren(L"<qv_button name=\"b\" text=\"x\" qvstyle=\"MB1_B\"/>");
  CQVButton* b = Button(L"b");
  Layout();
  b->SetAttribute(L"qvstyle", L"", FALSE);
  EXPECT_FALSE(b->IsLayoutDirty());
  EXPECT_TRUE(b->GetQVStyle().IsEmpty());
  EXPECT_EQ(Font(b), L"size:14dp");
}

// ---- admitted and dropped attributes --------------------------------------------------

struct AttrRow {
  const char* name;
  const wchar_t* attr;
  const wchar_t* value;
  bool reaches_toolkit;
};

class ButtonAttributes : public ButtonsTest, public ::testing::WithParamInterface<AttrRow> {};

TEST_P(ButtonAttributes, OnlyAdmittedNamesReachTheToolkit) {
  const AttrRow& row = GetParam();
  CreateHostWithChildren(L"<qv_button name=\"b\"/>");
  CQVButton* b = Button(L"b");
  // Names it neither handles nor admits are refused as unknown.
  EXPECT_EQ(b->SetAttribute(row.attr, row.value, FALSE) == E_NOTIMPL, !row.reaches_toolkit);
  EXPECT_EQ(b->GetAttribute(row.attr) == row.value, row.reaches_toolkit);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ButtonAttributes,
    ::testing::Values(AttrRow{"skin", L"skin", L"skin_com_btn_bg_buy", true},
                      AttrRow{"Skin_wrong_case", L"Skin", L"skin_com_btn_bg_buy", false},
                      AttrRow{"focusSkin", L"focusSkin", L"skin_com_btn_bg_buy", true},
                      AttrRow{"colorText", L"colorText", L"#FF0000", false},
                      AttrRow{"colorTextHover", L"colorTextHover", L"#FF0000", false},
                      AttrRow{"fontHover", L"fontHover", L"size:20dp", false},
                      AttrRow{"font", L"font", L"size:20dp", true},
                      AttrRow{"FONT_wrong_case", L"FONT", L"size:20dp", false},
                      AttrRow{"margin_x", L"margin-x", L"2", true},
                      AttrRow{"padding_bottom", L"padding_bottom", L"3dp", true},
                      AttrRow{"alpha", L"alpha", L"128", false},
                      AttrRow{"cursor", L"cursor", L"hand", false},
                      AttrRow{"text_is_structural", L"text", L"Buy", true},
                      AttrRow{"width_is_structural", L"width", L"80", true},
                      AttrRow{"enable_is_structural", L"enable", L"0", true},
                      AttrRow{"unknown", L"nonsense", L"1", false}),
    [](const ::testing::TestParamInfo<AttrRow>& info) { return std::string(info.param.name); });

TEST_F(ButtonsTest, DroppedLookAttributesHaveNoEffect) {
  CreateHostWithChildren(L"<qv_button name=\"b\" colorText=\"#FF0000\" alpha=\"10\" text=\"x\"/>");
  CQVButton* b = Button(L"b");
  EXPECT_FALSE(b->GetStyle().colorText[0].IsSet());
  EXPECT_EQ(b->GetAlpha(), 0xFF);
  EXPECT_EQ(b->GetWindowText(), L"x");
}

// ---- painting and size of the text button ------------------------------------------------

TEST_F(ButtonsTest, TextButtonPaintsItsStateColours) {
  CreateHostWithChildren(
      L"<qv_button name=\"on\" text=\"Buy\" qvstyle=\"MB1_B\"/>"
      L"<qv_button name=\"off\" text=\"Buy\" qvstyle=\"MB1_B\" enable=\"0\" pos=\"0,40\"/>"
      L"<qv_button name=\"link\" text=\"More\" qvstyle=\"TB1_L\" pos=\"0,80\"/>");
  EXPECT_NE(Paint(Button(L"on")).find("\"Buy\" [16,0,60,28] fmt=0x8025 color=#FFFFFFFF font=14/400"), std::string::npos)
      << Paint(Button(L"on"));
  EXPECT_NE(Paint(Button(L"off")).find("color=#FFFFFFB3"), std::string::npos) << Paint(Button(L"off"));
  // Hover switches to the hover colour of the link kind.
  gen().MoveMouseToCenterOf(Button(L"link"));
  EXPECT_NE(Paint(Button(L"link")).find("\"More\" [12,80,64,100]"), std::string::npos) << Paint(Button(L"link"));
  EXPECT_NE(Paint(Button(L"link")).find("color=#5B8CFFFF"), std::string::npos);
}

TEST_F(ButtonsTest, StyleSizesGiveMinimumWidthAndTextInsets) {
  CreateHostWithChildren(L"<qv_button name=\"short\" text=\"OK\" qvstyle=\"MB1_B\"/>"
                         L"<qv_button name=\"long\" text=\"Place the order now\" qvstyle=\"MB1_B\" pos=\"0,40\"/>"
                         L"<qv_button name=\"plain\" text=\"OK\" pos=\"0,80\"/>");
  // Short captions get the minimum width of the style (size 2)...
  EXPECT_EQ(Button(L"short")->GetWindowRect().Width(), 76);
  // ...long ones their text plus 16dp on each side (sizes 3 and 4).
  EXPECT_GT(Button(L"long")->GetWindowRect().Width(), 76);
  // Without a style the 4dp paddings frame the text and there is no frame skin.
  EXPECT_EQ(Button(L"plain")->GetBkgndSkin(), nullptr);
  EXPECT_EQ(Button(L"plain")->GetWindowRect().Width(),
            Button(L"plain")->GetDesiredSize(-1, -1).cx);
}

// ---- icon button ----------------------------------------------------------------------------

struct SelectRow {
  const char* name;
  const wchar_t* attr;  // the enable_select attribute, or empty
  bool selected_after_one_click;
};

class IconButtonSelect : public ButtonsTest, public ::testing::WithParamInterface<SelectRow> {};

TEST_P(IconButtonSelect, ClickTogglesOnlyWithEnableSelect) {
  const SelectRow& row = GetParam();
  CreateHostWithChildren(SStringW(L"<qv_icon_button name=\"i\" icon=\"test_close\" ") + row.attr + L"/>");
  auto* i = Find<QVIconButton>(L"i");
  gen().MoveMouseToCenterOf(i);
  gen().ClickLeftButton();
  EXPECT_EQ(i->GetIsSelected(), row.selected_after_one_click);
  EXPECT_EQ(CountEvents(SOUI::EVT_CMD), 1);
  gen().ClickLeftButton();
  EXPECT_FALSE(i->GetIsSelected());
  EXPECT_EQ(CountEvents(SOUI::EVT_CMD), 2);
}

INSTANTIATE_TEST_SUITE_P(Values, IconButtonSelect,
                         ::testing::Values(SelectRow{"absent", L"", false},
                                           SelectRow{"one", L"enable_select=\"1\"", true},
                                           SelectRow{"FALSE_any_case", L"enable_select=\"FALSE\"", false},
                                           SelectRow{"zero", L"enable_select=\"0\"", false},
                                           SelectRow{"no_is_true", L"enable_select=\"no\"", true},
                                           SelectRow{"name_any_case", L"Enable_Select=\"1\"", true}),
                         [](const ::testing::TestParamInfo<SelectRow>& info) { return std::string(info.param.name); });

TEST_F(ButtonsTest, IconButtonSizesToItsIconAndDrawsItCentred) {
  CreateHostWithChildren(L"<qv_icon_button name=\"i\" icon=\"test_open\" width=\"40\" height=\"30\"/>"
                         L"<qv_icon_button name=\"w\" icon=\"test_open\" pos=\"0,40\"/>");
  // Wrap size: icon plus the 4dp side paddings.
  EXPECT_EQ(Find(L"w")->GetWindowRect(), CRect(0, 40, 28, 50));
  EXPECT_NE(Paint(Find(L"i")).find("FillSolidRect [10,10,30,20]"), std::string::npos) << Paint(Find(L"i"));
}

// ---- switch ------------------------------------------------------------------------------------

TEST_F(ButtonsTest, SwitchClickFlipsAndResizesToTheOtherIcon) {
  CreateHostWithChildren(L"<qv_switch_button name=\"s\" open_icon=\"test_open\" close_icon=\"test_close\"/>");
  auto* s = Find<QVSwitchButton>(L"s");
  // Closed: the close icon (12x8) plus 4dp on each side.
  EXPECT_EQ(s->GetWindowRect(), CRect(0, 0, 20, 8));
  gen().MoveMouseToCenterOf(s);
  gen().ClickLeftButton();
  EXPECT_TRUE(s->GetIsOpen());
  EXPECT_EQ(CountEvents(SOUI::EVT_CMD), 1);
  Layout();
  EXPECT_EQ(s->GetWindowRect(), CRect(0, 0, 28, 10));
  host()->Render();
  EXPECT_GT(*open_draws_, 0);
  gen().MoveMouseToCenterOf(s);
  gen().ClickLeftButton();
  EXPECT_FALSE(s->GetIsOpen());
}

TEST_F(ButtonsTest, OpenSwitchWithoutOpenIconPaintsOnlyItsBackground) {
  CreateHostWithChildren(
      L"<qv_switch_button name=\"s\" open=\"1\" close_icon=\"test_close\" skin=\"skin_qvstd_icon_bg_link_l\""
      L" width=\"30\" height=\"20\"/>");
  host()->Render();
  EXPECT_EQ(*close_draws_, 0);
  EXPECT_EQ(*open_draws_, 0);
  EXPECT_NE(Paint(Find(L"s")).find("FillRoundRect"), std::string::npos);
}

TEST_F(ButtonsTest, SwitchWithoutIconsTakesTheToolkitSize) {
  CreateHostWithChildren(L"<qv_switch_button name=\"s\" width=\"33\" height=\"17\" icon=\"test_open\"/>");
  EXPECT_EQ(Find(L"s")->GetWindowRect(), CRect(0, 0, 33, 17));
  host()->Render();
  // "icon" is not one of the switch's pictures.
  EXPECT_EQ(*open_draws_, 0);
}

TEST_F(ButtonsTest, SettingTheSameOpenStateTwiceRepaintsOnce) {
  CreateHostWithChildren(L"<qv_switch_button name=\"s\" open_icon=\"test_open\" width=\"30\" height=\"20\"/>");
  auto* s = Find<QVSwitchButton>(L"s");
  host()->Render();
  s->SetIsOpen(true);
  EXPECT_FALSE(host()->GetDirtyRect().IsRectEmpty());
  EXPECT_FALSE(s->IsLayoutDirty());  // fixed size: a repaint is enough
  host()->Render();
  const int paints = host()->GetPaintCount();
  s->SetIsOpen(true);
  host()->Render();
  EXPECT_EQ(host()->GetPaintCount(), paints);
}

TEST_F(ButtonsTest, SwitchIconSetAtRunTimeRelaysAContentSizedSwitch) {
  CreateHostWithChildren(L"<qv_switch_button name=\"s\" close_icon=\"test_close\"/>");
  auto* s = Find<QVSwitchButton>(L"s");
  EXPECT_EQ(s->SetAttribute(L"close_icon", L"test_open", FALSE), S_OK);
  EXPECT_TRUE(s->IsLayoutDirty());
  Layout();
  EXPECT_EQ(s->GetWindowRect(), CRect(0, 0, 28, 10));
  // While loading an icon only lands; there is nothing to refresh yet.
  EXPECT_EQ(s->SetAttribute(L"open_icon", L"test_close", TRUE), S_FALSE);
  // The open attribute at run time shows the other icon at once.
  host()->Render();
  EXPECT_EQ(s->SetAttribute(L"open", L"1", FALSE), S_OK);
  EXPECT_FALSE(host()->GetDirtyRect().IsRectEmpty());
}

// ---- the rendered look ------------------------------------------------------------------------

TEST_F(ButtonsTest, EveryKindInEveryStateLooksAsItsReference) {
  static const wchar_t* const kCodes[] = {L"MB2_B", L"MB2_S", L"MB2_P", L"MB2_D", L"MB2_W",
                                          L"TB2_D", L"TB2_H", L"TB2_L", L"TB2_W"};
  static const DWORD kStates[] = {SOUI::WndState_Normal, SOUI::WndState_Hover, SOUI::WndState_PushDown,
                                  SOUI::WndState_Disable};
  SStringW xml = L"<SOUI width=\"360\" height=\"300\"><root colorBkgnd=\"#F7F8FA\">";
  for (int r = 0; r < 9; ++r) {
    for (int c = 0; c < 4; ++c) {
      xml += SStringW::Format2(L"<qv_button name=\"b%d_%d\" qvstyle=\"%s\" text=\"%s\" pos=\"%d,%d\"/>", r, c,
                               kCodes[r], kCodes[r], 8 + c * 88, 8 + r * 32);
    }
  }
  xml += L"</root></SOUI>";
  CreateHost(xml, 360, 300);
  for (int r = 0; r < 9; ++r) {
    for (int c = 0; c < 4; ++c) {
      Find(SStringW::Format2(L"b%d_%d", r, c))->ModifyState(kStates[c], 0);
    }
  }
  host()->Render();
  const std::string ref = QV_SOURCE_DIR "/tests/data/qv_buttons_states.png";
  EXPECT_TRUE(SOUI::MatchesReferencePng(*dynamic_cast<SOUI::CairoRenderTarget*>(host()->GetFrame()), ref, 16, 0.01));
}

}  // namespace
}  // namespace QVStandardCtrls

namespace QVStandardCtrls {
namespace {

// The gallery's buttons page builds with nothing left out.
TEST_F(ButtonsTest, GalleryPageCreatesEveryControl) {
  std::ifstream in(QV_SOURCE_DIR "/apps/gallery/pages/01_buttons.xml");
  const std::string page((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  ASSERT_FALSE(page.empty());
  CreateHostWithChildren(SStringW::FromUtf8(page), 1000, 480);
  EXPECT_FALSE(LogContains(L"qv_"));
  // Every code enabled and disabled.
  for (const auto& kv : QVButtonStyles()) {
    SStringW name = SStringW(L"btn_") + kv.first;
    name.MakeLower();
    auto* on = Find<CQVButton>(name);
    auto* off = Find<CQVButton>(name + L"_off");
    ASSERT_NE(on, nullptr) << name.ToUtf8();
    ASSERT_NE(off, nullptr) << name.ToUtf8();
    EXPECT_EQ(on->GetAppliedStyle(), kv.second);
    EXPECT_TRUE(off->IsDisabled());
  }
  EXPECT_TRUE(Find<QVSwitchButton>(L"switch_open")->GetIsOpen());
  if (const char* out = std::getenv("QV_GALLERY_PNG")) host()->SaveFramePng(SStringW::FromUtf8(out));
}

}  // namespace
}  // namespace QVStandardCtrls
