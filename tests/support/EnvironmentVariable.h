#ifndef TESTS_SUPPORT_ENVIRONMENTVARIABLE_H
#define TESTS_SUPPORT_ENVIRONMENTVARIABLE_H

#include <cstdlib>
#include <optional>
#include <string>

namespace Support {

/// Sets a variable of the environment for as long as it lives, then restores what was there.
class EnvironmentVariable
{
public:
    /// \param value null removes the variable
    EnvironmentVariable(char const* name, char const* value) : name_(name)
    {
        if (char const* const previous = std::getenv(name))
            previous_ = previous;
        set(value);
    }

    EnvironmentVariable(EnvironmentVariable const&) = delete;
    EnvironmentVariable& operator=(EnvironmentVariable const&) = delete;

    ~EnvironmentVariable() { set(previous_ ? previous_->c_str() : nullptr); }

private:
    void set(char const* value) const
    {
        if (value == nullptr)
            unsetenv(name_);
        else
            setenv(name_, value, 1);
    }

    char const* name_;
    std::optional<std::string> previous_;
};

} // namespace Support

#endif
