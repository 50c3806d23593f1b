#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

/// The one exception of this system: a kind for the program, a text for the person.
///
/// The text gathers context on its way up (see While), innermost first:
/// "not a zip file, while opening template CTL110.docx, while printing letter 110".
class Failure : public std::exception {
 public:
  enum class Kind {
    kNotFound,          ///< a file, row or name that should be there is not
    kPermissionDenied,  ///< the operating system refused; what may be passed over in a preview
    kDamaged,           ///< something is there but cannot be read as what it should be
    kRefused,           ///< the request or value is against a rule
    kTimedOut,          ///< the other side did not answer in time
    kUnavailable,       ///< the other side is gone, full or broken
    kInternal,          ///< a fault of this program
  };

  Failure(Kind kind, std::string description) : kind_(kind), text_(std::move(description)) {}

  Kind kind() const { return kind_; }
  /// Description and context, as shown to the person.
  const std::string& description() const { return text_; }
  const char* what() const noexcept override { return text_.c_str(); }

  void AddContext(std::string_view doing) {
    text_ += ", while ";
    text_ += doing;
  }

 private:
  Kind kind_;
  std::string text_;
};

/// The two signals that leave a procedure early without a report. They are no failures: only Trap catches
/// them.
struct AbandonStep {};  ///< error number 800403E8: leave this step
struct CancelSave {};   ///< error number 80040200: there is nothing to save

/// Runs `work`; a Failure that passes through says what was being done.
template <typename Work>
decltype(auto) While(std::string_view doing, Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (Failure& failure) {
    failure.AddContext(doing);
    throw;
  }
}

}  // namespace platform
