#ifndef ZYL2_BASE_EXTRACTOR_H
#define ZYL2_BASE_EXTRACTOR_H

namespace Zyl2 {
namespace Base {

/// Command that asks a database: built with its arguments, run once, dropped.
template <typename DB, typename T>
class Extractor
{
public:
    Extractor() = default;
    Extractor(Extractor const&) = default;
    Extractor& operator=(Extractor const&) = default;
    virtual ~Extractor() = default;

    virtual T extractFrom(DB const& /*database*/) { return T(); }
};

} // namespace Base
} // namespace Zyl2

#endif
