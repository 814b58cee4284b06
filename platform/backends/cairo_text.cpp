#include "backends/cairo_text.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <tuple>

namespace SOUI {

const char kDefaultFontFace[] = "WenQuanYi Micro Hei";

void AppendUtf8(std::string* out, const wchar_t* text, size_t len, bool single_line) {
  out->reserve(out->size() + len);
  for (size_t i = 0; i < len; ++i) {
    uint32_t c = static_cast<uint32_t>(text[i]);
    if (single_line && (c == '\r' || c == '\n')) {
      if (c == '\r' && i + 1 < len && text[i + 1] == L'\n') ++i;
      c = ' ';
    }
    if (c < 0x80) {
      out->push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      out->push_back(static_cast<char>(0xC0 | (c >> 6)));
      out->push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
      if (c >= 0xD800 && c <= 0xDFFF) c = 0xFFFD;  // lone surrogate: pango rejects it
      out->push_back(static_cast<char>(0xE0 | (c >> 12)));
      out->push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out->push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x110000) {
      out->push_back(static_cast<char>(0xF0 | (c >> 18)));
      out->push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      out->push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out->push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
      out->append("\xEF\xBF\xBD");
    }
  }
}

size_t TextEngine::MaxShapedChars(const Font* font) {
  const int px = font ? std::max(font->px, 1) : 12;
  const size_t by_extent = static_cast<size_t>(kMaxExtent / (2 * px));
  return std::max<size_t>(1, std::min(static_cast<size_t>(kMaxRenderTextLength), by_extent));
}

size_t TextEngine::Hash(const Font* font, std::wstring_view text, int width, int height, int flags) {
  size_t h = std::hash<std::wstring_view>()(text);
  h ^= std::hash<const void*>()(font) + 0x9e3779b9 + (h << 6) + (h >> 2);
  h ^= static_cast<size_t>(width) * 31u + static_cast<size_t>(height) * 131u + static_cast<size_t>(flags) * 1031u;
  return h;
}

bool TextEngine::DescLess::operator()(const FontDesc& a, const FontDesc& b) const {
  return std::tie(a.height, a.weight, a.italic, a.underline, a.strike, a.face) <
         std::tie(b.height, b.weight, b.italic, b.underline, b.strike, b.face);
}

TextEngine::TextEngine() {
  font_map_ = pango_cairo_font_map_new();
  context_ = pango_font_map_create_context(font_map_);
  // Grey antialiasing keeps screenshots free of colour fringes; hinted metrics
  // give whole-pixel advances, so text extents are stable integers.
  cairo_font_options_t* opts = cairo_font_options_create();
  cairo_font_options_set_antialias(opts, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(opts, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(opts, CAIRO_HINT_METRICS_ON);
  pango_cairo_context_set_font_options(context_, opts);
  cairo_font_options_destroy(opts);
}

TextEngine::~TextEngine() {
  for (auto& e : index_) Release(&e.second.shaped);
  for (auto& f : fonts_) {
    pango_font_description_free(f.second->desc);
    if (f.second->attrs) pango_attr_list_unref(f.second->attrs);
    if (f.second->first) g_object_unref(f.second->first);
  }
  g_object_unref(context_);
  g_object_unref(font_map_);
}

const TextEngine::Font* TextEngine::GetFont(const FontDesc& desc) {
  auto it = fonts_.find(desc);
  if (it != fonts_.end()) return it->second.get();

  auto font = std::make_unique<Font>();
  font->desc = pango_font_description_new();
  std::string family;
  if (!desc.face.IsEmpty()) {
    AppendUtf8(&family, desc.face.c_str(), static_cast<size_t>(desc.face.GetLength()), true);
    family += ",";
  }
  family += kDefaultFontFace;
  pango_font_description_set_family(font->desc, family.c_str());
  // A negative height is the LOGFONT way of saying "em size"; both mean pixels here.
  int px = std::abs(desc.height);
  if (px == 0) px = 12;
  font->px = px;
  pango_font_description_set_absolute_size(font->desc, static_cast<double>(px) * PANGO_SCALE);
  const int weight = desc.weight <= 0 ? 400 : std::min(1000, std::max(100, desc.weight));
  pango_font_description_set_weight(font->desc, static_cast<PangoWeight>(weight));
  pango_font_description_set_style(font->desc, desc.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  if (desc.underline || desc.strike) {
    font->attrs = pango_attr_list_new();
    if (desc.underline) pango_attr_list_insert(font->attrs, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    if (desc.strike) pango_attr_list_insert(font->attrs, pango_attr_strikethrough_new(TRUE));
  }
  font->first = pango_context_load_font(context_, font->desc);
  const Font* result = font.get();
  fonts_.emplace(desc, std::move(font));
  return result;
}

const TextEngine::Shaped& TextEngine::Layout(const Font* font, std::wstring_view text, bool single_line,
                                             const Box& box) {
  text = text.substr(0, MaxShapedChars(font));
  const int flags = (box.wrap ? 1 : 0) | (box.ellipsize ? 2 : 0) | (single_line ? 4 : 0) |
                    (box.needs_layout ? 8 : 0) | (static_cast<int>(box.align) << 4);
  const int height = box.ellipsize ? box.height : -1;
  const size_t hash = Hash(font, text, box.width, height, flags);
  Cached*& front = front_[hash % kFrontSlots];
  if (front && front->first.Matches(font, text, box.width, height, flags)) {
    front->second.used = true;
    return front->second.shaped;
  }
  probe_.font = font;
  probe_.text.assign(text);
  probe_.width = box.width;
  probe_.height = height;
  probe_.flags = flags;
  auto found = index_.find(probe_);
  if (found != index_.end()) {
    found->second.used = true;
    front = &*found;
    return found->second.shaped;
  }
  NoteMiss(hash);
  ++shape_count_;
  const size_t slot = ring_.size() < capacity_ ? ring_.size() : Evict();

  Shaped shaped;
  if (box.width >= 0 || box.needs_layout || !ShapeRun(font, text, &shaped)) {
    shaped = ShapeLayout(font, text, single_line, box);
  }
  Cached* cached = &*index_.emplace(probe_, Entry{shaped}).first;
  front = cached;
  if (slot == ring_.size()) ring_.push_back(cached);
  else ring_[slot] = cached;
  return cached->second.shaped;
}

TextEngine::Shaped TextEngine::ShapeLayout(const Font* font, std::wstring_view text, bool single_line,
                                           const Box& box) {
  PangoLayout* layout = pango_layout_new(context_);
  pango_layout_set_font_description(layout, font->desc);
  if (font->attrs) pango_layout_set_attributes(layout, font->attrs);
  utf8_.clear();
  AppendUtf8(&utf8_, text.data(), text.size(), single_line);
  pango_layout_set_text(layout, utf8_.data(), static_cast<int>(utf8_.size()));
  if (box.width >= 0) pango_layout_set_width(layout, box.width * PANGO_SCALE);
  pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
  if (box.ellipsize) {
    pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
    if (box.height >= 0) pango_layout_set_height(layout, box.height * PANGO_SCALE);
  }
  pango_layout_set_alignment(layout, box.align);

  Shaped shaped;
  shaped.layout = layout;
  // Extents in pango units are ints; whatever still wrapped reads as huge.
  pango_layout_get_pixel_extents(layout, nullptr, &shaped.logical);
  if (shaped.logical.width < 0) shaped.logical.width = kMaxExtent;
  if (shaped.logical.height < 0) shaped.logical.height = kMaxExtent;
  return shaped;
}

bool TextEngine::ShapeRun(const Font* font, std::wstring_view text, Shaped* shaped) {
  // Underlines and strikes are drawn by the layout; anything beyond
  // printable ASCII may need another font, another script or bidi.
  if (font->attrs || text.empty()) return false;
  bool letters = false;
  for (const wchar_t c : text) {
    if (c < 0x20 || c > 0x7E) return false;
    letters = letters || static_cast<unsigned>((c | 0x20) - L'a') < 26u;
  }
  if (!font->first) return false;
  utf8_.assign(text.begin(), text.end());
  // What pango's itemizer makes of such a text: one item in the first
  // font, Latin when it has a letter (digits and signs take the script
  // around them) and Common when it has none.
  PangoAnalysis analysis{};
  analysis.font = font->first;
  analysis.level = 0;
  analysis.gravity = PANGO_GRAVITY_SOUTH;
  analysis.script = letters ? PANGO_SCRIPT_LATIN : PANGO_SCRIPT_COMMON;
  analysis.language = pango_context_get_language(context_);
  PangoGlyphString* run = pango_glyph_string_new();
  const int len = static_cast<int>(utf8_.size());
  pango_shape_with_flags(utf8_.data(), len, utf8_.data(), len, &analysis, run, PANGO_SHAPE_ROUND_POSITIONS);
  for (int i = 0; i < run->num_glyphs; ++i) {
    if (run->glyphs[i].glyph & PANGO_GLYPH_UNKNOWN_FLAG) {
      pango_glyph_string_free(run);
      return false;  // the layout finds a fallback font
    }
  }
  PangoRectangle logical;
  pango_glyph_string_extents(run, font->first, nullptr, &logical);
  shaped->run = run;
  shaped->run_font = font->first;
  shaped->baseline = -logical.y;
  // The layout's box of its one line, rounded outwards to pixels as
  // pango_layout_get_pixel_extents does.
  PangoRectangle box{0, 0, logical.width, logical.height};
  pango_extents_to_pixels(&box, nullptr);
  shaped->logical = box;
  return true;
}

void TextEngine::Show(cairo_t* cr, const Shaped& shaped, double x, double y) {
  if (shaped.layout) {
    cairo_move_to(cr, x, y);
    pango_cairo_show_layout(cr, shaped.layout);
  } else if (shaped.run) {
    cairo_move_to(cr, x, y + static_cast<double>(shaped.baseline) / PANGO_SCALE);
    pango_cairo_show_glyph_string(cr, shaped.run_font, shaped.run);
  }
}

void TextEngine::Release(Shaped* shaped) {
  if (shaped->layout) g_object_unref(shaped->layout);
  if (shaped->run) pango_glyph_string_free(shaped->run);
  *shaped = Shaped();
}

void TextEngine::DropLayouts() {
  for (auto& e : index_) Release(&e.second.shaped);
  index_.clear();
  ring_.clear();
  hand_ = 0;
  front_.fill(nullptr);
  ghosts_.clear();
  ghost_order_.clear();
  ghost_hits_ = 0;
}

void TextEngine::NoteMiss(size_t hash) {
  if (capacity_ >= kMaxCacheCapacity || ghosts_.erase(hash) == 0) return;
  // A quarter of the capacity in texts shaped again: the working set does
  // not fit, and each paint would shape them again.
  if (++ghost_hits_ * 4 < capacity_) return;
  capacity_ *= 2;
  ghost_hits_ = 0;
  ghosts_.clear();
  ghost_order_.clear();
}

size_t TextEngine::Evict() {
  // Each pass clears the marks it meets, so this ends within two rounds.
  while (ring_[hand_]->second.used) {
    ring_[hand_]->second.used = false;
    hand_ = (hand_ + 1) % ring_.size();
  }
  const size_t slot = hand_;
  hand_ = (hand_ + 1) % ring_.size();
  const size_t hash = KeyHash()(ring_[slot]->first);
  Cached*& front = front_[hash % kFrontSlots];
  if (front == ring_[slot]) front = nullptr;
  if (capacity_ < kMaxCacheCapacity && ghosts_.insert(hash).second) {
    ghost_order_.push_back(hash);
    if (ghost_order_.size() > capacity_) {
      ghosts_.erase(ghost_order_.front());
      ghost_order_.pop_front();
    }
  }
  Release(&ring_[slot]->second.shaped);
  index_.erase(index_.find(ring_[slot]->first));
  return slot;
}

}  // namespace SOUI
