#ifndef ZYL2_MOX2_ATTRIBUTEVALUE_H
#define ZYL2_MOX2_ATTRIBUTEVALUE_H

// Stands before Boost.Variant, which takes lists of more than 20 types only where it finds them
// declared already.
#include <boost/mpl/list/list30.hpp>

#include <boost/variant.hpp>

#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// Value of an attribute as a host gave it. The order of the alternatives is part of the interface.
using AttributeValue = boost::make_variant_over<boost::mpl::list26<
    float, std::vector<float>, int, std::vector<int>, unsigned int, std::vector<unsigned int>,
    std::string, std::vector<std::string>, std::wstring, std::vector<std::wstring>, double,
    std::vector<double>, unsigned long, std::vector<unsigned long>, long, std::vector<long>, bool,
    std::vector<bool>, unsigned char, std::vector<unsigned char>, signed char,
    std::vector<signed char>, unsigned short, std::vector<unsigned short>, short,
    std::vector<short>>>::type;

} // namespace Mox2
} // namespace Zyl2

#endif
