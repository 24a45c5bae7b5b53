#ifndef TESTS_SUPPORT_ENVIRONMENT_H
#define TESTS_SUPPORT_ENVIRONMENT_H

#include "Zyl2/Wvf/Block.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace Support {

/// Sets MOXWRITER_DEFAULT_BLOCK_SIZE for as long as it lives, then restores what was there.
///
/// The growth step of blocks outlives the variable that set it, so it is put back to what a fresh
/// process starts with, before and after.
class DefaultBlockSizeSetting
{
public:
    /// \param value the variable's text; null removes the variable
    explicit DefaultBlockSizeSetting(char const* value) : previous_(Current())
    {
        ResetGrowthStep();
        Set(value);
    }

    DefaultBlockSizeSetting(DefaultBlockSizeSetting const&) = delete;
    DefaultBlockSizeSetting& operator=(DefaultBlockSizeSetting const&) = delete;

    ~DefaultBlockSizeSetting()
    {
        ResetGrowthStep();
        Set(previous_ ? previous_->c_str() : nullptr);
    }

    /// Changes the variable alone; the growth step stays what it is until the next write.
    void Set(char const* value)
    {
        if (value == nullptr)
            unsetenv(Name);
        else
            setenv(Name, value, 1);
    }

private:
    static constexpr char const* Name = "MOXWRITER_DEFAULT_BLOCK_SIZE";

    static std::optional<std::string> Current()
    {
        char const* const value = std::getenv(Name);
        return value == nullptr ? std::nullopt : std::make_optional<std::string>(value);
    }

    void ResetGrowthStep()
    {
        Set("10485760");
        Zyl2Wvf::Block block;
        block.Append("x", 1);
    }

    std::optional<std::string> previous_;
};

} // namespace Support

#endif
