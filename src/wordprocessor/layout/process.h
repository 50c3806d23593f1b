#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/descriptor.h"
#include "wordprocessor/layout/folder.h"
#include "wordprocessor/office/protocol.h"

namespace wordprocessor {

/// One running layout process, the pipes to it and the folder it works in. Killed, reaped and cleaned up
/// after with the object. To be made by a thread that outlives it: the process ends with that thread.
class LayoutProcess {
 public:
  /// Throws Failure kUnavailable where `program` cannot be started, and those of LayoutFolder.
  LayoutProcess(const std::filesystem::path& program, const std::filesystem::path& work_folder,
                std::uint64_t memory_limit);
  LayoutProcess(const LayoutProcess&) = delete;
  LayoutProcess& operator=(const LayoutProcess&) = delete;
  ~LayoutProcess();

  const std::filesystem::path& folder() const { return folder_.path(); }
  /// Becomes readable when the process reports or ends.
  int reports() const { return reports_.number(); }

  /// False when the process does not listen any more.
  bool Send(const LayoutOrder& order) { return WriteAll(orders_.number(), LineOf(order)); }

  /// Reads what has arrived (call it when reports() is readable); false when the process has ended.
  bool Receive() { return reader_->Fill(); }
  std::optional<std::string> TakeLine() { return reader_->TakeLine(); }

  /// Its memory in RAM, in bytes; 0 when it has ended.
  std::uint64_t ResidentBytes() const;

  /// Kills the process where it still runs and says how it came to its end: "signal 11" or "exit status 3".
  std::string End();

 private:
  void Start(const std::filesystem::path& program, std::uint64_t memory_limit);

  LayoutFolder folder_;
  platform::Descriptor orders_;
  platform::Descriptor reports_;
  std::optional<LineReader> reader_;
  pid_t process_ = -1;
  std::string ending_;
};

}  // namespace wordprocessor
