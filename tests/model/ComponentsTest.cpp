#include "Zyl2/Mox2/Adder/Components.h"

#include "Expectations.h"
#include "OpenDatabase.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace ModelTests;
using namespace Zyl2::Mox2;
using Paths = std::vector<std::string>;
using PathMap = std::map<std::string, Attributes>;
using NodeIds = std::vector<unsigned int>;

Support::Thrown const relativePath{3, "Relative paths not supported", "visit",
                                   "Zyl2/Mox2/Adder/Components", 188};
Support::Thrown const otherRoot{20, "Not yet implemented", "::Visitor::addMergeNode",
                                "Zyl2/Mox2/Adder/Components", 108};

template <typename ContainerT>
NodeIds idsOf(Adder::Components<ContainerT, ComponentArray> const& adder)
{
    return {adder.ids.data(), adder.ids.data() + adder.ids.size()};
}

class ComponentsTest : public testing::Test
{
protected:
    template <typename ContainerT>
    NodeIds add(ContainerT const& paths, std::string const& separator = "/")
    {
        Adder::Components<ContainerT, ComponentArray> adder(paths, separator);
        adder.update(model_.database);
        return idsOf(adder);
    }

    NodeIds add(Paths const& paths, std::string const& separator = "/")
    {
        return add<Paths>(paths, separator);
    }

    /// Adds paths that have to be refused.
    /// \return the ids that were found before
    template <typename Kind, typename ContainerT>
    NodeIds addInVain(ContainerT const& paths, Support::Thrown const& expected)
    {
        Adder::Components<ContainerT, ComponentArray> adder(paths, "/");
        Support::expectThrown<Kind>([&] { adder.update(model_.database); }, expected);
        return idsOf(adder);
    }

    /// All records as "id parent type name", in id order.
    Paths records()
    {
        Paths texts;
        for (auto const& record : model_.tree().GetRecords())
            texts.push_back(std::to_string(record.id) + ' ' + std::to_string(record.parent) + ' ' +
                            record.value->GetType() + ' ' + record.value->GetName());
        return texts;
    }

    OpenDatabase model_;
};

TEST_F(ComponentsTest, ANewRootHasNoAttributesAndNoFlag)
{
    add({"/a/b/"});
    auto const* const root = model_.node<Zyl2Mox::Group>(1);
    ASSERT_NE(root, nullptr);
    EXPECT_TRUE(root->GetAttributes().empty());
    EXPECT_EQ(root->GetFlag(), 0);
}

TEST_F(ComponentsTest, APathOfSeparatorsOnlyHasTheIdZero)
{
    EXPECT_EQ(add({"/", "///"}), (NodeIds{0, 0}));
    EXPECT_EQ(model_.tree().GetReqNode(1).value, nullptr);
}

TEST_F(ComponentsTest, OnlyTheWholeSeparatorOfSeveralCharactersAtTheEndNamesAGroup)
{
    EXPECT_EQ(add({"/.a/.b/.", "/.a/.c/", "/.a/.d."}, "/."), (NodeIds{2, 4, 6}));
    EXPECT_EQ(records(), (Paths{"1 0 Group a", "2 1 Group b", "3 1 Shape c", "4 3 Geometry c",
                                "5 1 Shape d", "6 5 Geometry d"}));
}

TEST_F(ComponentsTest, WithoutASeparatorAPathIsTheNameOfTheRoot)
{
    EXPECT_EQ(add({"/a/b"}, ""), NodeIds{1});
    EXPECT_EQ(records(), Paths{"1 0 Group /a/b"});
}

TEST_F(ComponentsTest, ARelativePathIsRefusedAndEarlierPathsStay)
{
    Paths const paths{"/a/c/", "a/b", "/a/d/"};
    EXPECT_EQ((addInVain<Zyl2::Exception::InvalidArguments>(paths, relativePath)),
              (NodeIds{2, 0, 0}));
    EXPECT_EQ(records(), (Paths{"1 0 Group a", "2 1 Group c"}));
}

TEST_F(ComponentsTest, AnotherRootIsNotYetImplemented)
{
    add({"/a/b/"});
    EXPECT_EQ((addInVain<Zyl2::Exception::NotYetImplemented>(Paths{"/a/c/", "/x/y"}, otherRoot)),
              (NodeIds{3, 0}));
    EXPECT_EQ(records(), (Paths{"1 0 Group a", "2 1 Group b", "3 1 Group c"}));
}

TEST_F(ComponentsTest, OfAMapAreRefusedWhenAGroupHasAnAttributeThatCannotBeStored)
{
    PathMap paths;
    paths["/a/b/"].set("Flag", true);
    paths["/a/c/"];
    EXPECT_EQ((addInVain<Zyl2::Exception::InvalidArguments>(paths, unsupportedScalar)),
              (NodeIds{2, 0}));
    EXPECT_EQ(records(), (Paths{"1 0 Group a", "2 1 Group b"}));
}

TEST_F(ComponentsTest, OfAMapAreRefusedWhenTheRootHasAnAttributeThatCannotBeStored)
{
    PathMap paths;
    paths["/a/"].set("Flag", true);
    EXPECT_EQ((addInVain<Zyl2::Exception::InvalidArguments>(paths, unsupportedScalar)), NodeIds{1});
}

TEST_F(ComponentsTest, NonePassOnAClosedDatabaseToo)
{
    Database closed;
    Paths const noPaths;
    Adder::Components<Paths, ComponentArray> adder(noPaths, "/");
    EXPECT_NO_THROW(adder.update(closed));
    EXPECT_EQ(adder.ids.size(), 0);
    PathMap const noEntries;
    Adder::Components<PathMap, ComponentArray> mapAdder(noEntries, "/");
    EXPECT_NO_THROW(mapAdder.update(closed));
}

TEST_F(ComponentsTest, AreRefusedByADatabaseThatIsNotInWriteMode)
{
    model_.database.openedForWriting = false;
    addInVain<Zyl2::Exception::InvalidObjectState>(Paths{"/a/b"}, notInWriteMode);
    EXPECT_EQ(model_.tree().GetReqNode(1).value, nullptr);
}

} // namespace
