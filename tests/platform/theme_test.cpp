// The default theme: every resource the controls name is present and sane,
// and the dark file overrides the light one key for key.
#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <cmath>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "soui/hostwnd.h"
#include "soui/resources.h"
#include "soui/sapp.h"
#include "soui/stdctrls.h"

namespace SOUI {
namespace {

const std::string kThemeDir = std::string(QV_SOURCE_DIR) + "/theme/default/";
const std::string kLight = kThemeDir + "uires.xml";
const std::string kDark = kThemeDir + "dark/uires.xml";

const char* const kTagFamilies[] = {"buy", "sell", "rise", "fall", "highlight", "graylight",
                                    "gray", "bluegray", "gold", "yellow", "pink", "blue",
                                    "white", "hk", "us", "sg", "sh", "jp"};

std::vector<std::string> ColorRefs() {
  std::vector<std::string> refs = {
      "style_button\\skin_bnt_text_warn", "style_button\\skin_btn_text_primary",
      "style_button\\skin_text_disabled", "style_button\\skin_text_h1",
      "style_button\\skin_text_h1_disable", "style_button\\skin_text_h1_hover",
      "style_button\\skin_text_h1_pressed", "style_button\\skin_text_highlight",
      "style_button\\skin_text_highlight_disable", "style_button\\skin_text_highlight_hover",
      "style_button\\skin_text_highlight_pressed", "style_button\\skin_text_link",
      "style_button\\skin_text_link_disabled", "style_button\\skin_text_link_hover",
      "style_button\\skin_text_link_pressed", "style_button\\skin_text_warn",
      "style_button\\skin_text_warn_disable", "style_button\\skin_text_warn_hover",
      "style_button\\skin_text_warn_pressed", "style_button\\skin_text_white",
      "style_common\\text_h1", "style_qv_tooltip\\skin_bg_tips_caution",
      "style_qv_tooltip\\skin_bg_tips_default", "style_qv_tooltip\\skin_bg_tips_warn",
      "style_qv_tooltip\\skin_text_tips_caution", "style_qv_tooltip\\skin_text_tips_default",
      "style_qv_tooltip\\skin_text_tips_warn", "style_reddot\\text_color",
      "style_skin_qv_tab\\text_default", "style_skin_qv_tab\\text_disable",
      "style_skin_qv_tab\\text_disabled", "style_skin_qv_tab\\text_hover",
      "style_skin_qv_tab\\text_selected", "style_skin_qv_tab\\text_selected_high",
      "style_skin_qv_text\\text_disable", "style_skin_qv_text\\text_fall",
      "style_skin_qv_text\\text_h1", "style_skin_qv_text\\text_h2",
      "style_skin_qv_text\\text_h3", "style_skin_qv_text\\text_link_normal",
      "style_skin_qv_text\\text_portfolio", "style_skin_qv_text\\text_rise",
      "style_skin_qv_text\\text_sell", "style_skin_qv_text\\text_stable",
      "style_skin_qv_text\\text_white", "style_tag\\skin_text_tag_black",
      "style_tag\\skin_text_tag_h1"};
  for (const char* f : kTagFamilies) refs.push_back(std::string("style_tag\\skin_text_tag_") + f);
  return refs;
}

std::vector<std::string> SkinNames() {
  std::vector<std::string> names = {
      "skin_Icon_BitRedPoint", "skin_Icon_Litter_RedPoint", "skin_icon_redpoint",
      "skin_Live_Qr_Logo", "skin_basewnd_btn_close", "skin_basewnd_btn_max",
      "skin_basewnd_btn_min", "skin_basewnd_btn_restore", "skin_basewnd_img_qvtx",
      "skin_com_btn_bg_buy", "skin_com_btn_bg_default", "skin_com_btn_bg_primary",
      "skin_com_btn_bg_sell", "skin_edit_std_input_minor", "skin_edit_std_input_normal",
      "skin_edit_std_input_overlay", "skin_edit_std_input_underline", "skin_live_list_expand",
      "skin_minsysbtn_boxclose", "skin_qvstd_dialog_bg_normal", "skin_qvstd_dialog_bg_selected",
      "skin_qvstd_dialog_icon_error", "skin_qvstd_dialog_icon_successed",
      "skin_qvstd_dialog_icon_tips", "skin_qvstd_dialog_icon_warn", "skin_qvstd_icon_bg_bar",
      "skin_qvstd_icon_bg_btn", "skin_qvstd_icon_bg_close", "skin_qvstd_icon_bg_header_bar",
      "skin_qvstd_icon_bg_link_l", "skin_qvstd_icon_bg_link_r", "skin_tab_bg_filter_tab",
      "skin_tab_bg_segment_tab_center", "skin_tab_bg_segment_tab_left",
      "skin_tab_bg_segment_tab_right", "skin_tab_bg_tabview", "skin_tab_bg_underline",
      "skin_toast_bg", "skin_toast_icon_error", "skin_toast_icon_succeed", "skin_toast_icon_tip",
      "skin_toast_icon_warn"};
  for (const char* f : kTagFamilies) {
    for (const char* kind : {"border", "opacity", "block"}) {
      names.push_back(std::string("skin_tagbg_") + f + "_" + kind);
    }
  }
  return names;
}

// Button label sets of the dialogs, in vector order.
const std::vector<std::vector<const char*>> kButtonSets = {
    {"102541"}, {"102542", "102541"}, {"102542", "100263"}, {"100204", "100203"},
    {"102542", "100204", "100203"}, {"100210", "100263", "100209"}};

SStringW W(const std::string& s) { return SStringW::FromUtf8(s); }

double Luminance(COLORREF c) {
  auto lin = [](int v) {
    const double s = v / 255.0;
    return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * lin(GetRValue(c)) + 0.7152 * lin(GetGValue(c)) + 0.0722 * lin(GetBValue(c));
}

double Contrast(COLORREF a, COLORREF b) {
  const double la = Luminance(a), lb = Luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// Width and height from a PNG's IHDR; false when the file is not a PNG.
bool PngSize(const std::string& path, int* w, int* h) {
  std::ifstream in(path, std::ios::binary);
  unsigned char head[24] = {};
  if (!in.read(reinterpret_cast<char*>(head), sizeof head)) return false;
  static const unsigned char kSig[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (!std::equal(kSig, kSig + 8, head)) return false;
  auto be32 = [&](int at) {
    return (head[at] << 24) | (head[at + 1] << 16) | (head[at + 2] << 8) | head[at + 3];
  };
  *w = be32(16);
  *h = be32(20);
  return true;
}

pugi::xml_node FindSkinDecl(const pugi::xml_document& doc, const std::string& name) {
  return doc.document_element().child("skin").find_child_by_attribute("name", name.c_str());
}

class ThemeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(res().LoadUiDefFile(W(kLight)));
    ASSERT_TRUE(light_.load_file(kLight.c_str()));
  }
  SResProvider& res() { return app_.GetResProvider(); }
  COLORREF Color(const std::string& key) {
    COLORREF c = 0;
    EXPECT_TRUE(res().ResolveColor(W("@color\\" + key), &c)) << key;
    return c;
  }

  SApplication app_;
  pugi::xml_document light_;
};

// ---- colours ----

class ColorRefTest : public ThemeTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(ColorRefTest, ResolvesToAnOpaqueOrDeliberatelyTranslucentColour) {
  COLORREF c = 0;
  ASSERT_TRUE(res().ResolveColor(W("@color\\" + GetParam()), &c));
  // Only the disabled label on filled buttons is meant to let the fill show through.
  if (GetParam() != "style_button\\skin_btn_text_primary") {
    EXPECT_EQ(GetAValue(c), 0xFF);
  }
}

INSTANTIATE_TEST_SUITE_P(AllReferences, ColorRefTest, ::testing::ValuesIn(ColorRefs()));

TEST_F(ThemeTest, RiseIsRedFallIsGreenStableIsNeither) {
  const COLORREF rise = Color("style_skin_qv_text\\text_rise");
  const COLORREF fall = Color("style_skin_qv_text\\text_fall");
  const COLORREF stable = Color("style_skin_qv_text\\text_stable");
  EXPECT_GT(GetRValue(rise), 2 * GetGValue(rise));
  EXPECT_GT(GetGValue(fall), 2 * GetRValue(fall));
  EXPECT_LT(std::abs(GetRValue(stable) - GetGValue(stable)), 24);
}

TEST_F(ThemeTest, BothSpellingsOfTheDisabledTabColourAgree) {
  EXPECT_EQ(Color("style_skin_qv_tab\\text_disable"), Color("style_skin_qv_tab\\text_disabled"));
}

TEST_F(ThemeTest, TagFamiliesAreTellApart) {
  std::set<COLORREF> seen;
  for (const char* f : kTagFamilies) {
    EXPECT_TRUE(seen.insert(Color(std::string("style_tag\\skin_text_tag_") + f)).second) << f;
  }
}

// Tooltip text must stay readable on its background in both variants.
TEST_F(ThemeTest, TooltipTextContrastsWithItsBackgroundInBothVariants) {
  for (const bool dark : {false, true}) {
    if (dark) {
      ASSERT_TRUE(res().LoadUiDefFile(W(kDark)));
    }
    for (const char* kind : {"default", "caution", "warn"}) {
      const COLORREF bg = Color(std::string("style_qv_tooltip\\skin_bg_tips_") + kind);
      const COLORREF fg = Color(std::string("style_qv_tooltip\\skin_text_tips_") + kind);
      EXPECT_GE(Contrast(bg, fg), 4.5) << kind << (dark ? " dark" : " light");
    }
  }
}

// Solid tags print their text on the filled block: white on every family but
// white. A block too light for that leaves a tag unreadable on a busy quote screen.
TEST_F(ThemeTest, SolidTagBlocksCarryTheirTextInBothVariants) {
  const char* const kFamilies[] = {"buy",  "sell",   "rise", "fall", "highlight", "graylight",
                                   "gray", "bluegray", "gold", "yellow", "pink",   "blue",
                                   "white", "hk",     "us",   "sg",   "sh",        "jp"};
  for (const bool dark : {false, true}) {
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_file((dark ? kDark : kLight).c_str()));
    if (dark) {
      ASSERT_TRUE(res().LoadUiDefFile(W(kDark)));
    }
    for (const char* family : kFamilies) {
      const std::string name = std::string("skin_tagbg_") + family + "_block";
      pugi::xml_node decl = FindSkinDecl(dark ? doc : light_, name);
      if (!decl) decl = FindSkinDecl(light_, name);  // the dark file may keep a light skin
      ASSERT_TRUE(decl) << name;
      COLORREF block = 0;
      ASSERT_TRUE(SOUI::ParseColorLiteral(SOUI::SStringW::FromUtf8(decl.attribute("normal").value()), &block)) << name;
      const COLORREF text = Color(std::string(family) == "white" ? "style_tag\\skin_text_tag_black"
                                                                 : "style_tag\\skin_text_tag_h1");
      EXPECT_GE(Contrast(block, text), 3.0) << name << (dark ? " dark" : " light");
    }
  }
}

TEST_F(ThemeTest, ButtonStateTextColoursAreDistinct) {
  for (const char* kind : {"h1", "warn", "highlight", "link"}) {
    const std::string base = std::string("style_button\\skin_text_") + kind;
    const std::string disabled = std::string(kind) == "link" ? "_disabled" : "_disable";
    const std::set<COLORREF> states = {Color(base), Color(base + "_hover"), Color(base + "_pressed"),
                                       Color(base + disabled)};
    EXPECT_EQ(states.size(), 4u) << kind;
  }
}

// ---- dark variant ----

void CollectColorKeys(pugi::xml_node node, const std::string& prefix, std::set<std::string>* out) {
  for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) {
    const std::string key = prefix.empty() ? c.name() : prefix + "\\" + c.name();
    if (c.attribute("value")) out->insert(key);
    CollectColorKeys(c, key, out);
  }
}

TEST_F(ThemeTest, DarkFileRedefinesExactlyTheLightColourKeys) {
  pugi::xml_document dark;
  ASSERT_TRUE(dark.load_file(kDark.c_str()));
  std::set<std::string> light_keys, dark_keys;
  CollectColorKeys(light_.document_element().child("color"), "", &light_keys);
  CollectColorKeys(dark.document_element().child("color"), "", &dark_keys);
  EXPECT_EQ(light_keys, dark_keys);
  for (const std::string& ref : ColorRefs()) EXPECT_TRUE(light_keys.count(ref)) << ref;
}

TEST_F(ThemeTest, LoadingTheDarkFileSwitchesColoursAndBumpsTheGeneration) {
  const COLORREF light_h1 = Color("style_skin_qv_text\\text_h1");
  const unsigned generation = res().Generation();
  ASSERT_TRUE(res().LoadUiDefFile(W(kDark)));
  app_.NotifyThemeChanged();
  EXPECT_NE(Color("style_skin_qv_text\\text_h1"), light_h1);
  EXPECT_GT(Luminance(Color("style_skin_qv_text\\text_h1")), Luminance(light_h1));
  EXPECT_NE(res().Generation(), generation);
  // Strings are not part of the dark file and must survive the switch.
  EXPECT_EQ(res().ResolveString(L"@string\\102541"), L"OK");
}

TEST_F(ThemeTest, DarkSkinsOverrideDeclaredSkinsWithExistingImages) {
  pugi::xml_document dark;
  ASSERT_TRUE(dark.load_file(kDark.c_str()));
  for (pugi::xml_node d : dark.document_element().child("skin").children()) {
    const std::string name = d.attribute("name").value();
    pugi::xml_node light = FindSkinDecl(light_, name);
    ASSERT_TRUE(light) << name;
    EXPECT_STREQ(light.name(), d.name()) << name;
    if (pugi::xml_attribute src = d.attribute("src")) {
      // Same size and frames as the light image, so switching moves no layout.
      int w = 0, h = 0, lw = 0, lh = 0;
      ASSERT_TRUE(PngSize(kThemeDir + "dark/" + src.value(), &w, &h)) << name;
      ASSERT_TRUE(PngSize(kThemeDir + light.attribute("src").value(), &lw, &lh)) << name;
      EXPECT_EQ(w, lw) << name;
      EXPECT_EQ(h, lh) << name;
      EXPECT_EQ(d.attribute("states").as_int(1), light.attribute("states").as_int(1)) << name;
    }
  }
}

// ---- strings ----

TEST_F(ThemeTest, DialogLabelsResolveInBothLanguagesAndDifferWithinASet) {
  for (const char* lang : {"en", "zh"}) {
    res().SetLanguage(W(lang));
    for (const auto& set : kButtonSets) {
      std::set<SStringW> labels;
      for (const char* id : set) {
        const SStringW text = res().ResolveString(W(std::string("@string\\") + id));
        EXPECT_FALSE(text.IsEmpty()) << lang << " " << id;
        labels.insert(text);
      }
      EXPECT_EQ(labels.size(), set.size()) << lang << " " << set.front();
    }
  }
  // A missing Chinese label would fall back to English: every one must differ.
  for (const char* id : {"100203", "100204", "100209", "100210", "100263", "102541", "102542"}) {
    const SStringW ref = W(std::string("@string\\") + id);
    res().SetLanguage(L"en");
    const SStringW en = res().ResolveString(ref);
    res().SetLanguage(L"zh");
    EXPECT_NE(res().ResolveString(ref), en) << id;
  }
}

// ---- toast layout ----

TEST_F(ThemeTest, ToastLayoutHoldsTheNamedElementsAndNamesOnlyDeclaredResources) {
  pugi::xml_document doc;
  ASSERT_TRUE(res().LoadXml(doc, L"qvtoast", L"LAYOUT"));
  pugi::xml_node soui = doc.child("SOUI");
  ASSERT_TRUE(soui);
  pugi::xml_node toast = soui.child("root").find_child_by_attribute("name", "toast");
  ASSERT_TRUE(toast);
  EXPECT_TRUE(toast.find_child_by_attribute("name", "image"));
  EXPECT_TRUE(toast.find_child_by_attribute("name", "rich_toast_text"));
  for (pugi::xpath_node n : doc.select_nodes("//*[@skin]")) {
    EXPECT_TRUE(FindSkinDecl(light_, n.node().attribute("skin").value())) << n.node().attribute("skin").value();
  }
  for (pugi::xpath_node n : doc.select_nodes("//*[@colorText]")) {
    EXPECT_TRUE(res().ResolveColor(W(n.node().attribute("colorText").value()), nullptr));
  }
}

// The toast code finds its parts by name on a host built from the layout.
TEST_F(ThemeTest, ToastHostBuildsTheNamedWindows) {
  SHostWnd host(L"LAYOUT:qvtoast");
  ASSERT_NE(host.Create(), nullptr);
  SWindow* toast = host.FindChildByName(L"toast");
  ASSERT_NE(toast, nullptr);
  EXPECT_NE(toast->FindChildByName2<SImageWnd>(L"image"), nullptr);
  EXPECT_NE(toast->FindChildByName(L"rich_toast_text"), nullptr);
}

// ---- skins ----
// The skin types come from the skin module; until it registers them the
// declarations are checked from the XML, which is what the types will read.

class SkinDeclTest : public ThemeTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(SkinDeclTest, IsDeclaredWithUsableAttributes) {
  pugi::xml_node decl = FindSkinDecl(light_, GetParam());
  ASSERT_TRUE(decl) << "not declared";
  const std::string type = decl.name();
  if (type == "colorrect") {
    int colours = 0;
    for (pugi::xml_attribute a : decl.attributes()) {
      const std::string n = a.name();
      if (n == "name" || n == "borderWidth" || n == "cornerRadius") continue;
      EXPECT_TRUE(ParseColorLiteral(W(a.value()), nullptr)) << n << "=" << a.value();
      ++colours;
    }
    EXPECT_TRUE(decl.attribute("normal")) << "a missing normal colour paints nothing";
    EXPECT_GT(colours, 0);
    return;
  }
  ASSERT_TRUE(type == "imglist" || type == "imgframe") << type;
  int w = 0, h = 0;
  ASSERT_TRUE(PngSize(kThemeDir + decl.attribute("src").value(), &w, &h)) << decl.attribute("src").value();
  const int states = decl.attribute("states").as_int(1);
  ASSERT_GT(states, 0);
  EXPECT_EQ(w % states, 0) << "frames must split the image evenly";
  if (type == "imgframe") {
    int l = -1, t = -1, r = -1, b = -1;
    ASSERT_EQ(std::sscanf(decl.attribute("margin").value(), "%d,%d,%d,%d", &l, &t, &r, &b), 4);
    EXPECT_LT(l + r, w / states);
    EXPECT_LE(t + b, h);
  }
}

TEST_P(SkinDeclTest, LoadsThroughTheRegistry) {
  // Every declared skin is of a registered type and loads (its image found).
  EXPECT_TRUE(res().HasSkin(W(GetParam())));
  EXPECT_NE(res().GetSkin(W(GetParam()), 150), nullptr);
}

INSTANTIATE_TEST_SUITE_P(AllSkins, SkinDeclTest, ::testing::ValuesIn(SkinNames()));

TEST_F(ThemeTest, FilledButtonBackgroundsHaveFourDistinctStates) {
  for (const char* kind : {"buy", "sell", "primary", "default"}) {
    pugi::xml_node decl = FindSkinDecl(light_, std::string("skin_com_btn_bg_") + kind);
    ASSERT_TRUE(decl) << kind;
    std::set<std::string> looks;
    for (const char* state : {"normal", "hover", "pushdown", "disable"}) {
      // A state differs by fill or by border.
      looks.insert(std::string(decl.attribute(state).value()) + "/" +
                   decl.attribute((std::string(state) + "Border").c_str()).value());
    }
    EXPECT_EQ(looks.size(), 4u) << kind;
  }
}

}  // namespace
}  // namespace SOUI
