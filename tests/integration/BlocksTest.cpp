#include "integration/CheckedModel.h"
#include "support/Environment.h"

#include "container/TemporaryFile.h"
#include "moxread/BlockReader.h"
#include "moxread/Container.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace Integration {

namespace {

using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;

constexpr std::size_t firstBlock = 2800;
constexpr std::uint8_t compressed = 1;
constexpr std::uint8_t compressedAndFrozen = 33;

/// The blocks that datasets have to lie in.
class ExpectedBlocks
{
public:
    explicit ExpectedBlocks(std::size_t limit) : limit_(limit) {}

    /// A dataset goes into the last block unless that has reached the limit; blocks that are there
    /// before it are frozen when they are saved.
    void add(std::size_t byteCount)
    {
        frozen_ = lengths_.size();
        if (lengths_.empty() || lengths_.back() >= limit_)
            lengths_.push_back(0);
        lengths_.back() += byteCount;
    }

    std::size_t count() const { return lengths_.size(); }
    std::size_t length(std::size_t block) const { return lengths_.at(block); }
    std::uint8_t transformations(std::size_t block) const
    {
        return block < frozen_ ? compressedAndFrozen : compressed;
    }

    /// Every group's last slot holds the next group's index: slots 19, 219, 419, ...
    static std::uint32_t slotNumber(std::size_t block)
    {
        std::size_t slot = block;
        for (std::size_t index = 19; index <= slot; index += 200)
            ++slot;
        return static_cast<std::uint32_t>(slot);
    }

private:
    std::size_t limit_;
    std::size_t frozen_ = 0;
    std::vector<std::size_t> lengths_;
};

bool isIndexSlot(std::uint32_t number)
{
    return number % 200 == 19;
}

/// The values of the blocks begin with their length, then a zlib stream: deflate with a window of
/// 32 KiB, and a second byte that makes both a multiple of 31.
void expectZlibStream(std::string const& bytes, MoxRead::Slot const& slot)
{
    auto const method = static_cast<unsigned char>(bytes.at(slot.position + 4));
    auto const check = static_cast<unsigned char>(bytes.at(slot.position + 5));
    EXPECT_EQ(method, 0x78) << slot.describe();
    EXPECT_EQ((method * 256 + check) % 31, 0) << slot.describe();
}

void expectHeavyBlocks(std::string const& path, ExpectedBlocks const& expected)
{
    MoxRead::Container const container(path);
    std::string const bytes = Support::ReadFile(path);
    std::vector<MoxRead::Slot> const heavy = container.slotsOf("Heavy Data");
    ASSERT_EQ(heavy.size(), expected.count());
    for (std::size_t block = 0; block < heavy.size(); ++block) {
        ASSERT_EQ(heavy[block].number, ExpectedBlocks::slotNumber(block));
        ASSERT_EQ(heavy[block].transformations, expected.transformations(block)) << block;
        ASSERT_EQ(MoxRead::BlockReader(container.file(), heavy[block]).length(),
                  expected.length(block));
        expectZlibStream(bytes, heavy[block]);
    }
}

void expectBackToBack(std::string const& path)
{
    MoxRead::Container const container(path);
    std::uint64_t position = firstBlock;
    for (MoxRead::Slot const& slot : container.slots()) {
        EXPECT_EQ(slot.position, position);
        position += slot.size;
    }
    EXPECT_EQ(position, Support::ReadFile(path).size());
}

void expectIndexSlots(std::string const& path)
{
    MoxRead::Container const container(path);
    std::uint32_t const slots = static_cast<std::uint32_t>(container.slots().size());
    EXPECT_EQ(slots % 200, 20U);
    // The last slot of the last group is still spare.
    for (std::uint32_t number = 0; number + 1 < slots; ++number)
        ASSERT_EQ(container.slots()[number].isIndexBlock(), isIndexSlot(number)) << number;
    EXPECT_TRUE(container.slots().back().isSpare());
}

/// Writes datasets of the given row counts and compares all that can be seen of them.
class BlockRun
{
public:
    BlockRun(std::size_t limit, unsigned int seed)
        : setting_(std::to_string(limit).c_str()), expected_(limit), random_(seed)
    {
        model_.save();
        model_.addNode(NodeType::RootGroup, "root");
        shape_ = model_.addNode(NodeType::Shape, "shape");
    }

    void add(std::size_t rows)
    {
        ArrayCall call;
        call.type = DatasetType::Result10;
        call.values = Values::anyBits(random_, Element::Uint32, 1, rows);
        call.ids = {shape_};
        call.name = "dataset " + std::to_string(datasets_++);
        call.asColumn = true;
        expected_.add(call.values.byteCount());
        model_.addArray(call);
    }

    void finish()
    {
        model_.closeAndCompare();
        expectHeavyBlocks(model_.path(), expected_);
        expectBackToBack(model_.path());
        expectIndexSlots(model_.path());
    }

    std::size_t blockCount() const { return expected_.count(); }
    std::size_t slotCount() const { return MoxRead::Container(model_.path()).slots().size(); }

private:
    Support::DefaultBlockSizeSetting setting_;
    ExpectedBlocks expected_;
    Random random_;
    Support::TemporaryFolder folder_;
    CheckedModel model_{folder_.File("blocks.mox")};
    unsigned int shape_ = 0;
    int datasets_ = 0;
};

struct Large
{
    std::size_t datasets;
    std::size_t limit;
};

class LargeDatasetsTest : public testing::TestWithParam<Large>
{};

class LimitTest : public testing::TestWithParam<std::size_t>
{};

} // namespace

TEST_P(LargeDatasetsTest, ThatEachExceedTheLimitFillABlockEach)
{
    BlockRun run(GetParam().limit, 1);
    for (std::size_t count = 0; count < GetParam().datasets; ++count)
        run.add(GetParam().limit / 4 + 1 + count % 7);
    EXPECT_EQ(run.blockCount(), GetParam().datasets);
    run.finish();
}

INSTANTIATE_TEST_SUITE_P(Blocks, LargeDatasetsTest,
                         testing::Values(Large{1, 100000}, Large{2, 100000}, Large{18, 100000},
                                         Large{19, 100000}, Large{20, 100000}, Large{21, 100000},
                                         Large{25, 100000}, Large{218, 20000}, Large{219, 20000},
                                         Large{250, 20000}, Large{450, 20000}),
                         [](auto const& large) { return std::to_string(large.param.datasets); });

TEST(BlocksTest, DatasetsThatReachTheLimitExactlyFillABlockEach)
{
    BlockRun run(1000, 2);
    for (int count = 0; count < 250; ++count)
        run.add(250);
    EXPECT_EQ(run.blockCount(), 250U);
    run.finish();
}

TEST(BlocksTest, DatasetsSmallerThanTheLimitShareMoreThan430Blocks)
{
    BlockRun run(20000, 3);
    for (int count = 0; count < 1300; ++count)
        run.add(2000);
    EXPECT_EQ(run.blockCount(), 434U);
    run.finish();
    EXPECT_EQ(run.slotCount(), 620U);
}

TEST(BlocksTest, MoreThan256BlocksLetTheSlotIdsStartAgain)
{
    BlockRun run(4096, 4);
    for (int count = 0; count < 300; ++count)
        run.add(1025);
    run.finish();
}

TEST_P(LimitTest, SmallAndLargeDatasetsMixed)
{
    std::size_t const limit = GetParam();
    BlockRun run(limit, 5);
    std::array<std::size_t, 9> const rows{1, 2, limit / 4 + 1, 1, 3000, 1, limit / 8 + 1, 5, 40};
    for (std::size_t count = 0; count < 270; ++count)
        run.add(rows.at(count % rows.size()));
    run.finish();
}

INSTANTIATE_TEST_SUITE_P(Blocks, LimitTest, testing::Values(0, 1, 10, 1000, 4096),
                         testing::PrintToStringParamName());

TEST(BlocksTest, ABigTreeIsSpreadOverManySmallBlocks)
{
    Support::DefaultBlockSizeSetting const setting("10");
    Support::TemporaryFolder const folder;
    CheckedModel model(folder.File("tree.mox"));
    model.save();
    model.addNode(NodeType::RootGroup, "root");
    for (int count = 0; count < 150; ++count) {
        AttributeSet attributes;
        attributes.set("Number", count);
        attributes.set("Text", std::string(static_cast<std::size_t>(count), 'x'));
        model.setCurrentNodeId(1);
        model.addNode(NodeType::Group, "group " + std::to_string(count), attributes);
        model.addNode(NodeType::Shape, "shape " + std::to_string(count));
    }
    model.closeAndCompare();
    expectBackToBack(model.path());
    expectIndexSlots(model.path());
}

TEST(BlocksTest, WithoutALimitOfItsOwnAModelIsOneBlockForEachKey)
{
    Support::DefaultBlockSizeSetting const setting(nullptr);
    Support::TemporaryFolder const folder;
    CheckedModel model(folder.File("model.mox"));
    model.save();
    model.addNode(NodeType::RootGroup, "root");
    ArrayCall call;
    call.type = DatasetType::Coordinates;
    call.values = Values::ascending(Element::Float, 3, 50000);
    call.ids = {model.addNode(NodeType::Shape, "shape")};
    for (int count = 0; count < 5; ++count) {
        call.name = "dataset " + std::to_string(count);
        model.addArray(call);
    }
    model.closeAndCompare();
    MoxRead::Container const container(model.path());
    std::array<char const*, 7> const names{"Heavy Data",
                                           "Mox Tree",
                                           "Light Data",
                                           "Attributes",
                                           "Resources",
                                           "Global Information",
                                           "\x0B"
                                           "Empty Block "};
    ASSERT_EQ(container.slots().size(), 20U);
    for (std::size_t slot = 0; slot < 20; ++slot)
        EXPECT_EQ(container.slots()[slot].name, names.at(std::min<std::size_t>(slot, 6)));
}

} // namespace Integration
