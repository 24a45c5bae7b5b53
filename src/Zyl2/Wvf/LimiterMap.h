#ifndef ZYL2_WVF_LIMITERMAP_H
#define ZYL2_WVF_LIMITERMAP_H

#include "Zyl2/Wvf/BlockSizeLimiter.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Zyl2Wvf {

/// The limiter of each key that something was ever put under, in plain order of the keys. The
/// reserved names of the slot table have limiters, too.
class LimiterMap
{
public:
    /// Null for a key that nothing was ever put under. Limiters stay where they are.
    BlockSizeLimiter* Find(std::string_view name)
    {
        // Inline in the header: each put under a key by its name begins with this search.
        auto const found = limiters_.find(name);
        return found == limiters_.end() ? nullptr : &found->second;
    }

    /// From now on this is the limit of new limiters, whatever the environment says.
    void SetLimit(std::uint32_t bytes) { limit_ = bytes; }

    /// A new limiter takes its limit from the environment, unless another was set.
    BlockSizeLimiter& GetOrAdd(std::string const& name);

    /// A new limiter gets that limit; one that is there keeps its own.
    BlockSizeLimiter& GetOrAdd(std::string const& name, std::uint32_t limit);

    /// \throws KeyNotFound nothing was ever put under the key
    BlockSizeLimiter& Get(std::string_view name);

    void Remove(std::string_view name);

    auto begin() { return limiters_.begin(); }
    auto end() { return limiters_.end(); }

private:
    std::optional<std::uint32_t> limit_;
    std::map<std::string, BlockSizeLimiter, std::less<>> limiters_;
};

} // namespace Zyl2Wvf

#endif
