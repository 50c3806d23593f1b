#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "server/storage/database.h"

/// The data contexts of recorded letters. Each is kept whole and by itself, deflated against a dictionary of
/// its letter type: contexts of a type differ in a few hundred bytes of several thousand.
/// Decision [packed-contexts].
namespace server {

/// What the contexts of a letter type have in common. A dictionary in the data never changes, and stays for
/// as long as the data do: the contexts packed with it cannot be read without it.
struct ContextDictionary {
  std::int64_t number = 0;  ///< 0: none
  std::string text;
};

/// Packs contexts of one letter type. One thread at a time.
class ContextPacker {
 public:
  explicit ContextPacker(ContextDictionary dictionary);
  ContextPacker(ContextPacker&&) noexcept;
  ~ContextPacker();

  struct Packed {
    std::int64_t dictionary_number = 0;
    std::int64_t size = 0;  ///< of the context, in bytes
    std::string bytes;
  };
  /// Throws Failure kUnavailable where there is no memory for it.
  Packed Pack(std::string_view context);

 private:
  struct Deflater;
  ContextDictionary dictionary_;
  std::unique_ptr<Deflater> deflater_;
};

/// Makes a new dictionary for each letter type whose definition does not fit the one it has.
void StoreContextDictionaries(Database& database);
/// The newest one of the letter type; none where there is none.
ContextDictionary FindContextDictionary(Database& database, const std::string& letter_type);

void StoreContext(Database& database, std::int64_t letter, const std::string& letter_type,
                  std::string_view context);
void StoreContext(Database& database, std::int64_t letter, const ContextPacker::Packed& packed);

/// The context to the letter, as it was stored; nothing where there is no such letter. Throws Failure
/// kDamaged where it cannot be read any more.
std::optional<std::string> FindContext(Database& database, std::int64_t letter);

}  // namespace server
