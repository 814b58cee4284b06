// The tabs page's host side: the tab view's add button opens a new tab and
// selects it, and a tab's close button closes it, as a browser's would. The
// last tab stays: a strip with nothing in it would show only "+".
#include <string>

#include "gallery.h"
#include "soui/swnd.h"
#include "tabs/tabctrl_base.h"

using namespace SOUI;
using namespace QVStandardCtrls;

namespace gallery {

void InstallTabsPage(SWindow* root) {
  auto* tabs = root->FindChildByName2<CQVTabCtrlBase>(L"tabs_view");
  if (!tabs) return;
  tabs->subscribeEvent(EVT_QVTAB_CLICK_ADD, [tabs, opened = 0](EventArgs*) mutable {
    const SStringW title = SStringW(L"新标签 ") + SStringW(std::to_wstring(++opened));
    const int id = tabs->InsertTab({{L"title", title}}, -1);
    if (id >= 0) tabs->SetCurSelById(id, true);
    return true;
  });
  tabs->subscribeEvent(EVT_QVTAB_ITEM_CLICK_TAILICON, [tabs](EventArgs* e) {
    if (tabs->GetTabCount() > 1) tabs->RemoveTabById(static_cast<EventQVTabItemClickTailicon*>(e)->nId);
    return true;
  });
}

}  // namespace gallery
