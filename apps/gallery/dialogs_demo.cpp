// The "Text and dialogs" page's host side: the multi-line link's content,
// a status line answering links, checks and legends, and buttons that open
// each kind of message box and the custom dialog over the gallery window.
#include <memory>

#include "display/legend.h"
#include "display/text_ctrls.h"
#include "gallery.h"
#include "popups/custom_dialog.h"
#include "popups/dialogs.h"
#include "soui/sapp.h"
#include "soui/swnd.h"

using namespace SOUI;
using QVStandardCtrls::CQVCustomDialog;
using QVStandardCtrls::CQVDefaultDialog;
using Attr = QVStandardCtrls::QVDefaultDialogAttr;

namespace gallery {
namespace {

// The custom dialog's user area: a small transfer form.
const char kCustomLayout[] =
    "<SOUI title='Transfer funds' width='460dp' height='300dp' icon='skin_basewnd_img_qvtx'"
    " BottomLeftStyle='CHECK' ButtomLeftCtrlText='Remember this account' btnStyle='OKCANCEL'>"
    "<root>"
    "<qv_text pos='20dp,16dp' qvstyle='HR3' text='From the margin account to the cash account'/>"
    "<qv_text pos='20dp,[14dp' qvstyle='T2' text='Available'/>"
    "<qv_text pos='120dp,{0' qvstyle='HB1' text='HKD 128,400.00'/>"
    "<qv_text pos='20dp,[12dp' qvstyle='T2' text='Amount'/>"
    "<qv_edit name='transfer_amount' pos='120dp,{-5dp' width='180dp' qvstyle='NI2' text='10,000.00'/>"
    "<qv_link name='transfer_rules' pos='20dp,[16dp' qvstyle='B2' text='Transfer rules'/>"
    "</root></SOUI>";

void ShowStatus(SWindow* root, const SStringW& what) {
  if (SWindow* status = root->FindChildByName(L"demo_dialog_status")) status->SetWindowText(what);
}

void OnClick(SWindow* root, const wchar_t* name, std::function<void()> fn) {
  if (SWindow* w = root->FindChildByName(name)) {
    w->subscribeEvent(EVT_CMD, [fn](EventArgs*) {
      fn();
      return true;
    });
  }
}

SStringW ResultText(int result) {
  switch (result) {
    case 1: return L"closed by the rightmost button (1)";
    case 2: return L"closed by the second button (2)";
    case 3: return L"closed by the third button (3)";
    case 8: return L"closed from the title bar (8)";
    default: return SStringW::Format2(L"closed otherwise (%d)", result);
  }
}

void RunBox(SWindow* root, HWND owner, const Attr& attr) {
  ShowStatus(root, L"Message box " + ResultText(CQVDefaultDialog::MessageBoxW(attr, owner)));
}

}  // namespace

void InstallDialogsPage(SHostWnd& host) {
  SWindow* root = host.GetRoot();
  const HWND owner = host.m_hWnd;
  SApplication::getSingleton().GetResProvider().AddXml(L"LAYOUT", L"gallery_custom_dialog", kCustomLayout);

  if (auto* multi = root->FindChildByName2<QVStandardCtrls::CQVMultiLink>(L"demo_multilink")) {
    multi->AppendParagraph(L"<RichEditContent><qv_text qvstyle='HR1'>Before the first options trade, read the "
                           L"</qv_text></RichEditContent>");
    multi->AppendParagraph(L"<RichEditContent><qv_text cursor='hand' qvstyle='B2' link-data='risk'>risk "
                           L"disclosure</qv_text></RichEditContent>");
    multi->AppendParagraph(L"<RichEditContent><qv_text qvstyle='HR1'> and the </qv_text></RichEditContent>");
    multi->AppendParagraph(L"<RichEditContent><qv_text cursor='hand' qvstyle='B2' link-data='fees'>fee "
                           L"schedule</qv_text></RichEditContent>");
    multi->subscribeEvent(EVT_RDT_CLICK, [root](EventArgs* e) {
      ShowStatus(root, L"Rich-text link: " + static_cast<EventRdtClick*>(e)->linkData);
      return true;
    });
  }
  for (const wchar_t* name : {L"demo_link_b1", L"demo_link_b2", L"demo_link_b3", L"demo_link_b4", L"demo_link_b5"}) {
    if (SWindow* link = root->FindChildByName(name)) {
      link->subscribeEvent(QVStandardCtrls::EVT_QV_LINK_CLICK, [root](EventArgs* e) {
        ShowStatus(root, L"Link clicked: " + static_cast<QVStandardCtrls::EventQVLinkClick*>(e)->text);
        return true;
      });
    }
  }
  for (const wchar_t* name : {L"demo_legend_ma5", L"demo_legend_ma10", L"demo_legend_ma20", L"demo_legend_vol"}) {
    if (SWindow* legend = root->FindChildByName(name)) {
      const SStringW label = legend->GetWindowText();
      legend->subscribeEvent(QVStandardCtrls::EVT_QV_LEGEND_CHANGED, [root, label](EventArgs* e) {
        const bool on = static_cast<QVStandardCtrls::EventQVLegendChanged*>(e)->checked;
        ShowStatus(root, label + (on ? L": series shown" : L": series hidden"));
        return true;
      });
    }
  }

  OnClick(root, L"demo_box_ok", [root, owner] {
    Attr a;
    a.title = L"Order";
    a.content_text = L"Order filled";
    a.SetButtonStyle(Attr::Btn_Ok);
    RunBox(root, owner, a);
  });
  OnClick(root, L"demo_box_okcancel", [root, owner] {
    Attr a;
    a.title = L"Cancel orders";
    a.content_title = L"Cancel every open order?";
    a.content_text = L"Orders already sent to the exchange may still be filled before they are cancelled.";
    a.SetContentIcon(Attr::Icon_Tips);
    a.SetButtonStyle(Attr::Btn_OkCancel);
    RunBox(root, owner, a);
  });
  OnClick(root, L"demo_box_three", [root, owner] {
    Attr a;
    a.title = L"Connection";
    a.content_text = L"The quote server stopped answering. Retry now, keep waiting, or work offline?";
    a.link_text = L"Network settings";
    a.SetContentIcon(Attr::Icon_Warn);
    a.SetButtonStyle(Attr::Btn_YesNoCancel);
    a.width_class = 1;
    RunBox(root, owner, a);
  });
  OnClick(root, L"demo_box_check", [root, owner] {
    Attr a;
    a.title = L"Watch list";
    a.content_text = L"Delete the watch list \"Tech\"?";
    a.SetContentIcon(Attr::Icon_Error);
    a.SetButtonStyle(Attr::Btn_OkCancel);
    a.bottom_left_kind = Attr::BottomLeft_Check;
    a.bottom_left_text = L"Do not ask again";
    a.width_class = 1;
    CQVDefaultDialog dlg(a);
    const int result = dlg.DoModal(owner);
    ShowStatus(root, L"Message box " + ResultText(result) + (dlg.IsChecked() ? L", do not ask again" : L""));
  });
  OnClick(root, L"demo_box_links", [root, owner] {
    Attr a;
    a.title = L"Risk notice";
    a.content_text = L"Options can lose all their value. Read the <ln>risk disclosure</ln> and the <ln>fee "
                     L"schedule</ln> first.";
    a.SetButtonStyle(Attr::Btn_OkCancel);
    a.bottom_left_kind = Attr::BottomLeft_Link;
    a.bottom_left_text = L"Help";
    CQVDefaultDialog dlg(a);
    SWindow* r = root;
    auto report = [r](const SStringW& what) {
      return Subscriber([r, what](EventArgs*) {
        ShowStatus(r, L"Dialog link: " + what);
        return true;
      });
    };
    dlg.RegisterLinkEvent(L"risk disclosure", report(L"risk disclosure"));
    dlg.RegisterLinkEvent(L"Help", report(L"Help"));
    dlg.DoModal(owner);
  });
  OnClick(root, L"demo_box_busy", [root, owner] {
    Attr a;
    a.title = L"Place order";
    a.content_text = L"Buy 1,000 shares of 00700 at HKD 368.20?";
    a.SetButtonStyle(Attr::Btn_OkCancel);
    a.enter_confirms = true;
    // The "exchange" answers after a second; the OK button stays busy until then.
    a.on_confirm = [](std::function<void(bool)> finish) {
      SApplication::getSingleton().GetClock().SetTimer(1000, [finish] { finish(true); }, false);
    };
    RunBox(root, owner, a);
  });
  OnClick(root, L"demo_custom_modal", [root, owner] {
    CQVCustomDialog dlg(L"gallery_custom_dialog");
    const int result = dlg.DoModal(owner);
    ShowStatus(root, L"Custom dialog " + ResultText(result) + (dlg.IsBottomChecked() ? L", remembered" : L""));
  });
  OnClick(root, L"demo_custom_modeless", [owner] {
    // The application keeps it; its close button destroys the window, and
    // the next click opens a fresh one.
    struct Slot : IAppService {
      std::unique_ptr<CQVCustomDialog> dlg;
    };
    SApplication& app = SApplication::getSingleton();
    auto* slot = static_cast<Slot*>(app.GetService("gallery.custom_dialog"));
    if (!slot) {
      slot = new Slot();
      app.SetService("gallery.custom_dialog", std::unique_ptr<IAppService>(slot));
    }
    if (!slot->dlg || !slot->dlg->m_hWnd) {
      slot->dlg = std::make_unique<CQVCustomDialog>(L"gallery_custom_dialog");
      slot->dlg->SetAttribute(L"title", L"Transfer funds (modeless)");
      slot->dlg->SetAttribute(L"btnStyle", L"NULL");
      slot->dlg->SetAttribute(L"BottomLeftStyle", L"LINK");
      slot->dlg->SetAttribute(L"ButtomLeftCtrlText", L"Open the statement");
      slot->dlg->CreateDialogWnd(owner);
    }
    slot->dlg->ShowWindow(SW_SHOW);
  });
}

}  // namespace gallery
