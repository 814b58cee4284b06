#include "popups/dialogs.h"

#include <algorithm>
#include <cwchar>

#include "display/buttons.h"
#include "display/text_ctrls.h"
#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"
#include "soui/sapp.h"
#include "soui/stdctrls.h"
#include "templates/dialog_templates.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

constexpr int kButtonIdFirst = 100010001;
constexpr int kLinkId = 100020001;
constexpr int kCheckId = 100020002;
constexpr int kMinButtonWidth = 74;
constexpr int kWidths[] = {313, 373, 433, 493};

const wchar_t kParaStart[] = L"<RichEditContent><qv_text qvstyle=\"HR1\">";
const wchar_t kParaEnd[] = L"</qv_text></RichEditContent>";
const wchar_t kSpliter[] = L"<spliter/>";

void SetXmlAttr(pugi::xml_node node, const char* name, const SStringW& value) {
  pugi::xml_attribute a = node.attribute(name);
  if (!a) a = node.append_attribute(name);
  a.set_value(value.ToUtf8().c_str());
}

SStringW Decimal(int v) { return SStringW::Format2(L"%d", v); }

// The six steps: link runs between "<ln>" and "</ln>" become B2 link
// paragraphs, the text around them HR1 paragraphs. With escape the text
// between the markers is escaped first (a fallback for runs that would not
// parse); the pieces stay the same in number and order.
std::vector<SStringW> SplitContentText(const SStringW& text, bool escape) {
  SStringW body = text;
  if (escape) {
    body.Empty();
    int pos = 0;
    while (pos < text.GetLength()) {
      const int open = text.Find(L"<ln>", pos);
      const int close = text.Find(L"</ln>", pos);
      int next = -1;
      int len = 0;
      if (open >= 0 && (close < 0 || open < close)) next = open, len = 4;
      else if (close >= 0) next = close, len = 5;
      if (next < 0) {
        body += QVEscapeXml(text.Mid(pos));
        break;
      }
      body += QVEscapeXml(text.Mid(pos, next - pos));
      body += text.Mid(next, len);
      pos = next + len;
    }
  }
  SStringW s = SStringW(kParaStart) + body + kParaEnd;
  s.Replace(L"<ln>", L"</qv_text></RichEditContent><spliter/>");
  s.Replace(L"</ln>", L"<spliter/><RichEditContent><qv_text qvstyle=\"HR1\">");
  std::vector<SStringW> pieces;
  int pos = 0;
  const int sep_len = static_cast<int>(wcslen(kSpliter));
  for (;;) {
    const int at = s.Find(kSpliter, pos);
    pieces.push_back(at < 0 ? s.Mid(pos) : s.Mid(pos, at - pos));
    if (at < 0) break;
    pos = at + sep_len;
  }
  for (SStringW& p : pieces) {
    if (p.GetAt(0) == L'<') continue;
    p = L"<RichEditContent><qv_text cursor=\"hand\" qvstyle=\"B2\" link-data=\"" + p + L"\" >" + p + kParaEnd;
  }
  return pieces;
}

}  // namespace

// ---- shared by both dialogs ----------------------------------------------------------

void QVLayoutDialogButtons(SHostWnd* host, const std::vector<SStringW>& labels,
                           const std::function<void(SWindow*, int)>& bind) {
  if (!host) return;
  const int n = std::min<int>(static_cast<int>(labels.size()), 3);
  for (int i = 0; i < 3; ++i) {
    SWindow* btn = host->FindChildByID(kButtonIdFirst + i);
    if (!btn) continue;
    btn->SetVisible(i < n ? TRUE : FALSE);
    if (i < n) btn->SetWindowText(labels[static_cast<size_t>(i)]);
    btn->SetAttribute(L"qvstyle", i == n - 1 ? L"MB2_P" : L"MB2_D", FALSE);
    // Measured with the content width, so a new language can widen it again.
    btn->SetAttribute(L"width", L"-1", FALSE);
    const int wanted = btn->GetDesiredSize(-1, -1).cx;
    btn->SetAttribute(L"width", Decimal(std::max(wanted, ZPixel(kMinButtonWidth))), FALSE);
    if (bind) bind(btn, i + 1);
  }
}

void QVCentreOverOwner(SHostWnd* host) {
  if (!host || !SApplication::getSingletonPtr()) return;
  CRect area;
  if (!::SOUI::GetWindowRect(host->GetOwner(), &area)) area = SApplication::getSingleton().GetWorkArea(host);
  const CRect rc = host->GetWindowRect();
  host->SetWindowPos(nullptr, area.left + (area.Width() - rc.Width()) / 2,
                     area.top + (area.Height() - rc.Height()) / 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void QVShowDialogActivation(SHostWnd* host, bool active) {
  if (!host || !host->GetRoot()) return;
  host->GetRoot()->SetAttribute(L"skin", active ? L"skin_qvstd_dialog_bg_selected" : L"skin_qvstd_dialog_bg_normal",
                                FALSE);
}

struct QVConfirmGate::State {
  bool busy = false;
  SWindow* button = nullptr;
  std::function<void()> on_close;
};

QVConfirmGate::QVConfirmGate() : state_(std::make_shared<State>()) {}
QVConfirmGate::~QVConfirmGate() = default;

bool QVConfirmGate::IsBusy() const { return state_->busy; }

void QVConfirmGate::Reset() { state_ = std::make_shared<State>(); }

void QVConfirmGate::Begin(SWindow* button, const Handler& handler, std::function<void()> on_close) {
  if (state_->busy || !handler) return;
  state_->busy = true;
  state_->button = button;
  state_->on_close = std::move(on_close);
  if (button) button->EnableWindow(FALSE, TRUE);
  std::weak_ptr<State> weak = state_;
  handler([weak](bool close) {
    std::shared_ptr<State> st = weak.lock();
    if (!st || !st->busy) return;
    st->busy = false;
    if (st->button) st->button->EnableWindow(TRUE, TRUE);
    if (close && st->on_close) st->on_close();
  });
}

// ---- QVDefaultDialogAttr -------------------------------------------------------------

QVDefaultDialogAttr::QVDefaultDialogAttr() = default;
QVDefaultDialogAttr::~QVDefaultDialogAttr() = default;
QVDefaultDialogAttr::QVDefaultDialogAttr(const QVDefaultDialogAttr& other) = default;
QVDefaultDialogAttr& QVDefaultDialogAttr::operator=(const QVDefaultDialogAttr& other) = default;

void QVDefaultDialogAttr::SetContentIcon(ContentIcon icon) {
  switch (icon) {
    case Icon_Error: content_icon = L"skin_qvstd_dialog_icon_error"; break;
    case Icon_Tips: content_icon = L"skin_qvstd_dialog_icon_tips"; break;
    case Icon_Warn: content_icon = L"skin_qvstd_dialog_icon_warn"; break;
    case Icon_Successed: content_icon = L"skin_qvstd_dialog_icon_successed"; break;
    default: content_icon.Empty();
  }
}

void QVDefaultDialogAttr::SetButtonStyle(ButtonStyle style) {
  std::vector<SStringW> labels;
  if (QVDialogButtonLabels(style, &labels)) button_texts = std::move(labels);
}

void QVDefaultDialogAttr::SetButtonText(const SStringW& first, const SStringW& second, const SStringW& third) {
  button_texts.clear();
  for (const SStringW* t : {&first, &second, &third}) {
    if (!t->IsEmpty()) button_texts.push_back(*t);
  }
}

bool QVDialogButtonLabels(int style, std::vector<SStringW>* labels) {
  static const std::vector<SStringW> kSets[] = {
      {L"@string\\102541"},
      {L"@string\\100210", L"@string\\100263", L"@string\\100209"},
      {L"@string\\102541"},
      {L"@string\\102542", L"@string\\102541"},
      {L"@string\\102542", L"@string\\100263"},
      {L"@string\\100204", L"@string\\100203"},
      {L"@string\\102542", L"@string\\100204", L"@string\\100203"},
  };
  if (style < 0 || style > 6) return false;
  *labels = kSets[style];
  return true;
}

// ---- CQVDefaultDialog ----------------------------------------------------------------

CQVDefaultDialog::CQVDefaultDialog(const QVDefaultDialogAttr& attr) : attr_(attr) {}

CQVDefaultDialog::~CQVDefaultDialog() = default;

int CQVDefaultDialog::MessageBoxW(const QVDefaultDialogAttr& attr, HWND owner) {
  CQVDefaultDialog dlg(attr);
  return dlg.DoModal(owner);
}

HWND CQVDefaultDialog::CreateDialogWnd(HWND owner) {
  if (m_hWnd) return m_hWnd;
  if (!SApplication::getSingletonPtr()) return nullptr;
  pugi::xml_document doc;
  if (!LoadQVDialogTemplate(doc, kQVDefaultDialogXml)) return nullptr;
  SetAttrBeforeCreate(doc);
  if (!InitFromXml(doc)) return nullptr;
  return Create(owner);
}

int CQVDefaultDialog::DoModal(HWND owner) {
  if (!m_hWnd && !CreateDialogWnd(owner)) return -1;
  return SHostDialog::DoModal(owner);
}

void CQVDefaultDialog::SetAttrBeforeCreate(pugi::xml_document& doc) {
  pugi::xml_node root = doc.child("SOUI");
  if (!root) return;
  if (!attr_.title.IsEmpty()) SetXmlAttr(root, "title", attr_.title);
  SetXmlAttr(root, "width", Decimal(GetWndWidth()));
  SetXmlAttr(root, "height", L"176dp");
  SetXmlAttr(root, "resizable", L"0");
  if (!attr_.title_icon.IsEmpty()) SetXmlAttr(root, "icon", attr_.title_icon);
  SetXmlAttr(root, "appWnd", attr_.app_window ? L"1" : L"0");
}

void CQVDefaultDialog::OnInitDialog() {
  UpdateCaption();
  UpdateBottomArea();
  UpdateTipsIcon();
  UpdateUserArea(FindChildByName(L"user_area"));
  QVCentreOverOwner(this);
}

void CQVDefaultDialog::UpdateCaption() {
  if (SWindow* img = FindChildByName(L"title_img")) {
    if (!attr_.title_icon.IsEmpty()) img->SetAttribute(L"skin", attr_.title_icon, FALSE);
  }
  if (SWindow* text = FindChildByName(L"title_text")) {
    // No title leaves the caption blank rather than showing the template's
    // placeholder.
    text->SetWindowText(attr_.title);
    text->SetAttribute(L"align", L"left", FALSE);
  }
  BindExit(FindChildByName(L"btn_close"), kQVDialogResultTitleClose);
}

void CQVDefaultDialog::UpdateTipsIcon() {
  SWindow* icon = FindChildByName(L"tips_icon");
  if (!icon) return;
  if (attr_.content_icon.IsEmpty()) {
    // Out of the layout too, so the text starts where the icon would.
    icon->SetAttribute(L"display", L"0", FALSE);
    icon->SetVisible(FALSE);
  } else {
    icon->SetAttribute(L"skin", attr_.content_icon, FALSE);
    icon->SetVisible(TRUE);
  }
}

void CQVDefaultDialog::UpdateBottomArea() {
  UpdateBottomRButton();
  UpdateBottomLCtrl();
}

void CQVDefaultDialog::UpdateBottomRButton() {
  QVLayoutDialogButtons(this, attr_.button_texts, [this](SWindow* btn, int result) { BindExit(btn, result); });
}

void CQVDefaultDialog::UpdateBottomLCtrl() {
  SWindow* link = FindChildByID(kLinkId);
  SWindow* check = FindChildByID(kCheckId);
  if (link) {
    link->SetVisible(attr_.bottom_left_kind == QVDefaultDialogAttr::BottomLeft_Link);
    if (attr_.bottom_left_kind == QVDefaultDialogAttr::BottomLeft_Link) {
      link->SetWindowText(attr_.bottom_left_text);
      SubscribeOnce(link, EVT_QV_LINK_CLICK, &CQVDefaultDialog::OnLinkEvent);
    }
  }
  if (check) {
    check->SetVisible(attr_.bottom_left_kind == QVDefaultDialogAttr::BottomLeft_Check);
    if (attr_.bottom_left_kind == QVDefaultDialogAttr::BottomLeft_Check) {
      check->SetWindowText(attr_.bottom_left_text);
      SubscribeOnce(check, EVT_STATECHANGED, &CQVDefaultDialog::OnCheckEvent);
    }
  }
}

void CQVDefaultDialog::UpdateUserArea(SWindow* user_area) {
  if (!user_area) return;
  if (auto* title = user_area->FindChildByName2<CQVMultiLink>(L"content_title")) {
    title->Clear();
    title->AppendParagraph(L"<RichEditContent><qv_text qvstyle=\"HR3\">" + attr_.content_title + kParaEnd);
  }
  if (auto* link = user_area->FindChildByName2<SWindow>(L"content_link")) {
    link->SetVisible(!attr_.link_text.IsEmpty());
    link->SetWindowText(attr_.link_text);
    SubscribeOnce(link, EVT_QV_LINK_CLICK, &CQVDefaultDialog::OnLinkEvent);
  }
  if (auto* text = user_area->FindChildByName2<CQVMultiLink>(L"content_text")) {
    // Link runs flow on within the sentence instead of each taking a line.
    text->SetAttribute(L"inlineParagraphs", L"1", FALSE);
    text->Clear();
    const std::vector<SStringW> paras = GetContentTextNode();
    std::vector<SStringW> escaped;
    for (size_t i = 0; i < paras.size(); ++i) {
      if (text->AppendParagraph(paras[i])) continue;
      // Markup inside a run: show it as text instead of losing it.
      if (escaped.empty()) escaped = SplitContentText(attr_.content_text, true);
      if (i < escaped.size()) text->AppendParagraph(escaped[i]);
    }
    SubscribeOnce(text, EVT_RDT_CLICK, &CQVDefaultDialog::OnRichTextClickEvent);
  }
  UpdateWndSize();
}

void CQVDefaultDialog::OnLanguageChangeMessage() {
  UpdateCaption();
  UpdateBottomArea();
  UpdateWndSize();
}

std::vector<SStringW> CQVDefaultDialog::GetContentTextNode() const {
  return SplitContentText(attr_.content_text, false);
}

int CQVDefaultDialog::GetWndWidth() const {
  const int cls = (attr_.width_class >= 0 && attr_.width_class <= 3) ? attr_.width_class : 0;
  return ZPixel(kWidths[cls]);
}

CSize CQVDefaultDialog::GetWndSize() {
  const int w = GetWndWidth();
  const int content_w = w - ZPixel(attr_.content_icon.IsEmpty() ? 74 : 126);
  int ht = 0, hc = 0, lines = 0;
  auto* title = FindChildByName2<CQVMultiLink>(L"content_title");
  auto* text = FindChildByName2<CQVMultiLink>(L"content_text");
  if (title) {
    // An empty heading takes no room (its empty run would measure a line).
    ht = attr_.content_title.IsEmpty() ? 0 : title->GetContentHeight(content_w);
    title->SetAttribute(L"width", Decimal(content_w), FALSE);
    title->SetAttribute(L"height", Decimal(ht), FALSE);
  }
  if (text) {
    hc = text->GetContentHeight(content_w);
    lines = text->GetLineCount(content_w);
    text->SetAttribute(L"width", Decimal(content_w), FALSE);
    text->SetAttribute(L"height", Decimal(hc), FALSE);
  }
  if (lines == 1 && attr_.content_title.IsEmpty() && attr_.link_text.IsEmpty()) {
    text->SetAttribute(L"pos", L"0dp,12dp", FALSE);
    return CSize(w, ZPixel(194));
  }
  int h = ZPixel(167) + hc;
  if (!attr_.content_title.IsEmpty()) h += ht;
  if (attr_.link_text.IsEmpty()) h -= ZPixel(26);
  return CSize(w, std::max(h, ZPixel(194)));
}

void CQVDefaultDialog::UpdateWndSize() {
  const CSize size = GetWndSize();
  if (size.cx <= 0 || size.cy <= 0) return;
  SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CQVDefaultDialog::BindExit(SWindow* wnd, int result) {
  if (!wnd) return;
  exit_codes_[wnd] = result;
  SubscribeOnce(wnd, EVT_CMD, &CQVDefaultDialog::OnExitEvent);
}

void CQVDefaultDialog::SubscribeOnce(SWindow* wnd, int event_id, bool (CQVDefaultDialog::*handler)(EventArgs*)) {
  if (!wnd || !subscribed_.insert({wnd, event_id}).second) return;
  wnd->subscribeEvent(event_id, [this, handler](EventArgs* e) { return (this->*handler)(e); });
}

int CQVDefaultDialog::ResultOf(const SWindow* wnd) const {
  auto it = exit_codes_.find(wnd);
  return it == exit_codes_.end() ? 0 : it->second;
}

int CQVDefaultDialog::PrimaryResult() const { return std::min<int>(static_cast<int>(attr_.button_texts.size()), 3); }

bool CQVDefaultDialog::OnExitEvent(EventArgs* evt) {
  const SWindow* sender = dynamic_cast<const SWindow*>(evt->sender);
  const int code = ResultOf(sender);
  if (code == 0) return false;
  if (code == PrimaryResult() && attr_.on_confirm) {
    const int primary = PrimaryResult();
    confirm_.Begin(FindChildByID(kButtonIdFirst + primary - 1), attr_.on_confirm,
                   [this, primary] { EndDialog(primary); });
    return true;
  }
  EndDialog(code);
  return true;
}

bool CQVDefaultDialog::OnCheckEvent(EventArgs* evt) {
  auto* e = static_cast<EventSwndStateChanged*>(evt);
  if (((e->dwOldState ^ e->dwNewState) & WndState_Check) == 0) return false;
  checked_ = (e->dwNewState & WndState_Check) != 0;
  return true;
}

bool CQVDefaultDialog::OnLinkEvent(EventArgs* evt) {
  return CallLinkHandler(static_cast<EventQVLinkClick*>(evt)->text, evt);
}

bool CQVDefaultDialog::OnRichTextClickEvent(EventArgs* evt) {
  return CallLinkHandler(static_cast<EventRdtClick*>(evt)->linkData, evt);
}

void CQVDefaultDialog::RegisterLinkEvent(const SStringW& key, const ISlotFunctor& handler) {
  link_handlers_[key].reset(handler.Clone());
}

bool CQVDefaultDialog::CallLinkHandler(const SStringW& key, EventArgs* evt) {
  auto it = link_handlers_.find(key);
  if (it == link_handlers_.end() || !it->second) return false;
  (*it->second)(evt);
  return true;
}

void CQVDefaultDialog::OnKeyEvent(UINT msg, UINT code, UINT flags) {
  if (msg == WM_KEYDOWN && code == VK_ESCAPE) {
    if (attr_.esc_closes) EndDialog(attr_.button_texts.empty() ? kQVDialogResultTitleClose : 1);
    return;
  }
  if (msg == WM_KEYDOWN && code == VK_RETURN && attr_.enter_confirms && PrimaryResult() > 0) {
    if (SWindow* primary = FindChildByID(kButtonIdFirst + PrimaryResult() - 1)) {
      if (!primary->IsDisabled(TRUE)) primary->FireCommand();
    }
    return;
  }
  // Past SHostDialog's own Esc handling, which would end with IDCANCEL.
  SHostWnd::OnKeyEvent(msg, code, flags);
}

void CQVDefaultDialog::OnActivate(bool active) { QVShowDialogActivation(this, active); }

}  // namespace QVStandardCtrls
