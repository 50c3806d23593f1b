#pragma once

#include <cups/cups.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "platform/child_process.h"
#include "tests/support/patience.h"
#include "tests/support/temporary_folder.h"

namespace wordprocessor {

/// A spooler of the test's own, with the queues "laser", which prints, "refusing", which takes no job, and
/// "held", which takes jobs and prints none. The spooler's clients of this thread go to it.
class CupsServer {
 public:
  CupsServer() {
    for (const auto* name : {"root", "spool", "cache", "state", "tmp"})
      std::filesystem::create_directory(folder_ / name);
    tests::WriteFile(folder_ / "cupsd.conf", "Listen " + socket_ + R"(
Browsing No
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  SubscriptionPrivateAccess all
  SubscriptionPrivateValues none
  <Limit All>
    Order allow,deny
  </Limit>
</Policy>
)");
    const auto path = folder_.path().string();
    tests::WriteFile(folder_ / "cups-files.conf",
                     "ServerRoot " + path + "/root\nRequestRoot " + path + "/spool\nCacheDir " + path +
                         "/cache\nStateDir " + path + "/state\nTempDir " + path + "/tmp\nErrorLog " + path +
                         "/errors\nAccessLog " + path + "/requests\nPageLog " + path +
                         "/pages\nFileDevice Yes\n");
    std::ofstream queues(folder_ / "root/printers.conf");
    AddQueue(queues, "laser", "Idle", "Yes");
    AddQueue(queues, "refusing", "Idle", "No");
    AddQueue(queues, "held", "Stopped", "Yes");
    queues.close();
    Start();
  }
  CupsServer(const CupsServer&) = delete;
  CupsServer& operator=(const CupsServer&) = delete;
  ~CupsServer() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
    cupsSetServer(nullptr);
  }

  /// The job's attributes, as the spooler keeps them.
  std::shared_ptr<ipp_t> Job(int number) const {
    auto* request =
        Request(IPP_OP_GET_JOB_ATTRIBUTES, "job-uri", "ipp://localhost/jobs/" + std::to_string(number));
    return {cupsDoRequest(CUPS_HTTP_DEFAULT, request, "/"), ippDelete};
  }
  void Remove(const std::string& queue) const {
    auto* request = Request(IPP_OP_CUPS_DELETE_PRINTER, "printer-uri", "ipp://localhost/printers/" + queue);
    ippDelete(cupsDoRequest(CUPS_HTTP_DEFAULT, request, "/admin/"));
    ASSERT_EQ(cupsLastError(), IPP_STATUS_OK) << cupsLastErrorString();
  }

 private:
  static void AddQueue(std::ostream& queues, const char* name, const char* state, const char* accepting) {
    queues << "<Printer " << name << ">\nDeviceURI file:///dev/null\nState " << state << "\nAccepting "
           << accepting << "\nShared No\n</Printer>\n";
  }

  static ipp_t* Request(ipp_op_t operation, const char* about, const std::string& uri) {
    auto* request = ippNewRequest(operation);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, about, nullptr, uri.c_str());
    return request;
  }

  void Start() {
    platform::ChildProcess cupsd;
    cupsd.command = {"/usr/sbin/cupsd",      "-f", "-c",
                     folder_ / "cupsd.conf", "-s", folder_ / "cups-files.conf"};
    EXPECT_EQ(cupsd.Start(process_), 0) << "cupsd is not installed";
    cupsSetServer(socket_.c_str());
    const auto answers = [] {
      auto* connection = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC,
                                      HTTP_ENCRYPTION_IF_REQUESTED, 1, 1'000, nullptr);
      httpClose(connection);
      return connection != nullptr;
    };
    EXPECT_TRUE(tests::ComesTrue(answers, [] { poll(nullptr, 0, 20); }))
        << tests::ReadFile(folder_ / "errors");
  }

  const tests::TemporaryFolder folder_;
  const std::string socket_ = (folder_ / "socket").string();
  int process_ = -1;
};

}  // namespace wordprocessor
