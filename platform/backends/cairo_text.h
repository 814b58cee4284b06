// Internal to the cairo backend: pango fonts and a cache of shaped texts
// (pango layouts, and glyph runs for short ASCII texts).
//
// Shaping is the expensive part of text painting, and a UI repaints the same
// labels over and over, so shaped texts are kept in an LRU keyed by font,
// text and the box parameters. One engine serves every target of a factory, so a window
// that recreates its target on resize keeps its cache.
#pragma once

#include <pango/pangocairo.h>

#include <array>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "soui/render.h"

namespace SOUI {

// The face used for an empty FontDesc::face and as the fallback of any other.
extern const char kDefaultFontFace[];

class TextEngine {
 public:
  struct Font {
    PangoFontDescription* desc = nullptr;
    PangoAttrList* attrs = nullptr;  // underline / strike; null when neither
    int px = 12;                     // em size in pixels
    // The font pango picks first for the description, which short texts of
    // printable ASCII are shaped with directly (see Shaped); null when it
    // cannot be loaded.
    PangoFont* first = nullptr;
  };

  // How a layout is boxed. width < 0: no width (one line per paragraph).
  struct Box {
    int width = -1;
    int height = -1;  // with ellipsize: lines that do not fit are dropped
    bool wrap = false;
    bool ellipsize = false;
    PangoAlignment align = PANGO_ALIGN_LEFT;
    bool needs_layout = false;  // a PangoLayout is wanted (to walk its clusters), never a run
  };

  // Either a PangoLayout or, for one line of printable ASCII in a font that
  // has every glyph of it, a run: the glyphs pango would have laid out,
  // shaped without the layout's itemizing and line breaking (the cost of
  // a watchlist's first paint is mostly that).
  struct Shaped {
    PangoLayout* layout = nullptr;
    PangoGlyphString* run = nullptr;  // with run_font, when layout is null
    PangoFont* run_font = nullptr;
    int baseline = 0;          // pango units below the top, of a run
    PangoRectangle logical{};  // pixels, relative to the layout origin
  };
  // Draws shaped text with its top left at (x, y) in the current source.
  static void Show(cairo_t* cr, const Shaped& shaped, double x, double y);

  // The cache starts with room for kCacheCapacity layouts and doubles it,
  // up to kMaxCacheCapacity, when texts it let go of are soon asked for
  // again: a view showing more texts than fit would otherwise shape every
  // one of them on every paint.
  static constexpr size_t kCacheCapacity = 2048;
  static constexpr size_t kMaxCacheCapacity = 32768;
  // Pango measures in 1/1024 pixel ints: extents stay below this many pixels
  // so that they cannot wrap around.
  static constexpr int kMaxExtent = (1 << 30) / PANGO_SCALE;
  // How many characters of a font may be shaped at once: the render cap,
  // less for a font so large that the line could outgrow kMaxExtent (an
  // advance is assumed to be at most two ems).
  static size_t MaxShapedChars(const Font* font);

  TextEngine();
  ~TextEngine();
  TextEngine(const TextEngine&) = delete;
  TextEngine& operator=(const TextEngine&) = delete;

  // Stable for the engine's lifetime.
  const Font* GetFont(const FontDesc& desc);
  // The shaped layout of text, of which at most MaxShapedChars(font)
  // characters are shaped; with single_line, CR, LF and CRLF read as one
  // space. Valid until the next call. Layouts are found by the text as
  // given, so a repaint converts nothing; a full cache lets go of one not
  // used since the eviction hand last passed it (a second-chance
  // approximation of least recently used, so that a hit writes only its
  // own entry).
  const Shaped& Layout(const Font* font, std::wstring_view text, bool single_line, const Box& box);
  size_t CachedLayouts() const { return index_.size(); }
  // Texts shaped so far (each miss of the cache shapes one).
  size_t ShapeCount() const { return shape_count_; }
  size_t Capacity() const { return capacity_; }
  void DropLayouts();

 private:
  struct Key {
    const Font* font;
    std::wstring text;
    int width, height;
    int flags;
    bool Matches(const Font* f, std::wstring_view t, int w, int h, int fl) const {
      return font == f && width == w && height == h && flags == fl && text == t;
    }
    bool operator==(const Key& o) const { return Matches(o.font, o.text, o.width, o.height, o.flags); }
  };
  static size_t Hash(const Font* font, std::wstring_view text, int width, int height, int flags);
  // The run of text when it can be one (see Shaped), else false.
  bool ShapeRun(const Font* font, std::wstring_view text, Shaped* shaped);
  Shaped ShapeLayout(const Font* font, std::wstring_view text, bool single_line, const Box& box);
  static void Release(Shaped* shaped);
  struct KeyHash {
    size_t operator()(const Key& k) const { return Hash(k.font, k.text, k.width, k.height, k.flags); }
  };
  struct Entry {
    Shaped shaped;
    bool used = false;  // looked up again since it was made or the hand last passed
  };
  using Cached = std::pair<const Key, Entry>;
  struct DescLess {
    bool operator()(const FontDesc& a, const FontDesc& b) const;
  };

  PangoFontMap* font_map_;
  PangoContext* context_;
  std::map<FontDesc, std::unique_ptr<Font>, DescLess> fonts_;
  // Frees a slot of ring_ and returns its index.
  size_t Evict();
  // A text not in the cache is about to be shaped: grows the cache when
  // too many such texts are ones it let go of lately.
  void NoteMiss(size_t hash);

  std::unordered_map<Key, Entry, KeyHash> index_;
  std::vector<Cached*> ring_;  // the entries in eviction order; elements of index_ do not move
  size_t hand_ = 0;
  // The entry last found per hash slot: a repaint finds its texts here with
  // one probe instead of walking a bucket chain.
  static constexpr size_t kFrontSlots = 4096;
  std::array<Cached*, kFrontSlots> front_{};
  size_t capacity_ = kCacheCapacity;
  // Hashes of the texts let go of last (at most capacity_ of them), and how
  // many of those were asked for again since the capacity last changed.
  std::unordered_set<size_t> ghosts_;
  std::deque<size_t> ghost_order_;
  size_t ghost_hits_ = 0;
  size_t shape_count_ = 0;
  Key probe_{};       // reused for lookups so that a cache hit allocates nothing
  std::string utf8_;  // the text handed to pango, when a layout is made
};

// Appends text as UTF-8; with single_line, CR, LF and CRLF become one space.
void AppendUtf8(std::string* out, const wchar_t* text, size_t len, bool single_line);

}  // namespace SOUI
