#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "platform/controls/control.h"

namespace platform {

/// One of several choices, of which at most one is selected.
class OptionButton : public Control {
 public:
  OptionButton() = default;
  explicit OptionButton(std::string caption) : caption_(std::move(caption)) {}
  const std::string& caption() const { return caption_; }

  bool selected() const { return selected_; }
  /// From code: selecting fires Click as the user's click does, when it was not selected; deselecting is no
  /// click.
  void SetSelected(bool selected) {
    if (!SetSelectedQuietly(selected)) return;
    if (!selected) return;
    if (siblings_ != nullptr) {
      for (OptionButton* sibling : *siblings_) {
        if (sibling != this) sibling->SetSelectedQuietly(false);
      }
    }
    Click();
  }

  /// The user clicks it. An option that is selected already gets no Click but ReleasedWhenSelected.
  void UserClicks() {
    if (!enabled() || !visible()) return;
    if (selected_) {
      ReleasedWhenSelected();
    } else {
      SetSelected(true);
    }
  }

  Event<> Click;
  /// The mouse button was released over the option while it was selected: the user repeats its action.
  Event<> ReleasedWhenSelected;

 private:
  template <std::size_t>
  friend class OptionGroup;
  bool SetSelectedQuietly(bool selected) { return Assign(selected_, selected); }

  std::string caption_;
  bool selected_ = false;
  const std::vector<OptionButton*>* siblings_ = nullptr;
};

/// The options of one frame: selecting one deselects the others.
template <std::size_t Count>
class OptionGroup {
 public:
  explicit OptionGroup(const std::array<const char*, Count>& captions)
      : options_(Make(captions, std::make_index_sequence<Count>())) {
    for (auto& option : options_) {
      members_.push_back(&option);
      option.siblings_ = &members_;
    }
  }
  OptionGroup(const OptionGroup&) = delete;
  OptionGroup& operator=(const OptionGroup&) = delete;

  OptionButton& operator[](std::size_t index) { return options_.at(index); }
  const OptionButton& operator[](std::size_t index) const { return options_.at(index); }
  auto begin() { return options_.begin(); }
  auto end() { return options_.end(); }
  static constexpr std::size_t size() { return Count; }

 private:
  template <std::size_t... Index>
  static std::array<OptionButton, Count> Make(const std::array<const char*, Count>& captions,
                                              std::index_sequence<Index...>) {
    return {OptionButton(captions[Index])...};
  }
  std::array<OptionButton, Count> options_;
  std::vector<OptionButton*> members_;
};

}  // namespace platform
