#include "TestFiles.h"

#include <mox/commands/CommandLine.h>
#include <mox/commands/TranslateCommand.h>
#include <moxread/Verify.h>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

using Mox::addTranslateCommand;
using Mox::CommandLine;
using Mox::TranslateArguments;
using Mox::translateFile;

using namespace TestFiles;

int runWith(std::vector<std::string> arguments)
{
    CommandLine commandLine("test", "test");
    addTranslateCommand(commandLine);
    arguments.insert(arguments.begin(), "test");
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    return commandLine.run(static_cast<int>(pointers.size()), pointers.data());
}

int translate(std::string const& input, std::string const& output, std::ostream& err)
{
    std::ostringstream out;
    TranslateArguments arguments;
    arguments.input = input;
    arguments.output = output;
    int const status = translateFile(arguments, out, err);
    EXPECT_EQ(out.str(), "");
    return status;
}

/// What the command says on the error stream while this lives.
class ErrorStream
{
public:
    ErrorStream() : previous_(std::cerr.rdbuf(text_.rdbuf())) {}
    ~ErrorStream() { std::cerr.rdbuf(previous_); }
    ErrorStream(ErrorStream const&) = delete;
    ErrorStream& operator=(ErrorStream const&) = delete;

    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* previous_;
};

TEST(TranslateCommand, WhatFloatsLoseIsToldOfABinaryFileWithDoubles)
{
    Folder const folder;
    std::string const output = folder.path("out.mox").string();
    for (bool const isDouble : {false, true}) {
        std::ostringstream err;
        std::string const input = folder.write("in.frd", binaryFile(isDouble, 0.1)).string();
        EXPECT_EQ(translate(input, output, err), 0);
        std::filesystem::remove(output);
        // The node is in two shapes.
        EXPECT_EQ(err.str(), isDouble ? "mox translate: warning: 2 values were rounded to single "
                                        "precision with a relative error of at most 1.5e-08.\n"
                                      : "");
    }
}

TEST(TranslateCommand, TheCommandTakesInputOutputAndTheOverwriteFlag)
{
    Folder const folder;
    std::string const input = folder.write("in.frd", triangleFile()).string();
    std::string const output = folder.write("out.mox", "old").string();
    ErrorStream const errors;
    EXPECT_EQ(runWith({"translate", input, output}), 1);
    EXPECT_EQ(errors.text(), "mox translate: " + output + ": File exists.\n");
    EXPECT_EQ(contentOf(output), "old");
    EXPECT_EQ(runWith({"translate", "--overwrite", input, output}), 0);
    EXPECT_NO_THROW(MoxRead::verify(output));
}

TEST(TranslateCommand, WholeStepsOfAFileThatEndsTooEarlyAreKeptWhenAskedFor)
{
    Folder const folder;
    std::string const input =
        folder.write("in.frd", replaced(triangleFile(), " 9999\n", "")).string();
    std::string const output = folder.path("out.mox").string();
    ErrorStream const errors;
    EXPECT_EQ(runWith({"translate", input, output}), 1);
    EXPECT_EQ(runWith({"translate", "--partial", input, output}), 0);
    std::string const sentence =
        "line 20: The file ends without its end record (9999); 1 step is whole, Step 1, if no more "
        "results of it were to come";
    EXPECT_EQ(errors.text(), "mox translate: " + input + ": " + sentence +
                                 ": --partial keeps it.\nmox translate: warning: " + sentence +
                                 "; what follows was left out.\n");
    EXPECT_NO_THROW(MoxRead::verify(output));
}

} // namespace
