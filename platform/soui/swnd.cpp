// SWindow implementation.
//
// Sections: style record · construction and tree · attributes · state.
// Creation from XML is in swnd_xml.cpp, layout in swnd_layout.cpp, painting
// in swnd_paint.cpp, input and events in swnd_input.cpp.
#include "soui/swnd.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>
#include <strings.h>
#include <string_view>
#include <unordered_map>

#include "soui/attr_names.h"
#include "soui/sapp.h"
#include "soui/slog.h"
#include "soui/swnd_internal.h"

namespace SOUI {

namespace internal {
unsigned g_inherit_epoch = 1;
unsigned g_measure_epoch = 1;
}  // namespace internal

using internal::ForEachDescendant;
using internal::g_inherit_epoch;

// ---- style record -------------------------------------------------------------

namespace {

bool ParseSizeList(const SStringW& value, SLayoutSize out[4]) {
  const std::vector<SStringW> parts = SplitString(value, L',');
  SLayoutSize v[4];
  for (size_t i = 0; i < parts.size() && i < 4; ++i) v[i] = SLayoutSize::Parse(parts[i]);
  switch (parts.size()) {
    case 1: out[0] = out[1] = out[2] = out[3] = v[0]; return true;
    case 2: out[0] = out[2] = v[0]; out[1] = out[3] = v[1]; return true;
    case 4: for (int i = 0; i < 4; ++i) out[i] = v[i]; return true;
    default: return false;
  }
}

}  // namespace

// Every attribute a plain window understands, found with one lookup of the
// lower-cased name (attribute names match without regard to case).
enum class StdAttr {
  Unknown,
  // window
  Name, Id, Text, Tip, Skin, FocusSkin, Visible, Display, Enable, MsgTransparent, Focusable,
  Float, ClipClient, MaxWidth, DrawFocusRect, Ignored, Class,
  // style
  ColorText, ColorTextHover, ColorTextPush, ColorTextDisable, Font, FontHover, FontPush,
  FontDisable, ColorBkgnd, ColorBorder, Align, VAlign, Dotted, TextMode, Padding, PaddingLeft,
  PaddingTop, PaddingRight, PaddingBottom, Margin, MarginX, MarginY, Alpha, Cursor,
  // layout
  Pos, Offset, Size, Width, Height,
};

namespace {

struct StdAttrName {
  std::wstring_view name;  // lower case
  StdAttr attr;
};

constexpr StdAttrName kStdAttrNames[] = {
    {L"name", StdAttr::Name}, {L"id", StdAttr::Id}, {L"text", StdAttr::Text}, {L"tip", StdAttr::Tip},
    {L"skin", StdAttr::Skin}, {L"focusskin", StdAttr::FocusSkin}, {L"visible", StdAttr::Visible},
    {L"show", StdAttr::Visible}, {L"display", StdAttr::Display}, {L"enable", StdAttr::Enable},
    {L"msgtransparent", StdAttr::MsgTransparent}, {L"focusable", StdAttr::Focusable},
    {L"float", StdAttr::Float}, {L"clipclient", StdAttr::ClipClient}, {L"maxwidth", StdAttr::MaxWidth},
    {L"drawfocusrect", StdAttr::DrawFocusRect},
    {L"data", StdAttr::Ignored}, {L"trctx", StdAttr::Ignored}, {L"class", StdAttr::Class},
    {L"colortext", StdAttr::ColorText}, {L"colortexthover", StdAttr::ColorTextHover},
    {L"colortextpush", StdAttr::ColorTextPush}, {L"colortextdisable", StdAttr::ColorTextDisable},
    {L"font", StdAttr::Font}, {L"fonthover", StdAttr::FontHover}, {L"fontpush", StdAttr::FontPush},
    {L"fontdisable", StdAttr::FontDisable}, {L"colorbkgnd", StdAttr::ColorBkgnd},
    {L"colorborder", StdAttr::ColorBorder}, {L"align", StdAttr::Align}, {L"valign", StdAttr::VAlign},
    {L"dotted", StdAttr::Dotted}, {L"textmode", StdAttr::TextMode}, {L"padding", StdAttr::Padding},
    {L"inset", StdAttr::Padding}, {L"padding_left", StdAttr::PaddingLeft},
    {L"padding_top", StdAttr::PaddingTop}, {L"padding_right", StdAttr::PaddingRight},
    {L"padding_bottom", StdAttr::PaddingBottom}, {L"margin", StdAttr::Margin},
    {L"margin-x", StdAttr::MarginX}, {L"margin-y", StdAttr::MarginY}, {L"alpha", StdAttr::Alpha},
    {L"cursor", StdAttr::Cursor}, {L"pos", StdAttr::Pos}, {L"offset", StdAttr::Offset},
    {L"size", StdAttr::Size}, {L"width", StdAttr::Width}, {L"height", StdAttr::Height},
};

// Every attribute of every window passes here: the name is folded and
// hashed in one pass and found with about one comparison.
class StdAttrTable {
 public:
  StdAttrTable() {
    for (const StdAttrName& e : kStdAttrNames) {
      uint32_t h = kSeed;
      for (wchar_t c : e.name) h = Mix(h, c);
      size_t i = h & kMask;
      while (slots_[i]) i = (i + 1) & kMask;
      slots_[i] = &e;
    }
  }

  StdAttr Find(const SStringW& name) const {
    // No known name is longer than this, and none is outside ASCII.
    wchar_t lower[24];
    const size_t len = static_cast<size_t>(name.GetLength());
    if (len == 0 || len >= sizeof(lower) / sizeof(lower[0])) return StdAttr::Unknown;
    const wchar_t* s = name.c_str();
    uint32_t h = kSeed;
    for (size_t i = 0; i < len; ++i) {
      const wchar_t c = s[i];
      if (c >= 0x80) return StdAttr::Unknown;
      lower[i] = (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c;
      h = Mix(h, lower[i]);
    }
    const std::wstring_view key(lower, len);
    for (size_t i = h & kMask; slots_[i]; i = (i + 1) & kMask) {
      if (slots_[i]->name == key) return slots_[i]->attr;
    }
    return StdAttr::Unknown;
  }

 private:
  static constexpr uint32_t kSeed = 2166136261u;  // FNV-1a
  static uint32_t Mix(uint32_t h, wchar_t c) { return (h ^ static_cast<uint32_t>(c)) * 16777619u; }
  // A power of two well above the number of names, so that probes stay short.
  static constexpr size_t kMask = 127;
  static_assert(sizeof(kStdAttrNames) / sizeof(kStdAttrNames[0]) < (kMask + 1) / 2);
  static_assert(static_cast<int>(StdAttr::Height) < 255, "remembered in a byte per name");
  const StdAttrName* slots_[kMask + 1] = {};
};

StdAttr LookupStdAttr(const SStringW& name) {
  static NameMemo memo;  // constant-initialised: no guard on the common path
  return static_cast<StdAttr>(memo.Get(name, [](const SStringW& n) {
    static const StdAttrTable table;
    return static_cast<int>(table.Find(n));
  }));
}

bool IsStyleAttr(StdAttr a) { return a >= StdAttr::ColorText && a <= StdAttr::Cursor; }
bool IsLayoutAttr(StdAttr a) { return a >= StdAttr::Pos; }

}  // namespace

bool SwndStyle::SetAttribute(const SStringW& name, const SStringW& value) {
  const StdAttr attr = LookupStdAttr(name);
  return IsStyleAttr(attr) && SetStdAttribute(attr, value);
}

bool SwndStyle::SetStdAttribute(StdAttr attr, const SStringW& value) {
  // Which window gives a subtree its font is kept per window (GetInherited);
  // only a font can change that. Text colours are looked up when painting.
  if (attr >= StdAttr::Font && attr <= StdAttr::FontDisable) ++g_inherit_epoch;
  switch (attr) {
    case StdAttr::ColorText: return colorText[0].Set(value);
    case StdAttr::ColorTextHover: return colorText[1].Set(value);
    case StdAttr::ColorTextPush: return colorText[2].Set(value);
    case StdAttr::ColorTextDisable: return colorText[3].Set(value);
    case StdAttr::Font: return font[0].Set(value);
    case StdAttr::FontHover: return font[1].Set(value);
    case StdAttr::FontPush: return font[2].Set(value);
    case StdAttr::FontDisable: return font[3].Set(value);
    case StdAttr::ColorBkgnd: return colorBkgnd.Set(value);
    case StdAttr::ColorBorder: return colorBorder.Set(value);
    case StdAttr::Align:
      // Enum values are case-sensitive, as in the toolkit.
      if (value == L"left") align = Left;
      else if (value == L"center") align = Center;
      else if (value == L"right") align = Right;
      else return false;
      return true;
    case StdAttr::VAlign:
      if (value == L"top") valign = Top;
      else if (value == L"middle") valign = Middle;
      else if (value == L"bottom") valign = Bottom;
      else return false;
      return true;
    case StdAttr::Dotted: dotted = ParseBool(value); return true;
    case StdAttr::TextMode: {
      int v = 0;
      if (!StrToIntExW(value, STIF_SUPPORT_HEX, &v)) return false;
      textMode = static_cast<UINT>(v);
      return true;
    }
    case StdAttr::Padding: return ParseSizeList(value, padding);
    case StdAttr::PaddingLeft: padding[0] = SLayoutSize::Parse(value); return true;
    case StdAttr::PaddingTop: padding[1] = SLayoutSize::Parse(value); return true;
    case StdAttr::PaddingRight: padding[2] = SLayoutSize::Parse(value); return true;
    case StdAttr::PaddingBottom: padding[3] = SLayoutSize::Parse(value); return true;
    case StdAttr::Margin: return ParseSizeList(value, margin);
    case StdAttr::MarginX: margin[0] = margin[2] = SLayoutSize::Parse(value); return true;
    case StdAttr::MarginY: margin[1] = margin[3] = SLayoutSize::Parse(value); return true;
    case StdAttr::Alpha: {
      int v = 0;
      if (!StrToIntExW(value, STIF_SUPPORT_HEX, &v)) return false;
      alpha = static_cast<BYTE>(std::max(0, std::min(v, 255)));
      return true;
    }
    case StdAttr::Cursor: cursor = value; return true;
    default: return false;
  }
}

UINT SwndStyle::GetTextAlign() const {
  if (textMode) return textMode;
  UINT fmt = 0;
  if (align == Center) fmt |= DT_CENTER;
  else if (align == Right) fmt |= DT_RIGHT;
  if (valign == Middle) fmt |= DT_VCENTER | DT_SINGLELINE;
  else if (valign == Bottom) fmt |= DT_BOTTOM | DT_SINGLELINE;
  if (dotted) fmt |= DT_END_ELLIPSIS;
  return fmt;
}

namespace {

// Four edges in pixels; most windows have none, and every paint asks.
CRect EdgesInPixels(const SLayoutSize (&edges)[4], int scale) {
  if (edges[0].isZero() && edges[1].isZero() && edges[2].isZero() && edges[3].isZero()) return CRect();
  return CRect(edges[0].toPixelSize(scale), edges[1].toPixelSize(scale), edges[2].toPixelSize(scale),
               edges[3].toPixelSize(scale));
}

}  // namespace

CRect SwndStyle::GetPadding(int scale) const { return EdgesInPixels(padding, scale); }

CRect SwndStyle::GetMargin(int scale) const { return EdgesInPixels(margin, scale); }

COLORREF SwndStyle::GetTextColor(int state) const {
  if (state > 0 && state < 4 && colorText[state].IsSet()) return colorText[state].Get();
  return colorText[0].Get();
}

bool SwndStyle::HasFont() const {
  return font[0].IsSet() || font[1].IsSet() || font[2].IsSet() || font[3].IsSet();
}

bool SwndStyle::HasTextColor() const {
  return colorText[0].IsSet() || colorText[1].IsSet() || colorText[2].IsSet() || colorText[3].IsSet();
}

const SwndStyle& SwndStyle::Default() {
  static const SwndStyle style;
  return style;
}

const SwndStyle& SwndStyle::LeftAligned(const wchar_t* cursor) {
  // Every label asks on construction: the lookup must not build a string.
  static std::map<std::wstring, SwndStyle, std::less<>> styles;
  if (!cursor) cursor = L"arrow";
  auto it = styles.find(std::wstring_view(cursor));
  if (it == styles.end()) {
    it = styles.emplace(cursor, SwndStyle()).first;
    it->second.align = Left;
    it->second.cursor = cursor;
  }
  return it->second;
}

const ThemedFont& SwndStyle::GetFont(int state) const {
  if (state > 0 && state < 4 && font[state].IsSet()) return font[state];
  return font[0];
}

// ---- construction and tree ------------------------------------------------------

SWindow::SWindow() : style_(&SwndStyle::Default()) {
  // A window made in code fills its parent until told otherwise.
  layout_param_.SetMatchParent(Orientation::Horz);
  layout_param_.SetMatchParent(Orientation::Vert);
  static const EventSet::Decl kStandardEvents[] = {
      {EVT_CREATE, EventSwndCreate::EventName()},
      {EVT_DESTROY, EventSwndDestroy::EventName()},
      {EVT_SIZE, EventSwndSize::EventName()},
      {EVT_STATECHANGED, EventSwndStateChanged::EventName()},
      {EVT_VISIBLECHANGED, EventSwndVisibleChanged::EventName()},
      {EVT_MOUSE_HOVER, EventSwndMouseHover::EventName()},
      {EVT_MOUSE_LEAVE, EventSwndMouseLeave::EventName()},
      {EVT_LBUTTONDOWN, EventLButtonDown::EventName()},
      {EVT_LBUTTONUP, EventLButtonUp::EventName()},
      {EVT_CMD, EventCmd::EventName()},
      {EVT_CTXMENU, EventCtxMenu::EventName()},
      {EVT_SETFOCUS, EventSetFocus::EventName()},
      {EVT_KILLFOCUS, EventKillFocus::EventName()},
      {EVT_KEYDOWN, EventKeyDown::EventName()},
  };
  events_.addEvents(kStandardEvents, sizeof(kStandardEvents) / sizeof(kStandardEvents[0]));
}

namespace {

// The private style copies of the windows applying their XML attributes
// now (StyleBatch), newest last. Only a window being loaded has one, so no
// window carries a pointer for it. A window's batch encloses those of the
// children it creates, so its own copy is nearly always the last.
using BatchCopy = std::pair<const SWindow*, std::unique_ptr<SwndStyle>>;
std::vector<BatchCopy>& BatchCopies() {
  static std::vector<BatchCopy> copies;
  return copies;
}

std::vector<BatchCopy>::iterator FindBatchCopy(const SWindow* w) {
  std::vector<BatchCopy>& copies = BatchCopies();
  for (auto it = copies.end(); it != copies.begin();) {
    if ((--it)->first == w) return it;
  }
  return copies.end();
}

}  // namespace

// Destroy through DestroyWindow/DestroyChild (or the host) so that OnDestroy
// runs while the derived object is still whole; a bare delete only frees.
SWindow::~SWindow() {
  destroying_ = true;
  SWindow* child = first_child_;
  while (child) {
    SWindow* next = child->next_sibling_;
    child->parent_ = nullptr;
    delete child;
    child = next;
  }
  first_child_ = last_child_ = nullptr;
  if (has_batch_copy_) BatchCopies().erase(FindBatchCopy(this));  // destroyed while loading
  if (container_) container_->OnSwndDestroyed(this);
}

BOOL SWindow::IsClass(const wchar_t* name) const {
  return (name && std::wcscmp(name, GetClassName()) == 0) ? TRUE : SObject::IsClass(name);
}

SWindow* SWindow::GetWindow(int code) const {
  switch (code) {
    case GSW_FIRSTCHILD: return first_child_;
    case GSW_LASTCHILD: return last_child_;
    case GSW_PREVSIBLING: return prev_sibling_;
    case GSW_NEXTSIBLING: return next_sibling_;
    case GSW_PARENT: return parent_;
    case GSW_OWNER: return owner_;
    default: return nullptr;
  }
}

SWindow* SWindow::GetRoot() const {
  const SWindow* w = this;
  while (w->parent_) w = w->parent_;
  return const_cast<SWindow*>(w);
}

BOOL SWindow::InsertChild(SWindow* child, SWindow* after) {
  if (!child || child == this || child->parent_) return FALSE;
  if (depth_ + 1 + child->SubtreeHeight() > kMaxTreeDepth) {
    SLOG(kLogError, "SOUI") << L"InsertChild: the tree would be deeper than " << kMaxTreeDepth
                            << L" levels; " << child->GetObjectClass() << L" name='" << child->name_
                            << L"' not inserted";
    return FALSE;
  }
  child->parent_ = this;
  if (after == ICWND_LAST || (after != ICWND_FIRST && after->parent_ != this)) {
    child->prev_sibling_ = last_child_;
    child->next_sibling_ = nullptr;
    if (last_child_) last_child_->next_sibling_ = child;
    else first_child_ = child;
    last_child_ = child;
  } else if (after == ICWND_FIRST) {
    child->prev_sibling_ = nullptr;
    child->next_sibling_ = first_child_;
    if (first_child_) first_child_->prev_sibling_ = child;
    else last_child_ = child;
    first_child_ = child;
  } else {
    child->prev_sibling_ = after;
    child->next_sibling_ = after->next_sibling_;
    if (after->next_sibling_) after->next_sibling_->prev_sibling_ = child;
    else last_child_ = child;
    after->next_sibling_ = child;
  }
  ++child_count_;
  child->SetDepth(depth_ + 1);
  if (child->container_ != container_) child->SetContainer(container_);
  ++g_inherit_epoch;  // the child inherits from a new line of ancestors
  RequestRelayout();
  return TRUE;
}

void SWindow::SetDepth(int depth) {
  const int shift = depth - depth_;
  if (shift == 0) return;
  depth_ = depth;
  ForEachDescendant(this, [shift](SWindow* w) { w->depth_ += shift; });
}

int SWindow::SubtreeHeight() const {
  int deepest = depth_;
  ForEachDescendant(const_cast<SWindow*>(this), [&deepest](SWindow* w) { deepest = std::max(deepest, w->depth_); });
  return deepest - depth_;
}

BOOL SWindow::RemoveChild(SWindow* child) {
  if (!child || child->parent_ != this) return FALSE;
  if (child->prev_sibling_) child->prev_sibling_->next_sibling_ = child->next_sibling_;
  else first_child_ = child->next_sibling_;
  if (child->next_sibling_) child->next_sibling_->prev_sibling_ = child->prev_sibling_;
  else last_child_ = child->prev_sibling_;
  child->parent_ = child->prev_sibling_ = child->next_sibling_ = nullptr;
  child->SetDepth(0);
  --child_count_;
  // A window out of the tree belongs to no host: the host lets go of
  // capture, hover, focus and timers in the subtree, and nothing in it
  // reaches the host later (the host may be gone by the time it is deleted).
  child->SetContainer(nullptr);
  ++g_inherit_epoch;
  RequestRelayout();
  Invalidate();
  return TRUE;
}

BOOL SWindow::DestroyChild(SWindow* child) {
  if (!child || child->parent_ != this) return FALSE;
  child->DispatchDestroy();
  RemoveChild(child);
  delete child;
  return TRUE;
}

BOOL SWindow::DestroyWindow() {
  if (parent_) return parent_->DestroyChild(this);
  delete this;
  return TRUE;
}

void SWindow::DispatchDestroy() {
  if (destroying_) return;
  destroying_ = true;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->DispatchDestroy();
  if (created_) {
    OnDestroy();
    EventSwndDestroy evt(this);
    FireEvent(evt);
  }
  if (container_) container_->OnSwndDestroyed(this);
}

void SWindow::BringWindowToTop() {
  SWindow* parent = parent_;
  if (!parent || parent->last_child_ == this) return;
  // Relink as the last child without the relayout/invalidate of RemoveChild.
  if (prev_sibling_) prev_sibling_->next_sibling_ = next_sibling_;
  else parent->first_child_ = next_sibling_;
  next_sibling_->prev_sibling_ = prev_sibling_;
  prev_sibling_ = parent->last_child_;
  next_sibling_ = nullptr;
  parent->last_child_->next_sibling_ = this;
  parent->last_child_ = this;
  Invalidate();
}

SWindow* SWindow::FindChildByName(const SStringW& name, int depth) const {
  if (depth == 0 || name.IsEmpty()) return nullptr;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (c->name_ == name) return c;
  }
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (SWindow* found = c->FindChildByName(name, depth < 0 ? -1 : depth - 1)) return found;
  }
  return nullptr;
}

SWindow* SWindow::FindChildByID(int id, int depth) const {
  if (depth == 0) return nullptr;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (c->id_ == id) return c;
  }
  for (SWindow* c = first_child_; c; c = c->next_sibling_) {
    if (SWindow* found = c->FindChildByID(id, depth < 0 ? -1 : depth - 1)) return found;
  }
  return nullptr;
}

void SWindow::LogChildNotFound(const wchar_t* cls, const SStringW& name) const {
  SLOG(kLogWarn, "SOUI") << L"FindChildByName2 Failed, no window of class " << cls
                         << L" with name of " << name;
}

void SWindow::SetContainer(ISwndContainer* container) {
  auto set = [container](SWindow* w) {
    ISwndContainer* old = w->container_;
    // A window being destroyed has told its host already (DispatchDestroy).
    if (old && old != container && !w->destroying_) old->OnSwndDestroyed(w);
    w->container_ = container;
    if (old != container) {
      w->rect_invalidated_ = false;  // what it made dirty was in another host, or none
      w->OnContainerChanged(old);
    }
  };
  set(this);
  ForEachDescendant(this, set);
}

void SWindow::OnContainerChanged(ISwndContainer* old_container) {
  (void)old_container;
  layout_dirty_ = true;
  ++g_inherit_epoch;
  desired_cache_.epoch = 0;
}

namespace {

// Every field that tells two styles apart: the sources of colours and fonts
// as text, the numbers as raw values (a key is made for every styled window,
// so no formatting).
// Written into key, so that a probe can reuse its buffer.
void StyleKey(const SwndStyle& s, std::wstring& key) {
  key.clear();
  auto num = [&key](uint32_t v) { key.push_back(static_cast<wchar_t>(v)); };
  auto color = [&](const ThemedColor& c) {
    if (c.IsSet() && c.Source().IsEmpty()) num(c.Get());  // a value set in code
    else if (c.IsSet()) key.append(c.Source().c_str(), static_cast<size_t>(c.Source().GetLength()));
    key.push_back(L'\x1f');
  };
  for (const ThemedColor& c : s.colorText) color(c);
  color(s.colorBkgnd);
  color(s.colorBorder);
  for (const ThemedFont& f : s.font) {
    if (f.IsSet()) key.append(f.Source().c_str(), static_cast<size_t>(f.Source().GetLength()));
    key.push_back(L'\x1f');
  }
  for (const SLayoutSize* sizes : {s.padding, s.margin}) {
    for (int i = 0; i < 4; ++i) {
      uint32_t bits = 0;
      const float v = sizes[i].fSize();
      std::memcpy(&bits, &v, sizeof bits);
      num(bits);
      num(static_cast<uint32_t>(sizes[i].unit()));
    }
  }
  num(static_cast<uint32_t>(s.align));
  num(static_cast<uint32_t>(s.valign));
  num(s.dotted ? 1 : 0);
  num(s.textMode);
  num(s.alpha);
  key.append(s.cursor.c_str(), static_cast<size_t>(s.cursor.GetLength()));
}

// Styles in use, by key. Never destroyed, so that a window outliving static
// destruction can still let go of its style.
std::unordered_map<std::wstring, std::weak_ptr<const SwndStyle>>& StylePool() {
  static auto* pool = new std::unordered_map<std::wstring, std::weak_ptr<const SwndStyle>>();
  return *pool;
}

std::shared_ptr<const SwndStyle> InternStyle(SwndStyle&& style) {
  auto& pool = StylePool();
  // Most windows share a style already in use: the probe allocates nothing.
  static std::wstring probe;
  StyleKey(style, probe);
  auto it = pool.find(probe);
  if (it != pool.end()) {
    if (auto alive = it->second.lock()) return alive;
  }
  std::wstring key = probe;
  // The last owner takes the entry out again (unless a newer one replaced it).
  auto* owned = new SwndStyle(std::move(style));
  std::shared_ptr<const SwndStyle> shared(owned, [key](const SwndStyle* s) {
    auto& p = StylePool();
    auto entry = p.find(key);
    if (entry != p.end() && entry->second.expired()) p.erase(entry);
    delete s;
  });
  pool[std::move(key)] = shared;
  return shared;
}

}  // namespace

SWindow::StyleBatch::StyleBatch(SWindow* w) : w_(w), outer_(!w->batching_style_) { w_->batching_style_ = true; }

SWindow::StyleBatch::~StyleBatch() {
  if (!outer_) return;
  w_->batching_style_ = false;
  if (!w_->has_batch_copy_) return;
  w_->has_batch_copy_ = false;
  const auto it = FindBatchCopy(w_);
  SwndStyle copy = std::move(*it->second);
  BatchCopies().erase(it);
  w_->interned_style_ = InternStyle(std::move(copy));
  w_->style_ = w_->interned_style_.get();
}

bool SWindow::EditStyle(const std::function<bool(SwndStyle&)>& change) {
  if (batching_style_) {
    SwndStyle* copy = nullptr;
    if (has_batch_copy_) {
      copy = FindBatchCopy(this)->second.get();
    } else {
      BatchCopies().emplace_back(this, std::make_unique<SwndStyle>(*style_));
      copy = BatchCopies().back().second.get();
      has_batch_copy_ = true;
    }
    if (!change(*copy)) return false;
    style_ = copy;
    return true;
  }
  SwndStyle copy = *style_;
  if (!change(copy)) return false;
  interned_style_ = InternStyle(std::move(copy));
  style_ = interned_style_.get();
  return true;
}

bool SWindow::EditStyle(const SStringW& name, const SStringW& value) {
  const StdAttr attr = LookupStdAttr(name);
  return IsStyleAttr(attr) && EditStdStyle(attr, value);
}

bool SWindow::EditStdStyle(StdAttr attr, const SStringW& value) {
  SApplication* app = SApplication::getSingletonPtr();
  // A copy already being edited takes the change.
  if (has_batch_copy_ || !app) return EditStyle([&](SwndStyle& s) { return s.SetStdAttribute(attr, value); });
  if (!app->style_edits_) app->style_edits_ = std::make_unique<internal::StyleEdits>();
  internal::StyleEdits& memo = *app->style_edits_;
  const unsigned generation = app->GetResProvider().Generation();
  if (memo.generation != generation) {
    memo = internal::StyleEdits();
    memo.generation = generation;
  }
  constexpr size_t kSize = internal::StyleEdits::kSize;
  for (size_t i = 1; i <= kSize; ++i) {  // the newest first
    const internal::StyleEdits::Entry& e = memo.entries[(memo.next + kSize - i) % kSize];
    if (e.from == style_ && e.to && e.attr == attr && e.value == value) {
      if (e.to->HasFont() != style_->HasFont()) ++g_inherit_epoch;  // a new font source
      interned_style_ = e.to;
      style_ = interned_style_.get();
      return true;
    }
  }
  SwndStyle copy = *style_;
  if (!copy.SetStdAttribute(attr, value)) return false;  // not remembered: a reference may resolve later
  internal::StyleEdits::Entry& e = memo.entries[memo.next];
  memo.next = (memo.next + 1) % kSize;
  e.from_owner = interned_style_.get() == style_ ? interned_style_ : nullptr;
  e.from = style_;
  e.attr = attr;
  e.value = value;
  interned_style_ = InternStyle(std::move(copy));
  style_ = interned_style_.get();
  e.to = interned_style_;
  return true;
}

// ---- identity and text ---------------------------------------------------------------

SWindow::Rare& SWindow::GetRare() {
  if (!rare_) rare_ = std::make_unique<Rare>();
  return *rare_;
}

SStringW SWindow::GetWindowText(BOOL raw) const {
  return (raw && rare_ && rare_->has_raw_text) ? rare_->text_raw : text_.ToString();
}

void SWindow::SetWindowText(const SStringW& text_in) {
  SStringW capped;
  if (text_in.GetLength() > kMaxWindowTextLength) {
    SLOG(kLogWarn, "SOUI") << GetObjectClass() << L" name='" << name_ << L"': text of "
                           << text_in.GetLength() << L" characters cut to " << kMaxWindowTextLength;
    capped = text_in.Left(kMaxWindowTextLength);
  }
  const SStringW& text = capped.IsEmpty() ? text_in : capped;
  // What the window shows: the text itself, or what a reference or a
  // translation made of it (only then is the text copied).
  SApplication* app = SApplication::getSingletonPtr();
  SStringW changed;
  bool has_raw = false;
  if (app && text.GetAt(0) == L'@') {
    changed = app->tr(app->GetResProvider().ResolveString(text), SStringW());
    has_raw = changed != text;
  } else if (app) {
    has_raw = app->Translate(text, SStringW(), &changed) && changed != text;
  }
  const SStringW& shown = has_raw ? changed : text;
  // The same text again (a quote that did not move) costs nothing.
  if (text_.Equals(shown) && has_raw == (rare_ && rare_->has_raw_text) && (!has_raw || rare_->text_raw == text)) {
    return;
  }
  // A content-sized window whose new text measures the same as the old one
  // needs a repaint, not a layout pass.
  const DesiredCache before = desired_cache_;
  const bool measured = before.epoch == internal::g_measure_epoch && before.scale == GetScale();
  InvalidateMeasure();
  text_.Assign(shown);
  // The raw form is kept only when it differs (a reference was resolved).
  if (has_raw) {
    GetRare().text_raw = text;
    rare_->has_raw_text = true;
  } else if (rare_) {
    rare_->text_raw.Empty();
    rare_->has_raw_text = false;
  }
  const SouiLayoutParam* p = &layout_param_;
  if (p->IsWrapContent(Orientation::Horz) || p->IsWrapContent(Orientation::Vert)) {
    if (!measured || GetDesiredSize(before.width, before.height) != before.size) RequestRelayout();
  }
  Invalidate();
}

// ---- attributes ----------------------------------------------------------------------

namespace {

using AttrHandler = HRESULT (*)(SWindow* w, const SStringW& value, BOOL loading);

int ParseId(const SStringW& value) {
  static const std::map<SStringW, int> kNamed = {
      {L"IDOK", IDOK},       {L"IDCANCEL", IDCANCEL}, {L"IDCLOSE", IDCLOSE},
      {L"IDHELP", IDHELP},   {L"IDABORT", IDABORT},   {L"IDYES", IDYES},
      {L"IDNO", IDNO},       {L"IDRETRY", IDRETRY},   {L"IDIGNORE", IDIGNORE}};
  auto it = kNamed.find(value);
  if (it != kNamed.end()) return it->second;
  int v = 0;
  StrToIntExW(value, STIF_SUPPORT_HEX, &v);
  return v;
}

}  // namespace

HRESULT SWindow::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  const StdAttr attr = LookupStdAttr(name);
  if (IsStyleAttr(attr)) {
    if (!EditStdStyle(attr, value)) return E_FAIL;
    const bool font = attr >= StdAttr::Font && attr <= StdAttr::FontDisable;
    // Descendants without a font of their own measure with this one.
    if (font) ForEachDescendant(this, [](SWindow* w) { w->desired_cache_.epoch = 0; });
    if (font || (attr >= StdAttr::Padding && attr <= StdAttr::MarginY)) RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  if (IsLayoutAttr(attr)) {
    static constexpr LayoutAttr kLayoutAttrs[] = {LayoutAttr::Pos, LayoutAttr::Offset, LayoutAttr::Size,
                                                  LayoutAttr::Width, LayoutAttr::Height};
    static_assert(static_cast<int>(StdAttr::Height) - static_cast<int>(StdAttr::Pos) + 1 == 5);
    const LayoutAttr which = kLayoutAttrs[static_cast<int>(attr) - static_cast<int>(StdAttr::Pos)];
    if (!layout_param_.SetAttribute(which, value)) return E_FAIL;  // logged by the layout loader
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_FALSE);
  }
  HRESULT hr = S_FALSE;
  switch (attr) {
    case StdAttr::Name:
      name_ = value;
      if (!id_) {
        if (SApplication* app = SApplication::getSingletonPtr()) id_ = app->GetResProvider().GetNamedId(value);
      }
      break;
    case StdAttr::Id: id_ = ParseId(value); break;
    case StdAttr::Text: SetWindowText(value); break;
    case StdAttr::Tip: {
      SApplication* app = SApplication::getSingletonPtr();
      GetRare().tip = app ? app->GetResProvider().ResolveString(value) : value;
      break;
    }
    case StdAttr::Skin: skin_.Set(value); hr = S_OK; break;
    case StdAttr::FocusSkin: GetRare().focus_skin.Set(value); hr = S_OK; break;
    case StdAttr::Visible: SetVisible(ParseBool(value), !loading); break;
    case StdAttr::Display:
      display_ = ParseBool(value);
      if (parent_) parent_->RequestRelayout();
      break;
    case StdAttr::Enable: EnableWindow(ParseBool(value), !loading); break;
    case StdAttr::MsgTransparent: msg_transparent_ = ParseBool(value); break;
    case StdAttr::Focusable: focusable_ = ParseBool(value); break;
    case StdAttr::Float:
      float_ = ParseBool(value);
      if (parent_) parent_->RequestRelayout();
      break;
    case StdAttr::ClipClient: clip_client_ = ParseBool(value); hr = S_OK; break;
    case StdAttr::MaxWidth:
      GetRare().max_width = SLayoutSize::Parse(value);
      has_max_width_ = true;
      RequestRelayout();
      break;
    case StdAttr::DrawFocusRect: draw_focus_rect_ = ParseBool(value); hr = S_OK; break;
    case StdAttr::Ignored: break;
    case StdAttr::Class: {
      SApplication* app = SApplication::getSingletonPtr();
      pugi::xml_node cls = app ? app->GetResProvider().GetClass(value) : pugi::xml_node();
      for (pugi::xml_attribute a = cls.first_attribute(); a; a = a.next_attribute()) {
        SStringW spare;
        const SStringW& n = InternName(a.name(), &spare);
        // A nested class and the class's own name are not window attributes.
        const StdAttr skip = LookupStdAttr(n);
        if (skip != StdAttr::Class && skip != StdAttr::Name) SetAttribute(n, XmlValue(a), loading);
      }
      hr = S_OK;
      break;
    }
    default: return E_NOTIMPL;  // no window attribute of that name
  }
  return AfterAttribute(name, value, loading, hr);
}

HRESULT SWindow::AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading, HRESULT hr) {
  if (hr == S_OK && !loading) Invalidate();
  return SObject::AfterAttribute(name, value, loading, hr);
}

void SWindow::SetAttributeRecursive(const SStringW& name, const SStringW& value) {
  SetAttribute(name, value, FALSE);
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->SetAttributeRecursive(name, value);
}

// ---- state ----------------------------------------------------------------------------

DWORD SWindow::ModifyState(DWORD add, DWORD remove, BOOL update) {
  const DWORD old = state_;
  state_ = (state_ & ~remove) | add;
  if (state_ != old) {
    ++g_inherit_epoch;  // descendants inherit visibility and enabled state
    InvalidateMeasure();  // state fonts, and a hidden child measures nothing
    EventSwndStateChanged evt(this);
    evt.dwOldState = old;
    evt.dwNewState = state_;
    FireEvent(evt);
    if (update) Invalidate();
  }
  return old;
}

int SWindow::GetStateIndex() const {
  if (IsDisabled(TRUE)) return 3;
  if (state_ & (WndState_PushDown | WndState_Check)) return 2;
  if (state_ & WndState_Hover) return 1;
  return 0;
}

BOOL SWindow::IsVisible(BOOL check_parent) const {
  if (check_parent) return GetInherited().hidden ? FALSE : TRUE;
  return (state_ & WndState_Invisible) ? FALSE : TRUE;
}

const SWindow::Inherited& SWindow::GetInherited() const {
  const unsigned epoch = g_inherit_epoch;
  if (inherited_.epoch == epoch) return inherited_;
  // Fill in from the nearest ancestor that is current, downwards, without
  // recursion: one walk up per epoch for the deepest window, O(1) after.
  static std::vector<const SWindow*> path;
  path.clear();
  for (const SWindow* w = this; w && w->inherited_.epoch != epoch; w = w->parent_) path.push_back(w);
  for (auto it = path.rbegin(); it != path.rend(); ++it) {
    const SWindow* w = *it;
    const Inherited* up = w->parent_ ? &w->parent_->inherited_ : nullptr;
    Inherited& in = w->inherited_;
    in.hidden = (w->state_ & WndState_Invisible) || (up && up->hidden);
    in.disabled = (w->state_ & WndState_Disable) || (up && up->disabled);
    in.font_source = w->style_->HasFont() ? w : (up ? up->font_source : nullptr);
    in.epoch = epoch;
  }
  return inherited_;
}

void SWindow::SetVisible(BOOL visible, BOOL update) {
  if (IsVisible(FALSE) == !!visible) return;
  if (update) Invalidate();  // the old area
  ModifyState(visible ? 0 : WndState_Invisible, visible ? WndState_Invisible : 0, FALSE);
  if (!visible) DropFocusInside();
  OnShowWindow(visible, 0);
  EventSwndVisibleChanged evt(this);
  FireEvent(evt);
  if (parent_) parent_->RequestRelayout();
  RequestRelayout();
  if (update) Invalidate();
}

BOOL SWindow::IsDisabled(BOOL check_parent) const {
  if (check_parent) return GetInherited().disabled ? TRUE : FALSE;
  return (state_ & WndState_Disable) ? TRUE : FALSE;
}

void SWindow::EnableWindow(BOOL enable, BOOL update) {
  if (!IsDisabled(FALSE) == !!enable) return;
  ModifyState(enable ? 0 : WndState_Disable, enable ? WndState_Disable : 0, update);
  if (!enable) DropFocusInside();
  OnEnable(enable);
}

void SWindow::SetCheck(BOOL checked) {
  ModifyState(checked ? WndState_Check : 0, checked ? 0 : WndState_Check, TRUE);
}

void SWindow::SetFocus() {
  if (container_) container_->SetFocus(this);
}

void SWindow::KillFocus() {
  if (IsFocused()) container_->SetFocus(nullptr);
}

BOOL SWindow::IsFocused() const { return container_ && container_->GetFocus() == this; }

BOOL SWindow::IsFocusTarget() const {
  return focusable_ && IsVisible(TRUE) && !IsDisabled(TRUE) ? TRUE : FALSE;
}

void SWindow::DropFocusInside() {
  if (!container_) return;
  for (const SWindow* w = container_->GetFocus(); w; w = w->parent_) {
    if (w == this) {
      container_->SetFocus(nullptr);
      return;
    }
  }
}

}  // namespace SOUI
