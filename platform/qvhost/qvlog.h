// The host's stream logger. A line carries a level, a category ("COMMON",
// "SOUI", ...), the source file's base name, the function, the line number
// and a wide message:
//
//   QVLOG(QV_LOG_WARN, "COMMON") << L"owner not valid " << hwnd;
//
// QVLOG writes through the toolkit's log (soui/slog.h), so the host's lines
// and the toolkit's end up in one place: the application's QVLogSink, which
// keeps them for tests and may echo them to stderr. With no application they
// go to stderr.
#pragma once

#include <cstddef>
#include <deque>

#include "soui/slog.h"

namespace SOUI {
class SApplication;
}

enum QVLogLevel : int {
  QV_LOG_TRACE = SOUI::kLogTrace,
  QV_LOG_DEBUG = SOUI::kLogDebug,
  QV_LOG_INFO = SOUI::kLogInfo,
  QV_LOG_WARN = SOUI::kLogWarn,
  QV_LOG_ERROR = SOUI::kLogError,
  QV_LOG_FATAL = SOUI::kLogFatal,
};

using QVLogLine = SOUI::LogLine;
using QVLogStream = SOUI::LogStream;

class QVLogSink : public SOUI::ILogSink {
 public:
  // Lines beyond this many drop the oldest, so a long demo run stays bounded.
  static constexpr size_t kMaxLines = 10000;

  QVLogSink() = default;

  void Write(const QVLogLine& line) override;
  const std::deque<QVLogLine>& Lines() const { return lines_; }
  void Clear() { lines_.clear(); }
  // True when some formatted line contains text (case-sensitive).
  bool Contains(const SOUI::SStringW& text) const;
  // Lines at or above level are also printed to stderr: warnings and errors
  // by default, so that a mistake in a layout is seen where the host runs.
  // Above QV_LOG_FATAL silences the echo.
  void SetEchoLevel(int level) { echo_level_ = level; }

 private:
  std::deque<QVLogLine> lines_;
  int echo_level_ = QV_LOG_WARN;
};

// The application's QVLogSink; installed first if the application has
// another sink or none.
QVLogSink& QVLogSinkOf(SOUI::SApplication& app);

// Writes one line; file may be a full path (only its base name is kept).
inline void QVLogWrite(int level, const char* category, const char* file, const char* func, int line,
                       const SOUI::SStringW& msg) {
  SOUI::LogWrite(level, category, file, func, line, msg);
}

#define QVLOG(level, category) ::SOUI::LogStream((level), (category), __FILE__, __func__, __LINE__)
