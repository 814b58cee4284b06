// "qvrichtext": the host extension's read-only rich-text control.
//
// Content arrives one paragraph at a time as XML:
//
//   <RichEditContent lineSpacing="2" paraSpacing="6">
//     <text name="a" font="size:12dp,bold:1" color="#FF0000">plain&#160;text</text>
//     <text name="code" color="#4F9BFF" cursor="hand" link-data="08182"><![CDATA[08182]]></text>
//     <qv_text qvstyle="HR1">styled by the host's style table</qv_text>
//   </RichEditContent>
//
// Runs are laid out left to right and wrapped at the control's client width:
// Latin text breaks after spaces, CJK text between any two ideographs, a word
// wider than the line between characters. Each line is as high as its
// tallest run; lines of a paragraph are `lineSpacing` px apart and
// paragraphs `paraSpacing` px apart (the paragraph's own attributes win over
// the control's attributes of the same names, both default 0).
// A qv_text run takes its font and colour from the application's
// TextStyleResolver; explicit font/color attributes on the run override it.
// With inlineParagraphs="1" a paragraph goes on where the previous one ended
// (a message and a link after it, each appended as its own paragraph).
// Malformed paragraphs are logged and ignored.
#pragma once

#include <functional>
#include <vector>

#include "soui/events.h"
#include "soui/stdctrls.h"
#include "soui/swnd.h"

namespace SOUI {

constexpr int EVT_RDT_CLICK = EVT_EXTERNAL_BEGIN + 7100;

// Raised when a run carrying link data is clicked (pressed and released on
// the same run).
class EventRdtClick : public EventArgs {
  SOUI_EVENT_ID(EVT_RDT_CLICK, L"on_rdt_click")
 public:
  explicit EventRdtClick(SObject* sender) : EventArgs(sender) {}
  SStringW linkData;
  SStringW runName;
  int snippetType = 0;
};

class QVRichText : public SWindow {
  SOUI_CLASS_NAME(QVRichText, SWindow, L"qvrichtext")
 public:
  // Kinds of run, also the snippet type handed to the click callback.
  enum SnippetType { kSnippetText = 0, kSnippetQvText = 1 };
  using ClickCallback = std::function<void(int snippet_type, const SStringW& link_data)>;

  QVRichText();

  // Appends one "<RichEditContent>" paragraph. False (one log line, content
  // unchanged) when the XML does not parse or has another root element.
  bool AppendContent(const SStringW& xml);
  void Clear();
  int GetParagraphCount() const { return static_cast<int>(paras_.size()); }
  // The plain text of all paragraphs, paragraphs joined by '\n'.
  SStringW GetPlainText() const;

  // Lines of the content wrapped at the current client width.
  int GetTotalLines();
  // Height of the content wrapped at `width` px (< 0: no wrapping). Usable
  // before the control is laid out or attached to a host.
  int GetContentHeight(int width);
  // Lines of the content wrapped at `width`.
  int GetLineCount(int width);
  // Width of the widest line wrapped at `width` (< 0: the natural width).
  int GetContentWidth(int width);

  void SetClickCallback(ClickCallback cb) { click_cb_ = std::move(cb); }
  // The cursor this control would like at pt (host coordinates): "hand" over
  // a run with a link or cursor="hand", else empty (the default arrow).
  SStringW GetCursorAt(CPoint pt);

  // One placed piece of a run, in content coordinates (origin = client
  // top-left). Exposed for tests and hit-testing.
  struct Fragment {
    int run = 0;  // index of the run, counted over all paragraphs
    SStringW text;
    CRect rc;
  };
  const std::vector<Fragment>& LayoutFragments(int width);

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnPaint(IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, CPoint pt) override;
  void OnLButtonUp(UINT flags, CPoint pt) override;

 protected:
  CSize MeasureContent(int width) override;

 private:
  struct Run {
    int type = kSnippetText;
    SStringW name;
    SStringW text;
    SStringW font;   // description; empty: the control's font
    SStringW color;  // value or reference; empty: the control's colour
    SStringW link;
    bool hand = false;
  };
  struct Paragraph {
    size_t first = 0;  // runs_[first, first + count)
    size_t count = 0;
    int line_spacing = -1;  // -1: the control's
    int para_spacing = -1;
  };
  struct Layout {
    int width = -2;
    int scale = 0;
    int height = 0;
    int lines = 0;
    int max_width = 0;
    std::vector<Fragment> frags;
  };
  const Layout& EnsureLayout(int width);
  IFontPtr RunFont(IRenderTarget* rt, const Run& r) const;
  COLORREF RunColor(const Run& r) const;
  const Run* RunAt(CPoint pt, int* index);

  std::vector<Paragraph> paras_;
  std::vector<Run> runs_;  // every paragraph's runs, in order
  Layout layout_;
  int line_spacing_ = 0;
  int para_spacing_ = 0;
  bool inline_paras_ = false;
  int pressed_run_ = -1;
  ClickCallback click_cb_;
};

// "staticmultilines": the extension's wrapping label. Text breaks at
// newlines (and the two characters "\n") and wraps at the client width,
// between words and between CJK characters; "lineSpacing" px (default 0)
// separate the lines. Standard text attributes (font, colorText, align)
// apply as for "text".
class SStaticMultiLines : public SStatic {
  SOUI_CLASS_NAME(SStaticMultiLines, SStatic, L"staticmultilines")
 public:
  SStaticMultiLines();
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  // Height the text needs when wrapped at `width` px of client width.
  int GetDesiredHeight(int width) { return MeasureContent(width).cy; }
};

}  // namespace SOUI
