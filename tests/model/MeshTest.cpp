#include <Zyl2/Exception/Exception.h>
#include <Zyl2/Mox2/Mesh.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace Zyl2::Mox2;
using Ids = std::vector<int>;
using Doubles = std::vector<double>;

/// A mesh of four nodes, which are a tetrahedron or two triangles, in a model without file.
class MeshTest : public testing::Test
{
protected:
    MeshTest()
    {
        model_.saveTo("");
        root_ = model_.addNode(NodeType::RootGroup, "Root");
    }

    Mesh mesh(NodeNumbering numbering = NodeNumbering::FromZero, NodeOrder order = NodeOrder::Model)
    {
        return Mesh(model_, root_, "M", order, numbering);
    }

    static std::vector<std::array<double, 3>> coordinates()
    {
        return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    }

    static Elements tetrahedron(Ids const& nodes, Ids const& ids = {})
    {
        return Elements(ElementType::Tetrahedron4, ArrayView::table(nodes, 4), ids);
    }

    static void expectRefusal(std::function<void()> const& call, std::string const& sentence)
    {
        try {
            call();
            ADD_FAILURE() << "not refused: " << sentence;
        } catch (Zyl2::Exception::InvalidArguments const& failure) {
            EXPECT_EQ(std::string(Zyl2::Exception::detail(failure)), sentence);
        }
    }

    Model model_;
    unsigned int root_ = 0;
};

TEST_F(MeshTest, SiblingsStayBesideEachOther)
{
    unsigned int const group = addGroup(model_, root_, "Group");
    unsigned int const first = addShape(model_, root_, "First");
    unsigned int const second = addShape(model_, root_, "Second");
    Mesh const third = mesh();
    EXPECT_EQ(model_.getNodeId("/Root/Group"), group);
    // The path names the shape, whose geometry has the id that follows.
    EXPECT_EQ(model_.getNodeId("/Root/First") + 1, first);
    EXPECT_EQ(model_.getNodeId("/Root/Second") + 1, second);
    EXPECT_EQ(model_.getNodeId("/Root/M") + 1, third.id());
}

TEST_F(MeshTest, TypesKnowTheirNodesAndDimension)
{
    EXPECT_EQ(nodesOf(ElementType::Hexahedron27), 27U);
    EXPECT_EQ(dimensionOf(ElementType::Point1), 1U);
    EXPECT_EQ(dimensionOf(ElementType::Quadrangle9), 2U);
    EXPECT_EQ(dimensionOf(ElementType::Wedge6), 3U);
    expectRefusal([] { nodesOf(static_cast<ElementType>(22)); }, "22 is no type of elements");
}

TEST_F(MeshTest, TakesNumbersAsTheHostHasThem)
{
    Ids const far = {7, 4000000, 1, 9};
    Mesh byId = mesh(NodeNumbering::Ids);
    byId.setNodes(coordinates(), far);
    byId.setElements({tetrahedron({7, 4000000, 1, 9}, {5})});
    EXPECT_EQ(byId.nodes(), 4U);
    EXPECT_EQ(byId.elements(), 1U);
    std::vector<std::uint64_t> const wide = {1, 2, 3, 4};
    Mesh fromOne = mesh(NodeNumbering::FromOne);
    fromOne.setNodes(coordinates(), wide);
    fromOne.setElements({Elements(ElementType::Tetrahedron4, ArrayView::table(wide, 4))});
    EXPECT_EQ(fromOne.elements(), 1U);
    std::vector<std::uint32_t> const unsignedIds = {4, 3, 2, 1};
    Mesh other = mesh(NodeNumbering::Ids);
    other.setNodes(coordinates(), unsignedIds);
    other.setElements({Elements(ElementType::Tetrahedron4, ArrayView::table(unsignedIds, 4))});
    EXPECT_EQ(other.elements(), 1U);
}

TEST_F(MeshTest, MoreThanAModelCanNumberIsRefusedBeforeItIsRead)
{
    std::size_t const many = std::size_t(1) << 32U;
    Doubles const place = {0, 0, 0};
    Mesh m = mesh();
    expectRefusal([&] { m.setNodes(ArrayView(place.data(), many, 3, 0, 8)); },
                  "mesh \"M\": there are more than 2147483647 nodes");
    m.setNodes(coordinates());
    Ids const nodes = {0, 1, 2, 3};
    ArrayView const all(nodes.data(), many / 4, 4, 0, 4);
    expectRefusal([&] { m.setElements({Elements(ElementType::Tetrahedron4, all)}); },
                  "mesh \"M\": the nodes of all elements are more than 2147483647");
}

TEST_F(MeshTest, WrongNodesAreRefused)
{
    Ids const ids = {1, 2, 3, 4};
    Ids const twice = {1, 2, 4, 2};
    Ids const zero = {1, 2, 0, 4};
    std::vector<std::int64_t> const large = {1, 2, 3, 4294967296};
    Doubles const real = {1, 2, 3, 4};
    Doubles const flat = {0, 0, 1, 0};
    std::vector<std::array<int, 3>> const whole = {{{0, 0, 0}}};
    Mesh m = mesh();
    expectRefusal([&] { m.setNodes(Doubles()); }, "mesh \"M\": there are no nodes");
    expectRefusal([&] { m.setNodes(ArrayView::table(flat, 2)); },
                  "mesh \"M\": coordinates need 3 columns, these have 2");
    expectRefusal([&] { m.setNodes(whole); },
                  "mesh \"M\": coordinates have to be floats or doubles, not integers");
    expectRefusal([&] { m.setNodes(coordinates(), Ids{1, 2}); }, "mesh \"M\": 4 nodes, but 2 ids");
    expectRefusal([&] { m.setNodes(coordinates(), ArrayView(ids.data(), 4, 2, 4, 0)); },
                  "mesh \"M\": ids of nodes need 1 column, these have 2");
    expectRefusal([&] { m.setNodes(coordinates(), real); },
                  "mesh \"M\": ids of nodes have to be integers");
    expectRefusal(
        [&] { m.setNodes(coordinates(), ArrayView(static_cast<int const*>(nullptr), 4)); },
        "mesh \"M\": ids: 4 rows, but a null pointer");
    expectRefusal([&] { m.setNodes(coordinates(), twice); }, "mesh \"M\": two nodes have the id 2");
    expectRefusal([&] { m.setNodes(coordinates(), zero); },
                  "mesh \"M\": the id of node 2 (counted from 0) is 0, and not between 1 and "
                  "4294967295");
    expectRefusal([&] { m.setNodes(coordinates(), large); },
                  "mesh \"M\": the id of node 3 (counted from 0) is 4294967296, and not between 1 "
                  "and 4294967295");
    expectRefusal([&] { mesh(NodeNumbering::Ids).setNodes(coordinates()); },
                  "mesh \"M\": elements name nodes by ids, but the nodes have none");
    m.setNodes(coordinates(), ids);
    expectRefusal([&] { m.setNodes(coordinates()); }, "mesh \"M\": the nodes are set already");
}

TEST_F(MeshTest, WrongElementsAreRefused)
{
    Ids const nodes = {0, 1, 2, 3};
    Doubles const real = {0, 1, 2, 3};
    Mesh m = mesh();
    expectRefusal([&] { m.setElements({tetrahedron(nodes)}); },
                  "mesh \"M\": elements need nodes: call setNodes first");
    m.setNodes(coordinates());
    expectRefusal([&] { m.setElements({}); }, "mesh \"M\": there are no elements");
    expectRefusal(
        [&] { m.setElements({Elements(ElementType::Hexahedron8, ArrayView::table(nodes, 4))}); },
        "mesh \"M\": Hexahedron8 needs 8 columns, the nodes have 4");
    expectRefusal(
        [&] { m.setElements({Elements(ElementType::Tetrahedron4, ArrayView::table(real, 4))}); },
        "mesh \"M\": the nodes of elements have to be integers");
    expectRefusal(
        [&] {
            m.setElements({Elements(ElementType::Tetrahedron4,
                                    ArrayView(static_cast<int const*>(nullptr), 1, 4))});
        },
        "mesh \"M\": Tetrahedron4: 1 row, but a null pointer");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron({0, 1, 2, 3, 0, 1, 4, 2})});
        },
        "mesh \"M\": element 1 of Tetrahedron4, node 2 (both counted from 0) is 4, and "
        "there are 4 nodes, numbered from 0");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron({0, -1, 2, 3})});
        },
        "mesh \"M\": element 0 of Tetrahedron4, node 1 (both counted from 0) is -1, and "
        "there are 4 nodes, numbered from 0");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron(nodes),
                           Elements(ElementType::Quadrangle4, ArrayView::table(nodes, 4))});
        },
        "mesh \"M\": a shape holds elements of one dimension; it has 3, and elements 1, "
        "Quadrangle4, have 2");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron(nodes, {1, 2})});
        },
        "mesh \"M\": 1 element, but 2 ids");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron(nodes, {1}), tetrahedron(nodes)});
        },
        "mesh \"M\": some elements have ids and some have none");
    expectRefusal(
        [&] {
            m.setElements({tetrahedron(nodes, {8}), tetrahedron(nodes, {8})});
        },
        "mesh \"M\": two elements have the id 8");
    m.setElements({tetrahedron(nodes, {8})});
    expectRefusal([&] { m.setElements({tetrahedron(nodes)}); },
                  "mesh \"M\": the elements are set already; elements of all types go into one "
                  "call");
}

TEST_F(MeshTest, NumbersOfNoNodeAreRefusedAsTheyAreCounted)
{
    Mesh fromOne = mesh(NodeNumbering::FromOne);
    fromOne.setNodes(coordinates());
    expectRefusal(
        [&] {
            fromOne.setElements({tetrahedron({0, 1, 2, 3})});
        },
        "mesh \"M\": element 0 of Tetrahedron4, node 0 (both counted from 0) is 0, and "
        "there are 4 nodes, numbered from 1");
    for (Ids const& ids : {Ids{1, 2, 3, 4}, Ids{1, 2, 3, 4000000}}) {
        Mesh byId = mesh(NodeNumbering::Ids);
        byId.setNodes(coordinates(), ids);
        expectRefusal(
            [&] {
                byId.setElements({tetrahedron({1, 2, 3, 5})});
            },
            "mesh \"M\": element 0 of Tetrahedron4, node 3 (both counted from 0) is 5, "
            "which is no node's id");
    }
    Mesh unordered = mesh(NodeNumbering::FromZero, static_cast<NodeOrder>(9));
    unordered.setNodes(coordinates());
    expectRefusal(
        [&] {
            unordered.setElements({tetrahedron({0, 1, 2, 3})});
        },
        "mesh \"M\": 9 is no order of nodes");
}

TEST_F(MeshTest, ElementsThatAProgramHasNoOrderForAreRefusedAndNoOthers)
{
    using Types = std::vector<ElementType>;
    struct Program
    {
        NodeOrder order;
        std::string name;
        Types unknown;
    };
    constexpr unsigned int typeCount = 22;
    std::vector<Program> const programs = {
        {NodeOrder::Vtk, "VTK", {}},
        {NodeOrder::Abaqus,
         "Abaqus",
         {ElementType::Line4, ElementType::Triangle7, ElementType::Pyramid13,
          ElementType::Pyramid19, ElementType::Hexahedron24}},
        {NodeOrder::Gmsh,
         "Gmsh",
         {ElementType::Triangle7, ElementType::Pyramid19, ElementType::Hexahedron24}},
        {NodeOrder::Cgns,
         "CGNS",
         {ElementType::Triangle7, ElementType::Pyramid19, ElementType::Hexahedron24}}};
    for (auto const& [order, name, unknown] : programs) {
        for (unsigned int number = 0; number < typeCount; ++number) {
            auto const type = static_cast<ElementType>(number);
            Mesh m = mesh(NodeNumbering::FromZero, order);
            m.setNodes(coordinates());
            Ids const nodes(nodesOf(type));
            std::string refusal;
            try {
                m.setElements({Elements(type, ArrayView::table(nodes, nodes.size()))});
            } catch (Zyl2::Exception::InvalidArguments const& failure) {
                refusal = Zyl2::Exception::detail(failure);
            }
            bool const isUnknown = std::count(unknown.begin(), unknown.end(), type) != 0;
            EXPECT_EQ(refusal.substr(0, refusal.find(" has no ")),
                      isUnknown ? "mesh \"M\": " + name : "")
                << name << ", element " << number;
        }
    }
}

TEST_F(MeshTest, WrongResultsAreRefused)
{
    Ids const nodes = {0, 1, 2, 3};
    Doubles const four(4);
    Doubles const two(2);
    Mesh m = mesh();
    expectRefusal([&] { m.addNodeResult("T", four); },
                  "mesh \"M\": the result \"T\" needs nodes: call setNodes first");
    m.setNodes(coordinates());
    expectRefusal([&] { m.addElementResult("D", two); },
                  "mesh \"M\": the result \"D\" needs elements: call setElements first");
    m.setElements({tetrahedron(nodes)});
    expectRefusal([&] { m.addNodeResult("T", two); },
                  "mesh \"M\": the result \"T\" has 2 rows, the mesh 4 nodes");
    expectRefusal([&] { m.addNodeResult("T", ArrayView(four.data(), 4, 2, 8, 0)); },
                  "mesh \"M\": a result has 1, 3 or 6 columns, \"T\" has 2");
    expectRefusal([&] { m.addElementResult("D", two); },
                  "mesh \"M\": the result \"D\" has 2 rows, the mesh 1 element");
    expectRefusal([&] { m.addElementResult("D", ArrayView::table(four, 4)); },
                  "mesh \"M\": a result has 1, 3 or 6 columns, \"D\" has 4");
    expectRefusal([&] { m.addElementResult("", Doubles(1)); }, "mesh \"M\": a result needs a name");
    m.addNodeResult("T", four, Step("1"));
    m.addElementResult("D", Doubles(1), Step("1"));
}

} // namespace
