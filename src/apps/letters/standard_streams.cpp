#include "apps/letters/standard_streams.h"

#include <QJsonObject>
#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "apps/letters/command_line.h"
#include "apps/letters/harmless_text.h"
#include "platform/file_failure.h"

namespace apps {
namespace {

constexpr std::size_t kBlock = 65536;

const OutputBuffer* told = nullptr;
std::ostream* notices = nullptr;

/// A descriptor that was closed when the program began would be given to the first file it opens, and results
/// would be written into that. Standard output and error that cannot be written to stand there instead.
void KeepDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    if (open("/dev/null", O_RDONLY) != descriptor) return;  // NOLINT: the lowest free one, kept for good
  }
}

std::string WithoutLastBreak(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

}  // namespace

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
  const auto one = traits_type::to_char_type(character);
  return xsputn(&one, 1) == 1 ? character : traits_type::eof();
}

std::streamsize OutputBuffer::xsputn(const char* text, std::streamsize size) {
  is_used_ = true;
  waiting_.append(text, static_cast<std::size_t>(size));
  // A character whose end is still to come waits for it.
  if (kind_ != Kind::kResults || waiting_.size() >= kBlock)
    WriteOut(waiting_.size() - UnfinishedAtEnd(waiting_));
  return failure_ == 0 || kind_ != Kind::kResults ? size : 0;
}

int OutputBuffer::sync() {
  WriteOut(waiting_.size() - UnfinishedAtEnd(waiting_));
  return failure_ == 0 ? 0 : -1;
}

void OutputBuffer::WriteOut(std::size_t size) {
  const auto text = Harmless(std::string_view(waiting_).substr(0, size));
  waiting_.erase(0, size);
  if (kind_ == Kind::kReasons) kept_ += text;
  for (std::size_t done = 0; done < text.size() && failure_ == 0;) {
    const auto count = write(descriptor_, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      failure_ = errno;
    } else {
      done += static_cast<std::size_t>(count);
    }
  }
}

void OutputBuffer::Close() {
  WriteOut(waiting_.size());
  if (close(descriptor_) != 0 && is_used_ && failure_ == 0 && errno != EINTR) failure_ = errno;
}

StandardStreams::StandardStreams()
    : out_(STDOUT_FILENO, OutputBuffer::Kind::kResults),
      err_(STDERR_FILENO, OutputBuffer::Kind::kReasons),
      notice_(STDERR_FILENO, OutputBuffer::Kind::kNotices),
      notices_(&notice_),
      cout_(std::cout.rdbuf(&out_)),
      cerr_(std::cerr.rdbuf(&err_)) {
  KeepDescriptors();
  // Neither a reader who goes away nor a file that may not grow ends a print half way.
  for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
  told = &err_;
  notices = &notices_;
}

StandardStreams::~StandardStreams() {
  told = nullptr;
  notices = nullptr;
  std::cout.rdbuf(cout_);
  std::cerr.rdbuf(cerr_);
}

int StandardStreams::End(int status, bool as_json) {
  const bool is_done = status == kDone || status == kNotRecorded;
  if (!is_done && as_json && !out_.is_used()) {
    PrintJson(QJsonDocument(QJsonObject{{"reason", QString::fromStdString(Told())}}));
  }
  out_.Close();
  if (out_.failure() == 0) return status;
  if (out_.failure() != EPIPE) {
    std::cerr << "Standard output could not be written: " << platform::FileErrorText(out_.failure())
              << ". The result is not complete.\n";
  }
  return status == kDone ? kOutputLost : status;
}

std::ostream& Notices() {
  static std::ostream nowhere(nullptr);
  return notices == nullptr ? nowhere : *notices;
}

void DropNotices() {
  Notices().rdbuf(nullptr);
}

Telling::Telling() : begin_(told == nullptr ? 0 : told->kept().size()) {}

std::string Telling::Text() const {
  return told == nullptr ? "" : WithoutLastBreak(told->kept().substr(begin_));
}

std::string Told() {
  return told == nullptr ? "" : WithoutLastBreak(told->kept());
}

bool IsWatched() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace apps
