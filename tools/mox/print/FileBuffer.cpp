#include "FileBuffer.h"

#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <unistd.h>

namespace Mox {

namespace {

constexpr std::size_t bytesAtATime = std::size_t{1} << 16U;

} // namespace

FileBuffer::FileBuffer(std::string const& path)
    : piece_(bytesAtATime), descriptor_(::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC))
{
    check(descriptor_ >= 0);
    setp(piece_.data(), piece_.data() + piece_.size());
}

FileBuffer::~FileBuffer()
{
    close();
}

bool FileBuffer::close()
{
    if (descriptor_ < 0)
        return error_ == 0;
    writeOut();
    check(::close(descriptor_) == 0);
    descriptor_ = -1;
    return error_ == 0;
}

FileBuffer::int_type FileBuffer::overflow(int_type character)
{
    if (!writeOut())
        return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

int FileBuffer::sync()
{
    return writeOut() ? 0 : -1;
}

bool FileBuffer::writeOut()
{
    char const* from = pbase();
    while (error_ == 0 && from < pptr()) {
        ssize_t const count = ::write(descriptor_, from, static_cast<std::size_t>(pptr() - from));
        if (count < 0 && errno == EINTR)
            continue;
        if (check(count >= 0))
            from += count;
    }
    setp(piece_.data(), piece_.data() + piece_.size());
    return error_ == 0;
}

bool FileBuffer::check(bool isGood)
{
    if (!isGood && error_ == 0)
        error_ = errno;
    return isGood;
}

} // namespace Mox
