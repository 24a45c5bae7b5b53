#include "Results.h"

#include "Error.h"
#include "ResultLayout.h"
#include "SourceAttributes.h"

#include "exchange/NearestFloat.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace Frd {

namespace {

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

/// Makes fields of a result block, which must outlive this.
class BlockFields
{
public:
    BlockFields(ResultBlock const& block, std::size_t nodesOfMesh);

    /// What `layout` takes of the block, on some nodes of the mesh, which are those of `part`.
    /// Nodes that the block does not have get values that are not numbers.
    Exchange::Field field(ResultLayout const& layout, std::size_t part,
                          std::vector<std::uint32_t> const& nodes) const;

private:
    template <typename Value, typename Convert>
    std::vector<Value> valuesAt(std::vector<std::uint32_t> const& nodes,
                                std::vector<std::size_t> const& components,
                                Convert const& convert) const;

    ResultBlock const& block_;
    std::size_t storedComponents_;
    /// For each node of the mesh, where the block has it.
    std::vector<std::uint32_t> places_;
};

BlockFields::BlockFields(ResultBlock const& block, std::size_t nodesOfMesh)
    : block_(block), storedComponents_(block.storedComponents().size()),
      places_(nodesOfMesh, nowhere)
{
    for (std::size_t i = 0; i < block.nodes.size(); ++i)
        places_[block.nodes[i]] = static_cast<std::uint32_t>(i);
}

template <typename Value, typename Convert>
std::vector<Value> BlockFields::valuesAt(std::vector<std::uint32_t> const& nodes,
                                         std::vector<std::size_t> const& components,
                                         Convert const& convert) const
{
    std::vector<Value> values;
    values.reserve(nodes.size() * components.size());
    for (std::uint32_t const node : nodes) {
        std::uint32_t const place = places_[node];
        for (std::size_t const component : components)
            values.push_back(place == nowhere
                                 ? std::numeric_limits<Value>::quiet_NaN()
                                 : convert(block_.values[place * storedComponents_ + component]));
    }
    return values;
}

Exchange::Field BlockFields::field(ResultLayout const& layout, std::size_t part,
                                   std::vector<std::uint32_t> const& nodes) const
{
    Exchange::Field field;
    field.name = layout.name;
    field.part = part;
    field.components = layout.components.size();
    if (block_.holdsDoubles)
        field.values = valuesAt<double>(nodes, layout.components, [](double v) { return v; });
    else
        field.values = valuesAt<float>(nodes, layout.components, Exchange::nearestFloat);
    return field;
}

/// What is left to do about a file that ends too early.
Truncated refusal(Truncated const& truncation, WholeSteps const& steps)
{
    char const* const kept = steps.stepCount() == 0   ? "the mesh"
                             : steps.stepCount() == 1 ? "it"
                                                      : "them";
    return Truncated(truncation.withoutStop() + "; " + steps.summary() + ": --partial keeps " +
                     kept + ".");
}

/// Takes over what the end of the file tells of its last step; `block` is what was read of the
/// block that is cut off.
void end(WholeSteps& steps, StepNames& names, ResultBlock const& block, Reader const& reader)
{
    if (block.name.empty())
        steps.endBetweenBlocks(reader.endedBehindBlock());
    else
        steps.endInStep(names.stepName(block));
}

} // namespace

void Results::keepWholeSteps(std::filesystem::path const& path, Exchange::Report& report)
{
    Reader reader(path);
    StepNames names;
    ResultBlock block;
    try {
        while (reader.next(block))
            kept_.add(block, names.stepName(block));
    } catch (Truncated const& truncation) {
        end(kept_, names, block, reader);
        truncation_ = truncation.what();
        report.warn(truncation.withoutStop() + "; " + kept_.summary() +
                    "; what follows was left out.");
    }
}

void Results::readSteps(std::vector<PartRows> const& parts,
                        Exchange::SequentialSource::StepVisitor const& startStep,
                        Exchange::SequentialSource::FieldVisitor const& addField)
{
    ResultBlock block;
    while (nextBlock(block)) {
        Exchange::StepInfo const step = stepOf(block);
        steps_.add(block, step.name);
        if (kept_.isDropped(step.name))
            continue;
        startStep(step);
        addFields(block, parts, addField);
    }
}

bool Results::nextBlock(ResultBlock& block)
{
    if (!truncation_.empty() && steps_.blockCount() == kept_.blockCount())
        return false;
    try {
        return reader_.next(block);
    } catch (Truncated const& truncation) {
        end(steps_, names_, block, reader_);
        throw refusal(truncation, steps_);
    }
}

Exchange::StepInfo Results::stepOf(ResultBlock const& block)
{
    Exchange::StepInfo info;
    info.name = names_.stepName(block);
    info.attributes = stepAttributes(block);
    // Blocks of several steps may stand in turns.
    info.mayGoOn = true;
    return info;
}

void Results::addFields(ResultBlock const& block, std::vector<PartRows> const& parts,
                        Exchange::SequentialSource::FieldVisitor const& addField)
{
    BlockFields const fields(block, reader_.mesh().nodes().size());
    for (ResultLayout layout : layoutsOf(block)) {
        layout.name = names_.resultName(block, layout.name);
        for (std::size_t part = 0; part < parts.size(); ++part)
            addField(fields.field(layout, part, parts[part].nodes));
    }
}

} // namespace Frd
