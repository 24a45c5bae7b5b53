#ifndef TESTS_TREE_HOSTIDENTITY_H
#define TESTS_TREE_HOSTIDENTITY_H

#include <optional>
#include <string>

namespace Support {

/// While one lives, the system calls host and user what it says.
class HostIdentity
{
public:
    /// \param host  nothing makes the call fail; a long name fills the buffer to its last byte
    /// \param login nothing makes the call fail
    HostIdentity(std::optional<std::string> host, std::optional<std::string> login);
    HostIdentity(HostIdentity const&) = delete;
    HostIdentity& operator=(HostIdentity const&) = delete;
    ~HostIdentity();

    std::optional<std::string> const hostName;
    std::optional<std::string> const loginName;
};

} // namespace Support

#endif
