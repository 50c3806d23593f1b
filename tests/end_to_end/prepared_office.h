#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/end_to_end/program.h"

namespace tests {

/// A data folder as `init` makes it, without letters of its own, and the words a test says about it.
class PreparedOffice : public testing::Test {
 protected:
  PreparedOffice() {
    const auto init = RunLetters({"init", "--demo", "--data", data_.path().string(), "--letters", "0"});
    EXPECT_EQ(init.status, 0) << init.err;
  }

  Outcome Letters(std::string command, std::vector<std::string> words, const std::string& environment = "") {
    words.insert(words.begin(), {std::move(command), "--data", data_.path().string()});
    return RunLetters(words, environment);
  }
  /// The letter that confirms a registration: it needs a customer and nothing else.
  Outcome PrintLetterFor(const std::string& customer) {
    return Letters("letter", {"--type", "101", "--customer", customer, "--print"});
  }
  std::vector<std::filesystem::path> Printed() { return FilesIn(data_ / "printed"); }
  /// One column of the stored letters, oldest first.
  std::string History(const std::string& column) {
    return ServerSql("SELECT " + column + " FROM letter_history ORDER BY SEQ_NBR");
  }
  /// What the server's database answers; a statement that fails fails the test.
  std::string ServerSql(const std::string& statement) {
    const auto run =
        RunShell("sqlite3 " + Quoted((data_ / "server/server.db").string()) + " " + Quoted(statement));
    EXPECT_EQ(run.status, 0) << run.err;
    return run.out;
  }

  const TemporaryFolder data_;
};

}  // namespace tests
