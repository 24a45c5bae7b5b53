#ifndef MOX_COMMANDS_TRANSLATECOMMAND_H
#define MOX_COMMANDS_TRANSLATECOMMAND_H

#include <ostream>
#include <string>

namespace Mox {

class CommandLine;

struct TranslateArguments
{
    std::string input;
    std::string output;
    /// Whether an existing output is replaced.
    bool overwrite = false;
    /// Whether elements that a model can't hold are left out; else they end the translation.
    bool skipUnknown = false;
    /// Whether of a file that ends too early the steps are kept that are whole.
    bool partial = false;
    /// Whether a summary is printed.
    bool json = false;
};

/// Adds the command `translate`.
void addTranslateCommand(CommandLine& commandLine);

/// Translates a result file into a model. Warnings get one line each on `err`, so does a failure,
/// which names the file that is wrong, and leaves no output file behind. Returns the exit status.
int translateFile(TranslateArguments const& arguments, std::ostream& out, std::ostream& err);

} // namespace Mox

#endif
