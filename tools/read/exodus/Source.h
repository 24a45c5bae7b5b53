#ifndef READ_EXODUS_SOURCE_H
#define READ_EXODUS_SOURCE_H

#include "Database.h"
#include "PartRows.h"
#include "VariableGroups.h"

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
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
    std::size_t stepCount() const override { return times_.size(); }
    Exchange::StepInfo step(std::size_t index) const override;
    void readStep(std::size_t index, FieldVisitor const& visit) override;

private:
    void readNodeFields(std::size_t step, VariableGroup const& group, FieldVisitor const& visit);
    void readElementFields(std::size_t step, std::size_t block, FieldVisitor const& visit);
    bool isOnBlock(std::size_t variable, std::size_t block) const;
    bool isOnBlock(VariableGroup const& group, std::size_t block) const;
    Exchange::Field elementField(std::size_t step, VariableGroup const& group,
                                 std::size_t block) const;

    Exchange::Report& report_;
    Database database_;
    std::optional<MeshRows> rows_;
    std::vector<double> times_;
    std::vector<std::string> globalNames_;
    std::vector<VariableGroup> nodeGroups_;
    std::size_t nodeVariableCount_ = 0;
    std::vector<std::string> elementVariables_;
    std::vector<VariableGroup> elementGroups_;
    std::vector<int> truthTable_;
};

/// Opens an Exodus file; throws `Exchange::Error`.
std::unique_ptr<Exchange::Source> open(std::filesystem::path const& path, Exchange::Report& report);

} // namespace Exodus

#endif
