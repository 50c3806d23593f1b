#include "server/storage/whole_file.h"

#include "platform/whole_file.h"

namespace server {

void CopyWholeFile(const std::filesystem::path& from, const std::filesystem::path& to,
                   const ContentCheck& check) {
  const auto content = platform::ReadWholeFile(from);
  if (check) check(content, from.string());
  platform::WriteWholeFile(to, content);
}

}  // namespace server
