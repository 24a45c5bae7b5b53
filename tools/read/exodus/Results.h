#ifndef READ_EXODUS_RESULTS_H
#define READ_EXODUS_RESULTS_H

#include "Database.h"
#include "PartRows.h"
#include "VariableGroups.h"

#include "exchange/Report.h"
#include "exchange/Source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Exodus {

/// Makes steps and fields of a file's variables; global variables are attributes of the steps.
class Results
{
public:
    using FieldVisitor = Exchange::Source::FieldVisitor;

    Results(Database const& database, Exchange::Report& report);

    std::size_t stepCount() const { return times_.size(); }
    Exchange::StepInfo step(std::size_t index) const;
    /// Hands over the fields of one step on the parts that `rows` tells of.
    void readStep(std::size_t index, MeshRows const& rows, FieldVisitor const& visit) const;

private:
    void readNodeFields(std::size_t step, VariableGroup const& group, MeshRows const& rows,
                        FieldVisitor const& visit) const;
    void readElementFields(std::size_t step, std::size_t block, PartRows const& rows,
                           FieldVisitor const& visit) const;
    bool isOnBlock(std::size_t variable, std::size_t block) const;
    bool isOnBlock(VariableGroup const& group, std::size_t block) const;
    Exchange::Field elementField(std::size_t step, VariableGroup const& group, std::size_t block,
                                 PartRows const& rows) const;

    Exchange::Report& report_;
    Database const& database_;
    std::vector<double> times_;
    std::vector<std::string> globalNames_;
    std::vector<VariableGroup> nodeGroups_;
    std::size_t nodeVariableCount_ = 0;
    std::vector<std::string> elementVariables_;
    std::vector<VariableGroup> elementGroups_;
    std::vector<int> truthTable_;
};

} // namespace Exodus

#endif
