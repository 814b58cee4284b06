#include "framework/attr_dispatch.h"

namespace QVStandardCtrls {

using namespace SOUI;

bool IsQVStructuralAttr(const SStringW& name) {
  static const std::set<SStringW, SStringNoCaseLess> kNames = {
      L"name",    L"id",      L"text",  L"tip",           L"pos",       L"offset",
      L"size",    L"width",   L"visible", L"show",        L"display",   L"enable",
      L"float",   L"msgTransparent", L"focusable", L"class", L"data", L"trctx"};
  return kNames.count(name) != 0;
}

bool QVParseBool(const SStringW& value) {
  return !(value == L"0" || value.CompareNoCase(L"false") == 0);
}

}  // namespace QVStandardCtrls
