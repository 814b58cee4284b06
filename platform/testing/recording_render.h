// A render target that draws nothing and writes down what it was asked to
// draw, one readable line per call, for tests that assert painting without
// pixels. Text is measured with a fixed metric, so layouts do not depend on
// the fonts installed:
//
//   every character (after "&" prefixes are removed) is height/2 pixels wide
//   (at least 1) and every line is `height` pixels tall, where height is the
//   selected font's FontDesc::height (12 when it is 0 or less). Word breaking
//   is greedy at spaces; a word longer than the line is cut at characters.
//
// Line formats (colours are #RRGGBBAA, rectangles [l,t,r,b]):
//   DrawText "abc" [0,0,100,20] fmt=0x25 color=#FF0000FF font=12/700
//   TextOut "abc" (3,4) color=#000000FF font=12/400
//   DrawLines (0,0)-(10,0) pen=#000000FF/1/solid
//   DrawRectangle [..] pen=..     FillRectangle [..] brush=#..    FillSolidRect [..] #..
//   DrawRoundRect [..] r=(4,4) pen=..   FillRoundRect [..] r=(4,4) brush=#..
//   DrawEllipse [..] pen=..       FillEllipse [..] brush=#..
//   DrawBitmap [dst] bmp=16x8 src=[0,0,8,8] mode=stretch alpha=255
//   DrawBitmap9Patch [dst] bmp=.. src=[..] margins=[l,t,r,b] mode=.. alpha=..
//   PushClipRect [..]   PopClip   PushLayer 128   PopLayer
// The font shows "+italic", "+underline", "+strike" and "@face" when set.
// Queries and state changes (Create*, Select*, SetTextColor, MeasureText,
// DT_CALCRECT) are not recorded: each drawing line carries the state it used.
#pragma once

#include <string>
#include <vector>

#include "soui/render.h"

namespace SOUI {

class RecordingRenderTarget : public IRenderTarget {
 public:
  explicit RecordingRenderTarget(int width = 800, int height = 600);

  const std::vector<std::string>& Calls() const { return calls_; }
  void Clear() { calls_.clear(); }
  // True when some recorded line contains sub.
  bool Contains(const std::string& sub) const;
  // How many recorded lines contain sub.
  int Count(const std::string& sub) const;
  // Every line, each ending in '\n' (for golden comparisons and failure output).
  std::string Dump() const;

  CSize GetSize() const override { return size_; }

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
  // Every character is the fixed width described above.
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
  CRect GetClipBox() const override { return clip_; }
  void PushLayer(BYTE alpha) override;
  void PopLayer() override;

 private:
  void Record(std::string line) { calls_.push_back(std::move(line)); }
  std::string PenText() const;
  std::string BrushText() const;
  std::string FontText() const;
  int FontHeight() const;

  CSize size_;
  IFontPtr font_;
  IPenPtr pen_;
  IBrushPtr brush_;
  COLORREF text_color_ = RGBA(0, 0, 0, 0xFF);
  CRect clip_;
  // Clip box before each push; layers push an empty marker so pops pair up.
  struct Saved {
    bool layer;
    CRect clip;
  };
  std::vector<Saved> stack_;
  std::vector<std::string> calls_;
};

// "#RRGGBBAA", the theme's colour syntax.
std::string ColorText(COLORREF c);
// "[l,t,r,b]".
std::string RectText(const RECT& rc);

}  // namespace SOUI
