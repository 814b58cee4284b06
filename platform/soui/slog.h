// The toolkit's log: a line carries a level, a category ("SOUI", "COMMON"),
// the source file's base name, the function, the line number and a wide
// message.
//
//   SLOG(kLogWarn, "SOUI") << L"include: no layout resource " << src;
//
// Lines go to the application's sink (SApplication::SetLogSink), which the
// host supplies (its QVLog keeps them for tests and may echo them); with no
// application or no sink they are printed to stderr.
#pragma once

#include <string>
#include <type_traits>

#include "soui/sstring.h"

namespace SOUI {

enum LogLevel : int {
  kLogTrace = 0,
  kLogDebug = 1,
  kLogInfo = 2,
  kLogWarn = 3,
  kLogError = 4,
  kLogFatal = 5,
};

struct LogLine {
  int level = kLogInfo;
  std::string category;
  std::string file;  // base name, e.g. "QVToast.cpp"
  std::string function;
  int line = 0;
  SStringW message;

  // "W COMMON QVToast.cpp:42 TrackPopupToast: message"
  SStringW Format() const;
};

// Receives every line logged while it is the application's sink.
class ILogSink {
 public:
  virtual ~ILogSink() = default;
  virtual void Write(const LogLine& line) = 0;
};

// Writes one line; file may be a full path (only its base name is kept).
void LogWrite(int level, const char* category, const char* file, const char* func, int line,
              const SStringW& msg);

// Collects one message and writes it when the statement ends.
class LogStream {
 public:
  LogStream(int level, const char* category, const char* file, const char* func, int line)
      : level_(level), category_(category ? category : ""), file_(file), func_(func), line_(line) {}
  LogStream(int level, const wchar_t* category, const char* file, const char* func, int line);
  ~LogStream();
  LogStream(const LogStream&) = delete;
  LogStream& operator=(const LogStream&) = delete;

  LogStream& operator<<(const SStringW& s) { msg_ += s; return *this; }
  LogStream& operator<<(const wchar_t* s);
  LogStream& operator<<(const std::wstring& s) { msg_ += s.c_str(); return *this; }
  LogStream& operator<<(const char* s);  // UTF-8
  LogStream& operator<<(const std::string& s) { return *this << s.c_str(); }
  LogStream& operator<<(wchar_t c) { msg_ += c; return *this; }
  LogStream& operator<<(char c) { msg_ += static_cast<wchar_t>(static_cast<unsigned char>(c)); return *this; }
  LogStream& operator<<(bool b) { msg_ += b ? L"1" : L"0"; return *this; }
  LogStream& operator<<(double v);
  // Pointers and handles print as 0x-prefixed hex ("0x0" for null).
  LogStream& operator<<(const void* p);
  template <class T, std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>, int> = 0>
  LogStream& operator<<(T v) {
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
  SStringW msg_;
};

}  // namespace SOUI

#define SLOG(level, category) ::SOUI::LogStream((level), (category), __FILE__, __func__, __LINE__)
