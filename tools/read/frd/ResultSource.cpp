#include "ResultSource.h"

#include "BlockFields.h"
#include "Error.h"
#include "Parts.h"
#include "RootAttributes.h"
#include "StepAttributes.h"

namespace Frd {

ResultSource::ResultSource(std::filesystem::path const& path)
    : reader_(path), shapes_(partition(reader_.mesh(), reader_.header()))
{
    if (shapes_.empty())
        throw Error("The file holds no nodes.");
}

Exchange::AttributeList ResultSource::attributes() const
{
    return rootAttributes(reader_.header());
}

std::vector<Exchange::Part> ResultSource::readParts()
{
    std::vector<Exchange::Part> parts;
    for (Shape& shape : shapes_) {
        parts.push_back(partOf(shape, reader_.mesh()));
        // Results are on nodes only.
        shape.elements = {};
    }
    return parts;
}

void ResultSource::readSteps(StepVisitor const& startStep, FieldVisitor const& addField)
{
    ResultBlock block;
    while (reader_.next(block)) {
        startStep(stepOf(block));
        addFields(block, addField);
    }
}

Exchange::StepInfo ResultSource::stepOf(ResultBlock const& block)
{
    Exchange::StepInfo info;
    info.name = names_.stepName(block);
    info.attributes = stepAttributes(block);
    // Blocks of several steps may stand in turns.
    info.mayGoOn = true;
    return info;
}

void ResultSource::addFields(ResultBlock const& block, FieldVisitor const& addField)
{
    BlockFields const fields(block, reader_.mesh().nodes().size());
    for (ResultLayout layout : layoutsOf(block)) {
        layout.name = names_.resultName(block, layout.name);
        for (std::size_t part = 0; part < shapes_.size(); ++part)
            addField(fields.field(layout, part, shapes_[part].nodes));
    }
}

} // namespace Frd
