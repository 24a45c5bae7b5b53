#include "OutputFiles.h"

#include "common/SignalsHeld.h"

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#include <sys/stat.h>

namespace Export {

namespace fs = std::filesystem;

namespace {

// Files that are replaced wait here, so that they come back if the new ones can't be put in place.
constexpr char const* replacedName = "replaced";
constexpr char const* newName = "new";

[[noreturn]] void failWith(std::error_code const& error)
{
    throw std::runtime_error("The file cannot be written: " + error.message() + ".");
}

void check(std::error_code const& error)
{
    if (error)
        failWith(error);
}

fs::path folderBeside(fs::path const& file)
{
    return fs::path(file).replace_extension();
}

bool isThere(fs::path const& path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

bool isOurs(fs::directory_entry const& entry)
{
    if (entry.is_symlink())
        return false;
    std::string const ending = entry.path().extension().string();
    return entry.is_directory() || ending == ".vtu" || ending == ".vtm";
}

void checkFolder(fs::path const& folder)
{
    if (!isThere(folder))
        return;
    if (!fs::is_directory(fs::symlink_status(folder)))
        throw std::runtime_error("The folder " + folder.string() +
                                 " is needed, but this is no folder.");
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder))
        if (!isOurs(entry))
            throw std::runtime_error(
                "The folder " + folder.string() +
                " holds more than .vtu and .vtm files and is not overwritten.");
}

fs::path const& checkTarget(fs::path const& target, bool overwrite)
{
    bool const isTaken = isThere(target) || isThere(folderBeside(target));
    if (isTaken && !overwrite)
        throw std::runtime_error(isThere(target) ? "File exists."
                                                 : "The folder beside it exists: " +
                                                       folderBeside(target).string() + ".");
    if (isThere(target) && !fs::is_regular_file(fs::symlink_status(target)))
        throw std::runtime_error("This is not a regular file and is not overwritten.");
    checkFolder(folderBeside(target));
    return target;
}

// Returns false when something of that name is there already.
bool makeFolder(fs::path const& path)
{
    if (::mkdir(path.c_str(), 0777) == 0)
        return true;
    if (errno != EEXIST)
        failWith(std::error_code(errno, std::generic_category()));
    return false;
}

} // namespace

OutputFiles::OutputFiles(fs::path const& target, bool overwrite)
    : target_(checkTarget(target, overwrite)), overwrite_(overwrite), temporary_(target, makeFolder)
{
    makeFolder(temporary_.path() / replacedName);
    makeFolder(temporary_.path() / newName);
    makeFolder(folder());
}

fs::path OutputFiles::file() const
{
    return temporary_.path() / newName / target_.filename();
}

fs::path OutputFiles::folder() const
{
    return folderBeside(file());
}

void OutputFiles::publish()
{
    checkTarget(target_, overwrite_);
    // An end between the two would leave one of them, or neither the old nor the new.
    Common::SignalsHeld const held;
    moveAll();
}

void OutputFiles::moveAll()
{
    fs::path const file = target_.filename();
    fs::path const folder = folderBeside(file);
    try {
        moveAway(folder);
        moveToTarget(folder);
        moveAway(file);
        // The file gets its name last, since it refers to what is in the folder.
        moveToTarget(file);
    } catch (...) {
        moveBack(file);
        moveBack(folder);
        throw;
    }
}

void OutputFiles::moveToTarget(fs::path const& name)
{
    std::error_code error;
    fs::rename(temporary_.path() / newName / name, target_.parent_path() / name, error);
    check(error);
}

void OutputFiles::moveAway(fs::path const& name)
{
    fs::path const old = target_.parent_path() / name;
    if (!isThere(old))
        return;
    std::error_code error;
    fs::rename(old, temporary_.path() / replacedName / name, error);
    check(error);
}

void OutputFiles::moveBack(fs::path const& name) noexcept
{
    std::error_code ignored;
    bool const wasPublished = !isThere(temporary_.path() / newName / name);
    if (wasPublished)
        fs::rename(target_.parent_path() / name, temporary_.path() / newName / name, ignored);
    if (isThere(temporary_.path() / replacedName / name))
        fs::rename(temporary_.path() / replacedName / name, target_.parent_path() / name, ignored);
}

} // namespace Export
