#include <Zyl2/Mox2/ArrayViewEigen.h>
#include <Zyl2/Mox2/Model.h>

#include "container/FailingAllocation.h"
#include "support/Folder.h"
#include "support/ThrowSite.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <ctime>
#include <limits>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace Zyl2::Mox2;

constexpr float Infinity = std::numeric_limits<float>::infinity();

SaverOptions overwriting()
{
    SaverOptions options;
    options.overwrite = true;
    return options;
}

void begin(Model& model, std::string const& path, SaverOptions const& options = overwriting())
{
    model.saveTo(path, options);
    model.addNode(NodeType::RootGroup, "Root");
    model.addNode(NodeType::Shape, "Shape");
}

/// Id of the geometry that `begin` adds.
constexpr unsigned int ShapeId = 3;

DatasetType typeOf(std::size_t width)
{
    return width == 1   ? DatasetType::Result10
           : width == 3 ? DatasetType::Result11
                        : DatasetType::Result12;
}

/// Writes both files with one time stamp, which files hold.
template <typename First, typename Second>
void expectSameContent(First const& first, Second const& second)
{
    std::string files[2];
    std::time_t began = 0;
    do {
        began = std::time(nullptr);
        files[0] = first();
        files[1] = second();
    } while (began != std::time(nullptr));
    EXPECT_TRUE(files[0] == files[1]);
    EXPECT_GT(files[0].size(), 12U);
}

template <typename First, typename Second>
void expectSameFile(First const& first, Second const& second)
{
    Support::Folder const folder;
    std::string const path = folder.path("a.mox").string();
    auto const written = [&](auto const& add) {
        Model model;
        begin(model, path);
        add(model);
        model.close();
        return Support::contentOf(path);
    };
    expectSameContent([&] { return written(first); }, [&] { return written(second); });
}

template <typename To, typename Values>
void expectSameAsTable(std::vector<To> const& table, std::size_t width, Values const& values)
{
    Array2d<To> const array(table.size() / width, width, table);
    expectSameFile(
        [&](Model& model) {
            model.addArrayProperty("Data", typeOf(width), array, ShapeId, Step("1"));
        },
        [&](Model& model) {
            model.addArrayProperty("Data", typeOf(width), values, ShapeId, Step("1"));
        });
}

template <typename From>
From randomValue(std::mt19937& random)
{
    if constexpr (std::is_floating_point_v<From>) {
        switch (random() % 16) {
        case 0:
            return static_cast<From>(Infinity);
        case 1:
            return -From();
        case 2: // denormal as a float
            return static_cast<From>(std::ldexp(static_cast<double>(random()), -170));
        case 3:
            return static_cast<From>(std::numeric_limits<float>::max());
        default:
            return static_cast<From>(
                std::ldexp(static_cast<double>(random()) - 2e9, static_cast<int>(random() % 80)));
        }
    } else {
        return static_cast<From>(std::is_same_v<From, std::int32_t> ? random() >> 1U : random());
    }
}

template <typename From>
class ArrayViewOfTest : public testing::Test
{};

using ViewedElements = testing::Types<float, double, std::int32_t, std::uint32_t, std::int64_t,
                                      std::uint64_t, long long>;
TYPED_TEST_SUITE(ArrayViewOfTest, ViewedElements, );

TYPED_TEST(ArrayViewOfTest, GivesTheFileOfTheTableWhateverItsStrides)
{
    using To = std::conditional_t<std::is_floating_point_v<TypeParam>, float, unsigned int>;
    std::mt19937 random(static_cast<unsigned int>(sizeof(TypeParam)));
    for (int run = 0; run < 40; ++run) {
        std::size_t const width = std::array<std::size_t, 3>{1, 3, 6}[random() % 3];
        std::size_t const rows = 1 + random() % (run % 8 == 0 ? 5000 : 90);
        // Columns first or rows first, with gaps that keep no alignment, forwards or backwards.
        auto const size = static_cast<std::ptrdiff_t>(sizeof(TypeParam));
        std::ptrdiff_t const gap =
            random() % 2 == 0 ? 0 : static_cast<std::ptrdiff_t>(random() % 9);
        bool const rowsFirst = random() % 2 == 0;
        std::ptrdiff_t columnStride = size + gap;
        std::ptrdiff_t rowStride =
            columnStride * static_cast<std::ptrdiff_t>(width) + static_cast<std::ptrdiff_t>(gap);
        if (!rowsFirst) {
            rowStride = size + gap;
            columnStride = rowStride * static_cast<std::ptrdiff_t>(rows);
        }
        std::vector<unsigned char> memory(static_cast<std::size_t>(size + gap) * (rows + 1) *
                                          (width + 1));
        unsigned char* first = memory.data();
        if (random() % 2 == 0) {
            first += rowStride * static_cast<std::ptrdiff_t>(rows - 1);
            rowStride = -rowStride;
        }
        if (random() % 2 == 0) {
            first += columnStride * static_cast<std::ptrdiff_t>(width - 1);
            columnStride = -columnStride;
        }
        std::vector<To> table;
        for (std::size_t row = 0; row < rows; ++row)
            for (std::size_t column = 0; column < width; ++column) {
                auto const value = randomValue<TypeParam>(random);
                std::memcpy(first + static_cast<std::ptrdiff_t>(row) * rowStride +
                                static_cast<std::ptrdiff_t>(column) * columnStride,
                            &value, sizeof value);
                table.push_back(static_cast<To>(value));
            }
        ArrayView const typed(static_cast<TypeParam const*>(nullptr), 0, 0);
        expectSameAsTable(table, width,
                          ArrayView(first, typed.element(), rows, width, rowStride, columnStride));
    }
}

TEST(ArrayViewTest, IsMadeOfWhatHostsHave)
{
    std::vector<float> const three{1, 2, 3};
    double const values[] = {1, 2, 3};
    expectSameAsTable(three, 1, values);
    expectSameAsTable(three, 1, std::vector<double>{1, 2, 3});
    expectSameAsTable(three, 1, std::array<double, 3>{1, 2, 3});
    expectSameAsTable(three, 1, Array1d<float>{1, 2, 3});
    expectSameAsTable(three, 3, ArrayView(values, 1, 3));
    std::vector<float> const six{1, 2, 3, 4, 5, 6};
    double const rows[2][3] = {{1, 2, 3}, {4, 5, 6}};
    expectSameAsTable(six, 3, rows);
    expectSameAsTable(six, 3, std::vector<std::array<double, 3>>{{1, 2, 3}, {4, 5, 6}});
    expectSameAsTable(six, 3, ArrayView(Array2d<float>(2, 3, six)));
    expectSameAsTable(six, 3, ArrayView::table(six, 3));
}

TEST(ArrayViewTest, IsMadeOfMatricesOfEitherOrderAndPartsOfThem)
{
    std::vector<float> const six{1, 2, 3, 4, 5, 6};
    Eigen::MatrixXd columnsFirst(2, 3);
    columnsFirst << 1, 2, 3, 4, 5, 6;
    expectSameAsTable(six, 3, columnsFirst);
    Eigen::Matrix<float, Eigen::Dynamic, 3, Eigen::RowMajor> const rowsFirst =
        columnsFirst.cast<float>();
    expectSameAsTable(six, 3, rowsFirst);
    expectSameAsTable(six, 3, columnsFirst.array());
    Eigen::MatrixXd larger = Eigen::MatrixXd::Constant(4, 5, -1);
    larger.block(1, 1, 2, 3) = columnsFirst;
    expectSameAsTable(six, 3, larger.block(1, 1, 2, 3));
    expectSameAsTable(std::vector<float>{4, 5, 6}, 1, columnsFirst.row(1));
    expectSameAsTable(std::vector<float>{2, 5}, 1, columnsFirst.col(1));
    expectSameAsTable(six, 3,
                      Eigen::Map<Eigen::Matrix<float, 2, 3, Eigen::RowMajor> const>(six.data()));
    static_assert(!ArrayViewOf<Eigen::MatrixXcd>::exists, "complex numbers are no elements");
}

TEST(ArrayViewTest, TakesIdsAsTheyCome)
{
    std::vector<double> const values{1, 2};
    std::vector<unsigned int> const ids{ShapeId, 5};
    Array1d<float> const array{1, 2};
    StepList steps(2);
    steps.set(0, Step("1"));
    steps.set(1, Step("2"));
    auto const add = [&](auto const& given, auto const& components) {
        return [&](Model& model) {
            model.setCurrentNodeId(1);
            model.addNode(NodeType::Shape, "Other");
            model.addArrayProperty(DatasetType::NodeIds, given, components, steps);
        };
    };
    expectSameFile(add(array, Array1d<unsigned int>(ids)), add(values, ids));
    expectSameFile(add(array, Array1d<unsigned int>(ids)), add(array, ids));
    IdsView const pointed(ids.data(), ids.size());
    expectSameFile(add(array, Array1d<unsigned int>(ids)), add(values, pointed));
    unsigned int const inBraces[] = {ShapeId, 5};
    expectSameFile(add(array, Array1d<unsigned int>(ids)), add(values, inBraces));
    expectSameFile(add(array, ShapeId), add(values, 3));
    expectSameFile(add(array, ShapeId), add(values, std::size_t(3)));
    expectSameFile(add(array, IdsView(ids.data(), 0)), add(values, std::vector<unsigned int>()));
}

TEST(ArrayViewTest, WithoutRowsAddsNothingAndNeedsNoPointer)
{
    expectSameFile(
        [](Model& /*model*/) {},
        [](Model& model) {
            model.addArrayProperty(DatasetType::Coordinates, ArrayView(), ShapeId, Step());
            model.addArrayProperty(DatasetType::NodeIds, std::vector<long>(), ShapeId, Step());
        });
}

/// What a refused view leaves is the file without it.
template <typename Kind, typename Values>
std::string detailOfRefused(Values const& values, std::size_t width, std::string const& text)
{
    std::string found;
    expectSameFile([](Model& /*model*/) {},
                   [&](Model& model) {
                       try {
                           model.addArrayProperty("Data", typeOf(width), values, ShapeId, Step());
                           ADD_FAILURE() << "not refused";
                       } catch (Kind const& failure) {
                           EXPECT_STREQ(failure.what(), text.c_str());
                           found = Zyl2::Exception::detail(failure);
                       }
                   });
    return found;
}

using Zyl2::Exception::OverflowError;

TEST(ArrayViewTest, RefusesWhatHasNoPlaceBeforeAnythingIsWritten)
{
    auto const detail = [](auto const& values, std::size_t width = 1) {
        return detailOfRefused<OverflowError>(values, width, "Overflow error");
    };
    EXPECT_EQ(detail(std::vector<double>{1, -1e300}),
              "Result10 \"Data\": row 1, column 0 holds -1e+300, which is beyond the range of a "
              "float");
    double const rows[2][3] = {{1, 2, 3}, {4, 5, 0x1.ffffffp127}};
    EXPECT_EQ(detail(rows, 3), "Result11 \"Data\": row 1, column 2 holds 3.4028235677973366e+38, "
                               "which is beyond the range of a float");
    EXPECT_EQ(detail(std::vector<int>{7, -1}),
              "Result10 \"Data\": row 1, column 0 holds -1, which is beyond the range of 0 to "
              "4294967295");
    EXPECT_EQ(detail(std::vector<long>{4294967295, 4294967296}),
              "Result10 \"Data\": row 1, column 0 holds 4294967296, which is beyond the range of 0 "
              "to 4294967295");
    EXPECT_EQ(detail(std::vector<long>{std::numeric_limits<long>::min()}),
              "Result10 \"Data\": row 0, column 0 holds -9223372036854775808, which is beyond the "
              "range of 0 to 4294967295");
    EXPECT_EQ(detail(std::vector<unsigned long>{~0UL}),
              "Result10 \"Data\": row 0, column 0 holds 18446744073709551615, which is beyond the "
              "range of 0 to 4294967295");
    EXPECT_EQ(detail(ArrayView(&rows[0][0], std::size_t(1) << 40U)),
              "1099511627776 rows, the format counts up to 2147483647");
}

void addSome(Model& model, std::size_t datasets)
{
    std::vector<double> const values(300, 1.5);
    for (std::size_t number = 0; number < datasets; ++number)
        model.addArrayProperty("Data", DatasetType::Result11, ArrayView::table(values, 3), ShapeId,
                               Step(std::to_string(number)));
}

void addRefused(Model& model)
{
    std::vector<double> beyond(300, 1.5);
    beyond.back() = 1e300;
    EXPECT_THROW(model.addArrayProperty("Other", DatasetType::Result11, ArrayView::table(beyond, 3),
                                        ShapeId, Step()),
                 OverflowError);
}

TEST(ArrayViewTest, RefusedLeavesTheFileAsItWasWhereverItsValuesWouldHaveGone)
{
    Support::Folder const folder;
    std::string const path = folder.path("a.mox").string();
    // Each dataset is 1,200 bytes, and fewer when it is compressed. In blocks that one fills, the
    // file has a second index after some of them.
    for (std::uint64_t const blockSize : {0U, 1200U, 2400U})
        for (int const threads : {0, 2})
            for (std::size_t const before : {0U, 1U, 2U, 3U, 17U, 18U, 19U, 20U})
                for (std::size_t const after : {0U, 3U}) {
                    SCOPED_TRACE(std::to_string(blockSize) + " bytes, " + std::to_string(threads) +
                                 " threads, " + std::to_string(before) + " before, " +
                                 std::to_string(after) + " after");
                    SaverOptions options = overwriting();
                    options.threads = threads;
                    options.blockSize = blockSize;
                    auto const written = [&](bool withRefused) {
                        Model model;
                        begin(model, path, options);
                        addSome(model, before);
                        if (withRefused)
                            addRefused(model);
                        addSome(model, after);
                        model.close();
                        return Support::contentOf(path);
                    };
                    expectSameContent([&] { return written(false); },
                                      [&] { return written(true); });
                }
}

TEST(ArrayViewTest, OfDoublesTakesWhatRoundsToAFloatAndWhatIsNoFiniteNumber)
{
    double const nearest = std::nextafter(0x1.ffffffp127, 0);
    double const quiet = std::numeric_limits<double>::quiet_NaN();
    expectSameAsTable(
        std::vector<float>{std::numeric_limits<float>::max(), -Infinity, std::nanf(""), 0}, 1,
        std::vector<double>{nearest, -static_cast<double>(Infinity), quiet, 1e-300});
}

TEST(ArrayViewTest, OfRowsWithoutMemoryOrOfNoWholeRowsIsRefused)
{
    using Zyl2::Exception::InvalidArguments;
    EXPECT_EQ(detailOfRefused<InvalidArguments>(ArrayView(static_cast<float const*>(nullptr), 2, 3),
                                                3, "Invalid arguments"),
              "Result11 \"Data\": 2 rows, but a null pointer");
    EXPECT_EQ(detailOfRefused<InvalidArguments>(std::vector<double>(4), 3, "Invalid arguments"),
              "Result11 \"Data\" needs 3 columns, the array has 1");
    Support::expectThrown<InvalidArguments>(
        [] { ArrayView::table(std::vector<float>(7), 3); },
        {3, "Invalid arguments", "wholeRows", "Zyl2/Mox2/ArrayView", 30});
    EXPECT_THROW(ArrayView::table(std::vector<float>(7), 0), InvalidArguments);
}

/// Calls with each of the allocations failing in turn.
template <typename Add>
std::size_t failures(Add const& add)
{
    Support::Folder const folder;
    std::string const path = folder.path("a.mox").string();
    for (std::size_t allocation = 0;; ++allocation) {
        Model model;
        begin(model, path);
        bool hasFailed = false;
        {
            Support::FailingAllocation const failing(allocation);
            try {
                add(model);
            } catch (std::bad_alloc const&) {
            } catch (Zyl2::Exception::MemoryAllocationException const&) {
            } catch (OverflowError const& failure) {
                EXPECT_STREQ(failure.what(), "Overflow error");
            }
            hasFailed = failing.HasFailed();
        }
        model.close();
        if (!hasFailed)
            return allocation;
    }
}

TEST(ArrayViewTest, SurvivesEveryAllocationThatFails)
{
    std::vector<double> const values(3000, 1.5);
    std::vector<unsigned int> const ids{ShapeId};
    EXPECT_GT(failures([&](Model& model) {
                  model.addArrayProperty("Data", DatasetType::Result11, ArrayView::table(values, 3),
                                         ids, Step("1"));
              }),
              5U);
    EXPECT_GT(failures([&](Model& model) {
                  model.addArrayProperty(DatasetType::NodeIds, std::vector<int>{-1}, ids, Step());
              }),
              5U);
}

TEST(ModelMoveTest, TakesTheFileAlongAndLeavesAnEmptyModel)
{
    std::vector<float> const values{1, 2};
    auto const add = [&](Model& model) {
        model.addArrayProperty(DatasetType::NodeIds, values, ShapeId, Step());
    };
    expectSameFile(add, [&](Model& model) {
        Model other(std::move(model));
        Support::expectThrown<Zyl2::Exception::InvalidObjectState>(
            [&] { model.addNode(NodeType::Group, ""); }, // NOLINT(bugprone-use-after-move)
            {17, "File not open.", "", "Zyl2/Mox2/Database", 114});
        Model& same = other;
        other = std::move(same);
        add(other);
        Support::Folder const folder;
        std::string const path = folder.path("closed.mox").string();
        model.saveTo(path);
        model = std::move(other);
        EXPECT_GT(Support::contentOf(path).size(), 12U);
        other.close();
    });
}

TEST(ArrayViewTest, AnIdOf64BitsIsNotNarrowedToThatOfAnotherNode)
{
    Model model;
    model.saveTo("");
    model.addNode(NodeType::RootGroup, "Root");
    std::size_t const shape = model.addNode(NodeType::Shape, "Shape");
    Array1d<float> const values{1, 2};
    model.addArrayProperty("Data", DatasetType::NodeScalar, values, shape, Step());
    EXPECT_THROW(model.addArrayProperty("Data", DatasetType::NodeScalar, values,
                                        shape + (std::size_t(1) << 32U), Step()),
                 Zyl2::Exception::KeyNotFound);
}

} // namespace
