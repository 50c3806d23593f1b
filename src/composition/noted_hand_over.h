#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/print_component.h"
#include "platform/services.h"

namespace composition {

/// Keeps the journal of printed letters for one document.
class NotedHandOver : public platform::HandOver {
 public:
  /// `context` is the letter's data context as it was given to print; `is_noted` says whether the next print
  /// is one that the holder hears of.
  NotedHandOver(const platform::Services& services, std::string context, std::function<bool()> is_noted)
      : services_(services), context_(std::move(context)), is_noted_(std::move(is_noted)) {}

  void Begins() override {
    is_begun_ = false;
    if (!is_noted_()) return;
    services_.print_journal.Begin(context_);
    is_begun_ = true;
  }
  void Accepted() override {
    End("ZEMLO_PreviewDoc.Accepted", [&] { services_.print_journal.Accept(); });
  }
  void Failed() override {
    End("ZEMLO_PreviewDoc.Failed", [&] { services_.print_journal.Abandon(); });
  }

 private:
  template <typename Work>
  void End(std::string_view procedure, Work&& work) {
    if (std::exchange(is_begun_, false)) platform::Trap(services_, procedure, std::forward<Work>(work));
  }

  const platform::Services& services_;
  const std::string context_;
  const std::function<bool()> is_noted_;
  bool is_begun_ = false;
};

}  // namespace composition
