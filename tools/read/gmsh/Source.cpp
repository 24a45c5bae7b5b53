#include "Source.h"

#include "FileEnds.h"
#include "MeshReader.h"

#include "exchange/Error.h"

#include <string>

namespace Gmsh {

Source::Source(std::filesystem::path const& path, Exchange::Report& report)
    : report_(report), session_(path, report), results_(report)
{}

std::vector<Exchange::Part> Source::readParts()
{
    std::vector<Exchange::Part> parts;
    Session::call([&] {
        MeshReader reader(report_);
        rows_ = reader.takeRows();
        parts = reader.takeParts();
    });
    if (session_.nodesRead() > rows_->nodeCount)
        report_.warn("Nodes that no element uses (" +
                     std::to_string(session_.nodesRead() - rows_->nodeCount) +
                     ") were left out, because Gmsh drops them.");
    return parts;
}

void Source::readStep(std::size_t index, FieldVisitor const& visit)
{
    if (!rows_)
        readParts();
    results_.readStep(index, *rows_, visit);
}

std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report)
{
    if (!hasBeginning(path))
        throw Exchange::Error("The file does not begin as a mesh of Gmsh does: with $MeshFormat.");
    if (!hasEnding(path))
        throw Exchange::Error("The file is cut off: its last section has no end.");
    return std::make_unique<Source>(path, report);
}

} // namespace Gmsh
