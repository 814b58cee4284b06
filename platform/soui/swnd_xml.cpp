// SWindow: creation from XML (attributes, children, includes), with the
// limits that keep a hostile layout from exhausting the stack.
#include "soui/swnd.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <deque>
#include <strings.h>
#include <string>
#include <string_view>
#include <vector>

#include "soui/attr_names.h"
#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {

// ---- XML creation ---------------------------------------------------------------------

namespace {

// The value of an attribute (or inner text) of len bytes, at most max_chars
// characters, into *out; the cut is made on a character boundary.
void CappedXmlText(const char* utf8, size_t len, int max_chars, bool* cut, SStringW* out) {
  // No more bytes than the limit: no more characters either.
  size_t i = len;
  if (i > static_cast<size_t>(max_chars)) {
    i = 0;
    int chars = 0;
    for (; i < len; ++i) {
      if ((static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80 && chars++ == max_chars) break;
    }
  }
  *cut = i < len;
  out->AssignUtf8(utf8, i);
}

// What each nesting level of ApplyXmlAttributes reads an element into, kept
// so that most elements cost no allocation; a handler that builds windows
// from XML in turn gets a level of its own.
struct XmlReadLevel {
  struct Attr {
    const SStringW* name;  // kept by InternName; null for a name it did not keep
    const char* key;       // the document's name and value, and their lengths in bytes
    const char* text;
    size_t key_len;
    size_t text_len;
  };
  std::vector<Attr> attrs;  // the element's attributes, in document order
  SStringW value;           // the one being applied
};

class XmlReadScope {
 public:
  XmlReadScope() : level_(Depth()++) {
    if (Levels().size() <= static_cast<size_t>(level_)) Levels().emplace_back();
    get().attrs.clear();
  }
  ~XmlReadScope() {
    --Depth();
    // A huge element does not keep its memory.
    XmlReadLevel& l = get();
    if (l.value.str().capacity() > 1024) l.value = SStringW();
    if (l.attrs.capacity() > 64) l.attrs = std::vector<XmlReadLevel::Attr>();
  }
  XmlReadScope(const XmlReadScope&) = delete;
  XmlReadScope& operator=(const XmlReadScope&) = delete;
  XmlReadLevel& get() { return Levels()[static_cast<size_t>(level_)]; }

 private:
  static int& Depth() {
    static int depth = 0;
    return depth;
  }
  static std::deque<XmlReadLevel>& Levels() {
    static std::deque<XmlReadLevel> levels;  // a deque: growing keeps the outer levels in place
    return levels;
  }
  const int level_;
};

// Whether name is lower (lower case ASCII) in any ASCII case, as strcasecmp
// reads it: the class pass below finds "class" with strcasecmp, and both
// must agree.
bool EqualsAsciiNoCase(const SStringW& name, const wchar_t* lower) {
  const size_t n = std::wcslen(lower);
  if (static_cast<size_t>(name.GetLength()) != n) return false;
  for (size_t i = 0; i < n; ++i) {
    const wchar_t c = name[static_cast<int>(i)];
    if ((c >= L'A' && c <= L'Z' ? c + 32 : c) != lower[i]) return false;
  }
  return true;
}

bool IsClassName(const SStringW& name) {
  static NameMemo memo;
  return memo.Get(name, [](const SStringW& n) { return EqualsAsciiNoCase(n, L"class") ? 1 : 0; }) != 0;
}

// What an element's tag asks for, worked out once per spelling.
enum class TagKind : uint8_t {
  Window,   // a window class
  Styled,   // "button.ok": a window class with the class style of the whole tag
  Include,  // another layout in its place
};

TagKind KindOfTag(const SStringW& tag) {
  static NameMemo memo;
  return static_cast<TagKind>(memo.Get(tag, [](const SStringW& t) {
    if (EqualsAsciiNoCase(t, L"include")) return static_cast<int>(TagKind::Include);
    return static_cast<int>(t.Find(L'.') > 0 ? TagKind::Styled : TagKind::Window);
  }));
}

// What the XML build in progress has open: how deeply includes nest and
// which are being expanded, so that a cycle is caught at its first repeat.
struct XmlBuildState {
  int active = 0;               // CreateChildFromXml frames on the stack
  bool depth_reported = false;  // one line per build for windows cut off
  std::vector<SStringW> includes;
};

XmlBuildState& BuildState() {
  static XmlBuildState state;
  return state;
}

class BuildScope {
 public:
  BuildScope() { ++BuildState().active; }
  ~BuildScope() {
    XmlBuildState& s = BuildState();
    if (--s.active == 0) s.depth_reported = false;
  }
  BuildScope(const BuildScope&) = delete;
  BuildScope& operator=(const BuildScope&) = delete;
};

// "TYPE:name" in one spelling, so that "self" and "layout:self" are one include.
SStringW IncludeKey(const SStringW& src) {
  const int colon = src.Find(L':');
  SStringW type = colon < 0 ? SStringW(L"LAYOUT") : src.Left(colon);
  SStringW name = colon < 0 ? src : src.Mid(colon + 1);
  type.MakeLower();
  name.MakeLower();
  return type + L":" + name;
}

}  // namespace

BOOL SWindow::InitFromXml(pugi::xml_node node) {
  // Kept lean: it recurses through CreateChildren once per nesting level.
  // The windows of one document keep their attribute text in shared blocks.
  const SharedAttrTextScope shared_text;
  {
    // One style copy for the attributes and what OnCreate derives from them.
    StyleBatch batch(this);
    if (node) {
      ApplyXmlAttributes(node);
      building_children_ = true;
      CreateChildren(node);
      building_children_ = false;
    }
    NotifyCreate();
  }
  OnInitFinished(node);
  RequestRelayout();
  return TRUE;
}

void SWindow::ApplyXmlAttributes(pugi::xml_node node) {
  // From XML a window starts as wrap x wrap.
  layout_param_.Clear();
  // Style attributes edit one private copy, shared once at the end.
  StyleBatch batch(this);
  // The first pass finds a class, which is applied before the element's own
  // attributes, and sizes the stored text once.
  XmlReadScope scope;
  XmlReadLevel& read = scope.get();
  static RecentNames recent;  // elements of a layout repeat their attributes in order
  size_t bytes = 0;
  bool has_class = false;
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    SStringW spare;
    XmlReadLevel::Attr at{nullptr, a.name(), a.value(), 0, 0};
    const SStringW& name = recent.Intern(read.attrs.size(), at.key, &spare, &at.key_len);
    if (InternedSlot(name) >= 0) at.name = &name;
    at.text_len = std::strlen(at.text);
    read.attrs.push_back(at);
    has_class = has_class || IsClassName(name);
    bytes += at.key_len + std::min(at.text_len, static_cast<size_t>(kMaxAttrValueLength)) + 2;
  }
  ReserveAttributeText(bytes);
  if (has_class) {
    for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
      if (strcasecmp(a.name(), "class") == 0) SetAttribute(L"class", XmlValue(a), TRUE);
    }
  }
  // The document's text stays in place while its attributes are applied.
  SStringW& value = read.value;
  for (const XmlReadLevel::Attr& at : read.attrs) {
    SStringW spare;
    const SStringW& name = at.name ? *at.name : InternName(at.key, &spare);
    if (has_class && IsClassName(name)) continue;
    bool cut = false;
    CappedXmlText(at.text, at.text_len, kMaxAttrValueLength, &cut, &value);
    if (cut) {
      SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': attribute " << name
                             << L" longer than " << kMaxAttrValueLength << L" characters; cut";
    }
    const HRESULT hr = SetXmlAttribute(name, value, std::string_view(at.key, at.key_len),
                                       std::string_view(at.text, at.text_len));
    if (FAILED(hr)) ReportRejectedAttribute(node, name, value, hr);
  }
  // Non-blank inner text overrides the text attribute.
  const char* inner_text = node.text().get();
  if (!*inner_text) return;
  bool cut = false;
  SStringW inner;
  CappedXmlText(inner_text, std::strlen(inner_text), kMaxWindowTextLength, &cut, &inner);
  if (cut) {
    SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': inner text longer than "
                           << kMaxWindowTextLength << L" characters; cut";
  }
  SStringW trimmed(inner);
  if (!trimmed.Trim().IsEmpty()) {
    inner.Replace(L"\\n", L"\n");
    SetWindowText(trimmed);
  }
}

void SWindow::ReportRejectedAttribute(pugi::xml_node node, const SStringW& name, const SStringW& value,
                                      HRESULT hr) {
  SApplication* app = SApplication::getSingletonPtr();
  const SStringW place = XmlName(node) + L"|" + name_ + L"|" + name;
  if (app && !app->FirstTimeAt(place.str())) return;
  if (hr == E_NOTIMPL) {
    SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': unknown attribute " << name << L"=\""
                           << value << L"\"; ignored";
  } else {
    SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': " << name << L"=\"" << value
                           << L"\" is malformed or out of range; ignored";
  }
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
  std::string utf8;
  pugi::xml_document doc;
  if (const pugi::xml_parse_result parsed = LoadWideXml(xml, &utf8, &doc); !parsed) {
    SLOG(kLogError, "SOUI") << L"CreateChildren: malformed XML: " << DescribeXmlError(parsed);
    return FALSE;
  }
  return CreateChildren(doc);
}

SWindow* SWindow::CreateChildFromXml(pugi::xml_node child) {
  // This frame is on the stack once per nesting level: the work is done in
  // helpers that return before the recursion goes on.
  if (!SApplication::getSingletonPtr()) return nullptr;
  BuildScope scope;
  bool include = false;
  SWindow* wnd = CreateWindowFromXml(child, &include);
  if (include) return CreateIncludeFromXml(child);
  if (wnd) wnd->InitFromXml(child);
  return wnd;
}

void SWindow::ReportTooDeep(pugi::xml_node child) {
  XmlBuildState& build = BuildState();
  if (build.depth_reported) return;
  build.depth_reported = true;
  SLOG(kLogError, "SOUI") << L"layout nested deeper than " << kMaxTreeDepth << L" levels: <" << XmlName(child)
                          << L"> and everything inside it not created";
}

SWindow* SWindow::CreateWindowFromXml(pugi::xml_node child, bool* include) {
  static RecentNames recent;
  SStringW spare;
  const SStringW& tag = recent.Intern(0, child.name(), &spare, nullptr);
  const TagKind kind = KindOfTag(tag);
  if (kind == TagKind::Include) {
    *include = true;
    return nullptr;
  }
  if (depth_ + 1 > kMaxTreeDepth) {
    ReportTooDeep(child);
    return nullptr;
  }
  // "button.ok" creates a button styled with class "button.ok".
  SApplication* app = SApplication::getSingletonPtr();
  SWindow* wnd = kind == TagKind::Styled ? app->CreateWindowByName(tag.Left(tag.Find(L'.')))
                                         : app->CreateWindowByName(tag);
  if (!wnd) {
    SLOG(kLogWarn, "SOUI") << L"CreateChildren: unknown window class " << tag;
    return nullptr;
  }
  InsertChild(wnd);
  if (kind == TagKind::Styled) wnd->SetAttribute(L"class", tag, TRUE);
  return wnd;
}

SWindow* SWindow::CreateIncludeFromXml(pugi::xml_node child) {
  SApplication* app = SApplication::getSingletonPtr();
  XmlBuildState& build = BuildState();
  pugi::xml_document doc;
  const SStringW src = XmlValue(XmlAttrNoCase(child, L"src"));
  const SStringW key = IncludeKey(src);
  if (std::find(build.includes.begin(), build.includes.end(), key) != build.includes.end()) {
    SStringW chain;
    for (const SStringW& k : build.includes) chain += k + L" -> ";
    SLOG(kLogError, "SOUI") << L"include: cycle " << chain << key << L"; not expanded again";
    return nullptr;
  }
  if (static_cast<int>(build.includes.size()) >= kMaxIncludeDepth) {
    SLOG(kLogError, "SOUI") << L"include: " << src << L" nested deeper than " << kMaxIncludeDepth
                            << L" includes; not expanded";
    return nullptr;
  }
  if (!app->LoadXmlDocment(doc, src)) {
    SLOG(kLogWarn, "SOUI") << L"include: no layout resource " << src;
    return nullptr;
  }
  pugi::xml_node root = doc.document_element();
  if (!root) return nullptr;
  // The include's own attributes (except src) override the included root's.
  for (pugi::xml_attribute a = child.first_attribute(); a; a = a.next_attribute()) {
    if (strcasecmp(a.name(), "src") == 0) continue;
    pugi::xml_attribute dst = root.attribute(a.name());
    if (!dst) dst = root.append_attribute(a.name());
    dst.set_value(a.value());
  }
  build.includes.push_back(key);
  SWindow* made = nullptr;
  if (strcasecmp(root.name(), "include") == 0) CreateChildren(root);
  else made = CreateChildFromXml(root);
  build.includes.pop_back();
  return made;
}

}  // namespace SOUI
