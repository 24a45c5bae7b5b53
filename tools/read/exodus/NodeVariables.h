#ifndef READ_EXODUS_NODEVARIABLES_H
#define READ_EXODUS_NODEVARIABLES_H

#include "Reals.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Exodus {

/// Results at nodes that a file has in one array each, `vals_nod_var1` and so on, though it does
/// not say so: the library looks for such arrays only where the attribute `file_size` is 1, and for
/// `vals_nod_var` elsewhere. Files that other programs wrote through netCDF often lack the
/// attribute. Their arrays may have several columns; each is a variable here, as in all other
/// files.
class NodeVariables
{
public:
    /// \param file an open file, as netCDF and the library number it; it must stay open
    /// \param names of the arrays
    NodeVariables(int file, std::size_t nodeCount, std::vector<std::string> const& names);

    /// Whether the file is one of those.
    static bool areApart(int file);

    /// A name for each column: that of its array, with an ending where it has several.
    std::vector<std::string> const& names() const { return names_; }

    /// Fills what has room for all nodes. Steps from 0.
    void read(std::size_t step, std::size_t variable, Reals& values) const;

private:
    struct Column
    {
        int array;
        std::size_t index;
    };

    void addArray(std::size_t number, std::string const& name);
    std::size_t columnsOf(int array) const;

    int file_;
    std::size_t nodeCount_;
    std::vector<std::string> names_;
    std::vector<Column> columns_;
};

} // namespace Exodus

#endif
