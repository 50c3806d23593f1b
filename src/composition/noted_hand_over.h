#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/parties/print_component.h"
#include "platform/parties/services.h"

namespace composition {

/// Keeps the journal of printed letters for one document, and asks its holder before a letter with
/// placeholders goes out.
class NotedHandOver : public platform::HandOver {
 public:
  struct Holder {
    /// Whether the next print is one that the holder hears of.
    std::function<bool()> is_noted;
    /// platform::HandOver::MayGoUnfilled
    std::function<bool(const std::vector<std::string>& names)> may_go_unfilled;
  };
  /// `context` is the letter's data context as it was given to print.
  NotedHandOver(const platform::Services& services, std::string context, Holder holder)
      : services_(services), context_(std::move(context)), holder_(std::move(holder)) {}

  bool MayGoUnfilled(const std::vector<std::string>& names) override {
    return holder_.may_go_unfilled(names);
  }

  void Begins() override {
    has_begun_ = true;
    is_begun_ = false;
    if (!holder_.is_noted()) return;
    services_.print_journal.Begin(context_);
    is_begun_ = true;
  }
  void Accepted() override {
    End("ZEMLO_PreviewDoc.Accepted", [&] { services_.print_journal.Accept(); });
  }
  void Failed() override {
    End("ZEMLO_PreviewDoc.Failed", [&] { services_.print_journal.Abandon(); });
  }

  /// Whether a print or save has come as far as its hand-over, or to the note of it.
  bool has_begun() const { return has_begun_; }

 private:
  template <typename Work>
  void End(std::string_view procedure, Work&& work) {
    if (std::exchange(is_begun_, false)) platform::Trap(services_, procedure, std::forward<Work>(work));
  }

  const platform::Services& services_;
  const std::string context_;
  const Holder holder_;
  bool has_begun_ = false;
  bool is_begun_ = false;  // and not ended
};

}  // namespace composition
