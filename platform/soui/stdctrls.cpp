#include "soui/stdctrls.h"

#include <algorithm>

#include "soui/checkctrls.h"
#include "soui/combobox.h"
#include "soui/qvrichtext.h"
#include "soui/scrollview.h"
#include "soui/tabctrl.h"

namespace SOUI {
namespace {

CSize SkinSizeOr(const SWindow* w, ISkinObj* skin, CSize fallback) {
  (void)w;
  if (!skin) return fallback;
  const SIZE s = skin->GetSkinSize();
  return (s.cx > 0 && s.cy > 0) ? CSize(s) : fallback;
}

// Splits text into the lines a multi-line label draws: real newlines and
// the two-character sequence "\n" both break.
std::vector<SStringW> SplitLines(SStringW text) {
  text.Replace(L"\\n", L"\n");
  return SplitString(text, L'\n');
}

}  // namespace

// ---- SStatic ------------------------------------------------------------------

SStatic::SStatic() {
  msg_transparent_ = TRUE;
  static const SwndStyle& style = SwndStyle::LeftAligned(L"arrow");
  UseClassStyle(style);
}

HRESULT SStatic::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  // Every attribute of every label passes here; most go on to the window.
  const wchar_t c = name.GetAt(0);
  const wchar_t first = static_cast<wchar_t>(c | 0x20);
  if (c < 0x80 && first != L'm' && first != L'i') return SWindow::SetAttribute(name, value, loading);
  if (name.CompareNoCase(L"multiLines") == 0) {
    int v = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &v);
    multi_lines_ = v != 0;
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  if (name.CompareNoCase(L"interHeight") == 0) {
    int v = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &v);
    // Kept to a few screens either way, so that summing it over every line
    // of a text stays inside int.
    inter_height_ = std::clamp(v, -kMaxInterHeight, kMaxInterHeight);
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  return SWindow::SetAttribute(name, value, loading);
}

CSize SStatic::MeasureContent(int width) {
  if (!multi_lines_) return SWindow::MeasureContent(width);
  const SStringW text = GetWindowText();
  if (text.IsEmpty()) return CSize();
  CSize total;
  const CSize a = MeasureTextExtent(L"A", -1, DT_SINGLELINE);
  const std::vector<SStringW> lines = SplitLines(text);
  for (size_t i = 0; i < lines.size(); ++i) {
    const CSize line = MeasureTextExtent(lines[i].IsEmpty() ? SStringW(L" ") : lines[i], width,
                                         width >= 0 ? DT_WORDBREAK : DT_SINGLELINE);
    total.cx = std::max(total.cx, line.cx);
    total.cy += std::max(line.cy, a.cy) + (i + 1 < lines.size() ? inter_height_ : 0);
  }
  return total;
}

void SStatic::OnPaint(IRenderTarget* rt) {
  if (!multi_lines_) {
    SWindow::OnPaint(rt);
    return;
  }
  const CRect area = GetChildrenLayoutRect();
  SIZE a{0, 0};
  rt->MeasureText(L"A", 1, &a);
  int y = area.top;
  UINT fmt = DT_WORDBREAK;
  if (style_->align == SwndStyle::Center) fmt |= DT_CENTER;
  else if (style_->align == SwndStyle::Right) fmt |= DT_RIGHT;
  for (const SStringW& line : SplitLines(GetWindowText())) {
    CRect calc(area.left, 0, area.right, 0);
    rt->DrawText(line, line.GetLength(), &calc, fmt | DT_CALCRECT);
    const int h = std::max<int>(calc.Height(), a.cy);
    if (y + h > area.bottom) break;  // a line that would overflow is not drawn
    CRect rc(area.left, y, area.right, y + h);
    DrawText(rt, line, line.GetLength(), &rc, fmt);
    y += h + inter_height_;
  }
}

// ---- SButton ------------------------------------------------------------------

SButton::SButton() {
  focusable_ = TRUE;
  skin_.Set(L"_skin.sys.btn.normal");
}

HRESULT SButton::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  // Animation and accelerators are accepted; they have no visible effect here.
  if (name.CompareNoCase(L"animate") == 0 || name.CompareNoCase(L"animateStep") == 0 ||
      name.CompareNoCase(L"accel") == 0 || name.CompareNoCase(L"disableAccelIfInvisible") == 0) {
    return AfterAttribute(name, value, loading, S_FALSE);
  }
  return SWindow::SetAttribute(name, value, loading);
}

void SButton::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (vk == VK_SPACE || vk == VK_RETURN) {
    key_down_ = true;
    ModifyState(WndState_PushDown, 0, TRUE);
    return;
  }
  SWindow::OnKeyDown(vk, repeat, flags);
}

void SButton::OnKeyUp(UINT vk, UINT repeat, UINT flags) {
  if ((vk == VK_SPACE || vk == VK_RETURN) && key_down_) {
    key_down_ = false;
    ModifyState(0, WndState_PushDown, TRUE);
    FireCommand();
    return;
  }
  SWindow::OnKeyUp(vk, repeat, flags);
}

// ---- SImageWnd / SImageButton ---------------------------------------------------

SImageWnd::SImageWnd() { msg_transparent_ = TRUE; }

HRESULT SImageWnd::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"iconIndex") == 0) {
    StrToIntExW(value, STIF_SUPPORT_HEX, &icon_index_);
    return AfterAttribute(name, value, loading, S_OK);
  }
  const HRESULT hr = SWindow::SetAttribute(name, value, loading);
  if (name.CompareNoCase(L"skin") == 0) RequestRelayout();
  return hr;
}

CSize SImageWnd::GetDesiredSize(int width, int height) {
  const CSize base = SWindow::GetDesiredSize(width, height);
  const SouiLayoutParam* p = GetLayoutParam();
  const CSize skin = SkinSizeOr(this, GetBkgndSkin(), base);
  return CSize(p->IsWrapContent(Orientation::Horz) ? skin.cx : base.cx,
               p->IsWrapContent(Orientation::Vert) ? skin.cy : base.cy);
}

void SImageWnd::OnEraseBkgnd(IRenderTarget* rt) {
  ISkinObj* skin = GetBkgndSkin();
  if (!skin) return;
  const CRect rc = GetClientRect();
  skin->DrawByIndex(rt, &rc, icon_index_ < skin->GetStates() ? icon_index_ : 0);
}

CSize SImageButton::GetDesiredSize(int width, int height) {
  const CSize base = SButton::GetDesiredSize(width, height);
  const SouiLayoutParam* p = GetLayoutParam();
  const CSize skin = SkinSizeOr(this, GetBkgndSkin(), base);
  return CSize(p->IsWrapContent(Orientation::Horz) ? skin.cx : base.cx,
               p->IsWrapContent(Orientation::Vert) ? skin.cy : base.cy);
}

SCaption::SCaption() { GetEventSet()->addEvent(EventCaptionDblClk::EventID, EventCaptionDblClk::EventName()); }

void SCaption::OnLButtonDblClk(UINT flags, CPoint pt) {
  SWindow::OnLButtonDblClk(flags, pt);
  EventCaptionDblClk evt(this);
  FireEvent(evt);
}

void RegisterStandardControls(SObjectFactory& factory) {
  factory.RegisterWindowClass<SWindow>();
  factory.RegisterWindowClass<SStatic>();
  factory.RegisterWindowClass<SButton>();
  factory.RegisterWindowClass<SImageWnd>();
  factory.RegisterWindowClass<SImageButton>();
  factory.RegisterWindowClass<SCaption>();
  factory.RegisterWindowClass<STabCtrl>();
  factory.RegisterWindowClass<QVRichText>();
  factory.RegisterWindowClass<SStaticMultiLines>();
  RegisterCheckControls(factory);
  RegisterScrollViewControls(factory);
  RegisterComboBox(factory);
}

}  // namespace SOUI
