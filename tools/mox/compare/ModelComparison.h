#ifndef MOX_COMPARE_MODELCOMPARISON_H
#define MOX_COMPARE_MODELCOMPARISON_H

#include "Difference.h"
#include "Tolerance.h"

#include "common/Progress.h"
#include "moxread/Model.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Mox {

/// A model, and the file's name for what is wrong with it.
struct NamedModel
{
    NamedModel(std::string file, MoxRead::ReadOptions const& options);

    std::string path;
    MoxRead::Model model;
};

/// Compares all that two models mean: trees, transforms, materials, attributes, datasets and steps.
/// Who wrote the files, how they are compressed, where values lie and which datasets share theirs
/// makes no difference.
///
/// Nodes belong together by their path, equally named siblings by their order. One block of values
/// of each file is in memory at a time, and those that its threads read ahead.
class ModelComparison
{
public:
    /// Throws FileError when the values of one of the files cannot be read.
    ModelComparison(NamedModel& left, NamedModel& right, Tolerance const& tolerance,
                    Common::Progress& progress);

    /// In the order of the tree; those of values come last.
    std::vector<Difference> const& differences() const { return differences_; }

private:
    using Node = MoxRead::Node;
    using Variable = MoxRead::Variable;

    /// Two datasets whose values can be compared, and the geometry that has the first one.
    struct DatasetPair
    {
        Node const* node = nullptr;
        Variable const* left = nullptr;
        Variable const* right = nullptr;
    };
    /// Blocks and positions of both values, and their shape: what is equal here has equal values.
    using Places = std::tuple<std::size_t, std::size_t, std::uint64_t, std::uint64_t, std::uint32_t,
                              std::uint32_t>;

    void compareFiles();
    void compareSteps();
    void compareTrees();
    void compareNodes(Node const& left, Node const& right);
    void matchChildren(Node const& left, Node const& right);
    void compareContents(Node const& left, Node const& right);
    void compareGroups(Node const& left, Node const& right);
    void compareMaterials(Node const& left, Node const& right);
    void compareDatasetLists(Node const& left, Node const& right);
    void compareDatasets(Node const& node, Variable const& left, Variable const& right);
    void compareAttributes(Difference const& place, MoxRead::Attributes const& left,
                           MoxRead::Attributes const& right);
    template <typename Numbers>
    void compareNumbers(Difference const& place, std::string const& property, Numbers const& left,
                        Numbers const& right);
    void compareFlags(Difference const& place, std::string const& property, bool left, bool right);

    void compareValues(Common::Progress& progress);
    void expectValues(std::vector<std::size_t> const& order);
    Places placesOf(DatasetPair const& pair) const;
    ValueDifference valueDifference(DatasetPair const& pair);

    bool isSame(float left, float right) const;
    bool isSame(MoxRead::AttributeValue const& left, MoxRead::AttributeValue const& right) const;
    void addOnly(bool isLeft, Difference difference, std::string const& what);
    void add(Difference difference, std::string const& left, std::string const& right);

    NamedModel& left_;
    NamedModel& right_;
    Tolerance tolerance_;
    std::vector<std::pair<Node const*, Node const*>> toCompare_;
    std::vector<DatasetPair> datasets_;
    std::vector<Difference> differences_;
};

} // namespace Mox

#endif
