#include "Comparison.h"
#include "ModelFiles.h"
#include "RandomCase.h"

#include <exchange/Error.h>
#include <read/ensight/Source.h>
#include <read/ensight/Topology.h>

#include "support/Folder.h"
#include "support/RandomPicks.h"
#include "support/SourceContent.h"
#include "support/Wanted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Format = Model::Format;

struct Kind
{
    char const* name;
    Format format;
    bool isGold;
};

std::vector<Kind> const kinds = {
    {"GoldText", Format::Text, true},       {"GoldBinary", Format::C, true},
    {"GoldFortran", Format::Fortran, true}, {"OldText", Format::Text, false},
    {"OldBinary", Format::C, false},        {"OldFortran", Format::Fortran, false}};

Support::SourceContent contentOf(std::filesystem::path const& path)
{
    constexpr bool leavesOutPolyhedra = true;
    return {EnSight::open, path, leavesOutPolyhedra};
}

class EnSightRandom : public ::testing::TestWithParam<Kind>
{
protected:
    static Model modelOf(std::uint32_t seed)
    {
        return RandomCase(GetParam().format, GetParam().isGold, seed).model();
    }
};

TEST_P(EnSightRandom, CasesAreReadRight)
{
    std::uint32_t const caseCount = Support::wanted("MOXWRITER_ENSIGHT_CASES", 300, 100);
    for (std::uint32_t seed = 0; seed < caseCount; ++seed) {
        Model const model = modelOf(seed);
        SCOPED_TRACE(std::to_string(seed) + ": " + model.summary());
        Support::Folder const folder;
        try {
            EXPECT_EQ(differenceOf(contentOf(ModelFiles(model).writeTo(folder)), model), "");
        } catch (Exchange::Error const& error) {
            ADD_FAILURE() << error.what();
        }
    }
}

/// A number that no case has.
constexpr float foreign = -0.5F;

TEST_P(EnSightRandom, OtherNumbersAreNoticed)
{
    Model const model = modelOf(1);
    Support::Folder const folder;
    Support::SourceContent file = contentOf(ModelFiles(model).writeTo(folder));
    ASSERT_EQ(differenceOf(file, model), "");
    auto const part = std::find_if(file.parts.begin(), file.parts.end(),
                                   [](auto const& each) { return each.nodeCount() > 0; });
    ASSERT_NE(part, file.parts.end());
    double& coordinate = part->coordinates.front();
    double const right = std::exchange(coordinate, static_cast<double>(foreign));
    EXPECT_NE(differenceOf(file, model), "");
    coordinate = right;
    ASSERT_FALSE(file.fields.front().empty());
    std::get<std::vector<float>>(file.fields.front().back().values).back() = foreign;
    EXPECT_NE(differenceOf(file, model), "");
}

INSTANTIATE_TEST_SUITE_P(All, EnSightRandom, ::testing::ValuesIn(kinds),
                         [](auto const& one) { return one.param.name; });

/// Cuts one data file of a case at a byte.
class EnSightCuts
{
public:
    EnSightCuts(Kind const& kind, std::uint32_t seed)
        : model_(RandomCase(kind.format, kind.isGold, seed).model()),
          path_(ModelFiles(model_).writeTo(folder_))
    {}

    std::vector<std::string> files() const
    {
        std::vector<std::string> names = folder_.names();
        names.erase(std::find(names.begin(), names.end(), "in.case"));
        return names;
    }

    std::string content(std::string const& name) const
    {
        return Support::contentOf(folder_.path(name));
    }

    enum class Outcome
    {
        Refused,
        Harmless,
        /// The file is whole, but has less.
        WithoutSections,
        Unnoticed
    };

    Outcome cut(std::string const& name, std::size_t length) const
    {
        std::string const whole = content(name);
        folder_.write(name, whole.substr(0, length));
        Outcome const outcome = outcomeOf(name, whole.substr(length));
        folder_.write(name, whole);
        return outcome;
    }

private:
    Outcome outcomeOf(std::string const& name, std::string const& lost) const
    {
        try {
            Support::SourceContent const read = contentOf(path_);
            if (differenceOf(read, model_).empty())
                return Outcome::Harmless;
            return beginsWithSection(lost) ? Outcome::WithoutSections : Outcome::Unnoticed;
        } catch (Exchange::Error const& error) {
            std::string const message = error.what();
            bool const namesPlace = message.find(", at line ") != std::string::npos ||
                                    message.find(", at byte ") != std::string::npos;
            bool const namesFile = message.find(folder_.path(name).string()) != std::string::npos;
            EXPECT_TRUE(namesPlace && namesFile) << message;
            return Outcome::Refused;
        }
    }

    bool beginsWithSection(std::string const& lost) const
    {
        constexpr std::size_t marker = 4;
        std::size_t first = model_.format == Format::Fortran ? marker : 0;
        first += lost.front() == '\n' ? 1 : 0;
        std::string const word = lost.substr(first, lost.find_first_of(" \n", first) - first);
        return word.substr(0, word.find('\0')) == "part" ||
               EnSight::topologyOf(word.substr(0, word.find('\0'))) != nullptr;
    }

    Model model_;
    Support::Folder folder_;
    std::filesystem::path path_;
};

/// A file that ends where another part or block of elements could begin is whole: of those a few.
TEST(EnSightCut, IsNoticedAtAnyByte)
{
    using Outcome = EnSightCuts::Outcome;
    std::size_t const cutCount = Support::wanted("MOXWRITER_ENSIGHT_CUTS", 1000, 300);
    constexpr std::size_t cutsPerCase = 10;
    std::map<Outcome, std::size_t> counts;
    Support::RandomPicks picks(1);
    for (std::size_t i = 0; i < cutCount / cutsPerCase; ++i) {
        Kind const& kind = kinds[i % kinds.size()];
        EnSightCuts const cuts(kind, static_cast<std::uint32_t>(1000 + i));
        for (std::size_t j = 0; j < cutsPerCase; ++j) {
            std::string const name = picks.oneOf(cuts.files());
            std::size_t const length = picks.below(cuts.content(name).size());
            Outcome const outcome = cuts.cut(name, length);
            ++counts[outcome];
            EXPECT_NE(outcome, Outcome::Unnoticed)
                << kind.name << " " << 1000 + i << " " << name << " " << length;
        }
    }
    RecordProperty("refused", std::to_string(counts[Outcome::Refused]));
    RecordProperty("behindLastValue", std::to_string(counts[Outcome::Harmless]));
    RecordProperty("betweenSections", std::to_string(counts[Outcome::WithoutSections]));
    EXPECT_LE(counts[Outcome::WithoutSections], cutCount / 100);
}

} // namespace
