#include "soui/hostdialog.h"

#include "soui/slog.h"
#include "soui/sapp.h"

namespace SOUI {

int SHostDialog::DoModal(HWND owner) {
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || running_) return -1;
  if (!m_hWnd && !Create(owner)) return -1;
  SetOwner(owner);
  ended_ = false;
  result_ = 0;
  const bool owner_was_enabled = IsWindow(owner) && ::SOUI::IsWindowEnabled(owner);
  if (owner_was_enabled) ::SOUI::EnableWindow(owner, FALSE);
  ShowWindow(SW_SHOW);
  running_ = true;
  if (!app->RunModalLoop([this] { return ended_; })) {
    SLOG(kLogError, "SOUI") << L"DoModal: nothing left that could end the dialog";
    result_ = -1;
  }
  running_ = false;
  ShowWindow(SW_HIDE);
  if (owner_was_enabled && IsWindow(owner)) ::SOUI::EnableWindow(owner, TRUE);
  DestroyWindow();
  return result_;
}

void SHostDialog::EndDialog(int code) {
  if (ended_) return;
  ended_ = true;
  result_ = code;
  ShowWindow(SW_HIDE);
}

BOOL SHostDialog::_HandleEvent(EventArgs* evt) {
  if (evt->GetID() == EVT_CMD && (evt->idFrom == IDOK || evt->idFrom == IDCANCEL)) {
    EndDialog(evt->idFrom);
    return TRUE;
  }
  return SHostWnd::_HandleEvent(evt);
}

void SHostDialog::OnKeyEvent(UINT msg, UINT code, UINT flags) {
  if (msg == WM_KEYDOWN && code == VK_ESCAPE) {
    EndDialog(IDCANCEL);
    return;
  }
  SHostWnd::OnKeyEvent(msg, code, flags);
}

}  // namespace SOUI
