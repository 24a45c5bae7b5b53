#include "integration/BlockSizeSetting.h"

#include <Zyl2/Mox2/Model.h>

#include <cstdlib>

namespace Integration {

namespace {

constexpr char const* variable = "MOXWRITER_DEFAULT_BLOCK_SIZE";

std::optional<std::string> current()
{
    char const* const value = std::getenv(variable);
    return value == nullptr ? std::nullopt : std::make_optional<std::string>(value);
}

void assign(std::optional<std::string> const& value)
{
    if (value)
        setenv(variable, value->c_str(), 1);
    else
        unsetenv(variable);
}

/// Writing takes over the growth step from the variable and keeps it when the variable goes away,
/// so a fresh process's step has to be written with once.
void restoreGrowthStep()
{
    using namespace Zyl2::Mox2;
    assign("10485760");
    Model model;
    model.saveTo("");
    model.addNode(NodeType::RootGroup, "root");
    model.addArrayProperty(DatasetType::NodeIds, Array1d<unsigned int>{1},
                           model.addNode(NodeType::Shape, "shape"), Step());
    model.close();
}

} // namespace

BlockSizeSetting::BlockSizeSetting(std::optional<std::string> const& value) : previous_(current())
{
    restoreGrowthStep();
    assign(value);
}

BlockSizeSetting::~BlockSizeSetting()
{
    restoreGrowthStep();
    assign(previous_);
}

} // namespace Integration
