#include "soui/sobject.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <new>
#include <strings.h>
#include <utility>

namespace SOUI {

HRESULT SObject::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  (void)name;
  (void)value;
  (void)loading;
  return E_FAIL;
}

namespace {

// Calls fn(name_begin, name_end, value_end) for each stored pair of blob.
template <class Fn>
void ForEachStored(std::string_view blob, Fn fn) {
  size_t pos = 0;
  while (pos < blob.size()) {
    const size_t name_end = blob.find('\0', pos);
    const size_t value_end = blob.find('\0', name_end + 1);
    fn(pos, name_end, value_end);
    pos = value_end + 1;
  }
}

// Attribute names are ASCII and compared without case.
bool NameMatches(std::string_view blob, size_t begin, size_t end, std::string_view name) {
  return end - begin == name.size() && strncasecmp(blob.data() + begin, name.data(), name.size()) == 0;
}

// A block of attribute text shared by the objects of one load (and the
// scope while it writes into it); freed with the last of them.
struct TextBlock {
  uint32_t refs;
  char* text() { return reinterpret_cast<char*>(this + 1); }
};

TextBlock* NewTextBlock(size_t size) { return new (::operator new(sizeof(TextBlock) + size)) TextBlock{1}; }

// The block holding an object's text, which starts offset bytes into it.
TextBlock* BlockOf(char* text, size_t offset) { return reinterpret_cast<TextBlock*>(text - offset) - 1; }

void ReleaseTextBlock(TextBlock* block) {
  if (block && --block->refs == 0) ::operator delete(block);
}

// The blocks of the SharedAttrTextScope in force: each new block twice the
// last, so that a load of one window takes little and one of a thousand few.
struct AttrTextBlocks {
  static constexpr size_t kFirst = 512, kLargest = 16 * 1024;  // offsets fit 16 bits
  int scopes = 0;
  TextBlock* block = nullptr;
  size_t used = 0, size = 0, next_size = kFirst;
};

AttrTextBlocks& Blocks() {
  static AttrTextBlocks blocks;
  return blocks;
}

// Room for n bytes in the current block, counted as one more user of it, or
// null (no scope, or text too large to share a block).
char* TakeSharedText(size_t n) {
  AttrTextBlocks& b = Blocks();
  if (b.scopes == 0 || n == 0 || n > AttrTextBlocks::kLargest / 4) return nullptr;
  if (b.size - b.used < n) {
    ReleaseTextBlock(b.block);
    // A text larger than the next step gets a block of its size.
    b.size = std::max(b.next_size, n);
    b.next_size = std::min(b.next_size * 2, AttrTextBlocks::kLargest);
    b.block = NewTextBlock(b.size);
    b.used = 0;
  }
  char* at = b.block->text() + b.used;
  b.used += n;
  ++b.block->refs;
  return at;
}

}  // namespace

SharedAttrTextScope::SharedAttrTextScope() { ++Blocks().scopes; }

SharedAttrTextScope::~SharedAttrTextScope() {
  AttrTextBlocks& b = Blocks();
  // The last block is left to the objects using it; the next load starts small.
  if (--b.scopes > 0) return;
  ReleaseTextBlock(b.block);
  b = AttrTextBlocks();
}

std::string& SObject::OwnTextForWriting() {
  if (!attr_values_) attr_values_ = std::make_unique<std::string>();
  return *attr_values_;
}

SObject::SObject(const SObject& other)
    : attr_values_(other.attr_values_ ? std::make_unique<std::string>(*other.attr_values_) : nullptr),
      xml_attrs_(other.xml_attrs_),
      xml_used_(other.xml_used_),
      xml_room_(other.xml_used_),
      xml_offset_(other.xml_offset_) {
  if (xml_attrs_) ++BlockOf(xml_attrs_, xml_offset_)->refs;
}

SObject& SObject::operator=(const SObject& other) {
  if (this == &other) return *this;
  SObject copy(other);
  std::swap(attr_values_, copy.attr_values_);
  std::swap(xml_attrs_, copy.xml_attrs_);
  std::swap(xml_used_, copy.xml_used_);
  std::swap(xml_room_, copy.xml_room_);
  std::swap(xml_offset_, copy.xml_offset_);
  return *this;
}

SObject::~SObject() {
  if (xml_attrs_) ReleaseTextBlock(BlockOf(xml_attrs_, xml_offset_));
}

SStringW SObject::GetAttribute(const SStringW& name) const {
  const std::string key = name.ToUtf8();
  // The last entry of a name wins: a document may give one twice, and its
  // attributes are stored without looking for an earlier entry.
  SStringW found;
  for (const std::string_view blob : {std::string_view(xml_attrs_, xml_used_), OwnText()}) {
    ForEachStored(blob, [&](size_t n, size_t ne, size_t ve) {
      if (NameMatches(blob, n, ne, key)) found = SStringW::FromUtf8(std::string(blob.substr(ne + 1, ve - ne - 1)));
    });
  }
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
    const size_t entry = key.size() + text.size() + 2;
    if (static_cast<size_t>(value.GetLength()) < text.size()) {
      // A value cut to its limit is stored as applied.
      StoreAttribute(name, value);
    } else if (OwnText().empty() && static_cast<size_t>(xml_room_ - xml_used_) >= entry) {
      // Written without a search, each with its terminating NUL: a later
      // entry of the same name wins.
      char* out = xml_attrs_ + xml_used_;
      std::memcpy(out, key.data(), key.size());
      out[key.size()] = '\0';
      std::memcpy(out + key.size() + 1, text.data(), text.size());
      out[entry - 1] = '\0';
      xml_used_ = static_cast<uint16_t>(xml_used_ + entry);
    } else {
      std::string& own = OwnTextForWriting();
      own.append(key.data(), key.size()).push_back('\0');
      own.append(text.data(), text.size()).push_back('\0');
    }
  }
  return hr;
}

void SObject::ReserveAttributeText(size_t bytes) {
  if (!OwnText().empty() || xml_attrs_) return;
  if (char* room = TakeSharedText(bytes)) {
    xml_attrs_ = room;
    xml_room_ = static_cast<uint16_t>(bytes);
    xml_offset_ = static_cast<uint16_t>(Blocks().used - bytes);
    return;
  }
  OwnTextForWriting().reserve(bytes);
}

void SObject::OwnAttributeText() {
  if (!xml_attrs_) return;
  OwnTextForWriting().insert(0, xml_attrs_, xml_used_);
  ReleaseTextBlock(BlockOf(xml_attrs_, xml_offset_));
  xml_attrs_ = nullptr;
  xml_used_ = xml_room_ = xml_offset_ = 0;
}

void SObject::StoreAttribute(const SStringW& name, const SStringW& value) {
  StoreAttribute(std::string_view(name.ToUtf8()), std::string_view(value.ToUtf8()));
}

void SObject::StoreAttribute(std::string_view key, std::string_view text) {
  OwnAttributeText();
  // Names and values are stored up to an embedded NUL, which attribute text never holds.
  key = key.substr(0, key.find('\0'));
  const std::string_view stored = text.substr(0, text.find('\0'));
  // The entry GetAttribute answers from: the last of that name.
  size_t at = std::string::npos;
  std::string& own = OwnTextForWriting();
  ForEachStored(own, [&](size_t n, size_t ne, size_t) {
    if (NameMatches(own, n, ne, key)) at = n;
  });
  if (at != std::string::npos) {
    const size_t name_end = own.find('\0', at);
    const size_t value_end = own.find('\0', name_end + 1);
    own.replace(name_end + 1, value_end - name_end - 1, stored);
    return;
  }
  own.append(key).push_back('\0');
  own.append(stored).push_back('\0');
}

SStringW DescribeXmlError(const pugi::xml_parse_result& result) {
  return SStringW::FromUtf8(result.description()) + L" at offset " +
         SStringW::FromUtf8(std::to_string(static_cast<long long>(result.offset)));
}

pugi::xml_parse_result LoadWideXml(const wchar_t* xml, std::string* utf8, pugi::xml_document* doc) {
  *utf8 = SStringW::ToUtf8(xml ? std::wstring_view(xml) : std::wstring_view());
  return doc->load_buffer_inplace(utf8->data(), utf8->size());
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
    // The first letter tells most tags of a layout apart without a call.
    if (e && e->first[0] == tag[0] && std::wcscmp(e->first.c_str(), tag) == 0) return e->second();
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
