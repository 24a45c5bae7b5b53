#include "Source.h"

#include "Error.h"
#include "MeshReader.h"
#include "Results.h"
#include "SourceAttributes.h"

namespace Frd {

namespace {

std::string withoutStop(std::string const& sentence)
{
    return sentence.substr(0, sentence.find_last_not_of('.') + 1);
}

/// What is left to do about a file that ends too early.
Truncated refusal(Truncated const& truncation, WholeSteps const& steps)
{
    char const* const kept = steps.stepCount() == 0   ? "the mesh"
                             : steps.stepCount() == 1 ? "it"
                                                      : "them";
    return Truncated(withoutStop(truncation.what()) + "; " + steps.summary() +
                     ": --partial keeps " + kept + ".");
}

/// Takes over what the end of the file tells of its last step; `block` is what was read of the
/// block that is cut off.
void end(WholeSteps& steps, StepNames& names, ResultBlock const& block, Reader const& reader)
{
    if (block.name.empty())
        steps.endBetweenBlocks(reader.endedBehindBlock());
    else
        steps.endInStep(names.stepName(block));
}

} // namespace

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : path_(path), report_(report), reader_(path),
      rows_(partRowsOf(reader_.mesh(), reader_.header()))
{
    if (rows_.empty())
        throw Error("The file holds no nodes.");
}

Exchange::AttributeList Source::attributes() const
{
    Exchange::AttributeList attributes = rootAttributes(reader_.header());
    if (!truncation_.empty())
        attributes.emplace_back("Incomplete", truncation_);
    return attributes;
}

std::vector<Exchange::Part> Source::readParts()
{
    std::vector<Exchange::Part> parts;
    for (PartRows& rows : rows_) {
        parts.push_back(partOf(rows, reader_.mesh()));
        // Results are on nodes only.
        rows.elements = {};
    }
    return parts;
}

void Source::readSteps(StepVisitor const& startStep, FieldVisitor const& addField)
{
    ResultBlock block;
    while (nextBlock(block)) {
        Exchange::StepInfo const step = stepOf(block);
        steps_.add(block, step.name);
        if (kept_.isDropped(step.name))
            continue;
        startStep(step);
        addFields(block, addField);
    }
    warnOfReading();
}

bool Source::nextBlock(ResultBlock& block)
{
    if (!truncation_.empty() && steps_.blockCount() == kept_.blockCount())
        return false;
    try {
        return reader_.next(block);
    } catch (Truncated const& truncation) {
        end(steps_, names_, block, reader_);
        throw refusal(truncation, steps_);
    }
}

bool Source::keepWholeSteps()
{
    Reader reader(path_);
    StepNames names;
    ResultBlock block;
    try {
        while (reader.next(block))
            kept_.add(block, names.stepName(block));
    } catch (Truncated const& truncation) {
        end(kept_, names, block, reader);
        truncation_ = truncation.what();
        report_.warn(withoutStop(truncation_) + "; " + kept_.summary() +
                     "; what follows was left out.");
    }
    return true;
}

void Source::warnOfReading()
{
    for (std::string const& warning : reader_.warnings())
        report_.warn(warning);
}

Exchange::StepInfo Source::stepOf(ResultBlock const& block)
{
    Exchange::StepInfo info;
    info.name = names_.stepName(block);
    info.attributes = stepAttributes(block);
    // Blocks of several steps may stand in turns.
    info.mayGoOn = true;
    return info;
}

void Source::addFields(ResultBlock const& block, FieldVisitor const& addField)
{
    Results const fields(block, reader_.mesh().nodes().size());
    for (ResultLayout layout : layoutsOf(block)) {
        layout.name = names_.resultName(block, layout.name);
        for (std::size_t part = 0; part < rows_.size(); ++part)
            addField(fields.field(layout, part, rows_[part].nodes));
    }
}

std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& report)
{
    try {
        return std::make_unique<Source>(path, report);
    } catch (Truncated const& truncation) {
        throw Truncated(withoutStop(truncation.what()) + ", and not even its mesh is whole.");
    }
}

} // namespace Frd
