#pragma once

#include <QStringList>

/// The commands of zemlo-letters. Each gets the words after its name and answers the status to exit with:
/// an ExitStatus (command_line.h). Why it is not done stands on standard error.
namespace apps {

int RunInit(const QStringList& words);
int RunCustomers(const QStringList& words);
int RunCustomer(const QStringList& words);
int RunMaintainCustomer(const QStringList& words);  ///< the first word is "add" or "edit"
int RunTypes(const QStringList& words);
int RunLetter(const QStringList& words);
int RunHistory(const QStringList& words);
int RunReprint(const QStringList& words);
int RunResubmit(const QStringList& words);
int RunBatchReprint(const QStringList& words);
int RunSave(const QStringList& words);
int RunReturnMail(const QStringList& words);
int RunBatches(const QStringList& words);
int RunBatchStatistics(const QStringList& words);
int RunWaiting(const QStringList& words);
int RunUnrecorded(const QStringList& words);
int RunVerifyAddress(const QStringList& words);
int RunBookmarks(const QStringList& words);
int RunContext(const QStringList& words);
int RunTrial(const QStringList& words);
int RunMerge(const QStringList& words);

}  // namespace apps
