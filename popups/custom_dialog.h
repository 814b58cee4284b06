// CQVCustomDialog (its tag is its class name, "CQVCustomDialog"): a dialog
// frame with a title bar, a user area from a "LAYOUT" resource and a bottom
// bar, configured by attributes. Modal (DoModal) or modeless
// (CreateDialogWnd + ShowWindow); only the modal flag tells them apart.
//
// Creation: the window template (templates/dialog_templates.h) is parsed;
// the layout resource's "SOUI" attributes are copied onto the template's
// root and also applied as dialog attributes (an attribute the host set
// before creation wins), and the layout's content (its <root>'s children, or
// the SOUI element's when there is no root) becomes "user_area". A missing
// resource logs one line and leaves the user area empty.
//
// Attributes (names without regard to case; after creation the affected
// area is rebuilt at once):
//   icon                caption logo (skin)
//   title               caption title and window title
//   BottomLeftStyle     NULL TEXT ICONTEXT LINK ICONLINK CHECK BUTTON (0-6);
//                       another word leaves the kind
//   ButtomLeftCtrlText  text of the bottom-left control
//   ButtomLeftCtrlIcon  its icon (ICONTEXT, ICONLINK)
//   MinBtn, MaxBtn      "0"/"false" (any case) hide; anything else shows.
//                       MaxBtn arriving after creation with minimise hidden
//                       also restores the window
//   ExBtnLeft/Right     skins of two extra title-bar buttons (hidden unset)
//   ButtomBtn           up to three labels joined by ";" (more are cut)
//   btnStyle            ABORTRETRY OK OKCANCEL RETRYCANCEL YESNO YESNOCANCEL
//                       NULL: the message box's label sets; others ignored
// The spellings "Buttom..." are the published ones and stay as they are.
//
// Title bar: close ends a modal run with 8 and destroys a modeless window
// (after the click has been handled); maximise fills the work area and shows
// restore; a caption double click toggles them only while the maximise
// button is shown. Minimise hides a modeless window (the backends have no
// minimised state) and does nothing while modal, where a hidden dialog would
// leave its disabled owner without a way back.
//
// Bottom buttons close a modal run with 1-3 from the right (as the message
// box's). Options: esc_closes (default on: Esc acts as the close button),
// enter_confirms (default off), and a busy confirm handler for the primary
// button (see QVConfirmGate).
#pragma once

#include <pugixml.hpp>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "framework/ctrl_attr_base.h"
#include "popups/dialogs.h"
#include "soui/hostdialog.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVCustomDialog : public SOUI::SHostDialog {
 public:
  enum BottomLeftKind { BL_NULL = 0, BL_TEXT, BL_ICONTEXT, BL_LINK, BL_ICONLINK, BL_CHECK, BL_BUTTON };

  static const wchar_t* GetClassName() { return L"CQVCustomDialog"; }
  static const wchar_t* GetClassNameW() { return GetClassName(); }
  static const wchar_t* BaseClassName() { return L"hostdialog"; }
  // Hosts are created by their owner, never by the window factory.
  static int GetClassType() { return 1; }
  virtual BOOL IsClass(const wchar_t* name) const;

  // layout: the name of the "LAYOUT" resource that becomes the user area
  // (may be null or missing: an empty user area).
  explicit CQVCustomDialog(const wchar_t* layout);
  ~CQVCustomDialog() override;

  // Builds the window without showing it (modeless use: ShowWindow after).
  HWND CreateDialogWnd(HWND owner);
  int DoModal(HWND owner = nullptr) override;
  bool IsModal() const { return modal_; }

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading = FALSE);

  int GetBottomLeftKind() const { return bottom_left_kind_; }
  const std::vector<SOUI::SStringW>& GetButtonLabels() const { return labels_; }
  bool IsMaximized() const { return maximized_; }
  bool IsBottomChecked() const;
  int GetZoom() const { return zoom_; }

  // ---- options ----
  void SetEscCloses(bool on) { esc_closes_ = on; }
  void SetEnterConfirms(bool on) { enter_confirms_ = on; }
  void SetConfirmHandler(QVConfirmGate::Handler handler) { on_confirm_ = std::move(handler); }
  bool IsConfirmBusy() const { return confirm_.IsBusy(); }

  BOOL _HandleEvent(SOUI::EventArgs* evt) override;
  void OnKeyEvent(UINT msg, UINT code, UINT flags = 0) override;
  void OnActivate(bool active) override;
  // The window manager's close acts as the close button.
  void OnClose() override;

 protected:
  virtual void OnClickBtnClose();
  virtual void OnClickBtnMinimize();
  virtual void OnClickBtnMaximize();
  virtual void OnClickBtnRestore();
  // After creation, with the filled "user_area" (null when the template has none).
  virtual void UpdateUserArea(SOUI::SWindow* user_area);
  virtual void OnLanguageChangeMessage();
  void OnInitDialog() override;
  void OnHostDestroy() override;

  void UpdateCaption();
  void UpdateBottomLeft();
  void UpdateBottomButtons();

 private:
  bool LoadUserLayout(pugi::xml_document& tpl);
  void EndWith(int code);

  SOUI::SStringW layout_;
  SOUI::SStringW title_;
  SOUI::SStringW icon_;
  int bottom_left_kind_ = BL_NULL;
  SOUI::SStringW bottom_left_text_;
  SOUI::SStringW bottom_left_icon_;
  bool min_btn_ = true;
  bool max_btn_ = true;
  SOUI::SStringW ex_left_;
  SOUI::SStringW ex_right_;
  std::vector<SOUI::SStringW> labels_;
  bool modal_ = false;
  int zoom_ = 100;
  bool maximized_ = false;
  SOUI::CRect normal_rect_;
  bool esc_closes_ = true;
  bool enter_confirms_ = false;
  QVConfirmGate::Handler on_confirm_;
  QVConfirmGate confirm_;
  // Names the host set before creation; the layout's root does not override them.
  std::set<SOUI::SStringW, SOUI::SStringNoCaseLess> host_set_;
  bool applying_layout_ = false;
  // Lets a deferred destroy find out that the dialog went meanwhile.
  std::shared_ptr<CQVCustomDialog*> alive_;
};

// Host dialogs by tag, as the window factory keeps controls by tag (the
// window factory makes windows inside a host, never hosts).
// RegisterQVStandardCtrls adds "CQVCustomDialog"; a host may add its own.
class QVSTDCTRLS_API QVDialogClasses {
 public:
  using Creator = std::unique_ptr<SOUI::SHostDialog> (*)(const wchar_t* layout);
  static void Register(const wchar_t* tag, Creator creator);
  // Null for an unknown tag (matched exactly).
  static std::unique_ptr<SOUI::SHostDialog> Create(const wchar_t* tag, const wchar_t* layout);
  static bool IsRegistered(const wchar_t* tag);

 private:
  static std::map<std::wstring, Creator>& Table();
};

}  // namespace QVStandardCtrls
