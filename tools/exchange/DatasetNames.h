#ifndef EXCHANGE_DATASETNAMES_H
#define EXCHANGE_DATASETNAMES_H

#include "Field.h"
#include "Report.h"

#include "common/UniqueNames.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

namespace Exchange {

/// Gives the results of a model their names. What the source calls alike on nodes and on elements,
/// or twice in one step, gets different names, and the same ones in every step and part.
class DatasetNames
{
public:
    DatasetNames();

    /// Forgets how often each name was asked for: a new step begins.
    void startStep();

    std::string make(std::size_t part, Location location, std::string const& name, Report& report);

private:
    Common::UniqueNames names_;
    std::map<std::tuple<Location, std::string, int>, std::string> known_;
    std::map<std::tuple<std::size_t, Location, std::string>, int> asked_;
};

} // namespace Exchange

#endif
