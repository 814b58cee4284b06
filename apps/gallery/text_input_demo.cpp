// The "Text and input" page's host side: the rich-text block's content, the
// progress step button, and a status line that names the last thing the
// user did, so that every control on the page visibly answers mouse and
// keyboard.
#include "gallery.h"

#include "soui/checkctrls.h"
#include "soui/combobox.h"
#include "soui/edit.h"
#include "soui/qvrichtext.h"
#include "soui/swnd.h"

using namespace SOUI;

namespace gallery {
namespace {

const wchar_t* const kRichParagraphs[] = {
    L"<RichEditContent><qv_text qvstyle='HB1'>Market notice · 市场公告</qv_text></RichEditContent>",
    L"<RichEditContent><text>Trading in </text>"
    L"<text color='@color\\style_skin_qv_text\\text_link_normal' cursor='hand' link-data='00700'>00700</text>"
    L"<text> resumes at 13:00; the closing auction of </text>"
    L"<text color='@color\\style_skin_qv_text\\text_link_normal' cursor='hand' link-data='600519'>600519</text>"
    L"<text> runs 14:57–15:00. 收盘集合竞价期间不可撤单。</text></RichEditContent>",
    L"<RichEditContent><qv_text qvstyle='HR1'>Limit up: </qv_text>"
    L"<text color='@color\\style_skin_qv_text\\text_rise' font='size:13dp,bold:1'>+10.00%</text>"
    L"<qv_text qvstyle='HR1'>&#160;&#160;limit down: </qv_text>"
    L"<text color='@color\\style_skin_qv_text\\text_fall' font='size:13dp,bold:1'>-10.00%</text></RichEditContent>",
};

void ShowStatus(SWindow* root, const SStringW& what) {
  if (SWindow* status = root->FindChildByName(L"demo_status")) status->SetWindowText(what);
}

// Reports a check box whose check state changed, or a radio that was
// chosen (the one it replaced going off says nothing new).
void ReportChecks(SWindow* root, const wchar_t* name, const wchar_t* label, bool radio) {
  SWindow* w = root->FindChildByName(name);
  if (!w) return;
  const SStringW text = label;
  w->subscribeEvent(EVT_STATECHANGED, [root, text, radio](EventArgs* e) {
    auto* evt = static_cast<EventSwndStateChanged*>(e);
    if (!((evt->dwOldState ^ evt->dwNewState) & WndState_Check)) return false;
    const bool on = (evt->dwNewState & WndState_Check) != 0;
    if (radio && on) ShowStatus(root, text);
    else if (!radio) ShowStatus(root, text + (on ? L": on" : L": off"));
    return false;
  });
}

}  // namespace

void InstallTextInputPage(SWindow* root) {
  // The wrapping edit starts with a word selected, to show the selection colours.
  if (SEdit* edit = root->FindChildByName2<SEdit>(L"demo_wrap_edit")) {
    const int at = edit->GetWindowText().Find(L"wrap");
    if (at >= 0) edit->SetSel(at, at + 4);
  }
  if (QVRichText* rich = root->FindChildByName2<QVRichText>(L"demo_richtext")) {
    for (const wchar_t* para : kRichParagraphs) rich->AppendContent(para);
    rich->subscribeEvent(EVT_RDT_CLICK, [root](EventArgs* e) {
      ShowStatus(root, L"rich text link " + static_cast<EventRdtClick*>(e)->linkData);
      return true;
    });
  }
  for (const wchar_t* name : {L"demo_account", L"demo_password", L"demo_quantity", L"demo_wrap_edit"}) {
    SEdit* edit = root->FindChildByName2<SEdit>(name);
    if (!edit) continue;
    const SStringW label = name;
    edit->subscribeEvent(EVT_RE_NOTIFY, [root, edit, label](EventArgs* e) {
      if (static_cast<EventRENotify*>(e)->iNotify != EN_CHANGE) return false;
      ShowStatus(root, label + L": " + SStringW::Format2(L"%d characters", edit->GetWindowText().GetLength()));
      return false;
    });
  }
  for (const wchar_t* name : {L"demo_order_type", L"demo_price"}) {
    SComboBox* combo = root->FindChildByName2<SComboBox>(name);
    if (!combo) continue;
    combo->subscribeEvent(EVT_CB_SELCHANGE, [root, combo](EventArgs*) {
      ShowStatus(root, L"picked " + combo->GetLBText(combo->GetCurSel()));
      return true;
    });
  }
  ReportChecks(root, L"demo_check_confirm", L"confirm before sending", false);
  ReportChecks(root, L"demo_check_sound", L"sound on fills", false);
  ReportChecks(root, L"demo_radio_day", L"valid for the day", true);
  ReportChecks(root, L"demo_radio_gtc", L"valid till cancelled", true);
  ReportChecks(root, L"demo_radio_ioc", L"immediate or cancel", true);
  if (SWindow* link = root->FindChildByName(L"demo_link")) {
    link->subscribeEvent(EVT_CMD, [root, link](EventArgs*) {
      ShowStatus(root, L"link to " + link->GetAttribute(L"href"));
      return true;
    });
  }
  SProgress* progress = root->FindChildByName2<SProgress>(L"demo_progress");
  SWindow* step = root->FindChildByName(L"demo_progress_step");
  if (progress && step) {
    step->subscribeEvent(EVT_CMD, [root, progress](EventArgs*) {
      const int next = progress->GetValue() >= progress->GetMax() ? progress->GetMin() : progress->GetValue() + 10;
      progress->SetValue(next);
      ShowStatus(root, SStringW::Format2(L"progress %d%%", progress->GetValue()));
      return true;
    });
  }
}

}  // namespace gallery
