// IQVStandardCtrlUtils: measuring and diagnostic helpers for the controls
// and the host.
#pragma once

#include <pugixml.hpp>

#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API IQVStandardCtrlUtils {
 public:
  // One line of translated text in a toolkit font description
  // ("size:12dp,bold:1") at the application zoom. 0x0 without an application.
  static SOUI::CSize MeasureText(const SOUI::SStringW& text, const SOUI::SStringW& font);
  // The same in the font `window` paints with (inherited from its parents
  // when it sets none).
  static SOUI::CSize MeasureText(const SOUI::SStringW& text, SOUI::SWindow* window);
  // Writes the node's XML to the log at debug level.
  static void DebugPrint(const pugi::xml_node& node);
};

}  // namespace QVStandardCtrls
