#ifndef MOX_FORMATS_RUNWITHLIBRARIES_H
#define MOX_FORMATS_RUNWITHLIBRARIES_H

#include <functional>
#include <string>

/// Runs an action that needs the libraries of other formats and returns its exit status. They take
/// longer to load than most commands take to run, so `mox` itself has none of them: there the
/// action is left to a program that has them. Which of the two happens is decided by the definition
/// that is linked. A program that can't be run gets one line on the error stream, which begins with
/// the name of the command.
int runWithLibraries(std::string const& command, std::function<int()> const& action);

#endif
