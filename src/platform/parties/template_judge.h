#pragma once

#include <string>

namespace platform {

/// Says of a template whether new letters may be made with it. Letters that are recorded never ask: they come
/// out of their template again whatever it is.
class TemplateJudge {
 public:
  virtual ~TemplateJudge() = default;

  /// Why no new letter of that type may be made with the template at `path`, in whole sentences for the user;
  /// "" where it may, and where the file or the letter's fields cannot be read: whoever makes the letter says
  /// that. Asked again about a file that is as it was, it answers at once. Never fails.
  virtual std::string FaultOf(const std::string& path, const std::string& letter_type) = 0;
};

}  // namespace platform
