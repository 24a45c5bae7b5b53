#ifndef ZYL2_BASE_MODIFIER_H
#define ZYL2_BASE_MODIFIER_H

namespace Zyl2 {
namespace Base {

/// Command that changes a database: built with its arguments, run once, dropped.
template <typename DB>
class Modifier
{
public:
    Modifier() = default;
    Modifier(Modifier const&) = default;
    Modifier& operator=(Modifier const&) = default;
    virtual ~Modifier() = default;

    virtual void update(DB& /*database*/) {}
};

} // namespace Base
} // namespace Zyl2

#endif
