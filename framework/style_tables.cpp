#include "framework/style_tables.h"

#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

const wchar_t kText[] = L"@color\\style_skin_qv_text\\";
const wchar_t kBtn[] = L"@color\\style_button\\";

SStringW TextColor(const wchar_t* name) { return SStringW(kText) + name; }
SStringW BtnColor(const wchar_t* name) { return SStringW(kBtn) + name; }

template <class Map>
auto FindIn(const Map& m, const SStringW& code) -> const typename Map::mapped_type* {
  auto it = m.find(code);
  return it == m.end() ? nullptr : &it->second;
}

// Main buttons: a skin, one colour for normal/hover/pressed and one for disabled.
struct MainKind {
  const wchar_t* letter;
  const wchar_t* skin;
  const wchar_t* disabled;
  const wchar_t* enabled;
};
// Text buttons: no skin, a colour per state.
struct TextKind {
  const wchar_t* letter;
  const wchar_t* normal;
  const wchar_t* hover;
  const wchar_t* pressed;
  const wchar_t* disabled;
};
struct SizeRow {
  const wchar_t* font;
  int sizes[4];
};

QVButtonStylePtr MakeButton(const SStringW& skin, const SStringW& normal, const SStringW& hover,
                            const SStringW& pressed, const SStringW& disabled, const SizeRow& row) {
  auto rec = std::make_shared<QVButtonStyleInfo>();
  rec->skin = skin;
  rec->color_normal = normal;
  rec->color_hover = hover;
  rec->color_pressed = pressed;
  rec->color_disabled = disabled;
  rec->font = row.font;
  rec->colors[kQVColorTextNormal] = normal;
  rec->colors[kQVColorTextHover] = hover;
  rec->colors[kQVColorTextPressed] = pressed;
  rec->colors[kQVColorTextDisabled] = disabled;
  for (int i = 0; i < 4; ++i) rec->sizes[i] = row.sizes[i];
  return rec;
}

std::map<SStringW, QVButtonStylePtr> BuildButtonStyles() {
  // "skin_bnt_text_warn" is the skin's own spelling; kept.
  static const MainKind kMain[] = {
      {L"B", L"skin_com_btn_bg_buy", L"skin_btn_text_primary", L"skin_text_white"},
      {L"S", L"skin_com_btn_bg_sell", L"skin_btn_text_primary", L"skin_text_white"},
      {L"P", L"skin_com_btn_bg_primary", L"skin_btn_text_primary", L"skin_text_white"},
      {L"D", L"skin_com_btn_bg_default", L"skin_text_disabled", L"skin_text_h1"},
      {L"W", L"skin_com_btn_bg_default", L"skin_text_disabled", L"skin_bnt_text_warn"},
  };
  // The link kind's disabled colour ends in "_disabled", the others in
  // "_disable": both are the skin's names.
  static const TextKind kTextKinds[] = {
      {L"D", L"skin_text_h1", L"skin_text_h1_hover", L"skin_text_h1_pressed", L"skin_text_h1_disable"},
      {L"H", L"skin_text_highlight", L"skin_text_highlight_hover", L"skin_text_highlight_pressed",
       L"skin_text_highlight_disable"},
      {L"L", L"skin_text_link", L"skin_text_link_hover", L"skin_text_link_pressed", L"skin_text_link_disabled"},
      {L"W", L"skin_text_warn", L"skin_text_warn_hover", L"skin_text_warn_pressed", L"skin_text_warn_disable"},
  };
  // MB3 and MB4 share a font, TB3 is larger than TB4: intended.
  static const SizeRow kMainSizes[4] = {{L"size:14dp", {28, 76, 16, 16}},
                                        {L"size:13dp", {24, 74, 16, 16}},
                                        {L"size:10dp", {20, 60, 12, 12}},
                                        {L"size:10dp", {16, 60, 12, 12}}};
  static const SizeRow kTextSizes[4] = {{L"size:14dp", {20, 76, 12, 12}},
                                        {L"size:13dp", {19, 74, 12, 12}},
                                        {L"size:12dp", {18, 60, 12, 12}},
                                        {L"size:10dp", {16, 60, 12, 12}}};
  std::map<SStringW, QVButtonStylePtr> m;
  for (int n = 1; n <= 4; ++n) {
    for (const MainKind& k : kMain) {
      const SStringW code = SStringW::Format2(L"MB%d_%s", n, k.letter);
      const SStringW on = BtnColor(k.enabled);
      m[code] = MakeButton(k.skin, on, on, on, BtnColor(k.disabled), kMainSizes[n - 1]);
    }
    for (const TextKind& k : kTextKinds) {
      const SStringW code = SStringW::Format2(L"TB%d_%s", n, k.letter);
      m[code] = MakeButton(SStringW(), BtnColor(k.normal), BtnColor(k.hover), BtnColor(k.pressed),
                           BtnColor(k.disabled), kTextSizes[n - 1]);
    }
  }
  return m;
}

QVEditStyle Edit(const wchar_t* skin, const wchar_t* height, const wchar_t* font, const wchar_t* padding) {
  return QVEditStyle{skin, height, font, padding};
}

}  // namespace

std::vector<std::pair<SStringW, SStringW>> QVButtonStyleInfo::Attributes() const {
  std::vector<std::pair<SStringW, SStringW>> out;
  if (!skin.IsEmpty()) out.emplace_back(L"skin", skin);
  if (!font.IsEmpty()) out.emplace_back(L"font", font);
  return out;
}

const std::map<SStringW, QVTextStyle>& QVTextStyles() {
  // The series are uneven on purpose (no HR at 10dp, HR5 at 20dp, two O codes).
  static const std::map<SStringW, QVTextStyle> kTable = {
      {L"HR1", {L"size:12dp", TextColor(L"text_h1")}},
      {L"HR2", {L"size:13dp", TextColor(L"text_h1")}},
      {L"HR3", {L"size:14dp", TextColor(L"text_h1")}},
      {L"HR4", {L"size:16dp", TextColor(L"text_h1")}},
      {L"HR5", {L"size:20dp", TextColor(L"text_h1")}},
      {L"HB1", {L"size:12dp,bold:1", TextColor(L"text_h1")}},
      {L"HB2", {L"size:16dp,bold:1", TextColor(L"text_h1")}},
      {L"HB3", {L"size:22dp,bold:1", TextColor(L"text_h1")}},
      {L"HB4", {L"size:24dp,bold:1", TextColor(L"text_h1")}},
      {L"T1", {L"size:10dp", TextColor(L"text_h2")}},
      {L"T2", {L"size:12dp", TextColor(L"text_h2")}},
      {L"T3", {L"size:13dp", TextColor(L"text_h2")}},
      {L"T4", {L"size:14dp", TextColor(L"text_h2")}},
      {L"T5", {L"size:16dp", TextColor(L"text_h2")}},
      {L"S1", {L"size:10dp", TextColor(L"text_h3")}},
      {L"S2", {L"size:12dp", TextColor(L"text_h3")}},
      {L"S3", {L"size:13dp", TextColor(L"text_h3")}},
      {L"S4", {L"size:14dp", TextColor(L"text_h3")}},
      {L"D1", {L"size:10dp", TextColor(L"text_disable")}},
      {L"D2", {L"size:12dp", TextColor(L"text_disable")}},
      {L"D3", {L"size:13dp", TextColor(L"text_disable")}},
      {L"D4", {L"size:14dp", TextColor(L"text_disable")}},
      {L"O1", {L"size:12dp", TextColor(L"text_portfolio")}},
      {L"O2", {L"size:13dp", TextColor(L"text_portfolio")}},
      {L"B1", {L"size:10dp", TextColor(L"text_link_normal")}},
      {L"B2", {L"size:12dp", TextColor(L"text_link_normal")}},
      {L"B3", {L"size:13dp", TextColor(L"text_link_normal")}},
      {L"B4", {L"size:14dp", TextColor(L"text_link_normal")}},
      {L"F1", {L"size:10dp", TextColor(L"text_sell")}},
      {L"F2", {L"size:12dp", TextColor(L"text_sell")}},
      {L"F3", {L"size:13dp", TextColor(L"text_sell")}},
      {L"F4", {L"size:14dp", TextColor(L"text_sell")}},
      {L"W1", {L"size:10dp", TextColor(L"text_white")}},
      {L"W2", {L"size:12dp", TextColor(L"text_white")}},
      {L"W3", {L"size:13dp", TextColor(L"text_white")}},
      {L"W4", {L"size:14dp", TextColor(L"text_white")}},
  };
  return kTable;
}

const std::map<SStringW, QVLinkStyle>& QVLinkStyles() {
  static const std::map<SStringW, QVLinkStyle> kTable = {
      {L"B1", {L"size:10dp", L"underline:1,size:10dp"}},
      {L"B2", {L"size:12dp", L"underline:1,size:12dp"}},
      {L"B3", {L"size:13dp", L"underline:1,size:13dp"}},
      {L"B4", {L"size:14dp", L"underline:1,size:14dp"}},
      {L"B5", {L"size:16dp", L"underline:1,size:16dp"}},
  };
  return kTable;
}

const std::map<SStringW, QVButtonStylePtr>& QVButtonStyles() {
  // Built on the first button style applied (thread-safe static init).
  static const std::map<SStringW, QVButtonStylePtr> kTable = BuildButtonStyles();
  return kTable;
}

const std::map<SStringW, QVIconButtonStylePtr>& QVIconButtonStyles() {
  // The number names the place (1 header bar, 2 close, 3 bar, 4 button,
  // 5 paired link); the letter repeats it.
  static const std::map<SStringW, QVIconButtonStylePtr> kTable = [] {
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"IB4_B", L"skin_qvstd_icon_bg_btn"},        {L"IB3_B", L"skin_qvstd_icon_bg_bar"},
        {L"IB2_C", L"skin_qvstd_icon_bg_close"},      {L"IB1_H", L"skin_qvstd_icon_bg_header_bar"},
        {L"IB5_L", L"skin_qvstd_icon_bg_link_l"},     {L"IB5_R", L"skin_qvstd_icon_bg_link_r"},
    };
    std::map<SStringW, QVIconButtonStylePtr> m;
    for (const auto& r : rows) m[r.first] = std::make_shared<QVIconButtonStyleInfo>(QVIconButtonStyleInfo{r.second});
    return m;
  }();
  return kTable;
}

const std::map<SStringW, SStringW>& QVRedGreenFonts() {
  static const std::map<SStringW, SStringW> kTable = {
      {L"RGR1", L"size:10dp"},        {L"RGR2", L"size:12dp"},        {L"RGR3", L"size:13dp"},
      {L"RGR4", L"size:14dp"},        {L"RGR5", L"size:16dp"},        {L"RGR6", L"size:22dp"},
      {L"RGR7", L"size:24dp"},        {L"RGB1", L"size:12dp,bold:1"}, {L"RGB2", L"size:14dp,bold:1"},
      {L"RGB3", L"size:16dp,bold:1"}, {L"RGB4", L"size:22dp,bold:1"}, {L"RGB5", L"size:24dp,bold:1"},
  };
  return kTable;
}

const std::map<SStringW, std::pair<SStringW, SStringW>>& QVRedGreenFontPairs() {
  static const std::map<SStringW, std::pair<SStringW, SStringW>> kTable = [] {
    std::map<SStringW, std::pair<SStringW, SStringW>> m;
    for (const auto& kv : QVRedGreenFonts()) {
      m[kv.first] = {kv.second, kv.first == L"RGR1" ? L"size:10dp" : L"size:12dp"};
    }
    return m;
  }();
  return kTable;
}

const std::map<SStringW, QVEditStyle>& QVEditStyles() {
  static const wchar_t* const kNormal = L"skin_edit_std_input_normal";
  static const wchar_t* const kUnder = L"skin_edit_std_input_underline";
  static const wchar_t* const kMinor = L"skin_edit_std_input_minor";
  static const wchar_t* const kOverlay = L"skin_edit_std_input_overlay";
  static const std::map<SStringW, QVEditStyle> kTable = {
      {L"NI1", Edit(kNormal, L"18dp", L"size:11dp", L"8dp,0dp,8dp,0dp")},
      {L"NI2", Edit(kNormal, L"24dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"NI3", Edit(kNormal, L"30dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"UI1", Edit(kUnder, L"18dp", L"size:11dp", L"4dp,0dp,4dp,0dp")},
      {L"UI2", Edit(kUnder, L"24dp", L"size:12dp", L"4dp,0dp,4dp,0dp")},
      {L"UI3", Edit(kUnder, L"30dp", L"size:12dp", L"4dp,0dp,4dp,0dp")},
      {L"MI1", Edit(kMinor, L"18dp", L"size:11dp", L"6dp,0dp,6dp,0dp")},
      {L"MI2", Edit(kMinor, L"24dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"MI3", Edit(kMinor, L"30dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"NIO1", Edit(kOverlay, L"18dp", L"size:11dp", L"6dp,0dp,6dp,0dp")},
      {L"NIO2", Edit(kOverlay, L"24dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"NIO3", Edit(kOverlay, L"30dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
  };
  return kTable;
}

const std::map<SStringW, QVEditStyle>& QVEditComStyles() {
  static const wchar_t* const kNormal = L"skin_edit_std_input_normal";
  static const wchar_t* const kUnder = L"skin_edit_std_input_underline";
  static const wchar_t* const kMinor = L"skin_edit_std_input_minor";
  // The minor composite records have no codes of their own in the published
  // vocabulary; MIC<n> takes the composite padding of NIC, MICW<n> the wider
  // padding of the single-line minor input.
  static const std::map<SStringW, QVEditStyle> kTable = {
      {L"NIC1", Edit(kNormal, L"18dp", L"", L"4dp,0dp,4dp,0dp")},
      {L"NIC2", Edit(kNormal, L"24dp", L"", L"4dp,0dp,4dp,0dp")},
      {L"NIC3", Edit(kNormal, L"30dp", L"", L"4dp,0dp,4dp,0dp")},
      {L"UIC1", Edit(kUnder, L"18dp", L"", L"0dp,0dp,0dp,0dp")},
      {L"UIC2", Edit(kUnder, L"24dp", L"", L"0dp,0dp,0dp,0dp")},
      {L"UIC3", Edit(kUnder, L"30dp", L"", L"0dp,0dp,0dp,0dp")},
      {L"MIC1", Edit(kMinor, L"18dp", L"size:11dp", L"4dp,0dp,4dp,0dp")},
      {L"MIC2", Edit(kMinor, L"24dp", L"size:12dp", L"4dp,0dp,4dp,0dp")},
      {L"MIC3", Edit(kMinor, L"30dp", L"size:12dp", L"4dp,0dp,4dp,0dp")},
      {L"MICW1", Edit(kMinor, L"18dp", L"size:11dp", L"8dp,0dp,8dp,0dp")},
      {L"MICW2", Edit(kMinor, L"24dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
      {L"MICW3", Edit(kMinor, L"30dp", L"size:12dp", L"8dp,0dp,8dp,0dp")},
  };
  return kTable;
}

const std::map<SStringW, QVEditStyle>& QVEditMultiStyles() {
  // Multi-line edits grow with their text: no height; a little vertical
  // padding so the first line does not touch the frame.
  static const std::map<SStringW, QVEditStyle> kTable = {
      {L"NIMC", Edit(L"skin_edit_std_input_normal", L"", L"size:12dp", L"8dp,4dp,8dp,4dp")},
      {L"UIMC", Edit(L"skin_edit_std_input_underline", L"", L"size:12dp", L"4dp,4dp,4dp,4dp")},
      {L"MIMC", Edit(L"skin_edit_std_input_minor", L"", L"size:12dp", L"8dp,4dp,8dp,4dp")},
  };
  return kTable;
}

const std::map<SStringW, QVPwdCellStyle>& QVPwdCellStyles() {
  static const std::map<SStringW, QVPwdCellStyle> kTable = {
      {L"PI1", {L"30dp", L"24dp", L"size:12dp"}},
      {L"PI2", {L"24dp", L"40dp", L"size:16dp"}},
      {L"PI3", {L"44dp", L"28dp", L"size:24dp"}},
  };
  return kTable;
}

namespace {
const wchar_t kState[] = L"@color\\style_qv_state\\";
SStringW StateColor(const wchar_t* name) { return SStringW(kState) + name; }

template <class Ptr>
Ptr FindPtr(const std::map<SStringW, Ptr>& m, const SStringW& code) {
  const Ptr* p = FindIn(m, code);
  return p ? *p : nullptr;
}
}  // namespace

const std::map<SStringW, QVLoadingBarStylePtr>& QVLoadingBarStyles() {
  static const std::map<SStringW, QVLoadingBarStylePtr> kTable = [] {
    std::map<SStringW, QVLoadingBarStylePtr> m;
    const std::pair<const wchar_t*, std::pair<int, const wchar_t*>> rows[] = {
        {L"LB1", {2, L"size:12dp"}}, {L"LB2", {3, L"size:13dp"}}};
    for (const auto& r : rows) {
      auto rec = std::make_shared<QVLoadingBarStyleInfo>();
      rec->line_dp = r.second.first;
      rec->font = r.second.second;
      rec->line_color = StateColor(L"bar_line");
      rec->track_color = StateColor(L"bar_track");
      rec->remind_bkgnd = StateColor(L"bar_remind_bg");
      rec->fail_bkgnd = StateColor(L"bar_fail_bg");
      rec->text_color = TextColor(L"text_h1");
      rec->link_color = TextColor(L"text_link_normal");
      m[r.first] = rec;
    }
    return m;
  }();
  return kTable;
}

const std::map<SStringW, QVPageLoadingCtrlStylePtr>& QVPageLoadingCtrlStyles() {
  static const std::map<SStringW, QVPageLoadingCtrlStylePtr> kTable = [] {
    struct Row {
      const wchar_t* code;
      int spinner, picture;
      const wchar_t* font;
      const wchar_t* button;
    };
    const Row rows[] = {{L"PL1", 32, 96, L"size:13dp", L"MB2_D"}, {L"PL2", 20, 56, L"size:12dp", L"MB3_D"}};
    std::map<SStringW, QVPageLoadingCtrlStylePtr> m;
    for (const Row& r : rows) {
      auto rec = std::make_shared<QVPageLoadingCtrlStyleInfo>();
      rec->spinner_dp = r.spinner;
      rec->picture_dp = r.picture;
      rec->font = r.font;
      rec->bkgnd = StateColor(L"page_bg");
      rec->spinner_color = StateColor(L"accent");
      rec->picture_color = StateColor(L"picture_line");
      rec->picture_fill = StateColor(L"picture_fill");
      rec->fail_color = StateColor(L"error");
      rec->text_color = TextColor(L"text_h3");
      rec->button_style = r.button;
      m[r.code] = rec;
    }
    return m;
  }();
  return kTable;
}

const std::map<SStringW, QVPictureUploadCtrlStylePtr>& QVPictureUploadCtrlStyles() {
  static const std::map<SStringW, QVPictureUploadCtrlStylePtr> kTable = [] {
    std::map<SStringW, QVPictureUploadCtrlStylePtr> m;
    const std::pair<const wchar_t*, std::pair<int, int>> rows[] = {{L"PU1", {160, 100}}, {L"PU2", {100, 100}}};
    for (const auto& r : rows) {
      auto rec = std::make_shared<QVPictureUploadCtrlStyleInfo>();
      rec->width_dp = r.second.first;
      rec->height_dp = r.second.second;
      rec->font = L"size:12dp";
      rec->bkgnd = StateColor(L"upload_bg");
      rec->border = StateColor(L"upload_border");
      rec->border_hover = StateColor(L"accent");
      rec->text_color = TextColor(L"text_h3");
      rec->accent = StateColor(L"accent");
      rec->track = StateColor(L"track");
      rec->error = StateColor(L"error");
      m[r.first] = rec;
    }
    return m;
  }();
  return kTable;
}

QVLoadingBarStylePtr FindQVLoadingBarStyle(const SStringW& code) { return FindPtr(QVLoadingBarStyles(), code); }
QVPageLoadingCtrlStylePtr FindQVPageLoadingCtrlStyle(const SStringW& code) {
  return FindPtr(QVPageLoadingCtrlStyles(), code);
}
QVPictureUploadCtrlStylePtr FindQVPictureUploadCtrlStyle(const SStringW& code) {
  return FindPtr(QVPictureUploadCtrlStyles(), code);
}

const QVTextStyle* FindQVTextStyle(const SStringW& code) { return FindIn(QVTextStyles(), code); }
const QVLinkStyle* FindQVLinkStyle(const SStringW& code) { return FindIn(QVLinkStyles(), code); }
const QVEditStyle* FindQVEditStyle(const SStringW& code) { return FindIn(QVEditStyles(), code); }
const QVEditStyle* FindQVEditComStyle(const SStringW& code) { return FindIn(QVEditComStyles(), code); }

QVButtonStylePtr FindQVButtonStyle(const SStringW& code) {
  const QVButtonStylePtr* p = FindIn(QVButtonStyles(), code);
  return p ? *p : nullptr;
}

QVIconButtonStylePtr FindQVIconButtonStyle(const SStringW& code) {
  const QVIconButtonStylePtr* p = FindIn(QVIconButtonStyles(), code);
  return p ? *p : nullptr;
}

HRESULT ApplyQVTextStyle(SWindow* ctrl, const SStringW& code, BOOL loading, QVTextStyle* applied) {
  const QVTextStyle* rec = FindQVTextStyle(code);
  if (!rec || !ctrl) return S_OK;
  if (applied) *applied = *rec;
  ctrl->SetAttribute(L"font", rec->font, loading);
  ctrl->SetAttribute(L"colorText", rec->color, loading);
  return S_OK;
}

void ApplyQVButtonStyleAttributes(SWindow* ctrl, const QVButtonStyleInfo& rec) {
  if (!ctrl) return;
  for (const auto& kv : rec.Attributes()) ctrl->SetAttribute(kv.first, kv.second, FALSE);
  ctrl->SetAttribute(L"height", SStringW::Format2(L"%ddp", rec.sizes[0]), FALSE);
}

COLORREF ResolveQVStyleColor(const SStringW& text) {
  if (text.IsEmpty()) return CR_INVALID;
  SApplication* app = SApplication::getSingletonPtr();
  COLORREF c = CR_INVALID;
  if (app && app->GetResProvider().ResolveColor(text, &c)) return c;
  if (ParseColorLiteral(text, &c)) return c;
  return CR_INVALID;
}

}  // namespace QVStandardCtrls
