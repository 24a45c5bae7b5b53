#ifndef READ_GMSH_SESSION_H
#define READ_GMSH_SESSION_H

#include "exchange/Report.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

namespace Gmsh {

/// The library with one file in it. There is one at a time, because the library is one big state.
///
/// Some damaged files make Gmsh crash: who reads files of strangers does so in a process of its
/// own.
class Session
{
public:
    /// Reads the file; throws `Exchange::Error`. What Gmsh warns of is told to the report.
    Session(std::filesystem::path const& path, Exchange::Report& report);
    ~Session();

    Session(Session const&) = delete;
    Session& operator=(Session const&) = delete;

    /// How many nodes Gmsh says that it has read; 0 when it doesn't say so. Of files of version 2
    /// it drops those that no element uses.
    std::size_t nodesRead() const { return nodesRead_; }

    /// Calls the library; what it throws, of whatever type, becomes `Exchange::Error`.
    static void call(std::function<void()> const& function);

private:
    void read(std::string const& path, Exchange::Report& report);

    std::size_t nodesRead_ = 0;
};

} // namespace Gmsh

#endif
