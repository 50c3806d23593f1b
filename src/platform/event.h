#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// Keeps one observer connected for as long as it lives. Empty after a move.
class Connection {
 public:
  Connection() = default;
  explicit Connection(std::function<void()> disconnect) : disconnect_(std::move(disconnect)) {}
  Connection(Connection&& other) noexcept : disconnect_(std::exchange(other.disconnect_, nullptr)) {}
  Connection& operator=(Connection&& other) noexcept {
    if (this != &other) {
      Disconnect();
      disconnect_ = std::exchange(other.disconnect_, nullptr);
    }
    return *this;
  }
  ~Connection() { Disconnect(); }

  void Disconnect() {
    if (auto disconnect = std::exchange(disconnect_, nullptr)) disconnect();
  }

 private:
  std::function<void()> disconnect_;
};

/// Something that happens to an object, told to its observers in the order they connected.
///
/// An observer may disconnect itself or others, connect new ones (told from the next firing on), fire again,
/// or destroy the event: none of that disturbs the firing under way. One thread.
template <typename... Args>
class Event {
 public:
  using Observer = std::function<void(Args...)>;

  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  [[nodiscard]] Connection Connect(Observer observer) {
    const auto id = ++state_->last_id;
    state_->entries.push_back({id, std::make_shared<Observer>(std::move(observer))});
    return Connection([weak = std::weak_ptr<State>(state_), id] {
      if (auto state = weak.lock()) {
        std::erase_if(state->entries, [id](const Entry& entry) { return entry.id == id; });
      }
    });
  }

  void operator()(Args... args) const {
    const auto state = state_;  // an observer may destroy this event
    const auto entries = state->entries;
    for (const auto& entry : entries) {
      if (!state->Has(entry.id)) continue;
      (*entry.observer)(args...);
    }
  }

 private:
  struct Entry {
    std::uint64_t id;
    std::shared_ptr<Observer> observer;
  };
  struct State {
    std::vector<Entry> entries;
    std::uint64_t last_id = 0;
    bool Has(std::uint64_t id) const {
      for (const auto& entry : entries) {
        if (entry.id == id) return true;
      }
      return false;
    }
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace platform
