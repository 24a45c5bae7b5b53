#ifndef MOXREAD_MODEL_H
#define MOXREAD_MODEL_H

#include "moxread/Container.h"
#include "moxread/Dataset.h"
#include "moxread/Export.h"
#include "moxread/GlobalInformation.h"
#include "moxread/HeavyData.h"
#include "moxread/Node.h"
#include "moxread/PartitionFiles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace MoxRead {

/// A model in a file. Opening it reads all but the values of the datasets into memory and checks
/// every rule of the layout, other than whether the blocks with the values inflate: that shows when
/// they are read. Raises FormatError.
///
///     MoxRead::Model model("beam.mox");
///     for (MoxRead::Node const& node : model.nodes())
///         if (node.geometry() != nullptr)
///             for (MoxRead::Variable const& variable : node.geometry()->variables)
///                 use(node.name, variable, model.read(variable));
class MOXREAD_EXPORT Model
{
public:
    /// \param path of a model file, or of the index of a partitioned model, whose files are read as
    ///             one model: a shape of several ranks is there once for each of them
    /// \throws std::invalid_argument the reader was built without the inflater
    explicit Model(std::string const& path, ReadOptions const& options = ReadOptions());

    /// The container of the file; of a partitioned model, that of its first file.
    Container const& container() const noexcept;
    /// What files of a partitioned model say differently of what they share, a sentence each.
    std::vector<std::string> remarks() const;
    /// False for an outline: what asks for values, or for their lengths, must not be called.
    bool hasValues() const noexcept { return hasValues_; }
    /// How many blocks there are, index blocks included, in all files.
    std::size_t blockCount() const;
    /// How many bytes there are, in all files.
    std::uint64_t bytes() const;

    GlobalInformation const& globalInformation() const noexcept;

    /// The nodes in the order of their ids; the root, id 1, comes first.
    std::vector<Node> const& nodes() const noexcept;
    /// Raises std::out_of_range for an id that no node has.
    Node const& node(std::uint32_t id) const;
    /// The node that the names lead to, the root's name first; of equally named siblings the first
    /// one. Null if there is none.
    Node const* find(std::vector<std::string> const& names) const;

    /// The variable of that name, as stored, of a geometry; null if there is none.
    Variable const* variable(std::uint32_t nodeId, std::string const& name) const;
    Variable const& variable(VariableReference const& reference) const;
    /// The variable at the end of the links: the given one if it has values of its own.
    Variable const& resolve(Variable const& variable) const;
    /// The values of a variable, of its target if it is linked.
    Dataset read(Variable const& variable);

    using Variables = std::vector<Variable const*>;
    using DatasetVisitor = std::function<void(Variables const&, Dataset const&)>;
    /// Reads the values of variables that are not linked, in the order in which they lie in the
    /// file, so that every block is loaded only once. Variables of the same values are visited
    /// together, and their values read once.
    void read(Variables variables, DatasetVisitor const& visit);
    /// Reads all variables of the model, as `read` does.
    void readAll(DatasetVisitor const& visit);

    /// Tells which variables `read` will be called with, in this order, one by one: threads inflate
    /// their blocks ahead. Without threads it does nothing.
    void expect(Variables const& variables);

    /// Inflates every block with values to see whether it is sound, and keeps none. zlib judges.
    void checkValues(ProgressVisitor const& tell = {}) const;

    /// The number of the block of heavy data that a variable's values lie in, from 0. Only one
    /// block at a time is in memory: to change between two for each dataset takes long.
    std::size_t heavyBlock(Variable const& variable) const;

    std::size_t variableCount() const;
    std::uint64_t heavyLength() const;
    /// The bytes of the heavy data that belong to no dataset.
    std::uint64_t unusedHeavyLength() const;

private:
    Variables storedVariables() const;
    /// Reads a variable into a dataset whose memory is used again.
    void readInto(Dataset& dataset, Variable const& variable);
    void checkViewPoints() const;
    void findTargets();
    void findTarget(Variable const& variable);

    bool hasValues_;
    /// The files of a partitioned model; null for a model in one file.
    std::unique_ptr<PartitionFiles> files_;
    std::unique_ptr<Container> container_;
    std::vector<Node> nodes_;
    GlobalInformation globalInformation_;
    HeavyData heavy_;
    /// For each linked variable, the one at the end of its links, which has the values.
    std::unordered_map<Variable const*, Variable const*> targets_;
};

} // namespace MoxRead

#endif
