#include "platform/descriptor.h"

#include <unistd.h>

namespace platform {

bool Descriptor::Close() {
  const int number = std::exchange(number_, -1);
  return number < 0 || close(number) == 0;
}

}  // namespace platform
