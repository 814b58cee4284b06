#include "qvhost/qvlog.h"

#include <cinttypes>
#include <cstdio>
#include <cwchar>

#include "soui/sapp.h"

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
  return (level >= QV_LOG_TRACE && level <= QV_LOG_FATAL) ? kLetters[level] : L'?';
}

void Echo(const QVLogLine& line) {
  std::fprintf(stderr, "%s\n", line.Format().ToUtf8().c_str());
}

}  // namespace

SOUI::SStringW QVLogLine::Format() const {
  SOUI::SStringW out(LevelLetter(level));
  out += L" ";
  out += SOUI::SStringW::FromUtf8(category);
  out += L" ";
  out += SOUI::SStringW::FromUtf8(file);
  out += SOUI::SStringW::Format2(L":%d ", line);
  out += SOUI::SStringW::FromUtf8(function);
  out += L": ";
  out += message;
  return out;
}

void QVLogSink::Write(const QVLogLine& line) {
  if (line.level >= echo_level_) Echo(line);
  lines_.push_back(line);
  if (lines_.size() > kMaxLines) lines_.pop_front();
}

bool QVLogSink::Contains(const SOUI::SStringW& text) const {
  for (const QVLogLine& l : lines_) {
    if (l.Format().Find(text.c_str()) >= 0) return true;
  }
  return false;
}

void QVLogWrite(int level, const char* category, const char* file, const char* func, int line,
                const SOUI::SStringW& msg) {
  QVLogLine l;
  l.level = level;
  l.category = category ? category : "";
  l.file = BaseName(file);
  l.function = func ? func : "";
  l.line = line;
  l.message = msg;
  if (SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr()) {
    app->GetLogSink().Write(l);
  } else {
    Echo(l);
  }
}

QVLogStream::QVLogStream(int level, const wchar_t* category, const char* file, const char* func,
                         int line)
    : level_(level),
      category_(SOUI::SStringW(category).ToUtf8()),
      file_(file),
      func_(func),
      line_(line) {}

QVLogStream::~QVLogStream() {
  QVLogWrite(level_, category_.c_str(), file_, func_, line_, msg_);
}

QVLogStream& QVLogStream::operator<<(const wchar_t* s) {
  msg_ += s ? s : L"(null)";
  return *this;
}

QVLogStream& QVLogStream::operator<<(const char* s) {
  msg_ += s ? SOUI::SStringW::FromUtf8(s) : SOUI::SStringW(L"(null)");
  return *this;
}

QVLogStream& QVLogStream::operator<<(double v) {
  msg_ += SOUI::SStringW::Format2(L"%g", v);
  return *this;
}

QVLogStream& QVLogStream::operator<<(const void* p) {
  msg_ += SOUI::SStringW::Format2(L"0x%" PRIxPTR, reinterpret_cast<uintptr_t>(p));
  return *this;
}
