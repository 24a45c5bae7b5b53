#include "Source.h"

#include "Error.h"
#include "MeshReader.h"
#include "Results.h"
#include "SourceAttributes.h"

namespace Frd {

Source::Source(std::filesystem::path const& path)
    : reader_(path), rows_(partRowsOf(reader_.mesh(), reader_.header()))
{
    if (rows_.empty())
        throw Error("The file holds no nodes.");
}

Exchange::AttributeList Source::attributes() const
{
    return rootAttributes(reader_.header());
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
    while (reader_.next(block)) {
        startStep(stepOf(block));
        addFields(block, addField);
    }
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
                                                 Exchange::Report& /*report*/)
{
    return std::make_unique<Source>(path);
}

} // namespace Frd
