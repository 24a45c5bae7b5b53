// The file header, 12 bytes:
//
//     0   signature, 8: 0x89 "WVF" 0x0D 0x0A 0x1A 0x0A
//     8   version, 4:   "1.3" 0x00
//
// The root index follows; see SlotTable.cpp.

#include "Zyl2/Wvf/WvFile.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Log/Statement.h"
#include "Zyl2/Util/Files.h"
#include "Zyl2/Wvf/Globals.h"
#include "Zyl2/Wvf/RecoveryFolder.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Zyl2Wvf {

namespace {

namespace WvFileSites = Zyl2::Exception::Sites::WvFile;
using Zyl2::Exception::raise;

constexpr std::array<unsigned char, 8> Signature{0x89, 'W', 'V', 'F', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::size_t VersionLength = 4;
constexpr std::uint64_t HeaderLength = Signature.size() + VersionLength;

/// A name with a zero byte would reach another file than the one that was asked for.
bool CanBeAName(std::string const& path)
{
    return path.find('\0') == std::string::npos;
}

/// \param error number of the system's error; 0 when the system was not asked
[[noreturn]] void RaiseFileNotOpened(std::string const& path, int error)
{
    // An exception's text ends at the first zero byte, so a path with one is cut there: the text
    // keeps its closing quote.
    std::string const message = WvFileSites::NotOpened.text + path.substr(0, path.find('\0')) + '"';
    auto site = WvFileSites::NotOpened;
    site.text = message.c_str();
    raise(site, error == 0 ? "the path holds a zero byte" : std::strerror(error));
}

std::string SentenceOfExisting(std::string const& path)
{
    return Zyl2::Exception::sentence(
        path, " exists",
        RecoveryFolder::IsBeside(path)
            ? Zyl2::Exception::sentence(", an earlier run of it can be recovered: mox recover ",
                                        path)
            : std::string(),
        ", and overwriting was not asked for");
}

} // namespace

WvFile::WvFile() : index_(HeaderLength) {}

WvFile::~WvFile() noexcept
{
    WvFile::CloseFile();
}

void WvFile::OpenFile(std::string const& path, char const* mode)
{
    if (stream_ != nullptr)
        raise(WvFileSites::StreamInUse);
    stream_ = CanBeAName(path) ? std::fopen(path.c_str(), mode) : nullptr;
    if (stream_ == nullptr)
        RaiseFileNotOpened(path, CanBeAName(path) ? errno : 0);
    hadName_ = Zyl2Util::HasName(stream_);
}

void WvFile::OpenFile(std::wstring const& path, wchar_t const* mode)
{
    OpenFile(Zyl2Util::Narrowed(path), Zyl2Util::Narrowed(mode).c_str());
}

void WvFile::OpenFileForWriting(std::string const& path, bool overwrite)
{
    if (!overwrite && CanBeAName(path) && Zyl2Util::FileExists(path.c_str()))
        raise(WvFileSites::FileExists, SentenceOfExisting(path));
    OpenFile(path, "wb");
}

void WvFile::OpenFileForWriting(std::wstring const& path, bool overwrite)
{
    if (!overwrite && CanBeAName(Zyl2Util::Narrowed(path)) && Zyl2Util::FileExists(path.c_str()))
        raise(WvFileSites::WideFileExists, SentenceOfExisting(Zyl2Util::Narrowed(path)));
    OpenFile(path, L"wb");
}

void WvFile::WriteHeader()
{
    std::fwrite(Signature.data(), 1, Signature.size(), stream_);
    std::fwrite(mox_file_version.c_str(), 1, VersionLength, stream_);
}

void WvFile::AddBlockTransformation(std::string const& name, BlockTransformationType type)
{
    index_.AddTransformation(name, type);
}

void WvFile::KeepUnsaved(std::string const& key, std::unique_ptr<BlockKeeper> keeper)
{
    keeper_ = std::move(keeper);
    index_.KeepUnsaved(key, *keeper_);
    // Without its header the file would not be known as a model's. A failure shows as those of the
    // header do.
    std::fflush(stream_);
}

void WvFile::CloseFile()
{
    Zyl2::Log::write(WvFileSites::Source, BOOST_CURRENT_FUNCTION, __LINE__, "Closing file ...");
    // What a forked process has in its copy of the stream is for the other one to write.
    if (stream_ != nullptr && index_.IsForked())
        Zyl2Util::ForgetUnwritten(stream_);
    index_.StopThreads();
    if (stream_ == nullptr)
        return;
    // A file that had no name when it was opened, such as one that the host removed and keeps open
    // itself, has lost nothing.
    hasLostItsName_ = hadName_ && !Zyl2Util::HasName(stream_);
    hasFailedToClose_ = std::fclose(stream_) != 0;
    stream_ = nullptr;
    Zyl2::Log::write(WvFileSites::Source, BOOST_CURRENT_FUNCTION, __LINE__, "File closed.");
}

} // namespace Zyl2Wvf
