// Plain value objects behind IFont, IPen and IBrush: every render target
// uses these and keeps its own backend handles keyed by their values.
#include "soui/render.h"

namespace SOUI {
namespace {

class FontObject : public IFont {
 public:
  explicit FontObject(const FontDesc& d) : desc_(d) {}
  const FontDesc& Desc() const override { return desc_; }

 private:
  FontDesc desc_;
};

class PenObject : public IPen {
 public:
  PenObject(int style, COLORREF color, int width) : style_(style), color_(color), width_(width) {}
  int GetStyle() const override { return style_; }
  COLORREF GetColor() const override { return color_; }
  int GetWidth() const override { return width_; }

 private:
  int style_;
  COLORREF color_;
  int width_;
};

class BrushObject : public IBrush {
 public:
  explicit BrushObject(COLORREF color) : color_(color) {}
  COLORREF GetColor() const override { return color_; }

 private:
  COLORREF color_;
};

}  // namespace

IFontPtr MakeFontObject(const FontDesc& desc) { return std::make_shared<FontObject>(desc); }
IPenPtr MakePenObject(int style, COLORREF color, int width) {
  return std::make_shared<PenObject>(style, color, width);
}
IBrushPtr MakeBrushObject(COLORREF color) { return std::make_shared<BrushObject>(color); }

void IRenderTarget::MeasureCharExtents(const wchar_t* text, int len, int* ends) {
  int last = 0;
  for (int i = 0; i < len; ++i) {
    if (i < kMaxRenderTextLength) {
      SIZE sz{0, 0};
      MeasureText(text, i + 1, &sz);
      last = sz.cx;
    }
    ends[i] = last;
  }
}

void IRenderFactory::TextBreaks(const wchar_t* text, int len, unsigned char* flags) {
  auto white = [&](int i) { return i < len && (text[i] == L' ' || text[i] == L'\t' || text[i] == 0x3000); };
  for (int i = 0; i <= len; ++i) {
    unsigned char f = kBreakCursor;
    const bool w = white(i), prev_w = i == 0 || white(i - 1);
    if (w) f |= kBreakWhite;
    if (i > 0 && prev_w && !w && i < len) f |= kBreakLine;
    if (i < len && !w && prev_w) f |= kBreakWordStart;
    if (i > 0 && !prev_w && (w || i == len)) f |= kBreakWordEnd;
    flags[i] = f;
  }
}

}  // namespace SOUI
