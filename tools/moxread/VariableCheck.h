#ifndef MOXREAD_VARIABLECHECK_H
#define MOXREAD_VARIABLECHECK_H

#include "moxread/HeavyData.h"
#include "moxread/Node.h"

#include <cstdint>
#include <vector>

namespace MoxRead {

/// Checks what the variables of a tree refer to: their links and their places in the heavy data.
class VariableCheck
{
public:
    VariableCheck(std::vector<Node> const& nodes, HeavyData const& heavy);

    /// Checks all that needs no values.
    void run() const;
    /// Checks where the values are.
    void checkExtents() const;

private:
    struct Extent
    {
        std::uint64_t start = 0;
        std::uint64_t length = 0;
        VariableReference variable;
    };

    std::string describe(VariableReference const& reference) const;
    Variable const* target(VariableReference const& link) const;
    void checkLinks() const;
    void checkLink(VariableReference const& reference, Variable const& variable) const;
    void checkCycles() const;
    void checkLinkedAttributes() const;
    std::vector<Extent> extents() const;

    std::vector<Node> const& nodes_;
    HeavyData const& heavy_;
};

} // namespace MoxRead

#endif
