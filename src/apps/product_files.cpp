#include "apps/product_files.h"

#include <cstdlib>

#include <QCoreApplication>

#include "platform/failure.h"
#include "platform/identity.h"

namespace apps {

std::filesystem::path ProductDataFolder() {
  if (const char* named = std::getenv("ZEMLO_TABLES"); named != nullptr && *named != '\0') {
    const auto folder = std::filesystem::absolute(named).lexically_normal();
    if (std::filesystem::is_directory(folder / "templates")) return folder;
    throw platform::Failure(
        platform::Failure::Kind::kNotFound,
        "ZEMLO_TABLES names the folder \"" + folder.string() +
            "\", which has no folder \"templates\". Name a copy of the product's, or unset it.");
  }
  const std::filesystem::path program = QCoreApplication::applicationDirPath().toStdString();
  for (const auto& folder : {program.parent_path() / "share" / "zemlo-correspondence",
                             std::filesystem::path(ZEMLO_PRODUCT_DATA)}) {
    if (std::filesystem::is_directory(folder / "templates")) return folder;
  }
  throw platform::Failure(
      platform::Failure::Kind::kNotFound,
      "The product's data folder is missing beside \"" + program.string() + "\". Install the product again.");
}

std::string VersionText(const std::string& program) {
  auto text = program + " " + std::string(platform::kVersion) + "\nTables and templates: ";
  try {
    return text + ProductDataFolder().string() + "\n";
  } catch (const platform::Failure& failure) {
    return text + "none. " + failure.description() + "\n";
  }
}

}  // namespace apps
