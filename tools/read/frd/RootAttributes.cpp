#include "RootAttributes.h"

#include <cstddef>
#include <map>
#include <string>

namespace Frd {

namespace {

std::string attributeName(std::string const& fieldName)
{
    static std::map<std::string, std::string> const names = {{"COMPILETIME", "SolverCompileTime"},
                                                             {"DATE", "Date"},
                                                             {"DBN", "Database"},
                                                             {"DIR", "Directory"},
                                                             {"HOST", "Host"},
                                                             {"PGM", "Solver"},
                                                             {"TIME", "Time"},
                                                             {"USER", "User"},
                                                             {"VERSION", "SolverVersion"}};
    return names.at(fieldName);
}

} // namespace

Exchange::AttributeList rootAttributes(Header const& header)
{
    Exchange::AttributeList attributes;
    for (auto const& [name, value] : header.fields)
        attributes.emplace_back(attributeName(name), value);
    for (std::size_t i = 0; i < header.titles.size(); ++i)
        attributes.emplace_back(i == 0 ? "Title" : "Title " + std::to_string(i + 1),
                                header.titles[i]);
    return attributes;
}

} // namespace Frd
