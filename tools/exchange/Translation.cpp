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
                                   SequentialSource const& source,
                                   TranslationOptions const& options)
{
    std::filesystem::path const name = lastName(input);
    std::string const given = source.modelName();
    return {options.application, name.string(), given.empty() ? name.stem().string() : given};
}

void refuseSameFile(std::filesystem::path const& input, std::filesystem::path const& output)
{
    std::error_code ignored;
    if (std::filesystem::equivalent(input, output, ignored))
        throw std::runtime_error("This is the input itself.");
}

void writeParts(SequentialSource& source, ModelWriter& writer)
{
    std::vector<Part> parts = source.readParts();
    if (parts.empty())
        throw Error("The file holds no mesh.");
    for (Part& part : parts) {
        writer.addPart(part);
        part = Part();
    }
}

void writeSteps(SequentialSource& source, ModelWriter& writer, TranslationOptions const& options)
{
    auto const tellStage = [&] {
        SequentialSource::Stage const stage = source.stage();
        options.progress(stage.done, stage.all);
    };
    auto const startStep = [&](StepInfo const& step) {
        tellStage();
        writer.startStep(step);
    };
    source.readSteps(startStep, [&writer](Field const& field) { writer.addField(field); });
    tellStage();
}

Summary run(std::filesystem::path const& input, SourceOpener const& open,
            std::filesystem::path const& output, TranslationOptions const& options, Report& report)
{
    refuseSameFile(input, output);
    std::unique_ptr<SequentialSource> const source = open(input, report);
    if (options.partial && !source->keepWholeSteps())
        throw Error(
            "--partial is of no use here: files of this format are whole or can't be read.");
    Common::PartialFile file(output, options.overwrite);
    ModelWriter writer(file.path(), signatureOf(input, *source, options), source->attributes(),
                       report);
    writeParts(*source, writer);
    writeSteps(*source, writer, options);
    writer.close();
    file.publish();
    return {writer.nodeCount(), writer.elementCount(), writer.stepCount(), writer.fieldCount()};
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
    } catch (std::length_error const&) {
        // Containers refuse what no memory could ever hold.
        throw Error(sentence(input, "There is not enough memory for this file."));
    } catch (std::exception const& error) {
        throw Error(sentence(output, error.what()));
    }
}

} // namespace Exchange
