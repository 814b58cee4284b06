// What a host does around the market value controls: the "Switch rise
// colour" button flips the user's convention, broadcasts it, and tells every
// price, since prices only follow "redrise".
#include "gallery.h"

#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "soui/swnd.h"

using namespace SOUI;

namespace gallery {
namespace {

constexpr int kCfgRedRise = 50501;
constexpr unsigned kMsgRiseFallColorChanged = 1063;

void SetRedRiseOnPrices(SWindow* w, bool red_rise) {
  for (SWindow* c = w->GetWindow(GSW_FIRSTCHILD); c; c = c->GetWindow(GSW_NEXTSIBLING)) {
    if (c->IsClass(L"qv_risefallprice")) c->SetAttribute(L"redrise", red_rise ? L"1" : L"0", FALSE);
    SetRedRiseOnPrices(c, red_rise);
  }
}

bool ReadRedRise() {
  bool red_rise = true;
  Util_Config::UserCfg_ReadBool(kCfgRedRise, &red_rise);
  return red_rise;
}

}  // namespace

void InstallPageBehaviour(SHostWnd& host) {
  SWindow* root = host.GetRoot();
  InstallTextInputPage(root);
  InstallToastPage(host);
  InstallDialogsPage(host);
  InstallMenuPage(host);
  InstallStatePage(root);
  InstallTabsPage(root);
  // Prices start in the red-rises colours; bring them to the user's setting.
  SetRedRiseOnPrices(root, ReadRedRise());
  SWindow* toggle = root->FindChildByName(L"btn_toggle_redrise");
  if (!toggle) return;
  toggle->subscribeEvent(EVT_CMD, [root](EventArgs*) {
    const bool red_rise = !ReadRedRise();
    Util_Config::UserCfg_WriteBool(kCfgRedRise, red_rise);
    if (IMessageDispatch* dispatch = GetMsgDispatch()) dispatch->Send(kMsgRiseFallColorChanged);
    SetRedRiseOnPrices(root, red_rise);
    return true;
  });
}

}  // namespace gallery
