#include "Source.h"

#include "LeftOut.h"
#include "MeshReader.h"

namespace Exodus {

namespace {

void addQualityRecords(Database const& database, Exchange::AttributeList& attributes)
{
    static constexpr char const* parts[] = {" Code", " Version", " Date", " Time"};
    auto const records = database.qualityRecords();
    for (std::size_t i = 0; i < records.size(); ++i)
        for (std::size_t part = 0; part < records[i].size(); ++part)
            attributes.emplace_back("QA " + std::to_string(i + 1) + parts[part], records[i][part]);
}

void addInformationRecords(Database const& database, Exchange::AttributeList& attributes)
{
    auto const records = database.informationRecords();
    for (std::size_t i = 0; i < records.size(); ++i)
        attributes.emplace_back("Info " + std::to_string(i + 1), records[i]);
}

} // namespace

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : report_(report), database_(path), results_(database_, report)
{
    reportWhatIsLeftOut(database_, report_);
}

Exchange::AttributeList Source::attributes() const
{
    Exchange::AttributeList attributes;
    attributes.emplace_back("Title", database_.title());
    addQualityRecords(database_, attributes);
    addInformationRecords(database_, attributes);
    return attributes;
}

std::vector<Exchange::Part> Source::readParts()
{
    MeshReader reader(database_, report_);
    rows_ = reader.takeRows();
    return reader.takeParts();
}

void Source::readStep(std::size_t index, FieldVisitor const& visit)
{
    if (!rows_)
        readParts();
    results_.readStep(index, *rows_, visit);
}

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    return std::make_unique<Source>(path, report);
}

} // namespace Exodus
