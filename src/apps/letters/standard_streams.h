#pragma once

#include <cstddef>
#include <ostream>
#include <streambuf>
#include <string>

namespace apps {

/// Writes to a descriptor what a person or a program reads, made harmless (harmless_text.h). What could not
/// be written is dropped, and the reason kept.
class OutputBuffer : public std::streambuf {
 public:
  enum class Kind {
    kResults,  ///< written by the block
    kReasons,  ///< written at once, and kept
    kNotices,  ///< written at once
  };
  OutputBuffer(int descriptor, Kind kind) : descriptor_(descriptor), kind_(kind) {}

  /// Whether anything was to be written.
  bool is_used() const { return is_used_; }
  /// The errno of the first write that failed; 0 where none has.
  int failure() const { return failure_; }
  /// All that was written of kReasons.
  const std::string& kept() const { return kept_; }
  /// Writes what is left, and closes the descriptor: some file systems tell only then that they are full.
  void Close();

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  void WriteOut(std::size_t size);

  const int descriptor_;
  const Kind kind_;
  std::string waiting_;
  std::string kept_;
  bool is_used_ = false;
  int failure_ = 0;
};

/// Standard output and standard error of a command, from its first word to its exit status.
///
/// Results go to std::cout, refusals and what belongs to them to std::cerr, everything else to Notices(),
/// which ends in standard error, too. There is one in a program, and it outlives whoever writes.
/// Decision [reasons-and-notices].
class StandardStreams {
 public:
  StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;
  ~StandardStreams();

  /// Writes what is left and returns the status to exit with.
  ///
  /// A command that did not do its work and wrote no result writes {"reason": ...} where `as_json` holds.
  /// Where results were lost, one that is done ends with kOutputLost and says why; that its reader has gone
  /// away is no news.
  int End(int status, bool as_json);

 private:
  OutputBuffer out_;
  OutputBuffer err_;
  OutputBuffer notice_;
  std::ostream notices_;
  std::streambuf* const cout_;
  std::streambuf* const cerr_;
};

/// What a person wants to know and is no refusal: it stands on standard error, and in no "reason".
std::ostream& Notices();
/// From here on notices are dropped (--quiet).
void DropNotices();

/// The refusals that are told on std::cerr while this lives: the "reason" of a JSON result.
class Telling {
 public:
  Telling();
  /// Without the last line break.
  std::string Text() const;

 private:
  const std::size_t begin_;
};

/// All that was told on std::cerr so far, without the last line break.
std::string Told();

/// Whether a person watches standard error: who does is told each step.
bool IsWatched();

}  // namespace apps
