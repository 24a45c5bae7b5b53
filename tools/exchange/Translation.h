#ifndef EXCHANGE_TRANSLATION_H
#define EXCHANGE_TRANSLATION_H

#include "Report.h"
#include "SequentialSource.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace Exchange {

struct TranslationOptions
{
    /// Whether an existing output file is replaced.
    bool overwrite = false;
    /// Whether of a file that ends too early the steps are kept that are whole.
    bool partial = false;
    /// Name of the program that writes, for the model's writing record.
    std::string application = "mox";
    /// Told how much of the work is done, and of how much, whenever a step begins and at the end.
    std::function<void(std::uint64_t, std::uint64_t)> progress = [](std::uint64_t, std::uint64_t) {
    };
};

/// What a translation has written.
struct Summary
{
    std::size_t nodes = 0;
    std::size_t elements = 0;
    std::size_t steps = 0;
    /// How many fields of all parts and steps.
    std::size_t fields = 0;
};

/// Opens the file of that name.
using SourceOpener =
    std::function<std::unique_ptr<SequentialSource>(std::filesystem::path const&, Report&)>;

/// Translates a result file into a model. The output file appears when it is whole; after a
/// failure there is none, and one that was there before is as it was.
///
/// Throws `Error`: the name of the file that it is about, a colon, and one sentence.
Summary translate(std::filesystem::path const& input, SourceOpener const& open,
                  std::filesystem::path const& output, TranslationOptions const& options,
                  Report& report);

} // namespace Exchange

#endif
