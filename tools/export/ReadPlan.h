#ifndef EXPORT_READPLAN_H
#define EXPORT_READPLAN_H

#include "moxread/Model.h"

#include <functional>
#include <vector>

namespace Export {

/// Collects which datasets are to be read, to read them in the order in which they lie in the file:
/// so each block of the file is inflated once, and what several variables share is read once.
class ReadPlan
{
public:
    using Receiver = std::function<void(MoxRead::Dataset const&)>;

    explicit ReadPlan(MoxRead::Model& model);

    void add(MoxRead::Variable const& variable, Receiver receiver);
    void run();

private:
    struct Entry
    {
        MoxRead::Variable const* stored;
        Receiver receiver;
    };

    MoxRead::Model& model_;
    std::vector<Entry> entries_;
};

} // namespace Export

#endif
