#ifndef FRD_MODELWRITER_H
#define FRD_MODELWRITER_H

#include "Header.h"
#include "Mesh.h"
#include "ResultBlock.h"
#include "ResultLayout.h"
#include "ShapePartition.h"
#include "StepNames.h"

#include <Zyl2/Mox2/Model.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Frd {

/// Writes what a result file holds into a model: one root group, a shape for each group, material
/// and dimension of its elements, and the result blocks on the shapes' nodes.
class ModelWriter
{
public:
    struct Source
    {
        Header const& header;
        Mesh const& mesh;
        /// Name of the result file, without its folder.
        std::string fileName;
    };

    /// Creates the model at `path`, in place of what is there, and writes the mesh.
    ModelWriter(Source const& source, std::filesystem::path const& path,
                std::string const& application);

    /// Closes what is open; failures don't matter any more, since `close` was not reached.
    ~ModelWriter();

    ModelWriter(ModelWriter const&) = delete;
    ModelWriter& operator=(ModelWriter const&) = delete;

    void addResult(ResultBlock const& block);

    /// Finishes the file.
    void close();

    std::size_t stepCount() const { return names_.stepCount(); }
    /// Of all steps.
    std::size_t resultCount() const { return resultCount_; }

private:
    void addRoot(Source const& source);
    void addShape(Shape const& shape);
    void addNodes(Shape const& shape);
    void addElements(Shape const& shape);
    std::vector<std::uint32_t> rowsOf(Shape const& shape) const;
    void addLayout(ResultBlock const& block, ResultLayout const& layout);
    std::vector<float> valuesOn(Shape const& shape, ResultBlock const& block,
                                ResultLayout const& layout) const;
    void findPlaces(ResultBlock const& block);

    Mesh const& mesh_;
    std::vector<Shape> shapes_;
    /// The shapes' ids in the model.
    std::vector<unsigned int> ids_;
    /// For each node of the mesh, where the current block has it.
    std::vector<std::uint32_t> places_;
    StepNames names_;
    std::size_t resultCount_ = 0;
    unsigned int root_ = 0;
    Zyl2::Mox2::Model model_;
};

} // namespace Frd

#endif
