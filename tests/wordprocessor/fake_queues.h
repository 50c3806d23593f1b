#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "wordprocessor/printing/printer_queues.h"

/// Queues that write down what they take.
class FakeQueues : public wordprocessor::PrinterQueues {
 public:
  std::vector<std::string> names;
  bool jammed = false;
  std::vector<std::string> printed;  ///< "queue: letter"

  std::vector<std::string> Names() const override { return names; }
  std::string Default() const override { return names.empty() ? "" : names.front(); }
  platform::PrintChoice last;  ///< how the last letter was to be printed
  std::string Print(const platform::PrintChoice& choice, const std::filesystem::path&,
                    const std::string& title) override {
    const auto& queue = choice.printer;
    last = choice;
    if (jammed) throw platform::Failure(platform::Failure::Kind::kUnavailable, "Paper jam.");
    printed.push_back(queue + ": " + title);
    return queue + ", job " + std::to_string(printed.size());
  }
};
