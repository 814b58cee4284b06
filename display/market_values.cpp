#include "display/market_values.h"

#include <algorithm>
#include <map>

#include "framework/style_tables.h"
#include "qvhost/config.h"
#include "qvhost/zoom.h"
#include "soui/attr_names.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

const wchar_t kQVColorRise[] = L"@color\\style_skin_qv_text\\text_rise";
const wchar_t kQVColorFall[] = L"@color\\style_skin_qv_text\\text_fall";
const wchar_t kQVColorStable[] = L"@color\\style_skin_qv_text\\text_stable";

namespace {

bool ReadRedRise() {
  bool red_rise = true;  // an absent setting keeps the red-rises convention
  Util_Config::UserCfg_ReadBool(kQVCfgRedRise, &red_rise);
  return red_rise;
}

SStringW Translate(const SStringW& text) {
  SApplication* app = SApplication::getSingletonPtr();
  return app ? app->tr(text, SStringW()) : text;
}

}  // namespace

bool FindQVRiseFallArrowSize(const SStringW& code, QVRiseFallArrowSize* out) {
  // The largest two sizes of each family share one arrow on purpose.
  static const std::map<SStringW, QVRiseFallArrowSize> kSizes = {
      {L"RGR1", {3, 3, 6, 4}},  {L"RGR2", {3, 5, 7, 5}},  {L"RGR3", {3, 5, 9, 5}},
      {L"RGR4", {3, 6, 9, 5}},  {L"RGR5", {3, 7, 11, 5}}, {L"RGR6", {5, 9, 13, 7}},
      {L"RGR7", {5, 9, 13, 7}}, {L"RGB1", {3, 5, 7, 5}},  {L"RGB2", {3, 6, 9, 5}},
      {L"RGB3", {3, 7, 11, 5}}, {L"RGB4", {5, 9, 13, 7}}, {L"RGB5", {5, 9, 13, 7}},
  };
  auto it = kSizes.find(code);
  if (it == kSizes.end()) return false;
  if (out) *out = it->second;
  return true;
}

// ---- CQVRedGreenStatic ------------------------------------------------------------

CQVRedGreenStatic::CQVRedGreenStatic() {
  // A label that is only ever given "current" must still show the user's
  // convention, so it is read once here as well as on every "compare".
  UpdateRiseFallColor();
  // Both values start at 0, so a fresh label is stable; that colour is set
  // with the first value, or on creation for a label given none (setting it
  // here would cost every label a style of its own before its attributes).
  // Without an application there is no dispatch; such a label simply keeps
  // the convention it was built with.
  if (IMessageDispatch* dispatch = GetMsgDispatch()) {
    dispatch->Bind(kQVMsgRiseFallColorChanged, this,
                   [this](unsigned msg, unsigned param, msg_body_ptr body) {
                     OnRiseFallColorChange(msg, param, std::move(body));
                   });
  }
}

int CQVRedGreenStatic::OnCreate() {
  ResetColorText();
  return SStatic::OnCreate();
}

CQVRedGreenStatic::~CQVRedGreenStatic() {
  if (IMessageDispatch* dispatch = GetMsgDispatch()) dispatch->UnBind(this);
}

HRESULT CQVRedGreenStatic::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVRedGreenStatic> kAttrs[] = {
      {L"qvstyle", &CQVRedGreenStatic::OnAttrQVStyle},
      {L"compare", &CQVRedGreenStatic::OnAttrCompare},
      {L"current", &CQVRedGreenStatic::OnAttrCurrent},
  };
  // Everything else is the toolkit label's.
  return QVDispatchAttribute<CQVRedGreenStatic, SStatic>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVRedGreenStatic::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  // A watchlist gives every label the same code: the last one found is
  // tried first (the table lives as long as the process).
  static const std::pair<const SStringW, SStringW>* last = nullptr;
  if (!last || last->first != value) {
    const auto& fonts = QVRedGreenFonts();
    auto it = fonts.find(value);
    if (it == fonts.end()) {
      QVLogBadValue(this, L"qvstyle", value);
      return S_OK;
    }
    last = &*it;
  }
  // Interned, so that what the name means is remembered as for a layout's names.
  static SStringW font_spare;
  static const SStringW& kFont = InternName("font", &font_spare);
  EditStyle(kFont, last->second);
  if (!loading) RequestRelayout();
  return S_OK;
}

HRESULT CQVRedGreenStatic::OnAttrCompare(const SStringW& value, BOOL loading) {
  (void)loading;
  int64_t compare = compare_;
  StrToInt64ExW(value, STIF_SUPPORT_HEX, &compare);
  UpdateRiseFallColor();
  // While loading, OnCreate colours the label once from both numbers.
  if (IsLoadingXml()) compare_ = compare;
  else SetCompare(compare);
  return S_FALSE;  // repainted above only if it changed
}

HRESULT CQVRedGreenStatic::OnAttrCurrent(const SStringW& value, BOOL loading) {
  (void)loading;
  int64_t current = current_;
  StrToInt64ExW(value, STIF_SUPPORT_HEX, &current);
  if (IsLoadingXml()) current_ = current;
  else SetCurrent(current);
  return S_FALSE;
}

void CQVRedGreenStatic::SetCompare(int64_t compare) {
  const bool moved = compare != compare_;
  compare_ = compare;
  if (ResetColorText() || moved) Invalidate();
}

void CQVRedGreenStatic::SetCurrent(int64_t current) {
  const bool moved = current != current_;
  current_ = current;
  if (ResetColorText() || moved) Invalidate();
}

void CQVRedGreenStatic::UpdateRiseFallColor() {
  red_rise_ = ReadRedRise();
}

bool CQVRedGreenStatic::ResetColorText() {
  const wchar_t* ref = current_ > compare_   ? GetRiseColorRef()
                       : current_ < compare_ ? GetFallColorRef()
                                             : GetStableColorRef();
  // Widened once: every label of a watchlist sets one of the three.
  static const SStringW kRise(kQVColorRise), kFall(kQVColorFall), kStable(kQVColorStable);
  static SStringW color_text_spare;
  static const SStringW& kColorText = InternName("colorText", &color_text_spare);
  const SStringW& wide = ref == kQVColorRise ? kRise : ref == kQVColorFall ? kFall : kStable;
  if (GetStyle().colorText[0].Source() == wide) return false;  // most updates keep the direction
  EditStyle(kColorText, wide);
  return true;
}

void CQVRedGreenStatic::OnRiseFallColorChange(unsigned message, unsigned parameter, msg_body_ptr body) {
  (void)message;
  (void)parameter;
  (void)body;
  UpdateRiseFallColor();
  ResetColorText();
  Invalidate();
}

// ---- CQVRiseFallPrice --------------------------------------------------------------

CQVRiseFallPrice::CQVRiseFallPrice() = default;

HRESULT CQVRiseFallPrice::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVRiseFallPrice> kAttrs[] = {
      {L"qvstyle", &CQVRiseFallPrice::OnAttrQVStyle},
      {L"pricetext", &CQVRiseFallPrice::OnAttrPriceText},
      {L"risefalltext", &CQVRiseFallPrice::OnAttrRiseFallText},
      {L"direction", &CQVRiseFallPrice::OnAttrDirection},
      {L"bodyx", &CQVRiseFallPrice::OnAttrBodyX},
      {L"bodyy", &CQVRiseFallPrice::OnAttrBodyY},
      {L"arrowx", &CQVRiseFallPrice::OnAttrArrowX},
      {L"arrowy", &CQVRiseFallPrice::OnAttrArrowY},
      {L"colorrise", &CQVRiseFallPrice::OnAttrColorRise},
      {L"colorfall", &CQVRiseFallPrice::OnAttrColorFall},
      {L"colorstable", &CQVRiseFallPrice::OnAttrColorStable},
      {L"redrise", &CQVRiseFallPrice::OnAttrRedRise},
  };
  return QVDispatchAttribute<CQVRiseFallPrice, SWindow>(this, kAttrs, nullptr, name, value, loading);
}

int CQVRiseFallPrice::OnCreate() {
  const int result = SWindow::OnCreate();
  price_label_.SetAttribute(L"pos", L"0dp, 0dp", FALSE);
  change_label_.SetAttribute(L"pos", L"[5dp, 0dp", FALSE);
  // A price starts in the red-rises colours whatever the user's setting;
  // the application moves it with "redrise". Colours given in the XML are
  // replaced here on purpose: the price only ever shows the house colours.
  SetAttribute(L"colorrise", kQVColorRise, FALSE);
  SetAttribute(L"colorfall", kQVColorFall, FALSE);
  SetAttribute(L"colorstable", kQVColorStable, FALSE);
  return result;
}

HRESULT CQVRiseFallPrice::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  (void)loading;
  const auto& pairs = QVRedGreenFontPairs();
  auto it = pairs.find(value);
  if (it == pairs.end()) return S_OK;
  price_label_.SetAttribute(L"font", it->second.first, FALSE);
  change_label_.SetAttribute(L"font", it->second.second, FALSE);
  // The holders resolve at the window's scale when painting.
  price_font_.Set(it->second.first);
  change_font_.Set(it->second.second);
  QVRiseFallArrowSize sz{};
  if (FindQVRiseFallArrowSize(value, &sz)) {
    body_x_ = sz.body_x;
    body_y_ = sz.body_y;
    arrow_x_ = sz.arrow_x;
    arrow_y_ = sz.arrow_y;
  }
  return S_OK;
}

HRESULT CQVRiseFallPrice::OnAttrPriceText(const SStringW& value, BOOL loading) {
  (void)loading;
  price_text_ = Translate(value);
  return S_OK;
}

HRESULT CQVRiseFallPrice::OnAttrRiseFallText(const SStringW& value, BOOL loading) {
  (void)loading;
  change_text_ = Translate(value);
  return S_OK;
}

HRESULT CQVRiseFallPrice::OnAttrTextPrice(const SStringW& text, BOOL loading) {
  (void)loading;
  price_label_.SetWindowText(text);
  Invalidate();
  return S_OK;
}

HRESULT CQVRiseFallPrice::OnAttrTextRiseFall(const SStringW& text, BOOL loading) {
  (void)loading;
  change_label_.SetWindowText(text);
  Invalidate();
  return S_OK;
}

HRESULT CQVRiseFallPrice::OnAttrDirection(const SStringW& value, BOOL) {
  StrToIntExW(value, STIF_SUPPORT_HEX, &direction_);
  return S_OK;
}
HRESULT CQVRiseFallPrice::OnAttrBodyX(const SStringW& value, BOOL) {
  StrToIntExW(value, STIF_SUPPORT_HEX, &body_x_);
  return S_OK;
}
HRESULT CQVRiseFallPrice::OnAttrBodyY(const SStringW& value, BOOL) {
  StrToIntExW(value, STIF_SUPPORT_HEX, &body_y_);
  return S_OK;
}
HRESULT CQVRiseFallPrice::OnAttrArrowX(const SStringW& value, BOOL) {
  StrToIntExW(value, STIF_SUPPORT_HEX, &arrow_x_);
  return S_OK;
}
HRESULT CQVRiseFallPrice::OnAttrArrowY(const SStringW& value, BOOL) {
  StrToIntExW(value, STIF_SUPPORT_HEX, &arrow_y_);
  return S_OK;
}

namespace {
// An empty value is rejected; so is one the theme cannot resolve, which
// keeps a typo from silently turning a price colourless.
HRESULT SetPriceColor(ThemedColor& color, const SStringW& value) {
  if (value.IsEmpty()) return E_FAIL;
  return color.Set(value) ? S_OK : E_FAIL;
}
}  // namespace

HRESULT CQVRiseFallPrice::OnAttrColorRise(const SStringW& value, BOOL) { return SetPriceColor(rise_color_, value); }
HRESULT CQVRiseFallPrice::OnAttrColorFall(const SStringW& value, BOOL) { return SetPriceColor(fall_color_, value); }
HRESULT CQVRiseFallPrice::OnAttrColorStable(const SStringW& value, BOOL) {
  return SetPriceColor(stable_color_, value);
}

HRESULT CQVRiseFallPrice::OnAttrRedRise(const SStringW& value, BOOL) {
  red_rise_ = (value == L"0" || value == L"false") ? 0 : 1;
  return S_OK;
}

void CQVRiseFallPrice::ReSetColor() {
  if (red_rise_ == applied_red_rise_) return;
  applied_red_rise_ = red_rise_;
  SetAttribute(L"colorrise", red_rise_ ? kQVColorRise : kQVColorFall, FALSE);
  SetAttribute(L"colorfall", red_rise_ ? kQVColorFall : kQVColorRise, FALSE);
  SetAttribute(L"colorstable", kQVColorStable, FALSE);
}

void CQVRiseFallPrice::OnPaint(IRenderTarget* rt) {
  if (!rt || price_text_.IsEmpty() || change_text_.IsEmpty()) return;
  ReSetColor();

  const COLORREF chosen = direction_ > 0 ? rise_color_.Get() : direction_ == 0 ? stable_color_.Get() : fall_color_.Get();
  const bool has_color = chosen != CR_INVALID;
  const COLORREF old_color = rt->GetTextColor();
  if (has_color) rt->SetTextColor(chosen);
  // Without a colour of its own the arrow takes the window's text colour.
  const COLORREF ink = has_color ? chosen : old_color;

  const CRect rc = GetWindowRect();
  const UINT fmt = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;
  const int scale = GetScale();

  // Fonts without a style code: the window's own paint font.
  IFontPtr price_font = price_font_.IsSet() ? price_font_.Get(scale) : nullptr;
  if (!price_font) price_font = GetPaintFont(rt);
  IFontPtr old_font = rt->SelectFont(price_font);
  SIZE price_sz{0, 0};
  rt->MeasureText(price_text_, price_text_.GetLength(), &price_sz);
  CRect rc_price = rc;
  rt->DrawText(price_text_, price_text_.GetLength(), &rc_price, fmt);

  IFontPtr change_font = change_font_.IsSet() ? change_font_.Get(scale) : nullptr;
  if (!change_font) change_font = GetPaintFont(rt);
  rt->SelectFont(change_font);
  const CSize body = ZSize(CSize(body_x_, body_y_));
  const CSize arrow = ZSize(CSize(arrow_x_, arrow_y_));
  IPenPtr old_pen = rt->SelectPen(rt->CreatePen(PS_SOLID, ink, ZPixel(1)));

  // Head rows grow from a one-pixel apex by one pixel at each end, so the
  // head is symmetric about one pixel column: an even arrow width is drawn
  // one pixel wider, and a row never gets wider than that. The body is made
  // odd the same way so it sits centred under the apex.
  const int head_w = arrow.cx > 0 ? (arrow.cx | 1) : 0;
  const int body_w = body.cx > 0 ? (body.cx | 1) : 0;
  const int left = rc.left + price_sz.cx + ZPixel(5);
  const int centre = left + head_w / 2;
  const int top = rc.top + (rc.Height() - arrow.cy - body.cy) / 2;
  const bool up = direction_ > 0;
  const int head_top = up ? top : top + body.cy;
  const int body_top = up ? top + arrow.cy : top;
  for (int i = 0; i < arrow.cy && head_w > 0; ++i) {
    const int half = std::min(i, head_w / 2);
    const int y = up ? head_top + i : head_top + arrow.cy - 1 - i;
    const POINT row[2] = {{centre - half, y}, {centre + half, y}};
    rt->DrawLines(row, 2);
  }
  if (body_w > 0 && body.cy > 0) {
    const CRect rc_body(centre - body_w / 2, body_top, centre - body_w / 2 + body_w, body_top + body.cy);
    rt->FillSolidRect(&rc_body, ink);
  }

  CRect rc_change = rc;
  rc_change.left = std::min<int>(left + std::max(head_w, body_w) + ZPixel(5), rc.right);
  rt->DrawText(change_text_, change_text_.GetLength(), &rc_change, fmt);

  rt->SelectFont(old_font);
  rt->SelectPen(old_pen);
  if (has_color) rt->SetTextColor(old_color);
}

}  // namespace QVStandardCtrls
