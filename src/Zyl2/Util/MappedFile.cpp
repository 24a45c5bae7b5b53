#include "Zyl2/Util/MappedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

namespace Zyl2Util {

MappedFile::~MappedFile()
{
    if (data_ != nullptr)
        munmap(data_, size_);
    ::close(descriptor_);
}

int MappedFile::Grow(std::size_t size) noexcept
{
    int error = EINTR;
    while (error == EINTR)
        error = posix_fallocate(descriptor_, static_cast<off_t>(size_),
                                static_cast<off_t>(size - size_));
    if (error != 0)
        return error;
    void* pages = nullptr;
    if (data_ == nullptr) {
        pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0);
    } else {
#ifdef MREMAP_MAYMOVE
        pages = mremap(data_, size_, size, MREMAP_MAYMOVE);
#else
        pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0);
        if (pages != MAP_FAILED)
            munmap(data_, size_);
#endif
    }
    if (pages == MAP_FAILED)
        return errno;
    data_ = static_cast<unsigned char*>(pages);
    size_ = size;
    return 0;
}

int MappedFile::Synchronise() const noexcept
{
    return fdatasync(descriptor_) == 0 ? 0 : errno;
}

} // namespace Zyl2Util
