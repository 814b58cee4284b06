#include "soui/slog.h"

#include <cinttypes>
#include <cstdio>

#include "soui/sapp.h"

namespace SOUI {
namespace {

std::string BaseName(const char* path) {
  if (!path) return std::string();
  const char* base = path;
  for (const char* p = path; *p; ++p) {
    if (*p == '/' || *p == '\\') base = p + 1;
  }
  return base;
}

wchar_t LevelLetter(int level) {
  static const wchar_t kLetters[] = L"TDIWEF";
  return (level >= kLogTrace && level <= kLogFatal) ? kLetters[level] : L'?';
}

}  // namespace

SStringW LogLine::Format() const {
  SStringW out(LevelLetter(level));
  out += L" ";
  out += SStringW::FromUtf8(category);
  out += L" ";
  out += SStringW::FromUtf8(file);
  out += SStringW::Format2(L":%d ", line);
  out += SStringW::FromUtf8(function);
  out += L": ";
  out += message;
  return out;
}

void LogWrite(int level, const char* category, const char* file, const char* func, int line,
              const SStringW& msg) {
  LogLine l;
  l.level = level;
  l.category = category ? category : "";
  l.file = BaseName(file);
  l.function = func ? func : "";
  l.line = line;
  l.message = msg;
  SApplication* app = SApplication::getSingletonPtr();
  if (ILogSink* sink = app ? app->GetLogSink() : nullptr) {
    sink->Write(l);
  } else {
    std::fprintf(stderr, "%s\n", l.Format().ToUtf8().c_str());
  }
}

LogStream::LogStream(int level, const wchar_t* category, const char* file, const char* func, int line)
    : level_(level), category_(SStringW(category).ToUtf8()), file_(file), func_(func), line_(line) {}

LogStream::~LogStream() { LogWrite(level_, category_.c_str(), file_, func_, line_, msg_); }

LogStream& LogStream::operator<<(const wchar_t* s) {
  msg_ += s ? s : L"(null)";
  return *this;
}

LogStream& LogStream::operator<<(const char* s) {
  msg_ += s ? SStringW::FromUtf8(s) : SStringW(L"(null)");
  return *this;
}

LogStream& LogStream::operator<<(double v) {
  msg_ += SStringW::Format2(L"%g", v);
  return *this;
}

LogStream& LogStream::operator<<(const void* p) {
  msg_ += SStringW::Format2(L"0x%" PRIxPTR, reinterpret_cast<uintptr_t>(p));
  return *this;
}

}  // namespace SOUI
