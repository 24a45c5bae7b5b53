#include "mox/commands/LsCommand.h"
#include "mox/commands/VerifyCommand.h"

#include "Bytes.h"
#include "Sample.h"
#include "TestFile.h"
#include "support/Wanted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <sstream>

using namespace MoxReadTest;

namespace {

using Mox::listFile;
using Mox::verifyFile;

struct Outcome
{
    int status = 0;
    std::string out;
    std::string err;
};

Outcome outcomeOfVerify(TemporaryFile const& file)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = verifyFile(file.path(), out, err);
    return {status, out.str(), err.str()};
}

Outcome outcomeOfLs(TemporaryFile const& file)
{
    std::ostringstream out;
    std::ostringstream err;
    int const status = listFile(file.path(), out, err);
    return {status, out.str(), err.str()};
}

// A refusal is one line, on one stream only.
void expectRefusal(Outcome const& outcome)
{
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

// A file with a geometry that has these variables, and with values for them.
std::string fileWith(std::vector<TestVariable> const& variables, std::size_t heavyLength)
{
    Sample sample;
    sample.nodes.pop_back();
    sample.nodes[0].last = 2;
    sample.nodes[1].next = 0;
    sample.variables = variables;
    sample.attributes.assign(1 + variables.size(), TestAttributes());
    // Without the group that the sample has last.
    std::string const light = sample.light().substr(0, sample.light().size() - 41);
    return assemble(slotsFor({{"Heavy Data", 1, deflated(std::string(heavyLength, '\0'))},
                              {"Mox Tree", 1, deflated(sample.tree())},
                              {"Light Data", 1, deflated(light)},
                              {"Attributes", 1, deflated(sample.attributeBytes())},
                              {"Resources", 1, deflated(sample.resources())},
                              {"Global Information", 1, deflated(sample.global())}}));
}

TestVariable variableOf(std::size_t number, std::uint32_t rows)
{
    TestVariable variable;
    variable.name = std::to_string(number);
    variable.type = 12;
    variable.elementCode = 5;
    variable.width = 1;
    variable.count = rows;
    return variable;
}

// The offset of the byte with the transformations in the entry of a slot of the root index.
std::size_t transformationsOffset(std::size_t slot)
{
    return 20 + slot * 139 + 137;
}

// Whether "Heavy Data" were written early says nothing about their bytes. And values without
// compression are as good as any: that they are compressed is known from nothing but the flag.
bool leavesASoundFile(std::size_t offset, unsigned flip)
{
    return offset == transformationsOffset(0) && (flip == 1 || flip == 32);
}

std::vector<unsigned> flipsOf(std::size_t offset)
{
    std::vector<unsigned> const all = {1, 2, 4, 8, 16, 32, 64, 128, 255};
    if (!Support::isSanitized)
        return all;
    return {all[offset % all.size()], all[(offset + 4) % all.size()]};
}

using Visit = std::function<void(std::size_t offset, unsigned flip)>;

// Visits the file with bits of each byte from `first` to before `last` flipped: each by itself and
// all of them, or under a sanitizer two of these.
void forEachFlip(TemporaryFile const& file, std::string const& whole, std::size_t first,
                 std::size_t last, Visit const& visit)
{
    for (std::size_t offset = first; offset < last; ++offset) {
        for (unsigned const flip : flipsOf(offset)) {
            unsigned const byte = static_cast<unsigned char>(whole[offset]) ^ flip;
            file.overwrite(offset, static_cast<char>(static_cast<unsigned char>(byte)));
            visit(offset, flip);
        }
        file.overwrite(offset, whole[offset]);
    }
}

} // namespace

TEST(HostileFile, CutAnywhereItIsIncomplete)
{
    std::string const whole = Sample().file();
    TemporaryFile const file(whole);
    for (std::size_t length = whole.size(); length-- > 0;) {
        file.cutTo(length);
        Outcome const outcome = outcomeOfVerify(file);
        expectRefusal(outcome);
        ASSERT_EQ(outcome.err.find(file.path() + ": incomplete: "), 0U)
            << length << ": " << outcome.err;
        expectRefusal(outcomeOfLs(file));
    }
}

TEST(HostileFile, AnyByteOfTheIndexFlippedIsRefused)
{
    std::string const whole = Sample().file();
    TemporaryFile const file(whole);
    forEachFlip(file, whole, 0, 2800, [&](std::size_t offset, unsigned flip) {
        Outcome const outcome = outcomeOfVerify(file);
        if (leavesASoundFile(offset, flip)) {
            EXPECT_EQ(outcome.status, 0) << "byte " << offset << " flip " << flip;
        } else {
            SCOPED_TRACE("byte " + std::to_string(offset) + " flip " + std::to_string(flip));
            expectRefusal(outcome);
        }
    });
}

TEST(HostileFile, AFlipInACompressedBlockIsRefusedOrChangesNothing)
{
    std::string const whole = Sample().file();
    TemporaryFile const file(whole);
    std::string const listing = outcomeOfLs(file).out;
    ASSERT_NE(listing, "");
    forEachFlip(file, whole, 2800, whole.size(), [&](std::size_t offset, unsigned flip) {
        SCOPED_TRACE("byte " + std::to_string(offset) + " flip " + std::to_string(flip));
        if (outcomeOfVerify(file).status == 0)
            EXPECT_EQ(outcomeOfLs(file).out, listing);
        else
            expectRefusal(outcomeOfLs(file));
    });
}

// Without compression every flip reaches the records themselves. Many are other sound values; what
// counts is that the verdict is a clear one.
TEST(HostileFile, AFlipInAPlainBlockGetsAVerdict)
{
    std::string const whole = assemble(slotsFor(Sample().plainBlocks()));
    TemporaryFile const file(whole);
    forEachFlip(file, whole, 2800, whole.size(), [&](std::size_t offset, unsigned flip) {
        SCOPED_TRACE("byte " + std::to_string(offset) + " flip " + std::to_string(flip));
        Outcome const outcome = outcomeOfVerify(file);
        EXPECT_EQ(outcomeOfLs(file).status, outcome.status);
        if (outcome.status != 0)
            expectRefusal(outcome);
    });
}

TEST(HostileFile, AByteCutOutOfAnyPlainBlockIsRefused)
{
    for (std::size_t block = 1; block < 6; ++block) {
        std::vector<TestBlock> blocks = Sample().plainBlocks();
        std::size_t const size = blocks[block].block.size();
        for (std::size_t length = 0; length < size; ++length) {
            blocks[block].block.resize(size - 1 - length);
            TemporaryFile const file(assemble(slotsFor(blocks)));
            ASSERT_EQ(outcomeOfVerify(file).status, 1) << blocks[block].name << " " << length;
        }
    }
}

TEST(HostileFile, ATreeThatIsOneDeepBranchIsListed)
{
    constexpr std::uint32_t depth = 20000;
    Bytes groups;
    std::string attributes;
    Sample sample;
    sample.nodes.assign(depth, {});
    for (std::uint32_t id = 1; id <= depth; ++id) {
        TestNode& node = sample.nodes[id - 1];
        node.id = id;
        node.parent = id - 1;
        node.first = node.last = id < depth ? id + 1 : 0;
        node.type = "Group";
        node.version = "0.4";
        node.lightPosition = groups.str().size();
        for (float const value : {0.F, 0.F, 0.F, 0.F, 0.F, 1.F, 0.F, 1.F, 1.F, 1.F})
            groups.f32(value);
        groups.u8(0);
        attributes += bytesOf(TestAttributes());
    }
    TemporaryFile const file(
        assemble(slotsFor({{"Mox Tree", 1, deflated(sample.tree())},
                           {"Light Data", 1, deflated(groups.str())},
                           {"Attributes", 1, deflated(attributes)},
                           {"Global Information", 1, deflated(sample.global())}})));
    Outcome const outcome = outcomeOfLs(file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), depth + 3);
}

TEST(HostileFile, LinksThatFormOneLongChainAreListedInTheTimeThatTheirNumberTakes)
{
    constexpr std::uint32_t count = Support::isSanitized ? 25000 : 100000;
    std::vector<TestVariable> variables;
    for (std::uint32_t i = 0; i < count; ++i) {
        variables.push_back(variableOf(i, 1));
        variables.back().linked = i + 1 < count ? 1 : 0;
        variables.back().linkNode = 3;
        variables.back().linkIndex = i + 1;
    }
    TemporaryFile const file(fileWith(variables, 4));
    std::clock_t const start = std::clock();
    Outcome const outcome = outcomeOfLs(file);
    std::clock_t const time = std::clock() - start;
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::string const last = std::to_string(count - 1);
    EXPECT_NE(outcome.out.find("link to node 3 \"" + last + "\""), std::string::npos);
    // Walking the whole chain for each of them takes minutes.
    EXPECT_LT(time, 15 * CLOCKS_PER_SEC);
}

TEST(HostileFile, DatasetsThatShareTheirValuesAreListedInTheTimeThatTheirNumberTakes)
{
    constexpr std::uint32_t count = Support::isSanitized ? 10000 : 30000;
    constexpr std::uint32_t rows = 1U << 20U;
    std::vector<TestVariable> variables;
    for (std::uint32_t i = 0; i < count; ++i)
        variables.push_back(variableOf(i, rows));
    TemporaryFile const file(fileWith(variables, std::size_t{4} * rows));
    std::clock_t const start = std::clock();
    Outcome const outcome = outcomeOfLs(file);
    std::clock_t const time = std::clock() - start;
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::string const last = std::to_string(count - 1);
    EXPECT_NE(
        outcome.out.find("\"" + last + "\": type 12, uint32, width 1, 1048576 rows, range 0..0"),
        std::string::npos);
    // Reading the values for each of them takes minutes.
    EXPECT_LT(time, 15 * CLOCKS_PER_SEC);
}
