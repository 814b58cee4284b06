#include "qvhost/qvlog.h"

#include <cstdio>
#include <memory>

#include "soui/sapp.h"

void QVLogSink::Write(const QVLogLine& line) {
  if (line.level >= echo_level_) std::fprintf(stderr, "%s\n", line.Format().ToUtf8().c_str());
  lines_.push_back(line);
  if (lines_.size() > kMaxLines) lines_.pop_front();
}

bool QVLogSink::Contains(const SOUI::SStringW& text) const {
  for (const QVLogLine& l : lines_) {
    if (l.Format().Find(text.c_str()) >= 0) return true;
  }
  return false;
}

QVLogSink& QVLogSinkOf(SOUI::SApplication& app) {
  if (auto* sink = dynamic_cast<QVLogSink*>(app.GetLogSink())) return *sink;
  auto sink = std::make_unique<QVLogSink>();
  QVLogSink& ref = *sink;
  app.SetLogSink(std::move(sink));
  return ref;
}
