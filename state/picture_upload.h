// QVPictureUploadCtrl ("qv_pictureuploadctrl"): a picture slot of an
// account-opening form (the front of an ID card, a signature, a photo).
//
//   empty      a dashed frame (accent while hovered), a plus and the hint;
//              a click raises EventQVPictureUploadChoose (29103). The host
//              answers with a file: it fills the event's `file` (the upload
//              then starts, as BeginUpload) or calls a method later.
//   uploading  the picture under a scrim, "NN%" and a progress line
//   done       the picture, fitted inside the slot, and a remove button at
//              its top-right corner (click: empty again, and
//              EventQVPictureUploadRemove, 29104)
//   failed     a frame in the error colour, the fail text and a retry link
//              raising EventQVPictureUploadRetry (29102) with the file
//
// The host drives the upload:
//   BeginUpload(file)      uploading at 0 %
//   SetUploadProgress(n)   0-100, clamped
//   FinishUpload()         done
//   FailUpload()           failed
//   SetPictureFile(file)   done at once (a picture already on record)
//   ClearPicture()         empty
// A picture file that is missing or not a PNG ends in failed, with a log
// line naming the file; the slot never shows a broken picture.
//
// Attributes:
//   qvstyle     PU1 (ID card, 160x100dp, default), PU2 (photo, 100x100dp);
//               another code changes nothing (logged)
//   hinttext, failtext, retrytext   the texts
//   picture     a file to show as done (as SetPictureFile)
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "framework/style_tables.h"
#include "soui/events.h"
#include "soui/render.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

enum EnQVPictureUploadState {
  QVPictureUpload_Empty = 0,
  QVPictureUpload_Uploading = 1,
  QVPictureUpload_Done = 2,
  QVPictureUpload_Failed = 3,
};

enum : int {
  EVT_QVPICTUREUPLOAD_RETRY = 29102,
  EVT_QVPICTUREUPLOAD_CHOOSE = 29103,
  EVT_QVPICTUREUPLOAD_REMOVE = 29104,
};

class QVSTDCTRLS_API EventQVPictureUploadRetry : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVPICTUREUPLOAD_RETRY, L"on_qvpictureupload_retry")
 public:
  using EventArgs::EventArgs;
  SOUI::SStringW file;  // the file that failed (may be empty)
};

class QVSTDCTRLS_API EventQVPictureUploadChoose : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVPICTUREUPLOAD_CHOOSE, L"on_qvpictureupload_choose")
 public:
  using EventArgs::EventArgs;
  SOUI::SStringW file;  // filled by the host: the upload starts with it
};

class QVSTDCTRLS_API EventQVPictureUploadRemove : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVPICTUREUPLOAD_REMOVE, L"on_qvpictureupload_remove")
 public:
  using EventArgs::EventArgs;
};

class QVSTDCTRLS_API QVPictureUploadCtrl : public SOUI::SWindow {
  SOUI_CLASS_NAME(QVPictureUploadCtrl, SOUI::SWindow, L"qv_pictureuploadctrl")
 public:
  QVPictureUploadCtrl();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

  // See the header comment. The file-taking calls return false (and show
  // failed) when the file cannot be read as a picture.
  bool BeginUpload(const SOUI::SStringW& file);
  void SetUploadProgress(int percent);
  void FinishUpload();
  void FailUpload();
  bool SetPictureFile(const SOUI::SStringW& file);
  void ClearPicture();

  EnQVPictureUploadState GetUploadState() const { return state_; }
  int GetUploadProgress() const { return progress_; }
  const SOUI::SStringW& GetFile() const { return file_; }
  bool HasPicture() const { return picture_ != nullptr; }
  const QVPictureUploadCtrlStylePtr& GetStyleInfo() const { return style_info_; }

  // Parts in host coordinates (empty when the state has none).
  SOUI::CRect GetPictureRect() const;  // the fitted picture
  SOUI::CRect GetRemoveRect() const;   // done
  SOUI::CRect GetRetryRect() const;    // failed

  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;
  void OnMouseHover(UINT flags, SOUI::CPoint pt) override;
  void OnMouseLeave() override;
  SOUI::SStringW GetCursorName(SOUI::CPoint pt) const override;

 protected:
  SOUI::CSize MeasureContent(int width) override;

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  // A text of the slot: stored and repainted.
  template <SOUI::SStringW QVPictureUploadCtrl::*Text>
  HRESULT OnAttrText(const SOUI::SStringW& value, BOOL loading) {
    (void)loading;
    this->*Text = value;
    Invalidate();
    return S_OK;
  }
  HRESULT OnAttrPicture(const SOUI::SStringW& value, BOOL loading);

 private:
  // Loads file; on failure logs, shows failed and returns false.
  bool LoadPicture(const SOUI::SStringW& file);
  void SetUploadState(EnQVPictureUploadState state);
  void ApplyStyle(const QVPictureUploadCtrlStylePtr& rec);
  // The part of the slot a click at pt lands on, for the state shown.
  enum class Part { kNone, kSlot, kRemove, kRetry };
  Part PartAt(SOUI::CPoint pt) const;
  void DrawEmpty(SOUI::IRenderTarget* rt, const SOUI::CRect& rc);
  void DrawUploading(SOUI::IRenderTarget* rt, const SOUI::CRect& rc);
  void DrawFailed(SOUI::IRenderTarget* rt, const SOUI::CRect& rc);
  void DrawRemove(SOUI::IRenderTarget* rt);

  EnQVPictureUploadState state_ = QVPictureUpload_Empty;
  int progress_ = 0;
  SOUI::SStringW file_;
  SOUI::IBitmapPtr picture_;
  Part pressed_ = Part::kNone;
  bool hover_ = false;
  SOUI::SStringW hint_text_ = L"Click to upload";
  SOUI::SStringW fail_text_ = L"Upload failed";
  SOUI::SStringW retry_text_ = L"Retry";
  QVPictureUploadCtrlStylePtr style_info_;
  SOUI::ThemedColor bkgnd_, border_, border_hover_, accent_, track_, error_, scrim_, on_scrim_;
};

}  // namespace QVStandardCtrls
