#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/error_reporter.h"

namespace fakes {

/// Keeps every reported failure.
class RecordingErrors : public platform::ErrorReporter {
 public:
  struct Report {
    std::string description;
    std::string component_title;
    std::string procedure;
  };

  std::vector<Report> reports;

  /// The procedures that reported, oldest first: empty is what most tests expect.
  std::vector<std::string> Procedures() const {
    std::vector<std::string> procedures;
    for (const auto& report : reports) procedures.push_back(report.procedure);
    return procedures;
  }

  void ReportError(std::string_view description, std::string_view component_title,
                   std::string_view procedure) noexcept override {
    reports.push_back({std::string(description), std::string(component_title), std::string(procedure)});
  }
  std::string ErrorText(std::uint32_t number) const override {
    return "Application error " + std::to_string(number) + ".";
  }
};

}  // namespace fakes
