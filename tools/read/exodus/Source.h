#ifndef READ_EXODUS_SOURCE_H
#define READ_EXODUS_SOURCE_H

#include "Database.h"
#include "PartRows.h"
#include "Results.h"

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace Exodus {

/// Reads an Exodus file. One part is one element block; global variables are attributes of the
/// steps.
class Source : public Exchange::Source
{
public:
    Source(std::filesystem::path const& path, Exchange::Report& report);

    Exchange::AttributeList attributes() const override;
    std::vector<Exchange::Part> readParts() override;
    std::size_t stepCount() const override { return results_.stepCount(); }
    Exchange::StepInfo step(std::size_t index) const override { return results_.step(index); }
    void readStep(std::size_t index, FieldVisitor const& visit) override;

private:
    Exchange::Report& report_;
    Database database_;
    Results results_;
    std::optional<MeshRows> rows_;
};

/// Opens an Exodus file; throws `Exchange::Error`.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace Exodus

#endif
