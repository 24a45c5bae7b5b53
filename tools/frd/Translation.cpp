#include "Translation.h"

#include "Error.h"
#include "ModelWriter.h"
#include "Reader.h"

#include "common/PartialFile.h"

#include <new>
#include <stdexcept>

namespace Frd {

namespace {

std::string sentence(std::filesystem::path const& file, std::string const& message)
{
    return file.string() + ": " + message;
}

void refuseSameFile(std::filesystem::path const& input, std::filesystem::path const& output)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(input, output, ignored))
        throw std::runtime_error("This is the input itself.");
}

Summary run(std::filesystem::path const& input, std::filesystem::path const& output,
            TranslationOptions const& options)
{
    refuseSameFile(input, output);
    Reader reader(input);
    if (reader.mesh().nodes().empty())
        throw Error("The file holds no nodes.");
    Common::PartialFile file(output, options.overwrite);
    ModelWriter::Source const source{reader.header(), reader.mesh(), input.filename().string()};
    ModelWriter writer(source, file.path(), options.application);
    ResultBlock block;
    while (reader.next(block))
        writer.addResult(block);
    writer.close();
    file.publish();
    return {reader.mesh().nodes().size(), reader.mesh().elements().size(), writer.stepCount(),
            writer.resultCount()};
}

} // namespace

Summary translate(std::filesystem::path const& input, std::filesystem::path const& output,
                  TranslationOptions const& options)
{
    try {
        return run(input, output, options);
    } catch (Error const& error) {
        throw Error(sentence(input, error.what()));
    } catch (std::bad_alloc const&) {
        throw Error(sentence(input, "There is not enough memory for this file."));
    } catch (std::exception const& error) {
        throw Error(sentence(output, error.what()));
    }
}

} // namespace Frd
