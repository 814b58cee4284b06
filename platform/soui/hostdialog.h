// SHostDialog: a host window run modally.
//
// DoModal disables the owner, shows the dialog and runs a nested loop until
// EndDialog; then it hides the dialog, re-enables the owner, destroys the
// native window and returns the code. A command from a child with id IDOK or
// IDCANCEL ends the dialog with that id; Esc acts as IDCANCEL.
//
// The nested loop is the application's: on a manual clock it moves time to
// the next due timer (so tests script input with clock timers), and ends the
// dialog with -1, logged, when nothing is left that could ever end it.
#pragma once

#include "soui/hostwnd.h"

namespace SOUI {

class SHostDialog : public SHostWnd {
 public:
  explicit SHostDialog(const wchar_t* res_id = nullptr) : SHostWnd(res_id) {}

  virtual int DoModal(HWND owner = nullptr);
  // Only the first call counts.
  virtual void EndDialog(int code);
  bool IsModalRunning() const { return running_; }
  int GetResult() const { return result_; }

  BOOL _HandleEvent(EventArgs* evt) override;
  void OnKeyEvent(UINT msg, UINT code, UINT flags = 0) override;
  // Closing a modal dialog's window is a cancel, as in Win32.
  void OnClose() override { EndDialog(IDCANCEL); }

 private:
  bool running_ = false;
  bool ended_ = false;
  int result_ = 0;
};

}  // namespace SOUI
