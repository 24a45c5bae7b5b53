#include "fault/Faults.h"

#include "container/TemporaryFile.h"
#include "moxread/Model.h"

#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Fault {

namespace {

using Values = std::vector<std::vector<std::uint32_t>>;

/// A model in which each array has a block of its own.
void writeModel(std::string const& path)
{
    using namespace Zyl2::Mox2;
    SaverOptions options;
    options.threads = 0;
    options.blockSize = 1000;
    Model model;
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "root");
    unsigned int const shape = model.addNode(NodeType::Shape, "shape");
    for (unsigned int number = 0; number < 12; ++number)
        model.addArrayProperty("array", DatasetType::Result10,
                               Array1d<float>(300, static_cast<float>(number)), shape,
                               Step(std::to_string(number)));
    model.close();
}

Values readAll(std::string const& path, unsigned int threads)
{
    MoxRead::ReadOptions options;
    options.threads = threads;
    Values values;
    MoxRead::Model model(path, options);
    AtWork const atWork;
    model.readAll([&](MoxRead::Model::Variables const&, MoxRead::Dataset const& dataset) {
        values.push_back(dataset.words);
    });
    return values;
}

} // namespace

TEST(ReaderThreadsTest, WhenOneCantBeStartedThoseThatThereAreHaveToDo)
{
    constexpr unsigned int threads = 3;
    Support::TemporaryFolder const folder;
    std::string const path = folder.File("a.mox");
    writeModel(path);
    Values const expected = readAll(path, 0);
    ASSERT_EQ(expected.size(), 12U);
    for (std::size_t ordinal = 0; ordinal <= threads; ++ordinal) {
        SCOPED_TRACE(ordinal);
        Injection const injection(Place::ThreadStart, ordinal, Repeat::FromThenOn);
        EXPECT_EQ(readAll(path, threads), expected);
        EXPECT_EQ(injection.hasStruck(), ordinal < threads);
    }
}

} // namespace Fault
