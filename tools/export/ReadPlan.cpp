#include "ReadPlan.h"

#include <algorithm>
#include <utility>

namespace Export {

ReadPlan::ReadPlan(MoxRead::Model& model) : model_(model) {}

void ReadPlan::add(MoxRead::Variable const& variable, Receiver receiver)
{
    entries_.push_back({&model_.resolve(variable), std::move(receiver)});
}

void ReadPlan::run()
{
    std::stable_sort(entries_.begin(), entries_.end(), [](Entry const& left, Entry const& right) {
        return left.stored->dataPosition < right.stored->dataPosition;
    });
    MoxRead::Variable const* current = nullptr;
    MoxRead::Dataset dataset;
    for (Entry const& entry : entries_) {
        if (entry.stored != current) {
            dataset = {};
            dataset = model_.read(*entry.stored);
            current = entry.stored;
        }
        entry.receiver(dataset);
    }
    entries_.clear();
}

} // namespace Export
