#ifndef ZYL2_MOX2_MODIFIER_CURRENTNODEID_H
#define ZYL2_MOX2_MODIFIER_CURRENTNODEID_H

#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Mox2/Database.h"

namespace Zyl2 {
namespace Mox2 {
namespace Modifier {

/// Makes a node current.
class CurrentNodeId : public Base::Modifier<Database>
{
public:
    explicit CurrentNodeId(unsigned int id);

    /// \throws InvalidObjectState "Not initialized"
    /// \throws OutOfBounds the id is 0 or past the last node
    /// \throws KeyNotFound the id was never handed out
    void update(Database& database) override;

private:
    unsigned int id_;
};

} // namespace Modifier
} // namespace Mox2
} // namespace Zyl2

#endif
