#pragma once

#include "moxread/HeavyData.h"
#include "moxread/Node.h"

#include <cstdint>
#include <vector>

namespace MoxRead {

/// Checks what the variables of a tree refer to: their links and their places in the heavy data.
class VariableCheck
{
public:
    VariableCheck(const std::vector<Node>& nodes, const HeavyData& heavy);

    void run() const;

private:
    struct Extent
    {
        std::uint64_t start = 0;
        std::uint64_t length = 0;
        VariableReference variable;
    };

    std::string describe(const VariableReference& reference) const;
    const Variable* target(const VariableReference& link) const;
    void checkLinks() const;
    void checkLink(const VariableReference& reference, const Variable& variable) const;
    void checkCycles() const;
    std::vector<Extent> extents() const;
    void checkExtents() const;

    const std::vector<Node>& nodes_;
    const HeavyData& heavy_;
};

} // namespace MoxRead
