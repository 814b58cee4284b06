// Pieces of the gallery host: theme loading, the page layout, the window loop.
#pragma once

#include <string>

#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace gallery {

// Loads the default theme (and its dark override). False, with a message,
// when the theme files are missing.
bool LoadTheme(SOUI::SApplication& app, bool dark);

// Registers every page layout as a resource and returns the gallery's host
// layout: a header and a scroll view ("pages") with one card per page. The
// host is at most 1280x800 px and scrolls, or with full_height as tall as every
// card (for rendering the whole gallery to an image).
SOUI::SStringW BuildLayout(SOUI::SApplication& app, bool full_height);

// Wires the host-side behaviour some pages need (the rise-colour switch of
// the market page). Run once after the host is built.
void InstallPageBehaviour(SOUI::SHostWnd& host);
// The text and input page's part of it.
void InstallTextInputPage(SOUI::SWindow* root);
// The tabs page's part: the tab view's add and close buttons.
void InstallTabsPage(SOUI::SWindow* root);
// The state controls page's part.
void InstallStatePage(SOUI::SWindow* root);
// The toast and tooltip page's part: toasts go over this host.
void InstallToastPage(SOUI::SHostWnd& host);
// The text and dialogs page's part: message boxes and the custom dialog
// open over this host.
void InstallDialogsPage(SOUI::SHostWnd& host);
// The menus page's part: menus open over this host.
void InstallMenuPage(SOUI::SHostWnd& host);

struct WindowOptions {
  std::string screenshot;  // captured from the real window before closing
  int exit_after_ms = 0;   // 0: run until the window is closed
  // With idle_check_ms, the gallery settles for a second, then counts how
  // often its loop wakes over that many milliseconds of real time and fails
  // if anything but the end of the count woke it.
  int idle_check_ms = 0;
};

// Opens the real-window backend; false when there is no display. Must run
// before the host is constructed.
bool StartWindowBackend(SOUI::SApplication& app);

// Shows the host in a real window and runs until it is closed (or the time
// in opt passes).
int RunInWindow(SOUI::SApplication& app, SOUI::SHostWnd& host, const WindowOptions& opt);

}  // namespace gallery
