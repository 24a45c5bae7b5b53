#include "fault/OwnDisk.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace Fault {

namespace {

[[noreturn]] void fail(char const* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

int checked(int result, char const* what)
{
    if (result < 0)
        fail(what);
    return result;
}

/// Makes a file system in memory that is not attached to any folder, so that it goes with its last
/// descriptor and depends on no folder of the machine.
int mountDetached(std::string const& size)
{
    int const fileSystem = checked(::fsopen("tmpfs", FSOPEN_CLOEXEC), "fsopen");
    checked(::fsconfig(fileSystem, FSCONFIG_SET_STRING, "size", size.c_str(), 0), "size");
    checked(::fsconfig(fileSystem, FSCONFIG_CMD_CREATE, nullptr, nullptr, 0), "create");
    int const mount = checked(::fsmount(fileSystem, FSMOUNT_CLOEXEC, 0), "fsmount");
    ::close(fileSystem);
    return mount;
}

/// Makes this process the administrator of a namespace that holds nothing but itself.
void enterOwnNamespace()
{
    std::string const user = std::to_string(::geteuid());
    std::string const group = std::to_string(::getegid());
    checked(::unshare(CLONE_NEWUSER | CLONE_NEWNS), "a namespace of its own");
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
}

int mountWithOrWithoutRights(std::string const& size)
{
    try {
        return mountDetached(size);
    } catch (std::system_error const&) {
        enterOwnNamespace();
        return mountDetached(size);
    }
}

} // namespace

OwnDisk::OwnDisk(std::string const& size) : mount_(mountWithOrWithoutRights(size)) {}

OwnDisk::~OwnDisk()
{
    ::close(mount_);
}

std::string OwnDisk::folder() const
{
    return "/proc/self/fd/" + std::to_string(mount_);
}

} // namespace Fault
