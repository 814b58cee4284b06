// The "Toast and tooltip" page's host side: buttons that raise toasts over
// the gallery window or over a second window the page opens, and a status
// line answering the bars' link and close clicks.
#include <functional>
#include <memory>

#include "gallery.h"
#include "popups/toast.h"
#include "popups/tooltip.h"
#include "soui/sapp.h"
#include "soui/swnd.h"

using namespace SOUI;
using QVStandardCtrls::EnQVToastIconType;
using QVStandardCtrls::IQVToast;

namespace gallery {
namespace {

// The second window toasts go over. The application owns it and deletes it
// with itself; a closed one is replaced by a new one.
// Its handle is kept per application: handle values start over with each.
struct SecondWindowSlot : IAppService {
  HWND hwnd = nullptr;
};

HWND OpenSecondWindow(HWND near) {
  SApplication& app = SApplication::getSingleton();
  auto* slot = static_cast<SecondWindowSlot*>(app.GetService("gallery.second_window"));
  if (!slot) {
    slot = new SecondWindowSlot();
    app.SetService("gallery.second_window", std::unique_ptr<IAppService>(slot));
  }
  SHostWnd* wnd = HostFromHwnd(slot->hwnd);
  if (!wnd) {
    wnd = new SHostWnd();
    app.AdoptHost(wnd);
    wnd->InitFromXmlText(
        L"<SOUI title='Second window' width='420dp' height='220dp'><root colorBkgnd='@color\\style_gallery\\card'>"
        L"<text pos='|0,|0' offset='-0.5,-0.5' font='size:13dp' colorText='@color\\style_skin_qv_text\\text_h2'>"
        L"Toasts slide down from this window's top edge</text></root></SOUI>");
    CRect rc;
    GetWindowRect(near, &rc);
    slot->hwnd = wnd->Create(nullptr, rc.left + 60, rc.top + 60);
  }
  wnd->ShowWindow(SW_SHOW);
  return slot->hwnd;
}

void OnClick(SWindow* root, const wchar_t* name, std::function<void()> fn) {
  if (SWindow* w = root->FindChildByName(name)) {
    w->subscribeEvent(EVT_CMD, [fn](EventArgs*) {
      fn();
      return true;
    });
  }
}

}  // namespace

void InstallToastPage(SHostWnd& host) {
  SWindow* root = host.GetRoot();
  const HWND owner = host.m_hWnd;
  struct Kind {
    const wchar_t* button;
    EnQVToastIconType type;
    const wchar_t* text;
  };
  static const Kind kinds[] = {
      {L"demo_toast_tip", QVStandardCtrls::QVToastIcon_Tip, L"Quote subscription renewed"},
      {L"demo_toast_warn", QVStandardCtrls::QVToastIcon_Warning, L"Price is near the daily limit"},
      {L"demo_toast_success", QVStandardCtrls::QVToastIcon_Success, L"Order filled"},
      {L"demo_toast_error", QVStandardCtrls::QVToastIcon_Error, L"Order rejected: insufficient buying power"},
      {L"demo_toast_long", QVStandardCtrls::QVToastIcon_Success,
       L"Your conditional order has been placed and will be sent to the exchange once the trigger price is "
       L"reached during trading hours"},
  };
  for (const Kind& k : kinds) {
    OnClick(root, k.button, [owner, &k] { IQVToast::TrackPopupToast(owner, k.type, k.text, 0, 2000); });
  }
  OnClick(root, L"demo_toast_skin", [owner] {
    IQVToast::TrackPopupToast(owner, L"skin_toast_icon_succeed", L"Shown with a skin name", 0, 2000);
  });
  OnClick(root, L"demo_toast_second", [owner] {
    IQVToast::TrackPopupToast(OpenSecondWindow(owner), QVStandardCtrls::QVToastIcon_Tip, L"A toast of its own", 0,
                              2000);
  });
  // Both options for this one button: repeats count up, hovering holds it.
  OnClick(root, L"demo_toast_coalesce", [owner] {
    QVStandardCtrls::QVToastOptions options;
    options.coalesce = true;
    options.pause_on_hover = true;
    IQVToast::SetToastOptions(options);
    IQVToast::TrackPopupToast(owner, QVStandardCtrls::QVToastIcon_Success, L"Order filled", 0, 2000);
    IQVToast::SetToastOptions(QVStandardCtrls::QVToastOptions());
  });
  SWindow* status = root->FindChildByName(L"demo_toast_status");
  for (const wchar_t* name : {L"demo_tip_td", L"demo_tip_td_full", L"demo_tip_tc", L"demo_tip_tc_close",
                              L"demo_tip_tw", L"demo_tip_tw_long"}) {
    SWindow* bar = root->FindChildByName(name);
    if (!bar || !status) continue;
    const SStringW label = name;
    bar->subscribeEvent(QVStandardCtrls::EVT_QVTOOLTIP_LINK_CLICKED, [status, label](EventArgs*) {
      status->SetWindowText(label + L": link clicked");
      return true;
    });
    bar->subscribeEvent(QVStandardCtrls::EVT_QVTOOLTIP_CLOSE_CLICKED, [status, label](EventArgs*) {
      status->SetWindowText(label + L": close clicked");
      return true;
    });
  }
}

}  // namespace gallery
