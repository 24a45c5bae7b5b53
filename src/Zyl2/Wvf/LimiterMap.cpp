#include "Zyl2/Wvf/LimiterMap.h"

#include "Zyl2/Exception/Raise.h"

namespace Zyl2Wvf {

BlockSizeLimiter& LimiterMap::GetOrAdd(std::string const& name)
{
    // Looked for first: making a limiter reads the environment.
    auto const found = limiters_.find(name);
    if (found != limiters_.end())
        return found->second;
    return limit_ ? GetOrAdd(name, *limit_) : limiters_[name];
}

BlockSizeLimiter& LimiterMap::GetOrAdd(std::string const& name, std::uint32_t limit)
{
    return limiters_.try_emplace(name, limit).first->second;
}

BlockSizeLimiter& LimiterMap::Get(std::string_view name)
{
    BlockSizeLimiter* const found = Find(name);
    if (found == nullptr)
        Zyl2::Exception::raise(Zyl2::Exception::Sites::Index::UnknownKey);
    return *found;
}

void LimiterMap::Remove(std::string_view name)
{
    auto const found = limiters_.find(name);
    if (found != limiters_.end())
        limiters_.erase(found);
}

} // namespace Zyl2Wvf
