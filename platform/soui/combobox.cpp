// SComboBox and its list. Sections: SComboListBox · SComboBox: items ·
// colours and geometry · drop list · attributes and children · painting and
// input.
#include "soui/combobox.h"

#include <algorithm>
#include <cwctype>

#include "soui/edit.h"
#include "soui/render.h"
#include "soui/sapp.h"
#include "soui/slog.h"
#include "soui/sobject.h"

namespace SOUI {
namespace {

int ParseInt(const SStringW& value, int def) {
  int v = def;
  return StrToIntExW(value, STIF_SUPPORT_HEX, &v) ? v : def;
}

int Dp(int v, int scale) { return v * scale / 100; }

// t of a over (1 - t) of b, opaque.
COLORREF Mix(COLORREF a, COLORREF b, int t_percent) {
  auto ch = [&](int ca, int cb) { return (ca * t_percent + cb * (100 - t_percent)) / 100; };
  return RGBA(ch(GetRValue(a), GetRValue(b)), ch(GetGValue(a), GetGValue(b)), ch(GetBValue(a), GetBValue(b)), 0xFF);
}

void FrameRect(IRenderTarget* rt, const CRect& rc, COLORREF color) {
  if (rc.IsRectEmpty()) return;
  const CRect edges[4] = {CRect(rc.left, rc.top, rc.right, rc.top + 1), CRect(rc.left, rc.bottom - 1, rc.right, rc.bottom),
                          CRect(rc.left, rc.top, rc.left + 1, rc.bottom), CRect(rc.right - 1, rc.top, rc.right, rc.bottom)};
  for (const CRect& e : edges) rt->FillSolidRect(&e, color);
}

constexpr COLORREF kAccent = RGBA(0x2F, 0x6B, 0xFF, 0xFF);
constexpr UINT kRowText = DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_END_ELLIPSIS | DT_NOPREFIX;

// The inner edit of an editable combo: the keys of the closed box go to the
// combo first.
class SComboEdit : public SEdit {
 public:
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override {
    auto* combo = GetParent() && GetParent()->IsClass(SComboBox::GetClassName()) ? static_cast<SComboBox*>(GetParent()) : nullptr;
    if (combo && combo->HandleKey(vk)) return;
    SEdit::OnKeyDown(vk, repeat, flags);
  }
};

}  // namespace

// ---- SComboListBox ------------------------------------------------------------------

SComboListBox::SComboListBox() { focusable_ = TRUE; }

int SComboListBox::Count() const { return combo_ ? combo_->GetCount() : 0; }

int SComboListBox::GetItemHeight() const {
  return combo_ ? combo_->GetItemHeightPx() : std::max(1, Dp(24, GetScale()));
}

int SComboListBox::VisibleRows() const {
  CRect inner = GetClientRect();
  inner.DeflateRect(1, 1);
  return std::max(1, inner.Height() / GetItemHeight());
}

CRect SComboListBox::GetItemRect(int index) const {
  CRect inner = GetClientRect();
  inner.DeflateRect(1, 1);
  if (index < top_ || index >= Count() || index - top_ >= VisibleRows() + 1) return CRect();
  const int ih = GetItemHeight();
  const int top = inner.top + (index - top_) * ih;
  return CRect(inner.left, top, inner.right, std::min<int>(top + ih, inner.bottom));
}

int SComboListBox::ItemAt(CPoint pt) const {
  CRect inner = GetClientRect();
  inner.DeflateRect(1, 1);
  if (!inner.PtInRect(pt)) return -1;
  const int i = top_ + (pt.y - inner.top) / GetItemHeight();
  return i < Count() ? i : -1;
}

void SComboListBox::ScrollTo(int top) {
  top = std::clamp(top, 0, std::max(0, Count() - VisibleRows()));
  if (top == top_) return;
  top_ = top;
  Invalidate();
}

void SComboListBox::SetHotItem(int index, bool ensure_visible) {
  const int n = Count();
  index = (index < 0 || n == 0) ? -1 : std::min(index, n - 1);
  if (ensure_visible && index >= 0) {
    const int rows = VisibleRows();
    if (index < top_) ScrollTo(index);
    else if (index >= top_ + rows) ScrollTo(index - rows + 1);
  }
  if (index == hot_) return;
  hot_ = index;
  Invalidate();
}

HRESULT SComboListBox::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"iconSkin") == 0) {
    icon_skin_.Set(value);
  } else if (name.CompareNoCase(L"colorSelBkgnd") == 0) {
    color_sel_.Set(value);
  } else if (name.CompareNoCase(L"colorHoverBkgnd") == 0) {
    color_hover_.Set(value);
  } else {
    return SWindow::SetAttribute(name, value, loading);
  }
  return AfterAttribute(name, value, loading, S_OK);
}

void SComboListBox::OnEraseBkgnd(IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  COLORREF bk = style_->colorBkgnd.Get();
  if (bk == CR_INVALID) bk = combo_ ? combo_->GetBkgndColor() : RGBA(0xFF, 0xFF, 0xFF, 0xFF);
  rt->FillSolidRect(&rc, bk);
  if (combo_) FrameRect(rt, rc, combo_->GetBorderColor());
}

void SComboListBox::OnPaint(IRenderTarget* rt) {
  if (!combo_) return;
  CRect inner = GetClientRect();
  inner.DeflateRect(1, 1);
  if (inner.IsRectEmpty()) return;
  rt->PushClipRect(&inner);
  const int scale = GetScale();
  const int n = Count(), rows = VisibleRows();
  const COLORREF sel = color_sel_.IsSet() ? color_sel_.Get() : combo_->GetSelColor();
  const COLORREF hover = color_hover_.IsSet() ? color_hover_.Get() : combo_->GetHoverColor();
  const bool scrolls = n > rows;
  ISkinObj* icon = icon_skin_.Get(scale);
  const int bar = scrolls ? Dp(4, scale) + 2 : 0;
  for (int i = top_; i < n && i <= top_ + rows; ++i) {
    const CRect row = GetItemRect(i);
    if (row.IsRectEmpty()) break;
    if (i == combo_->GetCurSel()) rt->FillSolidRect(&row, sel);
    else if (i == hot_) rt->FillSolidRect(&row, hover);
    // The highlight on the selected row: a bar at its left edge.
    if (i == hot_ && i == combo_->GetCurSel()) {
      const CRect mark(row.left, row.top, row.left + Dp(3, scale), row.bottom);
      rt->FillSolidRect(&mark, kAccent);
    }
    const SComboBox::Item* item = combo_->GetItem(i);
    if (!item) continue;
    CRect text = row;
    text.left += Dp(8, scale);
    if (icon && item->icon >= 0 && item->icon < icon->GetStates()) {
      // The icon frame, vertically centred, before the text.
      const SIZE sz = icon->GetSkinSize();
      const CRect rc(text.left, row.top + (row.Height() - sz.cy) / 2, text.left + sz.cx,
                     row.top + (row.Height() - sz.cy) / 2 + sz.cy);
      icon->DrawByIndex(rt, &rc, item->icon);
    }
    if (icon) text.left += icon->GetSkinSize().cx + Dp(6, scale);
    if (item->text.IsEmpty()) continue;
    text.right -= Dp(4, scale) + bar;
    DrawText(rt, item->text, item->text.GetLength(), &text, kRowText);
  }
  if (scrolls) {
    // A thin indicator of where the visible rows are.
    const int track = inner.Height();
    const int thumb = std::max(Dp(12, scale), static_cast<int>(static_cast<long long>(track) * rows / n));
    const int range = std::max(1, n - rows);
    const int y = inner.top + static_cast<int>(static_cast<long long>(track - thumb) * top_ / range);
    const CRect rc(inner.right - Dp(4, scale) - 1, y, inner.right - 1, y + thumb);
    rt->FillSolidRect(&rc, combo_->GetBorderColor());
  }
  rt->PopClip();
}

void SComboListBox::OnMouseMove(UINT flags, CPoint pt) {
  SWindow::OnMouseMove(flags, pt);
  const int i = ItemAt(pt);
  if (i >= 0) SetHotItem(i, false);
}

void SComboListBox::OnLButtonUp(UINT flags, CPoint pt) {
  const bool click = (state_ & WndState_PushDown) != 0;
  SWindow::OnLButtonUp(flags, pt);
  const int i = click ? ItemAt(pt) : -1;
  if (i >= 0 && combo_) combo_->OnUserPick(i, true);  // closes: combo_ is null after
}

BOOL SComboListBox::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  (void)flags;
  ScrollTo(top_ - delta / 120 * 3);
  const int i = ItemAt(pt);
  if (i >= 0) SetHotItem(i, false);
  return TRUE;
}

void SComboListBox::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  const int n = Count(), rows = VisibleRows();
  const bool alt = GetKeyState(VK_MENU) < 0;
  switch (vk) {
    case VK_UP:
    case VK_DOWN:
      if (alt) {
        if (combo_) combo_->CloseUp();
        return;
      }
      SetHotItem(hot_ < 0 ? 0 : std::clamp(hot_ + (vk == VK_UP ? -1 : 1), 0, std::max(n - 1, 0)), true);
      return;
    case VK_PRIOR: SetHotItem(std::max(0, hot_ - rows + 1), true); return;
    case VK_NEXT: SetHotItem(std::min(n - 1, std::max(hot_, 0) + rows - 1), true); return;
    case VK_HOME: SetHotItem(0, true); return;
    case VK_END: SetHotItem(n - 1, true); return;
    case VK_RETURN:
      if (!combo_) return;
      if (hot_ >= 0) combo_->OnUserPick(hot_, true);
      else combo_->CloseUp();
      return;
    case VK_F4:
      if (combo_) combo_->CloseUp();
      return;
    default:
      // An editable combo keeps editing while its list is open.
      if (combo_ && combo_->GetEdit()) combo_->GetEdit()->SwndProc(WM_KEYDOWN, vk, MAKELPARAM(repeat, flags));
      else SWindow::OnKeyDown(vk, repeat, flags);
  }
}

void SComboListBox::OnChar(UINT ch, UINT repeat, UINT flags) {
  if (!combo_) return;
  if (SEdit* edit = combo_->GetEdit()) {
    edit->SwndProc(WM_CHAR, ch, MAKELPARAM(repeat, flags));
    return;
  }
  const int i = combo_->FindByInitial(static_cast<wchar_t>(ch), hot_);
  if (i >= 0) SetHotItem(i, true);
}

// ---- SComboBox: items ------------------------------------------------------------------

SComboBox::SComboBox() : drop_height_(200.f, LayoutUnit::Dp) {
  focusable_ = TRUE;
  draw_focus_rect_ = TRUE;
  static const SwndStyle& style = SwndStyle::LeftAligned(L"arrow");
  UseClassStyle(style);
  GetEventSet()->addEvent(EVT_CB_SELCHANGE, EventCBSelChange::EventName());
  GetEventSet()->addEvent(EVT_CB_DROPDOWN, EventCBDropdown::EventName());
  GetEventSet()->addEvent(EVT_CB_CLOSEUP, EventCBCloseUp::EventName());
}

SComboBox::~SComboBox() {
  quiet_ = true;
  CloseUp();
}

const SComboBox::Item* SComboBox::GetItem(int index) const {
  return index >= 0 && index < GetCount() ? &items_[static_cast<size_t>(index)] : nullptr;
}

SStringW SComboBox::GetLBText(int index) const {
  const Item* item = GetItem(index);
  return item ? item->text : SStringW();
}

LPARAM SComboBox::GetItemData(int index) const {
  const Item* item = GetItem(index);
  return item ? item->data : 0;
}

int SComboBox::GetItemIcon(int index) const {
  const Item* item = GetItem(index);
  return item ? item->icon : -1;
}

BOOL SComboBox::SetCurSel(int index) {
  const bool valid = index >= 0 && index < GetCount();
  const int sel = valid ? index : -1;
  if (sel != cur_sel_) {
    cur_sel_ = sel;
    SyncEditText();
    Invalidate();
    if (list_) {
      list_->SetHotItem(cur_sel_, true);
      list_->Invalidate();
    }
  }
  return valid ? TRUE : FALSE;
}

int SComboBox::InsertItem(int index, const SStringW& text, int icon, LPARAM data) {
  if (GetCount() >= kMaxItems) {
    SLOG(kLogWarn, "SOUI") << L"combobox '" << GetName() << L"': more than " << kMaxItems << L" items; refused";
    return -1;
  }
  if (index < 0 || index > GetCount()) index = GetCount();
  Item item;
  item.text = text.GetLength() > kMaxWindowTextLength ? text.Left(kMaxWindowTextLength) : text;
  item.icon = icon;
  item.data = data;
  items_.insert(items_.begin() + index, std::move(item));
  if (cur_sel_ >= index) ++cur_sel_;
  if (list_) list_->Invalidate();
  return index;
}

BOOL SComboBox::DeleteString(int index) {
  if (!GetItem(index)) return FALSE;
  items_.erase(items_.begin() + index);
  if (index == cur_sel_) {
    cur_sel_ = -1;
    SyncEditText();
  } else if (index < cur_sel_) {
    --cur_sel_;
  }
  if (list_) list_->SetHotItem(list_->GetHotItem(), true);
  Invalidate();
  return TRUE;
}

void SComboBox::ResetContent() {
  items_.clear();
  cur_sel_ = -1;
  SyncEditText();
  if (list_) list_->SetHotItem(-1, false);
  Invalidate();
}

SStringW SComboBox::GetWindowText(BOOL raw) const {
  if (edit_) return edit_->GetWindowText(raw);
  return GetLBText(cur_sel_);
}

void SComboBox::SetWindowText(const SStringW& text) {
  if (edit_) {
    edit_->SetWindowText(text);
    return;
  }
  // List only: the text can only be an item's.
  for (int i = 0; i < GetCount(); ++i) {
    if (items_[static_cast<size_t>(i)].text == text) {
      SetCurSel(i);
      return;
    }
  }
}

void SComboBox::SyncEditText() {
  if (!edit_) return;
  // All selected, as after a pick: typing replaces it.
  edit_->SetWindowText(GetLBText(cur_sel_));
  edit_->SetSel(0, -1);
}

// ---- SComboBox: colours and geometry ---------------------------------------------------

COLORREF SComboBox::GetBkgndColor() const {
  for (const SWindow* w = this; w; w = w->GetParent()) {
    const COLORREF c = w->GetStyle().colorBkgnd.Get();
    if (c != CR_INVALID && GetAValue(c) != 0) return c | 0xFF000000u;
  }
  return RGBA(0xFF, 0xFF, 0xFF, 0xFF);
}

COLORREF SComboBox::GetBorderColor() const { return Mix(GetPaintTextColor(), GetBkgndColor(), 35); }
COLORREF SComboBox::GetHoverColor() const { return Mix(GetPaintTextColor(), GetBkgndColor(), 8); }
COLORREF SComboBox::GetSelColor() const { return Mix(kAccent, GetBkgndColor(), 22); }

int SComboBox::GetItemHeightPx() const {
  const int scale = GetScale();
  if (has_item_height_) return std::clamp(item_height_.toPixelSize(scale), 1, 4096);
  return TextRowHeight();
}

int SComboBox::TextRowHeight() const {
  const int scale = GetScale();
  return std::max(Dp(24, scale), MeasureTextExtent(L"Ag", -1, DT_SINGLELINE).cy + Dp(8, scale));
}

CRect SComboBox::ButtonRect() const {
  const CRect rc = GetClientRect();
  int w = rc.Height();
  if (ISkinObj* skin = btn_skin_.Get(GetScale())) {
    const SIZE s = skin->GetSkinSize();
    if (s.cx > 0) w = s.cx;
  }
  w = std::min<int>(w, rc.Width());
  return CRect(rc.right - w, rc.top, rc.right, rc.bottom);
}

CRect SComboBox::CalcDropDownRect() const {
  SApplication* app = SApplication::getSingletonPtr();
  SHostWnd* host = GetContainer() ? HostFromHwnd(GetContainer()->GetHostHwnd()) : nullptr;
  // Only from inside a live host's tree (not after RemoveChild).
  if (!app || !host || !host->IsWindowVisible() || GetRoot() != host->GetRoot()) return CRect();
  CRect anchor = rect_;
  anchor.OffsetRect(host->GetWindowRect().TopLeft());
  const CRect work = app->GetWorkArea(host);
  const int rows = std::max(GetCount(), 1);
  const long long want = static_cast<long long>(rows) * GetItemHeightPx() + 2;
  int h = static_cast<int>(std::min<long long>(want, std::max(drop_height_.toPixelSize(GetScale()), GetItemHeightPx() + 2)));
  const int w = std::max<int>(anchor.Width(), 1);
  const int below = work.bottom - anchor.bottom, above = anchor.top - work.top;
  int y = anchor.bottom;
  if (h > below) {
    if (h <= above) {
      y = anchor.top - h;
    } else if (above > below) {
      h = std::max(above, 1);
      y = anchor.top - h;
    } else {
      h = std::max(below, 1);
    }
  }
  int x = anchor.left;
  if (x + w > work.right) x = work.right - w;
  if (x < work.left) x = work.left;
  return CRect(x, y, x + w, y + h);
}

CSize SComboBox::MeasureContent(int width) {
  (void)width;
  return CSize(Dp(120, GetScale()), TextRowHeight());
}

void SComboBox::UpdateChildrenPosition() {
  if (!edit_) {
    SWindow::UpdateChildrenPosition();
    return;
  }
  CRect rc = GetClientRect();
  rc.DeflateRect(1, 1);
  rc.left += Dp(8, GetScale()) - 1;  // text where the list-only box puts it
  rc.right = std::max<int>(rc.left, ButtonRect().left);
  edit_->OnRelayout(rc);
}

// ---- SComboBox: drop list --------------------------------------------------------------

void SComboBox::DropDown() {
  if (dropdown_ || !SApplication::getSingletonPtr() || !GetContainer() || !IsVisible(TRUE) || IsDisabled(TRUE)) return;
  const CRect rc = CalcDropDownRect();
  if (rc.IsRectEmpty()) return;
  picked_ = false;
  auto* dd = new SDropDownWnd(this);  // the application owns it
  if (!dd->Create(rc) || !dropdown_) return;
  Invalidate();
  EventCBDropdown evt(this);
  FireEvent(evt);
}

void SComboBox::CloseUp() {
  if (dropdown_) dropdown_->EndDropDown(IDCANCEL);
}

void SComboBox::OnCreateDropDown(SDropDownWnd* dropdown) {
  dropdown_ = dropdown;
  SWindow* root = dropdown->GetRoot();
  ApplyStyle(root, dropdown_style_);
  list_ = new SComboListBox();
  list_->SetCombo(this);
  list_->SetAttribute(L"width", L"full", TRUE);
  list_->SetAttribute(L"height", L"full", TRUE);
  // The list is in another host: it gets the box's font and text colour.
  for (const SWindow* w = this; w; w = w->GetParent()) {
    if (!w->GetStyle().GetFont(0).IsSet()) continue;
    list_->SetAttribute(L"font", w->GetStyle().GetFont(0).Source(), TRUE);
    break;
  }
  const COLORREF text = GetPaintTextColor();
  list_->EditStyle([text](SwndStyle& s) {
    s.colorText[0].SetValue(text);
    return true;
  });
  ApplyStyle(list_, list_style_);
  root->InsertChild(list_);
  dropdown->UpdateLayout();
  list_->SetHotItem(cur_sel_, true);
  dropdown->SetFocus(list_);
}

void SComboBox::OnDestroyDropDown(SDropDownWnd* dropdown) {
  if (dropdown != dropdown_) return;
  if (list_) list_->SetCombo(nullptr);
  list_ = nullptr;
  dropdown_ = nullptr;
  if (quiet_) return;
  Invalidate();
  EventCBCloseUp evt(this);
  evt.bPicked = picked_;
  FireEvent(evt);
}

void SComboBox::OnUserPick(int index, bool close) {
  if (!GetItem(index)) return;
  const bool changed = index != cur_sel_;
  SetCurSel(index);
  if (close && dropdown_) {
    picked_ = true;
    dropdown_->EndDropDown(IDOK);
  }
  // After closing: the list is gone before the page reacts.
  if (changed) {
    EventCBSelChange evt(this);
    evt.nCurSel = cur_sel_;
    FireEvent(evt);
  }
}

// ---- SComboBox: attributes and children ------------------------------------------------

HRESULT SComboBox::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"dropDown") == 0) {
    drop_down_ = ParseBool(value) ? TRUE : FALSE;
    draw_focus_rect_ = drop_down_;
    if (!loading) EnsureEdit();
  } else if (name.CompareNoCase(L"dropHeight") == 0) {
    SLayoutSize sz;
    if (SLayoutSize::TryParse(value, &sz) && sz.fSize() > 0) drop_height_ = sz;
  } else if (name.CompareNoCase(L"curSel") == 0) {
    if (loading) pending_sel_ = ParseInt(value, -1);
    else SetCurSel(ParseInt(value, -1));
  } else if (name.CompareNoCase(L"btnSkin") == 0) {
    btn_skin_.Set(value);
  } else if (name.CompareNoCase(L"animateTime") == 0 || name.CompareNoCase(L"autoFitDropBtn") == 0) {
    // Accepted; the list opens without animation.
  } else {
    return SWindow::SetAttribute(name, value, loading);
  }
  return AfterAttribute(name, value, loading, S_OK);
}

BOOL SComboBox::CreateChildren(pugi::xml_node node) {
  auto attrs_of = [](pugi::xml_node n) {
    std::vector<std::pair<SStringW, SStringW>> out;
    for (pugi::xml_attribute a = n.first_attribute(); a; a = a.next_attribute()) out.emplace_back(XmlName(a), XmlValue(a));
    return out;
  };
  for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) {
    if (c.type() != pugi::node_element) continue;
    const SStringW tag = XmlName(c);
    if (tag.CompareNoCase(L"items") == 0) {
      for (pugi::xml_node it = c.child("item"); it; it = it.next_sibling("item")) {
        const SStringW text = it.attribute("text") ? SStringW::FromUtf8(it.attribute("text").value())
                                                   : SStringW::FromUtf8(it.child_value());
        if (InsertItem(-1, text, it.attribute("icon").as_int(-1),
                       static_cast<LPARAM>(it.attribute("data").as_llong(0))) < 0) {
          break;
        }
      }
    } else if (tag.CompareNoCase(L"editStyle") == 0) {
      edit_style_ = attrs_of(c);
    } else if (tag.CompareNoCase(L"listStyle") == 0) {
      list_style_.clear();
      for (auto& a : attrs_of(c)) {
        if (a.first.CompareNoCase(L"itemHeight") == 0) {
          SLayoutSize sz;
          has_item_height_ = SLayoutSize::TryParse(a.second, &sz) && sz.fSize() > 0;
          if (has_item_height_) item_height_ = sz;
        } else {
          list_style_.push_back(std::move(a));
        }
      }
    } else if (tag.CompareNoCase(L"dropdownStyle") == 0) {
      dropdown_style_ = attrs_of(c);
    } else {
      SLOG(kLogWarn, "SOUI") << L"combobox '" << GetName() << L"': child <" << tag << L"> ignored";
    }
  }
  EnsureEdit();
  if (pending_sel_ != -2) {
    SetCurSel(pending_sel_);
    pending_sel_ = -2;
  }
  return TRUE;
}

void SComboBox::ApplyStyle(SWindow* target, const std::vector<std::pair<SStringW, SStringW>>& attrs) {
  for (const auto& a : attrs) target->SetAttribute(a.first, a.second, FALSE);
}

void SComboBox::EnsureEdit() {
  if (!drop_down_ && !edit_) {
    edit_ = new SComboEdit();
    edit_->SetAttribute(L"vcenter", L"1", TRUE);
    InsertChild(edit_);
    ApplyStyle(edit_, edit_style_);
    SyncEditText();
    RequestRelayout();
  } else if (drop_down_ && edit_) {
    SEdit* old = edit_;
    edit_ = nullptr;
    DestroyChild(old);
    RequestRelayout();
  }
}

int SComboBox::OnCreate() {
  EnsureEdit();
  if (pending_sel_ != -2) {
    SetCurSel(pending_sel_);
    pending_sel_ = -2;
  }
  return SWindow::OnCreate();
}

void SComboBox::OnDestroy() {
  quiet_ = true;
  CloseUp();
  SWindow::OnDestroy();
}

// ---- SComboBox: painting and input -----------------------------------------------------

void SComboBox::OnEraseBkgnd(IRenderTarget* rt) {
  if (GetBkgndSkin()) {
    SWindow::OnEraseBkgnd(rt);
    return;
  }
  const CRect rc = GetClientRect();
  if (style_->colorBkgnd.Get() != CR_INVALID) rt->FillSolidRect(&rc, style_->colorBkgnd.Get());
  const bool strong = dropdown_ || (state_ & WndState_Hover);
  FrameRect(rt, rc, strong ? Mix(GetPaintTextColor(), GetBkgndColor(), 60) : GetBorderColor());
}

void SComboBox::OnPaint(IRenderTarget* rt) {
  const int scale = GetScale();
  const CRect btn = ButtonRect();
  // Disabled without a colour of its own: the text fades into the background.
  const bool faded = IsDisabled(TRUE) && style_->colorText[3].Get() == CR_INVALID;
  const COLORREF ink = faded ? Mix(GetPaintTextColor(), GetBkgndColor(), 45) : GetPaintTextColor();
  if (!edit_) {
    const SStringW text = GetLBText(cur_sel_);
    CRect rc = GetClientRect();
    rc.left += Dp(8, scale);
    rc.right = btn.left;
    const COLORREF old = rt->SetTextColor(ink);
    if (!text.IsEmpty() && !rc.IsRectEmpty()) DrawText(rt, text, text.GetLength(), &rc, kRowText);
    rt->SetTextColor(old);
  }
  if (ISkinObj* skin = btn_skin_.Get(scale)) {
    int state = IsDisabled(TRUE) ? 3 : dropdown_ ? 2 : (state_ & WndState_Hover) ? 1 : 0;
    if (state >= skin->GetStates()) state = 0;
    skin->DrawByIndex(rt, &btn, state);
    return;
  }
  // A chevron, pointing up while the list is open.
  const int half = std::max(2, Dp(4, scale));
  const CPoint c = btn.CenterPoint();
  const int dy = dropdown_ ? -half / 2 : half / 2;
  const POINT pts[3] = {{c.x - half, c.y - dy}, {c.x, c.y + dy}, {c.x + half, c.y - dy}};
  IPenPtr old = rt->SelectPen(rt->CreatePen(PS_SOLID, ink, std::max(1, scale / 100)));
  rt->DrawLines(pts, 3);
  rt->SelectPen(old);
}

void SComboBox::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  if (!drop_down_ && !ButtonRect().PtInRect(pt)) return;
  if (edit_) edit_->SetFocus();
  if (IsDropdown()) CloseUp();
  else DropDown();
}

bool SComboBox::HandleKey(UINT vk) {
  const bool alt = GetKeyState(VK_MENU) < 0;
  if (vk == VK_F4 || (alt && (vk == VK_DOWN || vk == VK_UP))) {
    if (IsDropdown()) CloseUp();
    else DropDown();
    return true;
  }
  if (vk != VK_UP && vk != VK_DOWN) return false;
  const int n = GetCount();
  if (n == 0) return true;
  const int next = cur_sel_ < 0 ? 0 : std::clamp(cur_sel_ + (vk == VK_UP ? -1 : 1), 0, n - 1);
  if (next != cur_sel_) OnUserPick(next, false);
  return true;
}

void SComboBox::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (!HandleKey(vk)) SWindow::OnKeyDown(vk, repeat, flags);
}

void SComboBox::OnChar(UINT ch, UINT repeat, UINT flags) {
  const int i = edit_ ? -1 : FindByInitial(static_cast<wchar_t>(ch), cur_sel_);
  if (i >= 0 && i != cur_sel_) OnUserPick(i, false);
  else SWindow::OnChar(ch, repeat, flags);
}

int SComboBox::FindByInitial(wchar_t ch, int after) const {
  if (ch < L' ') return -1;
  const int n = GetCount();
  const wchar_t want = static_cast<wchar_t>(towlower(ch));
  for (int k = 1; k <= n; ++k) {
    const int i = ((after < 0 ? -1 : after) + k) % n;
    const SStringW& text = items_[static_cast<size_t>(i)].text;
    if (!text.IsEmpty() && static_cast<wchar_t>(towlower(text[0])) == want) return i;
  }
  return -1;
}

void RegisterComboBox(SObjectFactory& factory) { factory.RegisterWindowClass<SComboBox>(); }

}  // namespace SOUI
