#include "DatasetWriter.h"

namespace Exchange {

namespace {

constexpr std::size_t mostRows = 2147483647U;
constexpr std::size_t mostBytes = 4294967295U;
constexpr std::size_t bytesPerValue = 4;

} // namespace

void DatasetWriter::checkSize(Target const& target)
{
    if (target.rows > mostRows || target.rows * target.width > mostBytes / bytesPerValue)
        throw Error("'" + target.name + "' has " + std::to_string(target.rows) +
                    " rows, more than an array of a model can hold.");
}

} // namespace Exchange
