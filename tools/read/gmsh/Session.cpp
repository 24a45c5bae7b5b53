#include "Session.h"

#include "NamelessFile.h"

#include "exchange/Error.h"

#include <gmsh.h>

#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <vector>

namespace Gmsh {

namespace {

bool isOpen = false;

[[noreturn]] void fail(std::string const& reason)
{
    std::string sentence = "The file is damaged: Gmsh cannot read it";
    if (!reason.empty())
        sentence += " (" + reason + ")";
    throw Exchange::Error(sentence + ".");
}

/// Gmsh names the file as it knows it, which would tell nobody anything.
std::string withoutPath(std::string text, std::string const& path)
{
    std::string const quoted = "'" + path + "'";
    std::size_t const found = text.find(quoted);
    return found == std::string::npos ? text : text.replace(found, quoted.size(), "the file");
}

std::vector<std::string> messagesAfter(std::string const& beginning)
{
    std::vector<std::string> messages;
    gmsh::logger::get(messages);
    std::vector<std::string> chosen;
    for (std::string const& message : messages)
        if (message.compare(0, beginning.size(), beginning) == 0)
            chosen.push_back(message.substr(beginning.size()));
    return chosen;
}

void reportWarnings(std::string const& path, Exchange::Report& report)
{
    for (std::string const& warning : messagesAfter("Warning: "))
        report.warn("Gmsh warns: " + withoutPath(warning, path));
}

std::size_t findNodesRead()
{
    std::size_t count = 0;
    for (std::string const& message : messagesAfter("Info: ")) {
        std::istringstream text(message);
        std::size_t number = 0;
        std::string what;
        if (text >> number >> what && what == "nodes")
            count = number;
    }
    return count;
}

void start()
{
    // Gmsh is not to read the user's configuration, which could change what is read.
    gmsh::initialize(0, nullptr, false);
    gmsh::option::setNumber("General.Terminal", 0);
}

} // namespace

void Session::call(std::function<void()> const& function)
{
    try {
        function();
    } catch (Exchange::Error const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const& error) {
        fail(error.what());
    } catch (std::string const& message) {
        fail(message);
    } catch (...) {
        fail("");
    }
}

Session::Session(std::filesystem::path const& path, Exchange::Report& report)
{
    if (isOpen)
        throw Exchange::Error("Only one Gmsh file can be open at a time.");
    NamelessFile const file(path);
    start();
    isOpen = true;
    try {
        read(file.path(), report);
    } catch (...) {
        gmsh::finalize();
        isOpen = false;
        throw;
    }
}

Session::~Session()
{
    gmsh::finalize();
    isOpen = false;
}

void Session::read(std::string const& path, Exchange::Report& report)
{
    gmsh::logger::start();
    try {
        call([&path] { gmsh::merge(path); });
    } catch (Exchange::Error const& error) {
        throw Exchange::Error(withoutPath(error.what(), path));
    }
    reportWarnings(path, report);
    nodesRead_ = findNodesRead();
    gmsh::logger::stop();
}

} // namespace Gmsh
