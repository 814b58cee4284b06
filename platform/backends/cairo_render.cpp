// Sections: bitmaps · bitmap painting helpers ·
// render target: state, text, shapes, images, clips and layers, pixels ·
// factory.
#include "backends/cairo_render.h"

#include <cmath>
#include <cstring>
#include <cwchar>

#include "backends/cairo_text.h"

namespace SOUI {
namespace {

constexpr double kPi = 3.14159265358979323846;

bool Invisible(COLORREF c) { return GetAValue(c) == 0; }

// Makes an ARGB32 copy of any image surface (PNG decoding yields RGB24 for
// opaque files). Consumes the reference to src.
cairo_surface_t* ToArgb32(cairo_surface_t* src) {
  if (cairo_surface_status(src) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(src);
    return nullptr;
  }
  if (cairo_image_surface_get_format(src) == CAIRO_FORMAT_ARGB32) return src;
  const int w = cairo_image_surface_get_width(src), h = cairo_image_surface_get_height(src);
  cairo_surface_t* dst = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
  cairo_t* cr = cairo_create(dst);
  cairo_set_source_surface(cr, src, 0, 0);
  cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
  cairo_paint(cr);
  cairo_destroy(cr);
  cairo_surface_destroy(src);
  cairo_surface_flush(dst);
  return dst;
}

// A cairo surface showing bmp's pixels, with a reference for the caller.
// Bitmaps of this backend are used directly; others are wrapped or copied.
cairo_surface_t* SurfaceOf(const IBitmap* bmp) {
  if (auto cb = dynamic_cast<const CairoBitmap*>(bmp)) return cairo_surface_reference(cb->Surface());
  const int w = bmp->Width(), h = bmp->Height();
  const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, w);
  if (bmp->Stride() == stride) {
    // Read only: cairo never writes to a source surface.
    return cairo_image_surface_create_for_data(const_cast<unsigned char*>(bmp->Bits()),
                                               CAIRO_FORMAT_ARGB32, w, h, stride);
  }
  cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
  cairo_surface_flush(copy);
  unsigned char* dst = cairo_image_surface_get_data(copy);
  const int row = std::min(stride, bmp->Stride());
  for (int y = 0; y < h; ++y) std::memcpy(dst + y * stride, bmp->Bits() + y * bmp->Stride(), static_cast<size_t>(row));
  cairo_surface_mark_dirty(copy);
  return copy;
}

CRect BitmapRect(const IBitmap* bmp, LPCRECT src) {
  const CRect all(0, 0, bmp->Width(), bmp->Height());
  return src ? (CRect(src) & all) : all;
}

// ---- bitmap painting ----

// Paints the part src of surf into dst. The part is cut out as a sub-surface
// so that filtering near its edges never reads the neighbouring frames.
void PaintPart(cairo_t* cr, cairo_surface_t* surf, const CRect& src, const CRect& dst,
               ExpandMode mode, double alpha, cairo_filter_t scale_filter) {
  if (src.IsRectEmpty() || dst.IsRectEmpty() || alpha <= 0.0) return;
  cairo_surface_t* part = cairo_surface_create_for_rectangle(surf, src.left, src.top, src.Width(), src.Height());
  cairo_pattern_t* pat = cairo_pattern_create_for_surface(part);
  cairo_matrix_t m;
  if (mode == ExpandMode::Stretch) {
    const double sx = static_cast<double>(src.Width()) / dst.Width();
    const double sy = static_cast<double>(src.Height()) / dst.Height();
    cairo_matrix_init_scale(&m, sx, sy);
    cairo_matrix_translate(&m, -dst.left, -dst.top);
    cairo_pattern_set_extend(pat, CAIRO_EXTEND_PAD);
    const bool unscaled = src.Width() == dst.Width() && src.Height() == dst.Height();
    cairo_pattern_set_filter(pat, unscaled ? CAIRO_FILTER_NEAREST : scale_filter);
  } else {
    cairo_matrix_init_translate(&m, -dst.left, -dst.top);
    cairo_pattern_set_extend(pat, mode == ExpandMode::Tile ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_NONE);
    cairo_pattern_set_filter(pat, CAIRO_FILTER_NEAREST);
  }
  cairo_pattern_set_matrix(pat, &m);
  cairo_set_source(cr, pat);
  cairo_rectangle(cr, dst.left, dst.top, dst.Width(), dst.Height());
  if (alpha >= 1.0) {
    cairo_fill(cr);
  } else {
    cairo_save(cr);
    cairo_clip(cr);
    cairo_paint_with_alpha(cr, alpha);
    cairo_restore(cr);
  }
  cairo_pattern_destroy(pat);
  cairo_surface_destroy(part);
}

// Splits a length into the two fixed margins and the rest. Margins that do not
// fit share the length in proportion.
void SplitMargins(int len, int a, int b, int* out_a, int* out_b) {
  if (a + b <= len || a + b == 0) {
    *out_a = a;
    *out_b = b;
    return;
  }
  *out_a = static_cast<int>(static_cast<long long>(len) * a / (a + b));
  *out_b = len - *out_a;
}

// Removes mnemonic markers: "&&" shows "&", "&x" shows "x".
void StripPrefix(const wchar_t* text, size_t len, std::wstring* out) {
  out->clear();
  for (size_t i = 0; i < len; ++i) {
    if (text[i] == L'&' && i + 1 < len) ++i;
    out->push_back(text[i]);
  }
}

size_t TextLength(const wchar_t* text, int len) {
  return len < 0 ? std::wcslen(text) : static_cast<size_t>(len);
}

}  // namespace


// ---- CairoBitmap ----

CairoBitmap::CairoBitmap(cairo_surface_t* surface) : surface_(surface) { cairo_surface_flush(surface_); }
CairoBitmap::~CairoBitmap() { cairo_surface_destroy(surface_); }
int CairoBitmap::Width() const { return cairo_image_surface_get_width(surface_); }
int CairoBitmap::Height() const { return cairo_image_surface_get_height(surface_); }
int CairoBitmap::Stride() const { return cairo_image_surface_get_stride(surface_); }
const unsigned char* CairoBitmap::Bits() const { return cairo_image_surface_get_data(surface_); }

IBitmapPtr CreateBitmapFromBits(int width, int height, const unsigned char* bits, int stride) {
  if (width <= 0 || height <= 0) return nullptr;
  cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
  if (cairo_surface_status(s) != CAIRO_STATUS_SUCCESS) {
    cairo_surface_destroy(s);
    return nullptr;
  }
  cairo_surface_flush(s);
  if (bits) {
    unsigned char* dst = cairo_image_surface_get_data(s);
    const int dst_stride = cairo_image_surface_get_stride(s);
    for (int y = 0; y < height; ++y)
      std::memcpy(dst + y * dst_stride, bits + y * stride, static_cast<size_t>(width) * 4);
    cairo_surface_mark_dirty(s);
  }
  return std::make_shared<CairoBitmap>(s);
}

IBitmapPtr ResizeBitmap(const IBitmap& bmp, LPCRECT src, int width, int height) {
  if (width <= 0 || height <= 0) return nullptr;
  const CRect part = BitmapRect(&bmp, src);
  cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
  cairo_surface_t* in = SurfaceOf(&bmp);
  cairo_t* cr = cairo_create(out);
  cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
  PaintPart(cr, in, part, CRect(0, 0, width, height), ExpandMode::Stretch, 1.0, CAIRO_FILTER_GOOD);
  cairo_destroy(cr);
  cairo_surface_destroy(in);
  return std::make_shared<CairoBitmap>(out);
}

// ---- CairoRenderTarget: state ----

CairoRenderTarget::CairoRenderTarget(cairo_surface_t* surface, std::shared_ptr<TextEngine> text)
    : surface_(cairo_surface_reference(surface)), cr_(cairo_create(surface)), text_(std::move(text)) {
  clip_ = CRect(CPoint(), GetSize());
  SelectFont(nullptr);
  pen_ = CreatePen(PS_SOLID, RGBA(0, 0, 0, 0xFF), 1);
  brush_ = CreateSolidColorBrush(RGBA(0, 0, 0, 0xFF));
}

CairoRenderTarget::~CairoRenderTarget() {
  cairo_destroy(cr_);
  cairo_surface_destroy(surface_);
}

CSize CairoRenderTarget::GetSize() const {
  return CSize(cairo_image_surface_get_width(surface_), cairo_image_surface_get_height(surface_));
}

IPenPtr CairoRenderTarget::CreatePen(int style, COLORREF color, int width) {
  return MakePenObject(style, color, width);
}
IBrushPtr CairoRenderTarget::CreateSolidColorBrush(COLORREF color) {
  return MakeBrushObject(color);
}
IFontPtr CairoRenderTarget::CreateFont(const FontDesc& desc) { return MakeFontObject(desc); }

IFontPtr CairoRenderTarget::SelectFont(IFontPtr font) {
  IFontPtr old = font_;
  font_ = font ? std::move(font) : MakeFontObject(FontDesc());
  for (const SelectedFont& f : recent_fonts_) {
    if (f.font == font_) {
      font_entry_ = f.entry;
      return old;
    }
  }
  font_entry_ = text_->GetFont(font_->Desc());
  recent_fonts_[1] = std::move(recent_fonts_[0]);
  recent_fonts_[0] = SelectedFont{font_, font_entry_};
  return old;
}
IPenPtr CairoRenderTarget::SelectPen(IPenPtr pen) {
  IPenPtr old = pen_;
  pen_ = std::move(pen);
  return old;
}
IBrushPtr CairoRenderTarget::SelectBrush(IBrushPtr brush) {
  IBrushPtr old = brush_;
  brush_ = std::move(brush);
  return old;
}
COLORREF CairoRenderTarget::SetTextColor(COLORREF color) {
  const COLORREF old = text_color_;
  text_color_ = color;
  return old;
}

void CairoRenderTarget::SetSourceColor(COLORREF c) {
  cairo_set_source_rgba(cr_, GetRValue(c) / 255.0, GetGValue(c) / 255.0, GetBValue(c) / 255.0,
                        GetAValue(c) / 255.0);
}

int CairoRenderTarget::PenWidth() const { return pen_ ? std::max(1, pen_->GetWidth()) : 1; }

bool CairoRenderTarget::UsePen() {
  if (!pen_ || Invisible(pen_->GetColor())) return false;
  const double w = PenWidth();
  SetSourceColor(pen_->GetColor());
  cairo_set_line_width(cr_, w);
  cairo_set_line_join(cr_, CAIRO_LINE_JOIN_MITER);
  cairo_set_line_cap(cr_, CAIRO_LINE_CAP_BUTT);
  if (pen_->GetStyle() == PS_DASH) {
    const double dash[] = {4 * w, 2 * w};
    cairo_set_dash(cr_, dash, 2, 0);
  } else if (pen_->GetStyle() == PS_DOT) {
    const double dash[] = {w, w};
    cairo_set_dash(cr_, dash, 2, 0);
  } else {
    cairo_set_dash(cr_, nullptr, 0, 0);
  }
  return true;
}

// ---- text ----

void CairoRenderTarget::DrawText(const wchar_t* text, int len, LPRECT rc, UINT format) {
  if (!text || !rc) return;
  size_t n = TextLength(text, len);
  if (!(format & DT_NOPREFIX) && std::wmemchr(text, L'&', n)) {
    StripPrefix(text, n, &wide_);
    text = wide_.data();
    n = wide_.size();
  }
  if (!(format & DT_CALCRECT)) {
    DrawLayoutText(text, n, CRect(*rc), format);
    return;
  }
  const bool single = format & DT_SINGLELINE;
  TextEngine::Box box;
  // Wrapping needs a width; an empty rectangle measures unwrapped lines.
  if (!single && (format & DT_WORDBREAK) && rc->right > rc->left) {
    box.width = rc->right - rc->left;
    box.wrap = true;
  }
  const auto& shaped = text_->Layout(font_entry_, {text, n}, single, box);
  rc->right = rc->left + shaped.logical.width;
  rc->bottom = rc->top + shaped.logical.height;
}

void CairoRenderTarget::DrawLayoutText(const wchar_t* text, size_t n, const CRect& rc, UINT format) {
  if (Invisible(text_color_) || n == 0) return;
  const TextEngine::Font* font = font_entry_;
  const bool single = format & DT_SINGLELINE;
  const bool wrap = !single && (format & DT_WORDBREAK);
  const bool ellipsis = format & DT_END_ELLIPSIS;
  const PangoAlignment align = (format & DT_CENTER) ? PANGO_ALIGN_CENTER
                               : (format & DT_RIGHT) ? PANGO_ALIGN_RIGHT
                                                     : PANGO_ALIGN_LEFT;

  TextEngine::Box box;
  box.align = single ? PANGO_ALIGN_LEFT : align;
  if (wrap) {
    // Pango places each wrapped line inside the width itself.
    box.width = std::max(0, rc.Width());
    box.wrap = true;
    box.ellipsize = ellipsis;
    box.height = ellipsis ? std::max(0, rc.Height()) : -1;
  }
  const TextEngine::Shaped* shaped = &text_->Layout(font, {text, n}, single, box);
  if (!wrap && ellipsis && shaped->logical.width > rc.Width()) {
    box.width = std::max(0, rc.Width());
    box.ellipsize = true;
    shaped = &text_->Layout(font, {text, n}, single, box);
  }
  const PangoRectangle& ext = shaped->logical;

  // With a pango width pango places the lines; otherwise the block is placed
  // here and pango only aligns lines against the widest.
  int x = rc.left;
  if (single || box.width < 0) {
    if (align == PANGO_ALIGN_CENTER) x = rc.left + (rc.Width() - ext.width) / 2;
    else if (align == PANGO_ALIGN_RIGHT) x = rc.right - ext.width;
    x -= ext.x;
  }
  int y = rc.top;
  if (single) {
    if (format & DT_VCENTER) y = rc.top + (rc.Height() - ext.height) / 2;
    else if (format & DT_BOTTOM) y = rc.bottom - ext.height;
    y -= ext.y;
  }

  const CRect drawn(x + ext.x, y + ext.y, x + ext.x + ext.width, y + ext.y + ext.height);
  const bool clip = !(format & DT_NOCLIP) && (drawn & rc) != drawn;
  if (clip) {
    cairo_save(cr_);
    cairo_rectangle(cr_, rc.left, rc.top, rc.Width(), rc.Height());
    cairo_clip(cr_);
  }
  SetSourceColor(text_color_);
  TextEngine::Show(cr_, *shaped, x, y);
  if (clip) cairo_restore(cr_);
}

void CairoRenderTarget::MeasureText(const wchar_t* text, int len, SIZE* size) {
  if (!size) return;
  *size = SIZE{0, 0};
  if (!text) return;
  const auto& shaped = text_->Layout(font_entry_, {text, TextLength(text, len)}, true, TextEngine::Box());
  *size = SIZE{shaped.logical.width, shaped.logical.height};
}

void CairoRenderTarget::MeasureCharExtents(const wchar_t* text, int len, int* ends) {
  if (!text || len <= 0) return;
  const size_t n = std::min(static_cast<size_t>(len), TextEngine::MaxShapedChars(font_entry_));
  // Byte offset of each character in the UTF-8 form the layout is made of
  // (line breaks are not expected here: each one is a character of its own).
  std::vector<int> byte_of(n + 1, 0);
  // Control characters (NUL included, which pango stops at) measure as spaces.
  wide_.assign(text, n);
  for (wchar_t& c : wide_) {
    if (static_cast<uint32_t>(c) < 0x20) c = L' ';
  }
  utf8_.clear();
  for (size_t i = 0; i < n; ++i) {
    byte_of[i] = static_cast<int>(utf8_.size());
    AppendUtf8(&utf8_, wide_.data() + i, 1, true);
  }
  byte_of[n] = static_cast<int>(utf8_.size());
  TextEngine::Box box;
  box.needs_layout = true;
  const auto& shaped = text_->Layout(font_entry_, wide_, true, box);
  // Walk the clusters: characters of one cluster (a ligature, a base with
  // its marks) share its advance evenly.
  PangoLayoutIter* iter = pango_layout_get_iter(shaped.layout);
  size_t ch = 0;
  int last = 0;
  do {
    const int start = pango_layout_iter_get_index(iter);
    PangoRectangle logical;
    pango_layout_iter_get_cluster_extents(iter, nullptr, &logical);
    const bool more = pango_layout_iter_next_cluster(iter);
    const int end = more ? pango_layout_iter_get_index(iter) : byte_of[n];
    size_t first = ch;
    while (first < n && byte_of[first] < start) ++first;
    size_t stop = first;
    while (stop < n && byte_of[stop] < end) ++stop;
    const size_t count = stop - first;
    for (size_t k = 0; k < count; ++k) {
      const double right = (logical.x + logical.width * static_cast<double>(k + 1) / static_cast<double>(count)) / PANGO_SCALE;
      last = std::max(last, static_cast<int>(right + 0.5));
      ends[first + k] = last;
    }
    for (size_t k = ch; k < first; ++k) ends[k] = last;
    ch = std::max(ch, stop);
    if (!more) break;
  } while (true);
  pango_layout_iter_free(iter);
  for (size_t k = ch; k < static_cast<size_t>(len); ++k) ends[k] = last;
}

void CairoRenderTarget::TextOut(int x, int y, const wchar_t* text, int len) {
  if (!text || Invisible(text_color_)) return;
  const auto& shaped = text_->Layout(font_entry_, {text, TextLength(text, len)}, true, TextEngine::Box());
  SetSourceColor(text_color_);
  TextEngine::Show(cr_, shaped, x, y);
}

// ---- shapes ----

void CairoRenderTarget::DrawLines(const POINT* points, int count) {
  if (!points || count < 2 || !UsePen()) return;
  // Odd widths straddle pixel centres, so that a 1px line covers one row;
  // square caps make both end pixels whole (butt caps would half-cover them).
  const double off = (PenWidth() % 2) ? 0.5 : 0.0;
  if (pen_->GetStyle() == PS_SOLID) cairo_set_line_cap(cr_, CAIRO_LINE_CAP_SQUARE);
  cairo_new_path(cr_);
  cairo_move_to(cr_, points[0].x + off, points[0].y + off);
  for (int i = 1; i < count; ++i) cairo_line_to(cr_, points[i].x + off, points[i].y + off);
  cairo_stroke(cr_);
}

void CairoRenderTarget::DrawRectangle(LPCRECT prc) {
  if (!prc || !UsePen()) return;
  const CRect rc(prc);
  const int w = PenWidth();
  if (rc.Width() <= w || rc.Height() <= w) {
    // Too small for a hole: the outline covers all of it.
    cairo_rectangle(cr_, rc.left, rc.top, std::max(0, rc.Width()), std::max(0, rc.Height()));
    cairo_fill(cr_);
    return;
  }
  cairo_rectangle(cr_, rc.left + w / 2.0, rc.top + w / 2.0, rc.Width() - w, rc.Height() - w);
  cairo_stroke(cr_);
}

void CairoRenderTarget::FillRectangle(LPCRECT rc) {
  if (rc && brush_) FillSolidRect(rc, brush_->GetColor());
}

void CairoRenderTarget::FillSolidRect(LPCRECT prc, COLORREF color) {
  if (!prc || Invisible(color)) return;
  const CRect rc(prc);
  if (rc.IsRectEmpty()) return;
  SetSourceColor(color);
  cairo_rectangle(cr_, rc.left, rc.top, rc.Width(), rc.Height());
  cairo_fill(cr_);
}

void CairoRenderTarget::ClearRect(LPCRECT prc, COLORREF color) {
  if (!prc) return;
  const CRect rc(prc);
  if (rc.IsRectEmpty()) return;
  cairo_save(cr_);
  cairo_set_operator(cr_, CAIRO_OPERATOR_SOURCE);
  SetSourceColor(color);
  cairo_rectangle(cr_, rc.left, rc.top, rc.Width(), rc.Height());
  cairo_fill(cr_);
  cairo_restore(cr_);
}

void CairoRenderTarget::RoundRectPath(double x, double y, double w, double h, double rx, double ry) {
  rx = std::min(rx, w / 2);
  ry = std::min(ry, h / 2);
  cairo_new_path(cr_);
  if (rx <= 0 || ry <= 0) {
    cairo_rectangle(cr_, x, y, w, h);
    return;
  }
  // Elliptical corners: the path survives save/restore, the scale does not.
  const struct { double cx, cy, from; } corners[] = {
      {x + w - rx, y + ry, -kPi / 2}, {x + w - rx, y + h - ry, 0},
      {x + rx, y + h - ry, kPi / 2}, {x + rx, y + ry, kPi}};
  cairo_new_sub_path(cr_);
  for (const auto& c : corners) {
    cairo_save(cr_);
    cairo_translate(cr_, c.cx, c.cy);
    cairo_scale(cr_, rx, ry);
    cairo_arc(cr_, 0, 0, 1, c.from, c.from + kPi / 2);
    cairo_restore(cr_);
  }
  cairo_close_path(cr_);
}

void CairoRenderTarget::DrawRoundRect(LPCRECT prc, POINT radius) {
  if (!prc || !UsePen()) return;
  const CRect rc(prc);
  const double w = PenWidth(), half = w / 2;
  if (rc.Width() <= w || rc.Height() <= w) return;
  RoundRectPath(rc.left + half, rc.top + half, rc.Width() - w, rc.Height() - w,
                std::max(0.0, radius.x - half), std::max(0.0, radius.y - half));
  cairo_stroke(cr_);
}

void CairoRenderTarget::FillRoundRect(LPCRECT prc, POINT radius) {
  if (!prc || !brush_ || Invisible(brush_->GetColor())) return;
  const CRect rc(prc);
  if (rc.IsRectEmpty()) return;
  SetSourceColor(brush_->GetColor());
  RoundRectPath(rc.left, rc.top, rc.Width(), rc.Height(), radius.x, radius.y);
  cairo_fill(cr_);
}

void CairoRenderTarget::DrawEllipse(LPCRECT prc) {
  if (!prc || !UsePen()) return;
  const CRect rc(prc);
  const double w = PenWidth();
  if (rc.Width() <= w || rc.Height() <= w) return;
  RoundRectPath(rc.left + w / 2, rc.top + w / 2, rc.Width() - w, rc.Height() - w, rc.Width(), rc.Height());
  cairo_stroke(cr_);
}

void CairoRenderTarget::FillEllipse(LPCRECT prc) {
  if (!prc || !brush_ || Invisible(brush_->GetColor())) return;
  const CRect rc(prc);
  if (rc.IsRectEmpty()) return;
  SetSourceColor(brush_->GetColor());
  RoundRectPath(rc.left, rc.top, rc.Width(), rc.Height(), rc.Width(), rc.Height());
  cairo_fill(cr_);
}

// ---- images ----

void CairoRenderTarget::PaintBitmapPart(const IBitmap* bmp, const CRect& src, const CRect& dst,
                                        ExpandMode mode, double alpha) {
  cairo_surface_t* surf = SurfaceOf(bmp);
  PaintPart(cr_, surf, src, dst, mode, alpha, CAIRO_FILTER_GOOD);
  cairo_surface_destroy(surf);
}

void CairoRenderTarget::DrawBitmap(LPCRECT dst, const IBitmap* bmp, LPCRECT src, ExpandMode mode,
                                   BYTE alpha) {
  if (!dst || !bmp || alpha == 0) return;
  PaintBitmapPart(bmp, BitmapRect(bmp, src), CRect(dst), mode, alpha / 255.0);
}

void CairoRenderTarget::DrawBitmap9Patch(LPCRECT pdst, const IBitmap* bmp, LPCRECT psrc,
                                         LPCRECT margins, ExpandMode mode, BYTE alpha) {
  if (!pdst || !bmp || alpha == 0) return;
  const CRect src = BitmapRect(bmp, psrc);
  const CRect dst(pdst);
  if (src.IsRectEmpty() || dst.IsRectEmpty()) return;
  CRect m = margins ? CRect(margins) : CRect();
  // Margins larger than the source are cut to it.
  m.left = std::max(0, std::min<int>(m.left, src.Width()));
  m.right = std::max(0, std::min<int>(m.right, src.Width() - m.left));
  m.top = std::max(0, std::min<int>(m.top, src.Height()));
  m.bottom = std::max(0, std::min<int>(m.bottom, src.Height() - m.top));
  int dl, dr, dt, db;
  SplitMargins(dst.Width(), m.left, m.right, &dl, &dr);
  SplitMargins(dst.Height(), m.top, m.bottom, &dt, &db);

  //   sx[0]  sx[1]        sx[2]  sx[3]
  //     +-----+------------+-----+   corners keep their size,
  //     |     |   edge     |     |   edges stretch along one axis,
  //     +-----+------------+-----+   the centre follows `mode`.
  const int sx[] = {src.left, src.left + m.left, src.right - m.right, src.right};
  const int sy[] = {src.top, src.top + m.top, src.bottom - m.bottom, src.bottom};
  const int dx[] = {dst.left, dst.left + dl, dst.right - dr, dst.right};
  const int dy[] = {dst.top, dst.top + dt, dst.bottom - db, dst.bottom};
  const ExpandMode middle = mode == ExpandMode::Tile ? ExpandMode::Tile : ExpandMode::Stretch;
  cairo_surface_t* surf = SurfaceOf(bmp);
  for (int row = 0; row < 3; ++row) {
    for (int col = 0; col < 3; ++col) {
      const bool corner = row != 1 && col != 1;
      PaintPart(cr_, surf, CRect(sx[col], sy[row], sx[col + 1], sy[row + 1]),
                CRect(dx[col], dy[row], dx[col + 1], dy[row + 1]),
                corner ? ExpandMode::Stretch : middle, alpha / 255.0, CAIRO_FILTER_GOOD);
    }
  }
  cairo_surface_destroy(surf);
}

// ---- clips and layers ----

void CairoRenderTarget::PushClipRect(LPCRECT rc) {
  if (!rc) return;
  stack_.push_back(StackEntry{Saved::Clip, clip_, 0});
  const CRect r(rc);
  cairo_save(cr_);
  cairo_rectangle(cr_, r.left, r.top, std::max(0, r.Width()), std::max(0, r.Height()));
  cairo_clip(cr_);
  clip_ = clip_ & r;
}

void CairoRenderTarget::PopClip() {
  if (stack_.empty() || stack_.back().kind != Saved::Clip) return;
  cairo_restore(cr_);
  clip_ = stack_.back().clip;
  stack_.pop_back();
}

CRect CairoRenderTarget::GetClipBox() const { return clip_; }

void CairoRenderTarget::PushLayer(BYTE alpha) {
  stack_.push_back(StackEntry{Saved::Layer, clip_, alpha});
  cairo_push_group(cr_);
}

void CairoRenderTarget::PopLayer() {
  if (stack_.empty() || stack_.back().kind != Saved::Layer) return;
  cairo_pop_group_to_source(cr_);
  cairo_paint_with_alpha(cr_, stack_.back().alpha / 255.0);
  stack_.pop_back();
}

// ---- pixels ----

void CairoRenderTarget::Clear(COLORREF color) {
  cairo_t* cr = cairo_create(surface_);
  cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_rgba(cr, GetRValue(color) / 255.0, GetGValue(color) / 255.0,
                        GetBValue(color) / 255.0, GetAValue(color) / 255.0);
  cairo_paint(cr);
  cairo_destroy(cr);
}

COLORREF CairoRenderTarget::GetPixel(int x, int y) const {
  const CSize sz = GetSize();
  if (x < 0 || y < 0 || x >= sz.cx || y >= sz.cy) return 0;
  cairo_surface_flush(surface_);
  const unsigned char* row = cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_);
  uint32_t px;
  std::memcpy(&px, row + x * 4, 4);
  const int a = static_cast<int>(px >> 24);
  if (a == 0) return 0;
  auto un = [a](uint32_t v) { return static_cast<int>((v * 255 + a / 2) / static_cast<uint32_t>(a)); };
  return RGBA(un((px >> 16) & 0xFF), un((px >> 8) & 0xFF), un(px & 0xFF), a);
}

cairo_surface_t* CairoRenderTarget::Surface() const {
  cairo_surface_flush(surface_);
  return surface_;
}

bool CairoRenderTarget::SavePng(const std::string& path) const {
  return cairo_surface_write_to_png(Surface(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

// ---- factory ----

CairoRenderFactory::CairoRenderFactory() : text_(std::make_shared<TextEngine>()) {}
CairoRenderFactory::~CairoRenderFactory() = default;

std::unique_ptr<IRenderTarget> CairoRenderFactory::CreateRenderTarget(int width, int height) {
  return CreateCairoTarget(width, height);
}

std::unique_ptr<CairoRenderTarget> CairoRenderFactory::CreateCairoTarget(int width, int height) {
  cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, std::max(0, width), std::max(0, height));
  auto rt = std::make_unique<CairoRenderTarget>(s, text_);
  cairo_surface_destroy(s);  // the target holds its own reference
  return rt;
}

std::unique_ptr<CairoRenderTarget> CairoRenderFactory::CreateTargetForSurface(cairo_surface_t* surface) {
  return std::make_unique<CairoRenderTarget>(surface, text_);
}

IBitmapPtr CairoRenderFactory::LoadBitmapFromFile(const SStringW& path) {
  cairo_surface_t* s = ToArgb32(cairo_image_surface_create_from_png(path.ToUtf8().c_str()));
  return s ? std::make_shared<CairoBitmap>(s) : nullptr;
}

void CairoRenderFactory::TextBreaks(const wchar_t* text, int len, unsigned char* flags) {
  if (!flags || len < 0) return;
  if (!text || len == 0) {
    flags[0] = kBreakCursor;
    return;
  }
  // One UTF-8 character per wide character, NULs and other controls as
  // spaces (pango stops at a NUL), so attribute i is character i.
  std::string utf8;
  utf8.reserve(static_cast<size_t>(len));
  for (int i = 0; i < len; ++i) {
    if (static_cast<uint32_t>(text[i]) < 0x20) utf8.push_back(' ');
    else AppendUtf8(&utf8, text + i, 1, false);
  }
  std::vector<PangoLogAttr> attrs(static_cast<size_t>(len) + 1);
  pango_get_log_attrs(utf8.data(), static_cast<int>(utf8.size()), -1, pango_language_get_default(), attrs.data(),
                      len + 1);
  for (int i = 0; i <= len; ++i) {
    const PangoLogAttr& a = attrs[static_cast<size_t>(i)];
    flags[i] = static_cast<unsigned char>((a.is_line_break && i > 0 ? kBreakLine : 0) |
                                          (a.is_word_start ? kBreakWordStart : 0) |
                                          (a.is_word_end ? kBreakWordEnd : 0) | (a.is_white ? kBreakWhite : 0) |
                                          (a.is_cursor_position ? kBreakCursor : 0));
  }
}

IBitmapPtr CairoRenderFactory::LoadBitmapFromMemory(const void* data, size_t size) {
  if (!data || size == 0) return nullptr;
  struct Reader {
    const unsigned char* p;
    size_t left;
  } reader{static_cast<const unsigned char*>(data), size};
  auto read = [](void* closure, unsigned char* out, unsigned int n) -> cairo_status_t {
    auto* r = static_cast<Reader*>(closure);
    if (n > r->left) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(out, r->p, n);
    r->p += n;
    r->left -= n;
    return CAIRO_STATUS_SUCCESS;
  };
  cairo_surface_t* s = ToArgb32(cairo_image_surface_create_from_png_stream(read, &reader));
  return s ? std::make_shared<CairoBitmap>(s) : nullptr;
}

}  // namespace SOUI
