#include "popups/custom_dialog.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "framework/attr_dispatch.h"
#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"
#include "soui/sapp.h"
#include "templates/dialog_templates.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

enum : int {
  kIdClose = 100000000,
  kIdRestore = 100000001,
  kIdMaximize = 100000002,
  kIdMinimize = 100000003,
  kIdExRight = 100000004,
  kIdExLeft = 100000005,
  kIdTitle = 100000006,
  kIdLogo = 100000007,
  kIdBottomBar = 100020000,
  kIdButtonFirst = 100010001,
};

// Bottom-left control by kind (index = BottomLeftKind; 0 has none).
constexpr int kBottomLeftIds[] = {0, 100020001, 100020005, 100020003, 100020006, 100020002, 100020004};
const wchar_t* const kBottomLeftWords[] = {L"NULL", L"TEXT", L"ICONTEXT", L"LINK", L"ICONLINK", L"CHECK", L"BUTTON"};
constexpr int kMaxInsetDp = 13;

void SetXmlAttr(pugi::xml_node node, const char* name, const char* value) {
  pugi::xml_attribute a = node.attribute(name);
  if (!a) a = node.append_attribute(name);
  a.set_value(value);
}

}  // namespace

CQVCustomDialog::CQVCustomDialog(const wchar_t* layout)
    : layout_(layout ? layout : L""), alive_(std::make_shared<CQVCustomDialog*>(this)) {
  zoom_ = static_cast<int>(std::lround(GetAppZoomX() * 100));
}

CQVCustomDialog::~CQVCustomDialog() { alive_.reset(); }

BOOL CQVCustomDialog::IsClass(const wchar_t* name) const {
  return name && (SStringW(name) == GetClassName() || SStringW(name) == BaseClassName());
}

HWND CQVCustomDialog::CreateDialogWnd(HWND owner) {
  if (m_hWnd) return m_hWnd;
  if (!SApplication::getSingletonPtr()) return nullptr;
  pugi::xml_document doc;
  if (!LoadQVDialogTemplate(doc, kQVCustomDialogXml)) return nullptr;
  LoadUserLayout(doc);
  if (!InitFromXml(doc)) return nullptr;
  return Create(owner);
}

int CQVCustomDialog::DoModal(HWND owner) {
  if (!m_hWnd && !CreateDialogWnd(owner)) return -1;
  modal_ = true;
  const int result = SHostDialog::DoModal(owner);
  modal_ = false;
  return result;
}

bool CQVCustomDialog::LoadUserLayout(pugi::xml_document& tpl) {
  SApplication& app = SApplication::getSingleton();
  pugi::xml_document udoc;
  const bool typed = layout_.Find(L':') >= 0;
  if (layout_.IsEmpty() || !(typed ? app.LoadXmlDocment(udoc, layout_) : app.LoadXmlDocment(udoc, layout_, L"LAYOUT"))) {
    QVLOG(QV_LOG_ERROR, "COMMON") << L"CQVCustomDialog: no layout resource LAYOUT:" << layout_
                                  << L"; the user area stays empty";
    return false;
  }
  pugi::xml_node usoui = XmlChildNoCase(udoc, L"SOUI");
  if (!usoui) {
    QVLOG(QV_LOG_ERROR, "COMMON") << L"CQVCustomDialog: layout " << layout_
                                  << L" has no SOUI element; the user area stays empty";
    return false;
  }
  pugi::xml_node troot = tpl.child("SOUI");
  applying_layout_ = true;
  for (pugi::xml_attribute a = usoui.first_attribute(); a; a = a.next_attribute()) {
    SetXmlAttr(troot, a.name(), a.value());
    const SStringW name = XmlName(a);
    if (host_set_.count(name) == 0) SetAttribute(name, XmlValue(a), TRUE);
  }
  applying_layout_ = false;
  pugi::xml_node area = tpl.find_node([](pugi::xml_node n) {
    return std::strcmp(n.attribute("name").as_string(), "user_area") == 0;
  });
  if (!area) return false;
  pugi::xml_node uroot = XmlChildNoCase(usoui, L"root");
  const pugi::xml_node src = uroot ? uroot : usoui;
  for (pugi::xml_node c = src.first_child(); c; c = c.next_sibling()) area.append_copy(c);
  return true;
}

HRESULT CQVCustomDialog::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  enum Area { kCaption, kBottomLeft, kButtons, kNone };
  Area area = kNone;
  if (name.CompareNoCase(L"icon") == 0) {
    icon_ = value;
    area = kCaption;
  } else if (name.CompareNoCase(L"title") == 0) {
    title_ = value;
    area = kCaption;
  } else if (name.CompareNoCase(L"BottomLeftStyle") == 0) {
    for (int k = 0; k <= BL_BUTTON; ++k) {
      if (value == kBottomLeftWords[k]) bottom_left_kind_ = k;
    }
    area = kBottomLeft;
  } else if (name.CompareNoCase(L"ButtomLeftCtrlText") == 0) {
    bottom_left_text_ = value;
    area = kBottomLeft;
  } else if (name.CompareNoCase(L"ButtomLeftCtrlIcon") == 0) {
    bottom_left_icon_ = value;
    area = kBottomLeft;
  } else if (name.CompareNoCase(L"MinBtn") == 0) {
    min_btn_ = QVParseBool(value);
    area = kCaption;
  } else if (name.CompareNoCase(L"MaxBtn") == 0) {
    max_btn_ = QVParseBool(value);
    if (m_hWnd && !min_btn_ && maximized_) OnClickBtnRestore();
    area = kCaption;
  } else if (name.CompareNoCase(L"ExBtnLeft") == 0) {
    ex_left_ = value;
    area = kCaption;
  } else if (name.CompareNoCase(L"ExBtnRight") == 0) {
    ex_right_ = value;
    area = kCaption;
  } else if (name.CompareNoCase(L"ButtomBtn") == 0) {
    labels_.clear();
    for (const SStringW& piece : SplitString(value, L';')) {
      if (labels_.size() == 3) break;
      if (!piece.IsEmpty()) labels_.push_back(piece);
    }
    area = kButtons;
  } else if (name.CompareNoCase(L"btnStyle") == 0) {
    static const wchar_t* const kWords[] = {nullptr, L"ABORTRETRY", L"OK", L"OKCANCEL", L"RETRYCANCEL",
                                            L"YESNO", L"YESNOCANCEL"};
    if (value == L"NULL") {
      labels_.clear();
      area = kButtons;
    }
    for (int s = 1; s <= 6; ++s) {
      if (value == kWords[s]) {
        QVDialogButtonLabels(s, &labels_);
        area = kButtons;
      }
    }
    if (area == kNone) return S_OK;  // another word does nothing
  } else {
    return E_FAIL;
  }
  if (!loading && !applying_layout_ && !m_hWnd) host_set_.insert(name);
  if (m_hWnd) {
    if (area == kCaption) UpdateCaption();
    if (area == kBottomLeft) UpdateBottomLeft();
    if (area == kButtons) UpdateBottomButtons();
  }
  return S_OK;
}

void CQVCustomDialog::OnInitDialog() {
  UpdateCaption();
  UpdateBottomButtons();
  UpdateBottomLeft();
  UpdateUserArea(FindChildByName(L"user_area"));
  QVCentreOverOwner(this);
}

void CQVCustomDialog::OnHostDestroy() { confirm_.Reset(); }

void CQVCustomDialog::UpdateUserArea(SWindow* user_area) { (void)user_area; }

void CQVCustomDialog::OnLanguageChangeMessage() {
  UpdateCaption();
  UpdateBottomButtons();
  UpdateBottomLeft();
}

void CQVCustomDialog::UpdateCaption() {
  if (!title_.IsEmpty()) SetWindowText(title_);
  if (SWindow* logo = FindChildByID(kIdLogo)) {
    if (!icon_.IsEmpty()) logo->SetAttribute(L"skin", icon_, FALSE);
  }
  if (SWindow* title = FindChildByID(kIdTitle)) title->SetWindowText(title_);
  if (SWindow* min = FindChildByID(kIdMinimize)) min->SetVisible(min_btn_);
  if (SWindow* max = FindChildByID(kIdMaximize)) max->SetVisible(max_btn_ && !maximized_);
  if (SWindow* restore = FindChildByID(kIdRestore)) restore->SetVisible(max_btn_ && maximized_);
  const std::pair<int, const SStringW*> extras[] = {{kIdExLeft, &ex_left_}, {kIdExRight, &ex_right_}};
  for (const auto& e : extras) {
    SWindow* btn = FindChildByID(e.first);
    if (!btn) continue;
    if (!e.second->IsEmpty()) btn->SetAttribute(L"skin", *e.second, FALSE);
    btn->SetVisible(!e.second->IsEmpty());
  }
}

void CQVCustomDialog::UpdateBottomLeft() {
  for (int k = BL_TEXT; k <= BL_BUTTON; ++k) {
    SWindow* ctrl = FindChildByID(kBottomLeftIds[k]);
    if (!ctrl) continue;
    const bool shown = k == bottom_left_kind_;
    ctrl->SetVisible(shown);
    if (!shown) continue;
    ctrl->SetWindowText(bottom_left_text_);
    if ((k == BL_ICONTEXT || k == BL_ICONLINK) && !bottom_left_icon_.IsEmpty()) {
      ctrl->SetAttribute(L"button_icon", bottom_left_icon_, FALSE);
    }
  }
  if (SWindow* bar = FindChildByID(kIdBottomBar)) bar->SetVisible(bottom_left_kind_ != BL_NULL || !labels_.empty());
}

void CQVCustomDialog::UpdateBottomButtons() {
  QVLayoutDialogButtons(this, labels_, nullptr);
  if (SWindow* bar = FindChildByID(kIdBottomBar)) bar->SetVisible(bottom_left_kind_ != BL_NULL || !labels_.empty());
}

bool CQVCustomDialog::IsBottomChecked() const {
  SWindow* check = const_cast<CQVCustomDialog*>(this)->FindChildByID(kBottomLeftIds[BL_CHECK]);
  return check && check->IsChecked();
}

BOOL CQVCustomDialog::_HandleEvent(EventArgs* evt) {
  if (evt->GetID() == EVT_CAPTION_DBLCLK) {
    if (max_btn_) maximized_ ? OnClickBtnRestore() : OnClickBtnMaximize();
    return TRUE;
  }
  if (evt->GetID() == EVT_CMD) {
    switch (evt->idFrom) {
      case kIdClose: OnClickBtnClose(); return TRUE;
      case kIdMinimize: OnClickBtnMinimize(); return TRUE;
      case kIdMaximize: OnClickBtnMaximize(); return TRUE;
      case kIdRestore: OnClickBtnRestore(); return TRUE;
      default: break;
    }
    const int n = std::min<int>(static_cast<int>(labels_.size()), 3);
    const int result = evt->idFrom - kIdButtonFirst + 1;
    if (result >= 1 && result <= n) {
      if (result == n && on_confirm_) {
        confirm_.Begin(FindChildByID(evt->idFrom), on_confirm_, [this, result] { EndWith(result); });
      } else {
        EndWith(result);
      }
      return TRUE;
    }
  }
  return SHostWnd::_HandleEvent(evt);
}

void CQVCustomDialog::OnKeyEvent(UINT msg, UINT code, UINT flags) {
  if (msg == WM_KEYDOWN && code == VK_ESCAPE) {
    if (esc_closes_) OnClickBtnClose();
    return;
  }
  const int n = std::min<int>(static_cast<int>(labels_.size()), 3);
  if (msg == WM_KEYDOWN && code == VK_RETURN && enter_confirms_ && n > 0) {
    SWindow* primary = FindChildByID(kIdButtonFirst + n - 1);
    if (primary && !primary->IsDisabled(TRUE)) primary->FireCommand();
    return;
  }
  SHostWnd::OnKeyEvent(msg, code, flags);
}

void CQVCustomDialog::OnActivate(bool active) { QVShowDialogActivation(this, active); }

void CQVCustomDialog::EndWith(int code) {
  if (modal_) EndDialog(code);
}

void CQVCustomDialog::OnClickBtnClose() {
  if (modal_) {
    EndDialog(kQVDialogResultTitleClose);
    return;
  }
  // Not from inside the click that is still running in this window's tree.
  std::weak_ptr<CQVCustomDialog*> weak = alive_;
  SApplication::getSingleton().GetClock().SetTimer(0, [weak] {
    if (std::shared_ptr<CQVCustomDialog*> self = weak.lock()) (*self)->DestroyWindow();
  }, false);
}

void CQVCustomDialog::OnClickBtnMinimize() {
  if (!modal_) ShowWindow(SW_HIDE);
}

void CQVCustomDialog::OnClickBtnMaximize() {
  if (maximized_ || !max_btn_) return;
  normal_rect_ = GetWindowRect();
  CRect area = SApplication::getSingleton().GetWorkArea(this);
  // The shadow band lies outside the screen while maximised.
  const int inset = ZPixel(kMaxInsetDp);
  area.InflateRect(inset, inset);
  maximized_ = true;
  SetWindowPos(nullptr, area.left, area.top, area.Width(), area.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
  UpdateCaption();
}

void CQVCustomDialog::OnClickBtnRestore() {
  if (!maximized_) return;
  maximized_ = false;
  SetWindowPos(nullptr, normal_rect_.left, normal_rect_.top, normal_rect_.Width(), normal_rect_.Height(),
               SWP_NOZORDER | SWP_NOACTIVATE);
  UpdateCaption();
}

void CQVCustomDialog::OnClose() { OnClickBtnClose(); }

// ---- QVDialogClasses -----------------------------------------------------------------

std::map<std::wstring, QVDialogClasses::Creator>& QVDialogClasses::Table() {
  static std::map<std::wstring, Creator> table;
  return table;
}

void QVDialogClasses::Register(const wchar_t* tag, Creator creator) {
  if (tag && creator) Table()[tag] = creator;
}

bool QVDialogClasses::IsRegistered(const wchar_t* tag) { return tag && Table().count(tag) != 0; }

std::unique_ptr<SHostDialog> QVDialogClasses::Create(const wchar_t* tag, const wchar_t* layout) {
  if (!tag) return nullptr;
  auto it = Table().find(tag);
  return it == Table().end() ? nullptr : it->second(layout);
}

}  // namespace QVStandardCtrls
