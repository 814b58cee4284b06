// The message box: QVDefaultDialogAttr describes it, CQVDefaultDialog shows
// it, CQVDefaultDialog::MessageBoxW runs it modally and returns the result.
//
// Bottom-right buttons come from the record's labels: label 0 stands on the
// far right and closes with 1, label 1 left of it with 2, label 2 with 3;
// the leftmost visible button (the last label) is the primary one. The
// title-bar close button returns 8. So every label set lists its cancel-like
// label first and its affirmative one last ("OKCANCEL": "OK" left and
// primary returning 2, "Cancel" right returning 1) - kept on purpose.
//
// Links: a run "<ln>key</ln>" in the content text, the link under the
// content and the bottom-left link all call the handler registered under
// their key (the run, or the link's text) with RegisterLinkEvent; without
// one nothing happens and the dialog stays open.
//
// Options beyond the classic box (defaults keep the classic behaviour):
//   esc_closes      Esc ends with the rightmost (cancel-like) button's
//                   result, or 8 without buttons (default on)
//   enter_confirms  Enter presses the primary button (default off: a stray
//                   Enter must not confirm an order)
//   on_confirm      the primary button goes busy instead of closing: it
//                   swallows further clicks until the host calls the finish
//                   callback it was given (true closes with the primary
//                   result, false makes the button usable again). The finish
//                   callback is safe to call after the dialog has gone.
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <map>
#include <set>
#include <utility>
#include <memory>
#include <vector>

#include "framework/ctrl_attr_base.h"
#include "soui/events.h"
#include "soui/hostdialog.h"

namespace SOUI {
class QVRichText;
}

namespace QVStandardCtrls {

class CQVDefaultDialog;

struct QVSTDCTRLS_API QVDefaultDialogAttr {
  enum ContentIcon { Icon_Error = 1, Icon_Tips = 2, Icon_Warn = 3, Icon_Successed = 4 };
  enum ButtonStyle {
    Btn_Default = 0,
    Btn_AbortRetry = 1,
    Btn_Ok = 2,
    Btn_OkCancel = 3,
    Btn_RetryCancel = 4,
    Btn_YesNo = 5,
    Btn_YesNoCancel = 6,
  };
  enum BottomLeftKind { BottomLeft_None = 0, BottomLeft_Link = 1, BottomLeft_Check = 2 };

  QVDefaultDialogAttr();
  ~QVDefaultDialogAttr();
  QVDefaultDialogAttr(const QVDefaultDialogAttr& other);
  QVDefaultDialogAttr& operator=(const QVDefaultDialogAttr& other);

  // Field 6 from the icon table; any other value clears it.
  void SetContentIcon(ContentIcon icon);
  // Values 0-6 replace the labels with the set's; others change nothing.
  void SetButtonStyle(ButtonStyle style);
  // Replaces the labels with the non-empty ones among the three, in order.
  void SetButtonText(const SOUI::SStringW& first, const SOUI::SStringW& second, const SOUI::SStringW& third);

  SOUI::SStringW title;           // 1: window title and caption text
  SOUI::SStringW title_icon;      // 2: caption logo and window icon (skin)
  SOUI::SStringW content_title;   // 3: bold heading above the content
  SOUI::SStringW content_text;    // 4: the message; "<ln>...</ln>" runs are links
  SOUI::SStringW link_text;       // 5: link under the content; none when empty
  SOUI::SStringW content_icon;    // 6: large icon left of the content (skin)
  int bottom_left_kind = 0;       // 7: BottomLeftKind
  SOUI::SStringW bottom_left_text;  // 8
  int width_class = 0;            // 9: 0-3 -> 313/373/433/493 px at 100 %; others as 0
  bool app_window = true;         // 10: the window's "appWnd"
  std::vector<SOUI::SStringW> button_texts;  // 11: at most three are used

  // ---- options (see the file comment) ----
  bool esc_closes = true;
  bool enter_confirms = false;
  std::function<void(std::function<void(bool close)> finish)> on_confirm;
};

// The label list of a ButtonStyle value (also the custom dialog's
// "btnStyle" keywords); false for values above 6.
QVSTDCTRLS_API bool QVDialogButtonLabels(int style, std::vector<SOUI::SStringW>* labels);

// Result codes of the message box.
enum : int { kQVDialogResultTitleClose = 8 };

// The bottom-right buttons of both dialogs (ids 100010001-100010003 from the
// right): label i on button i, shown for i < n = min(labels, 3), the last
// shown one "MB2_P" and the others "MB2_D", at least ZPixel(74) wide; bind is
// called for every button found with its result i + 1. Missing buttons are
// skipped.
QVSTDCTRLS_API void QVLayoutDialogButtons(SOUI::SHostWnd* host, const std::vector<SOUI::SStringW>& labels,
                                          const std::function<void(SOUI::SWindow*, int)>& bind);

// Centres host over its owner's window, or in the work area without one.
QVSTDCTRLS_API void QVCentreOverOwner(SOUI::SHostWnd* host);

// The dialogs' frame follows activation: "skin_qvstd_dialog_bg_selected"
// while active, "skin_qvstd_dialog_bg_normal" otherwise.
QVSTDCTRLS_API void QVShowDialogActivation(SOUI::SHostWnd* host, bool active);

// A confirm button that goes busy: Begin disables the button and hands the
// host a finish callback; finish(false) makes the button usable again,
// finish(true) also runs on_close. Further Begins while busy are swallowed.
// The finish callback does nothing once the gate is gone.
class QVSTDCTRLS_API QVConfirmGate {
 public:
  using Handler = std::function<void(std::function<void(bool close)> finish)>;
  QVConfirmGate();
  ~QVConfirmGate();
  QVConfirmGate(const QVConfirmGate&) = delete;
  QVConfirmGate& operator=(const QVConfirmGate&) = delete;

  void Begin(SOUI::SWindow* button, const Handler& handler, std::function<void()> on_close);
  bool IsBusy() const;
  // Forgets a pending confirmation (the buttons are going away); its finish
  // callback then does nothing.
  void Reset();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

class QVSTDCTRLS_API CQVDefaultDialog : public SOUI::SHostDialog {
 public:
  explicit CQVDefaultDialog(const QVDefaultDialogAttr& attr);
  ~CQVDefaultDialog() override;

  // Shows a message box over owner (may be null) and returns the result:
  // 1-3 for the buttons from the right, 8 for the title-bar close, the
  // toolkit's code when the box closed otherwise (-1 when it could not run).
  static int MessageBoxW(const QVDefaultDialogAttr& attr, HWND owner);

  // Builds the window from the template without showing it; DoModal does
  // it when needed. Null when the window could not be made.
  HWND CreateDialogWnd(HWND owner);
  int DoModal(HWND owner = nullptr) override;

  // The bottom-left check box's state as the user last left it.
  bool IsChecked() const { return checked_; }
  // A later registration under the same key replaces the earlier one.
  void RegisterLinkEvent(const SOUI::SStringW& key, const SOUI::ISlotFunctor& handler);

  const QVDefaultDialogAttr& GetAttr() const { return attr_; }
  // The result a bound control closes with; 0 for other windows.
  int ResultOf(const SOUI::SWindow* wnd) const;
  bool IsConfirmBusy() const { return confirm_.IsBusy(); }

  void OnKeyEvent(UINT msg, UINT code, UINT flags = 0) override;

 protected:
  virtual void SetAttrBeforeCreate(pugi::xml_document& doc);
  virtual void UpdateCaption();
  virtual void UpdateTipsIcon();
  virtual void UpdateBottomArea();
  virtual void UpdateBottomRButton();
  virtual void UpdateBottomLCtrl();
  virtual void UpdateUserArea(SOUI::SWindow* user_area);
  // A language switch: the labels are re-resolved and the size refitted.
  virtual void OnLanguageChangeMessage();

  virtual bool OnExitEvent(SOUI::EventArgs* evt);
  virtual bool OnCheckEvent(SOUI::EventArgs* evt);
  virtual bool OnLinkEvent(SOUI::EventArgs* evt);
  virtual bool OnRichTextClickEvent(SOUI::EventArgs* evt);

  int GetWndWidth() const;
  SOUI::CSize GetWndSize();
  void UpdateWndSize();
  std::vector<SOUI::SStringW> GetContentTextNode() const;

  void OnInitDialog() override;
  void OnHostDestroy() override { confirm_.Reset(); }
  // The root's skin follows activation (normal / selected).
  void OnActivate(bool active) override;

  // Binds a control's command event to a result.
  void BindExit(SOUI::SWindow* wnd, int result);
  // Subscribes once per window and event, however often an update runs.
  void SubscribeOnce(SOUI::SWindow* wnd, int event_id, bool (CQVDefaultDialog::*handler)(SOUI::EventArgs*));
  // Calls the handler registered under key; false without one.
  bool CallLinkHandler(const SOUI::SStringW& key, SOUI::EventArgs* evt);
  // The primary button's result (the number of shown buttons); 0 without.
  int PrimaryResult() const;

  QVDefaultDialogAttr attr_;
  std::map<const SOUI::SWindow*, int> exit_codes_;
  std::map<SOUI::SStringW, std::unique_ptr<SOUI::ISlotFunctor>> link_handlers_;
  bool checked_ = false;

 private:
  std::set<std::pair<const SOUI::SWindow*, int>> subscribed_;
  QVConfirmGate confirm_;
};

}  // namespace QVStandardCtrls
