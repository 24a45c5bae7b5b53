#include "ModelCheck.h"

#include "LayoutCheck.h"
#include "MeshCheck.h"
#include "ShapeDatasets.h"
#include "StepCheck.h"
#include "StorageCheck.h"
#include "TreeCheck.h"
#include "ValueCheck.h"

#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

using MoxRead::Dataset;
using MoxRead::Variable;

namespace Mox::Check {

namespace {

constexpr std::uint64_t greatestBatchBytes = std::uint64_t{64} << 20U;

// Where the values of a shape's mesh lie, by which those of several shapes are known to be the
// same.
std::vector<Variable const*> storageOf(MoxRead::Model const& model, ShapeDatasets const& shape)
{
    std::vector<Variable const*> result;
    for (Variable const* variable :
         {shape.coordinates, shape.connectivity, shape.polylength, shape.nodeIds, shape.elementIds})
        result.push_back(variable == nullptr ? nullptr : &model.resolve(*variable));
    return result;
}

/// The meshes of some shapes, read in the order in which they lie in the file.
class MeshBatch
{
public:
    MeshBatch(MoxRead::Model& model, Findings& findings) : model_(model), findings_(findings) {}

    bool isFull() const { return bytes_ >= greatestBatchBytes; }

    void add(ShapeDatasets const& shape)
    {
        shapes_.push_back(shape);
        for (Variable const* stored : storageOf(model_, shape))
            if (stored != nullptr && values_.emplace(stored, Dataset()).second)
                bytes_ += stored->byteCount();
    }

    void check()
    {
        read();
        for (ShapeDatasets const& shape : shapes_) {
            MeshValues const values = valuesOf(shape);
            MeshCheck(model_, shape, values, findings_).run();
        }
        shapes_.clear();
        values_.clear();
        bytes_ = 0;
    }

private:
    void read()
    {
        MoxRead::Model::Variables variables;
        for (auto const& [variable, dataset] : values_)
            variables.push_back(variable);
        model_.read(std::move(variables),
                    [&](MoxRead::Model::Variables const& alike, Dataset const& dataset) {
                        for (Variable const* variable : alike)
                            values_.at(variable) = dataset;
                    });
    }

    MeshValues valuesOf(ShapeDatasets const& shape) const
    {
        return {find(shape.coordinates), find(shape.connectivity), find(shape.polylength),
                find(shape.nodeIds), find(shape.elementIds)};
    }

    Dataset const* find(Variable const* variable) const
    {
        return variable == nullptr ? nullptr : &values_.at(&model_.resolve(*variable));
    }

    MoxRead::Model& model_;
    Findings& findings_;
    std::vector<ShapeDatasets> shapes_;
    std::unordered_map<Variable const*, Dataset> values_;
    std::uint64_t bytes_ = 0;
};

// An assembly may have one mesh in thousands of places: what is wrong with it is told once.
void checkMeshes(MoxRead::Model& model, std::vector<ShapeDatasets> const& shapes,
                 Findings& findings)
{
    MeshBatch batch(model, findings);
    std::set<std::vector<Variable const*>> known;
    for (ShapeDatasets const& shape : shapes) {
        if (known.insert(storageOf(model, shape)).second)
            batch.add(shape);
        if (batch.isFull())
            batch.check();
    }
    batch.check();
}

} // namespace

Findings checkModel(MoxRead::Model& model, MoxRead::ProgressVisitor const& tell)
{
    Findings findings;
    TreeCheck(model, findings).run();
    std::vector<ShapeDatasets> shapes;
    for (MoxRead::Node const& node : model.nodes())
        if (node.geometry() != nullptr)
            shapes.emplace_back(model, node);
    LayoutCheck layout(model, findings);
    for (ShapeDatasets const& shape : shapes)
        layout.run(shape);
    StepCheck(model, findings).run();
    StorageCheck(model, findings).run();
    checkMeshes(model, shapes, findings);
    ValueCheck(model, findings).run(tell);
    return findings;
}

} // namespace Mox::Check
