#ifndef TESTS_SUPPORT_ENVIRONMENT_H
#define TESTS_SUPPORT_ENVIRONMENT_H

#include <Zyl2/Mox2/Model.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace Support {

/// Sets MOXWRITER_DEFAULT_BLOCK_SIZE for as long as it lives, then restores what was there.
///
/// Writing takes over the growth step of blocks from the variable and keeps it when the variable
/// goes away. So something is written with a fresh process's step, before and after.
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
        using namespace Zyl2::Mox2;
        Set("10485760");
        Model model;
        model.saveTo("");
        model.addNode(NodeType::RootGroup, "root");
        model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{1},
                               model.addNode(NodeType::Shape, "shape"), Step());
        model.close();
    }

    std::optional<std::string> previous_;
};

} // namespace Support

#endif
