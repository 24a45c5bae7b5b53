// Writes sequences of calls to the standard output. The files of the calls go to a folder of their
// own.

#include "languages/Generator.h"
#include "support/Folder.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

namespace {

int generate(std::uint32_t seed, unsigned long count)
{
    Support::Folder const folder;
    std::filesystem::current_path(folder.path(""));
    Languages::Generator generator(seed, std::cout);
    for (; count > 0; --count)
        generator.makeSequence();
    auto const missing = generator.missing();
    for (std::string const& what : missing)
        std::cerr << "no sequence has " << what << '\n';
    return missing.empty() && std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "generate SEED COUNT\n";
        return 2;
    }
    try {
        return generate(static_cast<std::uint32_t>(std::stoul(argv[1])), std::stoul(argv[2]));
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << '\n';
    }
    return 1;
}
