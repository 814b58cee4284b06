// SDropDownWnd: the host window of a drop list or menu, owned by the host of
// the window that opened it.
//
// Life: created with new (the application owns it from then on), Create()
// shows it without activation, EndDropDown() closes it once: the native
// window goes at once, the object after the input being handled returns
// (or with the application). The opener implements ISDropDownOwner and must
// drop its pointer in OnDestroyDropDown.
//
// It closes (EndDropDown(IDCANCEL)) on:
//   - a press in any other host of the application, the opener's included.
//     The press then goes on to where it landed ("never lose a click"),
//     except on the opener window itself, where it is swallowed with its
//     release, so that a second click on a combo's button just closes it;
//   - Esc;
//   - the owner host hidden, moved, destroyed or losing activation to a
//     window that is not this drop-down (another application's included);
//   - the opener leaving its tree (removed or destroyed).
// While open, every key of the application comes here (to the focused
// window of the drop-down); the owner keeps its focus state.
#pragma once

#include "soui/hostwnd.h"

namespace SOUI {

class SDropDownWnd;

// The window that opens a drop-down.
class ISDropDownOwner {
 public:
  virtual ~ISDropDownOwner() = default;
  // The opener: a press on it closes the drop-down without reaching it.
  virtual SWindow* GetDropDownOwner() = 0;
  // The drop-down is created (before it shows): fill its root.
  virtual void OnCreateDropDown(SDropDownWnd* dropdown) = 0;
  // The drop-down closed; GetExitCode() says how. Forget the pointer.
  virtual void OnDestroyDropDown(SDropDownWnd* dropdown) = 0;
};

class SDropDownWnd : public SHostWnd, public IHostInputHook {
 public:
  explicit SDropDownWnd(ISDropDownOwner* owner);
  ~SDropDownWnd() override;

  // Creates the popup at rc (screen coordinates), owned by the opener's
  // host, builds the root from layout_xml (a "SOUI" element; null: an empty
  // root), lets the owner fill it and shows it without activation. FALSE
  // (and closed) when the opener is not in a live host.
  BOOL Create(const CRect& rc, const wchar_t* layout_xml = nullptr);
  // Closes once; later calls do nothing. code: IDOK, IDCANCEL, ...
  void EndDropDown(UINT code = IDCANCEL);
  UINT GetExitCode() const { return exit_code_; }
  bool IsClosed() const { return closed_; }
  bool IsPopupWindow() const override { return true; }
  void OnKeyEvent(UINT msg, UINT code, UINT flags = 0) override;

  // ---- IHostInputHook ----
  bool OnHostPress(SHostWnd* host, UINT msg, CPoint pt) override;
  bool OnHostKey(SHostWnd* host, UINT msg, UINT code, UINT flags) override;
  void OnHostChanged(SHostWnd* host) override;
  void OnActiveHostChanged(SHostWnd* active) override;
  void OnSwndRemoved(SHostWnd* host, SWindow* wnd) override;

 private:
  // This host or one it owns (a sub-menu).
  bool IsMineOrOwned(const SHostWnd* host) const;
  SHostWnd* OwnerHost() const;

  ISDropDownOwner* dd_owner_;
  UINT exit_code_ = 0;
  bool closed_ = false;
  bool deleting_ = false;
};

}  // namespace SOUI
