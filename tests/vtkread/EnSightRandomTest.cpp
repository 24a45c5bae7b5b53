#include "EnSightModelComparison.h"
#include "EnSightModelFiles.h"
#include "EnSightRandomCase.h"
#include "OpenedFile.h"

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
    /// Of so many cases.
    std::size_t mustBeRead;
};

constexpr std::uint32_t caseCount = 100;

/// What VTK is known to fail on. In steps that are not in the time set of a variable, it has none
/// of its values.
bool isKnownRefusal(std::string const& sentence)
{
    static std::vector<std::regex> const known = [] {
        std::vector<std::regex> patterns;
        for (char const* const pattern :
             {"VTK says: Number of tuples in 'from' .* and 'to' .* do not match\\.",
              "VTK misreads measured points of EnSight 6\\.",
              "VTK misreads measured points in Fortran binary files\\.",
              "VTK can't read measured points in binary files with several steps in a file\\.",
              "VTK says: undefined geometry file line.*\\.",
              "VTK misreads complex variables of a case with a TIME section, unless as many others "
              "have the same time set and file set\\.",
              "The values of the variable '.*' are missing\\.",
              "The variable '.*' has values on structured parts, which VTK misreads in this "
              "format\\.",
              "The variable '.*' has values of 'penta15' elements in several steps, which VTK "
              "misreads in this format\\.",
              "The variable '.*' has undefined values and several steps in a file, which VTK "
              "misreads in this format\\.",
              "Part .* is a blanked curvilinear block, which VTK misreads\\.",
              "VTK can't read Fortran binary files with several steps in a file\\.",
              "VTK can't read binary files of EnSight 6 with several steps in a file\\.",
              "VTK misreads the nodes of 'tetra.*' elements in binary files of EnSight 6 with "
              "node ids\\.",
              "VTK misreads 'point' elements without ids in texts with node ids\\."})
            patterns.emplace_back(pattern);
        return patterns;
    }();
    return std::any_of(known.begin(), known.end(), [&](std::regex const& pattern) {
        return std::regex_match(sentence, pattern);
    });
}

class EnSightRandom : public ::testing::TestWithParam<Kind>
{
protected:
    static EnSightModel modelOf(std::uint32_t seed, Features const& features = {})
    {
        return EnSightRandomCase(GetParam().format, GetParam().isGold, features, seed).model();
    }

    /// \return whether the case was read, and not refused
    template <typename Inspect>
    static bool read(EnSightModel const& model, Inspect const& inspect)
    {
        Support::Folder const folder;
        auto const path = EnSightModelFiles(model).writeTo(folder);
        try {
            OpenedFile const file(VtkRead::FileKind::EnSight, path);
            inspect(file);
            return true;
        } catch (Exchange::Error const& error) {
            EXPECT_TRUE(isKnownRefusal(error.what())) << error.what() << "\n" << model.summary();
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
    EXPECT_GE(countRead, GetParam().mustBeRead);
}

TEST_P(EnSightRandom, CasesOfUnstructuredPartsAreAllRead)
{
    constexpr std::uint32_t plainCases = 20;
    Features plain;
    plain.ids = plain.structuredParts = plain.secondOrderElements = plain.emptyBlocks =
        plain.measuredPoints = false;
    plain.severalStepsPerFile = plain.timeSetsOfSomeSteps = plain.complexVariables = false;
    for (std::uint32_t seed = 0; seed < plainCases; ++seed) {
        SCOPED_TRACE(seed);
        EXPECT_TRUE(isReadRight(modelOf(seed, plain)));
    }
}

TEST_P(EnSightRandom, OtherNumbersAreNoticed)
{
    Features plain;
    plain.ids = plain.structuredParts = plain.emptyBlocks = plain.gaps = false;
    plain.severalStepsPerFile = plain.timeSetsOfSomeSteps = plain.complexVariables = false;
    EnSightModel const model = modelOf(1, plain);
    read(model, [&](OpenedFile const& file) {
        EXPECT_EQ(differenceOf(file, model), "");
        EnSightModel other = model;
        other.parts.back().coordinates.front().back() += 1;
        EXPECT_NE(differenceOf(file, other), "");
        other = model;
        auto& nodes = other.parts.back().elements.back().nodes.back();
        nodes.front() = nodes.front() % 20 + 1;
        EXPECT_NE(differenceOf(file, other), "");
        other = model;
        other.variables.back().values.back().front().back() += 1;
        EXPECT_NE(differenceOf(file, other), "");
    });
}

INSTANTIATE_TEST_SUITE_P(All, EnSightRandom,
                         ::testing::Values(Kind{"GoldText", Format::Text, true, 45},
                                           Kind{"GoldBinary", Format::C, true, 45},
                                           Kind{"GoldFortran", Format::Fortran, true, 33},
                                           Kind{"OldText", Format::Text, false, 30},
                                           Kind{"OldBinary", Format::C, false, 20}),
                         [](auto const& one) { return one.param.name; });

} // namespace
