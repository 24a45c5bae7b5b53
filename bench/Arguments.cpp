#include "Arguments.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace Bench {

namespace {

int printUsage(Workloads const& workloads)
{
    std::cerr << "The first argument is one of";
    for (auto const& workload : workloads)
        std::cerr << ' ' << workload.first;
    std::cerr << '\n';
    return 2;
}

} // namespace

Arguments::Arguments(char const* const* first, char const* const* last)
{
    for (; first != last; first += 2) {
        std::string const name(*first);
        if (name.rfind("--", 0) != 0 || first + 1 == last)
            throw std::invalid_argument("not a flag with a value: " + name);
        values_[name.substr(2)] = first[1];
    }
}

std::string const& Arguments::text(std::string const& name) const
{
    auto const found = values_.find(name);
    if (found == values_.end())
        throw std::invalid_argument("missing: --" + name);
    return found->second;
}

std::size_t Arguments::number(std::string const& name) const
{
    return std::stoul(text(name));
}

std::size_t Arguments::numberOr(std::string const& name, std::size_t missing) const
{
    return values_.count(name) == 0 ? missing : number(name);
}

int runWorkload(int argc, char** argv, Workloads const& workloads)
{
    auto const found = argc > 1 ? workloads.find(argv[1]) : workloads.end();
    if (found == workloads.end())
        return printUsage(workloads);
    try {
        found->second(Arguments(argv + 2, argv + argc));
    } catch (std::exception const& failure) {
        std::cerr << argv[0] << ": " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace Bench
