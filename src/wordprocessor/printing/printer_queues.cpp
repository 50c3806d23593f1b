#include "wordprocessor/printing/printer_queues.h"

#include <algorithm>

#include <cups/cups.h>

#include "platform/failure.h"

namespace wordprocessor {
namespace {

/// The queues as the spooler lists them, each queue's own default instance only.
class Destinations {
 public:
  Destinations() : count_(cupsGetDests2(CUPS_HTTP_DEFAULT, &first_)) {}
  Destinations(const Destinations&) = delete;
  Destinations& operator=(const Destinations&) = delete;
  ~Destinations() { cupsFreeDests(count_, first_); }

  const cups_dest_t* begin() const { return first_; }
  const cups_dest_t* end() const { return first_ + count_; }

 private:
  cups_dest_t* first_ = nullptr;
  int count_;
};

class Options {
 public:
  explicit Options(const platform::PrintChoice& choice) {
    Add(CUPS_COPIES, std::to_string(choice.copies));
    if (choice.sides == platform::PrintChoice::Sides::kOne) Add(CUPS_SIDES, CUPS_SIDES_ONE_SIDED);
    if (choice.sides == platform::PrintChoice::Sides::kBoth) Add(CUPS_SIDES, CUPS_SIDES_TWO_SIDED_PORTRAIT);
    if (!choice.pages.empty()) Add("page-ranges", choice.pages);
  }
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  ~Options() { cupsFreeOptions(count_, first_); }

  int count() const { return count_; }
  cups_option_t* first() const { return first_; }

 private:
  void Add(const char* name, const std::string& value) {
    count_ = cupsAddOption(name, value.c_str(), count_, &first_);
  }

  cups_option_t* first_ = nullptr;
  int count_ = 0;
};

}  // namespace

std::vector<std::string> CupsQueues::Names() const {
  std::vector<std::string> names;
  for (const auto& destination : Destinations()) {
    if (destination.instance == nullptr) names.emplace_back(destination.name);
  }
  std::ranges::sort(names);
  return names;
}

std::string CupsQueues::Default() const {
  const Destinations destinations;
  if (destinations.begin() == destinations.end()) return "";
  for (const auto& destination : destinations) {
    if (destination.is_default != 0) return destination.name;
  }
  return destinations.begin()->name;
}

std::string CupsQueues::Print(const platform::PrintChoice& choice, const std::filesystem::path& pdf,
                              const std::string& title) {
  const Options options(choice);
  const auto& queue = choice.printer;
  const int job = cupsPrintFile2(CUPS_HTTP_DEFAULT, queue.c_str(), pdf.c_str(), title.c_str(),
                                 options.count(), options.first());
  if (job > 0) return queue + ", job " + std::to_string(job);
  const std::string said = cupsLastErrorString();
  const auto names = Names();
  // Of a queue that is not there the library says that a file is not.
  const bool has_gone = !names.empty() && std::ranges::find(names, queue) == names.end();
  const auto reason = has_gone ? "the spooler has no such printer any more" : said;
  throw platform::Failure(platform::Failure::Kind::kUnavailable,
                          "The printer \"" + queue + "\" does not take the letter \"" + title +
                              "\": " + reason + ". Check the printer, or choose another one.");
}

}  // namespace wordprocessor
