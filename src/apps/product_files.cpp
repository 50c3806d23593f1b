#include "apps/product_files.h"

#include <QCoreApplication>

#include "platform/failure.h"

namespace apps {

std::filesystem::path ProductDataFolder() {
  const std::filesystem::path program = QCoreApplication::applicationDirPath().toStdString();
  for (const auto& folder : {program.parent_path() / "share" / "zemlo-correspondence",
                             std::filesystem::path(ZEMLO_PRODUCT_DATA)}) {
    if (std::filesystem::is_directory(folder / "templates")) return folder;
  }
  throw platform::Failure(
      platform::Failure::Kind::kNotFound,
      "The product's data folder is missing beside \"" + program.string() + "\". Install the product again.");
}

}  // namespace apps
