#include "EnSightModelComparison.h"
#include "EnSightModelFiles.h"
#include "EnSightRandomCase.h"
#include "read/vtk/OpenedFile.h"

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace {

using Features = EnSightRandomCase::Features;
using Format = EnSightModel::Format;

struct Kind
{
    char const* name;
    Format format;
    bool isGold;
    std::size_t percentToBeRead;
};

constexpr std::uint32_t caseCount = 300;

/// What VTK is known to fail on. It takes a file without values for one that has lost its
/// beginning.
std::vector<std::regex> const& knownRefusals()
{
    static std::vector<std::regex> const sentences = {
        std::regex("VTK can't read Fortran binary files with several steps in a file\\."),
        std::regex("VTK can't read binary files of EnSight 6 with several steps in a file\\."),
        std::regex(
            "VTK can't read measured points in binary files with several steps in a file\\."),
        std::regex("VTK misreads measured points of EnSight 6\\."),
        std::regex("VTK misreads measured points in Fortran binary files\\."),
        std::regex("VTK misreads complex variables of a case with a TIME section, unless as many "
                   "others have the same time set and file set\\."),
        std::regex("VTK misreads the nodes of 'tetra.*' elements in binary files of EnSight 6 with "
                   "node ids\\."),
        std::regex("VTK misreads 'point' elements without ids in texts with node ids\\."),
        std::regex("Part .* is a blanked curvilinear block, which VTK misreads\\."),
        std::regex("Part .* is a blanked block of more than 10 nodes, which VTK misreads in texts "
                   "of EnSight 6\\."),
        std::regex("The variable '.*' has (values on structured parts|values of 'penta15' elements "
                   "in several steps|undefined values and several steps in a file), which VTK "
                   "misreads in this format\\."),
        std::regex("VTK says: .* is missing header information\\."),
        std::regex("VTK says: undefined geometry file line.*\\."),
        std::regex("VTK says: Number of tuples in 'from' .* and 'to' .* do not match\\.")};
    return sentences;
}

bool hasValues(EnSightModel::Variable const& variable)
{
    for (auto const& step : variable.values)
        for (auto const& part : step)
            if (!part.empty())
                return true;
    return false;
}

/// Only what no part has values of may be missing.
bool isMissing(EnSightModel::Variable const& variable, std::string const& sentence)
{
    return !hasValues(variable) &&
           sentence == "The values of the variable '" + variable.name + "' are missing.";
}

bool isKnownRefusal(std::string const& sentence, EnSightModel const& model)
{
    return std::any_of(knownRefusals().begin(), knownRefusals().end(),
                       [&](auto const& known) { return std::regex_match(sentence, known); }) ||
           std::any_of(model.variables.begin(), model.variables.end(),
                       [&](auto const& variable) { return isMissing(variable, sentence); });
}

class EnSightRandom : public ::testing::TestWithParam<Kind>
{
protected:
    static EnSightModel modelOf(std::uint32_t seed, Features const& features = {})
    {
        return EnSightRandomCase(GetParam().format, GetParam().isGold, features, seed).model();
    }

    /// Nothing of what VTK may fail on.
    static Features plain()
    {
        Features features;
        features.ids = features.structuredParts = features.secondOrderElements = false;
        features.emptyBlocks = features.severalStepsPerFile = false;
        features.timeSetsOfSomeSteps = features.complexVariables = false;
        features.measuredPoints = false;
        return features;
    }

    /// \return whether the case was read, and not refused
    template <typename Inspect>
    static bool read(EnSightModel const& model, Inspect const& inspect)
    {
        Support::Folder const folder;
        auto const path = EnSightModelFiles(model).writeTo(folder);
        try {
            constexpr bool leavesOutBlanked = true;
            OpenedFile const file(VtkRead::FileKind::EnSight, path, leavesOutBlanked);
            inspect(file);
            return true;
        } catch (Exchange::Error const& error) {
            EXPECT_TRUE(isKnownRefusal(error.what(), model)) << error.what() << "\n"
                                                             << model.summary();
            return false;
        }
    }

    static bool isReadRight(EnSightModel const& model)
    {
        return read(model, [&](OpenedFile const& file) {
            EXPECT_EQ(differenceOf(file, model), "") << model.summary();
        });
    }
};

TEST_P(EnSightRandom, CasesAreReadRightOrRefused)
{
    std::size_t countRead = 0;
    for (std::uint32_t seed = 0; seed < caseCount; ++seed) {
        SCOPED_TRACE(seed);
        countRead += isReadRight(modelOf(seed)) ? 1 : 0;
    }
    EXPECT_GE(100 * countRead, GetParam().percentToBeRead * caseCount);
}

TEST_P(EnSightRandom, CasesOfUnstructuredPartsAreAllRead)
{
    constexpr std::uint32_t plainCases = 20;
    for (std::uint32_t seed = 0; seed < plainCases; ++seed) {
        SCOPED_TRACE(seed);
        EXPECT_TRUE(isReadRight(modelOf(seed, plain())));
    }
}

TEST_P(EnSightRandom, OtherNumbersAreNoticed)
{
    Features features = plain();
    features.gaps = false;
    EnSightModel const model = modelOf(1, features);
    bool const isRead = read(model, [&](OpenedFile const& file) {
        EXPECT_EQ(differenceOf(file, model), "");
        EnSightModel other = model;
        other.parts.back().coordinates.back().back() += 1;
        EXPECT_NE(differenceOf(file, other), "");
        other = model;
        EnSightModel::Nodes& nodes = other.parts.back().elements.back().nodes.back();
        nodes.front() = nodes.front() == 1 ? 2 : nodes.front() - 1;
        EXPECT_NE(differenceOf(file, other), "");
        other = model;
        other.variables.back().values.back().front().back() += 1;
        EXPECT_NE(differenceOf(file, other), "");
    });
    EXPECT_TRUE(isRead);
}

INSTANTIATE_TEST_SUITE_P(All, EnSightRandom,
                         ::testing::Values(Kind{"GoldText", Format::Text, true, 45},
                                           Kind{"GoldBinary", Format::C, true, 45},
                                           Kind{"GoldFortran", Format::Fortran, true, 33},
                                           Kind{"OldText", Format::Text, false, 30},
                                           Kind{"OldBinary", Format::C, false, 20}),
                         [](auto const& one) { return one.param.name; });

} // namespace
