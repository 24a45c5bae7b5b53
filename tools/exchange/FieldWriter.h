#ifndef EXCHANGE_FIELDWRITER_H
#define EXCHANGE_FIELDWRITER_H

#include "DatasetNames.h"
#include "DatasetWriter.h"
#include "Field.h"
#include "FieldLayout.h"
#include "Report.h"
#include "ShapePartition.h"

#include <Zyl2/Mox2/Step.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Exchange {

/// A shape that stands in the model.
struct WrittenShape
{
    unsigned int id = 0;
    RowSelection nodes;
    RowSelection elements;
};

/// What has to be known of a part to write its fields.
struct WrittenPart
{
    std::string name;
    std::size_t nodeCount = 0;
    std::size_t elementCount = 0;
    std::vector<WrittenShape> shapes;
};

/// Writes fields onto the shapes of their part, as single precision or, when all values of a field
/// are whole and fit, as unsigned integers.
class FieldWriter
{
public:
    FieldWriter(DatasetWriter writer, Report& report) : writer_(writer), report_(report) {}

    void startStep(Zyl2::Mox2::Step const& step);
    void add(WrittenPart const& part, Field const& field);

    DatasetNames& names() { return names_; }
    /// How many fields of all parts and steps were written.
    std::size_t fieldCount() const { return count_; }

private:
    void addNodeCoordinates(WrittenPart const& part, Field const& field);
    void addLayout(WrittenPart const& part, Field const& field, FieldLayout const& layout);

    DatasetWriter writer_;
    Report& report_;
    DatasetNames names_;
    Zyl2::Mox2::Step step_;
    std::size_t count_ = 0;
};

} // namespace Exchange

#endif
