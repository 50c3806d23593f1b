#pragma once

#include <QStringList>

namespace apps {

/// What `main` of a program of commands does: `run` gets the words behind the program's name, in UTF-8, and
/// answers the status to exit with; what it throws is told, and is kRefused.
int RunProgram(int argc, char** argv, int (*run)(const QStringList& words));

}  // namespace apps
