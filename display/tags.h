// Small coloured labels: CQVTag ("qv_tag") shows one of 54 house tag styles
// (buy, sell, rise, fall, colours, markets; each bordered, transparent or
// solid) at a size class; CQVMarketTag ("qv_markettag") picks its style from
// a market and a background kind.
#pragma once

#include <map>
#include <memory>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

struct QVSTDCTRLS_API QVTagStyleInfo {
  SOUI::SStringW skin;
  SOUI::SStringW text_color;
};
using QVTagStylePtr = std::shared_ptr<const QVTagStyleInfo>;

struct QVSTDCTRLS_API QVTagSize {
  int height_dp;
  SOUI::SStringW font;
};

// One process-wide table, built on first use on the UI thread and never
// changed afterwards.
struct QVSTDCTRLS_API QVTagTable {
  std::map<SOUI::SStringW, SOUI::SStringW> kind_digits;      // "Bordered" -> "1"
  std::map<SOUI::SStringW, SOUI::SStringW> market_prefixes;  // "HK" -> "THK"
  std::map<SOUI::SStringW, QVTagSize> sizes;                 // "medium" -> 14, "size:11dp"
  std::map<SOUI::SStringW, QVTagStylePtr> codes;             // "TBU1" -> skin, colour
};
QVSTDCTRLS_API const QVTagTable& GetQVTagTable();

// "US" + "Solid" -> "TUS3"; empty for an unknown market or kind (both
// matched exactly, so "hk" finds nothing).
QVSTDCTRLS_API SOUI::SStringW QVMarketTagCode(const SOUI::SStringW& market, const SOUI::SStringW& kind);

class QVSTDCTRLS_API CQVTag : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVTag, SOUI::SWindow, L"qv_tag")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL InitFromXml(pugi::xml_node node) override;

  // Sets "height", "font", "colorText" and "skin" from the style code and
  // the size class; an unknown code or size leaves the look unchanged.
  virtual void InitCommStyle();

  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  const SOUI::SStringW& GetSizeName() const { return size_name_; }

 protected:
  // Applies the code and size of the table (shared by the market tag).
  void ApplyTagStyle(const SOUI::SStringW& code);

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrSize(const SOUI::SStringW& value, BOOL loading);
  // "x,y,w,h" becomes "x,y,w,@1dp" and the height follows the size class:
  // a tag's height is never the page's to choose.
  HRESULT OnAttrPos(const SOUI::SStringW& value, BOOL loading);

  SOUI::SStringW size_name_ = L"medium";
  SOUI::SStringW style_code_ = L"TBU1";
};

class QVSTDCTRLS_API CQVMarketTag : public CQVTag {
  SOUI_CLASS_NAME(CQVMarketTag, CQVTag, L"qv_markettag")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  void InitCommStyle() override;

  const SOUI::SStringW& GetMarket() const { return market_; }
  const SOUI::SStringW& GetBackground() const { return background_; }

 protected:
  HRESULT OnAttrMarket(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrBackground(const SOUI::SStringW& value, BOOL loading);

  SOUI::SStringW market_ = L"HK";
  SOUI::SStringW background_ = L"Transparent";
};

}  // namespace QVStandardCtrls
