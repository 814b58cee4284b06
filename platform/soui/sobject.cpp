#include "soui/sobject.h"

#include <cstring>
#include <strings.h>

namespace SOUI {

HRESULT SObject::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  (void)name;
  (void)value;
  (void)loading;
  return E_FAIL;
}

SStringW SObject::GetAttribute(const SStringW& name) const {
  for (const auto& kv : attr_values_) {
    if (kv.first.CompareNoCase(name) == 0) return kv.second;
  }
  return SStringW();
}

HRESULT SObject::AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading,
                                HRESULT hr) {
  (void)loading;
  if (SUCCEEDED(hr)) StoreAttribute(name, value);
  return hr;
}

void SObject::StoreAttribute(const SStringW& name, const SStringW& value) {
  for (auto& kv : attr_values_) {
    if (kv.first.CompareNoCase(name) == 0) {
      kv.second = value;
      return;
    }
  }
  attr_values_.emplace_back(name, value);
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
  if (tag && *tag && creator) creators_[tag] = std::move(creator);
}

void SObjectFactory::Unregister(const wchar_t* tag) {
  if (tag) creators_.erase(tag);
}

bool SObjectFactory::IsRegistered(const wchar_t* tag) const {
  return tag && creators_.count(tag) != 0;
}

SWindow* SObjectFactory::CreateWindowByName(const wchar_t* tag) const {
  if (!tag) return nullptr;
  auto it = creators_.find(tag);
  return it == creators_.end() ? nullptr : it->second();
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
