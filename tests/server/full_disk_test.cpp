#include <gmock/gmock.h>

#include <sys/resource.h>
#include <csignal>

#include "tests/server/server_world.h"
#include "tests/support/failing.h"

namespace tests {
namespace {

using testing::HasSubstr;

/// A disk that takes no file past 4 KB, as far as this process can see: less than the engine's shared index.
class FullDisk {
 public:
  FullDisk() : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &usual_);
    const rlimit small{4096, usual_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &usual_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit usual_{};
  void (*const handler_)(int);
};

constexpr auto kCount = "SELECT COUNT(*) FROM customer";
constexpr auto kChange = "UPDATE customer SET PHN_NBR = '5550100'";

TEST(Database, IsReadOnAFullDiskBySeveralConnectionsAndSaysWhyItTakesNothing) {
  const TemporaryFolder data;
  PrepareData(data.path());
  {
    const FullDisk full;
    server::Database first(server::DatabaseFile(data.path()), server::Database::Opening::kExisting);
    server::Database second(server::DatabaseFile(data.path()), server::Database::Opening::kExisting);
    EXPECT_EQ(first.Select(kCount)->FirstText(), "30");
    EXPECT_EQ(second.Select(kCount)->FirstText(), "30");
    EXPECT_THAT(
        [&] {
          server::Transaction transaction(second, server::Transaction::Purpose::kChanging);
          second.Change(kChange);
          transaction.Commit();
        },
        tests::FailsSaying(HasSubstr("The disk with the server's database is full.")));
    EXPECT_EQ(first.Select(kCount)->FirstText(), "30");
  }
  // With room again, the same data take changes, and other programs may come in.
  server::Database later(server::DatabaseFile(data.path()), server::Database::Opening::kExisting);
  server::Database beside(server::DatabaseFile(data.path()), server::Database::Opening::kExisting);
  EXPECT_EQ(later.Change(kChange), 30);
  EXPECT_EQ(beside.Select("SELECT DISTINCT PHN_NBR FROM customer")->FirstText(), "5550100");
}

}  // namespace
}  // namespace tests
