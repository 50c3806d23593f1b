#include <gmock/gmock.h>

#include <unistd.h>

#include <functional>

#include "tests/server/server_world.h"

namespace tests {
namespace {

using platform::Failure;
using testing::AllOf;
using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr auto kCustomers = "SELECT COUNT(*) FROM customer";
constexpr auto kPhones = "SELECT DISTINCT PHN_NBR FROM customer";

server::Database Opened(const fs::path& data) {
  return server::Database(server::DatabaseFile(data), server::Database::Opening::kExisting);
}

void ChangePhones(const fs::path& data, const std::string& number) {
  auto database = Opened(data);
  server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
  database.Change("UPDATE customer SET PHN_NBR = ?", {number});
  transaction.Commit();
}

std::string ReadPhones(server::Database& database) {
  server::Transaction transaction(database, server::Transaction::Purpose::kReading);
  auto phones = database.Select(kPhones)->FirstText();
  transaction.Commit();
  return phones;
}

std::string WhyNot(const std::function<void()>& work, Failure::Kind kind) {
  try {
    work();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.kind(), kind) << failure.description();
    return failure.description();
  }
  return "";
}

/// From here on this program may read the server's data and change nothing, as far as it lives.
class RightToReadOnly {
 public:
  explicit RightToReadOnly(const TemporaryFolder& data, fs::perms files = fs::perms(0444))
      : data_(data.path()), user_(geteuid()) {
    fs::permissions(data_, fs::perms(0755));
    SetPermissions(fs::perms(0555), files);
    constexpr uid_t kNobody = 65534;
    EXPECT_EQ(seteuid(user_ == 0 ? kNobody : user_), 0);
  }
  RightToReadOnly(const RightToReadOnly&) = delete;
  RightToReadOnly& operator=(const RightToReadOnly&) = delete;
  ~RightToReadOnly() {
    EXPECT_EQ(seteuid(user_), 0);
    SetPermissions(fs::perms(0755), fs::perms(0644));
  }

 private:
  void SetPermissions(fs::perms folders, fs::perms files) {
    for (const auto& entry : fs::directory_iterator(data_ / "server"))
      fs::permissions(entry.path(), entry.is_directory() ? fs::perms(0755) : files);
    fs::permissions(data_ / "server", folders);
  }

  const fs::path data_;
  const uid_t user_;
};

class DatabaseFile : public testing::Test {
 protected:
  DatabaseFile() { PrepareData(data_.path()); }

  void ExpectToReadAndNotToChange() {
    const RightToReadOnly reader(data_);
    auto database = Opened(data_.path());
    EXPECT_EQ(database.Select(kCustomers)->FirstText(), "30");
    const auto change = [&] {
      server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
      database.Change("UPDATE customer SET PHN_NBR = '1'");
    };
    EXPECT_THAT(WhyNot(change, Failure::Kind::kPermissionDenied),
                AllOf(HasSubstr("no right to change"), HasSubstr("\"server.db\""),
                      HasSubstr((data_ / "server").string()), HasSubstr("belongs to \"")));
    EXPECT_EQ(database.Select(kCustomers)->FirstText(), "30");
  }

  TemporaryFolder data_;
};

TEST_F(DatabaseFile, IsReadByAUserWhoMayNotWriteAsInitLeftItAndAsAProgramLeftIt) {
  ExpectToReadAndNotToChange();
  ChangePhones(data_.path(), "5550100");
  ExpectToReadAndNotToChange();
}

TEST_F(DatabaseFile, IsReadByAUserWhoMayNotWriteWhileAnotherProgramWrites) {
  auto other = Opened(data_.path());
  ChangePhones(data_.path(), "5550100");
  const RightToReadOnly reader(data_);
  auto database = Opened(data_.path());
  EXPECT_EQ(ReadPhones(database), "5550100");
}

TEST_F(DatabaseFile, AUserWhoMayNotWriteReadsNothingThatAnotherProgramChangedMeanwhile) {
  ChangePhones(data_.path(), "5550100");
  std::unique_ptr<server::Database> database;
  {
    const RightToReadOnly reader(data_);
    database = std::make_unique<server::Database>(server::DatabaseFile(data_.path()),
                                                  server::Database::Opening::kExisting);
    EXPECT_EQ(ReadPhones(*database), "5550100");
  }
  ChangePhones(data_.path(), "5550101");
  const RightToReadOnly reader(data_);
  EXPECT_EQ(ReadPhones(*database), "5550101");
}

TEST_F(DatabaseFile, WhatWasReadDuringAChangeIsRefused) {
  ChangePhones(data_.path(), "5550100");
  std::unique_ptr<server::Database> database;
  {
    const RightToReadOnly reader(data_);
    database = std::make_unique<server::Database>(server::DatabaseFile(data_.path()),
                                                  server::Database::Opening::kExisting);
  }
  server::Transaction transaction(*database, server::Transaction::Purpose::kReading);
  EXPECT_EQ(database->Select(kPhones)->FirstText(), "5550100");
  ChangePhones(data_.path(), "5550101");
  EXPECT_THAT(WhyNot([&] { transaction.Commit(); }, Failure::Kind::kUnavailable), HasSubstr("Try again."));
}

TEST_F(DatabaseFile, ThatMayNotBeReadIsNamed) {
  const RightToReadOnly reader(data_, fs::perms::none);
  EXPECT_THAT(WhyNot([&] { Opened(data_.path()); }, Failure::Kind::kPermissionDenied),
              AllOf(HasSubstr("\"server.db\""), HasSubstr("ask for the right")));
}

TEST_F(DatabaseFile, ThatIsDamagedIsToBePutBackFromABackup) {
  const auto file = server::DatabaseFile(data_.path());
  const auto whole = ReadFile(file);
  for (const std::size_t size : {std::size_t{0}, std::size_t{50}, std::size_t{5000}, whole.size() / 2}) {
    WriteFile(file, whole.substr(0, size));
    const auto read = [&] {
      auto database = Opened(data_.path());
      for (const auto* table : {"server_info", "customer", "letter_history", "form", "letter_field"})
        database.Select(std::string("SELECT * FROM ") + table);
    };
    EXPECT_THAT(WhyNot(read, Failure::Kind::kDamaged),
                AllOf(HasSubstr("is damaged"), HasSubstr("\"" + file.string() + "\""), HasSubstr("backup")))
        << size;
  }
}

}  // namespace
}  // namespace tests
