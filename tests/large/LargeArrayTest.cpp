#include "large/Figures.h"

#include "container/TemporaryFile.h"
#include "moxread/Verify.h"
#include "support/Environment.h"
#include "support/WritingRecord.h"

#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Model.h>

#include <gtest/gtest.h>

#include <new>

namespace Large {

namespace {

using namespace Zyl2::Mox2;
using Zyl2::Exception::OverflowError;

constexpr unsigned long twoToThe31 = 2147483648;

/// A model whose first blocks are in the file already.
class OpenModel
{
public:
    explicit OpenModel(std::string path) : path_(std::move(path))
    {
        model_.saveTo(path_);
        model_.addNode(NodeType::RootGroup, "root");
        shape_ = model_.addNode(NodeType::Shape, "shape");
        for (int count = 0; count < 3; ++count)
            add("dataset " + std::to_string(count));
    }

    void add(std::string const& name)
    {
        model_.addArrayProperty(name, DatasetType::Result10, Array1d<unsigned int>(100000, 7),
                                shape_, Step());
    }

    /// Offers an array that no block can hold: nothing is written, and no value looked at.
    template <typename ArrayT>
    void expectRefusal(DatasetType type, ArrayT const& values)
    {
        std::string const before = Support::ReadFile(path_);
        EXPECT_THROW(model_.addArrayProperty("too large", type, values, shape_, Step()),
                     OverflowError);
        EXPECT_TRUE(Support::ReadFile(path_) == before);
    }

    void close() { model_.close(); }
    std::string const& path() const { return path_; }

private:
    std::string path_;
    Model model_;
    unsigned int shape_ = 0;
};

class LargeArrayTest : public testing::Test
{
protected:
    Support::DefaultBlockSizeSetting setting{"300000"};
    Support::TemporaryFolder folder;
};

/// What the file has to be like when nothing too large was ever offered.
std::string writeWithoutRefusals(std::string const& path)
{
    OpenModel model(path);
    model.add("last");
    model.close();
    return Support::withoutWritingRecord(path);
}

} // namespace

TEST_F(LargeArrayTest, OfMoreThan4294967295BytesIsRefusedAndTheModelGoesOn)
{
    Figures figures("arrays above 4294967295 bytes");
    OpenModel model(folder.File("model.mox"));
    EXPECT_GT(Support::ReadFile(model.path()).size(), 0U);
    model.expectRefusal(DatasetType::Result10, Array1d<unsigned int>(1073741824));
    model.expectRefusal(DatasetType::Displacement, Array2d<float>(357913942, 3));
    model.expectRefusal(DatasetType::Displacement6, Array2d<float>(178956971, 6));
    model.add("last");
    model.close();
    EXPECT_EQ(MoxRead::verify(model.path()).datasets, 4U);
    EXPECT_TRUE(Support::withoutWritingRecord(model.path()) ==
                writeWithoutRefusals(folder.File("other.mox")));
    figures.lap("refused, and written without them", Support::ReadFile(model.path()).size());
    EXPECT_LT(peakMemory(), 256U * 1048576U);
}

TEST_F(LargeArrayTest, Of2147483647RowsHasTooManyBytes)
{
    OpenModel model(folder.File("model.mox"));
    model.expectRefusal(DatasetType::Result10, Array1d<float>(twoToThe31 - 1));
    model.expectRefusal(DatasetType::Result10, Array2d<unsigned int>(twoToThe31 - 1, 1));
    model.close();
    EXPECT_EQ(MoxRead::verify(model.path()).datasets, 3U);
    EXPECT_LT(peakMemory(), 256U * 1048576U);
}

TEST_F(LargeArrayTest, Of2147483648RowsOrColumnsCanNotBeMade)
{
    EXPECT_THROW((Array1d<float>(twoToThe31)), std::bad_alloc);
    EXPECT_THROW(Array1d<unsigned int>(twoToThe31, 0U), std::bad_alloc);
    EXPECT_THROW(Array2d<float>(twoToThe31, 3), std::bad_alloc);
    EXPECT_THROW(Array2d<unsigned int>(3, twoToThe31), std::bad_alloc);
    EXPECT_THROW(Array2d<float>(twoToThe31 - 1, twoToThe31 - 1), std::bad_alloc);
}

} // namespace Large
