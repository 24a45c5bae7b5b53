#include "Zyl2/Mox2/ArrayProperty.h"

#include <Zyl2/Mox2/Model.h>

#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Zyl2::Mox2;
using Dataset = DatasetOf<Array1d<float>>;

template <typename Action>
void expectUnknown(std::string const& what, std::string const& function, Action const& action)
{
    Support::expectThrown<Zyl2::Exception::InvalidArguments>(
        action, {3, "Can't guess result " + what + " for specified type", function,
                 "Zyl2/Mox2/ArrayProperty"});
}

TEST(ArrayProperty, CannotGuessTheNameOfResults)
{
    for (DatasetType const type : {DatasetType::Result10, DatasetType::Result26})
        expectUnknown("name", "nameFrom", [&] { Dataset::nameFrom(type); });
}

TEST(ArrayProperty, CannotGuessAnythingOfAValueThatIsNoType)
{
    for (unsigned int const value : {31U, 255U, 256U, 4294967295U}) {
        auto const type = static_cast<DatasetType>(value);
        expectUnknown("name", "nameFrom", [&] { Dataset::nameFrom(type); });
        expectUnknown("width", "widthFrom", [&] { Dataset::widthFrom(type); });
        expectUnknown("name", "geomTypeFrom", [&] { Dataset::geomTypeFrom(type); });
    }
}

} // namespace
