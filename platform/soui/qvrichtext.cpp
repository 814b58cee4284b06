#include "soui/qvrichtext.h"

#include <algorithm>
#include <pugixml.hpp>

#include "soui/render.h"
#include "soui/resources.h"
#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {
namespace {

bool IsCjk(wchar_t c) {
  return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7AF) ||
         (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFF00 && c <= 0xFFEF);
}
bool IsBreakSpace(wchar_t c) { return c == L' ' || c == L'\t'; }

// Splits text into the units a line may break after: a Latin word with the
// spaces that follow it, one CJK character (with any spaces after it), or a
// lone "\n" (a forced break).
std::vector<SStringW> BreakUnits(const SStringW& text) {
  std::vector<SStringW> units;
  const int n = text.GetLength();
  int i = 0;
  while (i < n) {
    const int start = i;
    if (text[i] == L'\n') {
      units.push_back(L"\n");
      ++i;
      continue;
    }
    if (IsCjk(text[i])) {
      ++i;
    } else {
      while (i < n && !IsBreakSpace(text[i]) && text[i] != L'\n' && !IsCjk(text[i])) ++i;
    }
    while (i < n && IsBreakSpace(text[i])) ++i;
    units.push_back(text.Mid(start, i - start));
  }
  return units;
}

int TrimmedLength(const SStringW& s) {
  int n = s.GetLength();
  while (n > 0 && IsBreakSpace(s[n - 1])) --n;
  return n;
}

CSize Measure(IRenderTarget* rt, const SStringW& s, int len) {
  SIZE sz{0, 0};
  if (len > 0) rt->MeasureText(s, len, &sz);
  return CSize(sz);
}

int ParseSpacing(const pugi::xml_node& n, const char* name) {
  const pugi::xml_attribute a = n.attribute(name);
  return a ? std::max(0, a.as_int(0)) : -1;
}

}  // namespace

QVRichText::QVRichText() {
  msg_transparent_ = FALSE;
  GetEventSet()->addEvent(EventRdtClick::EventID, EventRdtClick::EventName());
}

HRESULT QVRichText::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  int* target = nullptr;
  if (name.CompareNoCase(L"lineSpacing") == 0) target = &line_spacing_;
  else if (name.CompareNoCase(L"paraSpacing") == 0) target = &para_spacing_;
  if (name.CompareNoCase(L"inlineParagraphs") == 0) {
    inline_paras_ = !(value == L"0" || value.CompareNoCase(L"false") == 0);
    layout_.width = -2;
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  if (target) {
    int v = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &v);
    *target = std::max(0, v);
    layout_.width = -2;
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  const HRESULT hr = SWindow::SetAttribute(name, value, loading);
  if (name.CompareNoCase(L"font") == 0) layout_.width = -2;
  return hr;
}

bool QVRichText::AppendContent(const SStringW& xml) {
  const std::string utf8 = xml.ToUtf8();
  pugi::xml_document doc;
  const pugi::xml_parse_result res = doc.load_buffer(utf8.data(), utf8.size());
  if (!res) {
    SLOG(kLogError, "SOUI") << L"qvrichtext '" << name_ << L"': paragraph skipped, "
                            << DescribeXmlError(res);
    return false;
  }
  const pugi::xml_node root = doc.document_element();
  if (std::string(root.name()) != "RichEditContent") {
    SLOG(kLogError, "SOUI") << L"qvrichtext '" << name_ << L"': paragraph skipped, root element <"
                            << root.name() << L"> is not <RichEditContent>";
    return false;
  }
  Paragraph para;
  para.first = runs_.size();
  para.line_spacing = ParseSpacing(root, "lineSpacing");
  para.para_spacing = ParseSpacing(root, "paraSpacing");
  SApplication* app = SApplication::getSingletonPtr();
  for (pugi::xml_node n = root.first_child(); n; n = n.next_sibling()) {
    if (n.type() != pugi::node_element) continue;  // loose text between runs is ignored
    const std::string tag = n.name();
    Run r;
    if (tag == "qv_text") {
      r.type = kSnippetQvText;
      const SStringW code = SStringW::FromUtf8(n.attribute("qvstyle").as_string());
      const auto* resolver = app ? &app->GetTextStyleResolver() : nullptr;
      if (!resolver || !*resolver || !(*resolver)(code, &r.font, &r.color)) {
        SLOG(kLogWarn, "SOUI") << L"qvrichtext '" << name_ << L"': unknown text style \"" << code
                                  << L"\", the run keeps the control's look";
      }
    } else if (tag != "text") {
      SLOG(kLogWarn, "SOUI") << L"qvrichtext '" << name_ << L"': unknown run <" << tag.c_str()
                                << L"> skipped";
      continue;
    }
    r.name = SStringW::FromUtf8(n.attribute("name").as_string());
    if (pugi::xml_attribute a = n.attribute("font")) r.font = SStringW::FromUtf8(a.as_string());
    if (pugi::xml_attribute a = n.attribute("color")) r.color = SStringW::FromUtf8(a.as_string());
    r.link = SStringW::FromUtf8(n.attribute("link-data").as_string());
    r.hand = SStringW::FromUtf8(n.attribute("cursor").as_string()).CompareNoCase(L"hand") == 0;
    std::string text;
    for (pugi::xml_node t = n.first_child(); t; t = t.next_sibling()) {
      if (t.type() == pugi::node_pcdata || t.type() == pugi::node_cdata) text += t.value();
    }
    r.text = SStringW::FromUtf8(text);
    if (r.text.GetLength() > kMaxWindowTextLength) {
      SLOG(kLogWarn, "SOUI") << L"qvrichtext '" << name_ << L"': run of " << r.text.GetLength()
                             << L" characters cut to " << kMaxWindowTextLength;
      r.text = r.text.Left(kMaxWindowTextLength);
    }
    runs_.push_back(std::move(r));
  }
  para.count = runs_.size() - para.first;
  paras_.push_back(para);
  layout_.width = -2;
  RequestRelayout();
  Invalidate();
  return true;
}

void QVRichText::Clear() {
  paras_.clear();
  runs_.clear();
  pressed_run_ = -1;
  layout_ = Layout();
  RequestRelayout();
  Invalidate();
}

SStringW QVRichText::GetPlainText() const {
  SStringW out;
  for (size_t p = 0; p < paras_.size(); ++p) {
    if (p) out += L"\n";
    for (size_t i = 0; i < paras_[p].count; ++i) out += runs_[paras_[p].first + i].text;
  }
  return out;
}

IFontPtr QVRichText::RunFont(IRenderTarget* rt, const Run& r) const {
  IFontPtr base = GetPaintFont(rt);
  if (r.font.IsEmpty() || !base) return base;
  FontDesc desc;
  if (!ParseFontDesc(r.font, GetScale(), base->Desc(), &desc)) return base;
  return rt->CreateFont(desc);
}

COLORREF QVRichText::RunColor(const Run& r) const {
  COLORREF c = CR_INVALID;
  SApplication* app = SApplication::getSingletonPtr();
  if (!r.color.IsEmpty() && app && app->GetResProvider().ResolveColor(r.color, &c)) return c;
  return CR_INVALID;
}

// Greedy line filling over break units, one paragraph after another:
//
//   y=0   [run0 frag][run1 frag......]      <- line height = tallest unit
//         lineSpacing
//         [run1 cont.][run2 frag]
//         paraSpacing
//         [next paragraph ...]
const QVRichText::Layout& QVRichText::EnsureLayout(int width) {
  const int scale = GetScale();
  if (layout_.width == width && layout_.scale == scale) return layout_;
  layout_ = Layout();
  layout_.width = width;
  layout_.scale = scale;
  SApplication* app = SApplication::getSingletonPtr();
  IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt) return layout_;
  IFontPtr old_font = rt->GetCurrentFont();
  IFontPtr own = GetPaintFont(rt);
  rt->SelectFont(own);
  const int base_h = Measure(rt, L"A", 1).cy;
  const bool wrap = width >= 0;

  int y = 0;
  std::vector<Fragment> line;
  int x = 0, line_h = 0, line_spacing = line_spacing_;
  auto flush = [&]() {
    if (line_h == 0) line_h = base_h;
    for (Fragment& f : line) {
      f.rc.top = y;
      f.rc.bottom = y + line_h;
      layout_.frags.push_back(std::move(f));
    }
    layout_.max_width = std::max(layout_.max_width, x);
    line.clear();
    y += line_h + line_spacing;
    ++layout_.lines;
    x = 0;
    line_h = 0;
  };
  auto place = [&](int run, const SStringW& s, CSize sz) {
    if (!line.empty() && line.back().run == run && line.back().rc.right == x) {
      line.back().text += s;
      line.back().rc.right += sz.cx;
    } else {
      line.push_back(Fragment{run, s, CRect(x, 0, x + sz.cx, 0)});
    }
    x += sz.cx;
    line_h = std::max<int>(line_h, sz.cy);
  };

  for (size_t p = 0; p < paras_.size(); ++p) {
    const Paragraph& para = paras_[p];
    if (p > 0 && !inline_paras_) {
      y -= line_spacing;  // the previous paragraph's last line owes no line spacing
      y += para.para_spacing >= 0 ? para.para_spacing : para_spacing_;
    }
    line_spacing = para.line_spacing >= 0 ? para.line_spacing : line_spacing_;
    for (size_t i = 0; i < para.count; ++i) {
      const int run = static_cast<int>(para.first + i);
      rt->SelectFont(RunFont(rt, runs_[run]));
      for (const SStringW& u : BreakUnits(runs_[run].text)) {
        if (u == L"\n") {
          if (line_h == 0) line_h = Measure(rt, L"A", 1).cy;
          flush();
          continue;
        }
        const CSize full = Measure(rt, u, u.GetLength());
        const int ink = Measure(rt, u, TrimmedLength(u)).cx;  // trailing spaces may hang
        if (wrap && x > 0 && x + ink > width) flush();
        if (wrap && ink > width - x) {
          // A word wider than a whole line: break between characters.
          // Character widths are summed rather than each prefix measured,
          // which keeps a very long word linear in its length.
          int start = 0;
          while (start < u.GetLength()) {
            int take = 1;
            CSize sz = Measure(rt, u.Mid(start, 1), 1);
            while (start + take < u.GetLength()) {
              const CSize ch = Measure(rt, u.Mid(start + take, 1), 1);
              if (x + sz.cx + ch.cx > width) break;
              sz.cx += ch.cx;
              sz.cy = std::max(sz.cy, ch.cy);
              ++take;
            }
            place(run, u.Mid(start, take), sz);
            start += take;
            if (start < u.GetLength()) flush();
          }
          continue;
        }
        place(run, u, full);
      }
    }
    rt->SelectFont(own);
    if (!inline_paras_ || p + 1 == paras_.size()) flush();
  }
  if (!paras_.empty()) y -= line_spacing;
  layout_.height = std::max(0, y);
  rt->SelectFont(old_font);
  return layout_;
}

const std::vector<QVRichText::Fragment>& QVRichText::LayoutFragments(int width) {
  return EnsureLayout(width).frags;
}

int QVRichText::GetContentHeight(int width) { return EnsureLayout(width).height; }
int QVRichText::GetLineCount(int width) { return EnsureLayout(width).lines; }
int QVRichText::GetContentWidth(int width) { return EnsureLayout(width).max_width; }
int QVRichText::GetTotalLines() { return GetLineCount(GetChildrenLayoutRect().Width()); }

CSize QVRichText::MeasureContent(int width) {
  const Layout& l = EnsureLayout(width);
  return CSize(l.max_width, l.height);
}

void QVRichText::OnPaint(IRenderTarget* rt) {
  const CRect area = GetChildrenLayoutRect();
  const Layout& l = EnsureLayout(area.Width());
  const COLORREF own_color = rt->GetTextColor();
  IFontPtr old_font = rt->GetCurrentFont();
  for (const Fragment& f : l.frags) {
    CRect rc = f.rc;
    rc.OffsetRect(area.left, area.top);
    if (rc.top >= area.bottom) break;
    const Run& r = runs_[f.run];
    rt->SelectFont(RunFont(rt, r));
    const COLORREF c = RunColor(r);
    rt->SetTextColor(c != CR_INVALID ? c : own_color);
    // Runs of one line share the bottom edge, so mixed sizes sit on one line.
    rt->DrawText(f.text, f.text.GetLength(), &rc, DT_SINGLELINE | DT_BOTTOM | DT_NOPREFIX | DT_NOCLIP);
  }
  rt->SetTextColor(own_color);
  rt->SelectFont(old_font);
}

const QVRichText::Run* QVRichText::RunAt(CPoint pt, int* index) {
  const CRect area = GetChildrenLayoutRect();
  const Layout& l = EnsureLayout(area.Width());
  const CPoint local(pt.x - area.left, pt.y - area.top);
  for (const Fragment& f : l.frags) {
    if (f.rc.PtInRect(local)) {
      if (index) *index = f.run;
      return &runs_[f.run];
    }
  }
  if (index) *index = -1;
  return nullptr;
}

SStringW QVRichText::GetCursorAt(CPoint pt) {
  const Run* r = RunAt(pt, nullptr);
  return r && (r->hand || !r->link.IsEmpty()) ? SStringW(L"hand") : SStringW();
}

void QVRichText::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  RunAt(pt, &pressed_run_);
}

void QVRichText::OnLButtonUp(UINT flags, CPoint pt) {
  SWindow::OnLButtonUp(flags, pt);
  int index = -1;
  const Run* r = RunAt(pt, &index);
  const bool same = index >= 0 && index == pressed_run_;
  pressed_run_ = -1;
  if (!same || r->link.IsEmpty()) return;
  // Copies: a subscriber may clear the content.
  const SStringW link = r->link, run_name = r->name;
  const int type = r->type;
  EventRdtClick evt(this);
  evt.linkData = link;
  evt.runName = run_name;
  evt.snippetType = type;
  FireEvent(evt);
  if (click_cb_) {
    ClickCallback cb = click_cb_;
    cb(type, link);
  }
}

// ---- SStaticMultiLines ------------------------------------------------------------

SStaticMultiLines::SStaticMultiLines() {
  SStatic::SetAttribute(L"multiLines", L"1", TRUE);
  SStatic::SetAttribute(L"interHeight", L"0", TRUE);
}

HRESULT SStaticMultiLines::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"lineSpacing") == 0) return SStatic::SetAttribute(L"interHeight", value, loading);
  return SStatic::SetAttribute(name, value, loading);
}

}  // namespace SOUI
