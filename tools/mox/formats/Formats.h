#ifndef MOX_FORMATS_FORMATS_H
#define MOX_FORMATS_FORMATS_H

#include "FileProbe.h"
#include "Library.h"

#include <exchange/Translation.h>

#include <functional>
#include <string>
#include <vector>

namespace Mox {

/// A format of result files.
struct Format
{
    /// As it is told to people: "VTK XML".
    std::string name;
    std::function<bool(FileProbe const&)> recognises;
    /// Empty when what reads it isn't built in.
    Exchange::SourceOpener open;
    Library library = Library::None;
    /// The Debian package that has to be there when the format's reader is built; empty for
    /// those that are always there.
    std::string package = {};
};

/// All formats, in the order in which they are asked.
std::vector<Format> const& formats();

/// The first format that recognises the file, or null.
Format const* formatOf(FileProbe const& probe);

} // namespace Mox

#endif
