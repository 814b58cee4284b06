// Painting interfaces: fonts, pens, brushes, bitmaps and the render target.
//
// Windows paint in their host's client coordinates. Objects are reference
// counted through shared pointers; Select* returns the object it replaced so
// that callers can restore it.
//
// Colours: every COLORREF handed to a render target is r | g<<8 | b<<16 | a<<24
// and its alpha byte is always meaningful (0 is fully transparent). Theme
// colours come out of the resource parser as RGBA(r,g,b,255) for "#RRGGBB", so
// they need nothing. A Win32 RGB() value has alpha 0 and therefore paints
// nothing; wrap such values in OpaqueIfNoAlpha(). CR_INVALID ("no colour") has
// alpha 0 as well, so it never paints, with or without that helper.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "soui/sstring.h"

namespace SOUI {

// Makes a colour without alpha (a Win32 RGB() value) opaque; leaves colours
// with alpha and CR_INVALID as they are.
constexpr COLORREF OpaqueIfNoAlpha(COLORREF c) {
  return (c >> 24) != 0 || c == CR_INVALID ? c : (c | 0xFF000000u);
}

// Characters of one text call a backend shapes: a screenful many times over,
// while a multi-megabyte string would stall painting for seconds.
constexpr int kMaxRenderTextLength = 16 * 1024;

// DrawText formats (Win32 DT_* values).
constexpr UINT DT_TOP = 0x0000;
constexpr UINT DT_LEFT = 0x0000;
constexpr UINT DT_CENTER = 0x0001;
constexpr UINT DT_RIGHT = 0x0002;
constexpr UINT DT_VCENTER = 0x0004;
constexpr UINT DT_BOTTOM = 0x0008;
constexpr UINT DT_WORDBREAK = 0x0010;
constexpr UINT DT_SINGLELINE = 0x0020;
constexpr UINT DT_EXPANDTABS = 0x0040;
constexpr UINT DT_NOCLIP = 0x0100;
constexpr UINT DT_CALCRECT = 0x0400;
constexpr UINT DT_NOPREFIX = 0x0800;
constexpr UINT DT_END_ELLIPSIS = 0x8000;

// Pen styles.
constexpr int PS_SOLID = 0;
constexpr int PS_DASH = 1;
constexpr int PS_DOT = 2;

// A resolved font: the toolkit's description already scaled to pixels.
struct FontDesc {
  SStringW face;      // empty: the theme's default face
  int height = 12;    // pixel height (em size)
  int weight = 400;   // 400 normal, 700 bold
  bool italic = false;
  bool underline = false;
  bool strike = false;
  bool operator==(const FontDesc& o) const {
    return face == o.face && height == o.height && weight == o.weight && italic == o.italic &&
           underline == o.underline && strike == o.strike;
  }
};

// Render targets accept any IFont: they go by Desc() and keep their own
// backend objects for it.
class IFont {
 public:
  virtual ~IFont() = default;
  virtual const FontDesc& Desc() const = 0;
};
using IFontPtr = std::shared_ptr<IFont>;

// A font that is only its description (for code without a render target).
IFontPtr MakeFontObject(const FontDesc& desc);

class IPen {
 public:
  virtual ~IPen() = default;
  virtual int GetStyle() const = 0;
  virtual COLORREF GetColor() const = 0;
  virtual int GetWidth() const = 0;
};
using IPenPtr = std::shared_ptr<IPen>;
IPenPtr MakePenObject(int style, COLORREF color, int width);

class IBrush {
 public:
  virtual ~IBrush() = default;
  virtual COLORREF GetColor() const = 0;
};
using IBrushPtr = std::shared_ptr<IBrush>;
IBrushPtr MakeBrushObject(COLORREF color);

// A decoded image in premultiplied ARGB32 rows (cairo's native format).
class IBitmap {
 public:
  virtual ~IBitmap() = default;
  virtual int Width() const = 0;
  virtual int Height() const = 0;
  virtual int Stride() const = 0;
  virtual const unsigned char* Bits() const = 0;
};
using IBitmapPtr = std::shared_ptr<IBitmap>;

// Bitmap helpers, provided by the painting backend.
// A copy of premultiplied ARGB32 pixels; null for a non-positive size.
IBitmapPtr CreateBitmapFromBits(int width, int height, const unsigned char* bits, int stride);
// The part `src` of bmp (null: all of it) resampled with a smoothing filter to
// width x height. Pixels outside src never bleed in. Null for an empty size.
IBitmapPtr ResizeBitmap(const IBitmap& bmp, LPCRECT src, int width, int height);

// How an image fills a larger rectangle.
enum class ExpandMode { Stretch, Tile, None };

class IRenderTarget {
 public:
  virtual ~IRenderTarget() = default;

  virtual CSize GetSize() const = 0;

  // Objects. Creating does not select.
  virtual IPenPtr CreatePen(int style, COLORREF color, int width) = 0;
  virtual IBrushPtr CreateSolidColorBrush(COLORREF color) = 0;
  virtual IFontPtr CreateFont(const FontDesc& desc) = 0;
  virtual IFontPtr SelectFont(IFontPtr font) = 0;  // returns the previous font
  virtual IPenPtr SelectPen(IPenPtr pen) = 0;
  virtual IBrushPtr SelectBrush(IBrushPtr brush) = 0;
  virtual IFontPtr GetCurrentFont() const = 0;
  virtual IPenPtr GetCurrentPen() const = 0;
  virtual IBrushPtr GetCurrentBrush() const = 0;
  virtual COLORREF SetTextColor(COLORREF color) = 0;  // returns the previous colour
  virtual COLORREF GetTextColor() const = 0;

  // Text. With DT_CALCRECT nothing is drawn and rc receives the extent: for a
  // single line the text size; otherwise the lines wrapped at rc's width
  // (DT_WORDBREAK; an empty width does not wrap) with rc's right edge moved
  // to the widest line. Words wider than the line break between characters.
  // DT_END_ELLIPSIS with DT_WORDBREAK drops the lines below rc and ends the
  // last one shown with an ellipsis. Text is clipped to rc unless DT_NOCLIP. DT_VCENTER
  // and DT_BOTTOM apply to DT_SINGLELINE text only, as in Win32. Without
  // DT_NOPREFIX "&&" shows "&" and a lone "&" before a character is dropped.
  // len < 0: up to the terminating zero. MeasureText is one line, no prefixes.
  // Backends shape at most kMaxRenderTextLength characters of one call (the
  // rest is neither drawn nor measured) and never report an extent that
  // wrapped around: a measurement too wide for int saturates.
  virtual void DrawText(const wchar_t* text, int len, LPRECT rc, UINT format) = 0;
  virtual void MeasureText(const wchar_t* text, int len, SIZE* size) = 0;
  virtual void TextOut(int x, int y, const wchar_t* text, int len) = 0;
  // Caret positions of one line of text as TextOut would draw it: ends[i] is
  // the x offset after character i (so ends[len-1] is the width). ends must
  // hold len entries. Characters past kMaxRenderTextLength get the last
  // measured offset. The default measures every prefix (quadratic);
  // backends do it in one pass.
  virtual void MeasureCharExtents(const wchar_t* text, int len, int* ends);

  // Shapes: Draw* strokes with the current pen, Fill* fills with the current brush.
  // Outlines stay inside rc (a 1px pen covers the rectangle's outermost pixels,
  // right and bottom exclusive, like GDI's Rectangle). Lines of an odd pen
  // width run through pixel centres and
  // include both end points. Radius is the corner ellipse's (rx, ry).
  virtual void DrawLines(const POINT* points, int count) = 0;
  virtual void DrawRectangle(LPCRECT rc) = 0;
  virtual void FillRectangle(LPCRECT rc) = 0;
  virtual void FillSolidRect(LPCRECT rc, COLORREF color) = 0;
  // Replaces the pixels of rc (alpha included) instead of blending over them.
  virtual void ClearRect(LPCRECT rc, COLORREF color) = 0;
  virtual void DrawRoundRect(LPCRECT rc, POINT radius) = 0;
  virtual void FillRoundRect(LPCRECT rc, POINT radius) = 0;
  virtual void DrawEllipse(LPCRECT rc) = 0;
  virtual void FillEllipse(LPCRECT rc) = 0;

  // Images. src selects a part of the bitmap (null: all of it); alpha scales
  // the bitmap's own. Tile repeats from dst's top-left; None draws at natural
  // size at dst's top-left; both are clipped to dst.
  virtual void DrawBitmap(LPCRECT dst, const IBitmap* bmp, LPCRECT src, ExpandMode mode,
                          BYTE alpha) = 0;
  // Nine-patch: the margins of src (widths in margins' left/top/right/bottom)
  // keep their size, edges stretch along one axis, the centre stretches or
  // tiles. Margins shrink proportionally when dst is smaller than they are.
  virtual void DrawBitmap9Patch(LPCRECT dst, const IBitmap* bmp, LPCRECT src, LPCRECT margins,
                                ExpandMode mode, BYTE alpha) = 0;

  // Clipping and layers nest together; a Pop that does not match the latest
  // Push is ignored.
  virtual void PushClipRect(LPCRECT rc) = 0;
  virtual void PopClip() = 0;
  virtual CRect GetClipBox() const = 0;
  // Everything drawn until PopLayer is composited with the given opacity.
  virtual void PushLayer(BYTE alpha) = 0;
  virtual void PopLayer() = 0;

  // Writes the pixels as a PNG file (UTF-8 path). False when the target has
  // no pixels (a recording target) or the file cannot be written.
  virtual bool SavePng(const std::string& path) const {
    (void)path;
    return false;
  }
};

// Text boundaries at each position of a paragraph (TextBreaks fills one
// byte per position 0..len, so len + 1 of them; position i is just before
// character i).
enum TextBreak : unsigned char {
  kBreakLine = 1,     // a wrapped line may start here
  kBreakWordStart = 2,
  kBreakWordEnd = 4,
  kBreakWhite = 8,    // the character here is white space
  kBreakCursor = 16,  // a caret may stand here (not inside a cluster)
};

// Creates render targets and decodes images; one per application.
class IRenderFactory {
 public:
  virtual ~IRenderFactory() = default;
  // Line, word and caret boundaries of a paragraph (no line breaks in it)
  // by the Unicode rules: words end at punctuation, CJK ideographs are
  // words and lines of their own. flags must hold len + 1 entries. The
  // default knows only spaces; the cairo backend asks pango.
  virtual void TextBreaks(const wchar_t* text, int len, unsigned char* flags);
  virtual std::unique_ptr<IRenderTarget> CreateRenderTarget(int width, int height) = 0;
  // Null when the file is missing or not a PNG.
  virtual IBitmapPtr LoadBitmapFromFile(const SStringW& path) = 0;
  virtual IBitmapPtr LoadBitmapFromMemory(const void* data, size_t size) = 0;
};

}  // namespace SOUI
