// SWindow: creation from XML (attributes, children, includes), with the
// limits that keep a hostile layout from exhausting the stack.
#include "soui/swnd.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <deque>
#include <strings.h>
#include <string>
#include <vector>

#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {

// ---- XML creation ---------------------------------------------------------------------

namespace {

// The value of an attribute (or inner text), at most max_chars characters,
// into *out; the cut is made on a character boundary.
void CappedXmlText(const char* utf8, int max_chars, bool* cut, SStringW* out) {
  // No more bytes than the limit: no more characters either.
  size_t i = std::strlen(utf8);
  if (i <= static_cast<size_t>(max_chars)) {
    *cut = false;
    out->AssignUtf8(utf8, i);
    return;
  }
  i = 0;
  int chars = 0;
  for (; utf8[i]; ++i) {
    if ((static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80 && chars++ == max_chars) break;
  }
  *cut = utf8[i] != 0;
  out->AssignUtf8(utf8, i);
}

// The string each nesting level of ApplyXmlAttributes reads values into, so
// that most values cost no allocation; a handler that builds windows from
// XML in turn gets a level of its own.
class ValueBuffer {
 public:
  ValueBuffer() : level_(Depth()++) {
    if (Levels().size() <= static_cast<size_t>(level_)) Levels().emplace_back();
  }
  ~ValueBuffer() {
    --Depth();
    // A huge value does not keep its memory.
    if (get().str().capacity() > 1024) get() = SStringW();
  }
  ValueBuffer(const ValueBuffer&) = delete;
  ValueBuffer& operator=(const ValueBuffer&) = delete;
  SStringW& get() { return Levels()[static_cast<size_t>(level_)]; }

 private:
  static int& Depth() {
    static int depth = 0;
    return depth;
  }
  static std::deque<SStringW>& Levels() {
    static std::deque<SStringW> levels;  // a deque: growing keeps the outer levels in place
    return levels;
  }
  const int level_;
};

// Attribute names and tags repeat throughout a layout: each spelling is
// widened once and kept, found again by a hash taken while its length is
// measured. A hostile document cannot grow the table past its cap; later
// spellings are widened into *spare instead.
const SStringW& WideName(const char* utf8, SStringW* spare) {
  constexpr size_t kMaxNames = 512, kMaxNameBytes = 32, kSlots = 1024;  // slots: a power of two
  struct Entry {
    std::string utf8;
    SStringW wide;
  };
  static std::vector<Entry> entries;            // never reallocated: references stay valid
  static std::vector<uint16_t> slots(kSlots);  // index + 1 into entries, 0 when free
  uint32_t h = 2166136261u;  // FNV-1a
  size_t len = 0;
  for (; utf8[len]; ++len) h = (h ^ static_cast<unsigned char>(utf8[len])) * 16777619u;
  if (len > kMaxNameBytes) return *spare = SStringW::FromUtf8(utf8);
  size_t i = h & (kSlots - 1);
  for (; slots[i]; i = (i + 1) & (kSlots - 1)) {
    const Entry& e = entries[slots[i] - 1u];
    if (e.utf8.size() == len && std::memcmp(e.utf8.data(), utf8, len) == 0) return e.wide;
  }
  if (entries.size() >= kMaxNames) return *spare = SStringW::FromUtf8(utf8);
  if (entries.empty()) entries.reserve(kMaxNames);
  entries.push_back(Entry{std::string(utf8, len), SStringW::FromUtf8(utf8)});
  slots[i] = static_cast<uint16_t>(entries.size());
  return entries.back().wide;
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
  // A class is applied before the element's own attributes. The first pass
  // also sizes the stored text once.
  auto is_class = [](const char* n) { return (n[0] | 0x20) == 'c' && strcasecmp(n, "class") == 0; };
  size_t bytes = 0;
  bool has_class = false;
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    const char* n = a.name();
    has_class = has_class || is_class(n);
    bytes += std::strlen(n) + std::min(std::strlen(a.value()), static_cast<size_t>(kMaxAttrValueLength)) + 2;
  }
  ReserveAttributeText(bytes);
  for (pugi::xml_attribute a = node.first_attribute(); has_class && a; a = a.next_attribute()) {
    if (is_class(a.name())) SetAttribute(L"class", XmlValue(a), TRUE);
  }
  ValueBuffer buffer;
  SStringW& value = buffer.get();
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    if (has_class && is_class(a.name())) continue;
    bool cut = false;
    CappedXmlText(a.value(), kMaxAttrValueLength, &cut, &value);
    if (cut) {
      SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': attribute " << XmlName(a)
                             << L" longer than " << kMaxAttrValueLength << L" characters; cut";
    }
    SStringW spare;
    const SStringW& name = WideName(a.name(), &spare);
    const HRESULT hr = SetXmlAttribute(name, value, a);
    if (FAILED(hr)) ReportRejectedAttribute(node, name, value, hr);
  }
  // Non-blank inner text overrides the text attribute.
  bool cut = false;
  SStringW inner;
  CappedXmlText(node.text().get(), kMaxWindowTextLength, &cut, &inner);
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
  if (strcasecmp(child.name(), "include") == 0) return CreateIncludeFromXml(child);
  if (depth_ + 1 > kMaxTreeDepth) {
    ReportTooDeep(child);
    return nullptr;
  }
  SWindow* wnd = CreateWindowFromXml(child);
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

SWindow* SWindow::CreateWindowFromXml(pugi::xml_node child) {
  SApplication* app = SApplication::getSingletonPtr();
  SStringW spare;
  const SStringW& tag = WideName(child.name(), &spare);
  // "button.ok" creates a button styled with class "button.ok".
  const int dot = tag.Find(L'.');
  SWindow* wnd = dot > 0 ? app->CreateWindowByName(tag.Left(dot)) : app->CreateWindowByName(tag);
  if (!wnd) {
    SLOG(kLogWarn, "SOUI") << L"CreateChildren: unknown window class " << tag;
    return nullptr;
  }
  InsertChild(wnd);
  if (dot > 0) wnd->SetAttribute(L"class", tag, TRUE);
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
