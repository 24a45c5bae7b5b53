#ifndef READ_GMSH_SOURCE_H
#define READ_GMSH_SOURCE_H

#include "PartRows.h"
#include "Results.h"
#include "Session.h"

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace Gmsh {

/// Reads a mesh of Gmsh with its results. The library has all of the file in memory; what a model
/// gets of it is copied part by part and field by field.
class Source : public Exchange::Source
{
public:
    Source(std::filesystem::path const& path, Exchange::Report& report);

    Exchange::AttributeList attributes() const override { return {}; }
    std::vector<Exchange::Part> readParts() override;
    std::size_t stepCount() const override { return results_.stepCount(); }
    Exchange::StepInfo step(std::size_t index) const override { return results_.step(index); }
    void readStep(std::size_t index, FieldVisitor const& visit) override;

private:
    Exchange::Report& report_;
    Session session_;
    Results results_;
    std::optional<MeshRows> rows_;
};

/// Opens a mesh of Gmsh; throws `Exchange::Error`. Only one can be open at a time.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace Gmsh

#endif
