#include "Argument.h"

#include <CLI/CLI.hpp>

namespace Mox {

Argument& Argument::required()
{
    option_->required();
    return *this;
}

Argument& Argument::placeholder(std::string const& text)
{
    option_->type_name(text);
    return *this;
}

Argument& Argument::check(Complaint const& complaint)
{
    option_->check(CLI::Validator(complaint, ""));
    return *this;
}

Argument& Argument::oneOf(std::vector<std::string> const& texts)
{
    option_->check(CLI::IsMember(texts).description(""));
    return *this;
}

Argument& Argument::excludes(Argument const& other)
{
    option_->excludes(other.option_);
    return *this;
}

Argument& Argument::needs(Argument const& other)
{
    option_->needs(other.option_);
    return *this;
}

} // namespace Mox
