#include "testing/recording_render.h"

#include <cstdio>
#include <cwchar>

namespace SOUI {
namespace {

std::wstring Text(const wchar_t* text, int len) {
  if (!text) return std::wstring();
  return len < 0 ? std::wstring(text) : std::wstring(text, static_cast<size_t>(len));
}

std::wstring StripPrefix(const std::wstring& s) {
  std::wstring out;
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == L'&' && i + 1 < s.size()) ++i;
    out.push_back(s[i]);
  }
  return out;
}

// The text in quotes, UTF-8, with quotes, backslashes and line breaks escaped.
std::string Quoted(const std::wstring& s) {
  std::string body;
  for (wchar_t c : s) {
    if (c == L'"' || c == L'\\') body += '\\';
    if (c == L'\n') { body += "\\n"; continue; }
    if (c == L'\r') { body += "\\r"; continue; }
    body += SStringW(&c, 1).ToUtf8();
  }
  return "\"" + body + "\"";
}

std::string ModeText(ExpandMode m) {
  switch (m) {
    case ExpandMode::Stretch: return "stretch";
    case ExpandMode::Tile: return "tile";
    case ExpandMode::None: return "none";
  }
  return "?";
}

std::vector<std::wstring> Paragraphs(const std::wstring& s) {
  std::vector<std::wstring> out(1);
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == L'\r') {
      if (i + 1 < s.size() && s[i + 1] == L'\n') ++i;
      out.emplace_back();
    } else if (s[i] == L'\n') {
      out.emplace_back();
    } else {
      out.back().push_back(s[i]);
    }
  }
  return out;
}

// Line breaks count as one space each, as the cairo target shows them.
int SingleLineChars(const std::wstring& s) {
  int n = 0;
  for (const auto& p : Paragraphs(s)) n += static_cast<int>(p.size()) + 1;
  return n - 1;
}

// Greedy word wrap in characters; returns the line lengths.
std::vector<int> WrapParagraph(const std::wstring& p, int max_chars) {
  std::vector<int> lines;
  int line = -1;  // -1: nothing on the current line yet
  size_t i = 0;
  while (i < p.size()) {
    while (i < p.size() && p[i] == L' ') ++i;
    size_t j = i;
    while (j < p.size() && p[j] != L' ') ++j;
    if (j == i) break;
    int word = static_cast<int>(j - i);
    if (line >= 0 && line + 1 + word <= max_chars) {
      line += 1 + word;
    } else {
      if (line >= 0) lines.push_back(line);
      while (word > max_chars) {  // a word wider than the line is cut
        lines.push_back(max_chars);
        word -= max_chars;
      }
      line = word;
    }
    i = j;
  }
  lines.push_back(std::max(line, 0));
  return lines;
}

}  // namespace

std::string ColorText(COLORREF c) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "#%02X%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c), GetAValue(c));
  return buf;
}

std::string RectText(const RECT& rc) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "[%d,%d,%d,%d]", rc.left, rc.top, rc.right, rc.bottom);
  return buf;
}

RecordingRenderTarget::RecordingRenderTarget(int width, int height)
    : size_(width, height), clip_(0, 0, width, height) {
  font_ = MakeFontObject(FontDesc());
  pen_ = CreatePen(PS_SOLID, RGBA(0, 0, 0, 0xFF), 1);
  brush_ = CreateSolidColorBrush(RGBA(0, 0, 0, 0xFF));
}

bool RecordingRenderTarget::Contains(const std::string& sub) const { return Count(sub) > 0; }

int RecordingRenderTarget::Count(const std::string& sub) const {
  int n = 0;
  for (const auto& c : calls_) n += c.find(sub) != std::string::npos;
  return n;
}

std::string RecordingRenderTarget::Dump() const {
  std::string out;
  for (const auto& c : calls_) out += c + "\n";
  return out;
}

IPenPtr RecordingRenderTarget::CreatePen(int style, COLORREF color, int width) {
  return MakePenObject(style, color, width);
}
IBrushPtr RecordingRenderTarget::CreateSolidColorBrush(COLORREF color) {
  return MakeBrushObject(color);
}
IFontPtr RecordingRenderTarget::CreateFont(const FontDesc& desc) { return MakeFontObject(desc); }

IFontPtr RecordingRenderTarget::SelectFont(IFontPtr font) {
  IFontPtr old = font_;
  font_ = font ? std::move(font) : MakeFontObject(FontDesc());
  return old;
}
IPenPtr RecordingRenderTarget::SelectPen(IPenPtr pen) {
  IPenPtr old = pen_;
  pen_ = std::move(pen);
  return old;
}
IBrushPtr RecordingRenderTarget::SelectBrush(IBrushPtr brush) {
  IBrushPtr old = brush_;
  brush_ = std::move(brush);
  return old;
}
COLORREF RecordingRenderTarget::SetTextColor(COLORREF color) {
  const COLORREF old = text_color_;
  text_color_ = color;
  return old;
}

int RecordingRenderTarget::FontHeight() const {
  const int h = font_->Desc().height;
  return h > 0 ? h : 12;
}

std::string RecordingRenderTarget::FontText() const {
  const FontDesc& d = font_->Desc();
  std::string s = "font=" + std::to_string(FontHeight()) + "/" + std::to_string(d.weight);
  if (d.italic) s += "+italic";
  if (d.underline) s += "+underline";
  if (d.strike) s += "+strike";
  if (!d.face.IsEmpty()) s += "@" + d.face.ToUtf8();
  return s;
}

std::string RecordingRenderTarget::PenText() const {
  if (!pen_) return "pen=none";
  const char* style = pen_->GetStyle() == PS_DASH ? "dash" : pen_->GetStyle() == PS_DOT ? "dot" : "solid";
  return "pen=" + ColorText(pen_->GetColor()) + "/" + std::to_string(pen_->GetWidth()) + "/" + style;
}

std::string RecordingRenderTarget::BrushText() const {
  return brush_ ? "brush=" + ColorText(brush_->GetColor()) : "brush=none";
}

void RecordingRenderTarget::DrawText(const wchar_t* text, int len, LPRECT rc, UINT format) {
  if (!text || !rc) return;
  const std::wstring raw = Text(text, len);
  if (!(format & DT_CALCRECT)) {
    char fmt[16];
    std::snprintf(fmt, sizeof fmt, "0x%X", format);
    Record("DrawText " + Quoted(raw) + " " + RectText(*rc) + " fmt=" + fmt + " color=" +
           ColorText(text_color_) + " " + FontText());
    return;
  }
  const std::wstring shown = (format & DT_NOPREFIX) ? raw : StripPrefix(raw);
  const int h = FontHeight(), cw = std::max(1, h / 2);
  int widest = 0, lines = 0;
  if (format & DT_SINGLELINE) {
    widest = SingleLineChars(shown);
    lines = 1;
  } else {
    const int width = rc->right - rc->left;
    const bool wrap = (format & DT_WORDBREAK) && width > 0;
    for (const auto& p : Paragraphs(shown)) {
      const std::vector<int> ls = wrap ? WrapParagraph(p, std::max(1, width / cw))
                                       : std::vector<int>{static_cast<int>(p.size())};
      for (int l : ls) widest = std::max(widest, l);
      lines += static_cast<int>(ls.size());
    }
  }
  rc->right = rc->left + widest * cw;
  rc->bottom = rc->top + lines * h;
}

void RecordingRenderTarget::MeasureText(const wchar_t* text, int len, SIZE* size) {
  if (!size) return;
  const int h = FontHeight();
  *size = SIZE{SingleLineChars(Text(text, len)) * std::max(1, h / 2), text ? h : 0};
}

void RecordingRenderTarget::MeasureCharExtents(const wchar_t* text, int len, int* ends) {
  (void)text;
  const int w = std::max(1, FontHeight() / 2);
  for (int i = 0; i < len; ++i) ends[i] = (i + 1) * w;
}

void RecordingRenderTarget::TextOut(int x, int y, const wchar_t* text, int len) {
  if (!text) return;
  Record("TextOut " + Quoted(Text(text, len)) + " (" + std::to_string(x) + "," + std::to_string(y) +
         ") color=" + ColorText(text_color_) + " " + FontText());
}

void RecordingRenderTarget::DrawLines(const POINT* points, int count) {
  if (!points || count <= 0) return;
  std::string s = "DrawLines ";
  for (int i = 0; i < count; ++i) {
    if (i) s += "-";
    s += "(" + std::to_string(points[i].x) + "," + std::to_string(points[i].y) + ")";
  }
  Record(s + " " + PenText());
}

void RecordingRenderTarget::DrawRectangle(LPCRECT rc) {
  if (rc) Record("DrawRectangle " + RectText(*rc) + " " + PenText());
}
void RecordingRenderTarget::FillRectangle(LPCRECT rc) {
  if (rc) Record("FillRectangle " + RectText(*rc) + " " + BrushText());
}
void RecordingRenderTarget::FillSolidRect(LPCRECT rc, COLORREF color) {
  if (rc) Record("FillSolidRect " + RectText(*rc) + " " + ColorText(color));
}

void RecordingRenderTarget::ClearRect(LPCRECT rc, COLORREF color) {
  if (rc) Record("ClearRect " + RectText(*rc) + " " + ColorText(color));
}

void RecordingRenderTarget::DrawRoundRect(LPCRECT rc, POINT r) {
  if (rc)
    Record("DrawRoundRect " + RectText(*rc) + " r=(" + std::to_string(r.x) + "," + std::to_string(r.y) +
           ") " + PenText());
}
void RecordingRenderTarget::FillRoundRect(LPCRECT rc, POINT r) {
  if (rc)
    Record("FillRoundRect " + RectText(*rc) + " r=(" + std::to_string(r.x) + "," + std::to_string(r.y) +
           ") " + BrushText());
}
void RecordingRenderTarget::DrawEllipse(LPCRECT rc) {
  if (rc) Record("DrawEllipse " + RectText(*rc) + " " + PenText());
}
void RecordingRenderTarget::FillEllipse(LPCRECT rc) {
  if (rc) Record("FillEllipse " + RectText(*rc) + " " + BrushText());
}

void RecordingRenderTarget::DrawBitmap(LPCRECT dst, const IBitmap* bmp, LPCRECT src, ExpandMode mode,
                                       BYTE alpha) {
  if (!dst || !bmp) return;
  const CRect s = src ? CRect(src) : CRect(0, 0, bmp->Width(), bmp->Height());
  Record("DrawBitmap " + RectText(*dst) + " bmp=" + std::to_string(bmp->Width()) + "x" +
         std::to_string(bmp->Height()) + " src=" + RectText(s) + " mode=" + ModeText(mode) +
         " alpha=" + std::to_string(alpha));
}

void RecordingRenderTarget::DrawBitmap9Patch(LPCRECT dst, const IBitmap* bmp, LPCRECT src,
                                             LPCRECT margins, ExpandMode mode, BYTE alpha) {
  if (!dst || !bmp) return;
  const CRect s = src ? CRect(src) : CRect(0, 0, bmp->Width(), bmp->Height());
  const CRect m = margins ? CRect(margins) : CRect();
  Record("DrawBitmap9Patch " + RectText(*dst) + " bmp=" + std::to_string(bmp->Width()) + "x" +
         std::to_string(bmp->Height()) + " src=" + RectText(s) + " margins=" + RectText(m) +
         " mode=" + ModeText(mode) + " alpha=" + std::to_string(alpha));
}

void RecordingRenderTarget::PushClipRect(LPCRECT rc) {
  if (!rc) return;
  stack_.push_back(Saved{false, clip_});
  clip_ = clip_ & *rc;
  Record("PushClipRect " + RectText(*rc));
}

void RecordingRenderTarget::PopClip() {
  if (stack_.empty() || stack_.back().layer) return;
  clip_ = stack_.back().clip;
  stack_.pop_back();
  Record("PopClip");
}

void RecordingRenderTarget::PushLayer(BYTE alpha) {
  stack_.push_back(Saved{true, clip_});
  Record("PushLayer " + std::to_string(alpha));
}

void RecordingRenderTarget::PopLayer() {
  if (stack_.empty() || !stack_.back().layer) return;
  stack_.pop_back();
  Record("PopLayer");
}

}  // namespace SOUI
