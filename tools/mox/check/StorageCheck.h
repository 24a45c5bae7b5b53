#ifndef MOX_CHECK_STORAGECHECK_H
#define MOX_CHECK_STORAGECHECK_H

#include "Findings.h"

#include "moxread/Model.h"

#include <cstdint>

namespace Mox::Check {

/// Looks for values that were given to the model and that no dataset has: because they were given
/// to a group or to no node at all, or because the dataset got others later.
class StorageCheck
{
public:
    StorageCheck(MoxRead::Model const& model, Findings& findings)
        : model_(model), findings_(findings)
    {}

    void run();

private:
    struct Piece
    {
        MoxRead::Node const* node;
        MoxRead::Variable const* variable;
    };

    std::vector<Piece> pieces() const;
    void tell(std::uint64_t bytes, Piece const* before);

    MoxRead::Model const& model_;
    Findings& findings_;
};

} // namespace Mox::Check

#endif
