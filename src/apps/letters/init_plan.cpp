#include "apps/letters/init_plan.h"

#include <algorithm>
#include <array>
#include <string>

#include "host/settings_file.h"
#include "platform/failure.h"
#include "platform/file_access.h"
#include "server/storage/server_folders.h"

namespace apps {
namespace {

namespace fs = std::filesystem;
using host::OfficeKind;
using host::OfficeMark;
using platform::Failure;

constexpr auto kDemoUser = "DEMO01";

[[noreturn]] void RefuseInit(const std::string& what) {
  throw Failure(Failure::Kind::kRefused, what);
}

/// Whether something of an office lies in the folder, besides its mark and its database.
bool HoldsOfficeFiles(const host::DataFolder& folder) {
  const auto ours = std::to_array<fs::path>({folder.Settings(), folder.ReferenceDatabase(),
                                             folder.Templates(), folder.Printed(), folder.Unrecorded(),
                                             folder.Config(), server::ServerFolder(folder.root())});
  return std::ranges::any_of(ours, [](const fs::path& path) { return platform::IsThere(path); });
}

/// Folders of programs that left no mark: they made demo data only, with the demo user's settings.
OfficeMark MarkOfUnmarked(const host::DataFolder& folder) {
  const bool is_demo = folder.IsPrepared() && host::SettingsFile(folder).UserId() == kDemoUser;
  return {.kind = is_demo ? OfficeKind::kDemo : OfficeKind::kOwn, .is_whole = true};
}

void RequireFile(const host::DataFolder& folder, const fs::path& file, const std::string& what) {
  if (platform::IsThere(file)) return;
  RefuseInit(
      "\"" + folder.root().string() + "\" has held an office's data, but " + what + " \"" + file.string() +
      "\" is missing. Make the disk it lies on available again, or restore it from a backup. Nothing was "
      "made in its place.");
}

void RequireKind(const host::DataFolder& folder, OfficeKind kind, std::optional<OfficeKind> asked) {
  if (!asked || *asked == kind) return;
  const auto name = "\"" + folder.root().string() + "\" ";
  if (*asked == OfficeKind::kDemo) {
    RefuseInit(
        name +
        "holds an office's own data, which --demo must not touch. Name another folder with --data DIR.");
  }
  RefuseInit(name + "holds demo data, which are never an office's own. Name another folder with --data DIR.");
}

}  // namespace

InitPlan PlanInit(const host::DataFolder& folder, std::optional<OfficeKind> asked) {
  if (folder.IsNew()) {
    if (!asked) RefuseInit("A new data folder needs --demo or --empty.");
    return {.kind = *asked, .is_new = true};
  }
  const auto database = server::DatabaseFile(folder.root());
  auto mark = host::ReadOfficeMark(folder);
  if (!mark && !platform::IsThere(database) && !HoldsOfficeFiles(folder)) {
    RefuseInit("\"" + folder.root().string() +
               "\" is no new folder, and what lies there is no office's. Name a new one with --data DIR.");
  }
  if (!mark || mark->is_whole) RequireFile(folder, database, "its database");
  if (!mark) mark = MarkOfUnmarked(folder);
  RequireKind(folder, mark->kind, asked);
  if (mark->is_whole && mark->kind == OfficeKind::kOwn)
    RequireFile(folder, folder.Settings(), "its settings file");
  return {.kind = mark->kind, .is_new = !mark->is_whole};
}

}  // namespace apps
