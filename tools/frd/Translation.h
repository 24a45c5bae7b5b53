#ifndef FRD_TRANSLATION_H
#define FRD_TRANSLATION_H

#include <cstddef>
#include <filesystem>
#include <string>

namespace Frd {

struct TranslationOptions
{
    /// Whether an existing output file is replaced.
    bool overwrite = false;
    /// Name of the program that writes, for the model's writing record.
    std::string application = "mox";
};

/// What a translation has written.
struct Summary
{
    std::size_t nodes = 0;
    std::size_t elements = 0;
    std::size_t steps = 0;
    /// Of all steps.
    std::size_t fields = 0;
};

/// Translates a result file into a model. The output file appears when it is whole; after a
/// failure there is none, and one that was there before is as it was.
///
/// Throws `Error`: the name of the file that it is about, a colon, and one sentence.
Summary translate(std::filesystem::path const& input, std::filesystem::path const& output,
                  TranslationOptions const& options = TranslationOptions());

} // namespace Frd

#endif
