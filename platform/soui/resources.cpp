#include "soui/resources.h"

#include <algorithm>
#include <cmath>
#include <cwctype>
#include <fstream>
#include <sstream>
#include <string_view>

#include "soui/layout.h"
#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {
namespace {

int ParseByte(const SStringW& s, bool* ok) {
  int v = 0;
  SStringW t(s);
  t.Trim();
  if (t.IsEmpty() || !StrToIntExW(t, STIF_DEFAULT, &v) || v < 0 || v > 255) *ok = false;
  return v;
}

int HexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

SStringW DirOf(const SStringW& path) {
  const int slash = path.ReverseFind(L'/');
  return slash < 0 ? SStringW() : path.Left(slash + 1);
}

bool ReadFile(const SStringW& path, std::string* out) {
  std::ifstream in(path.ToUtf8(), std::ios::binary);
  if (!in) return false;
  std::ostringstream ss;
  ss << in.rdbuf();
  *out = ss.str();
  return true;
}

// Strips "@color" style prefixes: "@color\a\b" -> "a\b", "@color/x" -> "x",
// into *key (reused by the caller, so that a lookup allocates nothing).
bool StripReference(const SStringW& text, const wchar_t* kind, std::wstring* key) {
  const std::wstring_view t(text.c_str(), static_cast<size_t>(text.GetLength()));
  const std::wstring_view k(kind);
  if (t.size() <= k.size() + 2 || t[0] != L'@' || t.substr(1, k.size()) != k) return false;
  const wchar_t sep = t[k.size() + 1];
  if (sep != L'\\' && sep != L'/') return false;
  key->assign(t.substr(k.size() + 2));
  std::replace(key->begin(), key->end(), L'/', L'\\');
  return true;
}

}  // namespace

bool ParseColorLiteral(const SStringW& text, COLORREF* out) {
  // Parsed in place: themes and layouts carry thousands of colours.
  const wchar_t* b = text.c_str();
  const wchar_t* e = b + text.GetLength();
  TrimBlanks(b, e);
  if (b < e && *b == L'#') {
    const long n = e - b - 1;
    if (n != 6 && n != 8) return false;
    int v[4] = {0, 0, 0, 255};
    for (int i = 0; i < n / 2; ++i) {
      const int hi = HexDigit(b[1 + 2 * i]), lo = HexDigit(b[2 + 2 * i]);
      if (hi < 0 || lo < 0) return false;
      v[i] = hi * 16 + lo;
    }
    if (out) *out = RGBA(v[0], v[1], v[2], v[3]);
    return true;
  }
  auto starts = [&](const wchar_t* p) {
    const wchar_t* q = b;
    for (; *p; ++p, ++q) {
      if (q >= e || std::towlower(static_cast<wint_t>(*q)) != static_cast<wint_t>(*p)) return false;
    }
    return true;
  };
  const bool rgba = starts(L"rgba(");
  const bool rgb = !rgba && starts(L"rgb(");
  if (!(rgb || rgba) || e[-1] != L')') return false;
  const SStringW inner(b + (rgba ? 5 : 4), static_cast<int>(e - b) - (rgba ? 6 : 5));
  const std::vector<SStringW> parts = SplitString(inner, L',');
  if (parts.size() != (rgba ? 4u : 3u)) return false;
  bool ok = true;
  const int r = ParseByte(parts[0], &ok), g = ParseByte(parts[1], &ok), bl = ParseByte(parts[2], &ok);
  const int a = rgba ? ParseByte(parts[3], &ok) : 255;
  if (!ok) return false;
  if (out) *out = RGBA(r, g, bl, a);
  return true;
}

bool ParseFontDesc(const SStringW& desc, int scale, const FontDesc& base, FontDesc* out) {
  FontDesc f = base;
  SStringW normalized(desc);
  normalized.Replace(L';', L',');
  for (SStringW item : SplitString(normalized, L',')) {
    item.Trim();
    if (item.IsEmpty()) continue;
    const int colon = item.Find(L':');
    if (colon <= 0) return false;
    SStringW key = item.Left(colon), value = item.Mid(colon + 1);
    key.Trim();
    key.MakeLower();
    value.Trim();
    if (key == L"face") {
      f.face = value;
    } else if (key == L"size" || key == L"adding") {
      const SLayoutSize sz = SLayoutSize::Parse(value);
      const int px = sz.toPixelSize(scale);
      if (key == L"size") {
        if (px <= 0) return false;
        f.height = px;
      } else {
        f.height = std::max(1, f.height + px);
      }
    } else if (key == L"bold") {
      f.weight = value != L"0" ? 700 : 400;
    } else if (key == L"weight") {
      int w = 0;
      if (value.CompareNoCase(L"bold") == 0) w = 700;
      else if (value.CompareNoCase(L"normal") == 0) w = 400;
      else StrToIntExW(value, STIF_DEFAULT, &w);
      if (w > 0) f.weight = std::min(w, 1000);
    } else if (key == L"italic") {
      f.italic = value != L"0";
    } else if (key == L"underline") {
      f.underline = value != L"0";
    } else if (key == L"strike") {
      f.strike = value != L"0";
    }
    // Other keys (charset, name, renderer extras) do not affect our fonts.
  }
  if (out) *out = f;
  return true;
}

// ---------------------------------------------------------------------------

SResProvider::SResProvider() {
  default_font_.face = L"WenQuanYi Micro Hei";
  default_font_.height = 12;
}

SResProvider::~SResProvider() = default;

void SResProvider::Clear() {
  colors_.clear();
  ForgetRecentColors();
  strings_.clear();
  font_cache_.clear();
  default_fonts_.clear();
  skins_.clear();
  scaled_skins_.clear();
  classes_.reset();
  xml_.clear();
  named_ids_.clear();
  ++generation_;
}

bool SResProvider::LoadUiDefFile(const SStringW& path) {
  std::string text;
  if (!ReadFile(path, &text)) return false;
  pugi::xml_document doc;
  if (const pugi::xml_parse_result parsed = doc.load_buffer(text.data(), text.size()); !parsed) {
    SLOG(kLogError, "SOUI") << L"resource file " << path << L": malformed XML: " << DescribeXmlError(parsed);
    return false;
  }
  pugi::xml_node root = doc.document_element();
  return root && LoadUiDef(root, DirOf(path));
}

bool SResProvider::LoadUiDef(pugi::xml_node uidef, const SStringW& base_dir) {
  if (!uidef) return false;
  ImageLoader load = [this, base_dir](const SStringW& src) -> IBitmapPtr {
    if (!image_loader_ || src.IsEmpty()) return nullptr;
    return image_loader_(src.GetAt(0) == L'/' ? src : base_dir + src);
  };
  for (pugi::xml_node section = uidef.first_child(); section; section = section.next_sibling()) {
    if (section.type() != pugi::node_element) continue;
    const SStringW kind = XmlName(section);
    if (kind.CompareNoCase(L"font") == 0) {
      FontDesc f = default_font_;
      if (auto a = XmlAttrNoCase(section, L"face")) f.face = XmlValue(a);
      if (auto a = XmlAttrNoCase(section, L"size")) f.height = std::max(1, a.as_int(f.height));
      SetDefaultFont(f);
    } else if (kind.CompareNoCase(L"color") == 0) {
      LoadColorTable(section, SStringW());
    } else if (kind.CompareNoCase(L"string") == 0) {
      SStringW lang = XmlValue(XmlAttrNoCase(section, L"lang"));
      if (lang.IsEmpty()) lang = L"en";
      for (pugi::xml_node s = section.first_child(); s; s = s.next_sibling()) {
        SStringW key = XmlValue(XmlAttrNoCase(s, L"id"));
        if (key.IsEmpty()) key = XmlValue(XmlAttrNoCase(s, L"name"));
        if (!key.IsEmpty()) SetString(lang, key, XmlValue(XmlAttrNoCase(s, L"value")));
      }
    } else if (kind.CompareNoCase(L"skin") == 0) {
      for (pugi::xml_node decl = section.first_child(); decl; decl = decl.next_sibling()) {
        if (decl.type() != pugi::node_element) continue;
        auto it = skin_types_.find(XmlName(decl));
        const SStringW name = XmlValue(XmlAttrNoCase(decl, L"name"));
        if (it == skin_types_.end() || name.IsEmpty()) continue;
        if (ISkinObjPtr skin = it->second(decl, load)) AddSkin(name, skin);
      }
    } else if (kind.CompareNoCase(L"style") == 0) {
      for (pugi::xml_node c = section.first_child(); c; c = c.next_sibling()) {
        const SStringW name = XmlValue(XmlAttrNoCase(c, L"name"));
        if (!name.IsEmpty()) AddClass(name, c);
      }
    } else {
      // Any other section lists XML resources of that type (layout, xml...).
      for (pugi::xml_node f = section.first_child(); f; f = f.next_sibling()) {
        const SStringW name = XmlValue(XmlAttrNoCase(f, L"name"));
        if (name.IsEmpty()) continue;
        const SStringW path = XmlValue(XmlAttrNoCase(f, L"path"));
        if (!path.IsEmpty()) {
          AddXmlFile(kind, name, path.GetAt(0) == L'/' ? path : base_dir + path);
        } else if (pugi::xml_node content = f.first_child()) {
          std::ostringstream ss;
          content.print(ss, "", pugi::format_raw);
          AddXml(kind, name, ss.str());
        }
      }
    }
  }
  ++generation_;
  return true;
}

void SResProvider::LoadColorTable(pugi::xml_node node, const SStringW& prefix) {
  ForgetRecentColors();
  for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) {
    if (c.type() != pugi::node_element) continue;
    const SStringW key = prefix.IsEmpty() ? XmlName(c) : prefix + L"\\" + XmlName(c);
    if (pugi::xml_attribute v = XmlAttrNoCase(c, L"value")) {
      COLORREF cr;
      if (ParseColorLiteral(XmlValue(v), &cr)) colors_[key.str()] = cr;
    }
    if (c.first_child()) LoadColorTable(c, key);
  }
}

void SResProvider::SetColor(const SStringW& key, COLORREF color) {
  colors_[key.str()] = color;
  ForgetRecentColors();
  ++generation_;
}

void SResProvider::ForgetRecentColors() const {
  for (RecentColor& r : recent_colors_) r.text.Empty();
}

bool SResProvider::ResolveColor(const SStringW& text, COLORREF* out) const {
  if (recent_gen_ != generation_) {
    ForgetRecentColors();
    recent_gen_ = generation_;
  }
  for (const RecentColor& r : recent_colors_) {
    if (!r.text.IsEmpty() && r.text == text) {
      if (out) *out = r.value;
      return true;
    }
  }
  if (StripReference(text, L"color", &color_probe_)) {
    auto it = colors_.find(color_probe_);
    if (it == colors_.end()) return false;
    if (out) *out = it->second;
    RecentColor& r = recent_colors_[recent_next_++ % 4];
    r.text = text;
    r.value = it->second;
    return true;
  }
  return ParseColorLiteral(text, out);
}

void SResProvider::SetLanguage(const SStringW& lang) {
  if (language_ == lang) return;
  language_ = lang;
  ++generation_;
}

void SResProvider::SetString(const SStringW& lang, const SStringW& key, const SStringW& value) {
  strings_[lang][key] = value;
  ++generation_;
}

SStringW SResProvider::ResolveString(const SStringW& text) const {
  std::wstring key_text;
  if (!StripReference(text, L"string", &key_text)) return text;
  const SStringW key(std::move(key_text));
  for (const SStringW& lang : {language_, SStringW(L"en")}) {
    auto table = strings_.find(lang);
    if (table == strings_.end()) continue;
    auto it = table->second.find(key);
    if (it != table->second.end()) return it->second;
  }
  SApplication* app = SApplication::getSingletonPtr();
  if (app && app->FirstTimeAt(L"string|" + key.str())) {
    SLOG(kLogWarn, "SOUI") << L"string '" << key << L"' is not in the theme's string table; shown empty";
  }
  return SStringW();
}

bool SResProvider::HasString(const SStringW& key) const {
  for (const auto& table : strings_) {
    if (table.second.count(key)) return true;
  }
  return false;
}

FontDesc SResProvider::GetDefaultFont(int scale) const {
  FontDesc f = default_font_;
  f.height = std::max(1, static_cast<int>(std::floor(f.height * scale / 100.0 + 0.5)));
  return f;
}

void SResProvider::SetDefaultFont(const FontDesc& desc) {
  default_font_ = desc;
  font_cache_.clear();
  default_fonts_.clear();
  ++generation_;
}

IFontPtr SResProvider::GetDefaultFontObject(int scale) {
  IFontPtr& font = default_fonts_[scale];
  if (!font) font = MakeFontObject(GetDefaultFont(scale));
  return font;
}

IFontPtr SResProvider::GetFont(const SStringW& desc, int scale) {
  const auto key = std::make_pair(desc, scale);
  auto it = font_cache_.find(key);
  if (it != font_cache_.end()) return it->second;
  FontDesc f;
  if (!ParseFontDesc(desc, scale, GetDefaultFont(scale), &f)) return nullptr;
  IFontPtr font = MakeFontObject(f);
  font_cache_[key] = font;
  return font;
}

void SResProvider::RegisterSkinType(const SStringW& type, SkinCreator creator) {
  if (creator) skin_types_[type] = std::move(creator);
}

void SResProvider::AddSkin(const SStringW& name, ISkinObjPtr skin) {
  if (!skin || name.IsEmpty()) return;
  skin->SetSkinName(name);
  skins_[name] = std::move(skin);
  for (auto it = scaled_skins_.begin(); it != scaled_skins_.end();) {
    it = it->first.first == name ? scaled_skins_.erase(it) : std::next(it);
  }
  ++generation_;
}

bool SResProvider::HasSkin(const SStringW& name) const { return skins_.count(name) != 0; }

ISkinObjPtr SResProvider::GetSkin(const SStringW& name, int scale) {
  auto it = skins_.find(name);
  if (it == skins_.end()) return nullptr;
  if (it->second->GetScale() == scale) return it->second;
  const auto key = std::make_pair(name, scale);
  auto cached = scaled_skins_.find(key);
  if (cached != scaled_skins_.end()) return cached->second;
  ISkinObjPtr scaled = it->second->Scale(scale);
  if (!scaled) scaled = it->second;
  scaled->SetSkinName(name);
  scaled_skins_[key] = scaled;
  return scaled;
}

void SResProvider::AddClass(const SStringW& name, pugi::xml_node decl) {
  pugi::xml_node old = GetClass(name);
  if (old) classes_.remove_child(old);
  pugi::xml_node copy = classes_.append_copy(decl);
  pugi::xml_attribute n = copy.attribute("name");
  if (!n) n = copy.append_attribute("name");
  n.set_value(name.ToUtf8().c_str());
  ++generation_;
}

pugi::xml_node SResProvider::GetClass(const SStringW& name) const {
  const std::string utf8 = name.ToUtf8();
  for (pugi::xml_node c = classes_.first_child(); c; c = c.next_sibling()) {
    if (utf8 == c.attribute("name").value()) return c;
  }
  return pugi::xml_node();
}

SStringW SResProvider::XmlKey(const SStringW& type, const SStringW& name) {
  SStringW t(type), n(name);
  return t.MakeLower() + L":" + n.MakeLower();
}

void SResProvider::AddXml(const SStringW& type, const SStringW& name, const std::string& utf8) {
  xml_[XmlKey(type, name)] = XmlRes{utf8, SStringW()};
}

void SResProvider::AddXmlFile(const SStringW& type, const SStringW& name, const SStringW& path) {
  xml_[XmlKey(type, name)] = XmlRes{std::string(), path};
}

bool SResProvider::HasXml(const SStringW& type, const SStringW& name) const {
  return xml_.count(XmlKey(type, name)) != 0;
}

bool SResProvider::LoadXml(pugi::xml_document& doc, const SStringW& name, const SStringW& type) const {
  auto it = xml_.find(XmlKey(type, name));
  if (it == xml_.end()) return false;
  std::string text = it->second.text;
  if (!it->second.path.IsEmpty() && !ReadFile(it->second.path, &text)) return false;
  if (const pugi::xml_parse_result parsed = doc.load_buffer(text.data(), text.size()); !parsed) {
    SLOG(kLogError, "SOUI") << type << L":" << name << L": malformed XML: " << DescribeXmlError(parsed);
    return false;
  }
  return true;
}

int SResProvider::GetNamedId(const SStringW& name) const {
  auto it = named_ids_.find(name);
  return it == named_ids_.end() ? 0 : it->second;
}

}  // namespace SOUI
