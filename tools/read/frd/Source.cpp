#include "Source.h"

#include "Error.h"
#include "MeshReader.h"
#include "SourceAttributes.h"

namespace Frd {

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : path_(path), report_(report), reader_(path), results_(reader_)
{
    if (reader_.mesh().nodes().empty())
        throw Error("The file holds no nodes.");
}

Exchange::AttributeList Source::attributes() const
{
    Exchange::AttributeList attributes = rootAttributes(reader_.header());
    if (!results_.truncation().empty())
        attributes.emplace_back("Incomplete", results_.truncation());
    return attributes;
}

std::vector<Exchange::Part> Source::readParts()
{
    MeshReader reader(reader_.mesh(), reader_.header());
    parts_ = reader.takeRows();
    return reader.takeParts();
}

bool Source::keepWholeSteps()
{
    results_.keepWholeSteps(path_, report_);
    return true;
}

void Source::readSteps(StepVisitor const& startStep, FieldVisitor const& addField)
{
    results_.readSteps(parts_, startStep, addField);
    for (std::string const& warning : reader_.warnings())
        report_.warn(warning);
}

std::unique_ptr<Exchange::SequentialSource> open(std::filesystem::path const& path,
                                                 Exchange::Report& report)
{
    try {
        return std::make_unique<Source>(path, report);
    } catch (Truncated const& truncation) {
        throw Truncated(truncation.withoutStop() + ", and not even its mesh is whole.");
    }
}

} // namespace Frd
