#ifndef EXCHANGE_MESHWRITER_H
#define EXCHANGE_MESHWRITER_H

#include "DatasetWriter.h"
#include "Part.h"
#include "Report.h"
#include "ShapePartition.h"

namespace Exchange {

/// Writes nodes and elements of parts onto the shapes that the parts become.
class MeshWriter
{
public:
    MeshWriter(DatasetWriter writer, Report& report) : writer_(writer), report_(report) {}

    /// \param id of the shape in the model
    void add(Part const& part, Shape const& shape, unsigned int id);

private:
    void addNodes(Part const& part, Shape const& shape, unsigned int id);
    void addNodeIds(Part const& part, Shape const& shape, unsigned int id);
    void addElements(Part const& part, Shape const& shape, unsigned int id);
    void addConnectivity(Part const& part, Shape const& shape, unsigned int id);
    void addElementIds(Part const& part, Shape const& shape, unsigned int id);

    DatasetWriter writer_;
    Report& report_;
};

} // namespace Exchange

#endif
