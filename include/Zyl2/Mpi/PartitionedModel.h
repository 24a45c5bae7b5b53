#ifndef ZYL2_MPI_PARTITIONEDMODEL_H
#define ZYL2_MPI_PARTITIONEDMODEL_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/Model.h>
#include <Zyl2/Mpi/PartitionedOptions.h>
#include <Zyl2/Mpi/RankFailure.h>

#include <mpi.h>

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Zyl2 {
namespace Mpi {

/// Writes the pieces of a model that the ranks of a program hold, into a few files and an index of
/// them: docs/partitioned-models.md tells what is in them, and `mox join` makes one model of them.
///
/// Each rank uses it as it uses `Mox2::Model`, for its own piece: ids are those that a model of the
/// rank alone would have. What all ranks add alike, such as the root and groups, is stored once in
/// each file. Shapes are not: one that several ranks add under one name becomes one for each rank,
/// and each of its datasets has the attributes `Rank` and `Ranks`, which a host can't give itself.
///
/// Some calls are *collective*: all ranks of the communicator make them, in the same order. They
/// are the constructor, `step`, `checkpoint` and `close`; the destructor is, too, unless `close`
/// was called or one of them has failed. The others concern no other rank. One rank of those that
/// share a file writes; the others keep what they add until the next collective call, which takes
/// it to the writer.
///
/// A call that adds, and fails on one rank, throws there what `Mox2::Model` would throw. The next
/// collective call then throws `RankFailure` on all ranks, as it does when it fails itself. That is
/// the end of the model: the files are left as they are, incomplete, and what follows throws the
/// same, but for `close` and the destructor, which end quietly. A host that lets the first
/// exception destroy the model on its rank takes part in the next collective call by that: the
/// others are not left waiting.
///
/// \code
/// Zyl2::Mpi::PartitionedModel model(MPI_COMM_WORLD, "wave.moxs");
/// model.addNode(NodeType::RootGroup, "Wave");
/// unsigned int const body = model.addNode(NodeType::Shape, "Body");
/// model.addArrayProperty(DatasetType::Coordinates, ArrayView::table(xyz, 3), body, Step());
/// model.addArrayProperty(DatasetType::NodeIds, globalIds, body, Step());
/// ...
/// for (...) {
///     model.addArrayProperty(DatasetType::Displacement, ArrayView::table(u, 3), body, Step(name));
///     model.step();
/// }
/// model.close();
/// \endcode
///
/// A failure of MPI itself, such as a machine that is gone, ends the program, whatever the
/// communicator does with errors otherwise: what the others wait for would never come.
///
/// MPI is called by the thread that calls the model, and by no other. While values are received, a
/// thread of the model's own compresses and writes them, so that MPI has to be initialised for
/// `MPI_THREAD_FUNNELED` where an implementation minds that.
class ZYL2_EXPORT PartitionedModel
{
public:
    /// Creates the files, and an index that says that they are not complete. Collective.
    ///
    /// \param comm    whose ranks the pieces are of; a copy of it is used
    /// \param path    path of the index, which ends with ".moxs"; the same on all ranks. The files
    ///                are beside it: wave.moxs has wave.0.mox, wave.1.mox and so on.
    /// \param options the same on all ranks
    /// \throws RankFailure an argument is not what it has to be, or not the same on all ranks, or
    ///         one of the files can't be created: what a rank failed at. Files that this call
    ///         created are removed again.
    /// \throws Exception::InvalidObjectState MPI is not initialised
    /// \throws Exception::InvalidArguments MPI refuses to copy `comm`
    PartitionedModel(MPI_Comm comm, std::string const& path,
                     PartitionedOptions const& options = PartitionedOptions());

    /// As `close`, if that was not called; an exception then ends the process. While an exception
    /// is being handled that was not there when the model was made, it lets all ranks fail instead.
    ~PartitionedModel() noexcept;

    PartitionedModel(PartitionedModel const&) = delete;
    PartitionedModel& operator=(PartitionedModel const&) = delete;

    /// As `Mox2::Model::addNode`. A root and groups that other ranks of the file add as well, in
    /// the same place under the same name, are the same one; of several of one name in one place,
    /// the first is that of another rank's first.
    /// \throws RankFailure from the next collective call: two ranks give the root other names or
    ///         types, or an attribute of a group other values
    unsigned int addNode(Mox2::NodeType type, std::string const& name,
                         Mox2::Attributes const& attributes = Mox2::Model::emptyAttributes());

    /// As `Mox2::Model::setNodeData`. On a group it has to be alike on all ranks that call it
    /// between two collective calls.
    void setNodeData(unsigned int id, Mox2::NodeProperties const& properties,
                     Mox2::Attributes const& attributes = Mox2::Model::emptyAttributes());

    /// As `Mox2::Model::getNodeId`, among the nodes of this rank.
    unsigned int getNodeId(std::string const& path,
                           std::string const& separator = Mox2::Model::defaultPathSeparator());
    /// As `Mox2::Model::getNodeId`, among the nodes of this rank.
    unsigned int getNodeId(std::vector<std::string> const& names);
    /// As `Mox2::Model::getNodeId`, among the nodes of this rank.
    unsigned int getNodeId(std::initializer_list<std::string> names)
    {
        return getNodeId(std::vector<std::string>(names));
    }

    /// As `Mox2::Model::setCurrentNodeId`.
    void setCurrentNodeId(unsigned int id);
    /// As `Mox2::Model::moveToParentNode`.
    unsigned int moveToParentNode();

    /// As `Mox2::Model::addAssemblyComponents`.
    Mox2::Array1d<unsigned int>
    addAssemblyComponents(std::vector<std::string> const& names,
                          std::string const& separator = Mox2::Model::defaultPathSeparator());
    /// As `Mox2::Model::addAssemblyComponents`.
    Mox2::Array1d<unsigned int>
    addAssemblyComponents(std::initializer_list<std::string> names,
                          std::string const& separator = Mox2::Model::defaultPathSeparator())
    {
        return addAssemblyComponents(std::vector<std::string>(names), separator);
    }
    /// As `Mox2::Model::addAssemblyComponents`.
    Mox2::Array1d<unsigned int>
    addAssemblyComponents(std::map<std::string, Mox2::Attributes> const& components,
                          std::string const& separator = Mox2::Model::defaultPathSeparator());

    /// As `Mox2::Model::addArrayProperty`.
    /// \param values an `ArrayView`, or what one can be made of. They are copied unless this rank
    ///               writes.
    /// \param steps  `Step` or `StepList`
    /// \throws Exception::InvalidArguments default text: an attribute `Rank` or `Ranks`; besides,
    ///         all that `Mox2::Model::addArrayProperty` throws
    template <typename ValuesT, typename StepsT>
    void addArrayProperty(Mox2::DatasetType type, ValuesT const& values,
                          Mox2::IdsView const& components, StepsT const& steps,
                          Mox2::Attributes const& attributes = Mox2::Model::emptyAttributes())
    {
        addView(nullptr, type, Mox2::ArrayView(values), components, steps, attributes);
    }

    /// As `Mox2::Model::addArrayProperty`, under a name of its own.
    template <typename ValuesT, typename StepsT>
    void addArrayProperty(std::string const& name, Mox2::DatasetType type, ValuesT const& values,
                          Mox2::IdsView const& components, StepsT const& steps,
                          Mox2::Attributes const& attributes = Mox2::Model::emptyAttributes())
    {
        addView(&name, type, Mox2::ArrayView(values), components, steps, attributes);
    }

    /// Takes what was added since the last collective call to the writers. Collective. The order in
    /// a file is that of these calls, and between two of them that of the ranks. A host calls it
    /// after each of its steps, or more often, since a rank that doesn't write keeps what it adds
    /// until then.
    /// \throws RankFailure what a rank failed at
    void step();

    /// As `step`; then waits until all that was added so far is on the disk, as
    /// `Mox2::Model::checkpoint` does. Collective.
    /// \return whether it is, in all files; the same on all ranks
    /// \throws RankFailure what a rank failed at
    bool checkpoint();

    /// Lets the next collective call fail on all ranks, for a host that can't go on for reasons of
    /// its own, and calls `close`, or destroys the model, next. Unlike the collective calls it does
    /// not wait for others. What fails later on this rank is not told.
    /// \param sentence  what was wrong; terminated text, of which at most 1023 bytes are told
    /// \param errorCode what `RankFailure::errorCode` is to return
    void fail(char const* sentence, int errorCode = 1) noexcept;

    /// As `Mox2::Model::waitedSeconds`, of this rank.
    /// \return seconds; 0 on ranks that don't write
    double waitedSeconds() const;

    /// As `step`; then finishes the files and the index. Collective.
    /// \throws RankFailure what a rank failed at. Files of others may be whole then; the index goes
    ///         on saying that the model is not complete.
    void close();

private:
    class Impl;

    void addView(std::string const* name, Mox2::DatasetType type, Mox2::ArrayView const& values,
                 Mox2::IdsView const& components, Mox2::Step const& step,
                 Mox2::Attributes const& attributes);
    void addView(std::string const* name, Mox2::DatasetType type, Mox2::ArrayView const& values,
                 Mox2::IdsView const& components, Mox2::StepList const& steps,
                 Mox2::Attributes const& attributes);

    std::unique_ptr<Impl> impl_;
};

} // namespace Mpi
} // namespace Zyl2

#endif
