#ifndef READ_EXODUS_DATABASE_H
#define READ_EXODUS_DATABASE_H

#include "NodeVariables.h"
#include "Reals.h"

#include <exodusII.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Exodus {

double realAt(Reals const& values, std::size_t index);

/// A file that is open for reading. All failures are `Exchange::Error`.
class Database
{
public:
    explicit Database(std::filesystem::path const& path);
    ~Database();

    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;

    std::string title() const;
    ex_init_params const& parameters() const { return parameters_; }
    std::size_t nodeCount() const { return static_cast<std::size_t>(parameters_.num_nodes); }
    std::size_t elementCount() const { return static_cast<std::size_t>(parameters_.num_elem); }

    /// The answer to one of the library's simple questions.
    std::int64_t inquire(ex_inquiry question) const;

    std::vector<std::int64_t> ids(ex_entity_type type, std::int64_t count) const;
    std::vector<std::string> names(ex_entity_type type, std::int64_t count) const;
    /// The numbers of all nodes or elements.
    std::vector<std::int64_t> numbers(ex_entity_type type, std::size_t count) const;

    ex_block block(std::int64_t id) const;
    std::vector<std::int64_t> connectivity(ex_block const& block) const;
    /// How many nodes each of a block's polygons has.
    std::vector<int> polygonSizes(ex_block const& block) const;

    /// Nodes or elements of a set, from 1.
    std::vector<std::int64_t> setEntries(ex_entity_type type, std::int64_t id) const;
    bool hasDistributionFactors(ex_entity_type type, std::int64_t id) const;

    /// x, y and z of all nodes; what the file doesn't have is empty.
    std::array<Reals, 3> coordinates() const;

    Reals times() const;
    std::vector<std::string> variableNames(ex_entity_type type) const;
    int variableCount(ex_entity_type type) const;
    /// For each block, and for each variable in it, whether the block has the variable.
    std::vector<int> truthTable(ex_entity_type type, std::size_t blocks,
                                std::size_t variables) const;
    /// Steps and variables from 0.
    Reals variable(std::size_t step, ex_entity_type type, std::size_t variable, std::int64_t id,
                   std::size_t count) const;
    Reals globalVariables(std::size_t step, std::size_t count) const;

    std::vector<std::array<std::string, 4>> qualityRecords() const;
    std::vector<std::string> informationRecords() const;

private:
    struct SetSizes
    {
        std::int64_t entries = 0;
        /// Distribution factors.
        std::int64_t factors = 0;
    };

    SetSizes setSizes(ex_entity_type type, std::int64_t id) const;
    void openInItsPrecision(std::filesystem::path const& path);
    void readParameters();
    std::vector<std::string> givenVariableNames(ex_entity_type type) const;
    Reals room(std::size_t count) const;
    static void* dataOf(Reals& values);

    int file_ = -1;
    bool isSinglePrecision_ = false;
    std::size_t nameLength_ = MAX_STR_LENGTH;
    ex_init_params parameters_ = {};
    /// Set for files whose variables of nodes the library does not find.
    std::optional<NodeVariables> nodeVariables_;
};

} // namespace Exodus

#endif
