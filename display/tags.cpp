#include "display/tags.h"

#include <vector>

#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

QVTagTable BuildTagTable() {
  QVTagTable t;
  t.kind_digits = {{L"Bordered", L"1"}, {L"Transparent", L"2"}, {L"Solid", L"3"}};
  // Shenzhen has no tags of its own and shows the Shanghai ones.
  t.market_prefixes = {{L"HK", L"THK"}, {L"US", L"TUS"}, {L"SG", L"TSG"},
                       {L"SH", L"TSH"}, {L"SZ", L"TSH"}, {L"JP", L"TJP"}};
  t.sizes = {{L"large", {16, L"size:13dp"}}, {L"medium", {14, L"size:11dp"}}, {L"small", {12, L"size:10dp"}}};

  struct Family {
    const wchar_t* prefix;
    const wchar_t* word;
  };
  static const Family kFamilies[] = {
      {L"TBU", L"buy"},       {L"TSE", L"sell"},     {L"TRI", L"rise"},     {L"TFA", L"fall"},
      {L"THL", L"highlight"}, {L"TGL", L"graylight"}, {L"TGA", L"gray"},    {L"TBG", L"bluegray"},
      {L"TGO", L"gold"},      {L"TYE", L"yellow"},   {L"TPI", L"pink"},     {L"TBL", L"blue"},
      {L"TWH", L"white"},     {L"THK", L"hk"},       {L"TUS", L"us"},       {L"TSG", L"sg"},
      {L"TSH", L"sh"},        {L"TJP", L"jp"},
  };
  const SStringW color_base = L"@color\\style_tag\\skin_text_tag_";
  for (const Family& f : kFamilies) {
    const SStringW word = f.word;
    const SStringW skin_base = SStringW(L"skin_tagbg_") + word + L"_";
    const SStringW family_color = color_base + word;
    // Solid tags carry the primary text on the filled block; white blocks
    // need dark text to stay readable.
    const SStringW solid_color = word == L"white" ? color_base + L"black" : color_base + L"h1";
    const SStringW prefix = f.prefix;
    t.codes[prefix + L"1"] = std::make_shared<QVTagStyleInfo>(QVTagStyleInfo{skin_base + L"border", family_color});
    t.codes[prefix + L"2"] = std::make_shared<QVTagStyleInfo>(QVTagStyleInfo{skin_base + L"opacity", family_color});
    t.codes[prefix + L"3"] = std::make_shared<QVTagStyleInfo>(QVTagStyleInfo{skin_base + L"block", solid_color});
  }
  return t;
}

}  // namespace

const QVTagTable& GetQVTagTable() {
  static const QVTagTable kTable = BuildTagTable();
  return kTable;
}

SStringW QVMarketTagCode(const SStringW& market, const SStringW& kind) {
  const QVTagTable& t = GetQVTagTable();
  auto m = t.market_prefixes.find(market);
  auto k = t.kind_digits.find(kind);
  if (m == t.market_prefixes.end() || k == t.kind_digits.end()) return SStringW();
  return m->second + k->second;
}

// ---- CQVTag ---------------------------------------------------------------------------

namespace {
const QVAdmittedAttrs& TagAdmittedAttrs() {
  static const QVAdmittedAttrs kSet = {L"padding",      L"padding_left",   L"padding_right", L"padding_top",
                                       L"padding_bottom", L"margin",       L"align",         L"valign"};
  return kSet;
}
}  // namespace

HRESULT CQVTag::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVTag> kAttrs[] = {
      {L"qvstyle", &CQVTag::OnAttrQVStyle},
      {L"size", &CQVTag::OnAttrSize},
      {L"pos", &CQVTag::OnAttrPos},
  };
  return QVDispatchAttribute<CQVTag, SWindow>(this, kAttrs, &TagAdmittedAttrs(), name, value, loading);
}

BOOL CQVTag::InitFromXml(pugi::xml_node node) {
  const BOOL result = SWindow::InitFromXml(node);
  InitCommStyle();
  return result;
}

HRESULT CQVTag::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  style_code_ = value;
  // Loading applies once at the end; a later change shows at once.
  if (!loading) InitCommStyle();
  return S_OK;
}

HRESULT CQVTag::OnAttrSize(const SStringW& value, BOOL loading) {
  size_name_ = value;
  if (!loading) InitCommStyle();
  return S_OK;
}

HRESULT CQVTag::OnAttrPos(const SStringW& value, BOOL loading) {
  const std::vector<SStringW> parts = SplitString(value, L',');
  if (parts.size() < 3) return SWindow::SetAttribute(L"pos", value, loading);
  const SStringW pos = parts[0] + L"," + parts[1] + L"," + parts[2] + L",@1dp";
  const HRESULT hr = SWindow::SetAttribute(L"pos", pos, loading);
  const auto& sizes = GetQVTagTable().sizes;
  auto it = sizes.find(size_name_);
  if (it != sizes.end()) SWindow::SetAttribute(L"height", SStringW::Format2(L"%ddp", it->second.height_dp), loading);
  return hr;
}

void CQVTag::InitCommStyle() { ApplyTagStyle(style_code_); }

void CQVTag::ApplyTagStyle(const SStringW& code) {
  const QVTagTable& t = GetQVTagTable();
  auto c = t.codes.find(code);
  auto s = t.sizes.find(size_name_);
  if (c == t.codes.end() || s == t.sizes.end()) return;
  // Straight to the toolkit: these are the looks the filter keeps from pages.
  SWindow::SetAttribute(L"height", SStringW::Format2(L"%ddp", s->second.height_dp), FALSE);
  SWindow::SetAttribute(L"font", s->second.font, FALSE);
  SWindow::SetAttribute(L"colorText", c->second->text_color, FALSE);
  SWindow::SetAttribute(L"skin", c->second->skin, FALSE);
}

// ---- CQVMarketTag ---------------------------------------------------------------------

HRESULT CQVMarketTag::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVMarketTag> kAttrs[] = {
      {L"market", &CQVMarketTag::OnAttrMarket},
      {L"background", &CQVMarketTag::OnAttrBackground},
  };
  return QVDispatchAttribute<CQVMarketTag, CQVTag>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVMarketTag::OnAttrMarket(const SStringW& value, BOOL loading) {
  market_ = value;
  if (!loading) InitCommStyle();
  return S_OK;
}

HRESULT CQVMarketTag::OnAttrBackground(const SStringW& value, BOOL loading) {
  SApplication* app = SApplication::getSingletonPtr();
  background_ = app ? app->tr(value, SStringW()) : value;
  // Like the market, a later change shows at once.
  if (!loading) InitCommStyle();
  return S_OK;
}

void CQVMarketTag::InitCommStyle() {
  const SStringW code = QVMarketTagCode(market_, background_);
  if (!code.IsEmpty()) ApplyTagStyle(code);
}

}  // namespace QVStandardCtrls
