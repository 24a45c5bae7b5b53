#include "StepNames.h"

#include <cstring>

namespace Frd {

namespace {

/// Bit for bit, so that a value that is not a number is still equal to itself.
std::string bytesOf(double value)
{
    char bytes[sizeof(value)];
    std::memcpy(bytes, &value, sizeof(value));
    return {bytes, sizeof(bytes)};
}

std::string baseName(ResultBlock const& block)
{
    std::int32_t const step = block.step ? block.step->step : block.stepNumber;
    std::string name = "Step " + std::to_string(step);
    if (block.mode)
        return name + " Mode " + std::to_string(*block.mode);
    if (block.step)
        return name + " Increment " + std::to_string(block.step->increment);
    return name;
}

std::string keyOf(ResultBlock const& block)
{
    return baseName(block) + '/' + std::to_string(block.stepNumber) + '/' +
           std::to_string(static_cast<int>(block.kind)) + '/' + block.analysis + '/' +
           bytesOf(block.value);
}

} // namespace

StepNames::StepEntry& StepNames::entryOf(ResultBlock const& block)
{
    auto const [found, isNew] = steps_.try_emplace(keyOf(block));
    if (isNew)
        found->second.name = stepNames_.make(baseName(block));
    return found->second;
}

std::string const& StepNames::stepName(ResultBlock const& block)
{
    return entryOf(block).name;
}

std::string StepNames::resultName(ResultBlock const& block, std::string const& name)
{
    return entryOf(block).resultNames.make(name);
}

} // namespace Frd
