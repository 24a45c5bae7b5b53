#ifndef TESTS_FAULT_OWNDISK_H
#define TESTS_FAULT_OWNDISK_H

#include <string>

namespace Fault {

/// A small disk in memory that no other process sees, and that goes with the process that made it.
class OwnDisk
{
public:
    /// \param size such as "4m"
    /// \throws std::system_error this process may not have one
    explicit OwnDisk(std::string const& size);
    OwnDisk(OwnDisk const&) = delete;
    OwnDisk& operator=(OwnDisk const&) = delete;
    ~OwnDisk();

    /// Where it can be reached.
    std::string folder() const;

private:
    int mount_;
};

} // namespace Fault

#endif
