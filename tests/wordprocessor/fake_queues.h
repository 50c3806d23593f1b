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
  std::string Print(const std::string& queue, const std::filesystem::path&, const std::string& title,
                    int) override {
    if (jammed) throw platform::Failure(platform::Failure::Kind::kUnavailable, "Paper jam.");
    printed.push_back(queue + ": " + title);
    return queue + ", job " + std::to_string(printed.size());
  }
};
