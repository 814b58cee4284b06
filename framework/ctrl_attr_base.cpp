#include "framework/ctrl_attr_base.h"

#include "soui/sapp.h"
#include "soui/sobject.h"

namespace QVStandardCtrls {

using namespace SOUI;

SStringW IQVCtrlAttrBase::GetCtrlName() { return SStringW(); }

bool IQVCtrlAttrBase::Load(pugi::xml_node node) {
  // One bad attribute must not stop the others, so results are not looked at.
  for (pugi::xml_attribute a = node.first_attribute(); a; a = a.next_attribute()) {
    SetAttribute(XmlName(a), XmlValue(a), FALSE);
  }
  ChildLoad(node);
  return true;
}

bool IQVCtrlAttrBase::Load(const wchar_t* name, const wchar_t* type) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || !name || !type) return false;
  pugi::xml_document doc;
  if (!app->LoadXmlDocment(doc, SStringW(name), SStringW(type))) return false;
  const SStringW tag = GetCtrlName();
  pugi::xml_node element;
  if (tag.IsEmpty()) {
    // Declarations or comments before the root are not the element we want.
    element = doc.first_child();
    while (element && element.type() != pugi::node_element) element = element.next_sibling();
  } else {
    element = XmlChildNoCase(doc, tag);
  }
  if (!element) return false;
  return Load(element);
}

bool IQVCtrlAttrBase::Load(const wchar_t* resId) {
  if (!resId) return false;
  const SStringW id(resId);
  const int colon = id.Find(L':');
  if (colon < 0) return false;
  const SStringW type = id.Left(colon);
  const SStringW name = id.Mid(colon + 1);
  return Load(name.c_str(), type.c_str());
}

HRESULT IQVCtrlAttrBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  (void)name;
  (void)value;
  (void)loading;
  return E_NOTIMPL;
}

HRESULT IQVCtrlAttrBase::AfterAttribute(const SStringW& name, const SStringW& value, BOOL loading,
                                        HRESULT result) {
  (void)name;
  (void)value;
  (void)loading;
  (void)result;
  return S_OK;
}

void IQVCtrlAttrBase::ChildLoad(pugi::xml_node node) { (void)node; }

}  // namespace QVStandardCtrls
