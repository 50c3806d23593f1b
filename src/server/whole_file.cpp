#include "server/whole_file.h"

#include <array>
#include <cerrno>

#include <QFile>
#include <QSaveFile>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/file_failure.h"

namespace server {
namespace {

using platform::Failure;

Failure Refusal(const QFileDevice& file) {
  if (file.error() == QFileDevice::ResourceError)
    return platform::FileFailure("could not be written", file.fileName().toStdString(), ENOSPC);
  return {Failure::Kind::kUnavailable,
          "\"" + file.fileName().toStdString() + "\": " + file.errorString().toStdString() + "."};
}

}  // namespace

void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  QFile source(QString::fromStdString(from.string()));
  QSaveFile target(QString::fromStdString(to.string()));
  if (!source.open(QIODevice::ReadOnly)) throw Refusal(source);
  if (!target.open(QIODevice::WriteOnly)) throw Refusal(target);
  std::array<char, 65536> block;
  for (;;) {
    const auto count = source.read(block.data(), block.size());
    if (count < 0) throw Refusal(source);
    if (count == 0) break;
    if (target.write(block.data(), count) != count) throw Refusal(target);
  }
  if (!target.commit()) throw Refusal(target);
  platform::Protect(to);
}

}  // namespace server
