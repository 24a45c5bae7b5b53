#ifndef EXPORT_EXPORT_H
#define EXPORT_EXPORT_H

#include "moxread/ReadOptions.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Export {

struct ExportOptions
{
    /// Name of the one step that is written; without it, the last for a single file and all of them
    /// for a collection.
    std::optional<std::string> step;
    /// Whether existing output is replaced.
    bool overwrite = false;
    MoxRead::ReadOptions reading;
    /// Told how many stages of the work are done, and of how many.
    std::function<void(std::size_t, std::size_t)> progress = [](std::size_t, std::size_t) {};
};

/// What was written.
struct ExportSummary
{
    std::size_t shapes = 0;
    std::uint64_t nodes = 0;
    std::uint64_t elements = 0;
    std::vector<std::string> steps;
    /// Names of the arrays on nodes and elements, in ascending order.
    std::vector<std::string> fields;
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    /// What could not be carried over, each in one sentence.
    std::vector<std::string> warnings;
};

/// Writes a model file's shapes and results as VTK's XML files: .vtu one grid, .vtm one block for
/// each shape, .pvd one of these for each step. The output appears when it is whole; after a
/// failure there is none, and what was there before is as it was.
///
/// Throws `Error`: the name of the file that it is about, a colon, and one sentence.
ExportSummary exportModel(std::string const& input, std::string const& output,
                          ExportOptions const& options = ExportOptions());

} // namespace Export

#endif
