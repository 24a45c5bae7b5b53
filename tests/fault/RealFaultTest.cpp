#include "fault/Child.h"
#include "fault/OwnDisk.h"

#include "container/TemporaryFile.h"
#include "moxread/FormatError.h"
#include "moxread/Verify.h"
#include "support/Environment.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Fault {

namespace {

using namespace Zyl2::Mox2;

constexpr std::uintmax_t Page = 4096;
constexpr char const* Sound = "sound";
constexpr char const* NotWritten = "7: Unable to write to file";
constexpr char const* BlockNotSaved = "7: Saving the buffer failed";
constexpr char const* Exists = "5: File exists.";

std::string notOpened(std::string const& path)
{
    return "2: Unable to open file \"" + path + '"';
}

SaverOptions optionsOf(bool overwrite, int threads)
{
    SaverOptions options;
    options.overwrite = overwrite;
    options.threads = threads;
    return options;
}

/// Values that hardly compress.
Array1d<unsigned int> values(std::size_t count)
{
    std::mt19937 random(1);
    std::vector<unsigned int> result(count);
    for (unsigned int& value : result)
        value = static_cast<unsigned int>(random());
    return Array1d<unsigned int>(result);
}

void fill(Model& model, unsigned int datasets, std::size_t valuesEach)
{
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    Array1d<unsigned int> const array = values(valuesEach);
    for (unsigned int dataset = 0; dataset < datasets; ++dataset)
        model.addArrayProperty("dataset " + std::to_string(dataset), DatasetType::Result10, array,
                               shape, Step());
}

std::string stateOf(std::string const& path)
{
    try {
        MoxRead::verify(path);
        return Sound;
    } catch (MoxRead::FormatError const& error) {
        return error.what();
    }
}

/// What a host sees that does as the documentation says: it calls `close` before the model goes.
struct Writing
{
    bool overwrite = false;
    unsigned int datasets = 2;
    std::size_t valuesEach = 1000;
    int threads = 0;

    /// \return the error code and the text of the first exception; without one, what the reader
    ///         says of the file
    std::string to(std::string const& path) const
    {
        Model model;
        try {
            model.saveTo(path, optionsOf(overwrite, threads));
            fill(model, datasets, valuesEach);
            model.close();
            return stateOf(path);
        } catch (Zyl2::Exception::Exception const& failure) {
            closeQuietly(model);
            return std::to_string(failure.errorCode()) + ": " + failure.what();
        }
    }

private:
    static void closeQuietly(Model& model)
    {
        try {
            model.close();
        } catch (Zyl2::Exception::FileWriteException const&) {
            // The first exception is the outcome; that closing fails, too, adds nothing.
        }
    }
};

/// Files of this process can grow to a size only, as on a disk that fills up.
void limitFileSize(rlim_t size)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = size;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// Permissions are no matter to the administrator, unless a process lays down the right to pass
/// over them, which each may do.
void obeyPermissions()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> rights{};
    if (::syscall(SYS_capset, &header, rights.data()) != 0)
        throw std::system_error(errno, std::generic_category(), "laying down rights");
}

std::string obeyingPermissions(std::function<std::string()> const& action)
{
    return inChild([&] {
        obeyPermissions();
        return action();
    });
}

/// Fills a disk with one file so that only some pages are left.
void fillDisk(std::string const& file, std::uintmax_t pagesLeft)
{
    std::filesystem::remove(file);
    std::uintmax_t const left =
        std::filesystem::space(std::filesystem::path(file).parent_path()).available;
    int const descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT, 0666);
    static_cast<void>(
        ::posix_fallocate(descriptor, 0, static_cast<off_t>(left - pagesLeft * Page)) == 0);
    ::close(descriptor);
}

std::string outcomeWithThreads(std::string const& path)
{
    std::filesystem::remove(path);
    Writing writing;
    writing.threads = 2;
    return writing.to(path);
}

/// Writes the same model again and again, with more room on the disk each time, until it fits; each
/// time with threads, too, which must not change what the host is told.
/// \param makeRoom takes the number of the attempt
/// \return how many attempts failed, or what was wrong with a failure
template <typename MakeRoom>
std::string writeUntilItFits(std::string const& path, MakeRoom makeRoom)
{
    for (unsigned int attempt = 0;; ++attempt) {
        makeRoom(attempt);
        std::string const outcome = Writing().to(path);
        if (outcome == Sound)
            return std::to_string(attempt) + " failed";
        if (outcome != NotWritten && outcome != BlockNotSaved)
            return outcome;
        if (std::filesystem::exists(path) && stateOf(path) == Sound)
            return "reported as failed, and yet sound";
        // The time of writing may make the difference between a failure and a file that just fits.
        std::string const withThreads = outcomeWithThreads(path);
        if (withThreads != outcome && withThreads != Sound)
            return outcome + ", and with threads: " + withThreads;
        std::filesystem::remove(path);
    }
}

class RealFaultTest : public testing::Test
{
protected:
    Support::TemporaryFolder folder;
    std::string path = folder.File("model.mox");
};

std::unique_ptr<OwnDisk> ownDiskIfAllowed(std::uintmax_t pages)
{
    try {
        return std::make_unique<OwnDisk>(std::to_string(pages * Page));
    } catch (std::system_error const&) {
        return nullptr;
    }
}

/// A disk that a process can fill. Some containers let none have a disk of its own, not even in a
/// namespace of its own; files that may not grow stand in for it there, and refuse the same bytes.
class SmallDisk
{
public:
    /// \param standIn folder to be used where there is no disk
    SmallDisk(std::unique_ptr<OwnDisk> disk, std::uintmax_t pages, std::string const& standIn)
        : disk_(std::move(disk)), folder_(disk_ ? disk_->folder() : standIn)
    {
        if (!disk_)
            leaveRoom(pages);
    }

    std::string const& folder() const { return folder_; }
    std::string kind() const { return disk_ ? "a disk of its own" : "a stand-in"; }

    void leaveRoom(std::uintmax_t pages) const
    {
        if (disk_)
            fillDisk(folder_ + "/other", pages);
        else
            limitFileSize(pages * Page);
    }

private:
    std::unique_ptr<OwnDisk> disk_;
    std::string folder_;
};

enum class Disk
{
    OwnWhereAllowed,
    StandIn
};

std::string diskName(testing::TestParamInfo<Disk> const& info)
{
    return info.param == Disk::StandIn ? "StandIn" : "OwnWhereAllowed";
}

class FullDiskTest : public RealFaultTest, public testing::WithParamInterface<Disk>
{
protected:
    std::string onDisk(std::uintmax_t pages,
                       std::function<std::string(SmallDisk const&)> const& action)
    {
        std::string const text = inChild([&] {
            auto own = GetParam() == Disk::StandIn ? nullptr : ownDiskIfAllowed(pages);
            SmallDisk const disk(std::move(own), pages, folder.File(""));
            return disk.kind() + '\n' + action(disk);
        });
        std::size_t const end = text.find('\n');
        if (end == std::string::npos)
            return text;
        tellDisk(text.substr(0, end));
        return text.substr(end + 1);
    }

private:
    /// Tells in the log which kind of disk the test ran on: its result does not depend on that.
    static void tellDisk(std::string const& kind)
    {
        RecordProperty("disk", kind);
        std::cout << "The full disk is " << kind << ".\n";
    }
};

INSTANTIATE_TEST_SUITE_P(Disks, FullDiskTest, testing::Values(Disk::OwnWhereAllowed, Disk::StandIn),
                         diskName);

} // namespace

TEST_P(FullDiskTest, IsReportedHoweverMuchRoomItHasLeft)
{
    Support::DefaultBlockSizeSetting const setting("1000");
    std::string const outcome = onDisk(1024, [](SmallDisk const& disk) {
        return writeUntilItFits(disk.folder() + "/model.mox",
                                [&](unsigned int attempt) { disk.leaveRoom(attempt); });
    });
    std::filesystem::remove(path);
    ASSERT_EQ(Writing().to(path), Sound);
    EXPECT_EQ(outcome,
              std::to_string((std::filesystem::file_size(path) + Page - 1) / Page) + " failed");
}

TEST_P(FullDiskTest, IsReportedWhenItFillsUpWhileDatasetsAreAdded)
{
    Support::DefaultBlockSizeSetting const setting("100000");
    for (int const threads : {0, 2}) {
        std::string const outcome = onDisk(512, [threads](SmallDisk const& disk) {
            std::string const file = disk.folder() + "/model.mox";
            Writing const large{false, 50, 25000, threads};
            std::string const result = large.to(file);
            return result + ", " + stateOf(file);
        });
        EXPECT_EQ(outcome, std::string(NotWritten) +
                               ", incomplete: the root index at byte 12 was never written");
        std::filesystem::remove(path);
    }
}

TEST_F(RealFaultTest, AFileThatMayNotGrowIsReportedAtAnyByte)
{
    for (char const* const blockSize : {"1000", "10485760"}) {
        Support::DefaultBlockSizeSetting const setting(blockSize);
        constexpr rlim_t step = 97;
        std::string const outcome = inChild([&] {
            return writeUntilItFits(path,
                                    [](unsigned int attempt) { limitFileSize(attempt * step); });
        });
        std::filesystem::remove(path);
        ASSERT_EQ(Writing().to(path), Sound);
        // The time of writing, which is compressed, takes a byte more or less.
        std::uintmax_t const size = std::filesystem::file_size(path);
        std::filesystem::remove(path);
        EXPECT_NEAR(std::stod(outcome), static_cast<double>(size) / step, 2) << outcome;
    }
}

TEST_F(RealFaultTest, AFolderThatMayNotBeWrittenToIsReported)
{
    std::filesystem::permissions(folder.File("."), std::filesystem::perms(0555));
    std::string const outcome = obeyingPermissions([&] { return Writing().to(path); });
    std::filesystem::permissions(folder.File("."), std::filesystem::perms(0755));
    EXPECT_EQ(outcome, notOpened(path));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(RealFaultTest, AnUnreadableFileIsReportedAndKept)
{
    Support::WriteFile(path, "kept");
    std::filesystem::permissions(folder.File("."), std::filesystem::perms(0755));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    for (bool const overwrite : {false, true}) {
        Writing writing;
        writing.overwrite = overwrite;
        std::string const outcome = obeyingPermissions([&] { return writing.to(path); });
        EXPECT_EQ(outcome, overwrite ? notOpened(path) : Exists);
    }
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_EQ(Support::ReadFile(path), "kept");
}

TEST_F(RealFaultTest, AFolderIsNoFile)
{
    std::filesystem::create_directory(path);
    EXPECT_EQ(Writing().to(path), Exists);
    Writing writing;
    writing.overwrite = true;
    EXPECT_EQ(writing.to(path), notOpened(path));
    EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_F(RealFaultTest, ANameThatIsTooLongIsReported)
{
    std::string const longName = folder.File(std::string(300, 'n'));
    EXPECT_EQ(Writing().to(longName), notOpened(longName));
    EXPECT_TRUE(std::filesystem::is_empty(folder.File(".")));
}

TEST_F(RealFaultTest, AFileThatIsRemovedWhileItIsWrittenIsReported)
{
    Model model;
    model.saveTo(path);
    std::filesystem::remove(path);
    fill(model, 2, 1000);
    EXPECT_THROW(model.close(), Zyl2::Exception::FileWriteException);
    EXPECT_NO_THROW(model.close());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(Writing().to(path), Sound);
}

TEST_F(RealFaultTest, AModelWhoseFileWasThrownAwayGoesQuietly)
{
    EXPECT_NO_THROW({
        Model model;
        model.saveTo(path);
        fill(model, 2, 1000);
        std::filesystem::remove(path);
    });
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(RealFaultTest, AFileThatIsReplacedWhileItIsWrittenIsReported)
{
    Model model;
    model.saveTo(path);
    fill(model, 2, 1000);
    std::string const other = folder.File("other");
    std::ofstream(other) << "somebody else's";
    std::filesystem::rename(other, path);
    EXPECT_THROW(model.close(), Zyl2::Exception::FileWriteException);
    EXPECT_EQ(std::filesystem::file_size(path), 15U);
}

TEST_F(RealFaultTest, AFileThatIsMovedWhileItIsWrittenIsWhole)
{
    Model model;
    model.saveTo(path);
    fill(model, 2, 1000);
    std::string const other = folder.File("other");
    std::filesystem::rename(path, other);
    EXPECT_NO_THROW(model.close());
    EXPECT_NO_THROW(MoxRead::verify(other));
}

TEST_F(RealFaultTest, AFileThatNeverHadANameIsWrittenAllTheSame)
{
    int const file = ::memfd_create("model", MFD_CLOEXEC);
    ASSERT_GE(file, 0);
    std::string const name = "/proc/self/fd/" + std::to_string(file);
    Model model;
    Zyl2::Mox2::SaverOptions options;
    options.overwrite = true;
    model.saveTo(name, options);
    fill(model, 2, 1000);
    EXPECT_NO_THROW(model.close());
    EXPECT_NO_THROW(MoxRead::verify(name));
    ::close(file);
}

} // namespace Fault
