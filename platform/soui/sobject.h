// SObject: class identity, attributes and XML initialisation shared by every
// toolkit object; SObjectFactory: creation of windows by XML tag.
#pragma once

#include <pugixml.hpp>

#include <cstdint>
#include <cwchar>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <memory>
#include <vector>

#include "soui/sstring.h"

namespace SOUI {

class SWindow;

// Declares the class-name trio every toolkit class carries. Tags are
// case-sensitive factory keys; IsClass asks the base when the tag differs.
#define SOUI_CLASS_NAME_EX(TheClass, BaseClass, tag)                                         \
 public:                                                                                     \
  static const wchar_t* GetClassName() { return tag; }                                       \
  static const wchar_t* BaseClassName() { return BaseClass::GetClassName(); }                \
  const wchar_t* GetObjectClass() const override { return tag; }                             \
  BOOL IsClass(const wchar_t* name) const override {                                         \
    return (name && std::wcscmp(name, tag) == 0) ? TRUE : BaseClass::IsClass(name);          \
  }

class SObject {
 public:
  SObject() = default;
  // A copy shares the text kept so far but never writes into its block.
  SObject(const SObject& other);
  SObject& operator=(const SObject& other);
  virtual ~SObject();

  static const wchar_t* GetClassName() { return L"object"; }
  static const wchar_t* BaseClassName() { return L""; }
  virtual const wchar_t* GetObjectClass() const { return GetClassName(); }
  virtual BOOL IsClass(const wchar_t* name) const {
    return (name && std::wcscmp(name, GetClassName()) == 0) ? TRUE : FALSE;
  }

  virtual int GetID() const { return 0; }
  virtual SStringW GetName() const { return SStringW(); }
  // The same name without a copy, as events carry it: valid while the
  // object lives and keeps that name.
  virtual const wchar_t* GetNamePtr() const { return L""; }

  // Sets one attribute. Names match without regard to case. Returns S_OK when
  // handled and the object should refresh, S_FALSE when handled with nothing
  // to refresh, E_NOTIMPL for an unknown name, E_FAIL for a rejected value.
  virtual HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading);
  // The last value set for a name (empty when never set).
  virtual SStringW GetAttribute(const SStringW& name) const;
  // Runs after a handled attribute; the result is what SetAttribute returns.
  virtual HRESULT AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading,
                                 HRESULT hr);

  // Delivers every attribute of the element in document order, loading set.
  virtual BOOL InitFromXml(pugi::xml_node node);
  virtual void OnInitFinished(pugi::xml_node node) { (void)node; }

 protected:
  // Remembers the value so that GetAttribute can answer it.
  void StoreAttribute(const SStringW& name, const SStringW& value);
  void StoreAttribute(std::string_view name, std::string_view value);

  // Applies one attribute read from a document and stores the document's
  // own UTF-8 text for it (key and text, the attribute's name and whole
  // value), instead of converting the wide value back.
  HRESULT SetXmlAttribute(const SStringW& name, const SStringW& value, std::string_view key,
                          std::string_view text);
  // Sizes the stored text once for a document's attributes, before any is
  // stored; under a SharedAttrTextScope the room is taken from its blocks.
  void ReserveAttributeText(size_t bytes);

 private:
  // Moves the entries kept in a shared block into attr_values_.
  void OwnAttributeText();
  std::string_view OwnText() const { return attr_values_ ? std::string_view(*attr_values_) : std::string_view(); }
  std::string& OwnTextForWriting();  // makes attr_values_ when there is none

  // Entries are "name\0value\0" in UTF-8, the last of a name winning: every
  // window stores every attribute it is given and few are read back. Those
  // a document gave come first, in a block shared with the other objects of
  // that load (xml_attrs_: no allocation of their own, and two pointers less
  // than a shared_ptr would take); whatever is stored afterwards, in
  // attr_values_, made only then: most windows never need it, and a pointer
  // keeps the object's first cache line for what every pass reads.
  std::unique_ptr<std::string> attr_values_;
  char* xml_attrs_ = nullptr;  // in a counted block, xml_offset_ bytes into its text
  uint16_t xml_used_ = 0, xml_room_ = 0, xml_offset_ = 0;
};

// While one is alive, the attribute text objects keep from documents goes
// into blocks shared by the objects loaded meanwhile instead of a string of
// each one's own. The outermost scope opens the blocks; a block lives on
// while any object using it does.
class SharedAttrTextScope {
 public:
  SharedAttrTextScope();
  ~SharedAttrTextScope();
  SharedAttrTextScope(const SharedAttrTextScope&) = delete;
  SharedAttrTextScope& operator=(const SharedAttrTextScope&) = delete;
};

// Creates windows by tag. Tags are case-sensitive; a tag written "button.ok"
// creates a "button" and gives it class="button.ok".
class SObjectFactory {
 public:
  using Creator = std::function<SWindow*()>;

  template <class T>
  void RegisterWindowClass() {
    Register(T::GetClassName(), [] { return static_cast<SWindow*>(new T()); });
  }
  void Register(const wchar_t* tag, Creator creator);
  void Unregister(const wchar_t* tag);
  bool IsRegistered(const wchar_t* tag) const;
  // Null for an unknown tag. The caller owns the result.
  SWindow* CreateWindowByName(const wchar_t* tag) const;
  // Every registered tag, in sorted order.
  std::vector<SStringW> GetClassNames() const;

 private:
  using Entry = std::map<std::wstring, Creator, std::less<>>::value_type;
  std::map<std::wstring, Creator, std::less<>> creators_;  // find() takes a view
  // The last few tags created: a layout repeats a handful of tags, so most
  // windows are made without searching the map. Never copied (it points
  // into this factory's map, and a move leaves both empty); emptied by
  // Unregister.
  struct Recent {
    Recent() = default;
    Recent(const Recent&) {}
    Recent(Recent&& from) noexcept { from.Clear(); }
    Recent& operator=(const Recent&) {
      Clear();
      return *this;
    }
    Recent& operator=(Recent&& from) noexcept {
      Clear();
      from.Clear();
      return *this;
    }
    void Clear() {
      for (const Entry*& e : entries) e = nullptr;
    }
    static constexpr unsigned kSize = 4;
    const Entry* entries[kSize] = {};
    unsigned next = 0;
  };
  mutable Recent recent_;
};

// Case-insensitive child and attribute lookup, as the toolkit's pugixml does.
pugi::xml_node XmlChildNoCase(pugi::xml_node parent, const wchar_t* name);
pugi::xml_attribute XmlAttrNoCase(pugi::xml_node node, const wchar_t* name);
inline SStringW XmlName(pugi::xml_node n) { return SStringW::FromUtf8(n.name()); }
inline SStringW XmlName(pugi::xml_attribute a) { return SStringW::FromUtf8(a.name()); }
inline SStringW XmlValue(pugi::xml_attribute a) { return SStringW::FromUtf8(a.value()); }
// pugixml's reason for refusing a document and where: "Start-end tags
// mismatch at offset 57".
SStringW DescribeXmlError(const pugi::xml_parse_result& result);
// Parses wide XML text (null reads as empty): converted to UTF-8 once into
// *utf8, which the document then reads in place, so *utf8 must outlive doc.
pugi::xml_parse_result LoadWideXml(const wchar_t* xml, std::string* utf8, pugi::xml_document* doc);

// Reads the value of a boolean attribute: only "0" and "false" are false.
bool ParseBool(const SStringW& value);

}  // namespace SOUI
