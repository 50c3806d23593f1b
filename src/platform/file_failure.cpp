#include "platform/file_failure.h"

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

namespace platform {
namespace {

struct Remedy {
  int number;
  Failure::Kind kind;
  std::string_view advice;
};

constexpr std::string_view kFreeSpace = "Free some space there, or choose another folder.";
constexpr std::string_view kOtherFolder = "Choose another folder, or ask for the right to use this one.";
constexpr std::string_view kFolderInPlace =
    "A folder has the file's name. Move it away and put the file there.";
constexpr std::string_view kCheckName = "Check the name, or create the folder first.";

constexpr auto kRemedies = std::to_array<Remedy>({
    {ENOENT, Failure::Kind::kNotFound, kCheckName},
    {ENOTDIR, Failure::Kind::kNotFound, kCheckName},
    {EISDIR, Failure::Kind::kDamaged, kFolderInPlace},
    {EACCES, Failure::Kind::kPermissionDenied, kOtherFolder},
    {EPERM, Failure::Kind::kPermissionDenied, kOtherFolder},
    {EROFS, Failure::Kind::kPermissionDenied, kOtherFolder},
    {ENOSPC, Failure::Kind::kUnavailable, kFreeSpace},
    {EDQUOT, Failure::Kind::kUnavailable, kFreeSpace},
    {EFBIG, Failure::Kind::kUnavailable, kFreeSpace},
});

Failure FailureOf(const std::string& what_failed, int number) {
  Remedy remedy = {number, Failure::Kind::kUnavailable, "Try again, or choose another folder."};
  for (const auto& known : kRemedies) {
    if (known.number == number) remedy = known;
  }
  return {remedy.kind,
          "The " + what_failed + ": " + FileErrorText(number) + ". " + std::string(remedy.advice)};
}

}  // namespace

std::string FileErrorText(int number) {
  const auto reason = std::generic_category().message(number);
  const bool is_full = number == ENOSPC || number == EDQUOT;
  return is_full ? "the disk is full (" + reason + ")" : reason;
}

Failure FileFailure(std::string_view what_failed, const std::filesystem::path& file, int number) {
  const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  return FailureOf("file \"" + file.filename().string() + "\" in the folder \"" + folder.string() + "\" " +
                       std::string(what_failed),
                   number);
}

Failure FolderFailure(std::string_view what_failed, const std::filesystem::path& folder, int number) {
  return FailureOf("folder \"" + folder.string() + "\" " + std::string(what_failed), number);
}

}  // namespace platform
