// Registration of the library's control classes with a toolkit factory.
#pragma once

#include "framework/ctrl_attr_base.h"
#include "soui/sobject.h"

namespace QVStandardCtrls {

// Registers every control class of the library by its XML tag, and gives
// the running application the text style codes that rich text runs use.
QVSTDCTRLS_API void RegisterQVStandardCtrls(SOUI::SObjectFactory& factory);

}  // namespace QVStandardCtrls
