#ifndef TESTS_FAULT_FAULTS_H
#define TESTS_FAULT_FAULTS_H

#include <cstddef>

namespace Fault {

/// Where something can go wrong.
enum class Place
{
    None,
    /// `malloc`, `calloc`, `realloc` and `operator new`, zlib's own included.
    Allocation,
    /// `fopen`, `fwrite`, `fseeko`, `fflush` and `fclose`.
    StreamCall,
    /// What the streams ask of the system: writing, seeking, closing.
    Device,
    /// The start of a thread.
    ThreadStart,
    /// Room in a file: `posix_fallocate`, and files that are made (`openat`).
    Reservation,
    /// What is asked of files by their names and descriptors: `rename`, `ftruncate`, `pread`,
    /// `pwrite`, `fsync`, `fdatasync`.
    File
};

enum class Repeat
{
    Once,
    FromThenOn
};

/// The library is at work as long as one lives, and so are its threads; what others do meanwhile is
/// neither counted nor made to fail.
class AtWork
{
public:
    AtWork();
    ~AtWork();
    AtWork(AtWork const&) = delete;
    AtWork& operator=(AtWork const&) = delete;
};

/// While one lives, one operation of the library fails, or all from that one on.
class Injection
{
public:
    /// \param ordinal which operation at the place fails: 0 for the next
    Injection(Place place, std::size_t ordinal, Repeat repeat);
    ~Injection();
    Injection(Injection const&) = delete;
    Injection& operator=(Injection const&) = delete;

    /// Whether the library got as far as the operation.
    bool hasStruck() const;
};

/// While one lives, files get so many bytes more, and then the disk is full.
class FullDisk
{
public:
    explicit FullDisk(std::size_t bytes);
    ~FullDisk();
    FullDisk(FullDisk const&) = delete;
    FullDisk& operator=(FullDisk const&) = delete;

    /// Whether more was asked for.
    bool wasFull() const;
};

/// While one lives, this process is killed when the device is asked for the `ordinal`-th time; of
/// a write, half of the bytes are there by then.
class Killing
{
public:
    explicit Killing(std::size_t ordinal);
    ~Killing();
    Killing(Killing const&) = delete;
    Killing& operator=(Killing const&) = delete;
};

/// Allocations of this program that were not released yet.
long liveAllocations();

// For those that stand in for the C library.

/// Counts an operation. \return whether it has to fail
bool strikes(Place place);
/// Takes room on the disk.
/// \return how many of these bytes there are
std::size_t takeRoom(std::size_t bytes);
/// Whether some operation is to fail or to be the last.
bool isPlanned();
/// Counts an operation of the device. \return whether the process is to be killed
bool kills();
void countAllocation(long change);

} // namespace Fault

#endif
