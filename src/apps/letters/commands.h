#pragma once

#include <QStringList>

/// The commands of zemlo-letters. Each gets the words after its name and answers the status to exit with:
/// 0 done, 1 refused (the reason is on standard error), 2 wrong usage.
namespace apps {

int RunInit(const QStringList& words);
int RunCustomers(const QStringList& words);
int RunTypes(const QStringList& words);
int RunLetter(const QStringList& words);
int RunHistory(const QStringList& words);
int RunBookmarks(const QStringList& words);
int RunMerge(const QStringList& words);

}  // namespace apps
