// The host's stream logger. A line carries a level, a category ("COMMON",
// "SOUI", ...), the source file's base name, the function, the line number
// and a wide message:
//
//   QVLOG(QV_LOG_WARN, "COMMON") << L"owner not valid " << hwnd;
//
// Lines go to the application's QVLogSink, which keeps them for tests and
// may echo them to stderr; with no application they go to stderr.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <type_traits>

#include "soui/sstring.h"

enum QVLogLevel : int {
  QV_LOG_TRACE = 0,
  QV_LOG_DEBUG = 1,
  QV_LOG_INFO = 2,
  QV_LOG_WARN = 3,
  QV_LOG_ERROR = 4,
  QV_LOG_FATAL = 5,
};

struct QVLogLine {
  int level = QV_LOG_INFO;
  std::string category;
  std::string file;  // base name, e.g. "QVToast.cpp"
  std::string function;
  int line = 0;
  SOUI::SStringW message;

  // "W COMMON QVToast.cpp:42 TrackPopupToast: message"
  SOUI::SStringW Format() const;
};

class QVLogSink {
 public:
  // Lines beyond this many drop the oldest, so a long demo run stays bounded.
  static constexpr size_t kMaxLines = 10000;

  QVLogSink() = default;

  void Write(const QVLogLine& line);
  const std::deque<QVLogLine>& Lines() const { return lines_; }
  void Clear() { lines_.clear(); }
  // True when some formatted line contains text (case-sensitive).
  bool Contains(const SOUI::SStringW& text) const;
  // Lines at or above level are also printed to stderr; off by default
  // (above QV_LOG_FATAL).
  void SetEchoLevel(int level) { echo_level_ = level; }

 private:
  std::deque<QVLogLine> lines_;
  int echo_level_ = QV_LOG_FATAL + 1;
};

// Writes one line; file may be a full path (only its base name is kept).
void QVLogWrite(int level, const char* category, const char* file, const char* func, int line,
                const SOUI::SStringW& msg);

// Collects one message and writes it when the statement ends.
class QVLogStream {
 public:
  QVLogStream(int level, const char* category, const char* file, const char* func, int line)
      : level_(level), category_(category ? category : ""), file_(file), func_(func), line_(line) {}
  QVLogStream(int level, const wchar_t* category, const char* file, const char* func, int line);
  ~QVLogStream();
  QVLogStream(const QVLogStream&) = delete;
  QVLogStream& operator=(const QVLogStream&) = delete;

  QVLogStream& operator<<(const SOUI::SStringW& s) { msg_ += s; return *this; }
  QVLogStream& operator<<(const wchar_t* s);
  QVLogStream& operator<<(const std::wstring& s) { msg_ += s.c_str(); return *this; }
  QVLogStream& operator<<(const char* s);  // UTF-8
  QVLogStream& operator<<(const std::string& s) { return *this << s.c_str(); }
  QVLogStream& operator<<(wchar_t c) { msg_ += c; return *this; }
  QVLogStream& operator<<(char c) { msg_ += static_cast<wchar_t>(static_cast<unsigned char>(c)); return *this; }
  QVLogStream& operator<<(bool b) { msg_ += b ? L"1" : L"0"; return *this; }
  QVLogStream& operator<<(double v);
  // Pointers and handles print as 0x-prefixed hex ("0x0" for null).
  QVLogStream& operator<<(const void* p);
  template <class T, std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>, int> = 0>
  QVLogStream& operator<<(T v) {
    if constexpr (std::is_enum_v<T>) {
      msg_ += std::to_wstring(static_cast<std::underlying_type_t<T>>(v)).c_str();
    } else {
      msg_ += std::to_wstring(v).c_str();
    }
    return *this;
  }

 private:
  int level_;
  std::string category_;
  const char* file_;
  const char* func_;
  int line_;
  SOUI::SStringW msg_;
};

#define QVLOG(level, category) QVLogStream((level), (category), __FILE__, __func__, __LINE__)
