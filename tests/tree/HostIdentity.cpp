#include "HostIdentity.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

Support::HostIdentity const* activeIdentity = nullptr;

/// Copies the name and its terminator, as far as there is room.
void CopyBounded(std::string const& name, char* buffer, std::size_t size)
{
    std::memcpy(buffer, name.c_str(), name.size() + 1 < size ? name.size() + 1 : size);
}

} // namespace

// The linker sends the program's own calls here instead of to the C library.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker chooses the names
extern "C" {
int __real_gethostname(char* buffer, std::size_t size);
int __real_getlogin_r(char* buffer, std::size_t size);
int __wrap_gethostname(char* buffer, std::size_t size);
int __wrap_getlogin_r(char* buffer, std::size_t size);

int __wrap_gethostname(char* buffer, std::size_t size)
{
    if (activeIdentity == nullptr)
        return __real_gethostname(buffer, size);
    if (!activeIdentity->hostName)
        return -1;
    CopyBounded(*activeIdentity->hostName, buffer, size);
    return 0;
}

int __wrap_getlogin_r(char* buffer, std::size_t size)
{
    if (activeIdentity == nullptr)
        return __real_getlogin_r(buffer, size);
    if (!activeIdentity->loginName)
        return ENXIO;
    CopyBounded(*activeIdentity->loginName, buffer, size);
    return 0;
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace Support {

HostIdentity::HostIdentity(std::optional<std::string> host, std::optional<std::string> login)
    : hostName(std::move(host)), loginName(std::move(login))
{
    activeIdentity = this;
}

HostIdentity::~HostIdentity()
{
    activeIdentity = nullptr;
}

} // namespace Support
