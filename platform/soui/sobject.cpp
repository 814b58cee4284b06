#include "soui/sobject.h"

#include <cstring>
#include <cwchar>
#include <strings.h>

namespace SOUI {

HRESULT SObject::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  (void)name;
  (void)value;
  (void)loading;
  return E_FAIL;
}

namespace {

// Calls fn(name_begin, value_begin, value_end) for each stored pair until it
// returns true; returns the position where it stopped, or npos.
template <class Fn>
size_t FindStored(const std::string& blob, Fn fn) {
  size_t pos = 0;
  while (pos < blob.size()) {
    const size_t name_end = blob.find('\0', pos);
    const size_t value_end = blob.find('\0', name_end + 1);
    if (fn(pos, name_end, value_end)) return pos;
    pos = value_end + 1;
  }
  return std::string::npos;
}

// Attribute names are ASCII and compared without case.
bool NameMatches(const std::string& blob, size_t begin, size_t end, std::string_view name) {
  return end - begin == name.size() && strncasecmp(blob.data() + begin, name.data(), name.size()) == 0;
}

}  // namespace

SStringW SObject::GetAttribute(const SStringW& name) const {
  const std::string key = name.ToUtf8();
  // The last entry of a name wins: a document may give one twice, and its
  // attributes are stored without looking for an earlier entry.
  SStringW found;
  FindStored(attr_values_, [&](size_t n, size_t ne, size_t ve) {
    if (NameMatches(attr_values_, n, ne, key)) found = SStringW::FromUtf8(attr_values_.substr(ne + 1, ve - ne - 1));
    return false;
  });
  return found;
}

namespace {

// The attribute SetXmlAttribute is applying: its AfterAttribute leaves the
// storing to SetXmlAttribute. Matched by identity, so a handler that sets
// other attributes on the way, or the same name on another object, stores
// those as usual. The toolkit runs on one thread.
struct PendingXmlAttribute {
  const SObject* object = nullptr;
  const SStringW* name = nullptr;
  bool handled = false;
};
PendingXmlAttribute* g_pending = nullptr;

}  // namespace

HRESULT SObject::AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading,
                                HRESULT hr) {
  (void)loading;
  if (SUCCEEDED(hr)) {
    if (g_pending && g_pending->name == &name && g_pending->object == this) g_pending->handled = true;
    else StoreAttribute(name, value);
  }
  return hr;
}

HRESULT SObject::SetXmlAttribute(const SStringW& name, const SStringW& value, std::string_view key,
                                 std::string_view text) {
  PendingXmlAttribute pending{this, &name};
  PendingXmlAttribute* outer = g_pending;
  g_pending = &pending;
  const HRESULT hr = SetAttribute(name, value, TRUE);
  g_pending = outer;
  if (pending.handled) {
    // A value cut to its limit is stored as applied.
    if (static_cast<size_t>(value.GetLength()) < text.size()) {
      StoreAttribute(name, value);
    } else {
      // Appended without a search, each with its terminating NUL: a later
      // entry of the same name wins.
      attr_values_.append(key.data(), key.size()).push_back('\0');
      attr_values_.append(text.data(), text.size()).push_back('\0');
    }
  }
  return hr;
}

void SObject::ReserveAttributeText(size_t bytes) {
  if (attr_values_.empty()) attr_values_.reserve(bytes);
}

void SObject::StoreAttribute(const SStringW& name, const SStringW& value) {
  StoreAttribute(std::string_view(name.ToUtf8()), std::string_view(value.ToUtf8()));
}

void SObject::StoreAttribute(std::string_view key, std::string_view text) {
  // Names and values are stored up to an embedded NUL, which attribute text never holds.
  key = key.substr(0, key.find('\0'));
  const std::string_view stored = text.substr(0, text.find('\0'));
  // The entry GetAttribute answers from: the last of that name.
  size_t at = std::string::npos;
  FindStored(attr_values_, [&](size_t n, size_t ne, size_t) {
    if (NameMatches(attr_values_, n, ne, key)) at = n;
    return false;
  });
  if (at != std::string::npos) {
    const size_t name_end = attr_values_.find('\0', at);
    const size_t value_end = attr_values_.find('\0', name_end + 1);
    attr_values_.replace(name_end + 1, value_end - name_end - 1, stored);
    return;
  }
  attr_values_.append(key).push_back('\0');
  attr_values_.append(stored).push_back('\0');
}

SStringW DescribeXmlError(const pugi::xml_parse_result& result) {
  return SStringW::FromUtf8(result.description()) + L" at offset " +
         SStringW::FromUtf8(std::to_string(static_cast<long long>(result.offset)));
}

BOOL SObject::InitFromXml(pugi::xml_node node) {
  if (!node) return FALSE;
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    SetAttribute(XmlName(a), XmlValue(a), TRUE);
  }
  OnInitFinished(node);
  return TRUE;
}

void SObjectFactory::Register(const wchar_t* tag, Creator creator) {
  if (tag && *tag && creator) creators_[std::wstring(tag)] = std::move(creator);
}

void SObjectFactory::Unregister(const wchar_t* tag) {
  if (!tag) return;
  recent_.Clear();
  creators_.erase(std::wstring(tag));
}

bool SObjectFactory::IsRegistered(const wchar_t* tag) const {
  return tag && creators_.find(std::wstring_view(tag)) != creators_.end();
}

SWindow* SObjectFactory::CreateWindowByName(const wchar_t* tag) const {
  if (!tag) return nullptr;
  for (const Entry* e : recent_.entries) {
    if (e && std::wcscmp(e->first.c_str(), tag) == 0) return e->second();
  }
  auto it = creators_.find(std::wstring_view(tag));
  if (it == creators_.end()) return nullptr;
  recent_.entries[recent_.next] = &*it;
  recent_.next = (recent_.next + 1) % Recent::kSize;
  return it->second();
}

std::vector<SStringW> SObjectFactory::GetClassNames() const {
  std::vector<SStringW> names;
  names.reserve(creators_.size());
  for (const auto& entry : creators_) names.emplace_back(entry.first.c_str());
  return names;
}

pugi::xml_node XmlChildNoCase(pugi::xml_node parent, const wchar_t* name) {
  if (!name) return pugi::xml_node();
  const std::string utf8 = SStringW(name).ToUtf8();
  for (pugi::xml_node c = parent.first_child(); c; c = c.next_sibling()) {
    if (c.type() == pugi::node_element && strcasecmp(c.name(), utf8.c_str()) == 0) return c;
  }
  return pugi::xml_node();
}

pugi::xml_attribute XmlAttrNoCase(pugi::xml_node node, const wchar_t* name) {
  if (!name) return pugi::xml_attribute();
  const std::string utf8 = SStringW(name).ToUtf8();
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    if (strcasecmp(a.name(), utf8.c_str()) == 0) return a;
  }
  return pugi::xml_attribute();
}

bool ParseBool(const SStringW& value) { return !(value == L"0" || value == L"false"); }

}  // namespace SOUI
