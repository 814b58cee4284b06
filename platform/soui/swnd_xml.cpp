// SWindow: creation from XML (attributes, children, includes), with the
// limits that keep a hostile layout from exhausting the stack.
#include "soui/swnd.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <strings.h>
#include <string>
#include <vector>

#include "soui/sapp.h"
#include "soui/slog.h"

namespace SOUI {

// ---- XML creation ---------------------------------------------------------------------

namespace {

// The value of an attribute (or inner text), at most max_chars characters;
// the cut is made on a character boundary without widening the rest.
SStringW CappedXmlText(const char* utf8, int max_chars, bool* cut) {
  size_t i = 0;
  int chars = 0;
  for (; utf8[i]; ++i) {
    if ((static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80 && chars++ == max_chars) break;
  }
  *cut = utf8[i] != 0;
  return *cut ? SStringW::FromUtf8(std::string(utf8, i)) : SStringW::FromUtf8(utf8);
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
  if (node) {
    ApplyXmlAttributes(node);
    building_children_ = true;
    CreateChildren(node);
    building_children_ = false;
  }
  NotifyCreate();
  OnInitFinished(node);
  RequestRelayout();
  return TRUE;
}

void SWindow::ApplyXmlAttributes(pugi::xml_node node) {
  // From XML a window starts as wrap x wrap.
  layout_param_.Clear();
  // Style attributes edit one private copy, shared once at the end.
  StyleBatch batch(this);
  // A class is applied before the element's own attributes.
  auto is_class = [](pugi::xml_attribute a) { return strcasecmp(a.name(), "class") == 0; };
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    if (is_class(a)) SetAttribute(L"class", XmlValue(a), TRUE);
  }
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    if (is_class(a)) continue;
    bool cut = false;
    const SStringW value = CappedXmlText(a.value(), kMaxAttrValueLength, &cut);
    if (cut) {
      SLOG(kLogWarn, "SOUI") << XmlName(node) << L" name='" << name_ << L"': attribute " << XmlName(a)
                             << L" longer than " << kMaxAttrValueLength << L" characters; cut";
    }
    const SStringW name = XmlName(a);
    const HRESULT hr = SetAttribute(name, value, TRUE);
    if (FAILED(hr)) ReportRejectedAttribute(node, name, value, hr);
  }
  // Non-blank inner text overrides the text attribute.
  bool cut = false;
  SStringW inner = CappedXmlText(node.text().get(), kMaxWindowTextLength, &cut);
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
  pugi::xml_document doc;
  const std::string utf8 = SStringW(xml).ToUtf8();
  if (const pugi::xml_parse_result parsed = doc.load_buffer(utf8.data(), utf8.size()); !parsed) {
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
  const SStringW tag = XmlName(child);
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
