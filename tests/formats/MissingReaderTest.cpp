// The command as it is where none of the optional libraries is there.

#include "Samples.h"

#include "support/Folder.h"

#include <mox/commands/TranslateCommand.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Mox::TranslateArguments;
using Mox::translateFile;

using Support::Folder;

TEST(MissingReader, IsToldWithTheFormatAndThePackage)
{
    Folder const folder;
    for (Sample const& sample : samples()) {
        if (sample.package.empty())
            continue;
        TranslateArguments arguments;
        arguments.input = folder.write("in", sample.content).string();
        arguments.output = folder.path("out.mox").string();
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(translateFile(arguments, out, err), 1);
        EXPECT_EQ(err.str(), "mox translate: " + arguments.input +
                                 ": This is a file of the format " + sample.format +
                                 ", and this mox was built without it: " + sample.package +
                                 " has to be there when it is built.\n");
        EXPECT_EQ(folder.names(), (std::vector<std::string>{"in"}));
    }
}

} // namespace
