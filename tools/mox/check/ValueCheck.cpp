#include "ValueCheck.h"

#include "Kinds.h"
#include "ShapeDatasets.h"

#include "moxread/LittleEndian.h"

#include <cmath>

using MoxRead::Dataset;
using MoxRead::Variable;

namespace Mox::Check {

namespace {

/// How many rows of a dataset are of what sort, and which is the first.
struct Rows
{
    std::size_t count = 0;
    std::size_t first = 0;

    void add(std::size_t row)
    {
        if (count++ == 0)
            first = row;
    }

    std::string text(std::size_t all) const
    {
        return countText(count) + " of " + countText(all, "row") + ", the first of them row " +
               std::to_string(first);
    }
};

struct Sorts
{
    explicit Sorts(Dataset const& dataset) : all(dataset.rows())
    {
        for (std::size_t row = 0; row < all; ++row)
            sort(dataset, row);
    }

    std::size_t all;
    Rows withoutValue;
    Rows partlyNotNumbers;
    Rows withNaN;
    Rows withInfinity;

private:
    void sort(Dataset const& dataset, std::size_t row)
    {
        std::size_t notNumbers = 0;
        bool isInfinite = false;
        for (std::size_t i = row * dataset.width; i < (row + 1) * dataset.width; ++i) {
            float const value = MoxRead::floatFromBits(dataset.words[i]);
            notNumbers += std::isnan(value) ? 1 : 0;
            isInfinite = isInfinite || std::isinf(value);
        }
        if (notNumbers > 0)
            withNaN.add(row);
        if (notNumbers == dataset.width)
            withoutValue.add(row);
        else if (notNumbers > 0)
            partlyNotNumbers.add(row);
        if (isInfinite)
            withInfinity.add(row);
    }
};

} // namespace

void ValueCheck::run(MoxRead::ProgressVisitor const& tell)
{
    MoxRead::Model::Variables variables;
    for (MoxRead::Node const& node : model_.nodes()) {
        if (node.geometry() == nullptr)
            continue;
        for (Variable const& variable : node.geometry()->variables) {
            if (variable.linked || variable.elementType() != MoxRead::ElementType::Float)
                continue;
            owners_.emplace(&variable, &node);
            variables.push_back(&variable);
        }
    }
    std::size_t done = 0;
    std::size_t const all = variables.size();
    model_.read(std::move(variables),
                [&](MoxRead::Model::Variables const& alike, Dataset const& dataset) {
                    for (Variable const* variable : alike)
                        check(*variable, dataset);
                    tell(done += alike.size(), all);
                });
}

void ValueCheck::check(Variable const& variable, Dataset const& dataset)
{
    if (isCoordinates(variable))
        checkPositions(variable, dataset);
    else if (!isConstant(variable))
        checkResults(variable, dataset);
}

void ValueCheck::checkPositions(Variable const& variable, Dataset const& dataset)
{
    Sorts const rows(dataset);
    MoxRead::Node const* const node = owners_.at(&variable);
    if (rows.withNaN.count > 0) {
        findings_.add({&Kinds::notFinitePosition, node, &variable, "numbers",
                       "NaN in " + rows.withNaN.text(rows.all)});
    }
    if (rows.withInfinity.count > 0) {
        findings_.add({&Kinds::notFinitePosition, node, &variable, "finite numbers",
                       "infinite values in " + rows.withInfinity.text(rows.all)});
    }
}

// A row without any value says that nothing is known there; a row with some of them went wrong.
void ValueCheck::checkResults(Variable const& variable, Dataset const& dataset)
{
    Sorts const rows(dataset);
    MoxRead::Node const* const node = owners_.at(&variable);
    auto const tell = [&](Kind const& kind, Rows const& found, std::string const& expected,
                          std::string const& what) {
        if (found.count > 0)
            findings_.add({&kind, node, &variable, expected, what + found.text(rows.all)});
    };
    tell(Kinds::rowsWithoutValue, rows.withoutValue, "a value in each row", "NaN in ");
    tell(Kinds::notNumbers, rows.partlyNotNumbers, "numbers in all columns of a row, or in none",
         "NaN in some columns of ");
    tell(Kinds::infinite, rows.withInfinity, "finite numbers", "infinite values in ");
}

} // namespace Mox::Check
