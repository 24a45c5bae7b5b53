#ifndef ZYL2_MOX2_MODEL_H
#define ZYL2_MOX2_MODEL_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/Array1d.h>
#include <Zyl2/Mox2/Array2d.h>
#include <Zyl2/Mox2/ArrayPieces.h>
#include <Zyl2/Mox2/ArrayView.h>
#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/DatasetType.h>
#include <Zyl2/Mox2/IdsView.h>
#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/NodeType.h>
#include <Zyl2/Mox2/PropertyType.h>
#include <Zyl2/Mox2/SaverOptions.h>
#include <Zyl2/Mox2/Step.h>
#include <Zyl2/Mox2/StepList.h>

#include <initializer_list>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace Zyl2 {
namespace Mox2 {

class Database;

/// Name of the format that every model is saved in: "zyli_mox".
extern ZYL2_EXPORT char const* const MOX_FILE_FORMAT_NAME;

/// Whether `Model::addArrayProperty` takes values of type `T`.
template <typename T>
struct IsArrayPropertyValues : std::false_type
{};
template <typename T>
struct IsArrayPropertyValues<Array1d<T>> : std::true_type
{};
template <typename T>
struct IsArrayPropertyValues<Array2d<T>> : std::true_type
{};

/// `void` when `Model::addArrayProperty` takes these argument types, no type otherwise.
template <typename ArrayT, typename ComponentT, typename StepT>
struct IfArrayProperty
    : std::enable_if<IsArrayPropertyValues<ArrayT>::value &&
                     (std::is_same<ComponentT, Array1d<unsigned int>>::value ||
                      std::is_same<ComponentT, unsigned int>::value) &&
                     (std::is_same<StepT, StepList>::value || std::is_same<StepT, Step>::value)>
{};

/// Whether `StepT` is what steps are given as.
template <typename StepT>
struct IsStepOrList : std::integral_constant<bool, std::is_same<StepT, Step>::value ||
                                                       std::is_same<StepT, StepList>::value>
{};

/// Whether an id of this type can be passed on as `int` or `unsigned int`. A `std::size_t` can't:
/// its upper bits would get lost, and with them the difference between a node and another one.
template <typename ComponentT>
struct IsIdOf32Bits
    : std::integral_constant<bool, std::is_convertible<ComponentT, unsigned int>::value &&
                                       !(std::is_integral<ComponentT>::value &&
                                         (sizeof(ComponentT) > sizeof(unsigned int)))>
{};

/// `void` when values, ids or both are given as views; no type where the forms above take them.
template <typename ValuesT, typename ComponentT, typename StepT>
struct IfViews : std::enable_if<!(IsArrayPropertyValues<ValuesT>::value &&
                                  (std::is_same<ComponentT, Array1d<unsigned int>>::value ||
                                   IsIdOf32Bits<ComponentT>::value) &&
                                  IsStepOrList<StepT>::value)>
{};

/// Writes one result model into one file.
///
/// The life of a model, in order:
///
/// 1. Construct it. It is *empty*: adding raises "File not open.", asking raises "Not initialized".
/// 2. `saveTo` comes first. It creates the file and writes its header at once; from here on the
///    model is *open for writing*.
/// 3. Build the tree with `addNode` and `addAssemblyComponents`. The first node becomes the root
///    and has the id 1; every further node goes below the *current* node, which is then the new
///    one. `setCurrentNodeId`, `moveToParentNode` and `getNodeId` move the cursor.
/// 4. Describe nodes with `setNodeData`: transforms and attributes of groups, materials of shapes.
/// 5. Add arrays with `addArrayProperty`, on the ids that `addNode` and `addAssemblyComponents`
///    returned for shapes. Values are copied at once, once; full blocks of values go to the file
///    as soon as possible, so that a large result need not fit into memory.
/// 6. `close` writes everything that is pending and finishes the file. The model is *empty* again
///    and may be saved anew, to another file.
///
/// The destructor closes too, but an exception there ends the process: a host that must survive a
/// full disk calls `close` itself and catches what it throws.
///
/// \code
/// using namespace Zyl2::Mox2;
/// Model model;
/// model.saveTo("beam.mox");
/// model.addNode(NodeType::RootGroup, "Beam");
/// unsigned int const beam = model.addNode(NodeType::Shape, "Steel");
/// model.addArrayProperty(DatasetType::Coordinates,
///                        Array2d<float>(2, 3, {0, 0, 0, 1, 0, 0}), beam, Step());
/// model.addArrayProperty(DatasetType::Connectivity1, Array1d<unsigned int>{0, 1}, beam, Step());
/// model.addArrayProperty(DatasetType::Polylength1, Array1d<unsigned int>{2}, beam, Step());
/// model.addArrayProperty(DatasetType::Displacement,
///                        Array2d<float>(2, 3, {0, 0, 0, 0, 0, -0.1f}), beam, Step("Load 1"));
/// model.close();
/// \endcode
///
/// All failures are exceptions of `Zyl2::Exception`, or `std::bad_alloc` when memory runs out; work
/// already done when a later step of a call fails is not undone.
///
/// One model belongs to one thread at a time; different models may be driven by different threads
/// at the same time. That is one way to use several cores. The other is `SaverOptions::threads`:
/// full blocks are then compressed by threads of the model's own, while the host goes on. They
/// start when there is work for them, get none of the process's signals, and have ended when
/// `close` or the destructor returns. What they fail at is thrown by the next `addArrayProperty` or
/// by `close`. In a process that is forked meanwhile the model writes nothing: `close` throws, and
/// the destructor drops it. Without that option the library starts no thread and takes no lock. A
/// model, or an exception, may be handed from one thread to another, but the two must not use it at
/// once. Values, attributes, properties and steps that nobody changes may be given to several
/// models at once. The environment (`setenv`, `putenv`) must not change meanwhile: the time zone
/// and the library's own variables are read from it.
class ZYL2_EXPORT Model
{
public:
    /// No node has this id, and no call returns it: the id for "none" is 0.
    static constexpr unsigned int INVALID_ID = 4294967295U;

    /// "/", what separates the names of a path when a host has nothing better.
    static std::string const& defaultPathSeparator();

    /// No attributes: the default of every attributes argument.
    static Attributes const& emptyAttributes();

    /// An empty model, without a file.
    Model();

    /// Closes the model. An exception here ends the process: see `close`.
    ~Model() noexcept;

    /// Takes the file and all that was added over.
    /// \param other is empty afterwards, and may be saved anew
    Model(Model&& other) noexcept;
    /// Closes this model, then takes the other's file and all that was added over.
    /// \param other is empty afterwards, and may be saved anew
    /// \return this model
    /// \throws Exception::Exception as `close` does; this model is then empty and `other` as it was
    // NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-move-constructor): closes
    Model& operator=(Model&& other);

    Model(Model const&) = delete;
    Model& operator=(Model const&) = delete;

    /// Creates the file and makes the model ready for adding.
    ///
    /// With an empty path no file is created: the model can be filled, and nothing is written.
    ///
    /// \param path    path of the file; a wide path is narrowed to the low 8 bits of each character
    /// \param options whether an existing file is overwritten; texts of the writing record; what
    ///                compresses the file, in how many threads and in blocks of which size
    /// \pre the model is empty
    /// \throws Exception::InvalidObjectState "Not Empty": the model was saved and not closed since
    /// \throws Exception::InvalidArguments the options or the environment ask for an encoder, for
    ///         threads or for blocks that there are not, or the latter is neither 1 nor 0 for
    ///         `recoverable`; the detail says what there is, and the model stays empty
    /// \throws Exception::FileOpenException "File exists.": and `options.overwrite` is false; for a
    ///         recoverable run also where an earlier one can be recovered, and, whatever
    ///         `options.overwrite` is, where one still writes
    /// \throws Exception::MiscelleneousException "Unable to open file ...": the system refuses, the
    ///         folder of a recoverable run, too
    /// \throws Exception::FileWriteException "Unable to write to file": a recoverable run finds no
    ///         room for its log, or the file system maps no files
    /// \post after a failure of the file the model must be closed before it can be saved again
    void saveTo(std::string const& path, SaverOptions const& options = SaverOptions());
    /// \copydoc saveTo(std::string const&, SaverOptions const&)
    void saveTo(char const* path, SaverOptions const& options = SaverOptions());
    /// \copydoc saveTo(std::string const&, SaverOptions const&)
    void saveTo(std::wstring const& path, SaverOptions const& options = SaverOptions());
    /// \copydoc saveTo(std::string const&, SaverOptions const&)
    void saveTo(wchar_t const* path, SaverOptions const& options = SaverOptions());

    /// Adds a node below the current node and makes it current; the first node becomes the root.
    /// Nodes that are to be siblings make their group current first, or take `Zyl2/Mox2/Mesh.h`.
    /// \param type       a group or a shape; `RootGroup` and `FlaggedRootGroup` for the root only
    /// \param name       any bytes
    /// \param attributes stored on a group; shapes have none, theirs are dropped
    /// \return id of the node; for a shape below the root, id of its geometry, which is what
    ///         `setNodeData` and `addArrayProperty` want
    /// \pre open for writing
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::InvalidArguments "Invalid node type for root node", "Invalid node type";
    ///         default text for an attribute of a type that can't be stored
    /// \throws Exception::KeyNotFound the current node is none, after data was given for an
    ///         unknown id
    unsigned int addNode(NodeType type, std::string const& name,
                         Attributes const& attributes = emptyAttributes());

    /// Sets properties of a node and merges attributes into it. The node becomes current.
    ///
    /// \param id         a group, a shape, or the id that `addNode` returned for a shape
    /// \param properties applied in ascending order of `PropertyType`
    /// \param attributes merged into a group's own; for shapes they are dropped
    /// \pre open for writing
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::OutOfBounds `id` is 0 or past the last node
    /// \throws Exception::InvalidArguments "empty node": the node is not of the kind that the
    ///         property applies to; "invalid array size"; "Invalid properties"; default text for
    ///         an attribute of a type that can't be stored
    /// \throws Exception::TemplateSpecializationNotDefined a value of another type than the
    ///         property expects
    void setNodeData(unsigned int id, NodeProperties const& properties,
                     Attributes const& attributes = emptyAttributes());

    /// Finds a node by the names from the root down to it. The root becomes current.
    ///
    /// \param path      separator, name of the root, separator, name below it, and so on. The
    ///                  root's name alone is not resolved.
    /// \param separator what stands between the names
    /// \return the first such node's id in the order of adding; 0 when there is none or `path` is
    ///         empty
    /// \pre saved, and not closed since
    /// \throws Exception::InvalidObjectState "Not initialized"
    /// \throws std::out_of_range the path names the root only
    unsigned int getNodeId(std::string const& path,
                           std::string const& separator = defaultPathSeparator());

    /// Finds a node by the names from the root down to it. The root becomes current.
    ///
    /// \param names name of the root, name below it, and so on; names may contain "/", but not the
    ///              byte 0x1E
    /// \return as above; 0 for no names
    /// \pre saved, and not closed since
    /// \throws Exception::InvalidObjectState "Not initialized"
    /// \throws std::out_of_range `names` holds the root's name only
    unsigned int getNodeId(std::vector<std::string> const& names);

    /// The same for names in braces, which would fit a path too.
    unsigned int getNodeId(std::initializer_list<std::string> names)
    {
        return getNodeId(std::vector<std::string>(names));
    }

    /// Makes a node current.
    ///
    /// \param id as returned by `addNode`, `getNodeId`, `addAssemblyComponents`
    /// \pre saved, and not closed since
    /// \throws Exception::InvalidObjectState "Not initialized"
    /// \throws Exception::OutOfBounds `id` is 0 or past the last node
    void setCurrentNodeId(unsigned int id);

    /// Makes the current node's parent current; at the root the root stays current.
    ///
    /// After a shape was added, the first call leads from its geometry to the shape, the second to
    /// the group that holds it.
    ///
    /// \return the parent's id; 0 at the root
    /// \pre saved, and not closed since
    /// \throws Exception::InvalidObjectState "Not initialized"
    /// \throws Exception::KeyNotFound the current node is none
    unsigned int moveToParentNode();

    /// Adds the nodes that absolute paths such as /car/body/door name, reusing what exists.
    ///
    /// All names of a path are groups, but for the last: it is a shape, or a group when the path
    /// ends with `separator`. The first name is the root's. Empty paths are skipped.
    ///
    /// \param names     the paths
    /// \param separator each of its characters separates names
    /// \return one id for each path, in their order: of a group, or of a shape's geometry; 1 for
    ///         the root, 0 for a skipped path
    /// \pre open for writing, unless `names` is empty
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::InvalidArguments "Relative paths not supported"; earlier paths stay added
    /// \throws Exception::NotYetImplemented a first name that is not the root's
    Array1d<unsigned int>
    addAssemblyComponents(std::vector<std::string> const& names,
                          std::string const& separator = defaultPathSeparator());

    /// The same for paths in braces, which would fit both containers.
    /// \param names     as above
    /// \param separator as above
    /// \return as above
    Array1d<unsigned int>
    addAssemblyComponents(std::initializer_list<std::string> names,
                          std::string const& separator = defaultPathSeparator())
    {
        return addAssemblyComponents(std::vector<std::string>(names), separator);
    }

    /// Adds the nodes that absolute paths name.
    ///
    /// \param components the paths; their attributes are checked where the path names a group, and
    ///                   stored nowhere
    /// \param separator  each of its characters separates names
    /// \return one id for each path, in ascending order of the paths
    /// \pre open for writing, unless `components` is empty
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::InvalidArguments "Relative paths not supported"; default text for an
    ///         attribute of a type that can't be stored
    /// \throws Exception::NotYetImplemented a first name that is not the root's
    Array1d<unsigned int>
    addAssemblyComponents(std::map<std::string, Attributes> const& components,
                          std::string const& separator = defaultPathSeparator());

    /// Adds an array under the default name of its type.
    ///
    /// The values are written once; every pair of a component and a step refers to them. An array
    /// without rows, or no components, adds nothing.
    ///
    /// \param type       what the array holds; fixes the number of values per row
    /// \param values     `Array1d` for one value per row, `Array2d` of rows x width otherwise, of
    ///                   `float` or `unsigned int`
    /// \param components id, or ids, of the shapes that get the array; an id that is not a shape's
    ///                   is passed over
    /// \param steps      `Step` or `StepList`: the steps that the values belong to
    /// \param attributes of the dataset; where a step has one of the same name, the dataset's holds
    /// \pre open for writing
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::InvalidArguments "Can't guess result name for specified type": give a
    ///         name; "Can't guess result width for specified type"; default text when the width
    ///         does not match the type, or for an attribute of a type that can't be stored
    /// \throws Exception::OverflowError more than 2147483647 rows or components, or more than
    ///         4294967295 bytes
    /// \throws Exception::KeyNotFound an id that no node has; the current node is then none
    /// \throws Exception::FileWriteException "Unable to write to file", "Saving the buffer failed"
    /// \throws Exception::MemoryAllocationException a block can't grow
    template <typename ArrayT, typename ComponentT, typename StepT>
    typename IfArrayProperty<ArrayT, ComponentT, StepT>::type
    addArrayProperty(DatasetType type, ArrayT const& values, ComponentT const& components,
                     StepT const& steps, Attributes const& attributes = emptyAttributes());

    /// Adds an array under a name of its own.
    ///
    /// \param name       with a step's name it must be unique on a node: a later array of the same
    ///                   name takes the earlier one's place, and keeps such of its attributes as it
    ///                   has none of the same name for
    /// \param type       as in the form without name
    /// \param values     as in the form without name
    /// \param components as in the form without name
    /// \param steps      as in the form without name
    /// \param attributes as in the form without name
    template <typename ArrayT, typename ComponentT, typename StepT>
    typename IfArrayProperty<ArrayT, ComponentT, StepT>::type
    addArrayProperty(std::string const& name, DatasetType type, ArrayT const& values,
                     ComponentT const& components, StepT const& steps,
                     Attributes const& attributes = emptyAttributes());

    /// An id given as `int` works as `unsigned int`.
    template <typename ArrayT, typename StepT>
    typename IfArrayProperty<ArrayT, unsigned int, StepT>::type
    addArrayProperty(DatasetType type, ArrayT const& values, int component, StepT const& steps,
                     Attributes const& attributes = emptyAttributes())
    {
        addArrayProperty(type, values, static_cast<unsigned int>(component), steps, attributes);
    }

    /// An id given as `int` works as `unsigned int`.
    template <typename ArrayT, typename StepT>
    typename IfArrayProperty<ArrayT, unsigned int, StepT>::type
    addArrayProperty(std::string const& name, DatasetType type, ArrayT const& values, int component,
                     StepT const& steps, Attributes const& attributes = emptyAttributes())
    {
        addArrayProperty(name, type, values, static_cast<unsigned int>(component), steps,
                         attributes);
    }

    /// Adds values where they are, under the default name of their type, without a copy of them:
    /// they go from the host's memory into the block. The file is the same as that of an `Array1d`
    /// or `Array2d` of the same values.
    ///
    /// \param type       as above
    /// \param values     an `ArrayView` or what one can be made of, such as a
    /// `std::vector<double>`;
    ///                   an `Array1d` or `Array2d` too
    /// \param components an `IdsView` or what one can be made of: an id, a `std::vector<unsigned>`,
    ///                   an `Array1d<unsigned int>`
    /// \param steps      `Step` or `StepList`
    /// \param attributes as above
    /// \pre open for writing
    /// \throws Exception::OverflowError default text, before anything is written: a finite double
    ///         whose nearest float is infinite, a negative integer, or one above 4294967295; its
    ///         row and column, counted from 0, are in the detail
    /// \throws Exception::InvalidArguments default text: rows, but a null pointer
    /// \throws Exception::Exception as the forms above do
    template <typename ValuesT, typename ComponentT, typename StepT>
    typename IfViews<ValuesT, ComponentT, StepT>::type
    addArrayProperty(DatasetType type, ValuesT const& values, ComponentT const& components,
                     StepT const& steps, Attributes const& attributes = emptyAttributes())
    {
        addViews(areViews<ValuesT, ComponentT, StepT>(), nullptr, type, values, components, steps,
                 attributes);
    }

    /// Adds values where they are, under a name of its own.
    ///
    /// \param name       as above
    /// \param type       as above
    /// \param values     as above
    /// \param components as above
    /// \param steps      as above
    /// \param attributes as above
    /// \throws Exception::Exception as above
    template <typename ValuesT, typename ComponentT, typename StepT>
    typename IfViews<ValuesT, ComponentT, StepT>::type
    addArrayProperty(std::string const& name, DatasetType type, ValuesT const& values,
                     ComponentT const& components, StepT const& steps,
                     Attributes const& attributes = emptyAttributes())
    {
        addViews(areViews<ValuesT, ComponentT, StepT>(), &name, type, values, components, steps,
                 attributes);
    }

    /// Adds values that come in pieces, under the default name of their type. The file is the same
    /// as if they came together.
    ///
    /// \param type       as above
    /// \param values     of `Float32` or `UInt32`; asked for its pieces one after the other
    /// \param components as above
    /// \param steps      as above
    /// \param attributes as above
    /// \pre open for writing
    /// \throws Exception::InvalidArguments default text: elements of another type; a piece of other
    ///         elements or columns than were announced, without rows, or of more than are missing
    /// \throws Exception::Exception as above, and whatever `values` throws. When a piece is missing
    ///         the place is taken in the file, filled with zeros, and no dataset refers to it.
    void addArrayPieces(DatasetType type, ArrayPieces& values, IdsView const& components,
                        StepList const& steps, Attributes const& attributes = emptyAttributes());

    /// Adds values that come in pieces, under a name of its own.
    ///
    /// \param name       as above
    /// \param type       as above
    /// \param values     as above
    /// \param components as above
    /// \param steps      as above
    /// \param attributes as above
    /// \throws Exception::Exception as above
    void addArrayPieces(std::string const& name, DatasetType type, ArrayPieces& values,
                        IdsView const& components, StepList const& steps,
                        Attributes const& attributes = emptyAttributes());

    /// Lets go of the file as it is: what is pending is not written, and the file stays incomplete,
    /// as it would if the process ended now. For hosts that know that their results are not worth
    /// a whole file. The model is empty afterwards; for an empty model it does nothing.
    void abandon() noexcept;

    /// Writes what is pending and finishes the file. The model is empty afterwards; closing an
    /// empty model does nothing.
    ///
    /// \throws Exception::FileWriteException "Unable to write to file", "Saving the buffer failed":
    ///         the file is incomplete, for instance because the disk is full; or somebody removed
    ///         or replaced it meanwhile, which the destructor passes over
    /// \throws Exception::MemoryAllocationException a block can't be compressed
    /// \post after a failure the file is closed; a second call, the destructor's too, ends quietly
    void close();

    /// Waits until all that was added so far is on the disk, so that `mox recover` gives it back
    /// after a loss of power, too. What survives the process alone needs no checkpoint: see
    /// `SaverOptions::recoverable`. The model is as it was.
    ///
    /// \return whether it is; false, without waiting, for a model that can't be recovered, or has
    /// no
    ///         file: so a host may call it and leave the choice to its users
    /// \pre open for writing
    /// \throws Exception::InvalidObjectState "File not open."
    /// \throws Exception::FileWriteException "Unable to write to file": the system says that it is
    ///         not on the disk
    bool checkpoint();

    /// How long calls of this model have waited for its threads since `saveTo`, `close` included
    /// once it has returned. A host that waits for much of its time gains by another thread, a
    /// faster encoder or smaller blocks; one that doesn't wait has enough of them.
    /// \return seconds; 0 without threads
    double waitedSeconds() const;

private:
    /// Says in one sentence which argument is not what it has to be.
    template <typename ValuesT, typename ComponentT, typename StepT>
    static std::integral_constant<bool,
                                  ArrayViewOf<ValuesT>::exists &&
                                      std::is_convertible<ComponentT const&, IdsView>::value &&
                                      IsStepOrList<StepT>::value>
    areViews()
    {
        static_assert(ArrayViewOf<ValuesT>::exists,
                      "addArrayProperty: the values are no array of float, double or 32 or 64 bit "
                      "integers that an ArrayView can be made of; Eigen's need "
                      "Zyl2/Mox2/ArrayViewEigen.h");
        static_assert(
            !ArrayViewOf<ValuesT>::exists || std::is_convertible<ComponentT const&, IdsView>::value,
            "addArrayProperty: the ids are neither an id nor an Array1d, a std::vector or "
            "an IdsView of unsigned int");
        static_assert(IsStepOrList<StepT>::value,
                      "addArrayProperty: the steps are neither a Step nor a StepList");
        return {};
    }

    template <typename ValuesT, typename ComponentT, typename StepT>
    void addViews(std::true_type, std::string const* name, DatasetType type, ValuesT const& values,
                  ComponentT const& components, StepT const& steps, Attributes const& attributes)
    {
        addView(name, type, ArrayView(values), IdsView(components), steps, attributes);
    }
    template <typename... ArgumentsT>
    void addViews(std::false_type, ArgumentsT const&...)
    {}

    void addView(std::string const* name, DatasetType type, ArrayView const& values,
                 IdsView const& components, Step const& steps, Attributes const& attributes);
    void addView(std::string const* name, DatasetType type, ArrayView const& values,
                 IdsView const& components, StepList const& steps, Attributes const& attributes);

    /// A model that was moved from gets a database when it needs one.
    Database& database();

    Database* database_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
