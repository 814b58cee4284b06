// SWindow implementation.
//
// Sections: style record · construction and tree · attributes · XML creation ·
// state · layout. Painting is in swnd_paint.cpp, input and events in
// swnd_input.cpp.
#include "soui/swnd.h"

#include <cstring>
#include <map>

#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace SOUI {

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

int StateSlot(const SStringW& name, const wchar_t* base) {
  const SStringW rest = name.Mid(static_cast<int>(std::wcslen(base)));
  if (rest.IsEmpty()) return 0;
  if (rest.CompareNoCase(L"Hover") == 0) return 1;
  if (rest.CompareNoCase(L"Push") == 0) return 2;
  if (rest.CompareNoCase(L"Disable") == 0) return 3;
  return -1;
}

// Attribute names are ASCII; compare without building a substring.
bool StartsWithNoCase(const SStringW& s, const wchar_t* prefix) {
  auto fold = [](wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c; };
  const wchar_t* p = s.c_str();
  for (; *prefix; ++p, ++prefix) {
    if (!*p || fold(*p) != fold(*prefix)) return false;
  }
  return true;
}

}  // namespace

bool SwndStyle::SetAttribute(const SStringW& name, const SStringW& value) {
  if (StartsWithNoCase(name, L"colorText")) {
    const int slot = StateSlot(name, L"colorText");
    return slot >= 0 && colorText[slot].Set(value);
  }
  if (StartsWithNoCase(name, L"font") && name.CompareNoCase(L"fontSize") != 0) {
    const int slot = StateSlot(name, L"font");
    return slot >= 0 && font[slot].Set(value);
  }
  if (name.CompareNoCase(L"colorBkgnd") == 0) return colorBkgnd.Set(value);
  if (name.CompareNoCase(L"colorBorder") == 0) return colorBorder.Set(value);
  if (name.CompareNoCase(L"align") == 0) {
    // Enum values are case-sensitive, as in the toolkit.
    if (value == L"left") align = Left;
    else if (value == L"center") align = Center;
    else if (value == L"right") align = Right;
    else return false;
    return true;
  }
  if (name.CompareNoCase(L"valign") == 0) {
    if (value == L"top") valign = Top;
    else if (value == L"middle") valign = Middle;
    else if (value == L"bottom") valign = Bottom;
    else return false;
    return true;
  }
  if (name.CompareNoCase(L"dotted") == 0) { dotted = ParseBool(value); return true; }
  if (name.CompareNoCase(L"textMode") == 0) {
    int v = 0;
    if (!StrToIntExW(value, STIF_SUPPORT_HEX, &v)) return false;
    textMode = static_cast<UINT>(v);
    return true;
  }
  if (name.CompareNoCase(L"padding") == 0 || name.CompareNoCase(L"inset") == 0) {
    return ParseSizeList(value, padding);
  }
  static const wchar_t* const kSides[4] = {L"padding_left", L"padding_top", L"padding_right",
                                           L"padding_bottom"};
  for (int i = 0; i < 4; ++i) {
    if (name.CompareNoCase(kSides[i]) == 0) { padding[i] = SLayoutSize::Parse(value); return true; }
  }
  if (name.CompareNoCase(L"margin") == 0) return ParseSizeList(value, margin);
  if (name.CompareNoCase(L"margin-x") == 0) { margin[0] = margin[2] = SLayoutSize::Parse(value); return true; }
  if (name.CompareNoCase(L"margin-y") == 0) { margin[1] = margin[3] = SLayoutSize::Parse(value); return true; }
  if (name.CompareNoCase(L"alpha") == 0) {
    int v = 0;
    if (!StrToIntExW(value, STIF_SUPPORT_HEX, &v)) return false;
    alpha = static_cast<BYTE>(std::max(0, std::min(v, 255)));
    return true;
  }
  if (name.CompareNoCase(L"cursor") == 0) { cursor = value; return true; }
  return false;
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

CRect SwndStyle::GetPadding(int scale) const {
  return CRect(padding[0].toPixelSize(scale), padding[1].toPixelSize(scale),
               padding[2].toPixelSize(scale), padding[3].toPixelSize(scale));
}

CRect SwndStyle::GetMargin(int scale) const {
  return CRect(margin[0].toPixelSize(scale), margin[1].toPixelSize(scale),
               margin[2].toPixelSize(scale), margin[3].toPixelSize(scale));
}

COLORREF SwndStyle::GetTextColor(int state) const {
  if (state > 0 && state < 4 && colorText[state].IsSet()) return colorText[state].Get();
  return colorText[0].Get();
}

const ThemedFont& SwndStyle::GetFont(int state) const {
  if (state > 0 && state < 4 && font[state].IsSet()) return font[state];
  return font[0];
}

// ---- construction and tree ------------------------------------------------------

SWindow::SWindow() {
  // A window made in code fills its parent until told otherwise.
  layout_param_.SetMatchParent(Orientation::Horz);
  layout_param_.SetMatchParent(Orientation::Vert);
  events_.Reserve(16);
  events_.addEvent(EVT_CREATE, EventSwndCreate::EventName());
  events_.addEvent(EVT_DESTROY, EventSwndDestroy::EventName());
  events_.addEvent(EVT_SIZE, EventSwndSize::EventName());
  events_.addEvent(EVT_STATECHANGED, EventSwndStateChanged::EventName());
  events_.addEvent(EVT_VISIBLECHANGED, EventSwndVisibleChanged::EventName());
  events_.addEvent(EVT_MOUSE_HOVER, EventSwndMouseHover::EventName());
  events_.addEvent(EVT_MOUSE_LEAVE, EventSwndMouseLeave::EventName());
  events_.addEvent(EVT_LBUTTONDOWN, EventLButtonDown::EventName());
  events_.addEvent(EVT_LBUTTONUP, EventLButtonUp::EventName());
  events_.addEvent(EVT_CMD, EventCmd::EventName());
  events_.addEvent(EVT_CTXMENU, EventCtxMenu::EventName());
  events_.addEvent(EVT_SETFOCUS, EventSetFocus::EventName());
  events_.addEvent(EVT_KILLFOCUS, EventKillFocus::EventName());
  events_.addEvent(EVT_KEYDOWN, EventKeyDown::EventName());
}

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

void SWindow::InsertChild(SWindow* child, SWindow* after) {
  if (!child || child == this || child->parent_) return;
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
  if (child->container_ != container_) child->SetContainer(container_);
  RequestRelayout();
}

BOOL SWindow::RemoveChild(SWindow* child) {
  if (!child || child->parent_ != this) return FALSE;
  if (child->prev_sibling_) child->prev_sibling_->next_sibling_ = child->next_sibling_;
  else first_child_ = child->next_sibling_;
  if (child->next_sibling_) child->next_sibling_->prev_sibling_ = child->prev_sibling_;
  else last_child_ = child->prev_sibling_;
  child->parent_ = child->prev_sibling_ = child->next_sibling_ = nullptr;
  --child_count_;
  if (container_) container_->OnSwndDestroyed(child);  // drop capture/hover/focus on it
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
  QVLOG(QV_LOG_WARN, "SOUI") << L"FindChildByName2 Failed, no window of class " << cls
                                   << L" with name of " << name;
}

void SWindow::SetContainer(ISwndContainer* container) {
  ISwndContainer* old = container_;
  if (old && old != container) old->OnSwndDestroyed(this);
  container_ = container;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->SetContainer(container);
  if (old != container) OnContainerChanged(old);
}

void SWindow::OnContainerChanged(ISwndContainer* old_container) {
  (void)old_container;
  layout_dirty_ = true;
}

// ---- identity and text ---------------------------------------------------------------

SStringW SWindow::GetWindowText(BOOL raw) const { return raw ? text_raw_ : text_; }

void SWindow::SetWindowText(const SStringW& text) {
  text_raw_ = text;
  SApplication* app = SApplication::getSingletonPtr();
  text_ = app ? app->tr(app->GetResProvider().ResolveString(text), SStringW()) : text;
  const SouiLayoutParam* p = &layout_param_;
  if (p->IsWrapContent(Orientation::Horz) || p->IsWrapContent(Orientation::Vert)) RequestRelayout();
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

// The window attributes proper; style and layout attributes are tried after.
HRESULT SWindow::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  struct Entry {
    const wchar_t* name;
    HRESULT (*fn)(SWindow*, const SStringW&, BOOL);
  };
  static const Entry kTable[] = {
      {L"name", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT {
         w->name_ = v;
         if (!w->id_) {
           if (SApplication* app = SApplication::getSingletonPtr())
             w->id_ = app->GetResProvider().GetNamedId(v);
         }
         return S_FALSE;
       }},
      {L"id", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->id_ = ParseId(v); return S_FALSE; }},
      {L"text", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->SetWindowText(v); return S_FALSE; }},
      {L"tip", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT {
         SApplication* app = SApplication::getSingletonPtr();
         w->tip_ = app ? app->GetResProvider().ResolveString(v) : v;
         return S_FALSE;
       }},
      {L"skin", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->skin_.Set(v); return S_OK; }},
      {L"focusSkin", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->focus_skin_.Set(v); return S_OK; }},
      {L"visible", [](SWindow* w, const SStringW& v, BOOL l) -> HRESULT { w->SetVisible(ParseBool(v), !l); return S_FALSE; }},
      {L"show", [](SWindow* w, const SStringW& v, BOOL l) -> HRESULT { w->SetVisible(ParseBool(v), !l); return S_FALSE; }},
      {L"display", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT {
         w->display_ = ParseBool(v);
         if (w->parent_) w->parent_->RequestRelayout();
         return S_FALSE;
       }},
      {L"enable", [](SWindow* w, const SStringW& v, BOOL l) -> HRESULT { w->EnableWindow(ParseBool(v), !l); return S_FALSE; }},
      {L"msgTransparent", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->msg_transparent_ = ParseBool(v); return S_FALSE; }},
      {L"focusable", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->focusable_ = ParseBool(v); return S_FALSE; }},
      {L"float", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT {
         w->float_ = ParseBool(v);
         if (w->parent_) w->parent_->RequestRelayout();
         return S_FALSE;
       }},
      {L"clipClient", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT { w->clip_client_ = ParseBool(v); return S_OK; }},
      {L"maxWidth", [](SWindow* w, const SStringW& v, BOOL) -> HRESULT {
         w->max_width_size_ = SLayoutSize::Parse(v);
         w->has_max_width_ = true;
         w->RequestRelayout();
         return S_FALSE;
       }},
      {L"data", [](SWindow*, const SStringW&, BOOL) -> HRESULT { return S_FALSE; }},
      {L"trCtx", [](SWindow*, const SStringW&, BOOL) -> HRESULT { return S_FALSE; }},
      {L"class", [](SWindow* w, const SStringW& v, BOOL l) -> HRESULT {
         SApplication* app = SApplication::getSingletonPtr();
         pugi::xml_node cls = app ? app->GetResProvider().GetClass(v) : pugi::xml_node();
         for (pugi::xml_attribute a = cls.first_attribute(); a; a = a.next_attribute()) {
           const SStringW n = XmlName(a);
           // A nested class and the class's own name are not window attributes.
           if (n.CompareNoCase(L"class") != 0 && n.CompareNoCase(L"name") != 0) w->SetAttribute(n, XmlValue(a), l);
         }
         return S_OK;
       }},
  };
  static const std::map<SStringW, AttrHandler, SStringNoCaseLess> kHandlers = [] {
    std::map<SStringW, AttrHandler, SStringNoCaseLess> m;
    for (const Entry& e : kTable) m[e.name] = e.fn;
    return m;
  }();

  auto it = kHandlers.find(name);
  if (it != kHandlers.end()) return AfterAttribute(name, value, loading, it->second(this, value, loading));

  if (style_.SetAttribute(name, value)) {
    const bool affects_layout = StartsWithNoCase(name, L"padding") || StartsWithNoCase(name, L"margin") ||
                                name.CompareNoCase(L"inset") == 0 || StartsWithNoCase(name, L"font");
    if (affects_layout) RequestRelayout();
    return AfterAttribute(name, value, loading, S_OK);
  }
  if (layout_param_.SetAttribute(name, value)) {
    RequestRelayout();
    return AfterAttribute(name, value, loading, S_FALSE);
  }
  return E_FAIL;
}

HRESULT SWindow::AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading, HRESULT hr) {
  if (hr == S_OK && !loading) Invalidate();
  return SObject::AfterAttribute(name, value, loading, hr);
}

void SWindow::SetAttributeRecursive(const SStringW& name, const SStringW& value) {
  SetAttribute(name, value, FALSE);
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->SetAttributeRecursive(name, value);
}

// ---- XML creation ---------------------------------------------------------------------

BOOL SWindow::InitFromXml(pugi::xml_node node) {
  if (node) {
    // From XML a window starts as wrap x wrap.
    layout_param_.Clear();
    // A class is applied before the element's own attributes.
    if (pugi::xml_attribute cls = XmlAttrNoCase(node, L"class")) SetAttribute(L"class", XmlValue(cls), TRUE);
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
      const SStringW n = XmlName(a);
      if (n.CompareNoCase(L"class") == 0) continue;
      SetAttribute(n, XmlValue(a), TRUE);
    }
    // Non-blank inner text overrides the text attribute.
    SStringW inner = SStringW::FromUtf8(node.text().get());
    SStringW trimmed(inner);
    if (!trimmed.Trim().IsEmpty()) {
      inner.Replace(L"\\n", L"\n");
      SetWindowText(trimmed);
    }
    CreateChildren(node);
  }
  NotifyCreate();
  OnInitFinished(node);
  RequestRelayout();
  return TRUE;
}

void SWindow::NotifyCreate() {
  if (created_) return;
  created_ = true;
  OnCreate();
  EventSwndCreate evt(this);
  FireEvent(evt);
}

BOOL SWindow::CreateChildren(pugi::xml_node node) {
  for (pugi::xml_node c = node.first_child(); c; c = c.next_sibling()) {
    if (c.type() != pugi::node_element) continue;
    CreateChildFromXml(c);
  }
  return TRUE;
}

BOOL SWindow::CreateChildren(const wchar_t* xml) {
  if (!xml) return FALSE;
  pugi::xml_document doc;
  const std::string utf8 = SStringW(xml).ToUtf8();
  if (!doc.load_buffer(utf8.data(), utf8.size())) {
    QVLOG(QV_LOG_ERROR, "SOUI") << L"CreateChildren: malformed XML";
    return FALSE;
  }
  return CreateChildren(doc);
}

SWindow* SWindow::CreateChildFromXml(pugi::xml_node child) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app) return nullptr;
  const SStringW tag = XmlName(child);
  if (tag.CompareNoCase(L"include") == 0) {
    pugi::xml_document doc;
    const SStringW src = XmlValue(XmlAttrNoCase(child, L"src"));
    if (!app->LoadXmlDocment(doc, src)) {
      QVLOG(QV_LOG_WARN, "SOUI") << L"include: no layout resource " << src;
      return nullptr;
    }
    pugi::xml_node root = doc.document_element();
    if (!root) return nullptr;
    // The include's own attributes (except src) override the included root's.
    for (pugi::xml_attribute a = child.first_attribute(); a; a = a.next_attribute()) {
      if (SStringW::FromUtf8(a.name()).CompareNoCase(L"src") == 0) continue;
      pugi::xml_attribute dst = root.attribute(a.name());
      if (!dst) dst = root.append_attribute(a.name());
      dst.set_value(a.value());
    }
    if (XmlName(root).CompareNoCase(L"include") == 0) {
      CreateChildren(root);
      return nullptr;
    }
    return CreateChildFromXml(root);
  }
  // "button.ok" creates a button styled with class "button.ok".
  SStringW cls_tag = tag;
  SStringW cls;
  const int dot = tag.Find(L'.');
  if (dot > 0) {
    cls_tag = tag.Left(dot);
    cls = tag;
  }
  SWindow* wnd = app->CreateWindowByName(cls_tag);
  if (!wnd) {
    QVLOG(QV_LOG_WARN, "SOUI") << L"CreateChildren: unknown window class " << tag;
    return nullptr;
  }
  InsertChild(wnd);
  if (!cls.IsEmpty()) wnd->SetAttribute(L"class", cls, TRUE);
  wnd->InitFromXml(child);
  return wnd;
}

// ---- state ----------------------------------------------------------------------------

DWORD SWindow::ModifyState(DWORD add, DWORD remove, BOOL update) {
  const DWORD old = state_;
  state_ = (state_ & ~remove) | add;
  if (state_ != old) {
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
  for (const SWindow* w = this; w; w = check_parent ? w->parent_ : nullptr) {
    if (w->state_ & WndState_Invisible) return FALSE;
  }
  return TRUE;
}

void SWindow::SetVisible(BOOL visible, BOOL update) {
  if (IsVisible(FALSE) == !!visible) return;
  if (update) Invalidate();  // the old area
  ModifyState(visible ? 0 : WndState_Invisible, visible ? WndState_Invisible : 0, FALSE);
  OnShowWindow(visible, 0);
  EventSwndVisibleChanged evt(this);
  FireEvent(evt);
  if (parent_) parent_->RequestRelayout();
  RequestRelayout();
  if (update) Invalidate();
}

BOOL SWindow::IsDisabled(BOOL check_parent) const {
  for (const SWindow* w = this; w; w = check_parent ? w->parent_ : nullptr) {
    if (w->state_ & WndState_Disable) return TRUE;
  }
  return FALSE;
}

void SWindow::EnableWindow(BOOL enable, BOOL update) {
  if (!IsDisabled(FALSE) == !!enable) return;
  ModifyState(enable ? 0 : WndState_Disable, enable ? WndState_Disable : 0, update);
  OnEnable(enable);
}

void SWindow::SetCheck(BOOL checked) {
  ModifyState(checked ? WndState_Check : 0, checked ? 0 : WndState_Check, TRUE);
}

void SWindow::SetFocus() {
  if (container_) container_->SetFocus(this);
}

BOOL SWindow::IsFocused() const { return container_ && container_->GetFocus() == this; }

// ---- layout -----------------------------------------------------------------------

int SWindow::GetScale() const {
  if (container_) return container_->GetScale();
  SApplication* app = SApplication::getSingletonPtr();
  return app ? app->GetZoom() : 100;
}

CRect SWindow::GetClientRect() const {
  CRect rc = rect_;
  rc.DeflateRect(style_.GetMargin(GetScale()));
  return rc;
}

CRect SWindow::GetChildrenLayoutRect() const {
  CRect rc = GetClientRect();
  rc.DeflateRect(style_.GetPadding(GetScale()));
  return rc;
}

void SWindow::Move(LPCRECT rc) {
  if (!rc) {
    float_ = FALSE;
    if (parent_) parent_->RequestRelayout();
    return;
  }
  float_ = TRUE;
  OnRelayout(CRect(*rc));
}

void SWindow::Move(int x, int y, int cx, int cy) {
  if (cx < 0) cx = rect_.Width();
  if (cy < 0) cy = rect_.Height();
  const CRect rc(x, y, x + cx, y + cy);
  Move(&rc);
}

CSize SWindow::GetDesiredSize(LPCRECT rc_container) {
  const CRect rc(rc_container);
  return GetDesiredSize(rc.Width(), rc.Height());
}

CSize SWindow::GetDesiredSize(int width, int height) {
  const int scale = GetScale();
  CSize size(-1, -1);
  const Orientation axes[2] = {Orientation::Horz, Orientation::Vert};
  const int avail[2] = {width, height};
  int* out[2] = {&size.cx, &size.cy};
  for (int i = 0; i < 2; ++i) {
    if (layout_param_.IsSpecifiedSize(axes[i])) *out[i] = layout_param_.GetSpecifiedSize(axes[i]).toPixelSize(scale);
    else if (layout_param_.IsMatchParent(axes[i]) && avail[i] >= 0) *out[i] = avail[i];
  }
  if (size.cx >= 0 && size.cy >= 0) return size;

  const CRect margin = style_.GetMargin(scale);
  const CRect padding = style_.GetPadding(scale);
  const int extra_w = margin.left + margin.right + padding.left + padding.right;
  const int extra_h = margin.top + margin.bottom + padding.top + padding.bottom;
  int text_width = size.cx >= 0 ? size.cx - extra_w : -1;
  if (text_width < 0 && has_max_width_) text_width = max_width_size_.toPixelSize(scale) - extra_w;
  const CSize text = MeasureContent(text_width);
  const CSize children = SouiLayout::MeasureChildren(
      this, size.cx >= 0 ? size.cx - extra_w : -1, size.cy >= 0 ? size.cy - extra_h : -1);
  if (size.cx < 0) size.cx = std::max(text.cx, children.cx) + extra_w;
  if (size.cy < 0) size.cy = std::max(text.cy, children.cy) + extra_h;
  return size;
}

CSize SWindow::MeasureContent(int width) {
  const SStringW text = GetWindowText();
  if (text.IsEmpty()) return CSize();
  UINT fmt = GetTextAlign();
  if (width >= 0 && !(fmt & DT_SINGLELINE)) fmt |= DT_WORDBREAK;
  return MeasureTextExtent(text, width, fmt);
}

CSize SWindow::MeasureTextExtent(const SStringW& text, int max_width, UINT format) const {
  SApplication* app = SApplication::getSingletonPtr();
  IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
  if (!rt) return CSize();
  IFontPtr font = GetPaintFont(rt);
  IFontPtr old = rt->SelectFont(font);
  CRect rc(0, 0, max_width >= 0 ? max_width : 100000, 100000);
  rt->DrawText(text, text.GetLength(), &rc, format | DT_CALCRECT);
  rt->SelectFont(old);
  return CSize(rc.Width(), rc.Height());
}

void SWindow::MarkLayoutDirtyUpwards() {
  layout_dirty_ = true;
  // A content-sized ancestor changes size with us, so its parent must re-lay too.
  SWindow* w = this;
  while (w->parent_) {
    w->parent_->layout_dirty_ = true;
    const SouiLayoutParam* p = w->GetLayoutParam();
    if (w->float_ || !(p->IsWrapContent(Orientation::Horz) || p->IsWrapContent(Orientation::Vert))) break;
    w = w->parent_;
  }
}

void SWindow::RequestRelayout() {
  MarkLayoutDirtyUpwards();
  if (container_) container_->OnRelayoutRequested();
}

void SWindow::UpdateLayout() {
  if (layout_dirty_) {
    layout_dirty_ = false;
    UpdateChildrenPosition();
  }
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->UpdateLayout();
}

void SWindow::UpdateChildrenPosition() { SouiLayout::LayoutChildren(this); }

void SWindow::OnRelayout(const CRect& rc) {
  if (rc == rect_) return;
  const bool resized = rc.Width() != rect_.Width() || rc.Height() != rect_.Height();
  Invalidate();
  // Children are in host coordinates: a move shifts them along.
  const int dx = rc.left - rect_.left, dy = rc.top - rect_.top;
  if (dx || dy) {
    std::function<void(SWindow*)> shift = [&](SWindow* w) {
      for (SWindow* c = w->first_child_; c; c = c->next_sibling_) {
        c->rect_.OffsetRect(dx, dy);
        shift(c);
      }
    };
    shift(this);
  }
  rect_ = rc;
  layout_dirty_ = true;
  if (resized) {
    OnSize(0, CSize(rc.Width(), rc.Height()));
    EventSwndSize evt(this);
    evt.szWnd = CSize(rc.Width(), rc.Height());
    FireEvent(evt);
  }
  Invalidate();
}

SWindow* SWindow::GetNextLayoutChild(const SWindow* cur) const {
  SWindow* w = cur ? cur->next_sibling_ : first_child_;
  while (w && (w->float_ || (!w->IsVisible(FALSE) && !w->display_))) w = w->next_sibling_;
  return w;
}

SWindow* SWindow::GetPrevLayoutChild(const SWindow* cur) const {
  SWindow* w = cur ? cur->prev_sibling_ : last_child_;
  while (w && (w->float_ || (!w->IsVisible(FALSE) && !w->display_))) w = w->prev_sibling_;
  return w;
}

SWindow* SWindow::SwndFromPoint(CPoint pt, BOOL include_msg_transparent) {
  if (!rect_.PtInRect(pt) || !IsVisible(FALSE)) return nullptr;
  for (SWindow* c = last_child_; c; c = c->prev_sibling_) {
    if (!c->IsVisible(FALSE)) continue;
    if (c->msg_transparent_ && !include_msg_transparent) continue;
    if (SWindow* hit = c->SwndFromPoint(pt, include_msg_transparent)) return hit;
  }
  return this;
}

void SWindow::OnScaleChanged(int scale) {
  (void)scale;
  layout_dirty_ = true;
  for (SWindow* c = first_child_; c; c = c->next_sibling_) c->OnScaleChanged(scale);
}

}  // namespace SOUI
