#include "RunWithLibraries.h"

#include "FormatsProgram.h"

#include <exception>
#include <iostream>

int runWithLibraries(std::string const& command, std::function<int()> const& /*action*/)
{
    try {
        becomeFormatsProgram();
    } catch (std::exception const& error) {
        std::cerr << command << ": " << error.what() << '\n';
        return 1;
    }
}
