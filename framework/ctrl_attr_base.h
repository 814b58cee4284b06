// IQVCtrlAttrBase: the exported base for host objects that fill themselves
// from an XML element (attributes first, then children).
#pragma once

#include <pugixml.hpp>

#include "framework/qv_export.h"
#include "soui/sstring.h"
#include "soui/wtypes.h"


namespace QVStandardCtrls {

struct QVSTDCTRLS_API IQVCtrlAttrBase {
  IQVCtrlAttrBase() = default;
  IQVCtrlAttrBase(const IQVCtrlAttrBase&) = default;
  IQVCtrlAttrBase& operator=(const IQVCtrlAttrBase&) = default;
  virtual ~IQVCtrlAttrBase() = default;

  // The tag of the element that holds this object's attributes; empty takes
  // the document's first element whatever its tag.
  virtual SOUI::SStringW GetCtrlName();
  // Applies the node's attributes in document order (loading FALSE, results
  // ignored), then ChildLoad. Always true.
  virtual bool Load(pugi::xml_node node);
  // Loads the XML resource `name` of `type` and applies the element found by
  // GetCtrlName (tag matched without regard to case). False when the
  // resource or the element is missing.
  virtual bool Load(const wchar_t* name, const wchar_t* type);
  // "TYPE:name", split at the first colon (the name may hold further
  // colons). False without a colon; nothing is loaded then.
  virtual bool Load(const wchar_t* resId);
  // Unknown attributes end here: E_NOTIMPL.
  virtual HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading);

 protected:
  virtual HRESULT AfterAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading,
                                 HRESULT result);
  virtual void ChildLoad(pugi::xml_node node);
};

}  // namespace QVStandardCtrls
