#include "Translation.h"

#include "Error.h"
#include "ModelWriter.h"

#include "common/PartialFile.h"

#include <Zyl2/Exception/Exception.h>

#include <new>
#include <stdexcept>

namespace Exchange {

namespace {

std::string sentence(std::filesystem::path const& file, std::string const& message)
{
    return file.string() + ": " + message;
}

/// The last name of the path, also of a folder that is written with a slash behind it.
std::filesystem::path lastName(std::filesystem::path const& path)
{
    std::filesystem::path const normal = std::filesystem::absolute(path).lexically_normal();
    return normal.has_filename() ? normal.filename() : normal.parent_path().filename();
}

ModelWriter::Signature signatureOf(std::filesystem::path const& input,
                                   TranslationOptions const& options)
{
    std::filesystem::path const name = lastName(input);
    return {options.application, name.string(), name.stem().string()};
}

void refuseSameFile(std::filesystem::path const& input, std::filesystem::path const& output)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(input, output, ignored))
        throw std::runtime_error("This is the input itself.");
}

void writeParts(Source& source, ModelWriter& writer)
{
    std::vector<Part> parts = source.readParts();
    if (parts.empty())
        throw Error("The file holds no mesh.");
    for (Part& part : parts) {
        writer.addPart(part);
        part = Part();
    }
}

StepInfo namedStep(Source const& source, std::size_t index)
{
    StepInfo step = source.step(index);
    if (step.name.empty() && source.stepCount() > 1)
        step.name = "Step " + std::to_string(index + 1);
    return step;
}

/// Returns how many steps there are that deserve the name.
std::size_t writeSteps(Source& source, ModelWriter& writer)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < source.stepCount(); ++i) {
        StepInfo const step = namedStep(source, i);
        count += step.name.empty() ? 0 : 1;
        writer.startStep(step);
        source.readStep(i, [&writer](Field const& field) { writer.addField(field); });
    }
    return count;
}

Summary run(std::filesystem::path const& input, SourceOpener const& open,
            std::filesystem::path const& output, TranslationOptions const& options, Report& report)
{
    refuseSameFile(input, output);
    std::unique_ptr<Source> const source = open(input, report);
    Common::PartialFile file(output, options.overwrite);
    ModelWriter writer(file.path(), signatureOf(input, options), source->attributes(), report);
    writeParts(*source, writer);
    std::size_t const steps = writeSteps(*source, writer);
    writer.close();
    file.publish();
    return {writer.nodeCount(), writer.elementCount(), steps, writer.fieldCount()};
}

} // namespace

Summary translate(std::filesystem::path const& input, SourceOpener const& open,
                  std::filesystem::path const& output, TranslationOptions const& options,
                  Report& report)
{
    try {
        return run(input, open, output, options, report);
    } catch (Error const& error) {
        throw Error(sentence(input, error.what()));
    } catch (Zyl2::Exception::OverflowError const&) {
        throw Error(sentence(input, "It holds more than a model can count."));
    } catch (std::bad_alloc const&) {
        throw Error(sentence(input, "There is not enough memory for this file."));
    } catch (std::exception const& error) {
        throw Error(sentence(output, error.what()));
    }
}

} // namespace Exchange
