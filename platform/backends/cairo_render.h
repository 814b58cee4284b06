// The cairo + pango painting backend: render targets over ARGB32 image
// surfaces (memory, PNG, or a window's pixels) and PNG decoding.
//
// Text goes through pango with fontconfig fonts; an empty face means
// "WenQuanYi Micro Hei", which also backs up any named face for characters it
// lacks (CJK). Shaped layouts are cached per factory, so repainting the same
// labels does no shaping.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>
#include <vector>

#include "backends/cairo_text.h"
#include "soui/render.h"

namespace SOUI {


// A bitmap owning a premultiplied ARGB32 cairo image surface.
class CairoBitmap : public IBitmap {
 public:
  // Takes ownership of one reference to surface, which must be ARGB32.
  explicit CairoBitmap(cairo_surface_t* surface);
  ~CairoBitmap() override;
  CairoBitmap(const CairoBitmap&) = delete;
  CairoBitmap& operator=(const CairoBitmap&) = delete;

  int Width() const override;
  int Height() const override;
  int Stride() const override;
  const unsigned char* Bits() const override;
  cairo_surface_t* Surface() const { return surface_; }

 private:
  cairo_surface_t* surface_;
};

class CairoRenderTarget : public IRenderTarget {
 public:
  // Paints into surface (ARGB32 image), adding a reference to it.
  CairoRenderTarget(cairo_surface_t* surface, std::shared_ptr<TextEngine> text);
  ~CairoRenderTarget() override;
  CairoRenderTarget(const CairoRenderTarget&) = delete;
  CairoRenderTarget& operator=(const CairoRenderTarget&) = delete;

  CSize GetSize() const override;

  IPenPtr CreatePen(int style, COLORREF color, int width) override;
  IBrushPtr CreateSolidColorBrush(COLORREF color) override;
  IFontPtr CreateFont(const FontDesc& desc) override;
  IFontPtr SelectFont(IFontPtr font) override;
  IPenPtr SelectPen(IPenPtr pen) override;
  IBrushPtr SelectBrush(IBrushPtr brush) override;
  IFontPtr GetCurrentFont() const override { return font_; }
  IPenPtr GetCurrentPen() const override { return pen_; }
  IBrushPtr GetCurrentBrush() const override { return brush_; }
  COLORREF SetTextColor(COLORREF color) override;
  COLORREF GetTextColor() const override { return text_color_; }

  void DrawText(const wchar_t* text, int len, LPRECT rc, UINT format) override;
  void MeasureText(const wchar_t* text, int len, SIZE* size) override;
  void TextOut(int x, int y, const wchar_t* text, int len) override;
  void MeasureCharExtents(const wchar_t* text, int len, int* ends) override;

  void DrawLines(const POINT* points, int count) override;
  void DrawRectangle(LPCRECT rc) override;
  void FillRectangle(LPCRECT rc) override;
  void FillSolidRect(LPCRECT rc, COLORREF color) override;
  void ClearRect(LPCRECT rc, COLORREF color) override;
  void DrawRoundRect(LPCRECT rc, POINT radius) override;
  void FillRoundRect(LPCRECT rc, POINT radius) override;
  void DrawEllipse(LPCRECT rc) override;
  void FillEllipse(LPCRECT rc) override;

  void DrawBitmap(LPCRECT dst, const IBitmap* bmp, LPCRECT src, ExpandMode mode,
                  BYTE alpha) override;
  void DrawBitmap9Patch(LPCRECT dst, const IBitmap* bmp, LPCRECT src, LPCRECT margins,
                        ExpandMode mode, BYTE alpha) override;

  void PushClipRect(LPCRECT rc) override;
  void PopClip() override;
  CRect GetClipBox() const override;
  void PushLayer(BYTE alpha) override;
  void PopLayer() override;

  // ---- pixels (screenshots, window backends) ----
  // Sets every pixel to color, ignoring clips and layers.
  void Clear(COLORREF color);
  // The unpremultiplied colour at (x, y); 0 outside the surface.
  COLORREF GetPixel(int x, int y) const;
  // Flushed surface; its rows are premultiplied ARGB32.
  cairo_surface_t* Surface() const;
  bool SavePng(const std::string& path) const override;

 private:
  enum class Saved { Clip, Layer };
  struct StackEntry {
    Saved kind;
    CRect clip;  // the clip box in effect before the push
    BYTE alpha;
  };

  void SetSourceColor(COLORREF color);
  // Applies the current pen to cr_; false when it would draw nothing.
  bool UsePen();
  // The pen's width in pixels (a zero-width pen draws one pixel, as in GDI).
  int PenWidth() const;
  void RoundRectPath(double x, double y, double w, double h, double rx, double ry);
  void DrawLayoutText(const wchar_t* text, size_t n, const CRect& rc, UINT format);
  void PaintBitmapPart(const IBitmap* bmp, const CRect& src, const CRect& dst, ExpandMode mode,
                       double alpha);

  cairo_surface_t* surface_;
  cairo_t* cr_;
  std::shared_ptr<TextEngine> text_;
  IFontPtr font_;
  const TextEngine::Font* font_entry_ = nullptr;  // the engine's objects for font_
  // The last two fonts selected and their engine objects: a window painting
  // selects its font and then the one before again, so the engine's font
  // table is searched once per font rather than twice per window. The
  // pointers keep the fonts alive, so an address cannot come back as
  // another font.
  struct SelectedFont {
    IFontPtr font;
    const TextEngine::Font* entry = nullptr;
  };
  SelectedFont recent_fonts_[2];
  IPenPtr pen_;
  IBrushPtr brush_;
  COLORREF text_color_ = RGBA(0, 0, 0, 0xFF);
  CRect clip_;
  std::vector<StackEntry> stack_;
  std::string utf8_;   // scratch buffers: text painting allocates nothing
  std::wstring wide_;  // when its layout is cached
};

class CairoRenderFactory : public IRenderFactory {
 public:
  CairoRenderFactory();
  ~CairoRenderFactory() override;

  std::unique_ptr<IRenderTarget> CreateRenderTarget(int width, int height) override;
  // The concrete type, for code that needs pixels.
  std::unique_ptr<CairoRenderTarget> CreateCairoTarget(int width, int height);
  // A target painting into an existing ARGB32 image surface (a window's).
  std::unique_ptr<CairoRenderTarget> CreateTargetForSurface(cairo_surface_t* surface);

  IBitmapPtr LoadBitmapFromFile(const SStringW& path) override;
  IBitmapPtr LoadBitmapFromMemory(const void* data, size_t size) override;
  // pango's log attributes (pango_get_log_attrs).
  void TextBreaks(const wchar_t* text, int len, unsigned char* flags) override;
  // Lets go of every shaped layout (fonts and glyphs stay): the next paint
  // shapes its texts anew, as a first paint does.
  void DropTextLayouts() { text_->DropLayouts(); }

 private:
  std::shared_ptr<TextEngine> text_;
};

}  // namespace SOUI
