#pragma once

#include <utility>

namespace platform {

/// An open file descriptor, closed with the object; -1 for none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  ~Descriptor() { Close(); }

  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }

  /// False when closing brought up a failed write.
  bool Close();

 private:
  int number_ = -1;
};

}  // namespace platform
