#ifndef ZYL2_MOX2_MESH_H
#define ZYL2_MOX2_MESH_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/ArrayView.h>
#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/Model.h>
#include <Zyl2/Mox2/Step.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

/// Types of elements, by shape and number of nodes.
enum class ElementType : unsigned int
{
    Point1,
    Line2,
    Line3,
    Line4,
    Triangle3,
    Triangle6,
    Triangle7,
    Quadrangle4,
    Quadrangle8,
    Quadrangle9,
    Tetrahedron4,
    Tetrahedron10,
    Pyramid5,
    Pyramid13,
    Pyramid19,
    Wedge6,
    Wedge15,
    Wedge18,
    Hexahedron8,
    Hexahedron20,
    Hexahedron24,
    Hexahedron27
};

/// \param type any
/// \return how many nodes an element of this type has
/// \throws Exception::InvalidArguments default text: no such type
ZYL2_EXPORT std::size_t nodesOf(ElementType type);

/// \param type any
/// \return 1 for points and lines, 2 for triangles and quadrangles, 3 for solids
/// \throws Exception::InvalidArguments default text: no such type
ZYL2_EXPORT unsigned int dimensionOf(ElementType type);

/// In which order a host has the nodes of an element. They differ where there are nodes between the
/// corners, and in how wedges are turned; docs/guides/meshes.md draws them.
enum class NodeOrder : unsigned int
{
    /// That of the file: bottom edges, top edges, upright edges, then faces.
    Model,
    /// Of the cells of VTK: wedges have their bottom the other way round.
    Vtk,
    /// Of solvers whose decks number elements as Abaqus does: the middle of a line stands between
    /// its ends, and the centre of a hexahedron of 27 nodes before its faces.
    Abaqus,
    /// Of Gmsh: edges sorted by their nodes.
    Gmsh,
    /// Of CGNS: upright edges before those of the top.
    Cgns
};

/// What the numbers of a host's connectivity are.
enum class NodeNumbering : unsigned int
{
    /// Rows of the coordinates; the first one is 0.
    FromZero,
    /// Rows of the coordinates; the first one is 1.
    FromOne,
    /// Ids, those that were given with the coordinates.
    Ids
};

/// Elements of one type.
struct Elements
{
    /// \param elementType  type of all of them
    /// \param elementNodes elements x nodes: the nodes of each element, integers
    /// \param elementIds   elements x 1, above 0 and unique, integers; without them they have none
    Elements(ElementType elementType, ArrayView const& elementNodes,
             ArrayView const& elementIds = ArrayView())
        : type(elementType), nodes(elementNodes), ids(elementIds)
    {}

    ElementType type;
    ArrayView nodes;
    ArrayView ids;
};

/// Adds a group below another one, which is current afterwards: groups and shapes in a row are
/// siblings.
///
/// \param model      open for writing, with a root
/// \param parent     id of a group
/// \param name       any bytes
/// \param attributes of the group
/// \return id of the new group
/// \throws Exception::Exception as `Model::setCurrentNodeId` and `Model::addNode` do
ZYL2_EXPORT unsigned int addGroup(Model& model, unsigned int parent, std::string const& name,
                                  Attributes const& attributes = Model::emptyAttributes());

/// Adds a shape below a group, which is current afterwards: shapes in a row are siblings.
///
/// \param model  open for writing, with a root
/// \param parent id of a group
/// \param name   any bytes
/// \return id of the new shape, for `Model::setNodeData` and `Model::addArrayProperty`
/// \throws Exception::Exception as `Model::setCurrentNodeId` and `Model::addNode` do
ZYL2_EXPORT unsigned int addShape(Model& model, unsigned int parent, std::string const& name);

/// One shape with its mesh and the results on it, checked as they are added.
///
/// The life of a mesh, in order: construct it, which adds the shape; `setNodes`; `setElements`,
/// once, with elements of one dimension and any types (a shape of nodes only does without); then
/// results, in any number. All values are written at once, and need not stay alive behind the call.
/// Whatever is wrong raises `Exception::InvalidArguments`, whose detail says in one sentence what,
/// before anything of the call is written.
///
/// \code
/// Model model;
/// model.saveTo("beam.mox");
/// unsigned int const root = model.addNode(NodeType::RootGroup, "Beam");
/// Mesh steel(model, root, "Steel", NodeOrder::Abaqus, NodeNumbering::Ids);
/// steel.setNodes(coordinates, nodeIds); // a std::vector of std::array<double, 3>, and one of int
/// steel.setElements({Elements(ElementType::Hexahedron20, nodes, elementIds)});
/// steel.addNodeResult("Displacement", displacement, Step("1"));
/// steel.addElementResult("Stress", stress, Step("1"));
/// model.close();
/// \endcode
///
/// What it keeps beside the values' block is one copy of the connectivity while that is written,
/// and the ids of the nodes when elements name them by ids.
class ZYL2_EXPORT Mesh
{
public:
    /// Adds the shape, as `addShape` does.
    /// \param model     open for writing, with a root; must live as long as the mesh is added to
    /// \param parent    id of a group
    /// \param name      of the shape
    /// \param order     in which order elements have their nodes
    /// \param numbering what the numbers of the connectivity are
    /// \throws Exception::Exception as `addShape` does
    Mesh(Model& model, unsigned int parent, std::string const& name,
         NodeOrder order = NodeOrder::Model, NodeNumbering numbering = NodeNumbering::FromZero);

    Mesh(Mesh&& other) = default;
    Mesh& operator=(Mesh&& other) = default;
    Mesh(Mesh const&) = delete;
    Mesh& operator=(Mesh const&) = delete;
    ~Mesh() = default;

    /// Writes where the nodes are.
    /// \param coordinates nodes x 3: x, y, z in the units of the model, floats or doubles
    /// \param ids         nodes x 1, above 0 and unique, integers; without them nodes have no ids
    /// \throws Exception::InvalidArguments default text, with a detail
    /// \throws Exception::Exception as `Model::addArrayProperty` does
    void setNodes(ArrayView const& coordinates, ArrayView const& ids = ArrayView());

    /// Writes the elements.
    /// \param elements all of one dimension; they stand in the file in this order. Either all or
    ///                 none have ids
    /// \pre nodes are set, elements are not
    /// \throws Exception::InvalidArguments default text, with a detail
    /// \throws Exception::Exception as `Model::addArrayProperty` does
    void setElements(std::vector<Elements> const& elements);

    /// Adds a result with one row for each node.
    ///
    /// \param name       any bytes; with that of the step unique in the shape
    /// \param values     nodes x 1 (a scalar), nodes x 3 (a vector) or nodes x 6: a symmetric
    /// tensor
    ///                   xx, yy, zz, xy, yz, zx, or, where the name is "Displacement", translations
    ///                   and rotations
    /// \param step       that the values belong to
    /// \param attributes of the dataset
    /// \pre nodes are set
    /// \throws Exception::InvalidArguments default text, with a detail
    /// \throws Exception::Exception as `Model::addArrayProperty` does
    void addNodeResult(std::string const& name, ArrayView const& values, Step const& step = Step(),
                       Attributes const& attributes = Model::emptyAttributes());

    /// Adds a result with one row for each element, in the order in which they were set.
    ///
    /// \param name       as above
    /// \param values     elements x 1 (a scalar), elements x 3 (a vector) or elements x 6 (a
    ///                   symmetric tensor xx, yy, zz, xy, yz, zx)
    /// \param step       as above
    /// \param attributes as above
    /// \pre elements are set
    /// \throws Exception::InvalidArguments default text, with a detail
    /// \throws Exception::Exception as `Model::addArrayProperty` does
    void addElementResult(std::string const& name, ArrayView const& values,
                          Step const& step = Step(),
                          Attributes const& attributes = Model::emptyAttributes());

    /// Id of the shape, for `Model::setNodeData` and `Model::addArrayProperty`.
    unsigned int id() const noexcept { return id_; }
    /// Number of nodes; 0 before they are set.
    std::size_t nodes() const noexcept { return nodes_; }
    /// Number of elements; 0 before they are set.
    std::size_t elements() const noexcept { return elements_; }

private:
    struct TypesByColumns
    {
        DatasetType one;
        DatasetType three;
        DatasetType six;
    };

    void addResult(std::string const& name, TypesByColumns const& types, ArrayView const& values,
                   Step const& step, Attributes const& attributes);

    Model* model_;
    std::string name_;
    NodeOrder order_;
    NodeNumbering numbering_;
    unsigned int id_;
    std::size_t nodes_ = 0;
    std::size_t elements_ = 0;
    std::vector<unsigned int> ids_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
